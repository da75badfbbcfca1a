// What the dive screen shows of the selected sample, on the panel, in the tip box and on the strip; the free
// view.

#include "divescreen.h"
#include "platform/chart/chart.h"
#include "platform/grid/flexgrid.h"
#include "platform/look/look.h"
#include "platform/look/widgets/gauge.h"
#include "profile/elapsed.h"
#include "tests/profile/divetext.h"
#include "viewer/screens/alarmstripview.h"
#include "viewer/screens/gasstripview.h"
#include "viewer/screens/legendstrip.h"
#include "viewer/screens/tipbox.h"

#include <QCheckBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

using namespace benthor;
using namespace benthor::profile;
using namespace benthor::viewer;
using benthor::platform::Chart;
using benthor::platform::FlexGrid;

namespace {

/// 100 samples at 20 m or more; an alarm at sample 43, a mark at 63, a ceiling from 70 on.
QByteArray eventfulDive() {
    QByteArrayList lines;
    for (int sample = 4; sample <= 203; ++sample) {
        const QByteArray mark = sample == 63 ? "1" : "0";
        lines += "1," + QByteArray::number(200 + sample) + (sample < 53 ? ",0" : ",1") + ",130,M" + mark +
                 ",T20,A905,F131,G120,H110,I140,D150,E160" + (sample >= 70 ? ",J9" : ",J0") +
                 (sample == 43 ? ",LOW" : "") + (sample == 10 ? ",PREDIVE" : "");
    }
    return wholeDive(lines);
}

struct Stage {
    explicit Stage(const QByteArray& text = eventfulDive()) {
        bench.put(text);
        screen = &bench.show();
        chart = &control<Chart>(*screen, "MSChart1");
        grid = &control<FlexGrid>(*screen, "MSFlexGrid1");
        tip = &control<TipBox>(*screen, "Text8");
        strip = &control<AlarmStripView>(*screen, "Picture1");
    }
    QString text(const char* name) const { return textOf(*screen, name); }
    bool shown(const char* name) const { return !control<QWidget>(*screen, name).isHidden(); }
    quint32 lit(const char* gauge) const { return control<look::Gauge>(*screen, gauge).lit(); }
    void check(const char* box) const { control<QCheckBox>(*screen, box).setChecked(true); }
    void click(const char* button) const { control<QPushButton>(*screen, button).click(); }
    QPoint stripPlace(double share) const {
        return {chart->plotLeft() + qRound(share * chart->plotWidth()), strip->height() / 2};
    }
    void insideChart() const {
        QVERIFY(tip->isVisible());
        QVERIFY2(chart->rect().contains(tipInChart()), "the tip box leaves the chart");
    }
    QRect tipInChart() const { return {chart->mapFromGlobal(tip->mapToGlobal(QPoint())), tip->size()}; }

    DiveScreen bench;
    rbinterface* screen;
    Chart* chart;
    FlexGrid* grid;
    TipBox* tip;
    AlarmStripView* strip;
};

} // namespace

class TestRbinterfacePoint : public QObject {
    Q_OBJECT

private slots:
    void everyWayOfPickingShowsTheSample() {
        const Stage stage;
        emit stage.chart->released(645 + 10065 * 100.5 / 203, 0);
        QCOMPARE(stage.grid->row(), 100);
        QCOMPARE(stage.text("Lbldtime"), "16");
        QTest::mouseClick(stage.strip, Qt::LeftButton, {}, stage.stripPlace(0.5));
        QCOMPARE(stage.grid->row(), 102); // 101.5, to even
        auto& gases = control<GasStripView>(*stage.screen, "txtGas");
        QTest::mouseClick(&gases, Qt::LeftButton, {}, stage.stripPlace(0.25));
        QCOMPARE(stage.grid->row(), 51);
        stage.grid->setRow(80);
        QCOMPARE(stage.text("Lbldepth"), "26m ");
        QCOMPARE(stage.text("lbldgas"), "NX32");
        stage.insideChart();
    }

