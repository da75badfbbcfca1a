#pragma once

#include "platform/screen/screen.h"

#include <QObject>
#include <QPointer>
#include <functional>

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
            T* screen = make_();
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

    std::function<T*()> make_;
    QPointer<T> screen_;
};

} // namespace benthor::platform
