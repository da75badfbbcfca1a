// What it costs that an older store comes along: its rows, given by a stand-in, go into a store of ours that
// is then proved; beside it the same rows through the bare engine, in one transaction too.

#include "bench/store/storebench.h"
#include "store/jet/readjet.h"

#include <QFile>
#include <QTemporaryDir>

#include <array>
#include <benchmark/benchmark.h>
#include <bit>
#include <cstdio>
#include <cstdlib>
#include <sys/resource.h>

using namespace benthor;

namespace {

constexpr int kGases = 10;
constexpr int kTissues = 16;
constexpr int kRowsADive = 1 + kGases + kTissues;

const std::string kNote = "Visibility 12 m; a wall, a cave and a long way back \xE2\x80\x94 na\xC3\xAFve";

using bench::fourDigits;

double startOf(int dive) {
    return 38233 + dive / 16.0;
}

/// Gives the rows of so many dives, each made when it is asked for.
class ManyDives : public store::JetRowSource {
public:
    explicit ManyDives(int dives)
        : dives_(dives) {
        using store::pipe::Kind;
        const auto texts = [](std::initializer_list<const char*> names) {
            std::vector<store::JetField> fields;
            for (const char* const name : names) {
                fields.push_back({name, Kind::Text, 50});
            }
            return fields;
        };
        auto main = texts({"DiveID", "UserName", "Location", "startdate", "Duration", "MaxDepth", "Suit",
                           "Startcode", "divenote", "Version", "dbtxtname"});
        main[3].kind = Kind::Date;
        const auto rows = static_cast<std::uint64_t>(dives);
        head_.tables = {
            {"main", rows, main},
            {"gas", rows * kGases, texts({"diveid", "Gastype", "GasN2", "GasHe", "gasmod", "Gasstat"})},
            {"tissue", rows * kTissues, texts({"diveid", "Tissuetype", "TissueN2", "TissueHe"})}};
    }

    const store::JetHead& head() override { return head_; }
    bool nextRow(std::vector<store::JetValue>& row) override {
        const int each = table_ == 0 ? 1 : table_ == 1 ? kGases : kTissues;
        if (at_ == dives_ * each) {
            at_ = 0;
            ++table_;
            return false;
        }
        id_ = bench::diveId(at_ / each);
        if (table_ == 0) {
            code_ = std::to_string(400000000 + at_);
            const auto bits = std::bit_cast<std::array<char, sizeof(double)>>(startOf(at_));
            date_.assign(bits.data(), bits.size());
            row = {id_,   "KD00123", "Dive000000.txt",       date_, "41:7", "23.400", "KD00123", code_,
                   kNote, "V3.12",   "11A2B3CDive000000.txt"};
        } else {
            number_ = fourDigits(at_ % each);
            row = table_ == 1 ? std::vector<store::JetValue>{id_, number_, "79", "0", "660", "1\r"}
                              : std::vector<store::JetValue>{id_, number_, "79", "0\r"};
        }
        ++at_;
        return true;
    }
    void finish() override {}

private:
    int dives_;
    store::JetHead head_;
    int table_ = 0;
    int at_ = 0;
    std::string id_;
    std::string code_;
    std::string date_;
    std::string number_;
};

/// The greatest size of this process so far, in MiB.
double mostMemory() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024;
}

void tell(benchmark::State& state, int dives) {
    state.SetItemsProcessed(state.iterations() * dives * kRowsADive);
    state.counters["MiB"] = mostMemory();
}

void comesAlong(benchmark::State& state) {
    const int dives = static_cast<int>(state.range(0));
    for (auto _ : state) {
        const QTemporaryDir folder;
        ManyDives jet(dives);
        std::uint64_t told = 0;
        const store::JetCounts counts =
            store::convertjet(jet, folder.filePath("new.mdb"), [&](std::uint64_t rows, std::uint64_t of) {
                told = rows;
                return rows <= of;
            });
        if (counts.dives != static_cast<std::uint64_t>(dives) || told == 0) {
            std::abort();
        }
    }
    tell(state, dives);
}

