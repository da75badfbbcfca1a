#include "platform/chart/chart.h"
#include "platform/look/series.h"
#include "platform/textformat.h"
#include "viewer/chartdata.h"
#include "viewer/gridcells.h"
#include "viewer/screens/divehead.h"
#include "viewer/screens/gasstripview.h"
#include "viewer/screens/legendstrip.h"
#include "viewer/screens/rbinterface.h"
#include "viewer/screens/seriescolumn.h"
#include "viewer/screens/timelabels.h"
#include "viewer/screens/tipbox.h"
#include "viewer/timeaxis.h"

#include <QAction>
#include <QMap>

namespace benthor::viewer {

using look::Series;

namespace {

constexpr size_t kMostRowLines = 60; ///< more changes of gas than that would hide the chart

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

platform::SeriesStyle styleOf(int column, look::Theme theme, bool ownOxygenScale) {
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

} // namespace

/// Of the record, whatever stands in the box of the head by now.
double rbinterface::recordedInterval() const {
    return platform::leadingNumber(QStringView(header_.txtinterval));
}

void rbinterface::determinexaxis() {
    times_->setTexts(free_ ? freeTimeLabels(head_->interval(), *free_)
                           : viewer::determinexaxis(head_->interval(), lastsample_, zoom_));
}

void rbinterface::plotgraph() {
    determinexaxis();
    clampZoom(zoom_);
    const SeriesBoxes boxes = series_->boxes();
    ChartMatrix dive = chartMatrix(profile_, lastsample_, boxes);
    const bool page = zoom_.zoomed() && !free_;
    if (!MSChart1->title().isEmpty()) {
        endExercise();
    }
    MSChart1->setData(page ? zoomedMatrix(dive, lastsample_, zoom_) : std::move(dive));
    MSChart1->setView(free_);
    const bool ownScale = mnuOwnScale->isChecked();
    MSChart1->setUnits(feet_ ? QStringLiteral("ft") : QStringLiteral("m"),
                       leftAxisUnit(boxes, feet_, ownScale),
                       ownScale ? QStringLiteral("bar") : QString());
    Text8->hide();
    MSChart1->setCurrentRow(0);
    plotgasstrip();
    showLegend();
}

/// Takes away what the exercise of the chart has left on it.
void rbinterface::endExercise() {
    MSChart1->setTitle({});
    for (int series = 1; series < ChartMatrix::columns; ++series) {
        MSChart1->setMarker(series, {});
    }
}

void rbinterface::plotgasstrip() {
    GasStrip strip =
        free_ ? freeGasStrip(gasrownames_, lastsample_, *free_) : gasStrip(gasrownames_, lastsample_, zoom_);
    QList<int> changes;
    if (strip.runs.size() <= kMostRowLines) {
        for (size_t i = 1; i < strip.runs.size(); ++i) {
            changes += strip.runs[i].firstRow;
        }
    }
    MSChart1->setRowLines(changes);
    const double rows = std::max(1, viewRows(lastsample_, zoom_.zoomfactor));
    txtGas->setStrip(std::move(strip), free_.value_or(RowRange{0, rows}));
}

void rbinterface::showLegend() {
    const SeriesBoxes boxes = series_->boxes();
    QMap<int, LegendEntry> entries; // by column: of several boxes that write one, the last is seen
    for (const SeriesSource& source : kSeriesTable) {
        if (!isChecked(boxes, source)) {
            continue;
        }
        const QString heading = gridHeading(source.column);
        entries[source.column] = {heading.isEmpty() ? QLatin1String(source.caption) : heading,
                                  seriesUnit(source, feet_), MSChart1->seriesStyle(source.column)};
    }
    legend_->setEntries(entries.values());
}

/// On a light backdrop the curves are those of the light theme.
look::Theme rbinterface::chartTheme() const {
    return scheme_ == ChartScheme::Theme ? look::theme() : look::Theme::Light;
}

void rbinterface::takeSeriesStyles() {
    for (int column = 1; column < ChartMatrix::columns; ++column) {
        MSChart1->setSeriesStyle(column, styleOf(column, chartTheme(), mnuOwnScale->isChecked()));
    }
}

} // namespace benthor::viewer
