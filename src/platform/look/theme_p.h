#pragma once

#include <QPalette>

namespace benthor::look {

// Shared by the files of this module only.

/// The palette of the theme in force.
QPalette themePalette();

/// Keeps what the desktop prefers, and takes its theme into force unless one was chosen before.
void takeDesktopTheme();
void takeDesktopFont();

} // namespace benthor::look
