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
    /// Nothing is left to carry. A line can't make up for time in which it was idle, but for a 50th of a
    /// second, since nobody looks at it more often. As long as it is busy no time is lost, however late the
    /// looks.
    void idle();

private:
    int bytesPerSecond_;
    double bytes_ = 0;
};

/// The program's end of a pseudo-terminal, with a hand on it. Such a terminal swallows 20 KB at once, a
/// serial port a hundredth of that: so what the program writes is stopped and let go on from here. As the end
/// is held open, the far end does not tell whether a program has it open too, and this does.
class HeldEnd {
public:
    /// `path`: of the end, which no program has open yet. Throws std::runtime_error when it can't be held.
    explicit HeldEnd(const char* path);
    ~HeldEnd();
    HeldEnd(const HeldEnd&) = delete;
    HeldEnd& operator=(const HeldEnd&) = delete;

    /// Lets the program write, or makes its writes wait.
    void let(bool write);
    /// A program has the end open. What it has left unread when it closes is thrown away.
    bool inUse();

private:
    int end_ = -1;
    int watch_ = -1;
    int openings_ = 0;
    bool let_ = true;
};

} // namespace benthor::simulator
