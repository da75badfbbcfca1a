#include "link/commandmenu.h"
#include "tests/link/consolestage.h"

using namespace benthor;
using namespace benthor::link;
using benthor::tests::ConsoleStage;

namespace {

const QByteArray kNameTrailer = "B*@ " + QByteArray(30, 'C') + "\r\n";

} // namespace

class TestConsole : public QObject {
    Q_OBJECT

private slots:
    void cleanup() { process() = Process(); }

    void eachChoiceLeavesAsItsCommand_data() {
        QTest::addColumn<int>("option");
        QTest::addColumn<QByteArray>("sent");
        QTest::addColumn<QString>("expected");
        QTest::newRow("logo") << 0 << QByteArray("L") << "l";
        QTest::newRow("interval get") << 1 << QByteArray("R") << "";
        QTest::newRow("interval send") << 2 << QByteArray("S005F\r\n") << "s";
        QTest::newRow("summaries") << 3 << QByteArray("M") << "";
        QTest::newRow("last summary") << 4 << QByteArray("C") << "";
        QTest::newRow("setup") << 5 << QByteArray("G") << "g";
        QTest::newRow("book") << 6 << QByteArray("B") << "b";
        QTest::newRow("name") << 8 << "A^" + QByteArray(32, ' ') + kNameTrailer << "a";
        QTest::newRow("other") << 9 << QByteArray() << "";
        QTest::newRow("quit") << 10 << QByteArray("Q") << "";
        QTest::newRow("status") << 11 << QByteArray("J") << "";
    }

    void eachChoiceLeavesAsItsCommand() {
        QFETCH(int, option);
        QFETCH(QByteArray, sent);
        QFETCH(QString, expected);
        ConsoleStage stage;
        stage.choose(option);
        QCOMPARE(stage.link.console.Text6, expected);
        sendcommand(stage.link, stage.host);
        QCOMPARE(stage.host.line.writes.size(), 1U);
        QCOMPARE(stage.host.line.sent, sent);
        QCOMPARE(stage.link.Text4.bytes(), stage.link.console.Text3.toLatin1());
    }

    void aChoiceWithoutFunctionLeavesTheFieldsAlone() {
        ConsoleStage stage;
        stage.choose(10);
        stage.choose(7);
        QCOMPARE(stage.link.console.Text3, "Q");
    }

    void theBookKeepsThePrefixThatStoodThere() {
        ConsoleStage stage;
        stage.choose(8);
        stage.choose(6);
        QCOMPARE(stage.link.console.Text11, "^");
        stage.choose(0);
        stage.choose(6);
        QCOMPARE(stage.link.console.Text11, "");
    }

    void aChoiceShowsTheBoxesThatItUses_data() {
        QTest::addColumn<int>("option");
        QTest::addColumn<QString>("shown");
        QTest::newRow("logo") << 0 << "file";
        QTest::newRow("interval get") << 1 << "reply";
        QTest::newRow("interval send") << 2 << "reply";
        QTest::newRow("setup") << 5 << "";
        QTest::newRow("book") << 6 << "file index";
        QTest::newRow("name") << 8 << "data edit";
        QTest::newRow("other") << 9 << "data edit caption file index reply";
        QTest::newRow("quit") << 10 << "";
        QTest::newRow("status") << 11 << "reply";
    }

    void aChoiceShowsTheBoxesThatItUses() {
        QFETCH(int, option);
        QFETCH(QString, shown);
        ConsoleStage stage;
        stage.choose(9); // shows most of them
        stage.link.console.TextResponse.text = QStringLiteral("10 secs");
        stage.choose(option);
        const Console& console = stage.link.console;
        QStringList found;
        found << (console.Text9Visible ? "data" : "") << (console.mnuEditEnabled ? "edit" : "")
              << (console.AFLabel1Visible ? "caption" : "") << (console.Text5.visible ? "file" : "")
              << (console.Text12.visible ? "index" : "") << (console.TextResponse.visible ? "reply" : "");
        found.removeAll(QString());
        QCOMPARE(found.join(QLatin1Char(' ')), shown);
        QCOMPARE(console.TextResponse.text, "");
        QCOMPARE(console.Label3Visible, console.Text9Visible);
    }

    void anIntervalTypedAs5LeavesAs005ThroughSend() {
        ConsoleStage stage;
        stage.choose(2);
        Text9_change(stage.link, QStringLiteral("5"));
        stage.answer("s");
        Command2_click(stage.link, stage.host);
        QCOMPARE(stage.host.line.sent, QByteArray("S005F\r\n"));
        QVERIFY(stage.host.messages.isEmpty());
    }

