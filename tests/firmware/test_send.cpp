// The image on its way: what leaves, byte by byte, and what ends it.

#include "firmware/guidance.h"
#include "link/console.h"
#include "tests/firmware/sendstage.h"
#include "tests/link/vectors.h"

#include <QJsonArray>

using namespace benthor;
using namespace benthor::firmware;
using namespace std::chrono_literals;
using tests::Sending;
using tests::toldSum;

namespace {

const QString kBadFile = QStringLiteral("Bad input file. Make sure correct file is selected!");
const QString kNotReprogrammed =
    QStringLiteral("Problem probably due to leaving KD too long before clicking Download OK!\r\n"
                   "Not reprogrammed! Click refresh, and try again.");

} // namespace

class TestSend : public QObject {
    Q_OBJECT

private slots:
    void theSendsAgreeWithTheVectors_data();
    void theSendsAgreeWithTheVectors();
    void theSumsAgreeWithTheVectors_data();
    void theSumsAgreeWithTheVectors();
    void aSumBeyond31BitsIsNone();
    void ofTwoWordsTheSecondIsReadWhereTheFirstHasNoNumber();

    void aGoodVerdictIsAnsweredYes();
    void asLongAsTheSumIsNotGoodTheDeviceIsAskedTenTimes();
    void aSumOneTooSmallIsRefused();
    void aSumThatComesLateIsStillTaken();
    void theWaitIsFourSecondsWithItsOutputAtTheHalf();
    void whatCutsAFileShortIsShownInRed();

    void aDeviceThatSpeaksEndsTheSendAtTheNextFiftiethBlock_data();
    void aDeviceThatSpeaksEndsTheSendAtTheNextFiftiethBlock();
    void theBytesSentAreThoseOfTheImage_data();
    void theBytesSentAreThoseOfTheImage();
    void aNumberThatNoFileHasSendsTheWholeBook();
    void theEndOfThePageBeforeEndsNothing();
    void anEndThatComesInTwoPiecesIsSeen();
    void aClosedScreenWritesNothingMore();
    void theBlinkIsOnForTwoUpdatesAndOffForOne();
    void theBarAndTheTextFollow();
    void ticksRestWhileTheImageGoesOut();
    void aSendBeginsWithCleanHands();

    void aFirstByteThatIsNoStarGoesWithoutMark();
    void anotherNameNeedsItsOwnMark();
    void aFileThatCannotBeReadIsRefused();
    void withoutAFileNothingGoesOut();
    void theNameMayStandInCapitalsOnly();

    void aNameIsPaddedAndAnIntervalFilled();
    void aBookGoesOutAsPlainText();
    void theRestOfABookCanBeKept();
};

void TestSend::theSendsAgreeWithTheVectors_data() {
    QTest::addColumn<QJsonObject>("vector");
    for (const QJsonValue& one : tests::vectors("firmware.json")["sends"].toArray()) {
        QTest::newRow(qPrintable(one["about"].toString())) << one.toObject();
    }
}

void TestSend::theSendsAgreeWithTheVectors() {
    QFETCH(QJsonObject, vector);
    Sending stage(0, vector["name"].toString());
    stage.put(vector["name"].toString(), QByteArray::fromBase64(vector["image"].toString().toLatin1()));
    stage.tellSum(38);
    stage.send();
    const std::deque<QByteArray>& writes = stage.host.line.writes;
    const QString message = vector["message"].toString();
    QCOMPARE(stage.host.messages, message.isEmpty() ? QStringList() : QStringList(message));
    QCOMPARE(stage.state.counted, vector["counted"].toInt());
    QCOMPARE(stage.state.sum, vector["sum"].toInt());
    qsizetype blocks = 0;
    if (vector.contains("blocks")) {
        for (const QJsonValue& block : vector["blocks"].toArray()) {
            QCOMPARE(writes.at(static_cast<size_t>(blocks++)),
                     QByteArray::fromBase64(block.toString().toLatin1()));
        }
    } else {
        const QJsonArray lengths = vector["block_lengths"].toArray();
        for (const QJsonValue& length : lengths) {
            QCOMPARE(writes.at(static_cast<size_t>(blocks++)).size(), length.isNull() ? 128 : length.toInt());
        }
        const QByteArray begins = QByteArray::fromBase64(vector["last_block_begins"].toString().toLatin1());
        QVERIFY(writes.at(static_cast<size_t>(blocks - 1)).startsWith(begins));
    }
    QCOMPARE(stage.behind(blocks), message.isEmpty() ? "&&&&y" : "");
}

