#pragma once

#include "firmware/reproghost.h"
#include "firmware/reprogstate.h"

namespace benthor::firmware {

/// From the last record to the verdict on the transfer: the wait for the device, the read-back of the sum it
/// received, and "y" or "n". `limit`: length of the image; `reply`: what the device said meanwhile. Ends
/// where the line gives up, and says so. False when the screen was closed: nothing more was written then.
bool finalphase(ReprogState& state, ReprogHost& host, qint64 limit, const QByteArray& reply);

} // namespace benthor::firmware
