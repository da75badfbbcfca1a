#pragma once

#include "simulator/diveplan.h"
#include "simulator/random.h"

namespace benthor::simulator {

/// Size of what the diver takes along: the usual, or more for a dive that outlasts it.
struct GearSizes {
    double diluentlitres = 3;
    double oxygenlitres = 3;
    double absorbedlitres = 230; ///< carbon dioxide that a fresh scrubber binds
    double batteryhours = 9;
};

GearSizes gearFor(const DivePlan& plan, double expectedseconds);

/// The two cylinders of the rebreather. Their pressure only falls.
class Cylinders {
public:
    Cylinders(const DivePlan& plan, const GearSizes& sizes);

    /// Litres at 1 bar that were taken out.
    void takeDiluent(double litres);
    void takeOxygen(double litres);

    double diluentBar() const { return diluent_; }
    double oxygenBar() const { return oxygen_; }

private:
    GearSizes sizes_;
    double diluent_;
    double oxygen_;
};

/// The main battery, two cells in a row that feed the solenoid, and the backup battery.
class Power {
public:
    Power(const GearSizes& sizes, Random random);

    /// `pulselitres`: oxygen that the solenoid let through, a measure of how long it drew current.
    void draw(double pulselitres, double temperature, double seconds);

    double mainVolts() const { return main_; }
    double backupVolts() const { return backup_; }

private:
    double hoursofmain_;
    Random random_;
    double fresh_;
    double freshbackup_;
    double hours_ = 0;
    double sag_ = 0;
    double main_;
    double backup_;
};

/// Water by depth: a warm upper layer, a cold lower one, and the sensor's housing that follows slowly.
class Thermometer {
public:
    explicit Thermometer(const DivePlan& plan);

    double read(double depth, double seconds);

private:
    double water(double depth) const;

    double surface_;
    double bottom_;
    double thermocline_;
    double seen_;
};

} // namespace benthor::simulator
