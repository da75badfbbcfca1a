#include "firmware/screens/processdelegate.h"

#include "platform/look/look.h"

#include <QPainter>

namespace benthor::firmware {

namespace {

constexpr int kRowHeight = 28;
constexpr int kFigures = 13;

/// Draws `text` at the right of `room` and takes its width, and a gap, off the room.
void drawAtTheRight(QPainter* painter, QRect& room, const QString& text, const QFont& font) {
    painter->setFont(font);
    painter->drawText(room, Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine, text);
    room.setRight(room.right() - QFontMetrics(font).horizontalAdvance(text) - look::spaceBase);
}

} // namespace

void ProcessDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const {
    const look::Tokens& token = look::tokens();
    const bool chosen = option.state & QStyle::State_Selected;
    painter->save();
    if (chosen) {
        painter->fillRect(option.rect, token.accentsoft);
        painter->fillRect(QRect(option.rect.topLeft(), QSize(3, option.rect.height())), token.accent);
    } else if (option.state & QStyle::State_MouseOver) {
        painter->fillRect(option.rect, token.ground);
    }
    QRect room = option.rect.adjusted(look::spaceBase, 0, -look::spaceBase, 0);
    painter->setPen(token.textquiet);
    drawAtTheRight(painter, room, index.data(Qt::UserRole).toString(), look::numbers(kFigures));
    if (index.data(ownRole).toBool()) {
        drawAtTheRight(painter, room, QStringLiteral("this program"), look::caption());
    }
    const QFont font = chosen ? look::strong(look::body()) : look::body();
    painter->setFont(font);
    painter->setPen(token.text);
    const QString name = index.data().toString();
    painter->drawText(room, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                      QFontMetrics(font).elidedText(name, Qt::ElideRight, room.width()));
    painter->restore();
}

QSize ProcessDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    Q_UNUSED(option)
    Q_UNUSED(index)
    return {0, look::scaled(kRowHeight)};
}

} // namespace benthor::firmware