    void thePanelShowsWhatTheGridHolds() {
        const Stage stage;
        stage.grid->setRow(80);
        QCOMPARE(stage.text("Lbldppo2"), "1.30");
        QCOMPARE(stage.text("lblppo2avg"), "1.30");
        QCOMPARE(stage.text("Lbldceiling"), " ^9");
        QCOMPARE(stage.text("Text7"), "34%");
        QCOMPARE(stage.text("Lbldtemp"), "20");
        QCOMPARE(stage.text("lbltempf"), "C");
        QCOMPARE(stage.text("lbldstack"), "90.5");
        QCOMPARE(stage.text("lblhpddip"), "150");
        QCOMPARE(stage.text("Lbldhpo2"), "160");
        QCOMPARE(stage.text("Lbldcella"), "1.31");
        QCOMPARE(stage.text("Lbldcellb"), "1.10"); // one column out, as the panel is wired
        QCOMPARE(stage.text("Lbldcellc"), "1.40");
        QCOMPARE(stage.text("Lbldsetpoint"), "1.40");
        QCOMPARE(stage.text("Text9(0)"), "0");
        QCOMPARE(stage.text("Text9(1)"), "99");
        QCOMPARE(stage.lit("Shape9"), kBaseBar | gaugeBars(1.31 / 1.4));
        QCOMPARE(stage.lit("Shape11"), kBaseBar | gaugeBars(1.0));
        QCOMPARE(stage.lit("Shape7"), kBaseBar | gaugeBars(150.0 / 210));
        QVERIFY(stage.shown("Text6")); // a ceiling lights it
        for (const char* mask :
             {"Frame4(0)", "Frame4(1)", "Frame4(2)", "Frame4(3)", "Frame4(4)", "Frame4(5)"}) {
            QVERIFY2(!stage.shown(mask), mask);
        }
        stage.grid->setRow(20);
        QVERIFY(!stage.shown("Text6"));
        QCOMPARE(stage.text("Text7"), "34%"); // no ceiling, and the text stays
        QCOMPARE(stage.lit("Shape6"), kBaseBar);
    }

    void instrumentsWithoutARecordStayCovered() {
        const Stage stage(wholeDive({"1,100,0,0,M0,T20,C0", "1,100,0,0,M0,T20,C0", "1,100,0,0,M0,T20,C0"}));
        stage.grid->setRow(4);
        for (const char* mask : {"Frame4(0)", "Frame4(2)", "Frame4(4)", "Frame4(5)"}) {
            QVERIFY2(stage.shown(mask), mask);
            const QWidget& covered = control<QWidget>(*stage.screen, mask);
            QCOMPARE(covered.geometry(), covered.parentWidget()->rect());
        }
        QVERIFY(!stage.shown("Frame4(3)"));
    }

    /// Neither the samples nor the sizes that the window has had move the chart.
    void theChartKeepsItsWidthWhateverTheInstrumentsShow() {
        const Stage stage;
        for (const QSize size : {QSize(1024, 700), QSize(1366, 768), QSize(1920, 1080)}) {
            stage.screen->resize(size);
            QCoreApplication::processEvents();
            const int width = stage.chart->width();
            for (int row = 2; row <= 203; row += 3) {
                stage.grid->setRow(row);
                QCoreApplication::processEvents();
                QCOMPARE(stage.chart->width(), width);
            }
            stage.screen->resize(1920, 1080);
            QCoreApplication::processEvents();
            stage.screen->resize(size);
            QCoreApplication::processEvents();
            QCOMPARE(stage.chart->width(), width);
        }
    }

