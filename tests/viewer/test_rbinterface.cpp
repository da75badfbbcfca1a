#include "divescreen.h"

#include "platform/chart/chart.h"
#include "platform/grid/flexgrid.h"
#include "platform/look/look.h"
#include "tests/profile/divetext.h"
#include "viewer/screens/gasstripview.h"

#include <QCheckBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QtTest>

using namespace benthor;
using namespace benthor::profile;
using namespace benthor::viewer;
using benthor::platform::Chart;
using benthor::platform::FlexGrid;

class TestRbinterface : public QObject {
    Q_OBJECT

private slots:
    void everyControlIsThereByItsName();
    void aFreshScreenShowsTheDepthAlone();
    void aCheckedBoxBringsItsSeriesIntoTheChart();
    void anUncheckedBoxTakesItsSeriesAway();
    void ceilingAndDepthGoByTheRightAxis();
    void twoSticksExcludeEachOther();
    void theGasStripTellsTheGases();
    void theGridEntryShowsAndHidesTheGrid();
    void choosingOtherUnitsWritesTheTableAndAsksForAReload_data();
    void choosingOtherUnitsWritesTheTableAndAsksForAReload();
    void feetChosenAgainDoesNothing();
    void unitsThatCannotBeSavedStay();
    void theUnitsChangeWithTheReload();
    void beforeItHandsOverItsDiveIsInHand_data();
    void beforeItHandsOverItsDiveIsInHand();
    void leavingAsksForTheDiveList();
    void anotherThemeRecoloursTheChart();
    void theOxygenPressuresCanHaveAScaleOfTheirOwn();
    void theTipBoxCanBeFolded();
    void theCellsSayWhichFieldTheyRead();
};

void TestRbinterface::theOxygenPressuresCanHaveAScaleOfTheirOwn() {
    DiveScreen bench;
    bench.put(steadyDive(20));
    rbinterface& screen = bench.show();
    auto& chart = control<Chart>(screen, "MSChart1");
    for (const char* box : {"Check3", "Check5", "Check9", "Check10"}) {
        control<QCheckBox>(screen, box).setChecked(true);
    }
    auto& own = control<QAction>(screen, "mnuOwnScale");
    QVERIFY(!own.isChecked());
    const auto height = [&chart](int column) {
        return chart.scaleOf(chart.seriesStyle(column).axis).share(1.3);
    };
    QVERIFY(height(3) < 0.05); // pressed flat by the temperature
    QCOMPARE(chart.leftUnit(), QString());
    control<FlexGrid>(screen, "MSFlexGrid1").setRow(10);
    own.trigger();
    for (const int column : {3, 12, 13, 14, 15}) {
        QVERIFY2(height(column) > 0.3 && height(column) < 0.5, qPrintable(QString::number(column)));
    }
    QCOMPARE(chart.seriesStyle(5).axis, platform::ChartAxis::Left);
    QCOMPARE(chart.leftScale().upper, 2.5 * 20);
    QCOMPARE(chart.leftUnit(), QString(QStringLiteral("C")));
    QCOMPARE(chart.innerUnit(), QStringLiteral("bar"));
    QCOMPARE(chart.row(), 10); // the sample keeps its cursor
    QVERIFY(control<QWidget>(screen, "Text8").isVisible());
    QVERIFY(screen.state().ownscale);
    own.trigger();
    QVERIFY(height(3) < 0.05 && chart.innerScale().labels.empty());
}

void TestRbinterface::theTipBoxCanBeFolded() {
    DiveScreen bench;
    bench.put(steadyDive(20));
    rbinterface& screen = bench.show();
    auto& tip = control<QWidget>(screen, "Text8");
    control<QCheckBox>(screen, "Check9").setChecked(true);
    control<FlexGrid>(screen, "MSFlexGrid1").setRow(10);
    const QString text = tip.property("text").toString();
    const int whole = tip.height();
    control<QAction>(screen, "mnuFoldTip").trigger();
    QVERIFY(tip.isVisible() && tip.height() < whole / 3);
    QCOMPARE(tip.property("text").toString(), text);
    control<FlexGrid>(screen, "MSFlexGrid1").setRow(11);
    QVERIFY(tip.height() < whole / 3);
    control<QAction>(screen, "mnuFoldTip").trigger();
    QCOMPARE(tip.height(), whole);
}

