#include "platform/database.h"

#include "platform/connection.h"

#include <QTemporaryDir>

#include <sqlite3.h>

namespace benthor::platform {

namespace {
/// What the rows of one query may hold together: far more than any logbook.
constexpr size_t kMostBytes = size_t{1} << 30;
} // namespace

Database::Database()
    : connection_(std::make_shared<Connection>()) {}

Database::~Database() {
    close();
}

void Database::open(const QString& path, StoreAccess access) {
    connection_->open(path, access);
}

void Database::close() {
    connection_->close();
}

bool Database::isOpen() const {
    return connection_->isOpen();
}

QString Database::path() const {
    return connection_->path();
}

QString Database::readOnlyReason() const {
    return connection_->readOnlyReason();
}

void Database::setReadOnly(const QString& reason) {
    connection_->setReadOnly(reason);
}

bool Database::canChangeNow() {
    return connection_->canChange(false);
}

bool Database::waitToChange() {
    return connection_->canChange(true);
}

Recordset Database::openRecordset(const Query& query) {
    try {
        connection_->startWork();
        PreparedQuery& prepared = connection_->prepareRows(query.sql());
        SQLite::Statement& statement = prepared.statement;
        const StatementUse use(statement);
        for (size_t i = 0; i < query.values().size(); ++i) {
            statement.bindNoCopy(static_cast<int>(i) + 1, query.values()[i]);
        }
        Recordset result;
        result.connection_ = connection_;
        result.shape_ = prepared.shape;
        result.width_ = static_cast<int>(prepared.shape->fields.size());
        const bool numbered = !prepared.shape->table.empty();
        while (statement.executeStep()) {
            for (int i = 0; i < result.width_; ++i) {
                const SQLite::Column column = statement.getColumn(i);
                if (column.isNull()) {
                    result.cells_.push_back({});
                } else {
                    const char* const text = column.getText();
                    const auto length = static_cast<size_t>(column.getBytes());
                    result.cells_.push_back({result.text_.size(), static_cast<int>(length)});
                    if (result.text_.size() + length > kMostBytes) {
                        throw StoreError(QStringLiteral("The query \"%1\" brings more than can be read.")
                                             .arg(query.text()));
                    }
                    result.text_.append(text, length);
                }
            }
            result.rows_.push_back({numbered ? statement.getColumn(result.width_).getInt64() : 0});
        }
        result.count_ = static_cast<qsizetype>(result.rows_.size());
        return result;
    } catch (const SQLite::Exception& error) {
        throwStoreError(QStringLiteral("The query \"%1\" failed").arg(query.text()), error);
    }
}

StoreStamp Database::stamp() {
    try {
        const auto number = [this](const char* pragma) {
            return openRecordset(pragma).value(0).text().toLongLong();
        };
        StoreStamp stamp;
        stamp.others = number("PRAGMA main.data_version");
        stamp.form = number("PRAGMA main.schema_version");
        stamp.own = sqlite3_total_changes64(connection_->database().getHandle());
        stamp.opening = connection_->opening();
        return stamp;
    } catch (const StoreError&) {
        return {};
    }
}

Recordset Database::openForAdding(const char* table) {
    const std::string sql = std::string("SELECT * FROM ") + table;
    try {
        Recordset result;
        result.shape_ = connection_->prepareRows(sql).shape;
        result.connection_ = connection_;
        result.width_ = static_cast<int>(result.shape_->fields.size());
        result.addOnly_ = true;
        return result;
    } catch (const SQLite::Exception& error) {
        throwStoreError(QStringLiteral("The query \"%1\" failed").arg(QString::fromStdString(sql)), error);
    }
}

void Database::execute(const Query& query) {
    try {
        std::vector<Value> values;
        for (const std::string& value : query.values()) {
            values.emplace_back(QString::fromStdString(value));
        }
        connection_->run(query.sql(), values);
    } catch (const SQLite::Exception& error) {
        throwStoreError(QStringLiteral("The query \"%1\" failed").arg(query.text()), error);
    }
}

QStringList Database::fieldNames(const QString& table) {
    QStringList names;
    Recordset rows = openRecordset(sqlWith("SELECT name FROM pragma_table_info('", table, "') ORDER BY cid"));
    for (; !rows.eof(); rows.moveNext()) {
        names += rows.value(0).text();
    }
    if (names.isEmpty()) {
        throw StoreError(QStringLiteral("The store has no table %1.").arg(table));
    }
    return names;
}

int Database::fieldCount(const QString& table) {
    return static_cast<int>(fieldNames(table).size());
}

bool Database::updatable(const QString& table) {
    const Recordset found = openRecordset(sqlWith(
        "SELECT name FROM sqlite_master WHERE type = 'table' AND name = '", table, "' COLLATE NOCASE"));
    return found.recordCount() > 0 && connection_->readOnlyReason().isEmpty();
}

void Database::appendField(const QString& table, const QString& name, int size) {
    try {
        connection_->run("ALTER TABLE " + quotedName(table) + " ADD COLUMN " + quotedName(name) + " TEXT(" +
                             std::to_string(size) + ") COLLATE NOCASE",
                         {});
        connection_->forgetPrepared();
    } catch (const SQLite::Exception& error) {
        throwStoreError(QStringLiteral("The field %1 cannot be added to the table %2").arg(name, table),
                        error);
    }
}

Transaction::Transaction(Database& database)
    : connection_(database.connection_) {
    connection_->begin();
}

Transaction::~Transaction() {
    if (!done_) {
        connection_->rollBack();
    }
}

void Transaction::commit() {
    connection_->commit();
    done_ = true;
}

} // namespace benthor::platform
