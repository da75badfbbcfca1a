#include "platform/storedrows.h"

#include "platform/connection.h"

#include <QScopeGuard>

#include <map>
#include <sqlite3.h>

namespace benthor::platform {

namespace {

[[noreturn]] void fail(sqlite3* handle) {
    throw SQLite::Exception(handle);
}

/// A text of the query language, ready for use. Where a table has changed its form since, the engine prepares
/// it anew by itself; so the number and names of its columns are asked for with the rows.
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

    /// -1 where there is none.
    int columnNamed(const char* name) const {
        for (int i = 0; i < sqlite3_column_count(statement_); ++i) {
            if (qstricmp(sqlite3_column_name(statement_, i), name) == 0) {
                return i;
            }
        }
        return -1;
    }

    /// The row that `from` stands on, with another value in one of its places.
    void bindRow(const OneStatement& from, int place, const StoredValue& replaced) {
        for (int i = 0; i < sqlite3_column_count(from.statement_); ++i) {
            if (i == place) {
                bind(i + 1, replaced);
            } else if (sqlite3_bind_value(statement_, i + 1, sqlite3_column_value(from.statement_, i)) !=
                       SQLITE_OK) {
                fail(handle_);
            }
        }
    }

    /// Ready for its next use. What failed was told by step().
    void reset() {
        sqlite3_reset(statement_);
        sqlite3_clear_bindings(statement_);
    }

    std::vector<StoredRow> rows() {
        std::vector<StoredRow> rows;
        std::vector<QByteArray> names; // shared by all rows
        while (step()) {
            if (names.empty()) {
                names = columnNames();
            }
            rows.push_back(row(names));
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

    std::vector<QByteArray> columnNames() const {
        const int width = sqlite3_column_count(statement_);
        std::vector<QByteArray> names;
        names.reserve(static_cast<size_t>(width));
        for (int i = 0; i < width; ++i) {
            names.emplace_back(sqlite3_column_name(statement_, i));
        }
        return names;
    }

    StoredRow row(const std::vector<QByteArray>& names) const {
        StoredRow row;
        row.fields.reserve(names.size());
        for (size_t i = 0; i < names.size(); ++i) {
            row.fields.emplace_back(names[i], value(static_cast<int>(i)));
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

/// The texts in use, prepared. Those that are made of names could be many: then all go.
class StoredRows::Texts {
public:
    OneStatement& ready(sqlite3* handle, const QByteArray& sql) {
        constexpr size_t kMost = 64;
        if (handle != handle_ || prepared_.size() >= kMost) {
            prepared_.clear();
            handle_ = handle;
        }
        std::unique_ptr<OneStatement>& statement = prepared_[sql];
        if (!statement) {
            try {
                statement = std::make_unique<OneStatement>(handle, sql);
            } catch (...) {
                prepared_.erase(sql);
                throw;
            }
        }
        return *statement;
    }
    void forget() { prepared_.clear(); }

private:
    sqlite3* handle_ = nullptr;
    std::map<QByteArray, std::unique_ptr<OneStatement>> prepared_;
};

StoredRows::StoredRows(Database& database)
    : connection_(database.connection_)
    , texts_(std::make_shared<Texts>()) {}

std::vector<StoredRow> StoredRows::read(const QByteArray& sql, const std::vector<StoredValue>& values) {
    return asStoreError(sql, [&] {
        connection_->startWork();
        OneStatement& statement = texts_->ready(connection_->database().getHandle(), sql);
        const auto again = qScopeGuard([&] { statement.reset(); });
        statement.bindAll(values);
        return statement.rows();
    });
}

int StoredRows::change(const QByteArray& sql, const std::vector<StoredValue>& values) {
    return asStoreError(sql, [&] {
        connection_->requireChangeable();
        passFault("change");
        connection_->startWork();
        OneStatement& statement = texts_->ready(connection_->database().getHandle(), sql);
        const auto again = qScopeGuard([&] { statement.reset(); });
        statement.bindAll(values);
        return statement.run();
    });
}

class StoredStatement::Prepared : public OneStatement {
public:
    using OneStatement::OneStatement;
};

StoredStatement::StoredStatement(std::shared_ptr<Connection> connection, QByteArray sql)
    : connection_(std::move(connection))
    , sql_(std::move(sql)) {
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

void StoredStatement::copyTo(StoredStatement& target, const std::vector<StoredValue>& values,
                             const char* column, const StoredValue& replaced) {
    asStoreError(sql_, [&] {
        target.connection_->requireChangeable();
        target.connection_->startWork();
        connection_->startWork();
        const auto ready = qScopeGuard([&] { prepared_->reset(); });
        prepared_->bindAll(values);
        const int place = prepared_->columnNamed(column);
        while (prepared_->step()) {
            passFault("change");
            const auto again = qScopeGuard([&] { target.prepared_->reset(); });
            target.prepared_->bindRow(*prepared_, place, replaced);
            target.prepared_->run();
        }
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
    texts_->forget();
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
