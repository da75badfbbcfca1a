#pragma once

#include "platform/grid/flexgrid.h"
#include "tests/tour/actor.h"

namespace benthor::tour {

inline void require(bool holds, const QString& what) {
    if (!holds) {
        throw TourError(what);
    }
}

/// The row whose cell in column 4 or any other holds the text; 0 for none.
inline int rowHolding(const platform::FlexGrid* grid, const QString& text) {
    for (int row = 1; row < grid->rows(); ++row) {
        for (int col = 0; col < grid->cols(); ++col) {
            if (grid->text(row, col) == text) {
                return row;
            }
        }
    }
    return 0;
}

inline QPoint cellCentre(platform::FlexGrid* grid, int row, int col) {
    grid->showRow(row);
    return grid->visualRect(grid->model()->index(row - 1, col)).center();
}

} // namespace benthor::tour
