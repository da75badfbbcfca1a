// Dives going out in each open format, beside writing the same bytes: to a file that is synced, and both from
// dives in memory and from the store with its files; the same for one dive of 25,000 samples. A last run each
// shows how the memory grows with the dives.

#include "bench/store/storebench.h"

#include "exports/dataset.h"
#include "exports/exportdives.h"
#include "exports/logbookjson.h"
#include "exports/outputfile.h"
#include "exports/samplescsv.h"
#include "exports/uddf.h"
#include "exports/wholewrite.h"
#include "exports/workahead.h"
#include "exports/zxulogbook.h"
#include "platform/files.h"
#include "session/process.h"

#include <benchmark/benchmark.h>

#include <QDir>
#include <QDirIterator>

#include <cstdlib>
#include <malloc.h>

namespace {

using namespace benthor;
using namespace benthor::exports;

struct Size {
    int dives;
    int samples; ///< of each
};

constexpr int kDives = 1000;
constexpr Size kMany{kDives, 720}; ///< two hours at 10 s
constexpr Size kLong{1, 25000};

/// A dive as a rebreather records it: cells, setpoint, supplies, ceiling, now and then an alarm.
QByteArray richDive(int number, int samples) {
    QByteArray text = bench::usualDive(number);
    text.truncate(text.indexOf("Profile"));
    text += "Profile\r\nTime,Depth,Mix\r\n";
    for (int i = 0; i < samples; ++i) {
        const auto n = [&](int base, int spread) {
            return QByteArray::number(base + (i * 37 + number) % spread);
        };
        text += "," + n(300, 150) + "," + QByteArray::number(i / 300) + "," + n(118, 15) + ",M0,T" + n(8, 3) +
                ",A" + n(500, 90) + ",B" + n(880, 9) + ",C" + n(830, 9) + ",D" + n(140, 40) + ",E" +
                n(120, 60) + ",F" + n(118, 15) + ",G" + n(116, 15) + ",H" + n(119, 15) + ",I130,J" +
                QByteArray::number(i % 12) + (i % 50 == 0 ? ",LOW" : "") + "\r\n";
    }
    return text + "End\r\n";
}

/// A store with dives whose files are links to 100 of them: what is read is the same for each number of
/// dives.
class Logbook {
public:
    explicit Logbook(int dives, int samples = kMany.samples) {
        constexpr int kFiles = 100;
        process().database.open(folder_.path("rb.mdb"));
        process().database.execute("PRAGMA synchronous = OFF");
        process().database.execute("BEGIN");
        for (int i = 1; i <= dives; ++i) {
            if (i <= kFiles) {
                QFile file(folder_.path("dbtxt") + QStringLiteral("/%1.txt").arg(i));
                if (!file.open(QIODevice::WriteOnly) || file.write(richDive(i, samples)) < 0) {
                    std::abort();
                }
            }
            const QString id = QString::fromStdString(bench::diveId(i));
            process().database.execute(
                platform::sqlWith("INSERT INTO main (DiveID, Location, Suit, startdate, finisheddate, "
                                  "\"Interval\", MaxDepth, Duration, "
                                  "otu, dbtxtname) VALUES ('",
                                  id, "', 'Dive', 'KD00123', '",
                                  QString::number(2000 + i % 20) + QStringLiteral("-07-15 08:55:17"),
                                  "', '2008-07-15 10:55:17', ", "'10', '42.1', '120:0', '55', '",
                                  QStringLiteral("%1.txt").arg((i - 1) % kFiles + 1), "')"));
            process().database.execute(
                platform::sqlWith("INSERT INTO gas VALUES ('", id, "', '0', '79', '0', '660', '1')"));
        }
        process().database.execute("COMMIT");
    }
    ~Logbook() { process().database.close(); }
    Logbook(const Logbook&) = delete;
    Logbook& operator=(const Logbook&) = delete;

