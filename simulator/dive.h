#pragma once

#include "simulator/diveplan.h"
#include "simulator/scrubber.h"

#include <QByteArrayView>

#include <array>
#include <cstdint>
#include <vector>

namespace benthor::simulator {

/// In order of urgency, the most urgent first.
enum class Alarm {
    Ceiling,
    LowPo2,
    HighPo2,
    BailOut,
    Ascent,
    CellDifference,
    Filter,
    Battery,
    GasSwitch,
    Predive
};

constexpr int alarmkinds = 10;

/// The words as the device prints them. None ends in a digit, which would make it a reading.
QByteArrayView alarmWord(Alarm alarm);

/// What the device records at one moment.
struct Sample {
    double seconds = 0; ///< since the start of the dive
    double depth = 0;   ///< metres
    int gas = 0;        ///< place in the gas table
    double loop = 0;    ///< oxygen in the loop, bar: the truth, which no line carries
    double po2 = 0;     ///< as the device shows it: the cells' vote, or that of the open circuit's gas
    std::array<double, 3> cells{};
    double setpoint = 0;
    double ceiling = 0;     ///< metres, 0 when free
    double temperature = 0; ///< of the water, degrees Celsius
    double filter = 0;      ///< per cent left
    double backupbattery = 0;
    double mainbattery = 0;
    double diluent = 0; ///< cylinder pressures, bar
    double oxygen = 0;
    double co2 = 0; ///< mbar
    std::array<double, thermistorcount> stick{};
    bool mark = false;
    std::uint32_t alarms = 0; ///< bit n is alarm n

    bool has(Alarm alarm) const { return ((alarms >> static_cast<unsigned>(alarm)) & 1U) != 0; }
    void raise(Alarm alarm) { alarms |= 1U << static_cast<unsigned>(alarm); }
};

/// A recorded dive.
struct Dive {
    DivePlan plan;
    GasTable gases{};
    std::vector<Sample> samples;
    Tissues tissues; ///< at the end
    std::uint64_t finishcode = 0;
    int status = 0;       ///< 0: ended on the loop; 1: on the open circuit
    int descendprob = 0;  ///< share of the limit line used up at the surface, tenths, at most 9
    int stackseconds = 0; ///< that the scrubber has left at a resting diver's rate, at most 9999
    int usageseconds = 0; ///< that it was breathed through, at most 9999
    double maxdepth = 0;
    double otu = 0;
};

/// Dives the plan. The stick of sample n, counted from 0, is number (n + 1) mod 3: the sticks report in turn.
Dive simulate(const DivePlan& plan);

} // namespace benthor::simulator
