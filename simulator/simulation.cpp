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
    : plan_(plan)
    , gases_(gasTable(plan))
    , step_(plan.intervalseconds / std::ceil(plan.intervalseconds / longeststep))
    , stepsasample_(static_cast<int>(std::ceil(plan.intervalseconds / longeststep)))
    , interval_(step_ / 60)
    , sizes_(gearFor(plan, expectedSeconds(plan)))
    , course_(plan, waitSeconds(plan), bottomSeconds(plan), streamOf(plan, courseStream))
    , decompression_(plan.surfacembar / 1000, plan.factors, plan.laststopmetres)
    , loop_(plan.surfacembar / 1000)
    , cells_(plan, streamOf(plan, cellStream))
    , scrubber_(sizes_.absorbedlitres, plan.filterpercent, plan.surfacetemperature + waterwarming,
                streamOf(plan, scrubberStream))
    , cylinders_(plan, sizes_)
    , power_(sizes_, streamOf(plan, powerStream))
    , thermometer_(plan)
    , random_(streamOf(plan, diverStream))
    , temperature_(plan.surfacetemperature) {
    const int marks = random_.whole(0, 3);
    for (int i = 0; i < marks; ++i) {
        marks_.push_back(waitSeconds(plan) + random_.between(0.15, 1.0) * bottomSeconds(plan));
    }
    if (gases_[travelplace].on) {
        gas_ = travelplace;
    }
}

bool Simulation::finished() const {
    constexpr double afloatseconds = 80;
    return plan_.samples > 0 ? recorded_ >= plan_.samples : afloat_ >= afloatseconds;
}

double Simulation::oxygenNeed() {
    double base = 0.6;
    if (course_.phase() == Phase::Bottom) {
        base = 1.1;
    } else if (course_.phase() == Phase::Descent) {
        base = 0.95;
    } else if (course_.phase() == Phase::Ascent) {
        base = 0.75;
    }
    const double wanted = std::max(0.4, base + effort_.next(random_, step_));
    constexpr double bodyseconds = 60;
    work_ += (wanted - work_) * (1 - std::exp(-step_ / bodyseconds));
    return work_ * step_ / 60;
}

double Simulation::setpoint() const {
    if (open_ || !switched_ || course_.phase() == Phase::Afloat) {
        return plan_.lowsetpoint;
    }
    const bool laststops = course_.phase() == Phase::Ascent && course_.depth() < 7;
    return laststops && plan_.decosetpoint > 0 ? plan_.decosetpoint : plan_.highsetpoint;
}

double Simulation::reachable(double setpoint) const {
    constexpr double purest = 0.92;
    return std::min(setpoint, purest * decompression_.ambientBar(course_.depth()));
}

double Simulation::breathedPo2() const {
    return open_ ? gases_[gas_].o2 / 100.0 * decompression_.ambientBar(course_.depth()) : loop_.po2();
}

Inert Simulation::inspired(double ambient) const {
    const Gas& gas = gases_[gas_];
    const double n2 = gas.n2() / 100.0;
    const double he = gas.he / 100.0;
    return open_ ? inspiredOpen(ambient, n2, he) : inspiredLoop(ambient, loop_.po2(), n2, he);
}

void Simulation::chooseGas() {
    const double depth = course_.depth();
    if (!open_) {
        constexpr double traveldepth = 22;
        if (gas_ == travelplace && depth > std::min(traveldepth, 0.6 * plan_.maxdepthmetres)) {
            gas_ = diluentplace;
        }
        return;
    }
    constexpr double holding = 0.8; ///< a stop is held a little below its depth
    for (int place = bottombailoutplace; place <= lastbailoutplace; ++place) {
        const Gas& gas = gases_[place];
        if (gas.on && gas.o2 > gases_[gas_].o2 && maximumDepth(gas) + holding >= depth) {
            gas_ = place;
        }
    }
}

double Simulation::secondsNeeded() const {
    const Gas& gas = gases_[plan_.bailout ? bottombailoutplace : diluentplace];
    const double n2 = gas.n2() / 100.0;
    const double he = gas.he / 100.0;
    return secondsToSurface(decompression_, course_.depth(), [&](double depth) {
        // A stop is held a little below its depth, and near the surface the loop does not reach the setpoint.
        const double ambient = decompression_.ambientBar(depth + 0.4);
        const double po2 = std::min(plan_.highsetpoint, 0.84 * ambient);
        return plan_.bailout ? inspiredOpen(ambient, n2, he) : inspiredLoop(ambient, po2, n2, he);
    });
}

bool Simulation::bottomIsOver() {
    if (plan_.samples == 0) {
        return course_.secondsInWater() >= plan_.bottomminutes * 60;
    }
    if (seconds_ < nextturncheck_) {
        return false;
    }
    const double left = expectedSeconds(plan_) - seconds_;
    // A safety stop, a while afloat, and what it takes to notice a dead solenoid; less of it on a short dive.
    const double reserve = plan_.lapse == Lapse::DeadSolenoid ? 720 : 420;
    const double needed = secondsNeeded() * 1.05 + std::min(reserve, 0.45 * expectedSeconds(plan_));
    // A minute more at the bottom hardly ever costs more than six on the way up.
    nextturncheck_ = seconds_ + std::max(step_, (left - needed) / 6);
    return left <= needed;
}

