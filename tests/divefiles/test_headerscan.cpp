#include "divefiles/headerscan.h"

#include <QtTest>

using namespace benthor::divefiles;

namespace {

/// An action as one line, bytes beyond the printable as \xNN.
QByteArray shown(const QByteArray& bytes) {
    QByteArray text;
    for (const char c : bytes) {
        text += (c >= ' ' && c < 127)
                    ? QByteArray(1, c)
                    : "\\x" + QByteArray::number(static_cast<uchar>(c), 16).rightJustified(2, '0');
    }
    return text;
}

template <size_t Count> QByteArray joined(const std::array<QByteArray, Count>& fields) {
    QByteArray text;
    for (const QByteArray& field : fields) {
        text += (&field == &fields.front() ? "" : ",") + shown(field);
    }
    return text;
}

struct Describe {
    QByteArray operator()(const NewDive& dive) const { return "dive " + shown(dive.version); }
    QByteArray operator()(const PutField& put) const {
        static constexpr std::array kNames = {"interval", "serial", "start", "status", "descend", "datmos",
                                              "dstack",   "dusage", "maxd",  "otu",    "cylinder"};
        return QByteArray(kNames.at(static_cast<size_t>(put.field))) + " " + shown(put.value);
    }
    QByteArray operator()(const PutFinish& finish) const {
        return "finish " + shown(finish.startcode) + " " + shown(finish.finishcode);
    }
    QByteArray operator()(const AddGas& gas) const { return "gas " + joined(gas.fields); }
    QByteArray operator()(const AddTissue& tissue) const { return "tissue " + joined(tissue.fields); }
};

QByteArrayList actionsOf(const QByteArray& file) {
    QByteArrayList lines;
    for (const HeaderAction& action : scanheader(file).actions) {
        lines += std::visit(Describe(), action);
    }
    return lines;
}

ScanOutcome outcomeOf(const QByteArray& file) {
    return scanheader(file).outcome;
}

const QByteArray kBegin = "ver=V1\rRecint=10\r";
const QByteArrayList kBegun{"dive V1", "interval 10"};

} // namespace

class TestHeaderScan : public QObject {
    Q_OBJECT

private slots:
    void aWholeHeaderIsReadInTheOrderOfTheFile();
    void valuesAreFoundBehindTheirKeyword_data();
    void valuesAreFoundBehindTheirKeyword();

    void anEmptyFileDoesNothing();
    void unknownLinesArePassedOver();
    void keywordsAreFoundInsideOtherText();
    void keywordsAreCaseSensitive();
    void statusAndStartAreToldApart();

    void aVersionEndsAtItsCrOr13Bytes_data();
    void aVersionEndsAtItsCrOr13Bytes();
    void aSecondVersionBeginsASecondDive();
    void anIntervalOf100OrMoreBecomes10_data();
    void anIntervalOf100OrMoreBecomes10();
    void aLineThatTheFileCutsOffIsNotRead();
    void aSerialHasNoNumericTest();

    void theCommaStandsWithin6BytesBehindTheKeyword_data();
    void theCommaStandsWithin6BytesBehindTheKeyword();
    void aValueStandsWithin13BytesWithItsCr_data();
    void aValueStandsWithin13BytesWithItsCr();
    void aCylinderStandsWithin18BytesWithItsCr();
    void otherBytesInANumberAreSkipped();
    void aStartOfFourteenDigitsIsLostAndLeavesNoStartcode();

    void withoutVersionTheIntervalMakesTheDive();
    void withoutIntervalTheStartSupplies10();
    void withoutStartTheFinishSupplies140000000();
    void withoutFinishTheDepthSupplies150000000();
    void withoutStartAndFinishTheDepthSuppliesAll();
    void withoutStartFinishAndDepthNothingIsSupplied();
    void withoutIntervalAndStartTheFinishIsPassedOver();
    void substitutesAreSuppliedOnce();
    void aStartWithoutVersionAndIntervalEndsTheScan();

    void linesWithoutADiveLeaveNothing();
    void gasFieldsKeepTheirCrAndLoseTheirBlanks();
    void aShortGasLineKeepsItsCrInItsLastField();
    void aGasFieldOf9CharactersPassesAndOf10Fails();
    void aGasLineOf6FieldsFails();
    void aTissueFieldOf9CharactersPassesAndOf10Fails();
    void aTissueLineOf4FieldsFails();
    void aLineCutInItsMiddleIsFilledWithZeroBytesAndFails();
    void aGasLineWithoutADiveFailsAllTheSame();
    void rowsBeforeAFaultStay();

