#include "shell/screens/main_screen.h"

#include "platform/look/widgets/clickablelabel.h"
#include "platform/screen/ticktimer.h"
#include "platform/usersettings.h"
#include "store/summary.h"
#include "store/units.h"
#include "tests/shell/mainstage.h"
#include "tests/store/jet/jetfolder.h"

#include <QAction>
#include <QLabel>
#include <QPushButton>
#include <QtTest>

using benthor::process;
using benthor::shell::MainScreen;
using namespace benthor::tests;

/// What the load finds: the store, its backups, another copy of the program.
class TestMainScreenStart : public QObject {
    Q_OBJECT

private slots:
    void loadingBringsTheValuesToTheirStart();
    void aMissingStoreIsAskedForAndRestoredFromTheBackup();
    void aBackupOfAnOlderFormComesAlong_data();
    void aBackupOfAnOlderFormComesAlong();
    void refusingTheBackupEndsTheProgram();
    void aBackupThatCannotBeCopiedLetsTheLoadGoOn();
    void aMissingBackupIsToldAndOlderOnesAreOffered();
    void withoutAnyBackupTheUserIsTold();
    void aSecondCopyClosesItsMainScreen();
    void theCounterIsAlignedAtEachStart();
    void aStoreWithoutDivesSaysSo();
};

void TestMainScreenStart::loadingBringsTheValuesToTheirStart() {
    MainStage stage;
    process().diveviewopen = true;
    process().importing = true;
    process().producttype = QStringLiteral("HALV");
    stage.main->showScreen();
    QCOMPARE(process().diveviewopen, false);
    QCOMPARE(process().importing, false);
    QCOMPARE(process().producttype, "OTHER");
    QCOMPARE(process().divesystem, "Rebrether");
    QVERIFY(process().firststart);
    QVERIFY(process().database.isOpen());
    QCOMPARE(stage.neighbours.asked, QStringList{"unloadFirmware"});
    QCOMPARE(stage.main->infochoice(), 1);
    QVERIFY(!stage.control("Frame2")->isVisible());
    QVERIFY(stage.dialogs.asked().isEmpty());
}

void TestMainScreenStart::aMissingStoreIsAskedForAndRestoredFromTheBackup() {
    MainStage stage(TestFolder::Store::Missing);
    benthor::store::createStore(stage.folder.path("backup.mdb"));
    stage.dialogs.answer(true);
    stage.main->showScreen();
    QCOMPARE(stage.dialogs.asked().size(), 1);
    const auto asked = stage.dialogs.asked().first();
    QCOMPARE(asked.text, "Main Database not found, Would you like to duplicate from the backup database?");
    QCOMPARE(asked.title, "Comfirmation");
    QCOMPARE(asked.box, benthor::platform::BoxKind::Critical);
    QVERIFY(asked.noIsDefault);
    QVERIFY(stage.folder.has("rb.mdb"));
    QVERIFY(process().database.isOpen());
    QVERIFY(stage.main->isVisible());
}

void TestMainScreenStart::aBackupOfAnOlderFormComesAlong_data() {
    QTest::addColumn<QString>("backup");
    QTest::addColumn<int>("questions");
    QTest::newRow("the newest") << "backup.mdb" << 1;
    QTest::newRow("an older one") << "backup3.mdb" << 2;
}

void TestMainScreenStart::aBackupOfAnOlderFormComesAlong() {
    REQUIRE_JET_FILES();
    QFETCH(QString, backup);
    QFETCH(int, questions);
    const benthor::tests::OurReader reader;
    MainStage stage(TestFolder::Store::Missing);
    const QByteArray bytes = benthor::tests::jetBytes("older-store-dates.mdb");
    QVERIFY(benthor::platform::writeFileWhole(stage.folder.path(backup), bytes));
    for (int i = 0; i < questions; ++i) {
        stage.dialogs.answer(true);
    }
    stage.main->showScreen();
    QCOMPARE(stage.dialogs.asked().size(), questions + 1);
    QVERIFY2(stage.dialogs.asked().last().text.startsWith("The older dive store came along. It was read "
                                                          "without a fault"),
             qPrintable(stage.dialogs.asked().last().text));
    QVERIFY(process().database.isOpen());
    QVERIFY(benthor::store::countdives(process().database) > 0);
    QCOMPARE(stage.folder.get("rb-jet.mdb"), bytes);
    QCOMPARE(stage.folder.get(backup), bytes);
    QVERIFY(stage.main->isVisible());
}

void TestMainScreenStart::refusingTheBackupEndsTheProgram() {
    MainStage stage(TestFolder::Store::Missing);
    benthor::store::createStore(stage.folder.path("backup.mdb"));
    stage.dialogs.answer(false);
    stage.main->load();
    QVERIFY(stage.main->isUnloaded());
    QCOMPARE(stage.neighbours.asked, (QStringList{"unloadFirmware", "unloadOthers", "endProcess"}));
    QVERIFY(!stage.folder.has("rb.mdb"));
}

