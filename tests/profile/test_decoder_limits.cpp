#include "divetext.h"
#include "profileinvariants.h"

#include <QtTest>

using namespace benthor::profile;

namespace {

const QString kTooMany = QStringLiteral("Errors - Too many parameter  !");

QByteArray fields(int commas, const QByteArray& field = "K1") {
    return QByteArray("," + field).repeated(commas);
}

QByteArrayList repeatedLine(const QByteArray& line, int count) {
    return QByteArrayList(count, line);
}

} // namespace

class TestDecoderLimits : public QObject {
    Q_OBJECT

private slots:
    void thirtyNineCommasPassAndTheFortiethShowsABox();
    void theFortyFirstCommaEndsTheReading();
    void theBoxComesAgainOnEachSuchLine();
    void theHeaderIsScannedForTenThousandBytes();
    void aHeaderWithoutProfileIsReadAsLinesFromThere();
    void aKeywordAcrossALineEndIsNone();
    void theLastOfTwentyFiveThousandSamplesFits();
    void aSampleBeyondTheArraysEndsTheReading();
    void aStickReadingBeyondTheArraysEndsTheReading();
    void noLineBehindTheThirtyTwoThousandAndHundredthIsRead();
    void theYieldComesBehindEachHeaderByteAndEachField();
    void aYieldThatSaysNoEndsTheReadingAtOnce();
    void messagesComeAtTheirMoment();
    void eachTenthLineBehindAMalformedOneLaysTheLabels();
    void anythingIsAProfile_data();
    void anythingIsAProfile();
    void grownFieldsStayInProportionToTheFile();
};

void TestDecoderLimits::thirtyNineCommasPassAndTheFortiethShowsABox() {
    const DiveProfile peaceful = decodeProfile(wholeDive({fields(39)}), false);
    QCOMPARE(peaceful.messages, QStringList());
    QCOMPARE(recordsOf(peaceful), 1);
    const DiveProfile profile = decodeProfile(wholeDive({fields(40), fields(3)}), false);
    QCOMPARE(profile.messages, QStringList(kTooMany));
    QCOMPARE(recordsOf(profile), 2);
}

void TestDecoderLimits::theFortyFirstCommaEndsTheReading() {
    const DiveProfile profile = decodeProfile(wholeDive({fields(3), fields(41), fields(3)}), false);
    QCOMPARE(profile.messages, QStringList({kTooMany, kTooMany}));
    QCOMPARE(profile.end, ReadingEnd::Fault);
    QCOMPARE(recordsOf(profile), 1);
}

void TestDecoderLimits::theBoxComesAgainOnEachSuchLine() {
    const DiveProfile profile = decodeProfile(wholeDive({fields(40), fields(40), fields(40)}), false);
    QCOMPARE(profile.messages.size(), 3);
    QCOMPARE(recordsOf(profile), 3);
}

void TestDecoderLimits::theHeaderIsScannedForTenThousandBytes() {
    const QByteArray dive("Profile\r\n,50,0,70,M0,T20\r\n,100,0,70,M0,T20\r\nEnd\r\n");
    const DiveProfile inTime = decodeProfile(QByteArray(10000 - 7, 'x') + dive, false);
    QCOMPARE(recordsOf(inTime), 1); // the word's last byte is the 10,000th: its line is passed over
    QCOMPARE(sampleOf(inTime.depthpos, 4), 9.38F);
    QCOMPARE(inTime.end, ReadingEnd::EndWord);
    const DiveProfile tooLate = decodeProfile(QByteArray(10000 - 6, 'x') + dive, false);
    QCOMPARE(recordsOf(tooLate), 2); // the line that is passed over is what is left of the word's own
    QCOMPARE(sampleOf(tooLate.depthpos, 4), 4.69F);
}

void TestDecoderLimits::aHeaderWithoutProfileIsReadAsLinesFromThere() {
    const QByteArray text = QByteArray(10000, 'x') + "yProfile\r,1,2,3\rEnd";
    const DiveProfile profile = decodeProfile(text, false);
    QCOMPARE(recordsOf(profile), 1);
    QCOMPARE(sampleOf(profile.gasnum, 4), 2.0F);
    QCOMPARE(profile.messages, QStringList());
}

