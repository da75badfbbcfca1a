#pragma once

#include <chrono>
#include <functional>
#include <utility>

namespace benthor::platform {

/// A yield function that may be called a million times a second: it passes a call on only when 15 ms have
/// gone by since the last that it passed on, and looks at the clock only at every 64th call. Time counts from
/// construction.
class ThrottledYield {
public:
    using Callable = std::function<bool()>;                   ///< false: the routine that yields is to end
    using Clock = std::function<std::chrono::milliseconds()>; ///< since any fixed moment

    explicit ThrottledYield(Callable callable, Clock clock = steadyClock)
        : callable_(std::move(callable))
        , clock_(std::move(clock))
        , last_(clock_()) {}

    /// What the last call that was passed on returned; true until there is one.
    bool operator()() {
        if (++calls_ % kCallsPerLook != 0) {
            return goOn_;
        }
        if (const auto now = clock_(); now - last_ >= kPause) {
            goOn_ = callable_();
            last_ = clock_();
        }
        return goOn_;
    }

private:
    static constexpr unsigned kCallsPerLook = 64;
    static constexpr std::chrono::milliseconds kPause{15};

    static std::chrono::milliseconds steadyClock() {
        using namespace std::chrono;
        return duration_cast<milliseconds>(steady_clock::now().time_since_epoch());
    }

    Callable callable_;
    Clock clock_;
    std::chrono::milliseconds last_;
    unsigned calls_ = 0;
    bool goOn_ = true;
};

} // namespace benthor::platform
