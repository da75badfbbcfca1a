#pragma once

#include "platform/rowrange.h"
#include "viewer/gasstrip.h"
#include "viewer/strip.h"

#include <QString>
#include <array>

namespace benthor::viewer {

using platform::RowRange;

/// The view that the user has zoomed and moved freely, in rows of the dive; beside the two told ones. Its
/// least span:
constexpr double kLeastSpan = 8;

/// Zoomed about a row, which keeps its place on the screen. `factor` above 1 is nearer. Never beyond rows 0
/// to `lastsample`, the last grid row.
RowRange zoomedAbout(RowRange view, double row, double factor, int lastsample);

/// Moved by rows, as far as the dive reaches.
RowRange movedBy(RowRange view, double rows, int lastsample);

/// Moved so that a row that has left the view stands at a quarter of it.
RowRange followed(RowRange view, int row, int lastsample);

/// Whether the view shows the whole dive.
bool isWholeDive(RowRange view, int lastsample);

/// The row of a click on the chart, by the same count as in the told views: `share` of the plot's width.
int freeClickRow(double share, RowRange view, int lastsample);

/// The row of a click on one of the strips.
int freeStripRow(double share, RowRange view, int lastsample);

/// The five time labels; `interval` is the number of seconds between samples.
std::array<QString, 5> freeTimeLabels(double interval, RowRange view);

/// The strip over the view, by the rules of the whole dive.
Strip freeStrip(const profile::DiveProfile& profile, int lastsample, int currentrow, RowRange view);

/// The gas strip over the view; rows of its runs are the dive's.
GasStrip freeGasStrip(const GasRowNames& names, int lastsample, RowRange view);

} // namespace benthor::viewer
