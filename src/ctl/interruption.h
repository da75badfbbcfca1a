#pragma once

namespace benthor::ctl {

/// From here on SIGINT, SIGTERM and SIGHUP are only noted: whoever works looks, puts away what is half done,
/// and ends. All waits for a store end with it. A reader of the output that goes away is a failed write.
void catchSignals();

bool isInterrupted() noexcept;

/// Failure where it is.
void goOnUnlessInterrupted();

} // namespace benthor::ctl
