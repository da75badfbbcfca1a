#include "platform/look/access/houseaccess.h"

#include "platform/look/access/access.h"
#include "platform/look/access/access_p.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QFocusFrame>
#include <QMenu>
#include <QPointer>

namespace benthor::look {

namespace {

/// Whether something that covers its parent lies over the widget or over what it lies in.
bool isCovered(const QWidget* widget) {
    for (const QWidget* inner = widget; !inner->isWindow() && inner->parentWidget() != nullptr;
         inner = inner->parentWidget()) {
        const auto cover = inner->parentWidget()->property(kReaderCover).value<QPointer<QWidget>>();
        if (!cover.isNull() && cover != inner && !cover->isHidden()) {
            return true;
        }
    }
    return false;
}

} // namespace

QString withoutMark(const QString& text) {
    QString plain;
    plain.reserve(text.size());
    for (qsizetype at = 0; at < text.size(); ++at) {
        if (text.at(at) == u'&' && at + 1 < text.size()) {
            ++at;
        }
        plain += text.at(at);
    }
    return plain;
}

HouseAccess::HouseAccess(QWidget* widget, QAccessible::Role role)
    : QAccessibleWidget(widget, role) {}

bool HouseAccess::isDecoration() const {
    return isHiddenFromReaders(widget()) || isCovered(widget()) || isBlank();
}

/// A line, a gap, a coloured field: nothing that could be told.
bool HouseAccess::isBlank() const {
    const QVariant told = widget()->property(kReaderRole);
    return !told.isValid() && widget()->focusPolicy() == Qt::NoFocus && !widget()->isWindow() &&
           widget()->accessibleName().isEmpty() && widget()->accessibleDescription().isEmpty() &&
           parts().isEmpty();
}

QList<QWidget*> HouseAccess::parts() const {
    QList<QWidget*> parts;
    for (QObject* object : widget()->children()) {
        auto* part = qobject_cast<QWidget*>(object);
        if (part == nullptr || part->isWindow() || qobject_cast<QFocusFrame*>(part) != nullptr ||
            qobject_cast<QMenu*>(part) != nullptr || isHiddenFromReaders(part)) {
            continue;
        }
        parts += part;
    }
    return parts;
}

int HouseAccess::childCount() const {
    return static_cast<int>(parts().size());
}

QAccessibleInterface* HouseAccess::child(int index) const {
    return QAccessible::queryAccessibleInterface(parts().value(index));
}

int HouseAccess::indexOfChild(const QAccessibleInterface* child) const {
    return child == nullptr ? -1 : static_cast<int>(parts().indexOf(qobject_cast<QWidget*>(child->object())));
}

QAccessible::Role HouseAccess::role() const {
    if (isDecoration()) {
        return QAccessible::NoRole;
    }
    const QVariant told = widget()->property(kReaderRole);
    if (told.isValid()) {
        return static_cast<QAccessible::Role>(told.toInt());
    }
    const QAccessible::Role own = QAccessibleWidget::role();
    return own == QAccessible::Client && widget()->isWindow() ? QAccessible::Window : own;
}

QAccessible::State HouseAccess::state() const {
    QAccessible::State state = QAccessibleWidget::state();
    if (isDecoration()) {
        state.invisible = true;
    }
    return state;
}

QString HouseAccess::text(QAccessible::Text text) const {
    if (text == QAccessible::Value) {
        const std::optional<Reading> reading = readingOf(widget());
        return reading ? reading->words : QString();
    }
    return QAccessibleWidget::text(text);
}

void* HouseAccess::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::ValueInterface) {
        return readingOf(widget()) ? static_cast<QAccessibleValueInterface*>(this) : nullptr;
    }
    return QAccessibleWidget::interface_cast(type);
}

QStringList HouseAccess::actionNames() const {
    QStringList names = QAccessibleWidget::actionNames();
    const QStringList own = actsOf(widget());
    return widget()->isEnabled() ? own + names : names;
}

