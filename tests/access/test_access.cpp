// Every screen in every face, as those meet it who work by keyboard or by ear. Each set of faces is a process
// of its own.

#include "platform/look/look.h"
#include "platform/screen/application.h"
#include "tests/access/facecheck.h"
#include "tests/pictures/checkedfaces.h"

#include <QAccessible>
#include <QLoggingCategory>
#include <QMenu>
#include <QtTest>

using namespace benthor;

namespace {

const QString kReaders = QStringLiteral("readers");
const QString kMnemonics = QStringLiteral("mnemonics");
const QString kTabs = QStringLiteral("tabs");
const QString kFocus = QStringLiteral("focus");

class CheckingAlbum final : public tests::FaultAlbum {
protected:
    void lookAt(QWidget* window, const QString& name, const QSize& size) override {
        Q_UNUSED(size)
        note(kReaders, name, tests::faultsForReaders(window));
        if (window->isVisible() && QApplication::activeModalWidget() == nullptr) {
            note(kFocus, name, tests::faultsOfFocus(window));
        }
        if (qobject_cast<QMenu*>(window) == nullptr) {
            note(kMnemonics, name, tests::clashingMnemonics(window));
            note(kTabs, name, tests::faultsOfTabOrder(window));
        }
        const QByteArray shown = qgetenv("BENTHOR_SHOW_FACE");
        if (QString::fromLocal8Bit(shown).split(u',').contains(name)) {
            qInfo("%s", qPrintable(name + u'\n' + tests::readersTree(window)));
            for (const QWidget* stop : tests::tabRound(window)) {
                qInfo("  tab: %s", qPrintable(tests::tell(stop)));
            }
        }
    }
};

} // namespace

class TestAccess : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void everyFaceWasLookedAt();
    void whatActsIsMetWithRoleNameAndAct();
    void mnemonicsDoNotClash();
    void tabReachesAllInTheOrderOfReading();
    void theFocusIsSeen();

private:
    QTemporaryDir folder_;
    CheckingAlbum album_;
};

void TestAccess::initTestCase() {
    QAccessible::setActive(true);
    QCOMPARE(tests::takeFaces(album_, BENTHOR_FACES, folder_.path(), QStringLiteral(BENTHOR_FOLDER_FILES),
                              QStringLiteral(BENTHOR_MAKEDEMO)),
             QString());
}

/// The numbers are those of the album: a face that is left out would be proved by nothing.
void TestAccess::everyFaceWasLookedAt() {
    QVERIFY2(album_.faces() >= BENTHOR_LEAST_FACES, qPrintable(QString::number(album_.faces())));
}

void TestAccess::whatActsIsMetWithRoleNameAndAct() {
    QVERIFY(album_.isFaultless(kReaders));
}

/// Four captions are fixed with their marks; a second press of the key goes on to the other entry.
void TestAccess::mnemonicsDoNotClash() {
    const QString connect = QStringLiteral("main &Connect: ");
    const QStringList fixed{connect + QLatin1String("Alt+D is Connect &Device and &Dive Summary"),
                            connect + QLatin1String("Alt+R is &ReProgOLD and &ReProgram")};
    QVERIFY(album_.isFaultless(kMnemonics, [&fixed](const QString& fault) {
        return std::any_of(fixed.begin(), fixed.end(),
                           [&fault](const QString& one) { return fault.endsWith(one); });
    }));
}

void TestAccess::tabReachesAllInTheOrderOfReading() {
    QVERIFY(album_.isFaultless(kTabs));
}

void TestAccess::theFocusIsSeen() {
    QVERIFY(album_.isFaultless(kFocus));
}

int main(int argc, char** argv) {
    platform::Application application(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("qt.qpa.*=false"));
    look::apply(application);
    TestAccess test;
    return QTest::qExec(&test, argc, argv);
}
#include "test_access.moc"
