// When the chart is drawn, and how much of it.

#include "platform/chart/chart.h"
#include "platform/look/style/paint.h"

#include "platform/chart/chartlayers.h"

#include <QBackingStore>
#include <QPaintEvent>
#include <QScopedValueRollback>

namespace benthor::platform {

void Chart::setCurrentRow(int row) {
    if (row == row_)
        return;
    update(cursorRect());
    row_ = row;
    update(cursorRect());
}

/// What the cursor of the current row can cover.
QRect Chart::cursorRect() const {
    constexpr int reach = 8; // line and ring
    const int x = qRound(cursorX());
    return {x - reach, 0, 2 * reach, height()};
}

void Chart::refresh() {
    stale_ = false;
    const QScopedValueRollback<bool> plain(drawsPlain_, isMoving());
    setViewport(rect()); // a chart that is not shown yet has not been told its size
    fitTicks();
    replot(QCustomPlot::rpQueuedRefresh);
}

void Chart::changed() {
    if (stale_)
        return;
    stale_ = true;
    update();
}

/// All layers one upon the other, as a picture for elsewhere is made.
void Chart::draw(QCPPainter* painter) {
    const QScopedValueRollback<bool> whole(drawsWhole_, true);
    fitTicks();
    QCustomPlot::draw(painter);
}

/// Within a paint event, which shows the new picture itself: the update that a replot asks for would only
/// paint it a second time.
void Chart::redrawIfStale() {
    if (!stale_)
        return;
    const bool disabled = testAttribute(Qt::WA_UpdatesDisabled);
    setAttribute(Qt::WA_UpdatesDisabled, true);
    refresh();
    setAttribute(Qt::WA_UpdatesDisabled, disabled);
}

void Chart::beginMove() {
    if (wasAtRest_ && isVisible())
        restTimer_.start();
}

void Chart::rest() {
    restTimer_.stop();
    changed();
}

/// Whoever has a picture painted, of the chart or of a window around it, gives a device of its own.
bool Chart::isPaintedOnScreen() const {
    QBackingStore* const screen = backingStore();
    return screen != nullptr && redirected(nullptr) == screen->paintDevice();
}

void Chart::paintEvent(QPaintEvent* event) {
    if (isMoving() && !isPaintedOnScreen())
        rest();
    if (!qFuzzyCompare(bufferDevicePixelRatio(), devicePixelRatioF())) {
        setBufferDevicePixelRatio(devicePixelRatioF()); // on a screen of another density
        stale_ = true;
    }
    redrawIfStale();
    wasAtRest_ = wasAtRest_ || isPaintedOnScreen();
    QCustomPlot::paintEvent(event);
    if (event->region().intersects(cursorRect())) {
        QCPPainter painter(this);
        cursor_->paint(&painter);
    }
    if (hasFocus()) {
        QPainter painter(this);
        look::drawFocusRing(&painter, rect());
    }
}

/// Drawn with the next paint, once for any number of sizes.
void Chart::resizeEvent(QResizeEvent*) {
    setViewport(rect());
    beginMove();
    changed();
}

} // namespace benthor::platform
