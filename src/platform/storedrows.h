#pragma once

#include "platform/database.h"

#include <QByteArray>
#include <QByteArrayView>

#include <functional>
#include <optional>
#include <utility>
#include <vector>

struct sqlite3_stmt;

namespace benthor::platform {

/// A value as the store holds it: what a recordset reads as text keeps its type here, and every byte.
struct StoredValue {
    enum class Type : quint8 { Null, Integer, Real, Text, Blob };
    Type type = Type::Null;
    qint64 integer = 0;
    double real = 0;
    QByteArray bytes; ///< of a text (UTF-8) or a blob

    StoredValue() = default; ///< Null
    StoredValue(qint64 number)
        : type(Type::Integer)
        , integer(number) {}
    StoredValue(const QString& text)
        : type(Type::Text)
        , bytes(text.toUtf8()) {}
    static StoredValue blob(const QByteArray& bytes);

    bool isNull() const { return type == Type::Null; }
    /// Null reads as an empty text.
    QString text() const { return QString::fromUtf8(bytes); }
    bool operator==(const StoredValue&) const = default;
};

/// One row: its fields by name, in the order of the query.
struct StoredRow {
    std::vector<std::pair<QByteArray, StoredValue>> fields;
    const StoredValue& at(size_t position) const { return fields.at(position).second; }
};

/// The row that a query stands on, as it lies in the store, without a copy: good until the next row.
class StoredCells {
public:
    StoredCells(const std::vector<QByteArray>& names, sqlite3_stmt* statement)
        : names_(names)
        , statement_(statement) {}
    size_t count() const { return names_.size(); }
    const QByteArray& name(size_t column) const { return names_[column]; }
    /// The column of that name, without regard to case.
    std::optional<size_t> placeOf(QByteArrayView name) const;
    StoredValue::Type type(size_t column) const;
    qint64 integer(size_t column) const;
    double real(size_t column) const;
    QByteArrayView bytes(size_t column) const;
    /// The same, nothing where it is Null: of a field that is asked for both, in half the time.
    std::optional<QByteArrayView> bytesIfAny(size_t column) const;
    StoredValue value(size_t column) const;
    /// Of the column of that name; Null where there is none.
    StoredValue valueOf(QByteArrayView name) const;

private:
    const std::vector<QByteArray>& names_;
    sqlite3_stmt* statement_;
};

class Connection;

/// One text of the query language for many uses, as long as the tables keep their form. The store must stay
/// open. As the calls of StoredRows.
class StoredStatement {
public:
    ~StoredStatement();
    StoredStatement(StoredStatement&&) noexcept;

    std::vector<StoredRow> read(const std::vector<StoredValue>& values = {});
    /// Calls `take` with each row. It must not use this text again.
    void each(const std::vector<StoredValue>& values, const std::function<void(const StoredCells&)>& take);
    int change(const std::vector<StoredValue>& values);
    /// Values that stand in a copied row for its own, by column.
    using Replaced = std::vector<std::pair<size_t, StoredValue>>;
    /// Runs `target` once for each row of this text: the row's fields are the target's values in their order,
    /// but for those that `replace` names. Returns how many rows there were.
    int copyTo(StoredStatement& target, const std::vector<StoredValue>& values,
               const std::function<void(const StoredCells& row, Replaced& replaced)>& replace);

private:
    friend class StoredRows;
    class Prepared;
    StoredStatement(std::shared_ptr<Connection> connection, QByteArray sql);
    std::shared_ptr<Connection> connection_;
    std::unique_ptr<Prepared> prepared_;
    QByteArray sql_;
};

/// Rows of an open store as they lie in it, and a second file that changes in one transaction with it. Texts
/// of the query language are literals here, or made of names that were read from the store: values are bound
/// (?1, ?2, ...). Every failure is a StoreError.
class StoredRows {
public:
    explicit StoredRows(Database& database);

    std::vector<StoredRow> read(const QByteArray& sql, const std::vector<StoredValue>& values = {});
    /// Returns how many rows it changed.
    int change(const QByteArray& sql, const std::vector<StoredValue>& values = {});
    qint64 lastRowNumber();
    StoredStatement prepare(const QByteArray& sql);

    /// Makes the tables of the file at `path`, which must be there and may be empty, known as name.table. No
    /// transaction may be open. What both change is changed in both or in neither, even where the process
    /// dies.
    void attach(const QString& path, const char* name);
    /// Leaves the file again; nothing where it is not attached.
    void detach(const char* name) noexcept;

private:
    class Texts;
    std::shared_ptr<Connection> connection_;
    std::shared_ptr<Texts> texts_; ///< gone with the last copy of this, which must not outlive the open store
};

/// All reads of this scope see the store as it was at the first of them, and none has to ask for its file's
/// lock again. Another program that wants to change the store waits for the end of it. StoreError.
class SteadyReading {
public:
    explicit SteadyReading(Database& database);
    ~SteadyReading();
    SteadyReading(const SteadyReading&) = delete;
    SteadyReading& operator=(const SteadyReading&) = delete;

private:
    StoredRows rows_;
};

/// `name` in the quotes of the query language.
QByteArray quotedTableName(const QByteArray& name);

} // namespace benthor::platform
