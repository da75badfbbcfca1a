#include "platform/grid/flexgrid.h"

#include "platform/grid/flexpaint.h"
#include "platform/grid/gridaccess.h"
#include "platform/look/style/paint.h"

#include <QAbstractButton>
#include <QEvent>
#include <QPainter>
#include <QScrollBar>

namespace benthor::platform {

FlexGrid::FlexGrid(QWidget* parent)
    : QTableView(parent)
    , cells_(new FlexModel(this)) {
    tellReadersOfGrids();
    setModel(cells_);
    setItemDelegate(new CellDelegate(this));
    setSelectionMode(NoSelection);
    setEditTriggers(NoEditTriggers);
    setFrameShape(NoFrame);
    setShowGrid(false);
    setWordWrap(false);
    setAutoScroll(false);
    setTabKeyNavigation(false);
    setCornerButtonEnabled(false);
    setVerticalScrollMode(ScrollPerItem);
    setHorizontalScrollMode(ScrollPerPixel);
    setUpHeaders();
    setGridColours({});
    applyHeights();
    connect(cells_, &QAbstractItemModel::dataChanged, this,
            [this](const QModelIndex& first, const QModelIndex& last) {
                cellsChanged(first.row() + 1, last.row() + 1);
            });
    connect(cells_, &QAbstractItemModel::headerDataChanged, this, [this] {
        headingsFitted_ = false;
        refit();
    });
}

void FlexGrid::setUpHeaders() {
    auto* headings = new HeadingBar(this);
    setHorizontalHeader(headings);
    auto* gutter = new SignBar(this);
    setVerticalHeader(gutter);
    gutter->hide();
    // A press on a header must not move the current cell behind our back.
    for (QHeaderView* header : {static_cast<QHeaderView*>(headings), static_cast<QHeaderView*>(gutter)}) {
        disconnect(header, &QHeaderView::sectionPressed, this, nullptr);
        disconnect(header, &QHeaderView::sectionEntered, this, nullptr);
    }
    connect(headings, &QHeaderView::sectionClicked, this, &FlexGrid::headerClicked);
    connect(headings, &QHeaderView::sectionResized, this, [this](int col, int, int size) {
        if (!applying_ && cells_->hasColumn(col))
            cells_->column(col).chosen = size;
    });
    connect(gutter, &QHeaderView::sectionClicked, this, [this](int section) { gutterClicked(section + 1); });
    connect(gutter, &QHeaderView::sectionDoubleClicked, this,
            [this](int section) { emit doubleClicked(section + 1); });
    if (auto* corner = findChild<QAbstractButton*>(QString(), Qt::FindDirectChildrenOnly))
        corner->installEventFilter(this);
}

void FlexGrid::setRows(int count) {
    const int before = rows();
    cells_->setRows(count);
    if (rows() > before) {
        cells_->touch(before, rows() - 1);
        return;
    }
    if (rows() == 1)
        forgetFit();
    viewport()->update();
    rowSel_ = std::min(rowSel_, rows() - 1);
    if (row_ >= rows()) {
        row_ = rowSel_ = rows() - 1;
        syncCurrent();
        emit rowSelectionChanged();
    }
}

void FlexGrid::setCols(int count) {
    cells_->setCols(count);
    col_ = std::clamp(col_, 0, std::max(0, cols() - 1));
    headingsFitted_ = false;
    applyColumns();
    syncCurrent();
    cells_->touch(0, rows() - 1);
}

void FlexGrid::setTextFunction(std::function<QString(int, int)> function) {
    forgetFit();
    cells_->setTextFunction(std::move(function));
}

void FlexGrid::setBackColour(int row, int col, const QColor& colour) {
    cells_->setColours(row, col, {colour, foreColour(row, col)});
}

void FlexGrid::setForeColour(int row, int col, const QColor& colour) {
    cells_->setColours(row, col, {backColour(row, col), colour});
}

void FlexGrid::setRowColours(int row, const QColor& back, const QColor& fore, int firstCol) {
    if (firstCol <= 0) {
        cells_->setRowColours(row, {back, fore});
        return;
    }
    for (int col = firstCol; col < cols(); ++col)
        cells_->setColours(row, col, {back, fore});
}

CellColours FlexGrid::paintedColours(int row, int col) const {
    return cells_->paintedColours(row, col);
}

void FlexGrid::setGridColours(const GridColours& colours) {
    colours_ = colours;
    cells_->setOwnColours({colours.surface, colours.text});
    QPalette palette = viewport()->palette();
    palette.setColor(QPalette::Base, colours.surface);
    palette.setColor(QPalette::Text, colours.text);
    viewport()->setPalette(palette);
    viewport()->update();
    horizontalHeader()->viewport()->update();
    verticalHeader()->viewport()->update();
}

void FlexGrid::setRowSigns(std::function<RowSign(int)> function) {
    verticalHeader()->setVisible(static_cast<bool>(function));
    cells_->setSignFunction(std::move(function));
}

void FlexGrid::refreshSigns() {
    verticalHeader()->viewport()->update();
}

void FlexGrid::setEmptyText(const QString& text) {
    emptyText_ = text;
    viewport()->update();
}

void FlexGrid::paintEvent(QPaintEvent* event) {
    QTableView::paintEvent(event);
    QPainter painter(viewport());
    if (ring_ && hasFocus() && row_ == 0) { // there is no current cell to show it
        const int width = look::focusRingWidth();
        const int near = width / 2;
        const int far = width - near;
        painter.setPen(QPen(colours_.accent, width, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
        painter.drawRect(viewport()->rect().adjusted(near, near, -far, -far));
    }
    if (rows() > 1 || emptyText_.isEmpty())
        return;
    painter.setPen(colours_.headerText);
    constexpr int kFlags = Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap;
    const QRect room = viewport()->rect().adjusted(24, 12, -24, -12);
    const int height = painter.boundingRect(room, kFlags, emptyText_).height();
    // Above the middle: there a box stands that says the same in short.
    painter.drawText(room.adjusted(0, std::max(0, (room.height() - height) / 10), 0, 0), kFlags, emptyText_);
}

/// A window that comes to the front gives the focus back; then it was not brought here.
void FlexGrid::focusInEvent(QFocusEvent* event) {
    ring_ = ring_ || event->reason() != Qt::ActiveWindowFocusReason;
    QTableView::focusInEvent(event);
}

bool FlexGrid::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Paint && qobject_cast<QAbstractButton*>(watched)) {
        auto* corner = static_cast<QWidget*>(watched);
        QPainter painter(corner);
        painter.fillRect(corner->rect(), colours_.header);
        painter.fillRect(QRect(0, corner->height() - 1, corner->width(), 1), colours_.line);
        return true;
    }
    return QTableView::eventFilter(watched, event);
}

void FlexGrid::setRow(int row) {
    if (!cells_->hasRow(row))
        return;
    const bool changed = row != row_;
    row_ = row;
    rowSel_ = row;
    syncCurrent();
    if (changed)
        emit rowSelectionChanged();
}

void FlexGrid::setCol(int col) {
    if (!cells_->hasColumn(col))
        return;
    col_ = col;
    syncCurrent();
}

void FlexGrid::setRowSel(int row) {
    if (cells_->hasRow(row))
        rowSel_ = row;
}

void FlexGrid::syncCurrent() {
    const QModelIndex index = row_ > 0 ? cells_->index(row_ - 1, col_) : QModelIndex();
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
    viewport()->update();
}

int FlexGrid::topRow() const {
    return verticalScrollBar()->value() + 1;
}

void FlexGrid::setTopRow(int row) {
    executeDelayedItemsLayout();
    updateGeometries();
    verticalScrollBar()->setValue(row - 1);
}

void FlexGrid::showRow(int row) {
    if (row < 1 || !cells_->hasRow(row))
        return;
    executeDelayedItemsLayout();
    if (row < topRow()) {
        setTopRow(row);
        return;
    }
    const int space = viewport()->height();
    if (rowViewportPosition(row - 1) + rowHeight(row - 1) <= space)
        return;
    int top = row;
    for (int used = rowHeight(row - 1); top > 1 && used + rowHeight(top - 2) <= space; --top)
        used += rowHeight(top - 2);
    setTopRow(top);
}

} // namespace benthor::platform
