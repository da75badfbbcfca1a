#pragma once

#include <QElapsedTimer>
#include <QMainWindow>

#include <functional>
#include <optional>

namespace benthor::look {
class ContentsArea;
} // namespace benthor::look

namespace benthor::platform {

/// A top-level window with the life of a screen: loaded (its controls are there and can be read), shown,
/// hidden, unloaded. What its controls show outlives hiding, not unloading. The object name is the screen's
/// name.
///
/// A screen may be unloaded while a routine of its own is on the stack. It is then closed and marked at once,
/// its timers stop, the routine ends at its next yieldEvents(), and the object dies when the stack has
/// unwound.
class Screen : public QMainWindow {
    Q_OBJECT

public:
    explicit Screen(const QString& name);

    /// Runs the screen's own loading once. A screen may unload itself there.
    void load();
    bool isLoaded() const { return state_ == State::Loaded; }
    bool isUnloaded() const { return state_ == State::Unloaded; }

    /// Shows the screen at its remembered place, or at its first one; loads it when that was not done.
    void showScreen();
    void bringToFront();
    void unload();

    /// Takes `contents` as all that stands below the menu bar. They scroll where the window has less room
    /// than they need, and the window never has to be larger for them than a small display. To be called
    /// once, in place of setCentralWidget.
    void setContents(QWidget* contents);
    QWidget* contents() const { return contents_; } ///< null before they are set
    /// The window as a picture, laid out to the end. Where its contents scroll all of them are in it.
    QPixmap picture();

    /// Whether a routine of any screen is on the stack: events then run inside it.
    static bool anyAtWork();

    /// Stores all that unloading would store, and stays open.
    void keep();

signals:
    /// Emitted once, when the screen's own unloading is done and the window is closed.
    void unloaded();

protected:
    /// Keeps the screen's object alive until the routine that holds it is over.
    class Routine {
    public:
        explicit Routine(Screen& screen);
        ~Routine();
        Routine(const Routine&) = delete;
        Routine& operator=(const Routine&) = delete;

    private:
        Screen& screen_;
    };

    virtual void loading() {}
    /// Within loading(), of a screen that is loaded to be shown: shows what stands there by now.
    void showWhileLoading();
    virtual void unloading() {}
    /// Stores what unloading() stores, and nothing else.
    virtual void keeping() {}

    /// Size of the window when it is shown for the first time; larger where its contents need more.
    virtual QSize firstSize() const { return {1180, 640}; }

    /// Where the window opens each time, for a screen that sets its own place; it is then not remembered.
    virtual std::optional<QPoint> ownPlace() const { return std::nullopt; }

    /// One event: the work, then sync(), unless the screen is gone by then. Nothing on one that is gone
    /// before.
    void perform(const std::function<void()>& work);
    /// Shows what the screen's state says.
    virtual void sync() {}
    /// sync() and yieldPainting() for a busy loop that asks far more often than anything need be painted:
    /// every 15 ms at most.
    bool syncPainting();

    /// Lets waiting events run, input and ticks included. False when the screen was unloaded meanwhile: the
    /// routine that asked then ends.
    bool yieldEvents();

    /// Lets painting catch up inside a busy loop: no input, no tick and no line is served, and input that
    /// falls into that time is dropped. A window that the user closes meanwhile is closed. False when it was
    /// this one: the routine that asked then ends. While the process is asked to end, this one is closed.
    bool yieldPainting();

    void closeEvent(QCloseEvent* event) override;

private:
    enum class State { New, Loaded, Unloaded };

    QSize openingSize() const;
    void restorePlace();
    void keepFrameInside();
    void rememberPlace() const;

    State state_ = State::New;
    look::ContentsArea* area_ = nullptr;
    QWidget* contents_ = nullptr;
    bool toBeShown_ = false;
    bool placed_ = false;
    QPoint openedAt_;     ///< where it was put, whatever became of that
    bool framed_ = false; ///< the frame stands where it can be seen
    int routines_ = 0;
    QElapsedTimer painted_;
};

} // namespace benthor::platform
