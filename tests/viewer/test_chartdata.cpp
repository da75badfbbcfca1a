#include "tests/profile/divetext.h"
#include "viewer/chartdata.h"

#include <QtTest>
#include <cmath>
#include <set>

using namespace benthor::profile;
using namespace benthor::viewer;

namespace {

/// `count` records that differ in depth and carry one of each kind of value.
DiveProfile dive(int count) {
    QByteArrayList lines;
    for (int i = 1; i <= count; ++i) {
        lines += ',' + QByteArray::number(i % 1000) +
                 ",3,70,M0,T20,C6,B611,C487,D143,E97,F101,G99,H103,I130,z77,S1,T2";
    }
    return decodeProfile(wholeDive(lines), false);
}

SeriesBoxes checked(std::initializer_list<size_t> boxes, std::initializer_list<size_t> sticks = {}) {
    SeriesBoxes result;
    for (const size_t box : boxes) {
        result.check.set(box);
    }
    for (const size_t stick : sticks) {
        result.check15.set(stick);
    }
    return result;
}

/// Columns of the matrix that hold anything.
std::set<int> filledColumns(const ChartMatrix& matrix) {
    std::set<int> columns;
    for (int column = 0; column < ChartMatrix::columns; ++column) {
        for (int row = 0; row < matrix.lastRow() + 1; ++row) {
            if (!std::isnan(matrix.at(row, column))) {
                columns.insert(column);
            }
        }
    }
    return columns;
}

} // namespace

class TestChartData : public QObject {
    Q_OBJECT

private slots:
    void eachBoxFillsItsColumns_data();
    void eachBoxFillsItsColumns();
    void theTableHasTheColumnsOfTheGrid();
    void rowAndColumnZeroStayEmpty();
    void everySampleGoesToTheChart();
    void depthAndCeilingAreNegativeDownward();
    void ambientAloneChangesNothingAndWithCo2Corrects();
    void theLastCheckedMeterBoxWins();
    void sticksOneAndTwoExcludeEachOther();
    void thePageOfAZoomedViewIsATenth();
    void pageTenOf1005RowsLeavesTheLastFiveOut();
    void aRoundedUpPageEndsWithEmptyRows();
    void columnFortyIsNotCarriedIntoTheZoomedView();
    void anEmptyDiveHasAMatrixOfItsLead();
    void theLeftAxisHasTheUnitThatAllItsSeriesShare_data();
    void theLeftAxisHasTheUnitThatAllItsSeriesShare();
};

void TestChartData::eachBoxFillsItsColumns_data() {
    QTest::addColumn<int>("box");
    QTest::addColumn<QList<int>>("columns");
    QTest::newRow("Depth") << 1 << QList<int>{1};
    QTest::newRow("GAS num") << 2 << QList<int>{2};
    QTest::newRow("PO2") << 3 << QList<int>{3};
    QTest::newRow("Mark") << 4 << QList<int>{};
    QTest::newRow("Temperature") << 5 << QList<int>{5};
    QTest::newRow("TPM") << 6 << QList<int>{25, 26, 27, 28, 29, 30, 31, 32};
    QTest::newRow("Battery") << 7 << QList<int>{8, 9};
    QTest::newRow("High pressure") << 8 << QList<int>{10, 11};
    QTest::newRow("PO2 cells") << 9 << QList<int>{12, 13, 14};
    QTest::newRow("Setpoint") << 10 << QList<int>{15};
    QTest::newRow("Ceiling") << 11 << QList<int>{4};
    QTest::newRow("Filter") << 12 << QList<int>{7};
    QTest::newRow("Pamb") << 13 << QList<int>{};
    QTest::newRow("CO2") << 14 << QList<int>{16};
}

void TestChartData::eachBoxFillsItsColumns() {
    QFETCH(int, box);
    QFETCH(QList<int>, columns);
    const DiveProfile profile = dive(5);
    const ChartMatrix matrix = chartMatrix(profile, 8, checked({static_cast<size_t>(box)}));
    QCOMPARE(filledColumns(matrix), std::set<int>(columns.begin(), columns.end()));
    for (const SeriesSource& series : kSeriesTable) {
        if (series.check == box) {
            QCOMPARE(QString(series.caption), QString(QTest::currentDataTag()));
        }
    }
}

