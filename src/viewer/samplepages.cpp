#include "viewer/samplepages.h"

#include "profile/gridcells.h"

#include <algorithm>

namespace benthor::viewer {

namespace {

constexpr int kAlwaysPrinted = 2;   ///< the last of the columns that are there in any dive
constexpr int kLinesBesideRows = 2; ///< headings and foot

bool holdsAnything(const profile::DiveProfile& profile, int column, int lastsample) {
    const profile::SampleArray* array = profile::gridArray(profile, column);
    if (array == nullptr) {
        return false;
    }
    const std::span<const float> all = array->values();
    const auto values = all.first(std::min(all.size(), static_cast<size_t>(std::max(lastsample, 0))));
    return std::any_of(values.begin(), values.end(), [](float value) { return value != 0.0F; });
}

} // namespace

std::vector<int> printedColumns(const profile::DiveProfile& profile, int lastsample) {
    std::vector<int> columns;
    for (int column = 0; column < profile::kSampleColumns; ++column) {
        if (column <= kAlwaysPrinted ||
            (!profile::gridHeading(column).isEmpty() && holdsAnything(profile, column, lastsample))) {
            columns.push_back(column);
        }
    }
    return columns;
}

SamplePages samplePages(const std::vector<int>& columns, const std::function<double(int column)>& width,
                        double rowHeight, QSizeF paper, int rows) {
    SamplePages pages;
    pages.rows = rows;
    pages.rowsOfPage = std::max(1, static_cast<int>(paper.height() / rowHeight) - kLinesBesideRows);
    if (columns.empty()) {
        return pages;
    }
    const int first = columns.front();
    double used = 0;
    for (std::size_t at = 1; at < columns.size(); ++at) {
        const double needed = width(columns[at]);
        if (pages.sheets.empty() || (used + needed > paper.width() && pages.sheets.back().size() > 1)) {
            pages.sheets.push_back({first});
            used = width(first);
        }
        pages.sheets.back().push_back(columns[at]);
        used += needed;
    }
    return pages;
}

} // namespace benthor::viewer
