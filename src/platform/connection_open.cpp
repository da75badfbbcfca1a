#include "platform/connection.h"
#include "platform/files.h"
#include "platform/journalname.h"
#include "platform/storewait.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <atomic>
#include <sqlite3.h>
#include <utility>

namespace benthor::platform {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

/// How many of the engine's steps lie between two looks at the clock: less than a millisecond of honest work.
constexpr int kStepsPerLook = 1000;
/// How long one statement may work on a store that is not ours.
constexpr auto kForeignWork = 30s;
/// A field of a store that is not ours may hold no more bytes than this.
constexpr int kForeignFieldMost = 64 << 20;

} // namespace

void protect(SQLite::Database& database) {
    sqlite3* const handle = database.getHandle();
    for (const auto& [option, value] :
         {std::pair{SQLITE_DBCONFIG_DEFENSIVE, 1}, std::pair{SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0},
          std::pair{SQLITE_DBCONFIG_ENABLE_TRIGGER, 0}, std::pair{SQLITE_DBCONFIG_ENABLE_VIEW, 0},
          std::pair{SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0},
          std::pair{SQLITE_DBCONFIG_ENABLE_FTS3_TOKENIZER, 0}}) {
        sqlite3_db_config(handle, option, value, nullptr);
    }
    sqlite3_drop_modules(handle, nullptr); // a virtual table's rows are made by code
    database.exec("PRAGMA cell_size_check = ON");
    database.exec("PRAGMA mmap_size = 0");
}

Connection::~Connection() {
    close();
}

int Connection::lockedAgain(void* self, int) {
    const auto* connection = static_cast<Connection*>(self);
    return connection->patient_ && waitForLock(connection->place_) ? 1 : 0;
}

int Connection::worksOn(void* self) {
    const auto* connection = static_cast<Connection*>(self);
    const auto worked = std::chrono::duration_cast<milliseconds>(Clock::now() - connection->workBegan_);
    if (connection->foreign_ && worked > kForeignWork) {
        return 1;
    }
    return goOnWaiting(StoreWait::Working, worked) ? 0 : 1;
}

void Connection::startWork() {
    workBegan_ = Clock::now();
}

/// Sets a handle up that has just been opened, and reads from the file: one that is no store ends here.
void Connection::makeReady() {
    sqlite3* const handle = database_->getHandle();
    sqlite3_busy_handler(handle, &Connection::lockedAgain, this);
    sqlite3_progress_handler(handle, kStepsPerLook, &Connection::worksOn, this);
    startWork();
    protect(*database_);
    if (foreign_) {
        sqlite3_limit(handle, SQLITE_LIMIT_LENGTH, kForeignFieldMost);
    }
    // A rollback journal keeps the store one file that can be copied while closed. EXTRA is FULL and in
    // addition puts the journal's removal on the disk: a dive file is deleted right behind the commit
    // that stored it.
    database_->exec("PRAGMA synchronous = EXTRA");
    database_->exec("SELECT count(*) FROM sqlite_master");
    if (readOnlyReason_.isEmpty() || copy_.folder) {
        SQLite::Statement journal(*database_, "PRAGMA journal_mode = DELETE");
        journal.executeStep();
    }
    if (!readOnlyReason_.isEmpty()) {
        database_->exec("PRAGMA query_only = ON");
    }
}

void Connection::open(const QString& path, StoreAccess access) {
    close();
    const QFileInfo file(path);
    if (!file.exists()) {
        throw StoreError(QStringLiteral("The store %1 is missing.").arg(QDir::toNativeSeparators(path)),
                         SQLITE_CANTOPEN);
    }
    const auto failed = [this, &path](const QString& reason, int code) {
        close();
        throw StoreError(
            QStringLiteral("The store %1 cannot be opened: %2").arg(QDir::toNativeSeparators(path), reason),
            code);
    };
    if (!file.isFile()) {
        failed(QStringLiteral("It is no file."), SQLITE_CANTOPEN);
    }
    try {
        path_ = path;
        place_ = followLinks(path).toStdString();
        foreign_ = access == StoreAccess::Look;
        readOnlyReason_ = foreign_ ? QStringLiteral("It is opened for a look.") : whyReadOnly(path);
        std::string opened = place_;
        int flags = readOnlyReason_.isEmpty() ? SQLite::OPEN_READWRITE : SQLite::OPEN_READONLY;
        if (!readOnlyReason_.isEmpty() && needsCopyToLook(path)) {
            copy_ = copyToLook(path);
            opened = copy_.path.toStdString();
            flags = SQLite::OPEN_READWRITE; // what was left unfinished is settled in the copy
        }
        if (readOnlyReason_.isEmpty()) {
            const QString there = QString::fromStdString(place_);
            settleMovedJournal(there, QFileInfo(there).absolutePath());
        }
        // One thread has the handle, as it has everything of this: the engine need not guard each field read.
        database_ = std::make_unique<SQLite::Database>(opened, flags | SQLite::OPEN_NOMUTEX);
        makeReady();
        static std::atomic<quint64> openings = 0;
        opening_ = ++openings;
    } catch (const SQLite::Exception& error) {
        failed(QString::fromUtf8(error.what()), error.getErrorCode());
    } catch (const StoreError& error) {
        failed(error.text(), error.code());
    }
}

void Connection::close() {
    prepared_.clear();
    database_.reset();
    copy_ = {};
    path_.clear();
    place_.clear();
    readOnlyReason_.clear();
    foreign_ = false;
    depth_ = 0;
    broken_ = false;
}

void Connection::setReadOnly(const QString& reason) {
    readOnlyReason_ = reason;
}

bool Connection::canChange(bool wait) {
    const bool before = std::exchange(patient_, wait);
    const auto lock = [this](const char* sql) {
        return sqlite3_exec(database().getHandle(), sql, nullptr, nullptr, nullptr) == SQLITE_OK;
    };
    const bool free = lock("BEGIN IMMEDIATE") && lock("ROLLBACK");
    patient_ = before;
    if (free) {
        lockCameFree(place_);
    }
    return free;
}

} // namespace benthor::platform
