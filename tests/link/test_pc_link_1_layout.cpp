#include "link/screens/waitcard.h"
#include "platform/look/look.h"
#include "platform/look/widgets/status.h"
#include "platform/screen/toldqcolor.h"
#include "simulator/demodives.h"
#include "simulator/kd.h"
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

class TestPcLink1Layout : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { benthor::look::apply(*qApp); }

    // what is there
    void aListOfControlsCanBeFoundByName_data();
    void aListOfControlsCanBeFoundByName();
    void captionsAreAsTold_data();
    void captionsAreAsTold();
    void theCommandMenuHasItsEntries();
    void timersHaveTheirBeats();

    // faces
    void theDownloadFaceIsLaidForDive();
    void theSetupFaceIsLaidOtherwise();
    void aScreenLoadedHiddenTakesTheFaceThatIsWantedWhenShown();
    void theSwapLabelAsksForTheOtherFace();
    void menuScreenLeavesTheLinkIdle();

    // room
    void eachFaceFitsTheLeastDisplay_data();
    void eachFaceFitsTheLeastDisplay();
    void theKeyKeepsItsColoursWhileADownloadRuns();
    void allColumnsOfTheDirectoryAreSeenAtTheFirstSize_data();
    void allColumnsOfTheDirectoryAreSeenAtTheFirstSize();

    // what is told while something is waited for
    void theWaitCardSaysWhichDiveOfHowMany();
    void theFirstSecondsOfASearchWarnOfNothing();
};

