#pragma once

#include "platform/rowrange.h"
#include "viewer/gasstrip.h"

#include <QWidget>

namespace benthor::platform {
class Chart;
}

namespace benthor::viewer {

/// The strip of gases above the chart, between the edges of its plot area. Its text is the line that tells
/// the gases by their places in characters; it is painted as one labelled segment for each gas.
class GasStripView : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString text READ text)

public:
    explicit GasStripView(const platform::Chart& chart, QWidget* parent = nullptr);

    QString text() const { return strip_.text; }
    const std::vector<GasRun>& runs() const { return strip_.runs; }
    /// `view`: the rows over which the runs are spread, as the runs count them.
    void setStrip(GasStrip strip, platform::RowRange view);
    /// Paints it into `frame`, on the screen or elsewhere.
    void paint(QPainter& painter, const QRect& frame) const;

    QSize sizeHint() const override;

signals:
    /// The left button was released; the place from the left edge, as a share of the width.
    void clicked(double share);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    QRect frame() const;
    int leftOf(const GasRun& run, const QRect& frame) const;
    const GasRun* runAt(int x) const;

    const platform::Chart& chart_;
    GasStrip strip_;
    platform::RowRange view_;
};

} // namespace benthor::viewer
