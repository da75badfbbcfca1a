// Import of waiting dive files, beside a reference of the same work done barely: each file copied
// twice, the copies synced, the same rows put into the store by prepared statements, one durable transaction
// a dive, the source removed.

#include "bench/store/storebench.h"

#include "divefiles/importer.h"
#include "platform/clock.h"
#include "session/process.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace {

using namespace benthor;

void importFiles(benchmark::State& state) {
    const int files = static_cast<int>(state.range(0));
    for ([[maybe_unused]] auto step : state) {
        state.PauseTiming();
        const auto folder = std::make_unique<bench::BenchFolder>();
        folder->layFiles(files);
        process().database.open(folder->path("rb.mdb"));
        divefiles::ImportState run;
        divefiles::ImportScreen screen;
        state.ResumeTiming();
        const divefiles::ImportEnd end =
            divefiles::importdives(platform::ProgramFolder(folder->root()), run, screen);
        state.PauseTiming();
        if (end != divefiles::ImportEnd::Done ||
            process().database.openRecordset("SELECT * FROM tissue").recordCount() != 16 * files) {
            state.SkipWithError("the import failed");
        }
        process().database.close();
        state.ResumeTiming();
    }
}

void bareCopy(const QByteArray& from, const QByteArray& to) {
    const int source = open(from.constData(), O_RDONLY);
    const int target = open(to.constData(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
    QByteArray bytes(64 * 1024, Qt::Uninitialized);
    ssize_t count = 0;
    while ((count = read(source, bytes.data(), static_cast<size_t>(bytes.size()))) > 0) {
        if (write(target, bytes.constData(), static_cast<size_t>(count)) != count) {
            std::abort();
        }
    }
    fsync(target);
    close(target);
    close(source);
}

void bareSyncFolder(const QByteArray& path) {
    const int folder = open(path.constData(), O_RDONLY | O_DIRECTORY);
    fsync(folder);
    close(folder);
}

void bareImport(benchmark::State& state) {
    const int files = static_cast<int>(state.range(0));
    for ([[maybe_unused]] auto step : state) {
        state.PauseTiming();
        const auto folder = std::make_unique<bench::BenchFolder>();
        folder->layFiles(files);
        auto store = std::make_unique<bench::BareStore>(folder->path("rb.mdb"));
        bench::BareDiveWriter writer(*store);
        const QByteArray root = folder->root().toUtf8();
        state.ResumeTiming();
        const auto name = [](int i) {
            return "Dive" + QByteArray::number(i).rightJustified(6, '0') + ".txt";
        };
        for (int i = 0; i < files; ++i) {
            bareCopy(root + "/new/" + name(i), root + "/old/" + name(i));
            bareCopy(root + "/new/" + name(i), root + "/dbtxt/11A2B3C" + name(i));
        }
        bareSyncFolder(root + "/old");
        bareSyncFolder(root + "/dbtxt");
        for (int i = 0; i < files; ++i) {
            writer.write(i + 1);
            unlink((root + "/new/" + name(i)).constData());
        }
        state.PauseTiming();
        store.reset();
        state.ResumeTiming();
    }
}

} // namespace

BENCHMARK(bareImport)
    ->Name("import, reference")
    ->Arg(10)
    ->Arg(1000)
    ->Arg(10000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(importFiles)
    ->Name("import")
    ->Arg(10)
    ->Arg(1000)
    ->Arg(10000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_MAIN();
