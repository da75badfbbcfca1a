#include "link/screens/waitcard.h"
#include "platform/look/widgets/status.h"
#include "platform/screen/toldqcolor.h"
#include "tests/link/linkstage.h"

#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QRadioButton>
#include <QSignalSpy>

using benthor::process;
using benthor::link::PC_Link_1;
using benthor::platform::FlexGrid;
using benthor::platform::toQColor;
using benthor::tests::LinkStage;

namespace {

/// Text between a label and its value: the value begins at the eighth character behind the label.
QByteArray field(const QByteArray& label, const QByteArray& value) {
    return label + "......." + value + "\r\n";
}

QByteArray dive(const QByteArray& start) {
    return "ver=V3.12\r\n" + field("Start", start) + field("Finish", start.chopped(1) + "9");
}

QByteArray directory() {
    return dive("812345670") + dive("812445670") + dive("812545670") + "End\r\n";
}

} // namespace

class TestPcLink1 : public QObject {
    Q_OBJECT

private slots:
    // what is there
    void aListOfControlsCanBeFoundByName_data();
    void aListOfControlsCanBeFoundByName();
    void captionsAreAsTold_data();
    void captionsAreAsTold();
    void theCommandMenuHasItsEntries();
    void convertingALogoIsGreyedAndSaysWhy();
    void timersHaveTheirBeats();

    // faces
    void theDownloadFaceIsLaidForDive();
    void theSetupFaceIsLaidOtherwise();
    void aScreenLoadedHiddenTakesTheFaceThatIsWantedWhenShown();
    void theSwapLabelAsksForTheOtherFace();
    void menuScreenLeavesTheLinkIdle();

    // showing
    void aFoundDeviceIsShownAsConnected();
    void aHiddenStartAsksForNothingAndSearches();
    void theHintBoxTellsTheRightsHint();
    void theDirectoryIsShownWithItsColumnsAndHeights();
    void aPlainClickPaintsTheRowBlue();
    void spacePaintsTheCurrentRowBlue();
    void getSelectedShowsTheWaitFrame();
    void escapeLeavesTheWaitFrame();
    void theWaitFrameGoesWithTheDive();
    void theRawTextGrowsByWhatCame();
    void detailsOffHidesTheRawTexts();
    void advancedOptionShowsTheExpertFields();
    void theHudFrameIsToggledByTheMenu();
    void aMenuEntryChecksItselfAlone();
    void anIntervalTypedLeavesAsItIs();
    void aSeriesNameTypedIsTakenAndHinted();
    void savingToTheDatabaseAsksForTheImport();

    // life
    void ticksEndWithTheScreen();
    void aScreenClosedWhileDownloadingLeavesNothingBehind();
    void aCloseDuringTheWaitForAReplyEndsIt();
    void anEmptyPortLeavesTheRememberedOne();
};

void TestPcLink1::aListOfControlsCanBeFoundByName_data() {
    QTest::addColumn<QString>("name");
    QStringList names{"AFLabel3",        "ComNum",
                      "Command6",        "Label8",
                      "Label11",         "Label13",
                      "lblheading",      "cmddownload",
                      "cmddownloadall",  "cmddownloadnew",
                      "Picture5(1)",     "Picture2(1)",
                      "Picture1(1)",     "Label16",
                      "Label12",         "cmdstore",
                      "Picture3",        "Label10",
                      "Mgrid",           "DiveSeriesName",
                      "startdivenum",    "Command1",
                      "Command9",        "Command3",
                      "Option2(0)",      "Option2(1)",
                      "Option2(2)",      "Label5(2)",
                      "downloadingdive", "Text1",
                      "DiveCount",       "savetodatabase",
                      "lblBytes",        "ProgressBar1(0)",
                      "infotext",        "Label20",
                      "Text14",          "Frame2",
                      "Frame4",          "Frame5",
                      "TXTWait(0)",      "TXTWait(1)",
                      "Text3",           "Text4",
                      "Text5",           "Text6",
                      "Text7",           "Text9",
                      "Text10",          "Text11",
                      "Text12",          "TextResponse",
                      "Command2",        "Command5",
                      "Shape1",          "AFLabel1",
                      "AFLabel4",        "Label3",
                      "Label6",          "Label7",
                      "txtstatus2",      "Image1",
                      "mnuFindKD",       "mnuCommand",
                      "mnuOpen",         "mnuEdit",
                      "mnuDetOn",        "mnuDetOff",
                      "mnuTips",         "mnuGas",
                      "mnuHud",          "mnuLogoConv",
                      "mnubackdive",     "mnuAdvancedOption"};
    for (int i = 0; i < 12; ++i) {
        names << QStringLiteral("Option1(%1)").arg(i);
    }
    for (int i = 0; i < 10; ++i) {
        names << QStringLiteral("AFShape1(%1)").arg(i);
    }
    for (int i = 0; i < 7; ++i) {
        names << QStringLiteral("Text16(%1)").arg(i);
    }
    for (const int i : {0, 1, 2, 5, 6, 8, 10, 11}) {
        names << QStringLiteral("Label19(%1)").arg(i) << QStringLiteral("Picture14(%1)").arg(i);
    }
    for (const QString& name : std::as_const(names)) {
        QTest::newRow(qPrintable(name)) << name;
    }
}

