#pragma once

#include "gas/gasplan.h"

#include <QWidget>

#include <vector>

class QLabel;
class QPushButton;
class QSlider;

namespace benthor::look {
class NumberLabel;
}

namespace benthor::gas {

/// The gas in hand as three bars, with steppers and sliders for oxygen and helium.
class GasGraph : public QWidget {
    Q_OBJECT

public:
    explicit GasGraph(QWidget* parent = nullptr);

    void show(const GasPlan& plan);

signals:
    void stepped(int index, bool up);    ///< 3 oxygen, 4 helium
    void scrolled(int index, int value); ///< 0 oxygen, 1 helium

private:
    class Bars;

    QWidget* buildPart(int index, const char* caption);

    Bars* bars_;
    std::array<look::NumberLabel*, 2> numbers_{};
    std::array<QSlider*, 2> Slider1_{};
    std::vector<QPushButton*> steppers_; ///< `Command3` and `Command4`
};

} // namespace benthor::gas
