#include "simulator/diveplan.h"

#include "simulator/random.h"

#include <algorithm>

namespace benthor::simulator {

namespace {

Gas bottomGas(const DivePlan& plan) {
    if (plan.diluent) {
        return {plan.diluent->o2, plan.diluent->he, true};
    }
    if (!plan.trimix) {
        return {21, 0, true};
    }
    struct Fit {
        double depth;
        Gas gas;
    };
    constexpr std::array<Fit, 5> fits = {{{50, {21, 35, true}},
                                          {70, {18, 45, true}},
                                          {95, {15, 55, true}},
                                          {140, {10, 70, true}},
                                          {1000, {6, 82, true}}}};
    return std::find_if(fits.begin(), fits.end(),
                        [&](const Fit& fit) { return plan.maxdepthmetres <= fit.depth; })
        ->gas;
}

void planWater(DivePlan& plan, Random& random) {
    plan.surfacetemperature = random.between(13, 28);
    plan.bottomtemperature = plan.surfacetemperature - random.between(2, 9);
    plan.thermoclinemetres = random.between(8, 0.7 * plan.maxdepthmetres + 8);
    plan.surfacembar = random.whole(996, 1028);
}

void planGear(DivePlan& plan, Random& random) {
    plan.scrubbersticks = random.chance(0.3);
    plan.co2sensor = !plan.scrubbersticks && random.chance(0.3);
    plan.weakcell = random.chance(0.25) ? random.whole(0, 2) : -1;
    plan.decosetpoint = random.chance(0.4) ? 1.4 : 0;
    plan.laststopmetres = random.chance(0.4) ? 6 : 3;
    plan.factors = random.chance(0.5) ? GradientFactors{0.3, 0.8} : GradientFactors{0.4, 0.85};
    plan.diluentbar = random.whole(170, 215);
    plan.oxygenbar = random.whole(150, 205);
    plan.filterpercent = random.chance(0.5) ? 100 : random.between(55, 95);
}

} // namespace

DivePlan plannedDive(std::uint64_t seed) {
    Random random(seed, 1);
    DivePlan plan;
    plan.seed = seed;
    plan.trimix = random.chance(0.35);
    plan.maxdepthmetres = plan.trimix ? random.between(40, 95) : random.between(10, 45);
    plan.bottomminutes = std::clamp(random.between(0.7, 1.1) * 1700 / plan.maxdepthmetres, 12.0, 75.0);
    plan.site = static_cast<Site>(random.whole(0, 2));
    plan.bailout = random.chance(0.15);
    const double lapse = random.unit();
    plan.lapse = lapse < 0.1 ? Lapse::FastAscent : lapse < 0.2 ? Lapse::BrokenCeiling : Lapse::None;
    if (plan.bailout) {
        plan.lapse = Lapse::DeadSolenoid;
    }
    planWater(plan, random);
    planGear(plan, random);
    constexpr std::uint64_t january2006 = 441936000;
    plan.startcode = january2006 + static_cast<std::uint64_t>(random.whole(0, 1500)) * 86400 +
                     static_cast<std::uint64_t>(random.whole(8 * 3600, 17 * 3600));
    plan.serial = "KD" + QByteArray::number(random.whole(10000, 19999));
    plan.number = random.whole(1, 99);
    return plan;
}

GasTable gasTable(const DivePlan& plan) {
    GasTable table{};
    const Gas bottom = bottomGas(plan);
    table[diluentplace] = bottom;
    table[bottombailoutplace] = bottom;
    const bool staged = plan.bailout || plan.maxdepthmetres > 25;
    table[firstdecobailoutplace] = {50, 0, staged};
    table[lastbailoutplace - 1] = {100, 0, staged};
    if (bottom.o2 < 18) {
        table[travelplace] = {21, 0, true};
        table[lastbailoutplace] = {21, 35, true};
    } else if (bottom.he > 0) {
        table[travelplace] = {21, 0, true};
    }
    return table;
}

int maximumDepth(const Gas& gas) {
    return static_cast<int>((1.6 / (gas.o2 / 100.0) - 1) * 10 + 1e-9);
}

QString fileName(const DivePlan& plan) {
    return plan.series + QString::number(plan.number) + QStringLiteral(".txt");
}

} // namespace benthor::simulator