void TestRbinterface::theCellsSayWhichFieldTheyRead() {
    DiveScreen bench;
    bench.put(steadyDive(20));
    rbinterface& screen = bench.load();
    QVERIFY(control<QWidget>(screen, "Lbldcella").toolTip().isEmpty());
    QVERIFY(control<QWidget>(screen, "Lbldcellb").toolTip().contains("field H"));
    QVERIFY(control<QWidget>(screen, "Lbldcellc").toolTip().contains("field I"));
}

void TestRbinterface::everyControlIsThereByItsName() {
    DiveScreen bench;
    bench.put(steadyDive(20));
    rbinterface& screen = bench.load();
    QCOMPARE(screen.objectName(), QStringLiteral("rbinterface"));
    QStringList names{
        "txtdiveid",    "txtduration",  "txtmaxdepth",  "txttimedown",  "txtinterval", "txtversion",
        "txtotu",       "txtatmos",     "txtdusageh",   "lblmaxdepth",  "MSFlexGrid1", "MSChart1",
        "txtGas",       "Picture6",     "Picture7",     "Picture12",    "Picture13",   "Command2(0)",
        "Command2(1)",  "Command2(2)",  "Option1",      "Option2",      "gasList",     "cmdclose",
        "Check15(0)",   "Check15(1)",   "Check15(2)",   "Picture1",     "Picture2",    "Picture3",
        "Picture4",     "Picture5",     "Picture8",     "Picture9",     "Picture10",   "Picture11",
        "cmdSave",      "cmdsavegraph", "cmdgas",       "Cmdtissue",    "Command1",    "Command4",
        "Command5",     "PlayDive",     "StopPlayDive", "Command6(0)",  "Command6(1)", "Command7(0)",
        "Command7(1)",  "AlarmNext",    "Label13",      "MarkNext",     "Label4",      "Label18",
        "gaslistCheck", "Text6",        "Text7",        "Text8",        "Text9(0)",    "Text9(1)",
        "Alarm_Text",   "Lbldtime",     "Lbldepth",     "lbldgas",      "Lbldppo2",    "lblppo2avg",
        "Lbldceiling",  "Lbldtemp",     "lbltempf",     "lbldstack",    "lblhpddip",   "Lbldhpo2",
        "Lbldcella",    "Lbldcellb",    "Lbldcellc",    "Lbldsetpoint", "Label21(0)",  "Label21(1)",
        "MSFlexGrid2",  "Shape5",       "Shape6",       "Shape7",       "Shape9",      "Shape10",
        "Shape11",      "Shape12"};
    for (int i = 0; i < 5; ++i) {
        names += QStringLiteral("Shape8(%1)").arg(i);
    }
    for (int i = 1; i <= 14; ++i) {
        names += QStringLiteral("Check%1").arg(i);
    }
    for (int i = 0; i < 6; ++i) {
        names += QStringLiteral("Frame4(%1)").arg(i);
    }
    for (const QString& name : std::as_const(names)) {
        QVERIFY2(screen.findChildren<QWidget*>(name).size() == 1, qPrintable(name));
    }
    for (const char* name :
         {"mnudiveinfo", "mnudivesavecsv", "mnudivedan", "mnudiveprint", "mnuPrintspreadsheet", "mnuScrSave",
          "mnuColorGrey", "mnuRD", "mnudiveexit", "mnuSpread", "mnudivezoom", "mnuzoompan", "mnuzoompan2",
          "mnuunitsfeet", "mnuunitsmeters"}) {
        QVERIFY2(screen.findChildren<QAction*>(QLatin1String(name)).size() == 1, name);
    }
    const std::pair<const char*, const char*> captions[] = {
        {"Check1", "Depth"},     {"Check2", "GAS num"},       {"Check3", "PO2"},
        {"Check4", "Mark"},      {"Check5", "Temperature"},   {"Check6", "TPM"},
        {"Check7", "Battery"},   {"Check8", "High pressure"}, {"Check9", "PO2 cells"},
        {"Check10", "Setpoint"}, {"Check11", "Ceiling"},      {"Check12", "Filter"},
        {"Check13", "Pamb"},     {"Check14", "CO2"},          {"Check15(0)", "TPM 0"},
        {"Check15(1)", "TPM 1"}, {"Check15(2)", "TPM 2"}};
    for (const auto& [name, caption] : captions) {
        QCOMPARE(control<QCheckBox>(screen, name).text(), QLatin1String(caption));
    }
    QCOMPARE(control<QPushButton>(screen, "Command2(1)").text(), QStringLiteral("pan <"));
    QCOMPARE(control<QPushButton>(screen, "Command2(2)").text(), QStringLiteral("pan >"));
}

