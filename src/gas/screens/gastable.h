#pragma once

#include "gas/setuplook.h"

#include <QWidget>

class QButtonGroup;
class QCheckBox;
class QLabel;
class QRadioButton;

namespace benthor::look {
class ClickableLabel;
}

namespace benthor::gas {

class NumberBox;

/// The ten gases, a row each: what can be typed, what is computed, active and start.
class GasTable : public QWidget {
    Q_OBJECT

public:
    explicit GasTable(QWidget* parent = nullptr);

    /// `wrong`: what must not go out as it stands.
    void show(const GasPlan& plan, const QList<WrongCell>& wrong);
    /// What stands half typed in a cell that is taken when it is finished counts as finished.
    void finishTyping();
    bool isHalfTyped() const;

signals:
    void cellEdited(benthor::gas::Cell cell, int row, const QString& text);
    void activeClicked(int row, bool active);
    void startClicked(int row);
    void rowChosen(int row);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    struct Row {
        look::ClickableLabel* Label1;
        NumberBox* Text1;
        NumberBox* Text2;
        NumberBox* Text3;
        NumberBox* Text4;
        QLabel* lblEan;
        QCheckBox* Check1;
        QRadioButton* Option1;
    };

    void buildHead();
    void buildRow(int row);
    void showRow(const GasPlan& plan, size_t i);
    void showWrong(const QList<WrongCell>& wrong);
    void takeTyped(NumberBox& box, int row);
    NumberBox* cell(const char* name, int row, Cell kind, const char* tip);

    std::array<Row, kGases> rows_{};
    QLabel* Label4_ = nullptr; ///< head of the MOD column
    int current_ = -1;
};

} // namespace benthor::gas
