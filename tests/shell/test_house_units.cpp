// The unit changes while a dive is open: on the main screen, on the gas screen, by a device. The dive is
// shown in the unit that is in force, at the same place; until then it stays in its own, numbers and words.

#include "link/screens/pc_link_1.h"
#include "tests/shell/divesstage.h"

#include <QCheckBox>
#include <QPushButton>
#include <QRadioButton>

using namespace benthor;
using namespace benthor::tests;

namespace {

/// Two dives of 300 samples with cylinder pressures and no PO2, the second one open.
struct OnALongDive : DivesProgram {
    OnALongDive()
        : DivesProgram(2) {
        QByteArray text = diveText(2);
        text.truncate(text.indexOf("Profile"));
        text += "Profile\r\nTime,Depth,Mix\r\n";
        for (int i = 1; i <= 300; ++i) {
            text += ',' + QByteArray::number(i % 50 * 10) + ",1,0,M0,T20,A500,D100,E150\r\n";
        }
        text += "End\r\n";
        folder.put(QStringLiteral("dbtxt/") + field(2, u"dbtxtname"), text);
        open(2);
    }

    static platform::FlexGrid& samples() {
        return *control<platform::FlexGrid>("rbinterface", "MSFlexGrid1");
    }
    static QString tip() { return control<QWidget>("rbinterface", "Text8")->property("text").toString(); }
    static bool inFeet() { return control<QRadioButton>("rbinterface", "Option1")->isChecked(); }
};

/// The setup of a device, in feet.
QByteArray setupInFeet() {
    return "A079 000 0560 1 B001 000 0040 0 C020 000 0070 0 D050 000 0180 0 E060 000 0250 0 F064 000 0280 0 "
           "G068 000 0330 0 H047 035 0670 0 I036 050 0900 0 J024 065 1170 0 K0000000000 L0 M2 N0 O0 P130 Q0 "
           "R0 S3 "
           "T100 U004 V120 W030 X1 Y1 Z\x1b\r\n";
}

} // namespace

class TestHouseUnits : public QObject {
    Q_OBJECT

private slots:
    void theMainScreensUnitLoadsTheOpenDiveAnew();
    void theDiveKeepsItsRowAndItsView();
    void theWindowStaysAsLargeAsItWas();
    void itsOwnSwitchWorksAfterwards();
    void theGasScreensUnitReachesTheOpenDiveAndStays();
    void aDevicesUnitReachesTheOpenDive();
    void untilThenTheDiveStaysInItsUnit();
    void theUnitChosenBehindAnExportIsShown();
    void theSystemOfTheDiveOutlivesTheLoad();
    void withoutADiveNothingIsLoaded();
};

void TestHouseUnits::theMainScreensUnitLoadsTheOpenDiveAnew() {
    OnALongDive program;
    OnALongDive::samples().setRow(23);
    QVERIFY2(OnALongDive::tip().startsWith(QLatin1String("18.75metre")), qPrintable(OnALongDive::tip()));
    control<QAction>("main", "mnuFeet")->trigger();
    QCOMPARE(program.shownDive(), diveid(2));
    QVERIFY(OnALongDive::inFeet());
    QCOMPARE(control<QLabel>("rbinterface", "lblmaxdepth")->text(), "Feet");
    QCOMPARE(OnALongDive::samples().row(), 23);
    QVERIFY2(OnALongDive::tip().startsWith(QLatin1String("60.2Feet")), qPrintable(OnALongDive::tip()));
    QCOMPARE(OnALongDive::samples().text(23, 10), "1470"); // 100 bar
    QVERIFY(program.ended->isEmpty());
}

void TestHouseUnits::theDiveKeepsItsRowAndItsView() {
    OnALongDive program;
    control<QAction>("rbinterface", "mnudivezoom")->trigger();
    OnALongDive::samples().setRow(100); // the fourth page of ten
    control<QAction>("rbinterface", "mnuSpread")->setChecked(true);
    control<QCheckBox>("rbinterface", "Check8")->setChecked(true);
    control<QCheckBox>("rbinterface", "Check1")->setChecked(false);
    const bool panBack = control<QAction>("rbinterface", "mnuzoompan")->isEnabled();
    QVERIFY(panBack);
    control<QAction>("main", "mnuFeet")->trigger();
    QVERIFY(OnALongDive::inFeet());
    QCOMPARE(OnALongDive::samples().row(), 100);
    QCOMPARE(control<QAction>("rbinterface", "mnudivezoom")->text(), "Zoom 10");
    QCOMPARE(control<QAction>("rbinterface", "mnuzoompan")->isEnabled(), panBack);
    QVERIFY(control<QAction>("rbinterface", "mnuSpread")->isChecked());
    QVERIFY(control<QCheckBox>("rbinterface", "Check8")->isChecked());
    QVERIFY(!control<QCheckBox>("rbinterface", "Check1")->isChecked());
}

