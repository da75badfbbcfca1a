// What it costs to bring all dives of another logbook over: comparing, the proven copy, the rows and what is
// kept so that it can be taken back; beside it the same rows through the bare engine, in one transaction too.
// The dives have no files here: copying those costs what copying costs.

#include "bench/store/storebench.h"
#include "logbook/merge.h"
#include "session/process.h"

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <sys/resource.h>

using namespace benthor;

namespace {

constexpr int kGases = 10;
constexpr int kTissues = 16;

/// Dives 1 to `dives`, ten gases and sixteen tissues each, in one transaction.
void fill(const bench::BenchFolder& folder, int dives) {
    bench::BareStore store(folder.path("rb.mdb"));
    sqlite3_stmt* const main =
        store.prepare("INSERT INTO main (DiveID, UserName, Location, startdate, Duration, "
                      "MaxDepth, Suit, Startcode, divenote, Version, Interval) VALUES (?1, "
                      "?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11)");
    sqlite3_stmt* const gas = store.prepare("INSERT INTO gas VALUES (?1, ?2, ?3, ?4, ?5, ?6)");
    sqlite3_stmt* const tissue = store.prepare("INSERT INTO tissue VALUES (?1, ?2, ?3, ?4)");
    store.run("BEGIN IMMEDIATE");
    for (int number = 1; number <= dives; ++number) {
        const std::string id = bench::diveId(number);
        store.run(main, {id, "KD00123", "Dive000000.txt", "2004-09-03 10:00:00", "41:7", "23.400", "KD00123",
                         std::to_string(400000000 + number),
                         "Visibility 12 m; a wall, a cave and a long way back", "V3.12", "10"});
        for (int row = 0; row < kGases; ++row) {
            store.run(gas, {id, std::to_string(row), "79", "0", "660", "1\r"});
        }
        for (int row = 0; row < kTissues; ++row) {
            store.run(tissue, {id, std::to_string(row), "79", "0\r"});
        }
    }
    store.run("COMMIT");
}

void tell(benchmark::State& state, int dives) {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    state.SetItemsProcessed(state.iterations() * dives);
    state.counters["MiB"] = static_cast<double>(usage.ru_maxrss) / 1024;
}

void bareEngine(benchmark::State& state) {
    const int dives = static_cast<int>(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        const bench::BenchFolder folder;
        state.ResumeTiming();
        fill(folder, dives);
    }
    tell(state, dives);
}

void mergesAll(benchmark::State& state) {
    const int dives = static_cast<int>(state.range(0));
    const bench::BenchFolder there;
    fill(there, dives);
    for (auto _ : state) {
        state.PauseTiming();
        const bench::BenchFolder here;
        process() = Process();
        const platform::ProgramFolder folder(here.root());
        process().database.open(here.path("rb.mdb"));
        state.ResumeTiming();
        {
            logbook::OtherLogbook other(there.root(), here.path("rb.mdb"));
            const auto plan = logbook::planmerge(process().database, folder, other);
            const auto result =
                logbook::mergedives(process().database, folder, other, plan, logbook::plainchoices(plan));
            if (result.came != dives || !result.notTakenBack.isEmpty()) {
                std::abort();
            }
        }
        state.PauseTiming();
        process() = Process();
        state.ResumeTiming();
    }
    tell(state, dives);
}

BENCHMARK(bareEngine)->Arg(100)->Arg(1000)->Arg(20000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(mergesAll)->Arg(100)->Arg(1000)->Arg(20000)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

BENCHMARK_MAIN();
