#include "shell/house_rehearsal.h"

#include "platform/programfolder.h"
#include "simulator/kdport.h"

#include <stdexcept>

namespace benthor::shell {

using simulator::FirmwareType;
using simulator::Kd;
using simulator::KdPort;

Rehearsal::Rehearsal() = default;
Rehearsal::~Rehearsal() = default;

int Rehearsal::start(bool kd, int baud, QString& error) {
    constexpr int kFast = 38400;
    stop();
    try {
        const int speed = baud == kFast ? KdPort::fastLineSpeed : KdPort::lineSpeed;
        Kd device;
        device.loader.emplace(kd ? FirmwareType::Kd : FirmwareType::Rb);
        device_ = std::make_unique<KdPort>(platform::ProgramFolder::current().root(), port, std::move(device),
                                           speed);
        device_->paceReceived(speed);
        device_->setBaud(baud);
        device_->start();
    } catch (const std::runtime_error& reason) {
        device_.reset();
        error = QString::fromUtf8(reason.what());
        return 0;
    }
    return port;
}

void Rehearsal::report(const QByteArray& checkvalue) {
    if (device_) {
        device_->with([&checkvalue](Kd& kd) {
            if (kd.loader) {
                kd.loader->foreignCheck = checkvalue;
            }
        });
    }
}

void Rehearsal::stop() {
    device_.reset();
}

} // namespace benthor::shell
