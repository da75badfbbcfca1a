// Stores that another's hand made: they are data, and reading one changes nothing.

#include "platform/database.h"
#include "platform/files.h"
#include "platform/storewait.h"
#include "store/backup.h"
#include "store/schema.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QDir>
#include <QTemporaryDir>
#include <QtEndian>
#include <QtTest>

#include <csignal>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace benthor;
using platform::Database;
using platform::StoreAccess;
using platform::StoreError;

namespace {

using namespace std::chrono_literals;

/// The engine's own handle, as a program without care for what it opens has it.
void alter(const QString& path, const char* sql) {
    SQLite::Database database(path.toStdString(), SQLite::OPEN_READWRITE);
    database.exec(sql);
}

/// Names and bytes of all files of a folder.
QMap<QString, QByteArray> contentsOf(const QString& folder) {
    QMap<QString, QByteArray> contents;
    for (const QString& name : QDir(folder).entryList(QDir::Files | QDir::Hidden)) {
        contents[name] = platform::readFile(folder + u'/' + name).value_or("(not read)");
    }
    return contents;
}

/// Runs `work` on the store in a process that is killed behind it: what it left unfinished stays.
template <typename Work> void leaveUnfinished(const QString& path, Work work) {
    const pid_t child = fork();
    if (child == 0) {
        SQLite::Database database(path.toStdString(), SQLite::OPEN_READWRITE);
        work(database);
        raise(SIGKILL);
    }
    int status = 0;
    QCOMPARE(waitpid(child, &status, 0), child);
    QVERIFY(WIFSIGNALED(status));
}

void changeWithoutEnd(SQLite::Database& database) {
    // More than the engine's memory holds: a part is in the file before the commit that never comes.
    database.exec("PRAGMA cache_size = 2; BEGIN; DELETE FROM main;");
    for (int i = 0; i < 200; ++i) {
        database.exec("INSERT INTO main (DiveID, divenote) VALUES ('D9999999', '" + std::string(900, 'x') +
                      "')");
    }
}

} // namespace

class TestHostileStore : public QObject {
    Q_OBJECT

private slots:
    void init() {
        directory_ = std::make_unique<QTemporaryDir>();
        path_ = directory_->filePath(QStringLiteral("rb.mdb"));
        store::createStore(path_);
        alter(path_, "INSERT INTO main (DiveID, Location) VALUES ('D0000001', 'Reef'), ('D0000002', 'Wreck');"
                     "INSERT INTO gas (diveid) VALUES ('D0000001');");
    }

    void aTriggerDoesNotRun();
    void aViewIsNotRead();
    void aStoreWhoseDivesAreNoTableIsRefused_data();
    void aStoreWhoseDivesAreNoTableIsRefused();
    void aQueryThatNeverEndsHasAWayOut();
    void aLookChangesNoByte_data();
    void aLookChangesNoByte();
    void aLookSeesWhatWasCommitted_data();
    void aLookSeesWhatWasCommitted();
    void aLookRemovesNoFileThatAJournalNames();
    void aStoreThatIsLookedAtCannotBeChanged();
    void aFileThatIsNoStoreIsNotLookedAt();

private:
    std::unique_ptr<QTemporaryDir> directory_;
    QString path_;
};

void TestHostileStore::aTriggerDoesNotRun() {
    alter(path_, "CREATE TRIGGER wipe AFTER INSERT ON main BEGIN DELETE FROM gas; END;"
                 "CREATE TRIGGER rename AFTER UPDATE ON main BEGIN UPDATE main SET Location = 'gone'; END;");
    Database store;
    store.open(path_);
    platform::Recordset dives = store.openRecordset("SELECT * FROM main");
    dives.addNew();
    dives.set(u"DiveID", QStringLiteral("D0000003"));
    dives.update();
    dives.moveFirst();
    dives.edit();
    dives.set(u"divenote", QStringLiteral("clear water"));
    dives.update();
    QCOMPARE(store.openRecordset("SELECT * FROM gas").recordCount(), 1);
    QCOMPARE(store.openRecordset("SELECT * FROM main WHERE Location = 'gone'").recordCount(), 0);
}

