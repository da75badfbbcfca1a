#pragma once

#include <QList>
#include <QRect>

namespace benthor::platform {

/// Where a window opens, in pixels: at its remembered place, or, when there is none (a null rectangle), at
/// its first size in the middle of the first display. Never larger than its display, and wholly on one.
/// `displays` holds the free areas of all displays, the first one first; with none the wish is returned as it
/// is.
QRect windowPlace(const QRect& remembered, const QSize& firstSize, const QList<QRect>& displays);

} // namespace benthor::platform
