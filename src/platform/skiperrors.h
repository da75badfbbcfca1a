#pragma once

#include <exception>

namespace benthor::platform {

/// Does a step of a routine that goes on whatever happens to it: what the step throws ends the step alone.
/// False when it threw.
template <class Step> bool skipErrors(Step&& step) {
    try {
        step();
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

} // namespace benthor::platform
