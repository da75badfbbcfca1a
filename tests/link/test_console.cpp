#include "link/console.h"
#include "shell/process.h"
#include "tests/link/fakehost.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest>

using namespace benthor;
using namespace benthor::link;
using namespace benthor::tests;

namespace {

struct Stage {
    Stage() {
        process() = Process();
        host.line.open = true;
    }
    void choose(int option) {
        link.console.option = option;
        preparecommand(link);
    }
    void answer(const QByteArray& reply) {
        host.line.onPoll = [this, reply] { host.line.waiting = reply; };
    }
    QString file(const QByteArray& bytes, const QString& name) {
        QFile out(folder.filePath(name));
        if (!out.open(QIODevice::WriteOnly) || out.write(bytes) != bytes.size()) {
            qFatal("no file to open");
        }
        return out.fileName();
    }

    QTemporaryDir folder;
    LinkState link;
    FakeHost host;
};

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
        Stage stage;
        stage.choose(option);
        QCOMPARE(stage.link.console.Text6, expected);
        sendcommand(stage.link, stage.host);
        QCOMPARE(stage.host.line.writes.size(), 1U);
        QCOMPARE(stage.host.line.sent, sent);
        QCOMPARE(stage.link.Text4.bytes(), stage.link.console.Text3.toLatin1());
    }

    void aChoiceWithoutFunctionLeavesTheFieldsAlone() {
        Stage stage;
        stage.choose(10);
        stage.choose(7);
        QCOMPARE(stage.link.console.Text3, "Q");
    }

    void theBookKeepsThePrefixThatStoodThere() {
        Stage stage;
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
        Stage stage;
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
        Stage stage;
        stage.choose(2);
        Text9_change(stage.link, QStringLiteral("5"));
        stage.answer("s");
        Command2_click(stage.link, stage.host);
        QCOMPARE(stage.host.line.sent, QByteArray("S005F\r\n"));
        QVERIFY(stage.host.messages.isEmpty());
    }

    void anIntervalTypedAs5LeavesUnpaddedThroughItsPicture() {
        Stage stage;
        stage.link.console.Text16[0] = QStringLiteral("5");
        Picture14_click(stage.link, stage.host, 2);
        QCOMPARE(stage.host.line.sent, QByteArray("S5F\r\n"));
        QCOMPARE(stage.host.line.polls, 0);
    }

    void aNameCannotBeLongerThan32AndAShorterOneIsPadded() {
        Stage stage;
        stage.choose(8);
        Text9_change(stage.link, QString(40, QLatin1Char('x')));
        QCOMPARE(stage.link.console.Text9.size(), 32);
        Text9_change(stage.link, QStringLiteral("Ada"));
        sendcommand(stage.link, stage.host);
        QCOMPARE(stage.host.line.sent, "A^Ada" + QByteArray(29, ' ') + kNameTrailer);
    }

    void nameAndFreeTextAreKeptForTheNextTime() {
        Stage stage;
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
        Stage stage;
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
        Stage stage;
        stage.host.line.open = false;
        stage.host.answers = {true};
        process().deviceconnected = 1;
        process().uploadtext = QStringLiteral("text");
        stage.choose(option);
        stage.link.console.Text5.text = QStringLiteral("a.bmt");
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
        Stage stage;
        stage.choose(0);
        stage.link.console.Text5.text = name;
        stage.answer("l");
        Command2_click(stage.link, stage.host);
        QCOMPARE(stage.host.messages,
                 taken ? QStringList() : QStringList("Wrong file format. BMT format required"));
        QCOMPARE(stage.host.line.writes.empty(), !taken);
    }

    void anIntervalThatIsNoNumberIsToldAndSentAllTheSame() {
        Stage stage;
        stage.choose(2);
        Text9_change(stage.link, QStringLiteral("ab"));
        stage.answer("s");
        Command2_click(stage.link, stage.host);
        QCOMPARE(stage.host.messages, QStringList("Wrong data format, only numeric accepted"));
        QCOMPARE(stage.host.line.sent, QByteArray("S0abF\r\n"));
    }

    void anIntervalThatIsNoNumberIsNotToldWhileTheAlarmFrameIsUp() {
        Stage stage;
        stage.link.console.Frame4Visible = true;
        stage.choose(2);
        Text9_change(stage.link, QStringLiteral("ab"));
        stage.answer("s");
        Command2_click(stage.link, stage.host);
        QVERIFY(stage.host.messages.isEmpty());
    }

    void sendingBeginsTheCountsAnew() {
        Stage stage;
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
        Stage stage;
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
        Stage stage;
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
        Stage stage;
        stage.choose(0);
        stage.link.console.Text5.text = QStringLiteral("a.bmt");
        process().uploadtext = QStringLiteral("body");
        stage.host.closed = true;
        Command2_click(stage.link, stage.host);
        QCOMPARE(stage.host.line.sent, QByteArray("L"));
        QVERIFY(stage.host.line.polls < 2000);
        QVERIFY(stage.host.messages.isEmpty());
    }

    void aBodyGoesOutCharacterByCharacterAndEndsInEscape() {
        Stage stage;
        stage.choose(0);
        stage.link.console.Text5.text = QStringLiteral("a.bmt");
        process().uploadtext = QString::fromLatin1("a*;\xE9");
        stage.answer("l");
        Command2_click(stage.link, stage.host);
        QCOMPARE(stage.host.line.sent, QByteArray("La*;\xE9\x1B"));
        QCOMPARE(stage.host.line.writes.size(), 6U);
        QCOMPARE(process().uploadtext, QString::fromLatin1("a*;\xE9\x1B"));
    }

    void aSecondSendAppendsASecondEscape() {
        Stage stage;
        stage.choose(0);
        stage.link.console.Text5.text = QStringLiteral("a.bmt");
        process().uploadtext = QStringLiteral("x");
        stage.answer("l");
        Command2_click(stage.link, stage.host);
        stage.host.line.sent.clear();
        Command2_click(stage.link, stage.host);
        QCOMPARE(stage.host.line.sent, QByteArray("Lx\x1B\x1B"));
    }

    void withoutAFileNoBodyGoesOut() {
        Stage stage;
        stage.choose(5); // its file box is hidden
        process().uploadtext = QStringLiteral("text");
        stage.link.console.Text5.text = QStringLiteral("some.mit");
        stage.answer("g");
        Command2_click(stage.link, stage.host);
        QCOMPARE(stage.host.line.sent, QByteArray("G"));
        QCOMPARE(process().uploadtext, "text");
    }

    void aBookIsCutAtItsIndexAndItsMarksBecomeColons() {
        Stage stage;
        stage.choose(6);
        stage.link.console.Text5.text = QStringLiteral("book.txt");
        stage.link.console.Text12.text = QStringLiteral("2");
        process().uploadtext = QStringLiteral("abc;d*e");
        stage.answer("b");
        Command2_click(stage.link, stage.host);
        QCOMPARE(stage.host.line.sent, QByteArray("Bc:d:e\x1B * * "));
        QVERIFY(stage.link.Text4.isEmpty());
    }

    void aBookIndexBeyondTheTextSendsTheEndOnly() {
        Stage stage;
        stage.choose(6);
        stage.link.console.Text5.text = QStringLiteral("book.txt");
        stage.link.console.Text12.text = QStringLiteral("100");
        process().uploadtext = QStringLiteral("short");
        stage.answer("b");
        Command2_click(stage.link, stage.host);
        QCOMPARE(stage.host.line.sent, QByteArray("B * * "));
    }

    void closingTheScreenEndsTheBody() {
        Stage stage;
        stage.choose(6);
        stage.link.console.Text5.text = QStringLiteral("book.txt");
        process().uploadtext = QString(5000, QLatin1Char('x'));
        stage.answer("b");
        stage.host.line.onOutput = [&stage](const QByteArray&) { stage.host.closed = true; };
        Command2_click(stage.link, stage.host);
        QVERIFY(stage.host.line.sent.size() < 1000);
        QVERIFY(!stage.host.line.sent.endsWith(" * * "));
    }

    void theSetupLeavesInOnePiece() {
        Stage stage;
        process().uploadtext = QStringLiteral("A079\x1B");
        send_data(stage.link, stage.host);
        QCOMPARE(stage.host.line.writes.size(), 1U);
        QCOMPARE(stage.host.line.sent, QByteArray("G   A079\x1B\x1B\r\n"));
    }

    void theSetupsFieldsAreSelectedWithItsFileBox() {
        Stage stage;
        dooptioncheck(stage.link);
        QCOMPARE(stage.link.console.option, 5);
        QCOMPARE(stage.link.console.Text3, "G");
        QCOMPARE(stage.link.console.Text6, "g");
        QCOMPARE(stage.link.console.Text5.text, "G");
        QVERIFY(stage.link.console.Text5.visible);
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
        Stage stage;
        stage.link.AFLabel3.text = caption;
        process().deviceconnected = connected;
        Label19_click(stage.link, stage.host, 1);
        QCOMPARE(stage.host.line.sent, sent ? QByteArray("R") : QByteArray());
        QVERIFY(!stage.link.console.intervalread);
        QVERIFY(!stage.link.console.Command2.visible);
        QVERIFY(!stage.link.Timer6);
    }

    void getReadingsStartsItsTimer() {
        Stage stage;
        process().deviceconnected = 1;
        Label19_click(stage.link, stage.host, 11);
        QVERIFY(stage.link.Timer6);
        QCOMPARE(stage.host.line.sent, QByteArray("J"));
    }

    void restartAsksFirst() {
        Stage stage;
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
            Stage stage;
            stage.link.console.Command2.visible = false;
            Label19_click(stage.link, stage.host, index);
            QVERIFY(stage.link.console.Command2.visible);
            QVERIFY(stage.host.line.writes.empty());
        }
        Stage stage;
        Label19_click(stage.link, stage.host, 5);
        QVERIFY(!stage.link.console.Command2.visible);
    }

    void theFilterOfTheOpenDialogGoesByTheChoice() {
        Stage stage;
        stage.link.console.convertedlogo = QStringLiteral("sharka.bmt");
        for (const int option : {0, 5, 9}) {
            stage.choose(option);
            mnuOpen_click(stage.link, stage.host);
        }
        QCOMPARE(stage.host.filters, QStringList({"BMPText Files (*.bmt)|*.bmt|All Files (*.*)|*.*",
                                                  "Gas Files (*.mit)|*.mit|All Files (*.*)|*.*",
                                                  "Text Files (*.txt)|*.txt|All Files (*.*)|*.*"}));
        QCOMPARE(stage.host.suggested, QStringList({"sharka.bmt", "default.mit", ""}));
        QCOMPARE(process().uploadtext, "");
    }

    void aFileIsReadAsItsBytes() {
        Stage stage;
        stage.choose(6);
        stage.host.chosenFile = stage.file("two  blanks\r\n\xFF", QStringLiteral("book.txt"));
        mnuOpen_click(stage.link, stage.host);
        QCOMPARE(process().uploadtext, QString::fromLatin1("two  blanks\r\n\xFF"));
        QCOMPARE(stage.link.console.Text5.text, stage.host.chosenFile);
        QCOMPARE(stage.link.console.uploadfile, stage.host.chosenFile);
        QVERIFY(stage.host.questions.isEmpty());
    }

    void ofALogoOnlyWhatStandsBehindTheLastDoubleBlankStays_data() {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("text");
        QTest::newRow("none") << QByteArray("0 1 2") << "0 1 2";
        QTest::newRow("one") << QByteArray("head  body") << "body";
        QTest::newRow("in the last line") << QByteArray("head  body\r\nx  end") << "end";
        QTest::newRow("three blanks") << QByteArray("head   body") << " body";
        QTest::newRow("at the end") << QByteArray("head  ") << "";
    }

    void ofALogoOnlyWhatStandsBehindTheLastDoubleBlankStays() {
        QFETCH(QByteArray, file);
        QFETCH(QString, text);
        Stage stage;
        stage.choose(0);
        stage.host.chosenFile = stage.file(file, QStringLiteral("a.bmt"));
        mnuOpen_click(stage.link, stage.host);
        QCOMPARE(process().uploadtext, text);
    }

    void aLongFileIsCutAndItsRestCanBeSaved() {
        Stage stage;
        stage.choose(6);
        QByteArray bytes;
        for (int i = 0; bytes.size() < 20100; ++i) {
            bytes += QByteArray::number(i);
        }
        stage.host.chosenFile = stage.file(bytes, QStringLiteral("long.txt"));
        stage.host.answers = {true};
        mnuOpen_click(stage.link, stage.host);
        QCOMPARE(process().uploadtext.toLatin1(), bytes.first(20000));
        QCOMPARE(stage.host.questions,
                 QStringList("Not all text sent. Do you want to save remaining text in new file?"));
        QCOMPARE(stage.host.titles, QStringList("Save Text"));
        QFile rest(stage.host.chosenFile); // the fake gives the same name for both dialogs
        QVERIFY(rest.open(QIODevice::ReadOnly));
        QCOMPARE(rest.readAll(), bytes.sliced(20000));
    }

    void aFileThatCannotBeReadChangesNothing() {
        Stage stage;
        stage.choose(6);
        process().uploadtext = QStringLiteral("kept");
        stage.host.chosenFile = stage.folder.filePath(QStringLiteral("none.txt"));
        mnuOpen_click(stage.link, stage.host);
        QCOMPARE(process().uploadtext, "kept");
        QCOMPARE(stage.host.messages.size(), 1);
        QVERIFY(stage.host.messages.first().contains(QLatin1String("none.txt")));
    }

    void theTextToSendFollowsItsBoxExceptForBookAndLogo() {
        Stage stage;
        for (int option = 0; option <= 11; ++option) {
            stage.choose(option);
            process().uploadtext = QStringLiteral("file");
            stage.link.console.Text7 = QStringLiteral("box");
            refreshtexttosend(stage.link);
            QCOMPARE(process().uploadtext, option == 0 || option == 6 ? "file" : "box");
            QCOMPARE(stage.link.console.Text12.enabled, option == 6 || option == 9);
        }
    }

    void theFileBoxFollowsTheFileNameThatIsShown() {
        Stage stage;
        stage.link.console.uploadfile = QStringLiteral("a.bmt");
        stage.link.console.Text5.text = QStringLiteral("old");
        refreshtexttosend(stage.link);
        QCOMPARE(stage.link.console.Text5.text, "old");
        stage.link.console.filenameshown = QStringLiteral("a.bmt");
        refreshtexttosend(stage.link);
        QCOMPARE(stage.link.console.Text5.text, "a.bmt");
    }

    void theReplyIsEchoedFromTheThirdPlaceBehindItsTag() {
        Stage stage;
        stage.choose(1);
        stage.link.Text4.assign("PPr00010PP");
        replyecho(stage.link);
        QCOMPARE(stage.link.console.TextResponse.text, "10 secs");
        stage.choose(2);
        stage.link.Text4.assign("PP+^+00005PP");
        replyecho(stage.link);
        QCOMPARE(stage.link.console.TextResponse.text, "5 secs");
        stage.link.Text4.assign("nothing");
        replyecho(stage.link);
        QCOMPARE(stage.link.console.TextResponse.text, "5 secs");
        stage.choose(11);
        stage.link.Text4.assign("R0000,");
        replyecho(stage.link);
        QCOMPARE(stage.link.console.TextResponse.text, "0 secs");
        stage.choose(10);
        replyecho(stage.link);
        QCOMPARE(stage.link.console.TextResponse.text, "");
    }

    void theIntervalReplyAgreesWithTheVectors_data() {
        QTest::addColumn<QJsonObject>("vector");
        QFile file(QStringLiteral(BENTHOR_TEST_DATA "/link/interval.json"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QJsonArray all =
            QJsonDocument::fromJson(file.readAll())[QLatin1String("interval_replies")].toArray();
        QVERIFY(!all.isEmpty());
        for (const auto& vector : all) {
            QTest::newRow(vector[QLatin1String("about")].toString().toUtf8()) << vector.toObject();
        }
    }

    void theIntervalReplyAgreesWithTheVectors() {
        QFETCH(QJsonObject, vector);
        Stage stage;
        stage.choose(1);
        stage.link.console.intervalread = false;
        stage.link.console.Frame4Visible = true;
        stage.link.console.Text16.fill(QStringLiteral("(kept)"));
        stage.link.Text4.assign(vector[QLatin1String("reply")].toString().toLatin1());
        readinterval(stage.link);
        const QString interval = vector[QLatin1String("interval")].toVariant().toString();
        QCOMPARE(stage.link.console.Text16[1], interval);
        QCOMPARE(stage.link.console.Text16[0], interval);
        const QJsonObject boxes = vector[QLatin1String("boxes")].toObject();
        for (std::size_t box = 2; box <= 6; ++box) {
            QCOMPARE(stage.link.console.Text16[box],
                     boxes.value(QString::number(box)).toString(QStringLiteral("(kept)")));
        }
        QCOMPARE(stage.link.console.intervalread, interval != QLatin1String("(kept)"));
    }

    void theIntervalIsReadOnceBehindEachClick() {
        Stage stage;
        stage.choose(1);
        stage.link.console.intervalread = false;
        stage.link.Text4.assign("r00010");
        readinterval(stage.link);
        QCOMPARE(stage.link.console.Text16[1], "10");
        stage.link.Text4.assign("r00020");
        readinterval(stage.link);
        QCOMPARE(stage.link.console.Text16[1], "10");
        Label19_click(stage.link, stage.host, 1);
        readinterval(stage.link);
        QCOMPARE(stage.link.console.Text16[1], "20");
    }

    void theIntervalIsReadForItsChoiceOnly() {
        Stage stage;
        stage.choose(2);
        stage.link.console.intervalread = false;
        stage.link.Text4.assign("+^+00010");
        readinterval(stage.link);
        QCOMPARE(stage.link.console.Text16[1], "");
    }
};

QTEST_APPLESS_MAIN(TestConsole)
#include "test_console.moc"
