// The search for the device over all ports, and the port that is remembered.

#include "link/download.h"
#include "session/process.h"
#include "tests/link/supervisionstage.h"
#include "tests/link/vectors.h"

#include <QJsonArray>

using namespace benthor;
using namespace benthor::link;
using namespace benthor::tests;
using Stage = SupervisionStage;

namespace {

const QString kVectors = QStringLiteral("link/link.json");

} // namespace

class TestPortSearch : public QObject {
    Q_OBJECT

private slots:
    // --- the search

    void theSearchOpensPorts1To16Together() {
        Stage stage;
        for (FakeLine& line : stage.host.scan) {
            line.portExists = [](int port) { return port != 4; };
        }
        stage.host.scan[20].open = true;
        stage.receive("PPP");
        mnuFindKD_click(stage.link, stage.host);
        for (int number = 0; number < 32; ++number) {
            QCOMPARE(stage.host.scan[static_cast<std::size_t>(number)].open,
                     number >= 1 && number <= 16 && number != 4);
        }
        QCOMPARE(stage.host.scan[7].settings, "9600,n,8,1");
        QCOMPARE(stage.host.scan[7].port, 7);
        QCOMPARE(stage.host.scan[7].openings, 2);
        QVERIFY(!stage.host.line.open);
        QCOMPARE(stage.link.ComNum, "");
        QCOMPARE(stage.caption(), "Searching..");
        QVERIFY(stage.link.rxbuf.isEmpty());
        QVERIFY(stage.link.Timer8);
        QCOMPARE(stage.link.Mgrid.rowCount(), 1);
        QCOMPARE(stage.link.Mgrid.cols, 1);
    }

    void theSearchAgreesWithTheVectors_data() {
        QTest::addColumn<QJsonObject>("vector");
        int number = 0;
        for (const auto& each : vectors(kVectors)[QLatin1String("port_search")].toArray()) {
            QTest::addRow("%d", number++) << each.toObject();
        }
    }

    void theSearchAgreesWithTheVectors() {
        QFETCH(QJsonObject, vector);
        Stage stage;
        mnuFindKD_click(stage.link, stage.host);
        const QJsonObject received = vector[QLatin1String("received_by_port")].toObject();
        for (const QString& port : received.keys()) {
            stage.host.scan[port.toUInt()].waiting = received[port].toString().toLatin1();
        }
        Timer8_tick(stage.link, stage.host);
        const int port = vector[QLatin1String("port")].toInt();
        const QString kind = vector[QLatin1String("kind")].toString();
        QCOMPARE(stage.link.ComNum, port == 0 ? QString() : QString::number(port));
        QCOMPARE(stage.link.Timer8, port == 0);
        QCOMPARE(stage.host.firmwareOpened, kind == QLatin1String("loader") ? 1 : 0);
        QCOMPARE(stage.link.Label8, port == 0 ? "Scanning.." : "");
        for (int index = 1; index <= 16; ++index) {
            QCOMPARE(stage.host.scan[static_cast<std::size_t>(index)].open, port == 0);
        }
        QCOMPARE(stage.host.line.open, port != 0);
    }

    void aDeviceOnPort9IsRememberedAsSoonAsItIsHeard() {
        Stage stage;
        writecomport(QStringLiteral("3"));
        mnuFindKD_click(stage.link, stage.host);
        stage.host.scan[9].waiting = "PP";
        Timer8_tick(stage.link, stage.host);
        QCOMPARE(readcomport(), "3");
        stage.host.scan[9].waiting = "P";
        Timer8_tick(stage.link, stage.host);
        QCOMPARE(readcomport(), "9");
        QCOMPARE(stage.folder.get("comport.txt"), QByteArray("\x01\x00"
                                                             "9",
                                                             3));
    }

    void aPortTypedWhileTheSearchHoldsItIsOpenedWhenTheDeviceIsHeardThere() {
        Stage stage;
        mnuFindKD_click(stage.link, stage.host);
        stage.host.line.portExists = [&stage](int port) {
            return !stage.host.scan.at(static_cast<std::size_t>(port)).open; // one holder at a time
        };
        setcomnum(stage.link, stage.host, QStringLiteral("3"));
        QVERIFY(!stage.host.line.open);
        stage.host.scan[3].waiting = "PPP";
        Timer8_tick(stage.link, stage.host);
        QVERIFY(stage.host.line.open);
        QCOMPARE(stage.host.line.port, 3);
        QCOMPARE(stage.caption(), "Connecting..");
        QCOMPARE(readcomport(), "3");
    }

