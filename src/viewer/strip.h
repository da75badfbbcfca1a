#pragma once

#include "platform/toldcolour.h"
#include "profile/diveprofile.h"
#include "viewer/zoom.h"

#include <optional>
#include <vector>

namespace benthor::viewer {

/// What stands at a place of the strip under the chart.
enum class StripSign { Cursor, Alarm, Mark };

constexpr platform::ToldColour kPrediveColour = 0xFF00FF;

/// One line of the strip, from top to bottom.
struct StripLine {
    double place = 0; ///< share of the strip's width
    StripSign sign = StripSign::Alarm;
    int width = 1; ///< pixels
    platform::ToldColour colour = 0;
    int sample = 0;
    bool operator==(const StripLine&) const = default;
};

/// The strip of the view.
struct Strip {
    std::vector<StripLine> lines; ///< in the order in which they are drawn
    bool found = false;           ///< zoomed: the current row is on the page
};

/// `lastsample` is the last grid row, which the whole-dive view leaves out; the zoomed one has the samples of
/// its page. There every sample with a token is drawn, in the whole-dive view the alarm points alone.
Strip drawstrip(const profile::DiveProfile& profile, int lastsample, int currentrow, const ZoomState& zoom);

/// Turns to the page of `row` in the zoomed view by the pan buttons. False when it is there already, or there
/// is none beyond.
bool turnPage(ZoomState& zoom, int row, int lastsample);

enum class StripKind { Alarms, Gases };

/// The row under a click on the strip or on the gas strip; `x` from its left edge, in the unit of `width`.
int stripClickRow(StripKind kind, double x, double width, int lastsample, const ZoomState& zoom);

} // namespace benthor::viewer
