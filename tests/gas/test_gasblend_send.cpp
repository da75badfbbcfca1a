// What leaves the gas screen, and what keeps it there.

#include "gas/screens/gasblend.h"
#include "platform/faultpoint.h"
#include "platform/look/look.h"
#include "tests/gas/gasstage.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTabWidget>
#include <QTableWidget>
#include <QWheelEvent>

using namespace benthor;
using namespace benthor::tests;

namespace {

/// Connected to a device that has reported its setup.
struct Connected : Stage {
    explicit Connected(const char* unit = "metre")
        : Stage(unit) {
        tick();
        process().deviceconnected = 1;
        screen->receiveSetup(stockFile().first(222));
        tick();
        link.asked.clear();
    }
    void update() { control<QPushButton>("Command1")->click(); }
    QString line(const char* band) {
        auto* widget = control(band);
        return widget->isHidden() ? QString() : widget->findChild<QLabel*>()->text();
    }
    qsizetype questions() const {
        return std::count_if(
            dialogs.asked().begin(), dialogs.asked().end(),
            [](const ScriptedDialogs::Asked& one) { return one.kind == QLatin1String("confirm"); });
    }
};

void turnWheel(QWidget* over) {
    const QPointF at = over->rect().center();
    QWheelEvent wheel(at, over->mapToGlobal(at), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(over, &wheel);
}

} // namespace

class TestGasBlendSend : public QObject {
    Q_OBJECT

private slots:
    void aWrongCellIsMarkedAndBarsTheUpdate();
    void theOtherFieldsFollowTheScreen();
    void aWrongCellBarsTheSave();
    void aCommaIsAPointInEveryBox();
    void heliumWithAPointMeetsTheToldGuard();
    void aScreenWithoutAnActiveGasSendsWhatItThenShows();
    void aBodyOfTheLinkBringsTheScreenForward();
    void theClosingSaysWhatItCouldNotKeep();
    void theClosingSaysThatAChangeOfUnitWaits();
    void theClosingKeepsTheLastChange();
    void aClosingThatCannotSaveSaysSo();
    void aReplyThatCannotBeWrittenIsTheToldError();

    void aSecondLookIsAskedOnceUntilSomethingChanges();
    void withoutADeviceNothingIsAsked();
    void theLineBesideUpdateShowsTheWarnings();
    void aDeviceOfTheThirdVersionHasItsLine();
    void whatAnotherDeviceReportedDoesNotSpeakForThisOne();
    void whatDidNotLeaveIsAskedAgain();
    void theChangesSayWhatGoesOut();

    void lettersInTheMaximumEndTheChangeOfUnits();
    void theStartingGasCanBeWrittenInto();
    void theWheelChangesNothingWithoutTheFocus();