    void anIntervalTypedAs5LeavesUnpaddedThroughItsPicture() {
        ConsoleStage stage;
        stage.link.console.Text16[0] = QStringLiteral("5");
        Picture14_click(stage.link, stage.host, 2);
        QCOMPARE(stage.host.line.sent, QByteArray("S5F\r\n"));
        QCOMPARE(stage.host.line.polls, 0);
    }

    void aNameCannotBeLongerThan32AndAShorterOneIsPadded() {
        ConsoleStage stage;
        stage.choose(8);
        Text9_change(stage.link, QString(40, QLatin1Char('x')));
        QCOMPARE(stage.link.console.Text9.size(), 32);
        Text9_change(stage.link, QStringLiteral("Ada"));
        sendcommand(stage.link, stage.host);
        QCOMPARE(stage.host.line.sent, "A^Ada" + QByteArray(29, ' ') + kNameTrailer);
    }

    void nameAndFreeTextAreKeptForTheNextTime() {
        ConsoleStage stage;
        stage.choose(8);
        Text9_change(stage.link, QStringLiteral("Ada"));
        stage.choose(9);
        Text9_change(stage.link, QStringLiteral("XYZ"));
        stage.choose(8);
        QCOMPARE(stage.link.console.Text9, "Ada");
        stage.choose(9);
        QCOMPARE(stage.link.console.Text9, "XYZ");
    }

    void aCommandEmptiesWhatWasReceived() {
        ConsoleStage stage;
        stage.link.rxbuf.append("PPP");
        stage.host.line.waiting = "late";
        stage.link.capturemode = true;
        stage.choose(3);
        sendcommand(stage.link, stage.host);
        QVERIFY(stage.link.rxbuf.isEmpty());
        QVERIFY(stage.host.line.waiting.isEmpty());
        QVERIFY(!stage.link.capturemode);
        QVERIFY(stage.link.linkwatch);
    }

    void nothingLeavesAClosedPort_data() {
        QTest::addColumn<int>("option");
        for (int option = 0; option <= 11; ++option) {
            QTest::addRow("%d", option) << option;
        }
    }

    void nothingLeavesAClosedPort() {
        QFETCH(int, option);
        ConsoleStage stage;
        stage.host.line.open = false;
        stage.host.answers = {true};
        process().deviceconnected = 1;
        process().uploadtext = QStringLiteral("text");
        stage.choose(option);
        stage.openFile("text", QStringLiteral("a.bmt"));
        Command2_click(stage.link, stage.host);
        Label19_click(stage.link, stage.host, option);
        send_data(stage.link, stage.host);
        QVERIFY(stage.host.line.writes.empty());
    }

