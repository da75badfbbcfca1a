#include "platform/screen/screen.h"

#include "platform/screen/screenslot.h"
#include "platform/screen/ticktimer.h"
#include "platform/screen/windowplace.h"
#include "platform/usersettings.h"
#include "tests/support/testsettings.h"

#include <QLabel>
#include <QLineEdit>
#include <QtTest>

using namespace benthor::platform;

namespace {

class Sample : public Screen {
    Q_OBJECT

public:
    Sample()
        : Screen(QStringLiteral("Sample"))
        , label(new QLabel(this)) {}
    ~Sample() override { ++destroyed; }

    /// Yields three times; `act` runs in the first. Says how often it was told to go on.
    int longRoutine(const std::function<void()>& act) {
        const Routine routine(*this);
        QTimer::singleShot(0, this, act);
        int goneOn = 0;
        for (int i = 0; i < 3; ++i) {
            goneOn += yieldEvents() ? 1 : 0;
            QCoreApplication::processEvents();
            QCoreApplication::sendPostedEvents();
        }
        aliveAtTheEnd = destroyed == 0;
        return goneOn;
    }

    /// Paints until `done` or until the screen is closed. Says whether it was told to go on to the end.
    bool busyLoop(const std::function<bool()>& done) {
        const Routine routine(*this);
        QElapsedTimer time;
        time.start();
        while (!done() && time.elapsed() < 5000) {
            if (!yieldPainting()) {
                aliveAtTheEnd = destroyed == 0;
                return false;
            }
        }
        return true;
    }

    QLabel* label;
    bool unloadWhileLoading = false;
    int loads = 0;
    int unloads = 0;
    static int destroyed;
    static bool aliveAtTheEnd;

protected:
    void loading() override {
        ++loads;
        if (unloadWhileLoading) {
            unload();
        }
    }
    void unloading() override { ++unloads; }
};

int Sample::destroyed = 0;
bool Sample::aliveAtTheEnd = false;

} // namespace

class TestScreen : public QObject {
    Q_OBJECT

private slots:
    void aTextBoxThatLosesTheFocusAsTheSlotGoesFindsItsScreenWhole();
    void init() { Sample::destroyed = 0; }
    void aWindowStandsBesideAnotherAndNeverOverIt();
    void addressingLoadsHiddenAndOnce();
    void aScreenMadeAheadIsNoneUntilItIsAddressed();
    void aScreenMadeAheadAndNeverAddressedGoesWithItsSlot();
    void hidingKeepsWhatAControlShows();
    void unloadingForgetsIt();
    void closingTheWindowUnloads();
    void aScreenMayUnloadItselfWhileItLoads();
    void aRoutineEndsAtItsNextYieldAfterAnUnload();
    void aBusyLoopPaintsAndServesNeitherInputNorTick();
    void aBusyLoopEndsWhenTheScreenIsClosed();
    void timersStopWhenAScreenIsUnloaded();
    void unloadingTwiceRunsOnce();
    void aWindowOpensInTheMiddleAtFirst();
    void aWindowComesBackWhereItWas();
    void noWindowOpensOffTheDisplay();
    void theFrameOfAWindowComesToStandOnTheDisplay();
    void aWindowIsNeverLargerThanItsDisplay();

private:
    benthor::tests::TestSettings settings_;
};

void TestScreen::addressingLoadsHiddenAndOnce() {
    ScreenSlot<Sample> slot([] { return new Sample; });
    QVERIFY(!slot.isLoaded());
    Sample& screen = slot.get();
    QVERIFY(slot.isLoaded());
    QVERIFY(!screen.isVisible());
    QCOMPARE(&slot.get(), &screen);
    slot.show();
    QVERIFY(screen.isVisible());
    QCOMPARE(screen.loads, 1);
}

void TestScreen::aScreenMadeAheadIsNoneUntilItIsAddressed() {
    int made = 0;
    int ticks = 0;
    ScreenSlot<Sample> slot([&] {
        ++made;
        auto* screen = new Sample;
        auto* beats = new TickTimer(QStringLiteral("beats"), 1, TickTimer::Start::Enabled, screen);
        QObject::connect(beats, &TickTimer::tick, screen, [&ticks] { ++ticks; });
        new TickTimer(QStringLiteral("stands"), 1, TickTimer::Start::Disabled, screen);
        return screen;
    });
    slot.makeAhead();
    slot.makeAhead();
    QCOMPARE(made, 1);
    QVERIFY(!slot.isLoaded() && !slot.isVisible() && slot.ifVisible() == nullptr);
    slot.unload();
    QTest::qWait(20);
    QCOMPARE(ticks, 0);
    Sample& screen = slot.get();
    QCOMPARE(made, 1);
    QCOMPARE(screen.loads, 1);
    QVERIFY(slot.isLoaded() && !screen.isVisible());
    QTRY_VERIFY(ticks > 0);
    QVERIFY(!screen.findChild<TickTimer*>(QStringLiteral("stands"))->isEnabled());
    slot.makeAhead(); // there is one
    QCOMPARE(made, 1);
    slot.unload();
    slot.show();
    QCOMPARE(made, 2);
}

