#include "link/replypoll.h"

namespace benthor::link {

using namespace std::chrono_literals;

namespace {

constexpr auto kPollWait = 100us;
// The window is painted every so often; each time costs the line a little.
constexpr int kPollsBetweenPaints = 500;

} // namespace

Reply pollforreply(platform::SerialLine& line, int looks, const std::function<bool()>& look,
                   const std::function<bool()>& repaint) {
    for (int poll = 0; poll < looks; ++poll) {
        if (look()) {
            return Reply::Came;
        }
        // Not at once: what comes under a painting goes to the receive event, and most replies come at once.
        if (poll > 0 && poll % kPollsBetweenPaints == 0 && !repaint()) {
            return Reply::Closed;
        }
        line.waitForInput(kPollWait);
    }
    return Reply::Missing;
}

} // namespace benthor::link