void TestPcLink1::aListOfControlsCanBeFoundByName() {
    QFETCH(QString, name);
    LinkStage stage;
    QCOMPARE(stage.screen->findChildren<QObject*>(name).size(), 1);
}

void TestPcLink1::captionsAreAsTold_data() {
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("caption");
    const auto row = [](const char* name, const char* caption) {
        QTest::newRow(name) << QByteArray(name) << QString::fromLatin1(caption);
    };
    row("cmddownload", "Get Selected Dives");
    row("cmddownloadall", "Get All Dives");
    row("cmddownloadnew", "Get New Dives");
    row("cmdstore", "Refresh");
    row("savetodatabase", "Save to Database");
    row("Command1", "Get Dive");
    row("Command9", "Get Dives");
    row("Command3", "Store Dive Text");
    row("Command5", "Send File/Text");
    row("Command6", "Set Port");
    row("Label11", "Menu Screen");
    row("Option2(0)", "Last one");
    row("Option2(1)", "All");
    row("Option2(2)", "Latest");
    row("Label19(0)", "Screen Saver");
    row("Label19(1)", "Get Record Interval secs");
    row("Label19(2)", "Send Record Interval secs");
    row("Label19(5)", "Setup + Gas");
    row("Label19(6)", "Book Send");
    row("Label19(8)", "Personal Details");
    row("Label19(10)", "Restart Morvalien");
    row("Label19(11)", "Get Readings");
    row("Option1(0)", "Logo Upload");
    row("Option1(1)", "Interval Get");
    row("Option1(2)", "Interval Send");
    row("Option1(3)", "Dive Summary");
    row("Option1(4)", "Summary Last");
    row("Option1(5)", "Setup");
    row("Option1(6)", "Book Upload");
    row("Option1(8)", "User ID");
    row("Option1(9)", "Other");
    row("Option1(10)", "Quit");
    row("Option1(11)", "Status");
    row("mnuFindKD", "F&ind KD/Morvalien");
    row("TXTWait(1)", "DO NOT CLOSE OR USE KEYBOARD  WHILE DOWNLOADING");
    row("DiveSeriesName", "MyLatestDives");
}

void TestPcLink1::captionsAreAsTold() {
    QFETCH(QByteArray, name);
    QFETCH(QString, caption);
    LinkStage stage;
    QCOMPARE(stage.text(name.constData()), caption);
}

void TestPcLink1::theCommandMenuHasItsEntries() {
    LinkStage stage;
    QStringList captions;
    for (const char* name : {"mnuLogo", "mnuIntget", "mnuIntSend", "mnuDiveSum", "mnuSumLast", "mnuGasUp",
                             "mnuBookUp", "mnuPersSend", "mnuOther", "mnuQuitKD"}) {
        captions << stage.control<QAction>(name)->text();
    }
    QCOMPARE(captions,
             (QStringList{"Logo Send", "Interval Get", "Interval Send", "Dive Summary", "Summary Last",
                          "Gas Upload", "Book Send", "Info Send", "Other", "Quit KD"}));
}

