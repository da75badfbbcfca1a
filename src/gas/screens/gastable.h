#pragma once

#include "gas/gasplan.h"

#include <QWidget>

class QButtonGroup;
class QCheckBox;
class QLabel;
class QLineEdit;
class QRadioButton;

namespace benthor::look {
class ClickableLabel;
}

namespace benthor::gas {

/// The ten gases, a row each: what can be typed, what is computed, active and start.
class GasTable : public QWidget {
    Q_OBJECT

public:
    enum class Cell { O2, He, MOD, PPO2 };

    explicit GasTable(QWidget* parent = nullptr);

    void show(const GasPlan& plan);

signals:
    void cellEdited(benthor::gas::GasTable::Cell cell, int row, const QString& text);
    void activeClicked(int row, bool active);
    void startClicked(int row);
    void rowChosen(int row);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    struct Row {
        look::ClickableLabel* Label1;
        QLineEdit* Text1;
        QLineEdit* Text2;
        QLineEdit* Text3;
        QLineEdit* Text4;
        QLabel* lblEan;
        QCheckBox* Check1;
        QRadioButton* Option1;
    };

    void buildHead();
    void buildRow(int row);
    QLineEdit* cell(const char* name, int row, Cell kind, const char* tip);

    std::array<Row, kGases> rows_{};
    QLabel* Label4_ = nullptr; ///< head of the MOD column
    int current_ = -1;
};

} // namespace benthor::gas
