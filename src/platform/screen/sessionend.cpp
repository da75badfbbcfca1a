#include "platform/screen/sessionend.h"

#include "platform/storewait.h"

#include <QGuiApplication>
#include <QSessionManager>
#include <QSocketNotifier>
#include <QTimer>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace benthor::platform {

namespace {

constexpr std::array kSignals{SIGTERM, SIGHUP, SIGINT};

/// What the handler writes into and what it is read from.
std::array<int, 2> ends{-1, -1};

extern "C" void onSignal(int) {
    const int before = errno;
    endAllWaits();
    const char sign = 0;
    static_cast<void>(!::write(ends[1], &sign, 1));
    errno = before;
}

} // namespace

SessionEnd::SessionEnd() {
    if (::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) == 0) {
        auto* notifier = new QSocketNotifier(ends[0], QSocketNotifier::Read, this);
        connect(notifier, &QSocketNotifier::activated, this, &SessionEnd::heard);
        struct sigaction action {};
        action.sa_handler = onSignal;
        action.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
        for (const int number : kSignals) {
            ::sigaction(number, &action, nullptr);
        }
    }
    connect(qGuiApp, &QGuiApplication::commitDataRequest, this,
            [this] { tellBehindWaits(&SessionEnd::saveWanted); });
}

SessionEnd::~SessionEnd() {
    for (const int number : kSignals) {
        ::signal(number, SIG_DFL);
    }
    for (int& end : ends) {
        ::close(std::exchange(end, -1));
    }
}

void SessionEnd::heard() {
    char sign = 0;
    static_cast<void>(!::read(ends[0], &sign, 1));
    tellBehindWaits(&SessionEnd::ending);
}

/// Whoever hears it uses the store. One that waits in the midst of its own work lets events run, and is not
/// to be used from there.
void SessionEnd::tellBehindWaits(void (SessionEnd::*what)()) {
    constexpr auto kPause = std::chrono::milliseconds(20);
    if (isWaiting()) {
        QTimer::singleShot(kPause, this, [this, what] { tellBehindWaits(what); });
        return;
    }
    emit(this->*what)();
}

} // namespace benthor::platform
