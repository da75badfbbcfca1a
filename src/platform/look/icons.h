#pragma once

#include "platform/look/tokens.h"

#include <QIcon>
#include <QPixmap>
#include <QStringList>

namespace benthor::look {

/// The names of all icons, sorted.
QStringList iconNames();

/// The icon `name`, drawn in the text colour of the theme in force at each painting, fainter when disabled,
/// in the colour that reads on accent when it is painted checked ("On"). An unknown name gives an icon that
/// paints nothing.
QIcon icon(const char* name);
QIcon icon(const QString& name);
/// The same in a fixed colour.
QIcon icon(const QString& name, const QColor& colour);

/// `name` drawn `size` by `size` pixels of the layout in `colour`, at `dpr` device pixels each. An unknown
/// name gives a pixmap that is null.
QPixmap iconPixmap(const QString& name, int size, const QColor& colour, qreal dpr);

/// The program's own icon.
QIcon applicationIcon();

} // namespace benthor::look
