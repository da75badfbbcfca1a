#include "shell/screens/main_screen.h"

#include "platform/look/widgets/clickablelabel.h"
#include "platform/screen/ticktimer.h"
#include "platform/usersettings.h"
#include "store/units.h"
#include "tests/shell/mainstage.h"

#include <QAction>
#include <QLabel>
#include <QPushButton>
#include <QtTest>

using benthor::process;
using benthor::shell::MainScreen;
using namespace benthor::tests;

class TestMainScreen : public QObject {
    Q_OBJECT

private slots:
    void keysLeadToTheManualAnotherStoreAndTheEnd();
    void theScreenIsWholeAtItsLeastSize();
    void totalsTellCountAndLastDive();
    void feetIsReadFromTheStore();
    void anyOtherUnitBehavesAsMetresAndIsOverwritten();
    void theUnitsMenuWritesOneWordAndShowsAnother();
    void eachEntryDoesWhatItSays_data();
    void eachEntryDoesWhatItSays();
    void pictureAndCaptionActAlike();
    void thePanelShowsTheChosenEntry();
    void entriesWithoutATextLeaveThePanelAsItWas();
    void myDivesGoesBackToAnOpenDive();
    void theLinkStaysShutWhileTheProgressFrameIsUp();
    void bothLinkEntriesSetTheirFace();
    void theStatusMirrorsTheLink();
    void theLinkCanHaveItsStatusShownAtOnce();
    void aHintStandsInThePlaceOfTheTotalsUntilTheyAreShownAgain();
    void theDiveListOpensOnceAfterTheStart();
    void aFailingDiveListDoesNotBringTheMainScreenDown();
    void theHandHeldRoutineTellsWhyItCannotOpen();
    void exitEndsTheProcessAndTheMenuEntryDoesNot();
    void reprogrammingClosesThePortsFirst();
    void theOldReprogrammingEntryOpensNothing();
    void gettingStartedIsWrittenAndShown();
    void tipsAreTurnedOnAndShown();
    void captionsAndToolTipsStandAsTold();
    void timersStandAsTold();
};

void TestMainScreen::keysLeadToTheManualAnotherStoreAndTheEnd() {
    MainStage stage;
    QCOMPARE(stage.action("mnuHTMLhelp")->shortcut(), QKeySequence(Qt::Key_F1));
    QCOMPARE(stage.action("mnuOpen")->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_O));
    QCOMPARE(stage.action("mnuExit")->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Q));
}

void TestMainScreen::theScreenIsWholeAtItsLeastSize() {
    for (const bool tips : {false, true}) {
        MainStage stage;
        stage.putDive();
        stage.main->showScreen();
        if (tips) {
            stage.click("Label10(0)");
        }
        for (int round = 0; round < 3; ++round) { // the least size follows the width that was given
            QCoreApplication::sendPostedEvents();
            // The display of the tests is narrower than what is told.
            stage.main->resize(stage.main->minimumSize().expandedTo({tips ? 1000 : 880, 0}));
        }
        QCoreApplication::sendPostedEvents();
        for (QWidget* child : stage.main->findChildren<QWidget*>()) {
            const bool told = !child->objectName().isEmpty() && child->isVisible() && child->parentWidget();
            if (!told || child->objectName().startsWith(QLatin1String("qt_"))) {
                continue;
            }
            const QRect place(child->mapTo(stage.main, QPoint()), child->size());
            QVERIFY2(stage.main->rect().contains(place), qPrintable(child->objectName()));
            const int wanted = child->hasHeightForWidth() ? child->heightForWidth(child->width()) : 0;
            QVERIFY2(child->height() >= wanted, qPrintable(child->objectName()));
        }
    }
}

void TestMainScreen::totalsTellCountAndLastDive() {
    MainStage stage;
    {
        benthor::platform::Database database;
        database.open(stage.folder.path("rb.mdb"));
        database.execute("INSERT INTO main (DiveID, startdate) VALUES ('D0000001', '2019-09-14 10:42:17')");
        database.execute("INSERT INTO main (DiveID, startdate) VALUES ('D0000002', '2018-12-31 23:59:59')");
    }
    stage.main->showScreen();
    QCOMPARE(stage.control<QLabel>("lbltotaldive")->text(),
             "System has a total of : \n2 dives\nYour last dive was on : \n14/09/2019 10:42:17");
    QVERIFY(stage.control("lbltotaldive")->isVisible());
    QVERIFY(!stage.control("Lbldetails")->isVisible());
}

