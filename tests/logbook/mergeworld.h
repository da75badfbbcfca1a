#pragma once

#include "logbook/merge.h"
#include "platform/storedrows.h"
#include "tests/logbook/actworld.h"

#include <QCryptographicHash>
#include <QDirIterator>

namespace benthor::tests {

/// Fields of a row of main by name; no value is Null.
using MainRow = QMap<QString, std::optional<QString>>;

/// The program folder of another diver beside the one in use.
class MergeWorld : public ActWorld {
public:
    MergeWorld()
        : there(directory_.path()) {
        for (const char* const name : {"old", "dbtxt"}) {
            QDir().mkpath(there.path(QString::fromLatin1(name)));
        }
        QFile::copy(storePath(), there.path(u"rb.mdb"));
        open(thatStore_, there.path(u"rb.mdb"));
    }

    /// One that came from a device: all of its fields, two gases, two tissues.
    static MainRow dive(int number) {
        return {{QStringLiteral("Location"), QStringLiteral("Reef%1.txt").arg(number)},
                {QStringLiteral("startdate"), QStringLiteral("2017-07-27 09:50:02")},
                {QStringLiteral("Duration"), QStringLiteral("41:7")},
                {QStringLiteral("MaxDepth"), QStringLiteral("23.400")},
                {QStringLiteral("Startcode"), QString::number(810000000 + number)},
                {QStringLiteral("Suit"), QStringLiteral("KD00123")},
                {QStringLiteral("UserName"), QStringLiteral("KD00123")},
                {QStringLiteral("dbtxtname"), QStringLiteral("A%1.txt").arg(number)}};
    }

    /// Adds the row, two gas rows whose last field keeps its carriage return, and a tissue row.
    static void add(platform::Database& store, const QString& diveid, const MainRow& fields) {
        platform::StoredRows rows(store);
        QByteArray names = "DiveID";
        QByteArray places = "?1";
        std::vector<platform::StoredValue> values{diveid};
        for (auto field = fields.begin(); field != fields.end(); ++field) {
            values.push_back(field.value() ? platform::StoredValue(*field.value()) : platform::StoredValue());
            names += ", " + platform::quotedTableName(field.key().toUtf8());
            places += ", ?" + QByteArray::number(static_cast<qint64>(values.size()));
        }
        rows.change("INSERT INTO main (" + names + ") VALUES (" + places + ")", values);
        rows.change("INSERT INTO gas (diveid, Gastype, GasN2, Gasstat) VALUES (?1, '0000', '79', '1\r')",
                    {diveid});
        rows.change("INSERT INTO gas (diveid, Gastype, GasN2, Gasstat) VALUES (?1, '0001', NULL, '\r')",
                    {diveid});
        rows.change("INSERT INTO tissue (diveid, Tissuetype, TissueN2, TissueHe) VALUES (?1, '0000', '79', "
                    "'12\r')",
                    {diveid});
    }
    void addHere(int number, const MainRow& fields) const {
        add(process().database, id(number), fields);
        store::syncserialno();
    }
    void addThere(int number, const MainRow& fields) { add(thatStore(), id(number), fields); }
    void runThere(const platform::Query& sql) { thatStore().execute(sql); }
    /// Opened where it is closed.
    platform::Database& thatStore() {
        if (!thatStore_.isOpen()) {
            open(thatStore_, there.path(u"rb.mdb"));
        }
        return thatStore_;
    }
    /// Before the other store is read: nothing of it is in our hands.
    void closeThere() { thatStore_.close(); }

    void putThere(const QString& where, const QString& name, const QByteArray& bytes) const {
        QFile file(there.path(where, name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
            qFatal("no file %s", qPrintable(name));
        }
    }

    std::vector<logbook::MergeDive> plan() {
        closeThere();
        logbook::OtherLogbook other(there.root(), storePath());
        return logbook::planmerge(process().database, folder, other);
    }
    logbook::MergeResult merge() {
        return merge(
            [](const std::vector<logbook::MergeDive>& dives) { return logbook::plainchoices(dives); });
    }
    template <class Choose> logbook::MergeResult merge(Choose&& choose) {
        closeThere();
        logbook::OtherLogbook other(there.root(), storePath());
        const auto dives = logbook::planmerge(process().database, folder, other);
        return logbook::mergedives(process().database, folder, other, dives, choose(dives));
    }

    /// Names and bytes of all files below a folder.
    static QMap<QString, QByteArray> filesBelow(const QString& root) {
        QMap<QString, QByteArray> files;
        QDirIterator found(root, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (found.hasNext()) {
            const QString path = found.next();
            files[path.mid(root.size())] = platform::readFile(path).value_or("(unreadable)");
        }
        return files;
    }

    static QStringList lines(const platform::Query& query) { return ProgramFixture::rows(query); }

    static QString field(const QString& diveid, const char* name) {
        platform::Recordset rows = process().database.openRecordset(
            platform::sqlWith("SELECT * FROM main WHERE DiveID = '", diveid, "'"));
        const platform::Value value = rows.value(QString::fromLatin1(name));
        return value.isNull() ? QStringLiteral("(null)") : value.text();
    }

private:
    static void open(platform::Database& store, const QString& path) {
        store.open(path);
        store.execute("PRAGMA synchronous = OFF");
    }

    QTemporaryDir directory_;
    platform::Database thatStore_;

public:
    platform::ProgramFolder there;
};

inline const QString kText = QStringLiteral("dbtxt");
inline const QString kOld = QStringLiteral("old");

/// Chooses the same for every difference, and no new dive.
inline auto taking(logbook::TakeDetail take) {
    return [take](const std::vector<logbook::MergeDive>& dives) {
        std::vector<logbook::MergeChoice> choices(dives.size());
        for (size_t i = 0; i < dives.size(); ++i) {
            choices[i].details.assign(dives[i].differences.size(), take);
        }
        return choices;
    };
}

/// A dive with its files and all that belongs to it, over there.
inline void addWholeDive(MergeWorld& world) {
    world.runThere("ALTER TABLE main ADD COLUMN \"their field\"");
    world.runThere("ALTER TABLE tissue ADD COLUMN extra");
    MainRow dive = MergeWorld::dive(5);
    dive[QStringLiteral("their field")] = QStringLiteral("kept\r");
    dive[QStringLiteral("odd one")] = QString();
    dive[QStringLiteral("divenote")] = QStringLiteral("it's \"deep\"\r\nand \u00e9");
    MergeWorld::add(world.thatStore(), world.id(3), dive);
    world.runThere("INSERT INTO buddylist VALUES ('D0000003', 'O''Neil')");
    world.runThere("INSERT INTO buddylist VALUES ('D0000003', 'Anna')");
    world.putThere(kText, QStringLiteral("A5.txt"), "the profile");
    world.putThere(kOld, QStringLiteral("Reef5.txt"), "the profile");
    world.putThere(kOld, QStringLiteral("Reef4.txt"), "the Profile");
}

} // namespace benthor::tests
