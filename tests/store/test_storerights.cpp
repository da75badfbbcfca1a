// Who may read and write the store: its rights, its links, and the folder that it stands in.

#include "platform/database.h"
#include "platform/files.h"
#include "platform/instancelock.h"
#include "platform/programfolder.h"
#include "store/backup.h"
#include "store/maintenance.h"
#include "store/schema.h"
#include "tests/support/asnobody.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>

using namespace benthor;
using platform::Database;
using platform::ProgramFolder;
using platform::StoreError;

namespace {

mode_t rightsOf(const QString& path) {
    struct stat state {};
    return ::stat(QFile::encodeName(path).constData(), &state) == 0 ? state.st_mode & 07777 : 07777;
}

void setRights(const QString& path, mode_t rights) {
    QCOMPARE(::chmod(QFile::encodeName(path).constData(), rights), 0);
}

void addDive(const QString& path, const char* diveid) {
    Database store;
    store.open(path);
    platform::Recordset dives = store.openForAdding("main");
    dives.addNew();
    dives.set(u"DiveID", QString::fromLatin1(diveid));
    dives.update();
}

int divesIn(const QString& path) {
    Database store;
    store.open(path, platform::StoreAccess::Look);
    return static_cast<int>(store.openRecordset("SELECT * FROM main").recordCount());
}

} // namespace

class TestStoreRights : public QObject {
    Q_OBJECT

private slots:
    void init() {
        directory_ = std::make_unique<QTemporaryDir>();
        setRights(directory_->path(), 0755);
        QVERIFY(QDir().mkpath(path("program")));
        folder_ = ProgramFolder(path("program"));
        store::createStore(store());
        addDive(store(), "D0000001");
        old_ = ::umask(022);
    }
    void cleanup() { ::umask(old_); }

    void aNewStoreIsItsOwnersAlone();
    void packingAndBackupsKeepTheRights_data();
    void packingAndBackupsKeepTheRights();
    void aRestoreKeepsTheRightsOfTheStore();
    void anExportHasTheRightsOfAnyNewFile();
    void aStoreThatIsALinkStaysOne();
    void aDamagedStoreBehindALinkIsKeptAndTheLinkStays();
    void aStoreThatNobodyMayWriteIsReadAndSaysWhy();
    void aStoreInAFolderThatCannotBeWrittenIsReadAndSaysWhy_data();
    void aStoreInAFolderThatCannotBeWrittenIsReadAndSaysWhy();
    void aStartInAFolderThatCannotBeWrittenChangesNothing();
    void theFolderOfAStoreIsTakenThoughItCannotBeWritten();
    void withoutAStoreThereTheDataFolderServes();
    void aDataFolderWithoutItsFilesIsNotMade();
    void theLockOfAnotherUsersFileIsSeen();

private:
    QString path(const char* name) const { return directory_->filePath(QString::fromLatin1(name)); }
    QString store() const { return folder_.path(u"rb.mdb"); }

    std::unique_ptr<QTemporaryDir> directory_;
    ProgramFolder folder_;
    mode_t old_ = 0;
};

void TestStoreRights::aNewStoreIsItsOwnersAlone() {
    QCOMPARE(rightsOf(store()), mode_t{0600});
}

void TestStoreRights::packingAndBackupsKeepTheRights_data() {
    QTest::addColumn<uint>("rights");
    QTest::newRow("the owner alone") << 0600U;
    QTest::newRow("the group, too") << 0660U;
    QTest::newRow("all may read") << 0644U;
}

void TestStoreRights::packingAndBackupsKeepTheRights() {
    QFETCH(uint, rights);
    setRights(store(), rights);
    for (int start = 0; start < 3; ++start) {
        addDive(store(), "D0000009"); // each start has something new to keep
        store::maintainstore(folder_);
    }
    for (const char* const name : {"rb.mdb", "backup.mdb", "backup2.mdb", "backup3.mdb"}) {
        QCOMPARE(rightsOf(folder_.path(QString::fromLatin1(name))), mode_t{rights});
    }
}

