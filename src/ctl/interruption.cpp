#include "ctl/interruption.h"

#include "ctl/outcome.h"
#include "platform/storewait.h"

#include <csignal>

namespace benthor::ctl {

namespace {

volatile std::sig_atomic_t heard = 0;

extern "C" void onSignal(int) {
    heard = 1;
    platform::endAllWaits();
}

} // namespace

void catchSignals() {
    struct sigaction action {};
    action.sa_handler = onSignal; // without SA_RESTART: a write that waits for its reader comes back
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction before {};
        // Under nohup, and behind "&" in a script, the shell has had them ignored.
        if (::sigaction(number, nullptr, &before) == 0 && before.sa_handler != SIG_IGN) {
            ::sigaction(number, &action, nullptr);
        }
    }
    ::signal(SIGPIPE, SIG_IGN);
}

bool isInterrupted() noexcept {
    return heard != 0;
}

void goOnUnlessInterrupted() {
    if (isInterrupted()) {
        throw Failure(kFault, QStringLiteral("Interrupted."));
    }
}

} // namespace benthor::ctl
