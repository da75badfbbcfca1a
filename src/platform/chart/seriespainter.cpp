#include "platform/chart/seriespainter.h"

#include <QPainterPath>

namespace benthor::platform {

namespace {

constexpr int binsPerPixel = 2;
// A place x is the middle of pixel column x: that column begins half a pixel further left.
constexpr double halfPixel = 0.5;
constexpr float nothing = std::numeric_limits<float>::infinity();

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

SeriesPainter::SeriesPainter(const QRectF& area, int lastRow, RowRange view)
    : area_(area)
    , view_(view)
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

void SeriesPainter::measure(std::span<const double> values, const ChartScale& scale, bool step) {
    const auto bottom =
        static_cast<float>(area_.bottom() + scale.lower / (scale.upper - scale.lower) * area_.height());
    const auto slope = static_cast<float>(-area_.height() / (scale.upper - scale.lower));
    double before =
        binStart_.front() > 0 ? values[static_cast<size_t>(binStart_.front()) - 1] : ChartMatrix::empty;
    for (size_t bin = 0; bin < stretches_.size(); ++bin) {
        const auto begin = static_cast<size_t>(binStart_[bin]);
        const auto end = static_cast<size_t>(binStart_[bin + 1]);
        double low = nothing;
        double high = -nothing;
        for (size_t row = begin; row < end; ++row) {
            const double value = values[row];
            low = value < low ? value : low; // written so that NaN changes nothing
            high = value > high ? value : high;
        }
        // The line goes on from the half column before: half the way, or at that value all the way.
        if (begin < end && !std::isnan(before) && !std::isnan(values[begin])) {
            const double joint = step ? before : (before + values[begin]) / 2;
            low = std::min(low, joint);
            high = std::max(high, joint);
            if (!step && bin > 0) {
                const float y = bottom + slope * static_cast<float>(joint);
                stretches_[bin - 1].top = std::min(stretches_[bin - 1].top, y);
                stretches_[bin - 1].bottom = std::max(stretches_[bin - 1].bottom, y);
            }
        }
        if (begin < end)
            before = values[end - 1];
        stretches_[bin] = low > high ? Stretch{nothing, -nothing}
                                     : Stretch{bottom + slope * static_cast<float>(high),
                                               bottom + slope * static_cast<float>(low)};
    }
}

void SeriesPainter::widen(double radius) {
    std::fill(columns_.begin(), columns_.end(), Stretch{nothing, -nothing});
    const int count = static_cast<int>(stretches_.size());
    // The half columns that a round pen of this radius reaches from the middle of a pixel column: its own two
    // always, one further away once the pen covers more than half of it.
    for (double offset = 0.25; offset < std::max(radius + 0.1, 0.3); offset += 0.5) {
        const double nearest = offset - 0.25;
        const auto reach = static_cast<float>(std::sqrt(std::max(0.0, radius * radius - nearest * nearest)));
        const int away = static_cast<int>(offset * binsPerPixel);
        for (int column = 0; column < static_cast<int>(columns_.size()); ++column) {
            Stretch& at = columns_[static_cast<size_t>(column)];
            const int own = column * binsPerPixel;
            for (const int bin : {own - away, own + 1 + away}) {
                if (bin < 0 || bin >= count)
                    continue;
                const Stretch& from = stretches_[static_cast<size_t>(bin)];
                at.top = std::min(at.top, from.top - reach);
                at.bottom = std::max(at.bottom, from.bottom + reach);
            }
        }
    }
}

void SeriesPainter::drawBands(QPainter& painter, const SeriesStyle& style) {
    double period = 0;
    for (const qreal part : style.dashes)
        period += part * style.width;
    const auto inStroke = [&](int column) {
        double at = period > 0 ? std::fmod(column, period) : 0;
        for (qsizetype part = 0; part < style.dashes.size(); ++part) {
            at -= style.dashes[part] * style.width;
            if (at < 0)
                return part % 2 == 0;
        }
        return true;
    };
    // The upright edge of a step is never lost in a gap between two strokes.
    const double upright = style.step ? 3 * style.width : std::numeric_limits<double>::infinity();
    const int count = static_cast<int>(columns_.size());
    const auto drawn = [&](int column) {
        const Stretch& at = columns_[static_cast<size_t>(column)];
        return !at.isEmpty() && (inStroke(column) || at.bottom - at.top > upright);
    };
    QPolygonF band;
    for (int column = 0; column < count;) {
        const int first = column;
        while (column < count && drawn(column))
            ++column;
        if (column == first) {
            ++column;
            continue;
        }
        band.clear();
        const Stretch& start = columns_[static_cast<size_t>(first)];
        const Stretch& stop = columns_[static_cast<size_t>(column - 1)];
        band.append(QPointF(area_.left() + first - halfPixel, start.top));
        for (int at = first; at < column; ++at)
            band.append(QPointF(area_.left() + at, columns_[static_cast<size_t>(at)].top));
        band.append(QPointF(area_.left() + column - halfPixel, stop.top));
        band.append(QPointF(area_.left() + column - halfPixel, stop.bottom));
        for (int at = column - 1; at >= first; --at)
            band.append(QPointF(area_.left() + at, columns_[static_cast<size_t>(at)].bottom));
        band.append(QPointF(area_.left() + first - halfPixel, start.bottom));
        painter.drawPolygon(band, Qt::WindingFill);
    }
}

void SeriesPainter::drawLine(QPainter& painter, std::span<const double> values, const ChartScale& scale,
                             const SeriesStyle& style) {
    if (dense()) {
        measure(values, scale, style.step);
        widen(style.width / 2);
        painter.setPen(Qt::NoPen);
        painter.setBrush(style.colour);
        drawBands(painter, style);
        return;
    }
    painter.setPen(seriesPen(style));
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

void SeriesPainter::fillColumns(QPainter& painter, double edge) {
    const int count = static_cast<int>(columns_.size());
    QPolygonF shape;
    for (int column = 0; column < count;) {
        const int first = column;
        shape.clear();
        for (; column < count && !columns_[static_cast<size_t>(column)].isEmpty(); ++column) {
            const Stretch& at = columns_[static_cast<size_t>(column)];
            const double middle = (at.top + at.bottom) / 2;
            if (column == first)
                shape.append(QPointF(area_.left() + column - halfPixel, middle));
            shape.append(QPointF(area_.left() + column, middle));
        }
        if (column == first) {
            ++column;
            continue;
        }
        shape.append(QPointF(area_.left() + column - halfPixel, shape.last().y()));
        shape.append(QPointF(area_.left() + column - halfPixel, edge));
        shape.append(QPointF(area_.left() + first - halfPixel, edge));
        painter.drawPolygon(shape);
    }
}

void SeriesPainter::drawFill(QPainter& painter, std::span<const double> values, const ChartScale& scale,
                             const SeriesStyle& style) {
    if (style.fillTo == SeriesFill::None || !style.fill.isValid())
        return;
    const double edge = style.fillTo == SeriesFill::ToBottom ? area_.bottom() + 1 : area_.top();
    painter.setPen(Qt::NoPen);
    painter.setBrush(style.fill);
    if (dense()) {
        measure(values, scale, style.step);
        widen(0);
        fillColumns(painter, edge);
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
