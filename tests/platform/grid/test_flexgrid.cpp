#include "platform/grid/flexgrid.h"

#include <QScrollBar>
#include <QtTest>
#include <ctime>

using namespace benthor::platform;

namespace {

const QColor blue(0, 0, 255);
const QColor red(255, 0, 0);

QStringList rowOfGrid(const FlexGrid& grid, int row) {
    QStringList texts;
    for (int col = 0; col < grid.cols(); ++col)
        texts.append(grid.text(row, col));
    return texts;
}

/// Texts "0" to count - 1.
QStringList numbers(int count) {
    QStringList texts;
    for (int number = 0; number < count; ++number)
        texts.append(QString::number(number));
    return texts;
}

void size(FlexGrid& grid, int rows, int cols) {
    grid.setCols(cols);
    grid.setRows(rows);
}

} // namespace

class TestFlexGrid : public QObject {
    Q_OBJECT

private slots:
    void anEmptyGridHasItsHeaderRowOnly();
    void rowZeroIsTheHeading();
    void cellsKeepTheirTexts();
    void whatLiesOutsideIsIgnored();
    void rowTextsStandInTheOrderShown();
    void cutRowsComeBackEmpty();
    void cutColumnsComeBackEmpty();
    void textOnDemandIsAskedForDataRows();
    void aToldTextOverridesTheFunction();
    void anEmptyToldTextOverridesTheFunction();
    void aGreatGridIsAskedOnlyWhereItIsLookedAt();
    void tenThousandRowsAreFilledQuickly();
    void rowsWithColoursAreKnownInTheirOrder();
    void aRowWhoseTextChangedIsToldAlone();
    void columnMovesInTurnGiveTheListOrder();
    void movingRightClosesTheGap();
    void aMovedColumnTakesAllItHolds();
    void aMovedColumnGoesOnAskingTheFunctionByItsNumber();
    void rowTextsAfterAMoveStandInTheOrderShown();
    void coloursAreTheGridsOwnUntilTold();
    void rowColoursReachEveryCell();
    void rowColoursFromAColumnLeaveThoseBefore();
    void aCellColourStandsOutOfItsRow();
    void invalidColoursGiveTheRowBack();
    void coloursCanAllBeCleared();
    void aTellingOfBackColourLeavesTheForeColour();
    void theCurrentRowIsToldOnce();
    void aRowThatIsNotThereIsNotMadeCurrent();
    void cuttingTheCurrentRowMovesToTheLast();
    void theRangeEndsWhereItBeganUntilMoved();
    void topRowScrollsAndIsLimitedByTheRows();
    void showRowScrollsAsLittleAsNeeded();
    void anEmptiedGridHasNothingToScroll();
    void manySmallChangesAreToldAtOnce();
};

void TestFlexGrid::anEmptyGridHasItsHeaderRowOnly() {
    FlexGrid grid;
    QCOMPARE(grid.rows(), 1);
    QCOMPARE(grid.cols(), 0);
    QCOMPARE(grid.row(), 0);
    grid.setRows(0);
    QCOMPARE(grid.rows(), 1);
}

void TestFlexGrid::rowZeroIsTheHeading() {
    FlexGrid grid;
    size(grid, 3, 2);
    grid.setText(0, 1, "MaxDepth");
    QCOMPARE(grid.text(0, 1), "MaxDepth");
    QCOMPARE(grid.model()->headerData(1, Qt::Horizontal).toString(), "MaxDepth");
    QCOMPARE(grid.model()->rowCount(), 2);
}

void TestFlexGrid::cellsKeepTheirTexts() {
    FlexGrid grid;
    size(grid, 3, 2);
    grid.setText(1, 0, "a");
    grid.setText(2, 1, "b");
    QCOMPARE(grid.text(1, 0), "a");
    QCOMPARE(grid.text(2, 1), "b");
    QCOMPARE(grid.text(1, 1), "");
    QCOMPARE(grid.model()->index(1, 1).data().toString(), "b");
}

void TestFlexGrid::whatLiesOutsideIsIgnored() {
    FlexGrid grid;
    size(grid, 2, 2);
    grid.setText(2, 0, "x");
    grid.setText(-1, 0, "x");
    grid.setText(1, 2, "x");
    grid.setBackColour(5, 5, red);
    grid.setRowColours(9, red, red);
    grid.moveColumn(0, 7);
    grid.setColumnWidthTwips(8, 0);
    QCOMPARE(grid.text(2, 0), "");
    QCOMPARE(grid.text(1, 2), "");
    QVERIFY(!grid.backColour(5, 5).isValid());
    QCOMPARE(grid.rows(), 2);
    QCOMPARE(grid.cols(), 2);
}

