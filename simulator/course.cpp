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
    : m_plan(plan)
    , m_wait(waitseconds)
    , m_bottom(bottomseconds)
    , m_random(random) {
    m_downrate = std::clamp(18 + (plan.maxdepthmetres - 60) * 0.1, 18.0, 30.0) / 60;
    m_checkleft = plan.maxdepthmetres > 12 && m_random.chance(0.7) ? m_random.between(20, 45) : 0;
    planLegs(m_random);
}

void Course::planLegs(Random& random) {
    // The deepest level leaves room for the diver's ups and downs.
    const double deepest = m_plan.maxdepthmetres - std::min(0.7, 0.1 * m_plan.maxdepthmetres);
    m_legs.clear();
    switch (m_plan.site) {
    case Site::Reef:
        m_legs = {{0.0, deepest},
                  {random.between(0.22, 0.3), deepest * random.between(0.84, 0.92)},
                  {random.between(0.42, 0.5), deepest * random.between(0.7, 0.8)},
                  {random.between(0.6, 0.7), deepest * random.between(0.5, 0.64)},
                  {random.between(0.82, 0.9), deepest * random.between(0.36, 0.46)}};
        break;
    case Site::Wreck:
        m_legs = {{0.0, deepest * random.between(0.78, 0.84)},
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
        m_legs = {{0.0, hall}, {near, slope}, {far, deepest}, {1 - far, slope}, {1 - near, hall}};
        break;
    }
    }
}

double Course::legDepth() const {
    const double arrival = m_phase == Phase::Descent ? m_inwater : m_arrival;
    const double share = (m_inwater - arrival) / std::max(1.0, m_bottom - arrival);
    std::size_t leg = 0;
    while (leg + 1 < m_legs.size() && share >= m_legs[leg + 1].fromshare) {
        ++leg;
    }
    if (leg + 1 == m_legs.size()) {
        return m_legs[leg].depth;
    }
    // The last part of a leg already leads to the next: slowly along a slope, at once between decks.
    const double blend = m_plan.site == Site::Wreck ? 0.25 : 0.75;
    const double length = m_legs[leg + 1].fromshare - m_legs[leg].fromshare;
    const double along = (share - m_legs[leg].fromshare) / length;
    const double way = std::clamp((along - 1 + blend) / blend, 0.0, 1.0);
    const double smooth = way * way * (3 - 2 * way);
    return m_legs[leg].depth + (m_legs[leg + 1].depth - m_legs[leg].depth) * smooth;
}

void Course::turn() {
    if (m_phase != Phase::Waiting && m_phase != Phase::Afloat) {
        m_phase = Phase::Ascent;
    }
}

void Course::changePhase(double seconds, double ceiling, double stop) {
    m_time += seconds;
    if (m_phase != Phase::Waiting) {
        m_inwater += seconds;
    }
    if (m_phase == Phase::Waiting && m_time >= m_wait) {
        m_phase = Phase::Descent;
    } else if (m_phase == Phase::Descent && std::abs(m_depth - legDepth()) < 1) {
        m_phase = Phase::Bottom;
        m_arrival = m_inwater;
    } else if (m_phase == Phase::Ascent && m_depth <= 0 && stop <= 0) {
        m_phase = Phase::Afloat;
        m_speed = 0;
    }
    if (m_phase == Phase::Descent && m_depth > checkdepth - 1) {
        m_checkleft -= seconds;
    }
    if (m_phase != Phase::Ascent) {
        return;
    }
    if (ceiling > 0 || m_plan.maxdepthmetres < 8) {
        m_safetyleft = 0;
    } else if (m_depth < safetydepth + 1.5) {
        m_safetyleft -= seconds;
    }
    m_stopheld = stop > 0 && m_depth < stop + 1 ? m_stopheld + seconds : 0;
}

double Course::wantedDepth(double ceiling, double stop) {
    switch (m_phase) {
    case Phase::Waiting:
    case Phase::Afloat:
        return 0;
    case Phase::Descent:
        return m_checkleft > 0 ? std::min(checkdepth, legDepth()) : legDepth();
    case Phase::Bottom:
        return std::clamp(legDepth() + m_sway.value() * std::clamp(m_plan.maxdepthmetres / 15, 0.35, 1.0),
                          std::min(ceiling + 1, m_plan.maxdepthmetres), m_plan.maxdepthmetres);
    case Phase::Ascent:
        break;
    }
    if (stop > 0) {
        return stop + 0.35 + m_hold.value();
    }
    if (m_safetyleft > 0 && m_depth > safetydepth / 2) {
        return safetydepth + m_hold.value();
    }
    // Aiming a little into the air ends the approach to the surface in good time.
    return -0.5;
}

double Course::upLimit(double stop) const {
    if (m_phase == Phase::Bottom) {
        return 7.0 / 60;
    }
    const bool racing = m_plan.lapse == Lapse::FastAscent && m_lapseleft > 0 && m_depth > stop + 6;
    return racing ? fastrate : ascentRate(m_depth, m_plan.laststopmetres);
}

bool Course::lapsing(double stop) {
    constexpr double heldfirst = 60;
    return m_plan.lapse == Lapse::BrokenCeiling && m_lapseleft > 0 && m_stopheld > heldfirst && stop > 0;
}

void Course::swim(double wanted, double up, double seconds) {
    constexpr double brakeseconds = 7;
    constexpr double inertiaseconds = 5;
    const double speed = std::clamp((wanted - m_depth) / brakeseconds, -up, m_downrate);
    m_speed += (speed - m_speed) * (1 - std::exp(-seconds / inertiaseconds));
    m_depth += m_speed * seconds;
}

void Course::advance(double seconds, double ceiling, double stop) {
    m_sway.next(m_random, seconds);
    m_hold.next(m_random, seconds);
    changePhase(seconds, ceiling, stop);
    const bool drifting = lapsing(stop);
    const double before = m_depth;
    swim(drifting ? ceiling - 1.2 : wantedDepth(ceiling, stop), upLimit(stop), seconds);
    const bool racing = m_plan.lapse == Lapse::FastAscent && m_speed < -13.0 / 60;
    if (drifting ? m_depth < ceiling : racing) {
        m_lapseleft -= seconds;
    }
    if (!drifting && ceiling > 0) {
        m_depth = std::max(m_depth, std::min(ceiling + 0.05, before));
    }
    m_depth = std::clamp(m_depth, 0.0, m_plan.maxdepthmetres);
}

} // namespace benthor::simulator
