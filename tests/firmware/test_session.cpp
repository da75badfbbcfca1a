// A session's beginning and end, the keys, the choice of an image, commands by hand.

#include "firmware/guidance.h"
#include "tests/firmware/fakereproghost.h"
#include "tests/link/vectors.h"

#include <QJsonArray>
#include <QTemporaryDir>

using namespace benthor;
using namespace benthor::firmware;
using tests::FakeReprogHost;

namespace {

const QString kWarning =
    QStringLiteral("CLOSE ALL OTHER PROGRAMS FOR MOST RELIABLE LINK. DO NOT USE MOUSE OR "
                   "KEYBOARD WHEN UNIT IS PROGRAMMING.");

struct Session {
    Session() {
        QDir(folder.path()).mkdir("Reprog");
        put("chklst.txt", "bpcsp2shchk.sog  chksum= 0ABC\r\nmine.sog  chksum= 0DEF\r\n");
    }
    void put(const char* name, const QByteArray& bytes) const {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
            qFatal("no file");
        }
    }
    QString path(const char* name) const {
        return folder.filePath(QStringLiteral("Reprog/") + QLatin1String(name));
    }
    void open() { openreprog(state, host, folder.path()); }

    QTemporaryDir folder;
    ReprogState state;
    FakeReprogHost host;
};

} // namespace

class TestSession : public QObject {
    Q_OBJECT

private slots:
    void theScreenOpensOnTheRememberedPort() {
        Session session;
        session.host.onBox = [&] {
            QCOMPARE(session.host.line.openings, 0);
        }; // told before anything is opened
        session.open();
        QCOMPARE(session.host.messages, QStringList(kWarning));
        QCOMPARE(session.state.Text5, session.path("bpcsp2shchk.sog"));
        QCOMPARE(session.state.check.Text13, "0ABC");
        QCOMPARE(session.state.Command2.colour, platform::kToldGreen);
        QCOMPARE(session.state.Command7Colour, kButtonGrey);
        QVERIFY(session.host.line.open);
        QCOMPARE(session.host.line.port, 3);
        QCOMPARE(session.host.line.settings, "9600,n,8,1");
        QCOMPARE(session.host.line.inputLen, 200);
        QVERIFY(session.state.idleflag);
        QCOMPARE(session.host.line.sent, "1");
        QCOMPARE(session.state.Text6, "3");
        QCOMPARE(session.state.fields.Text3 + session.state.fields.Text11 + session.state.fields.Text9 +
                     session.state.fields.Text10 + session.state.fields.Text8,
                 "");
    }

    void withoutARememberedPortTheControlsAreBusy() {
        Session session;
        session.host.remembered.clear();
        session.open();
        QCOMPARE(session.host.messages, QStringList(kWarning));
        QCOMPARE(session.host.line.openings, 0);
        QVERIFY(!session.state.idleflag);
        QCOMPARE(session.host.line.sent, "");
    }

    void aPortThatIsOpenIsOpenedAnew() {
        Session session;
        session.host.line.open = true;
        session.host.line.port = 9;
        session.open();
        QCOMPARE(session.host.line.port, 3);
        QCOMPARE(session.host.line.openings, 1);
    }

    void aPortThatIsNotThereIsOpenedByRefresh() {
        Session session;
        session.host.line.portExists = [](int) { return false; };
        session.open();
        QVERIFY(!session.host.line.open);
        QCOMPARE(session.host.line.sent, "");
        session.host.line.portExists = nullptr;
        for (const size_t key : {kKeyYes, kKeyErase, kKeyEnter, kKeyRestart}) {
            SendCh_click(session.state, session.host, key);
            QVERIFY(!session.host.line.open);
        }
        SendCh_click(session.state, session.host, kKeyRefresh);
        QVERIFY(session.host.line.open);
        QCOMPARE(session.host.line.sent, "1");
        QVERIFY(session.state.idleflag);
    }

    void anotherPortBeginsWithItsOwnLamps() {
        Session session;
        session.open();
        session.host.line.waiting = "Status check complete, press R, Enter to begin or Q to quit.......";
        Timer1_tick(session.state, session.host);
        QCOMPARE(session.state.Label4[kLampReady].text, "Ready to Send");
        beginrun(session.state, session.host, "40", true);
        QCOMPARE(session.host.line.port, 40);
        QCOMPARE(session.state.Label4[kLampPort].text, "OK");
        QCOMPARE(session.state.Label4[kLampLink].text, "??");
        QCOMPARE(session.state.Label4[kLampReady].text, "KD not Ready");
        QCOMPARE(session.state.Label4[kLampResult].text, "KD Not Programmed");
        QVERIFY(session.state.rehearsal);
        closereprog(session.state, session.host);
        QCOMPARE(session.host.written, QStringList()); // a simulated port is never remembered
    }

