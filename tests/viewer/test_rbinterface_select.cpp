#include "divescreen.h"

#include "platform/chart/chart.h"
#include "platform/grid/flexgrid.h"
#include "platform/look/look.h"

#include <QCheckBox>
#include <QPushButton>
#include <QtTest>

using namespace benthor;
using namespace benthor::viewer;
using benthor::platform::Chart;
using benthor::platform::FlexGrid;

namespace {

const QColor kBlue(0, 0, 255);

/// The X of a row in twips, in a chart of `rows` rows.
double twipsOfRow(double row, int rows) {
    return 645 + 10065 * row / rows;
}

} // namespace

class TestRbinterfaceSelect : public QObject {
    Q_OBJECT

private slots:
    void aClickOnTheChartPicksTheSample();
    void theRowBeforeKeepsItsMarkOutsideColumns1To32();
    void aPressOnTheChartHidesTheLine();
    void aPressShowsAPointerAtThePlaceUntilTheRelease();
    void aClickOnTheZoomedChartPicksTheSampleOfThePage();
    void anArrowKeyInTheGridPicksTheNextSample();
    void plottingHidesTheLineAndKeepsTheRow();
};

void TestRbinterfaceSelect::aClickOnTheChartPicksTheSample() {
    DiveScreen bench;
    bench.put(steadyDive(197));
    rbinterface& screen = bench.show();
    control<QAction>(screen, "mnuSpread").trigger();
    auto& chart = control<Chart>(screen, "MSChart1");
    auto& grid = control<FlexGrid>(screen, "MSFlexGrid1");
    const QPoint place(qRound(chart.xOfRow(120.4)), 100);
    QTest::mouseClick(chart.viewport() == QRect() ? nullptr : static_cast<QWidget*>(&chart), Qt::LeftButton,
                      {}, place);
    QCOMPARE(grid.row(), 120); // whole part of 120.4, one up, one down
    QCOMPARE(chart.row(), 120);
    QCOMPARE(grid.topRow(), 116);
    for (int column = 0; column <= 40; ++column) {
        QCOMPARE(grid.backColour(120, column), kBlue);
    }
    QVERIFY(!grid.backColour(120, 41).isValid());
    QCOMPARE(grid.col(), 1);
}

void TestRbinterfaceSelect::theRowBeforeKeepsItsMarkOutsideColumns1To32() {
    DiveScreen bench;
    bench.put(steadyDive(197));
    rbinterface& screen = bench.show();
    auto& chart = control<Chart>(screen, "MSChart1");
    auto& grid = control<FlexGrid>(screen, "MSFlexGrid1");
    QCOMPARE(grid.backColour(1, 0), kBlue); // row 1 is picked by the load
    emit chart.released(twipsOfRow(50.5, 200), 0);
    emit chart.released(twipsOfRow(60.5, 200), 0);
    QCOMPARE(grid.row(), 60);
    QVERIFY(!grid.backColour(50, 1).isValid());
    QVERIFY(!grid.backColour(50, 32).isValid());
    QCOMPARE(grid.backColour(50, 0), kBlue);
    QCOMPARE(grid.backColour(50, 33), kBlue);
    QCOMPARE(grid.backColour(60, 32), kBlue);
}

void TestRbinterfaceSelect::aPressOnTheChartHidesTheLine() {
    DiveScreen bench;
    bench.put(steadyDive(197));
    auto& chart = control<Chart>(bench.show(), "MSChart1");
    emit chart.released(twipsOfRow(50.5, 200), 0);
    QCOMPARE(chart.row(), 50);
    emit chart.pressed(twipsOfRow(50.5, 200), 0);
    QCOMPARE(chart.row(), 0);
    emit chart.released(twipsOfRow(50.5, 200), 0); // the same row again
    QCOMPARE(chart.row(), 50);
}

void TestRbinterfaceSelect::aPressShowsAPointerAtThePlaceUntilTheRelease() {
    DiveScreen bench;
    bench.put(steadyDive(197));
    auto& screen = bench.show();
    auto& chart = control<Chart>(screen, "MSChart1");
    auto& pointer = control<QWidget>(screen, "Text8");
    QVERIFY(!pointer.isVisible());
    const QPoint place(qRound(chart.xOfRow(60)), 100);
    QTest::mousePress(&chart, Qt::LeftButton, {}, place);
    QVERIFY(pointer.isVisible());
    const auto corner = [&] { return chart.mapFromGlobal(pointer.mapToGlobal(QPoint())); };
    QVERIFY(std::abs(corner().x() - place.x()) <= 1);
    QCOMPARE(corner().y(), place.y());
    QCOMPARE(pointer.height(), 2); // 25 twips
    QTest::mouseRelease(&chart, Qt::LeftButton, {}, place);
    QVERIFY(pointer.isVisible()); // the tip box of the sample now
    const QString depth = control<FlexGrid>(screen, "MSFlexGrid1").text(chart.row(), 1);
    QVERIFY(pointer.property("text").toString().startsWith(depth + "metre\r\nGas: "));
    QVERIFY(pointer.height() > 30);
    QVERIFY(chart.rect().contains(QRect(corner(), pointer.size())));
}

void TestRbinterfaceSelect::aClickOnTheZoomedChartPicksTheSampleOfThePage() {
    DiveScreen bench;
    bench.put(steadyDive(197));
    rbinterface& screen = bench.show();
    auto& chart = control<Chart>(screen, "MSChart1");
    control<QPushButton>(screen, "Command2(0)").click();
    control<QPushButton>(screen, "Command2(2)").click(); // rows 21 to 40
    emit chart.released(twipsOfRow(5.5, 20), 0);
    QCOMPARE(control<FlexGrid>(screen, "MSFlexGrid1").row(), 25);
    QCOMPARE(chart.row(), 5);
    control<FlexGrid>(screen, "MSFlexGrid1").setRow(60); // on the next page, to which the view turns
    QCOMPARE(textOf(screen, "Text1"), QStringLiteral("00:06:40"));
    QCOMPARE(chart.row(), 20);
}

void TestRbinterfaceSelect::anArrowKeyInTheGridPicksTheNextSample() {
    DiveScreen bench;
    bench.put(steadyDive(197));
    rbinterface& screen = bench.show();
    control<QAction>(screen, "mnuSpread").trigger();
    auto& grid = control<FlexGrid>(screen, "MSFlexGrid1");
    emit control<Chart>(screen, "MSChart1").released(twipsOfRow(50.5, 200), 0);
    QTest::keyClick(&grid, Qt::Key_Down);
    QCOMPARE(grid.row(), 51);
    QCOMPARE(control<Chart>(screen, "MSChart1").row(), 51);
    QCOMPARE(grid.backColour(51, 1), kBlue);
    QVERIFY(!grid.backColour(50, 1).isValid());
    QCOMPARE(grid.topRow(), 47);
}

void TestRbinterfaceSelect::plottingHidesTheLineAndKeepsTheRow() {
    DiveScreen bench;
    bench.put(steadyDive(197));
    rbinterface& screen = bench.show();
    emit control<Chart>(screen, "MSChart1").released(twipsOfRow(50.5, 200), 0);
    control<QCheckBox>(screen, "Check3").click();
    QCOMPARE(control<Chart>(screen, "MSChart1").row(), 0);
    QCOMPARE(control<FlexGrid>(screen, "MSFlexGrid1").row(), 50);
}

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    look::apply(application);
    TestRbinterfaceSelect test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_rbinterface_select.moc"
