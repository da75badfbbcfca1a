#pragma once

#include "link/screens/linklines.h"
#include "simulator/kd.h"

#include <memory>

namespace benthor::tests {

/// A device on port 3 without a wire and without a clock: time passes for it only when the walk says so, and
/// when a routine of the program waits for input. So the same steps always hear the same bytes at the same
/// moment.
class DeviceBench {
public:
    static constexpr int port = 3;

    explicit DeviceBench(simulator::Kd device);
    ~DeviceBench();
    DeviceBench(const DeviceBench&) = delete;
    DeviceBench& operator=(const DeviceBench&) = delete;

    /// Lines of a program that is started beside the device.
    link::LinkLines lines();
    /// Lets the device speak for so long; what it says waits at the open line, which is told.
    void pass(int milliseconds);
    /// Without its cable no line opens, and none hears anything.
    void plug(bool in);
    bool isPlugged() const;

    simulator::Kd& device();
    /// All that the program sent since the last call.
    QByteArray takeSent();

private:
    class Line;
    struct Wire;
    std::shared_ptr<Wire> wire_;
};

} // namespace benthor::tests
