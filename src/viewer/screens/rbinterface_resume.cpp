// Whose dive the screen shows, in which unit, and what of it outlives a fresh load.

#include "platform/screen/ticktimer.h"
#include "shell/process.h"
#include "viewer/screens/playbar.h"
#include "viewer/screens/rbinterface.h"
#include "viewer/screens/seriescolumn.h"
#include "viewer/screens/tipbox.h"

#include <QAction>
#include <QSignalBlocker>

namespace benthor::viewer {

namespace {

constexpr int kFirstCheck = 1;
constexpr int kLastCheck = 14;
constexpr int kSticks = 3;

} // namespace

/// Every way to another screen: whoever comes next finds the dive of this one in hand.
void rbinterface::handOver(void (rbinterface::*wanted)()) {
    if (!dive_.isEmpty()) {
        process().currentdiveid = dive_.diveid;
    }
    emit(this->*wanted)();
}

bool rbinterface::hasOtherUnit() const {
    const bool feet = isFeet(process().depthunit);
    return feet != isFeet(unitword_);
}

ViewerState rbinterface::state() const {
    if (resumed_) { // not taken over yet
        return *resumed_;
    }
    ViewerState state;
    state.row = currentrow_;
    state.playspeed = playspeed_;
    state.playing = Timer3->isEnabled();
    state.tip = Text8->isVisibleTo(this);
    state.zoom = zoom_;
    state.free = free_;
    state.boxes = series_->boxes();
    for (int number = kFirstCheck; number <= kLastCheck; ++number) {
        state.enabled.set(static_cast<size_t>(number), series_->check(number)->isEnabledTo(series_));
    }
    for (int index = 0; index < kSticks; ++index) {
        state.enabled15.set(static_cast<size_t>(index), series_->check15(index)->isEnabledTo(series_));
    }
    state.grid = mnuSpread->isChecked();
    state.legend = mnuLegend->isChecked();
    state.shorttip = mnuFoldTip->isChecked();
    state.ownscale = mnuOwnScale->isChecked();
    state.gaslist = gaslistCheck->isChecked();
    state.research = mnuRD->isChecked();
    state.scheme = scheme_;
    return state;
}

/// Behind a load of the same dive from the same file.
void rbinterface::takeState(const ViewerState& state) {
    takeBoxes(state);
    mnuLegend->setChecked(state.legend);
    mnuFoldTip->setChecked(state.shorttip);
    mnuOwnScale->setChecked(state.ownscale);
    gaslistCheck->setChecked(state.gaslist);
    mnuRD->setChecked(state.research);
    mnuColorGrey->setChecked(state.scheme == ChartScheme::Grey);
    scheme_ = state.scheme;
    takeColours();
    zoom_ = state.zoom;
    free_ = state.free;
    showZoom();
    mnuSpread->setChecked(state.grid);
    plotgraph();
    selectrow(std::clamp(state.row, 1, std::max(1, lastsample_)));
    Text8->setVisible(state.tip && Text8->isVisibleTo(this));
    playspeed_ = state.playspeed;
    playbar_->showSpeed(playspeed_);
    if (state.playing) {
        PlayDive_click();
    }
}

/// Without a plot for each of them.
void rbinterface::takeBoxes(const ViewerState& state) {
    const QSignalBlocker quiet(series_);
    for (int number = kFirstCheck; number <= kLastCheck; ++number) {
        const auto bit = static_cast<size_t>(number);
        series_->check(number)->setEnabled(state.enabled.test(bit));
        series_->check(number)->setChecked(state.boxes.check.test(bit));
    }
    for (int index = 0; index < kSticks; ++index) {
        const auto bit = static_cast<size_t>(index);
        series_->check15(index)->setEnabled(state.enabled15.test(bit));
        series_->check15(index)->setChecked(state.boxes.check15.test(bit));
    }
}

} // namespace benthor::viewer