void TestPcLink1::convertingALogoIsGreyedAndSaysWhy() {
    LinkStage stage;
    const QAction* entry = stage.control<QAction>("mnuLogoConv");
    QVERIFY(!entry->isEnabled());
    QCOMPARE(entry->toolTip(), "Converting a logo is not there yet.");
}

void TestPcLink1::timersHaveTheirBeats() {
    LinkStage stage;
    const auto beat = [&stage](const char* name) {
        return stage.control<benthor::platform::TickTimer>(name)->interval();
    };
    QCOMPARE(beat("Timer1"), 500);
    QCOMPARE(beat("Timer2"), 500);
    QCOMPARE(beat("Timer3"), 500);
    QCOMPARE(beat("Timer4"), 10000);
    QCOMPARE(beat("Timer5"), 2000);
    QCOMPARE(beat("Timer6"), 1000);
    QCOMPARE(beat("Timer8"), 5000);
    QVERIFY(stage.ticking("Timer1"));
    QVERIFY(stage.ticking("Timer2"));
    QVERIFY(!stage.ticking("Timer3"));
    QVERIFY(stage.ticking("Timer4"));
    QVERIFY(!stage.ticking("Timer5"));
    QVERIFY(!stage.ticking("Timer6"));
    QVERIFY(stage.ticking("Timer8"));
}

void TestPcLink1::theDownloadFaceIsLaidForDive() {
    LinkStage stage(QStringLiteral("Dive"));
    stage.screen->showScreen();
    QCOMPARE(stage.text("lblheading"), "Dive Download");
    QCOMPARE(stage.text("Label13"), "Setup Utilities");
    QVERIFY(stage.control("Frame2")->isVisible());
    QVERIFY(stage.control("Mgrid")->isVisible());
    QVERIFY(!stage.control("Text4")->isVisible());
    QVERIFY(!stage.control("Text7")->isVisible());
    QVERIFY(!stage.control("Label19(0)")->isVisible());
    QCOMPARE(stage.control<QLineEdit>("DiveSeriesName")->selectedText(), "MyLatestDives");
}

void TestPcLink1::theSetupFaceIsLaidOtherwise() {
    LinkStage stage(QStringLiteral("Command"));
    stage.screen->showScreen();
    QCOMPARE(stage.text("lblheading"), "Setup Utilities");
    QCOMPARE(stage.text("Label13"), "Dive Download");
    QVERIFY(!stage.control("Frame2")->isVisible());
    QVERIFY(stage.control("Label19(0)")->isVisible());
    QVERIFY(stage.control("Text4")->isVisible());
    QVERIFY(stage.control<QAction>("mnuDetOn")->isChecked());
    QVERIFY(!stage.control<QAction>("mnuDetOff")->isChecked());
}

void TestPcLink1::aScreenLoadedHiddenTakesTheFaceThatIsWantedWhenShown() {
    LinkStage stage;
    stage.screen->load();
    QCOMPARE(stage.text("lblheading"), "Setup Utilities");
    QVERIFY(!stage.screen->isOnScreen());
    process().screenmode = QStringLiteral("Dive");
    stage.screen->showScreen();
    QCOMPARE(stage.text("lblheading"), "Dive Download");
    QVERIFY(stage.control("Frame2")->isVisible());
}

void TestPcLink1::theSwapLabelAsksForTheOtherFace() {
    LinkStage stage(QStringLiteral("Dive"));
    stage.screen->showScreen();
    const QSignalSpy wanted(stage.screen, &PC_Link_1::swapWanted);
    stage.click("Label13");
    QCOMPARE(wanted.value(0).value(0).toString(), "Command");
    process().screenmode = QStringLiteral("Command");
    stage.screen->layFace();
    stage.click("Label13");
    QCOMPARE(wanted.value(1).value(0).toString(), "Dive");
}

