#pragma once

#include "platform/database.h"

#include <QString>

#include <array>

namespace benthor::store {

// Each routine writes to the row of the process's `currentdiveid` in the process's store, through a recordset
// of its own that then stands in the shared handle. A missing row and a failing store are a StoreError.

void putinterval(const QString& interval);
void putversion(const QString& version); ///< told, and called by nothing: newdive() writes the version
void putusername(const QString& serial);
/// False when the store refuses the serial as damaged; nothing is written then. Other failures rise.
bool putsuit(const QString& serial);
void putmaxdepth(const QString& depth); ///< blanks taken off and padded
void putotu(const QString& otu);        ///< blanks taken off, as in the next five
void putsystemid(const QString& system);
void putdescend(const QString& descend);
void putdatmos(const QString& datmos);
void putdusage(const QString& dusage);
void putdstack(const QString& dstack);
void putduration(const QString& startcode, const QString& finishcode);
/// The file that the viewer reads, and the name of the dive.
void putfilenames(const QString& dbtxtname, const QString& location);
/// Told, and called by nothing: putfilenames() names the dive.
void putlocation(const QString& location);
/// The code and its date; a date beyond the year 9999 is left out.
void putstart(const QString& startcode);
void putfinish(const QString& finishcode);
/// Four characters, from the second on.
void puthpcylinder(const QString& value);
/// The status has no field: the row is opened and updated without a change.
void putstatus(const QString& status);

/// Number, nitrogen, helium, mode, status.
void addgasrow(const std::array<QString, 5>& fields);
/// Number, nitrogen, helium.
void addtissuerow(const std::array<QString, 3>& fields);

/// Whether the table pfindex holds `name`. Told, and called by nothing: no screen uses that table.
bool checkpfexist(const QString& name);

/// Runs a query; its rows stand in the process's main recordset.
void openmain(platform::Database& database, const platform::Query& query);
/// Runs a "SELECT COUNT(*)" query through the process's count recordset.
int countrows(platform::Database& database, const platform::Query& query);

} // namespace benthor::store
