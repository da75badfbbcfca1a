#include "platform/storewait.h"

#include <atomic>
#include <map>
#include <thread>

namespace benthor::platform {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr milliseconds kPause = 20ms;

StoreWaitHook& currentHook() {
    static StoreWaitHook hook;
    return hook;
}

/// What is left of the patience with each store that has been waited for.
std::map<std::string, milliseconds>& patience() {
    static std::map<std::string, milliseconds> left;
    return left;
}

std::atomic<bool> ending{false};

} // namespace

StoreWaiting::StoreWaiting(StoreWaitHook hook) {
    currentHook() = std::move(hook);
}

StoreWaiting::~StoreWaiting() {
    currentHook() = nullptr;
}

bool goOnWaiting(StoreWait why, milliseconds waited) {
    return !ending && (!currentHook() || currentHook()(why, waited));
}

bool waitForLock(const std::string& path) {
    milliseconds& left = patience().try_emplace(path, kLockPatience).first->second;
    if (left <= 0ms) {
        return false;
    }
    const Clock::time_point begin = Clock::now();
    std::this_thread::sleep_for(kPause);
    if (!goOnWaiting(StoreWait::Locked, kLockPatience - left)) {
        left = 0ms;
        return false;
    }
    left -= std::max(kPause, std::chrono::duration_cast<milliseconds>(Clock::now() - begin));
    return left > 0ms;
}

void lockCameFree(const std::string& path) {
    patience().erase(path);
}

void endAllWaits() noexcept {
    ending = true;
}

bool allWaitsEnd() noexcept {
    return ending;
}

} // namespace benthor::platform