    /// On whole pixels: laid between two of them a colour would be half lost in the ground.
    void everyCurveHasItsWholeColourInTheLegend() {
        const Stage stage;
        for (const char* box : {"Check3", "Check8", "Check9", "Check11"}) {
            stage.check(box);
        }
        stage.screen->resize(1920, 1080);
        QCoreApplication::processEvents();
        auto& legend = control<LegendStrip>(*stage.screen, "legend");
        const QImage picture = legend.grab().toImage();
        QVERIFY(legend.entries().size() >= 5);
        for (const LegendEntry& entry : legend.entries()) {
            int whole = 0;
            for (int y = 0; y < picture.height(); ++y) {
                for (int x = 0; x < picture.width(); ++x) {
                    whole += picture.pixelColor(x, y) == entry.style.colour ? 1 : 0;
                }
            }
            QVERIFY2(whole > 4, qPrintable(entry.name));
        }
    }

    void anAlarmTurnsTextAndTipRed() {
        const Stage stage;
        stage.grid->setRow(43);
        auto& alarms = control<QPlainTextEdit>(*stage.screen, "Alarm_Text");
        QCOMPARE(alarms.toPlainText(), "LOW");
        QCOMPARE(alarms.property("toldBackground").value<QColor>(), QColor(Qt::red));
        QCOMPARE(stage.tip->toldBackground(), QColor(Qt::red));
        QVERIFY(stage.tip->text().endsWith("LOW\r\n"));
        stage.grid->setRow(10);
        QCOMPARE(alarms.toPlainText(), "PREDIVE");
        QCOMPARE(alarms.property("toldBackground").value<QColor>(), QColor(Qt::white));
        stage.grid->setRow(63);
        QCOMPARE(alarms.property("toldBackground").value<QColor>(), QColor(Qt::blue));
        QCOMPARE(stage.tip->toldBackground(), QColor(Qt::white));
        QVERIFY(stage.tip->text().contains("! MARK !"));
    }

    void theTipFollowsTheCheckedBoxes() {
        const Stage stage;
        stage.grid->setRow(80);
        QCOMPARE(stage.tip->text(), "26.25metre\r\nGas: NX32");
        for (const char* box : {"Check3", "Check9", "Check11"}) {
            stage.check(box);
        }
        QVERIFY(!stage.tip->isVisible()); // a fresh plot hides it
        stage.grid->setRow(81);
        QVERIFY(stage.tip->text().contains("PPO2: 1.30bar\r\nCeiling: 9.0metre\r\nCella: 1.31bar\r\nCellb: "
                                           "1.20bar\r\nCellc: 1.10bar"));
    }

    void theTipStaysInTheChartAtEverySample() {
        const Stage stage;
        for (const char* box : {"Check3", "Check5", "Check8", "Check9", "Check10", "Check11", "Check12"}) {
            stage.check(box);
        }
        stage.screen->resize(1024, 700);
        QCoreApplication::processEvents();
        for (int row = 2; row <= 203; row += 3) {
            stage.grid->setRow(row);
            stage.insideChart();
            // Beside the cursor, not over it.
            const double cursor = stage.chart->xOfRow(stage.chart->row());
            QVERIFY(stage.tipInChart().x() > cursor || stage.tipInChart().right() < cursor);
        }
    }

    void theTipKeepsToItsSampleWhenTheWindowGrows() {
        const Stage stage;
        stage.grid->setRow(60);
        stage.screen->resize(1920, 1000);
        QCoreApplication::processEvents();
        stage.insideChart();
        QVERIFY(stage.tipInChart().x() > stage.chart->xOfRow(60));
        QVERIFY(stage.tipInChart().x() < stage.chart->xOfRow(60) + 20);
    }

    void theStripMarksAlarmsMarksAndTheSample() {
        const Stage stage;
        stage.grid->setRow(80);
        QStringList signs;
        for (const StripLine& line : stage.strip->strip().lines) {
            signs << QString::number(line.sample);
        }
        QCOMPARE(signs, QStringList({"43", "63", "80"}));
    }

