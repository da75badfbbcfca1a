// Where two or more rows fall on each pixel: the stretches that a series covers, and what is drawn of them.

#include "platform/chart/seriespainter.h"

namespace benthor::platform {

namespace {

// Antialiasing searches the pixels of a line from the left of a shape: in short ones it finds them at once.
constexpr int pieceColumns = 16;

} // namespace

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
    for (int column = 0; column < count;) {
        const int first = column;
        while (column < count && drawn(column))
            ++column;
        if (column == first) {
            ++column;
            continue;
        }
        // From the left edge of its first pixel column to the right edge of its last one.
        for (int from = first; from < column;) {
            const int end = pieceEnd(painter, from, column);
            drawPiece(painter, {first, column}, from, end);
            from = end;
        }
    }
}

int SeriesPainter::pieceEnd(const QPainter& painter, int from, int end) const {
    const QTransform device = painter.deviceTransform();
    if (painter.paintEngine()->type() != QPaintEngine::Raster || device.type() > QTransform::TxScale)
        return end;
    for (int column = from + pieceColumns; column < end; ++column) {
        const double x = device.map(QPointF(edgeOf(column), 0)).x();
        if (std::abs(x - std::round(x)) < 1e-6)
            return column;
    }
    return end;
}

void SeriesPainter::drawPiece(QPainter& painter, Columns run, int first, int end) {
    const auto at = [this](int column) -> const Stretch& { return columns_[static_cast<size_t>(column)]; };
    // Where one piece meets the next the edge of the band lies half-way between two columns.
    const auto before = [&](int column) -> const Stretch& { return at(std::max(column - 1, run.first)); };
    const auto behind = [&](int column) -> const Stretch& { return at(std::min(column, run.end - 1)); };
    const auto top = [&](int column) { return (before(column).top + behind(column).top) / 2; };
    const auto bottom = [&](int column) { return (before(column).bottom + behind(column).bottom) / 2; };
    band_.clear();
    band_.append(QPointF(edgeOf(first), top(first)));
    for (int column = first; column < end; ++column)
        band_.append(QPointF(area_.left() + column, at(column).top));
    band_.append(QPointF(edgeOf(end), top(end)));
    band_.append(QPointF(edgeOf(end), bottom(end)));
    for (int column = end - 1; column >= first; --column)
        band_.append(QPointF(area_.left() + column, at(column).bottom));
    band_.append(QPointF(edgeOf(first), bottom(first)));
    painter.drawPolygon(band_, Qt::WindingFill);
}

void SeriesPainter::fillColumns(QPainter& painter, double edge) {
    const int count = static_cast<int>(columns_.size());
    for (int column = 0; column < count;) {
        const int first = column;
        while (column < count && !columns_[static_cast<size_t>(column)].isEmpty())
            ++column;
        if (column == first) {
            ++column;
            continue;
        }
        for (int from = first; from < column;) {
            const int end = pieceEnd(painter, from, column);
            fillPiece(painter, {first, column}, from, end, edge);
            from = end;
        }
    }
}

void SeriesPainter::fillPiece(QPainter& painter, Columns run, int first, int end, double edge) {
    const auto middle = [this](int column) {
        const Stretch& at = columns_[static_cast<size_t>(column)];
        return (at.top + at.bottom) / 2;
    };
    const auto between = [&](int column) {
        return (middle(std::max(column - 1, run.first)) + middle(std::min(column, run.end - 1))) / 2;
    };
    band_.clear();
    band_.append(QPointF(edgeOf(first), between(first)));
    for (int column = first; column < end; ++column)
        band_.append(QPointF(area_.left() + column, middle(column)));
    band_.append(QPointF(edgeOf(end), between(end)));
    band_.append(QPointF(edgeOf(end), edge));
    band_.append(QPointF(edgeOf(first), edge));
    painter.drawPolygon(band_);
}

} // namespace benthor::platform
