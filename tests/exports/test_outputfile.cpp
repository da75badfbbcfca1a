#include "exports/outputfile.h"
#include "platform/files.h"
#include "tests/support/asnobody.h"
#include "tests/support/killed.h"
#include "tests/support/smalldisk.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <fcntl.h>
#include <sys/stat.h>

using namespace benthor;
using namespace benthor::exports;

namespace {

/// A folder, and standard output led to a file of it where a test asks.
class Folder {
public:
    QString path(const QString& name = QStringLiteral("out.json")) const { return folder_.filePath(name); }
    QByteArray get(const QString& name = QStringLiteral("out.json")) const {
        return platform::readFile(path(name)).value_or("(no file)");
    }
    void put(const QByteArray& bytes, const QString& name = QStringLiteral("out.json")) const {
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }
    /// Hidden ones too.
    QStringList names() const {
        return QDir(folder_.path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

private:
    QTemporaryDir folder_;
};

class Redirected {
public:
    Redirected(int number, int to)
        : number_(number)
        , before_(dup(number)) {
        dup2(to, number_);
    }
    ~Redirected() {
        dup2(before_, number_);
        close(before_);
    }
    Redirected(const Redirected&) = delete;
    Redirected& operator=(const Redirected&) = delete;

private:
    int number_;
    int before_;
};

void writeAll(const QString& path, const QByteArray& bytes, bool force = false) {
    OutputFile file(path, force);
    file.device().write(bytes);
    file.commit();
}

QString refusal(const QString& path, bool force = false, const QByteArray& bytes = "new") {
    try {
        writeAll(path, bytes, force);
    } catch (const FileExistsError& error) {
        return QStringLiteral("exists: ") + error.text();
    } catch (const ExportError& error) {
        return error.text();
    }
    return {};
}

const QStringList kNone;
const QStringList kOnlyOut{QStringLiteral("out.json")};

} // namespace

class TestOutputFile : public QObject {
    Q_OBJECT

private slots:
    void aFileAppearsAtItsCommit() {
        const Folder folder;
        OutputFile file(folder.path(), false);
        QCOMPARE(file.device().write("whole"), qint64(5));
        QCOMPARE(folder.get(), QByteArray("(no file)"));
        file.commit();
        QCOMPARE(folder.get(), QByteArray("whole"));
        QCOMPARE(folder.names(), kOnlyOut);
        QCOMPARE(file.error(), QString());
    }

    void withoutACommitNothingIsLeft() {
        const Folder folder;
        {
            OutputFile file(folder.path(), false);
            file.device().write(QByteArray(1000000, 'x'));
        }
        QCOMPARE(folder.names(), kNone);
        folder.put("old");
        {
            OutputFile file(folder.path(), true);
            file.device().write("new");
        }
        QCOMPARE(folder.get(), QByteArray("old"));
        QCOMPARE(folder.names(), kOnlyOut);
    }

    void piecesOfEverySizeComeInOrder() {
        const Folder folder;
        QByteArray whole;
        OutputFile file(folder.path(), false);
        for (const int size : {1, 100000, 200000, 3, 262144, 262143, 1, 1000000, 7}) {
            const QByteArray piece(size, static_cast<char>('a' + whole.size() % 26));
            QCOMPARE(file.device().write(piece), qint64(size));
            whole += piece;
        }
        file.commit();
        QCOMPARE(folder.get(), whole);
    }

    void anExistingFileIsRefusedBeforeAnythingIsWritten() {
        const Folder folder;
        folder.put("old");
        QCOMPARE(refusal(folder.path()), QStringLiteral("exists: %1 is there already.").arg(folder.path()));
        QCOMPARE(folder.get(), QByteArray("old"));
        QCOMPARE(folder.names(), kOnlyOut);
        QCOMPARE(refusal(folder.path(), true), QString());
        QCOMPARE(folder.get(), QByteArray("new"));
    }

