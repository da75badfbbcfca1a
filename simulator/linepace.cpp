#include "simulator/linepace.h"

#include <algorithm>

namespace benthor::simulator {

namespace {

constexpr double kIdleSeconds = 1.0 / 50;

} // namespace

void LineCredit::pass(std::chrono::nanoseconds time) {
    bytes_ += std::chrono::duration<double>(time).count() * bytesPerSecond_;
}

void LineCredit::idle() {
    bytes_ = std::min(bytes_, kIdleSeconds * bytesPerSecond_);
}

} // namespace benthor::simulator
