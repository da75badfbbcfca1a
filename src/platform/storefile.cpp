#include "platform/storefile.h"

#include "platform/connection.h"

#include <QFile>
#include <QFileInfo>

#include <sqlite3.h>

namespace benthor::platform {

namespace {

constexpr int kBusyTimeoutMs = 3000;

StoreVerdict damaged(const QString& reason) {
    return {StoreVerdict::State::Damaged, reason};
}

} // namespace

void compactDatabase(const QString& from, const QString& to) {
    Connection source;
    source.open(from);
    try {
        passFault("compact");
        SQLite::Statement pack(source.database(), "VACUUM INTO ?1");
        pack.bind(1, QFileInfo(to).absoluteFilePath().toStdString());
        pack.exec();
        passFault("compacted");
    } catch (const SQLite::Exception& error) {
        throwStoreError(QStringLiteral("The store %1 cannot be packed").arg(from), error);
    }
}

void settleDatabase(const QString& path) {
    Connection().open(path);
}

StoreVerdict examineDatabase(const QString& path, const QStringList& tables) {
    const QFileInfo file(path);
    if (!file.isFile()) {
        return {StoreVerdict::State::Unknown, QStringLiteral("%1 is no file.").arg(path)};
    }
    try {
        passFault("examine");
        SQLite::Database database(file.absoluteFilePath().toStdString(), SQLite::OPEN_READONLY,
                                  kBusyTimeoutMs);
        SQLite::Statement check(database, "PRAGMA integrity_check(1)");
        check.executeStep();
        if (const std::string answer = check.getColumn(0).getString(); answer != "ok") {
            return damaged(QString::fromStdString(answer));
        }
        for (const QString& table : tables) {
            SQLite::Statement find(
                database, "SELECT 1 FROM sqlite_master WHERE type = 'table' AND name = ?1 COLLATE NOCASE");
            find.bind(1, table.toStdString());
            if (!find.executeStep()) {
                return damaged(QStringLiteral("It has no table \"%1\".").arg(table));
            }
        }
        return {StoreVerdict::State::Sound, {}};
    } catch (const SQLite::Exception& error) {
        const QString reason = QString::fromUtf8(error.what());
        const bool read = error.getErrorCode() == SQLITE_CORRUPT || error.getErrorCode() == SQLITE_NOTADB;
        return read ? damaged(reason) : StoreVerdict{StoreVerdict::State::Unknown, reason};
    }
}

QStringList journalSuffixes() {
    return {QStringLiteral("-journal"), QStringLiteral("-wal"), QStringLiteral("-shm")};
}

void removeJournals(const QString& path) {
    for (const QString& suffix : journalSuffixes()) {
        QFile::remove(path + suffix);
    }
}

} // namespace benthor::platform
