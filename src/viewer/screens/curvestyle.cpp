#include "viewer/screens/curvestyle.h"

#include "platform/look/series.h"
#include "viewer/chartdata.h"

namespace benthor::viewer {

using look::Series;

namespace {

/// The curves of the columns from kDepthColumn on; columns that no box brings into the chart have none.
constexpr std::array<std::optional<Series>, 16> kCurves = {
    Series::Depth,  Series::GasNumber, Series::PO2,      Series::Ceiling, Series::Temperature, std::nullopt,
    Series::Filter, Series::Bat1,      Series::Bat2,     Series::HPdil,   Series::HPo2,        Series::CellA,
    Series::CellB,  Series::CellC,     Series::Setpoint, Series::CO2};
constexpr int kFirstThermistor = 25;
constexpr int kLastThermistor = 32;

std::optional<Series> curveOf(int column) {
    if (column >= kFirstThermistor && column <= kLastThermistor) {
        return static_cast<Series>(static_cast<int>(Series::Tpm1) + column - kFirstThermistor);
    }
    const auto place = static_cast<size_t>(column - kDepthColumn);
    return place < kCurves.size() ? kCurves[place] : std::nullopt; // column 0 is beyond the last
}

} // namespace

QList<Series> curvesOfBox(int check, int index) {
    QList<Series> curves;
    for (const SeriesSource& source : seriesOfBox(check, index)) {
        if (const std::optional<Series> curve = curveOf(source.column)) {
            curves.append(*curve);
        }
    }
    return curves;
}

platform::SeriesStyle curveStyle(int column, look::Theme theme, bool ownOxygenScale) {
    const std::optional<Series> series = curveOf(column);
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
