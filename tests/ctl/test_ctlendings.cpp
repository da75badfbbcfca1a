#include "platform/instancelock.h"
#include "tests/ctl/ctlpipe.h"
#include "tests/ctl/ctlstage.h"
#include "tests/support/asnobody.h"

#include <csignal>
#include <unistd.h>

using namespace benthor;
using tests::goodDive;
using tests::Pipe;
using tests::Ran;
using tests::ToolFolder;

namespace {

constexpr int kPatience = 60000;

} // namespace

/// How the tool ends: every exit status, and what is left behind.
class TestCtlEndings : public QObject {
    Q_OBJECT

private slots:
    void wrongUsage();
    void aFolderThatIsNotThere();
    void aFolderWithoutAStore();
    void theFolderIsTheProgramsOwn();
    void aDamagedStore();
    void aFolderThatCannotBeWritten();
    void aStoreThatAnotherProgramHolds();
    void aMergeOfWhatIsNoLogbook();
    void aFullDiskAtAnImport();
    void aFullDiskAtAMerge();
    void aFullDiskAtTheOutput();
    void aClosedOutput();
    void aReaderThatGoesAway();
    void onATerminalLinesAreCutAndTheWorkIsShown();
    void whatIsToldMovesNoCursor();
    void anInterruptionOfAWrite();
    void anInterruptionOfAWait();
    void anInterruptionOfAnImport();
};

void TestCtlEndings::wrongUsage() {
    for (const QStringList& words : {QStringList(), {"lsit"}, {"list", "--color"}, {"show"}}) {
        const Ran ran = tests::runTool(words);
        QCOMPARE(ran.status, 2);
        QCOMPARE(ran.out, QByteArray());
        QVERIFY(ran.err.startsWith("benthorctl: "));
        QVERIFY(ran.err.endsWith(" Try benthorctl --help.\n"));
    }
}

void TestCtlEndings::aFolderThatIsNotThere() {
    const QTemporaryDir folder;
    const QString none = folder.filePath(QStringLiteral("none"));
    for (const char* const command : {"list", "check", "stats", "verify", "show 1", "samples 1",
                                      "import a.txt", "merge a", "merge a --dry-run"}) {
        const Ran ran = tests::runTool(QStringList{"--json", "--folder", none} +
                                       QString::fromLatin1(command).split(QLatin1Char(' ')));
        QCOMPARE(ran.status, 3);
        QCOMPARE(ran.out, QByteArray());
        QCOMPARE(ran.err, "benthorctl: There is no program folder " + none.toUtf8() + ".\n");
    }
    QVERIFY(!QFileInfo::exists(none));
}

