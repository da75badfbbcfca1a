#include "gas/gascalc.h"
#include "gas/screens/gasblend.h"
#include "gas/screens/numberbox.h"
#include "platform/look/look.h"
#include "platform/look/widgets/clickablelabel.h"
#include "platform/screen/ticktimer.h"
#include "platform/screen/toldqcolor.h"
#include "session/process.h"
#include "tests/gas/gasstage.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QStyleOptionButton>
#include <QTabWidget>
#include <QTableWidget>
#include <QtTest>

using namespace benthor;
using namespace benthor::gas;
using namespace benthor::tests;

namespace {

QColor told(platform::ToldColour colour) {
    return platform::toQColor(colour);
}

} // namespace

class TestGasBlend : public QObject {
    Q_OBJECT

private slots:
    void controlsAreThereByName_data();
    void controlsAreThereByName();
    void captionsAndToolTipsAreAsTold();
    void listsHoldTheirItems();
    void theTimerBeatsEachSecond();
    void theScreenOpensAtItsOwnPlace();
    void theFirstStartShowsDefaults();

    void typingMovesTheOtherCells();
    void aPpo2IsTakenWhenItIsFinished();
    void lettersAreRefused();
    void coloursAreThoseOfTheCells();
    void anActiveBoxEnablesItsCells();
    void aStartingGasIsChosenAndFollowed();
    void steppersAndSliders();
    void aGasIsTakenInHandByItsName();
    void theMaximumMovesEveryDepth();

    void unitsChangeHeadsListsAndReadings();
    void aListIsInTheTextWithoutDelay();
    void theDiveGasListFollowsTheStart();
    void lastStopIsOneValueInTwoLists();
    void aHiddenScreenWritesNoText();

    void theDebugTextsStandToTheRight();
    void refreshAsksTheLink();
    void updateShowsTheLinkAndSends();
    void filesAreOpenedAndSaved();
    void aSavedPlanGetsItsEndingAndReplacesNoneUnasked();
    void cancelledDialogsChangeNothing();
    void exitLeadsToTheLink();
    void closingKeepsTheText();
    void readingsAreShownInTheUnitInForce();
    void changesAreCountedAgainstTheDevice();
    void theEdgesOfOneRowStandOffThoseOfTheNext();
    void everySettingEndsAtOneEdge();
    void aWrongBoxShowsTheKeyboard();
};

void TestGasBlend::controlsAreThereByName_data() {
    QTest::addColumn<QString>("name");
    QStringList names{"Text5",    "sptext",      "ScreenSaveText", "HomeText",    "Label4(0)", "Label12(1)",
                      "Label7",   "Label14",     "Label15",        "Label20",     "Label22",   "Picture1",
                      "Command1", "Command2",    "Frame2",         "Text6",       "Text7",     "Text8(0)",
                      "Text8(1)", "lblgasgraph", "Slider1(0)",     "Slider1(1)",  "Timer5",    "mnuOpen",
                      "mnuSave",  "mnuExit",     "mnuDebug",       "mnuDebugOff", "mnuMeters", "mnuFeet"};
    for (const auto& [name, count] : {std::pair{"Label1", 10},
                                      {"Text1", 10},
                                      {"Text2", 10},
                                      {"Text3", 10},
                                      {"Text4", 10},
                                      {"Check1", 10},
                                      {"Option1", 10},
                                      {"lblEan", 10},
                                      {"List1", 6},
                                      {"Check2", 4},
                                      {"Command3", 5},
                                      {"Command4", 5},
                                      {"Label11", 15},
                                      {"Label13", 15},
                                      {"Text15", 15},
                                      {"Label16", 31}}) {
        for (int index = 0; index < count; ++index) {
            names += QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(index);
        }
    }
    for (const QString& name : std::as_const(names)) {
        QTest::newRow(qPrintable(name)) << name;
    }
}

