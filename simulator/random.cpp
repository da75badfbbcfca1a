#include "simulator/random.h"

#include <bit>
#include <cmath>

namespace benthor::simulator {

Random::Random(std::uint64_t seed, std::uint64_t stream) {
    std::uint64_t counter = seed ^ (stream * 0xD1342543DE82EF95ULL);
    for (std::uint64_t& word : state_) {
        counter += 0x9E3779B97F4A7C15ULL;
        std::uint64_t mixed = counter;
        mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9ULL;
        mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBULL;
        word = mixed ^ (mixed >> 31);
    }
}

std::uint64_t Random::bits() {
    const std::uint64_t result = std::rotl(state_[1] * 5, 7) * 9;
    const std::uint64_t shifted = state_[1] << 17;
    state_[2] ^= state_[0];
    state_[3] ^= state_[1];
    state_[1] ^= state_[2];
    state_[0] ^= state_[3];
    state_[2] ^= shifted;
    state_[3] = std::rotl(state_[3], 45);
    return result;
}

double Random::unit() {
    return static_cast<double>(bits() >> 11) * 0x1.0p-53;
}

double Random::between(double low, double high) {
    return low + (high - low) * unit();
}

int Random::whole(int low, int high) {
    return low + static_cast<int>(unit() * (high - low + 1));
}

bool Random::chance(double probability) {
    return unit() < probability;
}

double Random::bell() {
    double sum = -6;
    for (int i = 0; i < 12; ++i) {
        sum += unit();
    }
    return sum;
}

double Wander::next(Random& random, double seconds) {
    const double kept = std::exp(-seconds / memory_);
    value_ = value_ * kept + spread_ * std::sqrt(1 - kept * kept) * random.bell();
    return value_;
}

} // namespace benthor::simulator
