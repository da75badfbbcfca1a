#pragma once

#include <QColor>
#include <QPushButton>

namespace benthor::look {

/// A push button with a told background colour. The property holds the colour as told; the button shows it as
/// a block at its left edge, also when disabled, so that an idle red or yellow button does not shout.
class ToldButton : public QPushButton {
    Q_OBJECT
    Q_PROPERTY(QColor toldBackground READ toldBackground WRITE setToldBackground)

public:
    explicit ToldButton(QWidget* parent = nullptr);
    explicit ToldButton(const QString& text, QWidget* parent = nullptr);

    /// Invalid: no block.
    void setToldBackground(const QColor& colour);
    QColor toldBackground() const { return told_; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor told_;
};

} // namespace benthor::look
