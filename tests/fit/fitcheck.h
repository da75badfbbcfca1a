#pragma once

#include <QStringList>

class QWidget;

namespace benthor::tests {

// What of a window cannot be read or reached as it stands. Each fault is told in one line that is the same
// wherever the same control has it.

/// Captions, buttons, boxes and tabs whose words have less room than they need.
QStringList cutTexts(const QWidget* window);

/// Controls that lie outside the window, or outside what can be scrolled to, in part or as a whole.
QStringList controlsOutside(const QWidget* window);

/// Controls of one parent that lie over one another.
QStringList overlaps(const QWidget* window);

} // namespace benthor::tests