/// The frames of the same rows, in a file that `cat` sends down the pipe in the reading program's stead.
class Pipe {
public:
    explicit Pipe(int dives) {
        std::FILE* const file = std::fopen(path("frames").c_str(), "wb");
        ManyDives jet(dives);
        std::string head = number(store::pipe::kVersion) + number(static_cast<std::uint16_t>(3));
        for (const store::JetTable& table : jet.head().tables) {
            head += name(table.name) + number(table.rows) +
                    number(static_cast<std::uint16_t>(table.fields.size()));
            for (const store::JetField& field : table.fields) {
                head += number(static_cast<std::uint8_t>(field.kind)) + number(field.size) + name(field.name);
            }
        }
        write(file, 'J', head + number(std::uint16_t{0}));
        std::vector<store::JetValue> row;
        for (const store::JetTable& table : jet.head().tables) {
            while (jet.nextRow(row)) {
                std::string body;
                for (const store::JetValue& value : row) {
                    body += number(static_cast<std::uint32_t>(value->size())).append(*value);
                }
                write(file, 'R', body);
            }
            write(file, 'E', number(table.rows));
        }
        write(file, 'Z', {});
        std::fclose(file);
        std::FILE* const script = std::fopen(path("reader").c_str(), "w");
        std::fprintf(script, "#!/bin/sh\nexec cat '%s'\n", path("frames").c_str());
        std::fclose(script);
        QFile::setPermissions(folder_.filePath("reader"), QFile::ReadOwner | QFile::ExeOwner);
        store::setjetreader(folder_.filePath("reader"));
    }
    ~Pipe() { store::setjetreader({}); }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

private:
    std::string path(const char* name) const {
        return folder_.filePath(QString::fromLatin1(name)).toStdString();
    }
    template <class Number> static std::string number(Number value) {
        std::string bytes;
        for (std::size_t i = 0; i < sizeof(Number); ++i) {
            bytes += static_cast<char>(static_cast<std::uint64_t>(value) >> (8 * i) & 0xFF);
        }
        return bytes;
    }
    static std::string name(const std::string& text) {
        return number(static_cast<std::uint16_t>(text.size())) + text;
    }
    static void write(std::FILE* file, char mark, const std::string& body) {
        const std::string frame = mark + number(static_cast<std::uint32_t>(body.size())) + body;
        if (std::fwrite(frame.data(), 1, frame.size(), file) != frame.size()) {
            std::abort();
        }
    }

    QTemporaryDir folder_;
};

void comesThroughThePipe(benchmark::State& state) {
    const int dives = static_cast<int>(state.range(0));
    const Pipe pipe(dives);
    for (auto _ : state) {
        const QTemporaryDir folder;
        const auto jet = store::readjet(folder.path(), {});
        if (store::convertjet(*jet, folder.filePath("new.mdb")).dives != static_cast<std::uint64_t>(dives)) {
            std::abort();
        }
    }
    tell(state, dives);
}

void bareEngine(benchmark::State& state) {
    const int dives = static_cast<int>(state.range(0));
    for (auto _ : state) {
        const bench::BenchFolder folder;
        bench::BareStore bare(folder.path("rb.mdb"));
        sqlite3_stmt* const main =
            bare.prepare("INSERT INTO main (DiveID, UserName, Location, startdate, Duration, MaxDepth, Suit, "
                         "Startcode, divenote, "
                         "Version, dbtxtname) VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11)");
        sqlite3_stmt* const gas = bare.prepare("INSERT INTO gas VALUES (?1, ?2, ?3, ?4, ?5, ?6)");
        sqlite3_stmt* const tissue = bare.prepare("INSERT INTO tissue VALUES (?1, ?2, ?3, ?4)");
        bare.run("BEGIN IMMEDIATE");
        for (int i = 0; i < dives; ++i) {
            bare.run(main,
                     {bench::diveId(i), "KD00123", "Dive000000.txt", "2004-09-03 17:17:16", "41:7", "23.400",
                      "KD00123", std::to_string(400000000 + i), kNote, "V3.12", "11A2B3CDive000000.txt"});
        }
        for (int i = 0; i < dives * kGases; ++i) {
            bare.run(gas, {bench::diveId(i / kGases), fourDigits(i % kGases), "79", "0", "660", "1\r"});
        }
        for (int i = 0; i < dives * kTissues; ++i) {
            bare.run(tissue, {bench::diveId(i / kTissues), fourDigits(i % kTissues), "79", "0\r"});
        }
        bare.run("COMMIT");
    }
    tell(state, dives);
}

} // namespace

BENCHMARK(bareEngine)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(comesAlong)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(comesThroughThePipe)->Arg(100000)->Unit(benchmark::kMillisecond)->UseRealTime();

BENCHMARK_MAIN();
