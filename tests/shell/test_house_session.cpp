// The session ends or the store is held by another: what the program does, seen from outside. The children
// are this program itself, started with a word that says what they are to do.

#include "platform/grid/flexgrid.h"
#include "platform/screen/application.h"
#include "platform/screen/sessionend.h"
#include "platform/storewait.h"
#include "store/access.h"
#include "tests/shell/housestage.h"
#include "tests/support/asnobody.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QLabel>
#include <QPlainTextEdit>
#include <QProcess>
#include <QPushButton>
#include <QThread>
#include <QTimer>

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <sys/stat.h>

using namespace benthor;
using namespace benthor::tests;

namespace {

constexpr auto kWork = "BENTHOR_CHILD_WORK";
constexpr auto kFolder = "BENTHOR_CHILD_FOLDER";
constexpr int kSessionMilliseconds = 3000;

/// How long an end may take here: a build for the sanitizers, and a machine that has more to do than it can,
/// are slower than what a diver runs.
int endMilliseconds() {
    std::array<double, 1> load{};
    const bool busy = ::getloadavg(load.data(), 1) != 1 || load[0] > 1.5 * QThread::idealThreadCount();
#ifdef __SANITIZE_ADDRESS__
    constexpr int kSlower = 4;
#else
    constexpr int kSlower = 1;
#endif
    return kSessionMilliseconds * kSlower * (busy ? 4 : 1);
}

void say(const QString& words) {
    std::puts(qPrintable(words));
    std::fflush(stdout);
}

void passSplash() {
    expire("frmSplash", "Timer1");
}

/// A store that cannot be read does not say that the guide is to stay away.
void leaveGuide() {
    if (shown("frmGetS")) {
        loaded("frmGetS")->unload();
    }
}

QString cell(int row, int col) {
    return control<platform::FlexGrid>("rbmain", "MSFlexGrid1")->text(row, col);
}

/// A dive is open, its details are typed in, another order is chosen, the gas screen stands beside.
void workOnADive() {
    passSplash();
    expire("main", "Timer1"); // the import of the waiting dive, and the list
    control<QAction>("rbmain", "mnuslocation")->trigger();
    control<QPushButton>("rbmain", "cmdgo")->click();
    control<QAction>("rbinterface", "mnudiveinfo")->trigger();
    control<QAction>("main", "mnuSetupGas")->trigger();
    control<QPlainTextEdit>("rbdetails", "txtdivenote")->setPlainText(QStringLiteral("typed, not yet saved"));
}

/// The import of three files hears the signal at one of its yields.
void importUnderASignal() {
    passSplash();
    auto* beat = new QTimer(qApp);
    beat->callOnTimeout([beat] {
        if (process().importing) {
            beat->stop();
            ::raise(SIGTERM);
        }
    });
    beat->start(0);
    expire("main", "Timer1");
}

int runChild(const QByteArray& work, int argc, char** argv) {
    if (work == "read") {
        becomeNobody();
    }
    platform::Application application(argc, argv);
    const TestSettings settings;
    platform::ProgramFolder::setCurrent(platform::ProgramFolder(qEnvironmentVariable(kFolder)));
    shell::House house;
    const platform::SessionEnd session;
    house.follow(session);
    QObject::connect(
        &house, &shell::House::ended, &application, [] { QCoreApplication::exit(0); }, Qt::QueuedConnection);
    house.start();
    if (work == "read") {
        const ScriptedDialogs dialogs;
        passSplash();
        expire("main", "Timer4");
        say(shown("main") && control<QWidget>("main", "storenote")->isVisible()
                ? control<QLabel>("main", "storenotewords")->text()
                : QStringLiteral("no line"));
        say(cell(1, 0));
        say(dialogs.messages().join(u'|'));
        return 0;
    }
    if (work == "import") {
        QTimer::singleShot(0, &importUnderASignal);
        return QApplication::exec();
    }
    {
        const ScriptedDialogs dialogs; // the word at the end of an import
        workOnADive();
    }
    QTimer::singleShot(0, [&] {
        say(QStringLiteral("ready"));
        if (work == "box") {
            platform::dialogs().message(loaded("rbdetails"), QStringLiteral("A box is up."));
        }
    });
    return QApplication::exec();
}

/// While the splash is up the program packs the store, which holds it for a moment.
void hold(SQLite::Database& store, const char* how) {
    store.setBusyTimeout(10000);
    store.exec("PRAGMA locking_mode = NORMAL");
    store.exec(how);
}

/// Notes that the window of a wait was seen; stops the wait when asked to.
class WaitWatch : public QTimer {
public:
    explicit WaitWatch(bool stops) {
        callOnTimeout([this, stops] {
            for (QWidget* window : QApplication::topLevelWidgets()) {
                if (window->objectName() == QLatin1String("storewait") && window->isVisible()) {
                    seen = true;
                    if (stops) {
                        QTest::mouseClick(window->findChild<QPushButton*>(), Qt::LeftButton);
                    }
                }
            }
        });
        start(20);
    }
    bool seen = false;
};

} // namespace

