// The view moved by wheel and drag, and what the pointer reads off the chart.

#include "platform/chart/chart.h"
#include "platform/look/look.h"
#include "platform/textformat.h"
#include "viewer/elapsed.h"
#include "viewer/gridcells.h"
#include "viewer/screens/alarmstripview.h"
#include "viewer/screens/rbinterface.h"
#include "viewer/screens/tipbox.h"
#include "viewer/selection.h"

#include <QLabel>

namespace benthor::viewer {

using platform::Chart;

namespace {

double shareOf(double xTwips) {
    return (xTwips - Chart::plotLeftTwips) / Chart::plotWidthTwips;
}

} // namespace

/// The rows of the dive that fill the plot.
RowRange rbinterface::shownRows() const {
    if (free_) {
        return *free_;
    }
    const double first = viewOffset(lastsample_, zoom_);
    return {first, first + std::max(1, viewRows(lastsample_, zoom_.zoomfactor))};
}

int rbinterface::rowUnder(double xTwips) const {
    return free_ ? freeClickRow(shareOf(xTwips), *free_, lastsample_)
                 : chartClickRow(xTwips, lastsample_, zoom_);
}

void rbinterface::zoomFreely(double xTwips, double factor) {
    if (lastsample_ < 1) {
        return;
    }
    const RowRange shown = shownRows();
    const double row = shown.first + std::clamp(shareOf(xTwips), 0.0, 1.0) * shown.span();
    const RowRange view = zoomedAbout(shown, row, factor, lastsample_);
    if (isWholeDive(view, lastsample_) && !zoom_.zoomed()) {
        leaveFreeView();
    } else {
        takeFreeView(view);
    }
}

void rbinterface::moveFreely(double pixels) {
    if (lastsample_ > 0 && MSChart1->plotWidth() > 0) {
        const RowRange shown = shownRows();
        takeFreeView(movedBy(shown, -pixels * shown.span() / MSChart1->plotWidth(), lastsample_));
    }
}

void rbinterface::takeFreeView(RowRange view) {
    const bool entering = !free_;
    if (free_ == view) {
        return;
    }
    free_ = view;
    if (entering) {
        plotgraph();
    } else {
        MSChart1->setView(view);
        determinexaxis();
        plotgasstrip();
    }
    showStripAndCursor();
}

/// Back to the one of the two told views that was left.
void rbinterface::leaveFreeView() {
    if (free_) {
        free_.reset();
        plotgraph();
        showStripAndCursor();
    }
}

/// The strip and the cursor of the view, whose own sample stays where it is.
void rbinterface::showStripAndCursor() {
    Picture1->setStrip(free_ ? freeStrip(profile_, lastsample_, currentrow_, *free_)
                             : viewer::drawstrip(profile_, lastsample_, currentrow_, zoom_));
    placeCursor(currentrow_);
    placeTip(currentrow_);
}

/// The sample under the pointer, in the corner of the plot.
void rbinterface::showHover(double xTwips) {
    if (lastsample_ < kFirstSample || shareOf(xTwips) < 0 || shareOf(xTwips) > 1) {
        hideHover();
        return;
    }
    const int row = rowUnder(xTwips);
    const QString depth = platform::floatText(std::abs(profile_.depthneg[row - 1]));
    hover_->setText(QStringLiteral("%1   %2 %3   %4")
                        .arg(formatelapsed(row * recordedInterval()), depth,
                             feet_ ? QStringLiteral("ft") : QStringLiteral("m"),
                             gasNameAt(profile_, gasname_, row)));
    hover_->adjustSize();
    hover_->move(MSChart1->plotLeft() + look::spaceSmall,
                 MSChart1->plotArea().bottom() - hover_->height() - look::spaceTight);
    hover_->show();
}

void rbinterface::hideHover() {
    hover_->hide();
}

} // namespace benthor::viewer
