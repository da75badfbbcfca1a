#pragma once

#include "firmware/reprogstate.h"
#include "platform/look/widgets/card.h"

class QLabel;
class QLineEdit;
class QListWidget;

namespace benthor::look {
class ClickableLabel;
class ToldButton;
} // namespace benthor::look

namespace benthor::firmware {

/// The image: which file, the values that a device must report of it, and what a send will put on the line.
class ImageCard : public look::Card {
    Q_OBJECT

public:
    explicit ImageCard(QWidget* parent = nullptr);

    void sync(const ReprogState& state);
    /// The names in the folder of images.
    void setFiles(const QStringList& names);

signals:
    void chooseClicked();
    /// One click on a name; and the wish to send it, by a double click or by Return.
    void fileClicked(const QString& name);
    void fileTaken(const QString& name);

private:
    QWidget* buildFile();
    QWidget* buildValues();
    QLineEdit* value(const char* name, const char* caption, QWidget* parent);

    look::ClickableLabel* Label9_;
    QLabel* Lbldetails_;
    QLineEdit* Text5_;
    look::ToldButton* Command7_;
    QListWidget* File1_;
    QLineEdit* Text2_;
    QLineEdit* Text13_ = nullptr;
    QLineEdit* Text15_ = nullptr;
    QLineEdit* Text14_ = nullptr;
    QLabel* image_;
    QLabel* origin_;
};

} // namespace benthor::firmware
