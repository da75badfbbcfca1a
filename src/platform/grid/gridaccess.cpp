#include "platform/grid/gridaccess.h"

#include "platform/grid/flexgrid.h"
#include "platform/grid/gridcellaccess.h"

namespace benthor::platform {

namespace {

QAccessibleInterface* gridFactory(const QString& className, QObject* object) {
    auto* grid = qobject_cast<FlexGrid*>(object);
    return grid != nullptr && className == QLatin1String("benthor::platform::FlexGrid") ? new GridAccess(grid)
                                                                                        : nullptr;
}

} // namespace

void tellReadersOfGrids() {
    QAccessible::installFactory(gridFactory); // known ones are not added again
}

GridAccess::GridAccess(FlexGrid* grid)
    : QAccessibleWidget(grid, QAccessible::Table) {}

GridAccess::~GridAccess() {
    for (const QAccessible::Id id : std::as_const(made_)) {
        QAccessible::deleteAccessibleInterface(id);
    }
}

FlexGrid* GridAccess::grid() const {
    return qobject_cast<FlexGrid*>(object());
}

void* GridAccess::interface_cast(QAccessible::InterfaceType type) {
    return type == QAccessible::TableInterface ? static_cast<QAccessibleTableInterface*>(this)
                                               : QAccessibleWidget::interface_cast(type);
}

QAccessible::State GridAccess::state() const {
    QAccessible::State state = QAccessibleWidget::state();
    state.multiSelectable = true;
    state.readOnly = true;
    return state;
}

QString GridAccess::text(QAccessible::Text text) const {
    if (text == QAccessible::Description && grid()->rows() <= 1) {
        return grid()->emptyText();
    }
    return QAccessibleWidget::text(text);
}

int GridAccess::childCount() const {
    return grid()->rows() * (grid()->cols() + 1);
}

QAccessibleInterface* GridAccess::child(int index) const {
    if (index < 0 || index >= childCount()) {
        return nullptr;
    }
    const QAccessible::Id known = made_.value(index, 0);
    if (known != 0) {
        return QAccessible::accessibleInterface(known);
    }
    const int width = grid()->cols() + 1;
    auto* made = new GridCellAccess(grid(), index / width, index % width - 1); // the cache's
    made_.insert(index, QAccessible::registerAccessibleInterface(made));
    return made;
}

QAccessibleInterface* GridAccess::part(int row, int place) const {
    const int width = grid()->cols() + 1;
    return row >= 0 && place >= 0 && place < width ? child(row * width + place) : nullptr;
}

int GridAccess::indexOfChild(const QAccessibleInterface* child) const {
    const auto* cell = dynamic_cast<const GridCellAccess*>(child);
    return cell == nullptr ? -1 : cell->row() * (grid()->cols() + 1) + cell->col() + 1;
}

QAccessibleInterface* GridAccess::childAt(int x, int y) const {
    const QModelIndex index = grid()->indexAt(grid()->viewport()->mapFromGlobal(QPoint(x, y)));
    return index.isValid() ? cellAt(index.row(), index.column()) : nullptr;
}

QAccessibleInterface* GridAccess::focusChild() const {
    return grid()->row() > 0 ? cellAt(grid()->row() - 1, grid()->col()) : nullptr;
}

QAccessibleInterface* GridAccess::cellAt(int row, int column) const {
    return row >= 0 && row < rowCount() ? part(row + 1, column + 1) : nullptr;
}

int GridAccess::columnCount() const {
    return grid()->cols();
}

int GridAccess::rowCount() const {
    return grid()->rows() - 1;
}

QString GridAccess::columnDescription(int column) const {
    return grid()->text(0, column);
}

QString GridAccess::rowDescription(int row) const {
    return grid()->rowName(row + 1);
}

bool GridAccess::isRowSelected(int row) const {
    return grid()->isMarkedSelected(row + 1);
}

QList<int> GridAccess::selectedRows() const {
    QList<int> rows;
    for (int row = 0; row < rowCount(); ++row) {
        if (isRowSelected(row)) {
            rows += row;
        }
    }
    return rows;
}

int GridAccess::selectedRowCount() const {
    return static_cast<int>(selectedRows().size());
}

QList<QAccessibleInterface*> GridAccess::selectedCells() const {
    QList<QAccessibleInterface*> cells;
    for (const int row : selectedRows()) {
        for (int col = 0; col < columnCount(); ++col) {
            cells += cellAt(row, col);
        }
    }
    return cells;
}

int GridAccess::selectedCellCount() const {
    return selectedRowCount() * columnCount();
}

bool GridAccess::selectRow(int row) {
    QAccessibleInterface* cell = cellAt(row, std::max(0, grid()->col()));
    if (cell == nullptr) {
        return false;
    }
    cell->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    return true;
}

/// The cells know row and column by number and read the grid when they are asked: only where there are other
/// columns, or fewer rows, do they stand for something else.
void GridAccess::modelChange(QAccessibleTableModelChangeEvent* event) {
    const auto change = event->modelChangeType();
    if (change == QAccessibleTableModelChangeEvent::DataChanged ||
        change == QAccessibleTableModelChangeEvent::RowsInserted) {
        return;
    }
    const int left = change == QAccessibleTableModelChangeEvent::RowsRemoved ? childCount() : 0;
    made_.removeIf([left](const QHash<int, QAccessible::Id>::iterator& one) {
        if (one.key() >= left) {
            QAccessible::deleteAccessibleInterface(one.value());
            return true;
        }
        return false;
    });
}

} // namespace benthor::platform