    void aFileThatCameMeanwhileStays() {
        const Folder folder;
        OutputFile file(folder.path(), false);
        file.device().write("new");
        folder.put("came meanwhile");
        QVERIFY_THROWS_EXCEPTION(FileExistsError, file.commit());
        QCOMPARE(folder.get(), QByteArray("came meanwhile"));
        QCOMPARE(folder.names(), kOnlyOut);
    }

    void aLinkStaysALink() {
        const Folder folder;
        QDir().mkdir(folder.path("there"));
        folder.put("old", "there/real.json");
        QVERIFY(QFile::link("there/real.json", folder.path()));
        QVERIFY(refusal(folder.path()).startsWith("exists"));
        writeAll(folder.path(), "new", true);
        QVERIFY(QFileInfo(folder.path()).isSymLink());
        QCOMPARE(folder.get("there/real.json"), QByteArray("new"));
        QVERIFY(QFile::remove(folder.path("there/real.json")));
        writeAll(folder.path(), "again"); // what it leads to is missing, and so not in the way
        QCOMPARE(folder.get("there/real.json"), QByteArray("again"));
    }

    void rightsAreHandedOn() {
        const Folder folder;
        folder.put("old");
        QVERIFY(QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::WriteOwner));
        writeAll(folder.path(), "new", true);
        struct stat state {};
        QCOMPARE(::stat(qPrintable(folder.path()), &state), 0);
        QCOMPARE(state.st_mode & 0777, mode_t(0600));
    }

    void aFolderIsNoFile() {
        const Folder folder;
        QDir().mkdir(folder.path());
        QCOMPARE(refusal(folder.path(), true),
                 QStringLiteral("Cannot write %1: Is a directory").arg(folder.path()));
        QVERIFY(refusal(folder.path("missing/out.json")).endsWith("No such file or directory"));
        QVERIFY(refusal(folder.path("missing/")).endsWith("No such file or directory"));
        QVERIFY(!refusal(QString()).isEmpty());
        QCOMPARE(folder.names(), kOnlyOut);
    }