void TestFlexGrid::rowTextsStandInTheOrderShown() {
    FlexGrid grid;
    size(grid, 3, 3);
    grid.setRowTexts(0, {"x", "y", "z"});
    grid.setRowTexts(1, {"a", "b"});
    grid.setRowTexts(2, {"c", "d", "e", "beyond the last column"});
    QCOMPARE(rowOfGrid(grid, 0), QStringList({"x", "y", "z"}));
    QCOMPARE(rowOfGrid(grid, 1), QStringList({"a", "b", ""}));
    QCOMPARE(rowOfGrid(grid, 2), QStringList({"c", "d", "e"}));
}

void TestFlexGrid::cutRowsComeBackEmpty() {
    FlexGrid grid;
    size(grid, 3, 1);
    grid.setText(2, 0, "a");
    grid.setBackColour(2, 0, red);
    grid.setRows(2);
    grid.setRows(3);
    QCOMPARE(grid.text(2, 0), "");
    QVERIFY(!grid.backColour(2, 0).isValid());
}

void TestFlexGrid::cutColumnsComeBackEmpty() {
    FlexGrid grid;
    size(grid, 2, 3);
    grid.setRowTexts(1, {"a", "b", "c"});
    grid.setBackColour(1, 2, red);
    grid.moveColumn(0, 2);
    grid.setCols(1);
    grid.setCols(3);
    QCOMPARE(rowOfGrid(grid, 1), QStringList({"b", "", ""}));
    QVERIFY(!grid.backColour(1, 1).isValid());
    QVERIFY(!grid.backColour(1, 2).isValid());
}

void TestFlexGrid::textOnDemandIsAskedForDataRows() {
    FlexGrid grid;
    size(grid, 3, 2);
    grid.setTextFunction([](int row, int col) { return QString("%1/%2").arg(row).arg(col); });
    QCOMPARE(grid.text(2, 1), "2/1");
    QCOMPARE(grid.text(0, 1), "");
    QCOMPARE(grid.text(3, 0), "");
}

void TestFlexGrid::aToldTextOverridesTheFunction() {
    FlexGrid grid;
    size(grid, 3, 2);
    grid.setTextFunction([](int, int) { return QString("asked"); });
    grid.setText(1, 1, "told");
    QCOMPARE(rowOfGrid(grid, 1), QStringList({"asked", "told"}));
}

void TestFlexGrid::anEmptyToldTextOverridesTheFunction() {
    FlexGrid grid;
    size(grid, 2, 2);
    grid.setTextFunction([](int, int) { return QString("asked"); });
    grid.setText(1, 0, QString());
    grid.setText(1, 1, "");
    QCOMPARE(rowOfGrid(grid, 1), QStringList({"", ""}));
}

void TestFlexGrid::aGreatGridIsAskedOnlyWhereItIsLookedAt() {
    FlexGrid grid;
    grid.resize(1200, 600);
    size(grid, 25001, 45);
    int asked = 0;
    grid.setTextFunction([&asked](int row, int) {
        ++asked;
        return QString::number(row);
    });
    QCOMPARE(asked, 0);
    grid.show();
    QVERIFY(QTest::qWaitForWindowExposed(&grid));
    grid.setTopRow(20000);
    QTRY_COMPARE(grid.topRow(), 20000);
    QCoreApplication::processEvents();
    QVERIFY(asked > 0);
    QVERIFY2(asked < 25000, qPrintable(QString::number(asked))); // of 1,125,000 cells
}

void TestFlexGrid::tenThousandRowsAreFilledQuickly() {
#ifdef __SANITIZE_ADDRESS__
    constexpr double limit = 1.5;
#else
    constexpr double limit = 0.1;
#endif
    const QStringList texts = numbers(27);
    FlexGrid grid;
    grid.setCols(27);
    const std::clock_t start = std::clock();
    grid.setRows(10001);
    for (int row = 1; row <= 10000; ++row)
        grid.setRowTexts(row, texts);
    for (const auto& [from, to] : {std::pair(8, 1), {9, 2}, {8, 3}, {7, 4}, {7, 5}, {22, 6}})
        grid.moveColumn(from, to);
    const double seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    QCOMPARE(grid.text(10000, 6), "22");
    QVERIFY2(seconds < limit, qPrintable(QString::number(seconds)));
}

