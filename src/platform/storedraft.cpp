#include "platform/storedraft.h"

#include "platform/connection.h"

#include <QDir>
#include <QFile>

#include <sqlite3.h>

namespace benthor::platform {

namespace {

/// Steps of the engine between two questions whether it goes on.
constexpr int kStepsPerQuestion = 20000;

/// A step that the test's hook lets fail, as a store's fault.
void passStep(std::string_view step, const QString& path) {
    try {
        passFault(step);
    } catch (const SQLite::Exception& error) {
        throwStoreError(QStringLiteral("The store %1 cannot be written").arg(QDir::toNativeSeparators(path)),
                        error);
    }
}

} // namespace

void StoreDraft::Close::operator()(sqlite3* database) const {
    sqlite3_close_v2(database);
}

void StoreDraft::Close::operator()(sqlite3_stmt* statement) const {
    sqlite3_finalize(statement);
}

int StoreDraft::working(void* self) {
    return static_cast<StoreDraft*>(self)->goOn_() ? 0 : 1;
}

StoreDraft::StoreDraft(const QString& path, GoOn goOn)
    : path_(path)
    , goOn_(std::move(goOn)) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly, QFile::ReadOwner | QFile::WriteOwner)) {
        throw StoreError(QStringLiteral("%1: %2").arg(QDir::toNativeSeparators(path), file.errorString()),
                         SQLITE_CANTOPEN);
    }
    file.close();
    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(path.toUtf8().constData(), &opened, SQLITE_OPEN_READWRITE, nullptr);
    database_.reset(opened);
    require(code);
    sqlite3_db_config(opened, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    if (goOn_) {
        sqlite3_progress_handler(opened, kStepsPerQuestion, &StoreDraft::working, this);
    }
    // Whoever moves it to its place puts it on the disk first, and no one looks at one that was not finished.
    run("PRAGMA journal_mode = MEMORY");
    run("PRAGMA synchronous = OFF");
    run("PRAGMA locking_mode = EXCLUSIVE");
    passStep("begin", path_);
    run("BEGIN EXCLUSIVE");
}

StoreDraft::~StoreDraft() = default;

void StoreDraft::require(int code) const {
    if (code == SQLITE_OK || code == SQLITE_DONE || code == SQLITE_ROW) {
        return;
    }
    throw StoreError(
        QStringLiteral("The store %1 cannot be written: %2")
            .arg(QDir::toNativeSeparators(path_), QString::fromUtf8(sqlite3_errmsg(database_.get()))),
        code & 0xFF);
}

StoreDraft::Statement StoreDraft::prepare(const std::string& sql) {
    sqlite3_stmt* made = nullptr;
    const int code =
        sqlite3_prepare_v2(database_.get(), sql.c_str(), static_cast<int>(sql.size()) + 1, &made, nullptr);
    Statement statement(made);
    require(code);
    return statement;
}

void StoreDraft::run(const std::string& sql) {
    require(sqlite3_exec(database_.get(), sql.c_str(), nullptr, nullptr, nullptr));
}

std::vector<std::string> StoreDraft::fieldNames(const std::string& table) {
    std::vector<std::string> names;
    const Statement statement = prepare("PRAGMA table_info(" + inQuotes(table) + ")");
    while (sqlite3_step(statement.get()) == SQLITE_ROW) {
        names.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), 1)));
    }
    return names;
}

void StoreDraft::rowsGo(const std::string& insert) {
    insert_ = prepare(insert);
}

void StoreDraft::addRow(const std::vector<Cell>& cells) {
    passStep("change", path_);
    sqlite3_stmt* const statement = insert_.get();
    int index = 0;
    for (const Cell& cell : cells) {
        ++index;
        // No pointer at all would bind Null, and an empty value is not Null.
        const char* const bytes = cell.bytes.empty() ? "" : cell.bytes.data();
        if (cell.form == Cell::Form::Null) {
            require(sqlite3_bind_null(statement, index));
        } else if (cell.form == Cell::Form::Text) {
            require(
                sqlite3_bind_text64(statement, index, bytes, cell.bytes.size(), SQLITE_STATIC, SQLITE_UTF8));
        } else {
            require(sqlite3_bind_blob64(statement, index, bytes, cell.bytes.size(), SQLITE_STATIC));
        }
    }
    const int stepped = sqlite3_step(statement);
    sqlite3_reset(statement);
    require(stepped);
}

void StoreDraft::commit() {
    insert_.reset();
    passStep("commit", path_);
    run("COMMIT");
}

void StoreDraft::checkStructure() {
    passStep("examine", path_);
    const Statement check = prepare("PRAGMA integrity_check(1)");
    require(sqlite3_step(check.get()));
    const std::string answer = reinterpret_cast<const char*>(sqlite3_column_text(check.get(), 0));
    if (answer != "ok") {
        throw StoreError(
            QStringLiteral("The new store came out wrong: %1").arg(QString::fromStdString(answer)),
            SQLITE_CORRUPT);
    }
}

std::uint64_t StoreDraft::countRows(const std::string& table) {
    const Statement count = prepare("SELECT count(*) FROM " + inQuotes(table));
    require(sqlite3_step(count.get()));
    return static_cast<std::uint64_t>(sqlite3_column_int64(count.get(), 0));
}

std::string inQuotes(std::string_view name) {
    std::string text = "\"";
    for (const char c : name) {
        text += c;
        if (c == '"') {
            text += c;
        }
    }
    return text + '"';
}

} // namespace benthor::platform
