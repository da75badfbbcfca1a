// The program at rest: what its thread costs of a core while nobody touches it, on the main screen and on a
// link screen that is connected to a device. `core` is the share, `wakeups` are those of a second. The timers
// that are told wake it: those of the screens at 1 Hz, those of the link at 2 Hz and, while it listens,
// faster.

#include "link/screens/pc_link_1.h"
#include "link/screens/seriallines.h"
#include "simulator/demodives.h"
#include "simulator/kdport.h"
#include "tests/shell/housestage.h"

#include <QAction>
#include <QEventLoop>
#include <QTimer>
#include <benchmark/benchmark.h>

#include <sys/resource.h>

namespace {

using namespace benthor;

constexpr int kPort = 3;
constexpr int kRest = 10; ///< seconds

struct Spent {
    double seconds = 0;
    double wakeups = 0;
};

/// Of the calling thread, so that the device in software is left out.
Spent spent() {
    rusage usage{};
    getrusage(RUSAGE_THREAD, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return {seconds(usage.ru_utime) + seconds(usage.ru_stime), static_cast<double>(usage.ru_nvcsw)};
}

void rest(benchmark::State& state) {
    for ([[maybe_unused]] auto step : state) {
        const Spent before = spent();
        QEventLoop loop; // a test's own wait looks a hundred times a second
        QTimer::singleShot(kRest * 1000, &loop, &QEventLoop::quit);
        loop.exec();
        const Spent after = spent();
        state.counters["core"] = (after.seconds - before.seconds) / kRest;
        state.counters["wakeups"] = (after.wakeups - before.wakeups) / kRest;
    }
}

struct House {
    House()
        : program("Close", tests::TestFolder::Store::Fresh, link::serialLines())
        , device(program.folder.root(), kPort, simulator::Kd(simulator::deviceDives())) {
        QDir::setCurrent(program.folder.root());
        program.passSplash();
        tests::control<platform::TickTimer>("main", "Timer4")
            ->setEnabled(false); // no list that closes itself
    }
    tests::Program program;
    simulator::KdPort device;
};

void mainScreen(benchmark::State& state) {
    House house;
    QTest::qWait(3000); // the hidden link screen has begun its search
    rest(state);
}

void connected(benchmark::State& state) {
    constexpr int kPatience = 60000; ///< milliseconds
    House house;
    house.device.start();
    tests::control<QAction>("main", "cmdcommandsend")->trigger();
    auto* link = qobject_cast<link::PC_Link_1*>(tests::loaded("PC_Link_1"));
    if (link == nullptr ||
        !QTest::qWaitFor([link] { return link->caption() == QLatin1String("Connected"); }, kPatience)) {
        state.SkipWithError("the device was not found");
        return;
    }
    QTest::qWait(10000); // the first readings have come
    rest(state);
}

BENCHMARK(mainScreen)->Iterations(1)->UseRealTime()->Unit(benchmark::kSecond);
BENCHMARK(connected)->Iterations(1)->UseRealTime()->Unit(benchmark::kSecond);

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    look::apply(application);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
