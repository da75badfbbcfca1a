// Playback, steps, jumps and the chart's exercise on the dive screen.

#include "divescreen.h"
#include "platform/chart/chart.h"
#include "platform/grid/flexgrid.h"
#include "platform/screen/ticktimer.h"
#include "tests/profile/divetext.h"
#include "viewer/screens/alarmstripview.h"
#include "viewer/screens/samplekeys.h"
#include "viewer/screens/tipbox.h"

#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QtTest>

using namespace benthor;
using namespace benthor::profile;
using namespace benthor::viewer;
using benthor::platform::Chart;
using benthor::platform::FlexGrid;
using benthor::platform::TickTimer;

namespace {

/// Samples 4 to `last`; alarms at 20 and 30, marks at 25 and 35.
QByteArray dive(int last) {
    QByteArrayList lines;
    for (int sample = 4; sample <= last; ++sample) {
        lines += "1," + QByteArray::number(100 + sample) + ",0,130,M" +
                 (sample == 25 || sample == 35 ? "1" : "0") + ",T20,A900" +
                 (sample == 20 || sample == 30 ? ",LOW" : "") + (sample == 10 ? ",PREDIVE" : "");
    }
    return wholeDive(lines);
}

struct Stage {
    explicit Stage(int last = 50) {
        bench.put(dive(last));
        screen = &bench.show();
        grid = &control<FlexGrid>(*screen, "MSFlexGrid1");
    }
    void click(const char* button) const { control<QPushButton>(*screen, button).click(); }
    void picture(const char* name) const {
        QTest::mouseClick(&control<QWidget>(*screen, name), Qt::LeftButton);
    }
    TickTimer& timer() const { return control<TickTimer>(*screen, "Timer3"); }
    void tick(int count = 1) const {
        for (int i = 0; i < count; ++i) {
            timer().expire();
        }
    }
    QString speed() const { return textOf(*screen, "Label18"); }

    DiveScreen bench;
    rbinterface* screen;
    FlexGrid* grid;
};

} // namespace

class TestRbinterfacePlay : public QObject {
    Q_OBJECT

private slots:
    /// The signs are kept as a picture while the cursor moves under them.
    void theStripIsPaintedAsAWholeWhereverTheCursorWas() {
        Stage stage;
        auto& strip = control<AlarmStripView>(*stage.screen, "Picture1");
        const auto& chart = control<Chart>(*stage.screen, "MSChart1");
        for (const int row : {5, 20, 21, 48, 30}) {
            stage.grid->setRow(row);
            const QImage shown = strip.grab().toImage();
            QImage whole(shown.size(), QImage::Format_RGB32);
            whole.setDevicePixelRatio(shown.devicePixelRatio());
            QPainter painter(&whole);
            const QRect frame(chart.plotLeft(), 0, chart.plotWidth(), strip.height());
            strip.paint(painter, frame);
            painter.end();
            int worst = 0;
            for (int y = 1; y < frame.height() - 1; ++y) {
                for (int x = frame.left() + 5; x < frame.right() - 5; ++x) {
                    const QColor one = shown.pixelColor(x, y);
                    const QColor other = whole.pixelColor(x, y);
                    worst = std::max({worst, std::abs(one.red() - other.red()),
                                      std::abs(one.green() - other.green()),
                                      std::abs(one.blue() - other.blue())});
                }
            }
            QVERIFY2(worst <= 3, qPrintable(QStringLiteral("row %1: %2").arg(row).arg(worst)));
            const QColor green(0, 255, 0);
            const int cursor =
                frame.left() + qRound(frame.width() * (static_cast<double>(row) / chart.matrix().lastRow()));
            QCOMPARE(shown.pixelColor(cursor, frame.height() - 4) == green, row != 20 && row != 30);
        }
    }

