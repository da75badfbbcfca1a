#include "platform/look/style/lookstyle.h"

#include "platform/look/style/paint.h"
#include "platform/look/type.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QStyleOption>

namespace benthor::look {

namespace {

QString chevronOf(QStyle::PrimitiveElement element) {
    switch (element) {
    case QStyle::PE_IndicatorArrowUp:
    case QStyle::PE_IndicatorSpinUp:
        return QStringLiteral("chevron-up");
    case QStyle::PE_IndicatorArrowLeft:
        return QStringLiteral("chevron-left");
    case QStyle::PE_IndicatorArrowRight:
        return QStringLiteral("chevron-right");
    default:
        return QStringLiteral("chevron-down");
    }
}

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

/// A line edit inside a spin box or combo box has the panel of what it stands in.
bool isInner(const QWidget* widget) {
    const QWidget* parent = widget ? widget->parentWidget() : nullptr;
    return qobject_cast<const QLineEdit*>(widget) &&
           (qobject_cast<const QAbstractSpinBox*>(parent) || qobject_cast<const QComboBox*>(parent));
}

} // namespace

void LookStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
    const Tokens& token = tokens();
    switch (element) {
    case PE_PanelButtonCommand:
        drawButtonBevel(painter, *option, widget);
        return;
    case PE_PanelButtonTool:
        if (option->state & (State_MouseOver | State_Sunken | State_On)) {
            drawPanel(painter, option->rect, (option->state & State_On) ? token.accentsoft : token.sunken,
                      QColor());
        }
        return;
    case PE_FrameDefaultButton:
    case PE_PanelScrollAreaCorner:
    case PE_FrameTabBarBase:
    case PE_FrameButtonTool:
    case PE_FrameStatusBarItem:
    case PE_FrameGroupBox:        // a group is parted by its title and by room
    case PE_IndicatorHeaderArrow: // stands right behind the head's words, see drawHeaderLabel
        return;
    case PE_IndicatorCheckBox:
    case PE_IndicatorItemViewItemCheck:
        drawCheckMark(painter, option->rect, *option, false);
        return;
    case PE_IndicatorRadioButton:
        drawCheckMark(painter, option->rect, *option, true);
        return;
    case PE_PanelLineEdit:
        if (!isInner(widget)) {
            drawField(painter, *option);
        }
        return;
    case PE_FrameLineEdit:
        return;
    case PE_Frame:
        drawPanel(painter, option->rect, QColor(),
                  (option->state & State_HasFocus) ? token.accent : token.line, 4,
                  (option->state & State_HasFocus) ? focusWidth : 1);
        return;
    case PE_FrameTabWidget:
        painter->fillRect(QRect(option->rect.x(), option->rect.y(), option->rect.width(), 1), token.line);
        return;
    case PE_FrameFocusRect:
        drawFocusRing(painter, option->rect, 4);
        return;
    case PE_PanelMenu:
        painter->fillRect(option->rect, token.surface);
        return;
    case PE_FrameMenu:
    case PE_PanelTipLabel:
        drawPanel(painter, option->rect, element == PE_FrameMenu ? QColor() : token.surface, token.edge, 0);
        return;
    case PE_PanelMenuBar:
        painter->fillRect(option->rect, token.surface);
        return;
    case PE_IndicatorArrowUp:
    case PE_IndicatorArrowDown:
    case PE_IndicatorArrowLeft:
    case PE_IndicatorArrowRight:
    case PE_IndicatorSpinUp:
    case PE_IndicatorSpinDown:
        drawIcon(painter, chevronOf(element), option->rect, scaled(14),
                 (option->state & State_Enabled) ? token.text : faintInk());
        return;
    default:
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void LookStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                            const QWidget* widget) const {
    const Tokens& token = tokens();
    if (const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option)) {
        if (element == CE_CheckBox || element == CE_RadioButton) {
            drawCheckControl(*button, element == CE_RadioButton, painter, widget);
            return;
        }
        if (element == CE_PushButtonBevel) {
            drawButtonBevel(painter, *option, widget);
            return;
        }
        if (element == CE_PushButtonLabel) {
            drawButtonLabel(*button, painter, widget);
            return;
        }
        if (element == CE_PushButton) {
            drawButtonBevel(painter, *option, widget);
            drawButtonLabel(*button, painter, widget);
            return;
        }
    }
    if (const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option)) {
        if (element == CE_MenuItem) {
            drawMenuItem(painter, *item, widget);
            return;
        }
        if (element == CE_MenuBarItem) {
            drawMenuBarItem(painter, *item);
            return;
        }
    }
    if (element == CE_MenuBarEmptyArea) {
        painter->fillRect(option->rect, token.surface);
        painter->setPen(token.line);
        painter->drawLine(option->rect.bottomLeft(), option->rect.bottomRight());
        return;
    }
    if (const auto* header = qstyleoption_cast<const QStyleOptionHeader*>(option)) {
        if (element == CE_HeaderSection) {
            drawHeaderGround(painter, *header);
            return;
        }
        if (element == CE_HeaderLabel) {
            drawHeaderLabel(*header, painter, widget);
            return;
        }
    }
    if (element == CE_HeaderEmptyArea) {
        painter->fillRect(option->rect, option->palette.color(QPalette::Window));
        painter->setPen(token.line);
        painter->drawLine(option->rect.bottomLeft(), option->rect.bottomRight());
        return;
    }
    if (const auto* tab = qstyleoption_cast<const QStyleOptionTab*>(option)) {
        if (element == CE_TabBarTabShape) {
            drawTab(painter, *tab);
            return;
        }
        if (element == CE_TabBarTabLabel) {
            drawTabLabel(*tab, painter, widget);
            return;
        }
    }
    if (const auto* progress = qstyleoption_cast<const QStyleOptionProgressBar*>(option)) {
        if (element == CE_ProgressBar || element == CE_ProgressBarContents) {
            drawProgressBar(painter, *progress);
        }
        return; // how far it is stands in words beside the bar
    }
    if (element == CE_Splitter) {
        const bool over = option->state & State_MouseOver;
        QRect grip(0, 0, option->rect.width() > option->rect.height() ? 32 : 2,
                   option->rect.width() > option->rect.height() ? 2 : 32);
        grip.moveCenter(option->rect.center());
        drawPanel(painter, grip, over ? token.accent : token.edge, QColor(), 1);
        return;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

void LookStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                   QPainter* painter, const QWidget* widget) const {
    if (const auto* slider = qstyleoption_cast<const QStyleOptionSlider*>(option)) {
        if (control == CC_ScrollBar) {
            drawScrollBar(painter, *slider, scrollBarRect(*slider, SC_ScrollBarSlider));
            return;
        }
        if (control == CC_Slider) {
            drawSlider(painter, *slider, sliderRect(*slider, SC_SliderGroove),
                       sliderRect(*slider, SC_SliderHandle));
            return;
        }
    }
    if (const auto* box = qstyleoption_cast<const QStyleOptionComboBox*>(option);
        box && control == CC_ComboBox) {
        drawComboBox(*box, painter, widget);
        return;
    }
    if (const auto* box = qstyleoption_cast<const QStyleOptionSpinBox*>(option);
        box && control == CC_SpinBox) {
        drawSpinBox(*box, painter, widget);
        return;
    }
    if (const auto* box = qstyleoption_cast<const QStyleOptionGroupBox*>(option);
        box && control == CC_GroupBox && !(box->subControls & SC_GroupBoxCheckBox)) {
        painter->save();
        painter->setFont(strong(body()));
        painter->setPen((box->state & State_Enabled) ? tokens().textquiet : faintInk());
        painter->drawText(box->rect.adjusted(0, 2, 0, 0), Qt::AlignLeft | Qt::AlignTop | Qt::TextShowMnemonic,
                          box->text);
        painter->restore();
        return;
    }
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

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

void LookStyle::drawComboBox(const QStyleOptionComboBox& option, QPainter* painter,
                             const QWidget* widget) const {
    Q_UNUSED(widget)
    QStyleOption field = option;
    field.state &= ~State_ReadOnly;
    drawField(painter, field);
    drawIcon(painter, QStringLiteral("chevron-down"),
             visualRect(option.direction, option.rect, comboBoxRect(option, SC_ComboBoxArrow)), scaled(14),
             (option.state & State_Enabled) ? option.palette.color(QPalette::Text) : faintInk());
}

void LookStyle::drawSpinBox(const QStyleOptionSpinBox& option, QPainter* painter,
                            const QWidget* widget) const {
    Q_UNUSED(widget)
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

void LookStyle::drawHeaderLabel(const QStyleOptionHeader& option, QPainter* painter,
                                const QWidget* widget) const {
    Q_UNUSED(widget)
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

void LookStyle::drawTabLabel(const QStyleOptionTab& option, QPainter* painter, const QWidget* widget) const {
    Q_UNUSED(widget)
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
