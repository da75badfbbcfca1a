#pragma once

#include "simulator/kdport.h"
#include "tests/tour/actor.h"

namespace benthor::tour {

constexpr int kFirmwareSteps = 8;

/// From the main screen: a logo is converted and sent, a rehearsal shows its banner, and the device, now in
/// its loader, is found, reprogrammed and restarted. Ends on the main screen again.
void reprogramTheDevice(Actor& actor, simulator::KdPort& device);

} // namespace benthor::tour
