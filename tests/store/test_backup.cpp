#include "platform/faultpoint.h"
#include "platform/storewait.h"
#include "tests/store/backupfolder.h"
#include "tests/support/killed.h"

using namespace benthor;
using namespace benthor::tests;

namespace {

using Backups = QList<QByteArray>;

/// The bytes of all nine, the newest first.
Backups backupsOf(const Folder& folder) {
    Backups all;
    for (int number = 1; number <= store::kBackups; ++number) {
        all += folder.bytes(store::backupname(number));
    }
    return all;
}

/// Nine starts, each with one dive more, and then a tenth dive. `missing` are the backups that somebody took
/// away.
void fillBackups(const Folder& folder, const QList<int>& missing = {}) {
    static const std::unique_ptr<Folder> nine = [] {
        auto made = std::make_unique<Folder>(0);
        for (int run = 1; run <= store::kBackups; ++run) {
            addDive(made->store(), run);
            store::maintainstore(made->folder);
        }
        addDive(made->store(), store::kBackups + 1);
        return made;
    }();
    for (const QString& name : nine->names()) {
        folder.put(name, nine->bytes(name));
    }
    for (const int number : missing) {
        QVERIFY(QFile::remove(folder.backup(number)));
    }
}

} // namespace

class TestBackup : public QObject {
    Q_OBJECT

private slots:
    void backupsAreNumberedFromTheNewest();
    void theFirstStartsLeaveLaterBackupsAbsentAndTheNinthHasAll();
    void theStoreIsPackedAndHoldsTheSame();
    void aLeftoverOfAnEarlierPackingIsNoHindrance();
    void withoutAStoreNothingIsRotated();
    void aBackupThatIsMissingLeavesTheOneBehindItAsItIs();
    void anUnfinishedChangeIsRolledBackFirst();

    void aDamagedStoreIsKeptAsideAndTheBackupsStay_data();
    void aDamagedStoreIsKeptAsideAndTheBackupsStay();
    void aSecondDamagedStoreIsNumbered();
    void aLockedStoreStaysAsItIs();
    void aSoundStoreStaysWherePackingFails();
    void aBackupThatComesOutWrongLeavesTheEarlierOne();
    void aStoreThatIsLockedOrDamagedMovesNoBackup();
    void aLargeStoreIsProvedByTwoReaders();
    void anIndexOfALargeStoreThatLeadsAstrayIsFound();
    void aWatchStopsALargeStoreAtAnyOfItsQuestions();
    void theNewestBackupThatIsALinkStaysWhole();

    void aStartThatFailsAtAnyStepMovesNoBackupUnlessItMadeANewOne_data();
    void aStartThatFailsAtAnyStepMovesNoBackupUnlessItMadeANewOne();
    void killedAtAnyStepNoBackupMovesUnlessThereIsANewOneAndNoneIsLost_data();
    void killedAtAnyStepNoBackupMovesUnlessThereIsANewOneAndNoneIsLost();
    void aPlaceThatCannotBeTakenDoesNotEndTheBackups();

    void aDiskThatFailsOnceAtAnyStepLosesNothing();
    void aDiskThatFailsFromAnyStepOnLosesNothing();
    void killedAtAnyStepOfAStartNothingIsLost_data();
    void killedAtAnyStepOfAStartNothingIsLost();

    void packingByHandFindsNoFolderAndEnds();
};

void TestBackup::backupsAreNumberedFromTheNewest() {
    QCOMPARE(store::backupname(1), "backup.mdb");
    QCOMPARE(store::backupname(2), "backup2.mdb");
    QCOMPARE(store::backupname(9), "backup9.mdb");
}

/// Each start finds one dive more, so a backup tells by its dives of which start it is.
void TestBackup::theFirstStartsLeaveLaterBackupsAbsentAndTheNinthHasAll() {
    const Folder folder(0);
    for (int run = 1; run <= 11; ++run) {
        addDive(folder.store(), run);
        const store::Maintenance done = store::maintainstore(folder.folder);
        QCOMPARE(done.setAside, QString());
        QCOMPARE(divesIn(folder.store()), run);
        for (int number = 1; number <= store::kBackups; ++number) {
            const int dives = run - number + 1;
            QCOMPARE(divesIn(folder.backup(number)), dives >= 1 ? dives : -1);
        }
        QCOMPARE(folder.bytes("backup.mdb"), folder.bytes("rb.mdb"));
    }
    QCOMPARE(folder.names().size(), 1 + store::kBackups);
}

