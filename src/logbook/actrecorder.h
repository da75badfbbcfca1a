#pragma once

#include "platform/database.h"
#include "platform/programfolder.h"

#include <QString>
#include <QStringList>
#include <QStringView>

#include <functional>
#include <memory>

namespace benthor::logbook {

// What was done to the logbook is kept in a file of its own beside the store, "rb-acts.db", so that it can be
// taken back. Store and file change in one transaction: a crash leaves both or neither. The file is attached
// to the store's handle for the time of one act alone, so nothing else ever waits for it or fails with it.

/// What an act was, for the words of the menu and for the trash.
enum class ActKind {
    Delete,  ///< dives went; they are in the trash as long as the act is done
    Details, ///< details of a dive were saved
    Merge,   ///< dives, list entries and details came from another logbook
};

/// Keeps one act while it is done. Its calls are made within the transaction that changes the store; each of
/// them throws ActError where the file fails, and nobody but recordact() catches that.
class ActRecorder {
public:
    virtual ~ActRecorder() = default;

    /// Before the rows of a dive are deleted: copies its rows of main, gas, tissue and buddylist, what the
    /// store knows of its owed profile, and the file of its name that waits in the folder `new`. A dive
    /// without a row in main is passed over. All rows of that identifier count as the dive's.
    virtual void diveGoes(const QString& diveid, const platform::ProgramFolder& folder) = 0;

    /// Before the row in main or the buddies of a dive that is there are changed. One call for each dive and
    /// act; later calls for the same dive are passed over. Whether anything changed is seen at the end.
    virtual void diveChanges(const QString& diveid) = 0;

    /// Behind the last row of a dive that was added under a new identifier: notes what stands there. Undo
    /// takes the rows of main, gas, tissue and buddylist away, redo brings them again. The dive's files are
    /// no part of it.
    virtual void diveCame(const QString& diveid) = 0;

    /// Behind the adding of `value` to a pick list: "department", "site", "weather" or "buddy". Undo takes it
    /// out unless a dive of the store names it by then.
    virtual void entryCame(QStringView table, const QString& value) = 0;
};

/// How the keeping of an act went.
struct ActRecord {
    bool kept = false;          ///< it can be taken back; false as well where the store is the same as before
    QString fault;              ///< why it cannot be taken back; empty where it can, or where nothing changed
    platform::StoreSpan span{}; ///< of the store, around all that was done
};

/// Does `work` in one transaction of the store `database` and keeps what it did as one act: the act that undo
/// takes back next, and nothing can be redone any more. An act that changed nothing is none.
///
/// `work` makes its changes between its begin and its return; transactions of its own join this one. It may
/// throw whatever it likes: the transaction is rolled back, nothing is kept, and the exception passes.
/// Where the file of the acts fails (missing rights, a full disk, a damage, a later version), all is rolled
/// back and `work` is run ONCE MORE, with a recorder that keeps nothing, so that what was asked for is done
/// as if there were no such file: `work` must bear that. The store must have no transaction open. StoreError
/// where the store itself fails; nothing has changed then.
///
///     const ActRecord record = recordact(store, ActKind::Merge, [&](ActRecorder& act) {
///         act.diveChanges(mine);              // then change its row
///         ...                                 // add the rows of a dive under the identifier `fresh`
///         act.diveCame(fresh);
///         ...                                 // add "Reef" to the table site
///         act.entryCame(u"site", "Reef");
///         store::syncserialno(store);
///     });
ActRecord recordact(platform::Database& database, ActKind kind,
                    const std::function<void(ActRecorder& act)>& work);

/// The same in several transactions, each kept or not by itself, as one act together: for deletes, of which
/// each dive is one transaction. Once the file has failed the rest is not kept; the steps are done all the
/// same.
class SteppedAct {
public:
    SteppedAct(platform::Database& database, ActKind kind);
    ~SteppedAct();
    SteppedAct(const SteppedAct&) = delete;
    SteppedAct& operator=(const SteppedAct&) = delete;

    /// One transaction. As recordact().
    void step(const std::function<void(ActRecorder& act)>& work);
    ActRecord record() const;

private:
    class State;
    std::unique_ptr<State> state_;
};

/// The path of the file that belongs to an open store.
QString actsPath(const platform::Database& database);

} // namespace benthor::logbook
