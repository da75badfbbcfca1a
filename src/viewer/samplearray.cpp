#include "viewer/samplearray.h"

namespace benthor::viewer {

void SampleArray::allocate() {
    values_.resize(kMostSamples);
}

} // namespace benthor::viewer
