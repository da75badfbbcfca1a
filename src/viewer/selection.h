#pragma once

#include "viewer/zoom.h"

#include <optional>

namespace benthor::viewer {

/// The place of an X in twips as a share of the plot's width; below 0 and above 1 beside it.
double plotShare(double xTwips);

/// The grid row that a release of the mouse on the chart selects. `x` is in twips from the chart's left edge,
/// whose plot area begins at 645 and is 10065 wide; `lastsample` is the last grid row.
int chartClickRow(double x, int lastsample, const ZoomState& zoom);

/// What the selection of a row asks of grid and chart; rows and columns are the grid's.
struct RowSelection {
    std::optional<int> unmarkRow; ///< its columns 1 to 32 take back the grid's own background
    std::optional<int> chartRow;  ///< told to the chart as its current row
    int row = 1;                  ///< to be selected, at column 1
    int topRow = 1;               ///< to be scrolled to the top
};

constexpr int kFirstUnmarkedColumn = 1;
constexpr int kLastUnmarkedColumn = 32;

/// Row `row` is selected while `currentrow` was. The same row again leaves marks and chart alone.
RowSelection selectRow(int row, int currentrow, int zoomfactor);

/// The grid's top row while `row` is selected: four rows above it, not above row 1.
int topRowFor(int row);

} // namespace benthor::viewer
