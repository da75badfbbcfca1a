#include "platform/chart/chart.h"

#include "platform/chart/chartlayers.h"

namespace benthor::platform {

namespace {

constexpr int tickLength = 5; // at the left axis
constexpr int leftPadding = 4;
constexpr int rightPadding = 8;

bool isSeries(int series) {
    return series >= 1 && series < ChartMatrix::columns;
}

/// Values of the right axis come negated and are labelled without their sign.
QSharedPointer<QCPAxisTickerText> tickerFor(const AxisNotes& notes, double step, ChartAxis axis) {
    const QSharedPointer<QCPAxisTickerText> ticker(new QCPAxisTickerText);
    for (const double value : notes.labels) {
        const double shown = axis == ChartAxis::Right ? std::abs(value) : value;
        const QString label = QString::number(shown, 'f', decimalsOf(step));
        ticker->addTick(value, value == notes.unit ? QString() : label);
    }
    return ticker;
}

/// The room between an axis and its labels: what is wished, or what they leave of the margin.
int labelPadding(int wished, int margin, QCPAxisTickerText& ticker, const QFont& font) {
    constexpr int fromTheEdge = 3;
    constexpr int fromTheAxis = 2;
    const QFontMetrics metrics(font);
    int widest = 0;
    for (const QString& label : std::as_const(ticker.ticks()))
        widest = std::max(widest, metrics.horizontalAdvance(label));
    return std::clamp(margin - widest - fromTheEdge, fromTheAxis, wished);
}

QSharedPointer<QCPAxisTickerText> quarterTicker(RowRange view) {
    const QSharedPointer<QCPAxisTickerText> ticker(new QCPAxisTickerText);
    for (int quarter = 1; quarter <= 3; ++quarter)
        ticker->addTick(view.first + view.span() * quarter / 4.0, QString());
    return ticker;
}

} // namespace

Chart::Chart(QWidget* parent)
    : QCustomPlot(parent) {
    for (int series = 0; series < ChartMatrix::columns; ++series)
        styles_[static_cast<size_t>(series)] = defaultSeriesStyle(series);
    axisFont_ = font();
    axisFont_.setPixelSize(11);
    setMinimumSize(200, 120);
    setMouseTracking(true);
    setUpAxes();
    new FillLayer(this);
    new LineLayer(this);
    new NoteLayer(this);
    cursor_ = new CursorLayer(this);
    // The cursor is painted over the picture, so that one buffer holds all that stands still.
    layer(QStringLiteral("overlay"))->setMode(QCPLayer::lmLogical);
    restTimer_.setSingleShot(true);
    restTimer_.setInterval(restInterval);
    connect(&restTimer_, &QTimer::timeout, this, &Chart::rest);
    updateColours();
    updateScales();
}

Chart::~Chart() = default;

void Chart::setUpAxes() {
    plotLayout()->clear();
    plotLayout()->addElement(0, 0, new PlotRect(this));
    axisRect()->setLayer(QStringLiteral("background"));
    for (QCPAxis* axis : axisRect()->axes()) {
        axis->setLayer(QStringLiteral("axes"));
        axis->grid()->setLayer(QStringLiteral("grid"));
        axis->setVisible(true);
        axis->setSubTicks(false);
        axis->setTickLengthIn(0);
        axis->setTickLengthOut(0);
        axis->setTickLabels(false);
        axis->grid()->setVisible(false);
        axis->grid()->setZeroLinePen(Qt::NoPen);
    }
    QCPAxis* left = axisRect()->axis(QCPAxis::atLeft);
    left->setTickLengthOut(tickLength);
    left->setTickLabels(true);
    QCPAxis* right = axisRect()->axis(QCPAxis::atRight);
    right->setTickLabels(true);
    right->grid()->setVisible(true);
    axisRect()->axis(QCPAxis::atBottom)->grid()->setVisible(true);
}

void Chart::setData(ChartMatrix matrix) {
    matrix_ = std::move(matrix);
    updateScales();
    changed();
}

void Chart::setView(std::optional<RowRange> view) {
    if (view && view->span() <= 0)
        view.reset();
    if (view == view_)
        return;
    view_ = view;
    updateTicks();
    beginMove();
    changed();
}

RowRange Chart::view() const {
    return view_.value_or(RowRange{0, static_cast<double>(std::max(1, matrix_.lastRow()))});
}

void Chart::setSeriesStyle(int series, const SeriesStyle& style) {
    if (!isSeries(series))
        return;
    const bool moved = style.axis != axisOf(series);
    styles_[static_cast<size_t>(series)] = style;
    if (moved)
        updateScales();
    changed();
}

const SeriesStyle& Chart::seriesStyle(int series) const {
    return styles_[static_cast<size_t>(isSeries(series) ? series : 0)];
}

void Chart::setMarker(int series, const SeriesMarker& marker) {
    if (!isSeries(series))
        return;
    markers_[static_cast<size_t>(series)] = marker;
    changed();
}

const SeriesMarker& Chart::marker(int series) const {
    return markers_[static_cast<size_t>(isSeries(series) ? series : 0)];
}

void Chart::setColours(const ChartColours& colours) {
    colours_ = colours;
    updateColours();
    changed();
}

void Chart::setBackdrop(const QColor& colour) {
    colours_.backdrop = colour;
    updateColours();
    changed();
}

void Chart::setAxisFont(const QFont& font) {
    axisFont_ = font;
    updateColours();
    updateTicks();
    changed();
}

void Chart::updateColours() {
    setBackground(QBrush(colours_.backdrop));
    for (QCPAxis* axis : axisRect()->axes()) {
        axis->setBasePen(QPen(colours_.axis, 1));
        axis->setTickPen(QPen(colours_.axis, 1));
        axis->setTickLabelColor(colours_.axisText);
        axis->setTickLabelFont(axisFont_);
        axis->grid()->setPen(QPen(colours_.grid, 1));
    }
}

void Chart::updateScales() {
    const auto axis = [this](int series) { return axisOf(series); };
    left_ = upwardScale(matrix_, axis);
    right_ = downwardScale(matrix_, axis);
    inner_ = upwardScale(matrix_, axis, ChartAxis::Inner);
    updateTicks();
}

AxisNotes Chart::notesOf(ChartAxis axis) const {
    const QSize size = viewport().size();
    const QMargins margins = plotMargins(size, axisFont_, !title_.isEmpty());
    return axisNotes(scaleOf(axis), size.height() - margins.top() - margins.bottom(),
                     QFontMetrics(axisFont_).height(), axis);
}

/// In another size there is room for other labels.
void Chart::fitTicks() {
    if (viewport().size() != tickedSize_)
        updateTicks();
}

void Chart::updateTicks() {
    tickedSize_ = viewport().size();
    const QMargins margins = plotMargins(tickedSize_, axisFont_, !title_.isEmpty());
    QCPAxis* left = axisRect()->axis(QCPAxis::atLeft);
    left->setRange(left_.lower, left_.upper);
    const auto leftTicker = tickerFor(notesOf(ChartAxis::Left), left_.step, ChartAxis::Left);
    left->setTicker(leftTicker);
    left->setTickLabelPadding(labelPadding(leftPadding, margins.left() - tickLength, *leftTicker, axisFont_));
    // The horizontal lines belong to the right axis as long as anything is drawn by it.
    left->grid()->setVisible(right_.labels.empty());
    QCPAxis* right = axisRect()->axis(QCPAxis::atRight);
    right->setRange(right_.lower, right_.upper);
    const auto rightTicker = tickerFor(notesOf(ChartAxis::Right), right_.step, ChartAxis::Right);
    right->setTicker(rightTicker);
    right->setTickLabelPadding(labelPadding(rightPadding, margins.right(), *rightTicker, axisFont_));
    QCPAxis* bottom = axisRect()->axis(QCPAxis::atBottom);
    bottom->setRange(view().first, view().last);
    bottom->setTicker(quarterTicker(view()));
    QCPAxis* top = axisRect()->axis(QCPAxis::atTop);
    top->setTicks(false);
}

void Chart::setTitle(const QString& title) {
    title_ = title;
    updateTicks();
    changed();
}

const ChartScale& Chart::scaleOf(ChartAxis axis) const {
    switch (axis) {
    case ChartAxis::Right:
        return right_;
    case ChartAxis::Inner:
        return inner_;
    case ChartAxis::Left:
        break;
    }
    return left_;
}

void Chart::setUnits(const QString& right, const QString& left, const QString& inner) {
    rightUnit_ = right;
    leftUnit_ = left;
    innerUnit_ = inner;
    changed();
}

void Chart::setRowLines(QList<int> rows) {
    rowLines_ = std::move(rows);
    changed();
}

double Chart::cursorX() const {
    return xOfRow(std::min(row_, std::max(1, matrix_.lastRow())));
}

int Chart::plotLeft() const {
    return plotArea().left();
}

int Chart::plotWidth() const {
    return plotArea().width();
}

QRect Chart::plotArea() const {
    return rect().marginsRemoved(plotMargins(size(), axisFont_, !title_.isEmpty()));
}

double Chart::xOfRow(double row) const {
    return plotLeft() + (row - view().first) * plotWidth() / view().span();
}

double Chart::yOfValue(double value, ChartAxis axis) const {
    const ChartScale& scale = scaleOf(axis);
    const QRect plot = plotArea();
    return plot.bottom() - scale.share(value) * plot.height();
}

double Chart::xTwips(double x) const {
    return plotLeftTwips + plotWidthTwips * (x - plotLeft()) / std::max(1, plotWidth());
}

double Chart::xOfTwips(double twips) const {
    return plotLeft() + (twips - plotLeftTwips) / plotWidthTwips * plotWidth();
}

void Chart::mousePressEvent(QMouseEvent* event) {
    const bool shifted = event->button() == Qt::LeftButton && (event->modifiers() & Qt::ShiftModifier) != 0;
    if (event->button() == Qt::MiddleButton || shifted) {
        dragX_ = event->position().x();
        setCursor(Qt::ClosedHandCursor);
    } else if (event->button() == Qt::LeftButton) {
        emit pressed(xTwips(event->position().x()), yTwips(event->position().y()));
    }
}

void Chart::mouseDoubleClickEvent(QMouseEvent* event) {
    mousePressEvent(event);
    if (event->button() == Qt::LeftButton && !dragX_)
        emit doubleClicked();
}

void Chart::mouseMoveEvent(QMouseEvent* event) {
    if (dragX_) {
        const double before = *std::exchange(dragX_, event->position().x());
        emit dragged(event->position().x() - before);
        return;
    }
    emit hovered(xTwips(event->position().x()), yTwips(event->position().y()));
}

void Chart::mouseReleaseEvent(QMouseEvent* event) {
    if (dragX_) {
        dragX_.reset();
        unsetCursor();
    } else if (event->button() == Qt::LeftButton) {
        emit released(xTwips(event->position().x()), yTwips(event->position().y()));
    }
}

void Chart::wheelEvent(QWheelEvent* event) {
    constexpr double factorOfANotch = 1.25;
    constexpr double anglesOfANotch = 120;
    const double notches = event->angleDelta().y() / anglesOfANotch;
    if (notches == 0) {
        event->ignore();
        return;
    }
    event->accept();
    emit wheelTurned(xTwips(event->position().x()), std::pow(factorOfANotch, notches));
}

void Chart::leaveEvent(QEvent* event) {
    QCustomPlot::leaveEvent(event);
    emit hoverEnded();
}

} // namespace benthor::platform