void TestRbinterface::aFreshScreenShowsTheDepthAlone() {
    DiveScreen bench;
    bench.put(steadyDive(20));
    rbinterface& screen = bench.show();
    const Chart& chart = control<Chart>(screen, "MSChart1");
    QVERIFY(chart.isVisible());
    QCOMPARE(chart.matrix().lastRow(), 23);
    QVERIFY(chart.matrix().isEmpty(0, 1));
    QCOMPARE(chart.matrix().at(3, 1), 0.0);
    QCOMPARE(chart.matrix().at(4, 1), double(-0.94F));
    QCOMPARE(chart.matrix().at(23, 1), double(-18.75F));
    for (int column = 2; column < platform::ChartMatrix::columns; ++column) {
        QVERIFY(!chart.matrix().hasSeries(column));
    }
    QVERIFY(!control<QAction>(screen, "mnuSpread").isChecked());
    QVERIFY(!control<FlexGrid>(screen, "MSFlexGrid1").isVisible());
}

void TestRbinterface::aCheckedBoxBringsItsSeriesIntoTheChart() {
    DiveScreen bench;
    bench.put(steadyDive(20));
    rbinterface& screen = bench.show();
    QTest::mouseClick(&control<QCheckBox>(screen, "Check9"), Qt::LeftButton, {}, QPoint(10, 10));
    const platform::ChartMatrix& matrix = control<Chart>(screen, "MSChart1").matrix();
    QCOMPARE(matrix.at(4, 12), double(1.31F));
    QCOMPARE(matrix.at(4, 13), double(1.3F));
    QCOMPARE(matrix.at(23, 14), double(1.29F));
    QVERIFY(matrix.hasSeries(1));
    QVERIFY(!matrix.hasSeries(3));
    QCOMPARE(control<Chart>(screen, "MSChart1").leftUnit(), QStringLiteral("bar"));
}

void TestRbinterface::anUncheckedBoxTakesItsSeriesAway() {
    DiveScreen bench;
    bench.put(steadyDive(20));
    rbinterface& screen = bench.show();
    control<QCheckBox>(screen, "Check1").click();
    QVERIFY(!control<Chart>(screen, "MSChart1").matrix().hasSeries(1));
}

void TestRbinterface::ceilingAndDepthGoByTheRightAxis() {
    DiveScreen bench;
    bench.put(steadyDive(20));
    const Chart& chart = control<Chart>(bench.load(), "MSChart1");
    for (int series = 1; series < platform::ChartMatrix::columns; ++series) {
        QCOMPARE(chart.seriesStyle(series).axis == platform::ChartAxis::Right, series == 1 || series == 4);
    }
    QCOMPARE(chart.rightUnit(), QStringLiteral("m"));
}

void TestRbinterface::twoSticksExcludeEachOther() {
    DiveScreen bench;
    bench.put(
        wholeDive({sampleLine(100, "S31,T32"), sampleLine(110, "S41,T42"), sampleLine(120, "S51,T52")}));
    rbinterface& screen = bench.load();
    auto& stick0 = control<QCheckBox>(screen, "Check15(0)");
    auto& stick1 = control<QCheckBox>(screen, "Check15(1)");
    auto& stick2 = control<QCheckBox>(screen, "Check15(2)");
    QVERIFY(!stick0.isEnabled() && !stick1.isEnabled() && !stick2.isEnabled());
    const Chart& chart = control<Chart>(screen, "MSChart1");
    stick0.setChecked(true);
    stick1.setChecked(true);
    QCOMPARE(chart.matrix().at(4, 25), 31.0); // the first reading is of stick 1
    stick2.setChecked(true);
    QVERIFY(!stick1.isChecked());
    QVERIFY(stick0.isChecked());
    QCOMPARE(chart.matrix().at(5, 25), 41.0);
    stick1.setChecked(true);
    QVERIFY(!stick2.isChecked());
}

