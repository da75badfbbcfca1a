#pragma once

#include "platform/look/look.h"

#include <QLabel>

namespace benthor::look {

/// A label that acts: text, an icon with or without text, or a picture set with setPixmap. A left click that
/// is released inside, Return, Enter and Space emit `clicked()`. What a screen reader calls it is its text
/// unless setAccessibleName told otherwise.
class ClickableLabel : public QLabel {
    Q_OBJECT

public:
    explicit ClickableLabel(QWidget* parent = nullptr);
    explicit ClickableLabel(const QString& text, QWidget* parent = nullptr);

    /// Stands before the text, or alone where there is no text. `size` is in pixels of the layout.
    void setIconName(const QString& name, int size = 20);
    QString iconName() const { return m_iconName; }

    /// Of text and icon. Told colours win over it; where one does not read on the surface, painting takes the
    /// nearest that does.
    void setInk(Ink ink);
    void setToldColour(const QColor& colour);
    QColor toldColour() const { return m_told; }

    /// Off: text and icon keep their colour under the mouse, since something around them answers for it.
    void setHoverMark(bool on) { m_hoverMark = on; }
    /// Off: no ring of its own, since something around it shows the focus.
    void setFocusMark(bool on) { m_focusMark = on; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    void clicked();

protected:
    bool event(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QColor currentInk() const;
    bool hasPicture() const;

    QString m_iconName;
    int m_iconSize = 20;
    Ink m_ink = Ink::Text;
    QColor m_told;
    bool m_hoverMark = true;
    bool m_focusMark = true;
    bool m_pressed = false;
};

} // namespace benthor::look
