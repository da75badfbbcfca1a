// Selecting a sample and a tick of play on the dive screen: a dive of 25,000 samples with every series
// checked, the window painted each time. `frame_share` is the time of one against a frame of 16 ms.

#include "platform/chart/chart.h"
#include "platform/grid/flexgrid.h"
#include "platform/screen/ticktimer.h"
#include "profile/diveprofile.h"
#include "tests/profile/divetext.h"
#include "tests/viewer/divescreen.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <benchmark/benchmark.h>

namespace {

using namespace benthor;
using namespace benthor::profile;
using namespace benthor::viewer;

constexpr double kFrame = 0.016; ///< seconds

/// The largest dive that the screen takes, with every letter, an alarm every 50 samples and a mark every 70.
QByteArray largestDive() {
    QByteArrayList lines;
    for (int sample = kFirstSample; sample <= kMostSamples - 2; ++sample) {
        QByteArray line =
            "1," + QByteArray::number(sample % 400) + "," + QByteArray::number(sample / 9000) + ",130,M" +
            (sample % 70 == 0 ? "1" : "0") +
            ",T20,A900,B300,C400,D150,E160,F131,G120,H110,I140,J6,S10,T11,U12,V13,W14,X15,Y16,Z17,x1,y2,z40";
        lines += sample % 50 == 0 ? line + ",LOW" : line;
    }
    return wholeDive(lines);
}

struct Stage {
    Stage() {
        bench.put(largestDive());
        screen = &bench.show();
        for (int box = 1; box <= 14; ++box) {
            control<QCheckBox>(*screen, QByteArray("Check" + QByteArray::number(box)).constData())
                .setChecked(true);
        }
        QCoreApplication::processEvents();
    }
    DiveScreen bench;
    rbinterface* screen = nullptr;
};

void report(benchmark::State& state) {
    state.counters["frame_share"] =
        benchmark::Counter(static_cast<double>(state.iterations()) * kFrame,
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
        control<QAbstractButton>(*stage.screen, "Command2(0)").click();
    }
    control<QAbstractButton>(*stage.screen, "PlayDive").click();
    auto& timer = control<platform::TickTimer>(*stage.screen, "Timer3");
    for ([[maybe_unused]] auto step : state) {
        timer.expire();
        QCoreApplication::processEvents();
    }
    report(state);
}

BENCHMARK(selectSample)->Unit(benchmark::kMillisecond);
BENCHMARK(playTick)->Arg(0)->Arg(1)->ArgName("zoomed")->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
