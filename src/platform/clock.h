#pragma once

#include <QDateTime>

namespace benthor::platform {

/// The wall clock that the program goes by. Tests set it; nothing else does.
QDateTime now();

/// Holds now() at `moment` for as long as it lives. One at a time.
class FixedClock {
public:
    explicit FixedClock(const QDateTime& moment);
    ~FixedClock();
    FixedClock(const FixedClock&) = delete;
    FixedClock& operator=(const FixedClock&) = delete;
};

} // namespace benthor::platform
