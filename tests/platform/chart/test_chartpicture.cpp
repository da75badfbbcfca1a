// What is drawn, by the pixels of the picture.

#include "platform/chart/chart.h"

#include <QtTest>

using namespace benthor::platform;

namespace {

constexpr QSize chartSize(900, 500);

ChartMatrix flat(int rows, int series, double value) {
    ChartMatrix matrix(rows);
    for (int row = 1; row <= rows; ++row)
        matrix.set(row, series, value);
    return matrix;
}

bool alike(const QColor& a, const QColor& b, int tolerance = 40) {
    return std::abs(a.red() - b.red()) <= tolerance && std::abs(a.green() - b.green()) <= tolerance &&
           std::abs(a.blue() - b.blue()) <= tolerance;
}

/// A chart that is drawn without grid lines, so that pixels are pen, fill or backdrop.
class PlainChart : public Chart {
public:
    PlainChart() {
        resize(chartSize);
        ChartColours plain;
        plain.grid = plain.backdrop;
        setColours(plain);
    }

    QImage picture() { return grab().toImage(); }

    /// How many pixels of the column at `row`, within the plot, look like `colour`.
    int count(const QImage& image, double row, const QColor& colour) const {
        const int x = qRound(xOfRow(row));
        int found = 0;
        for (int y = plotArea().top() + 1; y < plotArea().bottom() - 1; ++y)
            found += alike(image.pixelColor(x, y), colour);
        return found;
    }

    QColor at(const QImage& image, double row, double value, ChartAxis axis, int below = 0) const {
        return image.pixelColor(qRound(xOfRow(row)), qRound(yOfValue(value, axis)) + below);
    }
};

} // namespace

class TestChartPicture : public QObject {
    Q_OBJECT

private slots:
    void depthIsALineWithAFillBelow_data();
    void depthIsALineWithAFillBelow();
    void ceilingIsFilledAboveAndOpenWaterStaysBlank_data();
    void ceilingIsFilledAboveAndOpenWaterStaysBlank();
    void aCeilingAtTheSurfaceIsNotSeen();
    void stepsHoldTheirValueUntilTheNextRow();
    void aSeriesAppearsAndDisappears();
    void otherSeriesGoByTheLeftAxis();
    void emptyCellsBreakTheLine_data();
    void emptyCellsBreakTheLine();
    void aSinglePointBetweenGapsIsSeen();
    void aSpikeAmongManyRowsIsSeen();
    void manyRowsGiveThePictureOfFew();
    void aDashedLineHasGaps_data();
    void aDashedLineHasGaps();
    void anUprightStepIsNotLostBetweenDashes();
    void theCursorStandsAtItsRow();
    void theCursorMovesAway();
    void aCursorBehindTheLastRowStandsAtTheEdgeWhereThatIsTold();
    void theRingStandsOnTheDepthLine();
    void theBackdropCoversTheWholeChart();
    void rowLinesAreDrawn();
    void markersAreDrawnWhereVisible();
    void axisLabelsStandBesideThePlot();
    void theOutermostLabelsAreDrawnInEveryFont_data();
    void theOutermostLabelsAreDrawnInEveryFont();
    void labelsKeepClearOfTheEdgeOfANarrowChart();
    void gridLinesShowThroughTheFill();
    void thousandsOfRowsInEverySeriesAreDrawn();
};

void TestChartPicture::depthIsALineWithAFillBelow_data() {
    QTest::addColumn<int>("rows");
    QTest::newRow("rows apart") << 100;
    QTest::newRow("many rows in a pixel") << 24997;
}

