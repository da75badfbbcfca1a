#pragma once

#include <QList>
#include <QRect>

#include <optional>

namespace benthor::platform {

/// Where a window opens, in pixels: at its remembered place, or, when there is none (a null rectangle), at
/// its first size in the middle of the first display. Never larger than its display, and wholly on one.
/// `displays` holds the free areas of all displays, the first one first; with none the wish is returned as it
/// is.
QRect windowPlace(const QRect& remembered, const QSize& firstSize, const QList<QRect>& displays);

/// Where a window of `size` (its frame included) stands beside `window` without covering any of it: at its
/// right, its left, below, above, on the display that holds the most of `window`; else on another display.
/// Nothing where none has room.
std::optional<QPoint> placeBeside(const QRect& window, const QSize& size, const QList<QRect>& displays);

} // namespace benthor::platform
