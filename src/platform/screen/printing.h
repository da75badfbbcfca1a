#pragma once

#include "platform/look/tokens.h"

class QPrinter;
class QWidget;

namespace benthor::platform {

/// The light theme for as long as this lives: a page is white, and ink is dear.
class LightTheme {
public:
    LightTheme();
    ~LightTheme();
    LightTheme(const LightTheme&) = delete;
    LightTheme& operator=(const LightTheme&) = delete;

private:
    look::Theme before_;
};

/// Prints the widget as it stands, as large as the page takes it, in the light theme whatever the screen's
/// is. False when the printer takes nothing.
bool printWidget(QPrinter& printer, QWidget& widget);

} // namespace benthor::platform
