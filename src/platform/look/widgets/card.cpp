#include "platform/look/widgets/card.h"

#include "platform/look/style/paint.h"

#include <QFocusEvent>
#include <QPainter>
#include <QVBoxLayout>

#include <cmath>
#include <utility>

namespace benthor::look {

Card::Card(QWidget* parent)
    : QFrame(parent)
    , body_(new QVBoxLayout(this)) {
    body_->setContentsMargins(spaceWide, spaceWide, spaceWide, spaceWide);
    body_->setSpacing(spaceBase);
}

void Card::setRaised(bool raised) {
    raised_ = raised;
    update();
}

void Card::roundOff(QWidget* content) {
    content->installEventFilter(this);
    cutCorners(*content);
}

bool Card::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize || event->type() == QEvent::Move) {
        cutCorners(*static_cast<QWidget*>(watched));
    }
    return QFrame::eventFilter(watched, event);
}

/// Pixels through which the border goes are the card's, also those that it covers in part.
void Card::cutCorners(QWidget& content) const {
    constexpr int inner = radius - 1;
    const QRect whole = content.rect();
    const QRect place(content.mapTo(this, QPoint()), content.size());
    const bool left = place.left() <= 1;
    const bool right = place.right() >= width() - 2;
    const bool top = place.top() <= 1;
    const bool bottom = place.bottom() >= height() - 2;
    QRegion shape(whole);
    for (int row = 0; row < inner; ++row) {
        const double up = inner - row;
        const int cut = static_cast<int>(std::ceil(inner - std::sqrt(inner * inner - up * up)));
        for (const auto& [has, y] : {std::pair{top, row}, std::pair{bottom, whole.bottom() - row}}) {
            if (has && left) {
                shape -= QRect(0, y, cut, 1);
            }
            if (has && right) {
                shape -= QRect(whole.width() - cut, y, cut, 1);
            }
        }
    }
    content.setMask(shape);
}

void Card::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event)
    QPainter painter(this);
    drawPanel(&painter, rect(), tokens().surface, raised_ ? tokens().edge : tokens().line);
    if (ring_) {
        drawFocusRing(&painter, rect());
    }
}

/// A card that takes the keyboard by itself shows it once the user goes on by Tab.
void Card::focusInEvent(QFocusEvent* event) {
    ring_ = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
    update();
}

void Card::focusOutEvent(QFocusEvent* event) {
    Q_UNUSED(event)
    ring_ = false;
    update();
}

Pane::Pane(Qt::Edges lines, QWidget* parent)
    : QWidget(parent)
    , lines_(lines) {}

void Pane::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event)
    QPainter painter(this);
    painter.fillRect(rect(), tokens().surface);
    painter.setPen(tokens().line);
    const QRect edge = rect();
    if (lines_ & Qt::TopEdge) {
        painter.drawLine(edge.topLeft(), edge.topRight());
    }
    if (lines_ & Qt::BottomEdge) {
        painter.drawLine(edge.bottomLeft(), edge.bottomRight());
    }
    if (lines_ & Qt::LeftEdge) {
        painter.drawLine(edge.topLeft(), edge.bottomLeft());
    }
    if (lines_ & Qt::RightEdge) {
        painter.drawLine(edge.topRight(), edge.bottomRight());
    }
}

Rule::Rule(Qt::Orientation orientation, QWidget* parent)
    : QWidget(parent) {
    if (orientation == Qt::Horizontal) {
        setFixedHeight(1);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    } else {
        setFixedWidth(1);
        setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    }
}

void Rule::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event)
    QPainter painter(this);
    painter.fillRect(rect(), tokens().line);
}

} // namespace benthor::look
