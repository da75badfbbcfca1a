#pragma once

#include <QAccessibleWidget>
#include <QHash>

namespace benthor::platform {

class FlexGrid;

/// A grid as a screen reader meets it: a table with its headings, its rows and a name for each row. A row
/// whose colour says something says it in its cells' descriptions, too, and a blue one is selected. A cell
/// can be pressed, which is a plain click on it, and opened, which is a double click.
class GridAccess : public QAccessibleWidget, public QAccessibleTableInterface {
public:
    explicit GridAccess(FlexGrid* grid);
    ~GridAccess() override;

    void* interface_cast(QAccessible::InterfaceType type) override;
    QAccessible::State state() const override;
    QString text(QAccessible::Text text) const override;

    /// Row by row with the headings first; each row begins with its name. Hidden columns count.
    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* focusChild() const override;

    QAccessibleInterface* caption() const override { return nullptr; }
    QAccessibleInterface* summary() const override { return nullptr; }
    QAccessibleInterface* cellAt(int row, int column) const override;
    int selectedCellCount() const override;
    QList<QAccessibleInterface*> selectedCells() const override;
    QString columnDescription(int column) const override;
    QString rowDescription(int row) const override;
    int selectedColumnCount() const override { return 0; }
    int selectedRowCount() const override;
    int columnCount() const override;
    int rowCount() const override;
    QList<int> selectedColumns() const override { return {}; }
    QList<int> selectedRows() const override;
    bool isColumnSelected(int) const override { return false; }
    bool isRowSelected(int row) const override;
    /// A plain click on the row; several are chosen by the keyboard.
    bool selectRow(int row) override;
    bool selectColumn(int) override { return false; }
    bool unselectRow(int) override { return false; }
    bool unselectColumn(int) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent* event) override;

    FlexGrid* grid() const;
    /// `row` counts from 0 with the headings, `place` from 0 with the row's name.
    QAccessibleInterface* part(int row, int place) const;

private:
    mutable QHash<int, QAccessible::Id> made_; // by index
};

/// What grids are told as, from now on. More than one call does no harm.
void tellReadersOfGrids();

} // namespace benthor::platform