void TestScreen::aScreenMadeAheadAndNeverAddressedGoesWithItsSlot() {
    {
        ScreenSlot<Sample> slot([] { return new Sample; });
        slot.makeAhead();
        QCOMPARE(Sample::destroyed, 0);
    }
    QCOMPARE(Sample::destroyed, 1);
}

void TestScreen::hidingKeepsWhatAControlShows() {
    ScreenSlot<Sample> slot([] { return new Sample; });
    slot.show();
    slot.get().label->setText(QStringLiteral("kept"));
    slot.get().hide();
    QCOMPARE(slot.get().label->text(), "kept");
}

void TestScreen::unloadingForgetsIt() {
    ScreenSlot<Sample> slot([] { return new Sample; });
    slot.get().label->setText(QStringLiteral("kept"));
    slot.unload();
    QVERIFY(!slot.isLoaded());
    QCOMPARE(slot.get().label->text(), "");
    QTRY_COMPARE(Sample::destroyed, 1);
}

void TestScreen::closingTheWindowUnloads() {
    ScreenSlot<Sample> slot([] { return new Sample; });
    slot.show();
    slot.get().close();
    QVERIFY(!slot.isLoaded());
    QTRY_COMPARE(Sample::destroyed, 1);
}

void TestScreen::aScreenMayUnloadItselfWhileItLoads() {
    ScreenSlot<Sample> slot([] {
        auto* screen = new Sample;
        screen->unloadWhileLoading = true;
        return screen;
    });
    slot.show();
    QVERIFY(!slot.isLoaded());
    QCOMPARE(Sample::destroyed, 0);
    QTRY_COMPARE(Sample::destroyed, 1);
}

void TestScreen::aRoutineEndsAtItsNextYieldAfterAnUnload() {
    ScreenSlot<Sample> slot([] { return new Sample; });
    Sample& screen = slot.get();
    QCOMPARE(screen.longRoutine([] {}), 3);
    QCOMPARE(screen.longRoutine([&slot] { slot.unload(); }), 0);
    QVERIFY(!slot.isLoaded());
    QVERIFY(Sample::aliveAtTheEnd);
    QTRY_COMPARE(Sample::destroyed, 1);
}

void TestScreen::aBusyLoopPaintsAndServesNeitherInputNorTick() {
    class Watched : public QLabel {
    public:
        int painted = 0;
        int keys = 0;

    protected:
        void paintEvent(QPaintEvent* event) override {
            ++painted;
            QLabel::paintEvent(event);
        }
        void keyPressEvent(QKeyEvent*) override { ++keys; }
    };
    ScreenSlot<Sample> slot([] { return new Sample; });
    auto* label = new Watched;
    slot.get().setCentralWidget(label);
    slot.show();
    QVERIFY(QTest::qWaitForWindowExposed(&slot.get()));
    QTRY_VERIFY(label->painted > 0);
    label->painted = 0;
    TickTimer timer(QStringLiteral("Timer1"), 1, TickTimer::Start::Enabled, nullptr);
    int ticks = 0;
    connect(&timer, &TickTimer::tick, this, [&ticks] { ++ticks; });
    int beats = 0;
    QTimer beat;
    connect(&beat, &QTimer::timeout, this, [&beats] { ++beats; });
    beat.start(1);
    QCoreApplication::postEvent(
        label, new QKeyEvent(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, QStringLiteral("a")));
    label->update();
    QVERIFY(slot.get().busyLoop([&] { return label->painted > 0 && beats > 5; }));
    QVERIFY(label->painted > 0);
    QVERIFY(beats > 5);
    QCOMPARE(ticks, 0);
    QCOMPARE(label->keys, 0);
    timer.expire();
    QCOMPARE(ticks, 1);
    QTest::keyClick(label, Qt::Key_B);
    QCOMPARE(label->keys, 1);
}

void TestScreen::aBusyLoopEndsWhenTheScreenIsClosed() {
    ScreenSlot<Sample> slot([] { return new Sample; });
    slot.show();
    Sample& screen = slot.get();
    QMetaObject::invokeMethod(&screen, &QWidget::close, Qt::QueuedConnection);
    QVERIFY(!screen.busyLoop([] { return false; }));
    QVERIFY(Sample::aliveAtTheEnd);
    QVERIFY(!slot.isLoaded());
    QTRY_COMPARE(Sample::destroyed, 1);
}

void TestScreen::timersStopWhenAScreenIsUnloaded() {
    ScreenSlot<Sample> slot([] { return new Sample; });
    auto* timer = new TickTimer(QStringLiteral("Timer1"), 1, TickTimer::Start::Enabled, &slot.get());
    slot.unload();
    QVERIFY(!timer->isEnabled());
}

void TestScreen::unloadingTwiceRunsOnce() {
    Sample* screen = new Sample;
    screen->load();
    QSignalSpy unloaded(screen, &Screen::unloaded);
    screen->unload();
    screen->unload();
    QCOMPARE(unloaded.count(), 1);
    QCOMPARE(screen->unloads, 1);
    QTRY_COMPARE(Sample::destroyed, 1);
}

