// The link's logic against a device in software, over a real pseudo-terminal. The ticks are the test's own.

#include "tests/link/devicestage.h"

#include <cstring>

using namespace benthor;
using namespace benthor::link;
using namespace benthor::tests;
using simulator::Faults;
using simulator::Kd;
using simulator::KdPort;
using Stage = DeviceStage;

namespace {

/// A stride of which no multiple meets the marks that a dive is known by.
int strideBeside(const QByteArray& text) {
    const auto meets = [&text](int stride, const char* mark) {
        const qsizetype begin = text.indexOf(mark);
        const qsizetype end = begin + static_cast<qsizetype>(std::strlen(mark));
        return begin / stride != end / stride;
    };
    int stride = 997;
    while (meets(stride, "Profile") || meets(stride, "End")) {
        ++stride;
    }
    return stride;
}

} // namespace

class TestDevice : public QObject {
    Q_OBJECT

private slots:
    void theSearchHearsTheDeviceOnItsPort() {
        Stage stage;
        stage.device.start();
        mnuFindKD_click(stage.link, stage.host);
        QVERIFY(stage.host.search[kPort].PortOpen());
        QTRY_VERIFY((Timer8_tick(stage.link, stage.host), stage.link.ComNum == QLatin1String("3")));
        QVERIFY(stage.host.working.PortOpen());
        QVERIFY(!stage.host.search[kPort].PortOpen());
        QCOMPARE(readcomport(), "3");
        QTRY_VERIFY(stage.link.rxbuf.holds("PPP"));
        Timer1_tick(stage.link, stage.host);
        QCOMPARE(stage.link.AFLabel3.text, "Checking.."); // connected, and asking for the directory
        QTRY_VERIFY(stage.device.received().contains('M'));
    }

    void theDirectoryComesAndTheSetupBehindIt() {
        Stage stage;
        stage.connect();
        if (QTest::currentTestFailed()) {
            return;
        }
        QCOMPARE(stage.link.Mgrid.rowCount(), 9);
        QCOMPARE(stage.link.Mgrid.rows[4].cells[0], "Dive4");
        QVERIFY(dive(4).contains(stage.link.Mgrid.rows[4].cells[1].toLatin1()));
        stage.link.Timer2 = true;
        QTRY_VERIFY(stage.tickUntil([&stage] { return !stage.host.setups.isEmpty(); }));
        QVERIFY(stage.host.setups.first().contains("A079 000 0660 1 B001"));
    }

    void aDeviceOfTheThirdVersionIsNotAskedForItsSetup() {
        Stage stage(Kd(simulator::deviceDives(), "V3.12"));
        stage.connect();
        QCOMPARE(stage.device.received(), QByteArray("M"));
    }

    void divesComeDownByteForByte() {
        Stage stage;
        stage.connect();
        stage.download({1, 3});
        QVERIFY(stage.stored(1).contains(dive(1).chopped(2)));
        QVERIFY(stage.stored(3).contains(dive(3).chopped(2)));
        QCOMPARE(stage.host.messages.first(), "2  Dives Downloaded.");
        QVERIFY(stage.device.received().endsWith("D0D2"));
    }

    /// The directory has come and the setup is asked for; its reply, where there is one, has come as well.
    void aRunLosesNoDiveWhateverTheSetupReplyIs_data() {
        QTest::addColumn<bool>("replies");
        QTest::addColumn<QByteArray>("firstGas");
        QTest::newRow("its first gas is not air") << true << QByteArray("A068");
        QTest::newRow("it does not come") << false << QByteArray("A079");
    }

    void aRunLosesNoDiveWhateverTheSetupReplyIs() {
        QFETCH(bool, replies);
        QFETCH(QByteArray, firstGas);
        Stage stage;
        stage.device.with([&](Kd& kd) { kd.memory.setup.replace(0, 4, firstGas); });
        stage.device.start();
        setcomnum(stage.link, stage.host, QString::number(kPort));
        cmdstore_click(stage.link, stage.host);
        QTRY_VERIFY(stage.link.rxbuf.holds("End"));
        const auto silence = [&stage](bool on) {
            Faults faults;
            faults.silent = on;
            stage.fault(faults);
        };
        silence(!replies);
        Timer2_tick(stage.link, stage.host);
        QTRY_VERIFY(stage.device.received().endsWith('H'));
        if (replies) {
            QTRY_VERIFY(stage.link.rxbuf.holds("X1 Y"));
        }
        Timer2_tick(stage.link, stage.host);
        silence(false);
        QVERIFY(stage.link.Timer2); // it waits, and nothing will end that
        QCOMPARE(stage.link.Mgrid.rowCount(), 9);
        stage.download({1, 2, 3});
        QCOMPARE(stage.host.messages.first(), "3  Dives Downloaded.");
        QCOMPARE(stage.host.below.first(), "");
        QCOMPARE(stage.link.Mgrid.rowCount(), 9);
        for (const int number : {1, 2, 3}) {
            QVERIFY(stage.stored(number).contains(dive(static_cast<std::size_t>(number)).chopped(2)));
        }
        QVERIFY(stage.device.received().endsWith("D0D1D2"));
    }

