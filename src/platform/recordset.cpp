#include "platform/recordset.h"

#include "platform/connection.h"

namespace benthor::platform {

namespace {

StoreError noCurrentRow() {
    return StoreError(QStringLiteral("No current record."));
}

StoreError rowIsGone() {
    return StoreError(QStringLiteral("The record is deleted."));
}

/// The place of the last of `values` in a text.
std::string place(const std::vector<Value>& values) {
    std::string text = "?";
    return text += std::to_string(values.size());
}

} // namespace

void Recordset::moveFirst() {
    mode_ = Mode::Read;
    if (count_ == 0) {
        throw noCurrentRow();
    }
    row_ = -1;
    moveNext();
}

void Recordset::moveLast() {
    mode_ = Mode::Read;
    if (count_ == 0) {
        throw noCurrentRow();
    }
    row_ = static_cast<qsizetype>(rows_.size()) - 1;
    while (rows_[static_cast<size_t>(row_)].deleted) {
        --row_;
    }
}

void Recordset::moveNext() {
    mode_ = Mode::Read;
    if (eof()) {
        throw noCurrentRow();
    }
    do {
        ++row_;
    } while (!eof() && rows_[static_cast<size_t>(row_)].deleted);
}

int Recordset::fieldCount() const {
    return width_;
}

QString Recordset::fieldName(int position) const {
    if (position < 0 || position >= width_) {
        failReading(position);
    }
    return shape_->fields[static_cast<size_t>(position)].name;
}

int Recordset::fieldPosition(QStringView name) const {
    for (int i = 0; i < width_; ++i) {
        if (name.compare(shape_->fields[static_cast<size_t>(i)].name, Qt::CaseInsensitive) == 0) {
            return i;
        }
    }
    return -1;
}

bool Recordset::isDateTime(int position) const {
    return position >= 0 && position < width_ && shape_->fields[static_cast<size_t>(position)].dateTime;
}

qint64 Recordset::rowNumber() const {
    requireChangeable();
    requireRow();
    return rows_[static_cast<size_t>(row_)].id;
}

Value Recordset::value(int position) const {
    const auto text = utf8(position);
    return text ? Value(QString::fromUtf8(text->data(), static_cast<qsizetype>(text->size()))) : Value();
}

Value Recordset::value(QStringView name) const {
    return value(positionOf(name));
}

void Recordset::addNew() {
    requireChangeable();
    mode_ = Mode::Add;
    changes_.clear();
}

void Recordset::edit() {
    requireChangeable();
    requireRow();
    mode_ = Mode::Edit;
    changes_.clear();
}

void Recordset::set(int position, const Value& value) {
    if (mode_ == Mode::Read) {
        throw StoreError(QStringLiteral("A field can be set only behind AddNew or Edit."));
    }
    if (position < 0 || position >= width_) {
        failReading(position);
    }
    for (auto& [field, text] : changes_) {
        if (field == position) {
            text = value;
            return;
        }
    }
    changes_.emplace_back(position, value);
}

void Recordset::set(QStringView name, const Value& value) {
    set(positionOf(name), value);
}

void Recordset::update() {
    const Mode mode = std::exchange(mode_, Mode::Read);
    if (mode == Mode::Read) {
        throw StoreError(QStringLiteral("Update without AddNew or Edit."));
    }
    try {
        if (mode == Mode::Add) {
            insertRow();
        } else if (!changes_.empty()) {
            changeRow();
        }
    } catch (const SQLite::Exception& error) {
        throwStoreError(QStringLiteral("A row of the table %1 cannot be written")
                            .arg(QString::fromStdString(shape_->table)),
                        error);
    }
}

void Recordset::insertRow() {
    std::string names;
    std::string places;
    std::vector<Value> values;
    for (const auto& [position, value] : changes_) {
        const char* const separator = values.empty() ? "" : ", ";
        values.push_back(value);
        names.append(separator).append(quotedName(fieldName(position)));
        places.append(separator).append(place(values));
    }
    std::string sql = "INSERT INTO ";
    sql += shape_->table;
    if (values.empty()) {
        sql += " DEFAULT VALUES";
    } else {
        sql.append(" (").append(names).append(") VALUES (").append(places).append(")");
    }
    connection_->run(sql, values);
    if (addOnly_) {
        return;
    }
    const qsizetype current = row_;
    rows_.push_back({connection_->database().getLastInsertRowid()});
    cells_.resize(cells_.size() + static_cast<size_t>(width_));
    ++count_;
    row_ = static_cast<qsizetype>(rows_.size()) - 1;
    keepChange();
    row_ = current;
}

void Recordset::changeRow() {
    std::string sql = "UPDATE ";
    sql.append(shape_->table).append(" SET ");
    std::vector<Value> values;
    for (const auto& [position, value] : changes_) {
        sql.append(values.empty() ? "" : ", ").append(quotedName(fieldName(position))).append(" = ");
        values.push_back(value);
        sql += place(values);
    }
    appendRowCondition(sql, values);
    if (connection_->run(sql, values) != 1) {
        throw rowIsGone();
    }
    keepChange();
}

void Recordset::appendRowCondition(std::string& sql, std::vector<Value>& values) const {
    values.emplace_back(QString::number(rows_[static_cast<size_t>(row_)].id));
    sql.append(" WHERE rowid = ").append(place(values));
    // The engine gives a deleted row's number to a later row; the first field tells the two apart.
    values.push_back(value(0));
    sql.append(" AND ").append(quotedName(fieldName(0))).append(" IS ").append(place(values));
}

void Recordset::deleteCurrent() {
    requireChangeable();
    requireRow();
    mode_ = Mode::Read;
    std::string sql = "DELETE FROM ";
    sql += shape_->table;
    std::vector<Value> values;
    appendRowCondition(sql, values);
    try {
        if (connection_->run(sql, values) != 1) {
            throw rowIsGone();
        }
    } catch (const SQLite::Exception& error) {
        throwStoreError(QStringLiteral("A row of the table %1 cannot be deleted")
                            .arg(QString::fromStdString(shape_->table)),
                        error);
    }
    rows_[static_cast<size_t>(row_)].deleted = true;
    --count_;
}

void Recordset::keepChange() {
    const size_t first = static_cast<size_t>(row_) * static_cast<size_t>(width_);
    for (const auto& [position, value] : changes_) {
        cells_[first + static_cast<size_t>(position)] =
            value.isNull() ? Cell{} : keepText(value.text().toStdString());
    }
}

Recordset::Cell Recordset::keepText(std::string_view text) {
    const Cell cell{text_.size(), static_cast<int>(text.size())};
    text_ += text;
    return cell;
}

void Recordset::failReading(int position) const {
    if (!isOpen()) {
        throw StoreError(QStringLiteral("The recordset is not open."));
    }
    if (position < 0 || position >= width_) {
        throw StoreError(QStringLiteral("The recordset has no field number %1.").arg(position));
    }
    throw noCurrentRow();
}

int Recordset::positionOf(QStringView name) const {
    const int position = fieldPosition(name);
    if (position < 0) {
        throw StoreError(isOpen() ? QStringLiteral("The recordset has no field %1.").arg(name)
                                  : QStringLiteral("The recordset is not open."));
    }
    return position;
}

void Recordset::requireChangeable() const {
    if (!isOpen() || shape_->table.empty()) {
        throw StoreError(QStringLiteral("The recordset cannot be changed."));
    }
}

void Recordset::requireRow() const {
    if (row_ < 0 || eof() || rows_[static_cast<size_t>(row_)].deleted) {
        throw noCurrentRow();
    }
}

} // namespace benthor::platform
