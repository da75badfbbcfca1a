// The tick: keys, lamps, verdict and final wait, from the device's words alone.

#include "tests/firmware/fakereproghost.h"
#include "tests/link/vectors.h"

#include <QJsonArray>
#include <QTemporaryDir>

using namespace benthor;
using namespace benthor::firmware;
using platform::kToldGreen;
using platform::kToldRed;
using platform::kToldYellow;
using tests::FakeReprogHost;

namespace {

const QByteArray kProgrammed =
    "MEMORY A Erased\r\nMEMORY A Programmed\r\nMEMORY B Erased\r\nMEMORY B Programmed\r\n"
    "MEMORY C Erased\r\nMEMORY C Programmed\r\n";
const QByteArray kPromptPage = "Status check complete, press R, Enter to begin or Q to quit.......";

QByteArray shell(const QByteArray& value) {
    return "shell:" + QByteArray(23, '.') + value + "\r\n";
}

QString colourName(ToldColour colour) {
    return colour == kToldGreen    ? QStringLiteral("green")
           : colour == kToldYellow ? QStringLiteral("yellow")
           : colour == kToldRed    ? QStringLiteral("red")
                                   : QStringLiteral("other");
}

/// An open, idle session with an image chosen by hand.
struct Session {
    Session() {
        host.line.open = true;
        freecontrols(state);
        state.reprogfolder = folder.path();
        state.Text5 = folder.filePath("a.sog");
        state.filechosen = true;
        state.check.Text13 = "C3D9";
        state.check.Text15 = "DC94";
    }
    void hear(const QByteArray& text) {
        host.line.waiting += text;
        tick();
    }
    void tick(int times = 1) {
        for (int i = 0; i < times; ++i) {
            Timer1_tick(state, host);
        }
    }
    QString lamp(size_t index) const { return state.Label4[index].text; }
    QList<int> enabledKeys() const {
        QList<int> keys;
        for (size_t key = 0; key < kKeys; ++key) {
            if (state.SendCh[key].enabled) {
                keys += static_cast<int>(key);
            }
        }
        return keys;
    }
    void put(const char* name, const QByteArray& bytes) const {
        QFile file(folder.filePath(QLatin1String(name)));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
            qFatal("no file");
        }
    }

    QTemporaryDir folder;
    ReprogState state;
    FakeReprogHost host;
};

} // namespace

class TestReprogTick : public QObject {
    Q_OBJECT

private slots:
    void theLampsAgreeWithTheVectors_data() {
        QTest::addColumn<QJsonObject>("vector");
        for (const QJsonValue& one : tests::vectors("firmware.json")["ticks"].toArray()) {
            QTest::newRow(qPrintable(one["about"].toString())) << one.toObject();
        }
    }
    void theLampsAgreeWithTheVectors() {
        QFETCH(QJsonObject, vector);
        const QJsonObject before = vector["before"].toObject();
        ReprogState state;
        const QByteArray text = vector["Text4"].toString().toLatin1();
        state.Text4.assign(text);
        state.heard = !text.isEmpty();
        state.check.Text13 = before["Text13"].toString();
        state.check.Text15 = before["Text15"].toString();
        state.Text5 = before["Text5"].toString();
        state.idleflag = before["idle"].toBool();
        state.sentmark = before["sentmark"].toInt() == 1;
        state.Text14 = before["Text14"].toString();
        showstatus(state, before["port_open"].toBool());
        const QJsonArray lamps = vector["lamps"].toArray();
        for (int index = 0; index < 5; ++index) {
            const Lamp& lamp = state.Label4.at(static_cast<size_t>(index));
            QCOMPARE(lamp.text, lamps[index][0].toString());
            if (!lamps[index][1].isNull()) {
                QCOMPARE(colourName(lamp.colour), lamps[index][1].toString());
            }
        }
        QCOMPARE(state.Text14, vector["Text14"].toString());
        QCOMPARE(state.SendCh[kKeyRestart].enabled, vector["restart_enabled"].toBool());
        QCOMPARE(state.SendCh[kKeyRestart].colour == kToldYellow, vector["restart_yellow"].toBool());
    }

