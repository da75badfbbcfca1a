#pragma once

#include "platform/chart/chartmatrix.h"
#include "platform/chart/chartscale.h"
#include "platform/chart/chartstyle.h"

#include <QPainter>

namespace benthor::platform {

/// Draws series into a plot area. Where rows stand apart, a line goes from point to point. Where two or more
/// fall on each pixel, the stroke is drawn as the band between the least and the largest value of each pixel
/// column, rounded by the line's width: the same picture at a cost that no longer grows with the number of
/// rows.
///
/// The plain picture is for a view that moves: lines a pixel thin, without dashes, and fills with hard edges.
/// Its painter is one without antialiasing. Markers look the same in both.
class SeriesPainter {
public:
    enum class Quality { Full, Plain };

    /// Row 0 is at the left edge of `area`, `lastRow` at the right edge.
    SeriesPainter(const QRectF& area, int lastRow)
        : SeriesPainter(area, lastRow, {0, static_cast<double>(lastRow)}) {}
    /// The rows of `view` fill `area`; what lies beyond its edges is to be clipped.
    SeriesPainter(const QRectF& area, int lastRow, RowRange view, Quality quality = Quality::Full);

    void drawFill(QPainter& painter, std::span<const double> values, const ChartScale& scale,
                  const SeriesStyle& style);
    void drawLine(QPainter& painter, std::span<const double> values, const ChartScale& scale,
                  const SeriesStyle& style);
    void drawMarkers(QPainter& painter, std::span<const double> values, const ChartScale& scale,
                     const SeriesMarker& marker);

    double xOf(double row) const { return area_.left() + (row - view_.first) * rowWidth_; }
    double yOf(double value, const ChartScale& scale) const {
        return area_.bottom() - scale.share(value) * area_.height();
    }

private:
    /// The stretch of one half pixel column that a series covers, in pixels from the top; empty where top >
    /// bottom.
    struct Stretch {
        float top;
        float bottom;
        bool isEmpty() const { return top > bottom; }
    };

    /// Pixel columns from the first to before the end.
    struct Columns {
        int first;
        int end;
    };

    static constexpr int binsPerPixel = 2;
    // A place x is the middle of pixel column x: that column begins half a pixel further left.
    static constexpr double halfPixel = 0.5;
    static constexpr float nothing = std::numeric_limits<float>::infinity();

    bool isPlain() const { return quality_ == Quality::Plain; }
    /// Each half pixel has a row then, in the plain picture each pixel.
    bool dense() const { return rowWidth_ <= (isPlain() ? 1.0 : 0.5); }
    bool hasFill(const SeriesStyle& style) const {
        return style.fillTo != SeriesFill::None && style.fill.isValid();
    }
    /// Where a fill ends.
    double fillEdge(const SeriesStyle& style) const {
        return style.fillTo == SeriesFill::ToBottom ? area_.bottom() + 1 : area_.top();
    }
    QPolygonF runPolygon(std::span<const double> values, int first, int end, const ChartScale& scale,
                         bool step) const;
    void measure(std::span<const double> values, const ChartScale& scale, bool step);
    void widen(double radius);
    void drawBands(QPainter& painter, const SeriesStyle& style);
    double edgeOf(int column) const { return area_.left() + column - halfPixel; }
    /// Before which column the piece from `from` ends: two pieces meet between two pixels of the device, so
    /// that no seam is seen. What is not made of pixels is drawn in one piece.
    int pieceEnd(const QPainter& painter, int from, int end) const;
    void drawPiece(QPainter& painter, Columns run, int first, int end);
    void drawPlainColumns(QPainter& painter, const SeriesStyle& style);
    void fillPlainColumns(QPainter& painter, double edge);
    void fillColumns(QPainter& painter, double edge);
    void fillPiece(QPainter& painter, Columns run, int first, int end, double edge);

    QRectF area_;
    RowRange view_;
    Quality quality_;
    double rowWidth_;
    int begin_; // rows to be drawn: those of the view and one beyond each edge
    int end_;
    std::vector<int> binStart_;      // first row of each half pixel column, and the end
    std::vector<Stretch> stretches_; // by half pixel column
    QPolygonF band_;
    QList<QRect> plain_;
    std::vector<Stretch> columns_; // by pixel column, widened by the pen
};

} // namespace benthor::platform
