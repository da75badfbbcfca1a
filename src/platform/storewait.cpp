#include "platform/storewait.h"

#include <atomic>
#include <map>
#include <mutex>
#include <thread>
#include <utility>

namespace benthor::platform {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr milliseconds kPause = 20ms;

/// Each thread that works on stores has its own: a window can be shown on one of them alone.
StoreWaitHook& currentHook() {
    static thread_local StoreWaitHook hook;
    return hook;
}

/// What is left of the patience with each store that has been waited for.
class Patience {
public:
    milliseconds left(const std::string& path) {
        const std::lock_guard lock(mutex_);
        return left_.try_emplace(path, kLockPatience).first->second;
    }
    void set(const std::string& path, milliseconds left) {
        const std::lock_guard lock(mutex_);
        left_[path] = left;
    }
    void forget(const std::string& path) {
        const std::lock_guard lock(mutex_);
        left_.erase(path);
    }

private:
    std::mutex mutex_;
    std::map<std::string, milliseconds> left_;
};

Patience& patience() {
    static Patience all;
    return all;
}

thread_local bool asking = false;

/// When the process was asked to end, in the clock's own count; 0 until then.
std::atomic<Clock::rep> ending{0};
/// What is saved on the way out still waits for this long.
constexpr milliseconds kLastWait = 1s;

bool lastWaitIsOver() {
    const Clock::rep since = ending;
    return since != 0 && Clock::now().time_since_epoch() - Clock::duration(since) > kLastWait;
}

} // namespace

StoreWaiting::StoreWaiting(StoreWaitHook hook)
    : before_(std::exchange(currentHook(), std::move(hook))) {}

StoreWaiting::~StoreWaiting() {
    currentHook() = std::move(before_);
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

StoreAtWork::StoreAtWork()
    : before_(std::exchange(asking, true)) {}

StoreAtWork::~StoreAtWork() {
    asking = before_;
}

bool waitForLock(const std::string& path) {
    const milliseconds left = patience().left(path);
    if (left <= 0ms) {
        return false;
    }
    const Clock::time_point begin = Clock::now();
    std::this_thread::sleep_for(kPause);
    if (!goOnWaiting(StoreWait::Locked, kLockPatience - left)) {
        patience().set(path, 0ms);
        return false;
    }
    const milliseconds then =
        left - std::max(kPause, std::chrono::duration_cast<milliseconds>(Clock::now() - begin));
    patience().set(path, then);
    return then > 0ms;
}

void lockCameFree(const std::string& path) {
    patience().forget(path);
}

void endAllWaits() noexcept {
    Clock::rep none = 0;
    ending.compare_exchange_strong(none, Clock::now().time_since_epoch().count());
}

bool allWaitsEnd() noexcept {
    return ending != 0;
}

} // namespace benthor::platform
