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
    : m_sizes(sizes)
    , m_diluent(plan.diluentbar)
    , m_oxygen(plan.oxygenbar) {}

void Cylinders::takeDiluent(double litres) {
    m_diluent = std::max(0.0, m_diluent - litres / m_sizes.diluentlitres);
}

void Cylinders::takeOxygen(double litres) {
    m_oxygen = std::max(0.0, m_oxygen - litres / m_sizes.oxygenlitres);
}

Power::Power(const GearSizes& sizes, Random random)
    : m_hoursofmain(sizes.batteryhours)
    , m_random(random) {
    m_fresh = m_random.between(6.15, 6.4);
    m_freshbackup = m_random.between(3.55, 3.66);
    m_main = m_fresh;
    m_backup = m_freshbackup;
}

void Power::draw(double pulselitres, double temperature, double seconds) {
    constexpr double sagseconds = 60;
    m_hours += seconds / 3600;
    const double used = std::min(1.2, m_hours / m_hoursofmain);
    const double duty = std::min(1.0, pulselitres * 60 / seconds / 6);
    m_sag += (0.3 * duty - m_sag) * (1 - std::exp(-seconds / sagseconds));
    const double cold = std::max(0.0, 25 - temperature) * 0.006;
    m_main = m_fresh - 0.55 * used - 0.3 * std::pow(used, 5) - m_sag - cold + 0.004 * m_random.bell();
    m_backup = m_freshbackup - 0.12 * used - cold / 3 + 0.002 * m_random.bell();
}

Thermometer::Thermometer(const DivePlan& plan)
    : m_surface(plan.surfacetemperature)
    , m_bottom(plan.bottomtemperature)
    , m_thermocline(plan.thermoclinemetres)
    , m_seen(plan.surfacetemperature + 2) {}

double Thermometer::water(double depth) const {
    constexpr double layermetres = 1.6;
    const double below = 1 / (1 + std::exp((m_thermocline - depth) / layermetres));
    // A trace of warmth is lost steadily with depth as well.
    return m_surface + (m_bottom - m_surface) * below - 0.01 * depth;
}

double Thermometer::read(double depth, double seconds) {
    constexpr double housingseconds = 75;
    m_seen += (water(depth) - m_seen) * (1 - std::exp(-seconds / housingseconds));
    return m_seen;
}

} // namespace benthor::simulator