void TestChartPicture::depthIsALineWithAFillBelow() {
    QFETCH(int, rows);
    PlainChart chart;
    ChartMatrix matrix = flat(rows, 1, -10);
    matrix.set(1, 1, -20);
    chart.setData(matrix);
    const QImage picture = chart.picture();
    const SeriesStyle style = chart.seriesStyle(1);
    const double row = rows * 0.4; // away from the grid lines at the quarters
    QVERIFY(alike(chart.at(picture, row, -10, ChartAxis::Right), style.colour));
    QCOMPARE(chart.at(picture, row, -10, ChartAxis::Right, -5), chart.colours().backdrop);
    QCOMPARE(chart.at(picture, row, -10, ChartAxis::Right, 5), style.fill);
    QCOMPARE(chart.at(picture, row, -19.8, ChartAxis::Right), style.fill);
    QVERIFY(chart.count(picture, row, style.colour) >= 1);
    QVERIFY(chart.count(picture, row, style.colour) <= 3);
}

void TestChartPicture::ceilingIsFilledAboveAndOpenWaterStaysBlank_data() {
    depthIsALineWithAFillBelow_data();
}

void TestChartPicture::ceilingIsFilledAboveAndOpenWaterStaysBlank() {
    QFETCH(int, rows);
    PlainChart chart;
    ChartMatrix matrix = flat(rows, 1, -15);
    for (int row = 1; row <= rows; ++row)
        matrix.set(row, 4, -6);
    chart.setData(matrix);
    const QImage picture = chart.picture();
    const double row = rows * 0.4; // away from the grid lines at the quarters
    QVERIFY(alike(chart.at(picture, row, -6, ChartAxis::Right), chart.seriesStyle(4).colour, 70));
    QCOMPARE(chart.at(picture, row, -3, ChartAxis::Right), chart.seriesStyle(4).fill);
    QCOMPARE(chart.at(picture, row, -0.2, ChartAxis::Right), chart.seriesStyle(4).fill);
    QCOMPARE(chart.at(picture, row, -10, ChartAxis::Right), chart.colours().backdrop);
    QCOMPARE(chart.at(picture, row, -15.7, ChartAxis::Right), chart.seriesStyle(1).fill);
}

void TestChartPicture::aCeilingAtTheSurfaceIsNotSeen() {
    PlainChart chart;
    ChartMatrix matrix(100);
    matrix.set(1, 1, -20); // gives the axis its extent
    chart.setData(matrix);
    const QImage without = chart.picture();
    for (int row = 1; row <= 100; ++row)
        matrix.set(row, 4, 0);
    chart.setData(matrix);
    QCOMPARE(chart.count(chart.picture(), 50, chart.seriesStyle(4).colour), 0);
    QCOMPARE(chart.picture(), without);
}

void TestChartPicture::stepsHoldTheirValueUntilTheNextRow() {
    PlainChart chart;
    ChartMatrix matrix(10);
    for (int row = 1; row <= 10; ++row)
        matrix.set(row, 4, row <= 5 ? -4 : -8);
    chart.setData(matrix);
    const QImage picture = chart.picture();
    const QColor fill = chart.seriesStyle(4).fill;
    QCOMPARE(chart.at(picture, 5.9, -3.5, ChartAxis::Right), fill);
    QCOMPARE(chart.at(picture, 5.9, -5.5, ChartAxis::Right), chart.colours().backdrop);
    QCOMPARE(chart.at(picture, 6.1, -5.5, ChartAxis::Right), fill);
}

void TestChartPicture::aSeriesAppearsAndDisappears() {
    PlainChart chart;
    const QImage blank = chart.picture();
    chart.setData(flat(50, 3, 1.2));
    const QImage with = chart.picture();
    QVERIFY(chart.count(with, 25, chart.seriesStyle(3).colour) >= 1);
    chart.setData(ChartMatrix(50));
    QCOMPARE(chart.count(chart.picture(), 25, chart.seriesStyle(3).colour), 0);
    QCOMPARE(chart.picture(), blank);
}

