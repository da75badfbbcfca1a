// An image on a line that is cut, or takes nothing: nothing follows, and it is told.

#include "tests/firmware/sendstage.h"

using namespace benthor;
using namespace benthor::firmware;
using tests::Sending;

class TestSendLostLine : public QObject {
    Q_OBJECT

private slots:
    void aCutLineEndsTheSend();
    void aStuckLineEndsTheSendInsideItsBlock();
    void aLineThatIsLostNowhereLetsAnythingFollow();
    void onALineCutWhileIdleNotOneByteIsTried();
    void aCutInTheFinalPhaseIsTold();
    void aCutUnderTheYesLeavesTheOutcomeOpen();
    void aLostCommandEndsAheadOfTheImage();
    void aBookOnALostLineEndsWithoutItsEnd();
};

void TestSendLostLine::aCutLineEndsTheSend() {
    Sending stage(40000);
    stage.host.line.onOutput = [&](const QByteArray&) {
        if (stage.host.line.writes.size() == 12) {
            stage.host.line.open = false;
        }
    };
    stage.send();
    QCOMPARE(stage.host.line.writes.size(), size_t{12});
    QCOMPARE(stage.host.messages.size(), 1);
    QVERIFY(stage.host.messages[0].startsWith(
        "Not reprogrammed! The line to the device was cut after 1153 bytes."));
    QVERIFY(!stage.state.sentmark);
    QVERIFY(stage.state.idleflag);
    // The block that the line was lost under may have left in part.
    QCOMPARE(stage.state.sent, 1 + 128 * 9);
    QCOMPARE(stage.state.brokenoff.how, BrokenOff::How::Lost);
    QCOMPARE(stage.state.brokenoff.sent, 1 + 128 * 9);
    QCOMPARE(stage.state.brokenoff.of, 40000);
}

/// Half of a block went: nothing of the rest and nothing behind it follows.
void TestSendLostLine::aStuckLineEndsTheSendInsideItsBlock() {
    Sending stage(40000);
    stage.host.line.takes = 2 + 128 * 5 + 64;
    stage.send();
    QCOMPARE(stage.host.line.sent, "&" + stage.image.first(1 + 128 * 5 + 64));
    QCOMPARE(
        stage.host.messages,
        QStringList("Not reprogrammed! The line to the device took nothing for two seconds, after 641 bytes."
                    "\r\nCheck adapter and cable, click Refresh, and try again."));
    QVERIFY(!stage.state.sentmark);
    QCOMPARE(stage.state.sendstate, 0);
    QVERIFY(stage.state.idleflag);
    QVERIFY(stage.state.Timer1);
    QVERIFY(!stage.host.blink);
    QVERIFY(stage.host.pauses.empty());
}

/// At every byte that a session puts on the line, one after another: what follows it, the two marks and the
/// verdict included, stays away.
void TestSendLostLine::aLineThatIsLostNowhereLetsAnythingFollow() {
    Sending whole(129 + 128);
    whole.send(); // the device tells no sum: the longest way, up to "n"
    const QByteArray all = whole.host.line.sent;
    for (const bool stuck : {true, false}) {
        for (qsizetype place = 0; place < all.size(); ++place) {
            Sending stage(129 + 128);
            if (stuck) {
                stage.host.line.takes = place;
            } else {
                stage.host.line.onOutput = [&](const QByteArray&) {
                    if (stage.host.line.sent.size() > place) {
                        stage.host.line.cut();
                    }
                };
            }
            stage.send();
            QVERIFY(all.startsWith(stage.host.line.sent));
            QVERIFY(stuck ? stage.host.line.sent.size() == place
                          : stage.host.line.sent.size() <= place + 128);
            QCOMPARE(stage.host.messages.size(), 1);
            QVERIFY(stage.host.messages[0].contains("The line to the device"));
            QVERIFY(stage.state.idleflag);
            QVERIFY(stage.state.Timer1);
            QCOMPARE(stage.state.sendstate, 0);
        }
    }
}

