#pragma once

#include <QCoreApplication>
#include <QEvent>
#include <QWidget>
#include <QWindow>

namespace benthor::platform {

/// Keeps input from every window but one, for as long as it lives.
class OneWindowInput : public QObject {
public:
    explicit OneWindowInput(QWidget* window)
        : window_(window) {
        QCoreApplication::instance()->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (!event->isInputEvent() && event->type() != QEvent::Shortcut && event->type() != QEvent::Close) {
            return false;
        }
        auto* widget = qobject_cast<QWidget*>(watched);
        return watched != window_->windowHandle() && (widget == nullptr || widget->window() != window_);
    }

private:
    QWidget* window_;
};

} // namespace benthor::platform