void TestChartData::theTableHasTheColumnsOfTheGrid() {
    const DiveProfile profile = dive(5);
    const QMap<int, const SampleArray*> arrays{
        {1, &profile.depthneg}, {2, &profile.gasnum},    {3, &profile.po2},    {4, &profile.ceilingneg},
        {5, &profile.temp},     {7, &profile.filterpct}, {8, &profile.bat1},   {9, &profile.bat2},
        {10, &profile.hpdil},   {11, &profile.hpo2},     {12, &profile.cella}, {13, &profile.cellb},
        {14, &profile.cellc},   {15, &profile.setpoint}, {16, &profile.co2},   {25, &profile.tpm1},
        {26, &profile.tpm2},    {27, &profile.tpm3},     {28, &profile.tpm4},  {29, &profile.tpm5},
        {30, &profile.tpm6},    {31, &profile.tpm7},     {32, &profile.tpm8}};
    int seen = 0;
    for (const SeriesSource& series : kSeriesTable) {
        if (series.check != 15) {
            QCOMPARE(&series.array(profile), arrays[series.column]);
            ++seen;
        }
    }
    QCOMPARE(seen, static_cast<int>(arrays.size()));
}

void TestChartData::rowAndColumnZeroStayEmpty() {
    const ChartMatrix matrix = chartMatrix(dive(5), 8, checked({1, 2, 3, 5, 6, 7, 8, 9, 10, 11, 12, 14}));
    QCOMPARE(matrix.lastRow(), 8);
    QCOMPARE(ChartMatrix::columns, 41);
    for (int column = 0; column < ChartMatrix::columns; ++column) {
        QVERIFY(std::isnan(matrix.at(0, column)));
    }
    for (int row = 0; row < matrix.lastRow() + 1; ++row) {
        QVERIFY(std::isnan(matrix.at(row, 0)));
    }
}

void TestChartData::everySampleGoesToTheChart() {
    const DiveProfile profile = dive(24997);
    const int lastsample = profile.lastsample - 1;
    QCOMPARE(lastsample, 25000);
    const ChartMatrix matrix = chartMatrix(profile, lastsample, checked({1, 5}));
    QCOMPARE(matrix.lastRow(), 25000);
    for (int row = 1; row <= lastsample; ++row) {
        QCOMPARE(matrix.at(row, 1), static_cast<double>(sampleOf(profile.depthneg, row)));
    }
    QCOMPARE(matrix.at(3, 5), 0.0);
    QCOMPARE(matrix.at(25000, 5), 20.0);
}

void TestChartData::depthAndCeilingAreNegativeDownward() {
    const ChartMatrix matrix = chartMatrix(dive(5), 8, checked({1, 11}));
    QCOMPARE(matrix.at(8, 1), static_cast<double>(-0.47F));
    QCOMPARE(matrix.at(8, 4), -6.0);
}

void TestChartData::ambientAloneChangesNothingAndWithCo2Corrects() {
    const DiveProfile profile = decodeProfile(wholeDive({",640,0,70,M0,T20,A500,z77"}), false); // 60 m
    QVERIFY(filledColumns(chartMatrix(profile, 4, checked({13}))).empty());
    const ChartMatrix plain = chartMatrix(profile, 4, checked({14}));
    QCOMPARE(plain.at(4, 16), static_cast<double>(0.77F));
    const ChartMatrix ambient = chartMatrix(profile, 4, checked({13, 14}));
    QCOMPARE(ambient.at(4, 16), static_cast<double>(0.77F) * (60.0 * 0.1 + 1.01));
    QCOMPARE(filledColumns(ambient), std::set<int>{16});
}

void TestChartData::theLastCheckedMeterBoxWins() {
    const DiveProfile profile = decodeProfile(
        wholeDive({",1,0,70,M0,T20,A500,S1", ",1,0,70,M0,T20,A500,S2", ",1,0,70,M0,T20,A500,S3"}), false);
    // At sample 4 the first stick of the three holds 3, the second 1 and the third 2.
    QCOMPARE(chartMatrix(profile, 6, checked({6})).at(5, 25), 2.0);
    QCOMPARE(chartMatrix(profile, 6, checked({6}, {0})).at(4, 25), 3.0);
    QCOMPARE(chartMatrix(profile, 6, checked({6}, {0, 1})).at(4, 25), 1.0);
    QCOMPARE(chartMatrix(profile, 6, checked({6}, {0, 2})).at(4, 25), 2.0);
    QCOMPARE(chartMatrix(profile, 6, checked({}, {1})).at(6, 25), 0.0);
}

void TestChartData::sticksOneAndTwoExcludeEachOther() {
    SeriesBoxes boxes;
    setCheck15(boxes, 0, true);
    setCheck15(boxes, 1, true);
    QCOMPARE(boxes.check15.to_ulong(), 0b011UL);
    setCheck15(boxes, 2, true);
    QCOMPARE(boxes.check15.to_ulong(), 0b101UL);
    setCheck15(boxes, 1, true);
    QCOMPARE(boxes.check15.to_ulong(), 0b011UL);
    setCheck15(boxes, 1, false);
    setCheck15(boxes, 0, false);
    QCOMPARE(boxes.check15.to_ulong(), 0UL);
}