void TestMainScreen::feetIsReadFromTheStore() {
    MainStage stage;
    process().database.open(stage.folder.path("rb.mdb"));
    benthor::store::writeunit(QStringLiteral("Feet"));
    stage.main->load();
    QCOMPARE(process().depthunit, "Feet");
    QVERIFY(stage.action("mnuFeet")->isChecked());
    QVERIFY(!stage.action("mnuMeters")->isChecked());
    QCOMPARE(stage.action("mnuUnits")->text(), "Feet");
    QCOMPARE(process().unitoverride, "");
}

void TestMainScreen::anyOtherUnitBehavesAsMetresAndIsOverwritten() {
    MainStage stage;
    process().database.open(stage.folder.path("rb.mdb"));
    benthor::store::writeunit(QStringLiteral("fathoms"));
    stage.main->load();
    QCOMPARE(process().depthunit, "metre");
    QCOMPARE(benthor::store::readunit(), "metre");
}

void TestMainScreen::theUnitsMenuWritesOneWordAndShowsAnother() {
    MainStage stage;
    stage.main->load();
    stage.action("mnuFeet")->trigger();
    QCOMPARE(benthor::store::readunit(), "Feet");
    QCOMPARE(process().depthunit, "Feet");
    QCOMPARE(stage.action("mnuUnits")->text(), "Feet");
    stage.action("mnuMeters")->trigger();
    QCOMPARE(benthor::store::readunit(), "metre");
    QCOMPARE(process().depthunit, "metre");
    QCOMPARE(stage.action("mnuUnits")->text(), "metres");
    QVERIFY(stage.action("mnuMeters")->isChecked());
    QVERIFY(!stage.action("mnuFeet")->isChecked());
}

void TestMainScreen::eachEntryDoesWhatItSays_data() {
    QTest::addColumn<QByteArray>("control");
    QTest::addColumn<int>("infochoice");
    QTest::addColumn<QStringList>("asked");
    QTest::newRow("My Dives") << QByteArray("lblodl(0)") << 1
                              << QStringList{"unloadDiveView", "showDiveList", "bringDiveListToFront"};
    QTest::newRow("Download to PC") << QByteArray("lbllo") << 3 << QStringList{"showLink"};
    QTest::newRow("KD3 Dive List") << QByteArray("lblvvdl") << 4 << QStringList{};
    QTest::newRow("Dive File Find") << QByteArray("lblmdff") << 5 << QStringList{};
    QTest::newRow("Setup + Gas") << QByteArray("Label4") << 7 << QStringList{"showGasBlend"};
    QTest::newRow("Pocket PC") << QByteArray("lblppc") << 8 << QStringList{};
    QTest::newRow("Ferrowe pdl Import") << QByteArray("Label14") << 9 << QStringList{};
    QTest::newRow("Exit") << QByteArray("lblexit") << 6 << QStringList{"unloadOthers", "endProcess"};
}

void TestMainScreen::eachEntryDoesWhatItSays() {
    QFETCH(QByteArray, control);
    QFETCH(int, infochoice);
    QFETCH(QStringList, asked);
    MainStage stage;
    stage.main->showScreen();
    stage.neighbours.asked.clear();
    stage.click(control.constData());
    QCOMPARE(stage.main->infochoice(), infochoice);
    QCOMPARE(stage.neighbours.asked, asked);
}

void TestMainScreen::pictureAndCaptionActAlike() {
    MainStage stage;
    stage.main->showScreen();
    const QList<QPair<const char*, QString>> pictures{{"Picture6", "showDiveList"},
                                                      {"Picture4", "showLink"},
                                                      {"Picture2", "showGasBlend"},
                                                      {"Picture3", "showGasBlend"}};
    for (const auto& [picture, asked] : pictures) {
        stage.neighbours.asked.clear();
        stage.click(picture);
        QVERIFY2(stage.neighbours.asked.contains(asked), picture);
    }
    stage.click("Picture8");
    QCOMPARE(stage.dialogs.asked().last().kind, "open");
    stage.neighbours.asked.clear();
    stage.click("Picture7");
    QCOMPARE(stage.neighbours.asked, (QStringList{"unloadOthers", "endProcess"}));
}