    void aSingleDiveIsStoredThoughTheSetupNeverCame() {
        Stage stage;
        stage.device.with([](Kd& kd) { kd.memory.setup.replace(0, 4, "A068"); });
        stage.device.start();
        setcomnum(stage.link, stage.host, QString::number(kPort));
        cmdstore_click(stage.link, stage.host);
        QTRY_VERIFY(stage.tickUntil([&stage] { return stage.link.rxbuf.holds("X1 Y"); }));
        setstartdivenum(stage.link, QStringLiteral("2"));
        Command1_click(stage.link, stage.host);
        QTRY_VERIFY(stage.link.rxbuf.holds("End"));
        stage.tickUntil([] { return true; }); // whichever tick is the first
        Timer1_tick(stage.link, stage.host);
        QVERIFY(stage.stored(2).contains(dive(2).chopped(2)));
        QCOMPARE(stage.link.Mgrid.rowCount(), 9);
    }

    void aPacedLineBringsTheSameBytes() {
        Stage stage(
            Kd({"ver=V2.31\r\nStart     , 521974517\r\nProfile\r\n" + QByteArray(1500, 'x') + "\r\nEnd\r\n"}),
            KdPort::lineSpeed);
        stage.connect();
        stage.download({1});
        QVERIFY(stage.stored(1).contains(QByteArray(1500, 'x') + "\r\nEnd"));
    }

    void aReplySplitAtEveryByteIsReadTheSame() {
        Stage stage(Kd({"ver=V2.31\r\nStart     , 521974517\r\nProfile\r\nEnd\r\n"}));
        Faults faults;
        faults.pieces = 1;
        faults.pauseMilliseconds = 2;
        stage.fault(faults);
        stage.connect();
        QCOMPARE(stage.link.Mgrid.rows[1].cells[1], "521974517");
        stage.download({1});
        QVERIFY(stage.stored(1).contains("ver=V2.31\r\nStart     , 521974517\r\nProfile\r\nEnd"));
    }

    void aLateAnswerIsTaken() {
        Stage stage;
        Faults faults;
        faults.delayMilliseconds = 700;
        stage.fault(faults);
        stage.connect();
        QCOMPARE(stage.link.Mgrid.rowCount(), 9);
    }

    void aDiveBrokenOffIntoTheBeaconIsNotStored() {
        Stage stage;
        stage.connect();
        Faults faults;
        faults.breakOffAfter = 1000;
        stage.fault(faults);
        stage.download({1});
        QVERIFY(stage.stored(1).isEmpty());
        QCOMPARE(stage.host.messages.first(), "1  Dives Downloaded.");
    }

    void lostAndTurnedBytesAreStoredAsTheyCame_data() {
        QTest::addColumn<int>("dropEvery");
        QTest::addColumn<int>("flipEvery");
        QTest::newRow("lost") << strideBeside(dive(2)) << 0;
        QTest::newRow("turned") << 0 << strideBeside(dive(2));
    }

    void lostAndTurnedBytesAreStoredAsTheyCame() {
        QFETCH(int, dropEvery);
        QFETCH(int, flipEvery);
        Stage stage(Kd({dive(2)}, "V3.12"));
        stage.connect();
        Faults faults;
        faults.dropEvery = dropEvery;
        faults.flipEvery = flipEvery;
        stage.fault(faults);
        stage.download({1});
        QByteArray expected;
        for (qsizetype at = 0; at < dive(2).size(); ++at) {
            const bool hit = (at + 1) % (dropEvery + flipEvery) == 0;
            if (!hit || dropEvery == 0) {
                expected += static_cast<char>(hit ? dive(2).at(at) ^ 1 : dive(2).at(at));
            }
        }
        QVERIFY(expected.contains("End"));
        QCOMPARE(stage.stored(1), stage.link.download.lastdivetext.bytes() + "\r\n");
        // A beacon may stand ahead, and the last line end may still be on its way.
        QVERIFY(stage.stored(1).contains(expected.chopped(2)));
    }