void TestMainScreenStart::aBackupThatCannotBeCopiedLetsTheLoadGoOn() {
    MainStage stage(TestFolder::Store::Missing);
    stage.dialogs.answer(true);
    stage.main->showScreen();
    QVERIFY(stage.main->isVisible());
    QVERIFY(!process().database.isOpen());
    QVERIFY(!stage.folder.has("rb.mdb"));
    QCOMPARE(stage.control<QLabel>("Lbldetails")->text(), "\nNo dives in database system\n");
}

void TestMainScreenStart::aMissingBackupIsToldAndOlderOnesAreOffered() {
    MainStage stage(TestFolder::Store::Missing);
    stage.folder.put("backup2.mdb", "no store");
    benthor::store::createStore(stage.folder.path("backup3.mdb"));
    benthor::store::createStore(stage.folder.path("backup9.mdb"));
    for (const bool yes : {true, false, true}) {
        stage.dialogs.answer(yes);
    }
    stage.main->showScreen();
    QCOMPARE(stage.dialogs.asked().size(), 3);
    const QString offer = stage.dialogs.asked().at(1).text;
    QVERIFY2(offer.startsWith(QLatin1String("There is no backup database backup.mdb")), qPrintable(offer));
    QVERIFY(offer.contains(QLatin1String("backup3.mdb")));
    QVERIFY(stage.dialogs.asked().at(2).text.contains(QLatin1String("backup9.mdb")));
    QVERIFY(process().database.isOpen());
}

void TestMainScreenStart::withoutAnyBackupTheUserIsTold() {
    MainStage stage(TestFolder::Store::Missing);
    stage.dialogs.answer(true);
    stage.main->showScreen();
    QCOMPARE(stage.dialogs.messages().size(), 1);
    QVERIFY(stage.dialogs.messages().first().startsWith(
        QLatin1String("There is no backup database backup.mdb in the program folder.")));
    QVERIFY(stage.main->isVisible());
}

void TestMainScreenStart::aSecondCopyClosesItsMainScreen() {
    MainStage stage;
    stage.neighbours.secondCopy = true;
    stage.main->load();
    QVERIFY(stage.main->isUnloaded());
    QVERIFY(process().firststart);
    QVERIFY(!process().database.isOpen());
    QCOMPARE(stage.neighbours.asked, (QStringList{"unloadFirmware", "unloadOthers"}));
    QCOMPARE(stage.dialogs.messages().size(), 1);
    QVERIFY(stage.dialogs.messages().first().startsWith(QLatin1String("Benthor is already open")));
}

void TestMainScreenStart::theCounterIsAlignedAtEachStart() {
    MainStage stage;
    {
        benthor::platform::Database database;
        database.open(stage.folder.path("rb.mdb"));
        database.execute("INSERT INTO main (DiveID) VALUES ('D0000041')");
        database.execute("UPDATE serialno SET serial_no = 'D0000077'");
    }
    stage.main->load();
    auto rows = process().database.openRecordset("SELECT * FROM SERIALNO");
    QCOMPARE(rows.value(u"serial_no").text(), "D0000041");
}

void TestMainScreenStart::aStoreWithoutDivesSaysSo() {
    MainStage stage;
    stage.main->showScreen();
    QCOMPARE(stage.control<QLabel>("Lbldetails")->text(), "\nNo dives in database system\n");
    QVERIFY(!stage.control("lbltotaldive")->isVisible());
    QVERIFY(stage.control<QLabel>("firstdive")->text().contains(QLatin1String("Download to PC")));
    QVERIFY(stage.control("firstdive")->isVisible());
    QVERIFY(stage.control("firstdownload")->isVisible());
    QVERIFY(stage.control("firstfilefind")->isVisible());
    stage.click("firstmerge");
    QVERIFY(stage.neighbours.asked.contains(QLatin1String("showMerge")));
    // The routine ended there: what comes behind the totals was not done.
    QCOMPARE(stage.control<QLabel>("Label7")->text(), QString());
    stage.click("Label4");
    QCOMPARE(stage.control<QLabel>("Label7")->text(), QString());
    QCOMPARE(stage.control<QLabel>("lbltotaldive")->text(), "System has a total of : \n0 dives");
    process().database.execute(
        "INSERT INTO main (DiveID, startdate) VALUES ('D0000001', '2004-02-11 08:58:33')");
    stage.click("Label4");
    QCOMPARE(stage.control<QLabel>("Label7")->text(), "Setup + Gas");
    QVERIFY(!stage.control("firstdive")->isVisible());
    QVERIFY(!stage.control("Lbldetails")->isVisible());
}

QTEST_MAIN(TestMainScreenStart)
#include "test_main_screen_start.moc"
