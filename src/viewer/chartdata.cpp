#include "viewer/chartdata.h"

#include <algorithm>
#include <optional>

namespace benthor::viewer {

namespace {

using P = profile::DiveProfile;

constexpr int kCo2Box = 14;
constexpr int kAmbientBox = 13;
constexpr int kStickBox = 15;

template <profile::SampleArray P::*array> const profile::SampleArray& of(const P& profile) {
    return profile.*array;
}

template <std::array<profile::SampleArray, 9> P::*stick, size_t channel>
const profile::SampleArray& stickOf(const P& profile) {
    return (profile.*stick)[channel];
}

void writeSeries(ChartMatrix& matrix, const profile::SampleArray& array, int column) {
    for (int row = 1; row <= matrix.lastRow(); ++row) {
        matrix.set(row, column, static_cast<double>(array[row - 1]));
    }
}

void writeAmbientCo2(ChartMatrix& matrix, const profile::DiveProfile& profile, int column) {
    for (int row = 1; row <= matrix.lastRow(); ++row) {
        const double bar = static_cast<double>(profile.depthpos[row - 1]) * 0.1 + 1.01;
        matrix.set(row, column, static_cast<double>(profile.co2[row - 1]) * bar);
    }
}

using U = SeriesUnit;

} // namespace

constexpr std::array<SeriesSource, kSeriesSources> kSeriesTable = {{
    {1, 0, "Depth", 1, U::Depth, of<&P::depthneg>},
    {2, 0, "GAS num", 2, U::None, of<&P::gasnum>},
    {3, 0, "PO2", 3, U::Bar, of<&P::po2>},
    {11, 0, "Ceiling", 4, U::Depth, of<&P::ceilingneg>},
    {5, 0, "Temperature", 5, U::Temperature, of<&P::temp>},
    {12, 0, "Filter", 7, U::PerCent, of<&P::filterpct>},
    {7, 0, "Battery", 8, U::Volt, of<&P::bat1>},
    {7, 0, "Battery", 9, U::Volt, of<&P::bat2>},
    {8, 0, "High pressure", 10, U::Pressure, of<&P::hpdil>},
    {8, 0, "High pressure", 11, U::Pressure, of<&P::hpo2>},
    {9, 0, "PO2 cells", 12, U::Bar, of<&P::cella>},
    {9, 0, "PO2 cells", 13, U::Bar, of<&P::cellb>},
    {9, 0, "PO2 cells", 14, U::Bar, of<&P::cellc>},
    {10, 0, "Setpoint", 15, U::Bar, of<&P::setpoint>},
    {14, 0, "CO2", 16, U::Millibar, of<&P::co2>},
    {6, 0, "TPM", 25, U::None, of<&P::tpm1>},
    {6, 0, "TPM", 26, U::None, of<&P::tpm2>},
    {6, 0, "TPM", 27, U::None, of<&P::tpm3>},
    {6, 0, "TPM", 28, U::None, of<&P::tpm4>},
    {6, 0, "TPM", 29, U::None, of<&P::tpm5>},
    {6, 0, "TPM", 30, U::None, of<&P::tpm6>},
    {6, 0, "TPM", 31, U::None, of<&P::tpm7>},
    {6, 0, "TPM", 32, U::None, of<&P::tpm8>},
    {15, 0, "TPM 0", 25, U::None, stickOf<&P::tpmstick0, 1>},
    {15, 0, "TPM 0", 26, U::None, stickOf<&P::tpmstick0, 2>},
    {15, 0, "TPM 0", 27, U::None, stickOf<&P::tpmstick0, 3>},
    {15, 0, "TPM 0", 28, U::None, stickOf<&P::tpmstick0, 4>},
    {15, 0, "TPM 0", 29, U::None, stickOf<&P::tpmstick0, 5>},
    {15, 0, "TPM 0", 30, U::None, stickOf<&P::tpmstick0, 6>},
    {15, 0, "TPM 0", 31, U::None, stickOf<&P::tpmstick0, 7>},
    {15, 0, "TPM 0", 32, U::None, stickOf<&P::tpmstick0, 8>},
    {15, 1, "TPM 1", 25, U::None, stickOf<&P::tpmstick1, 1>},
    {15, 1, "TPM 1", 26, U::None, stickOf<&P::tpmstick1, 2>},
    {15, 1, "TPM 1", 27, U::None, stickOf<&P::tpmstick1, 3>},
    {15, 1, "TPM 1", 28, U::None, stickOf<&P::tpmstick1, 4>},
    {15, 1, "TPM 1", 29, U::None, stickOf<&P::tpmstick1, 5>},
    {15, 1, "TPM 1", 30, U::None, stickOf<&P::tpmstick1, 6>},
    {15, 1, "TPM 1", 31, U::None, stickOf<&P::tpmstick1, 7>},
    {15, 1, "TPM 1", 32, U::None, stickOf<&P::tpmstick1, 8>},
    {15, 2, "TPM 2", 25, U::None, stickOf<&P::tpmstick2, 1>},
    {15, 2, "TPM 2", 26, U::None, stickOf<&P::tpmstick2, 2>},
    {15, 2, "TPM 2", 27, U::None, stickOf<&P::tpmstick2, 3>},
    {15, 2, "TPM 2", 28, U::None, stickOf<&P::tpmstick2, 4>},
    {15, 2, "TPM 2", 29, U::None, stickOf<&P::tpmstick2, 5>},
    {15, 2, "TPM 2", 30, U::None, stickOf<&P::tpmstick2, 6>},
    {15, 2, "TPM 2", 31, U::None, stickOf<&P::tpmstick2, 7>},
    {15, 2, "TPM 2", 32, U::None, stickOf<&P::tpmstick2, 8>},
}};

static_assert(kSeriesTable.back().column != 0, "the table is shorter than kSeriesSources");

ChartMatrix chartMatrix(const profile::DiveProfile& profile, int lastsample, const SeriesBoxes& boxes) {
    ChartMatrix matrix(std::clamp(lastsample, 0, profile::kMostSamples));
    for (const SeriesSource& series : kSeriesTable) {
        if (!isChecked(boxes, series)) {
            continue;
        }
        if (series.check == kCo2Box && boxes.check.test(kAmbientBox)) {
            writeAmbientCo2(matrix, profile, series.column);
        } else {
            writeSeries(matrix, series.array(profile), series.column);
        }
    }
    return matrix;
}

ChartMatrix zoomedMatrix(const ChartMatrix& matrix, int lastsample, const ZoomState& zoom) {
    constexpr int kLastColumn = 39; // column 40 is not carried into the zoomed view
    const int rows = viewRows(lastsample, kZoomedFactor);
    const int offset = viewOffset(lastsample, zoom);
    const int last = std::min(rows, matrix.lastRow() - offset);
    ChartMatrix zoomed(rows);
    for (int column = 1; column <= kLastColumn; ++column) {
        if (!matrix.hasSeries(column)) {
            continue;
        }
        for (int row = 1; row <= last; ++row) {
            zoomed.set(row, column, matrix.at(row + offset, column));
        }
    }
    return zoomed;
}

bool isChecked(const SeriesBoxes& boxes, const SeriesSource& series) {
    return series.check == kStickBox ? boxes.check15.test(static_cast<size_t>(series.index))
                                     : boxes.check.test(static_cast<size_t>(series.check));
}

std::vector<SeriesSource> seriesOfBox(int check, int index) {
    std::vector<SeriesSource> series;
    std::ranges::copy_if(kSeriesTable, std::back_inserter(series), [=](const SeriesSource& source) {
        return source.check == check && source.index == index;
    });
    return series;
}

QString seriesUnit(const SeriesSource& source, bool feet) {
    switch (source.unit) {
    case SeriesUnit::Depth:
        return feet ? QStringLiteral("ft") : QStringLiteral("m");
    case SeriesUnit::Bar:
        return QStringLiteral("bar");
    case SeriesUnit::Temperature:
        return feet ? QStringLiteral("F") : QStringLiteral("C");
    case SeriesUnit::Volt:
        return QStringLiteral("V");
    case SeriesUnit::Pressure:
        return feet ? QStringLiteral("psi") : QStringLiteral("bar");
    case SeriesUnit::PerCent:
        return QStringLiteral("%");
    case SeriesUnit::Millibar:
        return QStringLiteral("mB");
    case SeriesUnit::None:
        break;
    }
    return {};
}

bool isOxygen(int column) {
    return column == 3 || (column >= 12 && column <= 15);
}

QString leftAxisUnit(const SeriesBoxes& boxes, bool feet, bool ownOxygenScale) {
    std::optional<QString> common;
    for (const SeriesSource& source : kSeriesTable) {
        const bool elsewhere = source.column == kDepthColumn || source.column == kCeilingColumn ||
                               (ownOxygenScale && isOxygen(source.column));
        if (!isChecked(boxes, source) || elsewhere) {
            continue;
        }
        const QString unit = seriesUnit(source, feet);
        if (common && *common != unit) {
            return {};
        }
        common = unit;
    }
    return common.value_or(QString());
}

void setCheck15(SeriesBoxes& boxes, int index, bool checked) {
    boxes.check15.set(static_cast<size_t>(index), checked);
    if (checked && index > 0) {
        boxes.check15.reset(static_cast<size_t>(3 - index));
    }
}

} // namespace benthor::viewer
