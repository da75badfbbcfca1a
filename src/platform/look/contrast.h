#pragma once

#include <QColor>

namespace benthor::look {

/// The contrast of two opaque colours as WCAG 2 defines it, from 1.0 (the same) to 21.0 (black and white).
double contrastRatio(const QColor& one, const QColor& other);

/// Black or white: whichever stands out more on `ground`.
QColor readableOn(const QColor& ground);

/// `ink` where it reads on `ground` with at least `ratio`; else the nearest colour of its own hue that does.
QColor legibleOn(const QColor& ink, const QColor& ground, double ratio);

/// `share` (0 to 1) of `over` laid on `under`; both opaque.
QColor mixed(const QColor& under, const QColor& over, double share);

} // namespace benthor::look
