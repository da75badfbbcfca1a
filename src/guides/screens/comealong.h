#pragma once

#include "store/olderstore.h"

namespace benthor::guides {

// An older store comes along: what the user sees of it, at each of the doors.

/// A window tells how far it is, and can stop it. The window goes with the function.
store::JetProgress comealongprogress(const QString& file);

/// Does it at the start, and tells how it ended; nothing where there is no older store.
void bringolderstore(QWidget* parent);

/// "It was read without a fault" and what came over.
QString readwithoutfault(const store::JetCounts& counts);

} // namespace benthor::guides
