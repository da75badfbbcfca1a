#pragma once

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
    /// `rows`: the rows of the view, over which the runs are spread.
    void setStrip(GasStrip strip, int rows);

    QSize sizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QRect frame() const;
    int leftOf(const GasRun& run) const;
    const GasRun* runAt(int x) const;

    const platform::Chart& chart_;
    GasStrip strip_;
    int rows_ = 0;
};

} // namespace benthor::viewer
