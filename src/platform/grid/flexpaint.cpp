#include "platform/grid/flexpaint.h"

#include "platform/grid/flexgrid.h"
#include "platform/look/contrast.h"
#include "platform/look/style/paint.h"
#include "platform/look/type.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace benthor::platform {

namespace {

constexpr int signSize = 16; // of a row, in pixels of the layout

QRect textArea(const QRect& cell) {
    return cell.adjusted(cellMarginLeft, 0, -cellMarginRight, -1);
}

void drawLines(QPainter* painter, const QRect& cell, const QColor& line) {
    painter->fillRect(QRect(cell.right(), cell.top(), 1, cell.height()), line);
    painter->fillRect(QRect(cell.left(), cell.bottom(), cell.width(), 1), line);
}

/// Where the heading is broken into two lines so that the longer one is shortest; -1 where there is no blank.
qsizetype bestBreak(const QString& text, const TextWidths& widths) {
    qsizetype best = -1;
    int bestWidth = widths.of(text);
    for (qsizetype at = text.indexOf(u' '); at >= 0; at = text.indexOf(u' ', at + 1)) {
        const int width = std::max(widths.of(text.first(at)), widths.of(text.sliced(at + 1)));
        if (width < bestWidth) {
            bestWidth = width;
            best = at;
        }
    }
    return best;
}

void drawSortArrow(QPainter* painter, QPointF centre, bool up) {
    const double rise = up ? -1.0 : 1.0;
    const QPointF corners[] = {centre + QPointF(-4, -2.5 * rise), centre + QPointF(4, -2.5 * rise),
                               centre + QPointF(0, 2.5 * rise)};
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->drawPolygon(corners, 3);
    painter->setRenderHint(QPainter::Antialiasing, false);
}

} // namespace

CellDelegate::CellDelegate(FlexGrid* grid)
    : QStyledItemDelegate(grid)
    , grid_(grid) {}

void CellDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
    const int row = index.row() + 1;
    const int col = index.column();
    const CellColours colours = grid_->paintedColours(row, col);
    painter->fillRect(option.rect, colours.back);
    drawLines(painter, option.rect, grid_->gridColours().line);

    // A line end that a cell keeps takes no room.
    QString text = grid_->text(row, col);
    while (text.endsWith(u'\r') || text.endsWith(u'\n')) {
        text.chop(1);
    }
    const QRect area = textArea(option.rect);
    if (!text.isEmpty()) {
        const TextWidths& widths = grid_->cellWidths(col);
        painter->setFont(widths.font());
        painter->setPen(colours.fore);
        const int flags = Qt::TextSingleLine | Qt::AlignVCenter | grid_->cells().column(col).alignment;
        const bool fits = widths.of(text) <= area.width();
        painter->drawText(area, flags,
                          fits ? text : widths.metrics().elidedText(text, Qt::ElideRight, area.width()));
    }
    if (row == grid_->row() && col == grid_->col()) {
        const bool own = !grid_->backColour(row, col).isValid();
        const int width = grid_->hasFocus() ? look::focusRingWidth() : 1;
        painter->setPen(QPen(own ? grid_->gridColours().accent : look::readableOn(colours.back), width,
                             Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
        painter->setBrush(Qt::NoBrush);
        const QRect inside = option.rect.adjusted(0, 0, -1, -1);
        const int near = width / 2;
        const int far = width - near;
        painter->drawRect(inside.adjusted(near, near, -far, -far));
    }
}

QSize CellDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex& index) const {
    const TextWidths& widths = grid_->cellWidths(index.column());
    const QString text = grid_->text(index.row() + 1, index.column());
    return {widths.of(text) + cellMarginLeft + cellMarginRight, widths.metrics().height() + 4};
}

bool CellDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                             const QModelIndex& index) {
    if (event->type() != QEvent::ToolTip || !index.isValid())
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    const bool cut = sizeHint(option, index).width() > view->visualRect(index).width();
    const QString text = cut ? grid_->text(index.row() + 1, index.column()) : QString();
    QToolTip::showText(event->globalPos(), text, view);
    return true;
}

HeadingBar::HeadingBar(FlexGrid* grid)
    : QHeaderView(Qt::Horizontal, grid)
    , grid_(grid) {
    setSectionsClickable(true);
    setHighlightSections(false);
    setMinimumSectionSize(8);
    setMouseTracking(true);
}

QSize HeadingBar::sizeHint() const {
    const int lines = 2 * QFontMetrics(grid_->font()).lineSpacing() + 6;
    return {QHeaderView::sizeHint().width(), std::max(headerHeight, lines)};
}

