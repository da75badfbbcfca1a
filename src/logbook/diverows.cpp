#include "logbook/diverows.h"

#include <QCryptographicHash>
#include <QDataStream>
#include <QIODevice>

#include <algorithm>

namespace benthor::logbook {

namespace {

using platform::quotedTableName;
using platform::StoredRow;
using platform::StoredRows;
using platform::StoredValue;

constexpr auto kStreamVersion = QDataStream::Qt_6_0;
constexpr qsizetype kCheckBytes = 32; ///< before the rows: pages of a file may be damaged unseen
constexpr const char* kIdentifier = "diveid";

bool isNamed(const QByteArray& name, const QByteArray& wanted) {
    return name.compare(wanted, Qt::CaseInsensitive) == 0;
}

/// Of the store itself: an attached file may have a table of the same name.
QByteArray stored(const QByteArray& table) {
    return "main." + quotedTableName(table);
}

QList<QByteArray> fieldsOf(StoredRows& store, const QByteArray& table) {
    QList<QByteArray> names;
    for (const StoredRow& row : store.read("PRAGMA main.table_info(" + quotedTableName(table) + ")")) {
        names += row.at(1).bytes;
    }
    return names;
}

bool hasField(const QList<QByteArray>& fields, const QByteArray& name) {
    return std::any_of(fields.begin(), fields.end(),
                       [&name](const QByteArray& field) { return isNamed(field, name); });
}

QByteArray checkOf(const QByteArray& bytes) {
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256);
}

/// Which of the row's fields can be put in; one that holds something and has no place is refused.
std::vector<std::pair<QByteArray, StoredValue>> placed(const TableRow& row, const QList<QByteArray>& fields) {
    std::vector<std::pair<QByteArray, StoredValue>> all;
    for (const auto& [name, value] : row.row.fields) {
        if (hasField(fields, name)) {
            all.emplace_back(name, value);
        } else if (!value.isNull()) {
            throw DoesNotFit(QStringLiteral("The store's table %1 has no field %2.")
                                 .arg(QString::fromUtf8(row.table), QString::fromUtf8(name)));
        }
    }
    return all;
}

bool areFree(StoredRows& store, const QByteArray& table, const TableRows& rows) {
    return std::all_of(rows.begin(), rows.end(), [&](const TableRow& row) {
        return row.table != table ||
               store.read("SELECT 1 FROM " + stored(table) + " WHERE rowid = ?1", {row.number}).empty();
    });
}

void insertRow(StoredRows& store, const TableRow& row, const QList<QByteArray>& fields, bool withNumber,
               const QString& diveid) {
    QByteArray names = withNumber ? "rowid" : "";
    QByteArray places = withNumber ? "?1" : "";
    std::vector<StoredValue> values;
    if (withNumber) {
        values.emplace_back(row.number);
    }
    for (const auto& [name, value] : placed(row, fields)) {
        const char* const separator = values.empty() ? "" : ", ";
        const bool renamed = isNamed(name, kIdentifier) && !diveid.isEmpty() &&
                             value.text().compare(diveid, Qt::CaseInsensitive) != 0;
        values.push_back(renamed ? StoredValue(diveid) : value);
        names += separator + quotedTableName(name);
        places += separator + QByteArray("?") + QByteArray::number(static_cast<qint64>(values.size()));
    }
    store.change("INSERT INTO " + stored(row.table) + " (" + names + ") VALUES (" + places + ")", values);
}

/// Numbers of the dives with that start code and file name, which may both be missing; none where the store
/// knows neither.
QStringList divesWith(StoredRows& store, const DiveKey& key) {
    const QList<QByteArray> fields = fieldsOf(store, "main");
    if (!hasField(fields, "Startcode") || !hasField(fields, "dbtxtname")) {
        return {};
    }
    QStringList dives;
    for (const StoredRow& row :
         store.read("SELECT DISTINCT DiveID FROM main.main WHERE Startcode IS ?1 AND dbtxtname IS ?2",
                    {key.startcode, key.dbtxtname})) {
        dives += row.at(0).text();
    }
    return dives;
}

/// Of the dives of which nothing is known none is the other.
QStringList divesOfKey(StoredRows& store, const DiveKey& key) {
    return key.isKnown() ? divesWith(store, key) : QStringList();
}

} // namespace

