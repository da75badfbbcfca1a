// What the screen tells beside the session's own words.

#include "firmware/guidance.h"
#include "tests/firmware/fakereproghost.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace benthor;
using namespace benthor::firmware;
using tests::FakeReprogHost;

namespace {

/// A session with an image of that many bytes, its first byte as given.
struct Session {
    explicit Session(int length = 7040, const char* name = "a.sog", char first = '*') {
        host.line.open = true;
        freecontrols(state);
        state.reprogfolder = folder.path();
        state.Text6 = QStringLiteral("3");
        if (length >= 0) {
            QByteArray bytes(length, 'x');
            if (length > 0) {
                bytes[0] = first;
            }
            put(name, bytes);
        }
        chooseimage(state, folder.filePath(QLatin1String(name)));
    }
    void put(const char* name, const QByteArray& bytes) const {
        QFile file(folder.filePath(QLatin1String(name)));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
            qFatal("no file");
        }
    }
    void hear(const QByteArray& text) {
        state.Text4.assign({});
        host.line.waiting = text;
        Timer1_tick(state, host);
    }
    NextKey next() const { return nextstep(state, host.line.open).key; }
    QString reason(size_t lamp) const { return lampreasons(state, host.line.open)[lamp]; }

    QTemporaryDir folder;
    ReprogState state;
    FakeReprogHost host;
};

const QByteArray kPage = "Status check complete, press R, Enter to begin or Q to quit.......";
const QByteArray kProgrammed = "MEMORY A Programmed MEMORY B Programmed MEMORY C Programmed ";

QByteArray shell(const QByteArray& value) {
    return "shell:" + QByteArray(23, '.') + value;
}

} // namespace

class TestGuidance : public QObject {
    Q_OBJECT

private slots:
    /// The plan against what the send does put on the line, for every length up to a few records.
    void thePlanIsWhatTheSendDoes() {
        for (int length = 1; length < 700; ++length) {
            Session session(length);
            session.host.line.onOutput = [&session](const QByteArray&) {
                if (session.state.sentmark) {
                    session.host.closed = true; // behind the image nothing is of interest here
                }
            };
            Command5_click(session.state, session.host);
            const SendPlan plan = sendplan(length, true);
            const QByteArray image = session.host.line.sent.chopped(2); // the two marks behind it
            QCOMPARE(image.size(), plan.onLine);
            QCOMPARE(session.host.line.writes.size(), static_cast<size_t>(2 + plan.records + 2));
            QCOMPARE(plan.leaving + plan.staying, length);
            QFile file(session.state.Text5);
            QVERIFY(file.open(QIODevice::ReadOnly));
            QCOMPARE(image.mid(1, plan.leaving), file.read(plan.leaving));
            QCOMPARE(image.sliced(1 + plan.leaving).count('\0'), image.size() - 1 - plan.leaving);
        }
    }

    void aPlanTellsItsTime() {
        QCOMPARE(sendplan(7040, true).onLine, 2 + 55 * 128);
        QCOMPARE(sendplan(7040, true).seconds, 8);
        QCOMPARE(sendplan(7040, false).seconds, 2);
        QCOMPARE(sendplan(0, true).onLine, 0);
        QCOMPARE(sendplan(-1, true).leaving, 0);
    }

    void theImageIsToldBeforeItGoes() {
        const Session whole;
        const Notice words = imagewords(whole.state);
        QVERIFY(!words.grave);
        QVERIFY(words.words.contains("a.sog"));
        QVERIFY(words.words.contains(grouped(7040) + " bytes in 55 records, about 8 s at 9600 baud."));
        QVERIFY(!words.words.contains("stay behind"));
        QVERIFY(imagewords(Session(141).state)
                    .words.contains("Its last 12 bytes fill no record and stay behind."));
        Session fast;
        Check1_click(fast.state, fast.host, false);
        QVERIFY(imagewords(fast.state).words.contains("2 s at 38400 baud"));
    }

