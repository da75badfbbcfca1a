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
    : ambient_(ambientbar)
    , oxygen_(breathedpo2 * fullvolume)
    , inert_((ambientbar - breathedpo2) * fullvolume) {}

double BreathingLoop::press(double ambientbar, const Gas& diluent) {
    ambient_ = ambientbar;
    if (volume() > fullvolume) {
        const double kept = fullvolume / volume();
        oxygen_ *= kept;
        inert_ *= kept;
    }
    if (volume() >= emptyvolume) {
        return 0;
    }
    const double added = (emptyvolume - volume()) * ambient_;
    oxygen_ += added * diluent.o2 / 100.0;
    inert_ += added * (100 - diluent.o2) / 100.0;
    return added;
}

void BreathingLoop::consume(double oxygenlitres) {
    oxygen_ = std::max(0.0, oxygen_ - oxygenlitres);
}

void BreathingLoop::inject(double oxygenlitres) {
    oxygen_ += oxygenlitres;
}

double BreathingLoop::po2() const {
    return ambient_ * oxygen_ / (oxygen_ + inert_);
}

OxygenCells::OxygenCells(const DivePlan& plan, Random random)
    : random_(random) {
    readings_.fill(breathedpo2);
    for (int i = 0; i < 3; ++i) {
        const bool weak = i == plan.weakcell;
        cells_[i].gain = 1 + random_.between(-0.022, 0.022);
        cells_[i].driftperhour = random_.between(-0.012, 0.012);
        cells_[i].lagseconds = weak ? 45 : random_.between(3, 6);
        cells_[i].seen = breathedpo2;
        cells_[i].limit = weak ? 1.12 : 3;
    }
}

void OxygenCells::measure(double po2, double seconds) {
    hours_ += seconds / 3600;
    for (int i = 0; i < 3; ++i) {
        Cell& cell = cells_[i];
        cell.seen += (po2 - cell.seen) * (1 - std::exp(-seconds / cell.lagseconds));
        // A cell's drift is a matter of hours and then settles.
        const double drift = cell.driftperhour * 3 * (1 - std::exp(-hours_ / 3));
        const double straight = cell.seen * (cell.gain + drift);
        const double bent = straight / std::pow(1 + std::pow(straight / cell.limit, 8), 1.0 / 8);
        readings_[i] = std::max(0.0, bent + 0.003 * random_.bell());
    }
}

double OxygenCells::voted() const {
    const auto& [a, b, c] = readings_;
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
    for (const double reading : readings_) {
        farthest = std::max(farthest, std::abs(reading - middle));
    }
    return farthest;
}

double Solenoid::fire(double voted, double setpoint, double seconds) {
    constexpr double litrespersecond = 6.0 / 60;
    constexpr double restseconds = 4;
    rest_ -= seconds;
    if (open_ <= 0 && rest_ <= 0 && voted < setpoint) {
        // Far below, a long pulse; near the setpoint a short one.
        open_ = std::clamp((setpoint - voted) * 60, 0.8, 8.0);
    }
    if (open_ <= 0) {
        return 0;
    }
    const double pulse = std::min(open_, seconds);
    open_ -= pulse;
    if (open_ <= 0) {
        rest_ = restseconds;
    }
    return pulse * litrespersecond;
}

} // namespace benthor::simulator