void Simulation::decideTurn() {
    if (course_.phase() != Phase::Descent && course_.phase() != Phase::Bottom) {
        return;
    }
    over_ = over_ || bottomIsOver();
    if (!over_) {
        return;
    }
    if (plan_.lapse == Lapse::DeadSolenoid && !trouble_) {
        trouble_ = true;
        dead_ = true;
    }
    if (dead_) {
        return;
    }
    if (plan_.bailout) {
        open_ = true;
        gas_ = bottombailoutplace;
    }
    course_.turn();
}

void Simulation::watchSolenoid() {
    constexpr double reactionseconds = 70;
    const bool low = !open_ && cells_.voted() < reachable(setpoint()) - 0.35;
    lowseconds_ = low ? lowseconds_ + step_ : 0;
    if (dead_ && lowseconds_ > reactionseconds) {
        dead_ = false;
    }
}

void Simulation::runLoop() {
    const double need = oxygenNeed();
    if (!open_) {
        loop_.consume(need);
        bound_ += 0.85 * need;
        usage_ += step_;
    }
    const double pulse = solenoid_.fire(cells_.voted(), reachable(setpoint()), step_);
    if (!dead_) {
        loop_.inject(pulse);
        cylinders_.takeOxygen(pulse);
        injected_ += pulse;
    }
    const Gas& diluent = gases_[open_ ? diluentplace : gas_];
    cylinders_.takeDiluent(loop_.press(decompression_.ambientBar(course_.depth()), diluent));
    cells_.measure(loop_.po2(), step_);
}

void Simulation::fillSuit(double metresdown) {
    // All the way down in full; at the bottom most of what a rise lets out of place is still there.
    constexpr double litres = 8;
    constexpr double bottomshare = 0.4;
    if (open_ || metresdown <= 0) {
        return;
    }
    const double share = course_.phase() == Phase::Descent ? 1 : bottomshare;
    cylinders_.takeDiluent(share * litres * barpermetre * metresdown);
}

void Simulation::step() {
    const double depthbefore = course_.depth();
    const Inert before = inspired(decompression_.ambientBar(depthbefore));
    course_.advance(step_, ceiling_, decompression_.stopFor(ceiling_));
    seconds_ += step_;
    fillSuit(course_.depth() - depthbefore);
    chooseGas();
    runLoop();
    decompression_.load(interval_, before, inspired(decompression_.ambientBar(course_.depth())));
    ceiling_ = decompression_.ceiling(course_.depth());
    const double switchdepth = std::max(6.0, 0.75 * course_.firstLevel());
    switched_ = switched_ || course_.depth() > switchdepth;
    watchSolenoid();
    decideTurn();
    const double po2 = breathedPo2();
    if (po2 > 0.5) {
        otu_ += step_ / 60 * std::pow((po2 - 0.5) / 0.5, 5.0 / 6);
    }
    if (course_.phase() == Phase::Afloat) {
        afloat_ += step_;
    }
}

Sample Simulation::record() {
    Sample sample;
    sample.seconds = seconds_;
    sample.depth = course_.depth();
    sample.gas = gas_;
    sample.loop = loop_.po2();
    sample.po2 = open_ ? breathedPo2() : cells_.voted();
    sample.cells = cells_.readings();
    sample.setpoint = setpoint();
    sample.ceiling = ceiling_;
    sample.temperature = temperature_;
    sample.filter = scrubber_.percentLeft();
    sample.backupbattery = power_.backupVolts();
    sample.mainbattery = power_.mainVolts();
    sample.diluent = cylinders_.diluentBar();
    sample.oxygen = cylinders_.oxygenBar();
    sample.co2 = 0.35 + 0.35 * work_ + scrubber_.breakthrough() + 0.03 * random_.bell();
    sample.stick = scrubber_.stick((recorded_ + 1) % stickcount);
    for (const double moment : marks_) {
        sample.mark = sample.mark || (moment <= seconds_ && moment > seconds_ - plan_.intervalseconds);
    }
    return sample;
}

Sample Simulation::nextSample() {
    for (int i = 0; i < stepsasample_; ++i) {
        step();
    }
    const double seconds = plan_.intervalseconds;
    temperature_ = thermometer_.read(course_.depth(), seconds);
    scrubber_.work(bound_, temperature_ + waterwarming, seconds);
    power_.draw(injected_, temperature_, seconds);
    bound_ = 0;
    injected_ = 0;
    Sample sample = record();
    constexpr double lowfor = 40;
    alarms_.watch(sample, course_.phase(), course_.metresPerMinuteUp(), cells_.disagreement(),
                  lowseconds_ > lowfor, open_);
    ++recorded_;
    return sample;
}

} // namespace benthor::simulator
