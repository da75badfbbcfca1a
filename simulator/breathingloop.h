#pragma once

#include "simulator/diveplan.h"
#include "simulator/random.h"

#include <array>

namespace benthor::simulator {

/// The gas that circulates between diver and scrubber, as amounts of oxygen and inert gas. The counterlungs
/// give way until they are full or empty: then gas bubbles off, or diluent flows in.
class BreathingLoop {
public:
    explicit BreathingLoop(double ambientbar);

    /// The water presses on the loop. Returns the litres of diluent that flowed in, at 1 bar.
    double press(double ambientbar, const Gas& diluent);

    void consume(double oxygenlitres);
    void inject(double oxygenlitres);

    double po2() const;

private:
    double volume() const { return (oxygen_ + inert_) / ambient_; }

    double ambient_;
    double oxygen_;
    double inert_;
};

/// Three galvanic cells. Each has its own calibration, drift, lag and noise; a weak one lags far behind and
/// levels off.
class OxygenCells {
public:
    OxygenCells(const DivePlan& plan, Random random);

    void measure(double po2, double seconds);

    const std::array<double, 3>& readings() const { return readings_; }

    /// The mean of the two cells that agree best.
    double voted() const;

    /// Distance of the third cell from that mean.
    double disagreement() const;

private:
    struct Cell {
        double gain;
        double driftperhour;
        double lagseconds;
        double limit;
        double seen;
    };

    Random random_;
    std::array<Cell, 3> cells_{};
    std::array<double, 3> readings_{};
    double hours_ = 0;
};

/// Fires in pulses while the voted value is below the setpoint.
class Solenoid {
public:
    /// Litres of oxygen at 1 bar for this step.
    double fire(double voted, double setpoint, double seconds);

private:
    double open_ = 0;
    double rest_ = 0;
};

} // namespace benthor::simulator
