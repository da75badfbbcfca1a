// A firmware image on its way to a device: bytes a second against what the line carries, at both speeds.
// `ratio` is the line's own time for those bytes to the time that they took; 1 is a line that was never kept
// waiting.

#include "firmware/screens/reprog_link.h"
#include "firmware/session.h"
#include "link/screens/seriallines.h"
#include "link/supervision.h"
#include "platform/look/look.h"
#include "simulator/firmwareimage.h"
#include "simulator/kdport.h"
#include "tests/firmware/fakefirmwareneighbours.h"
#include "tests/support/scripteddialogs.h"
#include "tests/support/testfolder.h"
#include "tests/support/testsettings.h"

#include <QAbstractButton>
#include <QApplication>
#include <QThread>
#include <atomic>
#include <benchmark/benchmark.h>

namespace {

using namespace benthor;

constexpr int kUnits = 243; ///< of an image of 33,536 bytes, which goes out whole

struct Bench {
    Bench(int baud, int bytesPerSecond)
        : device(folder.root(), 3, loader(), bytesPerSecond) {
        QDir::setCurrent(folder.root());
        folder.put("Reprog/bpcsp2shchk.sog", image);
        link::writecomport(QStringLiteral("3"));
        device.paceReceived(bytesPerSecond);
        device.start();
        screen = std::make_unique<firmware::ReProg_Link>(neighbours, link::serialLines());
        screen->showScreen();
        if (baud != 9600) {
            press("Check1");
        }
    }
    static simulator::Kd loader() {
        simulator::Kd kd;
        kd.loader.emplace(simulator::FirmwareType::Rb);
        return kd;
    }
    void press(const char* name) { screen->findChild<QAbstractButton*>(QLatin1String(name))->click(); }

    tests::TestSettings settings;
    tests::TestFolder folder{tests::TestFolder::Store::Missing};
    tests::ScriptedDialogs dialogs;
    tests::FakeFirmwareNeighbours neighbours;
    QByteArray image = simulator::firmwareImage(simulator::FirmwareType::Rb, kUnits, 1);
    simulator::KdPort device;
    std::unique_ptr<firmware::ReProg_Link> screen;
};

/// From the image's first byte at the device to its last, the screen painting as it does for a user.
void shareOfTheLine(benchmark::State& state) {
    const int baud = static_cast<int>(state.range(0));
    const int bytesPerSecond = baud / 10;
    for ([[maybe_unused]] auto step : state) {
        Bench bench(baud, bytesPerSecond);
        bench.press("SendCh(6)");
        while (!bench.screen->state().Text4.holds("REPROG MODE")) {
            QCoreApplication::processEvents();
            bench.screen->Timer1_tick();
        }
        const qsizetype before = bench.device.received().size();
        std::chrono::steady_clock::time_point first, last;
        const qsizetype wanted = 2 + 128 * (bench.image.size() / 128);
        std::atomic<bool> done = false;
        const std::unique_ptr<QThread> watch(QThread::create([&] {
            while (bench.device.received().size() <= before) {
                QThread::usleep(200);
            }
            first = std::chrono::steady_clock::now();
            while (!done && bench.device.received().size() < before + wanted) {
                QThread::usleep(200);
            }
            last = std::chrono::steady_clock::now();
        }));
        watch->start();
        bench.press("Command2");
        done = true;
        watch->wait();
        if (bench.screen->state().sendstate != 2) {
            state.SkipWithError("the image was not taken");
        }
        const double seconds = std::chrono::duration<double>(last - first).count();
        state.SetIterationTime(seconds);
        state.counters["bytes_a_second"] = static_cast<double>(wanted) / seconds;
        state.counters["ratio"] = static_cast<double>(wanted) / bytesPerSecond / seconds;
    }
}

BENCHMARK(shareOfTheLine)->Arg(9600)->Arg(38400)->UseManualTime()->Unit(benchmark::kSecond)->Iterations(1);

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    look::apply(application);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
