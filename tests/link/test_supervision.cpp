#include "link/console.h"
#include "link/directory.h"
#include "link/download.h"
#include "link/readings.h"
#include "link/supervision.h"
#include "platform/clock.h"
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

QString colourText(platform::ToldColour colour) {
    return QStringLiteral("%1").arg(colour, 6, 16, QLatin1Char('0')).toUpper();
}

void send(Stage& stage, const QString& command) {
    static const QHash<QString, int> options{{"Q", 10}, {"S", 2}, {"L", 0}, {"M", 3}};
    stage.link.console.option = options.value(command, -1);
    QVERIFY(stage.link.console.option >= 0);
    preparecommand(stage.link);
    // The verdict does not go by the choice, but a selected Interval Send reads the interval back.
    stage.link.console.option = 10;
    stage.link.console.Text6.clear();
    Command2_click(stage.link, stage.host);
}

void runStep(Stage& stage, const QJsonObject& step) {
    if (step.contains(QLatin1String("receive"))) {
        stage.receive(step[QLatin1String("receive")].toString().toLatin1());
    }
    if (step.contains(QLatin1String("send"))) {
        send(stage, step[QLatin1String("send")].toString());
        QCOMPARE(stage.caption(), step[QLatin1String("caption")].toString());
        QCOMPARE(colourText(stage.link.AFLabel3.colour), step[QLatin1String("colour")].toString());
    }
    for (int tick = 0; tick < step[QLatin1String("ticks")].toInt(); ++tick) {
        stage.receive(step[QLatin1String("receive_before_each")].toString().toLatin1());
        stage.host.line.writes.clear();
        stage.tick();
        QCOMPARE(stage.caption(), step[QLatin1String("caption")].toString());
        QCOMPARE(colourText(stage.link.AFLabel3.colour), step[QLatin1String("colour")].toString());
        if (step[QLatin1String("buttons")].isBool()) {
            QCOMPARE(stage.link.downloadbuttons, step[QLatin1String("buttons")].toBool());
        }
        if (step[QLatin1String("hint")].isBool()) {
            QCOMPARE(stage.link.Text14Visible, step[QLatin1String("hint")].toBool());
        }
        QJsonArray sent;
        for (const QByteArray& write : stage.host.line.writes) {
            sent.append(QString::fromLatin1(write));
        }
        QCOMPARE(sent, step[QLatin1String("sent")].toArray());
    }
}

} // namespace

class TestSupervision : public QObject {
    Q_OBJECT

private slots:
    void theVerdictAgreesWithTheVectors_data() {
        QTest::addColumn<QJsonObject>("sequence");
        for (const auto& each : vectors(kVectors)[QLatin1String("sequences")].toArray()) {
            QTest::newRow(each[QLatin1String("about")].toString().toUtf8()) << each.toObject();
        }
    }

    void theVerdictAgreesWithTheVectors() {
        QFETCH(QJsonObject, sequence);
        const QJsonObject start = sequence[QLatin1String("start")].toObject();
        Stage stage(start[QLatin1String("grid_rows")].toInt(), start[QLatin1String("Text16(1)")].toString());
        stage.link.silentticks = start[QLatin1String("silentticks")].toInt();
        for (const auto& step : sequence[QLatin1String("steps")].toArray()) {
            runStep(stage, step.toObject());
            if (QTest::currentTestFailed()) {
                return;
            }
        }
    }

    void theLampsAgreeWithTheVectors() {
        for (const auto& each : vectors(kVectors)[QLatin1String("lamps")].toArray()) {
            LinkState link;
            link.tickcount = each[0].toInt();
            linkstatuspaint(link);
            for (qsizetype lamp = 0; lamp < 10; ++lamp) {
                QCOMPARE(colourText(link.AFShape1[static_cast<std::size_t>(lamp)]), each[1][lamp].toString());
            }
        }
    }

    void theLampsCountWrapsAbove40() {
        LinkState link;
        link.tickcount = 40;
        linkstatuspaint(link);
        QCOMPARE(link.tickcount, 40);
        link.tickcount = 41;
        linkstatuspaint(link);
        QCOMPARE(link.tickcount, 0);
        Stage stage;
        stage.host.line.open = false;
        stage.link.tickcount = 20001;
        stage.tick();
        QCOMPARE(stage.link.tickcount, 1);
    }