    /// The fields of the keyboard lead the send, whether it can be seen or not.
    void whatTheKeyboardPutsAheadIsTold() {
        Session plain;
        for (const int none : {9, 10}) {
            Option1_click(plain.state, none);
            QVERIFY(!imagewords(plain.state).grave);
            QVERIFY(!imagewords(plain.state).words.contains("keyboard"));
        }
        for (const bool advanced : {false, true}) {
            Session session;
            session.state.advanced = advanced;
            Option1_click(session.state, 3);
            QVERIFY(imagewords(session.state).grave);
            QVERIFY(imagewords(session.state).words.contains(grouped(7040) + " bytes in 55 records"));
            QVERIFY(imagewords(session.state)
                        .words.endsWith(" Ahead of it goes what the advanced keyboard holds: \"M\"."));
            Option1_click(session.state, 2);
            QVERIFY(
                imagewords(session.state)
                    .words.endsWith(" Ahead of it goes what the advanced keyboard holds: \"S\", then, once "
                                    "\"s\" has come back, \"005F↵\"."));
            Option1_click(session.state, 9);
            session.state.fields.Text9 = "5";
            session.state.fields.Text11 = "^";
            QVERIFY(imagewords(session.state).words.endsWith("holds: \"^5\"."));
            Option1_click(session.state, 8);
            QVERIFY(imagewords(session.state).words.contains("\"A\", then, once \"a\" has come back, \"^"));
        }
        Session book;
        Option1_click(book.state, 6);
        const Notice words = imagewords(book.state);
        QVERIFY(words.grave);
        QVERIFY(words.words.startsWith("Send to KD sends a.sog as a book, not as an image: "));
        QVERIFY(words.words.contains("\"B\", and \"b\" must come back."));
        Session missing(-1);
        Option1_click(missing.state, 6);
        QVERIFY(imagewords(missing.state).words.contains("can't be read"));
    }

    /// And they are what does go ahead.
    void whatIsToldToGoAheadIsWhatGoes() {
        for (const int option : {2, 3, 5, 9, 10}) {
            Session session(129);
            Option1_click(session.state, option);
            session.host.line.onPoll = [&session] { session.host.line.waiting = "sg"; };
            session.host.line.onOutput = [&session](const QByteArray& bytes) {
                session.host.closed = bytes == "&"; // what follows is the image
            };
            Command2_click(session.state, session.host);
            QByteArray ahead = session.host.line.sent;
            ahead.truncate(ahead.indexOf('&'));
            QString told = imagewords(session.state).words.section("holds: ", 1);
            told.remove(", then, once \"s\" has come back, ")
                .remove(", and \"g\" must come back")
                .remove('"');
            QCOMPARE(told.replace("↵", "\r\n"),
                     ahead.isEmpty() ? QString() : QString::fromLatin1(ahead) + '.');
        }
    }

    void whatIsNoImageIsTold() {
        QVERIFY(imagewords(Session(-1).state).grave);
        QVERIFY(imagewords(Session(-1).state).words.contains("can't be read"));
        QVERIFY(imagewords(Session(0).state).words.contains("is empty"));
        QVERIFY(imagewords(Session(200, "a.bin").state).words.contains("will be refused"));
        QVERIFY(!imagewords(Session(200, "a.bin", '&').state).grave);
        const Notice noStar = imagewords(Session(200, "a.sog", 'A').state);
        QVERIFY(noStar.grave);
        QVERIFY(noStar.words.contains("does not begin with a star"));
    }

