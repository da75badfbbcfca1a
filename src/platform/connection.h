#pragma once

#include "platform/query.h"
#include "platform/storeaccess.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <chrono>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace benthor::platform {

/// What the rows of a query look like.
struct RecordsetShape {
    struct Field {
        QString name;
        bool dateTime = false;
    };
    std::vector<Field> fields;
    std::string table; ///< the table that changes go to; empty when the rows can only be read
};

/// A prepared text, kept for the next use of the same text.
struct PreparedQuery {
    SQLite::Statement statement;
    std::shared_ptr<const RecordsetShape> shape;
};

/// The engine's handle behind a Database and the recordsets that came from it. No header but those of this
/// folder's .cpp files includes this.
class Connection {
public:
    Connection() = default;
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    void open(const QString& path, StoreAccess access = StoreAccess::Change);
    void close();
    bool isOpen() const { return database_ != nullptr; }
    QString path() const { return path_; }
    /// Why it can only be read, for the user; empty when it can be changed.
    QString readOnlyReason() const { return readOnlyReason_; }
    void setReadOnly(const QString& reason);
    /// Whether another program that holds the store is waited for; before open(), too. True at first.
    void setPatient(bool patient) { patient_ = patient; }
    /// Whether no other program keeps it from being changed; `wait`: for a while.
    bool canChange(bool wait);
    SQLite::Database& database();
    /// The number of this opening; no other one in the process has it.
    quint64 opening() const { return opening_; }

    /// The prepared form of a query that returns rows, its row number behind its last field where rows can be
    /// changed.
    PreparedQuery& prepareRows(const std::string& sql);
    /// Runs a text that returns no rows. Returns how many rows it changed.
    int run(const std::string& sql, const std::vector<Value>& values);
    /// After a table has changed its form.
    void forgetPrepared();

    void begin();
    void commit();
    void rollBack(); ///< of a scope that ends without commit

    /// A statement begins: the way out of one that never ends counts from here.
    void startWork();
    /// StoreError where it can only be read.
    void requireChangeable() const;

private:
    void makeReady();
    static int lockedAgain(void* self, int times);
    static int worksOn(void* self);

    StoreCopy copy_; ///< what is read in the store's stead; outlives database_
    std::unique_ptr<SQLite::Database> database_;
    std::unordered_map<std::string, PreparedQuery> prepared_;
    QString path_;
    std::string place_; ///< the file itself, links followed
    QString readOnlyReason_;
    bool foreign_ = false; ///< opened for a look: a statement may not work without end
    bool patient_ = true;  ///< waits for another program that holds the store
    std::chrono::steady_clock::time_point workBegan_;
    quint64 opening_ = 0;
    int depth_ = 0;       ///< scopes that are open, one within the other
    bool broken_ = false; ///< a scope within the outermost ended without commit
};

/// Makes a prepared text ready for its next use, however the present one ends.
class StatementUse {
public:
    explicit StatementUse(SQLite::Statement& statement)
        : statement_(statement) {}
    ~StatementUse() {
        statement_.tryReset();
        statement_.clearBindings();
    }
    StatementUse(const StatementUse&) = delete;
    StatementUse& operator=(const StatementUse&) = delete;

private:
    SQLite::Statement& statement_;
};

/// The store is data and nothing else: of what it holds nothing runs, and the engine looks at its pages
/// before it follows them. For every handle, before its first statement.
void protect(SQLite::Database& database);

/// The engine's failure as a StoreError.
[[noreturn]] void throwStoreError(const QString& what, const SQLite::Exception& error);

/// A step that the test's hook lets fail, as the engine would report it.
void passFault(std::string_view step);

void bindValue(SQLite::Statement& statement, int index, const Value& value);

/// `name` in the quotes of the query language.
std::string quotedName(const QString& name);

} // namespace benthor::platform