void TestBackup::theStoreIsPackedAndHoldsTheSame() {
    const Folder folder(60);
    {
        Database store;
        store.open(folder.store());
        store.execute("DELETE FROM main WHERE DiveID < 'D0000055'");
    }
    const qint64 before = folder.bytes("rb.mdb").size();
    store::maintainstore(folder.folder);
    QVERIFY(folder.bytes("rb.mdb").size() + 30000 < before);
    Database store;
    store.open(folder.store());
    QStringList ids;
    for (platform::Recordset rows = store.openRecordset("SELECT * FROM main"); !rows.eof(); rows.moveNext()) {
        ids += rows.value(0).text();
    }
    QCOMPARE(ids, QStringList({diveid(55), diveid(56), diveid(57), diveid(58), diveid(59), diveid(60)}));
    QCOMPARE(store.openRecordset("SELECT * FROM gas").recordCount(), 60);
    QCOMPARE(store.openRecordset("SELECT * FROM Display").value(0).text(), "metre");
    QVERIFY(!folder.names().contains(QStringLiteral("rb2.mdb")));
}

void TestBackup::aLeftoverOfAnEarlierPackingIsNoHindrance() {
    const Folder folder;
    folder.put(QStringLiteral("rb2.mdb"), "half a store");
    folder.put(QStringLiteral("rb2.mdb-journal"), "and its journal");
    store::maintainstore(folder.folder);
    QCOMPARE(divesIn(folder.store()), 3);
    QCOMPARE(folder.names(), QStringList({"backup.mdb", "rb.mdb"}));
}

void TestBackup::withoutAStoreNothingIsRotated() {
    const Folder folder;
    store::maintainstore(folder.folder);
    QVERIFY(QFile::remove(folder.store()));
    store::maintainstore(folder.folder);
    QCOMPARE(folder.names(), QStringList{"backup.mdb"});
    QCOMPARE(divesIn(folder.backup(1)), 3);
}

void TestBackup::aBackupThatIsMissingLeavesTheOneBehindItAsItIs() {
    const Folder folder(0);
    fillBackups(folder, {1, 4, 8, 9}); // left: 2 with 8 dives, 3 with 7, 5 with 5, 6 with 4, 7 with 3
    store::maintainstore(folder.folder);
    QList<int> dives;
    for (int number = 1; number <= store::kBackups; ++number) {
        dives += divesIn(folder.backup(number));
    }
    QCOMPARE(dives, (QList<int>{10, 8, 8, 7, 5, 5, 4, 3, -1}));
    QCOMPARE(folder.names().size(), 1 + store::kBackups - 1);
}

void TestBackup::anUnfinishedChangeIsRolledBackFirst() {
    const Folder folder(40);
    const Folder crashed(0);
    {
        // A change too large for the engine's memory is partly in the file before it is committed.
        SQLite::Database store(folder.store().toStdString(), SQLite::OPEN_READWRITE);
        store.exec("PRAGMA cache_size = 2; BEGIN; DELETE FROM main; DELETE FROM gas;");
        for (int i = 0; i < 200; ++i) {
            store.exec("INSERT INTO main (DiveID, divenote) VALUES ('D9999999', '" + std::string(900, 'x') +
                       "')");
        }
        crashed.put(QStringLiteral("rb.mdb"), folder.bytes("rb.mdb"));
        crashed.put(QStringLiteral("rb.mdb-journal"), folder.bytes("rb.mdb-journal"));
        store.exec("ROLLBACK");
    }
    QVERIFY(crashed.bytes("rb.mdb") != folder.bytes("rb.mdb"));
    store::maintainstore(crashed.folder);
    QCOMPARE(divesIn(crashed.store()), 40);
    QCOMPARE(divesIn(crashed.backup(1)), 40);
    QVERIFY(!QFile::exists(crashed.store() + QStringLiteral("-journal")));
}

void TestBackup::aDamagedStoreIsKeptAsideAndTheBackupsStay_data() {
    addDamagedStores();
}