    void theOriginOfTheValueIsTold() {
        Session none(141);
        QVERIFY(valuewords(none.state).grave);
        QVERIFY(valuewords(none.state).words.startsWith("No check value is known"));
        Session listed(141);
        listed.put("chklst.txt", "a.sog  chksum= 0ABC");
        refreshchecksums(listed.state);
        QVERIFY(valuewords(listed.state).words.startsWith("The value comes from the check list"));
        Session stored(140);
        QVERIFY(valuewords(stored.state).words.startsWith("The value is the one stored in the file"));
        stored.put("chklst.txt", "a.sog  chksum= 7878"); // "xx"
        refreshchecksums(stored.state);
        QCOMPARE(valuewords(stored.state), (Notice{"File and check list agree on the value.", false}));
        stored.put("chklst.txt", "a.sog  chksum= 7879");
        refreshchecksums(stored.state);
        QCOMPARE(valuewords(stored.state),
                 (Notice{"File and check list differ: the file holds 7878, which counts, the list says 7879.",
                         true}));
    }

    void theNextKeyFollowsTheSession() {
        Session session;
        session.state.Text6.clear();
        QCOMPARE(session.next(), NextKey::None);
        session.state.Text6 = "3";
        session.host.line.open = false;
        QCOMPARE(session.next(), NextKey::Refresh);
        session.host.line.open = true;
        QCOMPARE(session.next(), NextKey::Refresh);
        session.hear(kPage);
        QCOMPARE(session.next(), NextKey::Enter);
        session.hear(kPage + "REPROG MODE"); // the mode behind the prompt
        QCOMPARE(session.next(), NextKey::Send);
        session.hear("REPROG MODE");
        QCOMPARE(session.next(), NextKey::Send);
        QFile::remove(session.state.Text5);
        refreshchecksums(session.state);
        QCOMPARE(session.next(), NextKey::Choose);
        session.state.sending = true;
        QCOMPARE(session.next(), NextKey::None);
        session.state.sending = false;
        session.state.sentmark = true;
        session.state.sendstate = 10;
        session.hear("programming");
        QCOMPARE(session.next(), NextKey::None);
        session.state.check.Text13 = "BEEF";
        session.hear(kProgrammed + shell("BEEF"));
        session.hear(kProgrammed + shell("BEEF"));
        QCOMPARE(session.next(), NextKey::None); // the frame still says to wait
        QVERIFY(nextstep(session.state, true).words.contains("Once the final tasks are over"));
        session.state.sendstate = kWaitOver;
        session.hear(kProgrammed + shell("BEEF"));
        QCOMPARE(session.next(), NextKey::Restart);
        session.state.sendstate = 0;
        session.hear("??");
        QCOMPARE(session.next(), NextKey::Refresh);
        SendCh_click(session.state, session.host, kKeyRestart);
        Timer1_tick(session.state, session.host);
        QCOMPARE(session.next(), NextKey::None);
        QVERIFY(nextstep(session.state, true).words.contains("Home leads back"));
        QCOMPARE(session.reason(kLampResult), "the device was asked to restart");
        session.state.Frame6Visible = true;
        QVERIFY(nextstep(session.state, true).words.contains("Continue, then Retry"));
    }

    void eachLampSaysWhy() {
        Session session;
        session.hear(kPage);
        QCOMPARE(session.reason(kLampPort), "com 3, 9600 baud");
        QCOMPARE(session.reason(kLampLink), "text comes from the device");
        QCOMPARE(session.reason(kLampPrompt), "R, Enter seen");
        QCOMPARE(session.reason(kLampReady), "image chosen, device waits");
        QCOMPARE(session.reason(kLampResult), "the device told of no programmed memory");
        session.host.line.open = false;
        QCOMPARE(session.reason(kLampPort), "com 3 can't be opened");
        session.host.line.open = true;
        session.state.rehearsal = true;
        QCOMPARE(session.reason(kLampPort), "simulated device, 9600 baud");
        session.state.sending = true;
        QCOMPARE(session.reason(kLampResult), "an image is on its way");
        session.state.sending = false;
        session.state.sendstate = 2;
        QCOMPARE(session.reason(kLampResult), "the device is still at it");
        session.state.sendstate = 0;
        session.hear("MEMORY A Programmed MEMORY B Erased MEMORY C Erased");
        QCOMPARE(session.reason(kLampResult), "erased: memory B, C");
        session.hear(kProgrammed);
        QCOMPARE(session.reason(kLampResult), "it runs what it had; nothing was sent");
        session.state.check.Text13 = "0123";
        session.hear(kProgrammed + shell("BEEF"));
        QCOMPARE(session.reason(kLampResult), "device reports BEEF, not 0123");
        session.hear(kProgrammed + shell("0123"));
        QCOMPARE(session.reason(kLampResult), "123 is 0123 without its zeros");
    }

