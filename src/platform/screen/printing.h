#pragma once

class QPrinter;
class QWidget;

namespace benthor::platform {

/// Prints the widget as it stands, as large as the page takes it, in the light theme whatever the screen's
/// is. False when the printer takes nothing.
bool printWidget(QPrinter& printer, QWidget& widget);

} // namespace benthor::platform