    void aLogoThatIsNoBmtIsRefused_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("taken");
        QTest::newRow("lower case") << "/logos/sharka.bmt" << true;
        QTest::newRow("upper case") << "LOGO.BMT" << true;
        QTest::newRow("other separator") << "C:\\logos\\sharka.bmt" << true;
        QTest::newRow("bitmap") << "/logos/shark.bmp" << false;
        QTest::newRow("point in the folder") << "/logos.bmt/shark" << false;
        QTest::newRow("the bare word") << "bmt" << true;
        QTest::newRow("the hint") << "Find file to open using File menu" << false;
    }

    void aLogoThatIsNoBmtIsRefused() {
        QFETCH(QString, name);
        QFETCH(bool, taken);
        ConsoleStage stage;
        stage.choose(0);
        stage.link.console.Text5.text = name;
        stage.link.console.chosenfile = {name, "a logo"};
        stage.answer("l");
        Command2_click(stage.link, stage.host);
        QCOMPARE(stage.host.messages,
                 taken ? QStringList() : QStringList("Wrong file format. BMT format required"));
        QCOMPARE(stage.host.line.writes.empty(), !taken);
    }

    void withoutAnIntervalTheShortPathSendsNothing() {
        ConsoleStage stage;
        Picture14_click(stage.link, stage.host, 2);
        Label19_click(stage.link, stage.host, 2);
        QCOMPARE(stage.host.line.sent, QByteArray());
        QCOMPARE(stage.link.console.option, 2);
        for (const char* text : {" ", "ab", "999", "-"}) {
            stage.host.line.sent.clear();
            stage.link.console.Text16[0] = QLatin1String(text);
            Label19_click(stage.link, stage.host, 2);
            QCOMPARE(stage.host.line.sent, QByteArray("S") + text + "F\r\n");
        }
    }

    void anIntervalThatIsNoNumberIsToldAndSentAllTheSame() {
        ConsoleStage stage;
        stage.choose(2);
        Text9_change(stage.link, QStringLiteral("ab"));
        stage.answer("s");
        Command2_click(stage.link, stage.host);
        QCOMPARE(stage.host.messages, QStringList("Wrong data format, only numeric accepted"));
        QCOMPARE(stage.host.line.sent, QByteArray("S0abF\r\n"));
    }

    void anIntervalThatIsNoNumberIsNotToldWhileTheAlarmFrameIsUp() {
        ConsoleStage stage;
        stage.link.console.Frame4Visible = true;
        stage.choose(2);
        Text9_change(stage.link, QStringLiteral("ab"));
        stage.answer("s");
        Command2_click(stage.link, stage.host);
        QVERIFY(stage.host.messages.isEmpty());
    }

    void sendingBeginsTheCountsAnew() {
        ConsoleStage stage;
        stage.link.silentticks = 70;
        stage.link.updatedticks = 5;
        stage.choose(10);
        Command2_click(stage.link, stage.host);
        QCOMPARE(stage.link.silentticks, 0);
        QCOMPARE(stage.link.updatedticks, 0);
        QCOMPARE(stage.link.AFLabel3.text, "Checking..");
        QCOMPARE(stage.link.AFLabel3.colour, platform::kToldYellow);
        QCOMPARE(stage.host.line.polls, 0);
    }

    void withoutAReplyThePollsEndAndSaySo() {
        ConsoleStage stage;
        stage.choose(2);
        Command2_click(stage.link, stage.host);
        QCOMPARE(stage.host.line.polls, 100000);
        QCOMPARE(stage.host.messages, QStringList("No Response - Check Connection"));
        QCOMPARE(stage.link.silentticks, 100);
        QCOMPARE(stage.link.AFLabel3.text, "Not Connected");
        QCOMPARE(stage.link.AFLabel3.colour, platform::kToldYellow);
        QVERIFY(stage.host.repaints > 100);
    }

    void whatThePollsReadReplacesTheViewAndNeverReachesTheBuffer() {
        ConsoleStage stage;
        stage.choose(2);
        stage.host.line.onPoll = [&stage] {
            stage.host.line.waiting = stage.host.line.polls < 3 ? QByteArray("PPPP") : QByteArray("xsx");
        };
        Command2_click(stage.link, stage.host);
        QCOMPARE(stage.host.line.polls, 3);
        QCOMPARE(stage.link.Text4.bytes(), QByteArray("xsx"));
        QVERIFY(stage.link.rxbuf.isEmpty());
    }

    void closingTheScreenEndsThePolls() {
        ConsoleStage stage;
        stage.choose(0);
        stage.openFile("body", QStringLiteral("a.bmt"));
        stage.host.closed = true;
        Command2_click(stage.link, stage.host);
        QCOMPARE(stage.host.line.sent, QByteArray("L"));
        QVERIFY(stage.host.line.polls < 2000);
        QVERIFY(stage.host.messages.isEmpty());
    }

    void aValueTypedSinceTheChoiceGoesWithIntervalSend() {
        ConsoleStage stage;
        stage.answer("s");
        const auto send = [&stage] {
            stage.host.line.sent.clear();
            Command2_click(stage.link, stage.host);
            return stage.host.line.sent;
        };
        Text16_change(stage.link, QStringLiteral("30")); // ahead of the choice
        mnuCommand_click(stage.link, stage.host, u"mnuIntSend");
        QCOMPARE(send(), QByteArray("S005F\r\n"));
        Text16_change(stage.link, QStringLiteral("20"));
        QCOMPARE(send(), QByteArray("S020F\r\n"));
        QCOMPARE(send(), QByteArray("S020F\r\n"));
        Text16_change(stage.link, QStringLiteral("240"));
        QCOMPARE(send(), QByteArray("S240F\r\n"));
        Text16_change(stage.link, QString()); // nothing stands there
        mnuCommand_click(stage.link, stage.host, u"mnuIntSend");
        Text16_change(stage.link, QString());
        QCOMPARE(send(), QByteArray("S005F\r\n"));
        Text16_change(stage.link, QStringLiteral("1000"));
        QCOMPARE(send(), QByteArray());
        QCOMPARE(stage.host.messages.size(), 1);
        mnuCommand_click(stage.link, stage.host, u"mnuIntSend"); // chosen anew: as told
        QCOMPARE(send(), QByteArray("S005F\r\n"));
        // What can be seen of the data box is what goes.
        Text16_change(stage.link, QStringLiteral("20"));
        stage.link.console.Text9Visible = true;
        Text9_change(stage.link, QStringLiteral("7"));
        QCOMPARE(send(), QByteArray("S007F\r\n"));
        // A value that the device told was not typed.
        stage.link.console.Text9Visible = false;
        mnuCommand_click(stage.link, stage.host, u"mnuIntSend");
        Text16_change(stage.link, QStringLiteral("20"));
        stage.link.console.option = 1;
        stage.link.console.intervalread = false;
        stage.link.console.replytag = "r";
        stage.link.console.replywidth = 3;
        stage.link.Text4.assign("r00010");
        readinterval(stage.link);
        stage.link.console.option = 2;
        QCOMPARE(send(), QByteArray("S005F\r\n"));
    }

    /// It acts by itself; behind it no Send is left that bears another command.
    void theIntervalThatLeavesByItsPictureLeavesNoOtherCommandBehind() {
        for (const int before : {6, 10}) {
            ConsoleStage stage;
            stage.choose(before);
            stage.link.console.Command2.visible = true;
            stage.link.console.Text16[0] = QStringLiteral("12");
            Picture14_click(stage.link, stage.host, 2);
            QCOMPARE(stage.host.line.sent, QByteArray("S12F\r\n"));
            QCOMPARE(stage.link.console.Text9, "12");
            QVERIFY(!stage.link.console.Command2.visible);
            stage.host.line.sent.clear();
            stage.answer("s");
            Command2_click(stage.link, stage.host);
            QCOMPARE(stage.host.line.sent, QByteArray("S012F\r\n"));
        }
    }

    void getIntervalIsSentOnlyWhenTheLinkLooksAlive_data() {
        QTest::addColumn<QString>("caption");
        QTest::addColumn<int>("connected");
        QTest::addColumn<bool>("sent");
        QTest::newRow("not connected") << "Not Connected" << 0 << false;
        QTest::newRow("connected, not yet mirrored") << "Connected" << 0 << false;
        QTest::newRow("mirrored") << "Connected" << 1 << true;
        QTest::newRow("command sent") << "Command Sent.." << 0 << true;
        QTest::newRow("data updated") << "Data Updated" << 0 << true;
    }

    void getIntervalIsSentOnlyWhenTheLinkLooksAlive() {
        QFETCH(QString, caption);
        QFETCH(int, connected);
        QFETCH(bool, sent);
        ConsoleStage stage;
        stage.link.AFLabel3.text = caption;
        process().deviceconnected = connected;
        Label19_click(stage.link, stage.host, 1);
        QCOMPARE(stage.host.line.sent, sent ? QByteArray("R") : QByteArray());
        QVERIFY(!stage.link.console.intervalread);
        QVERIFY(!stage.link.console.Command2.visible);
        QVERIFY(!stage.link.Timer6);
    }

    void getReadingsStartsItsTimer() {
        ConsoleStage stage;
        process().deviceconnected = 1;
        Label19_click(stage.link, stage.host, 11);
        QVERIFY(stage.link.Timer6);
        QCOMPARE(stage.host.line.sent, QByteArray("J"));
    }

    void restartAsksFirst() {
        ConsoleStage stage;
        stage.host.answers = {false, true};
        Label19_click(stage.link, stage.host, 10);
        QCOMPARE(stage.host.questions, QStringList("Are you sure you want to restart KD/Tolby"));
        QCOMPARE(stage.host.titles, QStringList("Restart?"));
        QVERIFY(stage.host.line.writes.empty());
        Label19_click(stage.link, stage.host, 10);
        QCOMPARE(stage.host.line.sent, QByteArray("Q"));
    }

    void theOtherChoicesShowSendAndWait() {
        for (const int index : {0, 6, 8}) {
            ConsoleStage stage;
            stage.link.console.Command2.visible = false;
            Label19_click(stage.link, stage.host, index);
            QVERIFY(stage.link.console.Command2.visible);
            QVERIFY(stage.host.line.writes.empty());
        }
        ConsoleStage stage;
        Label19_click(stage.link, stage.host, 5);
        QVERIFY(!stage.link.console.Command2.visible);
    }
};

QTEST_APPLESS_MAIN(TestConsole)
#include "test_console.moc"
