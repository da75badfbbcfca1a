#include "simulator/simulation.h"

#include <cmath>

namespace benthor::simulator {

namespace {

constexpr double longeststep = 2;
constexpr double waterwarming = 8; ///< degrees that the loop's gas is warmer than the water

enum Stream : std::uint64_t { courseStream = 10, cellStream, scrubberStream, powerStream, diverStream };

Random streamOf(const DivePlan& plan, Stream stream) {
    return Random(plan.seed, stream);
}

} // namespace

double Simulation::expectedSeconds(const DivePlan& plan) {
    if (plan.samples > 0) {
        return static_cast<double>(plan.samples) * plan.intervalseconds;
    }
    const double rest = std::clamp(plan.maxdepthmetres / 30, 0.2, 5.0) * plan.bottomminutes * 60;
    return plan.bottomminutes * 60 + rest + 600;
}

double Simulation::waitSeconds(const DivePlan& plan) {
    const double wait = streamOf(plan, courseStream).between(35, 75);
    return plan.samples > 0 ? std::min(wait, 0.05 * expectedSeconds(plan)) : wait;
}

double Simulation::bottomSeconds(const DivePlan& plan) {
    if (plan.samples == 0) {
        return plan.bottomminutes * 60;
    }
    return expectedSeconds(plan) * (plan.maxdepthmetres > 25 ? 0.5 : 0.85);
}

Simulation::Simulation(const DivePlan& plan)
    : m_plan(plan)
    , m_gases(gasTable(plan))
    , m_step(plan.intervalseconds / std::ceil(plan.intervalseconds / longeststep))
    , m_stepsasample(static_cast<int>(std::ceil(plan.intervalseconds / longeststep)))
    , m_interval(m_step / 60)
    , m_sizes(gearFor(plan, expectedSeconds(plan)))
    , m_course(plan, waitSeconds(plan), bottomSeconds(plan), streamOf(plan, courseStream))
    , m_decompression(plan.surfacembar / 1000, plan.factors, plan.laststopmetres)
    , m_loop(plan.surfacembar / 1000)
    , m_cells(plan, streamOf(plan, cellStream))
    , m_scrubber(m_sizes.absorbedlitres, plan.filterpercent, plan.surfacetemperature + waterwarming,
                 streamOf(plan, scrubberStream))
    , m_cylinders(plan, m_sizes)
    , m_power(m_sizes, streamOf(plan, powerStream))
    , m_thermometer(plan)
    , m_random(streamOf(plan, diverStream))
    , m_temperature(plan.surfacetemperature) {
    const int marks = m_random.whole(0, 3);
    for (int i = 0; i < marks; ++i) {
        m_marks.push_back(waitSeconds(plan) + m_random.between(0.15, 1.0) * bottomSeconds(plan));
    }
    if (m_gases[travelplace].on) {
        m_gas = travelplace;
    }
}

bool Simulation::finished() const {
    constexpr double afloatseconds = 80;
    return m_plan.samples > 0 ? m_recorded >= m_plan.samples : m_afloat >= afloatseconds;
}

double Simulation::oxygenNeed() {
    double base = 0.6;
    if (m_course.phase() == Phase::Bottom) {
        base = 1.1;
    } else if (m_course.phase() == Phase::Descent) {
        base = 0.95;
    } else if (m_course.phase() == Phase::Ascent) {
        base = 0.75;
    }
    const double wanted = std::max(0.4, base + m_effort.next(m_random, m_step));
    constexpr double bodyseconds = 60;
    m_work += (wanted - m_work) * (1 - std::exp(-m_step / bodyseconds));
    return m_work * m_step / 60;
}

double Simulation::setpoint() const {
    if (m_open || !m_switched || m_course.phase() == Phase::Afloat) {
        return m_plan.lowsetpoint;
    }
    const bool laststops = m_course.phase() == Phase::Ascent && m_course.depth() < 7;
    return laststops && m_plan.decosetpoint > 0 ? m_plan.decosetpoint : m_plan.highsetpoint;
}

double Simulation::reachable(double setpoint) const {
    constexpr double purest = 0.92;
    return std::min(setpoint, purest * m_decompression.ambientBar(m_course.depth()));
}

double Simulation::breathedPo2() const {
    return m_open ? m_gases[m_gas].o2 / 100.0 * m_decompression.ambientBar(m_course.depth()) : m_loop.po2();
}

Inert Simulation::inspired(double ambient) const {
    const Gas& gas = m_gases[m_gas];
    const double n2 = gas.n2() / 100.0;
    const double he = gas.he / 100.0;
    return m_open ? inspiredOpen(ambient, n2, he) : inspiredLoop(ambient, m_loop.po2(), n2, he);
}

void Simulation::chooseGas() {
    const double depth = m_course.depth();
    if (!m_open) {
        constexpr double traveldepth = 22;
        if (m_gas == travelplace && depth > std::min(traveldepth, 0.6 * m_plan.maxdepthmetres)) {
            m_gas = diluentplace;
        }
        return;
    }
    constexpr double holding = 0.8; ///< a stop is held a little below its depth
    for (int place = bottombailoutplace; place <= lastbailoutplace; ++place) {
        const Gas& gas = m_gases[place];
        if (gas.on && gas.o2 > m_gases[m_gas].o2 && maximumDepth(gas) + holding >= depth) {
            m_gas = place;
        }
    }
}

double Simulation::secondsNeeded() const {
    const Gas& gas = m_gases[m_plan.bailout ? bottombailoutplace : diluentplace];
    const double n2 = gas.n2() / 100.0;
    const double he = gas.he / 100.0;
    return secondsToSurface(m_decompression, m_course.depth(), [&](double depth) {
        // A stop is held a little below its depth, and near the surface the loop does not reach the setpoint.
        const double ambient = m_decompression.ambientBar(depth + 0.4);
        const double po2 = std::min(m_plan.highsetpoint, 0.84 * ambient);
        return m_plan.bailout ? inspiredOpen(ambient, n2, he) : inspiredLoop(ambient, po2, n2, he);
    });
}

bool Simulation::bottomIsOver() {
    if (m_plan.samples == 0) {
        return m_course.secondsInWater() >= m_plan.bottomminutes * 60;
    }
    if (m_seconds < m_nextturncheck) {
        return false;
    }
    const double left = expectedSeconds(m_plan) - m_seconds;
    // A safety stop, a while afloat, and what it takes to notice a dead solenoid; less of it on a short dive.
    const double reserve = m_plan.lapse == Lapse::DeadSolenoid ? 720 : 420;
    const double needed = secondsNeeded() * 1.05 + std::min(reserve, 0.45 * expectedSeconds(m_plan));
    // A minute more at the bottom hardly ever costs more than six on the way up.
    m_nextturncheck = m_seconds + std::max(m_step, (left - needed) / 6);
    return left <= needed;
}

void Simulation::decideTurn() {
    if (m_course.phase() != Phase::Descent && m_course.phase() != Phase::Bottom) {
        return;
    }
    m_over = m_over || bottomIsOver();
    if (!m_over) {
        return;
    }
    if (m_plan.lapse == Lapse::DeadSolenoid && !m_trouble) {
        m_trouble = true;
        m_dead = true;
    }
    if (m_dead) {
        return;
    }
    if (m_plan.bailout) {
        m_open = true;
        m_gas = bottombailoutplace;
    }
    m_course.turn();
}

void Simulation::watchSolenoid() {
    constexpr double reactionseconds = 70;
    const bool low = !m_open && m_cells.voted() < reachable(setpoint()) - 0.35;
    m_lowseconds = low ? m_lowseconds + m_step : 0;
    if (m_dead && m_lowseconds > reactionseconds) {
        m_dead = false;
    }
}

void Simulation::runLoop() {
    const double need = oxygenNeed();
    if (!m_open) {
        m_loop.consume(need);
        m_bound += 0.85 * need;
        m_usage += m_step;
    }
    const double pulse = m_solenoid.fire(m_cells.voted(), reachable(setpoint()), m_step);
    if (!m_dead) {
        m_loop.inject(pulse);
        m_cylinders.takeOxygen(pulse);
        m_injected += pulse;
    }
    const Gas& diluent = m_gases[m_open ? diluentplace : m_gas];
    m_cylinders.takeDiluent(m_loop.press(m_decompression.ambientBar(m_course.depth()), diluent));
    m_cells.measure(m_loop.po2(), m_step);
}

void Simulation::fillSuit(double metresdown) {
    // All the way down in full; at the bottom most of what a rise lets out of place is still there.
    constexpr double litres = 8;
    constexpr double bottomshare = 0.4;
    if (m_open || metresdown <= 0) {
        return;
    }
    const double share = m_course.phase() == Phase::Descent ? 1 : bottomshare;
    m_cylinders.takeDiluent(share * litres * barpermetre * metresdown);
}

void Simulation::step() {
    const double depthbefore = m_course.depth();
    const Inert before = inspired(m_decompression.ambientBar(depthbefore));
    m_course.advance(m_step, m_ceiling, m_decompression.stopFor(m_ceiling));
    m_seconds += m_step;
    fillSuit(m_course.depth() - depthbefore);
    chooseGas();
    runLoop();
    m_decompression.load(m_interval, before, inspired(m_decompression.ambientBar(m_course.depth())));
    m_ceiling = m_decompression.ceiling(m_course.depth());
    const double switchdepth = std::max(6.0, 0.75 * m_course.firstLevel());
    m_switched = m_switched || m_course.depth() > switchdepth;
    watchSolenoid();
    decideTurn();
    const double po2 = breathedPo2();
    if (po2 > 0.5) {
        m_otu += m_step / 60 * std::pow((po2 - 0.5) / 0.5, 5.0 / 6);
    }
    if (m_course.phase() == Phase::Afloat) {
        m_afloat += m_step;
    }
}

Sample Simulation::record() {
    Sample sample;
    sample.seconds = m_seconds;
    sample.depth = m_course.depth();
    sample.gas = m_gas;
    sample.loop = m_loop.po2();
    sample.po2 = m_open ? breathedPo2() : m_cells.voted();
    sample.cells = m_cells.readings();
    sample.setpoint = setpoint();
    sample.ceiling = m_ceiling;
    sample.temperature = m_temperature;
    sample.filter = m_scrubber.percentLeft();
    sample.backupbattery = m_power.backupVolts();
    sample.mainbattery = m_power.mainVolts();
    sample.diluent = m_cylinders.diluentBar();
    sample.oxygen = m_cylinders.oxygenBar();
    sample.co2 = 0.35 + 0.35 * m_work + m_scrubber.breakthrough() + 0.03 * m_random.bell();
    sample.stick = m_scrubber.stick((m_recorded + 1) % stickcount);
    for (const double moment : m_marks) {
        sample.mark = sample.mark || (moment <= m_seconds && moment > m_seconds - m_plan.intervalseconds);
    }
    return sample;
}

Sample Simulation::nextSample() {
    for (int i = 0; i < m_stepsasample; ++i) {
        step();
    }
    const double seconds = m_plan.intervalseconds;
    m_temperature = m_thermometer.read(m_course.depth(), seconds);
    m_scrubber.work(m_bound, m_temperature + waterwarming, seconds);
    m_power.draw(m_injected, m_temperature, seconds);
    m_bound = 0;
    m_injected = 0;
    Sample sample = record();
    constexpr double lowfor = 40;
    m_alarms.watch(sample, m_course.phase(), m_course.metresPerMinuteUp(), m_cells.disagreement(),
                   m_lowseconds > lowfor, m_open);
    ++m_recorded;
    return sample;
}

} // namespace benthor::simulator