    void thePageTurnsWithTheSample() {
        const Stage stage;
        stage.click("Command2(0)");
        QCOMPARE(stage.text("Text1"), "00:00:00");
        stage.grid->setRow(43);
        QCOMPARE(stage.text("Text1"), "00:06:46"); // the third tenth
        QVERIFY(stage.strip->strip().found);
        stage.insideChart();
        stage.grid->setRow(10);
        QCOMPARE(stage.text("Text1"), "00:00:00");
        QVERIFY(control<QPushButton>(*stage.screen, "Command2(2)").isEnabled());
    }

    void withoutAPo2LogTheAverageIsComputed() {
        const Stage stage(
            wholeDive({"1,107,1,0,M0,T20,A900", "1,107,1,0,M0,T20,A900", "1,107,1,0,M0,T20,A900"}));
        stage.grid->setRow(5);
        QVERIFY(!control<QCheckBox>(*stage.screen, "Check3").isEnabled());
        QVERIFY(stage.tip->text().contains("PPO2: 0.64bar"));
        QCOMPARE(stage.text("lblppo2avg"), "0.64");
        QCOMPARE(stage.lit("Shape12"), kBaseBar | gaugeBars(0.64 / 1.4 + 0.01));
    }

    void theGasListIsShownByItsBox() {
        const Stage stage;
        QVERIFY(!control<QWidget>(*stage.screen, "gasList").isVisible());
        stage.check("gaslistCheck");
        QVERIFY(control<QWidget>(*stage.screen, "gasList").isVisible());
        QVERIFY(stage.text("gasList").startsWith("0: Air  66m"));
        stage.screen->resize(1920, 1000);
        QCoreApplication::processEvents();
        QVERIFY(control<QWidget>(*stage.screen, "gasList").isVisible());
    }

    void theGreySchemeAndTheWhiteOne() {
        const Stage stage;
        auto& grey = control<QAction>(*stage.screen, "mnuColorGrey");
        auto& label = control<QWidget>(*stage.screen, "Text1");
        grey.trigger();
        QVERIFY(grey.isChecked());
        QCOMPARE(stage.chart->colours().backdrop, QColor(240, 240, 240));
        QCOMPARE(label.palette().color(label.backgroundRole()), QColor(0xF0, 0xF0, 0xF0));
        grey.trigger();
        QVERIFY(!grey.isChecked());
        QCOMPARE(stage.chart->colours().backdrop, QColor(255, 255, 255));
        QCOMPARE(label.palette().color(label.backgroundRole()), QColor(255, 255, 255));
    }

    void theResearchSwitchWorksItsBoxes() {
        const Stage stage;
        auto& mnuRD = control<QAction>(*stage.screen, "mnuRD");
        const auto enabled = [&stage] {
            QList<bool> states;
            for (const char* box : {"Check15(0)", "Check15(1)", "Check15(2)", "Check13"}) {
                states << control<QCheckBox>(*stage.screen, box).isEnabled();
            }
            return states;
        };
        control<QCheckBox>(*stage.screen, "Check13").setEnabled(true);
        mnuRD.trigger();
        QCOMPARE(enabled(), QList<bool>({false, true, true, true}));
        mnuRD.trigger();
        QCOMPARE(enabled(), QList<bool>({false, false, false, false}));
    }

    void theLegendNamesTheCheckedCurvesWithTheirUnits() {
        const Stage stage;
        for (const char* box : {"Check3", "Check12"}) {
            stage.check(box);
        }
        auto& legend = control<LegendStrip>(*stage.screen, "legend");
        QCOMPARE(legend.text(), "Depth (m), PO2 (bar), Filter% (%)");
        QCOMPARE(legend.entries()[1].style.colour, stage.chart->seriesStyle(3).colour);
        control<QAction>(*stage.screen, "mnuLegend").trigger();
        QVERIFY(!legend.isVisible());
    }

