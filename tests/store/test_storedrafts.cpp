// What a start makes ahead of its time: the packed store and the backup to be, beside a store that stays as
// it is until they are put in their places.

#include "platform/faultpoint.h"
#include "platform/storewait.h"
#include "tests/store/backupfolder.h"

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

using namespace benthor;
using namespace benthor::tests;

namespace {

QStringList both() {
    return {QStringLiteral("backup-new.mdb"), QStringLiteral("rb2.mdb")};
}

QStringList draftsIn(const Folder& folder) {
    return folder.folder.listFiles(QString(), QStringLiteral("*.mdb"))
        .filter(QRegularExpression(QStringLiteral("^(rb2|backup-new)\\.")));
}

/// How often a step comes while one of these lives.
class Steps {
public:
    explicit Steps(std::string_view step)
        : count_([this, step](std::string_view at) {
            seen += at == step ? 1 : 0;
            return 0;
        }) {}
    int seen = 0;

private:
    platform::FaultInjection count_;
};

/// Leaves a change that was written in part, and beside the store the journal that takes it back.
void crashInAChange(const Folder& folder) {
    const pid_t child = fork();
    if (child == 0) {
        SQLite::Database store(folder.store().toStdString(), SQLite::OPEN_READWRITE);
        store.exec("PRAGMA cache_size = 2; BEGIN; DELETE FROM main; DELETE FROM gas");
        raise(SIGKILL);
    }
    int status = 0;
    QVERIFY(child > 0 && waitpid(child, &status, 0) == child);
    QVERIFY(QFile::exists(folder.store() + QStringLiteral("-journal")));
}

} // namespace

class TestStoreDrafts : public QObject {
    Q_OBJECT

private slots:
    void theyStandBesideAStoreThatIsAsItWas();
    void withThemTheStoreIsNotPackedAgain();
    void aChangeSinceThenIsNotLost_data();
    void aChangeSinceThenIsNotLost();
    void aChangeWhileItIsProvedIsNotLost();
    void anotherTimeOfWritingAloneIsNoChange();
    void aStoreThatIsGoneOrAnotherStaysSo();
    void aStoreThatMayNotBeWrittenByThenStays();
    void withoutAStoreOfItsOwnThereAreNone();
    void aHeldStoreIsNotWaitedFor();
    void aDamagedStoreHasNoneAndIsSetAsideLater();
    void whatACrashLeftIsNotTouched();
    void anUnfinishedChangeIsLeftToTheStart();
    void aWatchStopsThem();
    void theyCanBeTakenAway();
    void aDiskThatFailsAtAnyStepLeavesNone();
};

void TestStoreDrafts::theyStandBesideAStoreThatIsAsItWas() {
    const Folder folder;
    const QByteArray before = folder.bytes("rb.mdb");
    const store::StoreDrafts drafts = store::draftstore(folder.folder);
    QVERIFY(drafts.made && drafts.backup && drafts.store.isKnown());
    QCOMPARE(folder.bytes("rb.mdb"), before);
    QCOMPARE(draftsIn(folder), both());
    QCOMPARE(folder.names().size(), 3);
    QVERIFY(store::examinestore(folder.folder.path(u"rb2.mdb")).sound());
    QCOMPARE(folder.bytes("rb2.mdb"), folder.bytes("backup-new.mdb"));
}

void TestStoreDrafts::withThemTheStoreIsNotPackedAgain() {
    const Folder folder;
    const Folder twin(0);
    twin.put("rb.mdb", folder.bytes("rb.mdb"));
    for (int run = 1; run <= 3; ++run) {
        const store::StoreDrafts drafts = store::draftstore(folder.folder);
        const QByteArray packed = folder.bytes("rb2.mdb");
        const Steps packings("compact");
        QCOMPARE(store::maintainstore(folder.folder, {}, drafts).setAside, QString());
        QCOMPARE(packings.seen, 0);
        QCOMPARE(folder.bytes("rb.mdb"), packed);
        QCOMPARE(folder.bytes("backup.mdb"), packed);
        QCOMPARE(draftsIn(folder), QStringList());
        addDive(folder.store(), 3 + run);
        store::maintainstore(twin.folder);
        addDive(twin.store(), 3 + run);
    }
    QCOMPARE(folder.names(), twin.names());
    for (const int number : {1, 2, 3}) {
        QCOMPARE(divesIn(folder.backup(number)), divesIn(twin.backup(number)));
    }
}

void TestStoreDrafts::aChangeSinceThenIsNotLost_data() {
    QTest::addColumn<QString>("how");
    QTest::newRow("a dive more") << "dive";
    QTest::newRow("a value, at once") << "value";
    QTest::newRow("another store of that name") << "moved";
    QTest::newRow("a change that a crash left") << "crash";
}

