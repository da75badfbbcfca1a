#pragma once

#include "platform/screen/screen.h"
#include "platform/screen/ticktimer.h"

#include <QObject>
#include <QPointer>
#include <functional>
#include <utility>

namespace benthor::platform {

/// The one place where a screen of a kind lives. Addressing it loads it hidden when it is not loaded; after
/// an unload the next address makes a fresh one.
template <class T> class ScreenSlot {
public:
    /// `make` makes the screen and connects it; the slot owns it from then on.
    explicit ScreenSlot(std::function<T*()> make)
        : make_(std::move(make)) {}
    /// The screen is hidden first: a text box that loses the focus by it still finds all of its screen.
    ~ScreenSlot() {
        if (isLoaded()) {
            screen_->hide();
            delete screen_.data();
        }
        delete ahead_.data();
    }
    ScreenSlot(const ScreenSlot&) = delete;
    ScreenSlot& operator=(const ScreenSlot&) = delete;

    bool isLoaded() const { return !screen_.isNull(); }
    bool isVisible() const { return isLoaded() && screen_->isVisible(); }

    /// The loaded screen. One that unloads itself while it loads is closed already, and alive until the stack
    /// unwinds.
    T& get() {
        T& screen = made();
        screen.load();
        return screen;
    }

    /// The same where it is known to be loaded: nothing is loaded here.
    const T& loaded() const { return *screen_; }
    /// Null where it cannot be seen.
    T* ifVisible() const { return isVisible() ? screen_.data() : nullptr; }

    /// Makes the screen that will be addressed next, while there is time. Until then there is none, and none
    /// of its timers ticks.
    void makeAhead() {
        if (screen_.isNull() && ahead_.isNull()) {
            ahead_ = make_();
            for (TickTimer* timer : ahead_->template findChildren<TickTimer*>()) {
                if (timer->isEnabled()) {
                    timer->setEnabled(false);
                    ticking_ += timer;
                }
            }
        }
    }

    void show() { made().showScreen(); }

    void showInFront() {
        show();
        if (isLoaded()) {
            screen_->bringToFront();
        }
    }

    void unload() {
        if (isLoaded()) {
            screen_->unload();
        }
    }

private:
    T& made() {
        if (screen_.isNull()) {
            T* screen = ahead_.isNull() ? make_() : takeAhead();
            screen_ = screen;
            QObject::connect(screen, &Screen::unloaded, screen, [this, screen] {
                if (screen_.data() == screen) {
                    screen_.clear();
                }
            });
            return *screen;
        }
        return *screen_;
    }

    T* takeAhead() {
        for (TickTimer* timer : std::exchange(ticking_, {})) {
            timer->setEnabled(true);
        }
        T* screen = ahead_.data();
        ahead_.clear();
        return screen;
    }

    std::function<T*()> make_;
    QPointer<T> screen_;
    QPointer<T> ahead_;         ///< made and not yet addressed
    QList<TickTimer*> ticking_; ///< its timers that will tick
};

} // namespace benthor::platform
