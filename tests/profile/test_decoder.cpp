#include "divetext.h"

#include <QtTest>

using namespace benthor::profile;

namespace {

const QString kEndOfFile = QStringLiteral("end of file unexpected");

} // namespace

class TestDecoder : public QObject {
    Q_OBJECT

private slots:
    void aRecordOfThreeCommasIsDecodedAndOneOfTwoIsDropped();
    void theLineBehindProfileIsNeverDecoded();
    void theLineBehindProfileLeavesNothingInTheFields();
    void theLineFeedBecomesTheFirstCharacterOfTheNextLine();
    void withoutCarriageReturnsThereIsNoLine();
    void theFirstRecordIsSampleFour();
    void endInAnyFieldEndsAtThatByte_data();
    void endInAnyFieldEndsAtThatByte();
    void endInAGrownFieldMayBeginLinesEarlier();
    void endAcrossTwoLinesOfAnEmptiedFieldIsNoEnd();
    void theEndOfTheFileSaysSoAndKeepsTheSamples();
    void theEndOfTheFileInTheHeaderSaysSo();
    void theEndOfTheFileInARecordDropsTheRecord();
    void theEndOfTheFileBehindProfileSaysSo();
};

void TestDecoder::aRecordOfThreeCommasIsDecodedAndOneOfTwoIsDropped() {
    const DiveProfile profile = decoded({",160,1,88", ",200,1", ",40,0,70"});
    QCOMPARE(recordsOf(profile), 2);
    QCOMPARE(sampleOf(profile.depthpos, 4), 15.0F);
    QCOMPARE(sampleOf(profile.gasnum, 4), 1.0F);
    QCOMPARE(sampleOf(profile.po2, 4), 0.88F);
    QCOMPARE(sampleOf(profile.depthpos, 5), 3.75F);
}

void TestDecoder::theLineBehindProfileIsNeverDecoded() {
    const DiveProfile profile =
        decodeProfile("Profile\r\n,100,0,70,M0,T20,A500\r\n,200,0,70,M0,T20,A500\r\nEnd\r\n", false);
    QCOMPARE(recordsOf(profile), 1);
    QCOMPARE(sampleOf(profile.depthpos, 4), 18.75F);
}

void TestDecoder::theLineBehindProfileLeavesNothingInTheFields() {
    const DiveProfile profile = decodeProfile("Profile\r\n,1,2,3,M1,T20,A500\r\n,200,0,7\r\nEnd\r\n", false);
    QCOMPARE(sampleOf(profile.depthpos, 4), 18.75F);
    QCOMPARE(sampleOf(profile.gasnum, 4), 0.0F);
    QCOMPARE(sampleOf(profile.mark, 4), 0.0F);
    QCOMPARE(sampleOf(profile.filterpct, 4), 0.0F);
}

void TestDecoder::theLineFeedBecomesTheFirstCharacterOfTheNextLine() {
    const QByteArray withFeeds = wholeDive({record(",B600"), record(",C400")});
    const QByteArray without = QByteArray(withFeeds).replace("\r\n", "\r");
    for (const QByteArray& text : {withFeeds, without}) {
        const DiveProfile profile = decodeProfile(text, false);
        QCOMPARE(recordsOf(profile), 2);
        QCOMPARE(sampleOf(profile.bat1, 4), 6.0F);
        QCOMPARE(sampleOf(profile.bat2, 5), 4.0F);
    }
    // A line feed elsewhere is a character like any other: a number may begin behind it, and ends at it.
    const DiveProfile profile = decoded({",\n100,0,7\n0,M\n1,T2\n0"});
    QCOMPARE(sampleOf(profile.depthpos, 4), 9.38F);
    QCOMPARE(sampleOf(profile.po2, 4), 0.07F);
    QCOMPARE(sampleOf(profile.mark, 4), 0.0F);
    QCOMPARE(sampleOf(profile.temp, 4), 2.0F);
}

void TestDecoder::withoutCarriageReturnsThereIsNoLine() {
    const DiveProfile profile = decodeProfile("Profile\nTime\n,1,1,1\n,2,2,2\n", false);
    QCOMPARE(recordsOf(profile), 0);
    QCOMPARE(profile.messages, QStringList(kEndOfFile));
}

void TestDecoder::theFirstRecordIsSampleFour() {
    const DiveProfile profile = decoded({record(""), record("")});
    QCOMPARE(profile.lastsample, 6);
    for (int n = 1; n <= 3; ++n) {
        QCOMPARE(sampleOf(profile.depthpos, n), 0.0F);
        QCOMPARE(sampleOf(profile.temp, n), 0.0F);
    }
    QCOMPARE(sampleOf(profile.temp, 4), 20.0F);
    QCOMPARE(sampleOf(profile.temp, 5), 20.0F);
    QCOMPARE(sampleOf(profile.temp, 6), 0.0F);
}

