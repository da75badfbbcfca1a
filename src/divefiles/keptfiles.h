#pragma once

#include "platform/programfolder.h"

#include <QString>

namespace benthor::divefiles {

/// Before a file that waits in `new` is written over or removed without an import: makes sure that its bytes
/// stand in `old`, under its own name or, where another file has that, with a number behind it. Nothing to do
/// when no such file waits. `name` may lead to another folder by its separators; the file is kept under its
/// bare name then.
platform::FileResult keepinold(const platform::ProgramFolder& folder, const QString& name);

} // namespace benthor::divefiles
