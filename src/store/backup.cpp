#include "store/backup.h"

#include "platform/database.h"
#include "platform/faultpoint.h"
#include "platform/skiperrors.h"
#include "store/jet/jetconvert.h"
#include "store/keptstores.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace benthor::store {

namespace {

using platform::FileResult;
using platform::ProgramFolder;
using platform::skipErrors;
using platform::StoreError;
using platform::StoreVerdict;

QString storename() {
    return QStringLiteral("rb.mdb");
}

QString packedname() {
    return QStringLiteral("rb2.mdb");
}

/// The backup to be, until it takes the place of the newest.
QString draftname() {
    return QStringLiteral("backup-new.mdb");
}

/// The newest backup of before, from the moment at which another takes its place until those behind it have
/// moved on.
QString movingname() {
    return QStringLiteral("backup-moving.mdb");
}

/// Gives a backup the next older place. False where that failed and a later start may do better.
bool moveOn(const ProgramFolder& folder, const QString& name, int place) {
    const QString to = folder.path(backupname(place));
    return platform::moveFile(folder.path(name), to).ok() || QFileInfo(to).isDir();
}

bool hasBackup(const ProgramFolder& folder, int number) {
    return QFileInfo(folder.path(backupname(number))).isFile();
}

/// Moves the older backups on, the oldest first, and the newest of before behind the new one. A backup in
/// front of which one is missing is copied: it leaves its own place as it is. A move that fails ends this, so
/// that none is written over; the next start goes on.
void rotate(const ProgramFolder& folder, bool hadNewest) {
    for (int number = kBackups - 1; number >= 2; --number) {
        if (!hasBackup(folder, number)) {
            continue;
        }
        const bool followed = number == 2 ? hadNewest : hasBackup(folder, number - 1);
        if (!followed) {
            const QString backup = folder.path(backupname(number));
            platform::copyFileLike(backup, backup, folder.path(backupname(number + 1)));
        } else if (!moveOn(folder, backupname(number), number + 1)) {
            return;
        }
    }
    if (hadNewest) {
        moveOn(folder, movingname(), 2);
    }
}

/// Ends what a start did not: up to the first free place each backup moves on, for behind that all have.
/// Failures are passed over here, or one bad place would end all backups.
void endRotation(const ProgramFolder& folder) {
    const QString moving = folder.path(movingname());
    if (!QFile::exists(moving)) {
        return;
    }
    if (platform::sameContents(moving, folder.path(backupname(1)))) {
        QFile::remove(moving); // nothing has taken its place yet
        return;
    }
    int place = 2;
    while (place < kBackups && hasBackup(folder, place)) {
        ++place;
    }
    for (int number = place - 1; number >= 2; --number) {
        static_cast<void>(moveOn(folder, backupname(number), number + 1));
    }
    static_cast<void>(moveOn(folder, movingname(), 2));
}

/// Puts the draft in the place of the newest backup. What fails behind the change of place does not count.
bool takePlace(const ProgramFolder& folder) {
    const QString draft = folder.path(draftname());
    return platform::moveFile(draft, folder.path(backupname(1))).ok() || !QFile::exists(draft);
}

void removePacked(const ProgramFolder& folder) {
    const QString packed = folder.path(packedname());
    platform::removeJournals(packed);
    QFile::remove(packed);
}

QStringList storetables() {
    return {QStringLiteral("main"), QStringLiteral("gas"), QStringLiteral("tissue"),
            QStringLiteral("serialno"), QStringLiteral("Display")};
}

enum class Packed { Done, Failed, Held, Stopped };

bool goesOn(const MaintenanceWatch& watch) {
    return !watch.goOn || watch.goOn();
}

void tell(const MaintenanceWatch& watch, MaintenanceStep step) {
    if (watch.step) {
        watch.step(step);
    }
}

/// Copies the packed store to the backup to be; what the disk gives back of it must be the same. Whether that
/// went well.
bool draftBackup(const ProgramFolder& folder, const MaintenanceWatch& watch) {
    const QString packed = folder.path(packedname());
    const auto differs = [&](const QString& draft) {
        const bool same =
            platform::faultAt("compare") == 0 && platform::sameContents(packed, draft, watch.goOn);
        return same ? QString() : QStringLiteral("The copy %1 is not what was copied.").arg(draft);
    };
    return platform::copyFileLike(packed, packed, folder.path(draftname()), platform::FolderSync::Now,
                                  differs, watch.goOn)
        .ok();
}

/// Writes the packed store beside the store, proves it and makes the backup to be of it.
Packed packBeside(const ProgramFolder& folder, const MaintenanceWatch& watch, platform::WhenHeld whenHeld,
                  StoreDrafts& drafts) {
    const QString packed = folder.path(packedname());
    bool held = false;
    tell(watch, MaintenanceStep::Packing);
    const bool packedWell = skipErrors([&] {
        try {
            drafts.store = platform::compactDatabase(folder.path(storename()), packed, whenHeld);
        } catch (const StoreError& error) {
            held = error.busy();
            throw;
        }
    });
    if (!packedWell) {
        return !goesOn(watch) ? Packed::Stopped : held ? Packed::Held : Packed::Failed;
    }
    tell(watch, MaintenanceStep::Checking);
    const bool sound = platform::examineDatabaseTogether(packed, storetables(), watch.goOn, [&] {
                           drafts.backup = draftBackup(folder, watch);
                       }).sound();
    if (!goesOn(watch)) {
        return Packed::Stopped;
    }
    drafts.made = sound;
    return sound ? Packed::Done : Packed::Failed;
}

platform::StoreMark marknow(const ProgramFolder& folder) {
    platform::StoreMark now;
    skipErrors([&] { now = platform::markOf(folder.path(storename())); });
    return now;
}

/// Puts a packed copy in the store's place, and its twin beside it as the backup to be. Where packing does
/// not work, or another program holds the store or has changed it meanwhile, it stays as it was.
Packed pack(const ProgramFolder& folder, const MaintenanceWatch& watch, StoreDrafts& drafts) {
    const QString store = folder.path(storename());
    if (!platform::whyReadOnly(store).isEmpty()) {
        return Packed::Failed;
    }
    Packed result = Packed::Done;
    if (!drafts.made) {
        removePacked(folder);
        result = packBeside(folder, watch, platform::WhenHeld::Wait, drafts);
        if (result == Packed::Done && !drafts.store.tellsTheSameChanges(marknow(folder))) {
            result = Packed::Held;
        }
    }
    if (result == Packed::Done) {
        platform::removeJournals(store);
        if (!platform::moveFile(folder.path(packedname()), store)) {
            result = Packed::Failed;
        }
    }
    removePacked(folder);
    if (result != Packed::Done) {
        drafts = {};
        QFile::remove(folder.path(draftname()));
    }
    return result;
}

/// What the engine keeps beside the store goes with it. A link stays: a restored store goes where it leads.
Maintenance setAside(const ProgramFolder& folder, const QString& reason) {
    const QString name = freename(folder, QStringLiteral("rb-damaged"));
    const QString store = platform::followLinks(folder.path(storename()));
    const QString kept = folder.path(name);
    const bool here = store == folder.path(storename());
    for (const QString& suffix : platform::journalSuffixes()) {
        platform::copyFileLike(store, store + suffix, kept + suffix);
    }
    const bool moved = here ? platform::moveFile(store, kept).ok()
                            : platform::copyFileLike(store, store, kept) && platform::removeFile(store);
    if (!moved) {
        return {};
    }
    platform::removeJournals(store);
    return {name, reason};
}

QString faultOf(const QString& path) {
    const StoreVerdict verdict = examinestore(path);
    return verdict.sound() ? QString() : QStringLiteral("%1: %2").arg(path, verdict.reason);
}

/// Gives the newest backup its second name, under which it waits until those behind it have moved on. What is
/// no file of its own, or lies where names are single, is copied.
bool keepNewest(const ProgramFolder& folder) {
    const QString newest = folder.path(backupname(1));
    const QString moving = folder.path(movingname());
    if (!QFileInfo(newest).isSymLink() && !QFileInfo::exists(moving) && platform::linkFile(newest, moving)) {
        return true;
    }
    return platform::copyFileLike(newest, newest, moving).ok();
}

/// Makes the backup to be the newest one and moves the others on. No other moves before the new one stands,
/// and at every moment backup.mdb is a whole store. `drafted`: the backup to be is there.
void backUp(const ProgramFolder& folder, bool drafted) {
    endRotation(folder);
    const bool hadNewest = hasBackup(folder, 1);
    if (!drafted || (hadNewest && !keepNewest(folder)) || !takePlace(folder)) {
        QFile::remove(folder.path(draftname()));
        QFile::remove(folder.path(movingname()));
        return;
    }
    rotate(folder, hadNewest);
}

} // namespace

