#include "platform/faultpoint.h"

namespace benthor::platform {

namespace {
FaultHook& currentHook() {
    static FaultHook hook;
    return hook;
}
} // namespace

int faultAt(std::string_view step) {
    const FaultHook& hook = currentHook();
    return hook ? hook(step) : 0;
}

FaultInjection::FaultInjection(FaultHook hook) {
    currentHook() = std::move(hook);
}

FaultInjection::~FaultInjection() {
    currentHook() = nullptr;
}

} // namespace benthor::platform