    QString root() const { return folder_.root(); }
    QString out() const { return folder_.path("out"); }

private:
    bench::BenchFolder folder_;
};

struct Json {
    static constexpr DiveFormat kFormat = DiveFormat::Json;
    static auto prepare(const WholeDive& dive) { return LogbookJson::prepare(dive); }
    explicit Json(QIODevice& device)
        : format(device) {}
    LogbookJson format;
};
struct Csv {
    static constexpr DiveFormat kFormat = DiveFormat::Csv;
    static auto prepare(const WholeDive& dive) { return SamplesCsv::prepare(dive, SampleIds::First); }
    explicit Csv(QIODevice& device)
        : format(device, SampleIds::First) {}
    SamplesCsv format;
};
struct Zxu {
    static constexpr DiveFormat kFormat = DiveFormat::Zxu;
    static auto prepare(const WholeDive& dive) { return ZxuLogbook::prepare(dive); }
    explicit Zxu(QIODevice& device)
        : format(device, QDateTime({2026, 2, 3}, {4, 5, 6})) {}
    ZxuLogbook format;
};

struct Uddf {
    static constexpr DiveFormat kFormat = DiveFormat::Uddf;
    static auto prepare(const WholeDive& dive) { return UddfWriter::prepare(dive); }
    explicit Uddf(QIODevice& device)
        : format(device, QStringLiteral("2.0"), QDateTime({2026, 2, 3}, {4, 5, 6})) {}
    UddfWriter format;
};

/// The dives of the store, as the program and the tool let them out.
template <typename Format> void goOut(DiveReader& reader, const QStringList& ids, const QString& path) {
    OutputFile file(path, true);
    exportdives(Format::kFormat, file.device(), reader, ids);
    file.commit();
}

void writeBytes(const QByteArray& bytes, const QString& path) {
    OutputFile file(path, true);
    writeWhole(file.device(), bytes);
    file.commit();
}

void setRate(benchmark::State& state, qint64 bytes) {
    state.SetBytesProcessed(state.iterations() * bytes);
}

/// The reference: what the format makes of the dives, as bytes that are there already.
template <typename Format> void sameBytes(benchmark::State& state, Size size) {
    const Logbook logbook(size.dives, size.samples);
    const platform::ProgramFolder folder(logbook.root());
    DiveReader reader(process().database, folder);
    goOut<Format>(reader, reader.identifiers(), logbook.out());
    const QByteArray bytes = platform::readFile(logbook.out(), 4LL << 30).value();
    for ([[maybe_unused]] auto step : state) {
        writeBytes(bytes, logbook.out());
    }
    setRate(state, bytes.size());
}

/// Dives that are in memory already: the format by itself, on all cores as the program does it.
template <typename Format> void fromMemory(benchmark::State& state) {
    constexpr int kHeld = 100; // again and again
    using Writer = decltype(Format::format);
    const Logbook logbook(kHeld);
    const platform::ProgramFolder folder(logbook.root());
    DiveReader reader(process().database, folder);
    std::vector<WholeDive> dives;
    for (const QString& id : reader.identifiers()) {
        dives.push_back(reader.read(id).value());
    }
    for ([[maybe_unused]] auto step : state) {
        OutputFile file(logbook.out(), true);
        Format out(file.device());
        WorkAhead<typename Writer::Prepared> work(kDives, [&dives](qsizetype index) {
            return [&dive = dives[static_cast<size_t>(index % kHeld)]] { return Format::prepare(dive); };
        });
        out.format.begin();
        for (int i = 0; i < kDives; ++i) {
            out.format.add(work.next());
        }
        out.format.end();
        file.commit();
    }
    setRate(state, QFileInfo(logbook.out()).size());
}

/// The whole way, from the store and the dives' files.
template <typename Format> void fromStore(benchmark::State& state, Size size) {
    const Logbook logbook(size.dives, size.samples);
    const platform::ProgramFolder folder(logbook.root());
    DiveReader reader(process().database, folder);
    const QStringList ids = reader.identifiers();
    for ([[maybe_unused]] auto step : state) {
        goOut<Format>(reader, ids, logbook.out());
    }
    setRate(state, QFileInfo(logbook.out()).size());
}

/// What all formats have before them: the rows read and the profile decoded.
void readDives(benchmark::State& state) {
    const Logbook logbook(kDives);
    const platform::ProgramFolder folder(logbook.root());
    DiveReader reader(process().database, folder);
    const QStringList ids = reader.identifiers();
    for ([[maybe_unused]] auto step : state) {
        for (const QString& id : ids) {
            benchmark::DoNotOptimize(reader.read(id));
        }
    }
}

void writesDataset(benchmark::State& state) {
    const bool again = state.range(0) != 0;
    const Logbook logbook(kDives);
    const platform::ProgramFolder folder(logbook.root());
    DiveReader reader(process().database, folder);
    const QStringList ids = reader.identifiers();
    if (again) {
        writeDataset(logbook.out(), "KD00123", reader, ids);
    }
    for ([[maybe_unused]] auto step : state) {
        if (!again) {
            state.PauseTiming();
            QDir(logbook.out()).removeRecursively();
            state.ResumeTiming();
        }
        const DatasetCounts counts = writeDataset(logbook.out(), "KD00123", reader, ids);
        state.counters["written"] = static_cast<double>(counts.written);
    }
    state.SetLabel(again ? "nothing has changed" : "all is new");
}

void sameFiles(benchmark::State& state) {
    const Logbook logbook(kDives);
    const platform::ProgramFolder folder(logbook.root());
    DiveReader reader(process().database, folder);
    writeDataset(logbook.out(), "KD00123", reader, reader.identifiers());
    std::vector<std::pair<QString, QByteArray>> files;
    for (QDirIterator all(logbook.out(), QDir::Files, QDirIterator::Subdirectories); all.hasNext();) {
        const QString path = all.next();
        files.emplace_back(path, platform::readFile(path).value());
    }
    for ([[maybe_unused]] auto step : state) {
        state.PauseTiming();
        for (const auto& [path, bytes] : files) {
            QFile::remove(path);
        }
        state.ResumeTiming();
        for (const auto& [path, bytes] : files) {
            writeBytes(bytes, path);
        }
    }
}

/// Kilobytes that the process holds at its most, from here on.
double highWater(bool reset) {
    if (reset) {
        malloc_trim(0);
        if (QFile file("/proc/self/clear_refs"); file.open(QIODevice::WriteOnly)) {
            file.write("5");
        }
    }
    QFile status("/proc/self/status");
    if (!status.open(QIODevice::ReadOnly)) {
        return 0;
    }
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith("VmHWM:")) {
            return line.mid(6).simplified().split(' ').first().toDouble();
        }
    }
    return 0;
}