    void playingMovesNoButton_data() {
        QTest::addColumn<int>("width");
        for (int width = 1024; width <= 1920; width += 64) {
            QTest::addRow("%d wide", width) << width;
        }
    }
    /// Whoever reaches for a button while the dive begins to play finds it where it was.
    void playingMovesNoButton() {
        QFETCH(int, width);
        DiveScreen world;
        world.put(steadyDive(200));
        rbinterface& screen = world.show();
        screen.resize(width, 768);
        const auto places = [&screen] {
            QList<QRect> rects;
            for (int turn = 0; turn < 5; ++turn) {
                QCoreApplication::processEvents();
            }
            for (const char* const name :
                 {"PlayDive", "StopPlayDive", "AlarmNext", "MarkNext", "Command2(0)", "Picture6"}) {
                auto& widget = control<QWidget>(screen, name);
                rects += widget.isVisible() ? QRect(widget.mapTo(&screen, QPoint()), widget.size()) : QRect();
            }
            return rects;
        };
        const QList<QRect> before = places();
        control<QAbstractButton>(screen, "PlayDive").click();
        control<platform::TickTimer>(screen, "Timer3").expire();
        QVERIFY(control<QWidget>(screen, "Picture10").isVisible());
        QCOMPARE(places(), before);
        QCOMPARE(places(), before); // it stays so
        control<QAbstractButton>(screen, "StopPlayDive").click();
        QCOMPARE(places(), before);
        // Nothing is wider than it needs to be: the bar has its room between the two groups.
        QVERIFY(before.first().width() < 60);
    }

    void playingStepsOnceASecondUntilItIsStopped() {
        const Stage stage;
        QVERIFY(!stage.timer().isEnabled());
        QCOMPARE(stage.timer().interval(), 1000);
        stage.click("PlayDive");
        QVERIFY(stage.timer().isEnabled());
        QVERIFY(!control<QWidget>(*stage.screen, "Picture10").isVisible()); // with the first tick
        stage.tick();
        QVERIFY(control<QWidget>(*stage.screen, "Picture10").isVisible());
        QCOMPARE(stage.speed(), " x1");
        QCOMPARE(stage.grid->row(), 2);
        QVERIFY(control<TipBox>(*stage.screen, "Text8").isVisible());
        stage.click("StopPlayDive");
        QVERIFY(!stage.timer().isEnabled());
        QVERIFY(!control<QWidget>(*stage.screen, "Picture10").isVisible());
        stage.picture("Picture8");
        QVERIFY(stage.timer().isEnabled());
        stage.picture("Picture9");
        QVERIFY(!stage.timer().isEnabled());
    }

    void theDiveBeginsAnewByItself() {
        const Stage stage; // grid rows 1 to 50
        stage.click("PlayDive");
        stage.tick(48);
        QCOMPARE(stage.grid->row(), 49);
        stage.tick();
        QCOMPARE(stage.grid->row(), 1);
        QVERIFY(stage.timer().isEnabled());
    }

    void theSpeedChangesWithTheNextTick() {
        const Stage stage;
        stage.click("PlayDive");
        stage.click("Command6(0)");
        stage.click("Command6(0)");
        QCOMPARE(stage.speed(), " x4");
        stage.tick();
        QCOMPARE(stage.grid->row(), 5);
        stage.click("Command6(1)");
        stage.tick();
        QCOMPARE(stage.grid->row(), 7);
        for (int i = 0; i < 9; ++i) {
            stage.click("Command6(0)");
        }
        QCOMPARE(stage.speed(), " x64");
        for (int i = 0; i < 9; ++i) {
            stage.click("Command6(1)");
        }
        QCOMPARE(stage.speed(), " x1");
    }

    void aTickThatTakesLongIsNotEnteredAgain() {
        const Stage stage;
        stage.click("PlayDive");
        int inner = 0;
        const auto again = QObject::connect(stage.grid, &FlexGrid::rowSelectionChanged, stage.screen, [&] {
            ++inner;
            stage.tick(); // a queued tick that is let in
        });
        stage.tick();
        QObject::disconnect(again);
        QCOMPARE(stage.grid->row(), 2);
        Q_UNUSED(inner)
    }

