#include "link/screens/seriallines.h"
#include "platform/serial/serialport.h"

#include <QPointer>

namespace benthor::link {

using platform::SerialPort;

LinkLines serialLines() {
    const auto ports = std::make_shared<QList<QPointer<SerialPort>>>();
    LinkLines lines;
    lines.make = [ports](QObject*, std::function<void()> received) -> std::unique_ptr<platform::SerialLine> {
        auto port = std::make_unique<SerialPort>();
        QObject::connect(port.get(), &SerialPort::received, port.get(), std::move(received));
        ports->removeAll(nullptr);
        ports->append(port.get());
        return port;
    };
    lines.portHint = [ports]() -> QString {
        for (const QPointer<SerialPort>& port : std::as_const(*ports)) {
            if (port != nullptr && !port->faultHint().isEmpty()) {
                return port->faultHint();
            }
        }
        return {};
    };
    return lines;
}

} // namespace benthor::link
