#pragma once

#include <QString>

namespace benthor::platform {

/// Tells whether another copy of the program works in the same program folder. The system gives the lock back
/// when its holder ends in any way, so a copy that crashed is never in the way.
class InstanceLock {
public:
    /// Tries to take the lock of `folder`, by its file ".benthor.lock".
    explicit InstanceLock(const QString& folder);
    ~InstanceLock();
    InstanceLock(const InstanceLock&) = delete;
    InstanceLock& operator=(const InstanceLock&) = delete;

    /// False when another copy holds it. Where the folder cannot hold a lock, this copy counts as the only
    /// one.
    bool held() const { return held_; }

private:
    int file_ = -1;
    bool held_ = true;
};

} // namespace benthor::platform