void TestBackup::aDamagedStoreIsKeptAsideAndTheBackupsStay() {
    QFETCH(QByteArray, bytes);
    const Folder folder;
    store::maintainstore(folder.folder);
    addDive(folder.store(), 4);
    store::maintainstore(folder.folder);
    folder.put(QStringLiteral("rb.mdb"), bytes);
    const store::Maintenance done = store::maintainstore(folder.folder);
    QCOMPARE(done.setAside, "rb-damaged.mdb");
    QVERIFY(!done.reason.isEmpty());
    QVERIFY(!QFile::exists(folder.store()));
    QCOMPARE(folder.bytes("rb-damaged.mdb"), bytes);
    QCOMPARE(divesIn(folder.backup(1)), 4);
    verifyBackups(folder, {3, 4});
    // The question about the missing store follows; with Yes all is as it was.
    QVERIFY(store::restorebackup(folder.folder));
    QCOMPARE(divesIn(folder.store()), 4);
}

void TestBackup::aSecondDamagedStoreIsNumbered() {
    const Folder folder;
    store::maintainstore(folder.folder);
    for (const char* const name : {"rb-damaged.mdb", "rb-damaged2.mdb", "rb-damaged3.mdb"}) {
        folder.put(QStringLiteral("rb.mdb"), name);
        QCOMPARE(store::maintainstore(folder.folder).setAside, QString::fromLatin1(name));
        QCOMPARE(folder.bytes(QString::fromLatin1(name)), QByteArray(name));
    }
    QCOMPARE(divesIn(folder.backup(1)), 3);
}

void TestBackup::aLockedStoreStaysAsItIs() {
    const Folder folder;
    store::maintainstore(folder.folder);
    addDive(folder.store(), 4);
    const QByteArray before = folder.bytes("rb.mdb");
    SQLite::Database other(folder.store().toStdString(), SQLite::OPEN_READWRITE);
    other.exec("BEGIN EXCLUSIVE");
    QCOMPARE(store::maintainstore(folder.folder).setAside, QString());
    QCOMPARE(folder.bytes("rb.mdb"), before);
    QCOMPARE(divesIn(folder.backup(1)), 3);
    other.exec("ROLLBACK");
}

void TestBackup::aSoundStoreStaysWherePackingFails() {
    for (const char* const step : {"compact", "compacted", "rename"}) {
        const Folder folder;
        const QByteArray before = folder.bytes("rb.mdb");
        {
            // The first change of a name is that of the backup to be.
            int left = step == std::string_view("rename") ? 2 : 1;
            const platform::FaultInjection fault(
                [&](std::string_view at) { return at == step && --left == 0 ? ENOSPC : 0; });
            QCOMPARE(store::maintainstore(folder.folder).setAside, QString());
        }
        QCOMPARE(folder.bytes("rb.mdb"), before);
        QVERIFY(!folder.names().contains(QStringLiteral("rb2.mdb")));
        QCOMPARE(divesIn(folder.backup(1)), 3);
    }
}

void TestBackup::aBackupThatComesOutWrongLeavesTheEarlierOne() {
    const Folder folder;
    store::maintainstore(folder.folder);
    addDive(folder.store(), 4);
    {
        // The disk gives back another byte than it was given.
        int looks = 0;
        const platform::FaultInjection fault([&](std::string_view step) {
            if (step == "compare") {
                ++looks;
                QFile draft(folder.folder.path(u".benthor.part"));
                const bool changed = draft.open(QIODevice::ReadWrite) && draft.seek(draft.size() / 2) &&
                                     draft.write("\xA5", 1) == 1;
                return changed ? 0 : EIO;
            }
            return 0;
        });
        store::maintainstore(folder.folder);
        QCOMPARE(looks, 1);
    }
    QCOMPARE(divesIn(folder.store()), 4);
    QCOMPARE(divesIn(folder.backup(1)), 3);
    QCOMPARE(folder.names(), QStringList({"backup.mdb", "rb.mdb"}));
}

void TestBackup::aStoreThatIsLockedOrDamagedMovesNoBackup() {
    const Folder folder(0);
    fillBackups(folder);
    const Backups before = backupsOf(folder);
    {
        SQLite::Database other(folder.store().toStdString(), SQLite::OPEN_READWRITE);
        other.exec("BEGIN EXCLUSIVE");
        store::maintainstore(folder.folder);
        other.exec("ROLLBACK");
    }
    QCOMPARE(backupsOf(folder), before);
    folder.put(QStringLiteral("rb.mdb"), "damaged");
    QCOMPARE(store::maintainstore(folder.folder).setAside, "rb-damaged.mdb");
    QCOMPARE(backupsOf(folder), before);
}