void TestMainScreen::thePanelShowsTheChosenEntry() {
    MainStage stage;
    stage.putDive();
    stage.main->showScreen();
    QCOMPARE(stage.control<QLabel>("Label7")->text(), "My Dives");
    QCOMPARE(
        stage.control<QLabel>("Label9")->text(),
        "Contains list of all dives and summary information which you have downloaded from your device.\n"
        "Dives marked in red have problems. Download them again to try and fix errors. Check connection tips "
        "for "
        "fixing connection and downloading problems.");
    stage.click("lbllo");
    QCOMPARE(stage.control<QLabel>("Label7")->text(), "Download to PC");
    QCOMPARE(stage.control<QLabel>("Label9")->text(),
             "This is where you download dives from your Morvalien/KD. You can also link to your devices to "
             "set other "
             "data such as: recording interval, gas settings, screen saver etc... Dives marked in yellow "
             "have already "
             "been downloaded to My Dives. See Connection Tips for solutions to connection and downloading "
             "problems.");
    stage.click("Label4");
    QCOMPARE(stage.control<QLabel>("Label7")->text(), "Setup + Gas");
    QCOMPARE(stage.control<QLabel>("Label9")->text(),
             "You can set up gasses and download them to you KD/Morvalien from here");
    stage.click("lblppc");
    QCOMPARE(stage.control<QLabel>("Label7")->text(), "Pocket PC");
    QCOMPARE(stage.control<QLabel>("Label9")->text(), "You can view and download dives from your Pocket PC");
    stage.click("Label14");
    QCOMPARE(stage.control<QLabel>("Label7")->text(), "Ferrowe pdl Import");
    QCOMPARE(stage.control<QLabel>("Label9")->text(), "You can import files from your Ferrowe software");
}

void TestMainScreen::entriesWithoutATextLeaveThePanelAsItWas() {
    MainStage stage;
    stage.putDive();
    stage.main->showScreen();
    stage.click("lblppc");
    stage.click("lblvvdl");
    QCOMPARE(stage.main->infochoice(), 4);
    QCOMPARE(stage.control<QLabel>("Label7")->text(), "Pocket PC");
    QCOMPARE(stage.control<QLabel>("Label9")->text(), "You can view and download dives from your Pocket PC");
}

void TestMainScreen::myDivesGoesBackToAnOpenDive() {
    MainStage stage;
    stage.main->showScreen();
    process().diveviewopen = true;
    stage.neighbours.asked.clear();
    stage.click("Command1");
    QCOMPARE(stage.neighbours.asked, QStringList{"showDiveView"});
}

void TestMainScreen::theLinkStaysShutWhileTheProgressFrameIsUp() {
    MainStage stage;
    stage.main->showScreen();
    stage.control("Frame2")->show();
    stage.neighbours.asked.clear();
    stage.action("cmdcommandsend")->trigger();
    stage.action("mnuconnectdevice")->trigger();
    stage.control<QPushButton>("Command2")->click();
    QVERIFY(stage.neighbours.asked.isEmpty());
    QCOMPARE(process().screenmode, "Dive");
    stage.control("Frame2")->hide();
    stage.action("mnuconnectdevice")->trigger();
    QCOMPARE(stage.neighbours.asked, QStringList{"showLink"});
}

void TestMainScreen::bothLinkEntriesSetTheirFace() {
    MainStage stage;
    stage.main->showScreen();
    stage.action("cmdcommandsend")->trigger();
    QCOMPARE(process().screenmode, "Command");
    stage.click("lbllo");
    QCOMPARE(process().screenmode, "Dive");
}

void TestMainScreen::theStatusMirrorsTheLink() {
    MainStage stage;
    stage.main->load();
    auto* status = stage.control<QLabel>("lblstatus");
    QCOMPARE(status->text(), "Searching");
    stage.main->Timer2_tick();
    QCOMPARE(status->text(), "Not Connected");
    QCOMPARE(status->property("toldColour").value<QColor>(), QColor(255, 255, 0));
    QVERIFY(stage.control("Text14")->isEnabled());
    stage.neighbours.linkCaption = QStringLiteral("Connected");
    stage.neighbours.linkColour = benthor::platform::kToldGreen;
    stage.main->Timer2_tick();
    QCOMPARE(status->text(), "Connected");
    QCOMPARE(status->property("toldColour").value<QColor>(), kGreen);
    QVERIFY(!stage.control("Text14")->isEnabled());
    stage.neighbours.downloading = true;
    stage.main->Timer2_tick();
    QCOMPARE(status->text(), "Downloading");
}

