#include "platform/connection.h"

#include "platform/faultpoint.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <cstring>
#include <sqlite3.h>

namespace benthor::platform {

namespace {

/// How long a change waits for another program that holds the store, in milliseconds.
constexpr int kBusyTimeoutMs = 3000;

/// The table of "SELECT * FROM table ...", else "". A view has no rows of its own that could be changed.
std::string changeableTable(SQLite::Database& database, const std::string& sql) {
    static const QRegularExpression form(QStringLiteral("^\\s*SELECT\\s+\\*\\s+FROM\\s+(\\w+)"),
                                         QRegularExpression::CaseInsensitiveOption);
    const std::string name = form.match(QString::fromStdString(sql)).captured(1).toStdString();
    SQLite::Statement tables(database,
                             "SELECT 1 FROM sqlite_master WHERE type = 'table' AND name = ?1 COLLATE NOCASE");
    tables.bind(1, name);
    return tables.executeStep() ? name : std::string();
}

SQLite::Statement statementWithRowNumber(SQLite::Database& database, const std::string& sql,
                                         std::string& table) {
    table = changeableTable(database, sql);
    const size_t star = sql.find('*');
    return SQLite::Statement(
        database, table.empty() ? sql : sql.substr(0, star + 1) + ", rowid" + sql.substr(star + 1));
}

std::shared_ptr<const RecordsetShape> shapeOf(const SQLite::Statement& statement, const std::string& table) {
    auto shape = std::make_shared<RecordsetShape>();
    shape->table = table;
    const int fields = statement.getColumnCount() - (table.empty() ? 0 : 1);
    for (int i = 0; i < fields; ++i) {
        // An expression such as COUNT(*) has no declared type, which the library reports as an error.
        QString declared;
        try {
            declared = QString::fromUtf8(statement.getColumnDeclaredType(i));
        } catch (const SQLite::Exception&) {
            declared.clear();
        }
        shape->fields.push_back({QString::fromUtf8(statement.getColumnName(i)),
                                 declared.compare(QLatin1String("DATETIME"), Qt::CaseInsensitive) == 0});
    }
    return shape;
}

} // namespace

void passFault(std::string_view step) {
    if (const int number = faultAt(step)) {
        throw SQLite::Exception(std::strerror(number), number == ENOSPC ? SQLITE_FULL : SQLITE_IOERR);
    }
}

void throwStoreError(const QString& what, const SQLite::Exception& error) {
    throw StoreError(what + QStringLiteral(": ") + QString::fromUtf8(error.what()), error.getErrorCode());
}

void bindValue(SQLite::Statement& statement, int index, const Value& value) {
    if (value.isNull()) {
        statement.bind(index);
    } else {
        statement.bind(index, value.text().toStdString());
    }
}

std::string quotedName(const QString& name) {
    QString quoted = name;
    quoted.replace(QLatin1Char('"'), QLatin1String("\"\""));
    return (QLatin1Char('"') + quoted + QLatin1Char('"')).toStdString();
}

void Connection::open(const QString& path) {
    close();
    const QFileInfo file(path);
    if (!file.exists()) {
        throw StoreError(QStringLiteral("The store %1 is missing.").arg(QDir::toNativeSeparators(path)),
                         SQLITE_CANTOPEN);
    }
    try {
        auto database = std::make_unique<SQLite::Database>(file.absoluteFilePath().toStdString(),
                                                           SQLite::OPEN_READWRITE, kBusyTimeoutMs);
        // A rollback journal keeps the store one file that can be copied while closed. EXTRA is FULL and in
        // addition puts the journal's removal on the disk: a dive file is deleted right behind the commit
        // that stored it.
        database->exec("PRAGMA synchronous = EXTRA");
        // Reads the file: one that is no store ends here.
        database->exec("SELECT count(*) FROM sqlite_master");
        SQLite::Statement journal(*database, "PRAGMA journal_mode = DELETE");
        journal.executeStep();
        database_ = std::move(database);
        path_ = path;
    } catch (const SQLite::Exception& error) {
        throwStoreError(QStringLiteral("The store %1 cannot be opened").arg(QDir::toNativeSeparators(path)),
                        error);
    }
}

void Connection::close() {
    prepared_.clear();
    database_.reset();
    path_.clear();
    depth_ = 0;
    broken_ = false;
}

SQLite::Database& Connection::database() {
    if (!database_) {
        throw StoreError(QStringLiteral("The store is not open."));
    }
    return *database_;
}

PreparedQuery& Connection::prepareRows(const std::string& sql) {
    const auto found = prepared_.find(sql);
    if (found != prepared_.end()) {
        return found->second;
    }
    std::string table;
    SQLite::Statement statement = statementWithRowNumber(database(), sql, table);
    auto shape = shapeOf(statement, table);
    return prepared_.emplace(sql, PreparedQuery{std::move(statement), std::move(shape)}).first->second;
}

int Connection::run(const std::string& sql, const std::vector<Value>& values) {
    passFault("change");
    auto found = prepared_.find(sql);
    if (found == prepared_.end()) {
        found = prepared_.emplace(sql, PreparedQuery{SQLite::Statement(database(), sql), nullptr}).first;
    }
    SQLite::Statement& statement = found->second.statement;
    const StatementUse use(statement);
    for (size_t i = 0; i < values.size(); ++i) {
        bindValue(statement, static_cast<int>(i) + 1, values[i]);
    }
    return statement.exec();
}

void Connection::forgetPrepared() {
    prepared_.clear();
}

void Connection::begin() {
    if (depth_ == 0) {
        try {
            passFault("begin");
            database().exec("BEGIN IMMEDIATE");
        } catch (const SQLite::Exception& error) {
            throwStoreError(QStringLiteral("The store cannot be changed"), error);
        }
        broken_ = false;
    }
    ++depth_;
}

void Connection::commit() {
    if (depth_ > 1) {
        --depth_;
        return;
    }
    if (broken_) {
        throw StoreError(QStringLiteral("A part of the change failed; nothing of it is kept."));
    }
    try {
        passFault("commit");
        database().exec("COMMIT");
    } catch (const SQLite::Exception& error) {
        throwStoreError(QStringLiteral("The change cannot be stored"), error);
    }
    depth_ = 0;
    faultAt("committed");
}

void Connection::rollBack() {
    if (depth_ > 1) {
        --depth_;
        broken_ = true;
        return;
    }
    depth_ = 0;
    if (database_ && sqlite3_get_autocommit(database_->getHandle()) == 0) {
        try {
            database_->exec("ROLLBACK");
        } catch (const SQLite::Exception&) {
            close(); // closing rolls back as well, and the next use says that the store is not open
        }
    }
}

} // namespace benthor::platform
