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

void TipBox::setFolded(bool folded) {
    folded_ = folded;
    update();
}

QStringList TipBox::shownLines() const {
    const QStringList lines = text_.trimmed().split(QStringLiteral("\r\n"));
    return folded_ ? lines.first(1) : lines;
}

TipBox::Columns TipBox::columnsFor(int room) const {
    const QStringList lines = shownLines();
    Columns columns;
    for (qsizetype line = 0; line < lines.size(); ++line) {
        const QFontMetrics metrics(lineFont(static_cast<int>(line)));
        columns.width = std::max(columns.width, metrics.horizontalAdvance(lines[line]));
    }
    columns.width += 2 * look::spaceSmall;
    columns.lineHeight = std::max(QFontMetrics(look::caption()).height() + 1, 15);
    const int count = static_cast<int>(lines.size());
    const int fitting = std::max(1, (room - look::spaceSmall) / columns.lineHeight);
    columns.count = (count + fitting - 1) / fitting;
    columns.lines = (count + columns.count - 1) / columns.count;
    return columns;
}

QSize TipBox::neededSize(int room) const {
    const Columns columns = columnsFor(room);
    const int lines = columns.lines * columns.lineHeight;
    const int told = folded_ || columns.count > 1 ? 0 : toldHeight_ / kTwipsPerPixel;
    return {std::max(columns.count * columns.width, static_cast<int>(kTipWidth) / kTwipsPerPixel),
            std::min(std::max(lines, told) + look::spaceSmall, std::max(room, lines + look::spaceSmall))};
}

void TipBox::showAt(QPoint corner, int room) {
    pointer_ = false;
    room_ = room;
    setGeometry(QRect(corner, neededSize(room)));
    raise();
    show();
    update();
}

void TipBox::showPointer(QPoint place) {
    pointer_ = true;
    setGeometry(place.x(), place.y(), kPointerWidth, (kPointerHeight + kTwipsPerPixel - 1) / kTwipsPerPixel);
    raise();
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
    const QStringList lines = shownLines();
    const Columns columns = columnsFor(room_);
    const int lineHeight = (height() - look::spaceSmall) / std::max(1, columns.lines);
    for (int line = 0; line < static_cast<int>(lines.size()); ++line) {
        painter.setFont(lineFont(line));
        const QRect room(line / columns.lines * columns.width + look::spaceSmall,
                         look::spaceTight + line % columns.lines * lineHeight, width() - look::spaceSmall,
                         lineHeight);
        painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, lines[line]);
    }
}

} // namespace benthor::viewer