    void anImportKeepsUpdatesAndSavesBack();
    void theClosingInAnImportKeepsWhatIsShown();
    void aDownloadLetsRefreshRest();
    void whatTheDeviceReplacedComesBack();
    void whatAnotherUnitReplacedComesBack();
    void aLowWindowHoldsEveryLine();
    void whatIsTheSameIsNotReplaced();
};

void TestGasBlendSend::aWrongCellIsMarkedAndBarsTheUpdate() {
    Connected stage;
    stage.type("Text3(0)", QStringLiteral("12m"));
    QVERIFY(!stage.control("Text3(0)")->property("wrong").toString().isEmpty());
    QVERIFY(stage.control("Text3(0)")->toolTip().contains(QLatin1String("12m")));
    QVERIFY(stage.control("Text3(1)")->property("wrong").toString().isEmpty());
    QVERIFY(stage.line("lookBand").contains(QLatin1String("Gas 0, MOD")));
    stage.update();
    QVERIFY(!stage.link.asked.contains(QStringLiteral("sendSetup")));
    QCOMPARE(stage.dialogs.messages().size(), 1);
    QVERIFY(stage.dialogs.messages().first().contains(QLatin1String("Gas 0, MOD: holds \"12m\"")));
    stage.type("Text3(0)", QStringLiteral("12"));
    QVERIFY(stage.control("Text3(0)")->property("wrong").toString().isEmpty());
    QCOMPARE(stage.line("lookBand"), "");
    stage.update();
    QCOMPARE(stage.link.sent.size(), 1);
    QCOMPARE(stage.link.sent.first().first(16), "A079 000 0120 1 ");
}

/// Gas 1 was shown with 50 per cent and 18 m, and left with 99 per cent and 4 m.
void TestGasBlendSend::theOtherFieldsFollowTheScreen() {
    Connected stage;
    for (const char* const active : {"Check1(1)", "Check1(6)"}) {
        stage.control<QCheckBox>(active)->click();
    }
    stage.type("Text3(6)", QString());
    stage.type("Text1(1)", QStringLiteral("50"));
    stage.type("Text3(1)", QStringLiteral("18"));
    stage.tick();
    QCOMPARE(stage.screen->plan().Text7.mid(16, 16), "B050 000 0180 1 ");
    QCOMPARE(stage.screen->plan().Text7.mid(16 * 6, 16), "G068 000 0330 1 ");
}

void TestGasBlendSend::aWrongCellBarsTheSave() {
    Connected stage;
    stage.type("sptext", QStringLiteral("1.3x"));
    stage.tick();
    stage.dialogs.answerFile(stage.folder.path("plan.mit"));
    stage.control<QAction>("mnuSave")->trigger();
    QVERIFY(!stage.folder.has("plan.mit"));
    QVERIFY(stage.dialogs.messages().last().contains(QLatin1String("PPO2 Set Point")));
}

void TestGasBlendSend::aCommaIsAPointInEveryBox() {
    Connected stage;
    stage.type("sptext", QStringLiteral("1,25"));
    QCOMPARE(stage.text("sptext"), "1.25");
    stage.type("Text5", QStringLiteral("1,6"));
    QCOMPARE(stage.text("Text5"), "1.6");
    QCOMPARE(stage.text("Text3(0)"), "66");
    stage.type("Text3(0)", QStringLiteral("40,5"));
    QCOMPARE(stage.text("Text3(0)"), "40.5");
    stage.type("Text4(0)", QStringLiteral("1,3"), true);
    QCOMPARE(stage.text("Text4(0)"), "1.30");
    stage.update();
    QCOMPARE(stage.link.sent.size(), 1);
    QCOMPARE(stage.link.sent.first().mid(184, 4), "P125");
    QCOMPARE(stage.link.sent.first().first(16), "A079 000 0405 1 ");
}

void TestGasBlendSend::heliumWithAPointMeetsTheToldGuard() {
    Connected stage;
    stage.type("Text2(0)", QStringLiteral("5.5"));
    stage.update();
    QCOMPARE(
        stage.dialogs.messages(),
        QStringList{"Bad data - probably caused by incompatible language version!\r\nNo data updated!.."});
    QVERIFY(stage.link.sent.isEmpty());
}

/// The tick that finds no active gas builds no block before it makes the starting gas active.
void TestGasBlendSend::aScreenWithoutAnActiveGasSendsWhatItThenShows() {
    Connected stage;
    stage.type("Text3(0)", QStringLiteral("40"));
    stage.control<QCheckBox>("Check1(0)")->click();
    stage.update();
    QCOMPARE(stage.link.sent.size(), 1);
    QCOMPARE(stage.link.sent.first().first(16), "A079 000 0400 1 ");
    QVERIFY(stage.control<QCheckBox>("Check1(0)")->isChecked());
}

void TestGasBlendSend::aBodyOfTheLinkBringsTheScreenForward() {
    Connected stage;
    stage.update();
    const QString body = stage.link.textToSend;
    QVERIFY(stage.screen->setupMayGo({body, false}));
    stage.type("Text3(0)", QStringLiteral("41"));
    QVERIFY(!stage.screen->setupMayGo({body, false}));
    QVERIFY(stage.dialogs.messages().last().contains(QLatin1String("Gas 0")));
    stage.screen->hide();
    stage.type("Text3(0)", QString());
    QVERIFY(!stage.screen->setupMayGo({body, false}));
    QVERIFY(stage.screen->isVisible());
    QVERIFY(stage.screen->setupMayGo({body, true})); // a file of its own
}

void TestGasBlendSend::theClosingSaysWhatItCouldNotKeep() {
    Connected stage;
    stage.type("ScreenSaveText", QStringLiteral("w"));
    stage.tick();
    stage.screen->close();
    QCOMPARE(stage.dialogs.messages().size(), 1);
    QVERIFY(stage.dialogs.messages().first().contains(QLatin1String("Screen Saver secs: holds \"w\"")));
    const QByteArray kept = stage.folder.get("gdatalast.mit");
    QCOMPARE(kept.size(), 226 + 2);
    QCOMPARE(kept.mid(208, 10), "V120 W030 ");
}

void TestGasBlendSend::theClosingSaysThatAChangeOfUnitWaits() {
    Connected stage("Feet");
    stage.control<QAction>("mnuFeet")->trigger();
    stage.tick();
    QCOMPARE(stage.screen->plan().Text7.mid(9, 4), "0564");
    stage.type("Text5", QStringLiteral("x"));
    stage.control<QAction>("mnuMeters")->trigger();
    stage.tick();
    QCOMPARE(stage.text("Text3(0)"), "181");
    stage.screen->close();
    QCOMPARE(stage.dialogs.messages().size(), 1);
    QVERIFY(stage.dialogs.messages().first().contains(QLatin1String("Max PPO2: holds \"x\"")));
    QCOMPARE(stage.folder.get("gdatalast.mit").mid(9, 4), "0564"); // and not 181 m
    QCOMPARE(stage.link.textToSend.mid(9, 4), "0564");
    QCOMPARE(process().uploadtext.mid(9, 4), "0564");
}

void TestGasBlendSend::theClosingKeepsTheLastChange() {
    Connected stage;
    stage.type("sptext", QStringLiteral("1.15")); // no tick comes any more
    stage.screen->close();
    QCOMPARE(stage.folder.get("gdatalast.mit").mid(184, 4), "P115");
    QCOMPARE(stage.link.textToSend.mid(184, 4), "P115");
    QCOMPARE(stage.dialogs.messages(), QStringList());
}

void TestGasBlendSend::aClosingThatCannotSaveSaysSo() {
    Connected stage;
    QVERIFY(QDir(stage.folder.root()).mkpath(QStringLiteral("gdatalast.mit/in the way")));
    stage.screen->close();
    QCOMPARE(stage.dialogs.messages().size(), 1);
    QVERIFY(stage.dialogs.messages().first().contains(QLatin1String("gdatalast.mit")));
}

/// The file holds another reply, which is not what the device sent.
void TestGasBlendSend::aReplyThatCannotBeWrittenIsTheToldError() {
    Connected stage;
    stage.screen->receiveSetup(stockFile().first(222).replace("P130", "P110"));
    stage.type("sptext", QStringLiteral("1.15"));
    const QString before = stage.text("sptext");
    {
        const platform::FaultInjection full(
            [](std::string_view step) { return step == "write" ? ENOSPC : 0; });
        stage.screen->receiveSetup(stockFile().first(222).replace("P130", "P070"));
    }
    QCOMPARE(stage.folder.get("gdatalastrec.mit").mid(184, 4), "P110"); // readable, and not read
    QCOMPARE(stage.dialogs.messages(), QStringList{"Error in file gdatalastrec.mit"});
    QCOMPARE(stage.text("sptext"), before);
    stage.update(); // it was not read
    QVERIFY(stage.dialogs.asked().last().text.contains(QLatin1String("have not been read")));
}

void TestGasBlendSend::aSecondLookIsAskedOnceUntilSomethingChanges() {
    Connected stage;
    stage.type("Text3(0)", QStringLiteral("66")); // 1.60
    stage.update();
    QCOMPARE(stage.questions(), 1);
    QVERIFY(stage.dialogs.asked().last().noIsDefault);
    QVERIFY(stage.dialogs.asked().last().text.contains(
        QLatin1String("Gas 0: PPO2 1.60 at its MOD 66 exceeds the Max PPO2 1.4")));
    QVERIFY(stage.link.sent.isEmpty()); // No
    stage.dialogs.answer(true);
    stage.update();
    QCOMPARE(stage.questions(), 2);
    QCOMPARE(stage.link.sent.size(), 1);
    stage.update();
    QCOMPARE(stage.questions(), 2);
    QCOMPARE(stage.link.sent.size(), 2);
    stage.type("Text3(0)", QStringLiteral("67"));
    stage.update();
    QCOMPARE(stage.questions(), 3);
    QCOMPARE(stage.link.sent.size(), 2);
    QCOMPARE(stage.dialogs.messages(), QStringList());
}

void TestGasBlendSend::withoutADeviceNothingIsAsked() {
    Connected stage;
    process().deviceconnected = 0;
    stage.type("Text3(0)", QStringLiteral("66"));
    stage.update();
    QCOMPARE(stage.questions(), 0);
    QCOMPARE(stage.dialogs.messages(),
             QStringList{"KD/Tolby not connected!\r\nSave to file using File menu.."});
    QCOMPARE(stage.line("lookBand"), "");
}

void TestGasBlendSend::theLineBesideUpdateShowsTheWarnings() {
    Connected stage;
    QCOMPARE(stage.line("lookBand"), "");
    auto* tabs = stage.control<QTabWidget>("");
    QVERIFY(!tabs->tabText(2).contains(u'!'));
    stage.type("Text3(0)", QStringLiteral("66"));
    stage.type("sptext", QStringLiteral("0.30"));
    QVERIFY(stage.line("lookBand").startsWith(QLatin1String("Gas 0: PPO2 1.60")));
    QVERIFY(stage.line("lookBand").endsWith(QLatin1String("(and 1 more)")));
    QVERIFY(stage.control("lookBand")->toolTip().contains(QLatin1String("PPO2 Set Point")));
    // Tool tips are plain text: neither markup nor its escapes belong there.
    QVERIFY(!stage.control("lookBand")->toolTip().contains(QLatin1String("<br>")));
    QVERIFY(!stage.control("lookBand")->toolTip().contains(QLatin1String("&lt;")));
    QCOMPARE(tabs->tabText(2), "Changes (2) !");
}

void TestGasBlendSend::aDeviceOfTheThirdVersionHasItsLine() {
    Connected stage;
    stage.link.hides = true;
    stage.tick();
    QVERIFY(stage.line("lookBand").contains(QLatin1String("cannot be read")));
    stage.update();
    QCOMPARE(stage.questions(), 0);
    QCOMPARE(stage.link.sent.size(), 1);
    stage.type("sptext", QStringLiteral("0.30")); // a warning does not push it away
    QVERIFY(stage.line("lookBand").startsWith(QLatin1String("PPO2 Set Point")));
    QVERIFY(stage.line("lookBand").endsWith(QLatin1String("(and 1 more)")));
    QVERIFY(stage.control("lookBand")->toolTip().contains(QLatin1String("cannot be read")));
}

/// Another device at the same desk: its directory has come, its setup has not.
void TestGasBlendSend::whatAnotherDeviceReportedDoesNotSpeakForThisOne() {
    Connected stage;
    stage.update();
    QCOMPARE(stage.questions(), 0);
    stage.link.owes = true;
    stage.tick();
    QVERIFY(stage.line("lookBand").contains(QLatin1String("have not been read")));
    stage.update();
    QCOMPARE(stage.questions(), 1);
    stage.link.owes = false; // a run ended the wait, and nothing came
    stage.tick();
    stage.update();
    QCOMPARE(stage.questions(), 2);
    stage.screen->receiveSetup(stockFile().first(222));
    stage.tick();
    QCOMPARE(stage.line("lookBand"), "");
}

/// A setup that did not leave was not agreed to for the next time.
void TestGasBlendSend::whatDidNotLeaveIsAskedAgain() {
    Connected stage;
    stage.type("sptext", QStringLiteral("0.30"));
    stage.link.leaves = false;
    for (int times = 1; times <= 2; ++times) {
        stage.dialogs.answer(true);
        stage.update();
        QCOMPARE(stage.questions(), times);
    }
    stage.link.leaves = true;
    stage.dialogs.answer(true);
    stage.update();
    QCOMPARE(stage.questions(), 3);
    stage.update();
    QCOMPARE(stage.questions(), 3);
}

void TestGasBlendSend::theChangesSayWhatGoesOut() {
    Connected stage;
    auto* table = stage.control<QTableWidget>("");
    stage.type("sptext", QStringLiteral("1.15")); // no tick between
    QCOMPARE(table->rowCount(), 1);
    QCOMPARE(table->item(0, 2)->text(), "1.15 bar");
    stage.type("Text3(0)", QString());
    QCOMPARE(table->rowCount(), 0); // nothing goes out
}

void TestGasBlendSend::lettersInTheMaximumEndTheChangeOfUnits() {
    Connected stage;
    stage.type("Text5", QStringLiteral("1.4x"));
    stage.control<QAction>("mnuFeet")->trigger();
    QCOMPARE(process().depthunit, "Feet");
    QVERIFY(stage.control<QAction>("mnuFeet")->isChecked());
    QCOMPARE(stage.label("Label4(0)"), "MODm");
    QVERIFY(!stage.control("List1(2)")->isHidden() && stage.control("List1(3)")->isHidden());
    QVERIFY(!stage.control("Label16(0)")->isHidden() && stage.control("Label16(1)")->isHidden());
    QCOMPARE(stage.text("Text3(0)"), "56");
    stage.update(); // metres would leave as feet
    QVERIFY(stage.link.sent.isEmpty());
    QVERIFY(stage.dialogs.messages().last().contains(QLatin1String("Max PPO2")));
    stage.type("Text5", QStringLiteral("1.4"));
    QCOMPARE(stage.label("Label4(0)"), "MODft");
    QCOMPARE(stage.text("Text3(0)"), "181");
}

void TestGasBlendSend::theStartingGasCanBeWrittenInto() {
    Connected stage;
    stage.control<QRadioButton>("Option1(6)")->click();
    QVERIFY(!stage.control("Text1(6)")->isEnabled());
    stage.tick();
    QVERIFY(stage.control<QCheckBox>("Check1(6)")->isChecked());
    for (const char* const name : {"Text1(6)", "Text2(6)", "Text3(6)"}) {
        QVERIFY(stage.control(name)->isEnabled());
    }
}

void TestGasBlendSend::theWheelChangesNothingWithoutTheFocus() {
    Connected stage;
    stage.screen->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(stage.screen.data()));
    stage.control("Text1(0)")->setFocus();
    for (int index = 0; index < 6; ++index) {
        auto* list = stage.control<QComboBox>(qPrintable(QStringLiteral("List1(%1)").arg(index)));
        const int before = list->currentIndex();
        turnWheel(list);
        QCOMPARE(list->currentIndex(), before);
        QVERIFY(!list->hasFocus());
    }
    QTest::mouseClick(stage.control("Label1(7)"), Qt::LeftButton);
    turnWheel(stage.control("Slider1(0)"));
    QCOMPARE(stage.text("Text1(7)"), "18");
    auto* backlight = stage.control<QComboBox>("List1(0)");
    backlight->setFocus();
    backlight->setCurrentIndex(1);
    turnWheel(backlight);
    QCOMPARE(backlight->currentIndex(), 2);
}

