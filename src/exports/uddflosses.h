#pragma once

#include "exports/uddfsamples.h"

#include <functional>

namespace benthor::exports {

/// Adds what of a dive's rows and samples a UDDF file has no place for: columns of the profile, fields of the
/// store, tissues. What becomes lost only by its form, a text that is no number for one, is for those who
/// write it to tell.
void addUddfLosses(const WholeDive& dive, LostKinds& lost);

/// Whether a surface pressure can be one.
bool isUddfPressure(double millibar);

/// Calls `line` with each line of a dive's notes: `divenote`, `sitenote`, `Coments`. Blank lines are passed
/// over, and so are those that name pictures: they count as lost.
void forEachNote(const WholeDive& dive, LostKinds& lost, const std::function<void(const QString&)>& line);

} // namespace benthor::exports
