// The program itself, as it is started: its words on the terminal, its folder, and a second start.

#include "platform/programfolder.h"
#include "store/schema.h"
#include "tests/shell/housestage.h"

#include <QProcess>
#include <QTemporaryDir>

#include <csignal>

using namespace benthor;
using namespace benthor::tests;

namespace {

constexpr int kPatience = 30000;

QByteArray setup() {
    return "A079 000 0560 1 B001 000 0040 0 C020 000 0070 0 D058 010 0400 1 E060 000 0250 0 F064 000 0280 0 "
           "G068 000 0330 0 H039 044 0670 0 I036 050 0900 0 J024 065 1170 0 K0000000001 L0 M2 N0 O0 P110 Q0 "
           "R0 S1 "
           "T100 U004 V120 W030 X1 Y1 Z\x1b\r\n";
}

/// A start of the program; killed with the object where it still runs.
class Start {
public:
    Start(const QString& program, const QStringList& words, const QProcessEnvironment& environment,
          const QString& current = QDir::tempPath()) {
        process_.setProcessEnvironment(environment);
        process_.setWorkingDirectory(current);
        process_.start(program, words);
        if (!process_.waitForStarted(kPatience)) {
            qFatal("%s does not start", qPrintable(program));
        }
    }
    ~Start() {
        if (process_.state() != QProcess::NotRunning) {
            process_.kill();
            process_.waitForFinished(kPatience);
        }
    }
    Start(const Start&) = delete;
    Start& operator=(const Start&) = delete;

    bool runs() const { return process_.state() == QProcess::Running; }
    /// Its exit status once it has ended; -1 where it does not, or crashed.
    int status() {
        const bool ended = process_.state() == QProcess::NotRunning || process_.waitForFinished(kPatience);
        return ended && process_.exitStatus() == QProcess::NormalExit ? process_.exitCode() : -1;
    }
    int statusBehind(int signal) {
        ::kill(static_cast<pid_t>(process_.processId()), signal);
        return status();
    }
    QByteArray told() { return process_.readAllStandardOutput(); }
    QByteArray complained() { return process_.readAllStandardError(); }

private:
    QProcess process_;
};

} // namespace

class TestProgram : public QObject {
    Q_OBJECT

private slots:
    void init() {
        home_ = std::make_unique<QTemporaryDir>();
        folder_ = std::make_unique<TestFolder>();
        setGuide(*folder_, "Close");
    }

    void versionAndHelpNeedNoDisplay_data();
    void versionAndHelpNeedNoDisplay();
    void wrongUsageEndsWithTwoAndNeedsNoDisplay();
    void theToolkitsOptionsAreTakenBesideOurs();
    void aFolderThatCannotBeMadeEndsWithThree();
    void withClosedStreamsNoFileIsWrittenInto();
    void anInstalledProgramMakesTheUsersFolder();
    void aSecondStartHandsItsFilesOver();
    void anotherFolderHasACopyOfItsOwn();

private:
    QProcessEnvironment environment(bool display = true) const {
        QProcessEnvironment made;
        for (const char* const name : {"PATH", "LC_ALL", "LSAN_OPTIONS", "ASAN_OPTIONS"}) {
            if (qEnvironmentVariableIsSet(name)) {
                made.insert(QLatin1String(name), qEnvironmentVariable(name));
            }
        }
        made.insert(QStringLiteral("HOME"), home_->path());
        if (display) {
            made.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        }
        return made;
    }
    Start start(const QStringList& words, bool display = true) const {
        return Start(QStringLiteral(BENTHOR), words, environment(display));
    }
    QStringList inFolder(const QStringList& words) const {
        return QStringList{QStringLiteral("--folder"), folder_->root()} + words;
    }

    std::unique_ptr<QTemporaryDir> home_;
    std::unique_ptr<TestFolder> folder_;
};

void TestProgram::versionAndHelpNeedNoDisplay_data() {
    QTest::addColumn<QStringList>("words");
    QTest::addColumn<QByteArray>("told");
    QTest::newRow("version") << QStringList{QStringLiteral("--version")}
                             << QByteArray("benthor " BENTHOR_VERSION "\n");
    QTest::newRow("help") << QStringList{QStringLiteral("--help")} << QByteArray("Usage: benthor ");
    QTest::newRow("beside a word of the toolkit")
        << QStringList{QStringLiteral("-platform"), QStringLiteral("xcb"), QStringLiteral("--version")}
        << QByteArray("benthor " BENTHOR_VERSION "\n");
}

