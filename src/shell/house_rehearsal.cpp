#include "shell/house_rehearsal.h"

#include "platform/programfolder.h"
#include "simulator/kdport.h"

#include <stdexcept>

namespace benthor::shell {

Rehearsal::Rehearsal() = default;
Rehearsal::~Rehearsal() = default;

int Rehearsal::start(const QByteArray& checkvalue, bool kd, int baud, QString& error) {
    Q_UNUSED(checkvalue)
    Q_UNUSED(kd)
    Q_UNUSED(baud)
    stop();
    try {
        device_ = std::make_unique<simulator::KdPort>(platform::ProgramFolder::current().root(), port,
                                                      simulator::Kd());
        device_->start();
    } catch (const std::runtime_error& reason) {
        device_.reset();
        error = QString::fromUtf8(reason.what());
        return 0;
    }
    return port;
}

void Rehearsal::stop() {
    device_.reset();
}

} // namespace benthor::shell
