#pragma once

#include <QFrame>

class QLabel;
class QPushButton;

namespace benthor::look {

/// What is wrong with what was chosen: red-edged, with a bold line that says what happened and to which
/// thing, the words that were told, and a button that closes the frame.
class FaultFrame : public QFrame {
    Q_OBJECT

public:
    /// The object names of the text label and of the button.
    FaultFrame(const QString& textName, const QString& closeName, QWidget* parent = nullptr);

    QLabel* title() const { return m_title; }
    QLabel* text() const { return m_text; }
    QPushButton* closeButton() const { return m_close; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QLabel* m_title;
    QLabel* m_text;
    QPushButton* m_close;
};

} // namespace benthor::look
