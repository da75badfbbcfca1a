#pragma once

#include "platform/look/look.h"
#include "platform/look/widgets/leftclick.h"

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
    QString iconName() const { return iconName_; }

    /// Of text and icon. Told colours win over it; where one does not read on the surface, painting takes the
    /// nearest that does.
    void setInk(Ink ink);
    void setToldColour(const QColor& colour);
    QColor toldColour() const { return told_; }

    /// Off: text and icon keep their colour under the mouse, since something around them answers for it.
    void setHoverMark(bool on) { hoverMark_ = on; }
    /// Off: no ring of its own, since something around it shows the focus.
    void setFocusMark(bool on) { focusMark_ = on; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    int heightForWidth(int width) const override;

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

    QString iconName_;
    int iconSize_ = 20;
    Ink ink_ = Ink::Text;
    QColor told_;
    bool hoverMark_ = true;
    bool focusMark_ = true;
    LeftClick press_;
};

} // namespace benthor::look