    void roundsBehindProfileGoOnAndKeywordsThereAct();
    void exactly1000RoundsAreDone();
    void bytesOfAValueAreNoRounds();
    void zeroBytesAndHighBytesPassThrough();
    void aHugeFileWithoutLineEndsIsReadOnce();
};

void TestHeaderScan::aWholeHeaderIsReadInTheOrderOfTheFile() {
    const QByteArray file =
        "ver=V3.12\r\nRecint=10\r\nSN=KD00123\r\nStart     , 812345678\r\nFinish    , 812348145\r\n"
        "Status,0\r\nDescend,3\r\nDAtmos,1013\r\nDStack,360\r\nDUsage,5400\r\nMaxD,23.4\r\nOTU,12\r\n"
        "HPCylinder, 200 bar\r\nGas0000,79,0,660,1\r\nTissue0000,79,0\r\nProfile\r\n";
    QCOMPARE(actionsOf(file),
             QByteArrayList({"dive V3.12", "interval 10", "serial KD00123", "start 812345678",
                             "finish 812345678 812348145", "status 0", "descend 3", "datmos 1013",
                             "dstack 360", "dusage 5400", "maxd 23.4", "otu 12", "cylinder  200 bar",
                             "gas 0000,79,0,660,1\\x0d", "tissue 0000,79,0\\x0d"}));
    QCOMPARE(outcomeOf(file), ScanOutcome::Finished);
    QCOMPARE(scanheader(file).profiles, 1);
}

void TestHeaderScan::valuesAreFoundBehindTheirKeyword_data() {
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QByteArray>("action");
    const auto add = [](const char* line, const char* action) {
        QTest::newRow(line) << QByteArray(line) << QByteArray(action);
    };
    add("Status is,17", "status 17");
    add("Descend prob,4", "descend 4");
    add("DAtmos mB,1013", "datmos 1013");
    add("DStack ,360", "dstack 360");
    add("DUsage,5400", "dusage 5400");
    add("OTUs,12", "otu 12");
    add("HPCylinder , 18", "cylinder  18");
}

void TestHeaderScan::valuesAreFoundBehindTheirKeyword() {
    QFETCH(QByteArray, line);
    QFETCH(QByteArray, action);
    QCOMPARE(actionsOf(kBegin + line + "\r\n"), kBegun + QByteArrayList{action});
}

void TestHeaderScan::anEmptyFileDoesNothing() {
    QCOMPARE(actionsOf(""), QByteArrayList());
    QCOMPARE(outcomeOf(""), ScanOutcome::Finished);
}

void TestHeaderScan::unknownLinesArePassedOver() {
    QCOMPARE(actionsOf("Model=KDx\r\n" + kBegin + "\nNote, anything\r\nTemp unit,C\r\nOTU,3\r"),
             kBegun + QByteArrayList{"otu 3"});
}

void TestHeaderScan::keywordsAreFoundInsideOtherText() {
    QCOMPARE(actionsOf("driver=V1\rXXRecint=10\rmyOTUs,5\r"), kBegun + QByteArrayList{"otu 5"});
}

void TestHeaderScan::keywordsAreCaseSensitive() {
    QCOMPARE(actionsOf(kBegin + "otu,3\rOtu,4\rmaxd,5\rGAS0,1\rVER=2\r"), kBegun);
}

void TestHeaderScan::statusAndStartAreToldApart() {
    QCOMPARE(actionsOf(kBegin + "Status,5\rStart,7\r"), kBegun + QByteArrayList({"status 5", "start 7"}));
}

void TestHeaderScan::aVersionEndsAtItsCrOr13Bytes_data() {
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QByteArray>("version");
    QTest::newRow("12 and CR") << QByteArray("ver=123456789012\r") << QByteArray("123456789012");
    QTest::newRow("13 without CR") << QByteArray("ver=1234567890123\r") << QByteArray("1234567890123");
    QTest::newRow("longer") << QByteArray("ver=12345678901234567\r") << QByteArray("1234567890123");
    QTest::newRow("empty") << QByteArray("ver=\r") << QByteArray("");
    QTest::newRow("cut off") << QByteArray("ver=V3")
                             << QByteArray("V3\\x00\\x00\\x00\\x00\\x00\\x00\\x00\\x00\\x00\\x00\\x00");
}