    void aDiveWhoseEndMarkIsHurtIsDroppedWhenTheBeaconComes() {
        Stage stage(Kd({"ver=V3.12\r\nStart     , 521974517\r\nProfile\r\n1,2,3\r\nEnd\r\n"}, "V3.12"));
        stage.connect();
        Faults faults;
        faults.flipEvery = 1;
        stage.fault(faults);
        stage.select({1});
        cmddownload_click(stage.link, stage.host);
        QTRY_VERIFY(stage.link.rxbuf.size() > 40); // all of it, and nothing that can be read
        QVERIFY(!stage.tickUntil([&stage] { return !stage.link.Timer3; }));
        stage.fault(Faults());
        QTRY_VERIFY(stage.tickUntil([&stage] { return !stage.link.Timer3; }));
        QVERIFY(stage.stored(1).isEmpty());
        QCOMPARE(stage.host.messages.first(), "1  Dives Downloaded.");
    }

    void garbageOnTheLineIsNeitherADeviceNorADirectory() {
        const TestFolder folder;
        PseudoTerminal far;
        far.link(folder.root(), kPort);
        LinkState link;
        SerialHost host;
        mnuFindKD_click(link, host);
        QByteArray garbage;
        for (int i = 0; i < 2000; ++i) {
            garbage += static_cast<char>(i * 7919 % 256);
        }
        QVERIFY(!garbage.contains("PPP"));
        far.send(garbage);
        QTRY_VERIFY((Timer8_tick(link, host), link.scanbuf[kPort].size() == garbage.size()));
        QCOMPARE(link.ComNum, "");
        QCOMPARE(link.Label8, "Scanning..");
        setcomnum(link, host, QString::number(kPort));
        QVERIFY(!host.working.PortOpen()); // the search holds it
        closesearchports(host, 31);
        opencomport(link, host);
        QObject::connect(&host.working, &platform::SerialPort::received,
                         [&] { MSComm1_received(link, host); });
        far.send(garbage);
        QTRY_COMPARE(link.rxbuf.size(), garbage.size());
        Timer2_tick(link, host);
        Timer1_tick(link, host);
        QCOMPARE(link.Mgrid.rowCount(), 1);
        QCOMPARE(link.AFLabel3.text, "Command Sent..");
    }

    void aDeviceWithoutDivesLeavesTheButtonsOff() {
        Stage stage((Kd()));
        stage.device.start();
        setcomnum(stage.link, stage.host, QString::number(kPort));
        cmdstore_click(stage.link, stage.host);
        QTRY_VERIFY(stage.tickUntil([&stage] { return stage.device.received().contains('H'); }));
        QCOMPARE(stage.link.Mgrid.rowCount(), 1);
        Timer1_tick(stage.link, stage.host);
        QVERIFY(!stage.link.downloadbuttons);
    }

    void aSilentDeviceIsNotConnected() {
        Stage stage;
        Faults faults;
        faults.silent = true;
        stage.fault(faults);
        stage.device.start();
        setcomnum(stage.link, stage.host, QString::number(kPort));
        stage.link.console.option = 10;
        preparecommand(stage.link);
        Command2_click(stage.link, stage.host);
        for (int tick = 0; tick < 50; ++tick) {
            Timer1_tick(stage.link, stage.host);
            QCOMPARE(stage.link.AFLabel3.text, "Command Sent..");
        }
        Timer1_tick(stage.link, stage.host);
        QCOMPARE(stage.link.AFLabel3.text, "Not Connected");
    }

    void settingsAreSentAndAnswered() {
        Stage stage;
        stage.connect();
        stage.link.console.option = kChoiceIntervalSend;
        preparecommand(stage.link);
        Text9_change(stage.link, QStringLiteral("5"));
        Command2_click(stage.link, stage.host);
        QVERIFY(stage.host.messages.isEmpty());
        QTRY_VERIFY(stage.link.rxbuf.holds("+^+00005"));
        Timer1_tick(stage.link, stage.host);
        QTRY_VERIFY(stage.link.rxbuf.holds("r00005"));
        stage.device.with([](Kd& kd) { QCOMPARE(kd.memory.interval, 5); });
    }

