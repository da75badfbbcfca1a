// The list of 10,000 good dives, filled and validated on its screen, beside a reference: the same three
// queries a dive, prepared once, every value of every row read and nothing done with it.

#include "bench/store/storebench.h"

#include "logbook/screens/rbmain.h"
#include "platform/grid/flexgrid.h"
#include "platform/programfolder.h"
#include "session/process.h"

#include <QAction>
#include <QApplication>
#include <QSettings>
#include <benchmark/benchmark.h>

namespace {

using namespace benthor;

constexpr int kDives = 10000;

const bench::BenchFolder& folderOfDives() {
    static const bench::BenchFolder folder;
    static const bool filled = [] {
        bench::BareStore store(folder.path("rb.mdb"));
        store.run("PRAGMA synchronous = OFF");
        bench::BareDiveWriter writer(store);
        for (int i = 1; i <= kDives; ++i) {
            writer.write(i);
        }
        return true;
    }();
    static_cast<void>(filled);
    return folder;
}

void fillList(benchmark::State& state) {
    const bench::BenchFolder& folder = folderOfDives();
    platform::ProgramFolder::setCurrent(platform::ProgramFolder(folder.root()));
    process().database.open(folder.path("rb.mdb"));
    process().depthunit = QStringLiteral("metre");
    logbook::rbmain list;
    list.load();
    list.findChild<QAction*>(QStringLiteral("mnusdate"))->trigger();
    const auto* grid = list.findChild<platform::FlexGrid*>(QStringLiteral("MSFlexGrid1"));
    for ([[maybe_unused]] auto step : state) {
        process().problemtext.clear();
        list.filldivelist();
        if (grid->rows() != kDives + 1 || !process().problemtext.isEmpty()) {
            state.SkipWithError("the list is wrong");
        }
    }
    list.unload();
    process().database.close();
}

size_t readRows(sqlite3_stmt* statement, const std::string& id) {
    size_t bytes = 0;
    sqlite3_bind_text(statement, 1, id.data(), static_cast<int>(id.size()), nullptr);
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
    bench::BareStore store(folderOfDives().path("rb.mdb"));
    sqlite3_stmt* const main = store.prepare("SELECT * FROM main WHERE DiveID = ?1");
    sqlite3_stmt* const gas = store.prepare("SELECT * FROM gas WHERE diveid = ?1");
    sqlite3_stmt* const tissue = store.prepare("SELECT * FROM tissue WHERE diveid = ?1");
    for ([[maybe_unused]] auto step : state) {
        size_t bytes = 0;
        for (int i = 1; i <= kDives; ++i) {
            const std::string id = ("D" + QByteArray::number(i).rightJustified(7, '0')).toStdString();
            bytes += readRows(main, id) + readRows(gas, id) + readRows(tissue, id);
        }
        if (bytes < kDives * 100) {
            state.SkipWithError("rows are missing");
        }
    }
}

} // namespace

BENCHMARK(bareReading)->Name("list 10000 dives, reference")->Unit(benchmark::kMillisecond);
BENCHMARK(fillList)->Name("list 10000 dives")->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folderOfDives().root());
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
