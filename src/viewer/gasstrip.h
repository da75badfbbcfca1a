#pragma once

#include "profile/diveprofile.h"
#include "profile/gaslist.h"
#include "viewer/zoom.h"

#include <QString>
#include <vector>

namespace benthor::viewer {

/// Rows above this have no gas name.
constexpr int kMostNamedRows = 10000;

/// Gas name of each row: [r] is that of row r, [0] is empty. Rows behind the end of the list have none.
using GasRowNames = std::vector<QString>;

/// Names of rows 1 to lastsample, but no further than row 10,000.
GasRowNames gasRowNames(const profile::DiveProfile& profile, const profile::GasNames& gasname,
                        int lastsample);

/// A run of rows of the view with one gas name, which is empty where the rows have none. Rows count from 1.
struct GasRun {
    QString name;
    int firstRow = 0;
    int lastRow = 0;
    bool operator==(const GasRun&) const = default;
};

/// The gas strip above the chart, for the rows of the view.
struct GasStrip {
    QString text;             ///< of txtGas: each change of gas at its place, counted in characters
    std::vector<GasRun> runs; ///< the same to paint from
};

GasStrip gasStrip(const GasRowNames& names, int lastsample, const ZoomState& zoom);

} // namespace benthor::viewer
