#pragma once

// Dives as the device would have recorded them, without the device: a plan is dived by a model of diver, loop
// and decompression, and printed as the text that the device sends.
//
//     const QByteArray text = diveText(simulate(plannedDive(7)));

#include "simulator/damage.h"
#include "simulator/demodives.h"
#include "simulator/dive.h"
#include "simulator/diveplan.h"
#include "simulator/divetext.h"
