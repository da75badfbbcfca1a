#include "viewer/screens/samplekeys.h"

#include "platform/chart/chart.h"

#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QTextEdit>

#include <optional>

namespace benthor::viewer {

namespace {

std::optional<SampleStep> stepOf(const QKeyEvent& key) {
    if ((key.modifiers() & ~Qt::KeypadModifier) != 0) {
        return std::nullopt;
    }
    switch (key.key()) {
    case Qt::Key_Left:
    case Qt::Key_Up:
        return SampleStep::Back;
    case Qt::Key_Right:
    case Qt::Key_Down:
        return SampleStep::On;
    case Qt::Key_PageUp:
        return SampleStep::PageBack;
    case Qt::Key_PageDown:
        return SampleStep::PageOn;
    case Qt::Key_Home:
        return SampleStep::First;
    case Qt::Key_End:
        return SampleStep::Last;
    default:
        return std::nullopt;
    }
}

template <class... Kinds> bool isOneOf(const QWidget* widget) {
    return ((qobject_cast<const Kinds*>(widget) != nullptr) || ...);
}

/// Whether the focus reason tells a way that the user took; a window that comes to the front does not.
bool isOwnWay(Qt::FocusReason reason) {
    return reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason &&
           reason != Qt::MenuBarFocusReason;
}

} // namespace

SampleKeys::SampleKeys(QWidget* window)
    : QObject(window)
    , window_(window) {
    window->installEventFilter(this);
    for (QWidget* child : window->findChildren<QWidget*>()) {
        child->installEventFilter(this);
    }
}

bool SampleKeys::isKept() const {
    if (QApplication::activePopupWidget() != nullptr) {
        return true;
    }
    const QWidget* focus = window_->focusWidget();
    if (focus == nullptr) {
        return false;
    }
    return isOneOf<QAbstractItemView, QAbstractSlider, QAbstractSpinBox, QComboBox, QLineEdit, QTextEdit,
                   QPlainTextEdit, QMenu, QMenuBar>(focus) ||
           (byTab_ && !isOneOf<platform::Chart>(focus));
}

bool SampleKeys::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn) {
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (isOwnWay(reason)) {
            byTab_ = reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason;
        }
    } else if (event->type() == QEvent::KeyPress) {
        const std::optional<SampleStep> step = stepOf(*static_cast<QKeyEvent*>(event));
        if (step && !isKept()) {
            emit walked(*step);
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}

} // namespace benthor::viewer