    void aSearchPortThatWasCutIsOpenedAgainInTheSameSearch() {
        Stage stage;
        mnuFindKD_click(stage.link, stage.host);
        stage.host.scan[6].waiting = "PP";
        Timer8_tick(stage.link, stage.host);
        stage.host.scan[6].open = false;
        stage.host.scan[6].portExists = [](int) { return false; };
        Timer8_tick(stage.link, stage.host);
        QVERIFY(!stage.host.scan[6].open);
        stage.host.scan[6].portExists = nullptr;
        Timer8_tick(stage.link, stage.host);
        QVERIFY(stage.host.scan[6].open);
        QCOMPARE(stage.link.scanticks, 3); // no search began anew, and what was heard stays
        stage.host.scan[6].waiting = "P";
        Timer8_tick(stage.link, stage.host);
        QCOMPARE(stage.link.ComNum, "6");
    }

    void aPortThatWasNotThereWhenTheSearchBeganWaitsForTheNext() {
        Stage stage;
        stage.host.scan[6].portExists = [](int) { return false; };
        mnuFindKD_click(stage.link, stage.host);
        stage.host.scan[6].portExists = nullptr;
        Timer8_tick(stage.link, stage.host);
        QVERIFY(!stage.host.scan[6].open);
    }

    void aRunOnAPortBeyondTheSearchIsNotEndedByItsBeginningAnew() {
        Stage stage(2);
        mnuFindKD_click(stage.link, stage.host);
        setcomnum(stage.link, stage.host, QStringLiteral("20"));
        stage.link.Mgrid.rows.resize(2);
        stage.link.Mgrid.rows[1].mark = RowMark::Selected;
        stage.link.Mgrid.rows[1].cells[0] = QStringLiteral("Dive1");
        cmddownload_click(stage.link, stage.host);
        stage.receive("ver=V2.31");
        for (int tick = 0; tick < 15; ++tick) {
            Timer8_tick(stage.link, stage.host);
        }
        QVERIFY(stage.host.line.open);
        QCOMPARE(stage.link.rxbuf.bytes(), QByteArray("ver=V2.31"));
        QCOMPARE(stage.link.ComNum, "20");
        stage.link.Timer3 = false;
        Timer8_tick(stage.link, stage.host);
        QCOMPARE(stage.link.ComNum, "");
    }

    void tenLettersOfALoaderAreNoHit() {
        Stage stage;
        mnuFindKD_click(stage.link, stage.host);
        stage.host.scan[2].waiting = "oooooooooo";
        stage.host.scan[3].waiting = "OOOOOOOO";
        Timer8_tick(stage.link, stage.host);
        QVERIFY(stage.link.Timer8);
        stage.host.scan[2].waiting = "o";
        Timer8_tick(stage.link, stage.host);
        QCOMPARE(stage.link.ComNum, "2");
        QCOMPARE(stage.host.firmwareOpened, 1);
    }

    void aPortThatClosedIsStillHeardByWhatItSaid() {
        Stage stage;
        mnuFindKD_click(stage.link, stage.host);
        stage.link.scanbuf[6] = "PPP";
        stage.host.scan[6].open = false;
        Timer8_tick(stage.link, stage.host);
        QCOMPARE(stage.link.ComNum, "6");
    }

    void theReceiveEventOfASearchPortGathers() {
        Stage stage;
        mnuFindKD_click(stage.link, stage.host);
        stage.host.scan[6].waiting = "PP";
        MSComm2_received(stage.link, stage.host, 6);
        stage.host.scan[6].waiting = "P";
        Timer8_tick(stage.link, stage.host);
        QCOMPARE(stage.link.ComNum, "6");
    }