class TestHouseSession : public QObject {
    Q_OBJECT

private slots:
    void aSignalSavesAllThatIsOpenAndEnds_data();
    void aSignalSavesAllThatIsOpenAndEnds();
    void aSignalInAnImportEndsItBehindTheFileInHand();
    void beforeALogOutAllIsSavedAndStaysOpen();
    void beforeALogOutAHeldStoreKeepsNothingBack();
    void aHeldStoreIsWaitedForOnce_data();
    void aHeldStoreIsWaitedForOnce();
    void theWaitCanBeStopped();
    void aStoreThatCannotBeWrittenIsShownAndSaysWhy();
};

void TestHouseSession::aSignalSavesAllThatIsOpenAndEnds_data() {
    QTest::addColumn<QString>("work");
    QTest::addColumn<int>("number");
    QTest::addColumn<bool>("held");
    QTest::newRow("terminated") << "dive" << SIGTERM << false;
    QTest::newRow("hung up") << "dive" << SIGHUP << false;
    QTest::newRow("under a box") << "box" << SIGTERM << false;
    QTest::newRow("while another program holds the store") << "dive" << SIGTERM << true;
}

void TestHouseSession::aSignalSavesAllThatIsOpenAndEnds() {
    QFETCH(QString, work);
    QFETCH(int, number);
    QFETCH(bool, held);
    const TestFolder folder;
    setGuide(folder, "Close");
    folder.put("new/a.txt", TestFolder::dive("typical.txt"));
    QProcess child;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(kWork, work);
    environment.insert(kFolder, folder.root());
    child.setProcessEnvironment(environment);
    child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    child.start(QCoreApplication::applicationFilePath());
    QTRY_VERIFY_WITH_TIMEOUT(child.canReadLine(), 60000);
    QCOMPARE(child.readLine().trimmed(), "ready");
    QVERIFY(!folder.has("gdatalast.mit"));
    SQLite::Database other(folder.path("rb.mdb").toStdString(), SQLite::OPEN_READWRITE);
    if (held) {
        hold(other, "BEGIN IMMEDIATE");
    }
    QElapsedTimer time;
    time.start();
    QCOMPARE(::kill(static_cast<pid_t>(child.processId()), number), 0);
    QVERIFY(child.waitForFinished(endMilliseconds()));
    QVERIFY(time.elapsed() < endMilliseconds());
    QCOMPARE(child.exitStatus(), QProcess::NormalExit);
    QCOMPARE(child.exitCode(), 0);
    QVERIFY(folder.has("gdatalast.mit"));
    QCOMPARE(folder.get("dsort.txt").trimmed(), "l");
    if (held) {
        other.exec("ROLLBACK");
        QVERIFY(folder.get("unsaved-D0000001.txt").contains("typed, not yet saved"));
        return;
    }
    QCOMPARE(QDir(folder.root()).entryList({QStringLiteral("unsaved*")}), QStringList());
    platform::Database store;
    store.open(folder.path("rb.mdb"));
    QCOMPARE(store.openRecordset("SELECT * FROM main").value(u"divenote").text(), "typed, not yet saved");
}