void TestGasBlendSend::anImportKeepsUpdatesAndSavesBack() {
    Connected stage;
    QVERIFY(stage.screen->setupMayGo({stage.screen->plan().Text7, false}));
    process().importing = true;
    QVERIFY(!stage.screen->setupMayGo({stage.screen->plan().Text7, false}));
    QVERIFY(stage.dialogs.messages().last().contains(QLatin1String("import")));
    stage.dialogs.clear();
    stage.type("sptext", QStringLiteral("1.15"));
    stage.update();
    stage.dialogs.answerFile(stage.folder.path("plan.mit"));
    stage.control<QAction>("mnuSave")->trigger();
    QCOMPARE(stage.dialogs.messages().size(), 2);
    for (const QString& word : stage.dialogs.messages()) {
        QVERIFY(word.contains(QLatin1String("import")));
    }
    QVERIFY(stage.link.asked.isEmpty());
    QVERIFY(!stage.folder.has("plan.mit"));
    QVERIFY(!stage.screen->setupMayGo({stage.screen->plan().Text7, false}));
    process().importing = false;
    stage.update();
    QCOMPARE(stage.link.sent.size(), 1);
    QCOMPARE(stage.link.sent.first().mid(184, 4), "P115");
}

void TestGasBlendSend::theClosingInAnImportKeepsWhatIsShown() {
    Connected stage;
    process().importing = true;
    stage.type("sptext", QStringLiteral("1.15"));
    stage.type("Text3(0)", QStringLiteral("40"));
    stage.tick();
    stage.screen->close();
    QCOMPARE(stage.folder.get("gdatalast.mit").mid(184, 4), "P115");
    QCOMPARE(stage.folder.get("gdatalast.mit").first(16), "A079 000 0400 1 ");
    QCOMPARE(process().uploadtext.first(16), "A079 000 0400 1 ");
}

