#include "viewer/selection.h"

#include "platform/textformat.h"

#include <algorithm>

namespace benthor::viewer {

namespace {
constexpr double kLeftTwips = 645.0;
constexpr double kWidthTwips = 10065.0;
} // namespace

double plotShare(double xTwips) {
    return (xTwips - kLeftTwips) / kWidthTwips;
}

int chartClickRow(double x, int lastsample, const ZoomState& zoom) {
    const double span = static_cast<double>(lastsample) / std::max(zoom.zoomfactor, 1);
    double place = platform::wholePart((x - kLeftTwips) / kWidthTwips * span) + 1.0;
    if (zoom.zoomed() && zoom.zoompage > 1) {
        place += span * (zoom.zoompage - 1);
    }
    int row = platform::toWhole(place);
    row = std::min(row, lastsample - 1);
    row = std::max(row, 1);
    return row > 1 ? row - 1 : row;
}

RowSelection selectRow(int row, int currentrow, int zoomfactor) {
    RowSelection selection;
    selection.row = row;
    selection.topRow = topRowFor(row);
    if (row != currentrow) {
        selection.unmarkRow = currentrow;
        if (zoomfactor != kZoomedFactor) {
            selection.chartRow = row;
        }
    }
    return selection;
}

int topRowFor(int row) {
    return row <= 4 ? 1 : row - 4;
}

} // namespace benthor::viewer
