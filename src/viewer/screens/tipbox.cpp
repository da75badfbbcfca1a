#include "viewer/screens/tipbox.h"

#include "platform/look/look.h"

#include <QPainter>

namespace benthor::viewer {

namespace {

constexpr int kTwipsPerPixel = 15;
constexpr int kPointerHeight = 25; // twips
constexpr int kPointerWidth = 10;  // pixels
constexpr double kCorner = 4;

QFont lineFont(int line) {
    return line == 0 ? look::strong(look::caption()) : look::caption();
}

} // namespace

TipBox::TipBox(QWidget* parent)
    : QWidget(parent) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    hide();
}

void TipBox::setTip(const PointTip& tip, const QColor& back) {
    text_ = tip.text();
    toldHeight_ = static_cast<int>(kTipLineHeight) + tip.height;
    back_ = back;
    setAccessibleName(text_);
    update();
}

QSize TipBox::neededSize() const {
    const QStringList lines = text_.trimmed().split(QStringLiteral("\r\n"));
    int width = 0;
    for (qsizetype line = 0; line < lines.size(); ++line) {
        width =
            std::max(width, QFontMetrics(lineFont(static_cast<int>(line))).horizontalAdvance(lines[line]));
    }
    const int lineHeight = std::max(QFontMetrics(look::caption()).height() + 1, 15);
    return {std::max(width + 2 * look::spaceSmall, static_cast<int>(kTipWidth) / kTwipsPerPixel),
            std::max(static_cast<int>(lines.size()) * lineHeight, toldHeight_ / kTwipsPerPixel) +
                look::spaceSmall};
}

void TipBox::showAt(QPoint corner) {
    pointer_ = false;
    setGeometry(QRect(corner, neededSize()));
    show();
    update();
}

void TipBox::showPointer(QPoint place) {
    pointer_ = true;
    setGeometry(place.x(), place.y(), kPointerWidth, (kPointerHeight + kTwipsPerPixel - 1) / kTwipsPerPixel);
    show();
    update();
}

void TipBox::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (pointer_) {
        painter.fillRect(rect(), look::tokens().text);
        return;
    }
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(look::tokens().edge, 1));
    painter.setBrush(back_);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), kCorner, kCorner);
    painter.setPen(look::readableOn(back_));
    const QStringList lines = text_.trimmed().split(QStringLiteral("\r\n"));
    const int lineHeight = (height() - look::spaceSmall) / std::max(1, static_cast<int>(lines.size()));
    for (qsizetype line = 0; line < lines.size(); ++line) {
        painter.setFont(lineFont(static_cast<int>(line)));
        const QRect room(look::spaceSmall, look::spaceTight + static_cast<int>(line) * lineHeight,
                         width() - look::spaceSmall, lineHeight);
        painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, lines[line]);
    }
}

} // namespace benthor::viewer
