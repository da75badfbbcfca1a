#include "platform/look/style/lookstyle.h"

#include "platform/look/style/paint.h"
#include "platform/look/type.h"

#include <QPushButton>
#include <QStyleOption>

namespace benthor::look {

namespace {

constexpr int gapBehindIcon = 8;

QSize buttonSize(const QStyleOptionButton& option, const QWidget* widget) {
    const int height = scaledRow(flagged(widget, "big") ? 40 : 32);
    if (option.text.isEmpty()) {
        return {height, height};
    }
    const bool heavy = flagged(widget, "primary");
    const QFontMetrics metrics(heavy ? strong(widget->font()) : (widget ? widget->font() : body()));
    int width = metrics.size(Qt::TextShowMnemonic, option.text).width() + 26;
    if (!option.icon.isNull()) {
        width += option.iconSize.width() + gapBehindIcon;
    }
    if (option.features & QStyleOptionButton::HasMenu) {
        width += scaled(20);
    }
    return {width, std::max(height, metrics.size(Qt::TextShowMnemonic, option.text).height() + 12)};
}

QSize menuItemSize(const QStyleOptionMenuItem& option) {
    if (option.menuItemType == QStyleOptionMenuItem::Separator) {
        return {10, option.text.isEmpty() ? 9 : scaled(24)};
    }
    const QFontMetrics metrics(option.font);
    const QStringList parts = option.text.split(u'\t');
    int width =
        scaled(34 + 30) + metrics.size(Qt::TextSingleLine | Qt::TextShowMnemonic, parts.first()).width();
    if (parts.size() > 1) {
        width += scaled(32) + metrics.horizontalAdvance(parts.at(1));
    }
    return {width, scaledRow(30)};
}

QRect square(const QRect& in, int side) {
    return {in.x() + (in.width() - side) / 2, in.y() + (in.height() - side) / 2, side, side};
}

/// The box of a check box without words stands off the edge, so that its ring has room.
QRect lonelyBox(const QStyleOptionButton& option) {
    constexpr int ringRoom = 3;
    QRect box = square(option.rect, scaled(18));
    box.moveLeft(option.rect.left() + std::clamp((option.rect.width() - box.width()) / 2, 0, ringRoom));
    return QStyle::visualRect(option.direction, option.rect, box);
}

QRect ringOfCheck(const QStyleOptionButton& option, const QRect& contents) {
    if (option.text.isEmpty()) {
        return lonelyBox(option).adjusted(-3, -3, 3, 3);
    }
    const int width = option.fontMetrics.size(Qt::TextShowMnemonic, option.text).width();
    QRect text = contents;
    text.setWidth(std::min(width, contents.width()));
    text = QStyle::visualRect(option.direction, option.rect, text).adjusted(-5, 0, 5, 0);
    text.setTop(option.rect.top());
    text.setBottom(option.rect.bottom());
    return text.intersected(option.rect);
}

} // namespace

QSize LookStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                                  const QWidget* widget) const {
    const QSize usual = QProxyStyle::sizeFromContents(type, option, contents, widget);
    switch (type) {
    case CT_PushButton:
        if (const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option)) {
            return buttonSize(*button, widget);
        }
        return usual;
    case CT_CheckBox:
    case CT_RadioButton:
        if (const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
            button && button->text.isEmpty()) {
            return {scaled(24), scaled(24)};
        }
        return {usual.width() + 5, std::max(usual.height(), scaled(24))};
    case CT_LineEdit:
        return {usual.width() + 8, std::max(usual.height(), scaledRow(32))};
    case CT_ComboBox:
        return {usual.width() + scaled(12), scaledRow(32)};
    case CT_SpinBox:
        return {usual.width() + scaled(10), scaledRow(32)};
    case CT_MenuItem:
        if (const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option)) {
            return menuItemSize(*item);
        }
        return usual;
    case CT_MenuBarItem:
        return {contents.width() + 20, scaledRow(28)};
    case CT_ProgressBar:
        return {usual.width(), scaled(12)};
    case CT_TabBarTab:
        return {usual.width() + scaled(6), std::max(usual.height(), scaledRow(34))};
    default:
        return usual;
    }
}

QRect LookStyle::subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const {
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
    switch (element) {
    case SE_CheckBoxIndicator:
    case SE_RadioButtonIndicator:
        if (button && button->text.isEmpty() && button->icon.isNull()) {
            return lonelyBox(*button);
        }
        break;
    case SE_CheckBoxFocusRect:
        if (button) {
            return ringOfCheck(*button, subElementRect(SE_CheckBoxContents, option, widget));
        }
        break;
    case SE_RadioButtonFocusRect:
        if (button) {
            return ringOfCheck(*button, subElementRect(SE_RadioButtonContents, option, widget));
        }
        break;
    case SE_PushButtonFocusRect:
        return option->rect;
    case SE_ProgressBarGroove:
    case SE_ProgressBarContents:
        return option->rect;
    case SE_LineEditContents:
        if (isLabelBox(*option, widget)) {
            return option->rect;
        }
        return option->rect.adjusted(6, 2, -6, -2);
    case SE_HeaderLabel:
        return option->rect.adjusted(5, 2, -5, -2);
    default:
        break;
    }
    return QProxyStyle::subElementRect(element, option, widget);
}

