// A download over the link. What a tick costs on top of a reply of 1 KB, 100 KB and 1 MB, as the mean while
// that reply doubles, as logic and with the whole screen behind it: `ratio` is against the 1 KB of the same
// run. And how long eight dives of 5 KB take on a line of 9600 baud, against the time that their bytes alone
// need there, and against that time in whole ticks: at a tick the end of a dive is found and the next asked
// for.

#include "link/directory.h"
#include "link/download.h"
#include "link/supervision.h"
#include "platform/serial/serialport.h"
#include "simulator/kdport.h"
#include "tests/link/fakehost.h"
#include "tests/link/linkstage.h"
#include "tests/support/testfolder.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <benchmark/benchmark.h>

#include <cmath>
#include <map>

namespace {

using namespace benthor;

constexpr int kArrival = 480; ///< bytes in half a second at 9600 baud
constexpr int kSizes[] = {1'000, 100'000, 1'000'000};

/// As many arrivals as the reply holds already.
int ticksOf(const benchmark::State& state) {
    return static_cast<int>(std::max<std::int64_t>(2, state.range(0) / kArrival));
}

/// The time of a tick, and its ratio to that on the smallest text.
void report(benchmark::State& state, const char* what, double seconds) {
    static std::map<std::string, double> smallest;
    const double tick = seconds / static_cast<double>(state.iterations()) / ticksOf(state);
    if (state.range(0) == kSizes[0]) {
        smallest[what] = tick;
    }
    state.counters["tick_us"] = tick * 1e6;
    state.counters["ratio"] = tick / smallest[what];
}

void logicTick(benchmark::State& state) {
    const QByteArray arrival(kArrival, 'x');
    const tests::TestFolder folder(tests::TestFolder::Store::Missing);
    double seconds = 0;
    for ([[maybe_unused]] auto step : state) {
        tests::FakeHost host;
        host.line.open = true;
        link::LinkState link;
        link.linkwatch = true;
        link.Timer3 = true;
        link.rxbuf.append(QByteArray(state.range(0), 'x'));
        link::Timer1_tick(link, host);
        link::Timer3_tick(link, host);
        QElapsedTimer clock;
        clock.start();
        for (int tick = 0; tick < ticksOf(state); ++tick) {
            host.line.waiting = arrival;
            link::MSComm1_received(link, host);
            link::Timer1_tick(link, host);
            link::Timer3_tick(link, host);
        }
        const double passed = static_cast<double>(clock.nsecsElapsed()) / 1e9;
        state.SetIterationTime(passed);
        seconds += passed;
    }
    report(state, "logic", seconds);
}

void screenTick(benchmark::State& state) {
    const QByteArray arrival = QByteArray(kArrival - 2, 'x') + "\r\n";
    double seconds = 0;
    for ([[maybe_unused]] auto step : state) {
        tests::LinkStage stage(QStringLiteral("Dive"));
        stage.connectDevice();
        stage.control<QAction>("mnuDetOn")->trigger(); // the raw text is there to be painted
        QByteArray before;
        while (before.size() < state.range(0)) {
            before += arrival;
        }
        stage.tick("Timer3");
        stage.receive(before);
        stage.tick("Timer1");
        stage.tick("Timer3");
        QCoreApplication::processEvents();
        QElapsedTimer clock;
        clock.start();
        for (int tick = 0; tick < ticksOf(state); ++tick) {
            stage.receive(arrival);
            stage.tick("Timer1");
            stage.tick("Timer3");
            QCoreApplication::processEvents();
        }
        const double passed = static_cast<double>(clock.nsecsElapsed()) / 1e9;
        state.SetIterationTime(passed);
        seconds += passed;
    }
    report(state, "screen", seconds);
}

class SerialHost : public tests::FakeHost {
public:
    platform::SerialPort& MSComm1() override { return working; }
    platform::SerialPort working;
};

void shareOfTheLine(benchmark::State& state) {
    constexpr int kDives = 8;
    constexpr int kDiveBytes = 5000;
    constexpr int kTick = 500;
    const tests::TestFolder folder;
    const QByteArray head = "ver=V3.12\r\nStart.......812345670\r\nProfile\r\n";
    const QByteArray end = "\r\nEnd\r\n";
    const QByteArray dive = head + QByteArray(kDiveBytes - head.size() - end.size(), 'x') + end;
    for ([[maybe_unused]] auto step : state) {
        simulator::KdPort device(folder.root(), 3,
                                 simulator::Kd(std::vector<QByteArray>(kDives, dive), "V3.12"));
        device.start();
        link::LinkState link;
        SerialHost host;
        QObject::connect(&host.working, &platform::SerialPort::received,
                         [&] { link::MSComm1_received(link, host); });
        link::resetgridheader(link);
        for (int number = 1; number <= kDives; ++number) {
            link.Mgrid.rows.emplace_back();
            link.Mgrid.rows.back().cells[0] = QStringLiteral("Dive%1").arg(number);
        }
        link.Timer2 = false;
        link::setcomnum(link, host, QStringLiteral("3"));
        QTimer ticks;
        QObject::connect(&ticks, &QTimer::timeout, [&] {
            if (link.Timer3) {
                link::Timer3_tick(link, host);
            }
        });
        ticks.start(kTick);
        QElapsedTimer clock;
        clock.start();
        link::cmddownloadall_click(link, host);
        while (link.Timer3) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        const double seconds = static_cast<double>(clock.nsecsElapsed()) / 1e9;
        const double bytesAlone = double(kDives) * kDiveBytes / simulator::KdPort::lineSpeed;
        if (host.messages.value(0) != QStringLiteral("%1  Dives Downloaded.").arg(kDives)) {
            state.SkipWithError("the download failed");
        }
        state.SetIterationTime(seconds);
        constexpr double kTickSeconds = kTick / 1000.0;
        const double wholeTicks = kDives * std::ceil(bytesAlone / kDives / kTickSeconds) * kTickSeconds;
        state.counters["ratio"] = seconds / bytesAlone;
        state.counters["of_whole_ticks"] = seconds / wholeTicks;
        state.counters["ticks_a_dive"] = (seconds - bytesAlone) / kDives / kTickSeconds;
    }
}

BENCHMARK(logicTick)->Arg(kSizes[0])->Arg(kSizes[1])->Arg(kSizes[2])->UseManualTime()->Unit(
    benchmark::kMicrosecond);
BENCHMARK(screenTick)
    ->Arg(kSizes[0])
    ->Arg(kSizes[1])
    ->Arg(kSizes[2])
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond)
    ->Iterations(5);
BENCHMARK(shareOfTheLine)->UseManualTime()->Unit(benchmark::kSecond)->Iterations(1);

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
