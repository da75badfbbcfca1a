#include "link/screens/pc_link_1.h"
#include "platform/grid/flexgrid.h"
#include "platform/instancelock.h"
#include "platform/look/look.h"
#include "store/identifiers.h"
#include "store/units.h"
#include "tests/shell/housestage.h"

#include <QPushButton>

using namespace benthor;
using namespace benthor::tests;
using platform::Screen;
using platform::TickTimer;
using shell::House;

class TestHouse : public QObject {
    Q_OBJECT

private slots:
    void theSplashStandsForASecondAndAHalf();
    void aClickOnTheSplashGoesOnAtOnce();
    void aClosedGuideLeadsStraightToTheMainScreen();
    void anOpenGuideStaysAndLeadsThereWhenItCloses();
    void theGuidesBoxIsStored();
    void theMaintenanceMakesTheFolderOfTexts();
    void anOlderStoreGetsItsMissingFields();
    void aSecondCopyLeavesTheStoreAloneAndEnds();
    void anImportScrollsTheListInSight();
    void withoutAStoreTheGuideStaysAndTheQuestionFollows();
    void theLinkScreenIsLoadedHiddenByTheFirstTick();
    void theDiveListOpensTwoSecondsAfterTheStart();
    void theListWithoutDivesClosesItselfAndTheProgramStays();
    void aDoubleClickReplacesTheListByTheDive();
    void leavingTheDiveBringsTheListBack();
    void exitUnloadsAllAndEndsTheProcess();
    void theMenusExitEndsWithTheLastScreen();
    void theFirmwareScreenOutlivesTheMainScreen();
    void eachScreenLoadsShowsHidesAndUnloads_data();
    void eachScreenLoadsShowsHidesAndUnloads();
};

void TestHouse::theSplashStandsForASecondAndAHalf() {
    Program program;
    QVERIFY(shown("frmSplash"));
    QCOMPARE(control<TickTimer>("frmSplash", "Timer1")->interval(), 1500);
    QCOMPARE(control<QLabel>("frmSplash", "lblProductName")->text(), "Benthor");
    QVERIFY(!control<QLabel>("frmSplash", "lblVersion")->text().isEmpty());
    QVERIFY(loaded("main") == nullptr);
    QTRY_VERIFY_WITH_TIMEOUT(shown("main"), 5000);
    QVERIFY(loaded("frmSplash") == nullptr);
}

void TestHouse::aClickOnTheSplashGoesOnAtOnce() {
    Program program;
    QTest::mouseClick(control<QWidget>("frmSplash", "Frame1"), Qt::LeftButton);
    QVERIFY(shown("main"));
    QVERIFY(loaded("frmSplash") == nullptr);
}

void TestHouse::aClosedGuideLeadsStraightToTheMainScreen() {
    Program program("Close");
    program.passSplash();
    QVERIFY(loaded("frmGetS") == nullptr);
    QVERIFY(shown("main"));
    QVERIFY(process().database.isOpen());
    QCoreApplication::processEvents();
    QVERIFY(program.ended->isEmpty());
}

void TestHouse::anOpenGuideStaysAndLeadsThereWhenItCloses() {
    Program program("Open");
    program.passSplash();
    QVERIFY(shown("frmGetS"));
    QCOMPARE(loaded("frmGetS")->windowTitle(), "Benthor - Getting Started");
    QVERIFY(control<QCheckBox>("frmGetS", "Check1")->isChecked());
    QVERIFY(loaded("main") == nullptr);
    control<QPushButton>("frmGetS", "Command2")->click();
    QVERIFY(shown("main"));
    QVERIFY(loaded("frmGetS") == nullptr);
}

void TestHouse::theGuidesBoxIsStored() {
    Program program("Open");
    program.passSplash();
    control<QCheckBox>("frmGetS", "Check1")->setChecked(false);
    auto rows = process().database.openRecordset("SELECT * FROM SERIALNO");
    QCOMPARE(rows.value(u"getstarted").text(), "Close");
    control<QCheckBox>("frmGetS", "Check1")->setChecked(true);
    rows = process().database.openRecordset("SELECT * FROM SERIALNO");
    QCOMPARE(rows.value(u"getstarted").text(), "Open");
}

void TestHouse::theMaintenanceMakesTheFolderOfTexts() {
    TestSettings settings;
    TestFolder folder;
    ScriptedDialogs dialogs;
    setGuide(folder, "Close");
    QVERIFY(QDir(folder.path("dbtxt")).removeRecursively());
    House house;
    house.start();
    expire("frmSplash", "Timer1");
    QVERIFY(folder.has("dbtxt/test.txt"));
    QCOMPARE(folder.get("dbtxt/test.txt"), QByteArray());
}

