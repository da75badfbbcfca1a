// The session ends in the midst of other work.

#include "platform/screen/sessionend.h"
#include "platform/storewait.h"

#include <QGuiApplication>
#include <QtTest>

#include <csignal>

using namespace benthor;

class TestSessionEnd : public QObject {
    Q_OBJECT

private slots:
    void aSignalUnderAStoreThatWaitsIsHeardBehindTheWait();
    void behindASignalNoLockIsWaitedForLong();
};

/// Whoever saves then would use the very store that is in the midst of a change.
void TestSessionEnd::aSignalUnderAStoreThatWaitsIsHeardBehindTheWait() {
    const platform::SessionEnd session;
    QSignalSpy ending(&session, &platform::SessionEnd::ending);
    qsizetype underTheWait = -1;
    const platform::StoreWaiting waiting([&](platform::StoreWait, std::chrono::milliseconds) {
        ::raise(SIGTERM);
        QTest::qWait(100); // the window of a wait lets events run
        underTheWait = ending.size();
        return false;
    });
    QVERIFY(!platform::waitForLock("some.mdb"));
    QCOMPARE(underTheWait, 0);
    QTRY_COMPARE(ending.size(), 1);
}

/// A second in all, in rounds of no less than a fiftieth of it; without a signal there are five times as
/// many.
void TestSessionEnd::behindASignalNoLockIsWaitedForLong() {
    platform::endAllWaits();
    int rounds = 0;
    while (platform::waitForLock("another.mdb")) {
        ++rounds;
    }
    QVERIFY2(rounds <= 51, qPrintable(QString::number(rounds)));
}

QTEST_MAIN(TestSessionEnd)
#include "test_sessionend.moc"