void TestSendLostLine::onALineCutWhileIdleNotOneByteIsTried() {
    Sending stage(40000);
    stage.state.sentmark = true; // of the image before, which is in the device
    stage.state.Text14 = "C3D9";
    stage.host.line.cut();
    Command2_click(stage.state, stage.host);
    QCOMPARE(stage.host.messages,
             QStringList("Not reprogrammed! The line to the device is cut, and not one byte was sent."
                         "\r\nPlug it in again, click Refresh, and try again."));
    QCOMPARE(stage.host.repaints, 0);
    QCOMPARE(stage.state.ProgressBar1.value, 0);
    QVERIFY(stage.host.pauses.empty());
    QVERIFY(stage.state.sentmark);
    QCOMPARE(stage.state.Text14, "C3D9");
    QVERIFY(stage.state.idleflag);
}

void TestSendLostLine::aCutInTheFinalPhaseIsTold() {
    for (const size_t wait : {size_t{1}, size_t{2}}) { // of the two halves
        Sending stage;
        stage.host.onPause = [&] {
            if (stage.host.pauses.size() == wait) {
                stage.host.line.cut();
            }
        };
        stage.send();
        QCOMPARE(stage.behind(57), wait == 1 ? "&&" : "&&&&");
        QCOMPARE(
            stage.host.messages,
            QStringList("Not reprogrammed! The line to the device was cut before the device told what it "
                        "received.\r\nPlug it in again, click Refresh, and try again."));
        QCOMPARE(stage.state.sendstate, 0);
        QVERIFY(stage.state.idleflag);
        QVERIFY(!stage.state.Label5Visible);
    }
    Sending rounds; // while the device is asked
    rounds.host.line.onPoll = [&] {
        if (rounds.host.line.polls == 150) {
            rounds.host.line.cut();
        }
    };
    rounds.send();
    QCOMPARE(rounds.behind(57), "&&&&&&");
    QCOMPARE(rounds.host.messages.size(), 1);
    QVERIFY(rounds.host.line.polls < 210);
}

/// The device may have heard it or not: only its own words tell.
void TestSendLostLine::aCutUnderTheYesLeavesTheOutcomeOpen() {
    Sending stage;
    stage.tellSum(38);
    stage.host.line.onOutput = [&](const QByteArray& bytes) {
        if (bytes == "y") {
            stage.host.line.cut();
        }
    };
    stage.send();
    QCOMPARE(
        stage.host.messages,
        QStringList("The line to the device was cut when the image was confirmed: whether it is programmed "
                    "is not known.\r\nPlug it in again, and click Refresh to see what the device tells."));
    QCOMPARE(stage.state.sendstate, 0);
    QVERIFY(stage.state.sentmark);
    QVERIFY(stage.state.idleflag);
}

void TestSendLostLine::aLostCommandEndsAheadOfTheImage() {
    Sending letter;
    Option1_click(letter.state, 0);
    letter.host.line.takes = 0;
    Command2_click(letter.state, letter.host);
    QCOMPARE(letter.host.line.sent, "");
    QCOMPARE(letter.host.line.polls, 0);
    QCOMPARE(letter.host.messages.size(), 1);
    QVERIFY(letter.host.messages[0].startsWith("Nothing more was sent: the line to the device took nothing"));
    Sending rest;
    Option1_click(rest.state, 2);
    rest.host.line.onPoll = [&] { rest.host.line.waiting = "s"; };
    rest.host.line.takes = 3; // of "S" and "005F" and a line end
    Command2_click(rest.state, rest.host);
    QCOMPARE(rest.host.line.sent, "S00");
    QCOMPARE(rest.host.messages.size(), 1);
    QVERIFY(rest.state.idleflag);
    QVERIFY(!rest.state.sentmark);
}

void TestSendLostLine::aBookOnALostLineEndsWithoutItsEnd() {
    const QByteArray text = QByteArray("0123456789").repeated(300);
    for (const qsizetype takes : {qsizetype(0), qsizetype(700), text.size(), text.size() + 2}) {
        Sending stage;
        stage.put("book.txt", text);
        stage.state.Text5 = stage.folder.filePath("book.txt");
        Option1_click(stage.state, 6);
        stage.host.line.takes = takes;
        stage.send();
        QCOMPARE(stage.host.line.sent, (text + " * * ").first(takes));
        QCOMPARE(stage.host.messages.size(), 1);
        QVERIFY(stage.host.messages[0].startsWith("Not all was sent: the line to the device took nothing"));
        QCOMPARE(stage.host.questions, QStringList());
        QVERIFY(stage.state.idleflag);
    }
}

QTEST_APPLESS_MAIN(TestSendLostLine)
#include "test_send_lostline.moc"