    void anEmptyPathGoesBackToTheStockImage() {
        Session session;
        session.put("chklst.txt", "bpcsp2shchk.sog  chksum= 0ABC\r\n");
        session.state.Text5.clear();
        session.tick();
        QCOMPARE(session.state.Text5, session.folder.filePath("bpcsp2shchk.sog"));
        QCOMPARE(session.state.check.Text13, "0ABC");
        QCOMPARE(session.state.Command2.colour, kToldGreen);
        QCOMPARE(session.lamp(kLampReady), "KD not Ready");
    }

    void atThePromptOnlyTheKeysThatLeadOnWork() {
        Session session;
        session.hear("hello");
        QCOMPARE(session.enabledKeys(), (QList<int>{0, 1, 2, 3, 4, 5, 7})); // 8 goes by the progress words
        QCOMPARE(session.state.SendCh[kKeyEnter].colour, kButtonGrey);
        session.hear(kPromptPage);
        QCOMPARE(session.enabledKeys(), (QList<int>{3, 5, 6}));
        QCOMPARE(session.state.SendCh[kKeyEnter].colour, kToldYellow);
        QVERIFY(!session.state.Command2.enabled);
        session.state.Text4.assign("REPROG MODE");
        session.tick();
        QCOMPARE(session.enabledKeys(), (QList<int>{0, 1, 2, 3, 4, 5, 7}));
        QCOMPARE(session.state.SendCh[kKeyEnter].colour, kButtonGrey);
        QVERIFY(session.state.Command2.enabled);
    }

    void whileBusyTheSameKeysWork() {
        Session session;
        lockcontrols(session.state);
        session.tick();
        QCOMPARE(session.enabledKeys(), (QList<int>{3, 5, 6}));
        QCOMPARE(session.state.SendCh[kKeyEnter].colour, kToldYellow);
        QCOMPARE(session.lamp(kLampPort), "??");
    }

    void chooseFileTurnsGreenWhereNoneIsChosen() {
        Session session;
        session.state.Text5 = "a.s";
        session.hear(kPromptPage);
        QCOMPARE(session.state.Command7Colour, kButtonGrey);
        session.state.Text4.assign("REPROG MODE");
        session.tick();
        QCOMPARE(session.state.Command7Colour, kToldGreen);
        session.hear(kPromptPage);
        QCOMPARE(session.state.Command7Colour, kButtonGrey);
    }

    void sendFollowsTheModeAlone() {
        Session session;
        session.hear("REPROG MOD");
        QVERIFY(!session.state.Command2.enabled);
        session.hear("E");
        QVERIFY(session.state.Command2.enabled);
        // Old prompt and new mode in one text: the last test decides.
        session.hear(kPromptPage);
        QVERIFY(session.state.Command2.enabled);
        session.state.noanswer = 15;
        session.tick();
        QVERIFY(session.state.Command2.enabled);
        session.state.noanswer = 16;
        session.tick();
        QVERIFY(!session.state.Command2.enabled);
    }

    void repliesGoBehindWhatIsThere() {
        Session session;
        session.hear("one ");
        session.hear("two");
        QCOMPARE(session.state.Text4.bytes(), "one two");
        QVERIFY(!session.state.Command3Enabled);
        session.hear(" Profile");
        QVERIFY(session.state.Command3Enabled);
        // Neither idle nor collecting: what comes waits.
        session.state.idleflag = false;
        session.state.pollflag = false;
        session.hear("three");
        QCOMPARE(session.state.Text4.bytes(), "one two Profile");
    }

    void whatTheProgramSaysIsNoWordOfTheDevice() {
        Session session;
        SendCh_click(session.state, session.host, kKeyRestart);
        session.tick();
        QCOMPARE(session.state.Text4.bytes(), "restarting...  200");
        QCOMPARE(session.lamp(kLampLink), "??");
        session.hear("PP");
        QCOMPARE(session.lamp(kLampLink), "OK");
    }

