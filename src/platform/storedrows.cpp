#include "platform/storedrows.h"

#include "platform/connection.h"

#include <QScopeGuard>

#include <sqlite3.h>

namespace benthor::platform {

namespace {

[[noreturn]] void fail(sqlite3* handle) {
    throw SQLite::Exception(handle);
}

/// A statement for one use. The shape of a table may change between two uses of a text, and a prepared one
/// keeps the old one in mind.
class OneStatement {
public:
    OneStatement(sqlite3* handle, const QByteArray& sql)
        : handle_(handle) {
        if (sqlite3_prepare_v2(handle, sql.constData(), static_cast<int>(sql.size()), &statement_, nullptr) !=
            SQLITE_OK) {
            fail(handle);
        }
    }
    ~OneStatement() { sqlite3_finalize(statement_); }
    OneStatement(const OneStatement&) = delete;
    OneStatement& operator=(const OneStatement&) = delete;

    void bind(int place, const StoredValue& value) {
        const auto size = static_cast<sqlite3_uint64>(value.bytes.size());
        int result = SQLITE_OK;
        switch (value.type) {
        case StoredValue::Type::Null:
            result = sqlite3_bind_null(statement_, place);
            break;
        case StoredValue::Type::Integer:
            result = sqlite3_bind_int64(statement_, place, value.integer);
            break;
        case StoredValue::Type::Real:
            result = sqlite3_bind_double(statement_, place, value.real);
            break;
        case StoredValue::Type::Text:
            result = sqlite3_bind_text64(statement_, place, value.bytes.constData(), size, SQLITE_TRANSIENT,
                                         SQLITE_UTF8);
            break;
        case StoredValue::Type::Blob:
            result = sqlite3_bind_blob64(statement_, place, value.bytes.constData(), size, SQLITE_TRANSIENT);
            break;
        }
        if (result != SQLITE_OK) {
            fail(handle_);
        }
    }

    void bindAll(const std::vector<StoredValue>& values) {
        for (size_t i = 0; i < values.size(); ++i) {
            bind(static_cast<int>(i) + 1, values[i]);
        }
    }

    /// Ready for its next use. What failed was told by step().
    void reset() {
        sqlite3_reset(statement_);
        sqlite3_clear_bindings(statement_);
    }

    std::vector<StoredRow> rows() {
        std::vector<StoredRow> rows;
        while (step()) {
            rows.push_back(row());
        }
        return rows;
    }

    int run() {
        while (step()) {
        }
        return sqlite3_changes(handle_);
    }

    bool step() {
        const int result = sqlite3_step(statement_);
        if (result != SQLITE_ROW && result != SQLITE_DONE) {
            fail(handle_);
        }
        return result == SQLITE_ROW;
    }

    StoredRow row() const {
        StoredRow row;
        const int width = sqlite3_column_count(statement_);
        row.fields.reserve(static_cast<size_t>(width));
        for (int i = 0; i < width; ++i) {
            row.fields.emplace_back(sqlite3_column_name(statement_, i), value(i));
        }
        return row;
    }

private:
    StoredValue value(int column) const {
        StoredValue value;
        const auto bytes = [&](const void* start) {
            return QByteArray(static_cast<const char*>(start), sqlite3_column_bytes(statement_, column));
        };
        switch (sqlite3_column_type(statement_, column)) {
        case SQLITE_INTEGER:
            value.type = StoredValue::Type::Integer;
            value.integer = sqlite3_column_int64(statement_, column);
            break;
        case SQLITE_FLOAT:
            value.type = StoredValue::Type::Real;
            value.real = sqlite3_column_double(statement_, column);
            break;
        case SQLITE_TEXT:
            value.type = StoredValue::Type::Text;
            value.bytes = bytes(sqlite3_column_text(statement_, column));
            break;
        case SQLITE_BLOB:
            value.type = StoredValue::Type::Blob;
            value.bytes = bytes(sqlite3_column_blob(statement_, column));
            break;
        default:
            break;
        }
        return value;
    }

