#pragma once

#include "viewer/zoom.h"

#include <QString>
#include <array>

namespace benthor::viewer {

/// The time labels Text1 to Text5 below the chart. `interval` is the number of seconds between samples,
/// `lastsample` the last grid row. The labels of the whole dive are not exact quarters: the third and the
/// fourth are of a time that is 0.499 s shorter, so that a half second falls down.
std::array<QString, 5> determinexaxis(double interval, int lastsample, const ZoomState& zoom);

} // namespace benthor::viewer