namespace {

/// So many that the store is read on two threads.
void growLarge(const Folder& folder) {
    Database store;
    store.open(folder.store());
    store.execute("PRAGMA synchronous = OFF");
    platform::Transaction together(store);
    store.execute(
        "WITH RECURSIVE n(i) AS (SELECT 4 UNION ALL SELECT i + 1 FROM n WHERE i < 2600) INSERT INTO main "
        "(DiveID, divenote) SELECT printf('D%07d', i), hex(zeroblob(2000)) FROM n");
    store.execute("INSERT INTO gas (diveid) SELECT DiveID FROM main WHERE DiveID > 'D0000003'");
    together.commit();
}

/// Lets the index of the gases lead to a dive that is none. The pages themselves stay sound.
bool spoilIndex(const QString& path) {
    constexpr qsizetype kPage = 4096;
    constexpr char kIndexLeaf = 0x0A;
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite)) {
        return false;
    }
    const QByteArray bytes = file.readAll();
    for (qsizetype page = bytes.size() / kPage - 1; page > 0; --page) {
        const qsizetype at = bytes.indexOf("D0001300", page * kPage);
        if (bytes.at(page * kPage) == kIndexLeaf && at >= 0 && at < (page + 1) * kPage) {
            return file.seek(at + 7) && file.write("1", 1) == 1;
        }
    }
    return false;
}

} // namespace

void TestBackup::aLargeStoreIsProvedByTwoReaders() {
    const Folder folder;
    growLarge(folder);
    int steps = 0;
    {
        store::MaintenanceWatch watch;
        watch.step = [&steps](store::MaintenanceStep) { ++steps; };
        QCOMPARE(store::maintainstore(folder.folder, watch).setAside, QString());
    }
    QCOMPARE(steps, 2);
    QVERIFY(folder.bytes("rb.mdb").size() > (8 << 20));
    QCOMPARE(divesIn(folder.store()), 2600);
    QCOMPARE(folder.bytes("backup.mdb"), folder.bytes("rb.mdb"));
    QCOMPARE(folder.names(), QStringList({"backup.mdb", "rb.mdb"}));
}

void TestBackup::anIndexOfALargeStoreThatLeadsAstrayIsFound() {
    const Folder folder;
    growLarge(folder);
    store::maintainstore(folder.folder);
    QVERIFY(spoilIndex(folder.store()));
    const QByteArray spoilt = folder.bytes("rb.mdb");
    const QByteArray backup = folder.bytes("backup.mdb");
    const store::Maintenance done = store::maintainstore(folder.folder);
    QCOMPARE(done.setAside, "rb-damaged.mdb");
    QVERIFY2(done.reason.contains(QLatin1String("index")), qPrintable(done.reason));
    QCOMPARE(folder.bytes("rb-damaged.mdb"), spoilt);
    QCOMPARE(folder.bytes("backup.mdb"), backup);
    QCOMPARE(folder.names(), QStringList({"backup.mdb", "rb-damaged.mdb"}));
}

/// Each time the work is stopped later; at the end it is not stopped any more.
void TestBackup::aWatchStopsALargeStoreAtAnyOfItsQuestions() {
    const Folder folder;
    growLarge(folder);
    QByteArray before = folder.bytes("rb.mdb");
    int stopped = 0;
    for (int allowed = 0;; allowed = allowed * 2 + 1) {
        std::atomic<int> asked{0};
        store::MaintenanceWatch watch;
        watch.goOn = [&asked, allowed] { return ++asked <= allowed; };
        {
            const platform::StoreWaiting waiting(
                [&watch](platform::StoreWait, std::chrono::milliseconds) { return watch.goOn(); });
            QCOMPARE(store::maintainstore(folder.folder, watch).setAside, QString());
        }
        QCOMPARE(divesIn(folder.store()), 2600);
        if (folder.names().contains(QStringLiteral("backup.mdb"))) {
            break;
        }
        QCOMPARE(folder.bytes("rb.mdb"), before);
        QCOMPARE(folder.names(), QStringList({"rb.mdb"}));
        ++stopped;
    }
    QVERIFY(stopped >= 3);
    QCOMPARE(folder.bytes("backup.mdb"), folder.bytes("rb.mdb"));
}

