#include "simulator/demodives.h"

#include "simulator/damage.h"
#include "simulator/dive.h"
#include "simulator/divetext.h"

namespace benthor::simulator {

namespace {

/// Days since 31 December 1991 and the time of day, as a start code.
constexpr std::uint64_t startAt(std::uint64_t days, std::uint64_t hour, std::uint64_t minute) {
    return days * 86400 + hour * 3600 + minute * 60 + 17;
}

DivePlan namedDive(std::uint64_t seed, const QString& series, int number, std::uint64_t startcode) {
    DivePlan plan;
    plan.seed = seed;
    plan.series = series;
    plan.number = number;
    plan.startcode = startcode;
    return plan;
}

void water(DivePlan& plan, double surface, double bottom, double thermocline) {
    plan.surfacetemperature = surface;
    plan.bottomtemperature = bottom;
    plan.thermoclinemetres = thermocline;
}

DivePlan poolDive() {
    DivePlan plan = namedDive(101, QStringLiteral("Pool"), 1, startAt(5553, 10, 5));
    plan.maxdepthmetres = 4;
    plan.bottomminutes = 14;
    plan.filterpercent = 88;
    water(plan, 27, 27, 2);
    return plan;
}

DivePlan airReef() {
    DivePlan plan = namedDive(102, QStringLiteral("Reef"), 1, startAt(5635, 9, 42));
    plan.maxdepthmetres = 27.5;
    plan.bottomminutes = 52;
    plan.site = Site::Reef;
    plan.co2sensor = true;
    plan.factors = {0.4, 0.9};
    water(plan, 27, 23, 15);
    return plan;
}

DivePlan nitroxReef() {
    DivePlan plan = namedDive(103, QStringLiteral("Reef"), 2, startAt(5636, 14, 11));
    plan.maxdepthmetres = 19;
    plan.bottomminutes = 68;
    plan.diluent = Gas{32, 0, true};
    plan.lapse = Lapse::FastAscent;
    plan.filterpercent = 62;
    plan.weakcell = 2;
    water(plan, 28, 25, 12);
    return plan;
}

DivePlan airWreck() {
    DivePlan plan = namedDive(104, QStringLiteral("Wreck"), 1, startAt(5998, 11, 20));
    plan.maxdepthmetres = 43;
    plan.bottomminutes = 32;
    plan.site = Site::Wreck;
    plan.lapse = Lapse::BrokenCeiling;
    water(plan, 17, 9, 18);
    return plan;
}

DivePlan trimixWreck() {
    DivePlan plan = namedDive(105, QStringLiteral("Wreck"), 2, startAt(6041, 8, 55));
    plan.maxdepthmetres = 62;
    plan.bottomminutes = 28;
    plan.trimix = true;
    plan.site = Site::Wreck;
    plan.decosetpoint = 1.4;
    plan.laststopmetres = 6;
    water(plan, 18, 8, 20);
    return plan;
}

DivePlan bailoutWreck() {
    DivePlan plan = namedDive(106, QStringLiteral("Wreck"), 3, startAt(6042, 9, 30));
    plan.maxdepthmetres = 54;
    plan.bottomminutes = 24;
    plan.trimix = true;
    plan.bailout = true;
    plan.lapse = Lapse::DeadSolenoid;
    plan.site = Site::Wreck;
    plan.laststopmetres = 6;
    water(plan, 18, 9, 20);
    return plan;
}

DivePlan longCave() {
    DivePlan plan = namedDive(107, QStringLiteral("Cave"), 1, startAt(6318, 10, 2));
    plan.maxdepthmetres = 31;
    plan.bottomminutes = 110;
    plan.site = Site::Cave;
    plan.scrubbersticks = true;
    plan.filterpercent = 80;
    water(plan, 22, 21, 10);
    return plan;
}

DivePlan deepWall() {
    DivePlan plan = namedDive(108, QStringLiteral("DeepWall"), 1, startAt(6702, 7, 15));
    plan.maxdepthmetres = 206;
    plan.bottomminutes = 11;
    plan.trimix = true;
    plan.site = Site::Reef;
    plan.intervalseconds = 15;
    plan.laststopmetres = 6;
    water(plan, 26, 15, 45);
    return plan;
}

DivePlan quarryDive() {
    DivePlan plan = namedDive(109, QStringLiteral("Quarry"), 4, startAt(6125, 13, 33));
    plan.maxdepthmetres = 22;
    plan.bottomminutes = 40;
    water(plan, 14, 6, 9);
    return plan;
}

/// Short ones, so that they are down in a few seconds.
std::vector<DivePlan> newDives() {
    std::vector<DivePlan> plans;
    for (std::uint64_t day = 0; day < 3; ++day) {
        DivePlan plan = namedDive(120 + day, QStringLiteral("House reef"), 1, startAt(6710 - day, 9, 10));
        plan.maxdepthmetres = 18.0 + 3.0 * static_cast<double>(day);
        plan.bottomminutes = 24;
        plan.intervalseconds = 20;
        water(plan, 26, 22, 14);
        plans.push_back(plan);
    }
    return plans;
}

} // namespace

std::vector<QByteArray> deviceDives() {
    std::vector<DivePlan> plans = newDives();
    for (const DivePlan& plan : {deepWall(), longCave(), bailoutWreck(), trimixWreck(), airWreck()}) {
        plans.push_back(plan);
    }
    std::vector<QByteArray> texts;
    for (const DivePlan& plan : plans) {
        texts.push_back(diveText(simulate(plan)));
    }
    return texts;
}

std::vector<DemoDive> demoDives() {
    std::vector<DemoDive> dives;
    for (const DivePlan& plan : {poolDive(), airReef(), nitroxReef(), airWreck(), trimixWreck(),
                                 bailoutWreck(), longCave(), deepWall()}) {
        dives.push_back({fileName(plan), diveText(simulate(plan))});
    }
    const DivePlan quarry = quarryDive();
    dives.push_back(
        {fileName(quarry), damaged(diveText(simulate(quarry)), Damage::GasNumberShort, quarry.seed)});
    return dives;
}

} // namespace benthor::simulator
