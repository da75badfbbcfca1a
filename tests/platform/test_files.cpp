#include "platform/faultpoint.h"
#include "platform/files.h"
#include "platform/instancelock.h"
#include "platform/programfolder.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

using namespace benthor::platform;

class TestFiles : public QObject {
    Q_OBJECT

private slots:
    void init() { directory_ = std::make_unique<QTemporaryDir>(); }

    void aWrittenFileHoldsItsBytes();
    void writingReplacesWhatStoodThere();
    void aCopyHasTheSameBytesWhateverTheirNumber_data();
    void aCopyHasTheSameBytesWhateverTheirNumber();
    void copyingOverItselfKeepsAFile();
    void copyingFromNowhereLeavesTheTarget();
    void copyingAFolderIsAnError();
    void aFaultAtAnyStepLeavesTheOldFileWhole_data();
    void aFaultAtAnyStepLeavesTheOldFileWhole();
    void aDraftThatACrashLeftIsTakenOver();
    void readingIsLimited();
    void readingAFolderOrNothingGivesNothing();
    void contentsAreCompared();
    void betweenTheBlocksOfALongFileOthersHaveTheirTurn();
    void removingWhatIsNotThereIsAnError();
    void aFolderIsSyncedBehindItsCaller();

    void filesAreListedByNameWithoutRegardToCase();
    void patternsIgnoreCase();
    void aFolderThatIsNotThereHasNoFiles();
    void theExecutablesFolderIsTakenWhenItCanBeWritten();
    void theDataFolderIsFilledOnItsFirstUse();
    void aFolderThatIsOnlyLookedForIsNotMade();
    void aDataFolderInUseIsNotFilledAgain();
    void aFillThatFailsLeavesNoDataFolder();

    void aSecondLockOfTheSameFolderIsNotHeld();
    void theLockOfAKilledProcessIsFree();

private:
    QString path(const char* name) const { return directory_->filePath(QString::fromLatin1(name)); }
    void make(const char* name, const QByteArray& bytes = "x") {
        QVERIFY(QDir().mkpath(QFileInfo(path(name)).absolutePath()));
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    QByteArray bytes(const char* name) const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
    }

    std::unique_ptr<QTemporaryDir> directory_;
};

void TestFiles::aWrittenFileHoldsItsBytes() {
    QVERIFY(writeFileWhole(path("a"), QByteArrayView("\0\r\n\xff", 4)));
    QCOMPARE(bytes("a"), QByteArray("\0\r\n\xff", 4));
    QVERIFY(writeFileWhole(path("empty"), QByteArrayView()));
    QCOMPARE(bytes("empty"), QByteArray());
    QCOMPARE(QDir(directory_->path()).entryList(QDir::Files | QDir::Hidden), QStringList({"a", "empty"}));
}

void TestFiles::writingReplacesWhatStoodThere() {
    make("a", "a long old text");
    QVERIFY(writeFileWhole(path("a"), "new"));
    QCOMPARE(bytes("a"), "new");
    const FileResult result = writeFileWhole(path("none/a"), "new");
    QVERIFY(!result);
    QVERIFY2(result.error.contains(path("none/a")), qPrintable(result.error));
    QCOMPARE(result.number, ENOENT);
}

void TestFiles::aCopyHasTheSameBytesWhateverTheirNumber_data() {
    QTest::addColumn<int>("size");
    for (const int size : {0, 1, 65535, 65536, 65537, 200000}) {
        QTest::addRow("%d", size) << size;
    }
}

void TestFiles::aCopyHasTheSameBytesWhateverTheirNumber() {
    QFETCH(int, size);
    QByteArray contents(size, '\0');
    for (int i = 0; i < size; ++i) {
        contents[i] = static_cast<char>(i * 31 + i / 256);
    }
    make("from", contents);
    make("to", "old");
    QVERIFY(copyFile(path("from"), path("to")));
    QCOMPARE(bytes("to"), contents);
    QVERIFY(sameContents(path("from"), path("to")));
}

void TestFiles::copyingOverItselfKeepsAFile() {
    make("a", "text");
    QVERIFY(copyFile(path("a"), path("a")));
    QCOMPARE(bytes("a"), "text");
}

void TestFiles::copyingFromNowhereLeavesTheTarget() {
    make("to", "old");
    const FileResult result = copyFile(path("none"), path("to"));
    QVERIFY(!result.ok());
    QCOMPARE(result.number, ENOENT);
    QVERIFY(result.error.contains(path("none")));
    QCOMPARE(bytes("to"), "old");
}

void TestFiles::copyingAFolderIsAnError() {
    make("folder/a");
    make("to", "old");
    QVERIFY(!copyFile(path("folder"), path("to")));
    QCOMPARE(bytes("to"), "old");
    QVERIFY(!copyFile(path("to"), path("folder")));
    QCOMPARE(bytes("folder/a"), "x");
}

