#pragma once

#include <exception>
#include <new>

namespace benthor::platform {

/// Does a step of a routine that goes on whatever happens to it: what the step throws ends the step alone.
/// False when it threw. A process without memory does not go on: std::bad_alloc passes.
template <class Step> bool skipErrors(Step&& step) {
    try {
        step();
        return true;
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception&) {
        return false;
    }
}

} // namespace benthor::platform
