#pragma once

#include <QString>
#include <QWidget>

namespace benthor::guides {

/// The manual in a window of its own, for desktops that have nothing to open it with. Null when the file
/// cannot be read as one. The window belongs to the caller; it deletes itself when it is closed.
QWidget* makeManualView(const QString& path);

} // namespace benthor::guides
