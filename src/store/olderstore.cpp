#include "store/olderstore.h"

#include "platform/files.h"
#include "platform/storefile.h"
#include "store/keptstores.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

namespace benthor::store {

namespace {

using platform::FileResult;
using platform::ProgramFolder;
using platform::StoreError;

QString jetbase() {
    return QStringLiteral("rb-jet");
}

/// Where the new store is written: beside the place that it will take. What a crash left there is no store.
QString draftFor(const QString& place) {
    return QFileInfo(place).absolutePath() + QStringLiteral("/.benthor.jetstore");
}

void removeDraft(const QString& draft) {
    QFile::remove(draft);
    platform::removeJournals(draft);
}

void requireOk(const FileResult& result) {
    if (!result) {
        throw StoreError(result.error);
    }
}

/// Puts the draft in the place, under the rights of what stands there. What fails behind the change of place
/// does not take it back.
void takePlace(const QString& draft, const QString& place) {
    if (QFile::exists(place)) {
        requireOk(platform::takeRights(draft, place));
    }
    platform::removeJournals(place);
    const FileResult moved = platform::moveFile(draft, place);
    if (!moved && QFile::exists(draft)) {
        throw StoreError(moved.error);
    }
}

bool isOneFile(const QString& one, const QString& other) {
    struct stat first {};
    struct stat second {};
    return ::stat(QFile::encodeName(one).constData(), &first) == 0 &&
           ::stat(QFile::encodeName(other).constData(), &second) == 0 && first.st_dev == second.st_dev &&
           first.st_ino == second.st_ino;
}

/// The name that a start which was killed has kept the Jet file under already; empty without one.
QString keptBefore(const ProgramFolder& folder, const QString& place) {
    for (const QString& name : folder.listFiles(QString(), jetbase() + QStringLiteral("*.mdb"))) {
        if (isOneFile(folder.path(name), place)) {
            return name;
        }
    }
    return {};
}

/// Copies it to `name`, where the system knows no second names. A copy that a killed start made serves.
QString keepCopy(const ProgramFolder& folder, const QString& place, const QString& name, bool& made) {
    for (const QString& before : folder.listFiles(QString(), jetbase() + QStringLiteral("*.mdb"))) {
        if (platform::sameContents(folder.path(before), place)) {
            made = false;
            return before;
        }
    }
    const auto check = [&place](const QString& draft) {
        return platform::sameContents(draft, place) ? QString()
                                                    : QStringLiteral("The copy is not like the file.");
    };
    const FileResult copied =
        platform::copyFileLike(place, place, folder.path(name), platform::FolderSync::Now, check);
    if (!copied) {
        QFile::remove(folder.path(name)); // a copy may stand there whose name could not be put on the disk
    }
    requireOk(copied);
    return name;
}

/// Keeps the Jet file under a second name, which is at once and byte for byte. `made` says whether that name
/// is new.
QString keepJet(const ProgramFolder& folder, const QString& place, bool& made) {
    QString before = keptBefore(folder, place);
    made = before.isEmpty();
    if (!made) {
        return before;
    }
    QString name = freename(folder, jetbase());
    if (platform::linkFile(place, folder.path(name))) {
        return name;
    }
    QFile::remove(folder.path(name)); // it was free a moment ago, so this is ours
    return keepCopy(folder, place, name, made);
}

/// Brings it along; StoreError where it cannot be.
void bring(const ProgramFolder& folder, const QString& place, const JetProgress& progress,
           const OpenJet& open, ComeAlong& result) {
    const QString draft = draftFor(place);
    result.counts = copyjet(place, draft, progress, open);
    bool made = false;
    try {
        result.keptAs = keepJet(folder, place, made);
        takePlace(draft, place);
    } catch (const StoreError&) {
        if (made) {
            QFile::remove(folder.path(result.keptAs));
        }
        result.keptAs.clear();
        throw;
    }
}

} // namespace

JetCounts copyjet(const QString& path, const QString& target, const JetProgress& progress,
                  const OpenJet& open) {
    const std::unique_ptr<JetRowSource> source = open ? open(path, progress) : readjet(path, progress);
    return convertjet(*source, target, progress);
}

ComeAlong bringalong(const ProgramFolder& folder, const JetProgress& progress, const OpenJet& open) {
    const QString place = platform::followLinks(folder.path(u"rb.mdb"));
    const QString draft = draftFor(place);
    removeDraft(draft);
    ComeAlong result;
    if (!isjetfile(place)) {
        return result;
    }
    // An unfinished change of the store that stood here before: the engine would play it into the Jet file.
    platform::removeJournals(place);
    try {
        bring(folder, place, progress, open, result);
        result.end = ComeAlong::End::Taken;
    } catch (const JetStopped&) {
        result.end = ComeAlong::End::Stopped;
    } catch (const StoreError& error) {
        result.end = ComeAlong::End::Refused;
        result.reason = error.text();
    }
    removeDraft(draft);
    return result;
}

Restore restorejet(const ProgramFolder& folder, const QString& chosen, JetCounts& counts,
                   const JetProgress& progress, const OpenJet& open) {
    const QString place = platform::followLinks(folder.path(u"rb.mdb"));
    const QString draft = draftFor(place);
    removeDraft(draft);
    Restore result;
    try {
        counts = copyjet(chosen, draft, progress, open);
        requireOk(keepreplaced(folder, result.keptAs));
        takePlace(draft, place);
        result.done = true;
    } catch (const StoreError& error) {
        if (!result.keptAs.isEmpty()) {
            QFile::remove(folder.path(result.keptAs));
        }
        result = {false, {}, notrestored(chosen, error.text())};
    }
    removeDraft(draft);
    return result;
}

} // namespace benthor::store