void TestDecoderLimits::aKeywordAcrossALineEndIsNone() {
    for (const char* lineEnd : {"\r", "\n", "\r\n"}) {
        const QByteArray text = QByteArray("Pro") + lineEnd + "file\r\nTime\r\n,100,0,70\r\nEnd\r\n";
        QCOMPARE(recordsOf(decodeProfile(text, false)), 0);
    }
    QCOMPARE(recordsOf(decodeProfile("xProfProfileProfile\rx\r,,,\rEnd", false)), 1);
}

void TestDecoderLimits::theLastOfTwentyFiveThousandSamplesFits() {
    const DiveProfile profile = decodeProfile(wholeDive(repeatedLine(",100,1,70,M0,T20", 24997)), false);
    QCOMPARE(recordsOf(profile), 24997);
    QCOMPARE(profile.end, ReadingEnd::EndWord);
    QCOMPARE(profile.lastsample, 25001);
    QCOMPARE(sampleOf(profile.depthpos, 25000), 9.38F);
}

void TestDecoderLimits::aSampleBeyondTheArraysEndsTheReading() {
    for (const int lines : {24998, 25000}) {
        const DiveProfile profile = decodeProfile(wholeDive(repeatedLine(",100,1,70,M0,T20", lines)), false);
        QCOMPARE(profile.end, ReadingEnd::Fault);
        QCOMPARE(profile.messages, QStringList());
        QCOMPARE(recordsOf(profile), 24997);
        QCOMPARE(sampleOf(profile.depthpos, 25000), 9.38F);
    }
}

void TestDecoderLimits::aStickReadingBeyondTheArraysEndsTheReading() {
    // Twelve readings a line: the counter stands at 3 and reaches 24,999 with line 2,083; the second reading
    // of the next line is one too many.
    const DiveProfile profile =
        decodeProfile(wholeDive(repeatedLine(",100,1,70,M0,T20,A500" + fields(12, "S9"), 2100)), false);
    QCOMPARE(profile.end, ReadingEnd::Fault);
    QCOMPARE(recordsOf(profile), 2083);
    QCOMPARE(sampleOf(profile.tpmstick1[1], 25000), 9.0F);
    QCOMPARE(ProfileInvariants::broken(profile, QByteArray(2100, '\r')), QString());
}

void TestDecoderLimits::noLineBehindTheThirtyTwoThousandAndHundredthIsRead() {
    const QByteArray record(",100,1,70,M0,T20");
    // With the line behind "Profile" that makes 32,100 lines.
    const QByteArrayList lines = repeatedLine("x", 32098) + QByteArrayList{record};
    const DiveProfile last = decodeProfile(diveText(lines), false);
    QCOMPARE(recordsOf(last), 1);
    QCOMPARE(last.end, ReadingEnd::EndOfFile);
    const DiveProfile beyond = decodeProfile(diveText(lines + QByteArrayList{record, record}), false);
    QCOMPARE(recordsOf(beyond), 1);
    QCOMPARE(beyond.end, ReadingEnd::TooManyLines);
    QCOMPARE(beyond.messages, QStringList());
}

void TestDecoderLimits::theYieldComesBehindEachHeaderByteAndEachField() {
    const QByteArray header("ver=1\r\nProfile");
    int calls = 0;
    const auto yield = [&calls] {
        ++calls;
        return true;
    };
    decodeProfile(header, false, {.yield = yield});
    QCOMPARE(calls, static_cast<int>(header.size()));
    calls = 0;
    // two lines of one and four fields; the rest of a field that ends with the file is none
    decodeProfile(header + "\r\nTime\r\n,1,2,3\r\n,1", false, {.yield = yield});
    QCOMPARE(calls, static_cast<int>(header.size()) + 1 + 4 + 1);
}

void TestDecoderLimits::aYieldThatSaysNoEndsTheReadingAtOnce() {
    const QByteArray text = wholeDive(repeatedLine(",100,1,70,M0,T20", 20));
    int total = 0;
    const DiveProfile whole = decodeProfile(text, false, {.yield = [&total] { return ++total > 0; }});
    QCOMPARE(recordsOf(whole), 20);
    int before = 0;
    for (int limit = 1; limit <= total; ++limit) {
        int calls = 0;
        const DiveProfile profile = decodeProfile(text, false, {.yield = [&] { return ++calls < limit; }});
        QCOMPARE(calls, limit);
        QCOMPARE(profile.end, ReadingEnd::Stopped);
        QCOMPARE(profile.messages, QStringList());
        QVERIFY(recordsOf(profile) >= before);
        before = recordsOf(profile);
        QCOMPARE(ProfileInvariants::broken(profile, text), QString());
    }
    QCOMPARE(before, 19); // the last call is the one behind the last record's last field
}