void TestStoreRights::aRestoreKeepsTheRightsOfTheStore() {
    store::maintainstore(folder_);
    const QString foreign = path("foreign.mdb");
    store::createStore(foreign);
    setRights(foreign, 0666);
    const store::Restore done = store::restorestore(folder_, foreign);
    QVERIFY(done.done);
    QCOMPARE(rightsOf(store()), mode_t{0600});
    QCOMPARE(rightsOf(folder_.path(done.keptAs)), mode_t{0600});
    QVERIFY(QFile::remove(store()));
    QVERIFY(store::restorestore(folder_, foreign).done);
    QCOMPARE(rightsOf(store()), mode_t{0600});
    QVERIFY(QFile::remove(store()));
    QVERIFY(store::restorebackup(folder_));
    QCOMPARE(rightsOf(store()), mode_t{0600});
}

void TestStoreRights::anExportHasTheRightsOfAnyNewFile() {
    QVERIFY(platform::writeFileWhole(path("dive.csv"), "1,2"));
    QCOMPARE(rightsOf(path("dive.csv")), mode_t{0644});
    ::umask(077);
    QVERIFY(platform::writeFileWhole(path("dive.csv"), "3,4"));
    QCOMPARE(rightsOf(path("dive.csv")), mode_t{0600});
}

void TestStoreRights::aStoreThatIsALinkStaysOne() {
    QVERIFY(QDir().mkpath(path("stick")));
    const QString target = path("stick/dives.mdb");
    QVERIFY(QFile::rename(store(), target));
    QVERIFY(QFile::link(target, store()));
    store::maintainstore(folder_);
    addDive(store(), "D0000002");
    store::maintainstore(folder_);
    QVERIFY(QFileInfo(store()).isSymLink());
    QCOMPARE(divesIn(target), 2);
    QVERIFY(!QFileInfo(folder_.path(u"backup.mdb")).isSymLink());
    const QString other = path("other.mdb");
    store::createStore(other);
    QVERIFY(store::restorestore(folder_, other).done);
    QVERIFY(QFileInfo(store()).isSymLink());
    QCOMPARE(divesIn(target), 0);
    QVERIFY(QFile::remove(target));
    QVERIFY(store::restorebackup(folder_));
    QVERIFY(QFileInfo(store()).isSymLink());
    QCOMPARE(divesIn(target), 2);
}

void TestStoreRights::aDamagedStoreBehindALinkIsKeptAndTheLinkStays() {
    store::maintainstore(folder_);
    const QString target = path("dives.mdb");
    QVERIFY(platform::writeFileWhole(target, "scribbled"));
    QVERIFY(QFile::remove(store()));
    QVERIFY(QFile::link(target, store()));
    QCOMPARE(store::maintainstore(folder_).setAside, "rb-damaged.mdb");
    QCOMPARE(platform::readFile(folder_.path(u"rb-damaged.mdb")), QByteArray("scribbled"));
    QVERIFY(!QFile::exists(target));
    QVERIFY(store::restorebackup(folder_));
    QVERIFY(QFileInfo(store()).isSymLink());
    QCOMPARE(divesIn(target), 1);
}

void TestStoreRights::aStoreThatNobodyMayWriteIsReadAndSaysWhy() {
    setRights(folder_.root(), 0777);
    setRights(store(), 0444);
    const QByteArray before = platform::readFile(store()).value();
    QCOMPARE(tests::runAsNobody([this] {
                 store::maintainstore(folder_);
                 Database database;
                 database.open(store());
                 const bool told = database.readOnlyReason().contains(store());
                 const bool read = database.openRecordset("SELECT * FROM main").recordCount() == 1;
                 bool refused = false;
                 try {
                     database.execute("DELETE FROM main");
                 } catch (const StoreError& error) {
                     refused = error.text().contains(database.readOnlyReason());
                 }
                 return told && read && refused ? 0 : 1;
             }),
             0);
    QCOMPARE(platform::readFile(store()).value(), before);
    QCOMPARE(rightsOf(store()), mode_t{0444});
    QCOMPARE(rightsOf(folder_.path(u"backup.mdb")), mode_t{0444});
}

