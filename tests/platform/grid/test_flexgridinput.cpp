#include "platform/grid/flexgrid.h"

#include <QHeaderView>
#include <QtTest>

using namespace benthor::platform;

namespace {

/// A grid of 9 data rows and 3 columns on the screen that writes down what it tells.
class ToldGrid : public FlexGrid {
public:
    ToldGrid() {
        resize(500, 400);
        setCols(3);
        setRows(10);
        connect(this, &FlexGrid::rowSelectionChanged, [this] { told.append(QString("row %1").arg(row())); });
        connect(this, &FlexGrid::cellClicked, [this](int at, int col, Qt::KeyboardModifiers modifiers) {
            told.append(QString("clicked %1 %2 %3").arg(at).arg(col).arg(name(modifiers)));
        });
        connect(this, &FlexGrid::mouseReleased, [this](int at, int to, Qt::KeyboardModifiers modifiers) {
            told.append(QString("released %1 %2 %3").arg(at).arg(to).arg(name(modifiers)));
        });
        connect(this, &FlexGrid::doubleClicked,
                [this](int at) { told.append(QString("double %1").arg(at)); });
        connect(this, &FlexGrid::rightClicked, [this](int at) { told.append(QString("right %1").arg(at)); });
        connect(this, &FlexGrid::headerClicked,
                [this](int col) { told.append(QString("header %1").arg(col)); });
        connect(this, &FlexGrid::returnPressed,
                [this](int at) { told.append(QString("return %1").arg(at)); });
        show();
        if (!QTest::qWaitForWindowExposed(this))
            qFatal("the grid does not show");
        QCoreApplication::processEvents();
    }

    QPoint centre(int row, int col) { return visualRect(model()->index(row - 1, col)).center(); }

    void click(int row, int col, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::mouseClick(viewport(), Qt::LeftButton, modifiers, centre(row, col));
    }

    QStringList take() { return std::exchange(told, {}); }

    QStringList told;

private:
    static QString name(Qt::KeyboardModifiers modifiers) {
        if (modifiers & Qt::ShiftModifier)
            return "shift";
        return modifiers & Qt::ControlModifier ? "control" : "plain";
    }
};

} // namespace

class TestFlexGridInput : public QObject {
    Q_OBJECT

private slots:
    void aClickMakesTheCellCurrentAndIsTold();
    void aClickOnTheCurrentRowTellsNoChange();
    void shiftExtendsTheRangeDownAndUp();
    void controlMovesBothEnds();
    void aDragLeavesTheRowAndMovesTheEnd();
    void aRowThatScrollsUnderAPressIsNoDrag();
    void aClickBesideTheRowsTellsNothing();
    void aDoubleClickTellsItsRow();
    void aDoubleClickOnTheHeadingIsNoRow();
    void aClickOnTheHeadingTellsItsColumn();
    void theRightButtonTellsItsRowAndMovesNothing();
    void theMenuKeyTellsTheCurrentRow();
    void aClickInTheGutterIsAClickOnTheRow();
    void arrowsMoveTheRow();
    void shiftWithArrowsMovesTheEnd();
    void arrowsPassHiddenColumns();
    void pagesScroll();
    void homeAndEndGoToFirstAndLast();
    void keysInAnEmptyGridDoNothing();
    void returnActsOnTheRow();
    void aPlainKeyIsToldWhereThereIsNoWayLeft();
    void aKeyThatIsTakenDoesNothingMore();
    void keysOfOthersPass();
    void aReceiverMayDeleteTheGrid();
};

void TestFlexGridInput::aClickMakesTheCellCurrentAndIsTold() {
    ToldGrid grid;
    grid.click(4, 2);
    QCOMPARE(grid.row(), 4);
    QCOMPARE(grid.col(), 2);
    QCOMPARE(grid.take(), QStringList({"row 4", "clicked 4 2 plain", "released 4 4 plain"}));
}

