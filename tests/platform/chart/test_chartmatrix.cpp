#include "platform/chart/chartmatrix.h"

#include <QtTest>

using benthor::platform::ChartMatrix;

class TestChartMatrix : public QObject {
    Q_OBJECT

private slots:
    void cellsAreEmptyUntilWritten();
    void aWrittenCellHoldsItsValue();
    void rowZeroAndColumnZeroStayEmpty();
    void whatLiesOutsideIsIgnored();
    void aValueThatIsNotFiniteLeavesTheCell();
    void aColumnRunsFromRowZeroToTheLast();
    void aMatrixOfNoRowsHoldsNothing();
};

void TestChartMatrix::cellsAreEmptyUntilWritten() {
    const ChartMatrix matrix(3);
    QCOMPARE(matrix.lastRow(), 3);
    for (int row = 0; row <= 3; ++row) {
        for (int column = 0; column < ChartMatrix::columns; ++column)
            QVERIFY(matrix.isEmpty(row, column));
    }
    QVERIFY(!matrix.hasSeries(1));
    QVERIFY(matrix.series(1).empty());
}

void TestChartMatrix::aWrittenCellHoldsItsValue() {
    ChartMatrix matrix(3);
    matrix.set(2, 40, -1.5);
    matrix.set(3, 1, 0);
    QCOMPARE(matrix.at(2, 40), -1.5);
    QCOMPARE(matrix.at(3, 1), 0.0);
    QVERIFY(matrix.isEmpty(1, 40));
    QVERIFY(matrix.isEmpty(2, 1));
    QVERIFY(matrix.hasSeries(40));
    QVERIFY(!matrix.hasSeries(39));
}

void TestChartMatrix::rowZeroAndColumnZeroStayEmpty() {
    ChartMatrix matrix(3);
    matrix.set(0, 1, 5);
    matrix.set(1, 0, 5);
    QVERIFY(matrix.isEmpty(0, 1));
    QVERIFY(matrix.isEmpty(1, 0));
    QVERIFY(!matrix.hasSeries(0));
    QVERIFY(!matrix.hasSeries(1));
}

void TestChartMatrix::whatLiesOutsideIsIgnored() {
    ChartMatrix matrix(3);
    matrix.set(4, 1, 5);
    matrix.set(-1, 1, 5);
    matrix.set(1, 41, 5);
    matrix.set(1, -1, 5);
    QVERIFY(matrix.isEmpty(4, 1));
    QVERIFY(matrix.isEmpty(-1, 1));
    QVERIFY(matrix.isEmpty(1, 41));
    QVERIFY(matrix.isEmpty(1, -1));
    QVERIFY(!matrix.hasSeries(41));
}

void TestChartMatrix::aValueThatIsNotFiniteLeavesTheCell() {
    ChartMatrix matrix(3);
    matrix.set(1, 1, 5);
    matrix.set(1, 1, ChartMatrix::empty);
    matrix.set(1, 1, std::numeric_limits<double>::infinity());
    matrix.set(2, 1, -std::numeric_limits<double>::infinity());
    QCOMPARE(matrix.at(1, 1), 5.0);
    QVERIFY(matrix.isEmpty(2, 1));
}

void TestChartMatrix::aColumnRunsFromRowZeroToTheLast() {
    ChartMatrix matrix(3);
    matrix.set(3, 2, 7);
    const std::span<const double> column = matrix.series(2);
    QCOMPARE(column.size(), size_t(4));
    QVERIFY(std::isnan(column[0]));
    QVERIFY(std::isnan(column[1]));
    QCOMPARE(column[3], 7.0);
}

void TestChartMatrix::aMatrixOfNoRowsHoldsNothing() {
    ChartMatrix matrix;
    matrix.set(0, 1, 5);
    matrix.set(1, 1, 5);
    QCOMPARE(matrix.lastRow(), 0);
    QVERIFY(!matrix.hasSeries(1));
    QCOMPARE(ChartMatrix(-4).lastRow(), 0);
}

QTEST_APPLESS_MAIN(TestChartMatrix)
#include "test_chartmatrix.moc"
