#include "simulator/demodives.h"
#include "simulator/kd.h"

#include <QtTest>

using namespace benthor::simulator;

namespace {

const QByteArray kDive = "ver=V2.31\r\nRecint=10\r\nStart     , 521974517\r\nProfile\r\n1,2,3\r\nEnd\r\n";
const QByteArray kOlder = "ver=V2.31\r\nStart     , 521000000\r\nProfile\r\nEnd\r\n";

/// What comes in `milliseconds`, without the beacon that stands around it.
QByteArray answer(Kd& device, const QByteArray& command, int milliseconds = 3000) {
    device.receive(command);
    QByteArray came;
    for (int passed = 0; passed < milliseconds; passed += 50) {
        came += device.advance(50);
    }
    while (came.endsWith('P')) {
        came.chop(1);
    }
    return came;
}

Kd device() {
    return Kd({kDive, kOlder});
}

/// What the program writes to send a setup.
QByteArray setupCommand(const QByteArray& setup) {
    return "G   " + setup + "\x1B\x1B\r\n";
}

} // namespace

class TestKd : public QObject {
    Q_OBJECT

private slots:
    void anIdleDeviceSendsItsBeacon() {
        Kd kd = device();
        QByteArray came;
        for (int turn = 0; turn < 10; ++turn) {
            came += kd.advance(100);
        }
        QVERIFY(came.size() >= 6);
        QCOMPARE(came.count('P'), came.size());
    }

    void eachCommandIsAnswered_data() {
        QTest::addColumn<QByteArray>("command");
        QTest::addColumn<QByteArray>("expected");
        const QByteArray first = "ver=V2.31\r\nRecint=10\r\nStart     , 521974517\r\n";
        const QByteArray second = "ver=V2.31\r\nStart     , 521000000\r\n";
        QTest::newRow("directory") << QByteArray("M") << first + second + "End";
        QTest::newRow("last summary") << QByteArray("C") << first + "End";
        QTest::newRow("interval") << QByteArray("R") << QByteArray("r00010A006B040C070D140E160");
        QTest::newRow("set interval") << QByteArray("S005F\r\n") << QByteArray("sWait..+^+00005");
        QTest::newRow("set interval, unpadded") << QByteArray("S5F\r\n") << QByteArray("sWait..+^+00005");
        QTest::newRow("interval out of range") << QByteArray("S241F\r\n") << QByteArray("s");
        QTest::newRow("interval that is none") << QByteArray("S0abF\r\n") << QByteArray("s");
        QTest::newRow("dive 1") << QByteArray("D0") << kDive;
        QTest::newRow("dive 2") << QByteArray("D1") << kOlder;
        QTest::newRow("no such dive") << QByteArray("D9") << QByteArray();
        QTest::newRow("dive null") << QByteArray("D/") << QByteArray();
        QTest::newRow("all dives") << QByteArray("Dy") << kDive + kOlder + "backsenddone";
        QTest::newRow("logo") << QByteArray("L") << QByteArray("l");
        QTest::newRow("logo with body") << QByteArray("Lbits\x1B") << QByteArray("lWait..+++");
        QTest::newRow("setup in one piece") << setupCommand(newSetup()) << QByteArray("gWait..+=+");
        QTest::newRow("setup cut short") << setupCommand("A079\x1B") << QByteArray("g");
        QTest::newRow("setup with another letter in the place of a gas")
            << setupCommand(newSetup().replace(16, 1, "X")) << QByteArray("g");
        QTest::newRow("setup of more than 100 per cent")
            << setupCommand(newSetup().replace(1, 7, "079 090")) << QByteArray("g");
        QTest::newRow("readings") << QByteArray("J")
                                  << QByteArray(
                                         "R0000,0100, 1 ,0130,M0000,T0023,A00214,B00130,C00131,D00143,E00168,"
                                         "F00831,G00302,H00130,I00129,J00012,SURFACE\r\n");
        QTest::newRow("book") << QByteArray("Btext\x1B * * ") << QByteArray("bWait..+++");
        QTest::newRow("name") << "A^" + QByteArray("Ada").leftJustified(32) + "B*@ " + QByteArray(30, 'C') +
                                     "\r\n"
                              << QByteArray("aWait..+++");
        QTest::newRow("nothing it knows") << QByteArray("?x\r\n") << QByteArray();
    }

    void eachCommandIsAnswered() {
        QFETCH(QByteArray, command);
        QFETCH(QByteArray, expected);
        Kd kd = device();
        QCOMPARE(answer(kd, command), expected);
    }

    void aCommandMayComeByteByByte_data() { eachCommandIsAnswered_data(); }

    void aCommandMayComeByteByByte() {
        QFETCH(QByteArray, command);
        QFETCH(QByteArray, expected);
        Kd kd = device();
        for (qsizetype at = 0; at + 1 < command.size(); ++at) {
            kd.receive(command.mid(at, 1));
        }
        QCOMPARE(answer(kd, command.last(1)), expected);
    }

