#pragma once

#include "simulator/decompression.h"

#include <QByteArray>
#include <QString>

#include <array>
#include <cstdint>
#include <optional>

namespace benthor::simulator {

/// A gas in per cent; what is neither oxygen nor helium is nitrogen.
struct Gas {
    int o2 = 21;
    int he = 0;
    bool on = false;

    int n2() const { return 100 - o2 - he; }
};

constexpr int gascount = 10;
using GasTable = std::array<Gas, gascount>;

// Places in the gas table. Places behind hold air that is off.
constexpr int diluentplace = 0;
constexpr int travelplace = 1;
constexpr int bottombailoutplace = 2;
constexpr int firstdecobailoutplace = 3;
constexpr int lastbailoutplace = 5;

/// How the bottom runs.
enum class Site {
    Reef,  ///< deepest first, then slowly up along the slope
    Wreck, ///< between deck and sea bed
    Cave   ///< down along the passage, and back the same way
};

/// What the diver or the device does wrong.
enum class Lapse {
    None,
    FastAscent,    ///< too fast off the bottom for half a minute
    BrokenCeiling, ///< drifts above the first long stop for half a minute
    DeadSolenoid ///< no oxygen comes any more late at the bottom; the diver bails out when `bailout` says so
};

struct DivePlan {
    std::uint64_t seed = 1;
    int samples = 0;          ///< exactly that many, 1 and up; 0: as many as the dive takes
    int intervalseconds = 10; ///< 1 to 99
    double maxdepthmetres =
        30; ///< 1 to 280: beyond, the device's depth count cannot be told from a shallow one
    double bottomminutes = 35; ///< from leaving the surface to the turn; not looked at when `samples` is set
    Site site = Site::Reef;
    Lapse lapse = Lapse::None;
    bool bailout = false; ///< to the open circuit, at the end of the bottom
    bool trimix = false;
    bool scrubbersticks = false; ///< records the thermistor sticks in place of power and pressures
    bool co2sensor = false;      ///< not together with the sticks, a line has no room
    int weakcell = -1;          ///< 0 to 2: a cell that lags and cannot show high pressures; -1: all are good
    std::optional<Gas> diluent; ///< in place of the one that fits the depth

    double lowsetpoint = 0.7;
    double highsetpoint = 1.3;
    double decosetpoint = 0; ///< at the last stops; 0: stays at the high one
    GradientFactors factors;
    double laststopmetres = 3;

    double surfacetemperature = 24;
    double bottomtemperature = 14;
    double thermoclinemetres = 14;
    double surfacembar = 1013;
    double diluentbar = 205;
    double oxygenbar = 195;
    double filterpercent = 100; ///< left of the scrubber at the start

    std::uint64_t startcode = 536500000; ///< seconds since 31 December 1991, 00:00
    QByteArray version = "V2.31";        ///< 2 to 8 characters
    QByteArray serial = "KD10442";
    QString series = QStringLiteral("Dive");
    int number = 1;
};

/// A plausible plan, another for each seed; the same seed always gives the same.
DivePlan plannedDive(std::uint64_t seed);

/// The gases that fit the plan.
GasTable gasTable(const DivePlan& plan);

/// Depth in metres down to which a gas stays within 1.6 bar of oxygen, whole metres.
int maximumDepth(const Gas& gas);

/// Series, number and ".txt".
QString fileName(const DivePlan& plan);

} // namespace benthor::simulator
