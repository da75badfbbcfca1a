// The start, from the end of the splash to the painted main screen, on stores of three sizes: where the
// splash has stood for its second and a half, and where it was clicked away at once. Beside it an empty
// window, and what the start does with the store by the bare engine: VACUUM INTO, a quick check and a copy.
// "gap" is the longest time between two paintings of any window.

#include "bench/store/storebench.h"

#include "platform/look/look.h"
#include "platform/programfolder.h"
#include "platform/screen/screen.h"
#include "platform/screen/ticktimer.h"
#include "session/process.h"
#include "shell/house.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QMainWindow>
#include <QSettings>
#include <QThread>
#include <benchmark/benchmark.h>
#include <cstdlib>

namespace {

using namespace benthor;

/// Notes the longest time without a painting.
class Gaps : public QObject {
public:
    Gaps() {
        qApp->installEventFilter(this);
        since_.start();
    }
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            look();
        }
        return false;
    }
    double longest() {
        look();
        return static_cast<double>(longest_) / 1e6;
    }

private:
    void look() {
        longest_ = std::max(longest_, since_.nsecsElapsed());
        since_.restart();
    }
    QElapsedTimer since_;
    qint64 longest_ = 0;
};

platform::Screen* screen(const char* name) {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (auto* found = qobject_cast<platform::Screen*>(window);
            found != nullptr && found->isLoaded() && found->objectName() == QLatin1String(name)) {
            return found;
        }
    }
    return nullptr;
}

constexpr int kSplash = 1500; // milliseconds

void startProgram(benchmark::State& state, int splashStands) {
    const bench::BenchFolder& folder = bench::folderOf(static_cast<int>(state.range(0)));
    platform::ProgramFolder::setCurrent(platform::ProgramFolder(folder.root()));
    double gap = 0;
    for ([[maybe_unused]] auto step : state) {
        state.PauseTiming();
        process() = {};
        auto house = std::make_unique<shell::House>();
        house->start();
        auto* timer = screen("frmSplash")->findChild<platform::TickTimer*>(QStringLiteral("Timer1"));
        timer->setEnabled(false); // this is the clock
        QElapsedTimer splash;
        splash.start();
        do {
            QCoreApplication::processEvents();
            QThread::msleep(splashStands > 0 ? 1 : 0);
        } while (splash.elapsed() < splashStands);
        Gaps gaps;
        state.ResumeTiming();
        timer->expire();
        QCoreApplication::processEvents();
        state.PauseTiming();
        if (screen("main") == nullptr || !screen("main")->isVisible()) {
            state.SkipWithError("the main screen is missing");
        }
        gap = std::max(gap, gaps.longest());
        house.reset();
        process().database.close();
        state.ResumeTiming();
    }
    state.counters["gap_ms"] = gap;
}

void emptyWindow() {
    QMainWindow window;
    window.show();
    QCoreApplication::processEvents();
}

void bareStart(benchmark::State& state) {
    const bench::BenchFolder& folder = bench::folderOf(static_cast<int>(state.range(0)));
    const QString packed = folder.path("bare.mdb");
    const QString copy = folder.path("copy.mdb");
    for ([[maybe_unused]] auto step : state) {
        emptyWindow();
        bench::BareStore(folder.path("rb.mdb")).run(("VACUUM INTO '" + packed.toStdString() + "'").c_str());
        bench::BareStore(packed).run("PRAGMA quick_check");
        if (!QFile::copy(packed, copy)) {
            state.SkipWithError("the copy failed");
        }
        QFile::remove(packed);
        QFile::remove(copy);
    }
}

} // namespace

BENCHMARK(bareStart)
    ->Name("start, reference")
    ->Arg(10)
    ->Arg(1000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(startProgram, stood, kSplash)
    ->Name("start")
    ->Arg(10)
    ->Arg(1000)
    ->Arg(100000)
    ->Iterations(5)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(startProgram, clicked, 0)
    ->Name("start, splash clicked away")
    ->Arg(10)
    ->Arg(1000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, bench::folderOf(10).root());
    look::apply(application);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
