#pragma once

#include <QScrollArea>

namespace benthor::look {

/// A column of controls that scrolls where the window is too low, or the font large; it asks for the whole
/// column, and a window that scrolls itself gives it that. Its width stays whole, and it takes no focus of
/// its own.
class ColumnArea : public QScrollArea {
    Q_OBJECT

public:
    /// `column`: never null; belongs to the area from now on. `least`: height that the area never goes below,
    /// in pixels of the layout.
    explicit ColumnArea(QWidget* column, int least = 200);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    /// What the area's least height leaves out of its column.
    int leftOut() const { return widget()->minimumSizeHint().height() - minimumSizeHint().height(); }

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    int wholeHeight() const;

    int least_;
    int asked_ = 0; ///< the height that the layout knows of
};

} // namespace benthor::look
