#include "platform/database.h"

#include "platform/connection.h"

#include <sqlite3.h>

namespace benthor::platform {

Database::Database()
    : m_connection(std::make_shared<Connection>()) {}

Database::~Database() {
    close();
}

void Database::open(const QString& path) {
    m_connection->open(path);
}

void Database::close() {
    m_connection->close();
}

bool Database::isOpen() const {
    return m_connection->isOpen();
}

QString Database::path() const {
    return m_connection->path();
}

Recordset Database::openRecordset(const Query& query) {
    try {
        PreparedQuery& prepared = m_connection->prepareRows(query.sql());
        SQLite::Statement& statement = prepared.statement;
        const StatementUse use(statement);
        for (size_t i = 0; i < query.values().size(); ++i) {
            statement.bindNoCopy(static_cast<int>(i) + 1, query.values()[i]);
        }
        Recordset result;
        result.m_connection = m_connection;
        result.m_shape = prepared.shape;
        result.m_width = static_cast<int>(prepared.shape->fields.size());
        const bool numbered = !prepared.shape->table.empty();
        while (statement.executeStep()) {
            for (int i = 0; i < result.m_width; ++i) {
                const SQLite::Column column = statement.getColumn(i);
                if (column.isNull()) {
                    result.m_cells.push_back({});
                } else {
                    const char* const text = column.getText();
                    const auto length = static_cast<size_t>(column.getBytes());
                    result.m_cells.push_back({result.m_text.size(), static_cast<int>(length)});
                    result.m_text.append(text, length);
                }
            }
            result.m_rows.push_back({numbered ? statement.getColumn(result.m_width).getInt64() : 0});
        }
        result.m_count = static_cast<qsizetype>(result.m_rows.size());
        return result;
    } catch (const SQLite::Exception& error) {
        throwStoreError(QStringLiteral("The query \"%1\" failed").arg(query.text()), error);
    }
}

Recordset Database::openForAdding(const char* table) {
    const std::string sql = std::string("SELECT * FROM ") + table;
    try {
        Recordset result;
        result.m_shape = m_connection->prepareRows(sql).shape;
        result.m_connection = m_connection;
        result.m_width = static_cast<int>(result.m_shape->fields.size());
        result.m_addOnly = true;
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
        m_connection->run(query.sql(), values);
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
    return found.recordCount() > 0 && sqlite3_db_readonly(m_connection->database().getHandle(), "main") == 0;
}

void Database::appendField(const QString& table, const QString& name, int size) {
    try {
        m_connection->run("ALTER TABLE " + quotedName(table) + " ADD COLUMN " + quotedName(name) + " TEXT(" +
                              std::to_string(size) + ") COLLATE NOCASE",
                          {});
        m_connection->forgetPrepared();
    } catch (const SQLite::Exception& error) {
        throwStoreError(QStringLiteral("The field %1 cannot be added to the table %2").arg(name, table),
                        error);
    }
}

Transaction::Transaction(Database& database)
    : m_connection(database.m_connection) {
    m_connection->begin();
}

Transaction::~Transaction() {
    if (!m_done) {
        m_connection->rollBack();
    }
}

void Transaction::commit() {
    m_connection->commit();
    m_done = true;
}

} // namespace benthor::platform