void TestHouse::anOlderStoreGetsItsMissingFields() {
    TestSettings settings;
    TestFolder folder;
    ScriptedDialogs dialogs;
    setGuide(folder, "Close");
    {
        platform::Database database;
        database.open(folder.path("rb.mdb"));
        database.execute("ALTER TABLE main DROP COLUMN dbtxtname");
        database.execute("ALTER TABLE Profile DROP COLUMN item49");
    }
    House house;
    house.start();
    expire("frmSplash", "Timer1");
    QVERIFY(shown("main"));
    QCOMPARE(process().database.fieldCount(QStringLiteral("main")), 27);
    QCOMPARE(process().database.fieldNames(QStringLiteral("main")).last(), "dbtxtname");
    QCOMPARE(process().database.fieldCount(QStringLiteral("Profile")), 50);
    QVERIFY(dialogs.asked().isEmpty());
}

void TestHouse::aSecondCopyLeavesTheStoreAloneAndEnds() {
    TestSettings settings;
    TestFolder folder;
    ScriptedDialogs dialogs;
    setGuide(folder, "Close");
    const platform::InstanceLock first(folder.root());
    QVERIFY(first.held());
    QVERIFY(QDir(folder.path("dbtxt")).removeRecursively());
    House house;
    QSignalSpy ended(&house, &House::ended);
    house.start();
    expire("frmSplash", "Timer1");
    QVERIFY(loaded("main") == nullptr);
    QTRY_COMPARE(ended.count(), 1);
    QVERIFY(!folder.has("dbtxt"));
    QCOMPARE(dialogs.messages().size(), 1);
    QVERIFY(dialogs.messages().first().startsWith(QLatin1String("Benthor is already open")));
}

void TestHouse::anImportScrollsTheListInSight() {
    Program program;
    program.passSplash();
    for (int number = 1; number <= 200; ++number) {
        process().database.execute(platform::sqlWith(
            "INSERT INTO main (DiveID, Location, startdate, dbtxtname) VALUES ('",
            QStringLiteral("D%1").arg(number, 7, 10, QLatin1Char('0')), "', 'x', '",
            number <= 100 ? QStringLiteral("2001-01-01") : QStringLiteral("2101-01-01"), "', 'x.txt')"));
    }
    store::syncserialno();
    expire("main", "Timer4");
    auto* grid = control<platform::FlexGrid>("rbmain", "MSFlexGrid1");
    const auto isInSight = [](const platform::FlexGrid& list, const QString& diveid) {
        for (int row = 1; row < list.rows(); ++row) {
            if (list.text(row, 0) == diveid) {
                return list.viewport()->rect().contains(8, list.rowViewportPosition(row - 1) + 10);
            }
        }
        return false;
    };
    QVERIFY(isInSight(*grid, QStringLiteral("D0000001")));
    QVERIFY(!isInSight(*grid, QStringLiteral("D0000100")));
    program.folder.put("new/a.txt", TestFolder::dive("typical.txt"));
    expire("main", "Timer1");
    grid = control<platform::FlexGrid>("rbmain", "MSFlexGrid1");
    QCOMPARE(grid->rows(), 202);
    QVERIFY(isInSight(*grid, QStringLiteral("D0000201")));
    QVERIFY(!isInSight(*grid, QStringLiteral("D0000001")));
}

void TestHouse::withoutAStoreTheGuideStaysAndTheQuestionFollows() {
    Program program("Close", TestFolder::Store::Missing);
    store::createStore(program.folder.path("backup.mdb"));
    program.passSplash();
    QVERIFY(shown("frmGetS"));
    QVERIFY(program.dialogs.asked().isEmpty());
    QVERIFY(!program.folder.has("rb.mdb"));
    program.dialogs.answer(true);
    loaded("frmGetS")->close();
    QCOMPARE(program.dialogs.asked().size(), 1);
    QVERIFY(program.folder.has("rb.mdb"));
    QVERIFY(shown("main"));
}

void TestHouse::theLinkScreenIsLoadedHiddenByTheFirstTick() {
    Program program;
    program.passSplash();
    QVERIFY(loaded("PC_Link_1") == nullptr);
    expire("main", "Timer1");
    QVERIFY(loaded("PC_Link_1") != nullptr);
    QVERIFY(!shown("PC_Link_1"));
    QVERIFY(program.ended->isEmpty());
}

void TestHouse::theDiveListOpensTwoSecondsAfterTheStart() {
    Program program;
    program.folder.put("new/a.txt", TestFolder::dive("typical.txt"));
    program.passSplash();
    QCOMPARE(control<TickTimer>("main", "Timer4")->interval(), 2000);
    QVERIFY(control<TickTimer>("main", "Timer4")->isEnabled());
    expire("main", "Timer4");
    QVERIFY(shown("rbmain"));
    QVERIFY(!control<TickTimer>("main", "Timer4")->isEnabled());
}

