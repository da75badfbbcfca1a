#include "platform/storewait.h"

#include <atomic>
#include <map>
#include <thread>
#include <utility>

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

bool asking = false;

/// When the process was asked to end, in the clock's own count; 0 until then.
std::atomic<Clock::rep> ending{0};
/// What is saved on the way out still waits for this long.
constexpr milliseconds kLastWait = 1s;

bool lastWaitIsOver() {
    const Clock::rep since = ending;
    return since != 0 && Clock::now().time_since_epoch() - Clock::duration(since) > kLastWait;
}

} // namespace

StoreWaiting::StoreWaiting(StoreWaitHook hook) {
    currentHook() = std::move(hook);
}

StoreWaiting::~StoreWaiting() {
    currentHook() = nullptr;
}

bool goOnWaiting(StoreWait why, milliseconds waited) {
    if (lastWaitIsOver() || allWaitsEnd() || !currentHook()) {
        return !lastWaitIsOver();
    }
    const bool before = std::exchange(asking, true);
    const bool goesOn = currentHook()(why, waited);
    asking = before;
    return goesOn;
}

bool isWaiting() {
    return asking;
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
    Clock::rep none = 0;
    ending.compare_exchange_strong(none, Clock::now().time_since_epoch().count());
}

bool allWaitsEnd() noexcept {
    return ending != 0;
}

} // namespace benthor::platform