void TestHeaderScan::aVersionEndsAtItsCrOr13Bytes() {
    QFETCH(QByteArray, file);
    QFETCH(QByteArray, version);
    QCOMPARE(actionsOf(file), QByteArrayList{"dive " + version});
}

void TestHeaderScan::aSecondVersionBeginsASecondDive() {
    QCOMPARE(actionsOf(kBegin + "OTU,1\rver=V2\rOTU,2\r"),
             kBegun + QByteArrayList({"otu 1", "dive V2", "otu 2"}));
}

void TestHeaderScan::anIntervalOf100OrMoreBecomes10_data() {
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QByteArray>("interval");
    QTest::newRow("99") << QByteArray("99") << QByteArray("99");
    QTest::newRow("99.9") << QByteArray("99.9") << QByteArray("99.9");
    QTest::newRow("100") << QByteArray("100") << QByteArray("10");
    QTest::newRow("huge") << QByteArray(400, '9') << QByteArray("10");
    QTest::newRow("blanks") << QByteArray(" 5 s") << QByteArray("5");
    QTest::newRow("nothing") << QByteArray("") << QByteArray("");
    QTest::newRow("1.5") << QByteArray("1.5") << QByteArray("1.5");
}

void TestHeaderScan::anIntervalOf100OrMoreBecomes10() {
    QFETCH(QByteArray, value);
    QFETCH(QByteArray, interval);
    QCOMPARE(actionsOf("ver=V1\rRecint=" + value + "\r"),
             QByteArrayList({"dive V1", "interval " + interval}));
}

void TestHeaderScan::aLineThatTheFileCutsOffIsNotRead() {
    QCOMPARE(actionsOf("ver=V1\rRecint=1"), QByteArrayList{"dive V1"});
    QCOMPARE(actionsOf(kBegin + "SN=KD001"), kBegun);
    QCOMPARE(actionsOf(kBegin + "OTU,1"), kBegun);
    QCOMPARE(actionsOf(kBegin + "OTU"), kBegun);
}

void TestHeaderScan::aSerialHasNoNumericTest() {
    QCOMPARE(actionsOf(kBegin + "SN= a,b.c \xe9\r"), kBegun + QByteArrayList{"serial  a,b.c \\xe9"});
    const QByteArray longSerial(300, 'x');
    QCOMPARE(actionsOf(kBegin + "SN=" + longSerial + "\r"), kBegun + QByteArrayList{"serial " + longSerial});
}

void TestHeaderScan::theCommaStandsWithin6BytesBehindTheKeyword_data() {
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<bool>("read");
    QTest::newRow("at once") << QByteArray("OTU,1\r") << true;
    QTest::newRow("sixth") << QByteArray("OTU12345,1\r") << true;
    QTest::newRow("seventh") << QByteArray("OTU123456,1\r") << false;
    QTest::newRow("behind a line end") << QByteArray("OTU\r\n,1\r") << true;
}

void TestHeaderScan::theCommaStandsWithin6BytesBehindTheKeyword() {
    QFETCH(QByteArray, line);
    QFETCH(bool, read);
    QCOMPARE(actionsOf(kBegin + line), read ? kBegun + QByteArrayList{"otu 1"} : kBegun);
}

void TestHeaderScan::aValueStandsWithin13BytesWithItsCr_data() {
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<bool>("read");
    QTest::newRow("twelve digits") << QByteArray("123456789012") << true;
    QTest::newRow("thirteen digits") << QByteArray("1234567890123") << false;
    QTest::newRow("blanks count") << QByteArray("          123") << false;
    QTest::newRow("blanks that fit") << QByteArray("         123") << true;
}

void TestHeaderScan::aValueStandsWithin13BytesWithItsCr() {
    QFETCH(QByteArray, value);
    QFETCH(bool, read);
    QCOMPARE(actionsOf(kBegin + "OTU," + value + "\r"),
             read ? kBegun + QByteArrayList{"otu " + value.trimmed()} : kBegun);
}

void TestHeaderScan::aCylinderStandsWithin18BytesWithItsCr() {
    QCOMPARE(actionsOf(kBegin + "HPCylinder,12345678901234567\r"),
             kBegun + QByteArrayList{"cylinder 12345678901234567"});
    QCOMPARE(actionsOf(kBegin + "HPCylinder,123456789012345678\r"), kBegun);
}

void TestHeaderScan::otherBytesInANumberAreSkipped() {
    QCOMPARE(actionsOf(kBegin + "Start,1.2-3\rDAtmos, 1 0 1 3 mB\rOTU, 1.2.3m\r"),
             kBegun + QByteArrayList({"start 123", "datmos 1013", "otu 1.2.3"}));
}

