// The view of a range of rows, and what the mouse asks of it.

#include "platform/chart/chart.h"

#include <QSignalSpy>
#include <QWheelEvent>
#include <QtTest>

using namespace benthor::platform;

namespace {

/// Rows 1 to `rows`, each with its own number as depth.
ChartMatrix ramp(int rows) {
    ChartMatrix matrix(rows);
    for (int row = 1; row <= rows; ++row) {
        matrix.set(row, 1, -row);
        matrix.set(row, 3, row % 7);
    }
    return matrix;
}

struct Shown {
    explicit Shown(int rows) {
        chart.resize(800, 400);
        chart.setData(ramp(rows));
        SeriesStyle red;
        red.colour = Qt::red;
        red.width = 2;
        chart.setSeriesStyle(3, red);
        chart.show();
    }
    QPoint at(double row) const { return {qRound(chart.xOfRow(row)), 200}; }
    Chart chart;
};

/// How much of the plot the red series has painted.
int redPixels(Chart& chart) {
    const QImage image = chart.grab().toImage();
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor colour = image.pixelColor(x, y);
            count += colour.red() > 200 && colour.green() < 90 && colour.blue() < 90 ? 1 : 0;
        }
    }
    return count;
}

} // namespace

class TestChartRange : public QObject {
    Q_OBJECT

private slots:
    void withoutAViewAllRowsFillThePlot() {
        Shown shown(100);
        QCOMPARE(shown.chart.view(), (RowRange{0, 100}));
        shown.chart.setView(RowRange{20, 20}); // no stretch at all
        QCOMPARE(shown.chart.view(), (RowRange{0, 100}));
    }

    void aViewsRowsFillThePlot() {
        Shown shown(100);
        shown.chart.setView(RowRange{20, 60});
        QCOMPARE(shown.chart.xOfRow(20), double(shown.chart.plotLeft()));
        QCOMPARE(shown.chart.xOfRow(60), double(shown.chart.plotLeft() + shown.chart.plotWidth()));
        QCOMPARE(shown.chart.xOfRow(30), shown.chart.plotLeft() + shown.chart.plotWidth() / 4.0);
        QCOMPARE(shown.chart.rightScale().lower, -120.0); // of all rows
        shown.chart.setView(std::nullopt);
        QCOMPARE(shown.chart.xOfRow(0), double(shown.chart.plotLeft()));
    }

    void aViewIsDrawnAsAMatrixOfItsRowsWouldBe_data() {
        QTest::addColumn<int>("rows");
        QTest::addColumn<int>("first");
        QTest::addColumn<int>("last");
        QTest::newRow("apart") << 100 << 20 << 60;
        QTest::newRow("dense") << 20000 << 4000 << 12000;
        QTest::newRow("dense rows, few of them seen") << 20000 << 4000 << 4030;
    }

    void aViewIsDrawnAsAMatrixOfItsRowsWouldBe() {
        QFETCH(int, rows);
        QFETCH(int, first);
        QFETCH(int, last);
        Shown whole(rows);
        whole.chart.setView(RowRange{double(first), double(last)});
        // The same rows alone, on the same scale.
        Shown alone(last - first);
        ChartMatrix matrix(last - first);
        for (int row = 1; row <= last - first; ++row) {
            matrix.set(row, 1, -double(row + first));
            matrix.set(row, 3, (row + first) % 7);
        }
        alone.chart.setData(matrix);
        const int expected = redPixels(alone.chart);
        QVERIFY(expected > 200);
        QVERIFY(std::abs(redPixels(whole.chart) - expected) <
                expected / 10); // the lines that lead in and out
    }

    void theCursorIsSeenInsideTheViewOnly() {
        Shown shown(100);
        shown.chart.setView(RowRange{20, 60});
        const QImage without = shown.chart.grab().toImage();
        shown.chart.setCurrentRow(80);
        QCOMPARE(shown.chart.grab().toImage(), without);
        shown.chart.setCurrentRow(40);
        QVERIFY(shown.chart.grab().toImage() != without);
    }

    void theWheelTellsItsPlaceAndFactor() {
        Shown shown(100);
        QSignalSpy turned(&shown.chart, &Chart::wheelTurned);
        for (const int angle : {120, -240, 0}) {
            QWheelEvent event(shown.at(50), shown.chart.mapToGlobal(shown.at(50)), {}, {0, angle}, {}, {},
                              Qt::NoScrollPhase, false);
            QCoreApplication::sendEvent(&shown.chart, &event);
        }
        QCOMPARE(turned.size(), 2);
        QVERIFY(std::abs(turned[0][0].toDouble() - (645 + 10065 / 2.0)) < 20);
        QCOMPARE(turned[0][1].toDouble(), 1.25);
        QCOMPARE(turned[1][1].toDouble(), 1 / 1.25 / 1.25);
    }

    void theMiddleButtonAndShiftDragTheView_data() {
        QTest::addColumn<int>("button");
        QTest::addColumn<int>("modifiers");
        QTest::newRow("middle") << int(Qt::MiddleButton) << int(Qt::NoModifier);
        QTest::newRow("shift") << int(Qt::LeftButton) << int(Qt::ShiftModifier);
    }

    void theMiddleButtonAndShiftDragTheView() {
        QFETCH(int, button);
        QFETCH(int, modifiers);
        Shown shown(100);
        QSignalSpy dragged(&shown.chart, &Chart::dragged);
        QSignalSpy pressed(&shown.chart, &Chart::pressed);
        QSignalSpy released(&shown.chart, &Chart::released);
        const auto mouse = static_cast<Qt::MouseButton>(button);
        const Qt::KeyboardModifiers keys(modifiers);
        QTest::mousePress(&shown.chart, mouse, keys, {300, 200});
        QTest::mouseMove(&shown.chart, {310, 200});
        QTest::mouseMove(&shown.chart, {290, 200});
        QTest::mouseRelease(&shown.chart, mouse, keys, {290, 200});
        QTest::mouseMove(&shown.chart, {400, 200});
        QCOMPARE(dragged.size(), 2);
        QCOMPARE(dragged[0][0].toDouble(), 10.0);
        QCOMPARE(dragged[1][0].toDouble(), -20.0);
        QVERIFY(pressed.isEmpty() && released.isEmpty()); // nothing is picked
    }

    void aDoubleClickIsToldBehindItsPresses() {
        Shown shown(100);
        QSignalSpy doubled(&shown.chart, &Chart::doubleClicked);
        QSignalSpy pressed(&shown.chart, &Chart::pressed);
        QTest::mouseDClick(&shown.chart, Qt::LeftButton, {}, {300, 200});
        QCOMPARE(doubled.size(), 1);
        QVERIFY(!pressed.isEmpty());
    }
};

QTEST_MAIN(TestChartRange)
#include "test_chartrange.moc"
