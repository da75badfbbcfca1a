#include "platform/grid/flexgrid.h"
#include "platform/grid/gridcellaccess.h"

#include <QAccessible>
#include <QIcon>
#include <QtTest>

using namespace benthor::platform;

namespace {

/// Three dives under headings; the middle column is hidden.
class Dives : public FlexGrid {
public:
    Dives() {
        setAccessibleName(QStringLiteral("Dives"));
        setCols(3);
        setRows(4);
        for (int col = 0; col < 3; ++col) {
            setText(0, col, QStringLiteral("Heading %1").arg(col));
            for (int row = 1; row < 4; ++row) {
                setText(row, col, QStringLiteral("cell %1 %2").arg(row).arg(col));
            }
        }
        setColumnWidthTwips(1, 0);
        resize(500, 400);
        show();
        if (!QTest::qWaitForWindowExposed(this)) {
            qFatal("the grid does not show");
        }
    }

    QAccessibleInterface* met() { return QAccessible::queryAccessibleInterface(this); }
    QAccessibleInterface* cell(int row, int col) { return met()->tableInterface()->cellAt(row - 1, col); }
    void act(int row, int col, const QString& action) {
        cell(row, col)->actionInterface()->doAction(action);
        QCoreApplication::processEvents();
    }
};

QString described(QAccessibleInterface* one) {
    return one->text(QAccessible::Description);
}

} // namespace

class TestGridAccess : public QObject {
    Q_OBJECT

private slots:
    void aGridIsATableWithHeadingsAndNamedRows();
    void aHiddenColumnIsNotMet();
    void coloursAreToldInWords();
    void aWordOfTheSignIsNotSaidTwice();
    void theFocusIsTheCurrentCell();
    void aPressIsAClick();
    void openIsADoubleClick();
    void aPressMayUnloadTheGrid();
    void cellsOfRowsThatWentAreInvalid();
    void childrenAreWhereTheirIndexSays();
    void anEmptyGridSaysWhatToDo();
};

void TestGridAccess::aGridIsATableWithHeadingsAndNamedRows() {
    Dives grid;
    QCOMPARE(grid.met()->role(), QAccessible::Table);
    QCOMPARE(grid.met()->text(QAccessible::Name), QStringLiteral("Dives"));
    QAccessibleTableInterface* table = grid.met()->tableInterface();
    QCOMPARE(table->rowCount(), 3);
    QCOMPARE(table->columnCount(), 3);
    QCOMPARE(table->columnDescription(2), QStringLiteral("Heading 2"));
    QCOMPARE(table->rowDescription(0), QStringLiteral("Row 1"));
    grid.setRowNames([&grid](int row) { return grid.text(row, 0); });
    QCOMPARE(table->rowDescription(1), QStringLiteral("cell 2 0"));
    QAccessibleInterface* cell = grid.cell(2, 2);
    QCOMPARE(cell->role(), QAccessible::Cell);
    QCOMPARE(cell->text(QAccessible::Name), QStringLiteral("cell 2 2"));
    QCOMPARE(cell->tableCellInterface()->rowIndex(), 1);
    QCOMPARE(cell->tableCellInterface()->columnIndex(), 2);
    const auto above = cell->tableCellInterface()->columnHeaderCells();
    QCOMPARE(above.size(), 1);
    QCOMPARE(above.first()->role(), QAccessible::ColumnHeader);
    QCOMPARE(above.first()->text(QAccessible::Name), QStringLiteral("Heading 2"));
    const auto before = cell->tableCellInterface()->rowHeaderCells();
    QCOMPARE(before.size(), 1);
    QCOMPARE(before.first()->role(), QAccessible::RowHeader);
    QCOMPARE(before.first()->text(QAccessible::Name), QStringLiteral("cell 2 0"));
}

void TestGridAccess::aHiddenColumnIsNotMet() {
    Dives grid;
    QVERIFY(grid.cell(1, 1)->state().invisible);
    QVERIFY(!grid.cell(1, 2)->state().invisible);
}

void TestGridAccess::coloursAreToldInWords() {
    Dives grid;
    QCOMPARE(described(grid.cell(1, 0)), QString());
    QVERIFY(!grid.cell(1, 0)->state().selected);
    grid.setRowColours(1, QColor(0, 0, 255), Qt::white);
    grid.setRowColours(2, QColor(255, 255, 0), {}, 1); // the first column keeps its own
    grid.setRowColours(3, QColor(255, 0, 0), {});
    QCOMPARE(described(grid.cell(1, 0)), QStringLiteral("selected"));
    QVERIFY(grid.cell(1, 2)->state().selected);
    QVERIFY(grid.met()->tableInterface()->isRowSelected(0));
    QCOMPARE(grid.met()->tableInterface()->selectedRows(), QList<int>{0});
    QCOMPARE(described(grid.cell(2, 0)), QStringLiteral("already stored"));
    QVERIFY(!grid.cell(2, 2)->state().selected);
    QCOMPARE(described(grid.cell(3, 2)), QStringLiteral("has errors"));
}

