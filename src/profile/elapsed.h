#pragma once

#include <QString>

namespace benthor::profile {

/// Seconds as "HH:MM:SS", rounded to whole ones first, an exact half away from zero. Hours go on past 99.
QString formatelapsed(double seconds);

/// The same of the whole part of `seconds`.
QString formatelapsedWhole(double seconds);

} // namespace benthor::profile