QRect LookStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                                const QWidget* widget) const {
    if (control == CC_ScrollBar || control == CC_Slider) {
        if (const auto* slider = qstyleoption_cast<const QStyleOptionSlider*>(option)) {
            return control == CC_ScrollBar ? scrollBarRect(*slider, part) : sliderRect(*slider, part);
        }
    }
    if (control == CC_ComboBox) {
        if (const auto* box = qstyleoption_cast<const QStyleOptionComboBox*>(option)) {
            return visualRect(option->direction, option->rect, comboBoxRect(*box, part));
        }
    }
    if (control == CC_SpinBox) {
        if (const auto* box = qstyleoption_cast<const QStyleOptionSpinBox*>(option)) {
            return visualRect(option->direction, option->rect, spinBoxRect(*box, part));
        }
    }
    return QProxyStyle::subControlRect(control, option, part, widget);
}

QRect LookStyle::scrollBarRect(const QStyleOptionSlider& option, SubControl part) const {
    const bool across = option.orientation == Qt::Horizontal;
    const int length = across ? option.rect.width() : option.rect.height();
    const int breadth = across ? option.rect.height() : option.rect.width();
    const double span = static_cast<double>(option.maximum) - option.minimum;
    int bar = length;
    if (span > 0) {
        bar = static_cast<int>(length * (option.pageStep / (span + option.pageStep)));
        bar = std::clamp(bar, std::min(length, pixelMetric(PM_ScrollBarSliderMin, nullptr, nullptr)), length);
    }
    const int start = sliderPositionFromValue(option.minimum, option.maximum, option.sliderPosition,
                                              length - bar, option.upsideDown);
    const auto along = [&](int from, int extent) {
        return across ? QRect(option.rect.x() + from, option.rect.y(), extent, breadth)
                      : QRect(option.rect.x(), option.rect.y() + from, breadth, extent);
    };
    switch (part) {
    case SC_ScrollBarGroove:
        return along(0, length);
    case SC_ScrollBarSlider:
        return along(start, bar);
    case SC_ScrollBarSubPage:
        return along(0, start);
    case SC_ScrollBarAddPage:
        return along(start + bar, length - start - bar);
    default:
        return {};
    }
}

QRect LookStyle::sliderRect(const QStyleOptionSlider& option, SubControl part) const {
    const bool across = option.orientation == Qt::Horizontal;
    const int knob = scaled(20);
    if (part == SC_SliderHandle) {
        const int room = (across ? option.rect.width() : option.rect.height()) - knob;
        const int start = sliderPositionFromValue(option.minimum, option.maximum, option.sliderPosition, room,
                                                  option.upsideDown);
        const QRect middle = square(option.rect, knob);
        return across ? QRect(option.rect.x() + start, middle.y(), knob, knob)
                      : QRect(middle.x(), option.rect.y() + start, knob, knob);
    }
    if (part == SC_SliderGroove) {
        const QPoint centre = option.rect.center();
        return across ? QRect(option.rect.x(), centre.y() - 1, option.rect.width(), 4)
                      : QRect(centre.x() - 1, option.rect.y(), 4, option.rect.height());
    }
    return {};
}

QRect LookStyle::comboBoxRect(const QStyleOptionComboBox& option, SubControl part) const {
    const int arrow = scaled(28);
    switch (part) {
    case SC_ComboBoxArrow:
        return option.rect.adjusted(option.rect.width() - arrow, 0, 0, 0);
    case SC_ComboBoxEditField:
        return option.rect.adjusted(8, 2, -arrow, -2);
    default:
        return option.rect;
    }
}

QRect LookStyle::spinBoxRect(const QStyleOptionSpinBox& option, SubControl part) const {
    const int arrow = option.buttonSymbols == QAbstractSpinBox::NoButtons ? 0 : scaled(24);
    const QRect arrows = option.rect.adjusted(option.rect.width() - arrow, 0, 0, 0);
    switch (part) {
    case SC_SpinBoxUp:
        return arrows.adjusted(0, 0, 0, -arrows.height() / 2);
    case SC_SpinBoxDown:
        return arrows.adjusted(0, arrows.height() / 2, 0, 0);
    case SC_SpinBoxEditField:
        return option.rect.adjusted(2, 2, -std::max(arrow, 2), -2);
    default:
        return option.rect;
    }
}

} // namespace benthor::look
