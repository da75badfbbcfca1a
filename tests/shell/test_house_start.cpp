// What the program does while its splash is up, so that the start is over the sooner behind it: the store is
// packed beside itself, and the main screen is made. Nothing of it is seen, and nothing stays of it where the
// start takes another way.

#include "store/maintenance.h"
#include "tests/shell/housestage.h"

#include <QPushButton>

using namespace benthor;
using namespace benthor::tests;
using platform::Screen;
using platform::TickTimer;

namespace {

QStringList stores(const TestFolder& folder) {
    return QDir(folder.root()).entryList({QStringLiteral("*.mdb*")}, QDir::Files | QDir::Hidden);
}

bool draftsAreMade(const TestFolder& folder) {
    return folder.has("rb2.mdb") && folder.has("backup-new.mdb");
}

/// A screen of that name that is made and not loaded.
Screen* waiting(const char* name) {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        auto* screen = qobject_cast<Screen*>(window);
        if (screen != nullptr && screen->objectName() == QLatin1String(name) && !screen->isLoaded() &&
            !screen->isUnloaded()) {
            return screen;
        }
    }
    return nullptr;
}

int screens(const char* name) {
    const QWidgetList all = QApplication::topLevelWidgets();
    return static_cast<int>(std::count_if(all.begin(), all.end(), [name](const QWidget* window) {
        return window->objectName() == QLatin1String(name);
    }));
}

} // namespace

class TestHouseStart : public QObject {
    Q_OBJECT

private slots:
    void theStoreIsPackedBesideItselfWhileTheSplashStands();
    void theScreensThatComeAreMadeAndNothingIsLoaded();
    void aStartThatIsClickedAwayIsTheSame();
    void theRepairFindsNothingUnderWay();
    void aRestoredStoreIsTheOneThatIsPacked();
    void aDiveThatAnotherProgramStoresMeanwhileIsThere();
    void closedTheSplashLeavesNothing();
    void aSecondCopyMakesNoDrafts();
    void aCrashBehindTheSplashIsMadeGoodByTheNextStart();
};

void TestHouseStart::theStoreIsPackedBesideItselfWhileTheSplashStands() {
    Program program;
    const QByteArray before = program.folder.get("rb.mdb");
    QTRY_VERIFY(draftsAreMade(program.folder));
    QVERIFY(shown("frmSplash"));
    QCOMPARE(program.folder.get("rb.mdb"), before);
    QVERIFY(!program.folder.has("backup.mdb"));
    QVERIFY(!process().database.isOpen());
    program.passSplash();
    QVERIFY(shown("main"));
    QCOMPARE(stores(program.folder), (QStringList{"backup.mdb", "rb.mdb"}));
}

void TestHouseStart::theScreensThatComeAreMadeAndNothingIsLoaded() {
    Program program;
    QTRY_VERIFY(waiting("main") != nullptr && waiting("frmGetS") != nullptr);
    QVERIFY(shown("frmSplash"));
    for (const TickTimer* timer : waiting("main")->findChildren<TickTimer*>()) {
        QVERIFY2(!timer->isEnabled(), qPrintable(timer->objectName()));
    }
    QVERIFY(!process().firststart);
    const Screen* const made = waiting("main");
    program.passSplash();
    QCOMPARE(loaded("main"), made);
    QVERIFY(shown("main"));
    QCOMPARE(screens("main"), 1);
    for (const char* const timer : {"Timer1", "Timer2", "Timer3", "Timer4"}) {
        QVERIFY2(control<TickTimer>("main", timer)->isEnabled(), timer);
    }
    QVERIFY(process().firststart);
    // The guide's menu entry makes a fresh one.
    control<QAction>("main", "mnuGets")->trigger();
    QVERIFY(shown("frmGetS"));
}

void TestHouseStart::aStartThatIsClickedAwayIsTheSame() {
    Program program;
    QTest::mouseClick(control<QWidget>("frmSplash", "Frame1"), Qt::LeftButton);
    QVERIFY(shown("main"));
    QCOMPARE(stores(program.folder), (QStringList{"backup.mdb", "rb.mdb"}));
    QTest::qWait(150); // what would have been made ahead is not made now
    QVERIFY(waiting("main") == nullptr);
    QCOMPARE(screens("main"), 1);
}

