#pragma once

#include <QString>

namespace benthor::store {

// The two settings that the store itself keeps. Both work on the process's open store through its main
// recordset and throw a StoreError where the row is missing.

/// Field display of the first row of the table Display: "Feet" or "metre"; Null reads as "".
QString readunit();
/// Writes the unit word into the first row of the table Display.
void writeunit(const QString& word);

/// Writes "Open" or "Close": whether the guide comes up at the start.
void writegetstarted(const QString& word);

} // namespace benthor::store
