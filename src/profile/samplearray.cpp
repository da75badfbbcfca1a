#include "profile/samplearray.h"

#include <algorithm>

namespace benthor::profile {

void SampleArray::growTo(size_t least) {
    constexpr size_t kFirstStep = 1024;
    values_.resize(std::min<size_t>(std::max({least, kFirstStep, 2 * values_.size()}), kMostSamples));
}

bool operator==(const SampleArray& one, const SampleArray& other) {
    const bool oneIsLonger = one.values_.size() > other.values_.size();
    const std::vector<float>& longer = oneIsLonger ? one.values_ : other.values_;
    const std::vector<float>& shorter = oneIsLonger ? other.values_ : one.values_;
    const auto tail = longer.begin() + static_cast<std::ptrdiff_t>(shorter.size());
    return std::equal(shorter.begin(), shorter.end(), longer.begin()) &&
           std::all_of(tail, longer.end(), [](float value) { return value == 0.0F; });
}

} // namespace benthor::profile