    void anotherOpeningBeginsAfreshButForTheImage() {
        Session session;
        session.open();
        chooseimage(session.state, session.path("mine.sog"));
        session.state.sendstate = 61;
        session.state.sentmark = true;
        session.state.Text14 = "1111";
        session.state.advanced = true;
        session.open();
        QCOMPARE(session.state.Text5, session.path("mine.sog"));
        QCOMPARE(session.state.check.Text13, "0DEF");
        QVERIFY(!session.state.filechosen);
        QCOMPARE(session.state.sendstate, 0);
        QVERIFY(!session.state.sentmark);
        QCOMPARE(session.state.Text14, "");
        QVERIFY(!session.state.advanced);
        QVERIFY(session.state.baud9600);
    }

    void closingRemembersThePort() {
        Session session;
        session.open();
        session.host.blink = true;
        closereprog(session.state, session.host);
        QVERIFY(!session.host.line.open);
        QCOMPARE(session.host.written, QStringList("3"));
        QCOMPARE(session.host.blinkUnloads, 1);
        Session none;
        none.host.remembered.clear();
        none.open();
        closereprog(none.state, none.host);
        QCOMPARE(none.host.written, QStringList());
        QCOMPARE(none.host.blinkUnloads, 0);
    }

    void theKeysAgreeWithTheVectors() {
        const QJsonObject keys = tests::vectors("firmware.json")["keys"].toObject();
        QCOMPARE(keys.size(), static_cast<qsizetype>(kKeys));
        for (size_t key = 0; key < kKeys; ++key) {
            Session session;
            session.open();
            session.host.line.sent.clear();
            session.state.ProgressBar1.value = 50;
            session.state.Text4.assign("before");
            SendCh_click(session.state, session.host, key);
            const QByteArray expected = keys[QString::number(key)].toString().toLatin1();
            QVERIFY(!expected.isEmpty());
            QCOMPARE(session.host.line.sent, expected);
            QCOMPARE(bytesofkey(key), expected);
            QCOMPARE(session.state.ProgressBar1.value, 0);
            QCOMPARE(session.state.Text4.bytes(), key == kKeyRefresh   ? ""
                                                  : key == kKeyRestart ? "restarting...  200"
                                                                       : "before");
        }
    }

    void onAClosedPortNoKeySendsAnything() {
        for (size_t key = 0; key < kKeys; ++key) {
            Session session;
            session.host.line.portExists = [](int) { return false; };
            session.open();
            SendCh_click(session.state, session.host, key);
            QCOMPARE(session.host.line.sent, "");
            QVERIFY(session.state.Text4.isEmpty());
        }
    }

    void aKeyOnALostLineIsTold() {
        for (size_t key = 0; key < kKeys; ++key) {
            for (const bool stuck : {false, true}) {
                Session session;
                session.open();
                session.host.line.sent.clear();
                session.host.messages.clear();
                session.host.line.portExists = [](int) { return false; };
                if (stuck) {
                    session.host.line.takes = 0;
                } else {
                    session.host.line.cut();
                }
                if (!stuck && key == kKeyRefresh) {
                    continue; // a new opening that fails: the lamp and the next step say so
                }
                SendCh_click(session.state, session.host, key);
                QCOMPARE(session.host.line.sent, "");
                QCOMPARE(session.host.messages.size(), 1);
                QVERIFY(
                    session.host.messages[0].contains(stuck ? "took nothing for two seconds" : "was cut"));
            }
        }
    }

    void aRestartOnALineThatGetsStuckEndsThere() {
        Session session;
        session.open();
        session.host.line.sent.clear();
        session.host.messages.clear();
        session.host.line.takes = 7;
        SendCh_click(session.state, session.host, kKeyRestart);
        QCOMPARE(session.host.line.sent, "QQQQQQQ");
        QCOMPARE(session.host.messages.size(), 1);
    }

    /// The tick's own requests find out as well, and say it by the lamp alone.
    void aRequestOfTheTickOnALostLineShowsNoBox() {
        Session session;
        session.open();
        session.host.messages.clear();
        session.host.line.portExists = [](int) { return false; };
        session.host.line.cut();
        mnuAutoRefresh_click(session.state, true);
        for (int tick = 0; tick < 25; ++tick) {
            Timer1_tick(session.state, session.host);
        }
        QCOMPARE(session.host.messages, QStringList());
        QCOMPARE(session.state.Label4[kLampPort].text, "??");
    }

    void aRestartEndsWithTheScreen() {
        Session session;
        session.open();
        session.host.line.sent.clear();
        session.host.repaints = 0;
        session.host.onRepaint = [&] { session.host.closed = session.host.repaints == 10; };
        SendCh_click(session.state, session.host, kKeyRestart);
        QCOMPARE(session.host.line.sent, QByteArray(10, 'Q'));
    }

    void theSpeedFollowsItsBox() {
        Session session;
        session.open();
        Check1_click(session.state, session.host, false);
        QCOMPARE(session.host.line.settings, "38400,n,8,1");
        Check1_click(session.state, session.host, true);
        QCOMPARE(session.host.line.settings, "9600,n,8,1");
    }