void TestFlexGridInput::aClickOnTheCurrentRowTellsNoChange() {
    ToldGrid grid;
    grid.click(4, 2);
    grid.take();
    grid.click(4, 1);
    QCOMPARE(grid.take(), QStringList({"clicked 4 1 plain", "released 4 4 plain"}));
}

void TestFlexGridInput::shiftExtendsTheRangeDownAndUp() {
    ToldGrid grid;
    grid.click(4, 0);
    grid.take();
    grid.click(7, 0, Qt::ShiftModifier);
    QCOMPARE(grid.take(), QStringList({"clicked 7 0 shift", "released 4 7 shift"}));
    grid.click(2, 0, Qt::ShiftModifier);
    QCOMPARE(grid.take(), QStringList({"clicked 2 0 shift", "released 4 2 shift"}));
    grid.click(5, 0);
    QCOMPARE(grid.rowSel(), 5);
}

void TestFlexGridInput::controlMovesBothEnds() {
    ToldGrid grid;
    grid.click(4, 0);
    grid.take();
    grid.click(6, 0, Qt::ControlModifier);
    QCOMPARE(grid.take(), QStringList({"row 6", "clicked 6 0 control", "released 6 6 control"}));
}

void TestFlexGridInput::aDragLeavesTheRowAndMovesTheEnd() {
    ToldGrid grid;
    QTest::mousePress(grid.viewport(), Qt::LeftButton, {}, grid.centre(3, 0));
    QMouseEvent move(QEvent::MouseMove, grid.centre(6, 0), grid.viewport()->mapToGlobal(grid.centre(6, 0)),
                     Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(grid.viewport(), &move);
    QTest::mouseRelease(grid.viewport(), Qt::LeftButton, {}, grid.centre(6, 0));
    QCOMPARE(grid.take(), QStringList({"row 3", "clicked 3 0 plain", "released 3 6 plain"}));
}

void TestFlexGridInput::aRowThatScrollsUnderAPressIsNoDrag() {
    ToldGrid grid;
    grid.setRows(500);
    connect(&grid, &FlexGrid::rowSelectionChanged, [&grid] { grid.setTopRow(grid.row() - 2); });
    const QPoint at = grid.centre(9, 0);
    QTest::mousePress(grid.viewport(), Qt::LeftButton, {}, at);
    QCOMPARE(grid.topRow(), 7);
    QMouseEvent move(QEvent::MouseMove, at + QPoint(1, 1), grid.viewport()->mapToGlobal(at + QPoint(1, 1)),
                     Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(grid.viewport(), &move);
    QTest::mouseRelease(grid.viewport(), Qt::LeftButton, {}, at);
    QCOMPARE(grid.take().last(), "released 9 9 plain");
}

void TestFlexGridInput::aClickBesideTheRowsTellsNothing() {
    ToldGrid grid;
    grid.setRow(2);
    grid.take();
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, QPoint(20, 340));
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, QPoint(480, 20));
    QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {}, QPoint(20, 340));
    QCOMPARE(grid.take(), QStringList());
    QCOMPARE(grid.row(), 2);
}

void TestFlexGridInput::aDoubleClickTellsItsRow() {
    ToldGrid grid;
    QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {}, grid.centre(5, 1));
    const QStringList told = grid.take();
    QCOMPARE(told.filter("double"), QStringList({"double 5"}));
    QCOMPARE(grid.row(), 5);
}

void TestFlexGridInput::aDoubleClickOnTheHeadingIsNoRow() {
    ToldGrid grid;
    QTest::mouseDClick(grid.horizontalHeader()->viewport(), Qt::LeftButton, {}, QPoint(30, 15));
    QCOMPARE(grid.take().filter("double"), QStringList());
    QCOMPARE(grid.row(), 0);
}

void TestFlexGridInput::aClickOnTheHeadingTellsItsColumn() {
    ToldGrid grid;
    grid.setRow(3);
    grid.setCol(0);
    grid.take();
    const int x = grid.columnViewportPosition(1) + grid.columnWidth(1) / 2;
    QTest::mouseClick(grid.horizontalHeader()->viewport(), Qt::LeftButton, {}, QPoint(x, 15));
    QCOMPARE(grid.take(), QStringList({"header 1"}));
    QCOMPARE(grid.row(), 3);
    QCOMPARE(grid.col(), 0);
    QCOMPARE(grid.currentIndex(), grid.model()->index(2, 0));
}

