#pragma once

#include "exports/wholedive.h"

#include <span>

namespace benthor::exports {

/// A quantity of the profile as open formats give it.
struct SampleColumn {
    const char* name; ///< of the decoder's array
    const char* unit; ///< "" where it has none, or none is known
    profile::SampleArray profile::DiveProfile::*array;
};

/// All of them, in the decoder's order from depthpos on.
std::span<const SampleColumn> sampleColumns();

/// Whether the column tells anything: some sample has another value than 0. `depthpos` and `gasnum` always
/// do, where there are samples.
bool isRecorded(const WholeDive& dive, const SampleColumn& column);

} // namespace benthor::exports
