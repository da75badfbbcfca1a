#pragma once

#include "platform/serialline.h"

#include <functional>

namespace benthor::link {

/// Looks of a wait for a reply; on a silent line about ten seconds.
inline constexpr int kPolls = 100000;

enum class Reply { Came, Missing, Closed };

/// Waits for a reply on the interface thread: no tick runs and no input is served. `look` takes what the line
/// has and tells whether the reply is in it; it is called up to `looks` times, with at most 0.1 ms of waiting
/// behind each. `repaint` paints every so often, never at the first look; false where the screen was closed,
/// which ends the wait.
Reply pollforreply(platform::SerialLine& line, int looks, const std::function<bool()>& look,
                   const std::function<bool()>& repaint);

} // namespace benthor::link