void TestFlexGridInput::theRightButtonTellsItsRowAndMovesNothing() {
    ToldGrid grid;
    grid.setRow(2);
    grid.take();
    QTest::mouseClick(grid.viewport(), Qt::RightButton, {}, grid.centre(6, 0));
    QTest::mouseClick(grid.viewport(), Qt::RightButton, {}, QPoint(20, 340));
    QCOMPARE(grid.take(), QStringList({"right 6", "right 0"}));
    QCOMPARE(grid.row(), 2);
}

void TestFlexGridInput::theMenuKeyTellsTheCurrentRow() {
    ToldGrid grid;
    grid.setRow(4);
    grid.take();
    QContextMenuEvent byKey(QContextMenuEvent::Keyboard, QPoint(1, 1), QPoint(1, 1));
    QCoreApplication::sendEvent(grid.viewport(), &byKey);
    QContextMenuEvent byMouse(QContextMenuEvent::Mouse, QPoint(1, 1), QPoint(1, 1));
    QCoreApplication::sendEvent(grid.viewport(), &byMouse);
    QCOMPARE(grid.take(), QStringList({"right 4"}));
}

void TestFlexGridInput::aClickInTheGutterIsAClickOnTheRow() {
    ToldGrid grid;
    grid.setRowSigns([](int) { return RowSign(); });
    QCoreApplication::processEvents();
    QWidget* gutter = grid.verticalHeader()->viewport();
    QTest::mouseClick(gutter, Qt::LeftButton, {}, QPoint(10, 28 * 2 + 14));
    QCOMPARE(grid.take(), QStringList({"row 3", "clicked 3 0 plain", "released 3 3 plain"}));
    QTest::mouseDClick(gutter, Qt::LeftButton, {}, QPoint(10, 28 * 2 + 14));
    QCOMPARE(grid.take().filter("double"), QStringList({"double 3"}));
}

void TestFlexGridInput::arrowsMoveTheRow() {
    ToldGrid grid;
    QTest::keyClick(&grid, Qt::Key_Down);
    QCOMPARE(grid.row(), 1);
    QTest::keyClick(&grid, Qt::Key_Down);
    QTest::keyClick(&grid, Qt::Key_Right);
    QCOMPARE(grid.row(), 2);
    QCOMPARE(grid.col(), 1);
    QTest::keyClick(&grid, Qt::Key_Up);
    QTest::keyClick(&grid, Qt::Key_Up);
    QCOMPARE(grid.row(), 1);
    QTest::keyClick(&grid, Qt::Key_Left);
    QTest::keyClick(&grid, Qt::Key_Left);
    QCOMPARE(grid.col(), 0);
}

