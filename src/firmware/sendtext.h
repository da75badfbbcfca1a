#pragma once

#include "firmware/reproghost.h"
#include "firmware/reprogstate.h"

#include <QFile>

namespace benthor::firmware {

/// A book goes out as it is, byte by byte, with its end behind it; what goes beyond the limit can be kept.
/// Ends where the line gives up, and says so. False when the screen was closed.
bool sendtext(ReprogState& state, ReprogHost& host, QFile& file);

} // namespace benthor::firmware