void TestHeaderScan::aStartOfFourteenDigitsIsLostAndLeavesNoStartcode() {
    QCOMPARE(actionsOf(kBegin + "Start,00000413221478\rFinish,555996417\r"),
             kBegun + QByteArrayList{"finish  555996417"});
}

void TestHeaderScan::withoutVersionTheIntervalMakesTheDive() {
    QCOMPARE(actionsOf("Recint=5\rSN=KD\r"), QByteArrayList({"dive Null", "interval 5", "serial KD"}));
}

void TestHeaderScan::withoutIntervalTheStartSupplies10() {
    QCOMPARE(actionsOf("ver=V1\rStart,100\r"), QByteArrayList({"dive V1", "interval 10", "start 100"}));
}

void TestHeaderScan::withoutStartTheFinishSupplies140000000() {
    QCOMPARE(actionsOf(kBegin + "Finish,200\r"),
             kBegun + QByteArrayList({"start 140000000", "finish 140000000 200"}));
}

void TestHeaderScan::withoutFinishTheDepthSupplies150000000() {
    QCOMPARE(actionsOf(kBegin + "Start,100\rMaxD,9\r"),
             kBegun + QByteArrayList({"start 100", "finish 100 150000000", "maxd 9"}));
}

void TestHeaderScan::withoutStartAndFinishTheDepthSuppliesAll() {
    QCOMPARE(actionsOf("ver=V1\rMaxD,9\r"), QByteArrayList({"dive V1", "start 140000000", "interval 10",
                                                            "finish 140000000 150000000", "maxd 9"}));
}

void TestHeaderScan::withoutStartFinishAndDepthNothingIsSupplied() {
    QCOMPARE(actionsOf("ver=V1\rOTU,9\r"), QByteArrayList({"dive V1", "otu 9"}));
}

void TestHeaderScan::withoutIntervalAndStartTheFinishIsPassedOver() {
    QCOMPARE(actionsOf("ver=V1\rFinish,200\r"), QByteArrayList({"dive V1", "start 140000000"}));
    QCOMPARE(actionsOf("Finish,200\r"), QByteArrayList());
}

void TestHeaderScan::substitutesAreSuppliedOnce() {
    QCOMPARE(actionsOf(kBegin + "MaxD,9\rMaxD,8\r"),
             kBegun + QByteArrayList({"start 140000000", "finish 140000000 150000000", "maxd 9", "maxd 8"}));
}

void TestHeaderScan::aStartWithoutVersionAndIntervalEndsTheScan() {
    QCOMPARE(outcomeOf("SN=KD\rStart,100\rver=V1\r"), ScanOutcome::VersionMissing);
    QCOMPARE(actionsOf("SN=KD\rStart,100\rver=V1\r"), QByteArrayList());
}

void TestHeaderScan::linesWithoutADiveLeaveNothing() {
    QCOMPARE(actionsOf("SN=KD\rOTU,1\rMaxD,2\rHPCylinder,1234\rGas0000,1,2,3,4\rTissue0000,1,2\rProfile"),
             QByteArrayList());
}

void TestHeaderScan::gasFieldsKeepTheirCrAndLoseTheirBlanks() {
    QCOMPARE(actionsOf(kBegin + "Gas  0000 , 84 , 8 , 489 , 1\rTissue 0001 , 1 7 , 217\r"),
             kBegun + QByteArrayList({"gas 0000,84,8,489,1\\x0d", "tissue 0001,17,217\\x0d"}));
}

void TestHeaderScan::aShortGasLineKeepsItsCrInItsLastField() {
    QCOMPARE(actionsOf(kBegin + "Gas0000,84\rTissue\r"),
             kBegun + QByteArrayList({"gas 0000,84\\x0d,,,", "tissue \\x0d,,"}));
}

void TestHeaderScan::aGasFieldOf9CharactersPassesAndOf10Fails() {
    QCOMPARE(actionsOf(kBegin + "Gas0000,123456789,,,123456789\r"),
             kBegun + QByteArrayList{"gas 0000,123456789,,,123456789\\x0d"});
    QCOMPARE(outcomeOf(kBegin + "Gas0000,1234567890,1,1,1\r"), ScanOutcome::GasTooMany);
    QCOMPARE(outcomeOf(kBegin + "Gas0000,1,1,1,1234567890\r"), ScanOutcome::GasTooMany);
}