void TestSend::theSumsAgreeWithTheVectors_data() {
    QTest::addColumn<QJsonObject>("vector");
    for (const QJsonValue& one : tests::vectors("firmware.json")["sums"].toArray()) {
        QTest::newRow(qPrintable(one["about"].toString())) << one.toObject();
    }
}

void TestSend::theSumsAgreeWithTheVectors() {
    QFETCH(QJsonObject, vector);
    QCOMPARE(istoldsumgood(vector["Text4"].toString().toLatin1(), vector["sum"].toInt()),
             vector["good"].toBool());
}

void TestSend::aSumBeyond31BitsIsNone() {
    QVERIFY(istoldsumgood("7FFFFFFF  Prog", 100));
    QVERIFY(!istoldsumgood("80000000  Prog", 100));
    QVERIFY(!istoldsumgood("FFFFFFFF  Prog", 100));
}

void TestSend::ofTwoWordsTheSecondIsReadWhereTheFirstHasNoNumber() {
    QVERIFY(istoldsumgood("waiting..  Prog 00000200  Prog", 10));
    QVERIFY(!istoldsumgood("waiting..  Prog waiting..  Prog 00000200  Prog", 10));
    QVERIFY(!istoldsumgood("00000001  Prog 00000200  Prog", 10)); // a number, and too small
}

void TestSend::aGoodVerdictIsAnsweredYes() {
    Sending stage;
    stage.tellSum(38);
    stage.send();
    QCOMPARE(stage.behind(57), "&&&&y");
    QCOMPARE(stage.state.sendstate, 2);
    QVERIFY(stage.state.sentmark);
    QVERIFY(stage.state.idleflag);
    QVERIFY(stage.state.Timer1);
    QVERIFY(!stage.state.Label5Visible);
    QVERIFY(!stage.state.recoveryflag);
    QCOMPARE(stage.state.Command2.colour, platform::kToldYellow);
    QCOMPARE(stage.host.messages, QStringList());
}

void TestSend::asLongAsTheSumIsNotGoodTheDeviceIsAskedTenTimes() {
    Sending stage(129);
    stage.send();
    QCOMPARE(stage.behind(3), QByteArray("&&&&") + QByteArray(5, '&') + QByteArray(10, '&') + 'n');
    QCOMPARE(stage.host.line.polls, 10 * 101);
    QCOMPARE(stage.host.messages, QStringList(kNotReprogrammed));
    QCOMPARE(stage.state.sendstate, 0);
    QVERIFY(stage.state.idleflag);
}

void TestSend::aSumOneTooSmallIsRefused() {
    Sending stage;
    stage.tellSum(37);
    stage.send();
    QCOMPARE(stage.behind(57).right(1), "n");
    QVERIFY(!stage.behind(57).contains('y'));
    QCOMPARE(stage.host.messages, QStringList(kNotReprogrammed));
}

void TestSend::aSumThatComesLateIsStillTaken() {
    for (const int polls : {1, 500, 909}) {
        Sending stage;
        stage.host.line.onPoll = [&] {
            if (stage.host.line.polls == polls) {
                stage.host.line.waiting += toldSum(stage.state.sum + 38);
            }
        };
        stage.send();
        QCOMPARE(stage.behind(57).right(1), "y");
        QCOMPARE(stage.state.sendstate, 2);
    }
    // Behind the last try nobody looks any more.
    Sending late;
    late.host.line.onPoll = [&] {
        if (late.host.line.polls == 910) {
            late.host.line.waiting += toldSum(late.state.sum + 38);
        }
    };
    late.send();
    QCOMPARE(late.behind(57).right(1), "n");
}

void TestSend::theWaitIsFourSecondsWithItsOutputAtTheHalf() {
    Sending stage;
    std::vector<QByteArray> sentBefore;
    stage.host.onPause = [&] {
        sentBefore.push_back(stage.behind(57));
        if (stage.host.pauses.size() == 2) {
            stage.host.line.waiting = toldSum(stage.state.sum + 38);
        }
    };
    stage.send();
    QCOMPARE(stage.host.pauses, (std::vector<std::chrono::milliseconds>{2s, 2s, 250ms}));
    QCOMPARE(sentBefore, (std::vector<QByteArray>{"&&", "&&&&", "&&&&y"}));
}

/// A file that ends long before its length says so.
void TestSend::whatCutsAFileShortIsShownInRed() {
    Sending stage(20000);
    bool cut = false;
    stage.host.onRepaint = [&] {
        if (!cut) {
            cut = QFile::resize(stage.state.Text5, 10000);
        }
    };
    stage.host.onPause = [&] {
        QCOMPARE(stage.state.sendstate, -1);
        QCOMPARE(stage.state.Command2.colour, platform::kToldRed);
    };
    stage.send();
    QVERIFY(cut);
    QVERIFY(stage.state.counted < 20000 - 2000);
    QCOMPARE(stage.host.pauses.size(), size_t{2});
}

