#pragma once

#include "firmware/reprogstate.h"
#include "platform/look/widgets/card.h"

#include <QHash>

class QGridLayout;
class QHBoxLayout;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace benthor::firmware {

/// Commands by hand: a choice of them, the fields that it fills, and the buttons that send them.
class AdvancedCard : public look::Card {
    Q_OBJECT

public:
    explicit AdvancedCard(QWidget* parent = nullptr);

    void sync(const ReprogState& state);

signals:
    void optionChosen(int option);
    /// The user has written into a field; `field` is its name.
    void fieldEdited(const QString& field, const QString& text);
    void commandClicked(); ///< Command4
    void sendClicked();    ///< Command5
    void storeClicked();   ///< Command3
    void closeWanted();

private:
    QWidget* buildOptions();
    QWidget* buildFields();
    void addButtons(QHBoxLayout* across);
    QLineEdit* field(const char* name, const char* caption, QGridLayout* grid, int place, int width);

    QHash<int, QRadioButton*> Option1_;
    QLineEdit* Text3_ = nullptr;
    QLineEdit* Text11_ = nullptr;
    QLineEdit* Text9_ = nullptr;
    QLineEdit* Text10_ = nullptr;
    QLineEdit* Text8_ = nullptr;
    QLineEdit* Text12_ = nullptr;
    QLineEdit* Text6_ = nullptr;
    QPushButton* Command3_;
    QPushButton* Command4_;
    QPushButton* Command5_;
};

} // namespace benthor::firmware
