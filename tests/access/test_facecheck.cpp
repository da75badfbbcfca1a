// The checks themselves: each finds what it is there for.

#include "platform/look/access/access.h"
#include "platform/look/look.h"
#include "platform/look/widgets/clickablelabel.h"
#include "tests/access/facecheck.h"

#include <QAccessible>
#include <QApplication>
#include <QHBoxLayout>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>
#include <QtTest>

using namespace benthor;
using tests::faultsForReaders;

namespace {

/// A window with things in a row.
class Window : public QWidget {
public:
    Window()
        : row_(new QHBoxLayout(this)) {
        setObjectName(QStringLiteral("window"));
    }
    template <class Thing> Thing* add(Thing* thing, const char* name) {
        thing->setObjectName(QLatin1String(name));
        row_->addWidget(thing);
        return thing;
    }
    void up() {
        show();
        if (!QTest::qWaitForWindowExposed(this)) {
            qFatal("the window does not show");
        }
    }

private:
    QHBoxLayout* row_;
};

/// A thing that takes the focus and shows nothing of it, nor says what it is.
class Mute : public QWidget {
public:
    Mute() {
        setFocusPolicy(Qt::StrongFocus);
        setFixedSize(40, 20);
    }
};

bool tells(const QStringList& faults, const char* part) {
    return std::any_of(faults.begin(), faults.end(),
                       [part](const QString& fault) { return fault.contains(QLatin1String(part)); });
}

} // namespace

class TestFaceCheck : public QObject {
    Q_OBJECT

private slots:
    void aGoodWindowHasNoFault() {
        Window window;
        window.add(new QPushButton(QStringLiteral("&Open")), "one");
        window.add(new look::ClickableLabel(QStringLiteral("Close")), "two");
        window.up();
        QCOMPARE(faultsForReaders(&window), QStringList());
        QCOMPARE(tests::faultsOfTabOrder(&window), QStringList());
        QCOMPARE(tests::faultsOfFocus(&window), QStringList());
        QCOMPARE(tests::clashingMnemonics(&window), QStringList());
    }

    void whatHasNoNameIsFound() {
        Window window;
        window.add(new QPushButton, "nameless");
        window.add(new QProgressBar, "bar");
        window.up();
        QVERIFY(
            tells(faultsForReaders(&window), "nameless (QPushButton) '' is met as Button without a name"));
        QVERIFY(tells(faultsForReaders(&window), "bar (QProgressBar)"));
    }

    void whatIsWorkedButNothingToReadersIsFound() {
        Window window;
        window.add(new Mute, "mute");
        window.up();
        QVERIFY(tells(faultsForReaders(&window), "mute (QWidget) '' is worked and met as Client"));
        auto* mute = window.findChild<QWidget*>(QStringLiteral("mute"));
        look::hideFromReaders(mute);
        QVERIFY(tells(faultsForReaders(&window), "takes the focus and is not met"));
        look::hideFromReaders(mute, false);
        look::setReaderRole(mute, QAccessible::Button);
        mute->setAccessibleName(QStringLiteral("Go on"));
        QVERIFY(tells(faultsForReaders(&window), "is met as Button without an act"));
    }

    void aPictureThatActsAloneIsFound() {
        Window window;
        auto* picture = window.add(new look::ClickableLabel, "picture");
        picture->setFocusPolicy(Qt::NoFocus);
        picture->setFixedSize(20, 20);
        window.up();
        QVERIFY(tells(faultsForReaders(&window), "picture (benthor::look::ClickableLabel) '' is not met"));
        window.add(new look::ClickableLabel(QStringLiteral("Open")), "caption")->show();
        QCOMPARE(faultsForReaders(&window), QStringList()); // the caption does the same
    }

    void whatIsMetTwiceIsFound() {
        Window window;
        window.add(new QPushButton(QStringLiteral("Open")), "one");
        window.add(new QPushButton(QStringLiteral("Open")), "two");
        window.up();
        QVERIFY(tells(faultsForReaders(&window), "two (QPushButton) 'Open' is met twice"));
    }

    void clashingMnemonicsAreFound() {
        Window window;
        window.add(new QPushButton(QStringLiteral("&Open")), "one");
        window.add(new QPushButton(QStringLiteral("G&o")), "two");
        auto* bar = new QMenuBar(&window);
        QMenu* menu = bar->addMenu(QStringLiteral("&File"));
        menu->addAction(QStringLiteral("&Save"));
        menu->addAction(QStringLiteral("&Send"));
        window.up();
        const QStringList faults = tests::clashingMnemonics(&window);
        QCOMPARE(faults.size(), 2);
        QVERIFY(tells(faults, "Alt+O is one (QPushButton) '&Open' and two (QPushButton) 'G&o'"));
        QVERIFY(tells(faults, "Alt+S is &Save and &Send"));
    }

    void aTabThatLeadsBackIsFound() {
        Window window;
        window.add(new QPushButton(QStringLiteral("Right")), "right");
        auto* left = new QPushButton(QStringLiteral("Left"));
        static_cast<QHBoxLayout*>(window.layout())->insertWidget(0, left);
        window.up();
        QVERIFY(tells(tests::faultsOfTabOrder(&window), "Tab leads back from right"));
    }

    void aFocusThatIsNotSeenIsFound() {
        Window window;
        window.add(new Mute, "mute");
        window.up();
        QVERIFY(tells(tests::faultsOfFocus(&window), "the focus is not seen on mute"));
    }
};

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    look::apply(application);
    TestFaceCheck test;
    return QTest::qExec(&test, argc, argv);
}
#include "test_facecheck.moc"
