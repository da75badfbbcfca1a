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
    /// Folded, the first line alone is seen; the text stays.
    void setFolded(bool folded);
    bool isFolded() const { return folded_; }
    /// Its size as the lines need it; never less than as told, in twips of 15 to a pixel. Where all of it
    /// would be higher than `room`, in pixels, the lines go on in further columns.
    QSize neededSize(int room) const;
    /// Shows the lines with the upper left corner there, in pixels of the parent, at the size for `room`.
    void showAt(QPoint corner, int room);
    /// A pointer, 25 twips high, at the pressed place.
    void showPointer(QPoint place);
    bool isPointer() const { return pointer_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    struct Columns {
        int count = 1;
        int lines = 1; ///< of a column
        int width = 0;
        int lineHeight = 0;
    };

    QStringList shownLines() const;
    Columns columnsFor(int room) const;

    QString text_;
    int toldHeight_ = 0;
    QColor back_ = Qt::white;
    bool pointer_ = false;
    bool folded_ = false;
    int room_ = 0;
};

} // namespace benthor::viewer
