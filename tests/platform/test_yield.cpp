#include "platform/yield.h"

#include <QtTest>

using namespace benthor::platform;
using namespace std::chrono_literals;

namespace {

/// A clock that moves when told, and counts who looks.
struct HandClock {
    std::chrono::milliseconds time = 1000ms;
    int looks = 0;
};

} // namespace

class TestYield : public QObject {
    Q_OBJECT

private slots:
    void init() {
        clock_ = {};
        passedOn_ = 0;
        answer_ = true;
    }
    void theClockIsLookedAtEvery64thCallOnly();
    void nothingIsPassedOnBeforeFifteenMilliseconds();
    void aCallIsPassedOnOnceTheTimeHasGoneBy();
    void theTimeCountsFromTheEndOfTheCallPassedOn();
    void theAnswerOfTheLastCallStays();
    void aCopyMayServeAsTheYieldOfARoutine();

private:
    ThrottledYield throttled() {
        return ThrottledYield(
            [this] {
                ++passedOn_;
                return answer_;
            },
            [this] {
                ++clock_.looks;
                return clock_.time;
            });
    }

    HandClock clock_;
    int passedOn_ = 0;
    bool answer_ = true;
};

void TestYield::theClockIsLookedAtEvery64thCallOnly() {
    ThrottledYield yield = throttled();
    clock_.looks = 0;
    for (int i = 0; i < 63; ++i) {
        QVERIFY(yield());
    }
    QCOMPARE(clock_.looks, 0);
    yield();
    QCOMPARE(clock_.looks, 1);
    for (int i = 0; i < 6400; ++i) {
        yield();
    }
    QCOMPARE(clock_.looks, 101);
}

void TestYield::nothingIsPassedOnBeforeFifteenMilliseconds() {
    ThrottledYield yield = throttled();
    clock_.time += 14ms;
    for (int i = 0; i < 1000; ++i) {
        QVERIFY(yield());
    }
    QCOMPARE(passedOn_, 0);
}

void TestYield::aCallIsPassedOnOnceTheTimeHasGoneBy() {
    ThrottledYield yield = throttled();
    clock_.time += 15ms;
    for (int i = 0; i < 640; ++i) {
        yield();
    }
    QCOMPARE(passedOn_, 1);
    clock_.time += 15ms;
    for (int i = 0; i < 64; ++i) {
        yield();
    }
    QCOMPARE(passedOn_, 2);
}

void TestYield::theTimeCountsFromTheEndOfTheCallPassedOn() {
    ThrottledYield yield(
        [this] {
            ++passedOn_;
            clock_.time += 100ms; // events that take their time
            return true;
        },
        [this] { return clock_.time; });
    clock_.time += 15ms;
    for (int i = 0; i < 640; ++i) {
        yield();
    }
    QCOMPARE(passedOn_, 1);
}

void TestYield::theAnswerOfTheLastCallStays() {
    ThrottledYield yield = throttled();
    answer_ = false;
    clock_.time += 15ms;
    for (int i = 0; i < 63; ++i) {
        QVERIFY(yield());
    }
    QVERIFY(!yield());
    QVERIFY(!yield());
    QCOMPARE(passedOn_, 1);
}

void TestYield::aCopyMayServeAsTheYieldOfARoutine() {
    const std::function<bool()> yield = throttled();
    clock_.time += 15ms;
    for (int i = 0; i < 64; ++i) {
        QVERIFY(yield());
    }
    QCOMPARE(passedOn_, 1);
}

QTEST_GUILESS_MAIN(TestYield)
#include "test_yield.moc"