void TestFlexGrid::columnMovesInTurnGiveTheListOrder() {
    FlexGrid grid;
    size(grid, 2, 27);
    grid.setRowTexts(0, numbers(27));
    grid.setRowTexts(1, numbers(27));
    for (const auto& [from, to] : {std::pair(8, 1), {9, 2}, {8, 3}, {7, 4}, {7, 5}, {22, 6}})
        grid.moveColumn(from, to);
    const QStringList order = {"0",  "8",  "9",  "6",  "4",  "3",  "22", "1",  "2",
                               "5",  "7",  "10", "11", "12", "13", "14", "15", "16",
                               "17", "18", "19", "20", "21", "23", "24", "25", "26"};
    QCOMPARE(rowOfGrid(grid, 0), order);
    QCOMPARE(rowOfGrid(grid, 1), order);
}

void TestFlexGrid::movingRightClosesTheGap() {
    FlexGrid grid;
    size(grid, 2, 4);
    grid.setRowTexts(1, numbers(4));
    grid.moveColumn(0, 2);
    QCOMPARE(rowOfGrid(grid, 1), QStringList({"1", "2", "0", "3"}));
}

void TestFlexGrid::aMovedColumnTakesAllItHolds() {
    FlexGrid grid;
    size(grid, 2, 3);
    grid.setRowTexts(0, {"A", "B", "C"});
    grid.setBackColour(1, 2, red);
    grid.setForeColour(1, 2, blue);
    grid.setColumnWidthTwips(2, 3000);
    grid.setColumnWidthTwips(1, 0);
    grid.setColumnAlignment(2, Qt::AlignRight);
    grid.setSortableColumns({2});
    grid.setSortIndicator(2, false);
    grid.moveColumn(2, 0);
    QCOMPARE(grid.text(0, 0), "C");
    QCOMPARE(grid.backColour(1, 0), red);
    QCOMPARE(grid.foreColour(1, 0), blue);
    QVERIFY(!grid.backColour(1, 2).isValid());
    QCOMPARE(grid.columnWidthTwips(0), 3000);
    QCOMPARE(grid.columnWidth(0), 200);
    QVERIFY(grid.isColumnHidden(2));
    QVERIFY(!grid.isColumnHidden(1));
    QCOMPARE(grid.cells().column(0).alignment, Qt::AlignRight);
    QVERIFY(grid.cells().column(0).sortable);
    QCOMPARE(grid.sortColumn(), 0);
}

void TestFlexGrid::aMovedColumnGoesOnAskingTheFunctionByItsNumber() {
    FlexGrid grid;
    size(grid, 2, 3);
    grid.setTextFunction([](int, int col) { return QString::number(col); });
    grid.moveColumn(2, 0);
    QCOMPARE(rowOfGrid(grid, 1), QStringList({"2", "0", "1"}));
    grid.setTextFunction([](int, int col) { return QString::number(col); });
    QCOMPARE(rowOfGrid(grid, 1), QStringList({"0", "1", "2"}));
}

void TestFlexGrid::rowTextsAfterAMoveStandInTheOrderShown() {
    FlexGrid grid;
    size(grid, 3, 3);
    grid.moveColumn(2, 0);
    grid.setRowTexts(1, {"a", "b", "c"});
    grid.setRowTexts(2, {"d"});
    QCOMPARE(rowOfGrid(grid, 1), QStringList({"a", "b", "c"}));
    QCOMPARE(rowOfGrid(grid, 2), QStringList({"d", "", ""}));
}

void TestFlexGrid::coloursAreTheGridsOwnUntilTold() {
    FlexGrid grid;
    size(grid, 2, 1);
    QVERIFY(!grid.backColour(1, 0).isValid());
    QVERIFY(!grid.foreColour(1, 0).isValid());
    grid.setBackColour(1, 0, red);
    QCOMPARE(grid.backColour(1, 0), red);
    grid.setBackColour(1, 0, QColor());
    QVERIFY(!grid.backColour(1, 0).isValid());
}