void TestPcLink1::menuScreenLeavesTheLinkIdle() {
    LinkStage stage;
    stage.screen->showScreen();
    process().linkidle = false;
    const QSignalSpy wanted(stage.screen, &PC_Link_1::menuWanted);
    stage.click("Label11");
    QCOMPARE(wanted.count(), 1);
    QVERIFY(process().linkidle);
}

void TestPcLink1::aFoundDeviceIsShownAsConnected() {
    LinkStage stage(QStringLiteral("Dive"));
    const QSignalSpy painted(stage.screen, &PC_Link_1::statusPainted);
    stage.connectDevice();
    QCOMPARE(stage.text("ComNum"), "3");
    QVERIFY(stage.working->PortOpen());
    QVERIFY(!stage.ticking("Timer8"));
    QVERIFY(painted.count() > 0);
    // The directory has been asked for: its caption stands until the reply is there.
    QCOMPARE(stage.screen->caption(), stage.text("AFLabel3"));
    QCOMPARE(stage.control<benthor::look::StatusChip>("AFLabel3")->toldBackground(),
             toQColor(stage.screen->captionColour()));
    QVERIFY(stage.working->sent.endsWith("M"));
    stage.receive(directory());
    stage.tick("Timer2");
    stage.receive("PPPPPPPP");
    stage.tick("Timer1");
    QCOMPARE(stage.text("AFLabel3"), "Connected");
    QVERIFY(!stage.control("Text14")->isVisible());
    for (const char* name :
         {"cmddownload", "cmddownloadall", "cmddownloadnew", "Picture1(1)", "Picture2(1)", "Picture5(1)"}) {
        QVERIFY2(stage.control(name)->isVisible() && stage.control(name)->isEnabled(), name);
    }
}

void TestPcLink1::aHiddenStartAsksForNothingAndSearches() {
    LinkStage stage;
    stage.screen->load();
    QVERIFY(!stage.screen->isVisible());
    QCOMPARE(stage.text("AFLabel3"), "Searching..");
    QVERIFY(stage.working->sent.isEmpty());
    QVERIFY(stage.search.at(3)->PortOpen());
    QVERIFY(!stage.search.at(0)->PortOpen());
    QCOMPARE(stage.text("Command2"), "Quit");
}

void TestPcLink1::theHintBoxTellsTheRightsHint() {
    LinkStage stage;
    stage.portHint = QStringLiteral("Join the group of the ports.");
    stage.screen->showScreen();
    stage.tick("Timer1");
    QVERIFY(stage.control("Text14")->isVisible());
    QVERIFY(stage.text("Text14").endsWith("Join the group of the ports."));
}

void TestPcLink1::theDirectoryIsShownWithItsColumnsAndHeights() {
    LinkStage stage(QStringLiteral("Dive"));
    stage.connectDevice();
    stage.receive(directory());
    stage.tick("Timer2");
    const FlexGrid* grid = stage.control<FlexGrid>("Mgrid");
    QCOMPARE(grid->rows(), 4);
    QCOMPARE(grid->cols(), 12);
    QCOMPARE(grid->text(0, 0), "Dive No");
    QCOMPARE(grid->text(1, 0), "Dive1");
    QCOMPARE(grid->text(3, 0), "Dive3");
    QCOMPARE(grid->columnWidthTwips(1), 0);
    QCOMPARE(grid->columnWidthTwips(2), 1800);
    QCOMPARE(grid->columnWidthTwips(3), 1800);
    QCOMPARE(grid->rowHeight(0), 20);
    QVERIFY(!grid->emptyText().isEmpty());
}

void TestPcLink1::aPlainClickPaintsTheRowBlue() {
    LinkStage stage(QStringLiteral("Dive"));
    stage.connectDevice();
    stage.receive(directory());
    stage.tick("Timer2");
    auto* grid = stage.control<FlexGrid>("Mgrid");
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {},
                      grid->visualRect(grid->model()->index(1, 2)).center());
    QCOMPARE(process().servedrow, 2);
    QCOMPARE(grid->backColour(2, 1), QColor(0, 0, 255));
    QCOMPARE(grid->backColour(2, 11), QColor(0, 0, 255));
    QCOMPARE(grid->foreColour(2, 11), QColor(255, 255, 255));
    QVERIFY(!grid->backColour(2, 0).isValid());
    QVERIFY(!grid->backColour(1, 1).isValid());
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, Qt::ControlModifier,
                      grid->visualRect(grid->model()->index(2, 2)).center());
    QCOMPARE(grid->backColour(2, 1), QColor(0, 0, 255));
    QCOMPARE(grid->backColour(3, 1), QColor(0, 0, 255));
}

