#pragma once

#include "viewer/pointtip.h"

#include <QColor>
#include <QWidget>

namespace benthor::viewer {

/// The tip box beside the cursor: what was recorded at the sample, in its own colours whatever the theme. For
/// as long as a mouse button is held it is a small pointer instead. Lets the mouse through to what lies
/// below.
class TipBox : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString text READ text)
    Q_PROPERTY(QColor toldBackground READ toldBackground)

public:
    explicit TipBox(QWidget* parent);

    QString text() const { return text_; }
    QColor toldBackground() const { return back_; }

    /// Takes over a sample's lines; shown by showAt().
    void setTip(const PointTip& tip, const QColor& back);
    /// Its size as the lines need it; never less than as told, in twips of 15 to a pixel.
    QSize neededSize() const;
    /// Shows the lines with the upper left corner there, in pixels of the parent.
    void showAt(QPoint corner);
    /// A pointer, 25 twips high, at the pressed place.
    void showPointer(QPoint place);
    bool isPointer() const { return pointer_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString text_;
    int toldHeight_ = 0;
    QColor back_ = Qt::white;
    bool pointer_ = false;
};

} // namespace benthor::viewer
