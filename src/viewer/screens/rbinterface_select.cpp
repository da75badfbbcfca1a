#include "platform/chart/chart.h"
#include "platform/grid/flexgrid.h"
#include "viewer/screens/rbinterface.h"
#include "viewer/screens/tipbox.h"
#include "viewer/selection.h"
#include "viewer/strip.h"

#include <QSignalBlocker>

namespace benthor::viewer {

namespace {
constexpr double kTwipsPerPixel = 15;
} // namespace

/// A small pointer marks the place while the button is held.
void rbinterface::MSChart1_MouseDown(double x, double y) {
    keepsSample_ = false;
    MSChart1->setCurrentRow(0);
    const QPoint place(qRound(MSChart1->xOfTwips(x)), qRound(y / kTwipsPerPixel));
    Text8->showPointer(MSChart1->mapTo(Text8->parentWidget(), place));
}

void rbinterface::MSChart1_MouseUp(double x) {
    Text8->hide();
    if (std::exchange(keepsSample_, false)) {
        placeCursor(currentrow_);
        placeTip(currentrow_);
    } else if (lastsample_ > 0) {
        selectrow(rowUnder(x));
    }
}

/// Out of the free view. The sample that the first click has picked stays: what comes to lie under the
/// pointer is another one.
void rbinterface::MSChart1_DblClick() {
    keepsSample_ = free_.has_value();
    leaveFreeView();
}

/// A click on the strip of alarms or on that of gases goes to the sample under it.
void rbinterface::stripClicked(StripKind kind, double share) {
    if (lastsample_ > 0) {
        selectrow(free_ ? freeStripRow(share, *free_, lastsample_)
                        : stripClickRow(kind, share, 1.0, lastsample_, zoom_));
    }
}

void rbinterface::selectrow(int row) {
    const QSignalBlocker quiet(MSFlexGrid1);
    MSFlexGrid1->setRow(row);
    MSFlexGrid1_SelChange();
}

/// Every way to pick a sample ends here.
void rbinterface::MSFlexGrid1_SelChange() {
    const QSignalBlocker quiet(MSFlexGrid1);
    MSFlexGrid1->setCol(1);
    const RowSelection selection = selectRow(MSFlexGrid1->row(), currentrow_, zoom_.zoomfactor);
    if (selection.unmarkRow) {
        for (int column = kFirstUnmarkedColumn; column <= kLastUnmarkedColumn; ++column) {
            MSFlexGrid1->setBackColour(*selection.unmarkRow, column, {});
        }
    }
    MSFlexGrid1->setRow(selection.row);
    MSFlexGrid1->setTopRow(selection.topRow);
    showpointtip(selection.row);
    placeCursor(selection.row);
    placeTip(selection.row);
}

/// The line at the sample. A page of the zoomed view has rows of its own, and no line for a sample that is
/// not on it; the few samples behind the last page stand at that page's edge.
void rbinterface::placeCursor(int row) {
    if (free_) {
        MSChart1->setCurrentRow(row);
        return;
    }
    const int place = row - viewOffset(lastsample_, zoom_);
    const bool inView = place >= 1 && (place <= viewRows(lastsample_, zoom_.zoomfactor) ||
                                       isBehindPages(row, lastsample_, zoom_));
    MSChart1->setCurrentRow(inView ? place : 0);
}

} // namespace benthor::viewer