void TestGasBlendSend::aDownloadLetsRefreshRest() {
    Connected stage;
    stage.link.downloading = true;
    for (const char* const name : {"Picture1", "Label15"}) {
        QTest::mouseClick(stage.control(name), Qt::LeftButton);
    }
    QCOMPARE(stage.link.asked, QStringList());
    stage.tick();
    QVERIFY(!stage.control("Picture1")->isEnabled() && !stage.control("Label15")->isEnabled());
    stage.link.downloading = false;
    stage.tick();
    QTest::mouseClick(stage.control("Label15"), Qt::LeftButton);
    QCOMPARE(stage.link.asked, QStringList{"refreshDirectory"});
}

void TestGasBlendSend::whatTheDeviceReplacedComesBack() {
    Connected stage;
    auto* back = stage.control<QAction>("bringBackTyped");
    QVERIFY(!back->isEnabled());
    stage.type("Text3(0)", QStringLiteral("41"));
    stage.type("sptext", QStringLiteral("1.15"));
    stage.screen->receiveSetup(stockFile().first(222));
    QCOMPARE(stage.text("Text3(0)"), "56");
    QVERIFY(stage.line("replacedBand").contains(QLatin1String("the setup that the device sent")));
    QVERIFY(back->isEnabled());
    // Nothing was typed since, though this is another setup.
    stage.screen->receiveSetup(stockFile().first(222).replace("P130", "P070"));
    back->trigger();
    QCOMPARE(stage.text("Text3(0)"), "41");
    QCOMPARE(stage.text("sptext"), "1.15");
    QVERIFY(!back->isEnabled());
    QCOMPARE(stage.line("replacedBand"), "");
    stage.update();
    QCOMPARE(stage.link.sent.first().first(16), "A079 000 0410 1 ");
}

