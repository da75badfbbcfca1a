#pragma once

#include "viewer/zoom.h"

#include <QWidget>

#include <array>

class QAction;
class QHBoxLayout;
class QPushButton;

namespace benthor::look {
class ClickableLabel;
}

namespace benthor::viewer {

/// The two views of the chart and the data grid, at the right of the bar below the chart. Each picture acts
/// as the button beside it: Picture6 and Picture7 as Command2(0), Picture12 as (1), Picture13 as (2).
class ZoomBar : public QWidget {
    Q_OBJECT

public:
    /// `spread`: the entry that shows the data grid.
    explicit ZoomBar(QAction* spread, QWidget* parent = nullptr);

    /// The picture that opens what is seldom needed.
    look::ClickableLabel* more() const { return more_; }

    void showState(const ZoomState& state);
    /// Pictures alone, for narrow windows.
    void setCompact(bool compact);
    /// The width that it needs, compact or not.
    int neededWidth(bool compact) const;

signals:
    void pressed(ZoomButton button);

private:
    look::ClickableLabel* addPicture(const char* name, const char* iconName, const QString& tip,
                                     ZoomButton button);
    QPushButton* addCommand(ZoomButton button, const QString& caption, const QString& tip);
    void updateVisible();

    QHBoxLayout* row_;
    look::ClickableLabel* Picture6 = nullptr;
    look::ClickableLabel* Picture7 = nullptr;
    look::ClickableLabel* Picture12 = nullptr;
    look::ClickableLabel* Picture13 = nullptr;
    std::array<QPushButton*, 3> Command2{};
    look::ClickableLabel* more_ = nullptr;
    bool compact_ = false;
    bool panVisible_ = false;
};

} // namespace benthor::viewer
