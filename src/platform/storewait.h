#pragma once

#include <chrono>
#include <functional>
#include <string>

namespace benthor::platform {

// What a store does while it keeps the program waiting: another program holds it, or a statement works on and
// on. Whoever waits asks goOnWaiting() every few hundredths of a second; a hook may show that, and give up.

enum class StoreWait {
    Locked,  ///< another program holds the store
    Working, ///< a statement has not come to its end
};

/// Gets why the store waits and for how long it has so far. False gives up.
using StoreWaitHook = std::function<bool(StoreWait why, std::chrono::milliseconds waited)>;

/// The hook holds on this thread for as long as this lives, then the one of before again.
class StoreWaiting {
public:
    explicit StoreWaiting(StoreWaitHook hook);
    ~StoreWaiting();
    StoreWaiting(const StoreWaiting&) = delete;
    StoreWaiting& operator=(const StoreWaiting&) = delete;

private:
    StoreWaitHook before_;
};

/// What the hook says; true without one. False from a second after the process was asked to end.
bool goOnWaiting(StoreWait why, std::chrono::milliseconds waited);

/// Whether the hook is being asked: a store is in the midst of its work, and nothing may use one then.
bool isWaiting();

/// isWaiting() for as long as this lives: another thread works on a store, and this one waits for it.
class StoreAtWork {
public:
    StoreAtWork();
    ~StoreAtWork();
    StoreAtWork(const StoreAtWork&) = delete;
    StoreAtWork& operator=(const StoreAtWork&) = delete;

private:
    bool before_;
};

/// How long all waits for one locked store last together, from its last change that went through.
inline constexpr std::chrono::milliseconds kLockPatience{5000};

/// Waits a moment for the locked store `path`. False when its patience is used up or the user gave up, and
/// from then on at once.
bool waitForLock(const std::string& path);
/// The store could be changed: the next that holds it is waited for anew.
void lockCameFree(const std::string& path);

/// The process is asked to end: no wait lasts, and no routine that only paints goes on. A signal's handler
/// may call it.
void endAllWaits() noexcept;
bool allWaitsEnd() noexcept;

} // namespace benthor::platform
