#include "logbook/screens/picturebutton.h"

#include "platform/look/look.h"

#include <QAction>
#include <QPaintEvent>

namespace benthor::logbook {

namespace {

/// Where the button's icon is: the button paints it, this takes the clicks.
class ButtonPicture : public QAbstractButton {
public:
    using QAbstractButton::QAbstractButton;

protected:
    void paintEvent(QPaintEvent*) override {}
};

constexpr int kIconSize = 18;
constexpr int kSide = 13; // between the button's edge and its icon

} // namespace

PictureButton::PictureButton(const QString& caption, const char* iconName, const QString& pictureName,
                             QWidget* parent)
    : QPushButton(look::icon(iconName), caption, parent)
    , caption_(caption)
    , picture_(new ButtonPicture(this)) {
    setIconSize(QSize(look::scaled(kIconSize), look::scaled(kIconSize)));
    setAccessibleName(caption);
    setAutoDefault(false);
    picture_->setObjectName(pictureName);
    picture_->setAccessibleName(caption);
    picture_->setFocusPolicy(Qt::NoFocus);
    connect(picture_, &QAbstractButton::pressed, this, [this] { setDown(true); });
    connect(picture_, &QAbstractButton::released, this, [this] { setDown(false); });
    connect(picture_, &QAbstractButton::clicked, this, &QAbstractButton::click);
}

void PictureButton::setCompact(bool compact) {
    if (compact == compact_) {
        return;
    }
    compact_ = compact;
    setText(compact ? QString() : caption_);
    setToolTip(compact ? caption_ : QString());
}

void PictureButton::resizeEvent(QResizeEvent* event) {
    QPushButton::resizeEvent(event);
    const int right = compact_ ? width() : look::scaled(kSide) + iconSize().width() + look::spaceTight;
    picture_->setGeometry(0, 0, std::min(right, width()), height());
}

} // namespace benthor::logbook