namespace {

/// A matrix whose cells tell their row.
ChartMatrix numbered(int lastsample) {
    ChartMatrix matrix(lastsample);
    for (int column = 1; column < ChartMatrix::columns; ++column) {
        for (int row = 1; row <= lastsample; ++row) {
            matrix.set(row, column, row);
        }
    }
    return matrix;
}

ZoomState page(int number) {
    ZoomState zoom;
    zoom.zoomfactor = 10;
    zoom.zoompage = number;
    return zoom;
}

} // namespace

void TestChartData::thePageOfAZoomedViewIsATenth() {
    const ChartMatrix matrix = numbered(400);
    for (int number = 1; number <= 10; ++number) {
        const ChartMatrix zoomed = zoomedMatrix(matrix, 400, page(number));
        QCOMPARE(zoomed.lastRow(), 40);
        QVERIFY(std::isnan(zoomed.at(0, 1)));
        QCOMPARE(zoomed.at(1, 1), 40.0 * (number - 1) + 1.0);
        QCOMPARE(zoomed.at(40, 39), 40.0 * number);
    }
}

void TestChartData::pageTenOf1005RowsLeavesTheLastFiveOut() {
    const ChartMatrix zoomed = zoomedMatrix(numbered(1005), 1005, page(10));
    QCOMPARE(zoomed.lastRow(), 100);
    QCOMPARE(zoomed.at(1, 1), 901.0);
    QCOMPARE(zoomed.at(100, 1), 1000.0);
}

void TestChartData::aRoundedUpPageEndsWithEmptyRows() {
    const ChartMatrix zoomed = zoomedMatrix(numbered(1016), 1016, page(10)); // pages of 102 rows
    QCOMPARE(zoomed.lastRow(), 102);
    QCOMPARE(zoomed.at(1, 1), 919.0);
    QCOMPARE(zoomed.at(98, 1), 1016.0);
    QVERIFY(std::isnan(zoomed.at(99, 1)));
    QVERIFY(std::isnan(zoomed.at(102, 1)));
}

void TestChartData::columnFortyIsNotCarriedIntoTheZoomedView() {
    const ChartMatrix zoomed = zoomedMatrix(numbered(400), 400, page(1));
    QCOMPARE(ChartMatrix::columns, 41);
    QCOMPARE(zoomed.at(1, 39), 1.0);
    QVERIFY(std::isnan(zoomed.at(1, 40)));
    QVERIFY(std::isnan(zoomed.at(1, 0)));
}

void TestChartData::anEmptyDiveHasAMatrixOfItsLead() {
    const DiveProfile profile = decodeProfile("", false);
    const ChartMatrix matrix = chartMatrix(profile, profile.lastsample - 1, checked({1}));
    QCOMPARE(matrix.lastRow(), 3);
    QCOMPARE(matrix.at(3, 1), 0.0);
    QCOMPARE(chartMatrix(profile, -5, checked({1})).lastRow(), 0);
    QCOMPARE(zoomedMatrix(matrix, 3, page(1)).lastRow(), 0);
}

void TestChartData::theLeftAxisHasTheUnitThatAllItsSeriesShare_data() {
    QTest::addColumn<QList<int>>("boxes");
    QTest::addColumn<bool>("feet");
    QTest::addColumn<QString>("unit");
    QTest::newRow("nothing") << QList<int>{} << false << "";
    QTest::newRow("depth and ceiling go by the other axis") << QList<int>{1, 11} << false << "";
    QTest::newRow("oxygen") << QList<int>{1, 3, 9, 10, 11} << false << "bar";
    QTest::newRow("temperature") << QList<int>{1, 5} << false << "C";
    QTest::newRow("temperature with feet") << QList<int>{1, 5} << true << "F";
    QTest::newRow("batteries") << QList<int>{7} << false << "V";
    QTest::newRow("cylinders") << QList<int>{8} << false << "bar";
    QTest::newRow("cylinders with feet") << QList<int>{8} << true << "psi";
    QTest::newRow("filter") << QList<int>{12} << false << "%";
    QTest::newRow("carbon dioxide") << QList<int>{13, 14} << false << "mB";
    QTest::newRow("gas numbers have none") << QList<int>{2} << false << "";
    QTest::newRow("two units") << QList<int>{3, 5} << false << "";
    QTest::newRow("a unit and none") << QList<int>{2, 3} << false << "";
}

void TestChartData::theLeftAxisHasTheUnitThatAllItsSeriesShare() {
    QFETCH(QList<int>, boxes);
    QFETCH(bool, feet);
    QFETCH(QString, unit);
    SeriesBoxes series;
    for (const int box : boxes) {
        series.check.set(static_cast<size_t>(box));
    }
    QCOMPARE(leftAxisUnit(series, feet), unit);
}

QTEST_GUILESS_MAIN(TestChartData)
#include "test_chartdata.moc"
