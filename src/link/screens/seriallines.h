#pragma once

#include "link/screens/linklines.h"

namespace benthor::link {

/// Lines over the serial ports of this machine.
LinkLines serialLines();

} // namespace benthor::link