void TestFlexGrid::rowColoursReachEveryCell() {
    FlexGrid grid;
    size(grid, 3, 3);
    grid.setRowColours(2, blue, Qt::white);
    for (int col = 0; col < 3; ++col) {
        QCOMPARE(grid.backColour(2, col), blue);
        QCOMPARE(grid.foreColour(2, col), QColor(Qt::white));
        QVERIFY(!grid.backColour(1, col).isValid());
    }
}

void TestFlexGrid::rowColoursFromAColumnLeaveThoseBefore() {
    FlexGrid grid;
    size(grid, 2, 3);
    grid.setBackColour(1, 0, red);
    grid.setRowColours(1, blue, Qt::white, 1);
    QCOMPARE(grid.backColour(1, 0), red);
    QCOMPARE(grid.backColour(1, 1), blue);
    QCOMPARE(grid.backColour(1, 2), blue);
}

void TestFlexGrid::aCellColourStandsOutOfItsRow() {
    FlexGrid grid;
    size(grid, 2, 3);
    grid.setRowColours(1, blue, Qt::white);
    grid.setBackColour(1, 1, red);
    grid.setBackColour(1, 2, QColor());
    QCOMPARE(grid.backColour(1, 0), blue);
    QCOMPARE(grid.backColour(1, 1), red);
    QVERIFY(!grid.backColour(1, 2).isValid());
    QCOMPARE(grid.foreColour(1, 2), QColor(Qt::white));
}

void TestFlexGrid::invalidColoursGiveTheRowBack() {
    FlexGrid grid;
    size(grid, 2, 2);
    grid.setRowColours(1, blue, Qt::white);
    grid.setBackColour(1, 1, red);
    grid.setRowColours(1, QColor(), QColor());
    QVERIFY(!grid.backColour(1, 0).isValid());
    QVERIFY(!grid.backColour(1, 1).isValid());
    QVERIFY(!grid.foreColour(1, 1).isValid());
}

void TestFlexGrid::coloursCanAllBeCleared() {
    FlexGrid grid;
    size(grid, 3, 2);
    grid.setRowColours(1, blue, Qt::white);
    grid.setBackColour(2, 1, red);
    grid.clearColours();
    QVERIFY(!grid.backColour(1, 0).isValid());
    QVERIFY(!grid.backColour(2, 1).isValid());
}

void TestFlexGrid::aTellingOfBackColourLeavesTheForeColour() {
    FlexGrid grid;
    size(grid, 2, 1);
    grid.setForeColour(1, 0, red);
    grid.setBackColour(1, 0, blue);
    QCOMPARE(grid.foreColour(1, 0), red);
}

void TestFlexGrid::theCurrentRowIsToldOnce() {
    FlexGrid grid;
    size(grid, 5, 2);
    QSignalSpy changed(&grid, &FlexGrid::rowSelectionChanged);
    grid.setRow(3);
    QCOMPARE(grid.row(), 3);
    QCOMPARE(changed.count(), 1);
    grid.setRow(3);
    grid.setCol(1);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(grid.col(), 1);
    QCOMPARE(grid.currentIndex(), grid.model()->index(2, 1));
    grid.setRow(0);
    QCOMPARE(grid.row(), 0);
    QCOMPARE(changed.count(), 2);
}

void TestFlexGrid::aRowThatIsNotThereIsNotMadeCurrent() {
    FlexGrid grid;
    size(grid, 3, 2);
    grid.setRow(2);
    grid.setRow(3);
    grid.setRow(-1);
    grid.setCol(2);
    QCOMPARE(grid.row(), 2);
    QCOMPARE(grid.col(), 0);
}

void TestFlexGrid::cuttingTheCurrentRowMovesToTheLast() {
    FlexGrid grid;
    size(grid, 5, 1);
    grid.setRow(4);
    QSignalSpy changed(&grid, &FlexGrid::rowSelectionChanged);
    grid.setRows(3);
    QCOMPARE(grid.row(), 2);
    QCOMPARE(grid.rowSel(), 2);
    QCOMPARE(changed.count(), 1);
    grid.setRows(1);
    QCOMPARE(grid.row(), 0);
}

void TestFlexGrid::theRangeEndsWhereItBeganUntilMoved() {
    FlexGrid grid;
    size(grid, 6, 1);
    grid.setRow(2);
    QCOMPARE(grid.rowSel(), 2);
    grid.setRowSel(5);
    QCOMPARE(grid.row(), 2);
    QCOMPARE(grid.rowSel(), 5);
    grid.setRow(2);
    QCOMPARE(grid.rowSel(), 2);
}

