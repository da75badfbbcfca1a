// Which rows of the dive are shown.

#include "viewer/divesession.h"
#include "viewer/timeaxis.h"

#include <algorithm>
#include <limits>

namespace benthor::viewer {

RowRange DiveSession::shownRows() const {
    if (free_) {
        return *free_;
    }
    const double first = viewOffset(lastsample_, zoom_);
    return {first, first + std::max(1, viewRows(lastsample_, zoom_.zoomfactor))};
}

int DiveSession::rowUnder(double xTwips) const {
    return free_ ? freeClickRow(plotShare(xTwips), *free_, lastsample_)
                 : chartClickRow(xTwips, lastsample_, zoom_);
}

int DiveSession::rowOnStrip(StripKind kind, double share) const {
    return free_ ? freeStripRow(share, *free_, lastsample_)
                 : stripClickRow(kind, share, 1.0, lastsample_, zoom_);
}

int DiveSession::cursorPlace() const {
    if (free_) {
        return currentrow_ < free_->first || currentrow_ > free_->last ? 0 : currentrow_;
    }
    // A page has rows of its own; the few samples behind the last page stand at that page's edge.
    const int place = currentrow_ - viewOffset(lastsample_, zoom_);
    const bool inView = place >= 1 && (place <= viewRows(lastsample_, zoom_.zoomfactor) ||
                                       isBehindPages(currentrow_, lastsample_, zoom_));
    return inView ? place : 0;
}

bool DiveSession::tipFitsRight(double width, double limit) const {
    const ZoomState view = free_ ? ZoomState() : zoom_;
    const int place = free_ ? qRound(currentrow_ - free_->first) : currentrow_;
    const int places = free_ ? qRound(free_->span()) : lastsample_;
    return tipLeft(place, places, view, width, limit) ==
           tipLeft(place, places, view, width, std::numeric_limits<double>::infinity());
}

bool DiveSession::pressZoom(ZoomButton button) {
    const bool wasFree = std::exchange(free_, std::nullopt).has_value();
    return viewer::pressZoom(zoom_, button, lastsample_) || wasFree;
}

ViewChange DiveSession::zoomFreely(double xTwips, double factor) {
    if (lastsample_ < 1) {
        return ViewChange::None;
    }
    const RowRange shown = shownRows();
    const double row = shown.first + std::clamp(plotShare(xTwips), 0.0, 1.0) * shown.span();
    const RowRange view = zoomedAbout(shown, row, factor, lastsample_);
    return isWholeDive(view, lastsample_) && !zoom_.zoomed() ? leaveFreeView() : takeFreeView(view);
}

ViewChange DiveSession::moveFreely(double share) {
    if (lastsample_ < 1) {
        return ViewChange::None;
    }
    const RowRange shown = shownRows();
    return takeFreeView(movedBy(shown, share * shown.span(), lastsample_));
}

ViewChange DiveSession::takeFreeView(RowRange view) {
    if (free_ == view) {
        return ViewChange::None;
    }
    const bool entering = !free_;
    free_ = view;
    return entering ? ViewChange::Plot : ViewChange::Moved;
}

/// Back to the one of the two views that was left.
ViewChange DiveSession::leaveFreeView() {
    return std::exchange(free_, std::nullopt) ? ViewChange::Plot : ViewChange::None;
}

void DiveSession::takeView(const ZoomState& zoom, const std::optional<RowRange>& free) {
    zoom_ = zoom;
    free_ = free;
}

ChartMatrix DiveSession::matrix(const SeriesBoxes& boxes) {
    clampZoom(zoom_);
    ChartMatrix dive = chartMatrix(profile_, lastsample_, boxes);
    return zoom_.zoomed() && !free_ ? zoomedMatrix(dive, lastsample_, zoom_) : dive;
}

Strip DiveSession::strip() const {
    return free_ ? freeStrip(profile_, lastsample_, currentrow_, *free_)
                 : drawstrip(profile_, lastsample_, currentrow_, zoom_);
}

GasStrip DiveSession::gasStrip(RowRange& spread) const {
    const double rows = std::max(1, viewRows(lastsample_, zoom_.zoomfactor));
    spread = free_.value_or(RowRange{0, rows});
    return free_ ? freeGasStrip(gasrownames_, lastsample_, *free_)
                 : viewer::gasStrip(gasrownames_, lastsample_, zoom_);
}

std::array<QString, 5> DiveSession::timeLabels(double interval) const {
    return free_ ? freeTimeLabels(interval, *free_) : determinexaxis(interval, lastsample_, zoom_);
}

} // namespace benthor::viewer
