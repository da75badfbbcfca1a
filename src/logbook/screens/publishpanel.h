#pragma once

#include "platform/look/widgets/card.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;

namespace benthor::look {
class ClickableLabel;
}

namespace benthor::logbook {

class PictureButton;

/// What folds out below the dive list for publishing: to whom the dive goes, what is said with it, and the
/// way to send it.
class PublishPanel : public look::Pane {
    Q_OBJECT

public:
    explicit PublishPanel(QWidget* parent = nullptr);

    /// The address that the message goes to: the support's when its box is checked.
    QString recipient() const;
    QString note() const;

    look::ClickableLabel* shut() const { return shut_; }
    PictureButton* send() const { return send_; }

private:
    void Option1_toggled(bool checked);

    look::ClickableLabel* shut_;
    QCheckBox* Option1_;
    QLabel* supportLine_;
    QLineEdit* Text2_;
    QPlainTextEdit* Text3_;
    PictureButton* send_;
};

} // namespace benthor::logbook
