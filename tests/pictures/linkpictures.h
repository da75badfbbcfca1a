#pragma once

#include <functional>

class QWidget;

namespace benthor::tests {

/// The link screen with a device on a line of our making: both faces, empty and full, and the wait frame.
/// `take` keeps a picture of the window as it stands under a name.
void takeLinkScreens(const std::function<void(QWidget* window, const char* name)>& take);

} // namespace benthor::tests
