#include "viewer/zoom.h"

#include "platform/textformat.h"

#include <algorithm>

namespace benthor::viewer {

namespace {

constexpr int kMostRowsUnzoomable = 100;

void zoomIn(ZoomState& state) {
    state.zoomfactor = kZoomedFactor;
    state.zoompage = 1;
    state.picture12 = state.picture13 = state.mnuzoompan = state.mnuzoompan2 = true;
    state.picture7 = true;
    state.picture6 = false;
    state.command2visible = true;
}

void zoomOut(ZoomState& state) {
    state.zoomfactor = 1;
    state.zoompage = 1;
    state.command2visible = false;
    state.picture12 = state.picture13 = state.mnuzoompan = state.mnuzoompan2 = false;
    state.picture6 = true;
    state.picture7 = false;
}

} // namespace

bool pressZoom(ZoomState& state, ZoomButton button, int lastsample) {
    switch (button) {
    case ZoomButton::Zoom:
        if (lastsample <= kMostRowsUnzoomable) {
            return false;
        }
        if (state.zoomed()) {
            zoomOut(state);
        } else {
            zoomIn(state);
        }
        break;
    case ZoomButton::PanBack:
        state.zoompage = std::max(state.zoompage - 1, 1);
        break;
    case ZoomButton::PanOn:
        state.zoompage = std::min(state.zoompage + 1, kPages);
        break;
    }
    if (state.zoomed()) {
        state.command2back = state.mnuzoompan = state.zoompage != 1;
        state.command2on = state.mnuzoompan2 = state.zoompage != kPages;
    }
    state.caption = QStringLiteral("Zoom %1").arg(state.zoomfactor);
    return true;
}

void clampZoom(ZoomState& state) {
    state.zoomfactor = std::max(state.zoomfactor, 1);
    state.zoompage = std::max(state.zoompage, 1);
}

int viewRows(int lastsample, int zoomfactor) {
    return platform::toWhole(static_cast<double>(lastsample) / std::max(zoomfactor, 1));
}

int viewOffset(int lastsample, const ZoomState& state) {
    return state.zoomed() ? viewRows(lastsample, kZoomedFactor) * (state.zoompage - 1) : 0;
}

bool isBehindPages(int row, int lastsample, const ZoomState& state) {
    return state.zoomed() && state.zoompage == kPages && row <= lastsample &&
           row > viewRows(lastsample, kZoomedFactor) * kPages;
}

} // namespace benthor::viewer