void TestHeaderScan::aGasLineOf6FieldsFails() {
    QCOMPARE(outcomeOf(kBegin + "Gas0000,1,2,3,4\r"), ScanOutcome::Finished);
    QCOMPARE(outcomeOf(kBegin + "Gas0000,1,2,3,4,\r"), ScanOutcome::GasTooMany);
}

void TestHeaderScan::aTissueFieldOf9CharactersPassesAndOf10Fails() {
    QCOMPARE(outcomeOf(kBegin + "Tissue0000,123456789,1\r"), ScanOutcome::Finished);
    QCOMPARE(outcomeOf(kBegin + "Tissue0000,1234567890,1\r"), ScanOutcome::TissueTooMany);
}

void TestHeaderScan::aTissueLineOf4FieldsFails() {
    QCOMPARE(outcomeOf(kBegin + "Tissue0000,1,2\r"), ScanOutcome::Finished);
    QCOMPARE(outcomeOf(kBegin + "Tissue0000,1,2,\r"), ScanOutcome::TissueTooMany);
}

void TestHeaderScan::aLineCutInItsMiddleIsFilledWithZeroBytesAndFails() {
    QCOMPARE(outcomeOf(kBegin + "Gas0000,79,0"), ScanOutcome::GasTooMany);
    QCOMPARE(outcomeOf(kBegin + "Tissue"), ScanOutcome::TissueTooMany);
    QCOMPARE(actionsOf(kBegin + "Gas0000,79,0"), kBegun);
}

void TestHeaderScan::aGasLineWithoutADiveFailsAllTheSame() {
    QCOMPARE(outcomeOf("Gas0000,1,2,3,4,5\r"), ScanOutcome::GasTooMany);
}

void TestHeaderScan::rowsBeforeAFaultStay() {
    QCOMPARE(actionsOf(kBegin + "Gas0000,1,2,3,4\rGas0001,1,2,3,4,5\rOTU,1\r"),
             kBegun + QByteArrayList{"gas 0000,1,2,3,4\\x0d"});
}

void TestHeaderScan::roundsBehindProfileGoOnAndKeywordsThereAct() {
    QCOMPARE(actionsOf(kBegin + "OTU,1\rProfile\r\n,1,2,OTU high,77\r\n"),
             kBegun + QByteArrayList({"otu 1", "otu 77"}));
    QCOMPARE(scanheader(kBegin + "Profile Profile").profiles, 2);
    QCOMPARE(outcomeOf(kBegin + "Profile\r\n,1,2,3,Gas pressure low,5\r\n,1,2,3\r\n"),
             ScanOutcome::GasTooMany);
}

void TestHeaderScan::exactly1000RoundsAreDone() {
    // 4 rounds for "ver=", then the filling; the last byte of "OTU" is the 1000th or the 1001st.
    const auto file = [](int filling) { return "ver=V1\r" + QByteArray(filling, '-') + "OTU,1\r"; };
    QCOMPARE(actionsOf(file(1000 - 4 - 3)), QByteArrayList({"dive V1", "otu 1"}));
    QCOMPARE(actionsOf(file(1000 - 4 - 2)), QByteArrayList{"dive V1"});
}

void TestHeaderScan::bytesOfAValueAreNoRounds() {
    QByteArray file = kBegin;
    QByteArrayList expected = kBegun;
    for (int i = 0; i < 300; ++i) { // 3 rounds each
        file += "OTU     ,   123456789\r";
        expected += "otu 123456789";
    }
    QCOMPARE(actionsOf(file), expected);
}

void TestHeaderScan::zeroBytesAndHighBytesPassThrough() {
    static constexpr char kFile[] = "\0\xff\0ver=V\0\xff\rSN=\0\x80\rGas\0,\xff,,,\r";
    QCOMPARE(actionsOf(QByteArray(kFile, sizeof kFile - 1)),
             QByteArrayList({"dive V\\x00\\xff", "serial \\x00\\x80", "gas \\x00,\\xff,,,\\x0d"}));
}

void TestHeaderScan::aHugeFileWithoutLineEndsIsReadOnce() {
    const QByteArray file = "ver=V1\rSN=" + QByteArray(8 * 1024 * 1024, 'x');
    QCOMPARE(actionsOf(file), QByteArrayList{"dive V1"});
}

QTEST_GUILESS_MAIN(TestHeaderScan)
#include "test_headerscan.moc"
