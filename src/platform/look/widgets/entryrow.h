#pragma once

#include "platform/look/widgets/clickablelabel.h"
#include "platform/look/widgets/leftclick.h"

class QHBoxLayout;

namespace benthor::look {

/// One entry of a column: a picture and a caption that act alike. A click on either, or on the row around
/// them, emits `clicked()` once; so do Return and Space on the caption, which is the row's one stop of the
/// Tab key. 48 high, the quiet kind 32.
class EntryRow : public QWidget {
    Q_OBJECT

public:
    enum class Kind { Normal, Quiet };

    EntryRow(const QString& iconName, const QString& captionText, Kind kind = Kind::Normal,
             QWidget* parent = nullptr);

    /// The object names of the two controls; an empty one is left alone.
    void setNames(const QString& pictureName, const QString& captionName);

    ClickableLabel* picture() const { return picture_; }
    ClickableLabel* caption() const { return caption_; }
    /// A further picture at the row's end, hidden at first. It acts like the row.
    ClickableLabel* addSign(const QString& objectName, const QString& iconName);

    void setChosen(bool chosen);
    bool isChosen() const { return chosen_; }
    /// Invalid: the default again. The property holds what was told; painting takes the nearest colour that
    /// reads.
    void setToldCaptionColour(const QColor& colour);
    QColor toldCaptionColour() const { return caption_->toldColour(); }

    QSize sizeHint() const override;
    /// The width at which nothing of it is ever cut.
    int neededWidth() const;

signals:
    void clicked();

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void joinIn(ClickableLabel* label);

    Kind kind_;
    QHBoxLayout* layout_;
    ClickableLabel* picture_;
    ClickableLabel* caption_;
    bool chosen_ = false;
    LeftClick press_;
};

} // namespace benthor::look
