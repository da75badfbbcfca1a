#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>

namespace benthor::tests {

/// What the store holds of one dive. Line ends in notes are LF; what is Null is empty.
struct StoredDive {
    QString startcode;
    QString dbtxtname;
    QMap<QString, QString> diver; ///< what a diver may edit, by field
    QStringList buddies;
    QStringList gases; ///< the fields of each row, joined by commas
    QStringList tissues;
    bool operator==(const StoredDive&) const = default;
};

/// What stands on the disk at one moment, read past the program.
struct Snapshot {
    QMap<QString, StoredDive> dives; ///< by identifier
    QString unit;                    ///< of the table Display
    /// `new`, `old`, `dbtxt` and `corrupt`: bytes by file name.
    QMap<QString, QByteArray> waiting, kept, forviewer, setAside;
};

/// The editable fields of a dive, as the store names them.
QStringList diverFields();

/// Reads the program folder. `error` tells what cannot be read.
Snapshot readSnapshot(const QString& folder, QString& error);

/// In one line for each difference, at most a few.
QString difference(const QMap<QString, StoredDive>& expected, const QMap<QString, StoredDive>& found);

} // namespace benthor::tests
