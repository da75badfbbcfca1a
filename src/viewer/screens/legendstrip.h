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
    /// The ground under it and the ink of its words; invalid ones: those of the theme.
    void setColours(const QColor& ground, const QColor& ink);
    /// All of it, in as many lines as it needs in the width of `frame`, with words in `ink`.
    void paintWhole(QPainter& painter, const QRect& frame, const QColor& ink) const;
    /// The height that all of it needs, in pixels.
    int wholeHeight(int width) const;

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    /// The entries line by line, for lines of that width in pixels.
    QList<QList<LegendEntry>> linesIn(int width) const;
    void paintLine(QPainter& painter, const QRect& frame, const QList<LegendEntry>& entries,
                   const QColor& ink) const;

    QList<LegendEntry> entries_;
    QColor ground_;
    QColor ink_;
};

} // namespace benthor::viewer
