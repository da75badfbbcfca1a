#pragma once

#include "platform/database.h"
#include "store/backup.h"
#include "store/maintenance.h"
#include "store/schema.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

namespace benthor::tests {

using platform::Database;
using platform::ProgramFolder;

inline QString diveid(int number) {
    return QStringLiteral("D%1").arg(number, 7, 10, QLatin1Char('0'));
}

inline void addDive(const QString& path, int number) {
    Database store;
    store.open(path);
    store.execute("PRAGMA synchronous = OFF");
    platform::Transaction together(store);
    platform::Recordset rows = store.openForAdding("main");
    rows.addNew();
    rows.set(u"DiveID", diveid(number));
    rows.set(u"divenote", QString(600, QLatin1Char('n')));
    rows.update();
    for (const char* const table : {"gas", "tissue"}) {
        platform::Recordset others = store.openForAdding(table);
        others.addNew();
        others.set(u"diveid", diveid(number));
        others.update();
    }
    together.commit();
}

/// How many dives a store holds; -1 where there is none that can be opened.
inline int divesIn(const QString& path) {
    try {
        Database store;
        store.open(path);
        return static_cast<int>(store.openRecordset("SELECT * FROM main").recordCount());
    } catch (const platform::StoreError&) {
        return -1;
    }
}

/// A program folder whose store holds some dives.
class Folder {
public:
    explicit Folder(int dives = 3)
        : folder(directory_.path()) {
        store::createStore(store());
        for (int number = 1; number <= dives; ++number) {
            addDive(store(), number);
        }
    }

    QString store() const { return folder.path(u"rb.mdb"); }
    QString backup(int number) const { return folder.path(store::backupname(number)); }
    QByteArray bytes(const QString& name) const {
        return platform::readFile(folder.path(name)).value_or("(no file)");
    }
    void put(const QString& name, const QByteArray& bytes) const {
        QVERIFY(platform::writeFileWhole(folder.path(name), bytes));
    }
    QStringList names() const { return folder.listFiles(QString(), QStringLiteral("*")); }

private:
    QTemporaryDir directory_{QDir(QStringLiteral("/dev/shm")).exists()
                                 ? QStringLiteral("/dev/shm/benthor-backup")
                                 : QDir::tempPath() + QStringLiteral("/benthor-backup")};

public:
    ProgramFolder folder;
};

/// All that a start does with the store. `ahead`: its splash stood for long enough.
inline void start(const ProgramFolder& folder, bool ahead = false) {
    store::maintainstore(folder, {}, ahead ? store::draftstore(folder) : store::StoreDrafts());
    try {
        store::addmissingfields(folder.path(u"rb.mdb"), [](const QString&) {});
    } catch (const platform::StoreError&) {
        // a start goes on
    }
    store::makedbtxt(folder);
}

/// Every backup that is there is a whole store with as many dives as one of `counts` says.
inline void verifyBackups(const Folder& folder, const QList<int>& counts) {
    for (int number = 1; number <= store::kBackups; ++number) {
        if (QFile::exists(folder.backup(number))) {
            QVERIFY2(store::examinestore(folder.backup(number)).sound(), qPrintable(folder.backup(number)));
            QVERIFY2(counts.contains(divesIn(folder.backup(number))), qPrintable(folder.backup(number)));
        }
    }
}

inline QByteArray torn(const QByteArray& store) {
    return store.first(store.size() / 2 + 100);
}

inline QByteArray scribbled(QByteArray store) {
    for (qsizetype at = 4096; at < store.size(); at += 512) {
        store.replace(at, 200, QByteArray(200, '\xa5'));
    }
    return store;
}

/// Rows for a test: bytes that stand where a store should.
inline void addDamagedStores() {
    QTest::addColumn<QByteArray>("bytes");
    const Folder folder(30);
    const QByteArray good = folder.bytes("rb.mdb");
    QTest::newRow("torn off") << torn(good);
    QTest::newRow("scribbled over") << scribbled(good);
    QTest::newRow("no store at all") << QByteArray(5000, 'x');
    QTest::newRow("empty") << QByteArray();
    {
        SQLite::Database other(folder.folder.path(u"other").toStdString(),
                               SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
        other.exec("CREATE TABLE songs (name TEXT)");
    }
    QTest::newRow("another program's") << folder.bytes("other");
}

} // namespace benthor::tests
