// What it costs to write dives as UDDF on all cores, as the program does: usual dives that are in memory
// already, into a file that is synced at the end, as an export is; beside it the same bytes into such a file,
// in pieces of the same size. Memory is the most that the process ever took: it tells something when one size
// runs alone.

#include "exports/uddf.h"
#include "exports/workahead.h"
#include "profile/decoder.h"
#include "simulator/demodives.h"

#include <QBuffer>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <sys/resource.h>
#include <unistd.h>

using namespace benthor;

namespace {

constexpr qsizetype kPiece = 65536;

void add(exports::StoreFields& row, const char* field, const QString& value) {
    row.emplace_back(QLatin1String(field), value);
}

/// One of the demonstration's dives, as the store has them.
exports::WholeDive usualDive() {
    exports::WholeDive dive;
    add(dive.store, "DiveID", QStringLiteral("D0000001"));
    add(dive.store, "UserName", QStringLiteral("KD00123"));
    add(dive.store, "Suit", QStringLiteral("KD00123"));
    add(dive.store, "site", QStringLiteral("Blue Hole"));
    add(dive.store, "startdate", QStringLiteral("2004-09-03 10:00:00"));
    add(dive.store, "Duration", QStringLiteral("61:7"));
    add(dive.store, "MaxDepth", QStringLiteral("43.400"));
    add(dive.store, "divenote", QStringLiteral("Visibility 12 m; a wall, a cave and a long way back"));
    add(dive.store, "Version", QStringLiteral("V3.12"));
    add(dive.store, "Interval", QStringLiteral("10"));
    add(dive.store, "systemid", QStringLiteral("KD3"));
    add(dive.store, "datmos", QStringLiteral("1013"));
    std::vector<profile::GasRow> rows;
    for (int gas = 0; gas < profile::kNamedGases; ++gas) {
        exports::StoreFields& row = dive.gases.emplace_back();
        add(row, "diveid", QStringLiteral("D0000001"));
        add(row, "Gastype", QString::number(gas));
        add(row, "GasN2", QString::number(79 - gas));
        add(row, "GasHe", QString::number(gas));
        add(row, "gasmod", QStringLiteral("660"));
        add(row, "Gasstat", QStringLiteral("1"));
        profile::GasRow& fields = rows.emplace_back();
        for (const auto& [name, value] : row) {
            fields.push_back(value);
        }
    }
    profile::readgaslist(rows, false, dive.gasArrays);
    dive.buddies = QStringList{QStringLiteral("Anna Smith")};
    dive.figures = exports::figuresOf(dive.store);
    dive.profile = profile::decodeProfile(simulator::demoDives().front().text, false);
    return dive;
}

void writeDives(QIODevice& device, int dives) {
    static const exports::WholeDive usual = usualDive();
    exports::UddfWriter writer(device, QStringLiteral("2.0"), QDateTime());
    writer.begin();
    const QDateTime first({1999, 1, 1}, {10, 0}, Qt::UTC);
    exports::WorkAhead<exports::UddfWriter::Prepared> work(dives, [&first](qsizetype index) {
        return [&first, number = index + 1] {
            exports::WholeDive dive = usual;
            dive.figures.id = QStringLiteral("D%1").arg(number, 7, 10, QLatin1Char('0'));
            dive.figures.start = first.addSecs(40000LL * number);
            return exports::UddfWriter::prepare(std::move(dive));
        };
    });
    for (int number = 1; number <= dives; ++number) {
        writer.add(work.next());
    }
    writer.end();
}

/// Counts, and keeps nothing.
class Counter : public QIODevice {
public:
    Counter() { open(QIODevice::WriteOnly | QIODevice::Unbuffered); }
    qint64 bytes = 0;

protected:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char*, qint64 size) override {
        bytes += size;
        return size;
    }
};

/// Of the file, synced as an export is before it takes its name.
void close(QFile& file) {
    if (!file.flush() || fsync(file.handle()) != 0) {
        std::abort();
    }
    file.close();
}

void open(QFile& file) {
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        std::abort();
    }
}

void tell(benchmark::State& state, qint64 bytes) {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    state.SetBytesProcessed(state.iterations() * bytes);
    state.counters["MiB"] = static_cast<double>(usage.ru_maxrss) / 1024;
}

void uddf(benchmark::State& state) {
    const QTemporaryDir folder;
    const int dives = static_cast<int>(state.range(0));
    qint64 bytes = 0;
    for (auto _ : state) {
        QFile file(folder.filePath(QStringLiteral("dives.uddf")));
        open(file);
        writeDives(file, dives);
        bytes = file.size();
        close(file);
    }
    tell(state, bytes);
}

/// Without a disk.
void uddfToNothing(benchmark::State& state) {
    const int dives = static_cast<int>(state.range(0));
    qint64 bytes = 0;
    for (auto _ : state) {
        Counter counter;
        writeDives(counter, dives);
        bytes = counter.bytes;
    }
    tell(state, bytes);
}

void sameBytes(benchmark::State& state) {
    const QTemporaryDir folder;
    QByteArray some;
    QBuffer buffer(&some);
    buffer.open(QIODevice::WriteOnly);
    writeDives(buffer, 10);
    Counter counter;
    writeDives(counter, static_cast<int>(state.range(0)));
    for (auto _ : state) {
        QFile file(folder.filePath(QStringLiteral("dives.uddf")));
        open(file);
        for (qint64 left = counter.bytes; left > 0;) {
            const auto size = std::min<qint64>({left, kPiece, some.size()});
            if (file.write(some.constData(), size) != size) {
                std::abort();
            }
            left -= size;
        }
        close(file);
    }
    tell(state, counter.bytes);
}

BENCHMARK(uddf)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(sameBytes)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(uddfToNothing)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

BENCHMARK_MAIN();
