#pragma once

#include "platform/toldcolour.h"

#include <QColor>

namespace benthor::platform {

inline QColor toQColor(ToldColour colour) {
    const RedGreenBlue parts = redGreenBlue(colour);
    return {parts.red, parts.green, parts.blue};
}

} // namespace benthor::platform
