#include "tests/simulator/loaderhands.h"

using namespace benthor::tests;

class TestLoaderFaults : public QObject {
    Q_OBJECT

private slots:
    void droppingOutItTakesNoMore() {
        Loader loader = inMode();
        loader.faults.dropOutAfter = 3000;
        QByteArray said = after(loader, '&' + records(ownImage()).first(2999), 40);
        QCOMPARE(said, QByteArray());
        said = after(loader, records(ownImage()).mid(2999, 1), 40);
        QCOMPARE(said.count(kMode), 1);
        QVERIFY(loader.state() == State::Reprogramming);
        // Of what still comes nothing is a key.
        for (int turn = 0; turn < 20; ++turn) {
            said = after(loader, "Q1&Y", Loader::deafMilliseconds - 100);
            QCOMPARE(said, QByteArray());
        }
        QVERIFY(!loader.over());
        after(loader, "", Loader::deafMilliseconds);
        QVERIFY(after(loader, "1").contains(kMode));
        loader.faults = {};
        QVERIFY(send(loader, ownImage()).contains("Prog"));
    }

    void endingEarlyItListsItsMemories() {
        Loader loader = inMode();
        loader.faults.endEarlyAfter = 500;
        const QByteArray said = after(loader, '&' + records(ownImage()), 40);
        QVERIFY(said.startsWith("MEMORY A Erased"));
        hasNone(said, {"REPROG MODE", "Status check", " to ", "8:f", "shell:"});
        QCOMPARE(after(loader, "Q1&Y", 900), QByteArray());
        after(loader, "", 1000);
        QVERIFY(after(loader, "1").contains(kPrompt));
        QCOMPARE(loader.check, kOldCheck);
    }

    void aWrongSumIsOneLess() {
        const QByteArray right = toldSum('&' + sumOf(ownImage()));
        const QByteArray wrong = toldSum('&' + sumOf(ownImage()) - 1);
        Loader loader = inMode();
        loader.faults.wrongSums = 2;
        QCOMPARE(send(loader, ownImage()), wrong);
        QCOMPARE(after(loader, "&"), wrong);
        QCOMPARE(after(loader, "&"), right);
        Loader never = inMode();
        never.faults.wrongSums = LoaderFaults::always;
        QCOMPARE(send(never, ownImage()), wrong);
        QCOMPARE(after(never, "&&&&&&&&&&"), wrong.repeated(10));
    }

    void aMemoryStaysErased_data() {
        QTest::addColumn<char>("letter");
        QTest::newRow("A") << 'A';
        QTest::newRow("B") << 'B';
        QTest::newRow("C") << 'C';
    }

    void aMemoryStaysErased() {
        QFETCH(char, letter);
        Loader loader = withVerdict({.leftErased = letter});
        const QByteArray said = after(loader, "y", 6100);
        const QByteArray missing = QByteArray("MEMORY ") + letter + " Programmed";
        QCOMPARE(said.count("Erased"), 3);
        QCOMPARE(said.count("Programmed"), 2);
        QVERIFY(!said.contains(missing));
        const QByteArray page = after(loader, "1");
        QVERIFY(page.contains(kPrompt));
        QVERIFY(!page.contains(missing));
    }

    void aWrongValueIsReported() {
        for (const bool own : {true, false}) {
            const QByteArray image = own ? ownImage() : '*' + QByteArray(300, 'c');
            Loader loader = inMode();
            loader.foreignCheck = "FFFF";
            loader.faults.wrongCheck = true;
            send(loader, image);
            const QByteArray told = digitsOf(after(loader, "y", 6100));
            QCOMPARE(told.size(), 4);
            QVERIFY(told != (own ? storedCheck(image) : "FFFF"));
            QVERIFY(!told.contains('s'));
        }
    }

    void silentAfterTheTransferItGoesOnWhenToldTo() {
        Loader loader = inMode();
        loader.faults.silentEnd = true;
        QCOMPARE(send(loader, ownImage()), QByteArray());
        QCOMPARE(after(loader, "&&1", 5000), QByteArray());
        const QByteArray said = after(loader, "2");
        QVERIFY(said.startsWith(toldSum('&' + sumOf(ownImage()))));
        QVERIFY(after(loader, "y", 6100).contains("shell:"));
    }

    void silentAfterTheTransferItStillTakesAVerdict() {
        Loader loader = withVerdict({.silentEnd = true});
        QVERIFY(after(loader, "n").contains(kMode));
        QVERIFY(after(loader, "1").contains(kMode));
    }

    void silentAfterTheVerdictItGoesOnWhenToldTo() {
        Loader loader = withVerdict({.silentAfterY = true});
        QCOMPARE(after(loader, "y", 3200), QByteArray());
        const QByteArray begin = after(loader, "2");
        QVERIFY(begin.startsWith("MEMORY A Erased\r\n"));
        QVERIFY(!begin.contains("shell:"));
        const QByteArray said = begin + after(loader, "", 3000);
        QVERIFY(said.startsWith(kProgramming));
        QVERIFY(said.contains("8:f"));
        QCOMPARE(digitsOf(said), storedCheck(ownImage()));
    }

    void silentAfterTheVerdictItCanBeRestarted() {
        Loader loader = withVerdict({.silentAfterY = true});
        QCOMPARE(after(loader, "y", 60000), QByteArray());
        QCOMPARE(after(loader, "1"), QByteArray());
        after(loader, "Q");
        QVERIFY(loader.over());
        QCOMPARE(loader.check, storedCheck(ownImage()));
    }

    void dataThatAreNotTheSameAreWantedOnceMore() {
        Loader loader = withVerdict({.secondGo = true});
        const QByteArray said = after(loader, "y", 20000);
        QCOMPARE(said, kProgramming + QByteArray("OOOOOOOOO").repeated(Loader::secondGoBeacons));
        QVERIFY(loader.state() == State::Reprogramming);
        QCOMPARE(loader.check, kOldCheck);
        QCOMPARE(send(loader, ownImage()), toldSum('&' + sumOf(ownImage())));
        QCOMPARE(digitsOf(after(loader, "y", 6100)), storedCheck(ownImage()));
        QVERIFY(loader.state() == State::Done);
    }

    void theRunThatWantsThemEndsWhenItIsSpokenTo() {
        Loader loader = withVerdict({.secondGo = true});
        const QByteArray said = after(loader, "y", 6000 * 7 / 8 + 600);
        QCOMPARE(said, kProgramming + QByteArray("OOOOOOOOO").repeated(3));
        QCOMPARE(send(loader, ownImage()), toldSum('&' + sumOf(ownImage())));
    }
};

QTEST_APPLESS_MAIN(TestLoaderFaults)
#include "test_loaderfaults.moc"
