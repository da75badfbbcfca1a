#include "simulator/dive.h"

#include "simulator/simulation.h"

#include <algorithm>
#include <cmath>

namespace benthor::simulator {

namespace {

DivePlan withinLimits(DivePlan plan) {
    plan.samples = std::max(0, plan.samples);
    plan.intervalseconds = std::clamp(plan.intervalseconds, 1, 99);
    plan.maxdepthmetres = std::clamp(plan.maxdepthmetres, 1.0, 280.0);
    plan.filterpercent = std::clamp(plan.filterpercent, 1.0, 100.0);
    return plan;
}

/// The smallest gradient factor, in tenths, that would let the diver surface.
int surfacingTenths(const Tissues& tissues, double surfacebar) {
    int tenths = 0;
    while (tenths < 9 && toleratedBar(tissues, tenths / 10.0) > surfacebar) {
        ++tenths;
    }
    return tenths;
}

} // namespace

Dive simulate(const DivePlan& plan) {
    constexpr std::size_t longest = 24997;
    constexpr int mostprinted = 9999;
    Dive dive;
    dive.plan = withinLimits(plan);
    dive.gases = gasTable(dive.plan);
    Simulation simulation(dive.plan);
    while (!simulation.finished() && (dive.plan.samples > 0 || dive.samples.size() < longest)) {
        dive.samples.push_back(simulation.nextSample());
        dive.maxdepth = std::max(dive.maxdepth, dive.samples.back().depth);
    }
    const Decompression& decompression = simulation.decompression();
    dive.tissues = decompression.tissues();
    dive.finishcode =
        dive.plan.startcode + dive.samples.size() * static_cast<std::uint64_t>(dive.plan.intervalseconds);
    dive.status = simulation.openCircuit() ? 1 : 0;
    dive.descendprob = surfacingTenths(dive.tissues, decompression.surfaceBar());
    dive.usageseconds = static_cast<int>(std::min<double>(mostprinted, simulation.usageSeconds()));
    constexpr double restingaminute = 0.85;
    const double leftlitres =
        simulation.scrubber().percentLeft() / 100 * simulation.scrubber().capacityLitres();
    dive.stackseconds = static_cast<int>(std::min<double>(mostprinted, leftlitres / restingaminute * 60));
    dive.otu = simulation.otu();
    return dive;
}

} // namespace benthor::simulator
