#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

namespace benthor::simulator {
class KdPort;
}

namespace benthor::shell {

/// A simulated device that waits to be reprogrammed, for a rehearsal. It stands on a port beyond all that are
/// searched for a device, and only for as long as the rehearsal lasts.
class Rehearsal {
public:
    static constexpr int port = 40;

    Rehearsal();
    ~Rehearsal();
    Rehearsal(const Rehearsal&) = delete;
    Rehearsal& operator=(const Rehearsal&) = delete;

    /// `kd`: the device's type is "kd", else "rb". `baud`: 9600 or 38400. Returns the port, or 0 with the
    /// reason.
    int start(bool kd, int baud, QString& error);
    /// What the device reports once it holds an image: four hexadecimal digits; empty: a value of its own.
    void report(const QByteArray& checkvalue);
    void stop();

private:
    std::unique_ptr<simulator::KdPort> device_;
};

} // namespace benthor::shell