void TestHouseSession::aSignalInAnImportEndsItBehindTheFileInHand() {
    const TestFolder folder;
    setGuide(folder, "Close");
    const QStringList names{QStringLiteral("a.txt"), QStringLiteral("b.txt"), QStringLiteral("c.txt")};
    for (const QString& name : names) {
        folder.put(QStringLiteral("new/") + name, TestFolder::dive("typical.txt"));
    }
    QProcess child;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(kWork, QStringLiteral("import"));
    environment.insert(kFolder, folder.root());
    child.setProcessEnvironment(environment);
    child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    child.start(QCoreApplication::applicationFilePath());
    QVERIFY(child.waitForFinished(60000));
    QCOMPARE(child.exitStatus(), QProcess::NormalExit);
    QCOMPARE(child.exitCode(), 0);
    platform::Database store;
    store.open(folder.path("rb.mdb"));
    QStringList seen;
    for (platform::Recordset dives = store.openRecordset("SELECT * FROM main"); !dives.eof();
         dives.moveNext()) {
        seen += dives.value(u"Location").text();
    }
    const QStringList waiting = QDir(folder.path("new")).entryList(QDir::Files, QDir::Name);
    QVERIFY2(!waiting.isEmpty(), "the import went on to its end");
    seen += waiting;
    seen.sort();
    QCOMPARE(seen, names); // each in the store or still waiting, none in both
    for (const QString& name : names) {
        QCOMPARE(folder.get(QStringLiteral("old/") + name), TestFolder::dive("typical.txt"));
    }
}

void TestHouseSession::beforeALogOutAllIsSavedAndStaysOpen() {
    Program program;
    platform::SessionEnd session;
    program.house->follow(session);
    program.folder.put("new/a.txt", TestFolder::dive("typical.txt"));
    workOnADive();
    program.dialogs.clear();
    emit session.saveWanted();
    QVERIFY(shown("rbdetails") && shown("rbinterface") && shown("GasBlend") && shown("main"));
    QCOMPARE(program.dialogs.asked().size(), 0);
    QVERIFY(program.folder.has("gdatalast.mit"));
    QCOMPARE(process().database.openRecordset("SELECT * FROM main").value(u"divenote").text(),
             "typed, not yet saved");
}

void TestHouseSession::beforeALogOutAHeldStoreKeepsNothingBack() {
    Program program;
    platform::SessionEnd session;
    program.house->follow(session);
    program.folder.put("new/a.txt", TestFolder::dive("typical.txt"));
    workOnADive();
    program.dialogs.clear();
    SQLite::Database other(program.folder.path("rb.mdb").toStdString(), SQLite::OPEN_READWRITE);
    hold(other, "BEGIN IMMEDIATE");
    emit session.saveWanted();
    other.exec("ROLLBACK");
    QCOMPARE(program.dialogs.asked().size(), 0);
    QVERIFY(program.folder.get("unsaved-D0000001.txt").contains("typed, not yet saved"));
    // The user stays after all: what was typed is still on the screen, and the text goes with the first save.
    QVERIFY(shown("rbdetails"));
    emit session.saveWanted();
    QVERIFY(!program.folder.has("unsaved-D0000001.txt"));
    QCOMPARE(process().database.openRecordset("SELECT * FROM main").value(u"divenote").text(),
             "typed, not yet saved");
}

void TestHouseSession::aHeldStoreIsWaitedForOnce_data() {
    QTest::addColumn<QByteArray>("how");
    QTest::addColumn<bool>("read");
    QTest::newRow("to change it") << QByteArray("BEGIN IMMEDIATE") << true;
    QTest::newRow("for itself alone") << QByteArray("BEGIN EXCLUSIVE") << false;
}