void TestHostileStore::aViewIsNotRead() {
    alter(path_,
          "DROP TABLE main; CREATE VIEW main AS WITH RECURSIVE n(DiveID) AS (SELECT 1 UNION ALL SELECT "
          "DiveID + 1 FROM n) SELECT * FROM n;");
    Database store;
    store.open(path_, StoreAccess::Look);
    QVERIFY_EXCEPTION_THROWN(store.openRecordset("SELECT * FROM main LIMIT 1"), StoreError);
}

void TestHostileStore::aStoreWhoseDivesAreNoTableIsRefused_data() {
    QTest::addColumn<QByteArray>("sql");
    QTest::addColumn<QString>("table");
    for (const char* const table : {"main", "gas", "tissue"}) {
        const QByteArray drop = QByteArray("DROP TABLE ") + table + "; ";
        const auto row = [&](const char* what) -> QTestData& {
            return QTest::newRow((QByteArray(table) + ' ' + what).constData());
        };
        row("missing") << drop << table;
        row("a view") << drop + "CREATE VIEW " + table + " AS SELECT * FROM site" << table;
        row("made by code") << drop + "CREATE VIRTUAL TABLE " + table + " USING fts5(diveid)" << table;
        row("said to be a table")
            << drop + "CREATE VIRTUAL TABLE " + table +
                   " USING fts5(diveid); CREATE TABLE pragma_table_list (schema, name, type); INSERT INTO "
                   "pragma_table_list VALUES ('main', '" +
                   table + "', 'table')"
            << table;
    }
}

void TestHostileStore::aStoreWhoseDivesAreNoTableIsRefused() {
    QFETCH(QByteArray, sql);
    QFETCH(QString, table);
    alter(path_, sql.constData());
    const QMap<QString, QByteArray> before = contentsOf(directory_->path());
    const platform::StoreVerdict verdict = store::examinestore(path_);
    QCOMPARE(verdict.state, platform::StoreVerdict::State::Damaged);
    QVERIFY2(verdict.reason.contains(table), qPrintable(verdict.reason));
    QCOMPARE(contentsOf(directory_->path()), before);
}

void TestHostileStore::aQueryThatNeverEndsHasAWayOut() {
    std::chrono::milliseconds longest{0};
    const platform::StoreWaiting waiting([&](platform::StoreWait why, std::chrono::milliseconds worked) {
        longest = why == platform::StoreWait::Working ? worked : 0ms;
        return worked < 50ms;
    });
    Database store;
    store.open(path_);
    QVERIFY_EXCEPTION_THROWN(
        store.openRecordset("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) "
                            "SELECT max(i) FROM n"),
        StoreError);
    QVERIFY(longest >= 50ms);
    QCOMPARE(store.openRecordset("SELECT * FROM main").recordCount(), 2);
}

void TestHostileStore::aLookChangesNoByte_data() {
    QTest::addColumn<QString>("state");
    for (const char* const state : {"at rest", "changed and not committed", "changes kept beside",
                                    "changes kept beside and all closed", "an empty journal"}) {
        QTest::newRow(state) << QString::fromLatin1(state);
    }
}

void TestHostileStore::aLookChangesNoByte() {
    QFETCH(QString, state);
    if (state == QLatin1String("changed and not committed")) {
        leaveUnfinished(path_, changeWithoutEnd);
        QVERIFY(QFileInfo(path_ + QStringLiteral("-journal")).size() > 0);
    } else if (state == QLatin1String("changes kept beside")) {
        leaveUnfinished(path_, [](SQLite::Database& database) {
            database.exec("PRAGMA journal_mode = WAL; DELETE FROM main WHERE DiveID = 'D0000002';");
        });
        QVERIFY(QFileInfo(path_ + QStringLiteral("-wal")).size() > 0);
    } else if (state == QLatin1String("changes kept beside and all closed")) {
        alter(path_, "PRAGMA journal_mode = WAL; DELETE FROM gas;");
        QVERIFY(!QFile::exists(path_ + QStringLiteral("-wal")));
    } else if (state == QLatin1String("an empty journal")) {
        QVERIFY(platform::writeFileWhole(path_ + QStringLiteral("-journal"), {}));
    }
    const QMap<QString, QByteArray> before = contentsOf(directory_->path());
    const QDateTime changed = QFileInfo(path_).lastModified();
    {
        QVERIFY2(store::examinestore(path_).sound(), qPrintable(store::examinestore(path_).reason));
        Database store;
        store.open(path_, StoreAccess::Look);
        QVERIFY(store.openRecordset("SELECT * FROM main").recordCount() > 0);
        QCOMPARE(store.path(), path_);
        QCOMPARE(contentsOf(directory_->path()), before);
    }
    QCOMPARE(contentsOf(directory_->path()), before);
    QCOMPARE(QFileInfo(path_).lastModified(), changed);
}

