#pragma once

#include "gas/setuplook.h"

#include <QWidget>

class QCheckBox;
class QComboBox;
class QLabel;
class QVBoxLayout;

namespace benthor::gas {

class NumberBox;

/// The device's settings as one form in three groups.
class SettingsForm : public QWidget {
    Q_OBJECT

public:
    explicit SettingsForm(QWidget* parent = nullptr);

    /// `wrong`: what must not go out as it stands.
    void show(const GasPlan& plan, const QList<WrongCell>& wrong);
    /// What the controls show.
    Settings settings() const;

signals:
    void edited();                     ///< a text or a check box
    void listChosen(bool startingGas); ///< a drop-down; `startingGas`: the one that always follows the start
    void maximumEdited(const QString& text);
    void stepped(int index, bool up);

private:
    void buildDecompression();
    void buildDisplay();
    void buildTimers();
    void heading(const char* caption);
    void row(const char* caption, QWidget* control);
    QComboBox* list(int index, const QStringList& items);
    QCheckBox* check(int index, const char* caption);
    QWidget* stepper(int index, NumberBox* box);
    NumberBox* box(const char* name, const char* caption, const char* tip = "");
    void showWrong(const QList<WrongCell>& wrong);

    QVBoxLayout* column_;
    int ringRoom_ = 0; ///< beside a check box, in pixels
    std::array<QComboBox*, 6> List1_{};
    std::array<QCheckBox*, 4> Check2_{};
    NumberBox* Text5_ = nullptr;
    NumberBox* sptext_ = nullptr;
    NumberBox* ScreenSaveText_ = nullptr;
    NumberBox* HomeText_ = nullptr;
    QLabel* Label12_ = nullptr;
};

} // namespace benthor::gas
