#pragma once

#include "simulator/kd.h"

#include <QString>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace benthor::simulator {

/// A device on a pseudo-terminal, working in a thread of its own. It stands as port `number` of a program
/// folder: the link "ports/com<number>" there leads to it for as long as it runs.
class KdPort {
public:
    static constexpr int lineSpeed = 960;      ///< bytes a second at 9600 baud
    static constexpr int fastLineSpeed = 3840; ///< and at 38400
    static constexpr int unpaced = 0;

    KdPort(const QString& programFolder, int number, Kd device, int bytesPerSecond = lineSpeed);
    ~KdPort();
    KdPort(const KdPort&) = delete;
    KdPort& operator=(const KdPort&) = delete;

    /// The device takes no more than so many bytes a second; `unpaced`, as at first: all that comes. What the
    /// program writes is held up at that pace once the terminal between is full. That holds some 20 KB, where
    /// a serial port holds 4, and a program can be so far ahead: 21 s at 9600 baud, 5 s at 38400.
    void paceReceived(int bytesPerSecond);
    /// While held the device takes nothing at all: what the program writes fills the terminal between, and
    /// then finds no room.
    void hold(bool held);
    /// The device's own speed: what goes through while the program has set another one at its end is garbage
    /// in both directions, each byte changed. 0, as at first: any speed will do.
    void setBaud(int baud);

    /// Throws std::runtime_error when the machine gives no pseudo-terminal or the link can't be made.
    void start();
    /// Takes the link away and hangs the line up. The device keeps what it knows; start() brings it back.
    void stop();

    /// Works on the device while its thread waits.
    void with(const std::function<void(Kd&)>& work);
    /// All bytes that have come from the program, as the device heard them.
    QByteArray received() const;
    /// When the first and the last of them reached the device; nothing before the first.
    struct Times {
        std::chrono::steady_clock::time_point first, last;
    };
    std::optional<Times> receivedTimes() const;

private:
    struct Line;
    std::unique_ptr<Line> line_;
};

} // namespace benthor::simulator
