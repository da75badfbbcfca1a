#include "platform/screen/screen.h"

#include "platform/screen/ticktimer.h"
#include "platform/screen/windowplace.h"
#include "platform/usersettings.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QPointer>
#include <QScreen>

namespace benthor::platform {

Screen::Screen(const QString& name) {
    setObjectName(name);
}

void Screen::load() {
    if (state_ == State::New) {
        state_ = State::Loaded;
        loading();
    }
}

void Screen::showScreen() {
    load();
    if (isUnloaded()) {
        return;
    }
    restorePlace();
    show();
}

void Screen::bringToFront() {
    if (isUnloaded()) {
        return;
    }
    if (isMinimized()) {
        showNormal();
    }
    raise();
    activateWindow();
}

void Screen::unload() {
    if (state_ != State::Loaded) {
        return;
    }
    state_ = State::Unloaded;
    unloading();
    for (TickTimer* timer : findChildren<TickTimer*>()) {
        timer->setEnabled(false);
    }
    rememberPlace();
    hide();
    emit unloaded();
    deleteLater();
}

bool Screen::yieldEvents() {
    const QPointer<Screen> self(this);
    QCoreApplication::processEvents();
    return !self.isNull() && !isUnloaded();
}

void Screen::closeEvent(QCloseEvent* event) {
    event->ignore();
    unload();
}

void Screen::restorePlace() {
    if (placed_) {
        return;
    }
    placed_ = true;
    const QList<QScreen*> displays = QGuiApplication::screens();
    QList<QRect> areas;
    for (const QScreen* display : displays) {
        areas += display->availableGeometry();
    }
    const QRect remembered = userSettings().rectangle(QStringLiteral("Windows"), objectName());
    setGeometry(windowPlace(remembered, firstSize(), areas));
}

void Screen::rememberPlace() const {
    if (placed_ && !isMinimized()) {
        userSettings().setRectangle(QStringLiteral("Windows"), objectName(),
                                    isMaximized() ? normalGeometry() : geometry());
    }
}

} // namespace benthor::platform