void TestDecoder::endInAnyFieldEndsAtThatByte_data() {
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<bool>("ends");
    QTest::newRow("alone") << QByteArray("End") << true;
    QTest::newRow("inside a word of field 0") << QByteArray("theEndless,1,2,3") << true;
    QTest::newRow("in a fixed field") << QByteArray(",100,0,70,End") << true;
    QTest::newRow("in a token") << record(",LOW BEnd") << true;
    QTest::newRow("in a field above 18") << record(",1,1,1,1,1,1,1,1,1,1,1,1,1,xEndx,1") << true;
    QTest::newRow("small letters") << record(",end") << false;
    QTest::newRow("capitals") << record(",END") << false;
    QTest::newRow("across a comma") << record(",E,nd") << false;
    QTest::newRow("interrupted") << record(",En d") << false;
    QTest::newRow("only the end of it") << record(",nd") << false;
}

void TestDecoder::endInAnyFieldEndsAtThatByte() {
    QFETCH(QByteArray, line);
    QFETCH(bool, ends);
    const DiveProfile profile = decodeProfile(diveText({record(""), line, record("")}), false);
    QCOMPARE(recordsOf(profile), ends ? 1 : 3);
    QCOMPARE(profile.messages, ends ? QStringList() : QStringList(kEndOfFile));
    QCOMPARE(profile.end, ends ? ReadingEnd::EndWord : ReadingEnd::EndOfFile);
    if (ends) { // nothing behind the byte is read: the text may as well stop there
        const QByteArray text = diveText({record(""), line});
        const QByteArray cut = text.first(text.indexOf("End") + 3);
        QCOMPARE(decodeProfile(cut, false).messages, QStringList());
        QCOMPARE(decodeProfile(cut.chopped(1), false).messages, QStringList(kEndOfFile));
    }
}

void TestDecoder::endInAGrownFieldMayBeginLinesEarlier() {
    const QByteArray upTo18 = record(",1,1,1,1,1,1,1,1,1,1,1,1");
    const DiveProfile oneThenTwo = decodeProfile(diveText({upTo18 + ",xE", upTo18 + ",ndx", upTo18}), false);
    QCOMPARE(recordsOf(oneThenTwo), 1);
    QCOMPARE(oneThenTwo.end, ReadingEnd::EndWord);
    const DiveProfile twoThenOne =
        decodeProfile(diveText({upTo18 + ",En", record(""), upTo18 + ",d"}), false);
    QCOMPARE(recordsOf(twoThenOne), 2);
    QCOMPARE(twoThenOne.end, ReadingEnd::EndWord);
    const DiveProfile otherField = decodeProfile(diveText({upTo18 + ",En", upTo18 + ",1,d"}), false);
    QCOMPARE(recordsOf(otherField), 2);
    QCOMPARE(otherField.end, ReadingEnd::EndOfFile);
}

void TestDecoder::endAcrossTwoLinesOfAnEmptiedFieldIsNoEnd() {
    const DiveProfile profile = decodeProfile(diveText({record(",En"), record(",d")}), false);
    QCOMPARE(recordsOf(profile), 2);
    QCOMPARE(profile.end, ReadingEnd::EndOfFile);
}

void TestDecoder::theEndOfTheFileSaysSoAndKeepsTheSamples() {
    QStringList shown;
    const auto message = [&shown](const QString& text) { shown += text; };
    const DiveProfile profile =
        decodeProfile(diveText({record(""), record("")}), false, {.message = message});
    QCOMPARE(shown, QStringList(QStringLiteral("end of file unexpected")));
    QCOMPARE(profile.messages, shown);
    QCOMPARE(recordsOf(profile), 2);
    QCOMPARE(sampleOf(profile.temp, 5), 20.0F);
}

void TestDecoder::theEndOfTheFileInTheHeaderSaysSo() {
    for (const char* text : {"", "P", "Profil", "ver=1\r\nPro\r\nfile\r\n"}) {
        const DiveProfile profile = decodeProfile(text, false);
        QCOMPARE(profile.messages, QStringList(kEndOfFile));
        QCOMPARE(recordsOf(profile), 0);
    }
}

void TestDecoder::theEndOfTheFileInARecordDropsTheRecord() {
    const DiveProfile profile = decodeProfile(diveText({record("")}) + record(",B600"), false);
    QCOMPARE(recordsOf(profile), 1);
    QCOMPARE(sampleOf(profile.bat1, 5), 0.0F);
}

void TestDecoder::theEndOfTheFileBehindProfileSaysSo() {
    for (const char* text : {"Profile", "Profile\r", "Profile\r\n"}) {
        QCOMPARE(decodeProfile(text, false).messages, QStringList(kEndOfFile));
    }
}

QTEST_GUILESS_MAIN(TestDecoder)
#include "test_decoder.moc"
