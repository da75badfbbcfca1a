#pragma once

class QWidget;

namespace benthor::guides {

/// Opens the manual of the program folder with what the desktop opens such a file with. Where that does not
/// work a message says where the manual lies.
void openManual(QWidget* parent);

} // namespace benthor::guides
