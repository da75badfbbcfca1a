#pragma once

#include "simulator/diveplan.h"
#include "simulator/random.h"

#include <vector>

namespace benthor::simulator {

enum class Phase { Waiting, Descent, Bottom, Ascent, Afloat };

/// The way of the diver through the water: where he wants to be, and where he gets to with a body's inertia.
class Course {
public:
    /// `bottomseconds` is the time from leaving the surface to the turn that the levels of the bottom are
    /// spread over.
    Course(const DivePlan& plan, double waitseconds, double bottomseconds, Random random);

    /// Moves on by `seconds`, with the ceiling in force and the stop it asks for. Never above the ceiling,
    /// unless the plan's lapse says so.
    void advance(double seconds, double ceiling, double stop);

    /// The bottom ends, whatever the phase.
    void turn();

    Phase phase() const { return m_phase; }
    double depth() const { return m_depth; }
    double metresPerMinuteUp() const { return -m_speed * 60; }
    double secondsInWater() const { return m_inwater; }
    double firstLevel() const { return m_legs.front().depth; }

private:
    struct Leg {
        double fromshare;
        double depth;
    };

    void planLegs(Random& random);
    double legDepth() const;
    double wantedDepth(double ceiling, double stop);
    double upLimit(double stop) const;
    void changePhase(double seconds, double ceiling, double stop);
    bool lapsing(double stop);
    void swim(double wanted, double up, double seconds);

    DivePlan m_plan;
    double m_wait;
    double m_bottom;
    Random m_random;
    Wander m_sway{40, 0.55};
    Wander m_hold{20, 0.16};
    std::vector<Leg> m_legs;
    Phase m_phase = Phase::Waiting;
    double m_depth = 0;
    double m_speed = 0; ///< metres in a second, downward
    double m_time = 0;
    double m_inwater = 0;
    double m_arrival = 0;      ///< seconds in the water, at the first level
    double m_downrate = 0;     ///< metres in a second
    double m_safetyleft = 180; ///< of the stop at five metres that a dive without a ceiling makes
    double m_checkleft = 0;    ///< of the bubble check on the way down
    double m_lapseleft = 35;
    double m_stopheld = 0;
};

} // namespace benthor::simulator
