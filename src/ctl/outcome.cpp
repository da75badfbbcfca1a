#include "ctl/outcome.h"

#include "ctl/interruption.h"

#include <sqlite3.h>

namespace benthor::ctl {

Status statusOf(const platform::StoreError& error) {
    const bool disk = error.code() == SQLITE_FULL || error.code() == SQLITE_IOERR;
    return disk || isInterrupted() ? kFault : kUnusable;
}

} // namespace benthor::ctl
