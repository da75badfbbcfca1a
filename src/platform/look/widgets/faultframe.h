#pragma once

#include <QFrame>

class QLabel;
class QPushButton;

namespace benthor::look {

/// What is wrong with what was chosen: red-edged, with a bold line that says what happened and to which
/// thing, the words that were told, and a button that closes the frame. Words of more than a few lines
/// scroll.
class FaultFrame : public QFrame {
    Q_OBJECT

public:
    /// `text` shows what was told and becomes the frame's; `closeName` is the object name of the button.
    FaultFrame(QLabel* text, const QString& closeName, QWidget* parent = nullptr);

    QLabel* title() const { return title_; }
    QLabel* text() const { return text_; }
    QPushButton* closeButton() const { return close_; }

    /// Greyed: what it says is not about what was asked last. Its words stay.
    void setStale(bool stale);
    bool isStale() const { return stale_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QLabel* title_;
    QLabel* text_;
    QPushButton* close_;
    bool stale_ = false;
};

} // namespace benthor::look
