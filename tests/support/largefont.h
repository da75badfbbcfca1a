#pragma once

#include "platform/look/look.h"

#include <QApplication>

namespace benthor::tests {

/// The desktop's font has 14 points from here on, and the looks follow it.
inline void useLargeFont() {
    QFont font = QApplication::font();
    font.setPointSize(14);
    QApplication::setFont(font);
    look::apply(*qApp);
    if (look::fontScale() <= 1.3) {
        qFatal("the looks do not follow the font");
    }
}

} // namespace benthor::tests
