#pragma once

#include "simulator/alarmwatch.h"
#include "simulator/breathingloop.h"
#include "simulator/course.h"
#include "simulator/dive.h"
#include "simulator/gear.h"

#include <algorithm>

namespace benthor::simulator {

/// One dive as it goes on: diver, loop and device together, in steps of at most two seconds.
class Simulation {
public:
    explicit Simulation(const DivePlan& plan);

    /// Goes on to the next recording moment and returns what the device writes down.
    Sample nextSample();

    bool finished() const;
    const Decompression& decompression() const { return decompression_; }
    const Scrubber& scrubber() const { return scrubber_; }
    bool openCircuit() const { return open_; }
    double otu() const { return otu_; }
    double usageSeconds() const { return usage_; }

private:
    void step();
    void runLoop();
    void fillSuit(double metresdown);
    double secondsNeeded() const;
    bool bottomIsOver();
    void decideTurn();
    void watchSolenoid();
    void chooseGas();
    double setpoint() const;
    double reachable(double setpoint) const;
    double breathedPo2() const;
    Inert inspired(double ambient) const;
    double oxygenNeed();
    Sample record();

    static double expectedSeconds(const DivePlan& plan);
    static double waitSeconds(const DivePlan& plan);
    static double bottomSeconds(const DivePlan& plan);

    DivePlan plan_;
    GasTable gases_;
    double step_;
    int stepsasample_;
    Interval interval_;
    GearSizes sizes_;
    Course course_;
    Decompression decompression_;
    BreathingLoop loop_;
    OxygenCells cells_;
    Solenoid solenoid_;
    Scrubber scrubber_;
    Cylinders cylinders_;
    Power power_;
    Thermometer thermometer_;
    AlarmWatch alarms_;
    Random random_;
    Wander effort_{200, 0.1};

    double seconds_ = 0;
    double ceiling_ = 0;
    double work_ = 0.6;   ///< litres of oxygen a minute
    double injected_ = 0; ///< litres, since the last sample
    double bound_ = 0;    ///< litres of carbon dioxide, since the last sample
    double nextturncheck_ = 0;
    double lowseconds_ = 0; ///< for how long the oxygen has been far below the setpoint
    double afloat_ = 0;
    double otu_ = 0;
    double usage_ = 0;
    double temperature_ = 0;
    int gas_ = diluentplace;
    bool switched_ = false; ///< to the high setpoint
    bool over_ = false;     ///< the time at the bottom
    bool dead_ = false;     ///< the solenoid
    bool trouble_ = false;  ///< it has died before
    bool open_ = false;     ///< breathing the open circuit
    int recorded_ = 0;
    std::vector<double> marks_; ///< moments that the diver will mark
};

} // namespace benthor::simulator
