#pragma once

#include <QWidget>

#include <array>

class QLabel;

namespace benthor::look {
class CommandButton;
}

namespace benthor::viewer {

/// The playback controls: play and stop, steps, speed, next alarm and next mark.
class PlayBar : public QWidget {
    Q_OBJECT

public:
    enum class Act { Play, Stop, Next, Previous, Faster, Slower, NextAlarm, NextMark };

    explicit PlayBar(QWidget* parent = nullptr);

    void showSpeed(int playspeed);
    /// The sign that the dive plays.
    void showPlaying(bool playing);
    /// Pictures alone, for narrow windows.
    void setCompact(bool compact);
    /// The width that it needs, compact or not.
    int neededWidth(bool compact) const;

signals:
    void acted(Act act);

private:
    look::CommandButton* add(const char* caption, const char* iconName, Act act, const char* name,
                             const char* picture = "", const char* label = "");
    void addLine();

    look::CommandButton* PlayDive = nullptr;
    look::CommandButton* AlarmNext = nullptr;
    look::CommandButton* MarkNext = nullptr;
    bool compact_ = false;
    QLabel* Label18 = nullptr;
    QLabel* Picture10 = nullptr;
};

} // namespace benthor::viewer
