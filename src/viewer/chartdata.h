#pragma once

#include "platform/chart/chartmatrix.h"
#include "profile/diveprofile.h"
#include "viewer/zoom.h"

#include <QString>
#include <array>
#include <bitset>
#include <vector>

namespace benthor::viewer {

using platform::ChartMatrix;

// These two columns go by the depth axis, all others by the left one.
constexpr int kDepthColumn = 1;
constexpr int kCeilingColumn = 4;

/// Which boxes stand checked.
struct SeriesBoxes {
    std::bitset<16> check;  ///< bit k: Check<k>, k from 1 to 14
    std::bitset<3> check15; ///< bit k: Check15(k)
};

/// What a series is measured in; Depth, Temperature and Pressure go by the unit of the screen.
enum class SeriesUnit { None, Depth, Bar, Temperature, Volt, Pressure, PerCent, Millibar };

/// One series that a box brings into the chart.
struct SeriesSource {
    int check = 0; ///< number of the box, 1 to 15
    int index = 0; ///< of a box in an array
    const char* caption = "";
    int column = 0; ///< of the matrix
    SeriesUnit unit = SeriesUnit::None;
    const profile::SampleArray& (*array)(const profile::DiveProfile& profile) = nullptr;
};

constexpr int kSeriesSources = 47;

/// The series selection table from top to bottom, which the boxes, the chart, its legend and its axes go by.
/// The boxes of the temperature profile meter write the same eight columns, so the last one that is checked
/// wins. Check4 ("Mark") selects nothing.
extern const std::array<SeriesSource, kSeriesSources> kSeriesTable;

/// All samples of the checked series: rows 0 to lastsample, the last grid row, of which row 0 stays empty,
/// and columns 0 to 40. With Check13 ("Pamb") the CO2 of Check14 is that at ambient pressure.
ChartMatrix chartMatrix(const profile::DiveProfile& profile, int lastsample, const SeriesBoxes& boxes);

/// The page of `matrix` that a zoomed view shows: rows 1 to viewRows(), columns 1 to 39. Rows behind the
/// dive's last stay empty.
ChartMatrix zoomedMatrix(const ChartMatrix& matrix, int lastsample, const ZoomState& zoom);

/// The series that a box brings in, in the order of the table; Check4 and Check13 bring none. `index`: of
/// Check15.
std::vector<SeriesSource> seriesOfBox(int check, int index = 0);

/// Whether the column is an oxygen pressure: PO2, a cell or the setpoint. These can have a scale of their
/// own.
bool isOxygen(int column);

/// The unit of all checked series that go by the left axis, that is all but depth and ceiling, and but the
/// oxygen pressures where those have a scale of their own; nothing where their units differ or they have
/// none.
QString leftAxisUnit(const SeriesBoxes& boxes, bool feet, bool ownOxygenScale = false);

/// The unit of a series; empty where it has none.
QString seriesUnit(const SeriesSource& source, bool feet);

/// Whether the boxes bring the series into the chart.
bool isChecked(const SeriesBoxes& boxes, const SeriesSource& source);

/// Checks or unchecks Check15(index). (1) and (2) exclude each other.
void setCheck15(SeriesBoxes& boxes, int index, bool checked);

} // namespace benthor::viewer
