#include "platform/faultpoint.h"
#include "tests/store/backupfolder.h"
#include "tests/support/killed.h"

using namespace benthor;
using namespace benthor::tests;

/// A store that is missing, or that the user replaces.
class TestRestore : public QObject {
    Q_OBJECT

private slots:
    void theMissingStoreComesFromTheNewestBackup();
    void aJournalThatWasLeftIsNotPlayedIntoTheBackup();

    void aRestoreTakesTheChosenStoreAndKeepsThePresentOne();
    void aRestoreWorksOverADamagedStoreAndWithoutAny();
    void aFileOfAnotherEndingIsPassedOver();
    void whatIsNoSoundStoreIsRefusedByName_data();
    void whatIsNoSoundStoreIsRefusedByName();
    void aStoreWithAnUnfinishedChangeBesideItIsRefused();
    void aStoreThatAnotherProgramHoldsIsNotReplaced();
    void theStoreItselfMayBeChosen();
    void aRestoreThatFailsAtAnyStepLeavesAWholeStore();
    void killedAtAnyStepOfARestoreNothingIsLost();
};

void TestRestore::theMissingStoreComesFromTheNewestBackup() {
    const Folder folder;
    QVERIFY(QFile::rename(folder.store(), folder.backup(1)));
    QVERIFY(store::restorebackup(folder.folder));
    QCOMPARE(divesIn(folder.store()), 3);
    QVERIFY(QFile::remove(folder.backup(1)));
    QVERIFY(QFile::remove(folder.store()));
    QVERIFY(!store::restorebackup(folder.folder));
    QVERIFY(!QFile::exists(folder.store()));
}

void TestRestore::aJournalThatWasLeftIsNotPlayedIntoTheBackup() {
    const Folder folder;
    QVERIFY(QFile::rename(folder.store(), folder.backup(1)));
    for (const QString& suffix : platform::journalSuffixes()) {
        folder.put(QStringLiteral("rb.mdb") + suffix, "of another store");
    }
    QVERIFY(store::restorebackup(folder.folder));
    QCOMPARE(folder.names(), QStringList({"backup.mdb", "rb.mdb"}));
}

void TestRestore::aRestoreTakesTheChosenStoreAndKeepsThePresentOne() {
    const Folder folder(5);
    const Folder other(2);
    for (const char* const kept : {"rb-replaced.mdb", "rb-replaced2.mdb"}) {
        const QByteArray before = folder.bytes("rb.mdb");
        const store::Restore result = store::restorestore(folder.folder, other.store());
        QVERIFY(result.done);
        QCOMPARE(result.error, QString());
        QCOMPARE(result.keptAs, QString::fromLatin1(kept));
        QCOMPARE(folder.bytes(QString::fromLatin1(kept)), before);
        QCOMPARE(folder.bytes("rb.mdb"), other.bytes("rb.mdb"));
    }
}

void TestRestore::aRestoreWorksOverADamagedStoreAndWithoutAny() {
    const Folder folder;
    store::maintainstore(folder.folder);
    folder.put(QStringLiteral("rb.mdb"), "damaged beyond repair");
    folder.put(QStringLiteral("rb.mdb-journal"), "its journal");
    store::Restore result = store::restorestore(folder.folder, folder.backup(1));
    QVERIFY(result.done);
    QCOMPARE(divesIn(folder.store()), 3);
    QCOMPARE(folder.bytes("rb-replaced.mdb"), "damaged beyond repair");
    QVERIFY(!QFile::exists(folder.store() + QStringLiteral("-journal")));
    QVERIFY(QFile::remove(folder.store()));
    result = store::restorestore(folder.folder, folder.backup(1));
    QVERIFY(result.done);
    QCOMPARE(result.keptAs, QString());
    QCOMPARE(divesIn(folder.store()), 3);
}

void TestRestore::aFileOfAnotherEndingIsPassedOver() {
    const Folder folder;
    const QByteArray before = folder.bytes("rb.mdb");
    for (const QString& chosen :
         {QString(), folder.folder.path(u"backup.txt"), folder.folder.path(u"backup.MDB")}) {
        const store::Restore result = store::restorestore(folder.folder, chosen);
        QVERIFY(!result.done);
        QCOMPARE(result.error, QString());
    }
    QCOMPARE(folder.bytes("rb.mdb"), before);
    QCOMPARE(folder.names(), QStringList{"rb.mdb"});
}

