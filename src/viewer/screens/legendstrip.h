#pragma once

#include "platform/chart/chartstyle.h"

#include <QWidget>

namespace benthor::viewer {

/// One curve of the legend.
struct LegendEntry {
    QString name;
    QString unit; ///< empty: the curve has none
    platform::SeriesStyle style;
};

/// A line of what is drawn in the chart: each curve's stroke, name and unit. What does not fit is counted at
/// its end and told by the tool tip.
class LegendStrip : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString text READ text)

public:
    explicit LegendStrip(QWidget* parent = nullptr);

    void setEntries(QList<LegendEntry> entries);
    const QList<LegendEntry>& entries() const { return entries_; }
    /// Names and units, parted by commas.
    QString text() const;
    /// Paints it into `frame`, on the screen or elsewhere.
    void paint(QPainter& painter, const QRect& frame) const;

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QList<LegendEntry> entries_;
};

} // namespace benthor::viewer
