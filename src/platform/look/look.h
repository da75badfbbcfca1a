#pragma once

#include "platform/look/contrast.h"
#include "platform/look/icons.h"
#include "platform/look/tokens.h"
#include "platform/look/type.h"

#include <QLatin1String>

class QApplication;
class QLabel;
class QString;
class QWidget;

namespace benthor::look {

/// Gives the application its style, palette, font and icon. Takes the desktop's theme unless `setTheme` was
/// called before. Call it once, before the first screen.
///
/// What a screen may set on a QPushButton: property "primary" (filled with accent), "danger" (edged red),
/// "quiet" (no edge until the mouse is over it), "big" (40 high), each a bool; on a QLabel: `setInk`.
void apply(QApplication& application);

/// What a label's text is painted in; it follows the theme. A told colour is set for the label's
/// `foregroundRole()`.
enum class Ink { Text, Quiet, Accent, Bad };
void setInk(QWidget* widget, Ink ink);
QColor inkColour(Ink ink);

/// Gives the object its name and hands it back.
template <class T> T* named(T* object, const char* name) {
    object->setObjectName(QLatin1String(name));
    return object;
}

/// Labels as they are wanted most: quiet and small; a title.
QLabel* makeCaption(const QString& text, QWidget* parent = nullptr);
QLabel* makeHeading(const QString& text, QWidget* parent = nullptr);

} // namespace benthor::look
