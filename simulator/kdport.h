#pragma once

#include "simulator/kd.h"

#include <QString>

#include <functional>
#include <memory>

namespace benthor::simulator {

/// A device on a pseudo-terminal, working in a thread of its own. It stands as port `number` of a program
/// folder: the link "ports/com<number>" there leads to it for as long as it runs.
class KdPort {
public:
    static constexpr int lineSpeed = 960; ///< bytes a second at 9600 baud
    static constexpr int unpaced = 0;

    KdPort(QString programFolder, int number, Kd device, int bytesPerSecond = lineSpeed);
    ~KdPort();
    KdPort(const KdPort&) = delete;
    KdPort& operator=(const KdPort&) = delete;

    /// Throws std::runtime_error when the machine gives no pseudo-terminal or the link can't be made.
    void start();
    /// Takes the link away and hangs the line up. The device keeps what it knows; start() brings it back.
    void stop();

    /// Works on the device while its thread waits.
    void with(const std::function<void(Kd&)>& work);
    /// All bytes that have come from the program.
    QByteArray received() const;

private:
    struct Line;
    std::unique_ptr<Line> line_;
};

} // namespace benthor::simulator