template <typename Format> void memory(benchmark::State& state) {
    const Logbook logbook(static_cast<int>(state.range(0)));
    const platform::ProgramFolder folder(logbook.root());
    DiveReader reader(process().database, folder);
    const QStringList ids = reader.identifiers();
    for ([[maybe_unused]] auto step : state) {
        const double before = highWater(true);
        goOut<Format>(reader, ids, QStringLiteral("/dev/null"));
        state.counters["kB_before"] = before;
        state.counters["kB_more"] = highWater(false) - before;
    }
}

template <typename Format> void registerFormat(const char* name) {
    const auto named = [name](const char* what) { return std::string(what) + '/' + name; };
    const auto add = [&](const char* what, auto run) {
        return benchmark::RegisterBenchmark(named(what).c_str(), run)
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime();
    };
    const auto inSize = [](void (*run)(benchmark::State&, Size), Size size) {
        return [run, size](benchmark::State& state) { run(state, size); };
    };
    add("same_bytes", inSize(&sameBytes<Format>, kMany));
    add("from_memory", fromMemory<Format>);
    add("from_store", inSize(&fromStore<Format>, kMany));
    add("same_bytes_long", inSize(&sameBytes<Format>, kLong));
    add("from_store_long", inSize(&fromStore<Format>, kLong));
    add("memory", memory<Format>)->Arg(100)->Arg(10000)->Iterations(1);
}

} // namespace

int main(int count, char** arguments) {
    benchmark::Initialize(&count, arguments);
    benchmark::RegisterBenchmark("read_dives", readDives)->Unit(benchmark::kMillisecond)->UseRealTime();
    registerFormat<Json>("json");
    registerFormat<Csv>("csv");
    registerFormat<Zxu>("zxu");
    registerFormat<Uddf>("uddf");
    benchmark::RegisterBenchmark("dataset/same_files", sameFiles)
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
    benchmark::RegisterBenchmark("dataset", writesDataset)
        ->Arg(0)
        ->Arg(1)
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