void TestGasBlend::controlsAreThereByName() {
    QFETCH(QString, name);
    static Stage* stage = new Stage; // one screen for the whole list
    QCOMPARE(stage->screen->findChildren<QObject*>(name).size(), 1);
    if (name == QLatin1String("Label16(30)")) {
        delete stage;
    }
}

void TestGasBlend::captionsAndToolTipsAreAsTold() {
    Stage stage;
    QCOMPARE(stage.screen->windowTitle(), "Gas and System Settings");
    QCOMPARE(stage.label("Label1(3)"), "Gas 3");
    QCOMPARE(stage.label("Label4(0)"), "MODm");
    QCOMPARE(stage.label("Label15"), "Refesh");
    QCOMPARE(stage.control<QPushButton>("Command1")->text(), "Update KD/Tolby");
    QCOMPARE(stage.control<QPushButton>("Command2")->text(), "Command2");
    QCOMPARE(stage.control("Picture1")->toolTip(), "Refresh display if connected to KD/Tolby");
    QCOMPARE(stage.control("Text1(0)")->toolTip(), "Enter percentage of each gas component");
    QCOMPARE(stage.control("Text2(0)")->toolTip(), "Enter percentage of each gas component");
    QCOMPARE(stage.control("Text4(0)")->toolTip(), "Partial Pressure of oxygen at MOD");
    QCOMPARE(stage.control("lblEan(0)")->toolTip(), "Equivalent Air Narcossis depth");
    QCOMPARE(stage.control("Option1(0)")->toolTip(), "Select gas used to start dive with");
    QVERIFY(stage.control("Check1(0)")
                ->toolTip()
                .startsWith(QLatin1String("Select gases to be used on this dive. Allselected gasses will be "
                                          "used in decompression look ahead, ")));
    QCOMPARE(stage.control("Text5")->toolTip(),
             "Maximum PPO2 for each gas. Change to force MODs to revised PPO2");
    QCOMPARE(stage.label("Label11(0)"), "K");
    QCOMPARE(stage.label("Label13(0)"), "10");
    QCOMPARE(stage.label("Label11(14)"), "Y");
}

void TestGasBlend::listsHoldTheirItems() {
    Stage stage;
    const auto items = [&stage](const char* name) {
        QStringList texts;
        auto* box = stage.control<QComboBox>(name);
        for (int i = 0; i < box->count(); ++i) {
            texts += box->itemText(i);
        }
        return texts.join(QLatin1Char('|'));
    };
    QCOMPARE(items("List1(0)"), "Off|DTimed|Timed|On|DOn");
    QCOMPARE(items("List1(1)"), "Air|1|2|3|4|5|6|7|8|9");
    QCOMPARE(items("List1(2)"), "3m|6m|4.5m");
    QCOMPARE(items("List1(3)"), "10ft|20ft|15ft");
    QCOMPARE(items("List1(4)"), "80%|90%|100%|110%|120%|130%|140%");
    QCOMPARE(items("List1(5)"), "0%|10%|20%|30%|40%|50%");
}

void TestGasBlend::theTimerBeatsEachSecond() {
    Stage stage;
    QCOMPARE(stage.control<platform::TickTimer>("Timer5")->interval(), 1000);
    QVERIFY(stage.control<platform::TickTimer>("Timer5")->isEnabled());
}

/// 2955 and 760 twips from the display's corner, whatever the user did with it before; but never off the
/// display.
void TestGasBlend::theScreenOpensAtItsOwnPlace() {
    const TestSettings settings;
    const TestFolder folder;
    FakeLink link;
    for (int run = 0; run < 2; ++run) {
        GasBlend screen(link);
        screen.showScreen();
        const QRect display = screen.screen()->availableGeometry();
        QVERIFY(std::abs(screen.x() - std::min(197, display.right() + 1 - screen.width())) <= 4);
        QVERIFY(std::abs(screen.y() - std::min(51, display.bottom() + 1 - screen.height())) <= 4);
        screen.move(0, 0);
        screen.unload();
    }
}