    void aBeaconLeftOverHoldsForTwelveTicksThenTheCommandsAgeDecides() {
        Stage stage;
        stage.receive("PPP");
        stage.link.silentticks = 30;
        stage.tick(13);
        QCOMPARE(stage.caption(), "Connected");
        stage.tick();
        QCOMPARE(stage.caption(), "Command Sent..");
        stage.tick(7);
        QCOMPARE(stage.caption(), "Not Connected");
    }

    void silentTicksEndAt100() {
        Stage stage;
        stage.link.silentticks = 99;
        stage.tick(3);
        QCOMPARE(stage.link.silentticks, 100);
    }

    void anArrivalCountsByItsLastCharacter_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<int>("counted");
        QTest::newRow("letter") << QByteArray("\r\nx") << 1;
        QTest::newRow("line end") << QByteArray("xxx\r\n") << 0;
        QTest::newRow("blank") << QByteArray(" ") << 0;
        QTest::newRow("33") << QByteArray("!") << 1;
        QTest::newRow("191") << QByteArray("\xBF") << 1;
        QTest::newRow("192") << QByteArray("\xC0") << 0;
    }

    void anArrivalCountsByItsLastCharacter() {
        QFETCH(QByteArray, bytes);
        QFETCH(int, counted);
        Stage stage;
        stage.receive(bytes);
        QCOMPARE(static_cast<int>(stage.link.rxcount), counted);
        QCOMPARE(stage.link.rxbuf.bytes(), bytes);
    }

    void withoutAnOpenPortTheVerdictRests() {
        Stage stage;
        stage.host.line.open = false;
        stage.link.AFLabel3.text = QStringLiteral("Searching..");
        stage.tick(20);
        QCOMPARE(stage.caption(), "Searching..");
        QVERIFY(stage.link.Text14Visible);
    }

    // --- a cable pulled

    void aPulledCableLetsTheVerdictFallAsSilenceDoes() {
        Stage stage;
        setcomnum(stage.link, stage.host, QStringLiteral("3"));
        stage.receive("PPPPPP");
        stage.tick();
        QCOMPARE(stage.caption(), "Connected");
        QVERIFY(stage.link.downloadbuttons);
        stage.pull();
        stage.tick(12);
        QCOMPARE(stage.caption(), "Connected");
        stage.tick();
        QCOMPARE(stage.caption(), "Not Connected");
        QVERIFY(!stage.link.downloadbuttons);
        QVERIFY(stage.link.Text14Visible);
    }

    void behindACommandAPulledCableFallsByItsAge() {
        Stage stage;
        setcomnum(stage.link, stage.host, QStringLiteral("3"));
        stage.receive("PPPPPP");
        stage.tick();
        stage.pull();
        send(stage, QStringLiteral("Q"));
        QCOMPARE(stage.caption(), "Checking..");
        stage.tick(50);
        QCOMPARE(stage.caption(), "Command Sent..");
        stage.tick();
        QCOMPARE(stage.caption(), "Not Connected");
    }

    void whenTheAdapterIsBackTheSamePortIsOpenedAndNothingIsEmptied() {
        Stage stage;
        setcomnum(stage.link, stage.host, QStringLiteral("3"));
        stage.link.Timer8 = false;
        stage.receive("half a reply, PPPP");
        stage.tick();
        stage.pull();
        stage.tick(30);
        QCOMPARE(stage.caption(), "Not Connected");
        QVERIFY(!stage.host.line.open);
        stage.plugIn();
        stage.tick();
        QVERIFY(stage.host.line.open);
        QCOMPARE(stage.host.line.port, 3);
        stage.receive(" the other half, PPPP");
        stage.tick(2);
        QCOMPARE(stage.caption(), "Connected");
        QCOMPARE(stage.link.ComNum, "3");
        QVERIFY(stage.link.rxbuf.bytes().startsWith("half a reply, PPPP"));
        QCOMPARE(stage.link.Mgrid.rowCount(), 4);
        QVERIFY(!stage.link.Timer8);
        QCOMPARE(stage.host.line.sent, QByteArray());
    }

    void aPulledCableAsksForNothingUntilItIsBack() {
        Stage stage(1, QString());
        process().deviceconnected = 1;
        setcomnum(stage.link, stage.host, QStringLiteral("3"));
        stage.receive("PPP");
        stage.pull();
        stage.tick(5);
        QCOMPARE(stage.caption(), "Connected");
        QCOMPARE(stage.link.console.Text16[1], ""); // no try is used up
        QVERIFY(stage.link.rxbuf.holds("PPP"));
        stage.plugIn();
        stage.tick();
        QCOMPARE(stage.host.line.sent, QByteArray("RM"));
    }

    void aPortThatWasClosedStaysClosed() {
        Stage stage;
        setcomnum(stage.link, stage.host, QStringLiteral("3"));
        setcomnum(stage.link, stage.host, QString());
        stage.tick(3);
        QVERIFY(!stage.host.line.open);
        QCOMPARE(stage.caption(), "Choose Com Port:");
        setcomnum(stage.link, stage.host, QStringLiteral("3"));
        stage.host.line.portExists = [](int port) { return port != 7; };
        setcomnum(stage.link, stage.host, QStringLiteral("7")); // not there
        stage.plugIn();
        stage.tick(3);
        QVERIFY(!stage.host.line.open);
    }

    void anotherNumberTypedWhileTheCableIsOutIsOpenedInItsPlace() {
        Stage stage;
        setcomnum(stage.link, stage.host, QStringLiteral("3"));
        stage.pull();
        stage.tick();
        stage.plugIn();
        setcomnum(stage.link, stage.host, QStringLiteral("5"));
        stage.tick();
        QVERIFY(stage.host.line.open);
        QCOMPARE(stage.host.line.port, 5);
    }

    void checkingEndsAtTheNextTickWhereNoPortIsOpen_data() {
        QTest::addColumn<QString>("ComNum");
        QTest::addColumn<bool>("searches");
        QTest::addColumn<QString>("caption");
        QTest::newRow("no number") << "" << false << "Choose Com Port:";
        QTest::newRow("the search is on") << "" << true << "Searching..";
        QTest::newRow("a number without a port") << "5" << false << "Not Connected";
        QTest::newRow("the same in a search") << "5" << true << "Not Connected";
    }

    void checkingEndsAtTheNextTickWhereNoPortIsOpen() {
        QFETCH(QString, ComNum);
        QFETCH(bool, searches);
        QFETCH(QString, caption);
        Stage stage;
        stage.host.line.open = false;
        stage.link.ComNum = ComNum;
        stage.link.Timer8 = searches;
        stage.link.downloadbuttons = true;
        send(stage, QStringLiteral("Q"));
        QCOMPARE(stage.caption(), "Checking..");
        stage.tick();
        QCOMPARE(stage.caption(), caption);
        QVERIFY(!stage.link.downloadbuttons);
        stage.tick(3);
        QCOMPARE(stage.caption(), caption);
    }

    // --- while a dive comes

    void whileADiveComesTheTickSendsNothing_data() {
        QTest::addColumn<bool>("single");
        QTest::newRow("a run") << false;
        QTest::newRow("a single dive") << true;
    }

    void whileADiveComesTheTickSendsNothing() {
        QFETCH(bool, single);
        Stage stage(2, QString()); // neither the interval nor a directory of more than one dive is known
        process().deviceconnected = 1;
        stage.link.Mgrid.rows[1].cells[0] = QStringLiteral("Dive1");
        stage.link.Mgrid.rows[1].mark = RowMark::Selected;
        setstartdivenum(stage.link, QStringLiteral("1"));
        if (single) {
            stage.link.Mgrid.rows.resize(1);
            Command1_click(stage.link, stage.host);
        } else {
            cmddownload_click(stage.link, stage.host);
        }
        // What was on its way when the request went out stands ahead of the dive.
        stage.receive("PPPR-001,0320,1,0130,J00001\r\nver=V2.31\r\n");
        stage.tick();
        QVERIFY(!Timer7_tick(stage.link));
        stage.receive("+=+ +^+ 12,13\r\n");
        stage.link.updatedticks = 5;
        stage.tick();
        QCOMPARE(stage.host.line.sent, QByteArray("D0"));
        stage.receive("End\r\n");
        if (single) {
            stage.tick();
        }
        Timer3_tick(stage.link, stage.host);
        QCOMPARE(stage.folder.get("new/MyLatestDives1.txt"),
                 QByteArray("PPPR-001,0320,1,0130,J00001\r\nver=V2.31\r\n+=+ +^+ 12,13\r\nEnd\r\n\r\n"));
    }

    void aCaptureThatTheDeviceDoesNotServeHoldsNothingUpForLong() {
        Stage stage(1);
        Command9_click(stage.link, stage.host);
        stage.host.line.sent.clear();
        stage.receive("PPP");
        stage.tick();
        QCOMPARE(stage.host.line.sent, QByteArray());
        stage.receive("PPPPP");
        stage.tick();
        QCOMPARE(stage.host.line.sent, QByteArray("M"));
    }

    void theIntervalIsAskedForUntilAValueStandsAtMostTenTimes() {
        Stage stage(4, QString());
        process().deviceconnected = 1;
        int asked = 0;
        stage.host.line.onOutput = [&asked](const QByteArray& bytes) { asked += bytes == "R" ? 1 : 0; };
        for (int tick = 0; tick < 40; ++tick) {
            stage.receive("PPP");
            stage.tick();
        }
        QCOMPARE(asked, 10);
        QCOMPARE(stage.link.console.Text16[1], "1");
    }

    void anIntervalThatHasComeEndsTheAsking() {
        Stage stage(4, QString());
        process().deviceconnected = 1;
        stage.receive("PPP");
        stage.tick();
        QCOMPARE(stage.host.line.sent, QByteArray("R"));
        QCOMPARE(stage.link.console.Text16[1], "0.1");
        stage.receive("r00010 PPP");
        stage.tick(); // asks once more, and empties what came
        stage.receive("r00010");
        stage.tick();
        QCOMPARE(stage.link.console.Text16[1], "10");
        QCOMPARE(stage.link.console.Text16[0], "10");
        stage.host.line.sent.clear();
        stage.receive("PPP");
        stage.tick(3);
        QVERIFY(stage.host.line.sent.isEmpty());
    }

    void anUpdateBehindAnIntervalSendReadsItBack() {
        Stage stage;
        stage.link.console.option = kChoiceIntervalSend;
        stage.receive("+^+00005");
        stage.tick();
        QCOMPARE(stage.host.line.sent, QByteArray("R"));
        QCOMPARE(stage.link.console.option, kChoiceIntervalGet);
    }

    /// The mark stands in what comes: the interval would be asked for in the middle of the dive.
    void anUpdateMarkInADiveAsksForNothing() {
        Stage stage;
        stage.link.Mgrid.rows[1].cells[0] = QStringLiteral("Dive1");
        stage.link.Mgrid.rows[1].mark = RowMark::Selected;
        cmddownload_click(stage.link, stage.host);
        stage.link.console.option = kChoiceIntervalSend;
        stage.receive("ver=V2.31 +^+00005");
        stage.tick();
        QCOMPARE(stage.caption(), "Data Updated");
        QCOMPARE(stage.host.line.sent, QByteArray("D0"));
        QVERIFY(stage.link.rxbuf.holds("ver="));
    }

    void anUpdatedSetupSeenWhileConnectedRefreshesTheDirectory() {
        Stage stage;
        stage.link.updatedticks = 5;
        stage.receive("+=+PPP");
        stage.tick();
        QCOMPARE(stage.host.line.sent, QByteArray("M"));
        QCOMPARE(stage.link.Mgrid.rowCount(), 1);
    }

    void aDirectoryWithoutDivesKeepsTheButtonsOff() {
        Stage stage(1);
        stage.receive("PPP");
        stage.tick();
        QVERIFY(!stage.link.downloadbuttons);
    }

    void theHintBoxStaysAwayBehindTheWaitFrame() {
        Stage stage;
        stage.link.download.TXTWaitVisible = true;
        stage.tick();
        QVERIFY(!stage.link.Text14Visible);
        stage.link.download.TXTWaitVisible = false;
        stage.tick();
        QVERIFY(stage.link.Text14Visible);
    }

    void aCapturedDiveIsFollowedByTheTick() {
        Stage stage;
        setstartdivenum(stage.link, QStringLiteral("3"));
        Command1_click(stage.link, stage.host);
        stage.receive("Profile");
        stage.tick();
        QVERIFY(stage.link.download.downloadingdive.visible);
        QVERIFY(stage.link.download.Command3Enabled);
        stage.receive("End");
        stage.tick();
        QCOMPARE(stage.folder.get("new/MyLatestDives3.txt"), QByteArray("ProfileEnd\r\n"));
        stage.tick();
        QVERIFY(!stage.link.download.downloadingdive.visible);
    }

    // --- the port

    void typingANumberOpensThePort() {
        Stage stage;
        setcomnum(stage.link, stage.host, QStringLiteral("27"));
        QCOMPARE(stage.host.line.port, 27);
        QCOMPARE(stage.host.line.settings, "9600,N,8,1");
        QCOMPARE(stage.host.line.inputLen, 0);
        QCOMPARE(stage.host.line.threshold, 1);
        QVERIFY(stage.host.line.open);
        QCOMPARE(stage.caption(), "Connecting..");
        QCOMPARE(stage.link.ComNumColour, kLightGreen);
        QVERIFY(stage.link.console.Command2.enabled);
    }

    void anEmptyNumberClosesThePort() {
        Stage stage;
        setcomnum(stage.link, stage.host, QStringLiteral("3"));
        setcomnum(stage.link, stage.host, QString());
        QVERIFY(!stage.host.line.open);
        QCOMPARE(stage.caption(), "Choose Com Port:");
        QCOMPARE(stage.link.AFLabel3.colour, kLightRed);
        QCOMPARE(stage.link.ComNumColour, kLightRed);
    }

    void aPortThatCannotBeOpenedSaysNothing() {
        Stage stage;
        stage.link.linkwatch = false;
        stage.link.AFLabel3.text = QStringLiteral("Searching..");
        stage.host.line.portExists = [](int) { return false; };
        setcomnum(stage.link, stage.host, QStringLiteral("5"));
        QVERIFY(!stage.host.line.open);
        QCOMPARE(stage.caption(), "Searching..");
        QVERIFY(!stage.link.linkwatch);
        QVERIFY(stage.host.messages.isEmpty());
    }

    // --- a line that takes nothing

    void aStuckLineThatBringsBeaconsIsToldOnceUntilItTakesSomething() {
        Stage stage(1, QString());
        process() = Process();
        process().deviceconnected = 1;
        stage.host.line.takes = 0;
        const auto beat = [&stage] {
            stage.receive("PPPP");
            stage.tick();
        };
        beat(); // asks for the interval and for the dives
        QCOMPARE(stage.host.messages.size(), 1);
        QVERIFY(stage.host.messages[0].contains("took nothing for two seconds"));
        for (int turn = 0; turn < 5; ++turn) {
            beat();
        }
        QCOMPARE(stage.host.messages.size(), 1);
        Label19_click(stage.link, stage.host, kChoiceIntervalGet); // whoever clicks is told
        QCOMPARE(stage.host.messages.size(), 2);
        stage.host.line.takes = -1;
        beat();
        stage.host.line.takes = 0;
        beat();
        QCOMPARE(stage.host.messages.size(), 3);
        beat();
        QCOMPARE(stage.host.messages.size(), 3);
        setcomnum(stage.link, stage.host, QStringLiteral("4"));
        beat();
        QCOMPARE(stage.host.messages.size(), 4);
        process() = Process();
    }

    void theRequestForTheSetupIsToldOnceOnAStuckLine() {
        Stage stage;
        stage.host.line.takes = 0;
        for (int turn = 0; turn < 3; ++turn) {
            stage.link.rxbuf.append("ver=V2.31\rEnd");
            Timer2_tick(stage.link, stage.host);
        }
        QCOMPARE(stage.host.messages.size(), 1);
        QVERIFY(stage.host.messages[0].startsWith("The request for the setup"));
    }

    // --- the hints

    void fiveHintsComeInTurn() {
        LinkState link;
        const platform::FixedClock clock(QDateTime(QDate(2019, 9, 15), QTime(18, 4, 31)));
        const QStringList beginnings{"Choose the name of the dive under", "Items highlighted in yellow",
                                     "Get selected dives - Download the highlighted Dives",
                                     "Get all dives - Downloaded all the Dives",
                                     "Ensure KD or Morvalien is in PC Link mode"};
        for (int turn = 0; turn < 7; ++turn) {
            Timer4_tick(link, turn > 0);
            QVERIFY(link.infotext.startsWith(beginnings[turn % 5]));
            QCOMPARE(link.Label20, turn == 0 ? "" : "Sep 15 2019  18:04:31");
        }
        QVERIFY(hint(5).endsWith(QLatin1String("for part number abd price")));
    }
};

QTEST_APPLESS_MAIN(TestSupervision)
#include "test_supervision.moc"