void TestMainScreen::theLinkCanHaveItsStatusShownAtOnce() {
    MainStage stage;
    stage.main->load();
    stage.neighbours.linkCaption = QStringLiteral("Checking..");
    stage.main->showLinkStatus();
    QCOMPARE(stage.control<QLabel>("lblstatus")->text(), "Checking..");
    QVERIFY(stage.control("Text14")->isEnabled());
}

void TestMainScreen::aHintStandsInThePlaceOfTheTotalsUntilTheyAreShownAgain() {
    MainStage stage;
    stage.main->showScreen();
    auto* totals = stage.control<QLabel>("lbltotaldive");
    stage.main->showHint(QStringLiteral("Modify Gas list as required."));
    QVERIFY(totals->isVisible());
    QCOMPARE(totals->text(), "Modify Gas list as required.");
    stage.click("lblppc");
    QVERIFY(!totals->isVisible() || totals->text() != "Modify Gas list as required.");
}

void TestMainScreen::theDiveListOpensOnceAfterTheStart() {
    MainStage stage;
    stage.main->load();
    auto* timer = stage.control<benthor::platform::TickTimer>("Timer4");
    QVERIFY(timer->isEnabled());
    stage.neighbours.asked.clear();
    timer->expire();
    QCOMPARE(stage.neighbours.asked, QStringList{"showDiveList"});
    QVERIFY(!timer->isEnabled());
}

void TestMainScreen::aFailingDiveListDoesNotBringTheMainScreenDown() {
    MainStage stage;
    stage.main->load();
    stage.neighbours.diveListFails = true;
    stage.main->Timer4_tick();
    QVERIFY(stage.main->isLoaded());
    QVERIFY(!stage.control<benthor::platform::TickTimer>("Timer4")->isEnabled());
}

void TestMainScreen::theHandHeldRoutineTellsWhyItCannotOpen() {
    MainStage stage;
    stage.main->load();
    stage.control<QPushButton>("Command6")->click();
    QCOMPARE(
        stage.dialogs.messages(),
        QStringList{"Could not open database - \nPotential causes are:\n1. Database file does not exist\n"
                    "2. The database path in the PDBOpen call is incorrect"});
    stage.dialogs.clear();
    stage.folder.put("Divelist.pdb", "anything");
    stage.control<QPushButton>("Command6")->click();
    QVERIFY(stage.dialogs.messages().isEmpty());
}

void TestMainScreen::exitEndsTheProcessAndTheMenuEntryDoesNot() {
    MainStage stage;
    stage.main->showScreen();
    stage.neighbours.asked.clear();
    stage.action("mnuExit")->trigger();
    QCOMPARE(stage.neighbours.asked, QStringList{"unloadOthers"});
    QVERIFY(stage.main->isUnloaded());
}

void TestMainScreen::reprogrammingClosesThePortsFirst() {
    MainStage stage;
    stage.main->showScreen();
    stage.neighbours.asked.clear();
    stage.action("mnuReprogIR")->trigger();
    QCOMPARE(stage.neighbours.asked, (QStringList{"closePorts", "showFirmware", "unloadOthers"}));
}

void TestMainScreen::theOldReprogrammingEntryOpensNothing() {
    MainStage stage;
    stage.main->showScreen();
    stage.neighbours.asked.clear();
    stage.action("mnuReprog")->trigger();
    QCOMPARE(stage.neighbours.asked, QStringList{"closePorts"});
    QVERIFY(stage.main->isLoaded());
}

void TestMainScreen::gettingStartedIsWrittenAndShown() {
    MainStage stage;
    stage.main->load();
    benthor::store::writegetstarted(QStringLiteral("Close"));
    stage.neighbours.asked.clear();
    stage.action("mnuGets")->trigger();
    auto rows = process().database.openRecordset("SELECT * FROM SERIALNO");
    QCOMPARE(rows.value(u"getstarted").text(), "Open");
    QCOMPARE(stage.neighbours.asked, QStringList{"showGuide"});
}

void TestMainScreen::tipsAreTurnedOnAndShown() {
    MainStage stage;
    stage.main->showScreen();
    benthor::platform::userSettings().setNumber(QStringLiteral("Options"),
                                                QStringLiteral("Show Tips at Startup"), 0);
    stage.neighbours.asked.clear();
    stage.action("mnuTips")->trigger();
    QCOMPARE(benthor::platform::userSettings().number(QStringLiteral("Options"),
                                                      QStringLiteral("Show Tips at Startup"), 0),
             1);
    QCOMPARE(stage.neighbours.asked, QStringList{"showTips"});
    QVERIFY(stage.control("Frame4")->isVisible());
}