void TestPcLink1Layout::aListOfControlsCanBeFoundByName_data() {
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
    names << QStringLiteral("Command8");
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

void TestPcLink1Layout::aListOfControlsCanBeFoundByName() {
    QFETCH(QString, name);
    LinkStage stage;
    QCOMPARE(stage.screen->findChildren<QObject*>(name).size(), 1);
}

void TestPcLink1Layout::captionsAreAsTold_data() {
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

void TestPcLink1Layout::captionsAreAsTold() {
    QFETCH(QByteArray, name);
    QFETCH(QString, caption);
    LinkStage stage;
    QCOMPARE(stage.text(name.constData()), caption);
}

void TestPcLink1Layout::theCommandMenuHasItsEntries() {
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

void TestPcLink1Layout::timersHaveTheirBeats() {
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

void TestPcLink1Layout::theDownloadFaceIsLaidForDive() {
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

void TestPcLink1Layout::theSetupFaceIsLaidOtherwise() {
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

void TestPcLink1Layout::aScreenLoadedHiddenTakesTheFaceThatIsWantedWhenShown() {
    LinkStage stage;
    stage.screen->load();
    QCOMPARE(stage.text("lblheading"), "Setup Utilities");
    QVERIFY(!stage.screen->isOnScreen());
    process().screenmode = QStringLiteral("Dive");
    stage.screen->showScreen();
    QCOMPARE(stage.text("lblheading"), "Dive Download");
    QVERIFY(stage.control("Frame2")->isVisible());
}

void TestPcLink1Layout::theSwapLabelAsksForTheOtherFace() {
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

void TestPcLink1Layout::menuScreenLeavesTheLinkIdle() {
    LinkStage stage;
    stage.screen->showScreen();
    process().linkidle = false;
    const QSignalSpy wanted(stage.screen, &PC_Link_1::menuWanted);
    stage.click("Label11");
    QCOMPARE(wanted.count(), 1);
    QVERIFY(process().linkidle);
}

void TestPcLink1Layout::eachFaceFitsTheLeastDisplay_data() {
    QTest::addColumn<QString>("mode");
    QTest::addColumn<QStringList>("entries");
    QTest::newRow("download") << "Dive" << QStringList();
    QTest::newRow("download, details") << "Dive" << QStringList{"mnuDetOn"};
    QTest::newRow("setup") << "Command" << QStringList();
    QTest::newRow("setup, expert, alarms")
        << "Command" << QStringList{"mnuAdvancedOption", "mnuHud", "mnuTips"};
    QTest::newRow("setup, name") << "Command" << QStringList{"mnuAdvancedOption", "mnuPersSend"};
}

void TestPcLink1Layout::eachFaceFitsTheLeastDisplay() {
    QFETCH(QString, mode);
    QFETCH(QStringList, entries);
    LinkStage stage(mode);
    stage.connectDevice();
    for (const QString& entry : std::as_const(entries)) {
        stage.control<QAction>(qPrintable(entry))->trigger();
    }
    QCoreApplication::processEvents();
    const QSize least = stage.screen->minimumSizeHint().expandedTo(stage.screen->minimumSize());
    QVERIFY2(least.width() <= 1024 && least.height() <= 700,
             qPrintable(QStringLiteral("%1 x %2").arg(least.width()).arg(least.height())));
}

void TestPcLink1Layout::allColumnsOfTheDirectoryAreSeenAtTheFirstSize_data() {
    QTest::addColumn<double>("points"); // of the desktop's font
    QTest::newRow("usual") << 10.0;
    QTest::newRow("large") << 13.0;
    QTest::newRow("larger") << 15.0;
    QTest::newRow("usual again") << 10.0;
}

void TestPcLink1Layout::theKeyKeepsItsColoursWhileADownloadRuns() {
    LinkStage stage(QStringLiteral("Dive"));
    stage.screen->showScreen();
    auto* words = [&stage]() -> QWidget* {
        for (auto* label : stage.screen->findChildren<QLabel*>()) {
            if (label->text() == QLatin1String("selected")) {
                return label;
            }
        }
        return nullptr;
    }();
    QVERIFY(words != nullptr);
    const auto swatch = [words] {
        const QImage row = words->parentWidget()->grab().toImage();
        return row.pixelColor(words->x() - benthor::look::spaceSmall - benthor::look::scaled(6),
                              row.height() / 2);
    };
    QCOMPARE(swatch(), QColor(Qt::blue));
    stage.control("Mgrid")->parentWidget()->setEnabled(false);
    QCOMPARE(swatch(), QColor(Qt::blue));
}

/// Eleven with the number of the dive; the start code is hidden.
void TestPcLink1Layout::allColumnsOfTheDirectoryAreSeenAtTheFirstSize() {
    QFETCH(double, points);
    QFont desktop(QStringLiteral("DejaVu Sans"));
    desktop.setPointSizeF(points);
    QApplication::setFont(desktop);
    benthor::look::apply(*qApp);
    LinkStage stage(QStringLiteral("Dive"));
    stage.connectDevice();
    benthor::simulator::Kd device(benthor::simulator::deviceDives());
    device.receive("M");
    stage.receive(device.advance(100));
    stage.tick("Timer2");
    stage.screen->resize(stage.screen->firstSize());
    QCoreApplication::processEvents();
    const auto* grid = stage.control<FlexGrid>("Mgrid");
    QCOMPARE(grid->rows(), 9);
    int width = 0;
    for (int col = 0; col < grid->cols(); ++col) {
        width += grid->columnWidth(col);
    }
    QVERIFY2(width <= grid->viewport()->width(),
             qPrintable(QStringLiteral("%1 of %2").arg(width).arg(grid->viewport()->width())));
}

void TestPcLink1Layout::theWaitCardSaysWhichDiveOfHowMany() {
    LinkStage stage(QStringLiteral("Dive"));
    stage.connectDevice();
    stage.receive(benthor::tests::directory());
    stage.tick("Timer2");
    stage.receive("PPPPPPPP");
    stage.tick("Timer1");
    stage.click("cmddownloadall");
    QStringList seen;
    for (int dive = 0; dive < 3; ++dive) {
        stage.receive("ver=V3.12 ");
        stage.tick("Timer3");
        QVERIFY(stage.control("diveplace")->isVisible());
        seen << stage.text("diveplace");
        stage.receive("End");
        stage.tick("Timer3");
    }
    QCOMPARE(seen, (QStringList{"Dive 1 of 3", "Dive 2 of 3", "Dive 3 of 3"}));
    QCOMPARE(stage.text("TXTWait(0)"), "Downloading\nPlease wait..\n");
}

void TestPcLink1Layout::theFirstSecondsOfASearchWarnOfNothing() {
    LinkStage stage(QStringLiteral("Dive"));
    stage.screen->showScreen();
    const auto* band = qobject_cast<benthor::look::NoticeBand*>(stage.control("Text14")->parentWidget());
    QVERIFY(band != nullptr);
    stage.tick("Timer1");
    stage.tick("Timer8");
    QVERIFY(stage.control("Text14")->isVisible());
    QVERIFY(band->isCalm());
    QVERIFY(stage.text("Text14").startsWith("The device is looked for"));
    QVERIFY(!stage.text("Text14").contains("Nothing is heard"));
    for (int tick = 0; tick < 12; ++tick) { // once round, and anew
        stage.tick("Timer8");
        QVERIFY(!band->isCalm());
        QVERIFY(stage.text("Text14").startsWith("Nothing is heard"));
    }
    stage.control<QAction>("mnuFindKD")->trigger();
    QVERIFY(band->isCalm());
}

QTEST_MAIN(TestPcLink1Layout)
#include "test_pc_link_1_layout.moc"
