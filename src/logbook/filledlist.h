#pragma once

#include "logbook/listeddives.h"
#include "platform/storestamp.h"

#include <QStringList>

#include <vector>

namespace benthor::logbook {

/// The dives of a list that was filled and checked, for the next list of the same store: acts tell which
/// dives they changed, and of a store in which nothing else has changed since, only those are read anew.
struct FilledList {
    ListedDives dives;
    std::vector<bool> sound; ///< by number, its first entry unused: certainly without a fault
    int sortnumber = 0;
    bool downward = false;
    platform::StoreStamp stamp; ///< of the store that it shows but for `changed`; nothing: it shows none
    QStringList changed;        ///< identifiers of dives that have come, gone or changed

    /// An act that changed rows of these dives and of no others. Whatever else happened in the store
    /// meanwhile ends the use of the list.
    void follow(const platform::StoreSpan& act, const QStringList& divesOfAct);

    /// Brings the list up to date in that order, each dive at its place. A dive that comes is not sound.
    /// False where the list does not tell of all dives, or the order is another one: then it is worth
    /// nothing.
    bool takeChanges(platform::Database& database, int wantedSort, bool wantedDownward);
};

} // namespace benthor::logbook
