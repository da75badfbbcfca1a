#pragma once

#include "store/jet/pipe.h"
#include "store/readjet/jetpages.h"

#include <functional>
#include <optional>
#include <vector>

#include <mdbtools.h>

namespace benthor::readjet {

struct Column {
    std::string name;
    store::pipe::Kind kind = store::pipe::Kind::Text;
    std::uint32_t size = 0; ///< most characters of a text; 0 where nothing limits it
};

/// A table of the file, as the library reads it.
struct Table {
    std::string name;
    MdbTableDef* definition = nullptr;
    std::uint32_t rows = 0; ///< by our own reading of its definition page
    std::vector<Column> columns;
};

/// The tables of a Jet file and their rows, read with the library. What the library passes over in silence
/// (a row that it cannot take apart, an empty text, a letter that it cannot decode) is looked at here. A
/// Fault says what is wrong.
class JetTables {
public:
    using Value = std::optional<std::string>;
    using TakeRow = std::function<void(const std::vector<Value>& row)>;

    explicit JetTables(const std::string& path);
    ~JetTables();
    JetTables(const JetTables&) = delete;
    JetTables& operator=(const JetTables&) = delete;

    const std::vector<Table>& tables() const { return tables_; }
    /// Tables that lie in another file.
    const std::vector<std::string>& elsewhere() const { return elsewhere_; }

    /// Hands over the rows of a table. Returns how many there were.
    std::uint64_t readRows(const Table& table, const TakeRow& take);

private:
    void readCatalog();
    Table readTable(MdbCatalogEntry* entry);
    Column columnOf(const Table& table, const MdbColumn& column) const;
    void rowAt(const Table& table, std::uint32_t page, const RowPlace& place, std::vector<Value>& row);
    void rowElsewhere(const Table& table, std::uint32_t page, const RowPlace& place, std::vector<Value>& row);
    Value valueOf(const MdbColumn& column, const MdbField& field);
    std::string textOf(std::string_view bytes) const;

    JetPages pages_;
    MdbHandle* handle_ = nullptr;
    std::vector<Table> tables_;
    std::vector<std::string> elsewhere_;
};

} // namespace benthor::readjet