void TestFlexGrid::topRowScrollsAndIsLimitedByTheRows() {
    FlexGrid grid;
    grid.resize(400, 300);
    size(grid, 1001, 2);
    grid.show();
    QVERIFY(QTest::qWaitForWindowExposed(&grid));
    QCOMPARE(grid.topRow(), 1);
    grid.setTopRow(500);
    QCOMPARE(grid.topRow(), 500);
    QCOMPARE(grid.rowAt(0), 499);
    grid.setTopRow(-3);
    QCOMPARE(grid.topRow(), 1);
    grid.setTopRow(1000);
    QVERIFY(grid.topRow() < 1000);
    QVERIFY(grid.rowViewportPosition(999) + grid.rowHeight(999) <= grid.viewport()->height());
}

void TestFlexGrid::showRowScrollsAsLittleAsNeeded() {
    FlexGrid grid;
    grid.resize(400, 300);
    size(grid, 101, 1);
    grid.show();
    QVERIFY(QTest::qWaitForWindowExposed(&grid));
    grid.showRow(3);
    QCOMPARE(grid.topRow(), 1);
    grid.showRow(60);
    QVERIFY(grid.rowViewportPosition(59) + grid.rowHeight(59) <= grid.viewport()->height());
    QVERIFY(grid.rowViewportPosition(60) + grid.rowHeight(60) > grid.viewport()->height());
    grid.showRow(40);
    QCOMPARE(grid.topRow(), 40);
}

void TestFlexGrid::anEmptiedGridHasNothingToScroll() {
    FlexGrid grid;
    grid.resize(400, 300);
    size(grid, 101, 1);
    grid.show();
    QVERIFY(QTest::qWaitForWindowExposed(&grid));
    grid.setTopRow(50);
    QVERIFY(grid.verticalScrollBar()->isVisible());
    grid.setRows(1);
    QTRY_VERIFY(!grid.verticalScrollBar()->isVisible());
    QCOMPARE(grid.topRow(), 1);
}

void TestFlexGrid::manySmallChangesAreToldAtOnce() {
    FlexGrid grid;
    size(grid, 101, 3);
    QCoreApplication::processEvents();
    QSignalSpy told(grid.model(), &QAbstractItemModel::dataChanged);
    for (int row = 10; row <= 90; ++row)
        grid.setText(row, 1, "x");
    QCOMPARE(told.count(), 0);
    QTRY_COMPARE(told.count(), 1);
    QCOMPARE(told[0][0].toModelIndex().row(), 9);
    QCOMPARE(told[0][1].toModelIndex().row(), 89);
}

void TestFlexGrid::rowsWithColoursAreKnownInTheirOrder() {
    FlexGrid grid;
    size(grid, 1001, 3);
    QVERIFY(grid.rowsWithColours().empty());
    for (const int row : {700, 5, 1000, 42})
        grid.setRowColours(row, Qt::blue, Qt::white);
    grid.setBackColour(0, 1, Qt::red); // a heading is no data row
    grid.setForeColour(43, 2, Qt::red);
    QCOMPARE(grid.rowsWithColours(), (std::vector{5, 42, 43, 700, 1000}));
    grid.setRowColours(42, {}, {});
    grid.setForeColour(43, 2, {});
    grid.setRows(900);
    QCOMPARE(grid.rowsWithColours(), (std::vector{5, 700}));
    grid.setRows(1);
    QVERIFY(grid.rowsWithColours().empty());
}

void TestFlexGrid::aRowWhoseTextChangedIsToldAlone() {
    FlexGrid grid;
    size(grid, 101, 2);
    QString text = QStringLiteral("before");
    grid.setTextFunction([&text](int, int) { return text; });
    QCoreApplication::processEvents();
    QSignalSpy told(grid.model(), &QAbstractItemModel::dataChanged);
    text = QStringLiteral("after");
    grid.textsChanged(7);
    QTRY_COMPARE(told.count(), 1);
    QCOMPARE(told[0][0].toModelIndex().row(), 6);
    QCOMPARE(told[0][1].toModelIndex().row(), 6);
    QCOMPARE(grid.text(7, 1), text);
}

QTEST_MAIN(TestFlexGrid)
#include "test_flexgrid.moc"
