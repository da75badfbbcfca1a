#pragma once

#include "divefiles/headerscan.h"
#include "platform/database.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace benthor::divefiles {

/// The rows of one dive as the store gives them back: a text for each row, its fields told apart.
struct DiveRows {
    QString diveid;
    QStringList main;
    QStringList gas;
    QStringList tissue;
    bool operator==(const DiveRows&) const = default;
};

/// What an import wrote of one file.
struct WrittenDives {
    int refusedSerials = 0; ///< how many serials the store did not take
    std::vector<DiveRows> dives;
};

/// Writes what the scan found into the process's store, one action after the other, in the caller's
/// transaction, and reads it again there. StoreError, also where rows are missing then.
WrittenDives writerows(const HeaderScan& scan, const QString& stamp, const QString& name);

/// Whether a store, read through a handle of its own, holds what was written. StoreError.
bool readsback(platform::Database& store, const WrittenDives& written);

} // namespace benthor::divefiles
