#include "platform/chart/chart.h"

#include <QtTest>

using namespace benthor::platform;

namespace {

ChartMatrix flat(int rows, int series, double value) {
    ChartMatrix matrix(rows);
    for (int row = 1; row <= rows; ++row)
        matrix.set(row, series, value);
    return matrix;
}

/// The row that an X in twips stands for in a dive of `rows` rows, as the screen counts it.
int rowAt(double twips, int rows) {
    int row = static_cast<int>(std::trunc((twips - Chart::plotLeftTwips) / Chart::plotWidthTwips * rows)) + 1;
    row = std::max(1, std::min(row, rows - 1));
    return row > 1 ? row - 1 : row;
}

} // namespace

class TestChart : public QObject {
    Q_OBJECT

private slots:
    void thePlotAreaKeepsItsShareAtEverySize_data();
    void thePlotAreaKeepsItsShareAtEverySize();
    void theAxesDrawWhereThePlotAreaIsTold();
    void edgesOfThePlotAreaInTwips();
    void placesBesideThePlotGoOnInTwips();
    void twipsLeadBackToTheirPlace();
    void aPressOnADrawnRowPicksItOrItsNeighbour_data();
    void aPressOnADrawnRowPicksItOrItsNeighbour();
    void pressAndReleaseAreToldInTwips();
    void otherButtonsAreNotTold();
    void aSecondPressOfADoubleClickIsTold();
    void movingIsToldInTwips();
    void scalesFollowTheData();
    void aSeriesMovedToTheOtherAxisCountsThere();
    void unknownSeriesAreIgnored();
    void theCursorMovesWithoutTheSeries();
    void manyChangesAreDrawnOnce();
    void theCursorStaysWhenDataChange();
    void aChartWithoutDataIsDrawn();
    void aMatrixOfEmptyCellsIsDrawn();
    void aSingleRowIsDrawn();
    void aPictureTooSmallForAPlotIsDrawn();
};

void TestChart::thePlotAreaKeepsItsShareAtEverySize_data() {
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("left");
    QTest::addColumn<int>("right");
    QTest::newRow("640") << 640 << 36 << 605;
    QTest::newRow("874") << 874 << 50 << 827;
    QTest::newRow("1024") << 1024 << 58 << 969;
    QTest::newRow("1920") << 1920 << 109 << 1816;
}

void TestChart::thePlotAreaKeepsItsShareAtEverySize() {
    QFETCH(int, width);
    QFETCH(int, left);
    QFETCH(int, right);
    Chart chart;
    chart.resize(width, 400);
    QCOMPARE(chart.plotLeft(), left);
    QCOMPARE(chart.plotLeft() + chart.plotWidth(), right);
}

void TestChart::theAxesDrawWhereThePlotAreaIsTold() {
    Chart chart;
    chart.resize(1024, 500);
    chart.setData(flat(10, 1, -5));
    chart.refresh();
    QCOMPARE(chart.axisRect()->rect(), chart.plotArea());
    chart.setTitle("A title");
    chart.refresh();
    QCOMPARE(chart.axisRect()->rect(), chart.plotArea());
    chart.resize(700, 300);
    chart.refresh();
    QCOMPARE(chart.axisRect()->rect(), chart.plotArea());
    const QPixmap printed = chart.toPixmap(1920, 1080); // another size than that of the widget
    QCOMPARE(printed.size(), QSize(1920, 1080));
    chart.refresh();
    QCOMPARE(chart.axisRect()->rect(), chart.plotArea());
}

void TestChart::edgesOfThePlotAreaInTwips() {
    Chart chart;
    chart.resize(1024, 500);
    QCOMPARE(chart.xTwips(chart.plotLeft()), 645.0);
    QCOMPARE(chart.xTwips(chart.plotLeft() + chart.plotWidth()), 10710.0);
    QCOMPARE(chart.xTwips(chart.plotLeft() + chart.plotWidth() / 2.0), 645.0 + 10065.0 / 2);
    QCOMPARE(Chart::yTwips(20), 300.0);
}

void TestChart::placesBesideThePlotGoOnInTwips() {
    Chart chart;
    chart.resize(1024, 500);
    QVERIFY(chart.xTwips(0) < 645);
    QVERIFY(chart.xTwips(1023) > 10710);
    QCOMPARE(rowAt(chart.xTwips(0), 500), 1);
    QCOMPARE(rowAt(chart.xTwips(1023), 500), 498);
}