QFont HeadingBar::headingFont(int col) const {
    QFont font = grid_->font();
    if (col == grid_->sortColumn())
        font.setWeight(QFont::DemiBold);
    return font;
}

int HeadingBar::neededWidth(int col) const {
    const bool sortable = grid_->cells().column(col).sortable;
    QFont font = grid_->font();
    if (sortable)
        font.setWeight(QFont::DemiBold); // as wide as it gets, so that sorting moves nothing
    const TextWidths widths(font);
    const QString text = grid_->text(0, col);
    const qsizetype at = bestBreak(text, widths);
    const int width =
        at < 0 ? widths.of(text) : std::max(widths.of(text.first(at)), widths.of(text.sliced(at + 1)));
    return width + cellMarginLeft + cellMarginRight + (sortable ? sortArrowWidth : 0);
}

void HeadingBar::paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const {
    const GridColours& own = grid_->gridColours();
    const QColor back = grid_->backColour(0, logicalIndex);
    const QColor fore = grid_->foreColour(0, logicalIndex);
    painter->fillRect(rect, back.isValid() ? back : own.header);
    drawLines(painter, rect, own.line);

    const bool sorted = logicalIndex == grid_->sortColumn();
    QColor ink = sorted ? own.text : own.headerText;
    if (fore.isValid() || back.isValid())
        ink = fore.isValid() ? fore : look::readableOn(back);
    const Qt::Alignment side = grid_->cells().column(logicalIndex).alignment;
    QRect area = textArea(rect);
    if (sorted)
        area.setRight(area.right() - sortArrowWidth);

    const QFont font = headingFont(logicalIndex);
    const TextWidths widths(font);
    QString text = grid_->text(0, logicalIndex);
    if (widths.of(text) > area.width()) {
        if (const qsizetype at = bestBreak(text, widths); at >= 0)
            text[at] = u'\n';
    }
    painter->setFont(font);
    painter->setPen(ink);
    painter->drawText(area, static_cast<int>(side | Qt::AlignVCenter), text);
    if (sorted) {
        const QRect drawn =
            widths.metrics().boundingRect(area, static_cast<int>(side | Qt::AlignVCenter), text);
        painter->setBrush(ink);
        drawSortArrow(painter, QPointF(std::min(drawn.right(), area.right()) + 9, rect.center().y() + 0.5),
                      grid_->sortAscending());
    }
}

void HeadingBar::paintEvent(QPaintEvent* event) {
    QHeaderView::paintEvent(event);
    const int end =
        std::max(0, length() - offset()); // behind the last heading the style has painted its own ground
    QPainter painter(viewport());
    painter.fillRect(QRect(end, 0, width() - end, height()), grid_->gridColours().header);
    painter.fillRect(QRect(end, height() - 1, width() - end, 1), grid_->gridColours().line);
}

void HeadingBar::mouseMoveEvent(QMouseEvent* event) {
    QHeaderView::mouseMoveEvent(event);
    const int col = logicalIndexAt(event->position().toPoint());
    const bool atEdge = testAttribute(Qt::WA_SetCursor); // the base class shows that an edge can be dragged
    if (!atEdge && grid_->cells().hasColumn(col) && grid_->cells().column(col).sortable)
        viewport()->setCursor(Qt::PointingHandCursor);
    else
        viewport()->unsetCursor();
}

SignBar::SignBar(FlexGrid* grid)
    : QHeaderView(Qt::Vertical, grid)
    , grid_(grid) {
    setSectionsClickable(true);
    setHighlightSections(false);
    setMinimumSectionSize(8);
    setSectionResizeMode(QHeaderView::Fixed);
    setFixedWidth(FlexGrid::gutterWidth);
}

void SignBar::paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const {
    painter->fillRect(rect, grid_->gridColours().surface);
    painter->fillRect(QRect(rect.left(), rect.bottom(), rect.width(), 1), grid_->gridColours().line);
    const RowSign sign = grid_->cells().sign(logicalIndex + 1);
    if (sign.icon.isNull())
        return;
    const int side = std::min({look::scaled(signSize), FlexGrid::gutterWidth - 2, rect.height() - 2});
    const QRect place(rect.center().x() - side / 2 + 1, rect.center().y() - side / 2, side, side);
    sign.icon.paint(painter, place);
}

void SignBar::paintEvent(QPaintEvent* event) {
    QHeaderView::paintEvent(event);
    const int end = std::max(0, length() - offset());
    QPainter painter(viewport());
    painter.fillRect(QRect(0, end, width(), height() - end), grid_->gridColours().surface);
}

} // namespace benthor::platform
