#include "platform/chart/chartscale.h"

#include <QtTest>

using namespace benthor::platform;

namespace {

ChartAxis axisOf(int series) {
    return series == 1 || series == 4 ? ChartAxis::Right : ChartAxis::Left;
}

ChartMatrix with(std::initializer_list<std::pair<int, double>> cells) {
    ChartMatrix matrix(static_cast<int>(cells.size()));
    int row = 0;
    for (const auto& [series, value] : cells)
        matrix.set(++row, series, value);
    return matrix;
}

QList<double> labelsOf(const ChartScale& scale) {
    return {scale.labels.begin(), scale.labels.end()};
}

} // namespace

class TestChartScale : public QObject {
    Q_OBJECT

private slots:
    void stepsAreRound_data();
    void stepsAreRound();
    void depthRunsFromZeroDownToAFullLabel();
    void theDeeperOfDepthAndCeilingCounts();
    void aDepthAtALabelStaysClearOfTheFrame();
    void nothingByTheRightAxisLeavesItBlank();
    void depthOfZeroOnlyHasAScale();
    void theLeftAxisEndsAtTwoAndAHalfTimesTheLargest();
    void theLeftAxisIsLabelledUpToTheLargest();
    void rightValuesDoNotCountForTheLeftAxis();
    void anAxisWithRoomHasAllItsLabels();
    void labelsThatTouchAreLeftOut();
    void theUnitKeepsClearOfTheLabels_data();
    void theUnitKeepsClearOfTheLabels();
    void nothingByTheLeftAxisLeavesItBlank();
    void zerosByTheLeftAxisHaveAScale();
    void valuesBelowZeroAreReached();
    void onlyValuesBelowZeroAreReached();
};

void TestChartScale::stepsAreRound_data() {
    QTest::addColumn<double>("extent");
    QTest::addColumn<int>("intervals");
    QTest::addColumn<double>("step");
    QTest::newRow("63 by 8") << 63.0 << 8 << 10.0;
    QTest::newRow("206 by 8") << 206.0 << 8 << 50.0;
    QTest::newRow("40 by 8") << 40.0 << 8 << 5.0;
    QTest::newRow("8 by 8") << 8.0 << 8 << 1.0;
    QTest::newRow("8.1 by 8") << 8.1 << 8 << 2.0;
    QTest::newRow("0.3 by 3") << 0.3 << 3 << 0.1;
    QTest::newRow("55 by 10") << 55.0 << 10 << 10.0;
}

void TestChartScale::stepsAreRound() {
    QFETCH(double, extent);
    QFETCH(int, intervals);
    QFETCH(double, step);
    QCOMPARE(niceStep(extent, intervals), step);
}

void TestChartScale::depthRunsFromZeroDownToAFullLabel() {
    const ChartScale scale = downwardScale(with({{1, -3}, {1, -63}, {1, 0}}), axisOf);
    QCOMPARE(scale.upper, 0.0);
    QCOMPARE(scale.lower, -70.0);
    QCOMPARE(labelsOf(scale), QList<double>({-70, -60, -50, -40, -30, -20, -10, 0}));
    QCOMPARE(scale.share(0), 1.0);
    QCOMPARE(scale.share(-70), 0.0);
}

void TestChartScale::theDeeperOfDepthAndCeilingCounts() {
    QCOMPARE(downwardScale(with({{1, -12}, {4, -27}}), axisOf).lower, -30.0);
    QCOMPARE(downwardScale(with({{4, -6}}), axisOf).lower, -7.0);
}

void TestChartScale::aDepthAtALabelStaysClearOfTheFrame() {
    QCOMPARE(downwardScale(with({{1, -40}}), axisOf).lower, -45.0);
    QCOMPARE(downwardScale(with({{1, -39}}), axisOf).lower, -40.0);
}

void TestChartScale::nothingByTheRightAxisLeavesItBlank() {
    const ChartScale scale = downwardScale(with({{3, 1.3}}), axisOf);
    QVERIFY(scale.labels.empty());
    QVERIFY(scale.upper > scale.lower);
}

void TestChartScale::depthOfZeroOnlyHasAScale() {
    const ChartScale scale = downwardScale(with({{1, 0}, {1, 0}}), axisOf);
    QCOMPARE(scale.upper, 0.0);
    QCOMPARE(scale.lower, -1.0);
    QCOMPARE(labelsOf(scale), QList<double>({-1, 0}));
}

void TestChartScale::theLeftAxisEndsAtTwoAndAHalfTimesTheLargest() {
    const ChartScale scale = upwardScale(with({{3, 1.3}, {12, 1.4}, {15, 0.7}}), axisOf);
    QCOMPARE(scale.lower, 0.0);
    QCOMPARE(scale.upper, 3.5);
}