void TestFiles::aFaultAtAnyStepLeavesTheOldFileWhole_data() {
    QTest::addColumn<QByteArray>("step");
    QTest::newRow("write") << QByteArray("write");
    QTest::newRow("sync") << QByteArray("sync");
    QTest::newRow("rename") << QByteArray("rename");
}

void TestFiles::aFaultAtAnyStepLeavesTheOldFileWhole() {
    QFETCH(QByteArray, step);
    make("from", "new");
    make("to", "old");
    const FaultInjection fault([&](std::string_view at) { return at == step.toStdString() ? ENOSPC : 0; });
    const FileResult result = copyFile(path("from"), path("to"));
    QVERIFY(!result);
    QCOMPARE(result.number, ENOSPC);
    QCOMPARE(bytes("to"), "old");
    QVERIFY(!writeFileWhole(path("to"), "new"));
    QCOMPARE(QDir(directory_->path()).entryList(QDir::Files | QDir::Hidden), QStringList({"from", "to"}));
}

void TestFiles::aDraftThatACrashLeftIsTakenOver() {
    make(".benthor.part", "half a file of an earlier run");
    QVERIFY(writeFileWhole(path("a"), "new"));
    QCOMPARE(bytes("a"), "new");
    QVERIFY(!QFile::exists(path(".benthor.part")));
}

void TestFiles::readingIsLimited() {
    make("a", "0123456789");
    QCOMPARE(readFile(path("a"), 4).value(), "0123");
    QCOMPARE(readFile(path("a")).value(), "0123456789");
}

void TestFiles::readingAFolderOrNothingGivesNothing() {
    QVERIFY(!readFile(directory_->path()));
    QVERIFY(!readFile(path("none")));
}

void TestFiles::contentsAreCompared() {
    make("a", QByteArray(70000, 'a'));
    make("b", QByteArray(69999, 'a') + 'b');
    make("c", QByteArray(69999, 'a'));
    QVERIFY(sameContents(path("a"), path("a")));
    QVERIFY(!sameContents(path("a"), path("b")));
    QVERIFY(!sameContents(path("a"), path("c")));
    QVERIFY(!sameContents(path("a"), path("none")));
}

void TestFiles::betweenTheBlocksOfALongFileOthersHaveTheirTurn() {
    make("from", QByteArray(4 * 65536 + 1, 'a'));
    make("to", "old");
    int turns = 0;
    const auto count = [&] { return ++turns > 0; };
    QVERIFY(copyFile(path("from"), path("to"), FolderSync::Now, {}, count));
    QCOMPARE(turns, 5);
    QVERIFY(sameContents(path("from"), path("to"), count));
    QCOMPARE(turns, 10);
    const auto end = [&] { return ++turns < 12; };
    make("other", "stays");
    QCOMPARE(copyFile(path("from"), path("other"), FolderSync::Now, {}, end).number, ECANCELED);
    QCOMPARE(turns, 12);
    QCOMPARE(bytes("other"), "stays");
    QVERIFY(!sameContents(path("from"), path("to"), end));
}

void TestFiles::removingWhatIsNotThereIsAnError() {
    make("a");
    QVERIFY(removeFile(path("a")));
    QVERIFY(!QFile::exists(path("a")));
    QCOMPARE(removeFile(path("a")).number, ENOENT);
}

void TestFiles::aFolderIsSyncedBehindItsCaller() {
    FolderSyncBehind sync;
    QVERIFY(sync.wait().ok()); // none was begun
    sync.begin(directory_->path());
    QVERIFY(sync.wait().ok());
    QVERIFY(sync.wait().ok());
    const QString missing = directory_->filePath(QStringLiteral("missing"));
    sync.begin(directory_->path());
    sync.begin(missing);
    const FileResult result = sync.wait();
    QCOMPARE(result.number, ENOENT);
    QVERIFY2(result.error.contains(missing), qPrintable(result.error));
    const FaultInjection fault([](std::string_view step) { return step == "syncfolder" ? EIO : 0; });
    sync.begin(directory_->path());
    QCOMPARE(sync.wait().number, EIO);
    sync.begin(directory_->path()); // the destructor waits
}

void TestFiles::filesAreListedByNameWithoutRegardToCase() {
    for (const char* const name :
         {"new/b.txt", "new/C.txt", "new/a2.txt", "new/A10.txt", "new/B.txt", "new/d.csv"}) {
        make(name);
    }
    QVERIFY(QDir().mkpath(path("new/folder.txt")));
    const ProgramFolder folder(directory_->path());
    QCOMPARE(folder.listFiles(QStringLiteral("new"), QStringLiteral("*.txt")),
             QStringList({"A10.txt", "a2.txt", "B.txt", "b.txt", "C.txt"}));
    QCOMPARE(folder.path(u"new", u"a.txt"), path("new/a.txt"));
}