void TestChart::twipsLeadBackToTheirPlace() {
    Chart chart;
    chart.resize(1024, 500);
    for (const double x : {0.0, 58.0, 300.5, 969.0})
        QVERIFY(std::abs(chart.xOfTwips(chart.xTwips(x)) - x) < 1e-9);
}

void TestChart::aPressOnADrawnRowPicksItOrItsNeighbour_data() {
    QTest::addColumn<int>("rows");
    QTest::newRow("few rows") << 12;
    QTest::newRow("a row for each second pixel") << 400;
    QTest::newRow("nearly a row for each pixel") << 800;
}

void TestChart::aPressOnADrawnRowPicksItOrItsNeighbour() {
    QFETCH(int, rows);
    Chart chart;
    chart.resize(1024, 500);
    chart.setData(flat(rows, 1, -5));
    for (int row = 1; row < rows; ++row) {
        const int picked = rowAt(chart.xTwips(std::round(chart.xOfRow(row))), rows);
        QVERIFY2(std::abs(picked - row) <= 1, qPrintable(QString("row %1 picks %2").arg(row).arg(picked)));
    }
}

void TestChart::pressAndReleaseAreToldInTwips() {
    Chart chart;
    chart.resize(1024, 500);
    QSignalSpy pressed(&chart, &Chart::pressed);
    QSignalSpy released(&chart, &Chart::released);
    QTest::mousePress(&chart, Qt::LeftButton, {}, QPoint(chart.plotLeft(), 100));
    QCOMPARE(pressed.count(), 1);
    QCOMPARE(released.count(), 0);
    QCOMPARE(pressed[0][0].toDouble(), 645.0);
    QCOMPARE(pressed[0][1].toDouble(), 1500.0);
    QTest::mouseRelease(&chart, Qt::LeftButton, {}, QPoint(chart.plotLeft() + chart.plotWidth(), 40));
    QCOMPARE(released.count(), 1);
    QCOMPARE(released[0][0].toDouble(), 10710.0);
    QCOMPARE(released[0][1].toDouble(), 600.0);
}

void TestChart::otherButtonsAreNotTold() {
    Chart chart;
    chart.resize(1024, 500);
    QSignalSpy pressed(&chart, &Chart::pressed);
    QSignalSpy released(&chart, &Chart::released);
    QTest::mouseClick(&chart, Qt::RightButton, {}, QPoint(200, 100));
    QCOMPARE(pressed.count() + released.count(), 0);
}

void TestChart::aSecondPressOfADoubleClickIsTold() {
    Chart chart;
    chart.resize(1024, 500);
    QSignalSpy pressed(&chart, &Chart::pressed);
    const QPointF at(200, 100);
    QMouseEvent second(QEvent::MouseButtonDblClick, at, at, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&chart, &second);
    QCOMPARE(pressed.count(), 1);
}

void TestChart::movingIsToldInTwips() {
    Chart chart;
    chart.resize(1024, 500);
    QSignalSpy hovered(&chart, &Chart::hovered);
    const QPointF at(chart.plotLeft() + chart.plotWidth() / 4.0, 10);
    QMouseEvent move(QEvent::MouseMove, at, at, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&chart, &move);
    QCOMPARE(hovered.count(), 1);
    QCOMPARE(hovered[0][0].toDouble(), 645 + 10065 / 4.0);
    QCOMPARE(hovered[0][1].toDouble(), 150.0);
}

void TestChart::scalesFollowTheData() {
    Chart chart;
    chart.resize(1024, 500);
    ChartMatrix matrix = flat(20, 1, -63);
    matrix.set(5, 3, 1.4);
    chart.setData(matrix);
    QCOMPARE(chart.rightScale().lower, -70.0);
    QCOMPARE(chart.leftScale().upper, 3.5);
    QCOMPARE(chart.axisRect()->axis(QCPAxis::atRight)->range(), QCPRange(-70, 0));
    QCOMPARE(chart.axisRect()->axis(QCPAxis::atLeft)->range(), QCPRange(0, 3.5));
    QCOMPARE(chart.axisRect()->axis(QCPAxis::atBottom)->range(), QCPRange(0, 20));
    const auto ticker = chart.axisRect()->axis(QCPAxis::atRight)->ticker().dynamicCast<QCPAxisTickerText>();
    QVERIFY(ticker);
    QCOMPARE(ticker->ticks().values(), QList<QString>({"70", "60", "50", "40", "30", "20", "10", "0"}));
    chart.setData(flat(20, 1, -12));
    QCOMPARE(chart.rightScale().lower, -14.0);
    QVERIFY(chart.leftScale().labels.empty());
}