void TestChartPicture::otherSeriesGoByTheLeftAxis() {
    PlainChart chart;
    chart.setData(flat(50, 3, 1.2));
    const QImage picture = chart.picture();
    const QRect plot = chart.plotArea();
    const int y = plot.bottom() - plot.height() * 2 / 5; // the largest value stands at 1 / 2.5 of the height
    int nearest = 1000;
    for (int line = plot.top() + 2; line < plot.bottom() - 2; ++line) {
        if (alike(picture.pixelColor(qRound(chart.xOfRow(25)), line), chart.seriesStyle(3).colour))
            nearest = std::min(nearest, std::abs(line - y));
    }
    QVERIFY(nearest <= 1);
}

void TestChartPicture::emptyCellsBreakTheLine_data() {
    QTest::addColumn<int>("rows");
    QTest::newRow("rows apart") << 100;
    QTest::newRow("many rows in a pixel") << 20000;
}

void TestChartPicture::emptyCellsBreakTheLine() {
    QFETCH(int, rows);
    PlainChart chart;
    ChartMatrix matrix(rows);
    for (int row = 1; row <= rows; ++row) {
        if (row < rows * 0.4 || row > rows * 0.6)
            matrix.set(row, 1, -10);
    }
    chart.setData(matrix);
    const QImage picture = chart.picture();
    const SeriesStyle style = chart.seriesStyle(1);
    for (const double part : {0.3, 0.7})
        QVERIFY(chart.count(picture, rows * part, style.colour) >= 1);
    QCOMPARE(chart.count(picture, rows * 0.5, style.colour), 0);
    QCOMPARE(chart.count(picture, rows * 0.5, chart.colours().backdrop), chart.plotArea().height() - 3);
}

void TestChartPicture::aSinglePointBetweenGapsIsSeen() {
    PlainChart chart;
    ChartMatrix matrix(100);
    matrix.set(50, 3, 1);
    chart.setData(matrix);
    QVERIFY(chart.count(chart.picture(), 50, chart.seriesStyle(3).colour) >= 1);
}

void TestChartPicture::aSpikeAmongManyRowsIsSeen() {
    PlainChart chart;
    ChartMatrix matrix = flat(24997, 3, 1);
    matrix.set(12000, 3, 2);
    chart.setData(matrix);
    const QImage picture = chart.picture();
    const QColor pen = chart.seriesStyle(3).colour;
    const int spike = chart.count(picture, 12000, pen);
    QVERIFY2(spike > chart.plotArea().height() / 8, qPrintable(QString::number(spike)));
    QVERIFY(chart.count(picture, 11500, pen) <= 3);
}

void TestChartPicture::manyRowsGiveThePictureOfFew() {
    const auto wave = [](int rows) {
        ChartMatrix matrix(rows);
        for (int row = 1; row <= rows; ++row)
            matrix.set(row, 1, -20 + 18 * std::sin(12.0 * row / rows));
        return matrix;
    };
    PlainChart chart;
    chart.setData(wave(400));
    const QImage few = chart.picture();
    chart.setData(wave(20000));
    const QImage many = chart.picture();
    int different = 0;
    const QRect plot = chart.plotArea();
    for (int y = plot.top(); y < plot.bottom(); ++y) {
        for (int x = plot.left() + 5; x < plot.right() - 5; ++x)
            different += !alike(few.pixelColor(x, y), many.pixelColor(x, y), 90);
    }
    // The line alone covers some 4,000 pixels: no part of it may stand elsewhere.
    QVERIFY2(different < 200, qPrintable(QString::number(different)));
}

void TestChartPicture::aDashedLineHasGaps_data() {
    depthIsALineWithAFillBelow_data();
}