void TestStoreDrafts::aChangeSinceThenIsNotLost() {
    QFETCH(QString, how);
    const Folder folder;
    const store::StoreDrafts drafts = store::draftstore(folder.folder);
    QVERIFY(drafts.made);
    int dives = 3;
    if (how == QLatin1String("dive")) {
        addDive(folder.store(), ++dives);
    } else if (how == QLatin1String("value")) {
        Database store;
        store.open(folder.store());
        store.execute("UPDATE main SET divenote = 'changed' WHERE DiveID = 'D0000001'");
    } else if (how == QLatin1String("moved")) {
        const Folder other(5);
        dives = 5;
        folder.put("other.mdb", other.bytes("rb.mdb"));
        QVERIFY(platform::moveFile(folder.folder.path(u"other.mdb"), folder.store()));
    } else {
        crashInAChange(folder);
    }
    store::maintainstore(folder.folder, {}, drafts);
    QCOMPARE(draftsIn(folder), QStringList());
    for (const QString& path : {folder.store(), folder.backup(1)}) {
        QCOMPARE(divesIn(path), dives);
        Database store;
        store.open(path);
        const QString note =
            store.openRecordset("SELECT divenote FROM main ORDER BY DiveID").value(u"divenote").text();
        QCOMPARE(note == QLatin1String("changed"), how == QLatin1String("value"));
    }
}

/// The store is free while its packed copy is read: the copy does not take the place of what came meanwhile.
void TestStoreDrafts::aChangeWhileItIsProvedIsNotLost() {
    for (const std::string_view step : {"examine", "compare", "sync"}) {
        const Folder folder;
        bool done = false;
        {
            const platform::FaultInjection meanwhile([&](std::string_view at) {
                if (at == step && !std::exchange(done, true)) {
                    addDive(folder.store(), 4);
                }
                return 0;
            });
            store::maintainstore(folder.folder);
        }
        QVERIFY(done);
        QCOMPARE(divesIn(folder.store()), 4);
        QCOMPARE(folder.names(), QStringList{"rb.mdb"}); // the next start makes the backup
        start(folder.folder, true);
        QCOMPARE(divesIn(folder.backup(1)), 4);
    }
}

/// Not every file system tells the same time twice: drafts are made anew then, and the backup comes all the
/// same.
void TestStoreDrafts::anotherTimeOfWritingAloneIsNoChange() {
    const auto touch = [](const Folder& folder) {
        QFile store(folder.store());
        return store.open(QIODevice::ReadWrite) &&
               store.setFileTime(QDateTime({2026, 1, 2}, {3, 4, 5}), QFile::FileModificationTime);
    };
    const Folder folder;
    bool touched = false;
    {
        const platform::FaultInjection meanwhile([&](std::string_view at) {
            touched = touched || (at == "examine" && touch(folder));
            return 0;
        });
        store::maintainstore(folder.folder);
    }
    QVERIFY(touched);
    QCOMPARE(folder.names(), (QStringList{"backup.mdb", "rb.mdb"}));
    const store::StoreDrafts drafts = store::draftstore(folder.folder);
    QVERIFY(drafts.made && touch(folder));
    const Steps packings("compact");
    store::maintainstore(folder.folder, {}, drafts);
    QCOMPARE(packings.seen, 1);
    QCOMPARE(folder.names(), (QStringList{"backup.mdb", "backup2.mdb", "rb.mdb"}));
}

void TestStoreDrafts::aStoreThatIsGoneOrAnotherStaysSo() {
    const Folder folder;
    store::StoreDrafts drafts = store::draftstore(folder.folder);
    QVERIFY(QFile::remove(folder.store()));
    store::maintainstore(folder.folder, {}, drafts);
    QCOMPARE(folder.names(), QStringList());

    const Folder older;
    drafts = store::draftstore(older.folder);
    const QByteArray jet = QByteArray("\0\1\0\0Standard Jet DB\0", 20) + QByteArray(4076, '\0');
    older.put("rb.mdb", jet);
    store::maintainstore(older.folder, {}, drafts);
    QCOMPARE(older.bytes("rb.mdb"), jet);
    QCOMPARE(older.names(), QStringList{"rb.mdb"});
}

void TestStoreDrafts::aStoreThatMayNotBeWrittenByThenStays() {
    const Folder folder;
    const store::StoreDrafts drafts = store::draftstore(folder.folder);
    const QByteArray before = folder.bytes("rb.mdb");
    SQLite::Database other(folder.store().toStdString(), SQLite::OPEN_READWRITE);
    other.exec("BEGIN IMMEDIATE");
    store::maintainstore(folder.folder, {}, drafts);
    other.exec("ROLLBACK");
    platform::lockCameFree(folder.store().toStdString());
    QCOMPARE(folder.bytes("rb.mdb"), before);
    QCOMPARE(folder.names(), QStringList{"rb.mdb"});
}

void TestStoreDrafts::withoutAStoreOfItsOwnThereAreNone() {
    const Folder folder;
    folder.put("rb.mdb", QByteArray("\0\1\0\0Standard Jet DB\0", 20) + QByteArray(4076, '\0'));
    QVERIFY(!store::draftstore(folder.folder).made);
    QCOMPARE(folder.names(), QStringList{"rb.mdb"});
    QVERIFY(QFile::remove(folder.store()));
    QVERIFY(!store::draftstore(folder.folder).made);
    QCOMPARE(folder.names(), QStringList());
}

