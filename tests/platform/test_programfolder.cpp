// Where the program folder is, and how it is made on its first use.

#include "platform/faultpoint.h"
#include "platform/files.h"
#include "platform/programfolder.h"
#include "tests/support/asnobody.h"

#include <QDir>
#include <QTemporaryDir>
#include <QThread>
#include <QtTest>

#include <cerrno>
#include <sys/stat.h>
#include <vector>

using namespace benthor;
using platform::FileResult;
using platform::FolderPlaces;
using platform::ProgramFolder;
using platform::takeProgramFolder;

namespace {

/// A variable of the environment is another one while this lives.
class Variable {
public:
    Variable(const char* name, const QByteArray& value)
        : name_(name)
        , before_(qgetenv(name)) {
        value.isNull() ? qunsetenv(name) : qputenv(name, value);
    }
    ~Variable() { before_.isNull() ? qunsetenv(name_) : qputenv(name_, before_); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    const char* name_;
    QByteArray before_;
};

} // namespace

class TestProgramFolder : public QObject {
    Q_OBJECT

private slots:
    void init() {
        directory_ = std::make_unique<QTemporaryDir>();
        QVERIFY(directory_->isValid());
    }

    void theDataFolderLiesWhereTheUserHasHisData();
    void anInstallationIsTheFolderBesideThatOfPrograms();
    void aFolderOfManyProgramsIsNoProgramFolder();
    void aStoreInAFolderOfManyProgramsServes();
    void anEmptyFolderIsFilledAndKeepsItsRights();
    void aLinkThatLeadsNowhereIsNotReplaced();
    void aFolderThatCannotBeMadeTellsWhy_data();
    void aFolderThatCannotBeMadeTellsWhy();
    void withoutRightsItTellsWhy();
    void aFillThatFailsLeavesAnEmptyFolderEmpty();
    void whatAnEndedStartLeftIsTakenAway();
    void startsAtTheSameTimeFillItOnce();
    void aChosenFolderIsTakenAsItIs();
    void aChosenFolderThatIsNotThereIsMade();
    void aRelativeFolderIsLookedForFromTheCurrentOne();
    void aChosenFolderThatCannotBeReadTellsWhy();

private:
    QString path(const QString& name) const { return directory_->filePath(name); }
    void put(const QString& name, const QByteArray& bytes) const {
        QVERIFY(QDir().mkpath(QFileInfo(path(name)).absolutePath()));
        QVERIFY(platform::writeFileWhole(path(name), bytes).ok());
    }
    QByteArray bytes(const QString& name) const {
        return platform::readFile(path(name)).value_or(QByteArrayLiteral("(none)"));
    }
    /// What an installation offers.
    void install() const {
        put(QStringLiteral("share/rb.mdb"), "fresh");
        put(QStringLiteral("share/gdata.mit"), "A079");
        QVERIFY(QDir().mkpath(path(QStringLiteral("share/new"))));
    }
    FolderPlaces places(const QString& data) const {
        return {path(QStringLiteral("no executable")), data, path(QStringLiteral("share"))};
    }
    static mode_t rightsOf(const QString& file) {
        struct stat facts {};
        return ::stat(QFile::encodeName(file).constData(), &facts) == 0 ? facts.st_mode & mode_t{07777} : 0;
    }
    bool isWhole(const QString& folder) const {
        return bytes(folder + QStringLiteral("/rb.mdb")) == "fresh" &&
               bytes(folder + QStringLiteral("/gdata.mit")) == "A079" &&
               QFileInfo(path(folder + QStringLiteral("/new"))).isDir();
    }