bool hastable(StoredRows& store, const QByteArray& table) {
    return !store
                .read("SELECT 1 FROM main.sqlite_master WHERE type = 'table' AND name = ?1 COLLATE NOCASE",
                      {QString::fromUtf8(table)})
                .empty();
}

TableRows readtablerows(StoredRows& store, const QByteArray& table, const QByteArray& field,
                        const StoredValue& value) {
    TableRows rows;
    for (StoredRow& row : store.read("SELECT rowid, * FROM " + stored(table) + " WHERE " +
                                         quotedTableName(field) + " = ?1 ORDER BY rowid",
                                     {value})) {
        const qint64 number = row.at(0).integer;
        row.fields.erase(row.fields.begin());
        rows.push_back({table, number, std::move(row)});
    }
    return rows;
}

QList<QByteArray> divetables(StoredRows& store, RowsOf which) {
    QList<QByteArray> tables;
    for (const char* table : {"main", "gas", "tissue", "buddylist"}) {
        const bool isDetail = isNamed(table, "main") || isNamed(table, "buddylist");
        if ((which == RowsOf::WholeDive || isDetail) && hastable(store, table)) {
            tables += table;
        }
    }
    return tables;
}

TableRows readdiverows(StoredRows& store, const QString& diveid, RowsOf which) {
    TableRows all;
    for (const QByteArray& table : divetables(store, which)) {
        TableRows rows = readtablerows(store, table, kIdentifier, diveid);
        std::move(rows.begin(), rows.end(), std::back_inserter(all));
    }
    return all;
}

TableRows rowsin(const TableRows& rows, const QByteArray& table) {
    TableRows some;
    std::copy_if(rows.begin(), rows.end(), std::back_inserter(some),
                 [&table](const TableRow& row) { return row.table == table; });
    return some;
}

bool hasmain(const TableRows& rows) {
    return !rows.empty() && rows.front().table == "main";
}

StoredValue fieldof(const TableRows& rows, const QByteArray& field) {
    if (hasmain(rows)) {
        for (const auto& [name, value] : rows.front().row.fields) {
            if (isNamed(name, field)) {
                return value;
            }
        }
    }
    return {};
}

DiveKey keyof(const TableRows& rows) {
    return {fieldof(rows, "Startcode"), fieldof(rows, "dbtxtname")};
}

QByteArray encoderows(const TableRows& rows) {
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(kStreamVersion);
    stream << static_cast<quint32>(rows.size());
    for (const TableRow& row : rows) {
        stream << row.table << row.number << static_cast<quint32>(row.row.fields.size());
        for (const auto& [name, value] : row.row.fields) {
            stream << name << static_cast<quint8>(value.type) << value.integer << value.real << value.bytes;
        }
    }
    return checkOf(bytes) + bytes;
}

TableRows decoderows(const QByteArray& checked) {
    const QByteArray bytes = checked.mid(kCheckBytes);
    if (checkOf(bytes) != checked.left(kCheckBytes)) {
        throw DoesNotFit(QStringLiteral("What was kept of it is damaged."));
    }
    QDataStream stream(bytes);
    stream.setVersion(kStreamVersion);
    TableRows rows;
    quint32 count = 0;
    stream >> count;
    for (quint32 i = 0; i < count && stream.status() == QDataStream::Ok; ++i) {
        TableRow row;
        quint32 width = 0;
        stream >> row.table >> row.number >> width;
        for (quint32 k = 0; k < width && stream.status() == QDataStream::Ok; ++k) {
            QByteArray name;
            StoredValue value;
            quint8 type = 0;
            stream >> name >> type >> value.integer >> value.real >> value.bytes;
            value.type = static_cast<StoredValue::Type>(std::min<quint8>(type, 4));
            row.row.fields.emplace_back(name, value);
        }
        rows.push_back(std::move(row));
    }
    if (stream.status() != QDataStream::Ok || !stream.atEnd()) {
        throw DoesNotFit(QStringLiteral("What was kept of it is damaged."));
    }
    return rows;
}

