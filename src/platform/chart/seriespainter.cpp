#include "platform/chart/seriespainter.h"

#include <QPainterPath>

namespace benthor::platform {

namespace {

/// Calls `use(first, end)` for each run of rows without a gap, of those from `begin` to before `count`.
template <typename Use> void forEachRun(std::span<const double> values, int begin, int count, Use use) {
    for (int row = begin; row < count;) {
        if (std::isnan(values[static_cast<size_t>(row)])) {
            ++row;
            continue;
        }
        const int first = row;
        while (row < count && !std::isnan(values[static_cast<size_t>(row)]))
            ++row;
        use(first, row);
    }
}

QPainterPath markerShape(MarkerStyle style, double size) {
    const double half = size / 2;
    QPainterPath path;
    switch (style) {
    case MarkerStyle::Circle:
        path.addEllipse(QPointF(0, 0), half, half);
        break;
    case MarkerStyle::Square:
        path.addRect(-half, -half, size, size);
        break;
    case MarkerStyle::Diamond:
        path.addPolygon(QPolygonF{{0, -half}, {half, 0}, {0, half}, {-half, 0}});
        break;
    case MarkerStyle::Triangle:
        path.addPolygon(QPolygonF{{0, -half}, {half, half}, {-half, half}});
        break;
    }
    path.closeSubpath();
    return path;
}

} // namespace

SeriesPainter::SeriesPainter(const QRectF& area, int lastRow, RowRange view, Quality quality)
    : area_(area)
    , view_(view)
    , quality_(quality)
    , rowWidth_(view.span() > 0 ? area.width() / view.span() : area.width())
    , begin_(std::clamp(static_cast<int>(std::floor(view.first)) - 1, 0, lastRow))
    , end_(std::clamp(static_cast<int>(std::ceil(view.last)) + 1, begin_, lastRow) + 1) {
    if (!dense())
        return;
    const auto bins = static_cast<size_t>(std::ceil(area.width()) + 1) * binsPerPixel;
    binStart_.resize(bins + 1);
    for (size_t bin = 0; bin < bins; ++bin) {
        const double x = static_cast<double>(bin) / binsPerPixel - halfPixel;
        binStart_[bin] = std::clamp(static_cast<int>(std::ceil(view.first + x / rowWidth_)), begin_, end_);
    }
    binStart_[bins] = end_;
    stretches_.resize(bins);
    columns_.resize(bins / binsPerPixel);
}

QPolygonF SeriesPainter::runPolygon(std::span<const double> values, int first, int end,
                                    const ChartScale& scale, bool step) const {
    QPolygonF points;
    points.reserve(step ? 2 * (end - first) : end - first);
    for (int row = first; row < end; ++row) {
        const double y = yOf(values[static_cast<size_t>(row)], scale);
        points.append(QPointF(xOf(row), y));
        if (step)
            points.append(QPointF(xOf(row + 1), y));
    }
    return points;
}

void SeriesPainter::drawLine(QPainter& painter, std::span<const double> values, const ChartScale& scale,
                             const SeriesStyle& style) {
    if (dense()) {
        measure(values, scale, style.step);
        if (isPlain()) {
            drawPlainColumns(painter, style);
            return;
        }
        widen(style.width / 2);
        painter.setPen(Qt::NoPen);
        painter.setBrush(style.colour);
        drawBands(painter, style);
        return;
    }
    painter.setPen(isPlain() ? QPen(style.colour, 1) : seriesPen(style));
    forEachRun(values, begin_, end_, [&](int first, int end) {
        const QPolygonF points = runPolygon(values, first, end, scale, style.step);
        if (points.size() > 1) {
            painter.drawPolyline(points);
            return;
        }
        painter.save();
        painter.setPen(QPen(style.colour, style.width + 1, Qt::SolidLine, Qt::RoundCap));
        painter.drawPoint(points.first());
        painter.restore();
    });
}

void SeriesPainter::drawFill(QPainter& painter, std::span<const double> values, const ChartScale& scale,
                             const SeriesStyle& style) {
    if (!hasFill(style))
        return;
    const double edge = fillEdge(style);
    painter.setPen(Qt::NoPen);
    painter.setBrush(style.fill);
    if (dense()) {
        measure(values, scale, style.step);
        widen(0);
        isPlain() ? fillPlainColumns(painter, edge) : fillColumns(painter, edge);
        return;
    }
    forEachRun(values, begin_, end_, [&](int first, int end) {
        QPolygonF shape = runPolygon(values, first, end, scale, style.step);
        shape.append(QPointF(shape.last().x(), edge));
        shape.append(QPointF(shape.first().x(), edge));
        painter.drawPolygon(shape);
    });
}

void SeriesPainter::drawMarkers(QPainter& painter, std::span<const double> values, const ChartScale& scale,
                                const SeriesMarker& marker) {
    if (!marker.visible)
        return;
    const QPainterPath shape = markerShape(marker.style, marker.size);
    painter.setPen(Qt::NoPen);
    painter.setBrush(marker.fill);
    int lastColumn = std::numeric_limits<int>::min();
    for (auto row = static_cast<size_t>(begin_); row < static_cast<size_t>(end_); ++row) {
        if (std::isnan(values[row]))
            continue;
        const QPointF at(xOf(static_cast<double>(row)), yOf(values[row], scale));
        if (static_cast<int>(at.x()) == lastColumn)
            continue;
        lastColumn = static_cast<int>(at.x());
        painter.drawPath(shape.translated(at));
    }
}

} // namespace benthor::platform