void TestGridAccess::aWordOfTheSignIsNotSaidTwice() {
    Dives grid;
    grid.setRowSigns([](int row) {
        return RowSign{QIcon(), row == 1 ? QStringLiteral("Selected for download") : QStringLiteral("Old")};
    });
    grid.setRowColours(1, QColor(0, 0, 255), {});
    grid.setRowColours(2, QColor(255, 0, 0), {});
    QCOMPARE(described(grid.cell(1, 0)), QStringLiteral("Selected for download"));
    QCOMPARE(described(grid.cell(2, 0)), QStringLiteral("has errors, Old"));
}

void TestGridAccess::theFocusIsTheCurrentCell() {
    Dives grid;
    QCOMPARE(grid.met()->focusChild(), nullptr);
    grid.setFocus();
    grid.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&grid));
    grid.setRow(2);
    QCOMPARE(grid.met()->focusChild(), grid.cell(2, 0));
    QVERIFY(grid.cell(2, 0)->state().focused);
    QVERIFY(!grid.cell(1, 0)->state().focused);
}

void TestGridAccess::aPressIsAClick() {
    Dives grid;
    QStringList told;
    connect(&grid, &FlexGrid::cellClicked, &grid,
            [&told](int row, int col) { told += QStringLiteral("clicked %1 %2").arg(row).arg(col); });
    connect(&grid, &FlexGrid::mouseReleased, &grid,
            [&told](int row, int to) { told += QStringLiteral("released %1 %2").arg(row).arg(to); });
    grid.act(3, 2, QAccessibleActionInterface::pressAction());
    QCOMPARE(told, (QStringList{QStringLiteral("clicked 3 2"), QStringLiteral("released 3 3")}));
    QCOMPARE(grid.row(), 3);
}

void TestGridAccess::openIsADoubleClick() {
    Dives grid;
    QList<int> opened;
    connect(&grid, &FlexGrid::doubleClicked, &grid, [&opened](int row) { opened += row; });
    grid.act(2, 0, openAction());
    QCOMPARE(opened, QList<int>{2});
    grid.setEnabled(false);
    QVERIFY(grid.cell(2, 0)->actionInterface()->actionNames().isEmpty());
}

void TestGridAccess::aPressMayUnloadTheGrid() {
    auto* grid = new Dives;
    connect(grid, &FlexGrid::cellClicked, grid, [grid] { delete grid; });
    const QPointer<FlexGrid> alive = grid;
    grid->act(1, 0, QAccessibleActionInterface::pressAction());
    QVERIFY(alive.isNull());
}

void TestGridAccess::cellsOfRowsThatWentAreInvalid() {
    Dives grid;
    const QAccessible::Id last = QAccessible::uniqueId(grid.cell(3, 0));
    const QAccessible::Id first = QAccessible::uniqueId(grid.cell(1, 0));
    grid.setRows(2);
    QAccessibleInterface* gone = QAccessible::accessibleInterface(last);
    QVERIFY(gone == nullptr || !gone->isValid());
    QVERIFY(QAccessible::accessibleInterface(first)->isValid());
    QCOMPARE(grid.met()->tableInterface()->cellAt(1, 0), nullptr);
    grid.setRows(4);
    QCOMPARE(grid.cell(1, 0)->text(QAccessible::Name), QStringLiteral("cell 1 0"));
    grid.setCols(1); // every cell stands for another one now
    QCOMPARE(grid.cell(1, 0)->text(QAccessible::Name), QStringLiteral("cell 1 0"));
    QCOMPARE(grid.met()->childCount(), 4 * 2);
}

void TestGridAccess::childrenAreWhereTheirIndexSays() {
    Dives grid;
    for (int index = 0; index < grid.met()->childCount(); ++index) {
        QAccessibleInterface* child = grid.met()->child(index);
        QVERIFY(child != nullptr);
        QCOMPARE(grid.met()->indexOfChild(child), index);
        QCOMPARE(child->parent(), grid.met());
    }
    QCOMPARE(grid.met()->child(grid.met()->childCount()), nullptr);
}

void TestGridAccess::anEmptyGridSaysWhatToDo() {
    Dives grid;
    grid.setEmptyText(QStringLiteral("Connect the device"));
    QCOMPARE(described(grid.met()), QString());
    grid.setRows(1);
    QCOMPARE(described(grid.met()), QStringLiteral("Connect the device"));
}

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    TestGridAccess test;
    return QTest::qExec(&test, argc, argv);
}
#include "test_gridaccess.moc"