    void aLaterEraseTakesTheVerdictBack() {
        Session session;
        session.state.sentmark = true;
        session.hear(kProgrammed + shell("C3D9"));
        session.tick();
        QCOMPARE(session.lamp(kLampResult), "OK to Restart");
        QCOMPARE(session.state.SendCh[kKeyRestart].colour, kToldYellow);
        session.hear("MEMORY A Erased\r\n");
        QCOMPARE(session.lamp(kLampResult), "KD Not Programmed");
        QVERIFY(!session.state.SendCh[kKeyRestart].enabled);
        session.hear("MEMORY A Programmed\r\n");
        QCOMPARE(session.lamp(kLampResult), "OK to Restart");
    }

    void thePromptMustBeLongEnough() {
        Session session;
        session.hear("R, Enter" + QByteArray(41, '.'));
        QCOMPARE(session.lamp(kLampPrompt), "??");
        session.hear(".");
        QCOMPARE(session.lamp(kLampPrompt), "OK");
        QCOMPARE(session.lamp(kLampReady), "Ready to Send");
    }

    void theValueIsTakenWhenItIsWhole() {
        Session session;
        session.hear(shell("C3D9").chopped(3));
        QCOMPARE(session.state.Text14, "");
        session.hear("9 ");
        QCOMPARE(session.state.Text14, "C3D9");
        QCOMPARE(session.state.Text14Colour, kToldGreen);
    }

    void onlyDigitsLoseTheirZeros_data() {
        QTest::addColumn<QByteArray>("told");
        QTest::addColumn<QString>("shown");
        QTest::newRow("digits") << QByteArray("0123") << "123";
        QTest::newRow("all zero") << QByteArray("0000") << "0";
        QTest::newRow("no zero") << QByteArray("7001") << "7001";
        QTest::newRow("a letter") << QByteArray("0B7C") << "0B7C";
        QTest::newRow("an exponent") << QByteArray("00E5") << "00E5";
        QTest::newRow("a blank") << QByteArray("012 ") << "012 ";
    }
    void onlyDigitsLoseTheirZeros() {
        QFETCH(QByteArray, told);
        QFETCH(QString, shown);
        Session session;
        session.hear(shell(told));
        QCOMPARE(session.state.Text14, shown);
    }

    void theAlternativeValueIsAsGood() {
        Session session;
        session.state.sentmark = true;
        session.hear(kProgrammed + shell("DC94"));
        session.tick();
        QCOMPARE(session.lamp(kLampResult), "OK to Restart");
        QCOMPARE(session.state.Text14Colour, kToldGreen);
    }

    void anotherValueTurnsTheResultRed() {
        Session session;
        session.state.sentmark = true;
        session.hear(kProgrammed + shell("BEEF"));
        session.tick();
        QCOMPARE(session.lamp(kLampResult), "KD Not same Check sum as chosen file");
        QCOMPARE(session.state.Text14Colour, kToldRed);
    }

    /// An empty text is part of any text.
    void withoutAnExpectedValueTheComparisonSucceeds() {
        Session session;
        session.state.check.Text13.clear();
        session.state.check.Text15.clear();
        session.hear(kProgrammed + shell("BEEF"));
        QCOMPARE(session.state.Text14Colour, kToldGreen);
        QCOMPARE(session.lamp(kLampResult), "Not sent new code");
    }

    void theStatusIsAskedForEach21Ticks() {
        Session session;
        session.hear(kPromptPage);
        session.tick(50);
        QCOMPARE(session.host.line.sent, "");
        mnuAutoRefresh_click(session.state, true);
        session.tick(20);
        QCOMPARE(session.host.line.sent, "");
        QVERIFY(!session.state.Text4.isEmpty());
        session.tick();
        QCOMPARE(session.host.line.sent, "1");
        QVERIFY(session.state.Text4.isEmpty());
        session.tick(42);
        QCOMPARE(session.host.line.sent, "111");
        session.tick(17);
        mnuAutoRefresh_click(session.state, false);
        session.hear("REPROG MODE");
        QVERIFY(session.state.Command2.enabled); // a count that stands still locks nothing
        session.tick(50);
        QCOMPARE(session.host.line.sent, "111");
    }

