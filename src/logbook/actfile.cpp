#include "logbook/actfile.h"

namespace benthor::logbook {

namespace {

using platform::StoredRow;
using platform::StoredRows;
using platform::StoredValue;
using platform::StoreError;

/// A failure of the engine is the file's.
template <class Work> auto asActError(Work&& work) {
    try {
        return work();
    } catch (const ActError&) {
        throw;
    } catch (const StoreError& error) {
        throw ActError::of(error);
    }
}

constexpr const char* kFields =
    "id, act, kind, here, diveid, startcode, dbtxtname, digest, twins, name, started, "
    "gone, filename, owed";

ActItem itemOf(const StoredRow& row) {
    ActItem item;
    item.id = row.at(0).integer;
    item.act = row.at(1).integer;
    item.kind = static_cast<ActItem::Kind>(row.at(2).integer);
    item.here = row.at(3).integer != 0;
    item.diveid = row.at(4).text();
    item.key = {row.at(5), row.at(6)};
    item.digest = row.at(7).bytes;
    item.twins = static_cast<int>(row.at(8).integer);
    item.name = row.at(9).text();
    item.started = row.at(10).text();
    item.gone = row.at(11).text();
    item.fileName = row.at(12).text();
    item.owed = row.at(13).integer != 0;
    if (row.fields.size() > 15) {
        item.rows = row.at(14).bytes;
        item.file = row.at(15).bytes;
    }
    return item;
}

std::vector<StoredValue> valuesOf(const ActItem& item) {
    return {item.act == 0 ? StoredValue() : StoredValue(item.act),
            static_cast<qint64>(item.kind),
            static_cast<qint64>(item.here),
            item.diveid,
            item.key.startcode,
            item.key.dbtxtname,
            StoredValue::blob(item.digest),
            static_cast<qint64>(item.twins),
            item.name,
            item.started,
            item.gone,
            item.fileName,
            static_cast<qint64>(item.owed),
            StoredValue::blob(item.rows),
            StoredValue::blob(item.file)};
}

} // namespace

std::vector<StoredRow> ActFile::rows(const QByteArray& sql, const std::vector<StoredValue>& values) {
    return asActError([&] { return rows_.read(sql, values); });
}

void ActFile::change(const QByteArray& sql, const std::vector<StoredValue>& values) {
    asActError([&] { rows_.change(sql, values); });
}

std::vector<Act> ActFile::acts() {
    if (fresh_) {
        return {};
    }
    std::vector<Act> all;
    for (const StoredRow& row :
         rows("SELECT id, kind, done, label, (SELECT COUNT(*) FROM rbacts.rbacts_item WHERE act = a.id AND "
              "kind = 0 AND diveid <> '*') FROM rbacts.rbacts_act a ORDER BY id")) {
        all.push_back({row.at(0).integer, static_cast<ActKind>(row.at(1).integer), row.at(2).integer != 0,
                       row.at(3).text(), static_cast<int>(row.at(4).integer)});
    }
    return all;
}

qint64 ActFile::add(ActKind kind, const QString& label) {
    makeTables();
    std::vector<Act> all = acts();
    for (const Act& act : all) {
        if (!act.done) {
            drop(act.id);
        }
    }
    std::erase_if(all, [](const Act& act) { return !act.done; });
    for (size_t i = 0; i + kMostActs <= all.size(); ++i) {
        drop(all[i].id);
    }
    const qint64 id = all.empty() ? 1 : all.back().id + 1;
    change("INSERT INTO rbacts.rbacts_act VALUES (?1, ?2, 1, ?3)", {id, static_cast<qint64>(kind), label});
    return id;
}

void ActFile::setDone(qint64 act, bool done) {
    change("UPDATE rbacts.rbacts_act SET done = ?2 WHERE id = ?1", {act, static_cast<qint64>(done)});
}

void ActFile::drop(qint64 act) {
    change(
        "UPDATE rbacts.rbacts_item SET act = NULL WHERE act = ?1 AND (owed = 1 OR (kind = 0 AND here = 0 AND "
        "(SELECT kind FROM rbacts.rbacts_act WHERE id = ?1) = 0))",
        {act});
    change("DELETE FROM rbacts.rbacts_item WHERE act = ?1", {act});
    change("DELETE FROM rbacts.rbacts_act WHERE id = ?1", {act});
}

std::vector<ActItem> ActFile::read(const QByteArray& where, const std::vector<StoredValue>& values,
                                   bool whole) {
    if (fresh_) {
        return {};
    }
    std::vector<ActItem> all;
    for (const StoredRow& row : rows(QByteArray("SELECT ") + kFields + (whole ? ", rows, file" : "") +
                                         " FROM rbacts.rbacts_item WHERE " + where,
                                     values)) {
        all.push_back(itemOf(row));
    }
    return all;
}

std::vector<qint64> ActFile::itemIds(qint64 act) {
    std::vector<qint64> ids;
    for (const StoredRow& row : rows("SELECT id FROM rbacts.rbacts_item WHERE act = ?1 ORDER BY id", {act})) {
        ids.push_back(row.at(0).integer);
    }
    return ids;
}

std::vector<ActItem> ActFile::trashed() {
    return read(
        "kind = 0 AND here = 0 AND (act IS NULL OR (SELECT kind FROM rbacts.rbacts_act WHERE id = act) = "
        "0) ORDER BY gone DESC, id DESC",
        {}, false);
}

std::vector<ActItem> ActFile::owed() {
    return read("owed = 1 ORDER BY id", {}, true);
}

QStringList ActFile::awayNames() {
    QStringList names;
    if (!fresh_) {
        for (const StoredRow& row :
             rows("SELECT DISTINCT dbtxtname FROM rbacts.rbacts_item WHERE kind = 0 AND here = 0")) {
            names += row.at(0).text();
        }
    }
    return names;
}

ActItem ActFile::item(qint64 id) {
    const std::vector<ActItem> found = read("id = ?1", {id}, true);
    return found.empty() ? ActItem() : found.front();
}

void ActFile::addItem(const ActItem& item) {
    change(
        "INSERT INTO rbacts.rbacts_item (act, kind, here, diveid, startcode, dbtxtname, digest, twins, name, "
        "started, gone, filename, owed, rows, file) VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11, "
        "?12, "
        "?13, ?14, ?15)",
        valuesOf(item));
}

void ActFile::saveItem(const ActItem& item) {
    std::vector<StoredValue> values = valuesOf(item);
    values.emplace_back(item.id);
    change("UPDATE rbacts.rbacts_item SET act = ?1, kind = ?2, here = ?3, diveid = ?4, startcode = ?5, "
           "dbtxtname = "
           "?6, digest = ?7, twins = ?8, name = ?9, started = ?10, gone = ?11, filename = ?12, owed = ?13, "
           "rows = "
           "?14, file = ?15 WHERE id = ?16",
           values);
}

void ActFile::removeItems(const std::vector<qint64>& ids) {
    for (const qint64 id : ids) {
        change("DELETE FROM rbacts.rbacts_item WHERE id = ?1", {id});
    }
    dropEmptyActs();
}

void ActFile::removeTrashBefore(const QString& moment) {
    if (!fresh_) {
        change("DELETE FROM rbacts.rbacts_item WHERE kind = 0 AND here = 0 AND gone <> '' AND gone < ?1",
               {moment});
        dropEmptyActs();
    }
}

void ActFile::dropEmptyActs() {
    change(
        "DELETE FROM rbacts.rbacts_act WHERE id NOT IN (SELECT act FROM rbacts.rbacts_item WHERE act IS NOT "
        "NULL)");
}

} // namespace benthor::logbook