void HouseAccess::doAction(const QString& action) {
    if (!widget()->isEnabled() || !actFor(widget(), action)) {
        QAccessibleWidget::doAction(action);
        return;
    }
    // A reader waits for the answer, and the act may bring up a box.
    QMetaObject::invokeMethod(
        widget(),
        [widget = QPointer<QWidget>(widget()), action] {
            if (const auto act = widget ? actFor(widget, action) : nullptr) {
                act();
            }
        },
        Qt::QueuedConnection);
}

QVariant HouseAccess::currentValue() const {
    return readingOf(widget()).value_or(Reading()).value;
}

QVariant HouseAccess::maximumValue() const {
    return readingOf(widget()).value_or(Reading()).most;
}

QVariant HouseAccess::minimumValue() const {
    return readingOf(widget()).value_or(Reading()).least;
}

QVariant HouseAccess::minimumStepSize() const {
    return 0.0;
}

void HouseAccess::setCurrentValue(const QVariant&) {} // an instrument is read

ButtonAccess::ButtonAccess(QWidget* button)
    : HouseAccess(button, QAccessible::Button) {}

QAccessible::Role ButtonAccess::role() const {
    const auto* button = qobject_cast<const QAbstractButton*>(object());
    const QAccessible::Role role = HouseAccess::role();
    if (role != QAccessible::Button || !button->isCheckable()) {
        return role;
    }
    return button->group() != nullptr && button->group()->exclusive() ? QAccessible::RadioButton
                                                                      : QAccessible::Button;
}

QAccessible::State ButtonAccess::state() const {
    QAccessible::State state = HouseAccess::state();
    const auto* button = qobject_cast<const QAbstractButton*>(object());
    state.checkable = button->isCheckable();
    state.checked = button->isChecked();
    state.pressed = button->isDown();
    const QVariant open = button->property(kReaderOpen);
    state.expandable = open.isValid();
    state.expanded = open.toBool();
    state.collapsed = open.isValid() && !open.toBool();
    return state;
}

QString ButtonAccess::text(QAccessible::Text text) const {
    const auto* button = qobject_cast<const QAbstractButton*>(object());
    const QString told = HouseAccess::text(text);
    if (text == QAccessible::Name && told.isEmpty()) {
        const QString words = withoutMark(button->text()).trimmed();
        return words.isEmpty() ? button->toolTip() : words;
    }
    return told;
}

QStringList ButtonAccess::actionNames() const {
    const QStringList names = HouseAccess::actionNames();
    const auto* button = qobject_cast<const QAbstractButton*>(object());
    if (!button->isEnabled()) {
        return names;
    }
    return QStringList(button->isCheckable() ? toggleAction() : pressAction()) + names;
}

void ButtonAccess::doAction(const QString& action) {
    if ((action != pressAction() && action != toggleAction()) || !widget()->isEnabled()) {
        HouseAccess::doAction(action);
        return;
    }
    auto* button = qobject_cast<QAbstractButton*>(object());
    QMetaObject::invokeMethod(button, &QAbstractButton::click, Qt::QueuedConnection);
}

/// There is always something to press.
bool ButtonAccess::isBlank() const {
    return false;
}

NoteAccess::NoteAccess(QWidget* note)
    : HouseAccess(note, QAccessible::Notification) {}

QAccessible::State NoteAccess::state() const {
    QAccessible::State state = HouseAccess::state();
    const QWidget* window = widget()->window();
    state.invisible = !window->isVisible() || window->property(kReaderLastNote).value<QWidget*>() != widget();
    state.offscreen = false;
    state.focusable = false;
    state.readOnly = true;
    return state;
}

bool NoteAccess::isBlank() const {
    return false;
}

QString NoteAccess::text(QAccessible::Text text) const {
    return text == QAccessible::Name ? widget()->property(kReaderNote).toString() : QString();
}

QRect NoteAccess::rect() const {
    return {widget()->window()->mapToGlobal(QPoint()), QSize(1, 1)};
}

} // namespace benthor::look