void TestSend::aDeviceThatSpeaksEndsTheSendAtTheNextFiftiethBlock_data() {
    QTest::addColumn<QByteArray>("words");
    for (const char* const words :
         {"MEMORY A Erased", "oooo", "OOOO", "xx REPROG MODE xx", "Status check", " to "}) {
        QTest::newRow(words) << QByteArray(words);
    }
}

void TestSend::aDeviceThatSpeaksEndsTheSendAtTheNextFiftiethBlock() {
    QFETCH(QByteArray, words);
    Sending stage(40000);
    stage.host.line.onOutput = [&](const QByteArray&) {
        if (stage.host.line.writes.size() == 60) { // behind the look at record 51
            stage.host.line.waiting = words;
        }
    };
    stage.send();
    // The mark, the single byte, and 100 records: the look at record 101 ends it.
    QCOMPARE(stage.host.line.writes.size(), size_t{102});
    QCOMPARE(stage.behind(102), "");
    QVERIFY(stage.state.Text4.bytes().endsWith(words));
    QVERIFY(!stage.state.sentmark);
    QCOMPARE(stage.state.sendstate, 0);
    QVERIFY(stage.state.idleflag);
    QVERIFY(stage.state.Timer1);
    QVERIFY(!stage.host.blink);
    QCOMPARE(stage.host.messages, QStringList());
    QCOMPARE(stage.state.counted, 0);
    QCOMPARE(stage.state.sum, 0);
    QCOMPARE(stage.state.blinkcount, 0);
    const bool early = !words.contains("REPROG") && !words.contains("Status") && words != " to ";
    QCOMPARE(stage.state.brokenoff.how, early ? BrokenOff::How::EndedEarly : BrokenOff::How::DroppedOut);
    QCOMPARE(stage.state.brokenoff.sent, 1 + 128 * 100);
    QCOMPARE(stage.state.brokenoff.of, 40000);
}

void TestSend::theBytesSentAreThoseOfTheImage_data() {
    QTest::addColumn<int>("length");
    for (const int length : {1, 2, 128, 129, 130, 141, 257, 7040}) {
        QTest::addRow("%d", length) << length;
    }
}

/// Neither the mark ahead nor the zeros that fill the last block, nor what stays behind of the file.
void TestSend::theBytesSentAreThoseOfTheImage() {
    QFETCH(int, length);
    Sending stage(length);
    stage.tellSum(38);
    stage.send();
    QVERIFY(stage.state.sentmark);
    QCOMPARE(stage.state.sent, sendplan(length, true).leaving);
    QCOMPARE(stage.state.brokenoff.how, BrokenOff::How::Not);
}

void TestSend::aNumberThatNoFileHasSendsTheWholeBook() {
    for (const char* const number : {"9223372036854775807", "1e300", "999999999999999999999999999"}) {
        Sending stage(40000);
        stage.state.fields.option = link::kChoiceBook;
        stage.state.fields.Text12 = QLatin1String(number);
        stage.send();
        QCOMPARE(stage.host.line.sent, stage.image + " * * ");
    }
    Sending none(40000);
    none.state.fields.option = link::kChoiceBook;
    none.state.fields.Text12 = "-1e300";
    none.send();
    QCOMPARE(none.host.line.sent, QByteArray(" * * "));
}

void TestSend::theEndOfThePageBeforeEndsNothing() {
    Sending stage(40000);
    stage.host.line.waiting = "MEMORY A Programmed REPROG MODE Status check OOOO";
    stage.tellSum(38);
    stage.send();
    QVERIFY(stage.state.sentmark);
    QCOMPARE(stage.state.sendstate, 2);
}

void TestSend::anEndThatComesInTwoPiecesIsSeen() {
    Sending stage(40000);
    stage.host.line.onOutput = [&](const QByteArray&) {
        if (stage.host.line.writes.size() == 60) {
            stage.host.line.waiting = "REPR";
        } else if (stage.host.line.writes.size() == 110) {
            stage.host.line.waiting = "OG MODE";
        }
    };
    stage.send();
    QCOMPARE(stage.host.line.writes.size(), size_t{152});
    QVERIFY(!stage.state.sentmark);
}