void TestHouse::theListWithoutDivesClosesItselfAndTheProgramStays() {
    Program program;
    program.passSplash();
    expire("main", "Timer4");
    QVERIFY(control<TickTimer>("rbmain", "Timer3")->isEnabled());
    expire("rbmain", "Timer3");
    QCOMPARE(program.dialogs.messages(),
             QStringList{"No dives in database. Please download dives using Download to PC Window."});
    QVERIFY(loaded("rbmain") == nullptr);
    QVERIFY(shown("main"));
    QCoreApplication::processEvents();
    QVERIFY(program.ended->isEmpty());
}

void TestHouse::aDoubleClickReplacesTheListByTheDive() {
    Program program;
    program.passSplash();
    program.folder.put("new/a.txt", TestFolder::dive("typical.txt"));
    expire("main", "Timer1");
    QVERIFY(shown("rbmain"));
    control<QPushButton>("rbmain", "cmdgo")->click();
    QVERIFY(loaded("rbmain") == nullptr);
    QVERIFY(shown("rbinterface"));
    QVERIFY(process().diveviewopen);
    QCOMPARE(loaded("rbinterface")->windowTitle(), "RB Profile - a.txt");
}

void TestHouse::leavingTheDiveBringsTheListBack() {
    Program program;
    program.passSplash();
    program.folder.put("new/a.txt", TestFolder::dive("typical.txt"));
    expire("main", "Timer1");
    control<QPushButton>("rbmain", "cmdgo")->click();
    control<QAction>("rbinterface", "mnudiveexit")->trigger();
    QVERIFY(loaded("rbinterface") == nullptr);
    QVERIFY(!process().diveviewopen);
    QVERIFY(shown("rbmain"));
}

void TestHouse::exitUnloadsAllAndEndsTheProcess() {
    Program program;
    program.passSplash();
    expire("main", "Timer1");
    control<QAction>("main", "mnuAbout")->trigger();
    control<QAction>("main", "mnuSetupGas")->trigger();
    QVERIFY(shown("GasBlend"));
    QTest::mouseClick(control<QWidget>("main", "lblexit"), Qt::LeftButton);
    for (const char* name : {"main", "PC_Link_1", "frmAbout", "GasBlend", "rbmain"}) {
        QVERIFY2(loaded(name) == nullptr, name);
    }
    QCOMPARE(program.ended->count(), 1);
}

void TestHouse::theMenusExitEndsWithTheLastScreen() {
    Program program;
    program.passSplash();
    control<QAction>("main", "mnuExit")->trigger();
    QVERIFY(program.ended->isEmpty());
    QTRY_COMPARE(program.ended->count(), 1);
}

void TestHouse::theFirmwareScreenOutlivesTheMainScreen() {
    Program program;
    program.passSplash();
    expire("main", "Timer1");
    control<QAction>("main", "mnuReprogIR")->trigger();
    QVERIFY(loaded("main") == nullptr);
    QVERIFY(loaded("PC_Link_1") == nullptr);
    QVERIFY(shown("ReProg_Link"));
    QCoreApplication::processEvents();
    QVERIFY(program.ended->isEmpty());
    loaded("ReProg_Link")->close();
    QTRY_COMPARE(program.ended->count(), 1);
}

void TestHouse::eachScreenLoadsShowsHidesAndUnloads_data() {
    QTest::addColumn<QByteArray>("entry");
    QTest::addColumn<QByteArray>("screen");
    QTest::addColumn<QString>("title");
    QTest::newRow("link") << QByteArray("cmdcommandsend") << QByteArray("PC_Link_1") << "Setup Utilities";
    QTest::newRow("gas") << QByteArray("mnuSetupGas") << QByteArray("GasBlend") << "Gas and System Settings";
    QTest::newRow("tips") << QByteArray("mnuTips") << QByteArray("frmTip") << "Connection Tips";
    QTest::newRow("about") << QByteArray("mnuAbout") << QByteArray("frmAbout") << "About Benthor";
    QTest::newRow("guide") << QByteArray("mnuGets") << QByteArray("frmGetS") << "Benthor - Getting Started";
}

void TestHouse::eachScreenLoadsShowsHidesAndUnloads() {
    QFETCH(QByteArray, entry);
    QFETCH(QByteArray, screen);
    QFETCH(QString, title);
    Program program;
    program.passSplash();
    control<QAction>("main", entry.constData())->trigger();
    QVERIFY(shown(screen.constData()));
    Screen* window = loaded(screen.constData());
    QCOMPARE(window->windowTitle(), title);
    window->hide();
    QCOMPARE(loaded(screen.constData()), window);
    window->unload();
    QVERIFY(loaded(screen.constData()) == nullptr);
    QVERIFY(shown("main"));
}

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    application.setQuitOnLastWindowClosed(false);
    look::apply(application);
    TestHouse test;
    return QTest::qExec(&test, argc, argv);
}
#include "test_house.moc"
