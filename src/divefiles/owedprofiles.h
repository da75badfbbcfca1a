#pragma once

#include "platform/database.h"
#include "platform/programfolder.h"

#include <QString>

#include <optional>
#include <vector>

namespace benthor::divefiles {

/// A profile whose copy into dbtxt failed. Its dive is stored and its file kept in `old`; the store remembers
/// in a table of its own ("owedprofile") which bytes are meant, so that no other file of that name is taken
/// for it, and the note stands or falls with the dive's rows.
struct OwedProfile {
    QString dbtxtname; ///< the name that the dive's row gives
    QString oldname;   ///< the name that the file had in `old`; another that came later may have it now
    qint64 size = 0;
    QString sha256; ///< of all its bytes, hexadecimal
    bool operator==(const OwedProfile&) const = default;
};

/// Of the file in `old`; nothing when it cannot be read.
std::optional<OwedProfile> owedprofile(const platform::ProgramFolder& folder, const QString& dbtxtname,
                                       const QString& oldname);

/// Writes it into the store, in the caller's transaction. StoreError.
void noteowed(platform::Database& database, const OwedProfile& owed);

/// All that the store knows of; none in a store that never had any. StoreError.
std::vector<OwedProfile> owedprofiles(platform::Database& database);

/// Whether the file holds those bytes.
bool isowed(const OwedProfile& owed, const QString& path);

/// Where the profile of that name can be read: in dbtxt, where it is put now if it was owed, or in `old`
/// where that fails once more. The path in dbtxt, too, where it is neither here nor there.
QString profilepath(const platform::ProgramFolder& folder, platform::Database& database,
                    const QString& dbtxtname);

/// The same without putting anything anywhere: for whoever only reads.
QString findprofile(const platform::ProgramFolder& folder, platform::Database& database,
                    const QString& dbtxtname);

/// Puts every owed profile into its place, and forgets those that no dive names any more. StoreError.
void bringowedprofiles(const platform::ProgramFolder& folder, platform::Database& database);

} // namespace benthor::divefiles