void TestChart::aSeriesMovedToTheOtherAxisCountsThere() {
    Chart chart;
    chart.setData(flat(20, 7, 80));
    QCOMPARE(chart.leftScale().upper, 200.0);
    SeriesStyle style = chart.seriesStyle(7);
    style.axis = ChartAxis::Right;
    chart.setSeriesStyle(7, style);
    QVERIFY(chart.leftScale().labels.empty());
    QVERIFY(!chart.rightScale().labels.empty());
}

void TestChart::unknownSeriesAreIgnored() {
    Chart chart;
    SeriesStyle style;
    style.width = 9;
    chart.setSeriesStyle(41, style);
    chart.setSeriesStyle(0, style);
    chart.setMarker(-1, {});
    for (int series = 1; series < ChartMatrix::columns; ++series)
        QVERIFY(chart.seriesStyle(series).width < 9);
    QVERIFY(chart.seriesStyle(0).width < 9);
}

void TestChart::theCursorMovesWithoutTheSeries() {
    Chart chart;
    chart.resize(1024, 500);
    chart.setData(flat(20, 1, -5));
    chart.show();
    QVERIFY(QTest::qWaitForWindowExposed(&chart));
    chart.grab();
    QSignalSpy redrawn(&chart, &QCustomPlot::afterReplot);
    chart.setCurrentRow(5);
    chart.setCurrentRow(15);
    chart.grab();
    QCOMPARE(chart.row(), 15);
    QCOMPARE(redrawn.count(), 0);
}

void TestChart::manyChangesAreDrawnOnce() {
    Chart chart;
    chart.resize(1024, 500);
    chart.show();
    QVERIFY(QTest::qWaitForWindowExposed(&chart));
    chart.grab();
    QSignalSpy redrawn(&chart, &QCustomPlot::afterReplot);
    for (int series = 1; series <= 40; ++series)
        chart.setSeriesStyle(series, chart.seriesStyle(series));
    chart.setData(flat(20, 1, -5));
    chart.setUnits("m", "bar");
    QCOMPARE(redrawn.count(), 0);
    chart.grab();
    QCOMPARE(redrawn.count(), 1);
}

void TestChart::theCursorStaysWhenDataChange() {
    Chart chart;
    chart.setData(flat(20, 1, -5));
    chart.setCurrentRow(7);
    chart.setData(flat(5, 1, -5)); // the cursor's row is gone, its number is kept
    chart.refresh();
    QCOMPARE(chart.row(), 7);
}

void TestChart::aChartWithoutDataIsDrawn() {
    Chart chart;
    chart.resize(640, 300);
    const QImage picture = chart.grab().toImage();
    QCOMPARE(picture.pixelColor(5, 5), chart.colours().backdrop);
    QVERIFY(picture.pixelColor(chart.plotLeft(), 150) != chart.colours().backdrop); // the frame
    chart.setCurrentRow(3);
    QCOMPARE(chart.grab().toImage(), picture);
}

void TestChart::aMatrixOfEmptyCellsIsDrawn() {
    Chart chart;
    chart.resize(640, 300);
    const QImage blank = chart.grab().toImage();
    chart.setData(ChartMatrix(25000));
    QCOMPARE(chart.grab().toImage(), blank);
}

void TestChart::aSingleRowIsDrawn() {
    Chart chart;
    chart.resize(640, 300);
    const QImage blank = chart.grab().toImage();
    ChartMatrix matrix(1);
    matrix.set(1, 3, 1.2);
    chart.setData(matrix);
    QCOMPARE(chart.leftScale().upper, 3.0);
    QVERIFY(chart.grab().toImage() != blank);
    QCOMPARE(chart.xOfRow(1), double(chart.plotLeft() + chart.plotWidth()));
}

void TestChart::aPictureTooSmallForAPlotIsDrawn() {
    Chart chart;
    chart.setData(flat(5000, 1, -5));
    chart.setCurrentRow(20);
    QCOMPARE(chart.toPixmap(4, 4).size(), QSize(4, 4));
    chart.setMinimumSize(0, 0);
    chart.resize(1, 1);
    QCOMPARE(chart.grab().size(), QSize(1, 1));
}

QTEST_MAIN(TestChart)
#include "test_chart.moc"
