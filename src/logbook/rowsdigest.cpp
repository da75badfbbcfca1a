#include "logbook/rowsdigest.h"

#include <algorithm>

namespace benthor::logbook {

namespace {

using platform::StoredCells;
using platform::StoredRow;
using platform::StoredRows;
using platform::StoredValue;

// Nobody makes rows that collide on purpose, and every dive that comes or goes is digested: the quick one of
// two good ones. Files of the acts may hold digests of the other, which was the first in use; their lengths
// tell them apart.
constexpr auto kAlgorithm = QCryptographicHash::Blake2b_160;
constexpr auto kFirstAlgorithm = QCryptographicHash::Sha256;

/// A row in memory, asked as one that the engine stands on.
class KeptCells {
public:
    explicit KeptCells(const StoredRow& row)
        : row_(row) {}
    size_t count() const { return row_.fields.size(); }
    const QByteArray& name(size_t column) const { return row_.fields[column].first; }
    StoredValue::Type type(size_t column) const { return row_.at(column).type; }
    qint64 integer(size_t column) const { return row_.at(column).integer; }
    double real(size_t column) const { return row_.at(column).real; }
    QByteArrayView bytes(size_t column) const { return row_.at(column).bytes; }

private:
    const StoredRow& row_;
};

template <class Number> void addNumber(std::string& bytes, Number number) {
    bytes.append(reinterpret_cast<const char*>(&number), sizeof number);
}

/// Behind its length, so that nothing else reads the same.
void addBytes(std::string& bytes, QByteArrayView text) {
    addNumber(bytes, static_cast<quint32>(text.size()));
    bytes.append(text.data(), static_cast<size_t>(text.size()));
}

template <class Row>
void addValue(std::string& bytes, const Row& row, size_t column, StoredValue::Type type) {
    addNumber(bytes, static_cast<quint8>(type));
    switch (type) {
    case StoredValue::Type::Integer:
        addNumber(bytes, row.integer(column));
        break;
    case StoredValue::Type::Real:
        addNumber(bytes, row.real(column));
        break;
    default:
        addBytes(bytes, row.bytes(column));
    }
}

RowsDigest digestOfAll(const TableRows& rows) {
    RowsDigest digest;
    for (const TableRow& row : rows) {
        digest.add(row.table, row.row);
    }
    return digest;
}

} // namespace

/// By their names, without regard to case and without the dive's number. Made once for all rows of a table,
/// as long as it keeps its form.
template <class Row> const RowsDigest::Form& RowsDigest::formOf(const QByteArray& table, const Row& row) {
    Form& form = forms_[table];
    bool same = row.count() == form.names.size();
    for (size_t i = 0; same && i < form.names.size(); ++i) {
        same = row.name(i) == form.names[i];
    }
    if (same) {
        return form;
    }
    form = {};
    for (size_t i = 0; i < row.count(); ++i) {
        form.names.push_back(row.name(i));
        if (row.name(i).compare("diveid", Qt::CaseInsensitive) != 0) {
            Field& field = form.order.emplace_back();
            field.place = i;
            field.name = row.name(i).toLower();
            addBytes(field.head, field.name);
        }
    }
    std::sort(form.order.begin(), form.order.end(),
              [](const Field& one, const Field& other) { return one.name < other.name; });
    return form;
}

template <class Row> void RowsDigest::addRow(const QByteArray& table, const Row& row) {
    addBytes(bytes_, table);
    for (const Field& field : formOf(table, row).order) {
        if (const StoredValue::Type type = row.type(field.place); type != StoredValue::Type::Null) {
            bytes_ += field.head;
            addValue(bytes_, row, field.place, type);
        }
    }
    addNumber(bytes_, quint32{0}); // no name is that short: here the row ends
}

void RowsDigest::add(const QByteArray& table, const StoredRow& row) {
    addRow(table, KeptCells(row));
}

void RowsDigest::add(const QByteArray& table, const StoredCells& row) {
    addRow(table, row);
}

QByteArray RowsDigest::hashed(QCryptographicHash::Algorithm algorithm) const {
    return QCryptographicHash::hash(
        QByteArray::fromRawData(bytes_.data(), static_cast<qsizetype>(bytes_.size())), algorithm);
}

QByteArray RowsDigest::take() {
    QByteArray digest = hashed(kAlgorithm);
    bytes_.clear(); // its room stays for the next dive
    return digest;
}

bool RowsDigest::takeIs(const QByteArray& digest) {
    const bool isFirstForm = digest.size() == QCryptographicHash::hashLength(kFirstAlgorithm);
    const bool same = hashed(isFirstForm ? kFirstAlgorithm : kAlgorithm) == digest;
    bytes_.clear();
    return same;
}

QByteArray digestof(const TableRows& rows) {
    return digestOfAll(rows).take();
}

bool hold(const TableRows& rows, const QByteArray& digest) {
    return digestOfAll(rows).takeIs(digest);
}

DiveDigests::DiveDigests(StoredRows& store) {
    for (const QByteArray& table : divetables(store, RowsOf::WholeDive)) {
        tables_.emplace_back(table, store.prepare("SELECT * FROM main." + platform::quotedTableName(table) +
                                                  " WHERE diveid = ?1 ORDER BY rowid"));
    }
}

DiveDigests::Found DiveDigests::of(const QString& diveid) {
    Found found;
    const StoredValue id(diveid);
    for (auto& [table, rows] : tables_) {
        const bool isMain = table == "main";
        rows.each({id}, [&](const StoredCells& row) {
            if (isMain && !found.hasMain) {
                found.hasMain = true;
                found.key = {row.valueOf("Startcode"), row.valueOf("dbtxtname")};
            }
            digest_.add(table, row);
        });
    }
    found.digest = digest_.take();
    return found;
}

} // namespace benthor::logbook
