// The hidden files in which files are written, where several write in one folder at the same time: threads of
// this program and other programs.

#include "platform/descriptor.h"
#include "platform/draftfile.h"
#include "platform/faultpoint.h"
#include "platform/files.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>
#include <fcntl.h>
#include <future>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

using namespace benthor::platform;

namespace {

constexpr mode_t kMode = 0666;

/// Files of its own, each written many times with other contents; what could not be written or reads
/// otherwise.
QStringList faultsOfAWriter(const QString& folder, int writer, int rounds) {
    QStringList faults;
    for (int round = 0; round < rounds; ++round) {
        const QString path = folder + QStringLiteral("/%1-%2").arg(writer).arg(round % 3);
        const QByteArray bytes = QByteArray::number(writer * 1000 + round).repeated(2000 + 700 * writer);
        if (const FileResult result = writeFileWhole(path, bytes); !result) {
            faults << result.error;
        } else if (readFile(path) != bytes) {
            faults << path + QStringLiteral(" is another's");
        }
    }
    return faults;
}

} // namespace

class TestDraftFile : public QObject {
    Q_OBJECT

private slots:
    void init() { directory_ = std::make_unique<QTemporaryDir>(); }

    void whoeverComesSecondTakesTheNextName();
    void withoutItsPlaceItIsGone();
    void ofAKilledProgramNothingStays();
    void whatNobodyMayLookIntoIsPassedOver_data();
    void whatNobodyMayLookIntoIsPassedOver();
    void aLinkThatLeadsNowhereIsALeftover();
    void itIsHeldUntilItHasItsPlace();
    void anothersFileNeverGetsThePlace();
    void aFolderThatTakesNothingSaysWhy();
    void threadsThatWriteInOneFolderDoNotMixTheirFiles();
    void programsThatWriteInOneFolderDoNotMixTheirFiles();

private:
    QString folder() const { return directory_->path(); }
    QString part(const char* number = "") const {
        return directory_->filePath(QStringLiteral(".benthor.part") + QLatin1String(number));
    }
    QStringList names() const {
        return QDir(folder()).entryList(QDir::AllEntries | QDir::System | QDir::Hidden |
                                        QDir::NoDotAndDotDot);
    }
    static void put(const QString& path, const QByteArray& bytes) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }
    static QByteArray get(const QString& path) { return readFile(path).value_or("(no file)"); }

    std::unique_ptr<QTemporaryDir> directory_;
};

void TestDraftFile::whoeverComesSecondTakesTheNextName() {
    DraftFile first(folder(), kMode);
    QCOMPARE(first.error(), 0);
    QCOMPARE(first.path(), part());
    {
        DraftFile second(folder(), kMode);
        QCOMPARE(second.path(), part("2"));
        const DraftFile third(folder(), kMode);
        QCOMPARE(third.path(), part("3"));
        QCOMPARE(second.takePlace(QFile::encodeName(directory_->filePath("b"))), 0);
        const DraftFile again(folder(), kMode);
        QCOMPARE(again.path(), part("2"));
        QCOMPARE(names(), QStringList({".benthor.part", ".benthor.part2", ".benthor.part3", "b"}));
    }
    QCOMPARE(first.takePlace(QFile::encodeName(directory_->filePath("a"))), 0);
    QCOMPARE(names(), QStringList({"a", "b"}));
}

void TestDraftFile::withoutItsPlaceItIsGone() {
    {
        DraftFile draft(folder(), kMode);
        QCOMPARE(::write(draft.file(), "half", 4), 4);
        QCOMPARE(draft.close(), 0);
        QCOMPARE(draft.close(), 0);
        QCOMPARE(names(), QStringList(".benthor.part"));
    }
    QCOMPARE(names(), QStringList());
}

void TestDraftFile::ofAKilledProgramNothingStays() {
    const pid_t other = ::fork();
    if (other == 0) {
        const DraftFile one(folder(), kMode);
        const DraftFile two(folder(), kMode);
        ::kill(::getpid(), SIGKILL);
    }
    int status = 0;
    QCOMPARE(::waitpid(other, &status, 0), other);
    QCOMPARE(names(), QStringList({".benthor.part", ".benthor.part2"}));
    QVERIFY(writeFileWhole(directory_->filePath("a"), "new"));
    QCOMPARE(names(), QStringList("a"));
}

void TestDraftFile::whatNobodyMayLookIntoIsPassedOver_data() {
    QTest::addColumn<bool>("asFolder");
    QTest::newRow("a folder") << true;
    QTest::newRow("a file of another's, in use") << false;
}

