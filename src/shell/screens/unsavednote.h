#pragma once

#include "platform/look/widgets/status.h"

class QPushButton;

namespace benthor::shell {

/// The line on the main screen about details that were typed and could not be stored as a session ended: it
/// names the text that holds them, shows it and, asked to, removes it. Of several the first; the next one
/// follows when it is gone.
class UnsavedNote : public look::NoticeBand {
    Q_OBJECT

public:
    explicit UnsavedNote(QWidget* parent = nullptr);

    /// Looks into the program folder; hidden where no such text lies.
    void lookAgain();

private:
    void showText();
    void removeText();

    QString name_;
};

} // namespace benthor::shell
