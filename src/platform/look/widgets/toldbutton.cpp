#include "platform/look/widgets/toldbutton.h"

#include "platform/look/style/paint.h"

#include <QPainterPath>
#include <QStyleOptionButton>
#include <QStylePainter>

namespace benthor::look {

ToldButton::ToldButton(QWidget* parent)
    : QPushButton(parent) {}

ToldButton::ToldButton(const QString& text, QWidget* parent)
    : QPushButton(text, parent) {}

void ToldButton::setToldBackground(const QColor& colour) {
    if (told_.isValid() != colour.isValid()) {
        updateGeometry();
    }
    told_ = colour;
    update();
}

QSize ToldButton::sizeHint() const {
    return QPushButton::sizeHint() + QSize(told_.isValid() ? toldBlockWidth : 0, 0);
}

QSize ToldButton::minimumSizeHint() const {
    return sizeHint();
}

void ToldButton::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event)
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    painter.drawControl(QStyle::CE_PushButtonBevel, option);
    if (told_.isValid()) {
        // Inside the edge, or inside the ring when focused, and parted from the rest by a line.
        const bool focus = option.state & QStyle::State_HasFocus;
        const int inset = focus ? focusRingWidth() : 1;
        const QRect inner = rect().adjusted(inset, inset, -inset, -inset);
        QPainterPath shape;
        shape.addRoundedRect(inner, radius - inset, radius - inset);
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        const QRect block(0, 0, toldBlockWidth, height());
        painter.setClipRect(QStyle::visualRect(layoutDirection(), rect(), block));
        painter.fillPath(shape, told_);
        painter.setClipRect(QStyle::visualRect(layoutDirection(), rect(),
                                               QRect(toldBlockWidth, inset, 1, height() - 2 * inset)));
        painter.fillRect(rect(), isEnabled() ? tokens().edge : tokens().line);
        painter.restore();
        option.rect = QStyle::visualRect(layoutDirection(), rect(), rect().adjusted(toldBlockWidth, 0, 0, 0));
    }
    painter.drawControl(QStyle::CE_PushButtonLabel, option);
}

} // namespace benthor::look
