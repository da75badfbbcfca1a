#pragma once

#include <array>
#include <cstdint>

namespace benthor::simulator {

/// A stream of random numbers that is the same on every machine and with every standard library (whose own
/// distributions differ from one to the next): xoshiro256** over a state that splitmix64 fills from the seed.
class Random {
public:
    /// Streams of one seed are independent of each other, so that one part of a model can draw more or less
    /// without moving the others.
    explicit Random(std::uint64_t seed, std::uint64_t stream = 0);

    std::uint64_t bits();

    /// Evenly spread: 0 up to, but not with, 1.
    double unit();

    /// Evenly spread between the two.
    double between(double low, double high);

    /// A whole number from `low` to `high`, both with.
    int whole(int low, int high);

    /// True in `probability` of all cases, 0 to 1.
    bool chance(double probability);

    /// Bell-shaped about 0 with standard deviation 1, never beyond 6.
    double bell();

private:
    std::array<std::uint64_t, 4> state_{};
};

/// A value that wanders about 0 with a memory of `memoryseconds` and a standard deviation of `spread`.
class Wander {
public:
    Wander(double memoryseconds, double spread)
        : memory_(memoryseconds)
        , spread_(spread) {}

    double next(Random& random, double seconds);
    double value() const { return value_; }

private:
    double memory_;
    double spread_;
    double value_ = 0;
};

} // namespace benthor::simulator
