#include "tests/walk/snapshot.h"

#include "platform/database.h"
#include "platform/files.h"

#include <QDir>

namespace benthor::tests {

namespace {

QString plain(const platform::Value& value) {
    return value.text().remove(QLatin1Char('\r'));
}

/// Rows of a table of many rows for a dive, by the dive.
QMap<QString, QStringList> rowsByDive(platform::Database& store, const platform::Query& query) {
    QMap<QString, QStringList> byDive;
    platform::Recordset rows = store.openRecordset(query);
    for (; !rows.eof(); rows.moveNext()) {
        QStringList fields;
        for (int field = 1; field < rows.fieldCount(); ++field) {
            fields += plain(rows.value(field));
        }
        byDive[rows.value(0).text()] += fields.join(QLatin1Char(','));
    }
    return byDive;
}

StoredDive diveOf(const platform::Recordset& row, const QStringList& names) {
    StoredDive dive;
    for (int field = 0; field < row.fieldCount(); ++field) {
        const QString& name = names[field];
        const platform::Value value = row.value(field);
        const QString text = plain(value);
        const auto edited =
            std::find_if(diverFields().begin(), diverFields().end(),
                         [&name](const QString& one) { return one.compare(name, Qt::CaseInsensitive) == 0; });
        if (edited != diverFields().end()) {
            dive.diver.insert(*edited, text);
        } else if (name == QLatin1String("startcode")) {
            dive.startcode = text;
        } else if (name == QLatin1String("dbtxtname")) {
            dive.dbtxtname = text;
        } else if (name != QLatin1String("diveid") && !value.isNull()) {
            dive.device.insert(name, text);
        }
    }
    return dive;
}

QStringList column(platform::Database& store, const platform::Query& query) {
    QStringList texts;
    platform::Recordset rows = store.openRecordset(query);
    for (; !rows.eof(); rows.moveNext()) {
        texts += rows.value(0).text();
    }
    return texts;
}

QStringList trashNames(const QString& acts) {
    if (!QFile::exists(acts)) {
        return {};
    }
    platform::Database file;
    file.open(acts, platform::StoreAccess::Look);
    return column(file, "SELECT dbtxtname FROM rbacts_item WHERE kind = 0 AND here = 0 AND (act IS NULL OR "
                        "(SELECT kind FROM rbacts_act WHERE id = act) = 0)");
}

} // namespace

const QStringList& diverFields() {
    static const QStringList fields{
        QStringLiteral("UserName"), QStringLiteral("department"), QStringLiteral("site"),
        QStringLiteral("Location"), QStringLiteral("weather"),    QStringLiteral("Suit"),
        QStringLiteral("divenote"), QStringLiteral("sitenote"),   QStringLiteral("Coments")};
    return fields;
}

const QStringList& listTables() {
    static const QStringList tables{QStringLiteral("department"), QStringLiteral("site"),
                                    QStringLiteral("weather"), QStringLiteral("buddy")};
    return tables;
}

QMap<QString, QByteArray> filesOf(const QString& folder) {
    QMap<QString, QByteArray> files;
    for (const QString& name : QDir(folder).entryList(QDir::Files)) {
        files.insert(name, platform::readFile(folder + u'/' + name).value_or("(not readable)"));
    }
    return files;
}

QMap<QString, StoredDive> StoreContents::byId() const {
    QMap<QString, StoredDive> all;
    for (const StoredRow& row : dives) {
        all.insert(row.diveid, row.dive);
    }
    return all;
}

StoreContents readStore(const QString& path) {
    StoreContents contents;
    platform::Database store;
    store.open(path, platform::StoreAccess::Look);
    QStringList names;
    for (const QString& name : store.fieldNames(QStringLiteral("main"))) {
        names += name.toLower();
    }
    platform::Recordset rows = store.openRecordset("SELECT * FROM main ORDER BY rowid");
    const auto gases = rowsByDive(store, "SELECT * FROM gas ORDER BY rowid");
    const auto tissues = rowsByDive(store, "SELECT * FROM tissue ORDER BY rowid");
    const auto buddies = rowsByDive(store, "SELECT diveid, buddylist FROM buddylist ORDER BY rowid");
    for (; !rows.eof(); rows.moveNext()) {
        StoredRow row{rows.rowNumber(), rows.value(u"DiveID").text(), diveOf(rows, names)};
        row.dive.gases = gases.value(row.diveid);
        row.dive.tissues = tissues.value(row.diveid);
        row.dive.buddies = buddies.value(row.diveid);
        contents.dives.push_back(row);
    }
    for (const QStringList& named : buddies) {
        contents.buddies += named;
    }
    contents.lists = {
        {QStringLiteral("department"), column(store, "SELECT * FROM department ORDER BY rowid")},
        {QStringLiteral("site"), column(store, "SELECT * FROM site ORDER BY rowid")},
        {QStringLiteral("weather"), column(store, "SELECT * FROM weather ORDER BY rowid")},
        {QStringLiteral("buddy"), column(store, "SELECT * FROM buddy ORDER BY rowid")}};
    contents.unit = store.openRecordset("SELECT * FROM Display ").value(u"display").text();
    return contents;
}

Snapshot readSnapshot(const QString& folder, QString& error) {
    Snapshot shot;
    shot.waiting = filesOf(folder + QStringLiteral("/new"));
    shot.kept = filesOf(folder + QStringLiteral("/old"));
    shot.forviewer = filesOf(folder + QStringLiteral("/dbtxt"));
    shot.setAside = filesOf(folder + QStringLiteral("/corrupt"));
    try {
        const StoreContents contents = readStore(folder + QStringLiteral("/rb.mdb"));
        shot.dives = contents.byId();
        for (const StoredRow& row : contents.dives) {
            if (std::count_if(contents.dives.begin(), contents.dives.end(),
                              [&row](const StoredRow& other) { return other.diveid == row.diveid; }) > 1) {
                error = QStringLiteral("two dives are called %1").arg(row.diveid);
            }
        }
        shot.lists = contents.lists;
        shot.buddies = contents.buddies;
        shot.unit = contents.unit;
        shot.trashNames = trashNames(folder + QStringLiteral("/rb-acts.db"));
    } catch (const platform::StoreError& fault) {
        error = QStringLiteral("the store cannot be read: ") + fault.text();
    }
    return shot;
}

QString difference(const QMap<QString, StoredDive>& expected, const QMap<QString, StoredDive>& found) {
    QStringList lines;
    const auto note = [&lines](const QString& diveid, const QString& what, const QString& wanted,
                               const QString& is) {
        if (wanted != is) {
            lines += QStringLiteral("%1 %2: \"%3\" expected, \"%4\" stored").arg(diveid, what, wanted, is);
        }
    };
    for (auto dive = expected.begin(); dive != expected.end(); ++dive) {
        if (!found.contains(dive.key())) {
            lines += QStringLiteral("%1 (start %2) is gone").arg(dive.key(), dive->startcode);
            continue;
        }
        const StoredDive& is = found[dive.key()];
        note(dive.key(), QStringLiteral("Startcode"), dive->startcode, is.startcode);
        note(dive.key(), QStringLiteral("dbtxtname"), dive->dbtxtname, is.dbtxtname);
        note(dive.key(), QStringLiteral("buddies"), dive->buddies.join(u'|'), is.buddies.join(u'|'));
        note(dive.key(), QStringLiteral("gas"), dive->gases.join(u'|'), is.gases.join(u'|'));
        note(dive.key(), QStringLiteral("tissue"), dive->tissues.join(u'|'), is.tissues.join(u'|'));
        for (const QString& field : diverFields()) {
            note(dive.key(), field, dive->diver.value(field), is.diver.value(field));
        }
        QMap<QString, QString> fields = dive->device;
        fields.insert(is.device);
        for (const QString& field : fields.keys()) {
            note(dive.key(), field, dive->device.value(field, QStringLiteral("(null)")),
                 is.device.value(field, QStringLiteral("(null)")));
        }
    }
    for (auto dive = found.begin(); dive != found.end(); ++dive) {
        if (!expected.contains(dive.key())) {
            lines += QStringLiteral("%1 (start %2) came from nowhere").arg(dive.key(), dive->startcode);
        }
    }
    constexpr int kMost = 6;
    return lines.mid(0, kMost).join(QLatin1Char('\n'));
}

} // namespace benthor::tests
