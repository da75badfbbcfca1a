#include "platform/storefile.h"

#include "platform/connection.h"
#include "platform/files.h"

#include <QFile>
#include <QFileInfo>

#include <sqlite3.h>
#include <sys/stat.h>

namespace benthor::platform {

namespace {

StoreVerdict damaged(const QString& reason) {
    return {StoreVerdict::State::Damaged, reason};
}

/// A store may name a table of its own like one of the engine's lists: only the pragma itself tells the
/// truth.
bool isTable(SQLite::Database& database, const QString& name) {
    SQLite::Statement tables(database, "PRAGMA main.table_list");
    while (tables.executeStep()) {
        if (name.compare(QString::fromStdString(tables.getColumn("name").getString()), Qt::CaseInsensitive) ==
            0) {
            return tables.getColumn("type").getString() == "table";
        }
    }
    return false;
}

/// An empty file that only its owner can read; the engine fills it.
void makePrivateFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly, QFile::ReadOwner | QFile::WriteOwner)) {
        throw StoreError(QStringLiteral("%1: %2").arg(path, file.errorString()), SQLITE_CANTOPEN);
    }
}

/// Whoever has work in hand on the store is not to lose that, where another will stand in its place. Rolled
/// back, for an empty file would get a head; the lock stays as long as the handle.
void hold(Connection& store) {
    store.database().exec("PRAGMA locking_mode = EXCLUSIVE; BEGIN EXCLUSIVE; ROLLBACK");
}

/// Read through the engine: to close another handle of the file would set the store free.
QByteArray headOf(Connection& store) {
    constexpr int kHead = 100;
    QByteArray head(kHead, '\0');
    sqlite3_file* file = nullptr;
    sqlite3_file_control(store.database().getHandle(), "main", SQLITE_FCNTL_FILE_POINTER, &file);
    const bool read = file != nullptr && file->pMethods != nullptr &&
                      file->pMethods->xRead(file, head.data(), kHead, 0) == SQLITE_OK;
    return read ? head : QByteArray();
}

/// To be asked while the store is held.
StoreMark markOf(Connection& store) {
    struct stat facts {};
    if (::stat(QFile::encodeName(store.path()).constData(), &facts) != 0) {
        return {};
    }
    constexpr qint64 kNanosecondsPerSecond = 1'000'000'000;
    return {headOf(store), facts.st_size,
            facts.st_mtim.tv_sec * kNanosecondsPerSecond + facts.st_mtim.tv_nsec};
}

} // namespace

void createDatabase(const QString& path, const char* schema, const Query& change) {
    makePrivateFile(path);
    try {
        SQLite::Database database(path.toStdString(), SQLite::OPEN_READWRITE);
        protect(database);
        database.exec("PRAGMA journal_mode = MEMORY"); // a draft that a crash leaves behind is never used
        SQLite::Transaction transaction(database);
        database.exec(schema);
        SQLite::Statement statement(database, change.sql());
        for (size_t i = 0; i < change.values().size(); ++i) {
            statement.bind(static_cast<int>(i) + 1, change.values()[i]);
        }
        statement.exec();
        transaction.commit();
    } catch (const SQLite::Exception& error) {
        throwStoreError(QStringLiteral("The store %1 cannot be made").arg(path), error);
    }
}

StoreMark markOf(const QString& path) {
    Connection store;
    store.open(path);
    try {
        hold(store);
        return markOf(store);
    } catch (const SQLite::Exception& error) {
        throwStoreError(QStringLiteral("The store %1 cannot be looked at").arg(path), error);
    }
}

StoreMark compactDatabase(const QString& from, const QString& to, WhenHeld whenHeld) {
    Connection source;
    source.setPatient(whenHeld == WhenHeld::Wait);
    source.open(from);
    makePrivateFile(to);
    StoreMark mark;
    try {
        passFault("compact");
        source.startWork();
        hold(source);
        mark = markOf(source);
        SQLite::Statement pack(source.database(), "VACUUM INTO ?1");
        pack.bind(1, QFileInfo(to).absoluteFilePath().toStdString());
        pack.exec();
        passFault("compacted");
    } catch (const SQLite::Exception& error) {
        throwStoreError(QStringLiteral("The store %1 cannot be packed").arg(from), error);
    }
    if (const FileResult given = takeRights(to, from); !given) {
        throw StoreError(given.error);
    }
    return mark;
}

void settleDatabase(const QString& path) {
    Connection().open(path);
}

namespace {

enum class Depth { Everything, TablesAlone };

StoreVerdict examine(const QString& path, const QStringList& tables, Depth depth) {
    const QFileInfo file(path);
    if (!file.isFile()) {
        return {StoreVerdict::State::Unknown, QStringLiteral("%1 is no file.").arg(path)};
    }
    Connection connection;
    const auto verdictOf = [](int code, const QString& reason) {
        const bool read = code == SQLITE_CORRUPT || code == SQLITE_NOTADB;
        return read ? damaged(reason) : StoreVerdict{StoreVerdict::State::Unknown, reason};
    };
    try {
        passFault("examine");
        connection.open(path, StoreAccess::Look);
        SQLite::Database& database = connection.database();
        connection.startWork();
        if (depth == Depth::Everything) {
            SQLite::Statement check(database, "PRAGMA integrity_check(1)");
            check.executeStep();
            if (const std::string answer = check.getColumn(0).getString(); answer != "ok") {
                return damaged(QString::fromStdString(answer));
            }
        }
        for (const QString& table : tables) {
            if (!isTable(database, table)) {
                return damaged(QStringLiteral("It has no table \"%1\".").arg(table));
            }
        }
        return {StoreVerdict::State::Sound, {}};
    } catch (const SQLite::Exception& error) {
        return verdictOf(error.getErrorCode(), QString::fromUtf8(error.what()));
    } catch (const StoreError& error) {
        return verdictOf(error.code(), error.text());
    }
}

} // namespace

StoreVerdict examineDatabase(const QString& path, const QStringList& tables) {
    return examine(path, tables, Depth::Everything);
}

StoreVerdict findTables(const QString& path, const QStringList& tables) {
    return examine(path, tables, Depth::TablesAlone);
}

QStringList journalSuffixes() {
    return {QStringLiteral("-journal"), QStringLiteral("-wal"), QStringLiteral("-shm")};
}

void removeJournals(const QString& path) {
    const QString place = followLinks(path); // the engine keeps them beside the file itself
    for (const QString& suffix : journalSuffixes()) {
        QFile::remove(place + suffix);
    }
}

} // namespace benthor::platform
