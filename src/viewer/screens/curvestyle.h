#pragma once

#include "platform/chart/chartstyle.h"
#include "platform/look/tokens.h"

namespace benthor::viewer {

/// How the series of a chart column is drawn in the theme. `ownOxygenScale`: the oxygen pressures go by the
/// inner axis.
platform::SeriesStyle curveStyle(int column, look::Theme theme, bool ownOxygenScale);

} // namespace benthor::viewer
