#include "platform/look/widgets/clickablelabel.h"

#include "platform/look/style/paint.h"

#include <QEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>

#include <limits>

namespace benthor::look {

namespace {

constexpr int padding = 4; // room for the ring on all sides
constexpr int gapBehindIcon = 8;

} // namespace

ClickableLabel::ClickableLabel(QWidget* parent)
    : ClickableLabel(QString(), parent) {}

/// The text comes last: a screen reader that hears of it would take what is being made for a plain label.
ClickableLabel::ClickableLabel(const QString& text, QWidget* parent)
    : QLabel(parent) {
    setText(text);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
}

void ClickableLabel::setIconName(const QString& name, int size) {
    iconName_ = name;
    iconSize_ = size;
    updateGeometry();
    update();
}

void ClickableLabel::setInk(Ink ink) {
    ink_ = ink;
    update();
}

void ClickableLabel::setToldColour(const QColor& colour) {
    told_ = colour;
    update();
}

bool ClickableLabel::hasPicture() const {
    return !pixmap(Qt::ReturnByValue).isNull();
}

QSize ClickableLabel::sizeHint() const {
    if (hasPicture()) {
        return QLabel::sizeHint();
    }
    QSize size(0, 0);
    if (!text().isEmpty()) {
        size = fontMetrics().size(0, text());
    }
    if (!iconName_.isEmpty()) {
        const int side = scaled(iconSize_);
        size.rwidth() += side + (text().isEmpty() ? 0 : gapBehindIcon);
        size.setHeight(std::max(size.height(), side));
    }
    return size + QSize(2 * padding, 2 * padding);
}

/// A text that is wrapped takes the width it gets, in words at least, and the height that follows from it.
QSize ClickableLabel::minimumSizeHint() const {
    if (hasPicture()) {
        return QLabel::minimumSizeHint();
    }
    return wordWrap() ? QSize(12 * fontMetrics().averageCharWidth(), fontMetrics().height() + 2 * padding)
                      : sizeHint();
}

int ClickableLabel::heightForWidth(int width) const {
    if (hasPicture() || !wordWrap()) {
        return QLabel::heightForWidth(width);
    }
    const int indent = iconName_.isEmpty() ? 0 : scaled(iconSize_) + gapBehindIcon;
    const QRect room(0, 0, width - 2 * padding - indent, std::numeric_limits<int>::max() / 2);
    return fontMetrics().boundingRect(room, Qt::TextWordWrap, text()).height() + 2 * padding;
}

bool ClickableLabel::event(QEvent* event) {
    if (event->type() == QEvent::Enter || event->type() == QEvent::Leave) {
        update();
    }
    return QLabel::event(event);
}

void ClickableLabel::mousePressEvent(QMouseEvent* event) {
    press_.press(event);
}

void ClickableLabel::mouseReleaseEvent(QMouseEvent* event) {
    if (press_.release(event, rect())) {
        emit clicked();
    }
}

void ClickableLabel::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        if (!event->isAutoRepeat()) {
            emit clicked();
        }
        return;
    default:
        QLabel::keyPressEvent(event);
    }
}

QColor ClickableLabel::currentInk() const {
    if (!isEnabled()) {
        return faintInk();
    }
    if (told_.isValid()) {
        return legibleOn(legibleOn(told_, tokens().surface), tokens().accentsoft); // where it is chosen
    }
    return hoverMark_ && underMouse() ? tokens().accent : inkColour(ink_);
}

void ClickableLabel::paintEvent(QPaintEvent* event) {
    if (hasPicture()) {
        QLabel::paintEvent(event);
    }
    QPainter painter(this);
    if (hasFocus() && focusMark_) {
        drawFocusRing(&painter, rect(), 4);
    }
    if (hasPicture()) {
        return;
    }
    const QColor ink = currentInk();
    QRect room = contentsRect().adjusted(padding, 0, -padding, 0);
    if (!iconName_.isEmpty()) {
        const int side = scaled(iconSize_);
        QRect place = text().isEmpty() ? room : QRect(room.x(), room.y(), side, room.height());
        drawIcon(&painter, iconName_, QStyle::visualRect(layoutDirection(), room, place), side, ink);
        room.setLeft(room.left() + side + gapBehindIcon);
    }
    if (!text().isEmpty()) {
        painter.setPen(ink);
        const auto side = QStyle::visualAlignment(layoutDirection(), alignment());
        const int flags = static_cast<int>(side) | (wordWrap() ? static_cast<int>(Qt::TextWordWrap) : 0);
        painter.drawText(QStyle::visualRect(layoutDirection(), contentsRect(), room), flags, text());
    }
}

} // namespace benthor::look
