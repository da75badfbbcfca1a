#include "platform/look/widgets/numberlabel.h"
#include "platform/look/widgets/status.h"
#include "platform/screen/toldqcolor.h"
#include "tests/link/linkstage.h"

#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QSignalSpy>

using benthor::process;
using benthor::link::PC_Link_1;
using benthor::look::NumberLabel;
using benthor::platform::FlexGrid;
using benthor::platform::toQColor;
using benthor::tests::directory;
using benthor::tests::LinkStage;

class TestPcLink1 : public QObject {
    Q_OBJECT

private slots:
    // showing
    void aFoundDeviceIsShownAsConnected();
    void aHiddenStartAsksForNothingAndSearches();
    void theHintBoxTellsTheRightsHint();
    void theDirectoryIsShownWithItsColumnsAndHeights();
    void aPlainClickPaintsTheRowBlue();
    void spacePaintsTheCurrentRowBlue();
    void theRawTextGrowsByWhatCame();
    void detailsOffHidesTheRawTexts();
    void advancedOptionShowsTheExpertFields();
    void advancedOptionSwitchedOffHidesTheFreeChoiceAndTheFilesCaption();
    void theHudFrameIsToggledByTheMenu();
    void aMenuEntryChecksItselfAlone();
    void anIntervalTypedLeavesAsItIs();
    void anIntervalNotYetReadIsPaintedAsADash();
    void anIntervalTypedBehindItsMenuEntryGoesWithSend();
    void theMenuAloneWritesTheCaptionOfSend();
    void whatSendSendsStandsAboveIt();
    void aSeriesNameTypedIsTakenAndHinted();
    void savingToTheDatabaseAsksForTheImport();

    // life
    void ticksEndWithTheScreen();
    void aCloseDuringTheWaitForAReplyEndsIt();
    void anEmptyPortLeavesTheRememberedOne();
};

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

void TestPcLink1::advancedOptionSwitchedOffHidesTheFreeChoiceAndTheFilesCaption() {
    LinkStage stage(QStringLiteral("Command"));
    stage.screen->showScreen();
    auto* advanced = stage.control<QAction>("mnuAdvancedOption");
    stage.control<QAction>("mnuOther")->trigger();
    QVERIFY(stage.control("Option1(9)")->isVisible());
    advanced->trigger();
    QVERIFY(stage.control("filecaption")->isVisible());
    advanced->trigger();
    QVERIFY(!stage.control("Option1(9)")->isVisible());
    QVERIFY(!stage.control("filecaption")->isVisible());
    QVERIFY(stage.control("Text5")->isVisible());
    QVERIFY(stage.screen->state().console.Text5.visible); // its body still goes out
    stage.control<QAction>("mnuLogo")->trigger();
    QVERIFY(stage.control("filecaption")->isVisible());
    stage.control<QAction>("mnuOther")->trigger();
    QVERIFY(stage.control("Option1(9)")->isVisible());
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

void TestPcLink1::anIntervalNotYetReadIsPaintedAsADash() {
    LinkStage stage(QStringLiteral("Command"));
    stage.screen->showScreen();
    auto* box = stage.control<NumberLabel>("Text16(1)");
    const auto painted = [&](const QString& text, bool known) {
        QCOMPARE(box->text(), text);
        QCOMPARE(box->standIn().number, known ? "" : "–");
        QCOMPARE(box->standIn().unit, known ? "" : "not read yet");
    };
    painted(QString(), false);
    process().deviceconnected = 1;
    stage.connectDevice();
    stage.receive(directory());
    stage.tick("Timer2");
    for (int tick = 2; tick <= 10; ++tick) {
        stage.receive("PPPPPPPP");
        stage.tick("Timer1");
        painted(tick < 10 ? QStringLiteral("0.%1").arg(tick) : QStringLiteral("1"), tick == 10);
    }
    stage.control<QAction>("mnuIntget")->trigger();
    stage.click("Label19(1)");
    stage.receive("r00010");
    stage.tick("Timer1");
    painted(QStringLiteral("10"), true);
}

void TestPcLink1::anIntervalTypedBehindItsMenuEntryGoesWithSend() {
    LinkStage stage(QStringLiteral("Command"));
    stage.connectDevice();
    stage.control<QAction>("mnuIntSend")->trigger();
    auto* value = stage.control<QLineEdit>("Text16(0)");
    value->setFocus();
    value->selectAll();
    QTest::keyClicks(value, QStringLiteral("20"));
    stage.working->onPoll = [&stage] { stage.working->waiting = "s"; };
    stage.working->sent.clear();
    stage.click("Command2");
    QCOMPARE(stage.working->sent, QByteArray("S020F\r\n"));
}

/// Behind "Interval Send" the fields of a book, or of Quit, stood once.
void TestPcLink1::theMenuAloneWritesTheCaptionOfSend() {
    LinkStage stage(QStringLiteral("Command"));
    stage.connectDevice();
    stage.control<QAction>("mnuBookUp")->trigger();
    stage.click("Picture14(2)");
    QCOMPARE(stage.text("Command2"), "Book Send");
    QVERIFY(!stage.control("Command2")->isVisible());
    stage.click("Label19(6)");
    QCOMPARE(stage.text("Command2"), "Book Send");
    QVERIFY(stage.control("Command2")->isVisible());
    stage.control<QAction>("mnuQuitKD")->trigger();
    QCOMPARE(stage.text("Command2"), "Quit KD");
    stage.click("Label19(8)");
    QCOMPARE(stage.text("Command2"), "Quit KD");
}

void TestPcLink1::whatSendSendsStandsAboveIt() {
    LinkStage stage(QStringLiteral("Command"));
    stage.connectDevice();
    const auto goes = [&stage] { return stage.text("whatGoes"); };
    stage.control<QAction>("mnuQuitKD")->trigger();
    QCOMPARE(goes(), "Sends Q");
    stage.control<QAction>("mnuIntSend")->trigger();
    QCOMPARE(goes(), "Sends S005F↵");
    auto* value = stage.control<QLineEdit>("Text16(0)");
    value->setFocus();
    value->selectAll();
    QTest::keyClicks(value, QStringLiteral("20"));
    QCOMPARE(goes(), "Sends S020F↵");
    QTest::keyClicks(value, QStringLiteral("00"));
    QCOMPARE(goes(), "Sends nothing: at most 3 digits");
    stage.click("Label19(6)");
    QCOMPARE(goes(), "Sends nothing: open a file first");
    stage.folder.put("<b>book.txt", "a book");
    stage.dialogs.answerFile(stage.folder.path("<b>book.txt"));
    stage.control<QAction>("mnuOpen")->trigger();
    QCOMPARE(goes(), "Sends B, then <b>book.txt");
    QCOMPARE(stage.control<QLabel>("whatGoes")->textFormat(), Qt::PlainText);
    stage.control<QAction>("mnuGasUp")->trigger();
    QCOMPARE(goes(), "Sends the setup of the gas screen");
    stage.control<QAction>("mnuPersSend")->trigger();
    QVERIFY(goes().startsWith("Sends A^Insert your"));
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