/// A diver may keep the newest backup on another disk.
void TestBackup::theNewestBackupThatIsALinkStaysWhole() {
    const Folder folder;
    store::maintainstore(folder.folder);
    QVERIFY(QDir().mkpath(folder.folder.path(u"elsewhere")));
    const QString kept = folder.folder.path(u"elsewhere", u"kept.mdb");
    QVERIFY(QFile::rename(folder.backup(1), kept));
    QVERIFY(QFile::link(kept, folder.backup(1)));
    addDive(folder.store(), 4);
    store::maintainstore(folder.folder);
    QVERIFY(QFileInfo(folder.backup(1)).isSymLink());
    QCOMPARE(divesIn(kept), 4);
    QVERIFY(!QFileInfo(folder.backup(2)).isSymLink());
    QCOMPARE(divesIn(folder.backup(2)), 3);
}

void TestBackup::aStartThatFailsAtAnyStepMovesNoBackupUnlessItMadeANewOne_data() {
    QTest::addColumn<QList<int>>("missing");
    QTest::addColumn<bool>("fromThenOn");
    for (const bool fromThenOn : {false, true}) {
        const char* const words = fromThenOn ? "from a step on" : "once";
        QTest::addRow("all are there, %s", words) << QList<int>{} << fromThenOn;
        QTest::addRow("two are missing, %s", words) << QList<int>{4, 8} << fromThenOn;
        QTest::addRow("the newest is missing, %s", words) << QList<int>{1} << fromThenOn;
    }
}

void TestBackup::aStartThatFailsAtAnyStepMovesNoBackupUnlessItMadeANewOne() {
    QFETCH(QList<int>, missing);
    QFETCH(bool, fromThenOn);
    bool reached = true;
    int step = 1;
    int unchanged = 0;
    for (; reached; ++step) {
        const Folder folder(0);
        fillBackups(folder, missing);
        const Backups before = backupsOf(folder);
        int count = 0;
        {
            const platform::FaultInjection fault([&](std::string_view) {
                ++count;
                return count == step || (fromThenOn && count > step) ? ENOSPC : 0;
            });
            store::maintainstore(folder.folder);
        }
        reached = count >= step;
        const Backups after = backupsOf(folder);
        QCOMPARE(divesIn(folder.store()), 10);
        if (after.first() == before.first()) {
            QCOMPARE(after, before);
            ++unchanged;
        } else {
            QCOMPARE(divesIn(folder.backup(1)), 10);
        }
        if (QTest::currentTestFailed()) {
            QFAIL(qPrintable(QStringLiteral("failed at step %1").arg(step)));
        }
    }
    QVERIFY(unchanged >= 4 && step > unchanged + 10);
}

void TestBackup::killedAtAnyStepNoBackupMovesUnlessThereIsANewOneAndNoneIsLost_data() {
    QTest::addColumn<QList<int>>("missing");
    QTest::newRow("all are there") << QList<int>{};
    QTest::newRow("the oldest are missing") << QList<int>{6, 7, 8, 9};
    QTest::newRow("two are missing") << QList<int>{4, 8};
    QTest::newRow("the newest is missing") << QList<int>{1};
}

void TestBackup::killedAtAnyStepNoBackupMovesUnlessThereIsANewOneAndNoneIsLost() {
    QFETCH(QList<int>, missing);
    for (int step = 1;; ++step) {
        const Folder folder(0);
        fillBackups(folder, missing);
        const Backups before = backupsOf(folder);
        const bool killed = tests::isKilledAt(step, [&] { store::maintainstore(folder.folder); });
        const bool made = divesIn(folder.backup(1)) == 10;
        if (!made) {
            QCOMPARE(backupsOf(folder), before);
        }
        // The next start ends what was begun, and moves all on once more: the two oldest may fall out.
        addDive(folder.store(), 11);
        store::maintainstore(folder.folder);
        const Backups after = backupsOf(folder);
        QCOMPARE(divesIn(folder.backup(1)), 11);
        QCOMPARE(divesIn(folder.backup(2)), missing.contains(1) && !made ? 8 : made ? 10 : 9);
        for (int number = 1; number <= store::kBackups - 2; ++number) {
            const QByteArray& one = before.at(number - 1);
            QVERIFY2(one == "(no file)" || after.contains(one), qPrintable(QString::number(number)));
        }
        QCOMPARE(folder.names().filter(QStringLiteral("backup")).size() + after.count("(no file)"),
                 store::kBackups);
        if (QTest::currentTestFailed()) {
            QFAIL(qPrintable(QStringLiteral("killed at step %1").arg(step)));
        }
        if (!killed) {
            break;
        }
    }
}

