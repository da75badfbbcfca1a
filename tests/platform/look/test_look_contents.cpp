// What stands on a window scrolls where there is no room for it, and only there.

#include "platform/look/look.h"
#include "platform/look/widgets/columnarea.h"
#include "platform/look/widgets/contentsarea.h"
#include "platform/screen/screen.h"

#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QScrollBar>
#include <QVBoxLayout>
#include <QtTest>

using namespace benthor;

namespace {

/// A screen with a line of text at the top and one at the foot of contents that need that room.
class Tall final : public platform::Screen {
public:
    explicit Tall(const QSize& least)
        : Screen(QStringLiteral("Tall")) {
        auto* ground = new QWidget;
        auto* down = new QVBoxLayout(ground);
        down->addWidget(first);
        room->setMinimumSize(least);
        down->addWidget(room, 1);
        down->addWidget(last);
        setContents(ground);
    }

    look::ContentsArea* area() const { return static_cast<look::ContentsArea*>(centralWidget()); }
    bool isSeen(const QWidget* control) const {
        const QRect place(control->mapTo(area()->viewport(), QPoint()), control->size());
        return area()->viewport()->rect().contains(place);
    }

    bool isSeenDownwards(const QWidget* control) const {
        const int top = control->mapTo(area()->viewport(), QPoint()).y();
        return top >= 0 && top + control->height() <= area()->viewport()->height();
    }

    QLineEdit* first = new QLineEdit;
    QWidget* room = new QWidget;
    QLineEdit* last = new QLineEdit;
};

void settle() {
    for (int i = 0; i < 10; ++i) {
        QCoreApplication::processEvents();
    }
}

} // namespace

class TestLookContents : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { look::apply(*qApp); }
    void contentsThatFitFillTheWindowAndNothingScrolls();
    void aWindowKeepsTheLeastSizeOfWhatFitsASmallDisplay();
    void noWindowIsMadeLargerThanASmallDisplay();
    void whatHasTheKeyboardComesIntoSight();
    void aWindowOpensAtItsStart();
    void whatIsShownOnlyNowIsScrolledToAsAWhole();
    void whatIsLargerThanTheViewIsSeenFromItsStart();
    void whatIsClickedStaysWhereItIs();
    void aColumnIsWholeWhereTheWindowScrolls();
    void aPictureHoldsWhatScrolls();
    void aWindowOpensInItsOwnSizeMenuAndAll();
    void wordsThatWrapAreNotSqueezed();
    void contentsThatGrowMakeTheWindowGrow();
    void aFirstSizeGrowsWithWhatIsNeeded();
};

void TestLookContents::contentsThatFitFillTheWindowAndNothingScrolls() {
    Tall window({300, 200});
    window.resize(600, 500);
    window.show();
    settle();
    QCOMPARE(window.contents()->size(), window.centralWidget()->size());
    QCOMPARE(window.centralWidget()->size(), QSize(600, 500));
    QCOMPARE(window.area()->verticalScrollBar()->maximum(), 0);
    QCOMPARE(window.area()->horizontalScrollBar()->maximum(), 0);
}

void TestLookContents::aWindowKeepsTheLeastSizeOfWhatFitsASmallDisplay() {
    Tall window({500, 400});
    window.menuBar()->addMenu(QStringLiteral("File"));
    window.show();
    settle();
    window.resize(10, 10);
    settle();
    QVERIFY(window.width() >= 500);
    QVERIFY(window.height() >= 400 + window.first->height() + window.last->height());
    QCOMPARE(window.area()->verticalScrollBar()->maximum(), 0);
}

void TestLookContents::noWindowIsMadeLargerThanASmallDisplay() {
    const QSize display = QGuiApplication::primaryScreen()->availableSize();
    Tall window({3000, 2000});
    window.menuBar()->addMenu(QStringLiteral("File"));
    window.show();
    window.resize(10, 10);
    settle();
    QCOMPARE(window.size(), QSize(1024, 700).boundedTo(display));
    QVERIFY(window.contents()->width() >= 3000);
    QVERIFY(window.contents()->height() >= 2000);
    QVERIFY(window.area()->verticalScrollBar()->maximum() > 0);
    QVERIFY(window.area()->horizontalScrollBar()->maximum() > 0);
}

