#include "platform/chart/chartlayers.h"

#include "platform/chart/chart.h"
#include "platform/chart/seriespainter.h"

namespace benthor::platform {

namespace {

constexpr double leftShare = 0.057;
constexpr double rightShare = 0.946;
constexpr int kRingSeries = 1;    // carries the cursor's ring
constexpr int labelClearance = 2; // of a label that stands level with the edge
constexpr int titleClearance = 7; // of the title above and below it
constexpr double cursorWidth = 2;
constexpr double ringRadius = 4.5;

double xAt(const QRectF& plot, double row, RowRange view) {
    return plot.left() + (row - view.first) * plot.width() / view.span();
}

bool isIn(RowRange view, double row) {
    return row >= view.first && row <= view.last;
}

double yAt(const QRectF& plot, double value, const ChartScale& scale) {
    return plot.bottom() - scale.share(value) * plot.height();
}

/// Half a label stands above the plot, and half of one below it: cut labels are not drawn at all.
int edgeMargin(const QFont& font) {
    return (QFontMetrics(font).height() + 1) / 2 + labelClearance;
}

int titleHeight(const QFont& font) {
    return QFontMetrics(font).height() + titleClearance;
}

} // namespace

QMargins plotMargins(QSize size, const QFont& font, bool titled) {
    const int left = qRound(leftShare * size.width());
    const int right = size.width() - qRound(rightShare * size.width());
    const int edge = edgeMargin(font);
    return {left, edge + (titled ? titleHeight(font) : 0), right, edge};
}

PlotRect::PlotRect(Chart* chart)
    : QCPAxisRect(chart)
    , chart_(chart) {
    setMinimumMargins({});
    setBackground(Qt::NoBrush);
}

int PlotRect::calculateAutoMargin(QCP::MarginSide side) {
    const QMargins margins =
        plotMargins(chart_->viewport().size(), chart_->axisFont(), !chart_->title().isEmpty());
    switch (side) {
    case QCP::msLeft:
        return margins.left();
    case QCP::msRight:
        return margins.right();
    case QCP::msTop:
        return margins.top();
    default:
        return margins.bottom();
    }
}

ChartLayer::ChartLayer(Chart* chart, const QString& layer)
    : QCPLayerable(chart, layer)
    , chart_(chart) {}

void ChartLayer::applyDefaultAntialiasingHint(QCPPainter* painter) const {
    painter->setAntialiasing(true);
}

QRect ChartLayer::clipRect() const {
    return chart_->axisRect()->rect();
}

SeriesPainter::Quality ChartLayer::quality() const {
    return chart_->isDrawnPlain() ? SeriesPainter::Quality::Plain : SeriesPainter::Quality::Full;
}

QRectF ChartLayer::area() const {
    return QRectF(chart_->axisRect()->rect()).translated(0, -1);
}

void FillLayer::draw(QCPPainter* painter) {
    const QRectF plot = area();
    if (plot.isEmpty())
        return;
    const ChartMatrix& matrix = chart_->matrix();
    SeriesPainter series(plot, matrix.lastRow(), chart_->view(), quality());
    painter->setAntialiasing(!chart_->isDrawnPlain());
    for (int number = 1; number < ChartMatrix::columns; ++number) {
        const SeriesStyle& style = chart_->seriesStyle(number);
        const ChartScale& scale = chart_->scaleOf(style.axis);
        if (matrix.hasSeries(number))
            series.drawFill(*painter, matrix.series(number), scale, style);
    }
}

QRect LineLayer::clipRect() const {
    return chart_->axisRect()->rect().adjusted(1, 2, 0, 0);
}

void LineLayer::draw(QCPPainter* painter) {
    const QRectF plot = area();
    if (plot.isEmpty())
        return;
    const ChartMatrix& matrix = chart_->matrix();
    painter->setAntialiasing(false);
    QPen dotted(chart_->colours().axisText, 1, Qt::CustomDashLine, Qt::FlatCap);
    dotted.setDashPattern({1, 3});
    painter->setPen(dotted);
    for (const int row : chart_->rowLines()) {
        if (!isIn(chart_->view(), row))
            continue;
        const double x = std::round(xAt(plot, row, chart_->view()));
        painter->drawLine(QLineF(x, plot.top(), x, plot.bottom()));
    }
    painter->setAntialiasing(!chart_->isDrawnPlain());
    SeriesPainter series(plot, matrix.lastRow(), chart_->view(), quality());
    for (int number = 1; number < ChartMatrix::columns; ++number) {
        if (!matrix.hasSeries(number))
            continue;
        const SeriesStyle& style = chart_->seriesStyle(number);
        const ChartScale& scale = chart_->scaleOf(style.axis);
        series.drawLine(*painter, matrix.series(number), scale, style);
        series.drawMarkers(*painter, matrix.series(number), scale, chart_->marker(number));
    }
}

QRect NoteLayer::clipRect() const {
    return chart_->viewport();
}

void NoteLayer::draw(QCPPainter* painter) {
    const QRectF plot = area();
    painter->setPen(chart_->colours().axisText);
    drawUnits(painter, plot);
    QFont bold = chart_->axisFont();
    bold.setWeight(QFont::DemiBold);
    painter->setFont(bold);
    if (!chart_->title().isEmpty()) {
        painter->setPen(chart_->colours().cursor);
        const QFont& font = chart_->axisFont();
        const int height = titleHeight(font);
        const QRectF band(plot.left(), plot.top() - height - edgeMargin(font) / 2.0, plot.width(), height);
        painter->drawText(band, Qt::AlignCenter, chart_->title());
    }
}

void NoteLayer::drawUnits(QCPPainter* painter, const QRectF& plot) const {
    painter->setFont(chart_->axisFont());
    const double middle = painter->fontMetrics().height() / 2.0;
    const ChartScale& right = chart_->rightScale();
    if (right.labels.size() > 1) {
        const double y = yAt(plot, chart_->notesOf(ChartAxis::Right).unit, right);
        const double from = plot.right() + chart_->axisRect()->axis(QCPAxis::atRight)->tickLabelPadding();
        painter->drawText(QRectF(from, y - middle, chart_->viewport().right() - from, 2 * middle),
                          Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip, chart_->rightUnit());
    }
    const ChartScale& left = chart_->leftScale();
    if (!left.labels.empty()) {
        const double y = yAt(plot, chart_->notesOf(ChartAxis::Left).unit, left);
        const QCPAxis& axis = *chart_->axisRect()->axis(QCPAxis::atLeft);
        const double to = plot.left() - axis.tickLengthOut() - axis.tickLabelPadding();
        painter->drawText(QRectF(0, y - middle, to, 2 * middle),
                          Qt::AlignRight | Qt::AlignVCenter | Qt::TextDontClip, chart_->leftUnit());
    }
    drawInner(painter, plot);
}

/// Over a patch of the backdrop, so that a curve that runs there does not cross a number.
void NoteLayer::drawInner(QCPPainter* painter, const QRectF& plot) const {
    const ChartScale& inner = chart_->innerScale();
    const QFontMetricsF metrics(painter->font());
    const auto draw = [&](double value, const QString& text) {
        QRectF patch(plot.left() + 4, 0, metrics.horizontalAdvance(text) + 4, metrics.height() - 2);
        patch.moveTop(yAt(plot, value, inner) - patch.height() / 2);
        painter->fillRect(patch, chart_->colours().backdrop);
        painter->drawText(patch, Qt::AlignCenter | Qt::TextDontClip, text);
    };
    const AxisNotes notes = chart_->notesOf(ChartAxis::Inner);
    for (const double value : notes.labels) {
        if (value > inner.lower)
            draw(value, QString::number(value, 'f', decimalsOf(inner.step)));
    }
    if (!inner.labels.empty() && !chart_->innerUnit().isEmpty())
        draw(notes.unit, chart_->innerUnit());
}

QRect CursorLayer::clipRect() const {
    return chart_->viewport();
}

void CursorLayer::draw(QCPPainter* painter) {
    if (chart_->isDrawnWhole())
        drawCursor(painter);
}

void CursorLayer::paint(QCPPainter* painter) {
    painter->setClipRect(clipRect());
    applyDefaultAntialiasingHint(painter);
    drawCursor(painter);
}

void CursorLayer::drawCursor(QCPPainter* painter) const {
    const ChartMatrix& matrix = chart_->matrix();
    const int row = std::min(chart_->row(), matrix.lastRow());
    const bool behind = row != chart_->row();
    if (row < 1 || (behind && !chart_->hasEdgeCursor()) || !isIn(chart_->view(), row))
        return;
    const QRectF plot = area();
    const double x = std::round(xAt(plot, row, chart_->view())) - 0.5; // between two pixel columns
    painter->setPen(QPen(chart_->colours().cursor, cursorWidth, Qt::SolidLine, Qt::FlatCap));
    painter->drawLine(QLineF(x, plot.top() + 1, x, plot.bottom() + 1));
    const double value = matrix.at(row, kRingSeries);
    if (std::isnan(value) || behind)
        return;
    const SeriesStyle& style = chart_->seriesStyle(kRingSeries);
    const ChartScale& scale = chart_->scaleOf(style.axis);
    painter->setPen(QPen(style.colour, 2));
    painter->setBrush(chart_->colours().backdrop);
    painter->drawEllipse(QPointF(x, yAt(plot, value, scale)), ringRadius, ringRadius);
}

} // namespace benthor::platform