void TestPcLink1::spacePaintsTheCurrentRowBlue() {
    LinkStage stage(QStringLiteral("Dive"));
    stage.connectDevice();
    stage.receive(directory());
    stage.tick("Timer2");
    auto* grid = stage.control<FlexGrid>("Mgrid");
    grid->setRow(3);
    QTest::keyClick(grid, Qt::Key_Space);
    QCOMPARE(process().servedrow, 3);
    QCOMPARE(grid->backColour(3, 1), QColor(0, 0, 255));
}

namespace {

/// A device with three dives, the first of which has been asked for.
void beginDownload(LinkStage& stage) {
    stage.connectDevice();
    stage.receive(directory());
    stage.tick("Timer2");
    stage.receive("PPPPPPPP");
    stage.tick("Timer1");
    auto* grid = stage.control<FlexGrid>("Mgrid");
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {},
                      grid->visualRect(grid->model()->index(0, 2)).center());
    stage.working->sent.clear();
    stage.click("cmddownload");
    QCOMPARE(stage.working->sent, QByteArray("D0"));
    QVERIFY(stage.ticking("Timer3"));
    stage.receive("ver=V3.12\r\nProfile");
    stage.tick("Timer3");
}

} // namespace

void TestPcLink1::getSelectedShowsTheWaitFrame() {
    LinkStage stage(QStringLiteral("Dive"));
    QVERIFY(!stage.control("TXTWait(1)")->isEnabled());
    beginDownload(stage);
    QVERIFY(stage.control("Frame5")->isVisible());
    QVERIFY(stage.control("TXTWait(1)")->isVisible());
    QVERIFY(stage.control("TXTWait(1)")->isEnabled());
    QVERIFY(stage.screen->isDownloading());
    QCOMPARE(stage.text("TXTWait(0)"), "Downloading\nPlease wait..\n");
    QCOMPARE(stage.text("lblBytes"), "18  Bytes received");
    for (const char* name : {"cmdstore", "cmddownload", "cmddownloadall", "cmddownloadnew"}) {
        QVERIFY2(!stage.control(name)->isEnabled(), name);
    }
    QVERIFY(!stage.control("Picture5(1)")->isVisible());
    QVERIFY(stage.control("Label11")->isEnabled());
    QVERIFY(!stage.control("Label13")->isEnabled());
    QVERIFY(!stage.screen->menuBar()->isEnabled());
}

void TestPcLink1::escapeLeavesTheWaitFrame() {
    LinkStage stage(QStringLiteral("Dive"));
    beginDownload(stage);
    QTest::keyClick(stage.screen.data(), Qt::Key_Escape);
    QTest::keyClick(stage.control("Frame5"), Qt::Key_Escape);
    QVERIFY(stage.control("Frame5")->isVisible());
    QVERIFY(stage.screen->isDownloading());
}

void TestPcLink1::theWaitFrameGoesWithTheDive() {
    LinkStage stage(QStringLiteral("Dive"));
    beginDownload(stage);
    stage.receive("\r\nEnd\r\n");
    stage.tick("Timer3");
    QVERIFY(!stage.control("Frame5")->isVisible());
    QVERIFY(!stage.control("TXTWait(1)")->isEnabled());
    QVERIFY(!stage.ticking("Timer3"));
    QVERIFY(stage.folder.has("new/MyLatestDives1.txt"));
    QVERIFY(stage.dialogs.messages().contains("1  Dives Downloaded."));
    QVERIFY(!stage.control<FlexGrid>("Mgrid")->backColour(1, 1).isValid());
}

