#pragma once

#include <QtGlobal>

#include <chrono>

namespace benthor::simulator {

/// How many bytes a line of a fixed speed may have carried by now.
class LineCredit {
public:
    explicit LineCredit(int bytesPerSecond)
        : bytesPerSecond_(bytesPerSecond) {}

    void pass(std::chrono::nanoseconds time);
    /// Whole bytes that may be carried.
    qsizetype bytes() const { return static_cast<qsizetype>(bytes_); }
    void spend(qsizetype bytes) { bytes_ -= static_cast<double>(bytes); }
    /// The line has nothing to carry. It can't make up for such time later, but for a 50th of a second, since
    /// nobody looks at it more often. As long as it is busy no time is lost, however late the looks.
    void idle();

private:
    int bytesPerSecond_;
    double bytes_ = 0;
};

} // namespace benthor::simulator
