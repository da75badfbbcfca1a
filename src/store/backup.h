#pragma once

#include "platform/files.h"
#include "platform/programfolder.h"
#include "platform/storeaccess.h"
#include "platform/storefile.h"

#include <QString>

#include <functional>

namespace benthor::store {

// The store's backups in the program folder: backup.mdb is the newest, backup9.mdb the oldest. At every
// moment rb.mdb is a whole store (where there was one), and a backup is a finished copy or no copy.

constexpr int kBackups = 9;

/// "backup.mdb", "backup2.mdb", ... "backup9.mdb".
QString backupname(int number);

/// Reads a store and says whether it is a sound one of this program.
platform::StoreVerdict examinestore(const QString& path);

/// Reads a store that another may have made, and fails with the reason where it is damaged or its dives,
/// gases or tissues are no tables. StoreError.
void requireDiveStore(const QString& path);

/// What a start did with the store.
struct Maintenance {
    QString setAside; ///< name of the file that a damaged store is kept as; empty for a sound one
    QString reason;   ///< what is wrong with it
};

/// What a start is busy with.
enum class MaintenanceStep { Packing, Checking };

/// Who watches a start's work on the store, and may stop it. Both are called from threads of that work.
struct MaintenanceWatch {
    platform::StoreGoOn
        goOn; ///< false: it ends where that is safe, and what was not done is left to the next start
    std::function<void(MaintenanceStep step)> step;
};

/// What a start makes beside the store before it changes anything: the store packed and proved, and the
/// backup to be. Nobody uses these files unless maintainstore() puts them in their places.
struct StoreDrafts {
    bool made = false;
    bool backup = false;       ///< the backup to be is there, too
    platform::StoreMark store; ///< what the store was when it was packed
};

/// Makes the drafts ahead, where the store can be packed at once: not where another program holds it, where
/// it may only be read or is an older one, where it is damaged, nor where a crash left files of that kind or
/// a change that is not finished: the store stays as it is to its last byte. No thread of the process may
/// open the file of the store meanwhile.
StoreDrafts draftstore(const platform::ProgramFolder& folder, const MaintenanceWatch& watch = {});

/// Takes away drafts that are not used.
void removedrafts(const platform::ProgramFolder& folder);

/// Packs the store, makes the packed store the newest backup and moves each older one on to the next number.
/// A step that fails is passed over; where no new backup can be made, none moves. A store that is damaged is
/// kept under a name of its own, and rb.mdb is then missing; one that cannot be judged (locked, a failing
/// disk) stays as it is; one that may only be read is not packed. Nothing is done without a store, nor with
/// an older one that could not come along (olderstore.h). Drafts that were made ahead are used, unless
/// somebody has changed the store since. The store must be closed.
Maintenance maintainstore(const platform::ProgramFolder& folder, const MaintenanceWatch& watch = {},
                          StoreDrafts drafts = {});

/// Copies the backup of that number to rb.mdb, for a folder without a store.
platform::FileResult restorebackup(const platform::ProgramFolder& folder, int number = 1);

/// Copies the store, which may be open but has no change under way, to `name` beside it, in the place of what
/// stood there: a copy that was read and found sound, or the file of before.
platform::FileResult provencopy(const platform::ProgramFolder& folder, const QString& name);

/// How putting a chosen file in the store's place ended.
struct Restore {
    bool done = false;
    QString keptAs; ///< name of the file that the store of before is kept as; empty without one
    QString error;  ///< why it was not done, for the user
};

/// Puts the store `chosen` in the place of rb.mdb, and keeps what stood there beside it. A file whose name
/// does not end in "mdb" is passed over without a word; one that is no sound store of this program is
/// refused.
Restore restorestore(const platform::ProgramFolder& folder, const QString& chosen);

/// The words for a file that was not restored.
QString notrestored(const QString& chosen, const QString& reason);

/// Packs the store of a fixed folder of old, where there is one. StoreError where there is none.
void compactbyhand();

} // namespace benthor::store
