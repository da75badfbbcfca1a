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

std::optional<QPoint> placeBeside(const QRect& window, const QSize& size, const QList<QRect>& displays) {
    QList<QRect> order = displays;
    std::stable_sort(order.begin(), order.end(), [&window](const QRect& one, const QRect& other) {
        return area(one & window) > area(other & window);
    });
    for (const QRect& display : order) {
        if (size.width() > display.width() || size.height() > display.height()) {
            continue;
        }
        const int left = std::clamp(window.left(), display.left(), display.right() - size.width() + 1);
        const int top = std::clamp(window.top(), display.top(), display.bottom() - size.height() + 1);
        for (const QPoint& place :
             {QPoint(window.right() + 1, top), QPoint(window.left() - size.width(), top),
              QPoint(left, window.bottom() + 1), QPoint(left, window.top() - size.height()),
              display.topLeft()}) {
            const QRect wanted(place, size);
            if (display.contains(wanted) && !wanted.intersects(window)) {
                return place;
            }
        }
    }
    return std::nullopt;
}

} // namespace benthor::platform