    void stepsGoByTheSpeed() {
        const Stage stage;
        stage.click("Command7(1)");
        QCOMPARE(stage.grid->row(), 2);
        stage.click("Command6(0)");
        stage.click("Command7(1)");
        QCOMPARE(stage.grid->row(), 4);
        stage.click("Command7(0)");
        QCOMPARE(stage.grid->row(), 2);
    }

    void aStepBackFromTheFirstRowShowsNothingNewAndThenTheEnd() {
        const Stage stage;
        stage.grid->setRow(2);
        stage.click("Command7(0)");
        const QString depth = textOf(*stage.screen, "Lbldepth");
        const QString tip = control<TipBox>(*stage.screen, "Text8").text();
        stage.click("Command7(0)"); // row 0 has no sample
        QCOMPARE(textOf(*stage.screen, "Lbldepth"), depth);
        QCOMPARE(control<TipBox>(*stage.screen, "Text8").text(), tip);
        stage.click("Command7(0)");
        QCOMPARE(stage.grid->row(), 49);
        stage.click("Command7(1)");
        QCOMPARE(stage.grid->row(), 1);
    }

    void alarmsAndMarksAreJumpedTo() {
        const Stage stage;
        stage.click("AlarmNext");
        QCOMPARE(stage.grid->row(), 20);
        stage.picture("Label13");
        QCOMPARE(stage.grid->row(), 30);
        stage.click("AlarmNext");
        QCOMPARE(stage.grid->row(), 20);
        stage.click("MarkNext");
        QCOMPARE(stage.grid->row(), 25);
        stage.picture("Label4");
        QCOMPARE(stage.grid->row(), 35);
        stage.click("MarkNext");
        QCOMPARE(stage.grid->row(), 25);
    }

    void withoutAnAlarmPointNothingMoves() {
        const Stage stage(15); // PREDIVE alone, at sample 10
        stage.grid->setRow(7);
        stage.click("AlarmNext");
        stage.click("MarkNext");
        QCOMPARE(stage.grid->row(), 7);
    }

    void arrowKeysWalkTheSamples() {
        const Stage stage;
        stage.click("Command6(0)");
        stage.screen->setFocus();
        QTest::keyClick(stage.screen, Qt::Key_Right);
        QTest::keyClick(stage.screen, Qt::Key_Right);
        QCOMPARE(stage.grid->row(), 3); // one by one, whatever the speed
        QTest::keyClick(stage.screen, Qt::Key_Left);
        QCOMPARE(stage.grid->row(), 2);
        for (int i = 0; i < 5; ++i) {
            QTest::keyClick(stage.screen, Qt::Key_Left);
        }
        QCOMPARE(stage.grid->row(), 1);
    }

    void theKeysWalkFromMostControls() {
        const Stage stage(400);
        stage.screen->activateWindow();
        const auto press = [&stage](Qt::Key key) { QTest::keyClick(stage.screen->focusWidget(), key); };
        for (const char* name : {"Check3", "PlayDive", "Option2", "MSChart1"}) {
            control<QWidget>(*stage.screen, name).setFocus(Qt::MouseFocusReason);
            stage.grid->setRow(100);
            press(Qt::Key_Down);
            QCOMPARE(stage.grid->row(), 101);
            press(Qt::Key_Left);
            press(Qt::Key_Up);
            QCOMPARE(stage.grid->row(), 99);
            press(Qt::Key_PageDown); // a tenth of what is shown
            QCOMPARE(stage.grid->row(), 139);
            press(Qt::Key_PageUp);
            QCOMPARE(stage.grid->row(), 99);
            press(Qt::Key_End);
            QCOMPARE(stage.grid->row(), stage.grid->rows() - 1);
            press(Qt::Key_Home);
            QCOMPARE(stage.grid->row(), 1);
            QVERIFY(control<QWidget>(*stage.screen, name).hasFocus());
        }
        QVERIFY(control<QRadioButton>(*stage.screen, "Option2").isChecked());
    }

