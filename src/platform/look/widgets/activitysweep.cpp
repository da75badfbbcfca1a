#include "platform/look/widgets/activitysweep.h"

#include "platform/look/look.h"
#include "platform/look/style/paint.h"

#include <QPainter>

namespace benthor::look {

ActivitySweep::ActivitySweep(QWidget* parent)
    : QWidget(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

bool ActivitySweep::isLit(int segment) const {
    return (segment - position_ + segments) % segments < window;
}

QSize ActivitySweep::sizeHint() const {
    return {scaled(segments * 20), scaled(12)};
}

QSize ActivitySweep::minimumSizeHint() const {
    return {segments * 6, scaled(12)};
}

void ActivitySweep::advance() {
    position_ = (position_ + 1) % segments;
    update();
}

void ActivitySweep::restart() {
    position_ = 0;
    update();
}

void ActivitySweep::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event)
    QPainter painter(this);
    constexpr int gap = 3;
    for (int k = 0; k < segments; ++k) {
        // Ends are rounded one by one, so that the last segment meets the bar's end at any width.
        const int left = (width() + gap) * k / segments;
        const int right = (width() + gap) * (k + 1) / segments - gap;
        const QRect place(left, 0, right - left, height());
        if (isLit(k)) {
            drawPanel(&painter, place, tokens().accent, QColor(), 2);
        } else {
            drawPanel(&painter, place, tokens().sunken, troughEdge(), 2);
        }
    }
}

} // namespace benthor::look
