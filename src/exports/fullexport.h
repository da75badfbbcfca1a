#pragma once

#include "profile/diveprofile.h"
#include "profile/gaslist.h"

#include <QByteArray>
#include <QDateTime>

namespace benthor::exports {

/// A dive for the exports of its whole profile. Profile and gases are metric, whatever the screen shows.
struct FullDive {
    const profile::DiveProfile& profile;
    const profile::GasArrays& gases;
    int lastsample = 0;  ///< the last record; the first is sample 4
    QString diveid;      ///< "D" and digits
    double interval = 0; ///< seconds between samples
    QDateTime start, finish;
    QDateTime written; ///< the moment of the export
};

/// Every sample and every column that holds data, one line each behind a header line; lines end in CR LF, and
/// fields are quoted where they must be (RFC 4180). The time is that of the data grid.
QByteArray fullCsv(const FullDive& dive);

/// The dive in the segments of the DAN DL7 exchange format, as that was published in 2006: depth in metres of
/// sea water, PO2 in ATA, pressures in bar, temperatures in degrees C, minutes from the first record. Every
/// sample line has fifteen fields.
///
/// A sample with a setpoint is breathed at constant PO2, one without from an open circuit; the gas is told
/// where it or the setpoint changes. An ascent of more than 10 m a minute is flagged. Warnings are numbers of
/// a table in the segment ZAR, "1^LOW~2^LOW^HIGH": each set of words that stands at a sample has one.
QByteArray fullZxu(const FullDive& dive);

/// A field as RFC 4180 wants it: in quotes where it holds a comma, a quote or a line end.
QByteArray csvQuoted(const QString& field);

/// Minutes with a decimal point, at most six characters.
QString danMinutes(double minutes);

/// The gas of a sample by DL7's table; blank for a gas without a row, or whose shares are none.
///
/// On an open circuit 1 for air, 2.mn with the per cent of oxygen, 99 at the most, and with helium 6.mnopqr:
/// mn.o per cent of oxygen, p.qr nitrogen's share of what is not oxygen. At a setpoint (bar, above 0) 13, 8
/// or 15 for a diluent of nitrogen, of both, of helium: m.no the setpoint in ATA, p.qr the same share.
QString danGas(const profile::GasArrays& gases, int gas, double setpoint);

/// The dive's number as an integer of at most four digits, its last ones.
QString danNumber(const QString& diveid);

} // namespace benthor::exports
