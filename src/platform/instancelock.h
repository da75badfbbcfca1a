#pragma once

#include <QByteArray>
#include <QString>

namespace benthor::platform {

/// Tells whether another program of ours works in the same program folder. The system gives the lock back
/// when its holder ends in any way, so a copy that crashed is never in the way.
class InstanceLock {
public:
    /// Tries to take the lock of `folder`, by its file ".benthor.lock". `program`: who this is, "benthor" or
    /// "benthorctl", for others to see.
    explicit InstanceLock(const QString& folder, QByteArray program = QByteArrayLiteral("benthor"));
    ~InstanceLock();
    InstanceLock(const InstanceLock&) = delete;
    InstanceLock& operator=(const InstanceLock&) = delete;

    /// False when another copy holds it. Where the folder cannot hold a lock, this copy counts as the only
    /// one.
    bool held() const { return held_; }
    /// Tries once more where it is not held. Whether it is now.
    bool tryAgain();

    /// Which program held it at the last try that failed: "benthor", "benthorctl"; empty where that cannot be
    /// told.
    QByteArray holder() const { return holder_; }

private:
    void lock();

    QByteArray program_;
    QByteArray holder_;
    int file_ = -1;
    bool held_ = true;
};

} // namespace benthor::platform
