#include "gas/screens/numberbox.h"

#include "platform/look/look.h"
#include "platform/look/style/paint.h"

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
    constexpr int kSign = 12;
    constexpr int kSignAt = 3;
    const int ring = hasFocus() ? look::focusRingWidth() : 0; // both are seen, one within the other
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    // A cell of the table has a told, light ground, whatever the theme.
    const QColor ground = palette().color(QPalette::Base);
    const bool light = ground.lightness() > 127;
    const QColor bad =
        look::legibleOn(look::tokens(light ? look::Theme::Light : look::Theme::Dark).bad, ground);
    painter.setPen(QPen(bad, kEdge));
    const qreal inset = ring + kEdge / 2.0;
    const qreal corner = look::radius - ring;
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), corner, corner);
    painter.setFont(look::strong(look::caption()));
    painter.drawText(QRect(kSignAt + ring, 0, kSign, height()), Qt::AlignVCenter | Qt::AlignLeft,
                     QStringLiteral("!"));
}

} // namespace benthor::gas
