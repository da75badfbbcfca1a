#include "divetext.h"
#include "profile/elapsed.h"
#include "profile/gridcells.h"

#include <QtTest>

using namespace benthor::profile;

class TestGridCells : public QObject {
    Q_OBJECT

private slots:
    void headingsStandOverTheirColumns();
    void rowsOneToThreeAreZerosAndRowFourIsTheFirstRecord();
    void theNumberOfAnOFieldNeverShowsInColumn38();
    void depthAndCeilingAreShownPositive();
    void pressuresOfOxygenHaveTwoPlaces();
    void aGasWithoutANameIsEmpty();
    void theColumnsThatNothingFillsStayZero();
    void elapsedTimesHaveLeadingZeros_data();
    void elapsedTimesHaveLeadingZeros();
    void elapsedTimesOfPartsOfASecond();
};

namespace {

GasNames names() {
    GasNames result;
    result[0] = QStringLiteral("Air");
    result[3] = QStringLiteral("TX18/45");
    return result;
}

} // namespace

void TestGridCells::headingsStandOverTheirColumns() {
    const QStringList first{"Time",    "Depth",   "Gas",   "PO2",      "Ceiling", "Temp",
                            "#errors", "Filter%", "Bat1",  "Bat2",     "HPdil",   "HPo2",
                            "Cella",   "Cellb",   "Cellc", "Setpoint", "CO2"};
    for (int column = 0; column < kGridColumns; ++column) {
        QString expected = first.value(column);
        if (column >= 25 && column <= 32) {
            expected = QStringLiteral("TPM%1").arg(column - 24);
        }
        const QMap<int, QString> others{{33, "TPM%a"}, {34, "TPM%b"}, {36, "v"},
                                        {37, "t"},     {38, "o"},     {39, "f"}};
        QCOMPARE(gridHeading(column), others.value(column, expected));
    }
}

void TestGridCells::rowsOneToThreeAreZerosAndRowFourIsTheFirstRecord() {
    const DiveProfile profile = decodeProfile(wholeDive({",100,3,70,M1,T20,A500,B611"}), false);
    for (int row = 1; row <= 3; ++row) {
        for (int column = 1; column < kSampleColumns; ++column) {
            const QString zero = column == 2                                     ? QStringLiteral("Air")
                                 : column == 3 || (column >= 12 && column <= 14) ? QStringLiteral("0.00")
                                                                                 : QStringLiteral("0");
            QCOMPARE(cellText(profile, names(), 10.0, row, column), zero);
        }
    }
    QCOMPARE(cellText(profile, names(), 10.0, 1, 0), "00:00:10");
    QCOMPARE(cellText(profile, names(), 10.0, 4, 0), "00:00:40");
    QCOMPARE(cellText(profile, names(), 10.0, 4, 1), "9.38");
    QCOMPARE(cellText(profile, names(), 10.0, 4, 2), "TX18/45");
    QCOMPARE(cellText(profile, names(), 10.0, 4, 3), "0.70");
    QCOMPARE(cellText(profile, names(), 10.0, 4, 5), "20");
    QCOMPARE(cellText(profile, names(), 10.0, 4, 7), "50");
    QCOMPARE(cellText(profile, names(), 10.0, 4, 8), "6.11");
    QCOMPARE(cellText(profile, names(), 10.0, 4, 20), "1");
    QCOMPARE(cellText(profile, names(), 3.5, 4, 0), "00:00:14");
}

void TestGridCells::theNumberOfAnOFieldNeverShowsInColumn38() {
    const DiveProfile profile = decodeProfile(wholeDive({",100,0,70,M0,T20,A500,o33,f44"}), false);
    QCOMPARE(cellText(profile, names(), 10.0, 4, 38), "0");
    QCOMPARE(cellText(profile, names(), 10.0, 4, 39), "44");
}

