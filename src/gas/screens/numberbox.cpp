#include "gas/screens/numberbox.h"

#include "platform/look/look.h"

#include <QPainter>

namespace benthor::gas {

NumberBox::NumberBox(const QString& tip, QWidget* parent)
    : QLineEdit(parent)
    , tip_(tip) {
    setToolTip(tip);
}

void NumberBox::setWrong(const QString& why) {
    if (why == why_) {
        return;
    }
    why_ = why;
    setToolTip(why.isEmpty() ? tip_ : tip_.isEmpty() ? why : tip_ + QLatin1Char('\n') + why);
    setAccessibleDescription(why);
    update();
}

void NumberBox::paintEvent(QPaintEvent* event) {
    QLineEdit::paintEvent(event);
    if (why_.isEmpty()) {
        return;
    }
    constexpr int kEdge = 2;
    constexpr int kRadius = 6;
    constexpr int kSign = 12;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    // A cell of the table has a told, light ground, whatever the theme.
    const QColor ground = palette().color(QPalette::Base);
    const bool light = ground.lightness() > 127;
    const QColor bad =
        look::legibleOn(look::tokens(light ? look::Theme::Light : look::Theme::Dark).bad, ground);
    painter.setPen(QPen(bad, kEdge));
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), kRadius, kRadius);
    painter.setFont(look::strong(look::caption()));
    painter.drawText(QRect(3, 0, kSign, height()), Qt::AlignVCenter | Qt::AlignLeft, QStringLiteral("!"));
}

} // namespace benthor::gas
