#pragma once

namespace benthor::platform {

/// Fills the standard streams that the caller has closed. A file that is opened must not become one of them:
/// what is written there would end in it. To be called before anything is opened.
void fillStandardStreams();

} // namespace benthor::platform