void TestChartScale::theLeftAxisIsLabelledUpToTheLargest() {
    const ChartScale scale = upwardScale(with({{3, 1.43}}), axisOf);
    QCOMPARE(labelsOf(scale), QList<double>({0, 0.4, 0.8, 1.2000000000000002, 1.6}));
}

void TestChartScale::rightValuesDoNotCountForTheLeftAxis() {
    QCOMPARE(upwardScale(with({{1, 50}, {4, 50}, {3, 2}}), axisOf).upper, 5.0);
}

void TestChartScale::nothingByTheLeftAxisLeavesItBlank() {
    const ChartScale scale = upwardScale(with({{1, -20}}), axisOf);
    QVERIFY(scale.labels.empty());
    QVERIFY(scale.upper > scale.lower);
}

void TestChartScale::zerosByTheLeftAxisHaveAScale() {
    const ChartScale scale = upwardScale(with({{3, 0}, {5, 0}}), axisOf);
    QCOMPARE(scale.lower, 0.0);
    QCOMPARE(scale.upper, 1.0);
    QVERIFY(!scale.labels.empty());
}

void TestChartScale::valuesBelowZeroAreReached() {
    const ChartScale scale = upwardScale(with({{5, -2}, {5, 20}}), axisOf);
    QCOMPARE(scale.lower, -2.0);
    QCOMPARE(scale.upper, 50.0);
    QCOMPARE(scale.labels.front(), 0.0);
}

void TestChartScale::onlyValuesBelowZeroAreReached() {
    const ChartScale scale = upwardScale(with({{5, -2}, {5, -1}}), axisOf);
    QCOMPARE(scale.lower, -2.0);
    QVERIFY(scale.upper > 0);
}

namespace {

QList<double> labelsOf(const AxisNotes& notes) {
    return {notes.labels.begin(), notes.labels.end()};
}

constexpr double lineHeight = 20;
const ChartScale depths{-70, 0, 10, {-70, -60, -50, -40, -30, -20, -10, 0}};
const ChartScale pressures{0, 4, 0.4, {0, 0.4, 0.8, 1.2, 1.6}};

} // namespace

void TestChartScale::anAxisWithRoomHasAllItsLabels() {
    const AxisNotes down = axisNotes(depths, 7 * 40, lineHeight, ChartAxis::Right);
    QCOMPARE(labelsOf(down), labelsOf(depths));
    QCOMPARE(down.unit, -65.0);
    const AxisNotes up = axisNotes(pressures, 500, lineHeight, ChartAxis::Left);
    QCOMPARE(labelsOf(up), labelsOf(pressures));
    QCOMPARE(up.unit, 1.6 + 0.6 * 0.4);
}

void TestChartScale::labelsThatTouchAreLeftOut() {
    QCOMPARE(labelsOf(axisNotes(depths, 7 * 19, lineHeight, ChartAxis::Right)),
             (QList<double>{-60, -40, -20, 0}));
    QCOMPARE(labelsOf(axisNotes(depths, 7 * 5, lineHeight, ChartAxis::Right)), (QList<double>{-50, 0}));
    // Labels that stand close leave no room between them.
    QCOMPARE(axisNotes(depths, 7 * 39, lineHeight, ChartAxis::Right).unit, -60.0);
    QCOMPARE(labelsOf(axisNotes(pressures, 150, lineHeight, ChartAxis::Left)), (QList<double>{0, 0.8, 1.6}));
    QVERIFY(axisNotes({}, 100, lineHeight, ChartAxis::Left).labels.empty());
}

/// Whatever the height, unit and labels are a line apart.
void TestChartScale::theUnitKeepsClearOfTheLabels_data() {
    QTest::addColumn<int>("height");
    for (const int height : {90, 110, 133, 150, 180, 200, 270, 281, 400, 900})
        QTest::newRow(qPrintable(QString::number(height))) << height;
}

void TestChartScale::theUnitKeepsClearOfTheLabels() {
    QFETCH(int, height);
    const auto least = [height](const ChartScale& scale, ChartAxis axis) {
        const AxisNotes notes = axisNotes(scale, height, lineHeight, axis);
        double pixels = height;
        for (const double label : notes.labels) {
            if (label == notes.unit)
                continue; // it stands there instead
            pixels = std::min(pixels, std::abs(label - notes.unit) / (scale.upper - scale.lower) * height);
        }
        return pixels;
    };
    QVERIFY(least(depths, ChartAxis::Right) >= lineHeight - 1e-6);
    QVERIFY(least(pressures, ChartAxis::Left) >= lineHeight - 1e-6);
}

QTEST_APPLESS_MAIN(TestChartScale)
#include "test_chartscale.moc"