void TestFlexGridInput::shiftWithArrowsMovesTheEnd() {
    ToldGrid grid;
    grid.setRow(3);
    grid.take();
    QTest::keyClick(&grid, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(&grid, Qt::Key_Down, Qt::ShiftModifier);
    QCOMPARE(grid.row(), 3);
    QCOMPARE(grid.rowSel(), 5);
    QCOMPARE(grid.take(), QStringList());
    QTest::keyClick(&grid, Qt::Key_Down);
    QCOMPARE(grid.row(), 4);
    QCOMPARE(grid.rowSel(), 4);
}

void TestFlexGridInput::arrowsPassHiddenColumns() {
    ToldGrid grid;
    grid.setColumnWidthTwips(1, 0);
    grid.setRow(1);
    QTest::keyClick(&grid, Qt::Key_Right);
    QCOMPARE(grid.col(), 2);
    QTest::keyClick(&grid, Qt::Key_Left);
    QCOMPARE(grid.col(), 0);
}

void TestFlexGridInput::pagesScroll() {
    ToldGrid grid;
    grid.setRows(200);
    grid.setRow(1);
    QTest::keyClick(&grid, Qt::Key_PageDown);
    const int page = grid.row() - 1;
    QVERIFY(page >= 5 && page <= 13);
    QTest::keyClick(&grid, Qt::Key_PageDown);
    QVERIFY(grid.topRow() > 1);
    QVERIFY(grid.rowViewportPosition(grid.row() - 1) + grid.rowHeight(0) <= grid.viewport()->height());
    QTest::keyClick(&grid, Qt::Key_PageUp);
    QTest::keyClick(&grid, Qt::Key_PageUp);
    QCOMPARE(grid.row(), 1);
    QCOMPARE(grid.topRow(), 1);
}

void TestFlexGridInput::homeAndEndGoToFirstAndLast() {
    ToldGrid grid;
    QTest::keyClick(&grid, Qt::Key_End);
    QCOMPARE(grid.row(), 9);
    QTest::keyClick(&grid, Qt::Key_Home);
    QCOMPARE(grid.row(), 1);
}

void TestFlexGridInput::keysInAnEmptyGridDoNothing() {
    ToldGrid grid;
    grid.setRows(1);
    grid.take();
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_PageDown, Qt::Key_Home, Qt::Key_End,
                              Qt::Key_Right, Qt::Key_Return})
        QTest::keyClick(&grid, key);
    QCOMPARE(grid.take(), QStringList());
    QCOMPARE(grid.row(), 0);
}

void TestFlexGridInput::returnActsOnTheRow() {
    ToldGrid grid;
    grid.setRow(6);
    grid.take();
    QTest::keyClick(&grid, Qt::Key_Return);
    QTest::keyClick(&grid, Qt::Key_Enter);
    QCOMPARE(grid.take(), QStringList({"return 6", "return 6"}));
}

void TestFlexGridInput::aPlainKeyIsToldWhereThereIsNoWayLeft() {
    ToldGrid grid;
    grid.setRow(1);
    grid.setCol(0);
    int moved = 0;
    connect(&grid, &FlexGrid::movedByKey, [&moved] { ++moved; });
    for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Home, Qt::Key_PageUp, Qt::Key_Left}) {
        QTest::keyClick(&grid, key);
    }
    QCOMPARE(moved, 4);
    QCOMPARE(grid.row(), 1);
    for (const Qt::KeyboardModifier modifier : {Qt::ShiftModifier, Qt::ControlModifier}) {
        QTest::keyClick(&grid, Qt::Key_Down, modifier);
    }
    QTest::keyClick(&grid, Qt::Key_Return);
    QTest::keyClick(&grid, Qt::Key_A);
    QCOMPARE(moved, 4);
}

void TestFlexGridInput::aKeyThatIsTakenDoesNothingMore() {
    ToldGrid grid;
    grid.setRow(2);
    grid.take();
    connect(&grid, &FlexGrid::keyPressed, [](QKeyEvent* event) {
        if (event->key() == Qt::Key_Down || event->key() == Qt::Key_Return)
            event->accept();
    });
    QTest::keyClick(&grid, Qt::Key_Down);
    QTest::keyClick(&grid, Qt::Key_Return);
    QCOMPARE(grid.take(), QStringList());
    QTest::keyClick(&grid, Qt::Key_Up);
    QCOMPARE(grid.take(), QStringList({"row 1"}));
}

void TestFlexGridInput::keysOfOthersPass() {
    ToldGrid grid;
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    escape.accept();
    QCoreApplication::sendEvent(&grid, &escape);
    QVERIFY(!escape.isAccepted());
}

void TestFlexGridInput::aReceiverMayDeleteTheGrid() {
    auto* grid = new ToldGrid;
    const QPointer<FlexGrid> alive = grid;
    connect(grid, &FlexGrid::returnPressed, [grid] { delete grid; });
    grid->setRow(1);
    QTest::keyClick(grid, Qt::Key_Return);
    QVERIFY(alive.isNull());
}

QTEST_MAIN(TestFlexGridInput)
#include "test_flexgridinput.moc"