    void aFinishedSessionLeadsTheDeviceBackToItsPrompt() {
        Session session;
        session.state.filechosen = false;
        session.state.sentmark = true;
        session.state.lastimage = "x";
        session.state.Text14 = "C3D9";
        session.hear(kProgrammed);
        QCOMPARE(session.lamp(kLampResult), "OK to Restart");
        QCOMPARE(session.host.line.sent, "R1");
        QCOMPARE(session.state.Text5, "");
        QCOMPARE(session.state.lastimage, "");
        // With a file of his own nobody presses anything for the user.
        Session own;
        own.state.sentmark = true;
        own.state.Text14 = "C3D9";
        own.hear(kProgrammed);
        QCOMPARE(own.lamp(kLampResult), "OK to Restart");
        QCOMPARE(own.host.line.sent, "");
        QVERIFY(!own.state.Text5.isEmpty());
    }

    void theStockImageGoesByTheType_data() {
        QTest::addColumn<QByteArray>("type");
        QTest::addColumn<QString>("name");
        QTest::newRow("rb") << QByteArray("type rb ") << "bpcsp2shchk.sog";
        QTest::newRow("kd") << QByteArray("type kd ") << "hdckd3chk.sog";
        QTest::newRow("both: the second test decides") << QByteArray("kd rb ") << "hdckd3chk.sog";
        QTest::newRow("capitals are no type") << QByteArray("KD RB ") << "a.sog";
    }
    void theStockImageGoesByTheType() {
        QFETCH(QByteArray, type);
        QFETCH(QString, name);
        Session session;
        session.put("chklst.txt", "bpcsp2shchk.sog  chksum= 1111\r\nhdckd3chk.sog  chksum= 2222\r\n");
        session.state.filechosen = false;
        session.state.ProgressBar1.value = 7;
        session.hear(type + kPromptPage);
        QCOMPARE(session.state.Text5, session.folder.filePath("a.sog")); // no value is known yet
        session.hear(shell("ABCD"));
        QCOMPARE(session.state.Text5, session.folder.filePath(name));
        const bool known = name != QLatin1String("a.sog");
        QCOMPARE(session.state.ProgressBar1.value, known ? 0 : 7);
        QCOMPARE(session.state.check.Text13, name.startsWith('b')   ? "1111"
                                             : name.startsWith('h') ? "2222"
                                                                    : "C3D9");
    }

    void anImageChosenByHandStays() {
        Session session;
        session.hear("type kd " + kPromptPage + shell("ABCD"));
        QCOMPARE(session.state.Text5, session.folder.filePath("a.sog"));
    }

    void theFinalWaitRunsTo61() {
        Session session;
        session.state.sentmark = true;
        session.state.sendstate = 2;
        session.tick();
        QVERIFY(session.state.Frame5Visible);
        QCOMPARE(session.state.ProgressBar2.maximum, 62);
        QCOMPARE(session.state.ProgressBar2.value, 3);
        session.tick(57);
        QVERIFY(session.state.Frame5Visible);
        QCOMPARE(session.state.ProgressBar2.value, 60);
        session.hear(kProgrammed + shell("C3D9"));
        QVERIFY(!session.state.Frame5Visible);
        QCOMPARE(session.state.sendstate, 61);
        session.tick(40);
        QCOMPARE(session.state.sendstate, 61);
        QVERIFY(!session.state.Frame6Visible);
        QCOMPARE(session.lamp(kLampResult), "OK to Restart");
        QCOMPARE(session.host.questions, QStringList());
    }

    void inAdvancedModeTheWaitHasNoFrame() {
        Session session;
        session.state.sendstate = 2;
        session.state.advanced = true;
        session.tick();
        QVERIFY(!session.state.Frame5Visible);
        QCOMPARE(session.state.sendstate, 3);
    }

