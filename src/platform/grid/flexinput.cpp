// Mouse and keys. The base class is not asked: it would move the current cell without telling, and by its own
// rules.

#include "platform/grid/flexgrid.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>

namespace benthor::platform {

void FlexGrid::moveTo(int row, int col) {
    col_ = col;
    setRow(row);
}

void FlexGrid::gutterClicked(int row) {
    const QPointer<FlexGrid> alive = this;
    const Qt::KeyboardModifiers modifiers = QApplication::keyboardModifiers();
    if (modifiers & Qt::ShiftModifier)
        setRowSel(row);
    else
        setRow(row);
    if (alive)
        emit cellClicked(row, col_, modifiers);
    if (alive)
        emit mouseReleased(row_, rowSel_, modifiers);
}

void FlexGrid::mousePressEvent(QMouseEvent* event) {
    const QModelIndex index = indexAt(event->position().toPoint());
    press_.armed = event->button() == Qt::LeftButton && index.isValid();
    if (!press_.armed)
        return;
    press_ = {true, false, event->position().toPoint(), index.row() + 1, index.column()};
    if (event->modifiers() & Qt::ShiftModifier)
        setRowSel(press_.row);
    else
        moveTo(press_.row, press_.col);
}

void FlexGrid::mouseMoveEvent(QMouseEvent* event) {
    if (!press_.armed || !(event->buttons() & Qt::LeftButton))
        return;
    const QPoint at = event->position().toPoint();
    // The rows may have scrolled under the resting mouse: only a real drag counts.
    if (!press_.dragging && (at - press_.at).manhattanLength() < QApplication::startDragDistance())
        return;
    press_.dragging = true;
    int target = rowAt(std::clamp(at.y(), 0, std::max(0, viewport()->height() - 1))) + 1;
    if (target == 0)
        target = rows() - 1;
    if (at.y() < 0)
        target = std::max(1, topRow() - 1);
    else if (at.y() >= viewport()->height())
        target = std::min(rows() - 1, topRow() + rowsPerPage());
    setRowSel(target);
    showRow(target);
}

void FlexGrid::mouseReleaseEvent(QMouseEvent* event) {
    const QPointer<FlexGrid> alive = this; // a receiver may unload the screen
    const QPoint at = event->position().toPoint();
    const QPoint global = event->globalPosition().toPoint();
    const Qt::KeyboardModifiers modifiers = event->modifiers();
    if (event->button() == Qt::RightButton) {
        emit rightClicked(rowAt(at.y()) + 1, global);
        return;
    }
    if (event->button() != Qt::LeftButton || !press_.armed)
        return;
    press_.armed = false;
    emit cellClicked(press_.row, press_.col, modifiers);
    if (alive)
        emit mouseReleased(row_, rowSel_, modifiers);
}

void FlexGrid::mouseDoubleClickEvent(QMouseEvent* event) {
    press_.armed = false;
    const QModelIndex index = indexAt(event->position().toPoint());
    if (event->button() != Qt::LeftButton || !index.isValid())
        return;
    const QPointer<FlexGrid> alive = this;
    const int row = index.row() + 1;
    if (row != row_)
        moveTo(row, index.column());
    if (alive)
        emit doubleClicked(row);
}

void FlexGrid::contextMenuEvent(QContextMenuEvent* event) {
    event->accept(); // the mouse's own is told on the release of its button
    if (event->reason() != QContextMenuEvent::Keyboard)
        return;
    const QRect cell = row_ > 0 ? visualRect(cells_->index(row_ - 1, col_)) : viewport()->rect();
    emit rightClicked(row_, viewport()->mapToGlobal(cell.center()));
}

void FlexGrid::moveByKey(int row, bool extend) {
    const int target = std::clamp(row, std::min(1, rows() - 1), rows() - 1);
    const QPointer<FlexGrid> alive = this;
    if (extend)
        setRowSel(target);
    else
        setRow(target);
    if (alive)
        showRow(target);
}

void FlexGrid::moveColumnByKey(int step) {
    int col = col_ + step;
    while (cells_->hasColumn(col) && cells_->column(col).twips == 0)
        col += step;
    if (!cells_->hasColumn(col))
        return;
    setCol(col);
    if (row_ > 0)
        scrollTo(cells_->index(row_ - 1, col));
}

/// False for a key that does not move the current cell.
bool FlexGrid::moveBy(int key, bool extend) {
    const int from = extend ? rowSel_ : row_;
    switch (key) {
    case Qt::Key_Up:
        moveByKey(from - 1, extend);
        return true;
    case Qt::Key_Down:
        moveByKey(from + 1, extend);
        return true;
    case Qt::Key_PageUp:
        moveByKey(from - rowsPerPage(), extend);
        return true;
    case Qt::Key_PageDown:
        moveByKey(from + rowsPerPage(), extend);
        return true;
    case Qt::Key_Home:
        moveByKey(1, extend);
        return true;
    case Qt::Key_End:
        moveByKey(rows() - 1, extend);
        return true;
    case Qt::Key_Left:
        moveColumnByKey(-1);
        return true;
    case Qt::Key_Right:
        moveColumnByKey(1);
        return true;
    default:
        return false;
    }
}

void FlexGrid::keyPressEvent(QKeyEvent* event) {
    const QPointer<FlexGrid> alive = this;
    event->ignore();
    emit keyPressed(event);
    if (!alive || event->isAccepted())
        return;
    const Qt::KeyboardModifiers modifiers = event->modifiers();
    if (moveBy(event->key(), modifiers & Qt::ShiftModifier)) {
        event->accept();
        if (alive && !(modifiers & (Qt::ShiftModifier | Qt::ControlModifier)))
            emit movedByKey();
        return;
    }
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && row_ > 0) {
        event->accept();
        emit returnPressed(row_);
    }
}

} // namespace benthor::platform
