#pragma once

#include <QWidget>

class QBoxLayout;
class QCheckBox;
class QLabel;
class QRadioButton;

namespace benthor::look {
class Card;
}

namespace benthor::viewer {

class SeriesColumn;

/// The column at the left of the dive screen: the series of the chart, the units, and the list of gases,
/// which on wide windows lies under the instruments at the right.
class SideColumn : public QWidget {
    Q_OBJECT

public:
    explicit SideColumn(QWidget* parent = nullptr);

    SeriesColumn& series() const { return *series_; }
    void setGases(const QString& text);
    bool areGasesShown() const;
    void showGases(bool shown);
    /// Checks the option of the unit.
    void checkUnit(bool feet);
    /// For windows of that width, in pixels. `right`: the column that takes the gases on wide ones.
    void fit(int windowWidth, QBoxLayout* right);

signals:
    void feetClicked();
    void metresClicked();

private:
    void makeUnits();
    void makeGasList();

    QBoxLayout* column_;
    SeriesColumn* series_;
    look::Card* unitsCard_ = nullptr;
    look::Card* gasCard_ = nullptr;
    QCheckBox* gaslistCheck = nullptr;
    QRadioButton* Option1 = nullptr;
    QRadioButton* Option2 = nullptr;
    QLabel* gasList = nullptr;
};

} // namespace benthor::viewer
