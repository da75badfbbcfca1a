#pragma once

#include <limits>
#include <vector>

namespace benthor::viewer {

/// The data of a chart: column k is series k. A cell is empty (NaN) until written.
struct ChartMatrix {
    ChartMatrix() = default;
    ChartMatrix(int rowCount, int columnCount)
        : rows(rowCount)
        , cols(columnCount)
        , cells(static_cast<size_t>(rowCount) * static_cast<size_t>(columnCount),
                std::numeric_limits<double>::quiet_NaN()) {}

    int rows = 0;
    int cols = 0;
    std::vector<double> cells; ///< one column behind the other

    /// Row and column count from 0.
    double& at(int row, int col) { return cells[index(row, col)]; }
    double at(int row, int col) const { return cells[index(row, col)]; }

private:
    size_t index(int row, int col) const {
        return static_cast<size_t>(col) * static_cast<size_t>(rows) + static_cast<size_t>(row);
    }
};

} // namespace benthor::viewer
