#pragma once

#include "platform/files.h"
#include "platform/programfolder.h"

#include <QString>

namespace benthor::store {

// Stores that another has replaced stay in the program folder, under names of their own.

/// "rb-damaged.mdb", or "rb-damaged2.mdb" and on where that is taken, for the base "rb-damaged".
QString freename(const platform::ProgramFolder& folder, const QString& base);

/// Copies rb.mdb to "rb-replaced.mdb" or the next free name, and says which; nothing without a store. One
/// that another program holds is a failure.
platform::FileResult keepreplaced(const platform::ProgramFolder& folder, QString& keptAs);

} // namespace benthor::store