/// Somebody made a folder of that name. The backups in front of it go on all the same.
void TestBackup::aPlaceThatCannotBeTakenDoesNotEndTheBackups() {
    const Folder folder(0);
    fillBackups(folder, {5});
    QVERIFY(QDir().mkpath(folder.backup(5) + QStringLiteral("/in it")));
    for (int run = 1; run <= 4; ++run) {
        store::maintainstore(folder.folder);
        QCOMPARE(divesIn(folder.backup(1)), 9 + run);
        addDive(folder.store(), 10 + run);
    }
    QCOMPARE(divesIn(folder.backup(2)), 12);
    QCOMPARE(divesIn(folder.backup(3)), 11);
}

void TestBackup::aDiskThatFailsOnceAtAnyStepLosesNothing() {
    bool reached = true;
    int step = 1;
    for (; reached; ++step) {
        const Folder folder;
        start(folder.folder);
        addDive(folder.store(), 4);
        int count = 0;
        {
            const platform::FaultInjection fault([&](std::string_view) { return ++count == step ? EIO : 0; });
            start(folder.folder);
        }
        reached = count >= step;
        QCOMPARE(divesIn(folder.store()), 4);
        QVERIFY(store::examinestore(folder.store()).sound());
        QVERIFY(divesIn(folder.backup(1)) >= 3);
        verifyBackups(folder, {3, 4});
        if (QTest::currentTestFailed()) {
            QFAIL(qPrintable(QStringLiteral("failed at step %1").arg(step)));
        }
    }
    QVERIFY(step > 15);
}

void TestBackup::aDiskThatFailsFromAnyStepOnLosesNothing() {
    bool reached = true;
    int step = 1;
    for (; reached; ++step) {
        const Folder folder;
        start(folder.folder);
        addDive(folder.store(), 4);
        int count = 0;
        {
            const platform::FaultInjection fault(
                [&](std::string_view) { return ++count >= step ? ENOSPC : 0; });
            start(folder.folder);
        }
        reached = count >= step;
        QCOMPARE(divesIn(folder.store()), 4);
        QVERIFY(divesIn(folder.backup(1)) >= 3);
        verifyBackups(folder, {3, 4});
        if (QTest::currentTestFailed()) {
            QFAIL(qPrintable(QStringLiteral("failed from step %1 on").arg(step)));
        }
    }
    QVERIFY(step > 15);
}

void TestBackup::killedAtAnyStepOfAStartNothingIsLost_data() {
    QTest::addColumn<bool>("ahead");
    QTest::newRow("begun behind the splash") << false;
    QTest::newRow("begun while it stood") << true;
}

void TestBackup::killedAtAnyStepOfAStartNothingIsLost() {
    QFETCH(bool, ahead);
    int step = 1;
    for (;; ++step) {
        const Folder folder;
        start(folder.folder, ahead);
        addDive(folder.store(), 4);
        start(folder.folder, ahead);
        addDive(folder.store(), 5);
        {
            Database store; // a field that the start adds again
            store.open(folder.store());
            store.execute("ALTER TABLE main DROP COLUMN dbtxtname");
        }
        const bool killed = tests::isKilledAt(step, [&] { start(folder.folder, ahead); });
        QCOMPARE(divesIn(folder.store()), 5);
        QVERIFY(store::examinestore(folder.store()).sound());
        QVERIFY(divesIn(folder.backup(1)) >= 4);
        verifyBackups(folder, {3, 4, 5});
        start(folder.folder, ahead);
        QCOMPARE(divesIn(folder.store()), 5);
        QCOMPARE(divesIn(folder.backup(1)), 5);
        verifyBackups(folder, {3, 4, 5});
        {
            Database store;
            store.open(folder.store());
            QCOMPARE(store.fieldCount(QStringLiteral("main")), 27);
        }
        if (QTest::currentTestFailed()) {
            QFAIL(qPrintable(QStringLiteral("killed at step %1").arg(step)));
        }
        if (!killed) {
            break;
        }
    }
    QVERIFY(step > 15);
}

void TestBackup::packingByHandFindsNoFolderAndEnds() {
    const QTemporaryDir directory;
    const QString before = QDir::currentPath();
    QDir::setCurrent(directory.path());
    QVERIFY_EXCEPTION_THROWN(store::compactbyhand(), platform::StoreError);
    QCOMPARE(QDir(directory.path()).entryList(QDir::Files | QDir::Hidden), QStringList());
    QDir::setCurrent(before);
}

QTEST_GUILESS_MAIN(TestBackup)
#include "test_backup.moc"
