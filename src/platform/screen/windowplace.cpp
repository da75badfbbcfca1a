#include "platform/screen/windowplace.h"

#include <algorithm>

namespace benthor::platform {

namespace {

qint64 area(const QRect& rectangle) {
    return rectangle.isValid() ? static_cast<qint64>(rectangle.width()) * rectangle.height() : 0;
}

} // namespace

QRect windowPlace(const QRect& remembered, const QSize& firstSize, const QList<QRect>& displays) {
    QRect place = remembered.isValid() ? remembered : QRect(QPoint(0, 0), firstSize);
    if (displays.isEmpty()) {
        return place;
    }
    QRect display = displays.first();
    if (remembered.isValid()) {
        for (const QRect& candidate : displays) {
            if (area(candidate & remembered) > area(display & remembered)) {
                display = candidate;
            }
        }
    }
    place.setSize(place.size().boundedTo(display.size()));
    if (!remembered.isValid()) {
        place.moveCenter(display.center());
    }
    place.moveLeft(std::clamp(place.left(), display.left(), display.right() - place.width() + 1));
    place.moveTop(std::clamp(place.top(), display.top(), display.bottom() - place.height() + 1));
    return place;
}

} // namespace benthor::platform
