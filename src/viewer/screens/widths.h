#pragma once

#include "platform/look/type.h"

namespace benthor::viewer {

// What the dive screen makes of its window's width, in pixels.

/// The bar's buttons are pictures and the head is small.
inline bool isNarrow(int windowWidth) {
    return windowWidth < look::scaled(1200);
}

/// The head's numbers stand apart.
inline bool isRoomy(int windowWidth) {
    return windowWidth >= look::scaled(1440);
}

/// There is room for large numbers, and for the list of gases under the instruments.
inline bool isWide(int windowWidth) {
    return windowWidth >= look::scaled(1600);
}

} // namespace benthor::viewer
