#include "viewer/screens/curvestyle.h"

#include "platform/look/series.h"
#include "viewer/chartdata.h"

namespace benthor::viewer {

using look::Series;

namespace {

/// The curve of a column; columns that no box brings into the chart have none.
std::optional<Series> seriesOf(int column) {
    switch (column) {
    case kDepthColumn:
        return Series::Depth;
    case 2:
        return Series::GasNumber;
    case 3:
        return Series::PO2;
    case kCeilingColumn:
        return Series::Ceiling;
    case 5:
        return Series::Temperature;
    case 7:
        return Series::Filter;
    case 8:
        return Series::Bat1;
    case 9:
        return Series::Bat2;
    case 10:
        return Series::HPdil;
    case 11:
        return Series::HPo2;
    case 12:
        return Series::CellA;
    case 13:
        return Series::CellB;
    case 14:
        return Series::CellC;
    case 15:
        return Series::Setpoint;
    case 16:
        return Series::CO2;
    default:
        if (column >= 25 && column <= 32) {
            return static_cast<Series>(static_cast<int>(Series::Tpm1) + column - 25);
        }
        return std::nullopt;
    }
}

} // namespace

platform::SeriesStyle curveStyle(int column, look::Theme theme, bool ownOxygenScale) {
    const std::optional<Series> series = seriesOf(column);
    if (!series) {
        return platform::defaultSeriesStyle(column);
    }
    const look::SeriesStyle told = look::seriesStyle(*series, theme);
    platform::SeriesStyle style;
    style.colour = told.colour;
    style.width = told.width;
    style.dashes = told.pattern;
    style.step = told.step;
    if (ownOxygenScale && isOxygen(column)) {
        style.axis = platform::ChartAxis::Inner;
    }
    if (column == kDepthColumn || column == kCeilingColumn) {
        style.axis = platform::ChartAxis::Right;
        style.fillTo = column == kDepthColumn ? platform::SeriesFill::ToBottom : platform::SeriesFill::ToTop;
        style.fill = told.fill;
    }
    return style;
}


} // namespace benthor::viewer