    void aFolderThatCannotBeWritten() {
        const Folder folder;
        QVERIFY(QFile::setPermissions(folder.path("."), QFile::ReadOther | QFile::ExeOther |
                                                            QFile::ReadOwner | QFile::ExeOwner));
        QCOMPARE(
            tests::runAsNobody([&] { return refusal(folder.path()).endsWith("Permission denied") ? 7 : 1; }),
            7);
        QVERIFY(
            QFile::setPermissions(folder.path("."), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        QCOMPARE(folder.names(), kNone);
    }

    void aFullDiskIsTold_data() {
        QTest::addColumn<int>("size");
        QTest::newRow("seen at the end") << 5000;
        QTest::newRow("seen while writing") << 1000000;
    }
    void aFullDiskIsTold() {
        QFETCH(int, size);
        const Folder folder;
        folder.put("old");
        const tests::SmallDisk disk(4000);
        OutputFile file(folder.path(), true);
        const qint64 taken = file.device().write(QByteArray(size, 'x'));
        QCOMPARE(taken, qint64(size == 5000 ? size : -1));
        QCOMPARE(file.error().isEmpty(), size == 5000);
        QVERIFY_THROWS_EXCEPTION(ExportError, file.commit());
        QVERIFY(file.error().contains("File too large"));
        QCOMPARE(file.device().write("more"), qint64(-1));
        QCOMPARE(folder.get(), QByteArray("old"));
        QCOMPARE(folder.names(), kOnlyOut);
    }

    void aDeviceIsWrittenInPlace() {
        QCOMPARE(refusal("/dev/null"), QString());
        QVERIFY(!QFileInfo("/dev/null").isFile());
        QCOMPARE(refusal("/dev/full"), QString("Cannot write /dev/full: No space left on device"));
        QVERIFY(!QFileInfo("/dev/full").isFile());
    }

    void aPipeIsWrittenInPlace() {
        const Folder folder;
        QCOMPARE(::mkfifo(qPrintable(folder.path()), 0600), 0);
        const int reader = ::open(qPrintable(folder.path()), O_RDONLY | O_NONBLOCK);
        writeAll(folder.path(), "through");
        std::array<char, 20> text{};
        QCOMPARE(::read(reader, text.data(), text.size()), ssize_t(7));
        QCOMPARE(QByteArray(text.data()), QByteArray("through"));
        OutputFile file(folder.path(), false);
        ::close(reader);
        file.device().write("to nobody");
        QVERIFY_THROWS_EXCEPTION(ExportError, file.commit());
        QVERIFY(file.error().endsWith("Broken pipe"));
        QCOMPARE(folder.names(), kOnlyOut);
    }

    void standardOutputIsWrittenInPlace() {
        const Folder folder;
        folder.put("");
        const int file = ::open(qPrintable(folder.path()), O_WRONLY);
        {
            const Redirected out(STDOUT_FILENO, file);
            writeAll("-", "first,");
            writeAll("-", "second");
        }
        QCOMPARE(folder.get(), QByteArray("first,second"));
        {
            const Redirected out(STDOUT_FILENO, file);
            writeAll("/dev/stdout", "third"); // the shell opened it: not ours to replace, nor in the way
        }
        ::close(file);
        QCOMPARE(folder.get().left(5), QByteArray("third"));
        QCOMPARE(folder.names(), kOnlyOut);
    }

    void aClosedStandardOutputIsTold() {
        std::array<int, 2> pipe{};
        QCOMPARE(::pipe(pipe.data()), 0);
        ::close(pipe[0]);
        QString error;
        {
            const Redirected out(STDOUT_FILENO, pipe[1]);
            error = refusal("-");
        }
        ::close(pipe[1]);
        QCOMPARE(error, QString("Cannot write standard output: Broken pipe"));
    }

    void twoDoNotWriteOneFileAtOnce() {
        const Folder folder;
        OutputFile first(folder.path(), false);
        QVERIFY(refusal(folder.path()).endsWith("Device or resource busy"));
        QCOMPARE(refusal(folder.path("other.json")), QString());
        first.device().write("first");
        first.commit();
        QCOMPARE(folder.get(), QByteArray("first"));
    }

    void everyStepThatFailsLeavesTheOld() {
        for (const std::string_view failing : {"write", "sync", "rename"}) {
            const Folder folder;
            folder.put("old");
            const platform::FaultInjection fault(
                [&](std::string_view step) { return step == failing ? EIO : 0; });
            QVERIFY(refusal(folder.path(), true).endsWith("Input/output error"));
            QCOMPARE(folder.get(), QByteArray("old"));
            QCOMPARE(folder.names(), kOnlyOut);
        }
    }

    void aKilledWritingLeavesTheOldOrTheNew() {
        const Folder folder;
        folder.put("old");
        int killed = 0;
        while (
            tests::isKilledAt(killed + 1, [&] { writeAll(folder.path(), QByteArray(600000, 'n'), true); })) {
            ++killed;
            const QByteArray left = folder.get();
            QVERIFY(left == "old" || left == QByteArray(600000, 'n'));
            QVERIFY(folder.names().size() <= 2); // the hidden one of the crash at most
            folder.put("old");
        }
        QVERIFY(killed >= 4); // write, sync, rename, syncfolder
        QCOMPARE(folder.get(), QByteArray(600000, 'n'));
        QCOMPARE(folder.names(), kOnlyOut); // the last one took the hidden file over
    }

    void aLongNameIsNoTrouble() {
        const Folder folder;
        const QString name(255, u'n');
        QCOMPARE(refusal(folder.path(name)), QString());
        QCOMPARE(folder.names(), QStringList(name));
    }
};

QTEST_GUILESS_MAIN(TestOutputFile)
#include "test_outputfile.moc"
