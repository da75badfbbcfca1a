#pragma once

#include <QMouseEvent>
#include <QRect>

namespace benthor::look {

/// A left click of a widget that is no button: pressed on it, and released inside.
class LeftClick {
public:
    /// Takes the press; one of another button is left to what lies beneath.
    void press(QMouseEvent* event) {
        pressed_ = event->button() == Qt::LeftButton;
        event->setAccepted(pressed_);
    }

    /// Takes the release. Whether it ends a click within `area`.
    bool release(QMouseEvent* event, const QRect& area) {
        const bool click =
            pressed_ && event->button() == Qt::LeftButton && area.contains(event->position().toPoint());
        pressed_ = false;
        event->accept();
        return click;
    }

private:
    bool pressed_ = false;
};

} // namespace benthor::look
