#pragma once

#include "profile/gaslist.h"

#include <QByteArray>

namespace benthor::exports {

/// A row of the recordset that an export runs over: its fields by position, no value is Null.
using ExportRow = profile::GasRow;

/// The header line of the comma-separated file, without its line end: 35 headings whatever the rows hold.
QByteArray csvHeader();

/// A row of the file, without its line end. Field 6 is left out; of fields 2 and 3, 7 and 8, 9 and 10, 13 and
/// 14, 15 and 16 the unit picks one. Blanks at both ends go, a comma stands behind each field.
QByteArray csvLine(const ExportRow& row, bool feet);

/// The whole file: header and rows, lines ended by CR LF.
QByteArray csvText(const std::vector<ExportRow>& rows, bool feet);

} // namespace benthor::exports
