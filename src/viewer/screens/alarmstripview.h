#pragma once

#include "viewer/strip.h"

#include <QPixmap>
#include <QWidget>

#include <functional>

namespace benthor::platform {
class Chart;
}

namespace benthor::viewer {

/// The strip under the chart, between the edges of its plot area: alarms as red triangles, marks as blue
/// diamonds, the selected sample as a green bar, each on the line that stands at its place.
class AlarmStripView : public QWidget {
    Q_OBJECT

public:
    explicit AlarmStripView(platform::Chart& chart, QWidget* parent = nullptr);

    void setStrip(Strip strip);
    const Strip& strip() const { return strip_; }
    /// Paints it into `frame`, on the screen or elsewhere.
    void paint(QPainter& painter, const QRect& frame) const;

    QSize sizeHint() const override;

signals:
    /// The left button was released; the place from the left edge, as a share of the width.
    void clicked(double share);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    QRect frame() const;
    void paintLayers(QPainter& painter, const QRect& frame, const std::function<void()>& signs) const;
    void paintSigns(QPainter& painter, const QRect& frame) const;

    const platform::Chart& chart_;
    Strip strip_;
    QPixmap signs_; ///< alarms and marks as they stand on the screen; null: to be painted
};

} // namespace benthor::viewer