    void theWheelZoomsAboutThePointerAndADoubleClickReturns() {
        const Stage stage;
        stage.grid->setRow(100);
        const double x = 645 + 10065 * 0.25;
        emit stage.chart->wheelTurned(x, 4);
        const RowRange view = stage.chart->view();
        QCOMPARE(view.span(), 203 / 4.0);
        QVERIFY(std::abs(view.first + view.span() / 4 - 203 / 4.0) < 1e-9);
        QVERIFY(!stage.tip->isVisible()); // its sample is out of sight
        emit stage.chart->released(x, 0);
        QCOMPARE(stage.grid->row(), 50);
        stage.insideChart();
        QCOMPARE(stage.strip->strip().lines.size(), 3U); // alarm, cursor and mark lie in the view
        QCOMPARE(stage.text("Text1"), formatelapsedWhole(view.first * 10));
        emit stage.chart->doubleClicked();
        QCOMPARE(stage.chart->view(), (RowRange{0, 203}));
        QCOMPARE(stage.text("Text5"), "00:33:50");
        QCOMPARE(stage.grid->row(), 50);
    }

    void aFreeViewFollowsTheSampleAndMovesWithADrag() {
        const Stage stage;
        emit stage.chart->wheelTurned(645, 8);
        const RowRange first = stage.chart->view();
        QCOMPARE(first.first, 0.0);
        emit stage.chart->dragged(-stage.chart->plotWidth());
        QCOMPARE(stage.chart->view().first, first.span());
        stage.grid->setRow(150);
        const RowRange followed = stage.chart->view();
        QVERIFY(followed.first <= 150 && followed.last >= 150);
        emit stage.chart->wheelTurned(645, 1e-6);
        QCOMPARE(stage.chart->view(), (RowRange{0, 203})); // all of it: the told view again
    }

    void aFreeViewBeginsInThePageAndEndsThere() {
        const Stage stage;
        stage.click("Command2(0)");
        stage.click("Command2(2)");
        const QString begin = stage.text("Text1");
        emit stage.chart->wheelTurned(645 + 10065 / 2.0, 2);
        QVERIFY(stage.text("Text1") != begin);
        QTest::keyClick(stage.screen, Qt::Key_Escape);
        QCOMPARE(stage.text("Text1"), begin);
        QCOMPARE(stage.chart->matrix().lastRow(), 20);
    }

    void thePointerReadsTheSampleUnderIt() {
        const Stage stage;
        auto& hover = control<QLabel>(*stage.screen, "hoverText");
        emit stage.chart->hovered(645 + 10065 * 79.5 / 203, 100);
        QVERIFY(hover.isVisible());
        QCOMPARE(hover.text(), "00:13:10   26.16 m   NX32");
        QCOMPARE(stage.grid->row(), 1); // nothing is picked
        emit stage.chart->hovered(100, 100);
        QVERIFY(!hover.isVisible());
    }

    void aDoubleClickOutOfTheFreeViewKeepsTheSampleOfItsFirstClick() {
        const Stage stage;
        emit stage.chart->wheelTurned(645 + 10065 * 0.5, 4);
        const QPoint place(stage.chart->plotLeft() + stage.chart->plotWidth() / 4,
                           stage.chart->plotArea().center().y());
        QTest::mouseClick(stage.chart, Qt::LeftButton, {}, place);
        const int row = stage.grid->row();
        QVERIFY(row > 75 && row < 102); // a quarter into the middle of the dive
        QTest::mouseDClick(stage.chart, Qt::LeftButton, {}, place);
        QTest::mouseRelease(stage.chart, Qt::LeftButton, {}, place);
        QCOMPARE(stage.chart->view(), (RowRange{0, 203}));
        QCOMPARE(stage.grid->row(), row);
        QCOMPARE(stage.chart->row(), row);
        stage.insideChart();
        QTest::mouseClick(stage.chart, Qt::LeftButton, {}, place); // and the next click picks again
        QVERIFY(stage.grid->row() < 60);
    }

