#pragma once

#include "firmware/reproghost.h"

namespace benthor::firmware {

// What the user is told where the line gives up in the middle of something: what became of it, and the next
// step.

/// Where that was.
enum class LostAt {
    Start,      ///< of an image, whose port is not open
    Image,      ///< on its way
    Verdict,    ///< not yet told by the device
    Confirming, ///< the device, whose verdict was good
    Text,       ///< a book
    Command,    ///< a letter, a key, the rest of a command
};

/// `bytes`: of the image's file, read so far. Empty for a write that left whole.
QString lostwords(platform::Written how, LostAt where, qint64 bytes = 0);

/// Shows those words. False for a write that left whole: nothing is lost.
bool telllost(ReprogHost& host, platform::Written how, LostAt where, qint64 bytes = 0);

} // namespace benthor::firmware
