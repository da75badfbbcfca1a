#pragma once

#include "platform/chart/chartstyle.h"
#include "platform/look/series.h"

namespace benthor::viewer {

/// How the series of a chart column is drawn in the theme. `ownOxygenScale`: the oxygen pressures go by the
/// inner axis.
platform::SeriesStyle curveStyle(int column, look::Theme theme, bool ownOxygenScale);

/// The curves that a box brings into the chart, in the order of its series; `index`: of Check15.
QList<look::Series> curvesOfBox(int check, int index);

} // namespace benthor::viewer
