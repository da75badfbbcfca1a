#pragma once

#include "platform/look/series.h"

#include <QWidget>

#include <optional>

namespace benthor::look {

/// A bar gauge of a base, index 0, and 13 segments, index 1 to 13. Which are lit is told by a mask, bit k for
/// index k. The base is a narrow foot; unlit segments show as a trough. Where `limit` is set, a gap parts
/// what lies above it, and above it lit segments are red.
class Gauge : public QWidget {
    Q_OBJECT
    Q_PROPERTY(quint32 lit READ lit WRITE setLit)

public:
    static constexpr int segments = 14;

    explicit Gauge(QWidget* parent = nullptr);

    void setLit(quint32 mask);
    quint32 lit() const { return lit_; }
    bool isLit(int index) const { return (lit_ >> index) & 1U; }

    /// In the colour of a curve, of the theme in force; or in a told colour.
    void setSeries(Series series);
    void setColour(const QColor& colour);
    /// The last index that is not red, 0 for none; 10 at first.
    void setLimit(int index);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    quint32 lit_ = 0;
    std::optional<Series> series_;
    QColor colour_;
    int limit_ = 10;
};

} // namespace benthor::look
