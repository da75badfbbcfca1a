#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>

#include <vector>

namespace benthor::tests {

/// What the store holds of one dive. Line ends in notes are LF; what is Null is empty.
struct StoredDive {
    QString startcode;
    QString dbtxtname;
    QMap<QString, QString> diver;  ///< what a diver may edit, by field
    QMap<QString, QString> device; ///< all other fields of its row, by name in lower case; those not Null
    QStringList buddies;
    QStringList gases; ///< the fields of each row, joined by commas
    QStringList tissues;
    bool operator==(const StoredDive&) const = default;

    QString started() const { return device.value(QStringLiteral("startdate")); }
    QString duration() const { return device.value(QStringLiteral("duration")); }
    QString depth() const { return device.value(QStringLiteral("maxdepth")); }
    /// As MadeDive::key().
    QString key() const { return started() + u'|' + duration() + u'|' + depth(); }
};

/// A dive as it stands in a store.
struct StoredRow {
    qint64 number = 0; ///< of its row in the table main
    QString diveid;
    StoredDive dive;
};

/// What a store holds, read past the program.
struct StoreContents {
    std::vector<StoredRow> dives;     ///< in the order of their rows
    QMap<QString, QStringList> lists; ///< of the pick lists, by table: "department", "site", ...
    QStringList buddies;              ///< all that any dive names, those of deleted ones too
    QString unit;                     ///< of the table Display
    QMap<QString, StoredDive> byId() const;
};

/// What stands on the disk at one moment, read past the program.
struct Snapshot {
    QMap<QString, StoredDive> dives; ///< by identifier
    QMap<QString, QStringList> lists;
    QStringList buddies;
    QString unit;           ///< of the table Display
    QStringList trashNames; ///< what dives in the trash call their files
    /// `new`, `old`, `dbtxt` and `corrupt`: bytes by file name.
    QMap<QString, QByteArray> waiting, kept, forviewer, setAside;
};

/// The editable fields of a dive, as the store names them.
const QStringList& diverFields();

/// The names of the pick lists' tables.
const QStringList& listTables();

/// Reads a store of ours; a StoreError where that cannot be done.
StoreContents readStore(const QString& path);

/// Bytes by file name.
QMap<QString, QByteArray> filesOf(const QString& folder);

/// Reads the program folder. `error` tells what cannot be read.
Snapshot readSnapshot(const QString& folder, QString& error);

/// In one line for each difference, at most a few.
QString difference(const QMap<QString, StoredDive>& expected, const QMap<QString, StoredDive>& found);

} // namespace benthor::tests
