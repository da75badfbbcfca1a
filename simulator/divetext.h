#pragma once

#include "simulator/dive.h"

#include <QByteArray>

namespace benthor::simulator {

// The text of a dive as the device sends it. Lines end in CR LF. Three readers find their way through the
// same bytes: one that looks for a comma within six bytes behind a keyword and takes up to thirteen more, one
// that takes what begins at the eighth byte behind a label, and one that decodes the sample lines.

/// From "ver=" up to the last Tissue line: what a directory of dives is made of as well.
QByteArray headText(const Dive& dive);

/// One sample line without its line end. `number` stands in field 0, which no reader uses.
/// Fields 0 to 6 are fixed; then follow either the power, pressure, cell and setpoint letters with the
/// ceiling and up to three alarm words, or the eight thermistors and the three cells with at most one alarm
/// word. Never beyond field 18.
QByteArray sampleLine(const Sample& sample, const DivePlan& plan, int number);

/// Head, "Profile", a line of column names that no reader decodes, one line for each sample, "End".
QByteArray diveText(const Dive& dive);

} // namespace benthor::simulator