platform::FileResult provencopy(const ProgramFolder& folder, const QString& name) {
    const QString store = folder.path(storename());
    return platform::copyFileLike(store, store, folder.path(name), platform::FolderSync::Now, faultOf);
}

QString backupname(int number) {
    return number == 1 ? QStringLiteral("backup.mdb") : QStringLiteral("backup%1.mdb").arg(number);
}

StoreVerdict examinestore(const QString& path) {
    return platform::examineDatabase(path, storetables());
}

void requireDiveStore(const QString& path) {
    const StoreVerdict verdict = platform::examineDatabase(
        path, {QStringLiteral("main"), QStringLiteral("gas"), QStringLiteral("tissue")});
    if (!verdict.sound()) {
        throw StoreError(verdict.reason);
    }
}

StoreDrafts draftstore(const ProgramFolder& folder, const MaintenanceWatch& watch) {
    const QString store = folder.path(storename());
    const auto isThere = [&folder](const QString& name) { return QFileInfo::exists(folder.path(name)); };
    const QStringList journals = platform::journalSuffixes();
    const bool isSettled = std::none_of(journals.begin(), journals.end(),
                                        [&](const QString& suffix) { return isThere(storename() + suffix); });
    if (!isThere(storename()) || !isSettled || isThere(packedname()) || isThere(draftname()) ||
        isjetfile(store) || !platform::whyReadOnly(store).isEmpty()) {
        return {};
    }
    StoreDrafts drafts;
    if (packBeside(folder, watch, platform::WhenHeld::Fail, drafts) != Packed::Done) {
        removedrafts(folder);
        return {};
    }
    return drafts;
}

