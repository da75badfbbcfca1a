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
    m_mode = Mode::Read;
    if (m_count == 0) {
        throw noCurrentRow();
    }
    m_row = -1;
    moveNext();
}

void Recordset::moveLast() {
    m_mode = Mode::Read;
    if (m_count == 0) {
        throw noCurrentRow();
    }
    m_row = static_cast<qsizetype>(m_rows.size()) - 1;
    while (m_rows[static_cast<size_t>(m_row)].deleted) {
        --m_row;
    }
}

void Recordset::moveNext() {
    m_mode = Mode::Read;
    if (eof()) {
        throw noCurrentRow();
    }
    do {
        ++m_row;
    } while (!eof() && m_rows[static_cast<size_t>(m_row)].deleted);
}

int Recordset::fieldCount() const {
    return m_width;
}

QString Recordset::fieldName(int position) const {
    if (position < 0 || position >= m_width) {
        failReading(position);
    }
    return m_shape->fields[static_cast<size_t>(position)].name;
}

int Recordset::fieldPosition(QStringView name) const {
    for (int i = 0; i < m_width; ++i) {
        if (name.compare(m_shape->fields[static_cast<size_t>(i)].name, Qt::CaseInsensitive) == 0) {
            return i;
        }
    }
    return -1;
}

bool Recordset::isDateTime(int position) const {
    return position >= 0 && position < m_width && m_shape->fields[static_cast<size_t>(position)].dateTime;
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
    m_mode = Mode::Add;
    m_changes.clear();
}

void Recordset::edit() {
    requireChangeable();
    requireRow();
    m_mode = Mode::Edit;
    m_changes.clear();
}

void Recordset::set(int position, const Value& value) {
    if (m_mode == Mode::Read) {
        throw StoreError(QStringLiteral("A field can be set only behind AddNew or Edit."));
    }
    if (position < 0 || position >= m_width) {
        failReading(position);
    }
    for (auto& [field, text] : m_changes) {
        if (field == position) {
            text = value;
            return;
        }
    }
    m_changes.emplace_back(position, value);
}

void Recordset::set(QStringView name, const Value& value) {
    set(positionOf(name), value);
}

void Recordset::update() {
    const Mode mode = std::exchange(m_mode, Mode::Read);
    if (mode == Mode::Read) {
        throw StoreError(QStringLiteral("Update without AddNew or Edit."));
    }
    try {
        if (mode == Mode::Add) {
            insertRow();
        } else if (!m_changes.empty()) {
            changeRow();
        }
    } catch (const SQLite::Exception& error) {
        throwStoreError(QStringLiteral("A row of the table %1 cannot be written")
                            .arg(QString::fromStdString(m_shape->table)),
                        error);
    }
}

void Recordset::insertRow() {
    std::string names;
    std::string places;
    std::vector<Value> values;
    for (const auto& [position, value] : m_changes) {
        const char* const separator = values.empty() ? "" : ", ";
        values.push_back(value);
        names.append(separator).append(quotedName(fieldName(position)));
        places.append(separator).append(place(values));
    }
    std::string sql = "INSERT INTO ";
    sql += m_shape->table;
    if (values.empty()) {
        sql += " DEFAULT VALUES";
    } else {
        sql.append(" (").append(names).append(") VALUES (").append(places).append(")");
    }
    m_connection->run(sql, values);
    if (m_addOnly) {
        return;
    }
    const qsizetype current = m_row;
    m_rows.push_back({m_connection->database().getLastInsertRowid()});
    m_cells.resize(m_cells.size() + static_cast<size_t>(m_width));
    ++m_count;
    m_row = static_cast<qsizetype>(m_rows.size()) - 1;
    keepChange();
    m_row = current;
}

void Recordset::changeRow() {
    std::string sql = "UPDATE ";
    sql.append(m_shape->table).append(" SET ");
    std::vector<Value> values;
    for (const auto& [position, value] : m_changes) {
        sql.append(values.empty() ? "" : ", ").append(quotedName(fieldName(position))).append(" = ");
        values.push_back(value);
        sql += place(values);
    }
    appendRowCondition(sql, values);
    if (m_connection->run(sql, values) != 1) {
        throw rowIsGone();
    }
    keepChange();
}

void Recordset::appendRowCondition(std::string& sql, std::vector<Value>& values) const {
    values.emplace_back(QString::number(m_rows[static_cast<size_t>(m_row)].id));
    sql.append(" WHERE rowid = ").append(place(values));
    // The engine gives a deleted row's number to a later row; the first field tells the two apart.
    values.push_back(value(0));
    sql.append(" AND ").append(quotedName(fieldName(0))).append(" IS ").append(place(values));
}

void Recordset::deleteCurrent() {
    requireChangeable();
    requireRow();
    m_mode = Mode::Read;
    std::string sql = "DELETE FROM ";
    sql += m_shape->table;
    std::vector<Value> values;
    appendRowCondition(sql, values);
    try {
        if (m_connection->run(sql, values) != 1) {
            throw rowIsGone();
        }
    } catch (const SQLite::Exception& error) {
        throwStoreError(QStringLiteral("A row of the table %1 cannot be deleted")
                            .arg(QString::fromStdString(m_shape->table)),
                        error);
    }
    m_rows[static_cast<size_t>(m_row)].deleted = true;
    --m_count;
}

void Recordset::keepChange() {
    const size_t first = static_cast<size_t>(m_row) * static_cast<size_t>(m_width);
    for (const auto& [position, value] : m_changes) {
        m_cells[first + static_cast<size_t>(position)] =
            value.isNull() ? Cell{} : keepText(value.text().toStdString());
    }
}

Recordset::Cell Recordset::keepText(std::string_view text) {
    const Cell cell{m_text.size(), static_cast<int>(text.size())};
    m_text += text;
    return cell;
}

void Recordset::failReading(int position) const {
    if (!isOpen()) {
        throw StoreError(QStringLiteral("The recordset is not open."));
    }
    if (position < 0 || position >= m_width) {
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
    if (!isOpen() || m_shape->table.empty()) {
        throw StoreError(QStringLiteral("The recordset cannot be changed."));
    }
}

void Recordset::requireRow() const {
    if (m_row < 0 || eof() || m_rows[static_cast<size_t>(m_row)].deleted) {
        throw noCurrentRow();
    }
}

} // namespace benthor::platform
