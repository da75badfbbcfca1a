#include "platform/look/style/lookstyle.h"

#include "platform/look/style/paint.h"
#include "platform/look/type.h"

#include <QComboBox>
#include <QPainter>
#include <QPlainTextEdit>
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

void drawBand(QPainter* painter, const QRect& rect, const QColor& colour) {
    painter->fillRect(rect, colour);
    painter->setPen(tokens().line);
    painter->drawLine(rect.bottomLeft(), rect.bottomRight());
}

void drawGrip(QPainter* painter, const QStyleOption& option) {
    const bool across = option.rect.width() > option.rect.height();
    QRect grip(0, 0, across ? 32 : 2, across ? 2 : 32);
    grip.moveCenter(option.rect.center());
    drawPanel(painter, grip, (option.state & QStyle::State_MouseOver) ? tokens().accent : tokens().edge,
              QColor(), 1);
}

void drawGroupTitle(QPainter* painter, const QStyleOptionGroupBox& option) {
    painter->save();
    painter->setFont(strong(body()));
    painter->setPen((option.state & QStyle::State_Enabled) ? tokens().textquiet : faintInk());
    painter->drawText(option.rect.adjusted(0, 2, 0, 0), Qt::AlignLeft | Qt::AlignTop | Qt::TextShowMnemonic,
                      option.text);
    painter->restore();
}

/// A line edit inside a spin box or combo box has the panel of what it stands in.
/// A box of lines that the user writes into, as against one that only shows some.
bool isWritable(const QWidget* widget) {
    const auto* box = qobject_cast<const QPlainTextEdit*>(widget);
    return box != nullptr && !box->isReadOnly();
}

bool isInHand(const QStyleOption& option) {
    return option.state & (QStyle::State_MouseOver | QStyle::State_HasFocus);
}

/// Menus, tips and the line below tabs.
void drawMenuPart(QStyle::PrimitiveElement element, const QRect& rect, QPainter* painter) {
    const Tokens& token = tokens();
    if (element == QStyle::PE_FrameTabWidget) {
        painter->fillRect(QRect(rect.x(), rect.y(), rect.width(), 1), token.line);
    } else if (element == QStyle::PE_FrameMenu || element == QStyle::PE_PanelTipLabel) {
        drawPanel(painter, rect, element == QStyle::PE_FrameMenu ? QColor() : token.surface, token.edge, 0);
    } else {
        painter->fillRect(rect, token.surface);
    }
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
        // A box that looks like a label shows its edge when the mouse or the keyboard comes to it.
        if (!isInnerBox(widget) && (!isLabelBox(*option, widget) || isInHand(*option))) {
            drawField(painter, *option);
        }
        return;
    case PE_FrameLineEdit:
        return;
    case PE_Frame:
        drawPanel(painter, option->rect, QColor(),
                  (option->state & State_HasFocus) ? token.accent
                                                   : (isWritable(widget) ? token.edge : token.line),
                  4, (option->state & State_HasFocus) ? focusRingWidth() : 1);
        return;
    case PE_FrameFocusRect:
        drawFocusRing(painter, option->rect, 4);
        return;
    case PE_FrameTabWidget:
    case PE_PanelMenu:
    case PE_PanelMenuBar:
    case PE_FrameMenu:
    case PE_PanelTipLabel:
        drawMenuPart(element, option->rect, painter);
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

bool LookStyle::drawButtonControl(ControlElement element, const QStyleOptionButton& option, QPainter* painter,
                                  const QWidget* widget) const {
    switch (element) {
    case CE_CheckBox:
    case CE_RadioButton:
        drawCheckControl(option, element == CE_RadioButton, painter, widget);
        return true;
    case CE_PushButton:
        drawButtonBevel(painter, option, widget);
        drawButtonLabel(option, painter, widget);
        return true;
    case CE_PushButtonBevel:
        drawButtonBevel(painter, option, widget);
        return true;
    case CE_PushButtonLabel:
        drawButtonLabel(option, painter, widget);
        return true;
    default:
        return false;
    }
}

bool LookStyle::drawBarControl(ControlElement element, const QStyleOption* option, QPainter* painter) const {
    if (const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option)) {
        if (element == CE_MenuItem) {
            drawMenuItem(painter, *item);
            return true;
        }
        if (element == CE_MenuBarItem) {
            drawMenuBarItem(painter, *item);
            return true;
        }
    }
    if (const auto* progress = qstyleoption_cast<const QStyleOptionProgressBar*>(option)) {
        if (element == CE_ProgressBar || element == CE_ProgressBarContents) {
            drawProgressBar(painter, *progress);
        }
        return true; // how far it is stands in words beside the bar
    }
    switch (element) {
    case CE_MenuBarEmptyArea:
        drawBand(painter, option->rect, tokens().surface);
        return true;
    case CE_HeaderEmptyArea:
        drawBand(painter, option->rect, option->palette.color(QPalette::Window));
        return true;
    case CE_Splitter:
        drawGrip(painter, *option);
        return true;
    default:
        return false;
    }
}

bool LookStyle::drawHeadControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                                const QWidget* widget) const {
    if (const auto* header = qstyleoption_cast<const QStyleOptionHeader*>(option)) {
        if (element == CE_HeaderSection) {
            drawHeaderGround(painter, *header, widget);
            return true;
        }
        if (element == CE_HeaderLabel) {
            drawHeaderLabel(*header, painter);
            return true;
        }
    }
    if (const auto* tab = qstyleoption_cast<const QStyleOptionTab*>(option)) {
        if (element == CE_TabBarTabShape) {
            drawTab(painter, *tab);
            return true;
        }
        if (element == CE_TabBarTabLabel) {
            drawTabLabel(*tab, painter);
            return true;
        }
    }
    return false;
}

void LookStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                            const QWidget* widget) const {
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
    const bool drawn = (button && drawButtonControl(element, *button, painter, widget)) ||
                       drawHeadControl(element, option, painter, widget) ||
                       drawBarControl(element, option, painter);
    if (!drawn) {
        QProxyStyle::drawControl(element, option, painter, widget);
    }
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
        drawComboBox(*box, painter);
        return;
    }
    if (const auto* box = qstyleoption_cast<const QStyleOptionSpinBox*>(option);
        box && control == CC_SpinBox) {
        drawSpinBox(*box, painter);
        return;
    }
    if (const auto* box = qstyleoption_cast<const QStyleOptionGroupBox*>(option);
        box && control == CC_GroupBox && !(box->subControls & SC_GroupBoxCheckBox)) {
        drawGroupTitle(painter, *box);
        return;
    }
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

} // namespace benthor::look
