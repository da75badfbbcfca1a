#include "platform/clock.h"

#include <optional>

namespace benthor::platform {

namespace {
std::optional<QDateTime>& fixedMoment() {
    static std::optional<QDateTime> moment;
    return moment;
}
} // namespace

QDateTime now() {
    return fixedMoment().value_or(QDateTime::currentDateTime());
}

FixedClock::FixedClock(const QDateTime& moment) {
    fixedMoment() = moment;
}

FixedClock::~FixedClock() {
    fixedMoment().reset();
}

} // namespace benthor::platform
