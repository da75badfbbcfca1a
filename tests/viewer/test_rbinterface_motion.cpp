// A dive screen whose view moves: plain pictures on the way, the full one at rest, in every export and print.

#include "divescreen.h"
#include "platform/chart/chart.h"
#include "platform/grid/flexgrid.h"
#include "platform/look/look.h"
#include "platform/screen/printing.h"
#include "platform/screen/ticktimer.h"

#include <QBackingStore>
#include <QCheckBox>
#include <QPushButton>
#include <QtTest>

using namespace benthor;
using namespace benthor::profile;
using namespace benthor::viewer;
using benthor::platform::Chart;
using benthor::platform::FlexGrid;
using benthor::platform::RowRange;
using benthor::platform::TickTimer;

namespace {

struct Stage {
    explicit Stage(const char* unit = "metre", int samples = 6000) {
        bench.put(steadyDive(samples));
        process().unitoverride = QLatin1String(unit);
        screen = &bench.show();
        for (const char* box : {"Check3", "Check9", "Check12"}) {
            control<QCheckBox>(*screen, box).setChecked(true);
        }
        chart = &control<Chart>(*screen, "MSChart1");
        chart->repaint();
    }
    void mouse(QEvent::Type type, QPoint at, Qt::MouseButton button, Qt::MouseButtons held) const {
        QMouseEvent event(type, at, chart->mapToGlobal(at), button, held, Qt::NoModifier);
        QCoreApplication::sendEvent(chart, &event);
    }
    void wheel(int angle) const {
        const QPoint at(chart->plotLeft() + chart->plotWidth() / 3, 100);
        QWheelEvent event(at, chart->mapToGlobal(at), {}, {0, angle}, {}, {}, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(chart, &event);
    }
    void drag(int pixels) const {
        mouse(QEvent::MouseButtonPress, {400, 100}, Qt::MiddleButton, Qt::MiddleButton);
        mouse(QEvent::MouseMove, {400 + pixels, 100}, Qt::NoButton, Qt::MiddleButton);
        mouse(QEvent::MouseButtonRelease, {400 + pixels, 100}, Qt::MiddleButton, Qt::NoButton);
    }
    void press(const char* button) const { control<QPushButton>(*screen, button).click(); }
    QByteArray exported(const char* name) {
        bench.boxes.answerFile(folder.filePath(QLatin1String(name)));
        control<QAction>(*screen, "mnusavechart").trigger();
        QFile source(folder.filePath(QLatin1String(name)));
        return source.open(QIODevice::ReadOnly) ? source.readAll() : QByteArray();
    }
    /// The chart as it stands on the screen, with what lies over it.
    QImage onScreen() const {
        const auto* image = dynamic_cast<QImage*>(screen->backingStore()->paintDevice());
        return ofChart(*image);
    }
    QImage inFull() const { return ofChart(screen->grab().toImage().convertToFormat(QImage::Format_RGB32)); }
    bool rests() const {
        return QTest::qWaitFor([this] { return !chart->isMoving(); }) &&
               QTest::qWaitFor([this] { return onScreen() == inFull(); });
    }

    QTemporaryDir folder;
    DiveScreen bench;
    rbinterface* screen;
    Chart* chart;

private:
    QImage ofChart(const QImage& window) const {
        const double ratio = screen->devicePixelRatioF();
        const QRect place(chart->mapTo(static_cast<QWidget*>(screen), QPoint()), chart->size());
        QImage part = window.copy(QRect(place.topLeft() * ratio, place.size() * ratio));
        part.setDevicePixelRatio(1);
        return part;
    }
};

using Act = std::function<void(Stage&)>;

} // namespace
Q_DECLARE_METATYPE(Act)

class TestRbinterfaceMotion : public QObject {
    Q_OBJECT

private slots:
    void cleanup() { look::setTheme(look::Theme::Light); }

    void everyMovementEndsInTheFullPicture_data() {
        QTest::addColumn<Act>("act");
        QTest::addColumn<look::Theme>("theme");
        QTest::addColumn<QByteArray>("unit");
        const QList<std::pair<const char*, Act>> acts = {
            {"wheel", [](Stage& stage) { stage.wheel(240); }},
            {"wheel, back to the whole dive",
             [](Stage& stage) {
                 stage.wheel(240);
                 stage.wheel(-480);
             }},
            {"drag",
             [](Stage& stage) {
                 stage.wheel(360);
                 stage.drag(-60);
             }},
            {"page",
             [](Stage& stage) {
                 stage.press("Command2(0)");
                 stage.press("Command2(2)");
             }},
            {"resize", [](Stage& stage) { stage.screen->resize(1300, 720); }},
        };
        for (const auto& [name, act] : acts) {
            for (const auto theme : {look::Theme::Light, look::Theme::Dark}) {
                for (const QByteArray unit : {"metre", "Feet"}) {
                    QTest::addRow("%s, %s, %s", name, theme == look::Theme::Dark ? "dark" : "light",
                                  unit.constData())
                        << act << theme << unit;
                }
            }
        }
    }

    void everyMovementEndsInTheFullPicture() {
        QFETCH(Act, act);
        QFETCH(look::Theme, theme);
        QFETCH(QByteArray, unit);
        look::setTheme(theme);
        Stage stage(unit.constData());
        QVERIFY(!stage.chart->isMoving());
        act(stage);
        QVERIFY(stage.chart->isMoving());
        QVERIFY(stage.rests());
    }

