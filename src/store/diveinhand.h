#pragma once

#include "session/process.h"

namespace benthor::store {

/// The one way to put another dive into `currentdiveid` for a while: at the end of the scope the one before
/// is in hand again, however the scope is left. keep() makes the change last.
class DiveInHand {
public:
    /// Whatever becomes of `currentdiveid` within the scope.
    DiveInHand()
        : before_(process().currentdiveid) {}
    explicit DiveInHand(const QString& diveid)
        : DiveInHand() {
        process().currentdiveid = diveid;
    }
    ~DiveInHand() {
        if (!kept_) {
            process().currentdiveid = before_;
        }
    }
    DiveInHand(const DiveInHand&) = delete;
    DiveInHand& operator=(const DiveInHand&) = delete;

    void keep() { kept_ = true; }

private:
    QString before_;
    bool kept_ = false;
};

} // namespace benthor::store
