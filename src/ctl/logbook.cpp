#include "ctl/logbook.h"

#include "ctl/interruption.h"
#include "ctl/outcome.h"
#include "ctl/output.h"
#include "session/process.h"
#include "store/backup.h"
#include "store/maintenance.h"
#include "store/olderstore.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cerrno>
#include <cstring>
#include <unistd.h>

namespace benthor::ctl {

using platform::ProgramFolder;
using platform::StoreAccess;
using platform::StoreError;

namespace {

void requireStore(const ProgramFolder& folder) {
    if (!QFileInfo(storeOf(folder)).exists()) {
        throw Failure(kUnusable,
                      QStringLiteral("There is no dive store rb.mdb in the folder %1.").arg(folder.root()));
    }
}

/// A damaged one is found here, not in the midst of what goes out.
void requireSound(const QString& path) {
    const platform::StoreVerdict verdict = platform::examineDatabase(path, {QStringLiteral("main")});
    goOnUnlessInterrupted();
    if (!verdict.sound()) {
        throw Failure(kUnusable,
                      QStringLiteral("The dive store %1 cannot be used. %2").arg(path, verdict.reason));
    }
}

/// Whether files can be made in a folder and taken out of it.
void requireWritableFolder(const QString& path) {
    if (QFileInfo(path).isDir() && ::access(QFile::encodeName(path).constData(), W_OK | X_OK) != 0) {
        throw Failure(kUnusable, QStringLiteral("The folder %1 cannot be written: %2.")
                                     .arg(path, QString::fromLocal8Bit(std::strerror(errno))));
    }
}

} // namespace

QString storeOf(const ProgramFolder& folder) {
    return folder.path(u"rb.mdb");
}

ProgramFolder requireFolder(const QString& given) {
    ProgramFolder folder = given.isEmpty()
                               ? platform::findProgramFolder(platform::folderPlaces())
                               : ProgramFolder(QDir::cleanPath(QDir::current().absoluteFilePath(given)));
    if (!QFileInfo(folder.root()).isDir()) {
        throw Failure(kUnusable, QStringLiteral("There is no program folder %1.").arg(folder.root()));
    }
    return folder;
}

ReadLogbook::ReadLogbook(ProgramFolder folder)
    : folder_(std::move(folder)) {
    requireStore(folder_);
    QString path = storeOf(folder_);
    if (store::isjetfile(path)) {
        copy_ = std::make_unique<QTemporaryDir>();
        const QString older = std::exchange(path, copy_->filePath(QStringLiteral("rb.mdb")));
        Progress progress(QStringLiteral("Rows of the older store"));
        store::copyjet(older, path, [&](std::uint64_t rows, std::uint64_t of) {
            progress.show(static_cast<qint64>(rows), static_cast<qint64>(of));
            return !isInterrupted();
        });
    }
    requireSound(path);
    database_.open(path, StoreAccess::Look);
    reader_ = std::make_unique<exports::DiveReader>(database_, folder_);
}

ReadLogbook::~ReadLogbook() = default;

WriteLogbook::WriteLogbook(ProgramFolder folder)
    : folder_(std::move(folder)) {
    requireStore(folder_);
    requireWritable();
    lock_ = std::make_unique<platform::InstanceLock>(folder_.root(), QByteArrayLiteral("benthorctl"));
    if (!lock_->held()) {
        throw Failure(kUnusable,
                      QStringLiteral("Benthor is open on the folder %1, or another benthorctl writes there. "
                                     "Nothing is changed meanwhile.")
                          .arg(folder_.root()));
    }
    const QString path = storeOf(folder_);
    requireSound(path);
    ProgramFolder::setCurrent(folder_);
    // What a start of the program does before it stores anything.
    store::addmissingfields(path, [](const QString& text) { tell(text); });
    process().database.open(path);
    if (const QString reason = process().database.readOnlyReason(); !reason.isEmpty()) {
        throw Failure(kUnusable, reason);
    }
    if (!process().database.waitToChange()) {
        goOnUnlessInterrupted();
        throw Failure(kUnusable, QStringLiteral("Another program holds the dive store %1 open.").arg(path));
    }
}

WriteLogbook::~WriteLogbook() {
    process().mainrecordset.close();
    process().countrecordset.close();
    process().database.close();
}

/// Before anything is written, the file of the lock too.
void WriteLogbook::requireWritable() const {
    const QString path = storeOf(folder_);
    if (const QString reason = platform::whyReadOnly(path); !reason.isEmpty()) {
        throw Failure(kUnusable, reason);
    }
    for (const QStringView name : {u"", u"new", u"old", u"dbtxt"}) {
        requireWritableFolder(name.isEmpty() ? folder_.root() : folder_.path(name));
    }
    if (store::isjetfile(path)) {
        throw Failure(kUnusable, QStringLiteral("The dive store %1 is an older one (a Jet file). Start "
                                                "Benthor once: it brings the dives along.")
                                     .arg(path));
    }
}

} // namespace benthor::ctl
