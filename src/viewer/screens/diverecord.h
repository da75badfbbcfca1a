#pragma once

#include "profile/gaslist.h"
#include "profile/header.h"
#include "store/diveidentity.h"

#include <QByteArray>
#include <optional>

namespace benthor::viewer {

// What the store and the program folder hold of a dive. A store that fails throws.

/// Puts the last dive of the current system in hand where none is.
void adoptLastDive();

/// The row of the table main, read into the shared recordset. `dive` becomes the identity that the row gives.
profile::DiveRow readDiveRow(const QString& diveid, store::DiveIdentity& dive);

/// The unit in force: this run's, otherwise that of the table Display.
QString resolveDisplay();

/// The gas rows of a dive, read into the shared recordset.
std::vector<profile::GasRow> readGasRows(const QString& diveid);

/// The same by a query of their own: what ran in the program since the load has no part in them.
std::vector<profile::GasRow> gasRowsOfDive(const QString& diveid);

/// The bytes of a dive file in the folder dbtxt, or of its copy in `old` where an import owes the one in
/// dbtxt; nothing when it is not found.
std::optional<QByteArray> diveFile(const QString& name);

} // namespace benthor::viewer
