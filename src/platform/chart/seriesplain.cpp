// The plain picture of a view that moves, where a row or more falls on each pixel: rectangles of whole
// pixels, one for as many columns as are alike.

#include "platform/chart/seriespainter.h"

namespace benthor::platform {

namespace {

/// Puts a column of a pixel's width into the list, or makes the last one wider.
void addColumn(QList<QRect>& rects, int x, int top, int height) {
    if (!rects.isEmpty()) {
        QRect& last = rects.back();
        if (last.top() == top && last.height() == height && last.right() + 1 == x) {
            last.setRight(x);
            return;
        }
    }
    rects.append(QRect(x, top, 1, height));
}

} // namespace

void SeriesPainter::drawPlainColumns(QPainter& painter, const SeriesStyle& style) {
    plain_.clear();
    const int left = qRound(area_.left());
    const int count = static_cast<int>(columns_.size());
    for (int column = 0; column < count; ++column) {
        const Stretch& first = stretches_[static_cast<size_t>(column * binsPerPixel)];
        const Stretch& second = stretches_[static_cast<size_t>(column * binsPerPixel + 1)];
        const Stretch both{std::min(first.top, second.top), std::max(first.bottom, second.bottom)};
        if (both.isEmpty())
            continue;
        const int top = qRound(both.top);
        addColumn(plain_, left + column, top, qRound(both.bottom) - top + 1);
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(style.colour);
    painter.drawRects(plain_);
}

void SeriesPainter::fillPlainColumns(QPainter& painter, double edge) {
    plain_.clear();
    const int left = qRound(area_.left());
    const int count = static_cast<int>(columns_.size());
    for (int column = 0; column < count; ++column) {
        const Stretch& at = columns_[static_cast<size_t>(column)];
        if (at.isEmpty())
            continue;
        const int middle = qRound((at.top + at.bottom) / 2);
        const int end = qRound(edge);
        addColumn(plain_, left + column, std::min(middle, end), std::abs(end - middle));
    }
    painter.drawRects(plain_);
}

} // namespace benthor::platform
