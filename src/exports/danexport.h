#pragma once

#include "exports/csvexport.h"

#include <QDateTime>

namespace benthor::exports {

/// What the DAN file takes from the screen's boxes, as they stand there.
struct DanHead {
    QString diveid;
    QString interval; ///< whole seconds
    QString start;    ///< the date as the box shows it
};

/// The running values of the sample lines.
struct DanProgress {
    double minutes = 0;       ///< since the first line
    double previousdepth = 0; ///< field 2 of the line before
};

/// The text of a date box read as a date; invalid when it is none.
QDateTime dateOfBox(const QString& text);

/// A sample line, without its line end. False when the row has not the eight fields that a line needs:
/// nothing of it is to be written then. `gases`: the rows of the dive's gases.
bool danSampleLine(const ExportRow& row, const std::vector<ExportRow>& gases, const QString& interval,
                   DanProgress& progress, QByteArray& line);

/// The whole file as far as it comes. Rows with fewer than eight fields, as the dive's gases are, and no rows
/// at all end it behind "ZDP{"; a start that is no date leaves it empty. The closing segment is never
/// reached: it asks for an end date that the screen does not hold.
QByteArray danText(const DanHead& head, const std::vector<ExportRow>& rows,
                   const std::vector<ExportRow>& gases);

} // namespace benthor::exports