void TestPcLink1::theRawTextGrowsByWhatCame() {
    LinkStage stage(QStringLiteral("Command"));
    stage.connectDevice();
    auto* raw = stage.control<QPlainTextEdit>("Text4");
    stage.receive("abc\r");
    stage.tick("Timer1");
    const QString before = raw->toPlainText();
    QVERIFY(before.endsWith("abc"));
    int added = 0;
    connect(raw->document(), &QTextDocument::contentsChange, this,
            [&added](int, int removed, int more) { added += more + 1000 * removed; });
    stage.receive("\ndef");
    stage.tick("Timer1");
    QCOMPARE(raw->toPlainText(), before + "\ndef");
    QVERIFY2(added > 0 && added <= 6, qPrintable(QString::number(added)));
}

void TestPcLink1::detailsOffHidesTheRawTexts() {
    LinkStage stage(QStringLiteral("Command"));
    stage.screen->showScreen();
    stage.control<QAction>("mnuDetOff")->trigger();
    QVERIFY(!stage.control("Text4")->isVisible());
    QVERIFY(!stage.control("Text7")->isVisible());
    QVERIFY(!stage.control("Text14")->isVisible());
    QVERIFY(stage.control<QAction>("mnuDetOff")->isChecked());
    QVERIFY(!stage.control<QAction>("mnuDetOn")->isChecked());
    stage.control<QAction>("mnuDetOn")->trigger();
    QVERIFY(stage.control("Text4")->isVisible());
    QVERIFY(stage.control("Text7")->isVisible());
    stage.control<QAction>("mnuTips")->trigger();
    QVERIFY(stage.control("Text14")->isVisible());
}

void TestPcLink1::advancedOptionShowsTheExpertFields() {
    LinkStage stage(QStringLiteral("Command"));
    stage.screen->showScreen();
    auto* entry = stage.control<QAction>("mnuAdvancedOption");
    const QList<const char*> fields{"Option1(9)", "Text6", "Text9", "Text3",    "TextResponse",
                                    "Command5",   "Text4", "Text7", "Command2", "Shape1"};
    entry->trigger();
    QVERIFY(entry->isChecked());
    for (const char* name : fields) {
        QVERIFY2(stage.control(name)->isVisible(), name);
    }
    entry->trigger();
    QVERIFY(!entry->isChecked());
    for (const char* name : fields) {
        QVERIFY2(!stage.control(name)->isVisible(), name);
    }
}

void TestPcLink1::theHudFrameIsToggledByTheMenu() {
    LinkStage stage(QStringLiteral("Command"));
    stage.screen->showScreen();
    QVERIFY(!stage.control("Frame4")->isVisible());
    stage.control<QAction>("mnuHud")->trigger();
    QVERIFY(stage.control("Frame4")->isVisible());
    stage.control<QAction>("mnuHud")->trigger();
    QVERIFY(!stage.control("Frame4")->isVisible());
}

void TestPcLink1::aMenuEntryChecksItselfAlone() {
    LinkStage stage(QStringLiteral("Command"));
    stage.screen->showScreen();
    const QSignalSpy hints(stage.screen, &PC_Link_1::hintForMain);
    stage.control<QAction>("mnuLogo")->trigger();
    stage.control<QAction>("mnuPersSend")->trigger();
    QVERIFY(!stage.control<QAction>("mnuLogo")->isChecked());
    QVERIFY(stage.control<QAction>("mnuPersSend")->isChecked());
    QCOMPARE(stage.text("Command2"), "Info Send");
    QVERIFY(stage.control<QRadioButton>("Option1(8)")->isChecked());
    QVERIFY(stage.control("Text9")->isVisible());
    QCOMPARE(stage.control<QLineEdit>("Text9")->maxLength(), 32);
    QCOMPARE(
        stage.text("infotext"),
        "Type appropriate personal details into Text box. Maximum length is 32 characters. Make sure KD is "
        "in PC Link and Connected appears in com port window. Then Click Info Send.");
    QCOMPARE(hints.count(), 2);
    QCOMPARE(hints.value(1).value(0).toString(), stage.text("infotext"));
    stage.control<QAction>("mnuGas")->trigger();
    QVERIFY(stage.control<QAction>("mnuGasUp")->isChecked());
}

