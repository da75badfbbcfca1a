#include "simulator/gear.h"

#include <algorithm>
#include <cmath>

namespace benthor::simulator {

GearSizes gearFor(const DivePlan& plan, double expectedseconds) {
    constexpr double oxygenaminute = 1.1;
    constexpr double usableshare = 0.7;
    const double minutes = expectedseconds / 60;
    GearSizes sizes;
    sizes.oxygenlitres =
        std::max(sizes.oxygenlitres, minutes * oxygenaminute / (plan.oxygenbar * usableshare));
    sizes.diluentlitres = std::max(sizes.diluentlitres, minutes * 0.6 / plan.diluentbar);
    const double share = std::max(0.2, plan.filterpercent / 100);
    sizes.absorbedlitres = std::max(sizes.absorbedlitres, minutes * oxygenaminute / share);
    sizes.batteryhours = std::max(sizes.batteryhours, minutes / 60 * 1.3);
    return sizes;
}

Cylinders::Cylinders(const DivePlan& plan, const GearSizes& sizes)
    : sizes_(sizes)
    , diluent_(plan.diluentbar)
    , oxygen_(plan.oxygenbar) {}

void Cylinders::takeDiluent(double litres) {
    diluent_ = std::max(0.0, diluent_ - litres / sizes_.diluentlitres);
}

void Cylinders::takeOxygen(double litres) {
    oxygen_ = std::max(0.0, oxygen_ - litres / sizes_.oxygenlitres);
}

Power::Power(const GearSizes& sizes, Random random)
    : hoursofmain_(sizes.batteryhours)
    , random_(random) {
    fresh_ = random_.between(6.15, 6.4);
    freshbackup_ = random_.between(3.55, 3.66);
    main_ = fresh_;
    backup_ = freshbackup_;
}

void Power::draw(double pulselitres, double temperature, double seconds) {
    constexpr double sagseconds = 60;
    hours_ += seconds / 3600;
    const double used = std::min(1.2, hours_ / hoursofmain_);
    const double duty = std::min(1.0, pulselitres * 60 / seconds / 6);
    sag_ += (0.3 * duty - sag_) * (1 - std::exp(-seconds / sagseconds));
    const double cold = std::max(0.0, 25 - temperature) * 0.006;
    main_ = fresh_ - 0.55 * used - 0.3 * std::pow(used, 5) - sag_ - cold + 0.004 * random_.bell();
    backup_ = freshbackup_ - 0.12 * used - cold / 3 + 0.002 * random_.bell();
}

Thermometer::Thermometer(const DivePlan& plan)
    : surface_(plan.surfacetemperature)
    , bottom_(plan.bottomtemperature)
    , thermocline_(plan.thermoclinemetres)
    , seen_(plan.surfacetemperature + 2) {}

double Thermometer::water(double depth) const {
    constexpr double layermetres = 1.6;
    const double below = 1 / (1 + std::exp((thermocline_ - depth) / layermetres));
    // A trace of warmth is lost steadily with depth as well.
    return surface_ + (bottom_ - surface_) * below - 0.01 * depth;
}

double Thermometer::read(double depth, double seconds) {
    constexpr double housingseconds = 75;
    seen_ += (water(depth) - seen_) * (1 - std::exp(-seconds / housingseconds));
    return seen_;
}

} // namespace benthor::simulator