/// Closed at every place at which the send lets painting catch up, one after another.
void TestSend::aClosedScreenWritesNothingMore() {
    int places = 0;
    for (int place = 1;; ++place) {
        Sending stage(129 + 128 * 3);
        int yields = 0;
        size_t written = 0;
        const auto yield = [&] {
            if (++yields == place) {
                stage.host.closed = true;
                written = stage.host.line.writes.size();
            }
        };
        stage.host.onRepaint = yield;
        stage.host.onPause = yield;
        stage.send();
        if (!stage.host.closed) {
            break;
        }
        QCOMPARE(yields, place); // and it asks no more
        QCOMPARE(stage.host.line.writes.size(), written);
        QCOMPARE(stage.host.messages, QStringList());
        ++places;
    }
    QVERIFY(places > 1000);
}

void TestSend::theBlinkIsOnForTwoUpdatesAndOffForOne() {
    Sending stage(128 * 600);
    std::vector<bool> shown;
    qint64 updates = 0;
    stage.host.onRepaint = [&] {
        // What stands at a repaint is what the update before left.
        if (stage.state.counted / 128 % 50 == 1 && stage.state.counted / 128 / 50 == updates) {
            shown.push_back(stage.host.blink);
            ++updates;
        }
    };
    stage.tellSum(38);
    stage.send();
    QCOMPARE(std::vector<bool>(shown.begin(), shown.begin() + 9),
             (std::vector<bool>{false, true, true, false, true, true, false, true, true}));
    QVERIFY(!stage.host.blink);
}

void TestSend::theBarAndTheTextFollow() {
    Sending stage(128 * 60);
    QList<QByteArray> texts;
    stage.host.onRepaint = [&] {
        if (texts.isEmpty() || texts.last() != stage.state.Text4.bytes()) {
            texts += stage.state.Text4.bytes();
        }
        QCOMPARE(stage.state.Label4[kLampReady].text, "Sending. This can take 10mins+..");
        QVERIFY(stage.state.Label5Visible || !stage.host.pauses.empty());
    };
    stage.tellSum(38);
    stage.send();
    QCOMPARE(texts.mid(0, 2),
             (QList<QByteArray>{"Sending data byte: 128   ..", "Sending data byte: 6528   ..."}));
    QCOMPARE(stage.state.ProgressBar1.maximum, 128 * 60);
    QCOMPARE(stage.state.ProgressBar1.value, 128 * 60);
}

void TestSend::ticksRestWhileTheImageGoesOut() {
    Sending stage(128 * 200);
    bool rested = true;
    stage.host.onRepaint = [&] {
        rested = rested && (!stage.state.Timer1 || stage.state.counted == 128);
        QVERIFY(!stage.state.idleflag);
    };
    stage.host.onPause = [&] { QVERIFY(stage.state.Timer1); };
    stage.tellSum(38);
    stage.send();
    QVERIFY(rested);
}

void TestSend::aSendBeginsWithCleanHands() {
    Sending stage(40000);
    stage.state.sentmark = true;
    stage.state.sendstate = 61;
    stage.state.Text14 = "C3D9";
    stage.state.SendCh[kKeyRestart] = {true, platform::kToldYellow};
    stage.host.line.onOutput = [&](const QByteArray&) { stage.host.line.waiting = "MEMORY"; };
    stage.send();
    QVERIFY(!stage.state.sentmark);
    QCOMPARE(stage.state.sendstate, 0);
    QCOMPARE(stage.state.Text14, "");
    QVERIFY(!stage.state.SendCh[kKeyRestart].enabled);
    QCOMPARE(stage.state.SendCh[kKeyRestart].colour, kButtonGrey);
    QCOMPARE(stage.state.Label4[kLampResult], (Lamp{"KD Not Programmed", platform::kToldRed}));
}

void TestSend::aFirstByteThatIsNoStarGoesWithoutMark() {
    Sending stage(257, "a.sog", 'A');
    stage.tellSum(38);
    stage.send();
    QCOMPARE(stage.host.line.writes.at(0), "A");
    QCOMPARE(stage.host.line.writes.at(1), stage.image.mid(1, 128));
    QCOMPARE(stage.host.line.writes.at(2), stage.image.mid(129, 128));
    QCOMPARE(stage.behind(3), "&&&&y");
}