    void aLogoAndABookArriveWhole() {
        Stage stage;
        stage.connect();
        QByteArray text;
        for (int line = 0; text.size() < 6000; ++line) {
            text += "line " + QByteArray::number(line) + "\r\n";
        }
        for (const int option : {kChoiceLogo, kChoiceBook}) {
            stage.link.console.option = option;
            preparecommand(stage.link);
            stage.folder.put(QStringLiteral("a.bmt"), text);
            stage.host.chosenFile = stage.folder.path(QStringLiteral("a.bmt"));
            mnuOpen_click(stage.link, stage.host);
            Command2_click(stage.link, stage.host);
            QVERIFY(stage.host.messages.isEmpty());
            QTRY_VERIFY(stage.link.rxbuf.holds("+++"));
        }
        stage.device.with([&text](Kd& kd) {
            QCOMPARE(kd.memory.logo, text);
            QCOMPARE(kd.memory.book, text);
        });
    }

    void aNameArrivesPaddedAndIsTakenUp() {
        Stage stage;
        stage.connect();
        stage.link.console.option = kChoiceUserId;
        preparecommand(stage.link);
        Text9_change(stage.link, QStringLiteral("Ada"));
        Command2_click(stage.link, stage.host);
        QVERIFY(stage.host.messages.isEmpty());
        QTRY_VERIFY(stage.device.received().endsWith("A^Ada" + QByteArray(29, ' ') + "B*@ " +
                                                     QByteArray(30, 'C') + "\r\n"));
        stage.device.with([](Kd& kd) { QCOMPARE(kd.memory.username.trimmed(), QByteArray("Ada")); });
    }

    void theIntervalIsReadAndEchoed() {
        Stage stage;
        stage.connect();
        stage.link.console.Text16[1] = QStringLiteral("0.1");
        stage.link.AFLabel3.text = QStringLiteral("Command Sent..");
        Label19_click(stage.link, stage.host, kChoiceIntervalGet);
        QTRY_VERIFY(stage.link.rxbuf.holds("r00010"));
        Timer1_tick(stage.link, stage.host);
        QCOMPARE(stage.link.console.TextResponse.text, "10 secs");
        QCOMPARE(stage.link.console.Text16[1], "10");
    }

    void halfAReplyIsNoReplyAndItsRestIsOnlyShown() {
        Stage stage(Kd(simulator::deviceDives(), "V3.12"));
        stage.connect();
        Faults faults;
        faults.pieces = 3;
        faults.pauseMilliseconds = 700;
        stage.fault(faults);
        stage.link.console.Text16[1] = QStringLiteral("0.1");
        stage.link.AFLabel3.text = QStringLiteral("Command Sent..");
        Label19_click(stage.link, stage.host, kChoiceIntervalGet);
        QTRY_COMPARE(stage.link.rxbuf.bytes(), QByteArray("r00"));
        replyecho(stage.link);
        readinterval(stage.link);
        QCOMPARE(stage.link.console.Text16[1], "0.1");
        QTRY_VERIFY(stage.link.rxbuf.holds("r00010"));
        Timer1_tick(stage.link, stage.host);
        QCOMPARE(stage.link.console.Text16[1], "0.1");
        QCOMPARE(stage.link.console.TextResponse.text, "10 secs");
        stage.fault(Faults());
        Label19_click(stage.link, stage.host, kChoiceIntervalGet);
        QTRY_VERIFY(stage.link.rxbuf.holds("r00010"));
        Timer1_tick(stage.link, stage.host);
        QCOMPARE(stage.link.console.Text16[1], "10");
    }

    /// The tick that asks has nothing to look at yet.
    void anIntervalThatTheTickAskedForIsReadAtTheNextOne() {
        Stage stage(Kd(simulator::deviceDives(), "V3.12"));
        stage.connect();
        process().deviceconnected = 1;
        stage.link.console.Text16[1].clear();
        QTRY_VERIFY(stage.link.rxbuf.holds("PPP"));
        Timer1_tick(stage.link, stage.host);
        QCOMPARE(stage.link.console.Text16[1], "0.1");
        QTRY_VERIFY(stage.link.rxbuf.holds("r00010"));
        Timer1_tick(stage.link, stage.host);
        QCOMPARE(stage.link.console.Text16[1], "10");
        QCOMPARE(stage.link.console.Text16[0], "10");
    }

