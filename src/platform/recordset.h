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

    bool isOpen() const { return shape_ != nullptr; }
    void close() { *this = Recordset(); }

    bool bof() const { return row_ < 0 || count_ == 0; }
    bool eof() const { return row_ >= static_cast<qsizetype>(rows_.size()); }
    void moveFirst();
    void moveLast();
    void moveNext(); ///< from the last row to eof
    qsizetype recordCount() const { return count_; }

    int fieldCount() const;
    QString fieldName(int position) const;
    int fieldPosition(QStringView name) const; ///< -1 where there is none
    /// Declared as a date and time: its value reads with Value::dateTime().
    bool isDateTime(int position) const;

    /// Number that the store gave the current row. Unlike an identifier it stays with the row, though the row
    /// of a later dive may get the number of a deleted one.
    qint64 rowNumber() const;

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
        return std::string_view(text_.data() + cell.offset, static_cast<size_t>(cell.length));
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
        if (row_ < 0 || row_ >= static_cast<qsizetype>(rows_.size()) ||
            rows_[static_cast<size_t>(row_)].deleted || position < 0 || position >= width_) {
            failReading(position);
        }
        return cells_[static_cast<size_t>(row_) * static_cast<size_t>(width_) +
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

    std::shared_ptr<Connection> connection_;
    std::shared_ptr<const RecordsetShape> shape_;
    std::string text_; ///< the texts of all cells, one behind the other
    std::vector<Cell> cells_;
    std::vector<Row> rows_;
    int width_ = 0;
    qsizetype row_ = 0;
    qsizetype count_ = 0; ///< rows that are not deleted
    bool addOnly_ = false;
    Mode mode_ = Mode::Read;
    std::vector<std::pair<int, Value>> changes_;
};

} // namespace benthor::platform