    void aTransferThatBrokeOffIsToldWithItsPlaceUntilTheNextOneGoes() {
        Session session;
        session.hear("REPROG MODE");
        const std::array<std::pair<BrokenOff::How, const char*>, 3> ends{
            {{BrokenOff::How::EndedEarly, "he device ended the transfer after "},
             {BrokenOff::How::DroppedOut, "he device dropped out of the transfer after "},
             {BrokenOff::How::Lost, "he line was lost after "}}};
        for (const auto& [how, words] : ends) {
            session.state.brokenoff = {how, 1281, 40000};
            const QString place = QLatin1String(words) + grouped(1281) + " of " + grouped(40000) + " bytes";
            for (const QByteArray& page : {kPage, QByteArray("REPROG MODE"), QByteArray("??")}) {
                session.hear(page);
                QVERIFY2(nextstep(session.state, true).words.startsWith(u'T' + place + ". "),
                         qPrintable(nextstep(session.state, true).words));
                QCOMPARE(session.reason(kLampResult), u't' + place);
            }
            session.hear(kProgrammed); // "nothing was sent" would be false
            QCOMPARE(session.reason(kLampResult), u't' + place);
        }
        session.hear("REPROG MODE");
        session.host.onRepaint = [&session] { session.host.closed = true; };
        Command5_click(session.state, session.host);
        QCOMPARE(session.state.brokenoff.how, BrokenOff::How::Not);
    }

    /// What a step asks for can be done, and a lamp's line does not contradict the lamp.
    void noLineSpeaksAgainstALampOrAKeyThatRests() {
        Session session;
        session.hear("REPROG MODE");
        QCOMPARE(session.state.Label4[kLampReady].text, "KD not Ready");
        QVERIFY(nextstep(session.state, true).words.startsWith("The device has left its prompt"));
        session.state.noanswer = kTooLate;
        session.hear("REPROG MODE");
        QVERIFY(!session.state.Command2.enabled);
        QCOMPARE(session.next(), NextKey::Refresh);
        QVERIFY(!session.reason(kLampReady).contains("is open"));
        session.state.noanswer = 0;
        session.hear("R, Enter");
        QCOMPARE(session.state.Label4[kLampPrompt].colour, platform::kToldRed);
        QCOMPARE(session.reason(kLampPrompt), "R, Enter seen, but not the whole page");
        QFile::remove(session.state.Text5);
        refreshchecksums(session.state);
        session.hear(kPage);
        QCOMPARE(session.reason(kLampReady), "device waits; the image can't be sent");
        session.hear("MEMORY A Programmed");
        QCOMPARE(session.reason(kLampResult), "not told of: memory B, C");
        lockcontrols(session.state);
        showstatus(session.state, true);
        QCOMPARE(session.state.Label4[kLampPort].text, "??");
        QCOMPARE(session.reason(kLampPort), "com 3, the controls rest");
    }

    void aPortThatMayNotBeOpenedSaysWhatHelps() {
        Session session;
        const NextStep step = nextstep(session.state, false, QStringLiteral("Join the group of the ports."));
        QCOMPARE(step.words, "Join the group of the ports. Then press Refresh.");
        QCOMPARE(step.key, NextKey::Refresh);
        QVERIFY(nextstep(session.state, false).words.startsWith("Plug the adapter in"));
    }

    void thousandsAreSetApart() {
        QCOMPARE(grouped(7), "7");
        QCOMPARE(grouped(1234567), QStringLiteral("1\u202F234\u202F567"));
    }
};

QTEST_APPLESS_MAIN(TestGuidance)
#include "test_guidance.moc"
