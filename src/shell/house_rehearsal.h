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

    /// `checkvalue`: four hexadecimal digits that the device reports once it holds an image; empty: one of
    /// its own. `kd`: its type is "kd", else "rb". `baud`: 9600 or 38400. Returns the port, or 0 with the
    /// reason.
    int start(const QByteArray& checkvalue, bool kd, int baud, QString& error);
    void stop();

private:
    std::unique_ptr<simulator::KdPort> device_;
};

} // namespace benthor::shell
