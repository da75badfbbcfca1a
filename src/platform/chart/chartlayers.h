#pragma once

#include "platform/chart/seriespainter.h"

#include <qcustomplot.h>

namespace benthor::platform {

class Chart;

/// Where the plot area lies in a chart of this size, whose labels and title are in `font`.
QMargins plotMargins(QSize size, const QFont& font, bool titled);

/// An axis rectangle whose margins follow the width of the chart, not the width of the labels.
class PlotRect final : public QCPAxisRect {
public:
    explicit PlotRect(Chart* chart);

protected:
    int calculateAutoMargin(QCP::MarginSide side) override;

private:
    Chart* chart_;
};

/// A part of the picture that the chart draws itself.
class ChartLayer : public QCPLayerable {
public:
    ChartLayer(Chart* chart, const QString& layer);

protected:
    void applyDefaultAntialiasingHint(QCPPainter* painter) const override;
    QRect clipRect() const override;
    /// The plot area, a pixel higher than the axis rectangle, as the axes place their lines.
    QRectF area() const;
    SeriesPainter::Quality quality() const;
    Chart* chart_;
};

/// The filled areas, under the grid lines.
class FillLayer final : public ChartLayer {
public:
    explicit FillLayer(Chart* chart)
        : ChartLayer(chart, QStringLiteral("background")) {}

protected:
    void draw(QCPPainter* painter) override;
};

/// Dotted row lines, then the series and their markers.
class LineLayer final : public ChartLayer {
public:
    explicit LineLayer(Chart* chart)
        : ChartLayer(chart, QStringLiteral("main")) {}

protected:
    /// Without the frame: a line that lies on it (a ceiling at the surface) is not seen.
    QRect clipRect() const override;
    void draw(QCPPainter* painter) override;
};

/// Title, units and the numbers of the inner axis.
class NoteLayer final : public ChartLayer {
public:
    explicit NoteLayer(Chart* chart)
        : ChartLayer(chart, QStringLiteral("axes")) {}

protected:
    QRect clipRect() const override;
    void draw(QCPPainter* painter) override;

private:
    void drawUnits(QCPPainter* painter, const QRectF& plot) const;
    void drawInner(QCPPainter* painter, const QRectF& plot) const;
};

/// The cursor line with its ring. On the screen it is painted over the picture of all other layers, so that
/// it moves without them; in pictures for elsewhere it is drawn with them.
class CursorLayer final : public ChartLayer {
public:
    explicit CursorLayer(Chart* chart)
        : ChartLayer(chart, QStringLiteral("overlay")) {}

    void paint(QCPPainter* painter);

protected:
    QRect clipRect() const override;
    void draw(QCPPainter* painter) override;

private:
    void drawCursor(QCPPainter* painter) const;
};

} // namespace benthor::platform
