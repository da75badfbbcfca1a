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
        if (sqlite3_prepare_v3(handle, sql.constData(), static_cast<int>(sql.size()),
                               SQLITE_PREPARE_PERSISTENT, &statement_, nullptr) != SQLITE_OK) {
            fail(handle);
        }
    }
    ~OneStatement() { sqlite3_finalize(statement_); }
    OneStatement(const OneStatement&) = delete;
    OneStatement& operator=(const OneStatement&) = delete;

    /// The value must stay until the next reset: its bytes are not copied.
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
            result = sqlite3_bind_text64(statement_, place, value.bytes.constData(), size, SQLITE_STATIC,
                                         SQLITE_UTF8);
            break;
        case StoredValue::Type::Blob:
            result = sqlite3_bind_blob64(statement_, place, value.bytes.constData(), size, SQLITE_STATIC);
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

    /// The row that `from` stands on, with other values in some of its places; good until `from` goes on.
    void bindRow(const OneStatement& from, const StoredStatement::Replaced& replaced) {
        const int width = sqlite3_column_count(from.statement_);
        for (int i = 0; i < width; ++i) {
            if (bindCell(i + 1, from.statement_, i) != SQLITE_OK) {
                fail(handle_);
            }
        }
        for (const auto& [place, value] : replaced) {
            bind(static_cast<int>(place) + 1, value);
        }
    }

    /// Ready for its next use. What failed was told by step().
    void reset() {
        rewind();
        sqlite3_clear_bindings(statement_);
    }
    void rewind() { sqlite3_reset(statement_); }

    std::vector<StoredRow> rows() {
        std::vector<StoredRow> rows;
        while (step()) {
            const StoredCells row = cells();
            StoredRow& kept = rows.emplace_back();
            kept.fields.reserve(row.count());
            for (size_t i = 0; i < row.count(); ++i) {
                kept.fields.emplace_back(row.name(i), row.value(i));
            }
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

    /// The row that it stands on.
    StoredCells cells() {
        const int times = sqlite3_stmt_status(statement_, SQLITE_STMTSTATUS_REPREPARE, 0);
        if (names_.empty() || times != prepared_) {
            prepared_ = times;
            names_.clear();
            for (int i = 0; i < sqlite3_column_count(statement_); ++i) {
                names_.emplace_back(sqlite3_column_name(statement_, i));
            }
        }
        return {names_, statement_};
    }

private:
    /// Without a copy of texts, which are most of what a row holds.
    int bindCell(int place, sqlite3_stmt* from, int column) {
        sqlite3_value* const value = sqlite3_column_value(from, column);
        if (sqlite3_value_type(value) == SQLITE_TEXT) {
            const void* const text = sqlite3_value_text(value);
            return sqlite3_bind_text64(statement_, place, static_cast<const char*>(text),
                                       static_cast<sqlite3_uint64>(sqlite3_value_bytes(value)), SQLITE_STATIC,
                                       SQLITE_UTF8);
        }
        return sqlite3_bind_value(statement_, place, value);
    }

    sqlite3* handle_;
    sqlite3_stmt* statement_ = nullptr;
    std::vector<QByteArray> names_; ///< of its columns, shared by all rows
    int prepared_ = 0;              ///< how often the engine had prepared it anew when they were asked for
};

template <class Work> auto asStoreError(const QByteArray& sql, Work&& work) {
    try {
        return work();
    } catch (const SQLite::Exception& error) {
        throwStoreError(QStringLiteral("The query \"%1\" failed").arg(QString::fromUtf8(sql)), error);
    }
}

} // namespace

std::optional<size_t> StoredCells::placeOf(QByteArrayView name) const {
    for (size_t i = 0; i < names_.size(); ++i) {
        if (names_[i].size() == name.size() && names_[i].compare(name, Qt::CaseInsensitive) == 0) {
            return i;
        }
    }
    return std::nullopt;
}

