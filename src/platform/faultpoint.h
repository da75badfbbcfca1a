#pragma once

#include <functional>
#include <string_view>

namespace benthor::platform {

// A step at which the disk may fail or the process may die. Tests hang a function in and so make each of them
// happen; nothing else does.

/// Gets the name of the step ("write", "sync", "rename", "remove", "begin", "commit", "committed", ...).
/// Returns 0 to go on, or the number of the system's error (errno) that the step is to end with.
using FaultHook = std::function<int(std::string_view step)>;

/// What the hook says of `step`; 0 without a hook.
int faultAt(std::string_view step);

/// The hook holds for as long as this lives. One at a time.
class FaultInjection {
public:
    explicit FaultInjection(FaultHook hook);
    ~FaultInjection();
    FaultInjection(const FaultInjection&) = delete;
    FaultInjection& operator=(const FaultInjection&) = delete;
};

} // namespace benthor::platform