void TestChartPicture::aDashedLineHasGaps() {
    QFETCH(int, rows);
    PlainChart chart;
    SeriesStyle style = chart.seriesStyle(3);
    style.width = 2;
    style.dashes = {6, 4};
    chart.setSeriesStyle(3, style);
    chart.setData(flat(rows, 3, 1));
    const QImage picture = chart.picture();
    int drawn = 0;
    int blank = 0;
    for (int x = chart.plotLeft() + 100; x < chart.plotLeft() + 400; ++x) {
        int inColumn = 0;
        for (int y = chart.plotArea().top() + 1; y < chart.plotArea().bottom() - 1; ++y)
            inColumn += alike(picture.pixelColor(x, y), style.colour);
        ++(inColumn > 0 ? drawn : blank);
    }
    // Strokes of 12 pixels, gaps of 8.
    QVERIFY2(drawn > 160 && drawn < 200, qPrintable(QString::number(drawn)));
    QVERIFY2(blank > 100 && blank < 140, qPrintable(QString::number(blank)));
}

void TestChartPicture::anUprightStepIsNotLostBetweenDashes() {
    PlainChart chart;
    SeriesStyle style = chart.seriesStyle(15);
    style.width = 2;
    style.dashes = {1, 40};
    style.step = true;
    chart.setSeriesStyle(15, style);
    ChartMatrix matrix(24997);
    for (int row = 1; row <= 24997; ++row)
        matrix.set(row, 15, row < 10000 ? 0.7 : 1.3);
    chart.setData(matrix);
    const QImage picture = chart.picture();
    int tallest = 0;
    for (int away = -3; away <= 3; ++away)
        tallest = std::max(tallest, chart.count(picture, 10000 + away * 31, style.colour));
    QVERIFY(tallest > 50);
}

void TestChartPicture::theCursorStandsAtItsRow() {
    PlainChart chart;
    chart.setData(ChartMatrix(100));
    chart.setCurrentRow(30);
    const QImage picture = chart.picture();
    const int height = chart.plotArea().height();
    int widths = 0;
    for (int x = qRound(chart.xOfRow(30)) - 4; x <= qRound(chart.xOfRow(30)) + 4; ++x) {
        int dark = 0;
        for (int y = chart.plotArea().top() + 1; y < chart.plotArea().bottom() - 1; ++y)
            dark += picture.pixelColor(x, y) == chart.colours().cursor;
        widths += dark >= height - 4;
    }
    QCOMPARE(widths, 2);
    QVERIFY(chart.count(picture, 30, chart.colours().cursor) >= height - 4);
}

void TestChartPicture::theCursorMovesAway() {
    PlainChart chart;
    chart.setData(flat(100, 1, -10));
    const QImage without = chart.picture();
    chart.setCurrentRow(30);
    QVERIFY(chart.picture() != without);
    chart.setCurrentRow(70);
    const QImage moved = chart.picture();
    QVERIFY(chart.count(moved, 30, chart.colours().cursor) <= 3);
    QVERIFY(chart.count(moved, 70, chart.colours().cursor) > 100);
    chart.setCurrentRow(0);
    QCOMPARE(chart.picture(), without);
    chart.setCurrentRow(101);
    QCOMPARE(chart.picture(), without);
}

void TestChartPicture::aCursorBehindTheLastRowStandsAtTheEdgeWhereThatIsTold() {
    PlainChart chart;
    chart.setData(flat(100, 1, -10));
    chart.setEdgeCursor(true);
    const QImage without = chart.picture();
    chart.setCurrentRow(104);
    QCOMPARE(qRound(chart.cursorX()), qRound(chart.xOfRow(100)));
    const QImage picture = chart.picture();
    QVERIFY(chart.count(picture, 100, chart.colours().cursor) > 100);
    chart.setCurrentRow(0);
    QCOMPARE(chart.picture(), without);
}

void TestChartPicture::theRingStandsOnTheDepthLine() {
    PlainChart chart;
    ChartMatrix matrix = flat(100, 1, -10);
    matrix.set(1, 1, -20);
    chart.setData(matrix);
    chart.setCurrentRow(50);
    const QImage picture = chart.picture();
    // Within the ring the backdrop hides line and cursor.
    QCOMPARE(chart.at(picture, 50, -10, ChartAxis::Right), chart.colours().backdrop);
    QVERIFY(alike(chart.at(picture, 50, -10, ChartAxis::Right, 10), chart.colours().cursor));
    const int broken = chart.count(picture, 50, chart.colours().cursor);
    chart.setData(ChartMatrix(100)); // without a depth line there is no ring
    QVERIFY(chart.count(chart.picture(), 50, chart.colours().cursor) > broken);
}

