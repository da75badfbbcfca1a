#include "viewer/strip.h"

#include "platform/textformat.h"

#include <algorithm>

namespace benthor::viewer {

namespace {

constexpr int kCursorWidth = 10;
constexpr int kMarkWidth = 2;

void addWholeDive(Strip& strip, const profile::DiveProfile& profile, int lastsample, int currentrow) {
    constexpr int kAlarmWidth = 3;
    for (int sample = 1; sample <= lastsample - 1; ++sample) {
        const double place = static_cast<double>(sample) / lastsample;
        if (sample == currentrow) {
            strip.lines.push_back({place, StripSign::Cursor, kCursorWidth, platform::kToldGreen, sample});
        }
        if (profile.alarmpoint(sample)) {
            strip.lines.push_back({place, StripSign::Alarm, kAlarmWidth, platform::kToldRed, sample});
        }
        if (profile.mark[sample - 1] > 0) {
            strip.lines.push_back({place, StripSign::Mark, kMarkWidth, platform::kToldBlue, sample});
        }
    }
}

void addPage(Strip& strip, const profile::DiveProfile& profile, int lastsample, int currentrow,
             const ZoomState& zoom) {
    constexpr int kAlarmWidth = 4;
    const int rows = viewRows(lastsample, kZoomedFactor);
    const int offset = viewOffset(lastsample, zoom);
    for (int i = 1; i <= rows && offset + i <= profile::kMostSamples; ++i) {
        const int sample = offset + i;
        const double place = i / (static_cast<double>(lastsample) / kZoomedFactor);
        if (sample == currentrow) {
            strip.lines.push_back({place, StripSign::Cursor, kCursorWidth, platform::kToldGreen, sample});
            strip.found = true;
        }
        if (profile.alarmcount[sample - 1] > 0) {
            const bool predive = profile.alarms.holdsPredive(sample);
            strip.lines.push_back({place, StripSign::Alarm, kAlarmWidth,
                                   predive ? kPrediveColour : platform::kToldRed, sample});
        }
        if (profile.mark[sample - 1] == 1) {
            strip.lines.push_back({place, StripSign::Mark, kMarkWidth, platform::kToldBlue, sample});
        }
    }
}

} // namespace

Strip drawstrip(const profile::DiveProfile& profile, int lastsample, int currentrow, const ZoomState& zoom) {
    Strip strip;
    if (lastsample < 1) {
        return strip;
    }
    if (zoom.zoomed()) {
        addPage(strip, profile, lastsample, currentrow, zoom);
    } else {
        addWholeDive(strip, profile, lastsample, currentrow);
    }
    return strip;
}

bool turnPage(ZoomState& zoom, int row, int lastsample) {
    const int rows = viewRows(lastsample, kZoomedFactor);
    if (!zoom.zoomed() || rows < 1) {
        return false;
    }
    const int page = std::clamp((row - 1) / rows + 1, 1, kPages);
    if (page == zoom.zoompage) {
        return false;
    }
    const bool back = page < zoom.zoompage;
    zoom.zoompage = back ? page + 1 : page - 1;
    return pressZoom(zoom, back ? ZoomButton::PanBack : ZoomButton::PanOn, lastsample);
}

int stripClickRow(StripKind kind, double x, double width, int lastsample, const ZoomState& zoom) {
    if (width <= 0) {
        return 1;
    }
    int row = 0;
    if (zoom.zoomed()) {
        const double page = static_cast<double>(lastsample) / kZoomedFactor;
        row = platform::toWhole((zoom.zoompage - 1) * page + page * x / width);
    } else {
        row = platform::toWhole(lastsample * x / width);
        if (kind == StripKind::Gases) {
            row = std::min(row, lastsample - 1);
        }
    }
    return row == 0 ? 1 : row;
}

} // namespace benthor::viewer
