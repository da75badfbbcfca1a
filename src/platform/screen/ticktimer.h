#pragma once

#include <QObject>
#include <QTimer>

namespace benthor::platform {

/// Ticks are held off for as long as one of these lives: a modal box or a busy loop is up. A tick that falls
/// into that time is not made up for afterwards.
class TickHold {
public:
    TickHold();
    ~TickHold();
    TickHold(const TickHold&) = delete;
    TickHold& operator=(const TickHold&) = delete;

    static bool active();
};

/// A screen's timer: a named child of the screen that ticks every `interval` milliseconds while it is
/// enabled. Setting `enabled` again to what it is leaves the beat alone; setting `interval` starts a new one.
class TickTimer : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool enabled READ isEnabled WRITE setEnabled)
    Q_PROPERTY(int interval READ interval WRITE setInterval)

public:
    enum class Start { Disabled, Enabled };

    TickTimer(const QString& name, int intervalMilliseconds, Start start, QObject* parent);

    bool isEnabled() const { return timer_.isActive(); }
    void setEnabled(bool enabled);
    int interval() const { return timer_.interval(); }
    void setInterval(int milliseconds) { timer_.setInterval(milliseconds); }

    /// Does what the clock does when the interval is over: ticks unless ticks are held off.
    void expire();

signals:
    void tick();

private:
    QTimer timer_;
};

} // namespace benthor::platform
