#pragma once

#include <span>
#include <vector>

namespace benthor::profile {

/// Most samples that a dive can have.
constexpr int kMostSamples = 25000;

/// One recorded quantity of a dive: kMostSamples 32-bit floats, all 0 until written. Sample number n, counted
/// from 1, lives at position n-1. An array that no record writes takes no memory.
class SampleArray {
public:
    /// 0 <= position < kMostSamples, as in set().
    float operator[](int position) const {
        return values_.empty() ? 0.0F : values_[static_cast<size_t>(position)];
    }

    void set(int position, float value) {
        if (values_.empty()) {
            if (value == 0.0F) {
                return;
            }
            allocate();
        }
        values_[static_cast<size_t>(position)] = value;
    }

    /// All positions, or nothing at all while every one of them is 0.
    std::span<const float> values() const { return values_; }

private:
    void allocate();

    std::vector<float> values_;
};

} // namespace benthor::profile