void insertrows(StoredRows& store, const TableRows& rows, const QString& diveid) {
    QByteArray table;
    QList<QByteArray> fields;
    bool withNumbers = false;
    for (const TableRow& row : rows) {
        if (row.table != table) {
            table = row.table;
            fields = fieldsOf(store, table);
            withNumbers = areFree(store, table, rows);
        }
        if (fields.isEmpty()) {
            throw DoesNotFit(QStringLiteral("The store has no table %1.").arg(QString::fromUtf8(table)));
        }
        insertRow(store, row, fields, withNumbers, diveid);
    }
}

void removerows(StoredRows& store, const TableRows& rows) {
    for (const TableRow& row : rows) {
        if (store.change("DELETE FROM " + stored(row.table) + " WHERE rowid = ?1", {row.number}) != 1) {
            throw DoesNotFit(
                QStringLiteral("A row of the table %1 is gone.").arg(QString::fromUtf8(row.table)));
        }
    }
}

void rewritemain(StoredRows& store, const TableRows& current, const TableRows& wanted) {
    const TableRows from = rowsin(current, "main");
    const TableRows to = rowsin(wanted, "main");
    if (from.size() != to.size()) {
        throw DoesNotFit(QStringLiteral("The dive has another number of rows."));
    }
    const QList<QByteArray> fields = fieldsOf(store, "main");
    for (size_t i = 0; i < from.size(); ++i) {
        QByteArray sql = "UPDATE main.main SET ";
        std::vector<StoredValue> values{from[i].number};
        for (const auto& [name, value] : placed(to[i], fields)) {
            if (!isNamed(name, kIdentifier)) {
                sql += values.size() > 1 ? ", " : "";
                values.push_back(value);
                sql +=
                    quotedTableName(name) + " = ?" + QByteArray::number(static_cast<qint64>(values.size()));
            }
        }
        if (values.size() > 1 && store.change(sql + " WHERE rowid = ?1", values) != 1) {
            throw DoesNotFit(QStringLiteral("The dive's row is gone."));
        }
    }
}

std::optional<QString> locatedive(StoredRows& store, const QString& diveid, const DiveKey& key,
                                  const QByteArray& digest, RowsOf which) {
    const auto holds = [&](const QString& number) {
        const TableRows rows = readdiverows(store, number, which);
        return hasmain(rows) && hold(rows, digest);
    };
    if (holds(diveid)) {
        return diveid;
    }
    QStringList found;
    for (const QString& number : divesWith(store, key)) {
        if (holds(number)) {
            found += number;
        }
    }
    return found.size() == 1 ? std::optional(found.first()) : std::nullopt;
}

int counttwins(StoredRows& store, const QString& diveid, const DiveKey& key, const QByteArray& digest) {
    const bool isUnique = !key.dbtxtname.text().isEmpty();
    int twins = 0;
    for (const QString& number : divesOfKey(store, key)) {
        if (number.compare(diveid, Qt::CaseInsensitive) != 0 &&
            (isUnique || hold(readdiverows(store, number, RowsOf::WholeDive), digest))) {
            ++twins;
        }
    }
    return twins;
}

bool isnumbertaken(StoredRows& store, const QString& diveid) {
    return !store.read("SELECT 1 FROM main.main WHERE DiveID = ?1 LIMIT 1", {diveid}).empty();
}

bool isdivethere(StoredRows& store, const QString& diveid, const DiveKey& key, const QByteArray& digest) {
    if (key.isKnown()) {
        return divesOfKey(store, key).contains(diveid, Qt::CaseInsensitive);
    }
    const TableRows rows = readdiverows(store, diveid, RowsOf::WholeDive);
    return hasmain(rows) && hold(rows, digest);
}

} // namespace benthor::logbook