void TestLookContents::whatHasTheKeyboardComesIntoSight() {
    Tall window({300, 2000});
    window.resize(600, 500);
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    window.first->setFocus();
    settle();
    QVERIFY(window.isSeen(window.first));
    QVERIFY(!window.isSeen(window.last));
    QTest::keyClick(window.first, Qt::Key_Tab);
    QVERIFY(window.last->hasFocus());
    QVERIFY(window.isSeen(window.last));
    window.first->setFocus(Qt::ShortcutFocusReason);
    QVERIFY(window.isSeen(window.first));
}

void TestLookContents::aWindowOpensAtItsStart() {
    Tall window({3000, 2000});
    window.last->setFocus();
    window.showScreen();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    settle();
    QVERIFY(window.last->hasFocus());
    QCOMPARE(window.area()->verticalScrollBar()->value(), 0);
    QCOMPARE(window.area()->horizontalScrollBar()->value(), 0);
    QTest::keyClick(window.last, Qt::Key_Backtab);
    QVERIFY(window.first->hasFocus());
    QTest::keyClick(window.first, Qt::Key_Tab);
    QVERIFY(window.isSeenDownwards(window.last));
    // A window in between takes the keyboard, and gives it back.
    window.area()->verticalScrollBar()->setValue(0);
    QWidget other;
    other.show();
    other.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QVERIFY(window.last->hasFocus());
    QCOMPARE(window.area()->verticalScrollBar()->value(), 0);
}

void TestLookContents::whatIsShownOnlyNowIsScrolledToAsAWhole() {
    Tall window({300, 2000});
    auto* late = new QLineEdit;
    late->setFixedHeight(90);
    late->hide();
    static_cast<QVBoxLayout*>(window.contents()->layout())->addWidget(late);
    window.resize(600, 500);
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    window.first->setFocus();
    settle();
    late->show();
    late->setFocus(); // before the layout was told
    settle();
    QVERIFY(window.isSeen(late));
}

void TestLookContents::whatIsLargerThanTheViewIsSeenFromItsStart() {
    Tall window({300, 2000});
    window.room->setFocusPolicy(Qt::StrongFocus);
    window.resize(600, 500);
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    window.first->setFocus();
    settle();
    QScrollBar* bar = window.area()->verticalScrollBar();
    window.room->setFocus();
    QCOMPARE(bar->value(), window.room->y() - look::spaceSmall);
    window.first->setFocus();
    bar->setValue(700); // nothing but the large one is seen there
    window.room->setFocus();
    QCOMPARE(bar->value(), 700);
}

void TestLookContents::aColumnIsWholeWhereTheWindowScrolls() {
    constexpr int kWhole = 600;
    constexpr int kLeast = 200;
    Tall window({300, 100});
    auto* column = new QWidget;
    column->setMinimumHeight(kWhole);
    auto* inner = new look::ColumnArea(column, kLeast);
    static_cast<QVBoxLayout*>(window.contents()->layout())->insertWidget(1, inner);
    const int others = window.contents()->minimumSizeHint().height() - kLeast;
    window.resize(600, others + 400); // the column scrolls, and the window does not
    window.show();
    settle();
    QCOMPARE(window.area()->verticalScrollBar()->maximum(), 0);
    QCOMPARE_GT(inner->verticalScrollBar()->maximum(), 0);
    window.room->setMinimumHeight(1000); // now the window has to
    settle();
    QCOMPARE_GT(window.area()->verticalScrollBar()->maximum(), 0);
    QCOMPARE(inner->verticalScrollBar()->maximum(), 0);
    QCOMPARE(inner->height(), kWhole);
    window.room->setMinimumHeight(100);
    settle();
    QCOMPARE(window.area()->verticalScrollBar()->maximum(), 0);
}