/// Nor is the patience with it used up: the start that comes waits for it as ever.
void TestStoreDrafts::aHeldStoreIsNotWaitedFor() {
    for (const char* const how : {"BEGIN IMMEDIATE", "BEGIN EXCLUSIVE"}) {
        const Folder folder;
        SQLite::Database other(folder.store().toStdString(), SQLite::OPEN_READWRITE);
        other.exec(how);
        int waits = 0;
        const platform::StoreWaiting waiting([&waits](platform::StoreWait why, auto) {
            waits += why == platform::StoreWait::Locked ? 1 : 0;
            return true;
        });
        QVERIFY(!store::draftstore(folder.folder).made);
        QCOMPARE(waits, 0);
        QCOMPARE(folder.names(), QStringList{"rb.mdb"});
        other.exec("ROLLBACK");
        QVERIFY(store::draftstore(folder.folder).made);
    }
}

void TestStoreDrafts::aDamagedStoreHasNoneAndIsSetAsideLater() {
    const Folder folder(30);
    const QByteArray bytes = scribbled(folder.bytes("rb.mdb"));
    folder.put("rb.mdb", bytes);
    const store::StoreDrafts drafts = store::draftstore(folder.folder);
    QVERIFY(!drafts.made);
    QCOMPARE(folder.names(), QStringList{"rb.mdb"});
    QCOMPARE(folder.bytes("rb.mdb"), bytes);
    QCOMPARE(store::maintainstore(folder.folder, {}, drafts).setAside, "rb-damaged.mdb");
}

/// The repair of the splash may want it.
void TestStoreDrafts::whatACrashLeftIsNotTouched() {
    for (const QString& name : both()) {
        const Folder folder;
        folder.put(name, "left");
        QVERIFY(!store::draftstore(folder.folder).made);
        QCOMPARE(folder.bytes(name), QByteArray("left"));
        start(folder.folder, true);
        QCOMPARE(draftsIn(folder), QStringList());
        QCOMPARE(divesIn(folder.backup(1)), 3);
    }
}

void TestStoreDrafts::anUnfinishedChangeIsLeftToTheStart() {
    const Folder folder;
    crashInAChange(folder);
    const QByteArray before = folder.bytes("rb.mdb");
    const QByteArray journal = folder.bytes("rb.mdb-journal");
    QVERIFY(!store::draftstore(folder.folder).made);
    QCOMPARE(folder.bytes("rb.mdb"), before);
    QCOMPARE(folder.bytes("rb.mdb-journal"), journal);
    start(folder.folder, true);
    QCOMPARE(divesIn(folder.store()), 3);
    QCOMPARE(divesIn(folder.backup(1)), 3);
}

void TestStoreDrafts::aWatchStopsThem() {
    const Folder folder(60);
    bool reached = true;
    for (int last = 1; reached; ++last) {
        std::atomic<int> asked{0};
        const store::MaintenanceWatch watch{[&] { return ++asked < last; }, {}};
        const store::StoreDrafts drafts = store::draftstore(folder.folder, watch);
        reached = !drafts.made;
        if (reached) {
            QCOMPARE(folder.names(), QStringList{"rb.mdb"});
        }
        QVERIFY(last < 100);
    }
    QCOMPARE(draftsIn(folder), both());
}

void TestStoreDrafts::theyCanBeTakenAway() {
    const Folder folder;
    const QByteArray before = folder.bytes("rb.mdb");
    QVERIFY(store::draftstore(folder.folder).made);
    store::removedrafts(folder.folder);
    QCOMPARE(folder.names(), QStringList{"rb.mdb"});
    QCOMPARE(folder.bytes("rb.mdb"), before);
    store::removedrafts(folder.folder); // none are there
    QCOMPARE(folder.names(), QStringList{"rb.mdb"});
}

void TestStoreDrafts::aDiskThatFailsAtAnyStepLeavesNone() {
    bool reached = true;
    int step = 1;
    int failed = 0;
    for (; reached; ++step) {
        const Folder folder;
        const QByteArray before = folder.bytes("rb.mdb");
        std::atomic<int> count{0};
        store::StoreDrafts drafts;
        {
            const platform::FaultInjection fault(
                [&](std::string_view) { return ++count == step ? ENOSPC : 0; });
            drafts = store::draftstore(folder.folder);
        }
        reached = count >= step;
        failed += drafts.made && drafts.backup ? 0 : 1;
        QCOMPARE(folder.bytes("rb.mdb"), before);
        QCOMPARE(draftsIn(folder).contains(QStringLiteral("rb2.mdb")), drafts.made);
        store::maintainstore(folder.folder, {}, drafts);
        QCOMPARE(divesIn(folder.store()), 3);
        QCOMPARE(draftsIn(folder), QStringList());
        verifyBackups(folder, {3});
        if (QTest::currentTestFailed()) {
            QFAIL(qPrintable(QStringLiteral("failed at step %1").arg(step)));
        }
    }
    QVERIFY(failed >= 4);
}

QTEST_GUILESS_MAIN(TestStoreDrafts)
#include "test_storedrafts.moc"