void TestRbinterface::theGasStripTellsTheGases() {
    DiveScreen bench;
    bench.put(steadyDive(20));
    rbinterface& screen = bench.load();
    // Row 14 of 23 is the first on the second gas: whole part of 14 / 23 x 135 is 82.
    QCOMPARE(control<QWidget>(screen, "txtGas").property("text").toString(),
             QStringLiteral("Air ").leftJustified(82) + QStringLiteral("NX32"));
    const std::vector<GasRun> runs{{"Air", 1, 13}, {"NX32", 14, 23}};
    QVERIFY(control<GasStripView>(screen, "txtGas").runs() == runs);
    QCOMPARE(control<Chart>(screen, "MSChart1").rowLines(), QList<int>{14});
}

void TestRbinterface::theGridEntryShowsAndHidesTheGrid() {
    DiveScreen bench;
    bench.put(steadyDive(197));
    rbinterface& screen = bench.show();
    auto& grid = control<FlexGrid>(screen, "MSFlexGrid1");
    auto& button = control<QPushButton>(screen, "btnSpread");
    control<QAction>(screen, "mnuSpread").trigger();
    QVERIFY(grid.isVisible());
    QVERIFY(button.isChecked());
    QVERIFY(control<Chart>(screen, "MSChart1").isVisible());
    QTest::mouseClick(&button, Qt::LeftButton);
    QVERIFY(!grid.isVisible());
    QVERIFY(!control<QAction>(screen, "mnuSpread").isChecked());
}

void TestRbinterface::choosingOtherUnitsWritesTheTableAndAsksForAReload_data() {
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    const QString feet = QStringLiteral("Feet");
    const QString metre = QStringLiteral("metre");
    QTest::newRow("the feet button") << QByteArray("Option1") << metre << feet;
    QTest::newRow("the metres button") << QByteArray("Option2") << feet << metre;
    QTest::newRow("the feet entry") << QByteArray("mnuunitsfeet") << metre << feet;
    QTest::newRow("the metres entry") << QByteArray("mnuunitsmeters") << feet << metre;
}

void TestRbinterface::choosingOtherUnitsWritesTheTableAndAsksForAReload() {
    QFETCH(QByteArray, name);
    QFETCH(QString, before);
    QFETCH(QString, after);
    DiveScreen bench;
    bench.put(steadyDive(20));
    process().unitoverride = before;
    bench.execute("UPDATE Display SET Display = 'neither'");
    rbinterface& screen = bench.show();
    const QSignalSpy reload(&screen, &rbinterface::reloadWanted);
    if (name.startsWith("mnu")) {
        control<QAction>(screen, name).trigger();
    } else {
        control<QRadioButton>(screen, name).click();
    }
    QCOMPARE(reload.count(), 1);
    QCOMPARE(bench.displayWord(), after);
    QCOMPARE(process().unitoverride, after);
}

void TestRbinterface::feetChosenAgainDoesNothing() {
    DiveScreen bench;
    bench.put(steadyDive(20));
    process().unitoverride = QStringLiteral("Feet");
    rbinterface& screen = bench.show();
    const QSignalSpy reload(&screen, &rbinterface::reloadWanted);
    control<QRadioButton>(screen, "Option1").click();
    QCOMPARE(reload.count(), 0);
    QCOMPARE(bench.displayWord(), QStringLiteral("metre"));
}