void TestGasBlend::theFirstStartShowsDefaults() {
    Stage stage;
    QCOMPARE(stage.text("Text1(0)"), "21");
    QCOMPARE(stage.text("Text3(0)"), "56");
    QCOMPARE(stage.text("Text4(0)"), "1.39");
    QCOMPARE(stage.text("Text2(9)"), "65");
    QVERIFY(stage.control<QCheckBox>("Check1(0)")->isChecked());
    QVERIFY(!stage.control<QCheckBox>("Check1(1)")->isChecked());
    QVERIFY(stage.control<QRadioButton>("Option1(0)")->isChecked());
    QVERIFY(!stage.control("Text1(1)")->isEnabled());
    QCOMPARE(stage.text("Text5"), "1.4");
    QCOMPARE(stage.text("sptext"), "1.40");
    QCOMPARE(stage.text("ScreenSaveText"), "120");
    QCOMPARE(stage.text("HomeText"), "30");
    QCOMPARE(stage.label("Label22"), "TYPE");
    QCOMPARE(stage.label("Label20"), "TIME");
    QCOMPARE(stage.label("lblgasgraph"), "G\nA\nS\n0");
}

void TestGasBlend::typingMovesTheOtherCells() {
    Stage stage;
    stage.control<QCheckBox>("Check1(7)")->click();
    stage.type("Text1(7)", QStringLiteral("20"));
    QCOMPARE(stage.text("Text4(7)"), "1.54"); // at 67 m
    QCOMPARE(stage.label("lblEan(7)"), "33");
    stage.type("Text2(7)", QStringLiteral("81"));
    QCOMPARE(stage.text("Text2(7)"), "0"); // helium gives way
    stage.type("Text3(7)", QStringLiteral("60"));
    QCOMPARE(stage.text("Text4(7)"), "1.40");
    QCOMPARE(stage.dialogs.messages(), QStringList());
}

void TestGasBlend::aPpo2IsTakenWhenItIsFinished() {
    Stage stage;
    stage.type("Text4(0)", QStringLiteral("1.3"));
    QCOMPARE(stage.text("Text4(0)"), "1.3");
    QTest::keyClick(stage.control("Text4(0)"), Qt::Key_Return);
    QCOMPARE(stage.text("Text4(0)"), "1.30");
    stage.type("Text4(0)", QStringLiteral(".5"), true);
    QCOMPARE(stage.text("Text4(0)"), ".50");
}

void TestGasBlend::lettersAreRefused() {
    Stage stage;
    stage.type("Text1(0)", QStringLiteral("x"));
    QCOMPARE(stage.dialogs.messages(), QStringList{"Enter numbers only!"});
    QCOMPARE(stage.text("Text1(0)"), "0");
    stage.type("Text5", QStringLiteral("3"));
    QCOMPARE(stage.dialogs.messages().last(), "enter number less than 2.0");
}

void TestGasBlend::coloursAreThoseOfTheCells() {
    Stage stage;
    QCOMPARE(stage.ground("Text1(0)"), told(kLightCyan));
    QCOMPARE(stage.ground("Text2(0)"), told(kLightCyan));
    stage.control<QCheckBox>("Check1(7)")->click();
    stage.type("Text2(7)", QStringLiteral("30"));
    QCOMPARE(stage.ground("Text2(7)"), told(kLightYellow));
    stage.type("Text3(7)", QStringLiteral("200"));
    QCOMPARE(stage.ground("Text3(7)"), QColor(Qt::red));
    QCOMPARE(stage.ground("Text4(7)"), QColor(Qt::red));
}

void TestGasBlend::anActiveBoxEnablesItsCells() {
    Stage stage;
    stage.control<QCheckBox>("Check1(4)")->click();
    for (const char* const name : {"Text1(4)", "Text2(4)", "Text3(4)"}) {
        QVERIFY(stage.control(name)->isEnabled());
    }
    stage.control<QCheckBox>("Check1(4)")->click();
    for (const char* const name : {"Text1(4)", "Text2(4)", "Text3(4)"}) {
        QVERIFY(!stage.control(name)->isEnabled());
    }
}