void TestStoreRights::aStoreInAFolderThatCannotBeWrittenIsReadAndSaysWhy_data() {
    QTest::addColumn<bool>("beside");
    QTest::newRow("at rest") << false;
    QTest::newRow("with changes kept beside") << true;
}

void TestStoreRights::aStoreInAFolderThatCannotBeWrittenIsReadAndSaysWhy() {
    QFETCH(bool, beside);
    if (beside) {
        // Read with a private copy: where it stands, the engine could not make what it needs beside it.
        QFile file(store());
        QVERIFY(file.open(QIODevice::ReadWrite) && file.seek(18) && file.write("\x02\x02", 2) == 2);
    }
    setRights(store(), 0666);
    setRights(folder_.root(), 0555);
    QCOMPARE(tests::runAsNobody([this] {
                 Database database;
                 database.open(store());
                 return database.readOnlyReason().contains(folder_.root()) &&
                                database.openRecordset("SELECT * FROM main").recordCount() == 1
                            ? 0
                            : 1;
             }),
             0);
}

void TestStoreRights::aStartInAFolderThatCannotBeWrittenChangesNothing() {
    setRights(store(), 0644);
    setRights(folder_.root(), 0555);
    const QByteArray before = platform::readFile(store()).value();
    QCOMPARE(tests::runAsNobody([this] {
                 bool told = false;
                 const bool aside = !store::maintainstore(folder_).setAside.isEmpty();
                 store::addmissingfields(store(), [&](const QString&) { told = true; });
                 static_cast<void>(store::makedbtxt(folder_));
                 return aside || told ? 1 : 0;
             }),
             0);
    QCOMPARE(platform::readFile(store()).value(), before);
    QCOMPARE(QDir(folder_.root()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList{QStringLiteral("rb.mdb")});
}

void TestStoreRights::theFolderOfAStoreIsTakenThoughItCannotBeWritten() {
    setRights(folder_.root(), 0555);
    setRights(directory_->path(), 0777);
    QCOMPARE(tests::runAsNobody([this] {
                 platform::FileResult error;
                 const ProgramFolder found =
                     platform::locateProgramFolder({folder_.root(), path("data"), path("share")}, error);
                 return error.ok() && found.root() == folder_.root() && !QFile::exists(path("data")) ? 0 : 1;
             }),
             0);
}

void TestStoreRights::withoutAStoreThereTheDataFolderServes() {
    QVERIFY(QDir().mkpath(path("share/new")));
    QVERIFY(QFile::rename(store(), path("share/rb.mdb")));
    setRights(path("share/rb.mdb"), 0644);
    setRights(folder_.root(), 0555);
    setRights(directory_->path(), 0777);
    QCOMPARE(tests::runAsNobody([this] {
                 platform::FileResult error;
                 const ProgramFolder found =
                     platform::locateProgramFolder({folder_.root(), path("data"), path("share")}, error);
                 return error.ok() && found.root() == path("data") ? 0 : 1;
             }),
             0);
    QCOMPARE(rightsOf(path("data")), mode_t{0700});
    QCOMPARE(rightsOf(path("data/rb.mdb")), mode_t{0600});
    QVERIFY(QFileInfo(path("data/new")).isDir());
    QVERIFY(!QFile::exists(path("data.part")));
}

void TestStoreRights::aDataFolderWithoutItsFilesIsNotMade() {
    platform::FileResult error;
    platform::locateProgramFolder({path("no executable"), path("data"), path("share")}, error);
    QVERIFY2(error.error.contains(path("share")), qPrintable(error.error));
    QVERIFY(!QFile::exists(path("data")));
    QVERIFY(!QFile::exists(path("data.part")));
}

void TestStoreRights::theLockOfAnotherUsersFileIsSeen() {
    const platform::InstanceLock lock(folder_.root());
    QVERIFY(lock.held());
    setRights(folder_.path(u".benthor.lock"), 0644);
    setRights(folder_.root(), 0555);
    QCOMPARE(tests::runAsNobody([this] { return platform::InstanceLock(folder_.root()).held() ? 1 : 0; }), 0);
}

QTEST_GUILESS_MAIN(TestStoreRights)
#include "test_storerights.moc"
