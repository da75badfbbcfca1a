#include "viewer/playback.h"

#include "platform/textformat.h"

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
    for (int row = 1; row <= std::min(currentrow, kMostSamples); ++row) {
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

int playStep(int selectedrow, int playspeed, int lastsample) {
    const int row = selectedrow + playspeed;
    return row > lastsample - 1 ? 1 : row;
}

int nextAlarm(const DiveProfile& profile, int currentrow, int lastsample) {
    return nextRow(currentrow, lastsample, [&profile](int row) { return profile.alarmpoint(row); });
}

int nextMark(const DiveProfile& profile, int currentrow, int lastsample) {
    return nextRow(currentrow, lastsample, [&profile](int row) { return profile.mark[row - 1] > 0; });
}

} // namespace benthor::viewer