void TestRbinterface::unitsThatCannotBeSavedStay() {
    DiveScreen bench;
    bench.put(steadyDive(20));
    rbinterface& screen = bench.show();
    bench.execute("DROP TABLE Display");
    const QSignalSpy reload(&screen, &rbinterface::reloadWanted);
    control<QRadioButton>(screen, "Option1").click();
    QCOMPARE(reload.count(), 0);
    QVERIFY(process().unitoverride.isEmpty());
    QVERIFY(control<QRadioButton>(screen, "Option2").isChecked());
    QVERIFY(control<QAction>(screen, "mnuunitsmeters").isChecked());
    QCOMPARE(bench.boxes.messages().size(), 1);
    QVERIFY(bench.boxes.messages().first().startsWith(
        QStringLiteral("The units stay as they are: they could not be saved.")));
}

void TestRbinterface::beforeItHandsOverItsDiveIsInHand_data() {
    QTest::addColumn<QByteArray>("name");
    for (const char* const name : {"mnudiveinfo", "mnuScrSave", "mnudiveexit", "mnuunitsfeet", "Command1",
                                   "cmdgas", "btnCapture", "cmdclose", "Option1"}) {
        QTest::newRow(name) << QByteArray(name);
    }
}

void TestRbinterface::beforeItHandsOverItsDiveIsInHand() {
    QFETCH(QByteArray, name);
    DiveScreen bench;
    bench.put(steadyDive(20));
    rbinterface& screen = bench.show();
    process().currentdiveid = QStringLiteral("D0000077"); // an import, say
    QString inHand;
    for (const auto wanted :
         {&rbinterface::diveListWanted, &rbinterface::reloadWanted, &rbinterface::detailsWanted,
          &rbinterface::gasWanted, &rbinterface::captureWanted}) {
        connect(&screen, wanted, this, [&inHand] { inHand = process().currentdiveid; });
    }
    if (name.startsWith("mnu")) {
        control<QAction>(screen, name).trigger();
    } else {
        control<QAbstractButton>(screen, name).click();
    }
    QCOMPARE(inHand, QStringLiteral("D0000001"));
}

void TestRbinterface::theUnitsChangeWithTheReload() {
    DiveScreen bench;
    bench.put(steadyDive(20));
    rbinterface& screen = bench.show();
    QCOMPARE(control<FlexGrid>(screen, "MSFlexGrid1").text(23, 1), QStringLiteral("18.75"));
    connect(&screen, &rbinterface::reloadWanted, this, [&bench] {
        bench.unload();
        bench.show();
    });
    control<QAction>(screen, "mnuunitsfeet").trigger();
    rbinterface& fresh = bench.load();
    QVERIFY(&fresh != &screen);
    QCOMPARE(control<FlexGrid>(fresh, "MSFlexGrid1").text(23, 1), QStringLiteral("60.2"));
    QCOMPARE(control<Chart>(fresh, "MSChart1").rightUnit(), QStringLiteral("ft"));
    QVERIFY(control<QRadioButton>(fresh, "Option1").isChecked());
}

void TestRbinterface::leavingAsksForTheDiveList() {
    DiveScreen bench;
    bench.put(steadyDive(20));
    rbinterface& screen = bench.show();
    const QSignalSpy leaving(&screen, &rbinterface::diveListWanted);
    QTest::mouseClick(&control<QPushButton>(screen, "cmdclose"), Qt::LeftButton);
    QCOMPARE(leaving.count(), 1);
    control<QAction>(screen, "mnudiveexit").trigger();
    QCOMPARE(leaving.count(), 2);
}

void TestRbinterface::anotherThemeRecoloursTheChart() {
    DiveScreen bench;
    bench.put(steadyDive(20));
    look::setTheme(look::Theme::Light);
    const Chart& chart = control<Chart>(bench.show(), "MSChart1");
    QCOMPARE(chart.colours().backdrop, look::tokens(look::Theme::Light).surface);
    const QColor light = chart.seriesStyle(1).colour;
    look::setTheme(look::Theme::Dark);
    QTRY_COMPARE(chart.colours().backdrop, look::tokens(look::Theme::Dark).surface);
    QVERIFY(chart.seriesStyle(1).colour != light);
    look::setTheme(look::Theme::Light);
}

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    look::apply(application);
    TestRbinterface test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_rbinterface.moc"