void TestLookContents::whatIsClickedStaysWhereItIs() {
    Tall window({300, 2000});
    window.resize(600, 500);
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    window.last->setFocus();
    QScrollBar* bar = window.area()->verticalScrollBar();
    bar->setValue(window.first->y() + window.first->height() / 2); // half of it is to be seen
    const int before = bar->value();
    QTest::mousePress(window.first, Qt::LeftButton, {}, QPoint(5, window.first->height() - 2));
    QVERIFY(window.first->hasFocus());
    QCOMPARE(bar->value(), before);
}

void TestLookContents::wordsThatWrapAreNotSqueezed() {
    Tall window({300, 100});
    auto* words = new QLabel(QStringLiteral("words that wrap ").repeated(200));
    words->setWordWrap(true);
    static_cast<QVBoxLayout*>(window.contents()->layout())->addWidget(words);
    window.resize(400, 300);
    window.show();
    settle();
    QVERIFY(words->height() >= words->heightForWidth(words->width()));
    QVERIFY(window.area()->verticalScrollBar()->maximum() > 0);
    QCOMPARE(window.area()->horizontalScrollBar()->maximum(), 0); // the bar's room is taken from the words
}

void TestLookContents::contentsThatGrowMakeTheWindowGrow() {
    Tall window({300, 100});
    window.resize(400, 300);
    window.show();
    settle();
    window.room->setMinimumHeight(450);
    settle();
    QVERIFY(window.height() >= 450);
    QCOMPARE(window.area()->verticalScrollBar()->maximum(), 0);
    window.room->setMinimumHeight(2000);
    settle();
    QVERIFY(window.height() <= 700);
    QVERIFY(window.area()->verticalScrollBar()->maximum() > 0);
    window.room->setMinimumHeight(100);
    settle();
    QCOMPARE(window.area()->verticalScrollBar()->maximum(), 0);
    QCOMPARE(window.contents()->size(), window.centralWidget()->size());
}

/// The usual first size is 1180 by 640.
void TestLookContents::aFirstSizeGrowsWithWhatIsNeeded() {
    Tall usual({300, 100});
    usual.showScreen();
    QCOMPARE(usual.size(), QSize(1180, 640).boundedTo(usual.screen()->availableSize()));
    Tall needy({300, 700});
    needy.showScreen();
    QCOMPARE(needy.height(), std::min(needy.screen()->availableSize().height(),
                                      needy.contents()->minimumSizeHint().height()));
}

void TestLookContents::aWindowOpensInItsOwnSizeMenuAndAll() {
    class Sized final : public platform::Screen {
    public:
        explicit Sized(int least)
            : Screen(QStringLiteral("Sized%1").arg(least)) {
            menuBar()->addMenu(QStringLiteral("File"));
            auto* ground = new QWidget;
            ground->setMinimumSize(100, least);
            setContents(ground);
        }
        QSize firstSize() const override { return {600, 400}; }
    };
    Sized fits(100);
    fits.showScreen();
    QCOMPARE(fits.size(), QSize(600, 400));
    Sized needs(500); // more than that opens larger
    needs.showScreen();
    QCOMPARE(needs.size(), QSize(600, 500 + needs.menuBar()->sizeHint().height()));
}

void TestLookContents::aPictureHoldsWhatScrolls() {
    Tall screen({2000, 1500});
    screen.room->setAutoFillBackground(true);
    QPalette palette = screen.room->palette();
    palette.setColor(QPalette::Window, Qt::red);
    screen.room->setPalette(palette);
    screen.showScreen();
    screen.resize(600, 500);
    settle();
    const QImage picture = screen.picture().toImage();
    QVERIFY(picture.width() >= 2000 && picture.height() >= 1500);
    const QRect room(screen.room->mapTo(screen.contents(), QPoint()), screen.room->size());
    QCOMPARE(picture.pixelColor(room.topLeft() + QPoint(5, 5)), QColor(Qt::red));
    QCOMPARE(picture.pixelColor(room.bottomRight() - QPoint(5, 5)), QColor(Qt::red));
    Tall fits({100, 100});
    fits.showScreen();
    fits.resize(600, 500);
    settle();
    QCOMPARE(fits.picture().toImage(), fits.grab().toImage());
}

QTEST_MAIN(TestLookContents)
#include "test_look_contents.moc"
