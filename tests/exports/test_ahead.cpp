#include "exports/workahead.h"
#include "platform/pieces.h"

#include <QRandomGenerator>
#include <QtTest>

#include <atomic>
#include <stdexcept>

using namespace benthor::exports;
using benthor::platform::Pieces;

/// What exports are made of on their way: work that is done ahead, and bytes that go out in pieces.
class TestAhead : public QObject {
    Q_OBJECT

private slots:
    void resultsComeInOrder() {
        constexpr int kCount = 1000;
        WorkAhead<qsizetype> work(kCount, [](qsizetype index) {
            return [index] {
                QThread::usleep(static_cast<unsigned long>((index * 37) % 50)); // some take longer
                return index * index;
            };
        });
        for (qsizetype index = 0; index < kCount; ++index) {
            QCOMPARE(work.next(), index * index);
        }
    }

    /// Memory must not grow with the number of dives.
    void noMoreIsBegunThanAFewForEachThread() {
        constexpr int kCount = 300;
        const qsizetype most = 6LL * std::max(1, QThread::idealThreadCount());
        qsizetype begun = 0;
        WorkAhead<int> work(kCount, [&begun](qsizetype) {
            ++begun;
            return [] { return 0; };
        });
        for (qsizetype taken = 0; taken < kCount; ++taken) {
            work.next();
            QVERIFY2(begun - taken <= most, qPrintable(QString::number(begun - taken)));
        }
        QCOMPARE(begun, kCount);
    }

    void whatAPieceThrowsComesInItsTurn() {
        WorkAhead<int> work(3, [](qsizetype index) {
            return [index]() -> int {
                return index == 1 ? throw std::runtime_error("the second") : static_cast<int>(index);
            };
        });
        QCOMPARE(work.next(), 0);
        QVERIFY_EXCEPTION_THROWN(work.next(), std::runtime_error);
        QCOMPARE(work.next(), 2);
    }

    /// Whoever stops in between waits for what has begun, and for nothing else.
    void anEarlyEndLeavesNothingRunning() {
        std::atomic<int> running = 0;
        std::atomic<int> done = 0;
        {
            WorkAhead<int> work(100, [&](qsizetype) {
                return [&] {
                    ++running;
                    QThread::msleep(1);
                    --running;
                    return ++done;
                };
            });
            work.next();
        }
        QCOMPARE(running.load(), 0);
        QVERIFY(done.load() < 100);
    }

    void piecesAreWholeAndNothingIsLost() {
        QRandomGenerator random(7);
        for (int run = 0; run < 50; ++run) {
            Pieces pieces;
            QByteArray given;
            QByteArray sent;
            bool isWhole = true;
            const auto send = [&](QByteArrayView bytes) {
                isWhole = isWhole && bytes.size() % Pieces::kSize == 0;
                sent += bytes;
            };
            for (int put = random.bounded(1, 40); put > 0; --put) {
                const int kind = random.bounded(4);
                const qsizetype size = kind == 0   ? 0
                                       : kind == 1 ? random.bounded(100)
                                       : kind == 2 ? random.bounded(100000)
                                                   : Pieces::kSize * random.bounded(4);
                QByteArray bytes(size, Qt::Uninitialized);
                random.generate(bytes.begin(), bytes.end());
                given += bytes;
                pieces.put(bytes, send);
            }
            QVERIFY(isWhole);
            QVERIFY(given.size() - sent.size() < Pieces::kSize);
            pieces.flush([&](QByteArrayView bytes) { sent += bytes; });
            QVERIFY(sent == given);
            pieces.flush([&](QByteArrayView bytes) { QVERIFY(bytes.isEmpty()); });
        }
    }
};

QTEST_GUILESS_MAIN(TestAhead)
#include "test_ahead.moc"