    void aDirectoryBehindAnUnansweredGetIntervalIsNoInterval() {
        Stage stage(Kd(simulator::deviceDives(), "V3.10"));
        Faults silent;
        silent.silent = true;
        stage.fault(silent);
        stage.device.start();
        setcomnum(stage.link, stage.host, QString::number(kPort));
        stage.link.console.Text16[1].clear();
        stage.link.AFLabel3.text = QStringLiteral("Command Sent..");
        Label19_click(stage.link, stage.host, kChoiceIntervalGet);
        QTRY_VERIFY(stage.device.received().endsWith('R'));
        stage.fault(Faults());
        stage.host.working.Output("M"); // as another screen may, the choice staying what it is
        QTRY_VERIFY(stage.link.rxbuf.holds("End"));
        Timer1_tick(stage.link, stage.host);
        Timer1_tick(stage.link, stage.host);
        QCOMPARE(stage.link.console.Text16[1], "");
        QCOMPARE(stage.link.console.Text16[0], "");
    }

    void aRestartSilencesTheDeviceUntilItsBeaconIsBack() {
        Stage stage(Kd(simulator::deviceDives(), "V3.12"));
        stage.connect();
        stage.host.answers = {true};
        Label19_click(stage.link, stage.host, kChoiceQuit);
        QCOMPARE(stage.host.questions, QStringList({"Are you sure you want to restart KD/Tolby"}));
        QTRY_VERIFY(stage.device.received().endsWith('Q'));
        QTest::qWait(100); // what was on its way has come
        const qsizetype before = stage.link.rxbuf.size();
        QTest::qWait(1000);
        QCOMPARE(stage.link.rxbuf.size(), before);
        QTRY_VERIFY_WITH_TIMEOUT(stage.link.rxbuf.holds("PPP"), 2 * Kd::restartMilliseconds);
    }

    void withoutItsReplyACommandSaysSo() {
        Stage stage;
        stage.connect();
        Faults faults;
        faults.silent = true;
        stage.fault(faults);
        stage.link.console.option = kChoiceBook;
        preparecommand(stage.link);
        stage.folder.put(QStringLiteral("book.txt"), "a book");
        stage.host.chosenFile = stage.folder.path(QStringLiteral("book.txt"));
        mnuOpen_click(stage.link, stage.host);
        Command2_click(stage.link, stage.host);
        QCOMPARE(stage.host.messages, QStringList({"No Response - Check Connection"}));
        QCOMPARE(stage.link.AFLabel3.text, "Not Connected");
        QTRY_VERIFY(stage.device.received().endsWith('B')); // and nothing behind
        QCOMPARE(stage.link.console.chosenfile.bytes, QByteArray("a book"));
    }

    void aCloseInTheMiddleOfABodyEndsItThere() {
        Stage stage;
        stage.connect();
        stage.link.console.option = kChoiceLogo;
        preparecommand(stage.link);
        stage.folder.put(QStringLiteral("a.bmt"), QByteArray(19999, 'x'));
        stage.host.chosenFile = stage.folder.path(QStringLiteral("a.bmt"));
        mnuOpen_click(stage.link, stage.host);
        stage.host.repaintsLeft = 3;
        Command2_click(stage.link, stage.host);
        QVERIFY(stage.host.closed);
        QTest::qWait(200);
        const QByteArray body = stage.device.received().mid(stage.device.received().lastIndexOf('L') + 1);
        QVERIFY(body.size() > 0);
        QVERIFY(body.size() < 20000);
        QCOMPARE(body, QByteArray(body.size(), 'x')); // no end mark either
    }

    void allDivesAreBackedUp() {
        Stage stage;
        stage.connect();
        stage.link.AFLabel3.text = QStringLiteral("Connected");
        mnubackdive_click(stage.link, stage.host);
        QTRY_VERIFY_WITH_TIMEOUT(stage.tickUntil([&stage] { return !stage.link.Timer3; }), 20000);
        QCOMPARE(stage.host.messages.last(), "8  Dives Downloaded.");
        for (std::size_t number = 1; number <= 8; ++number) {
            QCOMPARE(stage.folder.get(QStringLiteral("new/backdive%1.txt").arg(number)), dive(number));
        }
        QCOMPARE(stage.host.leavings, 1);
    }
};

QTEST_GUILESS_MAIN(TestDevice)
#include "test_device.moc"
