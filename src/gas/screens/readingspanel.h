#pragma once

#include "link/readings.h"

#include <QLabel>
#include <QWidget>

namespace benthor::gas {

/// What the device reads just now, as numbers. Of a value in two units the one in force is seen.
class ReadingsPanel : public QWidget {
    Q_OBJECT

public:
    explicit ReadingsPanel(QWidget* parent = nullptr);

    void take(const link::Readings& readings);
    void showUnits(bool feet);

private:
    QLabel* number(int label);

    std::array<QLabel*, link::Readings::labels> Label16_{};
    std::array<QLabel*, link::Readings::labels>
        units_{}; ///< behind the label of that index, where it has one
};

} // namespace benthor::gas