    void oneHoldsAndBelowOneNothingWaits() {
        Session session;
        session.state.sendstate = 1;
        session.tick(100);
        QCOMPARE(session.state.sendstate, 1);
        QVERIFY(session.state.Frame5Visible);
        for (const int state : {0, -1, -2}) {
            session.state.sendstate = state;
            session.tick(3);
            QCOMPARE(session.state.sendstate, state);
            QVERIFY(!session.state.Frame5Visible);
        }
    }

    void anotherValueBehindTheWaitMeansOnceMore() {
        Session session;
        session.state.sendstate = 60;
        session.state.Text14 = "BEEF";
        session.tick(3);
        QVERIFY(session.state.Frame6Visible);
        QCOMPARE(session.state.ProgressBar3.value, 3);
        // The value comes after all.
        session.hear(shell("C3D9"));
        QVERIFY(!session.state.Frame6Visible);
    }

    void aDeviceThatRecoversShowsNoFrame() {
        Session session;
        session.state.sendstate = 30;
        session.state.Text14 = "BEEF";
        session.hear("0:1 8:f");
        QVERIFY(session.state.recoveryflag);
        session.tick(60);
        QVERIFY(!session.state.Frame6Visible);
        QCOMPARE(session.state.sendstate, 61);
    }

    void aDeviceThatAsksForItIsSentTheImageAgain() {
        for (const bool again : {true, false}) {
            Session session;
            session.put("a.sog", "*" + QByteArray(200, 'x'));
            session.state.sendstate = 60;
            session.tick(2);
            QVERIFY(session.state.Frame6Visible);
            session.host.answers = {again};
            session.hear("OOOO");
            QCOMPARE(session.host.questions, QStringList("Data not the same\r\nTry again?"));
            QCOMPARE(session.host.titles.first(), "Reprog bad");
            QVERIFY(!session.state.Frame6Visible);
            QCOMPARE(session.state.ProgressBar3.value, 0);
            QCOMPARE(session.host.line.sent.left(2), again ? "&*" : "");
            QCOMPARE(session.state.sendstate, 0); // nobody answered the second send
            session.tick(5);
            QCOMPARE(session.host.questions.size(), 1);
        }
    }

    /// Whatever the device says, a tick sends nothing but what is told: one status request in 21 ticks where
    /// that was switched on, and the way back to the prompt behind a finished session.
    void noWordOfTheDeviceMakesATickSendAnythingElse() {
        const QList<QByteArray> words{
            kProgrammed,       kPromptPage, shell("C3D9"),  shell("BEEF"), "REPROG MODE",   "OOOO",
            "oooooooooooo",    "8:f",       "Prog",         "type rb",     "type kd",       "PPPP",
            "MEMORY B Erased", "Profile",   "Status check", " to ",        "1234ABCD  Prog"};
        quint32 random = 1;
        const auto next = [&random](quint32 below) {
            random = random * 1664525 + 1013904223;
            return random / 65536 % below;
        };
        int ways = 0;
        for (int run = 0; run < 300; ++run) {
            Session session;
            session.state.filechosen = next(2) == 0;
            session.state.sentmark = next(2) == 0;
            session.state.sendstate = static_cast<int>(next(70)) - 2;
            session.state.autorefresh = next(2) == 0;
            session.state.advanced = next(2) == 0;
            if (next(4) == 0) {
                lockcontrols(session.state);
            }
            for (int tick = 0; tick < 60; ++tick) {
                const qsizetype before = session.host.line.sent.size();
                const int count = session.state.noanswer;
                const bool hadImage = !session.state.Text5.isEmpty();
                session.hear(next(3) == 0 ? words[static_cast<qsizetype>(next(17))] : QByteArray());
                const QByteArray sent = session.host.line.sent.sliced(before);
                const bool asks = session.state.autorefresh && count == 20;
                const bool back = hadImage && session.state.Text5.isEmpty();
                ways += back ? 1 : 0;
                QCOMPARE(sent, QByteArray(asks ? "1" : "") + (back ? "R1" : ""));
            }
        }
        QVERIFY(ways > 10);
    }
};

QTEST_APPLESS_MAIN(TestReprogTick)
#include "test_reprogtick.moc"