    void theSetupEndsAtItsLastSetting() {
        Kd kd = device();
        const QByteArray setup = answer(kd, "H");
        QCOMPARE(newSetup().size(), 226);
        QCOMPARE(newSetup().at(221), 'Y');
        QCOMPARE(setup, newSetup().first(222));
        QVERIFY(setup.startsWith("A079 000 0660 1 B001 000 0060 1 "));
    }

    void aDeviceOfTheThirdVersionHasNoSetupToRead() {
        Kd kd({kDive}, "V3.12");
        QCOMPARE(answer(kd, "H"), QByteArray());
        QVERIFY(answer(kd, "M").startsWith("ver=V3.12\r\n"));
    }

    void whatIsSentIsKept() {
        Kd kd = device();
        answer(kd, "S020F\r\n");
        answer(kd, "Lbits\x1B");
        answer(kd, "Btext\x1B * * ");
        const QByteArray other = newSetup().replace("P130", "P120");
        answer(kd, setupCommand(other));
        answer(kd, "A^" + QByteArray("Ada").leftJustified(32) + "B*@\r\n");
        QCOMPARE(kd.memory.interval, 20);
        QCOMPARE(kd.memory.logo, QByteArray("bits"));
        QCOMPARE(kd.memory.book, QByteArray("text"));
        QCOMPARE(kd.memory.setup, other);
        QCOMPARE(kd.memory.username, QByteArray("Ada").leftJustified(32));
        QCOMPARE(answer(kd, "R"), QByteArray("r00020A006B040C070D140E160"));
        const std::vector<QByteArray> expected{
            "S 020", "L", "logo 4 bytes", "B", "book 4 bytes", "G", "setup 228 bytes", "A", "R"};
        QVERIFY(kd.log() == expected);
    }

    void readingsComeUnaskedWhileNobodyAsks() {
        Kd kd = device();
        kd.unaskedMilliseconds = 1000;
        QByteArray came;
        for (int turn = 0; turn < 35; ++turn) {
            came += kd.advance(100);
        }
        QCOMPARE(came.count("R-001,0100,"), 4);
        QVERIFY(came.contains("PP"));
    }

    void theProductStandsAheadOfEachRunOfTheBeacon() {
        Kd kd = device();
        kd.productWord = "KDX";
        QByteArray came;
        for (int turn = 0; turn < 20; ++turn) {
            came += kd.advance(100);
        }
        QVERIFY(came.startsWith("KDXPP"));
        QCOMPARE(came.count("KDX"), 2);
        QVERIFY(came.contains("PPPPPPPP")); // what ends a dive that broke off
    }

    void whoeverComesLaterHearsTheProductWithinTwoSeconds() {
        Kd kd = device();
        kd.productWord = "KD3";
        kd.advance(10000);
        for (int turn = 0; turn < 10; ++turn) {
            QByteArray came;
            for (int step = 0; step < 8; ++step) {
                came += kd.advance(250);
            }
            QVERIFY2(came.contains("KD3"), came.constData());
        }
    }

    void theProductStandsBehindTheInterval() {
        Kd kd = device();
        kd.productWord = "KD3";
        QCOMPARE(answer(kd, "R", 300), QByteArray("r00010A006B040C070D140E160KD3"));
    }

    void aRestartIsSilentForAWhile() {
        Kd kd = device();
        QCOMPARE(answer(kd, "Q", 1000), QByteArray("Wait.."));
        kd.receive("M");
        QVERIFY(kd.advance(1000).isEmpty());
        QVERIFY(!kd.advance(Kd::restartMilliseconds).isEmpty());
        QVERIFY(answer(kd, "M").endsWith("End"));
    }

    void aBodyThatGoesNoFurtherIsGivenUp() {
        Kd kd = device();
        QCOMPARE(answer(kd, "Lhalf"), QByteArray("l"));
        QVERIFY(kd.advance(1000).isEmpty());
        kd.advance(Kd::bodyMilliseconds + 1);
        QVERIFY(kd.memory.logo.isEmpty());
        QVERIFY(answer(kd, "M").endsWith("End"));
    }

    // --- its loader

    void whileTheLoaderRunsItTalksInItsPlace() {
        Kd kd = device();
        kd.unaskedMilliseconds = 100;
        kd.loader.emplace(FirmwareType::Kd);
        QCOMPARE(kd.advance(1000).count('o'), 11 * 4);
        QVERIFY(answer(kd, "1").contains("R, Enter"));
        QCOMPARE(answer(kd, "M", 10000), QByteArray());
        const std::vector<QByteArray> expected{"loader 1", "noise"};
        QVERIFY(kd.log() == expected);
    }

    void aRestartOfTheLoaderStartsTheDevice() {
        Kd kd = device();
        kd.loader.emplace(FirmwareType::Rb);
        QVERIFY(!answer(kd, QByteArray(200, 'Q'), 100).isEmpty());
        QVERIFY(!kd.loader);
        QCOMPARE(kd.advance(Kd::restartMilliseconds - 200), QByteArray());
        QVERIFY(kd.advance(200).startsWith("PP"));
        QVERIFY(answer(kd, "M").endsWith("End"));
        QCOMPARE(kd.log().front(), QByteArray("loader Q"));
        QCOMPARE(kd.log().size(), 2U);
    }

