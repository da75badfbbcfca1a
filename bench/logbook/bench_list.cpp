// The list of good dives, sorted by date, on its screen: until its first rows are painted, and until all are
// there and checked; beside it the same rows of the three tables read by bare statements, one pass each.
// "MiB" is the memory that the process needs more with the list than before it, and "bytes a dive" what
// comes upon each dive; "gap" is the longest time between two paintings.

#include "bench/store/storebench.h"

#include "logbook/screens/rbmain.h"
#include "platform/grid/flexgrid.h"
#include "platform/programfolder.h"
#include "platform/screen/screenslot.h"
#include "session/process.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QSettings>
#include <benchmark/benchmark.h>
#include <malloc.h>

namespace {

using namespace benthor;

/// Sorted by date.
const bench::BenchFolder& sortedFolder(int dives) {
    const bench::BenchFolder& folder = bench::folderOf(dives);
    QFile key(folder.path("dsort.txt"));
    if (!key.open(QIODevice::WriteOnly) || key.write("d\r\n") != 3) {
        std::abort();
    }
    return folder;
}

/// Notes when the grid painted its first rows, and the longest time without a painting from then on.
class Paintings : public QObject {
public:
    Paintings() {
        qApp->installEventFilter(this);
        since_.start();
        began_.start();
    }
    bool eventFilter(QObject* watched, QEvent* event) override {
        const auto* grid = qobject_cast<platform::FlexGrid*>(watched->parent());
        if (event->type() == QEvent::Paint && first == 0 && grid != nullptr && watched == grid->viewport() &&
            !grid->text(1, 0).isEmpty()) {
            first = static_cast<double>(began_.nsecsElapsed()) / 1e6;
        }
        if (event->type() == QEvent::Paint && first > 0) {
            gap = seen_ ? std::max(gap, static_cast<double>(since_.nsecsElapsed()) / 1e6) : gap;
            seen_ = true;
            since_.restart();
        }
        return false;
    }
    double first = 0;
    double gap = 0;

private:
    QElapsedTimer began_;
    QElapsedTimer since_;
    bool seen_ = false;
};

/// What the process has in memory now, in bytes, without what an earlier run left unused.
double memory() {
    malloc_trim(0);
    QFile status(QStringLiteral("/proc/self/statm"));
    const bool opened = status.open(QIODevice::ReadOnly);
    return opened ? status.readAll().split(' ').at(1).toDouble() * 4096 : 0;
}

void fillList(benchmark::State& state) {
    const int dives = static_cast<int>(state.range(0));
    const bench::BenchFolder& folder = sortedFolder(dives);
    platform::ProgramFolder::setCurrent(platform::ProgramFolder(folder.root()));
    process().database.open(folder.path("rb.mdb"));
    process().depthunit = QStringLiteral("metre");
    double first = 0;
    double gap = 0;
    double needed = 0;
    for ([[maybe_unused]] auto step : state) {
        state.PauseTiming();
        const double before = memory();
        state.ResumeTiming();
        platform::ScreenSlot<logbook::rbmain> list([] { return new logbook::rbmain; });
        Paintings paintings;
        list.show();
        QCoreApplication::processEvents();
        const auto* grid = list.get().findChild<platform::FlexGrid*>(QStringLiteral("MSFlexGrid1"));
        if (grid->rows() != dives + 1 || !process().problemtext.isEmpty() ||
            !grid->property("filled").toBool()) {
            state.SkipWithError("the list is wrong");
        }
        state.PauseTiming();
        needed = std::max(needed, memory() - before);
        first = std::max(first, paintings.first);
        gap = std::max(gap, paintings.gap);
        list.unload();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        state.ResumeTiming();
    }
    process().mainrecordset.close();
    process().database.close();
    state.counters["first_ms"] = first;
    state.counters["gap_ms"] = gap;
    state.counters["MiB"] = needed / (1 << 20);
    state.counters["bytes a dive"] = needed / dives;
}

size_t readRows(sqlite3_stmt* statement) {
    size_t bytes = 0;
    const int columns = sqlite3_column_count(statement);
    while (sqlite3_step(statement) == SQLITE_ROW) {
        for (int i = 0; i < columns; ++i) {
            benchmark::DoNotOptimize(sqlite3_column_text(statement, i));
            bytes += static_cast<size_t>(sqlite3_column_bytes(statement, i));
        }
    }
    sqlite3_reset(statement);
    return bytes;
}

void bareReading(benchmark::State& state) {
    const int dives = static_cast<int>(state.range(0));
    bench::BareStore store(sortedFolder(dives).path("rb.mdb"));
    sqlite3_stmt* const main = store.prepare("SELECT * FROM main ORDER BY startdate");
    sqlite3_stmt* const gas = store.prepare("SELECT * FROM gas");
    sqlite3_stmt* const tissue = store.prepare("SELECT * FROM tissue");
    for ([[maybe_unused]] auto step : state) {
        if (readRows(main) + readRows(gas) + readRows(tissue) < static_cast<size_t>(dives) * 100) {
            state.SkipWithError("rows are missing");
        }
    }
}

/// The same by the shell of the engine, its output to nowhere.
void shellReading(benchmark::State& state) {
    const QString store = sortedFolder(static_cast<int>(state.range(0))).path("rb.mdb");
    const std::string command = "sqlite3 '" + store.toStdString() +
                                "' 'SELECT * FROM main ORDER BY startdate; SELECT * FROM gas; "
                                "SELECT * FROM tissue' >/dev/null";
    for ([[maybe_unused]] auto step : state) {
        if (std::system(command.c_str()) != 0) {
            state.SkipWithError("there is no sqlite3");
            break;
        }
    }
}

void sizes(benchmark::internal::Benchmark* one) {
    one->Arg(100)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)->UseRealTime();
}

} // namespace

BENCHMARK(shellReading)->Name("list, the engine's shell")->Apply(sizes);
BENCHMARK(bareReading)->Name("list, reference")->Apply(sizes);
BENCHMARK(fillList)->Name("list")->Apply(sizes);

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, sortedFolder(100).root());
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