/// With both lines the screen still fits a small display, and no row of a gas is squashed.
void TestGasBlendSend::aLowWindowHoldsEveryLine() {
    Connected stage;
    stage.control<QTabWidget>("")->setCurrentIndex(2);
    const int high = stage.control<QLineEdit>("Text1(0)")->height();
    stage.type("Text3(0)", QStringLiteral("41"));
    process().depthunit = QStringLiteral("Feet");
    stage.tick();
    stage.type("Text3(0)", QStringLiteral("12m"));
    stage.tick();
    QVERIFY(!stage.line("replacedBand").isEmpty() && !stage.line("lookBand").isEmpty());
    stage.screen->resize(1024, 700);
    QTest::qWait(0);
    QCOMPARE(stage.screen->size(), QSize(1024, 700));
    QCOMPARE(stage.control<QLineEdit>("Text1(0)")->height(), high);
}

/// A dive that is opened, an export, the main screen's menu: each sets the unit for all.
void TestGasBlendSend::whatAnotherUnitReplacedComesBack() {
    Connected stage;
    stage.type("Text3(0)", QStringLiteral("41"));
    process().depthunit = QStringLiteral("Feet");
    stage.tick();
    QCOMPARE(stage.text("Text3(0)"), "181");
    QVERIFY(stage.line("replacedBand").contains(QLatin1String("unit")));
    stage.control<QAction>("bringBackTyped")->trigger();
    QCOMPARE(stage.text("Text3(0)"), "41");
    QCOMPARE(stage.label("Label4(0)"), "MODm");
    QCOMPARE(process().depthunit, "metre");
    stage.tick();
    QCOMPARE(stage.text("Text3(0)"), "41");
    QCOMPARE(stage.screen->plan().Text7.first(16), "A079 000 0410 1 ");
    QCOMPARE(stage.screen->plan().Text7.mid(195, 2), "S1");
}

/// What the device reports behind an update is what it was sent.
void TestGasBlendSend::whatIsTheSameIsNotReplaced() {
    Connected stage;
    stage.type("Text3(0)", QStringLiteral("41"));
    stage.update();
    stage.screen->receiveSetup(stage.link.sent.first().first(222).toLatin1());
    QVERIFY(!stage.control<QAction>("bringBackTyped")->isEnabled());
    QCOMPARE(stage.line("replacedBand"), "");
}

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    application.setQuitOnLastWindowClosed(false);
    look::apply(application);
    TestGasBlendSend test;
    return QTest::qExec(&test, argc, argv);
}
#include "test_gasblend_send.moc"
