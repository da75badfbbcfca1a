#include "simulator/scrubber.h"

#include <algorithm>
#include <cmath>

namespace benthor::simulator {

Scrubber::Scrubber(double capacitylitres, double percentleft, double gastemperature, Random random)
    : capacity_(capacitylitres)
    , used_(capacitylitres * (1 - percentleft / 100)) {
    for (int i = 0; i < stickcount; ++i) {
        // The gas does not flow evenly: the front runs ahead on one side of the bed.
        ahead_[i] = random.between(-0.05, 0.05);
        warmth_[i] = random.between(0.93, 1.07);
        sticks_[i].fill(gastemperature);
    }
}

double Scrubber::wanted(int stick, int thermistor, double gastemperature, double heat) const {
    const double front = 0.04 + 0.92 * used_ / capacity_ + ahead_[stick];
    const double behind = (thermistor + 0.5) / thermistorcount - front;
    // Spent absorbent cools to the gas that comes in; behind the front the gas carries its warmth on.
    const double shape = behind < 0 ? std::exp(-behind * behind / 0.016) : std::exp(-behind * behind / 0.18);
    const double carried = behind < 0 ? 0.06 : 0.22;
    return gastemperature + 31 * warmth_[stick] * heat * (carried + (1 - carried) * shape);
}

void Scrubber::work(double co2litres, double gastemperature, double seconds) {
    constexpr double bedseconds = 240;
    constexpr double thermistorseconds = 60;
    used_ = std::min(capacity_, used_ + co2litres);
    heat_ += (co2litres * 60 / seconds - heat_) * (1 - std::exp(-seconds / bedseconds));
    const double follow = 1 - std::exp(-seconds / thermistorseconds);
    for (int i = 0; i < stickcount; ++i) {
        for (int k = 0; k < thermistorcount; ++k) {
            double& seen = sticks_[i][k];
            seen += (wanted(i, k, gastemperature, std::min(heat_, 1.6)) - seen) * follow;
        }
    }
}

double Scrubber::percentLeft() const {
    return 100 * (1 - used_ / capacity_);
}

double Scrubber::breakthrough() const {
    return 6 * std::exp(-percentLeft() / 6);
}

} // namespace benthor::simulator