    std::unique_ptr<QTemporaryDir> directory_;
};

void TestProgramFolder::theDataFolderLiesWhereTheUserHasHisData() {
    const Variable home("HOME", path(QStringLiteral("anna")).toLocal8Bit());
    {
        const Variable data("XDG_DATA_HOME", path(QStringLiteral("far away")).toLocal8Bit());
        QCOMPARE(platform::folderPlaces().data, path(QStringLiteral("far away/Benthor")));
    }
    const Variable none("XDG_DATA_HOME", {});
    QCOMPARE(platform::folderPlaces().data, path(QStringLiteral("anna/.local/share/Benthor")));
}

void TestProgramFolder::anInstallationIsTheFolderBesideThatOfPrograms() {
    const FolderPlaces found = platform::folderPlaces();
    QCOMPARE(found.executable, QCoreApplication::applicationDirPath());
    QCOMPARE(found.installed, QFileInfo(found.executable).path() + QStringLiteral("/share/benthor"));
}

void TestProgramFolder::aFolderOfManyProgramsIsNoProgramFolder() {
    put(QStringLiteral("usr/share/benthor/rb.mdb"), "fresh");
    QVERIFY(QDir().mkpath(path(QStringLiteral("usr/bin"))));
    FolderPlaces found{path(QStringLiteral("usr/bin")), path(QStringLiteral("data")),
                       path(QStringLiteral("usr/share/benthor"))};
    QVERIFY(QFileInfo(found.executable).isWritable());
    QCOMPARE(platform::findProgramFolder(found).root(), found.data);
    // Unpacked anywhere else it serves as ever.
    QVERIFY(QDir().mkpath(path(QStringLiteral("usr/Benthor"))));
    found.executable = path(QStringLiteral("usr/Benthor"));
    QCOMPARE(platform::findProgramFolder(found).root(), found.executable);
}

void TestProgramFolder::aStoreInAFolderOfManyProgramsServes() {
    put(QStringLiteral("usr/share/benthor/rb.mdb"), "fresh");
    put(QStringLiteral("usr/bin/rb.mdb"), "years of dives");
    const FolderPlaces found{path(QStringLiteral("usr/bin")), path(QStringLiteral("data")),
                             path(QStringLiteral("usr/share/benthor"))};
    QCOMPARE(platform::findProgramFolder(found).root(), found.executable);
}

void TestProgramFolder::anEmptyFolderIsFilledAndKeepsItsRights() {
    install();
    QVERIFY(QDir().mkpath(path(QStringLiteral("data"))));
    QCOMPARE(::chmod(QFile::encodeName(path(QStringLiteral("data"))).constData(), 0750), 0);
    FileResult error;
    platform::locateProgramFolder(places(path(QStringLiteral("data"))), error);
    QVERIFY2(error.ok(), qPrintable(error.error));
    QVERIFY(isWhole(QStringLiteral("data")));
    QCOMPARE(rightsOf(path(QStringLiteral("data"))), mode_t{0750});
    QVERIFY(!QFile::exists(path(QStringLiteral("data.part"))));
}

void TestProgramFolder::aLinkThatLeadsNowhereIsNotReplaced() {
    install();
    QVERIFY(QFile::link(path(QStringLiteral("a disk that is away")), path(QStringLiteral("data"))));
    FileResult error;
    platform::locateProgramFolder(places(path(QStringLiteral("data"))), error);
    QVERIFY(!error.ok());
    QVERIFY(QFileInfo(path(QStringLiteral("data"))).isSymLink());
    QVERIFY(!QFile::exists(path(QStringLiteral("data.part"))));
}

void TestProgramFolder::aFolderThatCannotBeMadeTellsWhy_data() {
    QTest::addColumn<QString>("chosen");
    QTest::addColumn<QString>("reason");
    QTest::newRow("a file stands there") << "file"
                                         << "Not a directory";
    QTest::newRow("a file stands above it") << "file/data"
                                            << "Not a directory";
    QTest::newRow("no name is as long") << QString(300, u'x') << "File name too long";
}

void TestProgramFolder::aFolderThatCannotBeMadeTellsWhy() {
    QFETCH(QString, chosen);
    QFETCH(QString, reason);
    install();
    put(QStringLiteral("file"), "mine");
    FileResult error;
    const ProgramFolder folder = platform::locateProgramFolder(places(path(chosen)), error);
    QCOMPARE(folder.root(), path(chosen));
    QVERIFY2(error.error.startsWith(QLatin1String("Cannot make the folder ") + directory_->path()),
             qPrintable(error.error));
    QVERIFY2(error.error.contains(reason), qPrintable(error.error));
    QCOMPARE(bytes(QStringLiteral("file")), "mine");
}

void TestProgramFolder::withoutRightsItTellsWhy() {
    install();
    QVERIFY(QDir().mkpath(path(QStringLiteral("shut"))));
    QCOMPARE(::chmod(QFile::encodeName(path(QStringLiteral("shut"))).constData(), 0555), 0);
    QCOMPARE(::chmod(QFile::encodeName(directory_->path()).constData(), 0755), 0);
    QCOMPARE(tests::runAsNobody([this] {
                 FileResult error;
                 platform::locateProgramFolder(places(path(QStringLiteral("shut/data"))), error);
                 return error.number == EACCES && error.error.contains(QLatin1String("Permission denied"))
                            ? 0
                            : 1;
             }),
             0);
    QVERIFY(QDir(path(QStringLiteral("shut"))).isEmpty());
}

void TestProgramFolder::aFillThatFailsLeavesAnEmptyFolderEmpty() {
    install();
    QVERIFY(QDir().mkpath(path(QStringLiteral("data"))));
    int copies = 0;
    const platform::FaultInjection fault(
        [&](std::string_view step) { return step == "sync" && ++copies == 2 ? ENOSPC : 0; });
    FileResult error;
    platform::locateProgramFolder(places(path(QStringLiteral("data"))), error);
    QVERIFY(!error.ok());
    QVERIFY(QDir(path(QStringLiteral("data"))).isEmpty());
    QVERIFY(!QFile::exists(path(QStringLiteral("data.part"))));
}

void TestProgramFolder::whatAnEndedStartLeftIsTakenAway() {
    install();
    put(QStringLiteral("data.part/rb.mdb"), "half");
    put(QStringLiteral("data.part/rubbish"), "half");
    FileResult error;
    platform::locateProgramFolder(places(path(QStringLiteral("data"))), error);
    QVERIFY2(error.ok(), qPrintable(error.error));
    QVERIFY(isWhole(QStringLiteral("data")));
    QVERIFY(!QFile::exists(path(QStringLiteral("data/rubbish"))));
}

void TestProgramFolder::startsAtTheSameTimeFillItOnce() {
    install();
    for (int file = 0; file < 50; ++file) {
        put(QStringLiteral("share/jpg/%1").arg(file), "picture");
    }
    std::vector<std::unique_ptr<QThread>> starts;
    std::array<FileResult, 6> errors;
    for (FileResult& error : errors) {
        starts.emplace_back(QThread::create([this, &error] {
            platform::locateProgramFolder(places(path(QStringLiteral("data"))), error);
            // A start that comes back works in the folder at once: from then on nobody may take it away.
            if (!isWhole(QStringLiteral("data"))) {
                error.error += QLatin1String("not whole");
            }
        }));
    }
    for (const auto& start : starts) {
        start->start();
    }
    for (const auto& start : starts) {
        start->wait();
    }
    for (const FileResult& error : errors) {
        QVERIFY2(error.ok(), qPrintable(error.error));
    }
    QVERIFY(!QFile::exists(path(QStringLiteral("data.part"))));
}

void TestProgramFolder::aChosenFolderIsTakenAsItIs() {
    install();
    put(QStringLiteral("mine/rb.mdb"), "years of dives");
    FileResult error;
    const ProgramFolder folder = takeProgramFolder(path(QStringLiteral("mine")), places({}), error);
    QVERIFY2(error.ok(), qPrintable(error.error));
    QCOMPARE(folder.root(), path(QStringLiteral("mine")));
    QCOMPARE(bytes(QStringLiteral("mine/rb.mdb")), "years of dives");
    QVERIFY(!QFile::exists(path(QStringLiteral("mine/gdata.mit"))));
}

void TestProgramFolder::aChosenFolderThatIsNotThereIsMade() {
    install();
    FileResult error;
    takeProgramFolder(path(QStringLiteral("a/b/mine")), places({}), error);
    QVERIFY2(error.ok(), qPrintable(error.error));
    QVERIFY(isWhole(QStringLiteral("a/b/mine")));
    QCOMPARE(rightsOf(path(QStringLiteral("a/b/mine"))), mode_t{0700});
    // Without an installation there is nothing to make it from.
    QVERIFY(QDir(path(QStringLiteral("share"))).removeRecursively());
    takeProgramFolder(path(QStringLiteral("another")), places({}), error);
    QVERIFY2(error.error.contains(path(QStringLiteral("share"))), qPrintable(error.error));
    QVERIFY(!QFile::exists(path(QStringLiteral("another"))));
}

void TestProgramFolder::aRelativeFolderIsLookedForFromTheCurrentOne() {
    put(QStringLiteral("here/mine/rb.mdb"), "dives");
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(path(QStringLiteral("here"))));
    const QString here = QDir::currentPath();
    FileResult error;
    const QString found = takeProgramFolder(QStringLiteral("../here/mine/"), places({}), error).root();
    QDir::setCurrent(before);
    QVERIFY2(error.ok(), qPrintable(error.error));
    QCOMPARE(found, here + QStringLiteral("/mine"));
}

void TestProgramFolder::aChosenFolderThatCannotBeReadTellsWhy() {
    put(QStringLiteral("shut/rb.mdb"), "dives");
    QCOMPARE(::chmod(QFile::encodeName(path(QStringLiteral("shut"))).constData(), 0700), 0);
    QCOMPARE(::chmod(QFile::encodeName(directory_->path()).constData(), 0755), 0);
    if (geteuid() != 0) {
        QSKIP("the folder of another user takes root to be made");
    }
    QCOMPARE(tests::runAsNobody([this] {
                 FileResult error;
                 takeProgramFolder(path(QStringLiteral("shut")), places({}), error);
                 return error.number == EACCES && error.error.contains(QLatin1String("Permission denied"))
                            ? 0
                            : 1;
             }),
             0);
}

QTEST_GUILESS_MAIN(TestProgramFolder)
#include "test_programfolder.moc"
