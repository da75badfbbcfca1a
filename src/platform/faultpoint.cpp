#include "platform/faultpoint.h"

#include <atomic>
#include <memory>

namespace benthor::platform {

namespace {
/// Stores are worked on by threads of their own.
std::atomic<std::shared_ptr<const FaultHook>>& currentHook() {
    static std::atomic<std::shared_ptr<const FaultHook>> hook;
    return hook;
}
} // namespace

int faultAt(std::string_view step) {
    const std::shared_ptr<const FaultHook> hook = currentHook().load();
    return hook != nullptr && *hook ? (*hook)(step) : 0;
}

FaultInjection::FaultInjection(FaultHook hook) {
    currentHook() = std::make_shared<const FaultHook>(std::move(hook));
}

FaultInjection::~FaultInjection() {
    currentHook() = std::shared_ptr<const FaultHook>();
}

} // namespace benthor::platform
