#pragma once

#include "platform/storedrows.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <stdexcept>
#include <vector>

namespace benthor::logbook {

// The rows of one dive as they lie in the store: every field, those that the program does not know as well,
// every byte.

/// Why rows cannot be put where they are wanted: the store is another one by now. For a person to read.
class DoesNotFit : public std::runtime_error {
public:
    explicit DoesNotFit(const QString& reason)
        : std::runtime_error(reason.toStdString()) {}
    QString reason() const { return QString::fromUtf8(what()); }
};

/// A row, its table and the number that the store gave it.
struct TableRow {
    QByteArray table;
    qint64 number = 0;
    platform::StoredRow row;
};
using TableRows = std::vector<TableRow>;

/// What a dive is known by beside its number.
struct DiveKey {
    platform::StoredValue startcode;
    platform::StoredValue dbtxtname;
    bool isKnown() const { return !startcode.text().isEmpty() || !dbtxtname.text().isEmpty(); }
};

enum class RowsOf {
    WholeDive, ///< main, gas, tissue, buddylist
    Details,   ///< what the details screen writes: main, buddylist
};

/// Those of the tables above that the store has.
QList<QByteArray> divetables(platform::StoredRows& store, RowsOf which);
/// In the order of the tables above, and within each in the store's own. No rows where there are none.
TableRows readdiverows(platform::StoredRows& store, const QString& diveid, RowsOf which);
/// The rows of one table that hold `value` in `field`.
TableRows readtablerows(platform::StoredRows& store, const QByteArray& table, const QByteArray& field,
                        const platform::StoredValue& value);
bool hastable(platform::StoredRows& store, const QByteArray& table);

/// Of the dive's first row in main; empty where there is none.
DiveKey keyof(const TableRows& rows);
/// A field of that row, by name without regard to case; Null where there is none.
platform::StoredValue fieldof(const TableRows& rows, const QByteArray& field);
bool hasmain(const TableRows& rows);

/// What they hold, as RowsDigest tells it.
QByteArray digestof(const TableRows& rows);
/// Whether that is their digest.
bool hold(const TableRows& rows, const QByteArray& digest);

QByteArray encoderows(const TableRows& rows);
/// DoesNotFit where that is not what encoderows() made, whole and unchanged.
TableRows decoderows(const QByteArray& bytes);

/// Puts the rows in under that identifier, each with its number where all of them are free. DoesNotFit where
/// the store has no place for one of their fields.
void insertrows(platform::StoredRows& store, const TableRows& rows, const QString& diveid);
/// Removes exactly these rows. DoesNotFit where one is not there.
void removerows(platform::StoredRows& store, const TableRows& rows);
/// Makes the dive's rows in main, which are `current`, hold what `wanted` holds, in their order; the dive's
/// number stays.
void rewritemain(platform::StoredRows& store, const TableRows& current, const TableRows& wanted);
/// Those of one table.
TableRows rowsin(const TableRows& rows, const QByteArray& table);

/// The identifier under which the store has exactly these rows: `diveid` or, where it is another dive's, that
/// of the only dive of that key that holds them; where nothing is known of it, of the only such dive. Nothing
/// where there is none.
std::optional<QString> locatedive(platform::StoredRows& store, const QString& diveid, const DiveKey& key,
                                  const QByteArray& digest, RowsOf which);
/// How many dives beside `diveid` are that dive once more: they are of its key, and hold its rows where no
/// import gave it a file name of its own. A logbook may well have two downloads of one dive without.
int counttwins(platform::StoredRows& store, const QString& diveid, const DiveKey& key,
               const QByteArray& digest);
/// Whether a dive bears the identifier, and one of that key does.
bool isnumbertaken(platform::StoredRows& store, const QString& diveid);
bool isdivethere(platform::StoredRows& store, const QString& diveid, const DiveKey& key,
                 const QByteArray& digest);

} // namespace benthor::logbook
