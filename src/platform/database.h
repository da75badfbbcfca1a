#pragma once

#include "platform/recordset.h"
#include "platform/storeaccess.h"
#include "platform/storestamp.h"

#include <QStringList>

namespace benthor::platform {

/// One store file, held open. Changes go through a rollback journal and are on the disk when the call that
/// made them returns (or when the Transaction around them is committed). Every failure is a StoreError.
class Database {
public:
    Database();
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;
    /// The two change places.
    Database& operator=(Database&& other) noexcept {
        connection_.swap(other.connection_);
        return *this;
    }

    /// Opens the store at `path`; one that was open is closed first. A missing file is an error and is never
    /// created.
    void open(const QString& path, StoreAccess access = StoreAccess::Change);
    /// Recordsets read from it stay readable. An unfinished change is rolled back.
    void close();
    bool isOpen() const;
    QString path() const; ///< empty while closed
    /// Why the open store can only be read, for the user; empty when it can be changed. Every change is then
    /// a StoreError that says so.
    QString readOnlyReason() const;
    /// From now on the open store is only read; an empty reason takes that back.
    void setReadOnly(const QString& reason);
    /// Whether no other program holds the open store back from being changed.
    bool canChangeNow();
    /// The same after waiting for it, as every change would.
    bool waitToChange();

    /// Where the store stands now, within a reading where it stood at its begin; it costs no row. Nothing is
    /// known of a store that is closed or fails.
    StoreStamp stamp();

    /// The rows of a query, the first one current.
    Recordset openRecordset(const Query& query);
    /// A recordset of all fields of `table` that reads no rows and serves only to add some.
    Recordset openForAdding(const char* table);
    /// A query that returns no rows.
    void execute(const Query& query);

    int fieldCount(const QString& table);
    QStringList fieldNames(const QString& table);
    /// Whether fields can be added to it: it is a table, and the store can be written.
    bool updatable(const QString& table);
    /// Adds a text field, Null in every row there is.
    void appendField(const QString& table, const QString& name, int size);

private:
    friend class Transaction;
    friend class StoredRows;
    std::shared_ptr<Connection> connection_;
};

/// All changes of a scope together, or none: rolled back at its end unless committed. Scopes within a scope
/// join the outer one; one of them that ends without commit() makes the outer commit() fail.
class Transaction {
public:
    explicit Transaction(Database& database);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    void commit();

private:
    std::shared_ptr<Connection> connection_;
    bool done_ = false;
};

} // namespace benthor::platform
