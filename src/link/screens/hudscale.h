#pragma once

#include <QWidget>
#include <array>
#include <optional>

namespace benthor::link {

/// The four alarm values of the head-up display as one scale of PO2: where its LEDs are fixed on, and,
/// striped, where they flash.
class HudScale : public QWidget {
    Q_OBJECT

public:
    using Values = std::array<double, 4>; ///< LOW, PreLow, PreHigh, HIGH in bar

    explicit HudScale(QWidget* parent = nullptr);

    /// Nothing, or values that do not rise, leave the scale empty.
    void setValues(const std::optional<Values>& values);
    const std::optional<Values>& values() const { return values_; }
    /// What the scale shows, in words; read out as well.
    QString words() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QRect bar() const;
    int at(double bar) const;
    void paintZones(QPainter& painter) const;
    void paintMarks(QPainter& painter) const;

    std::optional<Values> values_;
};

} // namespace benthor::link
