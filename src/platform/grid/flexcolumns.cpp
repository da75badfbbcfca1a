// Widths, heights, fonts and the order of the columns.

#include "platform/grid/flexgrid.h"
#include "platform/grid/flexpaint.h"

#include <QEvent>
#include <QScopedValueRollback>

namespace benthor::platform {

namespace {
constexpr int twipsPerPixel = 15;
// Rows looked at all over the grid, besides those in view, so that scrolling seldom widens a column.
constexpr int sampledRows = 48;
} // namespace

int FlexGrid::columnWidthTwips(int col) const {
    return cells_->hasColumn(col) ? cells_->column(col).twips : 0;
}

void FlexGrid::setColumnWidthTwips(int col, int twips) {
    if (!cells_->hasColumn(col))
        return;
    cells_->column(col).twips = std::max(twips, 0);
    cells_->column(col).chosen = 0;
    applyColumn(col);
}

void FlexGrid::setColumnAlignment(int col, Qt::Alignment alignment) {
    if (!cells_->hasColumn(col))
        return;
    cells_->column(col).alignment = alignment & Qt::AlignHorizontal_Mask;
    cells_->touch(0, rows() - 1);
}

void FlexGrid::moveColumn(int from, int to) {
    cells_->moveColumn(from, to);
    applyColumns();
}

void FlexGrid::applyColumn(int col) {
    const QScopedValueRollback guard(applying_, true);
    const FlexColumn& column = cells_->column(col);
    horizontalHeader()->setSectionHidden(col, column.twips == 0);
    if (column.twips == 0)
        return;
    const int told = (column.twips + twipsPerPixel / 2) / twipsPerPixel;
    const int fitting = std::max(told, std::min(column.needed, maximumFit));
    horizontalHeader()->resizeSection(col, column.chosen > 0 ? column.chosen : fitting);
}

void FlexGrid::applyColumns() {
    for (int col = 0; col < cols(); ++col)
        applyColumn(col);
}

void FlexGrid::setRowHeightPx(int row, int pixels) {
    if (row >= 1 && cells_->hasRow(row))
        verticalHeader()->resizeSection(row - 1, std::max(pixels, fontMetrics().height()));
}

void FlexGrid::setDefaultRowHeightPx(int pixels) {
    rowHeight_ = pixels;
    applyHeights();
}

void FlexGrid::applyHeights() {
    verticalHeader()->setDefaultSectionSize(std::max(rowHeight_, fontMetrics().height() + 4));
}

void FlexGrid::setFontSize(double points) {
    QFont sized = font();
    sized.setPointSizeF(points);
    setFont(sized);
}

void FlexGrid::setFigureFont(const QFont& font) {
    figureFont_ = font;
    hasFigureFont_ = true;
    forgetFit();
    refit();
    viewport()->update();
}

const TextWidths& FlexGrid::cellWidths(int col) const {
    if (!hasFigureFont_ || cells_->column(col).alignment != Qt::AlignRight) {
        if (!widths_)
            widths_.emplace(font());
        return *widths_;
    }
    if (!figureWidths_) {
        QFont figures = figureFont_;
        if (font().pixelSize() > 0)
            figures.setPixelSize(font().pixelSize());
        else
            figures.setPointSizeF(font().pointSizeF());
        figureWidths_.emplace(figures);
    }
    return *figureWidths_;
}

void FlexGrid::setSortableColumns(const QList<int>& columns) {
    for (int col = 0; col < cols(); ++col)
        cells_->column(col).sortable = columns.contains(col);
    cells_->touch(0, 0);
}

void FlexGrid::setSortIndicator(int col, bool ascending) {
    sortSlot_ = cells_->hasColumn(col) ? cells_->column(col).slot : -1;
    sortAscending_ = ascending;
    horizontalHeader()->viewport()->update();
}

int FlexGrid::sortColumn() const {
    for (int col = 0; col < cols(); ++col) {
        if (cells_->column(col).slot == sortSlot_)
            return col;
    }
    return -1;
}

void FlexGrid::forgetFit() {
    widths_.reset();
    figureWidths_.reset();
    headingsFitted_ = false;
    fitted_.clear();
    for (int col = 0; col < cols(); ++col)
        cells_->column(col).needed = 0;
}

void FlexGrid::cellsChanged(int firstRow, int lastRow) {
    for (int row = firstRow; row <= lastRow && row < static_cast<int>(fitted_.size()); ++row)
        fitted_[static_cast<size_t>(row)] = false;
    refit();
    verticalHeader()->viewport()->update();
}

void FlexGrid::refit() {
    if (isVisible())
        fitColumns();
}

void FlexGrid::fitHeadings() {
    const auto* headings = static_cast<const HeadingBar*>(horizontalHeader());
    for (int col = 0; col < cols(); ++col) {
        FlexColumn& column = cells_->column(col);
        column.needed = std::max(column.needed, headings->neededWidth(col));
    }
    headingsFitted_ = true;
    const int step = std::max(1, rows() / sampledRows);
    for (int row = 1; row < rows(); row += step)
        fitRow(row);
}

void FlexGrid::fitRow(int row) {
    if (fitted_[static_cast<size_t>(row)])
        return;
    fitted_[static_cast<size_t>(row)] = true;
    for (int col = 0; col < cols(); ++col) {
        FlexColumn& column = cells_->column(col);
        if (column.twips == 0)
            continue;
        const QString text = cells_->text(row, col);
        if (text.isEmpty())
            continue;
        const int width = cellWidths(col).of(text) + cellMarginLeft + cellMarginRight;
        column.needed = std::max(column.needed, width);
    }
}

void FlexGrid::fitColumns() {
    fitted_.resize(static_cast<size_t>(rows()));
    if (!headingsFitted_)
        fitHeadings();
    const int first = topRow();
    const int last = std::min(rows() - 1, first + rowsPerPage() + 1);
    for (int row = first; row <= last; ++row)
        fitRow(row);
    applyColumns();
}

int FlexGrid::rowsPerPage() const {
    const int top = topRow() - 1;
    int count = 0;
    for (int used = 0, row = top; row < rows() - 1; ++row, ++count) {
        used += rowHeight(row);
        if (used > viewport()->height())
            break;
    }
    return std::max(count, 1);
}

void FlexGrid::changeEvent(QEvent* event) {
    widths_.reset();
    figureWidths_.reset();
    QTableView::changeEvent(event);
    if (event->type() != QEvent::FontChange && event->type() != QEvent::StyleChange)
        return;
    applyHeights();
    forgetFit();
    updateGeometries();
    refit();
}

void FlexGrid::showEvent(QShowEvent* event) {
    QTableView::showEvent(event);
    executeDelayedItemsLayout();
    refit();
}

void FlexGrid::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    refit();
}

void FlexGrid::scrollContentsBy(int dx, int dy) {
    QTableView::scrollContentsBy(dx, dy);
    if (dy != 0)
        refit();
}

} // namespace benthor::platform