void TestSend::anotherNameNeedsItsOwnMark() {
    Sending good(129, "a.bin", '&');
    good.tellSum(38);
    good.send();
    QCOMPARE(good.host.line.writes.at(0), "&");
    QCOMPARE(good.host.line.writes.at(1), good.image.mid(1, 128));
    QCOMPARE(good.behind(2), "&&&&y");

    for (const char first : {'*', 'A', '\0'}) {
        Sending bad(129, "a.bin", first);
        bad.send();
        QCOMPARE(bad.host.line.sent, "");
        QCOMPARE(bad.host.messages, QStringList(kBadFile));
        QVERIFY(bad.state.idleflag);
        QVERIFY(!bad.state.sentmark);
        QCOMPARE(bad.state.sendstate, 0);
    }
}

void TestSend::aFileThatCannotBeReadIsRefused() {
    Sending stage;
    stage.state.Text5 = stage.folder.filePath("nothing.sog");
    stage.send();
    QCOMPARE(stage.host.line.sent, "");
    QCOMPARE(stage.host.messages.size(), 1);
    QVERIFY(stage.host.messages[0].startsWith(kBadFile));
    QVERIFY(stage.host.messages[0].contains("nothing.sog"));
    QVERIFY(!QFile::exists(stage.state.Text5));
    QVERIFY(stage.state.idleflag);
}

void TestSend::withoutAFileNothingGoesOut() {
    Sending stage;
    stage.state.Text5.clear();
    stage.send();
    QCOMPARE(stage.host.line.sent, "");
    QVERIFY(stage.state.idleflag);
}

void TestSend::theNameMayStandInCapitalsOnly() {
    Sending capitals(129, "A.SOG");
    capitals.tellSum(38);
    capitals.send();
    QCOMPARE(capitals.host.line.writes.at(0), "&");
    Sending mixed(129, "a.Sog"); // neither of the two: another name, and its first byte is no mark
    mixed.send();
    QCOMPARE(mixed.host.messages, QStringList(kBadFile));
    QCOMPARE(mixed.host.line.sent, "");
}

void TestSend::aNameIsPaddedAndAnIntervalFilled() {
    Sending name;
    name.state.Text5.clear();
    Option1_click(name.state, 8);
    name.state.fields.Text9 = "Ann";
    name.send();
    QCOMPARE(name.host.line.sent, "^Ann" + QByteArray(29, ' ') + "B*@ " + QByteArray(30, 'C') + "\r\n");
    Sending interval;
    interval.state.Text5.clear();
    Option1_click(interval.state, 2);
    interval.state.fields.Text9 = "5";
    interval.send();
    QCOMPARE(interval.host.line.sent, "005F\r\n");
    Sending trailer;
    trailer.state.Text5.clear();
    trailer.state.fields.Text11 = "x";
    trailer.send();
    QCOMPARE(trailer.host.line.sent, "");
    trailer.state.fields.Text10 = "z";
    trailer.send();
    QCOMPARE(trailer.host.line.sent, "xz");
}

void TestSend::aBookGoesOutAsPlainText() {
    Sending stage;
    const QByteArray text = QByteArray("A book; with *stars*. ").repeated(300);
    stage.put("book.txt", text);
    stage.state.Text5 = stage.folder.filePath("book.txt");
    Option1_click(stage.state, 6);
    QList<QByteArray> counts;
    stage.host.onRepaint = [&] { counts += stage.state.Text4.bytes(); };
    stage.send();
    QCOMPARE(stage.host.line.sent, text + " * * ");
    QVERIFY(counts.contains("5000"));
    QCOMPARE(stage.host.questions, QStringList());
    QVERIFY(stage.state.idleflag);
}

void TestSend::theRestOfABookCanBeKept() {
    const QByteArray text = QByteArray("0123456789").repeated(3002);
    for (const bool keep : {false, true}) {
        Sending stage;
        stage.put("book.txt", text);
        stage.state.Text5 = stage.folder.filePath("book.txt");
        Option1_click(stage.state, 6);
        stage.state.fields.Text12 = "15";
        stage.host.answers = {keep};
        stage.host.chosenFile = stage.folder.filePath("rest.txt");
        stage.send();
        QCOMPARE(stage.host.line.sent, text.first(30015) + " * * ");
        QCOMPARE(stage.host.questions,
                 QStringList("Not all text sent. Do you want to save remaining text in new file?"));
        QCOMPARE(stage.host.titles, QStringList("Save Text"));
        QCOMPARE(stage.host.filters,
                 keep ? QStringList("Text Files (*.txt)|*.txt|All Files (*.*)|*.*") : QStringList());
        QFile rest(stage.host.chosenFile);
        QCOMPARE(rest.open(QIODevice::ReadOnly), keep);
        QCOMPARE(keep ? rest.readAll() : QByteArray(), keep ? text.sliced(30015) : QByteArray());
    }
}

QTEST_APPLESS_MAIN(TestSend)
#include "test_send.moc"
