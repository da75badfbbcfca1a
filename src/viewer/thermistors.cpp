#include "viewer/thermistors.h"

#include "platform/textformat.h"

#include <algorithm>
#include <optional>

namespace benthor::viewer {

namespace {

constexpr int kLastPair = 6;

/// The pair of neighbours with the largest sum above 0; its first place where several have it.
struct WarmestPair {
    std::array<double, 7> sums{};
    double sum = 0;
    int index = 0;
};

WarmestPair warmestPair(const Thermistors& t) {
    WarmestPair warmest;
    for (std::size_t i = 0; i < warmest.sums.size(); ++i) {
        warmest.sums[i] = t[i + 1] + t[i];
        if (warmest.sums[i] > warmest.sum) {
            warmest.sum = warmest.sums[i];
            warmest.index = static_cast<int>(i);
        }
    }
    return warmest;
}

/// A stick that is warm at its far end has its front somewhere in its first half.
double estimateFromSlope(const WarmestPair& warmest) {
    const double slope = (warmest.sums[6] - warmest.sums[3]) / (warmest.sums[6] + warmest.sums[3]);
    return std::clamp((0.085 - slope) * 800, 0.0, 50.0);
}

std::optional<double> estimateFromPair(const Thermistors& t, const WarmestPair& warmest) {
    if (warmest.sum == 0) {
        return t[1] > t[0] ? 97 : 99;
    }
    switch (warmest.index) {
    case 5:
        return t[6] >= t[5] ? 50 : 55;
    case 4:
        return t[5] > t[4] ? 60 : 65;
    case 3:
        return t[4] > t[3] ? 70 : 75;
    case 2:
        return t[3] > t[2] ? 80 : 85;
    case 1:
        return t[2] > t[1] ? 90 : 95;
    default:
        return std::nullopt;
    }
}

std::optional<double> estimate(const Thermistors& t, const WarmestPair& warmest) {
    return warmest.index == kLastPair ? estimateFromSlope(warmest) : estimateFromPair(t, warmest);
}

} // namespace

double tpmestimatea(const Thermistors& tpmcolsdown) {
    return estimate(tpmcolsdown, warmestPair(tpmcolsdown)).value_or(-1.0);
}

double tpmestimateb(const Thermistors& tpmcolsup, double before) {
    const WarmestPair warmest = warmestPair(tpmcolsup);
    if (warmest.index == kLastPair && platform::wholePart(tpmcolsup[6] - 5) >= tpmcolsup[7]) {
        return 45;
    }
    return estimate(tpmcolsup, warmest).value_or(before);
}

double tpmspread(const Thermistors& tpmcolsdown) {
    constexpr double kWarmest = 85;
    const double coldest = std::min(kWarmest, *std::min_element(tpmcolsdown.begin(), tpmcolsdown.end()));
    double sum = 0;
    for (const double reading : tpmcolsdown) {
        sum += reading - coldest;
    }
    return sum / static_cast<double>(tpmcolsdown.size());
}

} // namespace benthor::viewer
