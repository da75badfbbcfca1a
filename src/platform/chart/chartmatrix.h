#pragma once

#include <array>
#include <cmath>
#include <limits>
#include <span>
#include <vector>

namespace benthor::platform {

/// The numbers of a chart: rows 0 to lastRow(), columns 0 to 40, each cell empty until written. Column k is
/// series k, a row is a place on the x axis. Row 0 and column 0 stay empty. Writing there, outside the
/// matrix, or a value that is not finite is ignored. A column takes memory only once a cell of it was
/// written.
class ChartMatrix {
public:
    static constexpr int columns = 41;
    static constexpr double empty = std::numeric_limits<double>::quiet_NaN();

    explicit ChartMatrix(int lastRow = 0)
        : lastRow_(lastRow > 0 ? lastRow : 0) {}

    int lastRow() const { return lastRow_; }

    void set(int row, int column, double value) {
        if (row < 1 || row > lastRow_ || column < 1 || column >= columns || !std::isfinite(value)) {
            return;
        }
        std::vector<double>& cells = cells_[static_cast<size_t>(column)];
        if (cells.empty()) {
            cells.assign(static_cast<size_t>(lastRow_) + 1, empty);
        }
        cells[static_cast<size_t>(row)] = value;
    }

    /// NaN for an empty cell and outside the matrix.
    double at(int row, int column) const {
        const std::span<const double> cells = series(column);
        return row >= 0 && static_cast<size_t>(row) < cells.size() ? cells[static_cast<size_t>(row)] : empty;
    }

    bool isEmpty(int row, int column) const { return std::isnan(at(row, column)); }

    /// Whether any cell of the column was written.
    bool hasSeries(int column) const { return !series(column).empty(); }

    /// The column from row 0 to the last, NaN where empty; no values at all while none was written.
    std::span<const double> series(int column) const {
        if (column < 0 || column >= columns) {
            return {};
        }
        return cells_[static_cast<size_t>(column)];
    }

private:
    int lastRow_;
    std::array<std::vector<double>, columns> cells_;
};

} // namespace benthor::platform
