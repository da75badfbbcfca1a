#include "platform/screen/ticktimer.h"

#include <QtTest>

using benthor::platform::TickHold;
using benthor::platform::TickTimer;

class TestTickTimer : public QObject {
    Q_OBJECT

private slots:
    void anEnabledTimerTicks();
    void aDisabledTimerDoesNot();
    void heldTicksAreNotMadeUpFor();
    void holdsNest();
    void enablingAgainLeavesTheBeatAlone();
    void nameEnabledAndIntervalAreProperties();
};

void TestTickTimer::anEnabledTimerTicks() {
    TickTimer timer(QStringLiteral("Timer1"), 1, TickTimer::Start::Enabled, nullptr);
    QSignalSpy ticks(&timer, &TickTimer::tick);
    QTRY_VERIFY(ticks.count() >= 2);
}

void TestTickTimer::aDisabledTimerDoesNot() {
    TickTimer off(QStringLiteral("Timer1"), 1, TickTimer::Start::Disabled, nullptr);
    TickTimer on(QStringLiteral("Timer2"), 5, TickTimer::Start::Enabled, nullptr);
    QSignalSpy offTicks(&off, &TickTimer::tick);
    QSignalSpy onTicks(&on, &TickTimer::tick);
    QTRY_VERIFY(onTicks.count() >= 3);
    QCOMPARE(offTicks.count(), 0);
}

void TestTickTimer::heldTicksAreNotMadeUpFor() {
    TickTimer timer(QStringLiteral("Timer1"), 60000, TickTimer::Start::Enabled, nullptr);
    QSignalSpy ticks(&timer, &TickTimer::tick);
    {
        const TickHold hold;
        timer.expire();
        timer.expire();
        QVERIFY(timer.isEnabled());
    }
    QCOMPARE(ticks.count(), 0);
    QCoreApplication::processEvents();
    QCOMPARE(ticks.count(), 0);
    timer.expire();
    QCOMPARE(ticks.count(), 1);
}

void TestTickTimer::holdsNest() {
    const TickHold outer;
    {
        const TickHold inner;
        QVERIFY(TickHold::active());
    }
    QVERIFY(TickHold::active());
}

void TestTickTimer::enablingAgainLeavesTheBeatAlone() {
    TickTimer timer(QStringLiteral("Timer1"), 60000, TickTimer::Start::Enabled, nullptr);
    QSignalSpy ticks(&timer, &TickTimer::tick);
    timer.setInterval(40);
    QElapsedTimer since;
    since.start();
    while (ticks.isEmpty() && since.elapsed() < 5000) {
        timer.setEnabled(true);
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    }
    QCOMPARE(ticks.count(), 1);
}

void TestTickTimer::nameEnabledAndIntervalAreProperties() {
    TickTimer timer(QStringLiteral("Timer4"), 2000, TickTimer::Start::Disabled, nullptr);
    QCOMPARE(timer.objectName(), "Timer4");
    QCOMPARE(timer.property("interval").toInt(), 2000);
    QCOMPARE(timer.property("enabled").toBool(), false);
    QVERIFY(timer.setProperty("enabled", true));
    QVERIFY(timer.isEnabled());
}

QTEST_GUILESS_MAIN(TestTickTimer)
#include "test_ticktimer.moc"
