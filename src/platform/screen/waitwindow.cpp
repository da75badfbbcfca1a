#include "platform/screen/waitwindow.h"

#include "platform/look/look.h"
#include "platform/screen/ticktimer.h"

#include <QCoreApplication>
#include <QEvent>
#include <QVBoxLayout>
#include <QWidget>
#include <QWindow>

namespace benthor::platform {

namespace {

/// Keeps input from every window but one, for as long as it lives.
class OneWindowInput : public QObject {
public:
    explicit OneWindowInput(QWidget& window)
        : window_(window) {
        QCoreApplication::instance()->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (!event->isInputEvent() && event->type() != QEvent::Shortcut && event->type() != QEvent::Close) {
            return false;
        }
        auto* widget = qobject_cast<QWidget*>(watched);
        return watched != window_.windowHandle() && (widget == nullptr || widget->window() != &window_);
    }

private:
    QWidget& window_;
};

} // namespace

WaitWindow::WaitWindow(const QString& name, int spacing)
    : widget_(
          std::make_unique<QWidget>(nullptr, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint)) {
    widget_->setObjectName(name);
    widget_->setWindowTitle(QStringLiteral("Benthor"));
    rows_ = new QVBoxLayout(widget_.get());
    rows_->setContentsMargins(look::spaceRoom, look::spaceRoom, look::spaceRoom, look::spaceWide);
    rows_->setSpacing(spacing);
}

WaitWindow::~WaitWindow() = default;

bool WaitWindow::isVisible() const {
    return widget_->isVisible();
}

void WaitWindow::show(bool active) {
    widget_->adjustSize();
    widget_->show();
    widget_->raise();
    if (active) {
        widget_->activateWindow();
    }
}

void WaitWindow::serve() {
    const TickHold hold;
    const OneWindowInput filter(*widget_);
    QCoreApplication::processEvents(QEventLoop::ExcludeSocketNotifiers);
}

} // namespace benthor::platform
