#include "viewer/gasstrip.h"

#include "platform/textformat.h"
#include "profile/gridcells.h"

#include <algorithm>

namespace benthor::viewer {

namespace {

constexpr int kCharactersOfDive = 135;
constexpr int kCharactersOfPage = 92;
constexpr qsizetype kMostPad = 90;

QString nameOf(const GasRowNames& names, int row) {
    return row >= 0 && static_cast<size_t>(row) < names.size() ? names[static_cast<size_t>(row)] : QString();
}

} // namespace

GasRowNames gasRowNames(const profile::DiveProfile& profile, const profile::GasNames& gasname,
                        int lastsample) {
    const int last = std::min(lastsample, kMostNamedRows);
    GasRowNames names(1);
    for (int row = 1; row <= last; ++row) {
        names.push_back(profile::gasNameAt(profile, gasname, row));
    }
    return names;
}

GasStrip gasStrip(const GasRowNames& names, int lastsample, const ZoomState& zoom) {
    const int rows = viewRows(lastsample, zoom.zoomfactor);
    const int offset = viewOffset(lastsample, zoom);
    const int width = zoom.zoomed() ? kCharactersOfPage : kCharactersOfDive;
    GasStrip strip;
    for (int i = 1; i <= rows; ++i) {
        const QString name = nameOf(names, i + offset);
        if (i == 1) {
            strip.text = name + QLatin1Char(' ');
            strip.runs.push_back({name, 1, 1});
        } else if (name == strip.runs.back().name) {
            strip.runs.back().lastRow = i;
        } else {
            const auto place =
                static_cast<qsizetype>(platform::wholePart(static_cast<double>(i) / rows * width));
            const qsizetype pad = std::clamp<qsizetype>(place - strip.text.size(), 1, kMostPad);
            strip.text += QString(pad, QLatin1Char(' ')) + name;
            strip.runs.push_back({name, i, i});
        }
    }
    return strip;
}

} // namespace benthor::viewer