void TestPcLink1::anIntervalTypedLeavesAsItIs() {
    LinkStage stage(QStringLiteral("Command"));
    stage.connectDevice();
    stage.control<QAction>("mnuIntSend")->trigger();
    auto* box = stage.control<QLineEdit>("Text16(0)");
    box->selectAll();
    QTest::keyClicks(box, QStringLiteral("5"));
    stage.working->sent.clear();
    stage.click("Picture14(2)");
    QCOMPARE(stage.working->sent, QByteArray("S5F\r\n"));
}

void TestPcLink1::aSeriesNameTypedIsTakenAndHinted() {
    LinkStage stage(QStringLiteral("Dive"));
    stage.screen->showScreen();
    const QSignalSpy hints(stage.screen, &PC_Link_1::hintForMain);
    auto* box = stage.control<QLineEdit>("DiveSeriesName");
    box->selectAll();
    QTest::keyClicks(box, QStringLiteral("R"));
    QCOMPARE(stage.screen->state().download.DiveSeriesName, "R");
    QCOMPARE(hints.count(), 1);
    QCOMPARE(stage.text("infotext"),
             "Choose the name of the dive under which the dives will be saved, by typing in the name of the "
             "series on the dive series box.");
}

void TestPcLink1::savingToTheDatabaseAsksForTheImport() {
    LinkStage stage(QStringLiteral("Dive"));
    stage.screen->showScreen();
    const QSignalSpy wanted(stage.screen, &PC_Link_1::importWanted);
    stage.click("savetodatabase");
    QCOMPARE(wanted.count(), 1);
}

void TestPcLink1::ticksEndWithTheScreen() {
    LinkStage stage(QStringLiteral("Dive"));
    stage.connectDevice();
    stage.screen->unload();
    QVERIFY(process().screenmode.isEmpty());
    QVERIFY(stage.screen != nullptr);
    for (const char* name : {"Timer1", "Timer2", "Timer3", "Timer4", "Timer5", "Timer6", "Timer8"}) {
        QVERIFY2(!stage.ticking(name), name);
    }
    QVERIFY(!stage.working->PortOpen());
    QTRY_VERIFY(stage.screen == nullptr);
}

void TestPcLink1::aScreenClosedWhileDownloadingLeavesNothingBehind() {
    LinkStage stage(QStringLiteral("Dive"));
    beginDownload(stage);
    stage.screen->close();
    QVERIFY(!stage.screen->isDownloading());
    QVERIFY(!stage.working->PortOpen());
    QTRY_VERIFY(stage.screen == nullptr);
    QVERIFY(!stage.folder.has("new/MyLatestDives1.txt"));
    QVERIFY(QGuiApplication::overrideCursor() == nullptr);
}

void TestPcLink1::aCloseDuringTheWaitForAReplyEndsIt() {
    LinkStage stage(QStringLiteral("Command"));
    stage.connectDevice();
    stage.receive(directory());
    stage.tick("Timer2");
    stage.control<QAction>("mnuPersSend")->trigger();
    int polls = 0;
    const QPointer<PC_Link_1> screen = stage.screen;
    stage.working->onPoll = [&polls, &screen] {
        if (++polls == 5) {
            screen->close();
        }
    };
    stage.click("Command2");
    QVERIFY2(polls >= 5 && polls <= 500, qPrintable(QString::number(polls)));
    QVERIFY(stage.dialogs.messages().isEmpty());
    QTRY_VERIFY(stage.screen == nullptr);
}

void TestPcLink1::anEmptyPortLeavesTheRememberedOne() {
    LinkStage stage;
    stage.folder.put(QStringLiteral("comport.txt"), QByteArray("\x01\x00\x37", 3));
    stage.screen->load();
    QCOMPARE(stage.text("ComNum"), QString());
    stage.screen->unload();
    QVERIFY(stage.folder.get(QStringLiteral("comport.txt")).startsWith(QByteArray("\x01\x00\x37", 3)));
}

QTEST_MAIN(TestPcLink1)
#include "test_pc_link_1.moc"