void TestGasBlend::aStartingGasIsChosenAndFollowed() {
    Stage stage;
    stage.control<QRadioButton>("Option1(6)")->click();
    QCOMPARE(stage.screen->plan().start, 6);
    QCOMPARE(stage.label("lblgasgraph"), "G\nA\nS\n6");
    QVERIFY(!stage.control<QCheckBox>("Check1(6)")->isChecked());
    stage.control<platform::TickTimer>("Timer5")->expire();
    QVERIFY(stage.control<QCheckBox>("Check1(6)")->isChecked());
    QCOMPARE(stage.control<QComboBox>("List1(1)")->currentText(), "6");
}

void TestGasBlend::steppersAndSliders() {
    Stage stage;
    for (int i = 0; i < 8; ++i) {
        stage.control<QPushButton>("Command3(0)")->click();
    }
    QCOMPARE(stage.text("sptext"), "1.60");
    stage.control<QPushButton>("Command4(1)")->click();
    QCOMPARE(stage.text("ScreenSaveText"), "90");
    stage.control<QPushButton>("Command4(2)")->click();
    stage.control<QPushButton>("Command4(2)")->click();
    QCOMPARE(stage.text("HomeText"), "000");
    QVERIFY(!stage.control("Command3(3)")->isEnabled()); // air has no steppers
    stage.control<QCheckBox>("Check1(8)")->click();
    stage.control<QPushButton>("Command3(3)")->click();
    QCOMPARE(stage.text("Text1(8)"), "15");
    stage.control<QPushButton>("Command4(4)")->click();
    QCOMPARE(stage.text("Text2(8)"), "49");
    stage.control<QSlider>("Slider1(1)")->setValue(60);
    QCOMPARE(stage.text("Text2(8)"), "60");
    stage.control<QSlider>("Slider1(0)")->setValue(30);
    QCOMPARE(stage.text("Text1(8)"), "30");
}

void TestGasBlend::aGasIsTakenInHandByItsName() {
    Stage stage;
    QTest::mouseClick(stage.control("Label1(9)"), Qt::LeftButton);
    QCOMPARE(stage.screen->plan().currentgasrow, 9);
    QCOMPARE(stage.control<QTabWidget>("")->tabText(0), "Gas 9");
}

void TestGasBlend::theMaximumMovesEveryDepth() {
    Stage stage;
    stage.type("Text5", QStringLiteral("1.6"));
    QCOMPARE(stage.text("Text3(0)"), "66");
    QCOMPARE(stage.text("Text3(9)"), "135");
    QCOMPARE(stage.text("Text4(0)"), "1.60");
}

void TestGasBlend::unitsChangeHeadsListsAndReadings() {
    Stage stage;
    stage.control<QAction>("mnuFeet")->trigger();
    QCOMPARE(process().depthunit, "Feet");
    QCOMPARE(stage.label("Label4(0)"), "MODft");
    QCOMPARE(stage.text("Text3(0)"), "181");
    QVERIFY(stage.control("List1(2)")->isHidden() && !stage.control("List1(3)")->isHidden());
    const std::array<const char*, 6> metric{"Label16(0)",  "Label16(5)",  "Label16(7)",
                                            "Label16(11)", "Label16(13)", "Label16(19)"};
    const std::array<const char*, 6> imperial{"Label16(1)",  "Label16(6)",  "Label16(8)",
                                              "Label16(12)", "Label16(14)", "Label16(20)"};
    for (size_t i = 0; i < metric.size(); ++i) {
        QVERIFY(stage.control(metric[i])->isHidden());
        QVERIFY(!stage.control(imperial[i])->isHidden());
    }
    QVERIFY(stage.control<QAction>("mnuFeet")->isChecked() &&
            !stage.control<QAction>("mnuMeters")->isChecked());
    stage.control<platform::TickTimer>("Timer5")->expire();
    QCOMPARE(stage.label("Label12(1)"), "Feet");
    stage.control<QAction>("mnuMeters")->trigger();
    QCOMPARE(process().depthunit, "metre");
    QCOMPARE(stage.label("Label4(0)"), "MODm");
    QVERIFY(!stage.control("Label16(0)")->isHidden() && stage.control("Label16(1)")->isHidden());
}

