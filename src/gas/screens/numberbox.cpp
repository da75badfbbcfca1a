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
    // Plain words, whatever was typed into the box.
    const QString words = why.toHtmlEscaped();
    setToolTip(why.isEmpty() ? tip_ : tip_.isEmpty() ? words : tip_ + QLatin1Char('\n') + words);
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
    // On the light grounds that cells are told in, whatever the theme.
    const QColor bad(0xC9, 0x2A, 0x2A);
    painter.setPen(QPen(bad, kEdge));
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), kRadius, kRadius);
    painter.setFont(look::strong(look::caption()));
    painter.drawText(QRect(3, 0, kSign, height()), Qt::AlignVCenter | Qt::AlignLeft, QStringLiteral("!"));
}

} // namespace benthor::gas
