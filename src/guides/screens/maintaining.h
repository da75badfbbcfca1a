#pragma once

#include "store/backup.h"

namespace benthor::guides {

/// Puts the store of `folder` right on a thread of its own, with a window that says so where that lasts, and
/// returns when it is done. The window is painted throughout; it can be stopped, the store and its backups
/// then stay whole, and what was not done is left to the next start.
store::Maintenance maintainbehindwindow(const platform::ProgramFolder& folder);

} // namespace benthor::guides