void TestMainScreen::captionsAndToolTipsStandAsTold() {
    MainStage stage;
    stage.main->load();
    QCOMPARE(stage.control<QLabel>("lblvvdl")->text(), "KD3 Dive List ");
    QCOMPARE(stage.control<QLabel>("Label10(0)")->text(), "Connection tips    >>>");
    QCOMPARE(stage.control<QLabel>("Label10(1)")->text(), "<<<");
    QCOMPARE(stage.control<QLabel>("Label17")->text(), "DO NOT HIT OTHER KEYS OR TERMINATE PROGRAM");
    QCOMPARE(stage.control<QPushButton>("Command1")->text(), "Morvalien Dive Log");
    QCOMPARE(stage.control<QPushButton>("Command2")->text(), "Link Morvalien");
    QCOMPARE(stage.control<QPushButton>("Command3")->text(), "Manual Dive File Find");
    QCOMPARE(stage.control<QPushButton>("Command4")->text(), "import dives");
    QCOMPARE(stage.control<QPushButton>("stopimport")->text(), "stop import");
    QCOMPARE(stage.control("stopimport")->toolTip(),
             "Click to abort importing dives after current one finishes");
    QCOMPARE(
        stage.control("Command4")->toolTip(),
        "When green, there are more new dives that can be transfered from temporary storage into database");
    QCOMPARE(stage.control("Picture5")->toolTip(), "Forces manual update of database. However, PC Link "
                                                   "screen must be closed before this will be activated");
    const QList<QPair<const char*, QString>> menu{{"mnuimport", "&Import"},
                                                  {"mnurebrether", "&Rebrether"},
                                                  {"mnukd3", "KD3"},
                                                  {"mnuimpfile", "&Text File"},
                                                  {"mnupdb", "PDB"},
                                                  {"mnuFile", "&File"},
                                                  {"mnuOpen", "&Open"},
                                                  {"mnufilecurrent", "&Default"},
                                                  {"mnucurrentmain", "&Main"},
                                                  {"mnucurrentprofile", "&Profile"},
                                                  {"mnucurrentgas", "&Gas"},
                                                  {"mnucurrentissue", "&Tissue"},
                                                  {"mnuMeters", "&Metres"},
                                                  {"mnuFeet", "&Feet"},
                                                  {"mnuconnect", "&Connect"},
                                                  {"mnuconnectdevice", "Connect &Device"},
                                                  {"mnudivesummary", "&Dive Summary"},
                                                  {"mnugasupload", "&Gas Upload"},
                                                  {"mnuinterval", "&Interval"},
                                                  {"mnugetinterval", "Get Interval"},
                                                  {"MNUBACKUP", "&Backup"},
                                                  {"mnuReprog", "&ReProgOLD"},
                                                  {"mnuReprogIR", "&ReProgram"},
                                                  {"mnuExit", "&Exit"},
                                                  {"mnuWindow", "&Window"},
                                                  {"mnuDiveList", "&My Dives"},
                                                  {"cmdcommandsend", "&Download Dives"},
                                                  {"mnuSetupGas", "Setup and &Gas"},
                                                  {"mnuHelp", "&Help"},
                                                  {"mnuGets", "&Getting Started"},
                                                  {"mnuHTMLhelpa", "&Walk through"},
                                                  {"mnuTips", "&Connection Tips"},
                                                  {"mnuHTMLhelp", "Manual File"},
                                                  {"mnuAbout", "&About"}};
    for (const auto& [name, caption] : menu) {
        QCOMPARE(stage.action(name)->text(), caption);
    }
}

void TestMainScreen::timersStandAsTold() {
    MainStage stage;
    const auto check = [&stage](const char* name, int interval, bool enabled) {
        auto* timer = stage.control<benthor::platform::TickTimer>(name);
        QCOMPARE(timer->interval(), interval);
        QCOMPARE(timer->isEnabled(), enabled);
    };
    check("Timer1", 1000, true);
    check("Timer2", 1000, true);
    check("Timer3", 1000, true);
    check("Timer4", 2000, false);
}

QTEST_MAIN(TestMainScreen)
#include "test_main_screen.moc"
