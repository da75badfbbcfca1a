#pragma once

#include "platform/rowrange.h"
#include "viewer/chartdata.h"
#include "viewer/zoom.h"

#include <array>
#include <optional>

namespace benthor::viewer {

/// How the chart is coloured: by the theme until the entry for grey is touched.
enum class ChartScheme { Theme, Grey, White };

/// What of a dive screen is the user's own doing. One that is loaded anew because something else has changed
/// takes it over from the one before.
struct ViewerState {
    int row = 1;
    int playspeed = 1;
    bool playing = false;
    bool tip = false; ///< the tip box stands at the row
    ZoomState zoom;
    std::optional<platform::RowRange> free;
    SeriesBoxes boxes;
    std::bitset<16> enabled;  ///< bit k: Check<k> can be chosen
    std::bitset<3> enabled15; ///< bit k: Check15(k)
    bool grid = false;
    bool legend = true;
    bool shorttip = false;
    bool ownscale = false;
    bool gaslist = false;
    bool research = false;
    ChartScheme scheme = ChartScheme::Theme;
};

} // namespace benthor::viewer