    void samplesBehindTheLastPageHaveTipBoxAndCursorAtItsEdge() {
        const Stage stage; // 203 rows, 20 to a page
        stage.check("Check9");
        stage.click("Command2(0)");
        stage.grid->setRow(203);
        QCOMPARE(stage.text("Text1"), "00:30:27"); // the last page
        QVERIFY(stage.chart->row() > 0);
        QCOMPARE(qRound(stage.chart->cursorX()), stage.chart->plotArea().right() + 1);
        stage.insideChart();
        QVERIFY(stage.tip->text().startsWith("37.78metre"));
        QVERIFY(stage.tipInChart().right() < stage.chart->cursorX());
        stage.click("Command2(1)"); // a page that the sample is not behind
        QVERIFY(stage.chart->row() == 0 && !stage.tip->isVisible());
    }

    void theTipBoxIsWholeOnTheSmallestWindowWithAllSeriesAndTheGrid() {
        const Stage stage(wholeDive(QByteArrayList(
            60, "1,300,1,130,M1,T20,A900,B310,C620,D150,E160,F131,G120,H110,I140,J9,z50,LOW,HIGH")));
        stage.screen->resize(1024, 700);
        control<QAction>(*stage.screen, "mnuSpread").trigger();
        for (int number = 1; number <= 14; ++number) {
            stage.check(qPrintable(QStringLiteral("Check%1").arg(number)));
        }
        QCoreApplication::processEvents();
        for (const int row : {5, 20, 40, 63}) {
            stage.grid->setRow(row);
            QVERIFY(stage.tip->isVisible());
            const int lines = static_cast<int>(stage.tip->text().trimmed().count('\n')) + 1;
            QVERIFY(lines >= 14);
            QVERIFY(stage.tip->height() >= lines * QFontMetrics(look::caption()).height());
            QVERIFY(stage.tip->parentWidget()->rect().contains(stage.tip->geometry()));
            // Nothing lies over it, and nothing that it hangs on cuts it.
            QCOMPARE(stage.tip->visibleRegion().boundingRect(), stage.tip->rect());
        }
    }

    void aTipBoxHigherThanTheWindowGoesOnInFurtherColumns() {
        const Stage stage;
        PointTip tip;
        for (int line = 0; line < 60; ++line) {
            tip.lines << QStringLiteral("ALARM %1").arg(line);
        }
        TipBox box(stage.screen);
        box.setTip(tip, Qt::white);
        const QSize one = box.neededSize(2000);
        const QSize several = box.neededSize(400);
        QVERIFY(one.height() > 800 && several.height() <= 400);
        QVERIFY(several.width() >= 3 * QFontMetrics(look::caption()).horizontalAdvance("ALARM 59"));
    }

    void theLegendTakesTheColoursOfAnotherThemeAtOnce() {
        look::setTheme(look::Theme::Dark);
        {
            const Stage stage;
            stage.check("Check3");
            look::setTheme(look::Theme::Light); // as printing does
            const auto& legend = control<LegendStrip>(*stage.screen, "legend");
            QCOMPARE(legend.entries()[0].style.colour, stage.chart->seriesStyle(1).colour);
            QCOMPARE(legend.entries()[1].style.colour, stage.chart->seriesStyle(3).colour);
        }
    }

    void otherScreensAreAskedFor() {
        const Stage stage;
        QSignalSpy details(stage.screen, &rbinterface::detailsWanted);
        QSignalSpy gas(stage.screen, &rbinterface::gasWanted);
        QSignalSpy capture(stage.screen, &rbinterface::captureWanted);
        stage.click("Command1");
        QTest::mouseClick(&control<QWidget>(*stage.screen, "Picture5"), Qt::LeftButton);
        control<QAction>(*stage.screen, "mnudiveinfo").trigger();
        QCOMPARE(details.count(), 3);
        stage.click("cmdgas");
        QCOMPARE(gas.count(), 1);
        control<QAction>(*stage.screen, "mnuScrSave").trigger();
        QCOMPARE(capture.count(), 1);
        QVERIFY(!control<QPushButton>(*stage.screen, "Cmdtissue").isEnabled()); // it has no action
    }
};

QTEST_MAIN(TestRbinterfacePoint)
#include "test_rbinterface_point.moc"