void TestChartPicture::theBackdropCoversTheWholeChart() {
    PlainChart chart;
    chart.setBackdrop(QColor(240, 240, 240));
    const QImage picture = chart.picture();
    QCOMPARE(picture.pixelColor(2, 2), QColor(240, 240, 240));
    QCOMPARE(picture.pixelColor(chart.plotLeft() + 50, 100), QColor(240, 240, 240));
    QCOMPARE(picture.pixelColor(chartSize.width() - 3, chartSize.height() - 3), QColor(240, 240, 240));
}

void TestChartPicture::rowLinesAreDrawn() {
    PlainChart chart;
    chart.setData(ChartMatrix(100));
    chart.setRowLines({40});
    const QImage picture = chart.picture();
    const int dots = chart.count(picture, 40, chart.colours().axisText);
    QVERIFY2(dots > 60 && dots < 250, qPrintable(QString::number(dots)));
    QCOMPARE(chart.count(picture, 41, chart.colours().axisText), 0);
}

void TestChartPicture::markersAreDrawnWhereVisible() {
    PlainChart chart;
    ChartMatrix matrix(10);
    matrix.set(5, 3, 1);
    chart.setData(matrix);
    SeriesMarker marker{true, 12, MarkerStyle::Square, QColor(0, 200, 0)};
    chart.setMarker(3, marker);
    const int marked = chart.count(chart.picture(), 5, marker.fill);
    QVERIFY2(marked >= 11 && marked <= 13, qPrintable(QString::number(marked)));
    marker.visible = false;
    chart.setMarker(3, marker);
    QCOMPARE(chart.count(chart.picture(), 5, marker.fill), 0);
}

void TestChartPicture::axisLabelsStandBesideThePlot() {
    PlainChart chart;
    ChartMatrix matrix = flat(100, 1, -63);
    matrix.set(5, 3, 1.4);
    chart.setData(matrix);
    const auto ink = [&chart](const QRect& area) {
        const QImage picture = chart.picture();
        int found = 0;
        for (int y = area.top(); y <= area.bottom(); ++y) {
            for (int x = area.left(); x <= area.right(); ++x)
                found += picture.pixelColor(x, y) != chart.colours().backdrop;
        }
        return found;
    };
    const QRect plot = chart.plotArea();
    const auto beside = [&](double value, ChartAxis axis) {
        const int y = qRound(chart.yOfValue(value, axis));
        return axis == ChartAxis::Right ? QRect(plot.right() + 3, y - 6, 40, 12)
                                        : QRect(2, y - 6, plot.left() - 10, 12);
    };
    QVERIFY(ink(beside(-10, ChartAxis::Right)) > 10);
    QVERIFY(ink(beside(-60, ChartAxis::Right)) > 10);
    QVERIFY(ink(beside(0.4, ChartAxis::Left)) > 10);
    QCOMPARE(ink(beside(2.4, ChartAxis::Left)), 0); // above the largest value nothing is labelled
    QCOMPARE(ink(beside(-65, ChartAxis::Right)), 0);
    chart.setUnits("m", "bar");
    QVERIFY(ink(beside(-65, ChartAxis::Right)) > 5);
    QVERIFY(ink(beside(1.6 + 0.6 * 0.4, ChartAxis::Left)) > 10);
}

/// A label that the picture's edge would cut is not drawn at all.
void TestChartPicture::theOutermostLabelsAreDrawnInEveryFont_data() {
    QTest::addColumn<int>("pixels");
    for (const int pixels : {9, 11, 15, 22, 33})
        QTest::newRow(qPrintable(QString::number(pixels))) << pixels;
}