void TestGasBlend::aListIsInTheTextWithoutDelay() {
    Stage stage;
    auto* backlight = stage.control<QComboBox>("List1(0)");
    backlight->setCurrentIndex(4);
    emit backlight->activated(4);
    QCOMPARE(stage.screen->plan().Text7.mid(175, 2), "M4");
}

void TestGasBlend::theDiveGasListFollowsTheStart() {
    Stage stage;
    auto* gas = stage.control<QComboBox>("List1(1)");
    gas->setCurrentIndex(5);
    emit gas->activated(5);
    QCOMPARE(gas->currentIndex(), 0); // it only follows
    QCOMPARE(stage.screen->plan().Text7.mid(172, 2), "L0");
}

void TestGasBlend::lastStopIsOneValueInTwoLists() {
    Stage stage;
    auto* stop = stage.control<QComboBox>("List1(2)");
    stop->setCurrentIndex(2);
    emit stop->activated(2);
    stage.control<QAction>("mnuFeet")->trigger();
    QCOMPARE(stage.control<QComboBox>("List1(3)")->currentText(), "15ft");
    stage.control<platform::TickTimer>("Timer5")->expire();
    QCOMPARE(stage.screen->plan().Text7.mid(178, 2), "N2");
}

void TestGasBlend::aHiddenScreenWritesNoText() {
    Stage stage;
    const QString before = stage.screen->plan().Text7;
    stage.screen->hide();
    stage.control<platform::TickTimer>("Timer5")->expire();
    QCOMPARE(stage.screen->plan().Text7, before);
    stage.screen->show();
    stage.control<platform::TickTimer>("Timer5")->expire();
    QVERIFY(stage.screen->plan().Text7 != before);
}

void TestGasBlend::theDebugTextsStandToTheRight() {
    Stage stage;
    QVERIFY(!stage.control("Text7")->isVisible());
    const int width = stage.screen->width();
    QVERIFY(width >= 634);
    const QPoint table = stage.control("Text1(0)")->mapTo(stage.screen.data(), QPoint());
    stage.control<QAction>("mnuDebug")->trigger();
    QVERIFY(stage.control("Text7")->isVisible());
    QVERIFY(stage.screen->width() > width + 200);
    QVERIFY(stage.control<QAction>("mnuDebug")->isChecked() &&
            !stage.control<QAction>("mnuDebugOff")->isChecked());
    QTRY_COMPARE(stage.control("Text1(0)")->mapTo(stage.screen.data(), QPoint()), table);
    stage.control<QAction>("mnuDebugOff")->trigger();
    QVERIFY(std::abs(stage.screen->width() - width) <= 4); // as wide as its layout needs
    QVERIFY(!stage.control("Text7")->isVisible());
}

void TestGasBlend::refreshAsksTheLink() {
    Stage stage;
    for (const char* const name : {"Picture1", "Label15"}) {
        stage.link.asked.clear();
        QTest::mouseClick(stage.control(name), Qt::LeftButton);
        QCOMPARE(stage.link.asked, QStringList{"refreshDirectory"});
    }
}

