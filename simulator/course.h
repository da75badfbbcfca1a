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

    Phase phase() const { return phase_; }
    double depth() const { return depth_; }
    double metresPerMinuteUp() const { return -speed_ * 60; }
    double secondsInWater() const { return inwater_; }
    double firstLevel() const { return legs_.front().depth; }

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

    DivePlan plan_;
    double wait_;
    double bottom_;
    Random random_;
    Wander sway_{40, 0.55};
    Wander hold_{20, 0.16};
    std::vector<Leg> legs_;
    Phase phase_ = Phase::Waiting;
    double depth_ = 0;
    double speed_ = 0; ///< metres in a second, downward
    double time_ = 0;
    double inwater_ = 0;
    double arrival_ = 0;      ///< seconds in the water, at the first level
    double downrate_ = 0;     ///< metres in a second
    double safetyleft_ = 180; ///< of the stop at five metres that a dive without a ceiling makes
    double checkleft_ = 0;    ///< of the bubble check on the way down
    double lapseleft_ = 35;
    double stopheld_ = 0;
};

} // namespace benthor::simulator
