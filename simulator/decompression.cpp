#include "simulator/decompression.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace benthor::simulator {

const std::array<Compartment, compartmentcount> zhl16c = {{
    {5.0, 1.1696, 0.5578, 1.88, 1.6189, 0.4770},
    {8.0, 1.0000, 0.6514, 3.02, 1.3830, 0.5747},
    {12.5, 0.8618, 0.7222, 4.72, 1.1919, 0.6527},
    {18.5, 0.7562, 0.7825, 6.99, 1.0458, 0.7223},
    {27.0, 0.6200, 0.8126, 10.21, 0.9220, 0.7582},
    {38.3, 0.5043, 0.8434, 14.48, 0.8205, 0.7957},
    {54.3, 0.4410, 0.8693, 20.53, 0.7305, 0.8279},
    {77.0, 0.4000, 0.8910, 29.11, 0.6502, 0.8553},
    {109.0, 0.3750, 0.9092, 41.20, 0.5950, 0.8757},
    {146.0, 0.3500, 0.9222, 55.19, 0.5545, 0.8903},
    {187.0, 0.3295, 0.9319, 70.69, 0.5333, 0.8997},
    {239.0, 0.3065, 0.9403, 90.34, 0.5189, 0.9073},
    {305.0, 0.2835, 0.9477, 115.29, 0.5181, 0.9122},
    {390.0, 0.2610, 0.9544, 147.42, 0.5176, 0.9171},
    {498.0, 0.2480, 0.9602, 188.24, 0.5172, 0.9217},
    {635.0, 0.2327, 0.9653, 240.03, 0.5119, 0.9267},
}};

namespace {

double schreiner(double tension, double begin, double end, double minutes, double halftime, double kept) {
    const double perminute = std::numbers::ln2 / halftime;
    const double rate = (end - begin) / minutes;
    return begin + rate * (minutes - 1 / perminute) - (begin - tension - rate / perminute) * kept;
}

} // namespace

Interval::Interval(double minutes)
    : minutes_(minutes) {
    for (int i = 0; i < compartmentcount; ++i) {
        n2kept_[i] = std::exp2(-minutes / zhl16c[i].n2halftime);
        hekept_[i] = std::exp2(-minutes / zhl16c[i].hehalftime);
    }
}

void Interval::load(Tissues& tissues, const Inert& begin, const Inert& end) const {
    for (int i = 0; i < compartmentcount; ++i) {
        const Compartment& compartment = zhl16c[i];
        tissues.n2[i] =
            schreiner(tissues.n2[i], begin.n2, end.n2, minutes_, compartment.n2halftime, n2kept_[i]);
        tissues.he[i] =
            schreiner(tissues.he[i], begin.he, end.he, minutes_, compartment.hehalftime, hekept_[i]);
    }
}

Tissues saturatedAt(double surfacebar) {
    Tissues tissues;
    tissues.n2.fill(inspiredOpen(surfacebar, 0.79, 0).n2);
    return tissues;
}

Inert inspiredOpen(double ambientbar, double n2fraction, double hefraction) {
    const double dry = std::max(0.0, ambientbar - watervapourbar);
    return {dry * n2fraction, dry * hefraction};
}

Inert inspiredLoop(double ambientbar, double po2, double n2fraction, double hefraction) {
    const double inert = std::max(0.0, ambientbar - watervapourbar - po2);
    const double both = n2fraction + hefraction;
    if (both <= 0) {
        return {};
    }
    return {inert * n2fraction / both, inert * hefraction / both};
}

double toleratedBar(const Tissues& tissues, double gradientfactor) {
    double highest = 0;
    for (int i = 0; i < compartmentcount; ++i) {
        const Compartment& compartment = zhl16c[i];
        const double n2 = tissues.n2[i];
        const double he = tissues.he[i];
        const double both = std::max(n2 + he, 1e-9);
        const double a = (compartment.n2a * n2 + compartment.hea * he) / both;
        const double b = (compartment.n2b * n2 + compartment.heb * he) / both;
        highest = std::max(highest, (both - a * gradientfactor) / (gradientfactor / b + 1 - gradientfactor));
    }
    return highest;
}

Decompression::Decompression(double surfacebar, GradientFactors factors, double laststopmetres)
    : surface_(surfacebar)
    , factors_(factors)
    , laststop_(laststopmetres)
    , tissues_(saturatedAt(surfacebar)) {}

void Decompression::load(const Interval& interval, const Inert& begin, const Inert& end) {
    interval.load(tissues_, begin, end);
    anchor_ = std::max(anchor_, (toleratedBar(tissues_, factors_.low) - surface_) / barpermetre);
}

double Decompression::ceiling(double depth) const {
    const double reach = std::max(3.0, anchor_);
    const double share = std::clamp((depth - laststop_) / reach, 0.0, 1.0);
    const double factor = factors_.high + (factors_.low - factors_.high) * share;
    return std::max(0.0, (toleratedBar(tissues_, factor) - surface_) / barpermetre);
}

double Decompression::stopFor(double ceiling) const {
    if (ceiling <= 0) {
        return 0;
    }
    return std::max(laststop_, 3 * std::ceil(ceiling / 3));
}

double ascentRate(double depth, double laststop) {
    if (depth <= laststop + 1) {
        return 3.0 / 60;
    }
    return depth > 21 ? 9.0 / 60 : 6.0 / 60;
}

double secondsToSurface(Decompression state, double depth, const std::function<Inert(double)>& inspired) {
    constexpr double step = 10;
    constexpr double week = 7 * 86400.0;
    const Interval interval(step / 60);
    double seconds = 0;
    while (depth > 0 && seconds < week) {
        const double stop = state.stopFor(state.ceiling(depth));
        const double risen = std::max(stop, depth - ascentRate(depth, state.laststop()) * step);
        const double next = std::min(depth, risen);
        state.load(interval, inspired(depth), inspired(next));
        depth = next;
        seconds += step;
    }
    return seconds;
}

} // namespace benthor::simulator