void TestHostileStore::aLookSeesWhatWasCommitted_data() {
    QTest::addColumn<bool>("beside");
    QTest::newRow("a change that was not committed is undone") << false;
    QTest::newRow("a change that is kept beside is seen") << true;
}

void TestHostileStore::aLookSeesWhatWasCommitted() {
    QFETCH(bool, beside);
    if (beside) {
        leaveUnfinished(path_, [](SQLite::Database& database) {
            database.exec("PRAGMA journal_mode = WAL; DELETE FROM main WHERE DiveID = 'D0000002';");
        });
    } else {
        leaveUnfinished(path_, changeWithoutEnd);
    }
    Database store;
    store.open(path_, StoreAccess::Look);
    QCOMPARE(store.openRecordset("SELECT * FROM main").recordCount(), beside ? 1 : 2);
    QCOMPARE(store.openRecordset("SELECT * FROM main WHERE DiveID = 'D9999999'").recordCount(), 0);
}

/// The engine itself would remove it: the journal says that it belongs to a change of several stores.
void TestHostileStore::aLookRemovesNoFileThatAJournalNames() {
    const QString letter = directory_->filePath(QStringLiteral("letter.txt"));
    QVERIFY(platform::writeFileWhole(letter, "dear diver"));
    leaveUnfinished(path_, changeWithoutEnd);
    QFile journal(path_ + QStringLiteral("-journal"));
    QVERIFY(journal.open(QIODevice::ReadWrite));
    const QByteArray name = QFile::encodeName(letter);
    quint32 sum = 0;
    for (const char c : name) {
        sum += static_cast<quint32>(c);
    }
    const auto number = [](quint32 value) {
        QByteArray bytes(4, '\0');
        qToBigEndian(value, bytes.data());
        return bytes;
    };
    constexpr quint32 kPageSize = 4096;
    constexpr quint32 kNeverUsedByte = 0x40000000;
    journal.seek(journal.size());
    journal.write(number(kNeverUsedByte / kPageSize + 1) + name + number(static_cast<quint32>(name.size())) +
                  number(sum) + QByteArray::fromHex("d9d505f920a163d7"));
    journal.close();
    const QMap<QString, QByteArray> before = contentsOf(directory_->path());
    {
        Database store;
        store.open(path_, StoreAccess::Look);
        QCOMPARE(store.openRecordset("SELECT * FROM main").recordCount(), 2);
    }
    QCOMPARE(contentsOf(directory_->path()), before);
    // What is guarded against is real.
    alter(path_, "DELETE FROM gas");
    QVERIFY(!QFile::exists(letter));
}

void TestHostileStore::aStoreThatIsLookedAtCannotBeChanged() {
    Database store;
    store.open(path_, StoreAccess::Look);
    QVERIFY(!store.readOnlyReason().isEmpty());
    platform::Recordset dives = store.openRecordset("SELECT * FROM main");
    dives.edit();
    dives.set(u"Location", QStringLiteral("Cave"));
    QVERIFY_EXCEPTION_THROWN(dives.update(), StoreError);
    QVERIFY_EXCEPTION_THROWN(store.execute("DELETE FROM gas"), StoreError);
    QVERIFY_EXCEPTION_THROWN(const platform::Transaction change(store), StoreError);
    QVERIFY(!store.updatable(QStringLiteral("main")));
}

void TestHostileStore::aFileThatIsNoStoreIsNotLookedAt() {
    const QString pipe = directory_->filePath(QStringLiteral("pipe.mdb"));
    QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    Database store;
    QVERIFY_EXCEPTION_THROWN(store.open(pipe, StoreAccess::Look), StoreError);
    QVERIFY_EXCEPTION_THROWN(store.open(directory_->path(), StoreAccess::Look), StoreError);
    QVERIFY(!store::examinestore(pipe).sound());
    QVERIFY(!store.isOpen());
}

QTEST_GUILESS_MAIN(TestHostileStore)
#include "test_hostilestore.moc"
