#pragma once

#include "simulator/kdport.h"
#include "tests/tour/actor.h"

namespace benthor::tour {

constexpr int kLinkSteps = 6;

/// From the main screen to the device's dives in the store. The device is switched on when the person is at
/// the link screen; afterwards the main screen is in front.
void downloadDives(Actor& actor, simulator::KdPort& device);

} // namespace benthor::tour
