#pragma once

#include "platform/query.h"

#include <memory>
#include <string_view>
#include <utility>

namespace benthor::platform {

class Connection;
struct RecordsetShape;

/// The rows of one query, read when it was opened, with one of them current. Nothing in the store stays busy
/// or locked for it. Rows of a query "SELECT * FROM table ..." can be changed, added and deleted; a value
/// that is set is always bound, never joined into a text. What does not work (no current row, no such field,
/// a row that someone else has deleted meanwhile) is a StoreError. Field positions count from 0, names are
/// matched without regard to case.
class Recordset {
public:
    Recordset() = default; ///< closed: no rows, no fields

    bool isOpen() const { return m_shape != nullptr; }
    void close() { *this = Recordset(); }

    bool bof() const { return m_row < 0 || m_count == 0; }
    bool eof() const { return m_row >= static_cast<qsizetype>(m_rows.size()); }
    void moveFirst();
    void moveLast();
    void moveNext(); ///< from the last row to eof
    qsizetype recordCount() const { return m_count; }

    int fieldCount() const;
    QString fieldName(int position) const;
    int fieldPosition(QStringView name) const; ///< -1 where there is none
    /// Declared as a date and time: its value reads with Value::dateTime().
    bool isDateTime(int position) const;

    /// Of the current row.
    Value value(int position) const;
    Value value(QStringView name) const;
    /// The same without a copy, for routines that read many rows: nothing for Null. Holds until the recordset
    /// changes.
    std::optional<std::string_view> utf8(int position) const {
        const Cell& cell = cellAt(position);
        if (cell.length < 0) {
            return std::nullopt;
        }
        return std::string_view(m_text.data() + cell.offset, static_cast<size_t>(cell.length));
    }

    void addNew(); ///< begins a new row; update() puts it in, behind the others
    void edit();   ///< begins a change of the current row
    void set(int position, const Value& value);
    void set(QStringView name, const Value& value);
    /// Writes what was set since addNew() or edit(); fields that were not set keep their value. An edit
    /// without a set value writes nothing. Moving on without update() drops the change.
    void update();
    /// Afterwards there is no current row until the next move; moveNext() goes to the row behind it.
    void deleteCurrent();

private:
    friend class Database;
    enum class Mode { Read, Add, Edit };
    struct Cell {
        size_t offset = 0;
        int length = -1; ///< -1 is Null
    };
    struct Row {
        qint64 id = 0;
        bool deleted = false;
    };

    const Cell& cellAt(int position) const {
        if (m_row < 0 || m_row >= static_cast<qsizetype>(m_rows.size()) ||
            m_rows[static_cast<size_t>(m_row)].deleted || position < 0 || position >= m_width) {
            failReading(position);
        }
        return m_cells[static_cast<size_t>(m_row) * static_cast<size_t>(m_width) +
                       static_cast<size_t>(position)];
    }
    [[noreturn]] void failReading(int position) const;
    int positionOf(QStringView name) const;
    void requireChangeable() const;
    void requireRow() const;
    Cell keepText(std::string_view text);
    void keepChange();
    void insertRow();
    void changeRow();
    void appendRowCondition(std::string& sql, std::vector<Value>& values) const;

    std::shared_ptr<Connection> m_connection;
    std::shared_ptr<const RecordsetShape> m_shape;
    std::string m_text; ///< the texts of all cells, one behind the other
    std::vector<Cell> m_cells;
    std::vector<Row> m_rows;
    int m_width = 0;
    qsizetype m_row = 0;
    qsizetype m_count = 0; ///< rows that are not deleted
    bool m_addOnly = false;
    Mode m_mode = Mode::Read;
    std::vector<std::pair<int, Value>> m_changes;
};

} // namespace benthor::platform