void TestGasBlend::updateShowsTheLinkAndSends() {
    Stage stage;
    stage.control<platform::TickTimer>("Timer5")->expire();
    stage.control<QPushButton>("Command4(0)")->click(); // no tick comes between this and the sending
    process().deviceconnected = 1;
    stage.screen->receiveSetup(stockFile().first(222));
    stage.control<QPushButton>("Command4(0)")->click();
    stage.link.asked.clear();
    stage.control<QPushButton>("Command1")->click();
    QCOMPARE(stage.link.asked, QStringList({"showLinkForSending", "prepareSetup", "sendSetup"}));
    QCOMPARE(process().uploadtext.mid(184, 4), "P125");
    QCOMPARE(stage.dialogs.messages(), QStringList());
}

void TestGasBlend::filesAreOpenedAndSaved() {
    Stage stage;
    stage.control<platform::TickTimer>("Timer5")->expire();
    const QString path = stage.folder.path("plan.mit");
    stage.dialogs.answerFile(path);
    stage.control<QAction>("mnuSave")->trigger();
    QCOMPARE(stage.dialogs.asked().last().filter, "Text Files (*.mit)|*.mit|All Files (*.*)|*.*");
    QCOMPARE(stage.folder.get("plan.mit"), stage.screen->plan().Text7.toLatin1() + "\r\n");
    stage.folder.put("other.mit", stockFile().replace("H047 035", "H050 035").replace("X1", "X0"));
    stage.dialogs.answerFile(stage.folder.path("other.mit"));
    stage.control<QAction>("mnuOpen")->trigger();
    QCOMPARE(stage.dialogs.asked().last().folder, stage.folder.root());
    QCOMPARE(stage.text("Text1(7)"), "15");
    QVERIFY(!stage.control<QCheckBox>("Check2(3)")->isChecked());
    QCOMPARE(stage.dialogs.messages(), QStringList());
}

void TestGasBlend::aSavedPlanGetsItsEndingAndReplacesNoneUnasked() {
    Stage stage;
    stage.folder.put("plan.mit", "mine");
    stage.dialogs.answerFile(stage.folder.path("plan"));
    stage.control<QAction>("mnuSave")->trigger(); // No
    QCOMPARE(stage.folder.get("plan.mit"), QByteArray("mine"));
    stage.dialogs.answerFile(stage.folder.path("plan"));
    stage.dialogs.answer(true);
    stage.control<QAction>("mnuSave")->trigger();
    QCOMPARE(stage.folder.get("plan.mit"), stage.screen->plan().Text7.toLatin1() + "\r\n");
    QVERIFY(!stage.folder.has("plan"));
}

void TestGasBlend::cancelledDialogsChangeNothing() {
    Stage stage;
    const QString before = stage.screen->plan().Text7;
    stage.control<QAction>("mnuOpen")->trigger();
    stage.control<QAction>("mnuSave")->trigger();
    QCOMPARE(stage.screen->plan().Text7, before);
    QCOMPARE(stage.dialogs.messages(), QStringList());
}

void TestGasBlend::exitLeadsToTheLink() {
    Stage stage;
    stage.link.asked.clear();
    stage.control<QAction>("mnuExit")->trigger();
    QVERIFY(stage.link.asked.contains(QStringLiteral("showLink")));
    QVERIFY(stage.screen.isNull() || stage.screen->isUnloaded());
}

void TestGasBlend::closingKeepsTheText() {
    Stage stage;
    stage.control<platform::TickTimer>("Timer5")->expire();
    const QString text = stage.screen->plan().Text7;
    stage.screen->close();
    QCOMPARE(stage.folder.get("gdatalast.mit"), text.toLatin1() + "\r\n");
    QCOMPARE(stage.link.textToSend, text + QStringLiteral("\x1b"));
}

void TestGasBlend::readingsAreShownInTheUnitInForce() {
    Stage stage;
    stage.link.shownCaption = QStringLiteral("Status Update");
    stage.link.shownColour = platform::kToldCyan;
    stage.screen->receiveReadings(link::parsereadings("R-001,0100,x,0130,M0000,T0023,A00123,B00131,J"));
    QCOMPARE(stage.label("Label16(0)"), "9.38");
    QCOMPARE(stage.label("Label16(1)"), "30.8");
    QVERIFY(stage.control("Label16(1)")->isHidden());
    QCOMPARE(stage.label("Label7"), "Status Update");
    QCOMPARE(stage.control("Label7")->property("toldBackground").value<QColor>(), told(platform::kToldCyan));
    stage.screen->receiveReadings(link::parsereadings("R-001,abcd,y"));
    QCOMPARE(stage.label("Label16(0)"), "");     // emptied
    QCOMPARE(stage.label("Label16(9)"), "1.31"); // left as it was
}

