#pragma once

#include <QString>

namespace benthor::viewer {

constexpr int kZoomedFactor = 10; ///< the zoomed view shows one tenth of the dive
constexpr int kPages = 10;

/// The two views of the chart and the controls that switch them. Starts as a dive opens: the whole dive
/// shown.
struct ZoomState {
    int zoomfactor = 1; ///< 1 or 10
    int zoompage = 1;   ///< 1 to 10, of the zoomed view

    // Enabled:
    bool picture6 = true;   ///< zoom in
    bool picture7 = false;  ///< zoom out
    bool picture12 = false; ///< pan back
    bool picture13 = false; ///< pan on
    bool mnuzoompan = false;
    bool mnuzoompan2 = false;
    bool command2back = false; ///< Command2(1)
    bool command2on = false;   ///< Command2(2)

    bool command2visible = false; ///< Command2(1) and (2): there while zoomed

    QString caption; ///< of mnudivezoom and Command2(0); empty: the one they were made with

    bool zoomed() const { return zoomfactor == kZoomedFactor; }
};

/// The member of the button array that was pressed, or the picture or menu entry that acts as it.
enum class ZoomButton { Zoom = 0, PanBack = 1, PanOn = 2 };

/// Acts on a press; `lastsample` is the last grid row. False when nothing changed: a dive of 100 rows or
/// fewer is not zoomed. Otherwise the chart is to be plotted anew.
bool pressZoom(ZoomState& state, ZoomButton button, int lastsample);

/// What plotting does first: factor and page are at least 1.
void clampZoom(ZoomState& state);

/// Rows of the view: lastsample / zoomfactor, rounded, ties to even.
int viewRows(int lastsample, int zoomfactor);

/// Rows of the dive before the first row of the view: row i of the view is row i + viewOffset() of the dive.
int viewOffset(int lastsample, const ZoomState& state);

/// Whether the view is the last page and the row is one of the few behind it, which are in no page.
bool isBehindPages(int row, int lastsample, const ZoomState& state);

} // namespace benthor::viewer
