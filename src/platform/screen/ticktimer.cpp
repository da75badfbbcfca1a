#include "platform/screen/ticktimer.h"

namespace benthor::platform {

namespace {
int holds = 0;
} // namespace

TickHold::TickHold() {
    ++holds;
}

TickHold::~TickHold() {
    --holds;
}

bool TickHold::active() {
    return holds > 0;
}

TickTimer::TickTimer(const QString& name, int intervalMilliseconds, Start start, QObject* parent)
    : QObject(parent) {
    setObjectName(name);
    timer_.setInterval(intervalMilliseconds);
    connect(&timer_, &QTimer::timeout, this, &TickTimer::expire);
    setEnabled(start == Start::Enabled);
}

void TickTimer::setEnabled(bool enabled) {
    if (enabled == timer_.isActive()) {
        return;
    }
    if (enabled) {
        timer_.start();
    } else {
        timer_.stop();
    }
}

void TickTimer::expire() {
    if (!TickHold::active()) {
        emit tick();
    }
}

} // namespace benthor::platform