void TestFiles::patternsIgnoreCase() {
    make("new/UPPER.TXT");
    make("rb.mdb");
    const ProgramFolder folder(directory_->path());
    QCOMPARE(folder.listFiles(QStringLiteral("new"), QStringLiteral("*.txt")), QStringList({"UPPER.TXT"}));
    QCOMPARE(folder.listFiles(QString(), QStringLiteral("RB.MDB")), QStringList({"rb.mdb"}));
}

void TestFiles::aFolderThatIsNotThereHasNoFiles() {
    QCOMPARE(ProgramFolder(path("none")).listFiles(QStringLiteral("new"), QStringLiteral("*.txt")),
             QStringList());
}

void TestFiles::theExecutablesFolderIsTakenWhenItCanBeWritten() {
    FileResult error;
    const ProgramFolder folder =
        locateProgramFolder({directory_->path(), path("data"), path("share")}, error);
    QCOMPARE(folder.root(), directory_->path());
    QVERIFY(error.ok());
    QVERIFY(!QFile::exists(path("data")));
}

void TestFiles::theDataFolderIsFilledOnItsFirstUse() {
    make("share/rb.mdb", "store");
    make("share/Reprog/chklst.txt", "list");
    QVERIFY(QDir().mkpath(path("share/new")));
    FileResult error;
    const ProgramFolder folder =
        locateProgramFolder({path("no executable"), path("home/Benthor"), path("share")}, error);
    QVERIFY2(error.ok(), qPrintable(error.error));
    QCOMPARE(folder.root(), path("home/Benthor"));
    QCOMPARE(bytes("home/Benthor/rb.mdb"), "store");
    QCOMPARE(bytes("home/Benthor/Reprog/chklst.txt"), "list");
    QVERIFY(QFileInfo(path("home/Benthor/new")).isDir());
}

void TestFiles::aFolderThatIsOnlyLookedForIsNotMade() {
    make("share/rb.mdb", "store");
    const FolderPlaces places{path("no executable"), path("home/Benthor"), path("share")};
    QCOMPARE(findProgramFolder(places).root(), path("home/Benthor"));
    QVERIFY(!QFile::exists(path("home")));
    QCOMPARE(findProgramFolder({directory_->path(), path("data"), path("share")}).root(), directory_->path());
}

void TestFiles::aDataFolderInUseIsNotFilledAgain() {
    make("share/rb.mdb", "fresh store");
    make("home/rb.mdb", "years of dives");
    FileResult error;
    locateProgramFolder({path("no executable"), path("home"), path("share")}, error);
    QVERIFY(error.ok());
    QCOMPARE(bytes("home/rb.mdb"), "years of dives");
}

void TestFiles::aFillThatFailsLeavesNoDataFolder() {
    make("share/a");
    make("share/rb.mdb");
    int copies = 0;
    const FaultInjection fault(
        [&](std::string_view step) { return step == "sync" && ++copies == 2 ? ENOSPC : 0; });
    FileResult error;
    locateProgramFolder({path("no executable"), path("home"), path("share")}, error);
    QVERIFY(!error.ok());
    QVERIFY(!QFile::exists(path("home")));
}

void TestFiles::aSecondLockOfTheSameFolderIsNotHeld() {
    auto first = std::make_unique<InstanceLock>(directory_->path());
    QVERIFY(first->held());
    QVERIFY(!InstanceLock(directory_->path()).held());
    first.reset();
    QVERIFY(InstanceLock(directory_->path()).held());
    QVERIFY(InstanceLock(path("none")).held());
}

void TestFiles::theLockOfAKilledProcessIsFree() {
    std::array<int, 2> ready{};
    QCOMPARE(pipe(ready.data()), 0);
    const pid_t child = fork();
    if (child == 0) {
        const InstanceLock lock(directory_->path());
        const char held = lock.held() ? '1' : '0';
        static_cast<void>(!write(ready[1], &held, 1));
        for (;;) {
            pause();
        }
    }
    char held = ' ';
    QCOMPARE(read(ready[0], &held, 1), 1);
    QCOMPARE(held, '1');
    QVERIFY(!InstanceLock(directory_->path()).held());
    kill(child, SIGKILL);
    QCOMPARE(waitpid(child, nullptr, 0), child);
    QVERIFY(InstanceLock(directory_->path()).held());
    close(ready[0]);
    close(ready[1]);
}

QTEST_GUILESS_MAIN(TestFiles)
#include "test_files.moc"
