#pragma once

#include "logbook/acts.h"
#include "logbook/details.h"
#include "logbook/divelist.h"
#include "platform/storedrows.h"
#include "store/identifiers.h"
#include "tests/support/programfixture.h"

namespace benthor::tests {

/// A program folder whose store has dives with all that a row may hold: Null beside empty texts, carriage
/// returns at the end, fields that the program does not know, values of every type, buddies.
class ActWorld : public ProgramFixture {
public:
    ActWorld() {
        for (const char* sql :
             {"ALTER TABLE main ADD COLUMN \"odd one\"", "ALTER TABLE gas ADD COLUMN more"}) {
            process().database.execute(sql);
        }
        reopen(); // the rows of a table that was widened are read afresh
    }

    void reopen() const {
        process().database.close();
        openStore();
    }

    static QString id(int number) { return QStringLiteral("D%1").arg(number, 7, 10, QLatin1Char('0')); }

    static platform::StoredRows rows() { return platform::StoredRows(process().database); }

    static void addDive(int number) {
        using platform::StoredValue;
        platform::Transaction transaction(process().database);
        const QString diveid = id(number);
        const QString name = QStringLiteral("Dive%1.txt").arg(number);
        StoredValue odd(qint64{number});
        if (number % 3 == 1) {
            odd = StoredValue::blob(QByteArray("\0\xff\x01", 3));
        } else if (number % 3 == 2) {
            odd.type = StoredValue::Type::Real;
            odd.real = number / 7.0;
        }
        rows().change(
            "INSERT INTO main (DiveID, Location, startdate, Startcode, dbtxtname, site, weather, Suit, "
            "divenote, \"odd one\") VALUES (?1, ?2, '2017-07-27 09:50:02', ?3, ?4, '', NULL, "
            "'KD00123', ?5, ?6)",
            {diveid, name, QString::number(800000000 + number), QStringLiteral("X") + name,
             QStringLiteral("two\r\nlines and \u00e9\r"), odd});
        for (int row = 0; row < 3; ++row) {
            rows().change("INSERT INTO gas VALUES (?1, ?2, '79', NULL, '', '1\r', ?3)",
                          {diveid, QString::number(row), odd});
            rows().change("INSERT INTO tissue VALUES (?1, ?2, '79', '0\r')", {diveid, QString::number(row)});
        }
        rows().change("INSERT INTO buddylist VALUES (?1, 'Anna')", {diveid});
        store::syncserialno();
        transaction.commit();
        process().mainrecordset.close();
    }

    /// Every table of the store with every value and its type; `withNumbers`: the rows' own numbers, too.
    static QByteArray snapshot(bool withNumbers = true) {
        QByteArray text;
        platform::StoredRows store = rows();
        for (const auto& table :
             store.read("SELECT name FROM main.sqlite_master WHERE type = 'table' ORDER BY name")) {
            const QByteArray name = platform::quotedTableName(table.at(0).bytes);
            text += name + '\n';
            const QByteArray number = withNumbers ? "rowid, " : "";
            for (const auto& row :
                 store.read("SELECT " + number + "* FROM main." + name + " ORDER BY rowid")) {
                for (const auto& [field, value] : row.fields) {
                    text += field + '=' + QByteArray::number(static_cast<int>(value.type)) + ':' +
                            QByteArray::number(value.integer) + ':' +
                            QByteArray::number(value.real, 'g', 17) + ':' + value.bytes.toHex() + ' ';
                }
                text += '\n';
            }
        }
        return text;
    }

    logbook::ActRecord del(const QList<int>& numbers) const {
        QStringList dives;
        for (const int number : numbers) {
            dives += id(number);
        }
        return logbook::deletedives(process().database, folder, dives);
    }

    static logbook::SavedDetails save(int number, const QString& note, const QStringList& buddies = {},
                                      const QString& site = {}) {
        logbook::DiverAdds diver = logbook::loaddetails(process().database, id(number), u"metre").diver;
        diver.divenote = note;
        diver.site = site;
        diver.buddies = buddies;
        return logbook::savedetails(process().database, store::identifydive(process().database, id(number)),
                                    diver);
    }

    static QString undoWords() { return logbook::actsinhand(process().database).undo.what; }
    static QString redoWords() { return logbook::actsinhand(process().database).redo.what; }
    logbook::TurnedAct undo() const { return logbook::undoact(process().database, folder, inHand().undo.id); }
    logbook::TurnedAct redo() const { return logbook::redoact(process().database, folder, inHand().redo.id); }

    static QStringList dives() { return rows2("SELECT DiveID FROM main ORDER BY DiveID"); }
    static QString counter() { return rows2("SELECT serial_no FROM serialno").value(0); }
    QString actsFile() const { return folder.path(u"rb-acts.db"); }

private:
    static logbook::ActsInHand inHand() {
        logbook::ActsInHand acts = logbook::actsinhand(process().database);
        if (!acts.fault.isEmpty()) {
            throw platform::StoreError(acts.fault);
        }
        return acts;
    }
    static QStringList rows2(const char* sql) { return ProgramFixture::rows(sql); }
};

} // namespace benthor::tests
