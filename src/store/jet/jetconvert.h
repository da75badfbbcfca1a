#pragma once

#include "store/jet/jetrows.h"

#include <functional>

namespace benthor::store {

/// What came over.
struct JetCounts {
    struct Further {
        QString table;
        std::uint64_t rows = 0;
    };
    std::uint64_t dives = 0;
    std::uint64_t gases = 0;
    std::uint64_t tissues = 0;
    std::uint64_t buddies = 0;    ///< of the dives: rows of the table buddylist
    std::vector<Further> further; ///< every other table, in the file's order
    QStringList elsewhere;        ///< tables that lie in another file, and did not come
};

/// How many of the rows have come over. Called again and again, also while nothing comes. False stops it.
using JetProgress = std::function<bool(std::uint64_t rows, std::uint64_t of)>;

/// Whether the file is a Jet database, by its head and not by its name.
bool isjetfile(const QString& path);

/// Writes all rows into a new store at `target`, where no file may be, in one transaction, and proves it: it
/// is read from end to end, and every table has as many rows as the Jet file's own pages say. Any fault is a
/// StoreError, a stop is JetStopped; `target` is then not there. The file is not yet on the disk: moveFile()
/// puts it there.
JetCounts convertjet(JetRowSource& source, const QString& target, const JetProgress& progress = {});

/// The words that tell the user what came over.
QString jetcountstext(const JetCounts& counts);

} // namespace benthor::store