void TestRestore::whatIsNoSoundStoreIsRefusedByName_data() {
    addDamagedStores();
}

void TestRestore::whatIsNoSoundStoreIsRefusedByName() {
    QFETCH(QByteArray, bytes);
    const Folder folder;
    const QByteArray before = folder.bytes("rb.mdb");
    folder.put(QStringLiteral("backup7.mdb"), bytes);
    const store::Restore result = store::restorestore(folder.folder, folder.backup(7));
    QVERIFY(!result.done);
    QVERIFY2(result.error.contains(folder.backup(7)), qPrintable(result.error));
    QCOMPARE(folder.bytes("rb.mdb"), before);
    QCOMPARE(folder.bytes("backup7.mdb"), bytes);
    QCOMPARE(folder.names(), QStringList({"backup7.mdb", "rb.mdb"}));
    const store::Restore missing = store::restorestore(folder.folder, folder.backup(8));
    QVERIFY2(missing.error.contains(folder.backup(8)), qPrintable(missing.error));
}

void TestRestore::aStoreWithAnUnfinishedChangeBesideItIsRefused() {
    const Folder folder;
    const Folder other(2);
    other.put(QStringLiteral("rb.mdb-wal"), QByteArray(64, 'w'));
    const store::Restore result = store::restorestore(folder.folder, other.store());
    QVERIFY(!result.done);
    QVERIFY2(result.error.contains(other.store()), qPrintable(result.error));
    QCOMPARE(divesIn(folder.store()), 3);
}

void TestRestore::aStoreThatAnotherProgramHoldsIsNotReplaced() {
    const Folder folder;
    const Folder other(2);
    SQLite::Database holder(folder.store().toStdString(), SQLite::OPEN_READWRITE);
    holder.exec("BEGIN EXCLUSIVE");
    const store::Restore result = store::restorestore(folder.folder, other.store());
    holder.exec("ROLLBACK");
    QVERIFY(!result.done);
    QVERIFY2(result.error.contains(QLatin1String("locked")), qPrintable(result.error));
    QCOMPARE(divesIn(folder.store()), 3);
}

void TestRestore::theStoreItselfMayBeChosen() {
    const Folder folder;
    const QByteArray before = folder.bytes("rb.mdb");
    QVERIFY(store::restorestore(folder.folder, folder.store()).done);
    QCOMPARE(folder.bytes("rb.mdb"), before);
}

void TestRestore::aRestoreThatFailsAtAnyStepLeavesAWholeStore() {
    bool reached = true;
    int step = 1;
    for (; reached; ++step) {
        const Folder folder;
        const Folder other(2);
        int count = 0;
        store::Restore result;
        {
            const platform::FaultInjection fault(
                [&](std::string_view) { return ++count == step ? ENOSPC : 0; });
            result = store::restorestore(folder.folder, other.store());
        }
        reached = count >= step;
        QVERIFY(result.done || result.error.contains(other.store()));
        QCOMPARE(divesIn(folder.store()), result.done ? 2 : 3);
        if (QTest::currentTestFailed()) {
            QFAIL(qPrintable(QStringLiteral("failed at step %1").arg(step)));
        }
    }
    QVERIFY(step > 8);
}

void TestRestore::killedAtAnyStepOfARestoreNothingIsLost() {
    int step = 1;
    for (;; ++step) {
        const Folder folder;
        const Folder other(2);
        const bool killed =
            tests::isKilledAt(step, [&] { store::restorestore(folder.folder, other.store()); });
        const int dives = divesIn(folder.store());
        QVERIFY(dives == 3 || (dives == 2 && divesIn(folder.folder.path(u"rb-replaced.mdb")) == 3));
        QVERIFY(store::examinestore(folder.store()).sound());
        start(folder.folder);
        QCOMPARE(divesIn(folder.store()), dives);
        if (QTest::currentTestFailed()) {
            QFAIL(qPrintable(QStringLiteral("killed at step %1").arg(step)));
        }
        if (!killed) {
            QCOMPARE(dives, 2);
            break;
        }
    }
    QVERIFY(step > 8);
}

QTEST_GUILESS_MAIN(TestRestore)
#include "test_restore.moc"
