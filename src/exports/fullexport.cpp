#include "exports/fullexport.h"

#include "profile/elapsed.h"
#include "profile/gridcells.h"

#include <algorithm>

namespace benthor::exports {

namespace {

const QByteArray kLineEnd = QByteArrayLiteral("\r\n");
constexpr int kGasColumn = 2;
constexpr int kDepthColumnOfGrid = 1;

/// Heading and unit of a column of the grid that the file gives; nothing for columns without a name.
struct CsvColumn {
    int column;
    const char* heading;
};

constexpr std::array<CsvColumn, 37> kCsvColumns{{
    {1, "Depth (m)"},
    {2, "Gas"},
    {3, "PO2 (bar)"},
    {4, "Ceiling (m)"},
    {5, "Temp (C)"},
    {7, "Filter (%)"},
    {8, "Bat1 (V)"},
    {9, "Bat2 (V)"},
    {10, "HPdil (bar)"},
    {11, "HPo2 (bar)"},
    {12, "Cella (bar)"},
    {13, "Cellb (bar)"},
    {14, "Cellc (bar)"},
    {15, "Setpoint (bar)"},
    {16, "CO2 (mB)"},
    {17, "CO2 adjusted 1"},
    {18, "CO2 adjusted 2"},
    {20, "Mark"},
    {21, "O"},
    {22, "P"},
    {23, "Q"},
    {24, "R"},
    {25, "TPM1"},
    {26, "TPM2"},
    {27, "TPM3"},
    {28, "TPM4"},
    {29, "TPM5"},
    {30, "TPM6"},
    {31, "TPM7"},
    {32, "TPM8"},
    {33, "TPM%a"},
    {34, "TPM%b"},
    {36, "v"},
    {37, "t"},
    {39, "f"},
    {6, "Alarms"},
    {0, "Alarm text"},
}};

bool holdsData(const FullDive& dive, int column) {
    if (column == kDepthColumnOfGrid || column == kGasColumn) {
        return true;
    }
    // The alarm texts go with their count.
    const profile::SampleArray* array = profile::gridArray(dive.profile, column == 0 ? 6 : column);
    for (int sample = profile::kFirstSample; array != nullptr && sample <= dive.lastsample; ++sample) {
        if ((*array)[sample - 1] != 0.0F) {
            return true;
        }
    }
    return false;
}

QString alarmWords(const profile::DiveProfile& profile, int sample) {
    QStringList words = profile.alarmtext(sample).split(QStringLiteral("\r\n"));
    words.removeAll(QString());
    return words.join(QStringLiteral("; "));
}

QString csvCell(const FullDive& dive, const profile::GasNames& names, int sample, int column) {
    return column == 0 ? alarmWords(dive.profile, sample)
                       : profile::cellText(dive.profile, names, dive.interval, sample, column);
}

} // namespace

QByteArray csvQuoted(const QString& field) {
    QByteArray text = field.toUtf8();
    const bool special =
        text.contains(',') || text.contains('"') || text.contains('\r') || text.contains('\n');
    return special ? '"' + text.replace('"', "\"\"") + '"' : text;
}

QByteArray fullCsv(const FullDive& dive) {
    std::vector<CsvColumn> columns;
    std::copy_if(kCsvColumns.begin(), kCsvColumns.end(), std::back_inserter(columns),
                 [&dive](const CsvColumn& column) { return holdsData(dive, column.column); });
    QByteArray text = "Time";
    for (const CsvColumn& column : columns) {
        text += ',' + csvQuoted(QLatin1String(column.heading));
    }
    text += kLineEnd;
    const profile::GasNames names = profile::gasNames(dive.gases);
    for (int sample = profile::kFirstSample; sample <= dive.lastsample; ++sample) {
        text += profile::formatelapsed(sample * dive.interval).toLatin1();
        for (const CsvColumn& column : columns) {
            text += ',' + csvQuoted(csvCell(dive, names, sample, column.column));
        }
        text += kLineEnd;
    }
    return text;
}

} // namespace benthor::exports
