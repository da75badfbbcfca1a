#pragma once

#include "exports/wholedive.h"

#include <span>

namespace benthor::exports {

using ColumnArray = profile::SampleArray profile::DiveProfile::*;

/// A quantity of the profile as open formats give it.
struct SampleColumn {
    const char* name; ///< of the decoder's array
    const char* unit; ///< "" where it has none, or none is known
    ColumnArray array;
};

/// All of them, in the decoder's order from depthpos on.
std::span<const SampleColumn> sampleColumns();

/// Whether the column tells anything: some sample has another value than 0. `depthpos` and `gasnum` always
/// do, where there are samples.
bool isRecorded(const WholeDive& dive, ColumnArray column);

} // namespace benthor::exports
