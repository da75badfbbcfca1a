// What the dive screen does while a diver looks at a dive: select a sample, play, hover, turn the wheel,
// drag, resize, turn the page, and open the dive. A dive of 25,000 samples with every series checked (at the
// opening: as it opens), the window painted each time. `frame_share` is the time of one against a frame of
// 16 ms, `opening_share` against 60 ms.

#include "platform/chart/chart.h"
#include "platform/grid/flexgrid.h"
#include "platform/screen/ticktimer.h"
#include "profile/diveprofile.h"
#include "tests/profile/divetext.h"
#include "tests/viewer/divescreen.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QMouseEvent>
#include <QWheelEvent>
#include <benchmark/benchmark.h>

namespace {

using namespace benthor;
using namespace benthor::profile;
using namespace benthor::viewer;

constexpr double kFrame = 0.016;   ///< seconds
constexpr double kOpening = 0.060; ///< what an opening may take, seconds
constexpr QSize kScreen(1920, 1080);

/// A dive with every letter, an alarm every 50 samples and a mark every 70; of itself the largest that the
/// screen takes.
QByteArray largestDive(int last = kMostSamples - 2) {
    QByteArrayList lines;
    for (int sample = kFirstSample; sample <= last; ++sample) {
        QByteArray line =
            "1," + QByteArray::number(sample % 400) + "," + QByteArray::number(sample / 9000) + ",130,M" +
            (sample % 70 == 0 ? "1" : "0") +
            ",T20,A900,B300,C400,D150,E160,F131,G120,H110,I140,J6,S10,T11,U12,V13,W14,X15,Y16,Z17,x1,y2,z40";
        lines += sample % 50 == 0 ? line + ",LOW" : line;
    }
    return wholeDive(lines);
}

/// The dive screen at 1920 by 1080 with every series checked, painted once in full.
struct Stage {
    Stage() {
        bench.put(largestDive());
        screen = &bench.show();
        screen->resize(kScreen);
        for (int box = 1; box <= 14; ++box) {
            control<QCheckBox>(*screen, QByteArray("Check" + QByteArray::number(box)).constData())
                .setChecked(true);
        }
        chart = &control<platform::Chart>(*screen, "MSChart1");
        QCoreApplication::processEvents();
        screen->grab();
    }
    void press(const char* button) { control<QAbstractButton>(*screen, button).click(); }
    void mouse(QEvent::Type type, QPointF at, Qt::MouseButton button, Qt::MouseButtons held) {
        QMouseEvent event(type, at, chart->mapToGlobal(at), button, held, Qt::NoModifier);
        QCoreApplication::sendEvent(chart, &event);
    }
    void wheel(int angle) {
        const QPointF at(chart->xOfRow(chart->view().first + chart->view().span() / 3), 200);
        QWheelEvent event(at, chart->mapToGlobal(at), {}, {0, angle}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(chart, &event);
    }
    DiveScreen bench;
    rbinterface* screen = nullptr;
    platform::Chart* chart = nullptr;
};

void report(benchmark::State& state, const char* share = "frame_share", double of = kFrame) {
    state.counters[share] = benchmark::Counter(static_cast<double>(state.iterations()) * of,
                                               benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void selectSample(benchmark::State& state) {
    Stage stage;
    auto& grid = control<platform::FlexGrid>(*stage.screen, "MSFlexGrid1");
    int row = 1;
    for ([[maybe_unused]] auto step : state) {
        row = (row + 7919) % (grid.rows() - 1) + 1;
        grid.setRow(row);
        QCoreApplication::processEvents();
    }
    report(state);
}

void playTick(benchmark::State& state) {
    Stage stage;
    if (state.range(0) != 0) {
        stage.press("Command2(0)");
    }
    stage.press("PlayDive");
    auto& timer = control<platform::TickTimer>(*stage.screen, "Timer3");
    for ([[maybe_unused]] auto step : state) {
        timer.expire();
        QCoreApplication::processEvents();
    }
    report(state);
}

void hover(benchmark::State& state) {
    Stage stage;
    double share = 0;
    for ([[maybe_unused]] auto step : state) {
        share = std::fmod(share + 0.0137, 1.0);
        const QPointF at(stage.chart->plotLeft() + share * stage.chart->plotWidth(), 150);
        stage.mouse(QEvent::MouseMove, at, Qt::NoButton, Qt::NoButton);
        QCoreApplication::processEvents();
    }
    report(state);
}

/// Nearer and further by turns, from the whole dive; or about a part of it.
void wheelStep(benchmark::State& state) {
    Stage stage;
    for (int notch = 0; notch < state.range(0); ++notch) {
        stage.wheel(120);
    }
    bool nearer = true;
    for ([[maybe_unused]] auto step : state) {
        stage.wheel(std::exchange(nearer, !nearer) ? 120 : -120);
        QCoreApplication::processEvents();
    }
    report(state);
}

/// `notches`: how near the view is that is dragged.
void dragStep(benchmark::State& state) {
    Stage stage;
    for (int notch = 0; notch < state.range(0); ++notch) {
        stage.wheel(120);
    }
    QPointF at(800, 200);
    stage.mouse(QEvent::MouseButtonPress, at, Qt::MiddleButton, Qt::MiddleButton);
    bool right = true;
    for ([[maybe_unused]] auto step : state) {
        at.rx() += std::exchange(right, !right) ? 6 : -6;
        stage.mouse(QEvent::MouseMove, at, Qt::NoButton, Qt::MiddleButton);
        QCoreApplication::processEvents();
    }
    stage.mouse(QEvent::MouseButtonRelease, at, Qt::MiddleButton, Qt::NoButton);
    report(state);
}

void resizeStep(benchmark::State& state) {
    Stage stage;
    bool smaller = true;
    for ([[maybe_unused]] auto step : state) {
        stage.screen->resize(std::exchange(smaller, !smaller) ? kScreen - QSize(8, 8) : kScreen);
        QCoreApplication::processEvents();
    }
    report(state);
}

void page(benchmark::State& state) {
    Stage stage;
    stage.press("Command2(0)");
    bool on = true;
    for ([[maybe_unused]] auto step : state) {
        stage.press(std::exchange(on, !on) ? "Command2(2)" : "Command2(1)");
        QCoreApplication::processEvents();
    }
    report(state);
}

/// The picture that follows a movement, in full.
void rest(benchmark::State& state) {
    Stage stage;
    for ([[maybe_unused]] auto step : state) {
        stage.chart->refresh();
        QCoreApplication::processEvents();
    }
    report(state);
}

/// A dive opened: file read and decoded, grid, chart, the window painted.
void openDive(benchmark::State& state) {
    DiveScreen bench;
    bench.put(largestDive(static_cast<int>(state.range(0))));
    for ([[maybe_unused]] auto step : state) {
        bench.show();
        QCoreApplication::processEvents();
        state.PauseTiming();
        bench.unload();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        state.ResumeTiming();
    }
    report(state, "opening_share", kOpening);
}

BENCHMARK(selectSample)->Unit(benchmark::kMillisecond);
BENCHMARK(playTick)->Arg(0)->Arg(1)->ArgName("zoomed")->Unit(benchmark::kMillisecond);
BENCHMARK(hover)->Unit(benchmark::kMillisecond);
BENCHMARK(wheelStep)->Arg(0)->Arg(6)->Arg(12)->ArgName("notches")->Unit(benchmark::kMillisecond);
BENCHMARK(dragStep)->Arg(1)->Arg(6)->Arg(12)->ArgName("notches")->Unit(benchmark::kMillisecond);
BENCHMARK(resizeStep)->Unit(benchmark::kMillisecond);
BENCHMARK(page)->Unit(benchmark::kMillisecond);
BENCHMARK(rest)->Unit(benchmark::kMillisecond);
BENCHMARK(openDive)
    ->Arg(100)
    ->Arg(2500)
    ->Arg(kMostSamples - 2)
    ->ArgName("samples")
    ->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
