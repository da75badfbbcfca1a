#pragma once

#include "platform/database.h"

#include <QString>

#include <optional>

namespace benthor::store {

/// Which dive a screen shows. An identifier that was freed is given to a later dive, so what the device and
/// the import said of the dive stands beside it; a row that has neither is known by its number, as long as
/// the program runs.
struct DiveIdentity {
    QString diveid; ///< empty: no dive
    platform::Value startcode;
    platform::Value dbtxtname;
    qint64 row = 0;

    bool isEmpty() const { return diveid.isEmpty(); }
    /// Whether the device or the import has said something of the dive, so that it is known in another store,
    /// too.
    bool isKnown() const { return !startcode.text().isEmpty() || !dbtxtname.text().isEmpty(); }
    bool operator==(const DiveIdentity& other) const;
};

/// Of the current row, which is one of the table main.
DiveIdentity identityOf(const platform::Recordset& dive);

/// Of the first dive with that identifier; an empty one when there is none.
DiveIdentity identifydive(platform::Database& database, const QString& diveid);

/// The rows of that identifier with the dive's own as the current one; nothing when the dive is no longer
/// there, though another may have its identifier. Like the two above it reads in a recordset of its own.
std::optional<platform::Recordset> finddive(platform::Database& database, const DiveIdentity& dive);

} // namespace benthor::store
