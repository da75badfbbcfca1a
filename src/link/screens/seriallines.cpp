#include "link/screens/seriallines.h"
#include "platform/serial/serialport.h"

#include <QPointer>

namespace benthor::link {

using platform::SerialPort;

namespace {

/// Stands where no serial lines were given: it never opens.
class NoLine : public platform::SerialLine {
public:
    int CommPort() const override { return port_; }
    void setCommPort(int number) override { port_ = number; }
    void setSettings(const QString&) override {}
    void setInputLen(int) override {}
    void setRThreshold(int) override {}
    bool PortOpen() const override { return false; }
    bool setPortOpen(bool open) override { return !open; }
    QByteArray Input() override { return {}; }
    qsizetype InBufferCount() const override { return 0; }
    platform::Written Output(QByteArrayView) override { return platform::Written::Closed; }
    void waitForInput(std::chrono::microseconds) override {}

private:
    int port_ = 0;
};

} // namespace

std::unique_ptr<platform::SerialLine> LinkLines::line(QObject* owner, std::function<void()> received) const {
    if (!make) {
        return std::make_unique<NoLine>();
    }
    return make(
        owner, received ? std::move(received) : [] {});
}

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
