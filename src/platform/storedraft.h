#pragma once

#include "platform/query.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace benthor::platform {

/// A new store that is written from its first row to its last in one transaction, at a place of its own. It
/// is no store before commit(), and a crash leaves a file that nobody uses: what makes it one is that it is
/// moved to its place. Every failure is a StoreError.
class StoreDraft {
public:
    /// Called while the engine works. False ends the work in hand, which then fails.
    using GoOn = std::function<bool()>;

    /// A value for a row: Null, a text (UTF-8), or bytes that no column turns into something else.
    struct Cell {
        enum class Form : std::uint8_t { Null, Text, Bytes };
        Form form = Form::Null;
        std::string_view bytes; ///< must last until the row is inserted
    };

    /// Makes the file, where none may be, for its owner alone.
    explicit StoreDraft(const QString& path, GoOn goOn = {});
    ~StoreDraft();
    StoreDraft(const StoreDraft&) = delete;
    StoreDraft& operator=(const StoreDraft&) = delete;

    /// Texts that return no rows.
    void run(const std::string& sql);
    /// Names of the fields of a table, in their order; none where there is no such table.
    std::vector<std::string> fieldNames(const std::string& table);

    /// From now on addRow() runs this text, which inserts a row of ?1, ?2, ...
    void rowsGo(const std::string& insert);
    void addRow(const std::vector<Cell>& cells);

    void commit();
    /// Reads the committed store from end to end, and fails with what is wrong with its structure.
    void checkStructure();
    std::uint64_t countRows(const std::string& table);

private:
    struct Close {
        void operator()(sqlite3* database) const;
        void operator()(sqlite3_stmt* statement) const;
    };
    using Statement = std::unique_ptr<sqlite3_stmt, Close>;

    Statement prepare(const std::string& sql);
    void require(int code) const;
    static int working(void* self);

    QString path_;
    GoOn goOn_;
    std::unique_ptr<sqlite3, Close> database_;
    Statement insert_;
};

/// `name` between the quotes of the query language.
std::string inQuotes(std::string_view name);

} // namespace benthor::platform