void TestScreen::aWindowOpensInTheMiddleAtFirst() {
    QCOMPARE(windowPlace({}, {400, 200}, {QRect(0, 0, 1000, 800)}), QRect(300, 300, 400, 200));
    QCOMPARE(windowPlace({}, {400, 200}, {}), QRect(0, 0, 400, 200));
}

void TestScreen::aWindowComesBackWhereItWas() {
    const QRect second(1000, 0, 1000, 800);
    QCOMPARE(windowPlace({1100, 20, 400, 200}, {1, 1}, {QRect(0, 0, 1000, 800), second}),
             QRect(1100, 20, 400, 200));
    userSettings().setRectangle(QStringLiteral("Windows"), QStringLiteral("Sample"), {5, 6, 300, 200});
    QCOMPARE(userSettings().rectangle(QStringLiteral("Windows"), QStringLiteral("Sample")),
             QRect(5, 6, 300, 200));
    ScreenSlot<Sample> slot([] { return new Sample; });
    slot.show();
    QCOMPARE(slot.get().geometry().size(), QSize(300, 200));
}

void TestScreen::noWindowOpensOffTheDisplay() {
    const QList<QRect> one{QRect(0, 0, 1000, 800)};
    QCOMPARE(windowPlace({5000, 5000, 400, 200}, {1, 1}, one), QRect(600, 600, 400, 200));
    QCOMPARE(windowPlace({-300, -50, 400, 200}, {1, 1}, one), QRect(0, 0, 400, 200));
}

/// The system of windows adds the frame; here it is two pixels wide.
void TestScreen::theFrameOfAWindowComesToStandOnTheDisplay() {
    userSettings().setRectangle(QStringLiteral("Windows"), QStringLiteral("Sample"), {0, 0, 300, 200});
    ScreenSlot<Sample> slot([] { return new Sample; });
    slot.show();
    Sample& screen = slot.get();
    QVERIFY(screen.frameGeometry().top() < screen.geometry().top());
    const QRect display = screen.screen()->availableGeometry();
    QTRY_VERIFY2(display.contains(screen.frameGeometry()), "the frame is beside the display");
    QCOMPARE(screen.geometry().size(), QSize(300, 200));
    QTest::qWait(100);                      // until the frame has been seen to
    screen.setGeometry(-40, -30, 300, 200); // what a user does afterwards stays
    QCoreApplication::processEvents();
    const QRect moved = screen.geometry();
    QVERIFY(!display.contains(moved));
    QTest::qWait(1100);
    QCOMPARE(screen.geometry(), moved);
}

void TestScreen::aWindowIsNeverLargerThanItsDisplay() {
    QCOMPARE(windowPlace({0, 0, 4000, 3000}, {1, 1}, {QRect(0, 0, 1000, 800)}), QRect(0, 0, 1000, 800));
}

void TestScreen::aTextBoxThatLosesTheFocusAsTheSlotGoesFindsItsScreenWhole() {
    Sample::destroyed = 0;
    int finished = 0;
    int finishedTooLate = 0;
    {
        ScreenSlot<Sample> slot([] { return new Sample; });
        auto* box = new QLineEdit(&slot.get());
        QObject::connect(box, &QLineEdit::editingFinished, box, [&] {
            ++finished;
            finishedTooLate += Sample::destroyed;
        });
        slot.showInFront();
        box->setFocus();
        QTRY_VERIFY(box->hasFocus());
        QTest::keyClicks(box, QStringLiteral("7"));
    }
    QCOMPARE(finished, 1);
    QCOMPARE(finishedTooLate, 0);
    QCOMPARE(Sample::destroyed, 1);
}

void TestScreen::aWindowStandsBesideAnotherAndNeverOverIt() {
    const QRect display(0, 0, 1000, 800);
    const QSize size(300, 200);
    QCOMPARE(placeBeside({100, 50, 400, 300}, size, {display}), QPoint(500, 50));
    QCOMPARE(placeBeside({400, 50, 600, 300}, size, {display}), QPoint(100, 50));
    QCOMPARE(placeBeside({0, 0, 1000, 500}, size, {display}), QPoint(0, 500));
    QCOMPARE(placeBeside({0, 300, 1000, 500}, size, {display}), QPoint(0, 100));
    QCOMPARE(placeBeside(display, size, {display}), std::nullopt);
    QCOMPARE(placeBeside({100, 700, 400, 300}, size, {display}), QPoint(500, 600)); // wholly on it
    // On the display of the window first, on another where that has no room.
    const QRect second(1000, 0, 1000, 800);
    QCOMPARE(placeBeside({1000, 0, 600, 800}, size, {display, second}), QPoint(1600, 0));
    QCOMPARE(placeBeside(second, size, {display, second}), QPoint(700, 0));
}

QTEST_MAIN(TestScreen)
#include "test_screen.moc"