void TestGridCells::depthAndCeilingAreShownPositive() {
    const DiveProfile profile =
        decodeProfile(wholeDive({",100,0,70,M0,T20,C6", ",-100,0,70,M0,T20,C0"}), false);
    QCOMPARE(cellText(profile, names(), 10.0, 4, 1), "9.38");
    QCOMPARE(cellText(profile, names(), 10.0, 4, 4), "6");
    QCOMPARE(cellText(profile, names(), 10.0, 5, 1), "-9.38"); // the sign is turned, not taken off
    QCOMPARE(cellText(profile, names(), 10.0, 5, 4), "0");
}

void TestGridCells::pressuresOfOxygenHaveTwoPlaces() {
    const DiveProfile profile = decodeProfile(wholeDive({",100,0,130,M0,T20,A500,F101,G99,H10,I130"}), false);
    QCOMPARE(cellText(profile, names(), 10.0, 4, 3), "1.30");
    QCOMPARE(cellText(profile, names(), 10.0, 4, 12), "1.01");
    QCOMPARE(cellText(profile, names(), 10.0, 4, 13), "0.99");
    QCOMPARE(cellText(profile, names(), 10.0, 4, 14), "0.10");
    QCOMPARE(cellText(profile, names(), 10.0, 4, 15), "1.3"); // the setpoint stands as it is
}

void TestGridCells::aGasWithoutANameIsEmpty() {
    const DiveProfile profile = decodeProfile(
        wholeDive({",1,10,70", ",1,20,70", ",1,21,70", ",1,-1,70", ",1,1e30,70", ",1,2.5,70", ",1,3.5,70"}),
        false);
    for (int row = 4; row <= 9; ++row) {
        QCOMPARE(cellText(profile, names(), 10.0, row, 2), "");
    }
    GasNames four = names();
    four[4] = QStringLiteral("NX50");
    QCOMPARE(cellText(profile, four, 10.0, 10, 2), "NX50"); // 3.5, ties to even
}

void TestGridCells::theColumnsThatNothingFillsStayZero() {
    const DiveProfile profile = decodeProfile(wholeDive({",100,0,130,M0,T20,A500,o1"}), false);
    for (const int column : {35, 38, 40}) {
        QCOMPARE(cellText(profile, names(), 10.0, 4, column), "0");
        QVERIFY(gridArray(profile, column) == nullptr);
    }
    for (int column = kSampleColumns; column < kGridColumns; ++column) {
        QCOMPARE(cellText(profile, names(), 10.0, 4, column), "");
    }
}

void TestGridCells::elapsedTimesHaveLeadingZeros_data() {
    QTest::addColumn<double>("seconds");
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << 0.0 << "00:00:00";
    QTest::newRow("seconds") << 9.0 << "00:00:09";
    QTest::newRow("before the minute") << 59.0 << "00:00:59";
    QTest::newRow("minute") << 60.0 << "00:01:00";
    QTest::newRow("before the hour") << 3599.0 << "00:59:59";
    QTest::newRow("hour") << 3600.0 << "01:00:00";
    QTest::newRow("ten hours") << 36000.0 << "10:00:00";
    QTest::newRow("hours beyond 99") << 2475000.0 << "687:30:00";
    QTest::newRow("infinity") << std::numeric_limits<double>::infinity() << "00:00:00";
}

void TestGridCells::elapsedTimesHaveLeadingZeros() {
    QFETCH(double, seconds);
    QFETCH(QString, text);
    QCOMPARE(formatelapsed(seconds), text);
    QCOMPARE(formatelapsedWhole(seconds), text);
}

void TestGridCells::elapsedTimesOfPartsOfASecond() {
    QCOMPARE(formatelapsed(59.4), "00:00:59");
    QCOMPARE(formatelapsed(59.5), "00:01:00");
    QCOMPARE(formatelapsed(10.5), "00:00:11"); // an exact half goes away from zero
    QCOMPARE(formatelapsedWhole(59.9), "00:00:59");
}

QTEST_GUILESS_MAIN(TestGridCells)
#include "test_gridcells.moc"
