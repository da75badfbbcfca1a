#pragma once

#include <array>
#include <functional>

namespace benthor::simulator {

// Decompression after Buhlmann, set ZH-L16C with sixteen compartments for nitrogen and helium. The half-times
// and the coefficients a and b are those published in A. A. Buhlmann, E. B. Voellm, P. Nussberger,
// "Tauchmedizin", 5th edition, Springer 2002, with the 5-minute form of the first compartment. Uptake follows
// H. R. Schreiner's equation for an inspired pressure that changes linearly; gradient factors are E. C.
// Baker's. Pressures are in bar, absolute; depths in metres of 0.1 bar; times in minutes.

constexpr int compartmentcount = 16;
constexpr double watervapourbar = 0.0627;
constexpr double barpermetre = 0.1;

struct Compartment {
    double n2halftime;
    double n2a;
    double n2b;
    double hehalftime;
    double hea;
    double heb;
};

extern const std::array<Compartment, compartmentcount> zhl16c;

/// Partial pressures of the two inert gases.
struct Inert {
    double n2 = 0;
    double he = 0;
};

struct Tissues {
    std::array<double, compartmentcount> n2{};
    std::array<double, compartmentcount> he{};
};

/// Shares of a limit line, 0 to 1: `low` at the first stop, `high` at the surface.
struct GradientFactors {
    double low = 0.3;
    double high = 0.8;
};

/// What the equation needs of one length of time; worth keeping when steps are equally long.
class Interval {
public:
    explicit Interval(double minutes);

    double minutes() const { return minutes_; }

    /// Schreiner's equation for every compartment: the inspired pressures go evenly from `begin` to `end`.
    void load(Tissues& tissues, const Inert& begin, const Inert& end) const;

private:
    double minutes_;
    std::array<double, compartmentcount> n2kept_{};
    std::array<double, compartmentcount> hekept_{};
};

/// Tissues of one who has long breathed air at that surface pressure.
Tissues saturatedAt(double surfacebar);

/// Inspired inert pressures of a gas breathed from the open circuit. Fractions are 0 to 1.
Inert inspiredOpen(double ambientbar, double n2fraction, double hefraction);

/// The same in a loop that holds `po2` bar of oxygen and, beside it, inert gas in the diluent's proportion.
Inert inspiredLoop(double ambientbar, double po2, double n2fraction, double hefraction);

/// The lowest ambient pressure that every compartment stands with that share of the limit line.
double toleratedBar(const Tissues& tissues, double gradientfactor);

/// The decompression of one dive: its tissues, and its first stop as the anchor of the gradient factors.
class Decompression {
public:
    Decompression(double surfacebar, GradientFactors factors, double laststopmetres);

    double ambientBar(double depth) const { return surface_ + depth * barpermetre; }
    double surfaceBar() const { return surface_; }
    double laststop() const { return laststop_; }
    const Tissues& tissues() const { return tissues_; }

    void load(const Interval& interval, const Inert& begin, const Inert& end);

    /// The depth above which a diver who is now at `depth` must not go, 0 when the surface is free. The
    /// gradient factor is that of the stop that comes next, so at the last stop it is the surface's.
    double ceiling(double depth) const;

    /// The depth to wait at for a ceiling: the next multiple of three metres, not above the last stop; 0 for
    /// none.
    double stopFor(double ceiling) const;

private:
    double surface_;
    GradientFactors factors_;
    double laststop_;
    double anchor_ = 0;
    Tissues tissues_;
};

/// Metres in a second that a diver goes up at that depth.
double ascentRate(double depth, double laststop);

/// Seconds that a diver needs from `depth` to the surface with all stops, where `inspired(depth)` is what is
/// breathed; never more than a week.
double secondsToSurface(Decompression state, double depth, const std::function<Inert(double)>& inspired);

} // namespace benthor::simulator
