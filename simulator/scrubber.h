#pragma once

#include "simulator/random.h"

#include <array>

namespace benthor::simulator {

constexpr int thermistorcount = 8;
constexpr int stickcount = 3;

/// The canister that binds carbon dioxide. A warm zone, where the binding happens, moves from the inlet to
/// the outlet as the absorbent is used up; three sticks with eight thermistors each, the first at the inlet,
/// see it pass.
class Scrubber {
public:
    /// `capacitylitres` of carbon dioxide for a fresh filling, of which `percentleft` is left.
    Scrubber(double capacitylitres, double percentleft, double gastemperature, Random random);

    void work(double co2litres, double gastemperature, double seconds);

    double capacityLitres() const { return capacity_; }
    double percentLeft() const;

    /// Carbon dioxide behind the canister, mbar.
    double breakthrough() const;

    /// Degrees Celsius along stick 0 to 2.
    const std::array<double, thermistorcount>& stick(int number) const { return sticks_[number]; }

private:
    double wanted(int stick, int thermistor, double gastemperature, double heat) const;

    double capacity_;
    double used_;
    double heat_ = 0; ///< litres of carbon dioxide a minute, as the bed's warmth follows it
    std::array<double, stickcount> ahead_{};
    std::array<double, stickcount> warmth_{};
    std::array<std::array<double, thermistorcount>, stickcount> sticks_{};
};

} // namespace benthor::simulator
