#pragma once

#include "simulator/kdport.h"
#include "tests/tour/actor.h"

namespace benthor::tour {

constexpr int kGasSteps = 4;

/// From the main screen, with a device that is connected: the setup that it reported is changed, sent, and
/// read back after the device has gone and come again.
void planTheGases(Actor& actor, simulator::KdPort& device);

} // namespace benthor::tour