void TestDecoderLimits::messagesComeAtTheirMoment() {
    QStringList log;
    DecoderHooks hooks;
    hooks.yield = [&log] {
        log += QStringLiteral("field");
        return true;
    };
    hooks.message = [&log](const QString& text) { log += text; };
    decodeProfile(diveText({fields(40)}), false, hooks);
    const auto fromBox = log.mid(log.indexOf(kTooMany));
    QCOMPARE(fromBox, QStringList({kTooMany, QStringLiteral("field"), QStringLiteral("field"),
                                   QStringLiteral("end of file unexpected")}));
}

void TestDecoderLimits::eachTenthLineBehindAMalformedOneLaysTheLabels() {
    int laid = 0;
    DecoderHooks hooks;
    hooks.malformedtenthline = [&laid] { ++laid; };
    const QByteArrayList good = repeatedLine(",100,1,70,M0,T20", 25);
    decodeProfile(wholeDive(good), false, hooks);
    QCOMPARE(laid, 0);
    const QByteArrayList bad{",100,1,70,x,T20"};
    decodeProfile(wholeDive(good.first(7) + bad), false, hooks); // lines 2 to 9
    QCOMPARE(laid, 0);
    decodeProfile(wholeDive(good.first(8) + bad), false, hooks); // the bad one is the tenth
    QCOMPARE(laid, 1);
    laid = 0;
    decodeProfile(wholeDive(good.first(12) + bad + good), false, hooks); // lines 20 and 30
    QCOMPARE(laid, 2);
}

void TestDecoderLimits::anythingIsAProfile_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("zeros") << QByteArray(100000, '\0');
    QTest::newRow("commas") << QByteArray("Profile") + QByteArray(100000, ',');
    QTest::newRow("line ends") << QByteArray("Profile") + QByteArray(100000, '\r');
    QTest::newRow("one long line") << QByteArray("Profile\r\r,,,") + QByteArray(3000000, '9') + "\r";
    QTest::newRow("one long token") << QByteArray("Profile\r\r,,,,,,,") + QByteArray(3000000, 'x') + "\r";
    QTest::newRow("long exponents") << QByteArray(
        "Profile\r\r,1e99999,1e-99999,1e308,M1,T1e300,A1e300,z-1e300,z1e300\r");
    QTest::newRow("depth that divides by nothing") << QByteArray("Profile\r\r,-106.6666666666667,,,,,,z5\r");
    QTest::newRow("high bytes") << QByteArray("Profile\r\r,\xff\xfe,\x80,\xff,M\xff,T\xff,A\xff,\xff\xff,\x80"
                                              "1\r");
}

void TestDecoderLimits::anythingIsAProfile() {
    QFETCH(QByteArray, bytes);
    for (const bool feet : {false, true}) {
        QCOMPARE(ProfileInvariants::broken(decodeProfile(bytes, feet), bytes), QString());
    }
}

void TestDecoderLimits::grownFieldsStayInProportionToTheFile() {
    // Written out, the alarm texts alone would be half a gigabyte, and the numbers as long to read.
    QByteArray tokens = ",100,1,70,M0,T20,A500" + fields(12) + fields(21, "FAIL");
    const QByteArray digits = ",100,1,70,M0,T20,A500" + fields(12) + fields(21, "1234567890");
    const DiveProfile alarms = decodeProfile(wholeDive(repeatedLine(tokens, 3500)), false);
    QCOMPARE(recordsOf(alarms), 3500);
    QCOMPARE(sampleOf(alarms.alarmcount, 3503), 21.0F);
    QCOMPARE(alarms.alarmtext(3503).size(), 21 * (3500 * 4 + 2));
    QCOMPARE(alarms.alarmtext(5), QStringLiteral("FAILFAIL\r\n").repeated(21));
    const DiveProfile numbers = decodeProfile(
        wholeDive(QByteArrayList{tokens.replace("FAIL", "B1")} + repeatedLine(digits, 3500)), false);
    QCOMPARE(recordsOf(numbers), 3501);
    QCOMPARE(sampleOf(numbers.bat1, 5), 112345678.9F);
}

QTEST_GUILESS_MAIN(TestDecoderLimits)
#include "test_decoder_limits.moc"