void TestGasBlend::changesAreCountedAgainstTheDevice() {
    Stage stage;
    stage.control<platform::TickTimer>("Timer5")->expire();
    auto* tabs = stage.control<QTabWidget>("");
    QCOMPARE(tabs->tabText(2), "Changes (23)"); // nothing was read
    stage.screen->receiveSetup("PPP" + stockFile().first(222) + "PPP");
    stage.control<platform::TickTimer>("Timer5")->expire();
    QCOMPARE(tabs->tabText(2), "Changes");
    QCOMPARE(stage.text("sptext"), "1.30");
    stage.control<QPushButton>("Command4(0)")->click();
    stage.control<platform::TickTimer>("Timer5")->expire();
    QCOMPARE(tabs->tabText(2), "Changes (1)");
    auto* table = stage.control<QTableWidget>("");
    QCOMPARE(table->item(0, 0)->text(), "PPO2 Set Point");
    QCOMPARE(table->item(0, 1)->text(), "1.30 bar");
    QCOMPARE(table->item(0, 2)->text(), "1.25 bar");
}

void TestGasBlend::theEdgesOfOneRowStandOffThoseOfTheNext() {
    Stage stage;
    const auto place = [&stage](const char* name) {
        const QWidget* control = stage.control(name);
        return QRect(control->mapTo(stage.screen.data(), QPoint()), control->size());
    };
    const auto gap = [&place](const char* above, const char* below) {
        return place(below).top() - place(above).bottom() - 1;
    };
    QTRY_VERIFY(gap("Text1(0)", "Text1(1)") >= 2);
    QVERIFY(gap("Text4(8)", "Text4(9)") >= 2);
    QVERIFY(gap("Text5", "sptext") >= 2);
    QVERIFY(gap("Command3(0)", "List1(1)") >= 2);
    QVERIFY(gap("List1(4)", "List1(5)") >= 2);
    QVERIFY(gap("Command4(1)", "Command4(2)") >= 2);
}

void TestGasBlend::everySettingEndsAtOneEdge() {
    Stage stage;
    const auto end = [&stage](const char* name, int inside) {
        const QWidget* control = stage.control(name);
        return control->mapTo(stage.screen.data(), QPoint(inside, 0)).x();
    };
    auto* check = stage.control<QCheckBox>("Check2(3)");
    QStyleOptionButton option;
    option.initFrom(check);
    const QRect box = check->style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, check);
    const int edge = end("Check2(3)", box.right());
    for (const char* name : {"Text5", "Command3(0)", "List1(1)", "List1(4)", "List1(0)", "Label12(1)"}) {
        QCOMPARE(end(name, stage.control(name)->width() - 1), edge);
    }
}

void TestGasBlend::aWrongBoxShowsTheKeyboard() {
    QWidget window;
    NumberBox box(QString(), &window);
    box.resize(60, 28);
    box.setWrong(QStringLiteral("no number"));
    window.show();
    window.activateWindow();
    box.setFocus();
    QTRY_VERIFY(box.hasFocus());
    const QImage picture = box.grab().toImage();
    QCOMPARE(picture.pixelColor(30, 0), look::tokens().accent);
    QCOMPARE(picture.pixelColor(30, look::focusWidth), look::tokens().bad);
}

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    application.setQuitOnLastWindowClosed(false);
    look::apply(application);
    TestGasBlend test;
    return QTest::qExec(&test, argc, argv);
}
#include "test_gasblend.moc"
