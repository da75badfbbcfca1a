// Playback, steps and jumps.

#include "platform/chart/chart.h"
#include "platform/screen/ticktimer.h"
#include "viewer/playback.h"
#include "viewer/screens/playbar.h"
#include "viewer/screens/rbinterface.h"

#include <QKeyEvent>
#include <QRandomGenerator>
#include <QScopedValueRollback>

namespace benthor::viewer {

using platform::TickTimer;

void rbinterface::makeTimers() {
    // The first two have no work of their own.
    new TickTimer(QStringLiteral("Timer1"), 500, TickTimer::Start::Disabled, this);
    new TickTimer(QStringLiteral("Timer2"), 100, TickTimer::Start::Disabled, this);
    Timer3 = new TickTimer(QStringLiteral("Timer3"), 1000, TickTimer::Start::Disabled, this);
    connect(Timer3, &TickTimer::tick, this, &rbinterface::Timer3_tick);
    connect(playbar_, &PlayBar::acted, this, [this](PlayBar::Act act) {
        switch (act) {
        case PlayBar::Act::Play:
            PlayDive_click();
            break;
        case PlayBar::Act::Stop:
            StopPlayDive_click();
            break;
        case PlayBar::Act::Next:
            step(playspeed_);
            break;
        case PlayBar::Act::Previous:
            step(-playspeed_);
            break;
        case PlayBar::Act::Faster:
            playspeed_ = fasterPlay(playspeed_);
            playbar_->showSpeed(playspeed_);
            break;
        case PlayBar::Act::Slower:
            playspeed_ = slowerPlay(playspeed_);
            playbar_->showSpeed(playspeed_);
            break;
        case PlayBar::Act::NextAlarm:
            jumpTo(nextAlarm(profile_, currentrow_, lastsample_));
            break;
        case PlayBar::Act::NextMark:
            jumpTo(nextMark(profile_, currentrow_, lastsample_));
            break;
        }
    });
}

void rbinterface::PlayDive_click() {
    if (lastsample_ > 0) {
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
    playbar_->showSpeed(playspeed_);
    selectrow(playStep(selectedrow_, playspeed_, lastsample_));
}

void rbinterface::step(int by) {
    if (lastsample_ < 1) {
        return;
    }
    const int row = manualStep(selectedrow_, by, lastsample_);
    if (row < 1) {
        selectedrow_ = row; // the row before the first has nothing to show
        return;
    }
    selectrow(row);
}

/// By the keys, as far as the dive goes: one by one, by a tenth of what is shown, or to an end.
void rbinterface::walk(SampleStep way) {
    if (lastsample_ > 1) {
        selectrow(walkedRow(way, currentrow_, lastsample_, shownRows()));
    }
}

void rbinterface::jumpTo(int row) {
    if (row > 0) {
        selectrow(row);
    }
}

void rbinterface::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        leaveFreeView();
    } else {
        Screen::keyPressEvent(event);
    }
}

/// An exercise of the chart: numbers at random with large markers. The next plot brings the dive back.
void rbinterface::Command5_click() {
    constexpr int kRows = 8;
    constexpr int kSeries = 5;
    constexpr double kMarkerSize = 20;
    ChartMatrix matrix(kRows);
    for (int row = 1; row <= kRows; ++row) {
        for (int series = 1; series <= kSeries; ++series) {
            const double sign = series == kDepthColumn || series == kCeilingColumn ? -1 : 1;
            matrix.set(row, series, sign * QRandomGenerator::global()->bounded(100.0));
        }
    }
    MSChart1->setView(std::nullopt);
    MSChart1->setCurrentRow(0);
    MSChart1->setData(std::move(matrix));
    for (int series = 1; series < ChartMatrix::columns; ++series) {
        MSChart1->setMarker(series, {.visible = true,
                                     .size = kMarkerSize,
                                     .style = platform::MarkerStyle::Diamond,
                                     .fill = QColor(0, 0, 255)});
    }
    MSChart1->setTitle(QStringLiteral("lasdasdasd"));
}

} // namespace benthor::viewer