    void theImageOutlivesTheLoader() {
        const QByteArray image = firmwareImage(FirmwareType::Rb, 51, 1);
        Kd kd = device();
        kd.loader.emplace(FirmwareType::Rb);
        QVERIFY(kd.image().isEmpty());
        answer(kd, "R");
        QVERIFY(answer(kd, '&' + image + QByteArray("\0&&", 3)).contains("Prog"));
        QCOMPARE(kd.image(), image + '\0');
        QVERIFY(answer(kd, "y", 6500).contains("8:f"));
        answer(kd, "Q");
        QVERIFY(!kd.loader);
        QCOMPARE(kd.image(), image + '\0');
    }

    void theLoadersWordsSufferTheSameFaults() {
        Kd kd = device();
        kd.loader.emplace(FirmwareType::Rb);
        const QByteArray page = answer(kd, "1");
        kd.faults.dropEvery = 10;
        QCOMPARE(answer(kd, "1").size(), page.size() - page.size() / 10);
        kd.faults = {.pieces = 50, .delayMilliseconds = 500};
        kd.receive("1");
        QCOMPARE(kd.advance(490), QByteArray());
        QCOMPARE(kd.advance(20), page.first(50));
        QCOMPARE(answer(kd, ""), page.sliced(50));
        kd.faults = {.silent = true};
        QCOMPARE(answer(kd, "1"), QByteArray());
        kd.faults = {};
        QCOMPARE(answer(kd, "1"), page);
    }

    void theLoadersTimePassesWhileTheLineIsBusy() {
        Kd kd = device();
        kd.loader.emplace(FirmwareType::Rb);
        answer(kd, "R");
        kd.receive("&*ab&&");
        kd.hold(Loader::endMilliseconds + 20);
        QVERIFY(kd.advance(0).contains("Prog"));
    }

    // --- faults

    void aSilentDeviceSaysNothing() {
        Kd kd = device();
        kd.faults.silent = true;
        kd.receive("M");
        QCOMPARE(kd.advance(60000), QByteArray());
        kd.faults.silent = false;
        QVERIFY(kd.advance(1000).startsWith("PP"));
    }

    void aDiveBreaksOffIntoTheBeacon() {
        Kd kd = device();
        kd.faults.breakOffAfter = 20;
        kd.receive("D0");
        QCOMPARE(kd.advance(1), kDive.first(20) + "PPPPPPPPPPPP");
    }

    void bytesAreLostAndTurned() {
        Kd kd = device();
        kd.faults.dropEvery = 10;
        kd.receive("D0");
        QCOMPARE(kd.advance(1).size(), kDive.size() - kDive.size() / 10);
        Kd other = device();
        other.faults.flipEvery = 7;
        other.receive("D0");
        const QByteArray came = other.advance(1);
        QCOMPARE(came.size(), kDive.size());
        for (qsizetype at = 0; at < came.size(); ++at) {
            QCOMPARE(came[at], (at + 1) % 7 == 0 ? static_cast<char>(kDive[at] ^ 1) : kDive[at]);
        }
    }

    void aReplyComesInPiecesAndLate() {
        Kd kd = device();
        kd.faults.pieces = 1;
        kd.faults.delayMilliseconds = 500;
        kd.receive("R");
        QVERIFY(!kd.advance(400).contains('r'));
        QCOMPARE(kd.advance(100), QByteArray("r"));
        QCOMPARE(kd.advance(kd.faults.pauseMilliseconds), QByteArray("0"));
        QCOMPARE(answer(kd, ""), QByteArray("0010A006B040C070D140E160"));
    }

    void aProductStandsInTheDirectory() {
        for (const char* word : {"KD3", "KDX", "2010", "HALV", "TRAX"}) {
            Kd kd = device();
            kd.productWord = word;
            QVERIFY(answer(kd, "M").startsWith(QByteArray(word) + "\r\n"));
        }
    }

    void aDeviceWithoutDivesSendsTheEndAlone() {
        Kd kd;
        QCOMPARE(answer(kd, "M"), QByteArray("End"));
        QCOMPARE(answer(kd, "D0"), QByteArray());
    }

    void theDemonstrationsDeviceHasNewAndStoredDives() {
        const std::vector<QByteArray> dives = deviceDives();
        QCOMPARE(dives.size(), 8U);
        int stored = 0;
        for (const QByteArray& dive : dives) {
            QCOMPARE(dive.count("End"), 1);
            for (const DemoDive& demo : demoDives()) {
                stored += demo.text == dive ? 1 : 0;
            }
        }
        QCOMPARE(stored, 5);
        for (std::size_t dive = 0; dive < 3; ++dive) {
            QVERIFY(dives[dive].size() < 20000);
        }
    }
};

QTEST_APPLESS_MAIN(TestKd)
#include "test_kd.moc"
