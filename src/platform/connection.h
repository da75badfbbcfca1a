#pragma once

#include "platform/query.h"

#include <SQLiteCpp/SQLiteCpp.h>

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
    void open(const QString& path);
    void close();
    bool isOpen() const { return database_ != nullptr; }
    QString path() const { return path_; }
    SQLite::Database& database();

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

private:
    std::unique_ptr<SQLite::Database> database_;
    std::unordered_map<std::string, PreparedQuery> prepared_;
    QString path_;
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

/// The engine's failure as a StoreError.
[[noreturn]] void throwStoreError(const QString& what, const SQLite::Exception& error);

/// A step that the test's hook lets fail, as the engine would report it.
void passFault(std::string_view step);

void bindValue(SQLite::Statement& statement, int index, const Value& value);

/// `name` in the quotes of the query language.
std::string quotedName(const QString& name);

} // namespace benthor::platform
