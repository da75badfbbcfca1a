// Decoding the longest dive that the arrays hold, with and without a yield function, beside the bare work:
// one pass that splits the same bytes at commas and line ends and converts each field with std::from_chars
// into a float.

#include "platform/yield.h"
#include "profile/decoder.h"

#include <benchmark/benchmark.h>

#include <charconv>
#include <cstdio>

namespace {

using namespace benthor;

constexpr int kRecords = 24997;

QByteArray record(int n) {
    const int depth = n < kRecords / 2 ? n % 900 : (kRecords - n) % 900;
    const int po2 = 70 + n * 7 % 71;
    std::array<char, 160> line{};
    const int length = std::snprintf(
        line.data(), line.size(), "%d,%d,%d,%d,M%d,T%d,A%d,B%d,C%d,D%d,E%d,F%d,G%d,H%d,I%d,J%d%s\r\n", n * 10,
        depth, n / 3000, po2, n % 500 == 0 ? 1 : 0, 8 + n % 14, 950 - n / 30, 611 + n % 3, 487 - n / 200,
        200 - n / 150, 180 - n / 170, po2 + 1, po2 - 1, po2 + n % 3, n < 2000 ? 70 : 130, n % 40,
        n % 1000 == 0 ? ",CELL A FAIL" : "");
    return {line.data(), length};
}

const QByteArray& diveText() {
    static const QByteArray text = [] {
        QByteArray bytes("ver=V3.12\r\nRecint=10\r\nSN=KD00123\r\nProfile\r\nTime,Depth,Mix\r\n");
        for (int n = 0; n < kRecords; ++n) {
            bytes += record(n);
        }
        return bytes + "End\r\n";
    }();
    return text;
}

void reportSize(benchmark::State& state) {
    state.SetBytesProcessed(state.iterations() * diveText().size());
}

void splitAndConvert(benchmark::State& state) {
    const QByteArray& text = diveText();
    std::vector<float> values;
    values.reserve(static_cast<size_t>(text.size()));
    for (auto _ : state) {
        values.clear();
        const char* field = text.constBegin();
        for (const char* at = field; at != text.constEnd(); ++at) {
            if (*at != ',' && *at != '\r') {
                continue;
            }
            float value = 0.0F;
            const bool lettered = field != at && (*field < '0' || *field > '9');
            std::from_chars(field + (lettered ? 1 : 0), at, value);
            values.push_back(value);
            field = at + 1;
        }
        benchmark::DoNotOptimize(values.data());
    }
    reportSize(state);
}

void decodeWithoutYield(benchmark::State& state) {
    for (auto _ : state) {
        const profile::DiveProfile profile = profile::decodeProfile(diveText(), false);
        if (profile.lastsample != kRecords + profile::kFirstSample) {
            state.SkipWithError("not all records were read");
        }
    }
    reportSize(state);
}

void decodeWithYield(benchmark::State& state) {
    for (auto _ : state) {
        platform::ThrottledYield yield([] { return true; });
        const profile::DiveProfile profile = profile::decodeProfile(diveText(), false, {.yield = yield});
        if (profile.lastsample != kRecords + profile::kFirstSample) {
            state.SkipWithError("not all records were read");
        }
    }
    reportSize(state);
}

BENCHMARK(splitAndConvert)->Unit(benchmark::kMillisecond);
BENCHMARK(decodeWithoutYield)->Unit(benchmark::kMillisecond);
BENCHMARK(decodeWithYield)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