void TestHouseSession::aHeldStoreIsWaitedForOnce() {
    QFETCH(QByteArray, how);
    QFETCH(bool, read);
    Program program;
    {
        platform::Database store;
        store.open(program.folder.path("rb.mdb"));
        store.execute("INSERT INTO main (DiveID, Location) VALUES ('D0000001', 'Reef')");
    }
    const QByteArray before = program.folder.get("rb.mdb");
    SQLite::Database other(program.folder.path("rb.mdb").toStdString(), SQLite::OPEN_READWRITE);
    hold(other, how.constData());
    WaitWatch watch(false);
    QElapsedTimer time;
    time.start();
    program.passSplash();
    leaveGuide();
    expire("main", "Timer4");
    QVERIFY2(time.elapsed() < 7000, qPrintable(QString::number(time.elapsed())));
    QVERIFY(watch.seen);
    QVERIFY(shown("main"));
    auto* note = control<QWidget>("main", "storenote");
    QVERIFY(note->isVisible());
    const QString words = control<QLabel>("main", "storenotewords")->text();
    QVERIFY2(words.contains(QLatin1String("Another program")), qPrintable(words));
    QCOMPARE(process().database.isOpen(), read);
    if (read) {
        QCOMPARE(cell(1, 0), "D0000001");
        QVERIFY_EXCEPTION_THROWN(process().database.execute("DELETE FROM main"), platform::StoreError);
    }
    QVERIFY(!control<QAction>("main", "mnubringdives")->isEnabled());
    QVERIFY(!control<QPushButton>("main", "firstmerge")->isEnabled());
    // A dive that comes in meanwhile stays where it is.
    program.dialogs.clear();
    program.folder.put("new/a.txt", TestFolder::dive("typical.txt"));
    expire("main", "Timer1");
    QCOMPARE(program.dialogs.messages().size(), 1);
    QVERIFY(program.folder.has("new/a.txt"));
    QCOMPARE(QDir(program.folder.path("old")).entryList(QDir::Files), QStringList());
    QCOMPARE(QDir(program.folder.path("dbtxt")).entryList({QStringLiteral("*a.txt")}), QStringList());
    QCOMPARE(program.folder.get("rb.mdb"), before);
    QVERIFY(!program.folder.has("backup.mdb"));
    // Nothing waits any more while it is held.
    time.start();
    expire("main", "storetimer");
    QVERIFY(time.elapsed() < 1000);
    QVERIFY(note->isVisible());
    other.exec("ROLLBACK");
    expire("main", "storetimer");
    QVERIFY(!note->isVisible());
    QVERIFY(control<QAction>("main", "mnubringdives")->isEnabled());
    process().database.execute("UPDATE main SET Location = 'Wreck'");
}

void TestHouseSession::theWaitCanBeStopped() {
    Program program;
    SQLite::Database other(program.folder.path("rb.mdb").toStdString(), SQLite::OPEN_READWRITE);
    hold(other, "BEGIN EXCLUSIVE");
    WaitWatch watch(true);
    QElapsedTimer time;
    time.start();
    program.passSplash();
    leaveGuide();
    QVERIFY(watch.seen);
    QVERIFY2(time.elapsed() < 4000, qPrintable(QString::number(time.elapsed())));
    QVERIFY(control<QWidget>("main", "storenote")->isVisible());
    other.exec("ROLLBACK");
}

void TestHouseSession::aStoreThatCannotBeWrittenIsShownAndSaysWhy() {
    const TestFolder folder;
    setGuide(folder, "Close");
    {
        platform::Database store;
        store.open(folder.path("rb.mdb"));
        store.execute("INSERT INTO main (DiveID, Location) VALUES ('D0000001', 'Reef')");
    }
    const QByteArray name = QFile::encodeName(folder.root());
    QCOMPARE(::chmod((name + "/rb.mdb").constData(), 0644), 0);
    QCOMPARE(::chmod(name.constData(), 0555), 0);
    QProcess child;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(kWork, QStringLiteral("read"));
    environment.insert(kFolder, folder.root());
    child.setProcessEnvironment(environment);
    child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    const QStringList before = QDir(folder.root()).entryList(QDir::AllEntries | QDir::Hidden);
    child.start(QCoreApplication::applicationFilePath());
    QVERIFY(child.waitForFinished(60000));
    QCOMPARE(::chmod(name.constData(), 0755), 0);
    const QList<QByteArray> lines = child.readAll().split('\n');
    QVERIFY2(lines.value(0).contains("reading only") && lines.value(0).contains(name), lines.value(0));
    QCOMPARE(lines.value(1), "D0000001");
    QCOMPARE(lines.value(2), ""); // the line says it, no box does
    QCOMPARE(QDir(folder.root()).entryList(QDir::AllEntries | QDir::Hidden), before);
}

int main(int argc, char** argv) {
    if (const QByteArray work = qgetenv(kWork); !work.isEmpty()) {
        return runChild(work, argc, argv);
    }
    QApplication application(argc, argv);
    TestHouseSession test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_house_session.moc"
