#include "tests/walk/snapshot.h"

#include "platform/database.h"
#include "platform/files.h"

#include <QDir>

namespace benthor::tests {

namespace {

QMap<QString, QByteArray> filesOf(const QString& folder) {
    QMap<QString, QByteArray> files;
    for (const QString& name : QDir(folder).entryList(QDir::Files)) {
        files.insert(name, platform::readFile(folder + u'/' + name).value_or("(not readable)"));
    }
    return files;
}

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

StoredDive diveOf(const platform::Recordset& row) {
    StoredDive dive;
    dive.startcode = plain(row.value(u"Startcode"));
    dive.dbtxtname = plain(row.value(u"dbtxtname"));
    for (const QString& field : diverFields()) {
        dive.diver.insert(field, plain(row.value(field)));
    }
    return dive;
}

} // namespace

QStringList diverFields() {
    return {QStringLiteral("UserName"), QStringLiteral("department"), QStringLiteral("site"),
            QStringLiteral("Location"), QStringLiteral("weather"),    QStringLiteral("Suit"),
            QStringLiteral("divenote"), QStringLiteral("sitenote"),   QStringLiteral("Coments")};
}

Snapshot readSnapshot(const QString& folder, QString& error) {
    Snapshot shot;
    shot.waiting = filesOf(folder + QStringLiteral("/new"));
    shot.kept = filesOf(folder + QStringLiteral("/old"));
    shot.forviewer = filesOf(folder + QStringLiteral("/dbtxt"));
    shot.setAside = filesOf(folder + QStringLiteral("/corrupt"));
    try {
        platform::Database store;
        store.open(folder + QStringLiteral("/rb.mdb"));
        platform::Recordset rows = store.openRecordset("SELECT * FROM main ORDER BY rowid");
        for (; !rows.eof(); rows.moveNext()) {
            const QString diveid = rows.value(u"DiveID").text();
            if (shot.dives.contains(diveid)) {
                error = QStringLiteral("two dives are called %1").arg(diveid);
            }
            shot.dives.insert(diveid, diveOf(rows));
        }
        const auto gases = rowsByDive(store, "SELECT * FROM gas ORDER BY rowid");
        const auto tissues = rowsByDive(store, "SELECT * FROM tissue ORDER BY rowid");
        const auto buddies = rowsByDive(store, "SELECT diveid, buddylist FROM buddylist ORDER BY rowid");
        for (auto dive = shot.dives.begin(); dive != shot.dives.end(); ++dive) {
            dive->gases = gases.value(dive.key());
            dive->tissues = tissues.value(dive.key());
            dive->buddies = buddies.value(dive.key());
        }
        shot.unit = store.openRecordset("SELECT * FROM Display ").value(u"display").text();
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
