#include "profile/samplearray.h"

namespace benthor::profile {

void SampleArray::allocate() {
    values_.resize(kMostSamples);
}

} // namespace benthor::profile