StoredValue::Type StoredCells::type(size_t column) const {
    switch (sqlite3_column_type(statement_, static_cast<int>(column))) {
    case SQLITE_INTEGER:
        return StoredValue::Type::Integer;
    case SQLITE_FLOAT:
        return StoredValue::Type::Real;
    case SQLITE_TEXT:
        return StoredValue::Type::Text;
    case SQLITE_BLOB:
        return StoredValue::Type::Blob;
    default:
        return StoredValue::Type::Null;
    }
}

qint64 StoredCells::integer(size_t column) const {
    return sqlite3_column_int64(statement_, static_cast<int>(column));
}

double StoredCells::real(size_t column) const {
    return sqlite3_column_double(statement_, static_cast<int>(column));
}

QByteArrayView StoredCells::bytes(size_t column) const {
    return bytesIfAny(column).value_or(QByteArrayView());
}

/// Asked for as a text first where it is one: a store may hold its texts in another encoding. The engine
/// looks the field up once; its value may be used so because no other thread has this connection.
std::optional<QByteArrayView> StoredCells::bytesIfAny(size_t column) const {
    sqlite3_value* const value = sqlite3_column_value(statement_, static_cast<int>(column));
    const int type = sqlite3_value_type(value);
    if (type == SQLITE_NULL) {
        return std::nullopt;
    }
    const void* const start = type == SQLITE_TEXT ? sqlite3_value_text(value) : sqlite3_value_blob(value);
    return QByteArrayView(static_cast<const char*>(start), sqlite3_value_bytes(value));
}

StoredValue StoredCells::value(size_t column) const {
    StoredValue value;
    value.type = type(column);
    switch (value.type) {
    case StoredValue::Type::Integer:
        value.integer = integer(column);
        break;
    case StoredValue::Type::Real:
        value.real = real(column);
        break;
    case StoredValue::Type::Text:
    case StoredValue::Type::Blob:
        value.bytes = bytes(column).toByteArray();
        break;
    case StoredValue::Type::Null:
        break;
    }
    return value;
}

StoredValue StoredCells::valueOf(QByteArrayView name) const {
    const std::optional<size_t> place = placeOf(name);
    return place ? value(*place) : StoredValue();
}

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

void StoredStatement::each(const std::vector<StoredValue>& values,
                           const std::function<void(const StoredCells&)>& take) {
    asStoreError(sql_, [&] {
        connection_->startWork();
        const auto ready = qScopeGuard([&] { prepared_->reset(); });
        prepared_->bindAll(values);
        while (prepared_->step()) {
            take(prepared_->cells());
        }
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

int StoredStatement::copyTo(StoredStatement& target, const std::vector<StoredValue>& values,
                            const std::function<void(const StoredCells&, Replaced&)>& replace) {
    return asStoreError(sql_, [&] {
        target.connection_->requireChangeable();
        target.connection_->startWork();
        connection_->startWork();
        const auto ready = qScopeGuard([&] { prepared_->reset(); });
        const auto again = qScopeGuard([&] { target.prepared_->reset(); });
        prepared_->bindAll(values);
        Replaced replaced;
        int rows = 0;
        for (; prepared_->step(); ++rows) {
            passFault("change");
            replaced.clear();
            replace(prepared_->cells(), replaced);
            target.prepared_->rewind(); // each of its values is bound anew
            target.prepared_->bindRow(*prepared_, replaced);
            target.prepared_->run();
        }
        return rows;
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
        const StoredValue file(path);
        OneStatement statement(connection_->database().getHandle(), sql);
        statement.bind(1, file);
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

SteadyReading::SteadyReading(Database& database)
    : rows_(database) {
    rows_.read("SAVEPOINT steady"); // as a transaction, and within one of somebody else's
}

SteadyReading::~SteadyReading() {
    try {
        rows_.read("RELEASE steady");
    } catch (const StoreError&) { // the handle was closed, or a fault ended the reading
    }
}

QByteArray quotedTableName(const QByteArray& name) {
    QByteArray quoted = name;
    return '"' + quoted.replace('"', "\"\"") + '"';
}

} // namespace benthor::platform
