#pragma once

#include <QString>

namespace benthor::store {

// The two settings that the store itself keeps. All work on the process's open store, in a recordset of their
// own: whoever holds rows in the shared one keeps them. A missing row is a StoreError.

/// Field display of the first row of the table Display: "Feet" or "metre"; Null reads as "".
QString readunit();
/// Writes the unit word into the first row of the table Display.
void writeunit(const QString& word);

/// Writes "Open" or "Close": whether the guide comes up at the start.
void writegetstarted(const QString& word);

} // namespace benthor::store
