#include "platform/look/style/lookstyle.h"

#include "platform/look/style/paint.h"
#include "platform/look/type.h"

#include <QAbstractSpinBox>
#include <QPainter>
#include <QStyleOption>

namespace benthor::look {

namespace {

/// Up where the first row is the smallest: the toolkit calls that order SortDown.
void drawSortArrow(QPainter* painter, const QRect& rect, bool up, const QColor& colour) {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(colour);
    const QPointF centre = QRectF(rect).center();
    const double half = scaled(8) / 2.0;
    const double tip = scaled(5) / (up ? -2.0 : 2.0);
    painter->drawPolygon(
        QPolygonF({centre + QPointF(-half, -tip), centre + QPointF(half, -tip), centre + QPointF(0, tip)}));
    painter->restore();
}

} // namespace

void LookStyle::drawButtonLabel(const QStyleOptionButton& option, QPainter* painter,
                                const QWidget* widget) const {
    const QColor ink = buttonInk(option, widget);
    const bool enabled = option.state & State_Enabled;
    const int side = option.icon.isNull() ? 0 : option.iconSize.width();
    QRect room = option.rect;
    if (option.features & QStyleOptionButton::HasMenu) {
        const QRect arrow(room.right() - scaled(24), room.y(), scaled(20), room.height());
        drawIcon(painter, QStringLiteral("chevron-down"), arrow, scaled(14), ink);
        room.setRight(arrow.left());
    }
    if (option.text.isEmpty()) {
        if (side > 0) {
            drawIcon(painter, option.icon, room, side, ink, enabled);
        }
        return;
    }
    painter->save();
    if (flagged(widget, "primary")) {
        painter->setFont(strong(painter->font()));
    }
    const int flags = Qt::TextShowMnemonic |
                      (styleHint(SH_UnderlineShortcut, &option, widget, nullptr) ? 0 : Qt::TextHideMnemonic);
    const int text = painter->fontMetrics().size(flags, option.text).width();
    const int whole = std::min(text + (side > 0 ? side + spaceSmall : 0), room.width());
    int left = room.x() + (room.width() - whole) / 2;
    if (side > 0) {
        const QRect place = visualRect(option.direction, room, QRect(left, room.y(), side, room.height()));
        drawIcon(painter, option.icon, place, side, ink, enabled);
        left += side + spaceSmall;
    }
    painter->setPen(ink);
    const QRect place = visualRect(option.direction, room, QRect(left, room.y(), text, room.height()));
    painter->drawText(place, flags | Qt::AlignVCenter | Qt::AlignHCenter, option.text);
    painter->restore();
}

void LookStyle::drawCheckControl(const QStyleOptionButton& option, bool round, QPainter* painter,
                                 const QWidget* widget) const {
    QStyleOptionButton part = option;
    part.rect = subElementRect(round ? SE_RadioButtonIndicator : SE_CheckBoxIndicator, &option, widget);
    drawCheckMark(painter, part.rect, part, round);
    part.rect = subElementRect(round ? SE_RadioButtonContents : SE_CheckBoxContents, &option, widget);
    drawControl(round ? CE_RadioButtonLabel : CE_CheckBoxLabel, &part, painter, widget);
    if (option.state & State_HasFocus) {
        const QRect ring =
            subElementRect(round ? SE_RadioButtonFocusRect : SE_CheckBoxFocusRect, &option, widget);
        drawFocusRing(painter, ring, round && option.text.isEmpty() ? ring.height() / 2.0 : 5);
    }
}

void LookStyle::drawComboBox(const QStyleOptionComboBox& option, QPainter* painter) const {
    QStyleOption field = option;
    field.state &= ~State_ReadOnly;
    drawField(painter, field);
    drawIcon(painter, QStringLiteral("chevron-down"),
             visualRect(option.direction, option.rect, comboBoxRect(option, SC_ComboBoxArrow)), scaled(14),
             (option.state & State_Enabled) ? option.palette.color(QPalette::Text) : faintInk());
}

void LookStyle::drawSpinBox(const QStyleOptionSpinBox& option, QPainter* painter) const {
    drawField(painter, option);
    if (option.buttonSymbols == QAbstractSpinBox::NoButtons) {
        return;
    }
    for (const SubControl part : {SC_SpinBoxUp, SC_SpinBoxDown}) {
        const bool up = part == SC_SpinBoxUp;
        const bool works =
            (option.state & State_Enabled) &&
            (option.stepEnabled & (up ? QAbstractSpinBox::StepUpEnabled : QAbstractSpinBox::StepDownEnabled));
        const QRect place = visualRect(option.direction, option.rect, spinBoxRect(option, part));
        const bool over = works && (option.state & State_MouseOver) && (option.activeSubControls & part);
        drawIcon(painter, up ? QStringLiteral("chevron-up") : QStringLiteral("chevron-down"),
                 place.adjusted(0, up ? 3 : -1, 0, up ? 1 : -3), scaled(12),
                 works ? (over ? tokens().accent : tokens().text) : faintInk());
    }
}

void LookStyle::drawHeaderLabel(const QStyleOptionHeader& option, QPainter* painter) const {
    const bool sorted = option.sortIndicator != QStyleOptionHeader::None;
    QRect room = option.rect;
    painter->save();
    painter->setFont(sorted ? strong(caption()) : caption());
    if (sorted) {
        const int width =
            std::min(room.width(), painter->fontMetrics().horizontalAdvance(option.text) + scaled(14));
        const bool right = option.textAlignment & Qt::AlignRight;
        const int end = right ? room.right() + 1 : room.left() + width;
        const QRect arrow(end - scaled(10), room.y(), scaled(10), room.height());
        drawSortArrow(painter, arrow, option.sortIndicator == QStyleOptionHeader::SortDown, tokens().text);
        room.setRight(arrow.left() - scaled(4));
    }
    const QColor told = option.palette.color(QPalette::ButtonText);
    painter->setPen(sorted || told != tokens().text ? told : tokens().textquiet);
    painter->drawText(room, static_cast<int>(option.textAlignment) | Qt::TextWordWrap, option.text);
    painter->restore();
}

void LookStyle::drawTabLabel(const QStyleOptionTab& option, QPainter* painter) const {
    const bool chosen = option.state & State_Selected;
    const bool enabled = option.state & State_Enabled;
    painter->save();
    if (chosen) {
        painter->setFont(strong(painter->font()));
    }
    painter->setPen(enabled ? (chosen ? tokens().accent : tokens().textquiet) : faintInk());
    painter->drawText(option.rect, Qt::AlignCenter | Qt::TextShowMnemonic, option.text);
    painter->restore();
}

} // namespace benthor::look
