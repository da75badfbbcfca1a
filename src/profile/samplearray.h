#pragma once

#include <span>
#include <vector>

namespace benthor::profile {

/// Most samples that a dive can have.
constexpr int kMostSamples = 25000;

/// One recorded quantity of a dive: kMostSamples 32-bit floats, all 0 until written. Sample number n, counted
/// from 1, lives at position n-1. It takes memory for what was written alone: a usual dive has some hundred
/// samples and leaves half of the arrays empty.
class SampleArray {
public:
    /// 0 <= position < kMostSamples, as in set().
    float operator[](int position) const {
        const auto at = static_cast<size_t>(position);
        return at < values_.size() ? values_[at] : 0.0F;
    }

    void set(int position, float value) {
        const auto at = static_cast<size_t>(position);
        if (at >= values_.size()) {
            if (value == 0.0F) {
                return;
            }
            growTo(at + 1);
        }
        values_[at] = value;
    }

    /// The positions from the first on; each behind the last of these is 0. Nothing at all while every one
    /// is.
    std::span<const float> values() const { return values_; }

    /// Whether every position has the same value.
    friend bool operator==(const SampleArray& one, const SampleArray& other);

private:
    void growTo(size_t least);

    std::vector<float> values_;
};

} // namespace benthor::profile
