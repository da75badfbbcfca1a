#include "simulator/course.h"

#include <algorithm>
#include <cmath>

namespace benthor::simulator {

namespace {

constexpr double checkdepth = 5.5;
constexpr double safetydepth = 5;
constexpr double fastrate = 20.0 / 60;

} // namespace

Course::Course(const DivePlan& plan, double waitseconds, double bottomseconds, Random random)
    : plan_(plan)
    , wait_(waitseconds)
    , bottom_(bottomseconds)
    , random_(random) {
    downrate_ = std::clamp(18 + (plan.maxdepthmetres - 60) * 0.1, 18.0, 30.0) / 60;
    checkleft_ = plan.maxdepthmetres > 12 && random_.chance(0.7) ? random_.between(20, 45) : 0;
    planLegs(random_);
}

void Course::planLegs(Random& random) {
    // The deepest level leaves room for the diver's ups and downs.
    const double deepest = plan_.maxdepthmetres - std::min(0.7, 0.1 * plan_.maxdepthmetres);
    legs_.clear();
    switch (plan_.site) {
    case Site::Reef:
        legs_ = {{0.0, deepest},
                 {random.between(0.22, 0.3), deepest * random.between(0.84, 0.92)},
                 {random.between(0.42, 0.5), deepest * random.between(0.7, 0.8)},
                 {random.between(0.6, 0.7), deepest * random.between(0.5, 0.64)},
                 {random.between(0.82, 0.9), deepest * random.between(0.36, 0.46)}};
        break;
    case Site::Wreck:
        legs_ = {{0.0, deepest * random.between(0.78, 0.84)},
                 {random.between(0.24, 0.3), deepest},
                 {random.between(0.48, 0.55), deepest * random.between(0.86, 0.92)},
                 {random.between(0.66, 0.72), deepest * random.between(0.95, 0.99)},
                 {random.between(0.84, 0.9), deepest * random.between(0.72, 0.8)}};
        break;
    case Site::Cave: {
        // The passage is the same on the way back.
        const double hall = deepest * random.between(0.45, 0.55);
        const double slope = deepest * random.between(0.7, 0.85);
        const double near = random.between(0.12, 0.18);
        const double far = random.between(0.28, 0.36);
        legs_ = {{0.0, hall}, {near, slope}, {far, deepest}, {1 - far, slope}, {1 - near, hall}};
        break;
    }
    }
}

double Course::legDepth() const {
    const double arrival = phase_ == Phase::Descent ? inwater_ : arrival_;
    const double share = (inwater_ - arrival) / std::max(1.0, bottom_ - arrival);
    std::size_t leg = 0;
    while (leg + 1 < legs_.size() && share >= legs_[leg + 1].fromshare) {
        ++leg;
    }
    if (leg + 1 == legs_.size()) {
        return legs_[leg].depth;
    }
    // The last part of a leg already leads to the next: slowly along a slope, at once between decks.
    const double blend = plan_.site == Site::Wreck ? 0.25 : 0.75;
    const double length = legs_[leg + 1].fromshare - legs_[leg].fromshare;
    const double along = (share - legs_[leg].fromshare) / length;
    const double way = std::clamp((along - 1 + blend) / blend, 0.0, 1.0);
    const double smooth = way * way * (3 - 2 * way);
    return legs_[leg].depth + (legs_[leg + 1].depth - legs_[leg].depth) * smooth;
}

void Course::turn() {
    if (phase_ != Phase::Waiting && phase_ != Phase::Afloat) {
        phase_ = Phase::Ascent;
    }
}

void Course::changePhase(double seconds, double ceiling, double stop) {
    time_ += seconds;
    if (phase_ != Phase::Waiting) {
        inwater_ += seconds;
    }
    if (phase_ == Phase::Waiting && time_ >= wait_) {
        phase_ = Phase::Descent;
    } else if (phase_ == Phase::Descent && std::abs(depth_ - legDepth()) < 1) {
        phase_ = Phase::Bottom;
        arrival_ = inwater_;
    } else if (phase_ == Phase::Ascent && depth_ <= 0 && stop <= 0) {
        phase_ = Phase::Afloat;
        speed_ = 0;
    }
    if (phase_ == Phase::Descent && depth_ > checkdepth - 1) {
        checkleft_ -= seconds;
    }
    if (phase_ != Phase::Ascent) {
        return;
    }
    if (ceiling > 0 || plan_.maxdepthmetres < 8) {
        safetyleft_ = 0;
    } else if (depth_ < safetydepth + 1.5) {
        safetyleft_ -= seconds;
    }
    stopheld_ = stop > 0 && depth_ < stop + 1 ? stopheld_ + seconds : 0;
}

double Course::wantedDepth(double ceiling, double stop) {
    switch (phase_) {
    case Phase::Waiting:
    case Phase::Afloat:
        return 0;
    case Phase::Descent:
        return checkleft_ > 0 ? std::min(checkdepth, legDepth()) : legDepth();
    case Phase::Bottom:
        return std::clamp(legDepth() + sway_.value() * std::clamp(plan_.maxdepthmetres / 15, 0.35, 1.0),
                          std::min(ceiling + 1, plan_.maxdepthmetres), plan_.maxdepthmetres);
    case Phase::Ascent:
        break;
    }
    if (stop > 0) {
        return stop + 0.35 + hold_.value();
    }
    if (safetyleft_ > 0 && depth_ > safetydepth / 2) {
        return safetydepth + hold_.value();
    }
    // Aiming a little into the air ends the approach to the surface in good time.
    return -0.5;
}

double Course::upLimit(double stop) const {
    if (phase_ == Phase::Bottom) {
        return 7.0 / 60;
    }
    const bool racing = plan_.lapse == Lapse::FastAscent && lapseleft_ > 0 && depth_ > stop + 6;
    return racing ? fastrate : ascentRate(depth_, plan_.laststopmetres);
}

bool Course::lapsing(double stop) {
    constexpr double heldfirst = 60;
    return plan_.lapse == Lapse::BrokenCeiling && lapseleft_ > 0 && stopheld_ > heldfirst && stop > 0;
}

void Course::swim(double wanted, double up, double seconds) {
    constexpr double brakeseconds = 7;
    constexpr double inertiaseconds = 5;
    const double speed = std::clamp((wanted - depth_) / brakeseconds, -up, downrate_);
    speed_ += (speed - speed_) * (1 - std::exp(-seconds / inertiaseconds));
    depth_ += speed_ * seconds;
}

void Course::advance(double seconds, double ceiling, double stop) {
    sway_.next(random_, seconds);
    hold_.next(random_, seconds);
    changePhase(seconds, ceiling, stop);
    const bool drifting = lapsing(stop);
    const double before = depth_;
    swim(drifting ? ceiling - 1.2 : wantedDepth(ceiling, stop), upLimit(stop), seconds);
    const bool racing = plan_.lapse == Lapse::FastAscent && speed_ < -13.0 / 60;
    if (drifting ? depth_ < ceiling : racing) {
        lapseleft_ -= seconds;
    }
    if (!drifting && ceiling > 0) {
        depth_ = std::max(depth_, std::min(ceiling + 0.05, before));
    }
    depth_ = std::clamp(depth_, 0.0, plan_.maxdepthmetres);
}

} // namespace benthor::simulator
