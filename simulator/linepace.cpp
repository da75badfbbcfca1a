#include "simulator/linepace.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <fcntl.h>
#include <stdexcept>
#include <sys/inotify.h>
#include <termios.h>
#include <unistd.h>

namespace benthor::simulator {

namespace {

constexpr double kIdleSeconds = 1.0 / 50;

} // namespace

void LineCredit::pass(std::chrono::nanoseconds time) {
    bytes_ += std::chrono::duration<double>(time).count() * bytesPerSecond_;
}

void LineCredit::idle() {
    bytes_ = std::min(bytes_, kIdleSeconds * bytesPerSecond_);
}

HeldEnd::HeldEnd(const char* path)
    : end_(::open(path, O_RDWR | O_NOCTTY | O_CLOEXEC))
    , watch_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    if (end_ < 0 || watch_ < 0 || ::inotify_add_watch(watch_, path, IN_OPEN | IN_CLOSE) < 0) {
        ::close(end_);
        ::close(watch_);
        throw std::runtime_error("the pseudo-terminal can't be held");
    }
}

HeldEnd::~HeldEnd() {
    ::close(end_);
    ::close(watch_);
}

void HeldEnd::let(bool write) {
    if (write != let_) {
        ::tcflow(end_, write ? TCOON : TCOOFF);
        let_ = write;
    }
}

bool HeldEnd::inUse() {
    alignas(inotify_event) std::array<char, 4096> events{};
    ssize_t length = 0;
    while ((length = ::read(watch_, events.data(), events.size())) > 0) {
        for (ssize_t at = 0; at < length;) {
            inotify_event event{};
            std::memcpy(&event, events.data() + at, sizeof event);
            at += static_cast<ssize_t>(sizeof event + event.len);
            openings_ += (event.mask & IN_OPEN) != 0 ? 1 : 0;
            if ((event.mask & IN_CLOSE) != 0 && openings_ > 0 && --openings_ == 0) {
                ::tcflush(end_, TCIFLUSH);
            }
        }
    }
    return openings_ > 0;
}

} // namespace benthor::simulator
