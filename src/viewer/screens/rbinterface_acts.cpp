// What the user asks for, and what of the screen outlives a fresh load.

#include "platform/look/look.h"
#include "platform/look/widgets/card.h"
#include "platform/screen/dialogs.h"
#include "platform/screen/ticktimer.h"
#include "session/process.h"
#include "store/units.h"
#include "viewer/screens/chartcard.h"
#include "viewer/screens/diveexports.h"
#include "viewer/screens/divemenus.h"
#include "viewer/screens/playbar.h"
#include "viewer/screens/rbinterface.h"
#include "viewer/screens/seriescolumn.h"
#include "viewer/screens/sidecolumn.h"
#include "viewer/screens/zoombar.h"

#include <QAction>
#include <QSplitter>

namespace benthor::viewer {

namespace {
constexpr int kGridHeight = 242;
}

void rbinterface::act(DiveAct act) {
    switch (act) {
    case DiveAct::Leave:
        return handOver(&rbinterface::diveListWanted);
    case DiveAct::Details:
        return handOver(&rbinterface::detailsWanted);
    case DiveAct::Gases:
        return handOver(&rbinterface::gasWanted);
    case DiveAct::Capture:
        return handOver(&rbinterface::captureWanted);
    case DiveAct::SaveOpen: {
        const Routine routine(*this); // the dialog lets events run
        return handOver(&rbinterface::exportWanted);
    }
    case DiveAct::Zoom:
        return Command2_click(ZoomButton::Zoom);
    case DiveAct::PanBack:
        return Command2_click(ZoomButton::PanBack);
    case DiveAct::PanOn:
        return Command2_click(ZoomButton::PanOn);
    case DiveAct::Feet:
        return chooseunit(QStringLiteral("Feet"));
    case DiveAct::Metres:
        return chooseunit(QStringLiteral("metre"));
    default: {
        const Routine routine(*this); // a print lets events run
        exports_->act(act);
    }
    }
}

/// Every way to another screen: whoever comes next finds the dive of this one in hand.
void rbinterface::handOver(void (rbinterface::*wanted)()) {
    if (!dive_.isEmpty()) {
        process().currentdiveid = dive_.diveid;
    }
    emit(this->*wanted)();
}

void rbinterface::chooseunit(const QString& word) {
    try {
        store::writeunit(word);
    } catch (const platform::StoreError& error) {
        checkUnit();
        platform::dialogs().message(
            this,
            QStringLiteral("The units stay as they are: they could not be saved.\n%1").arg(error.text()),
            platform::BoxKind::Warning);
        return;
    }
    process().unitoverride = word;
    handOver(&rbinterface::reloadWanted);
}

void rbinterface::Command2_click(ZoomButton button) {
    if (session_.pressZoom(button)) {
        showZoom();
        chart_->plot();
        chart_->showStrip();
    }
}

void rbinterface::showZoom() {
    const ZoomState& zoom = session_.zoom();
    zoombar_->showState(zoom);
    menus_->mnuzoompan->setEnabled(zoom.mnuzoompan);
    menus_->mnuzoompan2->setEnabled(zoom.mnuzoompan2);
    if (!zoom.caption.isEmpty()) {
        menus_->mnudivezoom->setText(zoom.caption);
    }
}

void rbinterface::mnuSpread_toggled(bool shown) {
    gridCard_->setVisible(shown);
    if (shown && splitter_->sizes().value(1) == 0) {
        const int grid = look::scaled(kGridHeight);
        splitter_->setSizes({std::max(1, splitter_->height() - grid), grid});
    }
}

bool rbinterface::hasOtherUnit() const {
    return profile::isFeet(process().depthunit) != profile::isFeet(session_.unitword());
}

ViewerState rbinterface::state() const {
    if (resumed_) { // not taken over yet
        return *resumed_;
    }
    ViewerState state;
    state.row = session_.currentrow();
    state.playspeed = session_.playspeed();
    state.playing = Timer3->isEnabled();
    state.tip = chart_->isTipShown();
    state.zoom = session_.zoom();
    state.free = session_.freeView();
    side_->series().saveTo(state);
    state.grid = menus_->mnuSpread->isChecked();
    state.legend = menus_->mnuLegend->isChecked();
    state.shorttip = menus_->mnuFoldTip->isChecked();
    state.ownscale = menus_->mnuOwnScale->isChecked();
    state.gaslist = side_->areGasesShown();
    state.research = menus_->mnuRD->isChecked();
    state.scheme = chart_->scheme();
    return state;
}

/// Behind a load of the same dive from the same file.
void rbinterface::takeState(const ViewerState& state) {
    side_->series().takeFrom(state);
    menus_->mnuLegend->setChecked(state.legend);
    menus_->mnuFoldTip->setChecked(state.shorttip);
    menus_->mnuOwnScale->setChecked(state.ownscale);
    side_->showGases(state.gaslist);
    menus_->mnuRD->setChecked(state.research);
    menus_->mnuColorGrey->setChecked(state.scheme == ChartScheme::Grey);
    chart_->setScheme(state.scheme);
    session_.takeView(state.zoom, state.free);
    showZoom();
    menus_->mnuSpread->setChecked(state.grid);
    chart_->plot();
    selectrow(std::clamp(state.row, 1, std::max(1, session_.lastsample())));
    if (!state.tip) {
        chart_->hideTip();
    }
    session_.setPlayspeed(state.playspeed);
    playbar_->showSpeed(state.playspeed);
    if (state.playing) {
        PlayDive_click();
    }
}

} // namespace benthor::viewer
