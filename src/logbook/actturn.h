#pragma once

#include "logbook/actfile.h"
#include "logbook/acts.h"

namespace benthor::logbook {

/// Turns what acts did round, item by item, in the caller's transaction. Each call throws DoesNotFit where
/// the store is another one by now, and then leaves the transaction to be rolled back.
class ActTurn {
public:
    ActTurn(platform::Database& database, const platform::ProgramFolder& folder, ActFile& file,
            TurnedAct& told)
        : database_(database)
        , folder_(folder)
        , file_(file)
        , told_(told) {}

    /// All of an act; the counter of dives is put right behind it.
    void turn(const Act& act, bool undo);
    /// A dive that is away comes back.
    void bring(ActItem& item);

    /// Names of dives whose files in `new` go, as with every delete.
    const QStringList& filesToTake() const { return filesToTake_; }

private:
    void turn(ActItem& item, ActKind kind);
    void takeAway(ActItem& item, ActKind kind);
    void turnEdit(ActItem& item);
    void turnEntry(ActItem& item);
    void bringOwedProfile(const TableRows& rows);
    bool isNamedByADive(const QByteArray& table, const platform::StoredValue& value);

    platform::Database& database_;
    const platform::ProgramFolder& folder_;
    ActFile& file_;
    TurnedAct& told_;
    QStringList filesToTake_;
};

/// Puts files that are owed to the folder `new` there, each under its name or, where that is taken, one with
/// a number.
void bringOwedFiles(platform::Database& database, const platform::ProgramFolder& folder, ActFile& file,
                    TurnedAct& told);

} // namespace benthor::logbook