    sqlite3* handle_;
    sqlite3_stmt* statement_ = nullptr;
};

template <class Work> auto asStoreError(const QByteArray& sql, Work&& work) {
    try {
        return work();
    } catch (const SQLite::Exception& error) {
        throwStoreError(QStringLiteral("The query \"%1\" failed").arg(QString::fromUtf8(sql)), error);
    }
}

} // namespace

StoredValue StoredValue::blob(const QByteArray& bytes) {
    StoredValue value;
    value.type = Type::Blob;
    value.bytes = bytes;
    return value;
}

StoredRows::StoredRows(Database& database)
    : connection_(database.connection_) {}

std::vector<StoredRow> StoredRows::read(const QByteArray& sql, const std::vector<StoredValue>& values) {
    return asStoreError(sql, [&] {
        connection_->startWork();
        OneStatement statement(connection_->database().getHandle(), sql);
        statement.bindAll(values);
        return statement.rows();
    });
}

int StoredRows::change(const QByteArray& sql, const std::vector<StoredValue>& values) {
    return asStoreError(sql, [&] {
        connection_->requireChangeable();
        passFault("change");
        connection_->startWork();
        OneStatement statement(connection_->database().getHandle(), sql);
        statement.bindAll(values);
        return statement.run();
    });
}

class StoredStatement::Prepared : public OneStatement {
public:
    using OneStatement::OneStatement;
};

StoredStatement::StoredStatement(std::shared_ptr<Connection> connection, const QByteArray& sql)
    : connection_(std::move(connection))
    , sql_(sql) {
    asStoreError(sql_, [&] {
        connection_->startWork();
        prepared_ = std::make_unique<Prepared>(connection_->database().getHandle(), sql_);
    });
}

StoredStatement::~StoredStatement() = default;
StoredStatement::StoredStatement(StoredStatement&&) noexcept = default;

std::vector<StoredRow> StoredStatement::read(const std::vector<StoredValue>& values) {
    return asStoreError(sql_, [&] {
        connection_->startWork();
        const auto ready = qScopeGuard([&] { prepared_->reset(); });
        prepared_->bindAll(values);
        return prepared_->rows();
    });
}

int StoredStatement::change(const std::vector<StoredValue>& values) {
    return asStoreError(sql_, [&] {
        connection_->requireChangeable();
        passFault("change");
        connection_->startWork();
        const auto ready = qScopeGuard([&] { prepared_->reset(); });
        prepared_->bindAll(values);
        return prepared_->run();
    });
}

StoredStatement StoredRows::prepare(const QByteArray& sql) {
    return {connection_, sql};
}

qint64 StoredRows::lastRowNumber() {
    return connection_->database().getLastInsertRowid();
}

void StoredRows::attach(const QString& path, const char* name) {
    const QByteArray sql = QByteArray("ATTACH DATABASE ?1 AS ") + name;
    asStoreError(sql, [&] {
        connection_->requireChangeable();
        passFault("attach");
        if (sqlite3_get_autocommit(connection_->database().getHandle()) == 0) {
            throw StoreError(QStringLiteral("A second file cannot join a transaction that is under way."));
        }
        connection_->startWork();
        OneStatement statement(connection_->database().getHandle(), sql);
        statement.bind(1, StoredValue(path));
        statement.step();
    });
    try {
        // As the store itself is held (see Connection::open).
        for (const char* pragma : {".journal_mode = DELETE", ".synchronous = EXTRA", ".secure_delete = ON"}) {
            read(QByteArray("PRAGMA ") + name + pragma);
        }
    } catch (const StoreError&) {
        detach(name);
        throw;
    }
}

void StoredRows::detach(const char* name) noexcept {
    if (connection_->isOpen()) {
        const QByteArray sql = QByteArray("DETACH DATABASE ") + name;
        sqlite3_exec(connection_->database().getHandle(), sql.constData(), nullptr, nullptr, nullptr);
    }
}

QByteArray quotedTableName(const QByteArray& name) {
    QByteArray quoted = name;
    return '"' + quoted.replace('"', "\"\"") + '"';
}

} // namespace benthor::platform