    void aFileIsChosenByTheDialog() {
        Session session;
        session.open();
        session.host.chosenFile = session.path("mine.sog");
        Command7_click(session.state, session.host);
        QCOMPARE(session.host.filters, QStringList("Text Files (*.sog)|*.sog|All Files (*.*)|*.*"));
        QCOMPARE(session.host.places, QStringList(session.path("bpcsp2shchk.sog")));
        QCOMPARE(session.state.Text5, session.path("mine.sog"));
        QCOMPARE(session.state.check.Text13, "0DEF");
        QVERIFY(session.state.filechosen);
        QCOMPARE(session.state.lastimage, session.path("mine.sog"));
        session.host.chosenFile = session.path("other.sog"); // in no list
        Command7_click(session.state, session.host);
        QCOMPARE(session.state.Command2.colour, platform::kToldYellow);
        session.host.chosenFile.clear();
        Command7_click(session.state, session.host);
        QCOMPARE(session.host.places.last(), session.path("other.sog"));
        QCOMPARE(session.state.Text5, session.path("other.sog"));
    }

    void aReplyThatIsWaitedForIsSeenToBe() {
        Session session;
        session.open();
        Option1_click(session.state, 6);
        QString words;
        session.host.onRepaint = [&] { words = nextstep(session.state, true).words; };
        Command2_click(session.state, session.host); // nothing comes
        QCOMPARE(words, "Waiting for the device to answer \"b\": ten seconds at most.");
        QCOMPARE(session.host.messages.last(), "No Response - Check Connection");
        QVERIFY(!nextstep(session.state, true).words.contains("Waiting"));
    }

    void eachCommandFillsTheFields_data() {
        QTest::addColumn<int>("option");
        QTest::addColumn<QString>("fields");
        QTest::newRow("Logo") << 0 << "L||||l";
        QTest::newRow("Interval Get") << 1 << "R||||";
        QTest::newRow("Interval Send") << 2 << "S||005|F\r\n|s";
        QTest::newRow("Dive Summary") << 3 << "M||||";
        QTest::newRow("Summary Last") << 4 << "C||||";
        QTest::newRow("Gas Upload") << 5 << "G||||g";
        QTest::newRow("Book Upload") << 6 << "B||||b";
        QTest::newRow("Send Personal Data") << 8 << "A|^||B*@ " + QString(30, 'C') + "\r\n|a";
        QTest::newRow("Other") << 9 << "||||";
        QTest::newRow("Quit") << 10 << "||||";
    }
    void eachCommandFillsTheFields() {
        QFETCH(int, option);
        QFETCH(QString, fields);
        Session session;
        session.open();
        Option1_click(session.state, option);
        const SendFields& filled = session.state.fields;
        QCOMPARE(
            (QStringList{filled.Text3, filled.Text11, filled.Text9, filled.Text10, filled.Text8}.join('|')),
            fields);
    }

    void aCommandLeavesOnceAndItsRestBehindTheReply() {
        Session session;
        session.open();
        session.host.line.sent.clear();
        session.state.Text5.clear();
        session.state.lastimage.clear();
        Option1_click(session.state, 2);
        session.host.line.onPoll = [&] {
            if (session.host.line.polls == 500) {
                QCOMPARE(session.host.line.sent, "S");
                session.host.line.waiting = "s";
            }
        };
        session.state.ProgressBar1.value = 9;
        Command2_click(session.state, session.host);
        QCOMPARE(session.host.line.sent, "S005F\r\n");
        QCOMPARE(session.host.messages, QStringList(kWarning));
        QCOMPARE(session.state.ProgressBar1.value, 0);
    }

    void withoutAReplyNothingMoreGoesOut() {
        Session session;
        session.put("bpcsp2shchk.sog", "*" + QByteArray(500, 'x'));
        session.open();
        session.host.line.sent.clear();
        Option1_click(session.state, 0);
        Command2_click(session.state, session.host);
        QCOMPARE(session.host.line.sent, "L");
        QCOMPARE(session.host.line.polls, 100001);
        QCOMPARE(session.host.messages.last(), "No Response - Check Connection");
        QCOMPARE(session.host.titles.last(), "No Response");
    }

    void aScreenClosedInTheWaitSaysNothing() {
        Session session;
        session.open();
        session.host.line.sent.clear();
        Option1_click(session.state, 0);
        session.host.onRepaint = [&] { session.host.closed = true; };
        Command2_click(session.state, session.host);
        QCOMPARE(session.host.line.sent, "L");
        QCOMPARE(session.host.messages, QStringList(kWarning));
    }

    void theTextCanBeKept() {
        Session session;
        session.open();
        session.state.Text4.assign("ver=V2 Profile\r\nEnd");
        session.host.chosenFile = session.path("dive.txt");
        Command3_click(session.state, session.host);
        QFile kept(session.path("dive.txt"));
        QVERIFY(kept.open(QIODevice::ReadOnly));
        QCOMPARE(kept.readAll(), "ver=V2 Profile\r\nEnd");
        session.host.chosenFile = session.folder.filePath("none/dive.txt");
        Command3_click(session.state, session.host);
        QVERIFY(session.host.messages.last().startsWith("The text can't be saved: "));
    }
};

QTEST_APPLESS_MAIN(TestSession)
#include "test_session.moc"
