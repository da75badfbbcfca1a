#include "logbook/actturn.h"

#include "divefiles/keptfiles.h"
#include "divefiles/owedprofiles.h"
#include "platform/clock.h"
#include "platform/filename.h"
#include "platform/files.h"
#include "store/identifiers.h"

#include <QFileInfo>

#include <algorithm>

namespace benthor::logbook {

namespace {

using platform::StoredRow;
using platform::StoredValue;

constexpr const char* kOwedTable = "owedprofile";

TableRows withoutOwed(TableRows rows) {
    std::erase_if(rows, [](const TableRow& row) { return row.table == kOwedTable; });
    return rows;
}

DoesNotFit isAnother(const QString& diveid) {
    return DoesNotFit(QStringLiteral("The dive %1 is not there as it was left.").arg(diveid));
}

DoesNotFit isThere(const QString& diveid) {
    return DoesNotFit(QStringLiteral("The dive %1 is in the logbook already.").arg(diveid));
}

/// Where the bytes stand now, or nothing where they could not be written.
QString putIntoNew(const platform::ProgramFolder& folder, const ActItem& item, QString& fault) {
    for (int number = 1;; ++number) {
        QString name = divefiles::numberedname(item.fileName, number);
        const QString path = folder.path(u"new", name);
        const QFileInfo place(path);
        if (place.exists() || place.isSymLink()) {
            if (place.isFile() && place.size() == item.file.size() &&
                platform::readFile(path, place.size()) == item.file) {
                return name;
            }
            continue;
        }
        const platform::FileResult written = platform::writeFileWhole(path, item.file);
        if (!written) {
            fault = written.error;
        }
        return written ? name : QString();
    }
}

} // namespace

void ActTurn::turn(const Act& act, bool undo) {
    std::vector<qint64> ids = file_.itemIds(act.id);
    if (undo) {
        std::reverse(ids.begin(), ids.end());
    }
    // Whether a dive names an entry is seen when the dives are as they will be.
    for (const bool entries : {false, true}) {
        for (const qint64 id : ids) {
            ActItem item = file_.item(id);
            if ((item.kind == ActItem::Kind::Entry) == entries) {
                turn(item, act.kind);
                file_.saveItem(item);
            }
        }
    }
    store::syncserialno(database_);
    file_.setDone(act.id, !undo);
}

void ActTurn::turn(ActItem& item, ActKind kind) {
    switch (item.kind) {
    case ActItem::Kind::Dive:
        return item.here ? takeAway(item, kind) : bring(item);
    case ActItem::Kind::Edit:
        return turnEdit(item);
    case ActItem::Kind::Entry:
        return turnEntry(item);
    }
}

/// A delete leaves the buddies of its dives, for ever so; they are among the rows that come back.
void ActTurn::takeAway(ActItem& item, ActKind kind) {
    const std::optional<QString> diveid =
        locatedive(file_.store(), item.diveid, item.key, item.digest, RowsOf::WholeDive);
    if (!diveid) {
        throw isAnother(item.diveid);
    }
    const TableRows rows = readdiverows(file_.store(), *diveid, RowsOf::WholeDive);
    const qint64 act = item.act;
    const qint64 id = item.id;
    item = itemGoing(file_.store(), *diveid, rows);
    item.act = act;
    item.id = id;
    const bool isDelete = kind == ActKind::Delete;
    if (isDelete) {
        item.gone = momentText(platform::now());
        takeWaitingFile(item, folder_);
        filesToTake_ += item.name;
    }
    TableRows going = rows;
    std::erase_if(going, [isDelete](const TableRow& row) { return isDelete && row.table == "buddylist"; });
    removerows(file_.store(), going);
    told_.changed += *diveid;
}

void ActTurn::bring(ActItem& item) {
    const TableRows kept = decoderows(item.rows);
    const TableRows rows = withoutOwed(kept);
    if (!hold(rows, item.digest)) {
        throw DoesNotFit(QStringLiteral("What was kept of the dive %1 is damaged.").arg(item.diveid));
    }
    if (isdivethere(file_.store(), item.diveid, item.key, item.digest) ||
        counttwins(file_.store(), item.diveid, item.key, item.digest) > item.twins) {
        throw isThere(item.diveid);
    }
    const QString before = item.diveid;
    if (isnumbertaken(file_.store(), before)) {
        item.diveid = store::takeidentifier(database_);
        told_.renamed.push_back({before, item.diveid});
    } else {
        store::removeleftovers(database_, before);
    }
    insertrows(file_.store(), rows, item.diveid);
    if (!hold(readdiverows(file_.store(), item.diveid, RowsOf::WholeDive), item.digest)) {
        throw DoesNotFit(QStringLiteral("The store does not take the dive %1 as it was.").arg(before));
    }
    bringOwedProfile(kept);
    told_.back += item.diveid;
    told_.changed += item.diveid;
    item.here = true;
    item.rows.clear();
    item.gone.clear();
    item.owed = !item.fileName.isEmpty();
}

void ActTurn::bringOwedProfile(const TableRows& rows) {
    for (const TableRow& row : rowsin(rows, kOwedTable)) {
        if (row.row.fields.size() < 4) {
            continue;
        }
        const divefiles::OwedProfile owed{row.row.at(0).text(), row.row.at(1).text(),
                                          row.row.at(2).text().toLongLong(), row.row.at(3).text()};
        const std::vector<divefiles::OwedProfile> known = divefiles::owedprofiles(database_);
        if (std::none_of(known.begin(), known.end(),
                         [&owed](const auto& one) { return one.dbtxtname == owed.dbtxtname; })) {
            divefiles::noteowed(database_, owed);
        }
    }
}

void ActTurn::turnEdit(ActItem& item) {
    const std::optional<QString> diveid =
        locatedive(file_.store(), item.diveid, item.key, item.digest, RowsOf::Details);
    if (!diveid) {
        throw isAnother(item.diveid);
    }
    const TableRows wanted = decoderows(item.rows);
    const TableRows current = readdiverows(file_.store(), *diveid, RowsOf::Details);
    rewritemain(file_.store(), current, wanted);
    removerows(file_.store(), rowsin(current, "buddylist"));
    insertrows(file_.store(), rowsin(wanted, "buddylist"), *diveid);
    const TableRows now = readdiverows(file_.store(), *diveid, RowsOf::Details);
    if (digestof(now) != digestof(wanted)) {
        throw DoesNotFit(QStringLiteral("The store does not take the dive %1 as it was.").arg(*diveid));
    }
    told_.changed += *diveid;
    item.diveid = *diveid;
    item.key = keyof(now);
    item.digest = digestof(now);
    item.rows = encoderows(current);
}

/// An entry that a dive names by now stays, and one that is there is not added twice.
void ActTurn::turnEntry(ActItem& item) {
    const QByteArray table = item.name.toUtf8();
    const TableRows entry = decoderows(item.rows);
    const bool wasHere = std::exchange(item.here, !item.here);
    static const QList<QByteArray> tables{"department", "site", "weather", "buddy"};
    if (entry.size() != 1 || !tables.contains(table) || !hastable(file_.store(), table)) {
        return;
    }
    const StoredValue& value = entry.front().row.at(0);
    const TableRows there =
        readtablerows(file_.store(), table, entry.front().row.fields.front().first, value);
    if (!wasHere) {
        if (there.empty()) {
            insertrows(file_.store(), entry, QString());
        }
        return;
    }
    const auto same = std::find_if(there.rbegin(), there.rend(),
                                   [&item](const TableRow& row) { return hold({row}, item.digest); });
    if (same != there.rend() && !isNamedByADive(table, value)) {
        removerows(file_.store(), {*same});
    }
}

bool ActTurn::isNamedByADive(const QByteArray& table, const StoredValue& value) {
    const QByteArray sql =
        table == "buddy"
            ? QByteArray("SELECT 1 FROM main.buddylist WHERE buddylist = ?1 LIMIT 1")
            : "SELECT 1 FROM main.main WHERE " + platform::quotedTableName(table) + " = ?1 LIMIT 1";
    return !file_.store().read(sql, {value}).empty();
}

void bringOwedFiles(platform::Database& database, const platform::ProgramFolder& folder, ActFile& file,
                    TurnedAct& told) {
    for (ActItem& item : file.owed()) {
        if (platform::isFileName(item.fileName)) {
            const QString name = putIntoNew(folder, item, told.fileFault);
            if (name.isEmpty()) {
                continue;
            }
            told.files += name;
        }
        item.owed = false;
        item.fileName.clear();
        item.file.clear();
        platform::Transaction transaction(database);
        if (item.act == 0) {
            file.removeItems({item.id});
        } else {
            file.saveItem(item);
        }
        transaction.commit();
    }
}

} // namespace benthor::logbook
