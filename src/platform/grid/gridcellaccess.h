#pragma once

#include <QAccessible>
#include <QPointer>

namespace benthor::platform {

class FlexGrid;

/// A cell of a grid, a heading, or the name of a row, as a screen reader meets it.
class GridCellAccess final : public QAccessibleInterface,
                             public QAccessibleTableCellInterface,
                             public QAccessibleActionInterface {
public:
    /// `row` of the grid, 0 for the headings; `col` of the grid, -1 for the name of the row.
    GridCellAccess(FlexGrid* grid, int row, int col);

    bool isValid() const override;
    QObject* object() const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    QAccessibleInterface* parent() const override;
    QAccessibleInterface* child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QString text(QAccessible::Text text) const override;
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override;
    QAccessible::Role role() const override;
    QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    bool isSelected() const override;
    QList<QAccessibleInterface*> columnHeaderCells() const override;
    QList<QAccessibleInterface*> rowHeaderCells() const override;
    int columnIndex() const override { return std::max(0, col_); }
    int rowIndex() const override { return std::max(0, row_ - 1); }
    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    QAccessibleInterface* table() const override { return parent(); }

    QStringList actionNames() const override;
    void doAction(const QString& action) override;
    QStringList keyBindingsForAction(const QString& action) const override;

    int row() const { return row_; }
    int col() const { return col_; }

private:
    bool isHidden() const;

    QPointer<FlexGrid> grid_;
    int row_;
    int col_;
};

/// The name under which a cell offers its double click.
QString openAction();

} // namespace benthor::platform
