#include "platform/storeaccess.h"

#include "platform/files.h"
#include "platform/journalname.h"
#include "platform/query.h"
#include "platform/storefile.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cerrno>
#include <cstring>
#include <sqlite3.h>
#include <unistd.h>
#include <vector>

namespace benthor::platform {

namespace {

/// Why the system lets nobody write `path`; empty when it does.
QString whyNotWritable(const QString& path) {
    return ::access(QFile::encodeName(path).constData(), W_OK) == 0
               ? QString()
               : QString::fromLocal8Bit(std::strerror(errno));
}

/// The two bytes of a store's head that say how it keeps its changes.
bool keepsChangesBeside(const QString& path) {
    constexpr qsizetype kWriteForm = 18;
    constexpr char kBeside = 2;
    const QByteArray head = readFile(path, kWriteForm + 2).value_or(QByteArray());
    return head.size() > kWriteForm + 1 && (head[kWriteForm] == kBeside || head[kWriteForm + 1] == kBeside);
}

/// What tells that a file was changed.
struct Mark {
    qint64 size;
    QDateTime changed;
    bool operator==(const Mark&) const = default;
};

std::vector<Mark> marksOf(const QString& path) {
    std::vector<Mark> marks;
    for (const QString& suffix : QStringList{QString()} + journalSuffixes()) {
        const QFileInfo file(path + suffix);
        marks.push_back({file.exists() ? file.size() : -1, file.lastModified()});
    }
    return marks;
}

void requireCopied(const FileResult& copied) {
    if (!copied) {
        throw StoreError(copied.error, SQLITE_CANTOPEN);
    }
}

/// The engine removes the file that a journal names when it has played the journal back. One that another's
/// hand wrote could name any file: the copy is played, or left out, without that name.
void dropNamedFile(const QString& journal, const QString& folder) {
    settleMovedJournal(journal.chopped(journalSuffixes().first().size()), folder);
    const QByteArray named = fileNamedBy(journal);
    if (named.isEmpty()) {
        return;
    }
    if (QFileInfo::exists(QFile::decodeName(named))) {
        dropName(journal);
    } else {
        QFile::resize(journal, 0);
    }
}

} // namespace

QString whyReadOnly(const QString& path) {
    const QString place = followLinks(path);
    if (const QString reason = whyNotWritable(place); !reason.isEmpty()) {
        return QStringLiteral("The file %1 cannot be written: %2.")
            .arg(QDir::toNativeSeparators(place), reason);
    }
    // A change needs a journal beside the store.
    const QString folder = QFileInfo(place).absolutePath();
    if (const QString reason = whyNotWritable(folder); !reason.isEmpty()) {
        return QStringLiteral("The folder %1 cannot be written: %2.")
            .arg(QDir::toNativeSeparators(folder), reason);
    }
    return {};
}

bool needsCopyToLook(const QString& path) {
    const QString place = followLinks(path);
    for (const QString& suffix : journalSuffixes()) {
        if (QFileInfo::exists(place + suffix)) {
            return true;
        }
    }
    return keepsChangesBeside(place);
}

StoreCopy copyToLook(const QString& path) {
    constexpr int kTries = 3;
    const QString place = followLinks(path);
    for (int i = 0; i < kTries; ++i) {
        StoreCopy copy{std::make_unique<QTemporaryDir>(), {}};
        if (!copy.folder->isValid()) {
            throw StoreError(copy.folder->errorString(), SQLITE_CANTOPEN);
        }
        copy.path = copy.folder->filePath(QStringLiteral("store.mdb"));
        const std::vector<Mark> before = marksOf(place);
        requireCopied(copyFile(place, copy.path));
        for (const char* const suffix : {"-journal", "-wal"}) {
            const QString beside = place + QLatin1String(suffix);
            if (QFileInfo(beside).isFile()) {
                requireCopied(copyFile(beside, copy.path + QLatin1String(suffix)));
            }
        }
        dropNamedFile(copy.path + QStringLiteral("-journal"), QFileInfo(place).absolutePath());
        if (marksOf(place) == before) {
            return copy;
        }
    }
    throw StoreError(QStringLiteral("Another program is changing it."), SQLITE_BUSY);
}

} // namespace benthor::platform
