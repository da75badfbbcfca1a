#pragma once

#include <QLabel>

namespace benthor::look {

/// A line over the foot of a window that says what has just been done, and goes by itself after some seconds
/// or at a click. A window has one at most.
class PassingNote : public QLabel {
    Q_OBJECT

public:
    static void tell(QWidget& window, const QString& text);
    /// Takes away what stands there, before a picture of the window is taken.
    static void clear(QWidget& window);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    PassingNote(QWidget& window, const QString& text);
    void place();
};

} // namespace benthor::look
