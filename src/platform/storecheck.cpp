// A large store is read on two threads: it holds two big tables, and what takes the time is finding each of
// their rows in the index again.

#include "platform/connection.h"
#include "platform/storefile.h"
#include "platform/storewait.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include <algorithm>
#include <atomic>
#include <mutex>
#include <optional>
#include <thread>

namespace benthor::platform {

namespace {

/// Below this a second thread is not worth its start.
constexpr qint64 kWorthThreads = 8 << 20;

/// A part of the check, and how many rows it goes through.
struct Part {
    std::string sql;
    long long rows = 0;
};

/// The rows' numbers tell how many there are closely enough.
long long rowsIn(SQLite::Database& database, const std::string& table) {
    try {
        SQLite::Statement most(database,
                               "SELECT max(rowid) FROM " + quotedName(QString::fromStdString(table)));
        return most.executeStep() ? most.getColumn(0).getInt64() : 0;
    } catch (const SQLite::Exception&) {
        return 0; // a table without such numbers
    }
}

/// Every page is a part of one tree only; each table's rows stand in its indexes. The longest parts come
/// first.
std::vector<Part> partsOf(SQLite::Database& database) {
    std::vector<Part> parts;
    long long all = 0;
    SQLite::Statement tables(database, "SELECT name FROM sqlite_master WHERE type = 'table'");
    while (tables.executeStep()) {
        const std::string name = tables.getColumn(0).getString();
        parts.push_back({"PRAGMA integrity_check(" + quotedName(QString::fromStdString(name)) + ")",
                         rowsIn(database, name)});
        all += parts.back().rows;
    }
    parts.push_back({"PRAGMA quick_check(1)", all / 4});
    std::sort(parts.begin(), parts.end(), [](const Part& a, const Part& b) { return a.rows > b.rows; });
    return parts;
}

/// Two threads that take one part after the other. Whatever is not plainly sound ends both: the plain check
/// then finds the words.
class TwoReaders {
public:
    TwoReaders(QString path, StoreGoOn goOn)
        : path_(std::move(path))
        , goOn_(std::move(goOn)) {}

    bool sound(const std::function<void()>& beside) {
        std::thread second([this, &beside] {
            if (beside) {
                beside();
            }
            read();
        });
        read();
        second.join();
        return !wrong_;
    }

private:
    void read() noexcept {
        const StoreWaiting waiting([this](StoreWait, std::chrono::milliseconds) { return goesOn(); });
        try {
            Connection connection;
            connection.open(path_, StoreAccess::Look);
            for (std::optional<Part> part = next(connection); part && !wrong_; part = next(connection)) {
                connection.startWork();
                SQLite::Statement check(connection.database(), part->sql);
                check.executeStep();
                if (check.getColumn(0).getString() != "ok") {
                    wrong_ = true;
                }
            }
        } catch (const std::exception&) {
            wrong_ = true;
        }
    }
    bool goesOn() const { return !wrong_ && (!goOn_ || goOn_()); }
    std::optional<Part> next(Connection& connection) {
        const std::lock_guard lock(mutex_);
        if (!listed_) {
            parts_ = partsOf(connection.database());
            listed_ = true;
        }
        if (taken_ == parts_.size()) {
            return std::nullopt;
        }
        return parts_[taken_++];
    }

    QString path_;
    StoreGoOn goOn_;
    std::mutex mutex_;
    std::vector<Part> parts_;
    bool listed_ = false;
    size_t taken_ = 0;
    std::atomic<bool> wrong_{false};
};

} // namespace

StoreVerdict examineDatabaseTogether(const QString& path, const QStringList& tables, const StoreGoOn& goOn,
                                     const std::function<void()>& beside) {
    if (QFileInfo(path).size() < kWorthThreads) {
        if (beside) {
            beside();
        }
        return examineDatabase(path, tables);
    }
    const bool sound = TwoReaders(path, goOn).sound(beside);
    if (goOn && !goOn()) {
        return {StoreVerdict::State::Unknown, QStringLiteral("The check was stopped.")};
    }
    return sound ? findTables(path, tables) : examineDatabase(path, tables);
}

} // namespace benthor::platform
