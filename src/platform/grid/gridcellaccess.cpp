#include "platform/grid/gridcellaccess.h"

#include "platform/grid/flexgrid.h"
#include "platform/grid/gridaccess.h"

#include <QHeaderView>

namespace benthor::platform {

QString openAction() {
    return QStringLiteral("Open");
}

GridCellAccess::GridCellAccess(FlexGrid* grid, int row, int col)
    : grid_(grid)
    , row_(row)
    , col_(col) {}

bool GridCellAccess::isValid() const {
    return !grid_.isNull() && row_ < grid_->rows() && col_ < grid_->cols();
}

QAccessibleInterface* GridCellAccess::parent() const {
    return QAccessible::queryAccessibleInterface(grid_.data());
}

/// Of the column alone: a row that is scrolled away is only offscreen.
bool GridCellAccess::isHidden() const {
    return col_ >= 0 ? grid_->columnWidthTwips(col_) == 0 : row_ == 0 || grid_->rowName(row_).isEmpty();
}

QString GridCellAccess::text(QAccessible::Text text) const {
    if (!isValid()) {
        return {};
    }
    if (text == QAccessible::Name) {
        return col_ < 0 ? grid_->rowName(row_) : grid_->text(row_, col_).trimmed();
    }
    return text == QAccessible::Description && row_ > 0 ? grid_->rowWords(row_) : QString();
}

QRect GridCellAccess::rect() const {
    if (!isValid() || isHidden()) {
        return {};
    }
    const auto at = [](const QWidget* widget, const QRect& place) {
        return QRect(widget->mapToGlobal(place.topLeft()), place.size());
    };
    if (row_ > 0 && col_ >= 0) {
        return at(grid_->viewport(), grid_->visualRect(grid_->model()->index(row_ - 1, col_)));
    }
    const QHeaderView* head = row_ == 0 ? grid_->horizontalHeader() : grid_->verticalHeader();
    const int section = row_ == 0 ? col_ : row_ - 1;
    const int from = head->sectionViewportPosition(section);
    const int length = head->sectionSize(section);
    return at(head,
              row_ == 0 ? QRect(from, 0, length, head->height()) : QRect(0, from, head->width(), length));
}

QAccessible::Role GridCellAccess::role() const {
    if (row_ == 0) {
        return QAccessible::ColumnHeader;
    }
    return col_ < 0 ? QAccessible::RowHeader : QAccessible::Cell;
}

QAccessible::State GridCellAccess::state() const {
    QAccessible::State state;
    if (!isValid()) {
        state.invalid = true;
        return state;
    }
    const QRect place = rect();
    state.invisible = isHidden() || !grid_->isVisible();
    state.offscreen =
        place.isEmpty() || !QRect(grid_->mapToGlobal(QPoint()), grid_->size()).intersects(place);
    state.readOnly = true;
    state.disabled = !grid_->isEnabled();
    if (row_ > 0 && col_ >= 0) {
        state.selectable = true;
        state.selected = isSelected();
        state.focusable = true;
        state.focused = grid_->hasFocus() && grid_->row() == row_ && grid_->col() == col_;
    }
    return state;
}

void* GridCellAccess::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::TableCellInterface) {
        return static_cast<QAccessibleTableCellInterface*>(this);
    }
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
}

bool GridCellAccess::isSelected() const {
    return isValid() && grid_->isMarkedSelected(row_);
}

QList<QAccessibleInterface*> GridCellAccess::columnHeaderCells() const {
    auto* whole = static_cast<GridAccess*>(parent());
    return whole != nullptr && isValid() && row_ > 0 && col_ >= 0 ? QList{whole->part(0, col_ + 1)}
                                                                  : QList<QAccessibleInterface*>();
}

QList<QAccessibleInterface*> GridCellAccess::rowHeaderCells() const {
    auto* whole = static_cast<GridAccess*>(parent());
    return whole != nullptr && isValid() && row_ > 0 && col_ >= 0 ? QList{whole->part(row_, 0)}
                                                                  : QList<QAccessibleInterface*>();
}

QStringList GridCellAccess::actionNames() const {
    if (!isValid() || !grid_->isEnabled()) {
        return {};
    }
    if (row_ == 0) {
        return grid_->cells().column(std::max(0, col_)).sortable ? QStringList{pressAction()} : QStringList();
    }
    return {pressAction(), openAction(), showMenuAction(), setFocusAction()};
}

void GridCellAccess::doAction(const QString& action) {
    if (!actionNames().contains(action)) {
        return;
    }
    // A reader waits for the answer, and the act may bring up a box.
    QMetaObject::invokeMethod(
        grid_.data(),
        [grid = grid_, row = row_, col = std::max(0, col_), action] {
            if (grid) {
                grid->actAt(row, col, action);
            }
        },
        Qt::QueuedConnection);
}

QStringList GridCellAccess::keyBindingsForAction(const QString& action) const {
    return action == openAction() ? QStringList{QStringLiteral("Return")} : QStringList();
}

} // namespace benthor::platform
