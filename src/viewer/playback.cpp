#include "viewer/playback.h"

#include "platform/textformat.h"
#include "viewer/zoom.h"

#include <algorithm>

namespace benthor::viewer {

namespace {

int boundedSpeed(int playspeed) {
    constexpr int kFastest = 64;
    constexpr int kTooFast = 100;
    return playspeed > kTooFast ? kFastest : std::max(playspeed, 1);
}

template <class Test> int nextRow(int currentrow, int lastsample, const Test& test) {
    for (int row = currentrow + 1; row <= lastsample - 1; ++row) {
        if (test(row)) {
            return row;
        }
    }
    for (int row = 1; row <= std::min(currentrow, profile::kMostSamples); ++row) {
        if (test(row)) {
            return row;
        }
    }
    return 0;
}

} // namespace

int fasterPlay(int playspeed) {
    return boundedSpeed(playspeed * 2);
}

int slowerPlay(int playspeed) {
    return boundedSpeed(platform::toWhole(playspeed / 2.0));
}

int manualStep(int selectedrow, int by, int lastsample) {
    const int row = selectedrow + by;
    if (row > lastsample - 1) {
        return 1;
    }
    return row < 0 ? lastsample - 1 : row;
}

int walkedRow(SampleStep way, int row, int lastsample, platform::RowRange shown) {
    const int page = std::max(1, static_cast<int>(shown.span() / kPages));
    switch (way) {
    case SampleStep::Back:
        row -= 1;
        break;
    case SampleStep::On:
        row += 1;
        break;
    case SampleStep::PageBack:
        row -= page;
        break;
    case SampleStep::PageOn:
        row += page;
        break;
    case SampleStep::First:
        row = 1;
        break;
    case SampleStep::Last:
        row = lastsample;
        break;
    }
    return std::clamp(row, 1, std::max(1, lastsample));
}

int playStep(int selectedrow, int playspeed, int lastsample) {
    const int row = selectedrow + playspeed;
    return row > lastsample - 1 ? 1 : row;
}

int nextAlarm(const profile::DiveProfile& profile, int currentrow, int lastsample) {
    return nextRow(currentrow, lastsample, [&profile](int row) { return profile.alarmpoint(row); });
}

int nextMark(const profile::DiveProfile& profile, int currentrow, int lastsample) {
    return nextRow(currentrow, lastsample, [&profile](int row) { return profile.mark[row - 1] > 0; });
}

} // namespace benthor::viewer