void TestCtlEndings::aFolderWithoutAStore() {
    const QTemporaryDir folder;
    for (const char* const command : {"list", "import a.txt"}) {
        const Ran ran = tests::runTool(QStringList{"--folder", folder.path()} +
                                       QString::fromLatin1(command).split(QLatin1Char(' ')));
        QCOMPARE(ran.status, 3);
        QVERIFY(ran.err.startsWith("benthorctl: There is no dive store rb.mdb in the folder "));
    }
    QVERIFY(QDir(folder.path()).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
}

/// As the program finds it, but nothing is made: a tool in a folder that can be written has that one.
void TestCtlEndings::theFolderIsTheProgramsOwn() {
    const ToolFolder world;
    world.close();
    const QString tool = world.folder.path(u"benthorctl");
    QVERIFY(QFile::copy(QStringLiteral(BENTHORCTL), tool));
    QProcess process;
    process.setProgram(tool);
    process.setArguments({QStringLiteral("list")});
    process.setWorkingDirectory(QDir::tempPath());
    process.start();
    const Ran ran = tests::resultOf(process);
    QCOMPARE(ran.status, 0);
    QCOMPARE(ran.lines().size(), 4);

    // A relative folder is one of the working directory.
    QProcess relative;
    relative.setWorkingDirectory(QFileInfo(world.folder.root()).absolutePath());
    tests::startTool(relative, {"--folder", QFileInfo(world.folder.root()).fileName(), "list"});
    QCOMPARE(tests::resultOf(relative).lines().size(), 4);
}

void TestCtlEndings::aDamagedStore() {
    const ToolFolder world;
    world.close();
    QByteArray bytes = platform::readFile(world.storePath()).value();
    constexpr qsizetype kPage = 4096;
    bytes.replace(kPage, kPage, QByteArray(kPage, '\x5a')); // behind the head of the file
    for (const QByteArray& damaged : {bytes, QByteArray("no store at all"), QByteArray()}) {
        QVERIFY(platform::writeFileWhole(world.storePath(), damaged).ok());
        for (const char* const command : {"list", "stats", "check", "show 1", "import a.txt", "merge a"}) {
            const Ran ran = world.run(QString::fromLatin1(command).split(QLatin1Char(' ')));
            QVERIFY2(ran.status == 3, command);
            QCOMPARE(ran.out, QByteArray());
            QVERIFY(ran.err.startsWith("benthorctl: The dive store "));
        }
        QCOMPARE(world.run({"verify"}).status, 1);
        QCOMPARE(platform::readFile(world.storePath()).value(), damaged);
    }
}

void TestCtlEndings::aFolderThatCannotBeWritten() {
    const ToolFolder world;
    world.close();
    const QTemporaryDir elsewhere;
    const QString file = elsewhere.filePath(QStringLiteral("a.txt"));
    QVERIFY(platform::writeFileWhole(file, goodDive()).ok());
    for (const QString& path : {elsewhere.path(), world.folder.root()}) {
        QVERIFY(QFile::setPermissions(path, QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther |
                                                QFile::ExeOther));
    }
    QVERIFY(QFile::setPermissions(world.storePath(), QFile::ReadOwner | QFile::ReadOther));
    const QStringList before = world.snapshot();
    const auto asNobody = [] { tests::becomeNobody(); };
    QCOMPARE(world.run({"list"}, asNobody).status, 0);
    QCOMPARE(world.run({"samples", "1"}, asNobody).status, 0);
    const Ran import = world.run({"import", file}, asNobody);
    QCOMPARE(import.status, 3);
    QVERIFY2(import.err.contains("cannot be written"), import.err.constData());
    QCOMPARE(world.run({"merge", elsewhere.path()}, asNobody).status, 3);
    QCOMPARE(world.snapshot(), before);
    QVERIFY(
        QFile::setPermissions(world.folder.root(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
}

void TestCtlEndings::aStoreThatAnotherProgramHolds() {
    const ToolFolder world;
    const platform::Transaction transaction(process().database); // BEGIN IMMEDIATE
    const QString file = QStringLiteral(BENTHOR_TEST_DATA "/dives/typical.txt");
    QProcess process;
    const Ran ran = world.run({"import", file});
    QCOMPARE(ran.status, 3);
    QVERIFY2(ran.err.contains("Another program holds") || ran.err.contains("locked"), ran.err.constData());
    QCOMPARE(world.names(QStringLiteral("new")), QStringList());
    QCOMPARE(world.run({"list"}).status, 0);
}

void TestCtlEndings::aMergeOfWhatIsNoLogbook() {
    const ToolFolder world;
    world.close();
    const QTemporaryDir empty;
    for (const QString& path : {empty.path(), empty.filePath(QStringLiteral("none")), world.folder.root(),
                                QStringLiteral(BENTHOR_TEST_DATA "/dives/typical.txt")}) {
        const Ran ran = world.run({"merge", path});
        QCOMPARE(ran.status, 3);
        QCOMPARE(ran.out, QByteArray());
    }
    QVERIFY(!QFile::exists(world.folder.path(u"rb-before-merge.mdb")));
}

/// Wherever the disk is full, a dive is in the store as a whole or not at all, and nothing waits in `new`.
void TestCtlEndings::aFullDiskAtAnImport() {
    const ToolFolder world;
    world.close();
    const QTemporaryDir elsewhere;
    const QString file = elsewhere.filePath(QStringLiteral("a.txt"));
    QVERIFY(platform::writeFileWhole(file, tests::longDive()).ok());
    const qint64 size = QFileInfo(file).size();
    for (const rlim_t most : {rlim_t{0}, rlim_t{1000}, static_cast<rlim_t>(size) - 1}) {
        const Ran ran = world.run({"import", "--json", file}, tests::smallDisk(most));
        QVERIFY2(ran.status == 4 || (most == 0 && ran.status == 3), ran.err.constData());
        QVERIFY(!ran.err.isEmpty());
        QCOMPARE(world.names(QStringLiteral("new")), QStringList());
        QVERIFY(!QFile::exists(world.folder.path(u"new", u".benthor.part")));
        QCOMPARE(world.names(QStringLiteral("dbtxt")).size(), 3);
        QCOMPARE(world.run({"list"}).lines().size(), 4);
        QCOMPARE(world.run({"verify"}).status, 0);
    }
    QCOMPARE(world.run({"import", file}).status, 0);
}

void TestCtlEndings::aFullDiskAtAMerge() {
    const ToolFolder other({"700000000"});
    other.close();
    const ToolFolder world;
    world.close();
    const qint64 size = QFileInfo(world.storePath()).size();
    for (const qint64 most : {qint64{100}, size - 1, size}) {
        const Ran ran =
            world.run({"merge", other.folder.root()}, tests::smallDisk(static_cast<rlim_t>(most)));
        if (ran.status == 0) {
            continue; // the rows found room in the pages that are there
        }
        QVERIFY2(ran.status == 4 || ran.status == 3, ran.err.constData());
        QCOMPARE(world.names(QStringLiteral("dbtxt")).size(), 3);
        QCOMPARE(world.run({"list"}).lines().size(), 4);
        QCOMPARE(world.run({"verify"}).status, 0);
    }
}

void TestCtlEndings::aFullDiskAtTheOutput() {
    const ToolFolder world;
    world.close();
    for (const char* const command :
         {"list", "list --json", "stats", "stats --json", "show 1", "samples 1", "samples 1 --json",
          "check --json", "verify", "verify --json", "--help", "--version"}) {
        QProcess process;
        process.setStandardOutputFile(QStringLiteral("/dev/full"));
        tests::startTool(process, world.words(QString::fromLatin1(command).split(QLatin1Char(' '))));
        const Ran ran = tests::resultOf(process);
        QVERIFY2(ran.status == 4, command);
        QCOMPARE(ran.err,
                 QByteArray("benthorctl: Cannot write to standard output: No space left on device\n"));
    }
}

/// What is opened meanwhile is not written into in its stead.
void TestCtlEndings::aClosedOutput() {
    const ToolFolder world;
    world.close();
    const QStringList before = world.snapshot();
    QCOMPARE(world.run({"list"}, [] { ::close(STDOUT_FILENO); }).status, 4);
    QCOMPARE(world
                 .run({"list", "9"},
                      [] {
                          ::close(STDOUT_FILENO);
                          ::close(STDERR_FILENO);
                      })
                 .status,
             4);
    QCOMPARE(world.snapshot(), before);
}

void TestCtlEndings::aReaderThatGoesAway() {
    const ToolFolder world(ToolFolder::kNoDives);
    world.importDive(tests::longDive());
    world.close();
    const QStringList before = world.snapshot();
    for (const QStringList& form : {QStringList(), QStringList{"--json"}}) {
        const Ran ran = tests::runUntilFull(world.words(QStringList{"samples", "1"} + form),
                                            [](QProcess&, Pipe& pipe) { pipe.closeReader(); });
        QCOMPARE(ran.status, 4);
        QCOMPARE(ran.err, QByteArray("benthorctl: Cannot write to standard output: Broken pipe\n"));
    }
    QCOMPARE(world.snapshot(), before);
}

void TestCtlEndings::onATerminalLinesAreCutAndTheWorkIsShown() {
    const ToolFolder world;
    process().database.execute("UPDATE main SET Location = 'a name that no narrow terminal has room for'");
    world.close();
    const int end = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    QVERIFY(end >= 0 && ::grantpt(end) == 0 && ::unlockpt(end) == 0);
    const QByteArray name = ::ptsname(end);
    const auto onTerminal = [&] {
        const int terminal = ::open(name.constData(), O_RDWR | O_NOCTTY);
        const winsize size{24, 50, 0, 0};
        ::ioctl(terminal, TIOCSWINSZ, &size);
        ::dup2(terminal, STDOUT_FILENO);
        ::dup2(terminal, STDERR_FILENO);
    };
    // What it writes stays for the test as long as somebody has the terminal open.
    const int open = ::open(name.constData(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    // The terminal passes on what was written piece by piece: a mark behind it tells where it ends.
    const auto shown = [&] {
        const QByteArray mark = "\x1e";
        QByteArray all;
        QByteArray bytes(65536, '\0');
        for (ssize_t count = ::write(open, mark.constData(), 1); count > 0 && !all.endsWith(mark);) {
            count = ::read(end, bytes.data(), static_cast<size_t>(bytes.size()));
            all += bytes.first(std::max<ssize_t>(count, 0));
        }
        return QString::fromUtf8(all.chopped(1));
    };
    QCOMPARE(world.run({"list"}, onTerminal).status, 0);
    const QStringList lines = shown().split(QStringLiteral("\r\n"));
    QCOMPARE(lines.size(), 5); // the last one empty
    for (const QString& line : lines.mid(0, 4)) {
        QVERIFY2(line.size() == 50 && line.endsWith(QChar(0x2026)), qPrintable(line));
    }
    QCOMPARE(world.run({"verify"}, onTerminal).status, 0);
    const QString verified = shown();
    QVERIFY2(verified.startsWith(QStringLiteral("\rStores: 0 of 1\033[K\r\033[KFile")), qPrintable(verified));
    ::close(open);
    ::close(end);
}

void TestCtlEndings::whatIsToldMovesNoCursor() {
    const ToolFolder world;
    world.close();
    const Ran ran = world.run({"show", QStringLiteral("a\x1b[2J\rb")});
    QCOMPARE(ran.status, 1);
    QCOMPARE(ran.err, QByteArray("benthorctl: There is no dive a [2J b.\n"));
    QCOMPARE(tests::runTool({QStringLiteral("\x1b]0;x\a")}).err,
             QByteArray("benthorctl: There is no command \" ]0;x \". Try benthorctl --help.\n"));
}

void TestCtlEndings::anInterruptionOfAWrite() {
    const ToolFolder world(ToolFolder::kNoDives);
    world.importDive(tests::longDive());
    world.close();
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        const Ran ran = tests::runUntilFull(world.words({"samples", "1"}), [&](QProcess& process, Pipe&) {
            ::kill(static_cast<pid_t>(process.processId()), number);
        });
        QCOMPARE(ran.status, 4);
        QCOMPARE(ran.err, QByteArray("benthorctl: Interrupted.\n"));
    }
}

void TestCtlEndings::anInterruptionOfAWait() {
    const ToolFolder world;
    const QStringList before = world.names(QStringLiteral("old"));
    const platform::Transaction transaction(process().database);
    QProcess tool;
    tests::startTool(tool, world.words({"import", QStringLiteral(BENTHOR_TEST_DATA "/dives/typical.txt")}));
    // It has the folder's lock before it waits for the store.
    QVERIFY(QTest::qWaitFor([&] { return !platform::InstanceLock(world.folder.root()).held(); }, kPatience));
    ::kill(static_cast<pid_t>(tool.processId()), SIGINT);
    const Ran ran = tests::resultOf(tool);
    QCOMPARE(ran.status, 4);
    QCOMPARE(ran.err, QByteArray("benthorctl: Interrupted.\n"));
    QCOMPARE(world.names(QStringLiteral("old")), before);
    QCOMPARE(world.names(QStringLiteral("new")), QStringList());
}

/// Each file is imported as a whole or not at all, and what was imported is told.
void TestCtlEndings::anInterruptionOfAnImport() {
    const ToolFolder world(ToolFolder::kNoDives);
    world.close();
    const QTemporaryDir elsewhere;
    QStringList files;
    constexpr int kFiles = 1000;
    for (int i = 0; i < kFiles; ++i) {
        files += elsewhere.filePath(QStringLiteral("%1.txt").arg(i, 4, 10, QLatin1Char('0')));
        QFile file(files.last());
        QVERIFY(file.open(QIODevice::WriteOnly) &&
                file.write(goodDive(QByteArray::number(700000000 + i))) > 0);
    }
    QProcess tool;
    tests::startTool(tool, world.words(QStringList{"import", "--json"} + files));
    QVERIFY(QTest::qWaitFor([&] { return world.names(QStringLiteral("dbtxt")).size() >= 5; }, kPatience));
    ::kill(static_cast<pid_t>(tool.processId()), SIGINT);
    const Ran ran = tests::resultOf(tool);
    QCOMPARE(ran.status, 4);
    QCOMPARE(ran.err, QByteArray("benthorctl: Interrupted.\n"));
    const qsizetype imported = ran.json().value(QLatin1String("imported")).toArray().size();
    QVERIFY(imported >= 4 && imported < kFiles);
    QCOMPARE(world.names(QStringLiteral("new")), QStringList());
    QCOMPARE(world.names(QStringLiteral("dbtxt")).size(), imported);
    QCOMPARE(world.run({"list"}).lines().size(), imported + 1);
    QVERIFY(!QFile::exists(world.folder.path(u"import.note")));
}

QTEST_GUILESS_MAIN(TestCtlEndings)
#include "test_ctlendings.moc"
