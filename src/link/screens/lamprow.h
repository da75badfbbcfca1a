#pragma once

#include "platform/toldcolour.h"

#include <QColor>
#include <QWidget>
#include <array>

namespace benthor::link {

/// One lamp of the row; its property holds the colour as told.
class Lamp : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QColor toldBackground READ toldBackground WRITE setToldBackground)

public:
    explicit Lamp(QWidget* parent = nullptr);

    void setToldBackground(const QColor& colour);
    QColor toldBackground() const { return told_; }

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor told_;
};

/// The ten lamps `AFShape1`, through which a sweep runs while the link is watched.
class LampRow : public QWidget {
    Q_OBJECT

public:
    static constexpr int lamps = 10;

    explicit LampRow(QWidget* parent = nullptr);

    void setColours(const std::array<platform::ToldColour, lamps>& colours);

private:
    std::array<Lamp*, lamps> lamps_{};
};

} // namespace benthor::link
