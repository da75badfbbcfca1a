#include "simulator/breathingloop.h"

#include <algorithm>
#include <cmath>

namespace benthor::simulator {

namespace {

constexpr double fullvolume = 7.5;
constexpr double emptyvolume = 5.5;
constexpr double breathedpo2 = 0.55; ///< after some minutes on the loop ahead of the dive

} // namespace

BreathingLoop::BreathingLoop(double ambientbar)
    : m_ambient(ambientbar)
    , m_oxygen(breathedpo2 * fullvolume)
    , m_inert((ambientbar - breathedpo2) * fullvolume) {}

double BreathingLoop::press(double ambientbar, const Gas& diluent) {
    m_ambient = ambientbar;
    if (volume() > fullvolume) {
        const double kept = fullvolume / volume();
        m_oxygen *= kept;
        m_inert *= kept;
    }
    if (volume() >= emptyvolume) {
        return 0;
    }
    const double added = (emptyvolume - volume()) * m_ambient;
    m_oxygen += added * diluent.o2 / 100.0;
    m_inert += added * (100 - diluent.o2) / 100.0;
    return added;
}

void BreathingLoop::consume(double oxygenlitres) {
    m_oxygen = std::max(0.0, m_oxygen - oxygenlitres);
}

void BreathingLoop::inject(double oxygenlitres) {
    m_oxygen += oxygenlitres;
}

double BreathingLoop::po2() const {
    return m_ambient * m_oxygen / (m_oxygen + m_inert);
}

OxygenCells::OxygenCells(const DivePlan& plan, Random random)
    : m_random(random) {
    m_readings.fill(breathedpo2);
    for (int i = 0; i < 3; ++i) {
        const bool weak = i == plan.weakcell;
        m_cells[i].gain = 1 + m_random.between(-0.022, 0.022);
        m_cells[i].driftperhour = m_random.between(-0.012, 0.012);
        m_cells[i].lagseconds = weak ? 45 : m_random.between(3, 6);
        m_cells[i].seen = breathedpo2;
        m_cells[i].limit = weak ? 1.12 : 3;
    }
}

void OxygenCells::measure(double po2, double seconds) {
    m_hours += seconds / 3600;
    for (int i = 0; i < 3; ++i) {
        Cell& cell = m_cells[i];
        cell.seen += (po2 - cell.seen) * (1 - std::exp(-seconds / cell.lagseconds));
        // A cell's drift is a matter of hours and then settles.
        const double drift = cell.driftperhour * 3 * (1 - std::exp(-m_hours / 3));
        const double straight = cell.seen * (cell.gain + drift);
        const double bent = straight / std::pow(1 + std::pow(straight / cell.limit, 8), 1.0 / 8);
        m_readings[i] = std::max(0.0, bent + 0.003 * m_random.bell());
    }
}

double OxygenCells::voted() const {
    const auto& [a, b, c] = m_readings;
    const double ab = std::abs(a - b);
    const double bc = std::abs(b - c);
    const double ca = std::abs(c - a);
    if (ab <= bc && ab <= ca) {
        return (a + b) / 2;
    }
    return bc <= ca ? (b + c) / 2 : (c + a) / 2;
}

double OxygenCells::disagreement() const {
    const double middle = voted();
    double farthest = 0;
    for (const double reading : m_readings) {
        farthest = std::max(farthest, std::abs(reading - middle));
    }
    return farthest;
}

double Solenoid::fire(double voted, double setpoint, double seconds) {
    constexpr double litrespersecond = 6.0 / 60;
    constexpr double restseconds = 4;
    m_rest -= seconds;
    if (m_open <= 0 && m_rest <= 0 && voted < setpoint) {
        // Far below, a long pulse; near the setpoint a short one.
        m_open = std::clamp((setpoint - voted) * 60, 0.8, 8.0);
    }
    if (m_open <= 0) {
        return 0;
    }
    const double pulse = std::min(m_open, seconds);
    m_open -= pulse;
    if (m_open <= 0) {
        m_rest = restseconds;
    }
    return pulse * litrespersecond;
}

} // namespace benthor::simulator
