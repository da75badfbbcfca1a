#pragma once

#include <functional>

class QWidget;

namespace benthor::tests {

/// The firmware screen with a device on a line of our making: each state of its lamps, the send, the final
/// wait, the keyboard for commands, the rehearsal. `take` keeps a picture of the window under a name.
void takeFirmwareScreens(const std::function<void(QWidget* window, const char* name)>& take);

} // namespace benthor::tests
