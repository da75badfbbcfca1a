#include "platform/look/widgets/card.h"

#include "platform/look/style/paint.h"

#include <QPainter>
#include <QVBoxLayout>

namespace benthor::look {

Card::Card(QWidget* parent)
    : QFrame(parent)
    , m_body(new QVBoxLayout(this)) {
    m_body->setContentsMargins(spaceWide, spaceWide, spaceWide, spaceWide);
    m_body->setSpacing(spaceBase);
}

void Card::setRaised(bool raised) {
    m_raised = raised;
    update();
}

void Card::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event)
    QPainter painter(this);
    drawPanel(&painter, rect(), tokens().surface, m_raised ? tokens().edge : tokens().line);
}

Pane::Pane(Qt::Edges lines, QWidget* parent)
    : QWidget(parent)
    , m_lines(lines) {}

void Pane::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event)
    QPainter painter(this);
    painter.fillRect(rect(), tokens().surface);
    painter.setPen(tokens().line);
    const QRect edge = rect();
    if (m_lines & Qt::TopEdge) {
        painter.drawLine(edge.topLeft(), edge.topRight());
    }
    if (m_lines & Qt::BottomEdge) {
        painter.drawLine(edge.bottomLeft(), edge.bottomRight());
    }
    if (m_lines & Qt::LeftEdge) {
        painter.drawLine(edge.topLeft(), edge.bottomLeft());
    }
    if (m_lines & Qt::RightEdge) {
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