void TestProgram::versionAndHelpNeedNoDisplay() {
    QFETCH(QStringList, words);
    QFETCH(QByteArray, told);
    Start run = start(words, false);
    QCOMPARE(run.status(), 0);
    const QByteArray text = run.told();
    QVERIFY2(text.startsWith(told), text);
    QCOMPARE(run.complained(), QByteArray());
    QVERIFY(QDir(home_->path()).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
}

void TestProgram::wrongUsageEndsWithTwoAndNeedsNoDisplay() {
    for (const QStringList& words :
         {QStringList{QStringLiteral("--nonsense")}, QStringList{QStringLiteral("-nonsense")},
          QStringList{QStringLiteral("a.mit"), QStringLiteral("b.mit")}}) {
        Start run = start(words, false);
        QCOMPARE(run.status(), 2);
        QCOMPARE(run.told(), QByteArray());
        const QByteArray words2 = run.complained();
        QVERIFY2(words2.startsWith("benthor: ") && words2.endsWith(" Try benthor --help.\n"), words2);
    }
}

void TestProgram::theToolkitsOptionsAreTakenBesideOurs() {
    Start run = start(
        {QStringLiteral("-platform"), QStringLiteral("offscreen"), QStringLiteral("--nonsense")}, false);
    QCOMPARE(run.status(), 2);
    QVERIFY(run.complained().contains("nonsense"));
    // A session manager starts the program anew with a word of its own.
    Start again = start(inFolder({QStringLiteral("-session"), QStringLiteral("10_20")}));
    QTRY_VERIFY_WITH_TIMEOUT(folder_->has("backup.mdb"), kPatience); // it has come to the store
    QCOMPARE(again.statusBehind(SIGTERM), 0);
}

void TestProgram::aFolderThatCannotBeMadeEndsWithThree() {
    folder_->put("file", "mine");
    Start run = start({QStringLiteral("--folder"), folder_->path("file/below")});
    QCOMPARE(run.status(), 3);
    const QByteArray words = run.complained();
    QVERIFY2(words.contains("benthor: Cannot make the folder ") && words.contains("file/below"), words);
    QCOMPARE(folder_->get("file"), "mine");
}

void TestProgram::withClosedStreamsNoFileIsWrittenInto() {
    Start run(QStringLiteral("/bin/sh"),
              {QStringLiteral("-c"), QStringLiteral("exec \"$0\" \"$@\" <&- >&- 2>&-"),
               QStringLiteral(BENTHOR), QStringLiteral("--folder"), folder_->root()},
              environment());
    QTRY_VERIFY_WITH_TIMEOUT(folder_->has("backup.mdb"), kPatience);
    QCOMPARE(run.statusBehind(SIGTERM), 0);
    platform::Database store;
    store.open(folder_->path("rb.mdb"));
    QCOMPARE(store.openRecordset("PRAGMA integrity_check").value(0).text(), "ok");
}

/// As it lies in a system, of which the user can write nothing but his own.
void TestProgram::anInstalledProgramMakesTheUsersFolder() {
    const QTemporaryDir system;
    const QString bin = system.filePath(QStringLiteral("bin"));
    const QString share = system.filePath(QStringLiteral("share/benthor"));
    const QString data = home_->filePath(QStringLiteral("far/data"));
    QVERIFY(QDir().mkpath(bin) && QDir().mkpath(share + QStringLiteral("/new")));
    QVERIFY(QFile::copy(QStringLiteral(BENTHOR), bin + QStringLiteral("/benthor")));
    QVERIFY(QFile::copy(folder_->path("rb.mdb"), share + QStringLiteral("/rb.mdb")));
    QProcessEnvironment users = environment();
    users.insert(QStringLiteral("XDG_DATA_HOME"), data);
    Start run(bin + QStringLiteral("/benthor"), {}, users);
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(data + QStringLiteral("/Benthor/backup.mdb")), kPatience);
    QCOMPARE(run.statusBehind(SIGTERM), 0);
    QVERIFY(QFileInfo(data + QStringLiteral("/Benthor/new")).isDir());
    QCOMPARE(QDir(bin).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList{QStringLiteral("benthor")});
    QCOMPARE(QDir(share).entryList(QDir::Files | QDir::Hidden), QStringList{QStringLiteral("rb.mdb")});
}

void TestProgram::aSecondStartHandsItsFilesOver() {
    const QString elsewhere = home_->filePath(QStringLiteral("my files"));
    QVERIFY(QDir().mkpath(elsewhere));
    QVERIFY(platform::writeFileWhole(elsewhere + QStringLiteral("/plän 1.mit"), setup()).ok());
    QVERIFY(platform::writeFileWhole(elsewhere + QStringLiteral("/mine.sog"), "*image").ok());
    Start first = start(inFolder({}));
    QTRY_VERIFY_WITH_TIMEOUT(folder_->has("backup.mdb"), kPatience); // it is the first
    Start second(QStringLiteral(BENTHOR), inFolder({QStringLiteral("plän 1.mit")}), environment(), elsewhere);
    QCOMPARE(second.status(), 0);
    QVERIFY(!folder_->has("gdatalast.mit"));
    // The gas screen goes for the firmware screen, and keeps what it shows.
    Start third(QStringLiteral(BENTHOR), inFolder({QStringLiteral("mine.sog")}), environment(), elsewhere);
    QCOMPARE(third.status(), 0);
    QTRY_VERIFY_WITH_TIMEOUT(folder_->get("gdatalast.mit").contains("H039 044"), kPatience);
    QVERIFY(first.runs());
    QCOMPARE(first.statusBehind(SIGTERM), 0);
}

void TestProgram::anotherFolderHasACopyOfItsOwn() {
    Start first = start(inFolder({}));
    QTRY_VERIFY_WITH_TIMEOUT(folder_->has("backup.mdb"), kPatience);
    const QString other = home_->filePath(QStringLiteral("other"));
    QVERIFY(QDir().mkpath(other));
    store::createStore(other + QStringLiteral("/rb.mdb"));
    Start second = start({QStringLiteral("--folder"), other});
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(other + QStringLiteral("/backup.mdb")), kPatience);
    QVERIFY(first.runs());
    QVERIFY(second.runs());
    QCOMPARE(second.statusBehind(SIGTERM), 0);
    QCOMPARE(first.statusBehind(SIGTERM), 0);
}

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    TestProgram test;
    return QTest::qExec(&test, argc, argv);
}
#include "test_program.moc"
