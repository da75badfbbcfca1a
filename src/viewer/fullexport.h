#pragma once

#include "viewer/diveprofile.h"
#include "viewer/gaslist.h"

#include <QByteArray>
#include <QDateTime>

namespace benthor::viewer {

/// A dive for the exports of its whole profile. Profile and gases are metric, whatever the screen shows.
struct FullDive {
    const DiveProfile& profile;
    const GasArrays& gases;
    int lastsample = 0;  ///< the last record; the first is sample 4
    QString diveid;      ///< "D" and digits
    double interval = 0; ///< seconds between samples
    QDateTime start, finish;
};

/// Every sample and every column that holds data, one line each behind a header line; lines end in CR LF, and
/// fields are quoted where they must be (RFC 4180). The time is that of the data grid.
QByteArray fullCsv(const FullDive& dive);

/// The dive in the segments of the DAN DL7 exchange format, as that was published in 2006: depth in metres of
/// sea water, PO2 in ATA, pressures in bar, temperatures in degrees C, minutes from the first record.
///
/// A sample with a setpoint is breathed at constant PO2 (gas codes 13, 8, 15 by the diluent's base), one
/// without from an open circuit (1, 2, 6). An ascent of more than 10 m a minute is flagged.
QByteArray fullZxu(const FullDive& dive);

/// A field as RFC 4180 wants it: in quotes where it holds a comma, a quote or a line end.
QByteArray csvQuoted(const QString& field);

/// Minutes with a decimal point, at most six characters.
QString danMinutes(double minutes);

/// The gas of a sample by DL7's table. `po2mode`: at a constant PO2.
QString danGas(const GasArrays& gases, int gas, bool po2mode);

/// The dive's number as an integer of at most four digits, its last ones.
QString danNumber(const QString& diveid);

} // namespace benthor::viewer
