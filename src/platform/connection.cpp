#include "platform/connection.h"

#include "platform/faultpoint.h"
#include "platform/storewait.h"

#include <QRegularExpression>

#include <cstring>
#include <sqlite3.h>

namespace benthor::platform {

namespace {

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

void Connection::requireChangeable() const {
    if (!readOnlyReason_.isEmpty()) {
        throw StoreError(QStringLiteral("The dive store is opened for reading only. ") + readOnlyReason_,
                         SQLITE_READONLY);
    }
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
    requireChangeable();
    passFault("change");
    startWork();
    auto found = prepared_.find(sql);
    if (found == prepared_.end()) {
        found = prepared_.emplace(sql, PreparedQuery{SQLite::Statement(database(), sql), nullptr}).first;
    }
    SQLite::Statement& statement = found->second.statement;
    const StatementUse use(statement);
    for (size_t i = 0; i < values.size(); ++i) {
        bindValue(statement, static_cast<int>(i) + 1, values[i]);
    }
    const int changed = statement.exec();
    lockCameFree(place_);
    return changed;
}

void Connection::forgetPrepared() {
    prepared_.clear();
}

void Connection::begin() {
    if (depth_ == 0) {
        requireChangeable();
        try {
            passFault("begin");
            startWork();
            database().exec("BEGIN IMMEDIATE");
            lockCameFree(place_);
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
        startWork();
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