void TestHouseUnits::theWindowStaysAsLargeAsItWas() {
    OnALongDive program;
    loaded("rbinterface")->showMaximized();
    control<QAction>("main", "mnuFeet")->trigger();
    QVERIFY(loaded("rbinterface")->isMaximized());
    control<QRadioButton>("rbinterface", "Option2")->click();
    QVERIFY(loaded("rbinterface")->isMaximized());
    loaded("rbinterface")->showMinimized();
    control<QAction>("main", "mnuFeet")->trigger();
    QVERIFY(loaded("rbinterface")->isMinimized());
    QVERIFY(OnALongDive::inFeet());
}

void TestHouseUnits::itsOwnSwitchWorksAfterwards() {
    OnALongDive program;
    control<QAction>("main", "mnuFeet")->trigger();
    control<QRadioButton>("rbinterface", "Option2")->click();
    QVERIFY(!OnALongDive::inFeet());
    QCOMPARE(process().depthunit, "metre");
    process().depthunit = QStringLiteral("Feet"); // whoever did it
    control<QRadioButton>("rbinterface", "Option1")->click();
    QVERIFY(OnALongDive::inFeet());
    QCOMPARE(program.shownDive(), diveid(2));
}

void TestHouseUnits::theGasScreensUnitReachesTheOpenDiveAndStays() {
    OnALongDive program;
    control<QPushButton>("rbinterface", "cmdgas")->click();
    control<QAction>("GasBlend", "mnuFeet")->trigger();
    expire("main", "Timer2");
    QVERIFY(OnALongDive::inFeet());
    QCOMPARE(program.shownDive(), diveid(2));
    expire("GasBlend", "Timer5");
    expire("main", "Timer2");
    QVERIFY(control<QAction>("GasBlend", "mnuFeet")->isChecked());
    QVERIFY(OnALongDive::inFeet());
    QCOMPARE(process().depthunit, "Feet");
}

void TestHouseUnits::aDevicesUnitReachesTheOpenDive() {
    OnALongDive program;
    auto* link = qobject_cast<link::PC_Link_1*>(loaded("PC_Link_1"));
    QVERIFY(link != nullptr);
    emit link->setupArrived(setupInFeet());
    QCOMPARE(process().depthunit, "Feet");
    expire("main", "Timer2");
    QVERIFY(OnALongDive::inFeet());
    QCOMPARE(process().depthunit, "Feet");
}

void TestHouseUnits::untilThenTheDiveStaysInItsUnit() {
    OnALongDive program;
    control<QCheckBox>("rbinterface", "Check8")->setChecked(true);
    process().depthunit = QStringLiteral("Feet");
    OnALongDive::samples().setRow(23);
    const QString tip = OnALongDive::tip();
    QVERIFY2(tip.startsWith(QLatin1String("18.75metre")), qPrintable(tip));
    QVERIFY2(tip.contains(QLatin1String("100bar")), qPrintable(tip));
    // (18.75 x 0.1 + 1) x 21 % of air
    QVERIFY2(tip.contains(QLatin1String("PPO2: 0.60bar")), qPrintable(tip));
    QCOMPARE(control<QLabel>("rbinterface", "Lbldepth")->text(), "19m ");
}

/// The export leaves the word at "metre" over numbers in feet.
void TestHouseUnits::theUnitChosenBehindAnExportIsShown() {
    OnALongDive program;
    control<QAction>("main", "mnuFeet")->trigger();
    program.dialogs.answerFile(program.folder.path("dive.zxu"));
    control<QAction>("rbinterface", "mnudivedan")->trigger();
    QCOMPARE(process().depthunit, "metre");
    expire("main", "Timer2");
    QVERIFY(OnALongDive::inFeet());
    control<QAction>("main", "mnuMeters")->trigger();
    QVERIFY(!OnALongDive::inFeet());
    OnALongDive::samples().setRow(23);
    QVERIFY2(OnALongDive::tip().startsWith(QLatin1String("18.75metre")), qPrintable(OnALongDive::tip()));
}

void TestHouseUnits::theSystemOfTheDiveOutlivesTheLoad() {
    OnALongDive program;
    QVERIFY(!control<QCheckBox>("rbinterface", "Check13")->isChecked());
    control<QAction>("main", "mnuDiveList")->trigger(); // sets the other system
    control<QAction>("rbinterface", "mnuunitsfeet")->trigger();
    QVERIFY(!control<QCheckBox>("rbinterface", "Check13")->isChecked());
}

void TestHouseUnits::withoutADiveNothingIsLoaded() {
    const DivesProgram program(1);
    control<QAction>("main", "mnuFeet")->trigger();
    expire("main", "Timer2");
    QVERIFY(loaded("rbinterface") == nullptr);
    QVERIFY(shown("rbmain"));
}

int main(int argc, char** argv) {
    return runAsProgram<TestHouseUnits>(argc, argv);
}
#include "test_house_units.moc"