void TestHouseStart::theRepairFindsNothingUnderWay() {
    Program program;
    QTRY_VERIFY(draftsAreMade(program.folder));
    QStringList seen;
    program.dialogs.during([&] { seen = stores(program.folder); });
    program.dialogs.answer(false);
    control<QPushButton>("frmSplash", "Command1")->click();
    QCOMPARE(seen, QStringList{"rb.mdb"});
    program.passSplash();
    QVERIFY(shown("main"));
    QCOMPARE(stores(program.folder), (QStringList{"backup.mdb", "rb.mdb"}));
}

void TestHouseStart::aRestoredStoreIsTheOneThatIsPacked() {
    Program program;
    store::createStore(program.folder.path("backup3.mdb"), QStringLiteral("Close"));
    {
        platform::Database other;
        other.open(program.folder.path("backup3.mdb"));
        other.execute("INSERT INTO main (DiveID, Location) VALUES ('D0000007', 'restored')");
    }
    QTRY_VERIFY(draftsAreMade(program.folder));
    program.dialogs.answer(true);
    program.dialogs.answerFile(program.folder.path("backup3.mdb"));
    control<QPushButton>("frmSplash", "Command1")->click();
    program.passSplash();
    QVERIFY(shown("main"));
    platform::Recordset dives = process().database.openRecordset("SELECT * FROM main");
    QCOMPARE(dives.value(u"Location").text(), "restored");
    platform::Database backup;
    backup.open(program.folder.path("backup.mdb"));
    QCOMPARE(backup.openRecordset("SELECT * FROM main").value(u"Location").text(), "restored");
}

void TestHouseStart::aDiveThatAnotherProgramStoresMeanwhileIsThere() {
    Program program;
    QTRY_VERIFY(draftsAreMade(program.folder));
    {
        platform::Database other;
        other.open(program.folder.path("rb.mdb"));
        other.execute("INSERT INTO main (DiveID, Location) VALUES ('D0000001', 'came late')");
    }
    program.passSplash();
    QVERIFY(shown("main"));
    QCOMPARE(process().database.openRecordset("SELECT * FROM main").value(u"Location").text(), "came late");
    QCOMPARE(stores(program.folder), (QStringList{"backup.mdb", "rb.mdb"}));
    QCOMPARE(program.dialogs.messages(), QStringList());
}

void TestHouseStart::closedTheSplashLeavesNothing() {
    Program program;
    QTRY_VERIFY(draftsAreMade(program.folder) && waiting("main") != nullptr);
    loaded("frmSplash")->close();
    QTRY_COMPARE(program.ended->count(), 1);
    program.house.reset();
    QCOMPARE(stores(program.folder), QStringList{"rb.mdb"});
    QCOMPARE(screens("main"), 0);
}

void TestHouseStart::aSecondCopyMakesNoDrafts() {
    Program first;
    QTRY_VERIFY(draftsAreMade(first.folder));
    first.passSplash();
    shell::House second;
    second.start();
    QTest::qWait(150);
    QCOMPARE(stores(first.folder), (QStringList{"backup.mdb", "rb.mdb"}));
}

void TestHouseStart::aCrashBehindTheSplashIsMadeGoodByTheNextStart() {
    Program program;
    program.house.reset();
    program.folder.put("rb2.mdb", "left by a crash");
    program.folder.put("backup-new.mdb", "left by a crash");
    program.house = std::make_unique<shell::House>();
    program.house->start();
    program.passSplash();
    QVERIFY(shown("main"));
    QCOMPARE(stores(program.folder), (QStringList{"backup.mdb", "rb.mdb"}));
    platform::Database backup;
    backup.open(program.folder.path("backup.mdb"));
    QVERIFY(store::guideisclosed(store::readgetstarted(backup)));
}

int main(int argc, char** argv) {
    return runAsProgram<TestHouseStart>(argc, argv);
}
#include "test_house_start.moc"
