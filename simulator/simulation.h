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
    const Decompression& decompression() const { return m_decompression; }
    const Scrubber& scrubber() const { return m_scrubber; }
    bool openCircuit() const { return m_open; }
    double otu() const { return m_otu; }
    double usageSeconds() const { return m_usage; }

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

    DivePlan m_plan;
    GasTable m_gases;
    double m_step;
    int m_stepsasample;
    Interval m_interval;
    GearSizes m_sizes;
    Course m_course;
    Decompression m_decompression;
    BreathingLoop m_loop;
    OxygenCells m_cells;
    Solenoid m_solenoid;
    Scrubber m_scrubber;
    Cylinders m_cylinders;
    Power m_power;
    Thermometer m_thermometer;
    AlarmWatch m_alarms;
    Random m_random;
    Wander m_effort{200, 0.1};

    double m_seconds = 0;
    double m_ceiling = 0;
    double m_work = 0.6;   ///< litres of oxygen a minute
    double m_injected = 0; ///< litres, since the last sample
    double m_bound = 0;    ///< litres of carbon dioxide, since the last sample
    double m_nextturncheck = 0;
    double m_lowseconds = 0; ///< for how long the oxygen has been far below the setpoint
    double m_afloat = 0;
    double m_otu = 0;
    double m_usage = 0;
    double m_temperature = 0;
    int m_gas = diluentplace;
    bool m_switched = false; ///< to the high setpoint
    bool m_over = false;     ///< the time at the bottom
    bool m_dead = false;     ///< the solenoid
    bool m_trouble = false;  ///< it has died before
    bool m_open = false;     ///< breathing the open circuit
    int m_recorded = 0;
    std::vector<double> m_marks; ///< moments that the diver will mark
};

} // namespace benthor::simulator
