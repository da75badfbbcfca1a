#include "store/readjet/jettables.h"

#include "store/jet/utf8.h"
#include "store/readjet/jettext.h"
#include "store/readjet/jetvalues.h"

#include <array>

namespace benthor::readjet {

using store::pipe::Kind;

namespace {

constexpr std::uint32_t kCatalogPage = 2;

template <class Item> Item* itemAt(const GPtrArray* array, unsigned index) {
    return static_cast<Item*>(g_ptr_array_index(array, index));
}

/// A name as the library gives it, cut where it is too long for that.
std::string nameOf(const char* name) {
    if (*name == '\0' || !store::isUtf8(name)) {
        throw Fault("The file is damaged: the name of a table or of a field cannot be decoded.");
    }
    return name;
}

std::string inTable(const Table& table) {
    return " (table \"" + table.name + "\")";
}

} // namespace

JetTables::JetTables(const std::string& path)
    : pages_(path)
    , handle_(mdb_open(path.c_str(), MDB_NOFLAGS)) {
    if (handle_ == nullptr) {
        throw Fault("The file cannot be read: its first page is not that of a Jet file.");
    }
    if (handle_->f->db_key != 0) {
        throw Fault("The file is encrypted.");
    }
    if (static_cast<unsigned char>(pages_.page(kCatalogPage)[0]) != MDB_PAGE_TABLE) {
        throw Fault("The file is encrypted or damaged: the list of its tables cannot be read.");
    }
    readCatalog();
}

JetTables::~JetTables() {
    for (const Table& table : tables_) {
        mdb_free_tabledef(table.definition);
    }
    if (handle_ != nullptr) {
        mdb_close(handle_);
    }
}

void JetTables::readCatalog() {
    const GPtrArray* const catalog = mdb_read_catalog(handle_, MDB_ANY);
    if (catalog == nullptr) {
        throw Fault("The file is damaged: the list of its tables cannot be read.");
    }
    bool counted = false;
    for (unsigned i = 0; i < catalog->len; ++i) {
        auto* const entry = itemAt<MdbCatalogEntry>(catalog, i);
        if (entry->object_type == MDB_LINKED_TABLE) {
            elsewhere_.push_back(nameOf(entry->object_name));
        } else if (entry->object_type == MDB_TABLE && entry->table_pg == kCatalogPage) {
            // The list of tables is a table, too: one that lost a row has lost a table.
            Table list = readTable(entry);
            const std::uint64_t found = readRows(list, [](const std::vector<Value>&) {});
            mdb_free_tabledef(list.definition);
            if (found != list.rows) {
                throw Fault("The file is damaged: the list of its tables has " + std::to_string(list.rows) +
                            " entries by its own count, and " + std::to_string(found) + " were found.");
            }
            counted = true;
        } else if (entry->object_type == MDB_TABLE && mdb_is_user_table(entry) != 0) {
            tables_.push_back(readTable(entry));
        }
    }
    if (!counted) {
        throw Fault("The file is damaged: the list of its tables does not name itself.");
    }
}

Table JetTables::readTable(MdbCatalogEntry* entry) {
    Table table;
    table.name = nameOf(entry->object_name);
    table.rows = pages_.rowsOf(static_cast<std::uint32_t>(entry->table_pg));
    table.definition = mdb_read_table(entry);
    if (table.definition == nullptr || mdb_read_columns(table.definition) == nullptr ||
        table.definition->columns->len != table.definition->num_cols) {
        throw Fault("The file is damaged: the definition of a table cannot be read" + inTable(table) + ".");
    }
    for (unsigned i = 0; i < table.definition->num_cols; ++i) {
        table.columns.push_back(columnOf(table, *itemAt<MdbColumn>(table.definition->columns, i)));
    }
    return table;
}

Column JetTables::columnOf(const Table& table, const MdbColumn& column) const {
    const std::optional<Kind> kind = kindOf(column.col_type);
    if (!kind) {
        throw Fault("The field \"" + std::string(column.name) + "\" is of a kind that is not known (" +
                    std::to_string(column.col_type) + ")" + inTable(table) + ".");
    }
    std::uint32_t size = 0;
    if (column.col_type == MDB_TEXT && column.col_size > 0) {
        size = static_cast<std::uint32_t>(column.col_size) / (pages_.isJet3() ? 1 : 2);
    }
    return {nameOf(column.name), *kind, size};
}

std::uint64_t JetTables::readRows(const Table& table, const TakeRow& take) {
    std::uint64_t rows = 0;
    std::vector<Value> row(table.columns.size());
    mdb_rewind_table(table.definition);
    try {
        while (mdb_read_next_dpg(table.definition) != 0) {
            const std::uint32_t page = table.definition->cur_phys_pg;
            const std::uint32_t slots = pages_.slotsOf(page);
            for (std::uint32_t slot = 0; slot < slots; ++slot) {
                const RowPlace place = pages_.placeOf(page, slot);
                if (place.deleted) {
                    continue;
                }
                if (place.elsewhere) {
                    rowElsewhere(table, page, place, row);
                } else {
                    rowAt(table, page, place, row);
                }
                take(row);
                ++rows;
            }
        }
    } catch (const Fault& fault) {
        throw Fault(fault.what() + inTable(table));
    }
    return rows;
}

/// A row that has outgrown its page lies on another one, whose slot calls it deleted, so that it is found
/// from here alone.
void JetTables::rowElsewhere(const Table& table, std::uint32_t page, const RowPlace& place,
                             std::vector<Value>& row) {
    const std::uint32_t pointer = number32(pages_.page(page).substr(place.start, place.size), 0);
    const std::uint32_t other = JetPages::pageOf(pointer);
    const RowPlace there = pages_.placeOf(other, JetPages::slotOf(pointer));
    if (there.elsewhere) {
        throw Fault("The file is damaged: a row is not where it should be.");
    }
    rowAt(table, other, there, row);
    mdb_read_pg(handle_, page);
}

void JetTables::rowAt(const Table& table, std::uint32_t page, const RowPlace& place,
                      std::vector<Value>& row) {
    if (pages_.ownerOf(page) != table.definition->entry->table_pg) {
        throw Fault("The file is damaged: a page belongs to another table.");
    }
    if (mdb_read_pg(handle_, page) == 0) {
        throw Fault("The file cannot be read.");
    }
    std::array<MdbField, MDB_MAX_COLS> fields{};
    const int found =
        mdb_crack_row(table.definition, static_cast<int>(place.start), place.size, fields.data());
    if (found < 0 || static_cast<std::size_t>(found) > row.size()) {
        throw Fault("The file is damaged: a row cannot be taken apart (page " + std::to_string(page) + ").");
    }
    for (std::size_t i = 0; i < row.size(); ++i) {
        const MdbField& field = fields.at(i);
        const auto& column = *itemAt<MdbColumn>(table.definition->columns, static_cast<unsigned>(i));
        const bool inRow = field.start >= static_cast<int>(place.start) && field.siz >= 0 &&
                           field.start + field.siz <= static_cast<int>(place.start + place.size);
        if (field.is_null == 0 && column.col_type != MDB_BOOL && !inRow) {
            throw Fault("The file is damaged: a field lies outside its row (page " + std::to_string(page) +
                        ").");
        }
        try {
            row[i] = valueOf(column, field);
        } catch (const Fault& fault) {
            throw Fault(fault.what() + std::string(" Field \"") + column.name + "\"");
        }
    }
}

JetTables::Value JetTables::valueOf(const MdbColumn& column, const MdbField& field) {
    if (column.col_type == MDB_BOOL) { // its bit among the Nulls is its value
        return std::string(1, static_cast<char>(field.is_null != 0 ? 0 : 1));
    }
    if (field.is_null != 0) {
        return std::nullopt;
    }
    const std::string_view bytes(reinterpret_cast<const char*>(handle_->pg_buf) + field.start,
                                 static_cast<std::size_t>(field.siz));
    switch (column.col_type) {
    case MDB_TEXT:
        return textOf(bytes);
    case MDB_MEMO:
        return textOf(pages_.longValue(bytes));
    case MDB_OLE:
        return pages_.longValue(bytes);
    case MDB_NUMERIC: {
        requireSize(bytes, MDB_NUMERIC);
        char* const made = mdb_numeric_to_string(handle_, field.start, column.col_scale, column.col_prec);
        std::string text(made);
        g_free(made);
        return text;
    }
    default:
        return plainValue(bytes, column.col_type);
    }
}

std::string JetTables::textOf(std::string_view bytes) const {
    std::optional<std::string> text =
        pages_.isJet3() ? textOfJet3(bytes, handle_->f->code_page) : textOfJet4(bytes);
    if (!text) {
        throw Fault("The file is damaged: a text cannot be decoded.");
    }
    return std::move(*text);
}

} // namespace benthor::readjet