    void aControlKeepsTheKeysThatItNeedsOrThatTheTabKeyBrought() {
        const Stage stage(400);
        stage.screen->activateWindow();
        control<QAction>(*stage.screen, "mnuSpread").trigger();
        stage.grid->setRow(100);
        int before = 100;
        const auto walked = [&stage, &before](const char* name, Qt::FocusReason reason, Qt::Key key) {
            auto& one = control<QWidget>(*stage.screen, name);
            one.setFocus(reason);
            QTest::keyClick(&one, key);
            const int now = stage.grid->row();
            return std::exchange(before, now) != now;
        };
        QVERIFY(!walked("txtinterval", Qt::MouseFocusReason, Qt::Key_Left));
        QVERIFY(!walked("Alarm_Text", Qt::MouseFocusReason, Qt::Key_Down));
        QSlider slider(stage.screen);
        QListWidget list(stage.screen);
        QPushButton button(stage.screen);
        for (QWidget* const one : std::initializer_list<QWidget*>{&slider, &list, &button}) {
            one->installEventFilter(stage.screen->findChild<SampleKeys*>());
            one->show();
            one->setFocus(Qt::MouseFocusReason);
            QTest::keyClick(one, Qt::Key_End);
            QCOMPARE(stage.grid->row() != before, one == &button);
        }
        stage.grid->setRow(before);
        QVERIFY(walked("MSChart1", Qt::TabFocusReason, Qt::Key_Right)); // nothing in it needs the keys
        QVERIFY(!walked("Check3", Qt::TabFocusReason, Qt::Key_Right));
        QVERIFY(!walked("PlayDive", Qt::BacktabFocusReason, Qt::Key_End));
        QVERIFY(walked("Check3", Qt::MouseFocusReason, Qt::Key_Right));
        QVERIFY(walked("MSFlexGrid1", Qt::MouseFocusReason, Qt::Key_PageDown)); // as a grid does
        QVERIFY(stage.grid->row() != 101 + 40);
    }

    void playFollowsThePagesOfAZoomedDive() {
        const Stage stage(400);
        stage.click("Command2(0)");
        for (int i = 0; i < 4; ++i) {
            stage.click("Command6(0)");
        }
        stage.click("PlayDive");
        QStringList begins{textOf(*stage.screen, "Text1")};
        for (int i = 0; i < 26; ++i) {
            stage.tick();
            if (begins.last() != textOf(*stage.screen, "Text1")) {
                begins << textOf(*stage.screen, "Text1");
            }
            QVERIFY(control<Chart>(*stage.screen, "MSChart1").row() > 0);
        }
        QCOMPARE(begins.size(), 11); // ten pages, and the first again
        QCOMPARE(begins.last(), begins.first());
    }

    void aHiddenTimersTickChangesNothingOfAnUnloadedScreen() {
        Stage stage;
        stage.click("PlayDive");
        QPointer<TickTimer> timer = &stage.timer();
        stage.bench.unload();
        QVERIFY(timer.isNull() || !timer->isEnabled());
    }

    void theExerciseOfTheChartLeavesTheDiveAlone() {
        const Stage stage;
        auto& chart = control<Chart>(*stage.screen, "MSChart1");
        const QString cell = stage.grid->text(10, 1);
        stage.click("Command5");
        QCOMPARE(chart.title(), "lasdasdasd");
        for (int series = 1; series <= 40; ++series) {
            QVERIFY(chart.marker(series).visible);
            QCOMPARE(chart.marker(series).size, 20.0);
            QCOMPARE(chart.marker(series).fill, QColor(0, 0, 255));
        }
        QVERIFY(chart.matrix().lastRow() < 50);
        QCOMPARE(stage.grid->text(10, 1), cell);
        stage.click("AlarmNext");
        control<QAbstractButton>(*stage.screen, "Check3").click(); // a plot brings the dive back
        QCOMPARE(chart.title(), "");
        QCOMPARE(chart.matrix().lastRow(), 50);
        QVERIFY(!chart.marker(1).visible);
    }
};

QTEST_MAIN(TestRbinterfacePlay)
#include "test_rbinterface_play.moc"