void TestDraftFile::whatNobodyMayLookIntoIsPassedOver() {
    QFETCH(bool, asFolder);
    Descriptor holder;
    if (asFolder) {
        QVERIFY(QDir().mkpath(part()));
    } else {
        put(part(), "theirs");
        holder = Descriptor(::open(QFile::encodeName(part()).constData(), O_RDONLY | O_CLOEXEC));
        QCOMPARE(::flock(holder.number(), LOCK_EX), 0);
    }
    QVERIFY(writeFileWhole(directory_->filePath("a"), "new"));
    QCOMPARE(get(directory_->filePath("a")), "new");
    QCOMPARE(names(), QStringList({".benthor.part", "a"}));
    if (!asFolder) {
        QCOMPARE(get(part()), "theirs");
        holder.close(); // a crash, by now
        QVERIFY(writeFileWhole(directory_->filePath("a"), "newer"));
        QCOMPARE(names(), QStringList("a"));
    }
}

void TestDraftFile::aLinkThatLeadsNowhereIsALeftover() {
    QVERIFY(QFile::link(directory_->filePath("nowhere"), part()));
    QVERIFY(writeFileWhole(directory_->filePath("a"), "new"));
    QCOMPARE(names(), QStringList("a"));
}

/// The writing has ended, and a copy is looked at before it takes its place.
void TestDraftFile::itIsHeldUntilItHasItsPlace() {
    put(directory_->filePath("from"), "a copy");
    const auto look = [&](const QString& draft) {
        const bool written = writeFileWhole(directory_->filePath("meanwhile"), "another").ok();
        return written && get(draft) == "a copy" ? QString() : QStringLiteral("It was taken away.");
    };
    const FileResult copied =
        copyFile(directory_->filePath("from"), directory_->filePath("to"), FolderSync::Now, look);
    QVERIFY2(copied.ok(), qPrintable(copied.error));
    QCOMPARE(get(directory_->filePath("to")), "a copy");
    QCOMPARE(get(directory_->filePath("meanwhile")), "another");
    QCOMPARE(names(), QStringList({"from", "meanwhile", "to"}));
}

/// As on a file system that knows no holding.
void TestDraftFile::anothersFileNeverGetsThePlace() {
    put(directory_->filePath("a"), "old");
    const FaultInjection fault([&](std::string_view step) {
        if (step == "sync") {
            QFile::remove(part());
            put(part(), "theirs");
        }
        return 0;
    });
    const FileResult result = writeFileWhole(directory_->filePath("a"), "new");
    QCOMPARE(result.number, EBUSY);
    QCOMPARE(get(directory_->filePath("a")), "old");
    QCOMPARE(get(part()), "theirs");
}

void TestDraftFile::aFolderThatTakesNothingSaysWhy() {
    QCOMPARE(DraftFile(directory_->filePath("none"), kMode).error(), ENOENT);
    put(directory_->filePath("file"), "x");
    QCOMPARE(DraftFile(directory_->filePath("file"), kMode).error(), ENOTDIR);
    for (const QString& path : {part(), part("2")}) {
        QVERIFY(QDir().mkpath(path));
    }
    QCOMPARE(DraftFile(folder(), kMode).path(), part("3"));
    for (int number = 3; number <= 100; ++number) {
        QVERIFY(QDir().mkpath(part(QByteArray::number(number).constData())));
    }
    QCOMPARE(DraftFile(folder(), kMode).error(), EBUSY);
}

void TestDraftFile::threadsThatWriteInOneFolderDoNotMixTheirFiles() {
    constexpr int kWriters = 4;
    std::vector<std::future<QStringList>> writers;
    for (int writer = 1; writer <= kWriters; ++writer) {
        writers.push_back(std::async(std::launch::async, faultsOfAWriter, folder(), writer, 60));
    }
    for (std::future<QStringList>& writer : writers) {
        QCOMPARE(writer.get(), QStringList());
    }
    QCOMPARE(names().size(), kWriters * 3);
}

void TestDraftFile::programsThatWriteInOneFolderDoNotMixTheirFiles() {
    constexpr int kPrograms = 3;
    std::vector<pid_t> programs;
    for (int program = 1; program <= kPrograms; ++program) {
        const pid_t other = ::fork();
        if (other == 0) {
            const QStringList faults = faultsOfAWriter(folder(), program, 60);
            std::fputs(qPrintable(faults.join(QLatin1Char('\n'))), stderr);
            ::_exit(static_cast<int>(std::min<qsizetype>(faults.size(), 100)));
        }
        programs.push_back(other);
    }
    for (const pid_t other : programs) {
        int status = 0;
        QCOMPARE(::waitpid(other, &status, 0), other);
        QCOMPARE(WEXITSTATUS(status), 0);
        QVERIFY(WIFEXITED(status));
    }
    QCOMPARE(names().size(), kPrograms * 3);
}

QTEST_GUILESS_MAIN(TestDraftFile)
#include "test_draftfile.moc"
