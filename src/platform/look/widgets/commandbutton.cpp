#include "platform/look/widgets/commandbutton.h"

#include "platform/look/look.h"
#include "platform/look/style/paint.h"

#include <QStyleOptionButton>
#include <QStylePainter>

namespace benthor::look {

namespace {

/// Lies over a part of the button, which paints; this takes the clicks.
class ClickArea : public QAbstractButton {
public:
    explicit ClickArea(QPushButton* button)
        : QAbstractButton(button) {
        setFocusPolicy(Qt::NoFocus);
        connect(this, &QAbstractButton::pressed, button, [button] { button->setDown(true); });
        connect(this, &QAbstractButton::released, button, [button] { button->setDown(false); });
        connect(this, &QAbstractButton::clicked, button, &QAbstractButton::click);
    }

protected:
    void paintEvent(QPaintEvent*) override {}
};

constexpr int kLargeHeight = 52;
constexpr int kLargeIcon = 24;
constexpr int kSmallIcon = 18;
constexpr int kSide = 14;      // between the button's edge and its picture
constexpr int kSmallSide = 10; // of a small one
constexpr int kIconWidth = 34;

} // namespace

CommandButton::CommandButton(const QString& caption, const QString& iconName, Kind kind, QWidget* parent)
    : QPushButton(caption, parent)
    , iconName_(iconName)
    , kind_(kind)
    , picture_(new ClickArea(this))
    , label_(new ClickArea(this)) {
    setAutoDefault(false);
    setAccessibleName(caption);
    if (kind == Kind::Icon) {
        setToolTip(caption);
    }
    if (kind == Kind::Large) {
        setFixedHeight(scaledRow(kLargeHeight, 2));
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    }
}

void CommandButton::setNames(const char* button, const char* picture, const char* label) {
    setObjectName(QLatin1String(button));
    picture_->setObjectName(QLatin1String(picture));
    picture_->setAccessibleName(text());
    label_->setObjectName(QLatin1String(label));
    label_->setAccessibleName(text());
    label_->setVisible(!label_->objectName().isEmpty());
}

void CommandButton::setKind(Kind kind) {
    if (kind != kind_) {
        kind_ = kind;
        updateGeometry();
        update();
    }
}

void CommandButton::setPictureShown(bool shown) {
    if (shown == picture_->isHidden()) {
        picture_->setVisible(shown);
        update();
    }
}

bool CommandButton::isPictureShown() const {
    return !picture_->isHidden();
}

void CommandButton::setQuietLine(const QString& text) {
    if (text != quietLine_) {
        quietLine_ = text;
        label_->setText(text);
        setAccessibleDescription(text);
        update();
    }
}

int CommandButton::textLeft(Kind kind) const {
    switch (kind) {
    case Kind::Icon:
        return width();
    case Kind::Large:
        return scaled(kSide + kLargeIcon) + spaceBase;
    case Kind::Small:
        break;
    }
    return scaled(kSmallSide + kSmallIcon) + spaceSmall;
}

int CommandButton::widthAs(Kind kind) const {
    if (kind == Kind::Icon) {
        return scaledRow(kIconWidth);
    }
    const int title = QFontMetrics(strong(body())).horizontalAdvance(text());
    const int quiet = QFontMetrics(caption()).horizontalAdvance(quietLine_);
    return textLeft(kind) + std::max(title, quiet) + scaled(kind == Kind::Large ? kSide : kSmallSide);
}

QSize CommandButton::sizeHint() const {
    return {widthAs(kind_),
            kind_ == Kind::Large ? scaledRow(kLargeHeight, 2) : QPushButton::sizeHint().height()};
}

void CommandButton::resizeEvent(QResizeEvent* event) {
    QPushButton::resizeEvent(event);
    picture_->setGeometry(0, 0, textLeft(kind_), height());
    label_->setGeometry(textLeft(kind_), 0, std::max(0, width() - textLeft(kind_)), height());
}

void CommandButton::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event)
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    painter.drawControl(QStyle::CE_PushButtonBevel, option);
    const QColor ink = buttonInk(option, this);
    const bool large = kind_ == Kind::Large;
    if (isPictureShown()) {
        const int side = scaled(large ? kLargeIcon : kSmallIcon);
        const int left = kind_ == Kind::Icon ? (width() - side) / 2 : scaled(large ? kSide : kSmallSide);
        drawIcon(&painter, iconName_, QRect(left, 0, side, height()), side, ink);
    }
    if (kind_ == Kind::Icon) {
        return;
    }
    const QRect room(textLeft(kind_), 0, width() - textLeft(kind_) - spaceSmall, height());
    painter.setPen(ink);
    painter.setFont(large ? strong(body()) : body());
    if (!large || quietLine_.isEmpty()) {
        painter.drawText(room, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine, text());
        return;
    }
    const QFontMetrics above = painter.fontMetrics();
    const QFontMetrics below(caption());
    const int top = (height() - above.height() - below.height()) / 2;
    painter.drawText(room.left(), top + above.ascent(), text());
    painter.setFont(caption());
    const bool filled = flagged(this, "primary") || !isEnabled();
    painter.setPen(filled ? ink : tokens().textquiet);
    painter.drawText(room.left(), top + above.height() + below.ascent(),
                     below.elidedText(quietLine_, Qt::ElideRight, room.width()));
}

} // namespace benthor::look