void TestChartPicture::theOutermostLabelsAreDrawnInEveryFont() {
    QFETCH(int, pixels);
    PlainChart chart;
    QFont font = chart.axisFont();
    font.setPixelSize(pixels);
    chart.setAxisFont(font);
    ChartMatrix matrix = flat(100, 1, -63);
    matrix.set(5, 3, 1.4);
    chart.setData(matrix);
    const QImage picture = chart.picture();
    const QRect plot = chart.plotArea();
    const auto inkAt = [&](int from, int to, int y) {
        int found = 0;
        for (int x = from; x < to; ++x) {
            for (int line = -pixels / 3; line <= pixels / 3; ++line)
                found += picture.pixelColor(x, y + line) != chart.colours().backdrop;
        }
        return found;
    };
    QVERIFY(inkAt(plot.right() + 2, chart.width(), plot.top()) > pixels / 2);
    QVERIFY(inkAt(plot.right() + 2, chart.width(), plot.bottom()) > pixels / 2);
    QVERIFY(inkAt(0, plot.left() - 7, plot.bottom()) > pixels / 2);
}

/// Three figures fit between the plot and the edge of a narrow chart.
void TestChartPicture::labelsKeepClearOfTheEdgeOfANarrowChart() {
    PlainChart chart;
    chart.resize(512, 500);
    chart.setData(flat(100, 1, -240));
    const QImage picture = chart.picture();
    for (int y = 0; y < chart.height(); ++y)
        QCOMPARE(picture.pixelColor(chart.width() - 2, y), chart.colours().backdrop);
    QVERIFY(chart.yAxis2->tickLabelPadding() >= 2);
    chart.resize(1200, 500);
    chart.refresh();
    QCOMPARE(chart.yAxis2->tickLabelPadding(), 8);
}

void TestChartPicture::gridLinesShowThroughTheFill() {
    PlainChart chart;
    ChartColours colours = chart.colours();
    colours.grid = QColor(255, 0, 255);
    chart.setColours(colours);
    ChartMatrix matrix = flat(100, 1, -5);
    matrix.set(1, 1, -63);
    chart.setData(matrix);
    const QImage picture = chart.picture();
    const int y = qRound(chart.yOfValue(-30, ChartAxis::Right));
    const int x = qRound(chart.xOfRow(60));
    QVERIFY(picture.pixelColor(x, y) == colours.grid || picture.pixelColor(x, y - 1) == colours.grid ||
            picture.pixelColor(x, y + 1) == colours.grid);
    QVERIFY(chart.count(picture, 25, colours.grid) > 300); // a quarter of the x axis
    QVERIFY(chart.count(picture, 75, colours.grid) > 300);
    QVERIFY(chart.count(picture, 40, colours.grid) < 20);
}

void TestChartPicture::thousandsOfRowsInEverySeriesAreDrawn() {
    PlainChart chart;
    chart.resize(1920, 1080);
    ChartMatrix matrix(25000);
    for (int series = 1; series < ChartMatrix::columns; ++series) {
        for (int row = 1; row <= 25000; ++row)
            matrix.set(row, series, series == 1 || series == 4 ? -30 : series);
    }
    chart.setData(std::move(matrix));
    const QImage picture = chart.picture();
    for (const int series : {2, 3, 30, 33}) { // without dashes
        QVERIFY(chart.seriesStyle(series).dashes.isEmpty());
        QVERIFY(
            alike(chart.at(picture, 11000, series, ChartAxis::Left), chart.seriesStyle(series).colour, 90));
    }
    QVERIFY(alike(chart.at(picture, 11000, -30, ChartAxis::Right), chart.seriesStyle(4).colour, 90));
}

QTEST_MAIN(TestChartPicture)
#include "test_chartpicture.moc"