void removedrafts(const ProgramFolder& folder) {
    removePacked(folder);
    QFile::remove(folder.path(draftname()));
}

Maintenance maintainstore(const ProgramFolder& folder, const MaintenanceWatch& watch, StoreDrafts drafts) {
    if (drafts.made && (!drafts.store.isKnown() || marknow(folder) != drafts.store)) {
        removedrafts(folder);
        drafts = {};
    }
    const QString store = folder.path(storename());
    if (!folder.listFiles(QString(), storename()).contains(storename())) {
        return {};
    }
    if (isjetfile(store)) { // an older store that could not come along stays as it is
        return {};
    }
    const Packed packed = pack(folder, watch, drafts);
    if (packed == Packed::Held || packed == Packed::Stopped) {
        return {};
    }
    if (packed == Packed::Failed) {
        const StoreVerdict verdict = examinestore(store);
        if (verdict.state == StoreVerdict::State::Damaged) {
            return setAside(folder, verdict.reason);
        }
        if (!verdict.sound()) {
            return {};
        }
        drafts.backup = platform::copyFileLike(store, store, folder.path(draftname()),
                                               platform::FolderSync::Now, faultOf, watch.goOn)
                            .ok();
    }
    backUp(folder, drafts.backup);
    return {};
}

FileResult restorebackup(const ProgramFolder& folder, int number) {
    platform::removeJournals(folder.path(storename()));
    const QString backup = folder.path(backupname(number));
    return platform::copyFileLike(backup, backup, folder.path(storename()));
}

QString notrestored(const QString& chosen, const QString& reason) {
    return QStringLiteral("The file %1 was not restored; the store is as it was.\n\n%2")
        .arg(QDir::toNativeSeparators(chosen), reason);
}

Restore restorestore(const ProgramFolder& folder, const QString& chosen) {
    if (!chosen.endsWith(QLatin1String("mdb"))) {
        return {};
    }
    const auto refused = [&chosen](const QString& reason) {
        return Restore{false, {}, notrestored(chosen, reason)};
    };
    const StoreVerdict verdict = examinestore(chosen);
    if (!verdict.sound()) {
        return refused(QStringLiteral("It is no sound dive store: %1").arg(verdict.reason));
    }
    for (const QString& suffix : platform::journalSuffixes()) {
        if (QFileInfo(chosen + suffix).size() > 0) {
            return refused(QStringLiteral("Another program has not finished its work on it."));
        }
    }
    const QString store = folder.path(storename());
    Restore result;
    if (const FileResult kept = keepreplaced(folder, result.keptAs); !kept) {
        return refused(kept.error);
    }
    platform::removeJournals(store);
    const FileResult copied =
        platform::copyFileLike(store, chosen, store, platform::FolderSync::Now, faultOf);
    // What fails behind the change of place does not take it back.
    if (!copied && !platform::sameContents(chosen, store)) {
        return refused(copied.error);
    }
    result.done = true;
    return result;
}

void compactbyhand() {
    const QString folder = QStringLiteral("c:\\benthor\\");
    platform::compactDatabase(folder + QStringLiteral("RB.mdb"), folder + QStringLiteral("RB2.mdb"));
    platform::removeFile(folder + QStringLiteral("rb.mdb"));
    platform::moveFile(folder + QStringLiteral("rB2.mdb"), folder + QStringLiteral("rb2.mdb"));
}

} // namespace benthor::store
