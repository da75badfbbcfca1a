#pragma once

#include "platform/faultpoint.h"

#include <cerrno>

namespace benthor::platform {

/// Runs a call of the system unless the test's hook lets it fail. Returns 0 or the error's number.
template <typename Call> int attempt(const char* step, Call call) {
    if (const int number = faultAt(step)) {
        return number;
    }
    while (call() < 0) {
        if (errno != EINTR) {
            return errno;
        }
    }
    return 0;
}

} // namespace benthor::platform
