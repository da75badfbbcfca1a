#include "store/backup.h"

#include "platform/database.h"
#include "platform/skiperrors.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

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

/// "rb-damaged.mdb", or "rb-damaged2.mdb" and on where that is taken.
QString freename(const ProgramFolder& folder, const QString& base) {
    QString name = base + QStringLiteral(".mdb");
    for (int number = 2; QFile::exists(folder.path(name)); ++number) {
        name = QStringLiteral("%1%2.mdb").arg(base, QString::number(number));
    }
    return name;
}

/// A backup that is not there leaves the one behind it as it is.
void rotate(const ProgramFolder& folder) {
    for (int number = kBackups - 1; number >= 1; --number) {
        platform::copyFile(folder.path(backupname(number)), folder.path(backupname(number + 1)),
                           platform::FolderSync::Later);
    }
    platform::syncFolder(folder.root());
}

void removePacked(const ProgramFolder& folder) {
    const QString packed = folder.path(packedname());
    platform::removeJournals(packed);
    QFile::remove(packed);
}

/// Puts a packed copy in the store's place. False when that did not work; the store is then as it was.
bool pack(const ProgramFolder& folder) {
    const QString store = folder.path(storename());
    const QString packed = folder.path(packedname());
    removePacked(folder);
    const bool packedWell = skipErrors([&] { platform::compactDatabase(store, packed); });
    if (!packedWell || !examinestore(packed).sound()) {
        removePacked(folder);
        return false;
    }
    platform::removeJournals(store);
    const bool moved = platform::moveFile(packed, store).ok();
    removePacked(folder);
    return moved;
}

Maintenance setAside(const ProgramFolder& folder, const QString& reason) {
    const QString name = freename(folder, QStringLiteral("rb-damaged"));
    if (!platform::moveFile(folder.path(storename()), folder.path(name))) {
        return {};
    }
    return {name, reason};
}

QString faultOf(const QString& path) {
    const StoreVerdict verdict = examinestore(path);
    return verdict.sound() ? QString() : QStringLiteral("%1: %2").arg(path, verdict.reason);
}

} // namespace

QString backupname(int number) {
    return number == 1 ? QStringLiteral("backup.mdb") : QStringLiteral("backup%1.mdb").arg(number);
}

StoreVerdict examinestore(const QString& path) {
    return platform::examineDatabase(path,
                                     {QStringLiteral("main"), QStringLiteral("gas"), QStringLiteral("tissue"),
                                      QStringLiteral("serialno"), QStringLiteral("Display")});
}

Maintenance maintainstore(const ProgramFolder& folder) {
    const QString store = folder.path(storename());
    if (!folder.listFiles(QString(), storename()).contains(storename())) {
        return {};
    }
    rotate(folder);
    if (!pack(folder)) {
        const StoreVerdict verdict = examinestore(store);
        if (verdict.state == StoreVerdict::State::Damaged) {
            return setAside(folder, verdict.reason);
        }
        if (!verdict.sound()) {
            return {};
        }
    }
    platform::copyFile(store, folder.path(backupname(1)), platform::FolderSync::Now, faultOf);
    return {};
}

FileResult restorebackup(const ProgramFolder& folder) {
    platform::removeJournals(folder.path(storename()));
    return platform::copyFile(folder.path(backupname(1)), folder.path(storename()));
}

Restore restorestore(const ProgramFolder& folder, const QString& chosen) {
    if (!chosen.endsWith(QLatin1String("mdb"))) {
        return {};
    }
    const auto refused = [&chosen](const QString& reason) {
        return Restore{false,
                       {},
                       QStringLiteral("The file %1 was not restored; the store is as it was.\n\n%2")
                           .arg(QDir::toNativeSeparators(chosen), reason)};
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
    if (QFile::exists(store)) {
        try {
            platform::settleDatabase(store);
        } catch (const StoreError& error) {
            if (error.busy()) {
                return refused(error.text());
            }
        }
        result.keptAs = freename(folder, QStringLiteral("rb-replaced"));
        if (const FileResult kept = platform::copyFile(store, folder.path(result.keptAs)); !kept) {
            return refused(kept.error);
        }
    }
    platform::removeJournals(store);
    const FileResult copied = platform::copyFile(chosen, store, platform::FolderSync::Now, faultOf);
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
