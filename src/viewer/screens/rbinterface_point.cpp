// The selected sample: every way that leads to one, and what is shown of it.

#include "platform/grid/flexgrid.h"
#include "platform/screen/ticktimer.h"
#include "platform/screen/toldqcolor.h"
#include "platform/textformat.h"
#include "profile/gridcells.h"
#include "viewer/screens/chartcard.h"
#include "viewer/screens/instrumentpanel.h"
#include "viewer/screens/playbar.h"
#include "viewer/screens/rbinterface.h"
#include "viewer/screens/seriescolumn.h"
#include "viewer/screens/sidecolumn.h"

#include <QCheckBox>
#include <QScopedValueRollback>
#include <QSignalBlocker>

namespace benthor::viewer {

namespace {

/// The cells of the second grid's row, which are 0 where they hold no number.
Thermistors thermistorsOf(const platform::FlexGrid& grid, int row) {
    Thermistors readings{};
    for (std::size_t cell = 0; cell < readings.size(); ++cell) {
        const QString text = grid.text(row, static_cast<int>(cell) + 1);
        readings[cell] = platform::isNumeric(text) ? platform::leadingNumber(QStringView(text)) : 0.0;
    }
    return readings;
}

} // namespace

void rbinterface::selectrow(int row) {
    const QSignalBlocker quiet(MSFlexGrid1);
    MSFlexGrid1->setRow(row);
    MSFlexGrid1_SelChange();
}

/// Every way to pick a sample ends here.
void rbinterface::MSFlexGrid1_SelChange() {
    const QSignalBlocker quiet(MSFlexGrid1);
    MSFlexGrid1->setCol(1);
    const RowSelection selection = session_.select(MSFlexGrid1->row());
    if (selection.unmarkRow) {
        for (int column = kFirstUnmarkedColumn; column <= kLastUnmarkedColumn; ++column) {
            MSFlexGrid1->setBackColour(*selection.unmarkRow, column, {});
        }
    }
    MSFlexGrid1->setRow(selection.row);
    MSFlexGrid1->setTopRow(selection.topRow);
    showpointtip(selection.row);
}

/// A row without a sample leaves the panel as it is.
void rbinterface::showpointtip(int row) {
    const SeriesColumn& series = side_->series();
    const bool check3 = series.check(3)->isEnabled();
    const bool shown =
        session_.show(row, {.cell = [this, row](int column) { return MSFlexGrid1->text(row, column); },
                            .thermistors = thermistorsOf(*MSFlexGrid2, row),
                            .check3 = check3,
                            .check12 = series.check(12)->isEnabled()});
    if (!shown) {
        chart_->hideCursor();
        return;
    }
    for (int column = 0; column < profile::kSampleColumns; ++column) {
        MSFlexGrid1->setBackColour(row, column, platform::toQColor(platform::kToldBlue));
    }
    chart_->show(session_.follow());
    showZoom();
    chart_->showStrip();
    chart_->setTip(session_.tip(series.boxes(), check3));
    panelView_->showState(session_.panel(), session_.feet());
    chart_->placeCursor();
    chart_->tellSample();
}

void rbinterface::goTo(std::optional<int> row) {
    if (row) {
        selectrow(*row);
        chart_->announceSample();
    }
}

void rbinterface::play(PlayBar::Act act) {
    const int speed = session_.playspeed();
    switch (act) {
    case PlayBar::Act::Play:
        return PlayDive_click();
    case PlayBar::Act::Stop:
        return StopPlayDive_click();
    case PlayBar::Act::Next:
        return goTo(session_.stepped(speed));
    case PlayBar::Act::Previous:
        return goTo(session_.stepped(-speed));
    case PlayBar::Act::NextAlarm:
        return goTo(session_.alarmAhead());
    case PlayBar::Act::NextMark:
        return goTo(session_.markAhead());
    case PlayBar::Act::Faster:
        session_.setPlayspeed(fasterPlay(speed));
        break;
    case PlayBar::Act::Slower:
        session_.setPlayspeed(slowerPlay(speed));
        break;
    }
    playbar_->showSpeed(session_.playspeed());
}

void rbinterface::PlayDive_click() {
    if (session_.lastsample() > 0) {
        Timer3->setEnabled(true);
    }
}

void rbinterface::StopPlayDive_click() {
    Timer3->setEnabled(false);
    playbar_->showPlaying(false);
}

/// A tick that takes long is not entered a second time.
void rbinterface::Timer3_tick() {
    if (playbusy_) {
        return;
    }
    const QScopedValueRollback<bool> busy(playbusy_, true);
    playbar_->showPlaying(true);
    playbar_->showSpeed(session_.playspeed());
    selectrow(session_.played());
    chart_->announceAlarms();
}

} // namespace benthor::viewer
