#include "platform/look/style/paint.h"

#include "platform/look/type.h"

#include <QAction>
#include <QPainter>
#include <QStyleOption>

namespace benthor::look {

namespace {

void drawSeparator(QPainter* painter, const QStyleOptionMenuItem& option) {
    const int y = option.rect.center().y();
    int left = option.rect.left() + spaceSmall;
    if (!option.text.isEmpty()) {
        painter->setFont(caption());
        painter->setPen(tokens().textquiet);
        painter->drawText(option.rect.adjusted(spaceBase, 0, 0, 0), Qt::AlignVCenter | Qt::AlignLeft,
                          option.text);
        left += spaceSmall + painter->fontMetrics().horizontalAdvance(option.text);
    }
    painter->setPen(tokens().line);
    painter->drawLine(left, y, option.rect.right() - spaceSmall, y);
}

/// The mark in front of an entry: its check mark, else its icon.
void drawLead(QPainter* painter, const QStyleOptionMenuItem& option, const QRect& rect, const QColor& ink) {
    const bool enabled = option.state & QStyle::State_Enabled;
    if (option.checkType != QStyleOptionMenuItem::NotCheckable) {
        if (option.checked) {
            drawIcon(painter, QStringLiteral("check"), rect, scaled(16), ink);
        }
    } else if (!option.icon.isNull()) {
        drawIcon(painter, option.icon, rect, scaled(18), ink, enabled);
    }
}

} // namespace

void drawMenuItem(QPainter* painter, const QStyleOptionMenuItem& option) {
    painter->save();
    if (option.menuItemType == QStyleOptionMenuItem::Separator) {
        drawSeparator(painter, option);
        painter->restore();
        return;
    }
    const Tokens& token = tokens();
    const bool enabled = option.state & QStyle::State_Enabled;
    const bool chosen = option.state & QStyle::State_Selected;
    if (chosen) {
        drawPanel(painter, option.rect.adjusted(spaceTight, 1, -spaceTight, -1),
                  enabled ? token.accentsoft : token.sunken, QColor(), 4);
    }
    const QColor ink = enabled ? token.text : faintInk();
    const int lead = scaled(34);
    QRect text = option.rect.adjusted(lead, 0, -scaled(14), 0);
    drawLead(painter, option, QRect(option.rect.left(), option.rect.top(), lead, option.rect.height()), ink);
    if (option.menuItemType == QStyleOptionMenuItem::SubMenu) {
        drawIcon(painter, QStringLiteral("chevron-right"),
                 QRect(text.right() - scaled(12), text.top(), scaled(20), text.height()), scaled(14), ink);
    }
    const QStringList parts = option.text.split(u'\t');
    painter->setPen(ink);
    painter->setFont(option.menuItemType == QStyleOptionMenuItem::DefaultItem ? strong(option.font)
                                                                              : option.font);
    const int flags = Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextShowMnemonic;
    painter->drawText(text, flags | Qt::AlignLeft, parts.first());
    if (parts.size() > 1) {
        painter->setPen(enabled ? token.textquiet : faintInk());
        painter->drawText(text, flags | Qt::AlignRight, parts.at(1));
    }
    painter->restore();
}

void drawMenuBarItem(QPainter* painter, const QStyleOptionMenuItem& option) {
    const Tokens& token = tokens();
    painter->fillRect(option.rect, token.surface);
    painter->setPen(token.line);
    painter->drawLine(option.rect.bottomLeft(), option.rect.bottomRight());
    const bool enabled = option.state & QStyle::State_Enabled;
    if (enabled && (option.state & QStyle::State_Selected)) {
        drawPanel(painter, option.rect.adjusted(1, 3, -1, -4), token.accentsoft, QColor(), 4);
    }
    painter->setPen(enabled ? token.text : faintInk());
    painter->drawText(option.rect.adjusted(0, 0, 0, -1),
                      Qt::AlignCenter | Qt::TextSingleLine | Qt::TextShowMnemonic, option.text);
}

} // namespace benthor::look