    void aMovingChartIsPlainOnTheScreen() {
        Stage stage;
        stage.wheel(240);
        stage.chart->repaint(); // before any timer
        QVERIFY(stage.chart->isMoving());
        const QImage plain = stage.onScreen();
        QVERIFY(plain != stage.inFull());
    }

    void aBoxASelectionAndAHoverAreNoMovement() {
        Stage stage;
        control<QCheckBox>(*stage.screen, "Check5").setChecked(true);
        control<FlexGrid>(*stage.screen, "MSFlexGrid1").setRow(700);
        stage.mouse(QEvent::MouseMove, {500, 100}, Qt::NoButton, Qt::NoButton);
        control<TickTimer>(*stage.screen, "Timer3").expire();
        QVERIFY(!stage.chart->isMoving());
    }

    void aHoverPaintsNoMoreThanItsWords() {
        Stage stage;
        stage.mouse(QEvent::MouseMove, {500, 100}, Qt::NoButton, Qt::NoButton);
        QCoreApplication::processEvents();
        class Paints : public QObject {
        public:
            QRegion all;

        protected:
            bool eventFilter(QObject*, QEvent* event) override {
                if (event->type() == QEvent::Paint)
                    all += static_cast<QPaintEvent*>(event)->region();
                return false;
            }
        } paints;
        stage.chart->installEventFilter(&paints);
        stage.mouse(QEvent::MouseMove, {700, 100}, Qt::NoButton, Qt::NoButton);
        QCoreApplication::processEvents();
        QVERIFY(!paints.all.isEmpty());
        QVERIFY2(paints.all.boundingRect().height() < 60,
                 qPrintable(QString::number(paints.all.boundingRect().height())));
        QVERIFY(paints.all.boundingRect().width() < stage.chart->width() / 2);
    }

    void exportsOfAMovingChartAreThoseOfAResting_data() {
        QTest::addColumn<QByteArray>("name");
        for (const QByteArray name : {"chart.png", "chart.svg"})
            QTest::newRow(name.constData()) << name;
    }

    void exportsOfAMovingChartAreThoseOfAResting() {
        QFETCH(QByteArray, name);
        Stage stage;
        stage.wheel(240);
        QVERIFY(stage.rests());
        const RowRange view = stage.chart->view();
        const QByteArray resting = stage.exported(name.constData());
        QVERIFY(!resting.isEmpty());
        stage.wheel(120);
        stage.wheel(-120);
        stage.chart->repaint();
        QCOMPARE(stage.chart->view(), view);
        QVERIFY(stage.chart->isMoving());
        QVERIFY(stage.exported(name.constData()) == resting);
        QVERIFY(stage.rests());
    }

    void aCaptureAndAPrintOfAMovingScreenAreFull() {
        Stage stage;
        stage.wheel(240);
        QVERIFY(stage.rests());
        const QImage resting = stage.inFull();
        stage.wheel(120);
        stage.wheel(-120);
        stage.chart->repaint();
        QVERIFY(stage.chart->isMoving());
        QVERIFY(stage.inFull() == resting);
        const auto printed = [&stage] {
            QImage page(stage.screen->size(), QImage::Format_RGB32);
            page.fill(Qt::white);
            const platform::LightTheme light;
            QPainter painter(&page);
            stage.screen->render(&painter);
            painter.end();
            return page;
        };
        const QImage paper = printed();
        stage.wheel(120);
        stage.wheel(-120);
        stage.chart->repaint();
        QVERIFY(stage.chart->isMoving());
        QVERIFY(printed() == paper);
    }

    void aScreenMayBeClosedWhileItsViewMoves() {
        Stage stage;
        stage.wheel(240);
        QVERIFY(stage.chart->isMoving());
        stage.bench.unload();
        QVERIFY(!stage.bench.isLoaded());
        QTest::qWait(2 * Chart::restInterval); // nothing is left to tick
    }

    void playGoesOnWhileTheViewIsDragged() {
        Stage stage;
        stage.wheel(600);
        stage.press("PlayDive");
        auto& timer = control<TickTimer>(*stage.screen, "Timer3");
        auto& grid = control<FlexGrid>(*stage.screen, "MSFlexGrid1");
        grid.setRow(2500);
        const int first = grid.row();
        stage.mouse(QEvent::MouseButtonPress, {400, 100}, Qt::MiddleButton, Qt::MiddleButton);
        for (int step = 1; step <= 10; ++step) {
            const RowRange before = stage.chart->view();
            stage.mouse(QEvent::MouseMove, {400 - 4 * step, 100}, Qt::NoButton, Qt::MiddleButton);
            QVERIFY(stage.chart->view() != before);
            timer.expire();
            stage.chart->repaint();
            QVERIFY(stage.chart->isMoving());
        }
        stage.mouse(QEvent::MouseButtonRelease, {360, 100}, Qt::MiddleButton, Qt::NoButton);
        QCOMPARE(grid.row(), first + 10);
        QCOMPARE(stage.chart->row(), first + 10); // its cursor is in the view
        timer.setEnabled(false);
        QVERIFY(stage.rests());
    }
};

QTEST_MAIN(TestRbinterfaceMotion)
#include "test_rbinterface_motion.moc"