    void after55SecondsTheSearchBeginsAnewAndTheTipsComeOnce() {
        Stage stage;
        mnuFindKD_click(stage.link, stage.host);
        const int openings = stage.host.scan[1].openings;
        for (int tick = 0; tick < 10; ++tick) {
            Timer8_tick(stage.link, stage.host);
        }
        QCOMPARE(stage.host.tipsShown, 0);
        QCOMPARE(stage.link.scanticks, 10);
        Timer8_tick(stage.link, stage.host);
        QCOMPARE(stage.host.tipsShown, 1);
        QCOMPARE(stage.link.scanticks, 0);
        QCOMPARE(stage.host.scan[1].openings, openings + 2);
        for (int tick = 0; tick < 50; ++tick) {
            Timer8_tick(stage.link, stage.host);
        }
        QCOMPARE(stage.host.tipsShown, 1);
        QVERIFY(stage.link.Timer8);
    }

    void tipsThatShowAlreadyAreNotOpened() {
        Stage stage;
        stage.host.tips = true;
        for (int tick = 0; tick < 11; ++tick) {
            Timer8_tick(stage.link, stage.host);
        }
        QCOMPARE(stage.host.tipsShown, 0);
        QVERIFY(!stage.link.tipshown);
    }

    void anErrorInTheTickClosesTheSearchPortsAndTheSearchComesBack() {
        Stage stage;
        mnuFindKD_click(stage.link, stage.host);
        stage.host.scan[5].waiting = "PPP";
        stage.host.line.portExists = [](int) -> bool { throw std::runtime_error("the line fails"); };
        Timer8_tick(stage.link, stage.host);
        for (int index = 1; index <= 16; ++index) {
            QVERIFY(!stage.host.scan[static_cast<std::size_t>(index)].open);
        }
        stage.link.scanbuf[5].clear();
        Timer8_tick(stage.link, stage.host); // a fresh pass over closed ports
        QVERIFY(!stage.host.scan[6].open);
    }

    void anErrorOfASearchPortLeavesNoneToBeOpenedAgain() {
        Stage stage;
        mnuFindKD_click(stage.link, stage.host);
        stage.host.scan[5].open = false;
        stage.host.scan[5].portExists = [](int) -> bool { throw std::runtime_error("the line fails"); };
        Timer8_tick(stage.link, stage.host);
        stage.host.scan[5].portExists = nullptr;
        Timer8_tick(stage.link, stage.host);
        for (int index = 1; index <= 16; ++index) {
            QVERIFY(!stage.host.scan[static_cast<std::size_t>(index)].open);
        }
    }

    // --- the remembered port

    void theRememberedPortIsReadAsTheVectorsSay() {
        const TestFolder folder;
        for (const auto& each : vectors(kVectors)[QLatin1String("comport_read")].toArray()) {
            folder.put("comport.txt", QByteArray::fromBase64(each[0].toString().toLatin1()));
            QCOMPARE(readcomport(), each[1].toString());
        }
    }

    void theRememberedPortIsWrittenAsTheVectorsSay() {
        for (const auto& each : vectors(kVectors)[QLatin1String("comport_written")].toArray()) {
            const TestFolder folder;
            writecomport(each[0].toString());
            QCOMPARE(folder.get("comport.txt"), QByteArray::fromBase64(each[1].toString().toLatin1()));
        }
    }

    void aMissingRecordIsMadeEmpty() {
        const TestFolder folder;
        QCOMPARE(readcomport(), "");
        QVERIFY(folder.has("comport.txt"));
        QCOMPARE(folder.get("comport.txt"), QByteArray());
    }

    void aLongerRecordKeepsItsRest() {
        const TestFolder folder;
        folder.put("comport.txt", QByteArray("\x02\x00"
                                             "12",
                                             4) +
                                      QByteArray(124, ' '));
        writecomport(QStringLiteral("3"));
        QCOMPARE(folder.get("comport.txt").size(), 128);
        QCOMPARE(readcomport(), "3");
    }

    void anEmptyNumberLeavesTheRecordAlone() {
        const TestFolder folder;
        writecomport(QStringLiteral("3"));
        LinkState link;
        remembercomport(link);
        QCOMPARE(readcomport(), "3");
        link.ComNum = QStringLiteral("101");
        remembercomport(link);
        QCOMPARE(readcomport(), "101");
    }
};

QTEST_APPLESS_MAIN(TestPortSearch)
#include "test_portsearch.moc"
