#include "platform/look/widgets/gauge.h"

#include "platform/look/access/access.h"
#include "platform/look/look.h"
#include "platform/look/style/paint.h"

#include <QPainter>

namespace benthor::look {

namespace {

constexpr int gap = 2;
constexpr int footWidth = 3;
constexpr int limitGap = 5;

} // namespace

Gauge::Gauge(QWidget* parent)
    : QWidget(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setReaderRole(this, QAccessible::Dial);
}

void Gauge::setLit(quint32 mask) {
    if (lit_ != mask) {
        lit_ = mask;
        update();
    }
}

void Gauge::setSeries(Series series) {
    series_ = series;
    update();
}

void Gauge::setColour(const QColor& colour) {
    series_.reset();
    colour_ = colour;
    update();
}

void Gauge::setLimit(int index) {
    limit_ = index;
    update();
}

QSize Gauge::sizeHint() const {
    return {scaled(132), scaled(12)};
}

QSize Gauge::minimumSizeHint() const {
    return {13 * (3 + gap) + footWidth + limitGap, scaled(12)};
}

void Gauge::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event)
    QPainter painter(this);
    const Tokens& token = tokens();
    const QColor own =
        series_ ? seriesStyle(*series_, theme()).colour : (colour_.isValid() ? colour_ : token.accent);
    const int start = footWidth + gap;
    const int room = width() - start - (limit_ > 0 ? limitGap : 0) + gap;
    for (int k = 0; k < segments; ++k) {
        QRect place(0, 0, footWidth, height());
        if (k > 0) {
            const int left = start + room * (k - 1) / (segments - 1);
            const int right = start + room * k / (segments - 1) - gap;
            place = QRect(left + (limit_ > 0 && k > limit_ ? limitGap : 0), 0, right - left, height());
        }
        const bool over = limit_ > 0 && k > limit_;
        if (isLit(k)) {
            drawPanel(&painter, place, over ? token.bad : own, QColor(), 1);
        } else {
            drawPanel(&painter, place, token.sunken, troughEdge(), 1);
        }
    }
}

} // namespace benthor::look
