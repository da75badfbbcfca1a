#pragma once

namespace benthor::readjet {

/// Takes from this process all that it does not need: time and memory have an end, no file can be written, no
/// process started, no right gained, no core left; it dies with its parent. False where the system refuses
/// one of them.
bool limitMyself();

} // namespace benthor::readjet
