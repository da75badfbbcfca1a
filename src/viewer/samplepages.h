#pragma once

#include "profile/diveprofile.h"

#include <QSizeF>
#include <functional>
#include <vector>

namespace benthor::viewer {

/// The grid columns that a print of the samples shows: time, depth and gas always, of the others those that
/// have a heading and hold anything but 0 up to row `lastsample`.
std::vector<int> printedColumns(const profile::DiveProfile& profile, int lastsample);

/// How samples go on paper. The sheets for one block of rows follow each other; each begins with the first
/// column, and none is wider than the paper unless a single column is.
struct SamplePages {
    std::vector<std::vector<int>> sheets; ///< columns of each sheet of a block
    int rowsOfPage = 1;                   ///< below the headings
    int rows = 0;

    int blocks() const { return (rows + rowsOfPage - 1) / rowsOfPage; }
    int pages() const { return blocks() * static_cast<int>(sheets.size()); }
};

/// `width` gives a column's width; that, `rowHeight` and the paper are in one unit. `rows`: number of
/// samples, without headings. A line is left free at the foot of each page.
SamplePages samplePages(const std::vector<int>& columns, const std::function<double(int column)>& width,
                        double rowHeight, QSizeF paper, int rows);

} // namespace benthor::viewer
