#include "platform/look/style/paint.h"

#include "platform/look/icons.h"
#include "platform/look/type.h"

#include <QPainter>
#include <QStyleOption>
#include <QVariant>
#include <QWidget>

namespace benthor::look {

void drawPanel(QPainter* painter, const QRect& rect, const QColor& fill, const QColor& border, qreal corner,
               qreal width) {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    QRectF outline(rect);
    if (border.isValid()) {
        const qreal half = width / 2;
        outline.adjust(half, half, -half, -half);
        corner = std::max(0.0, corner - half);
        painter->setPen(QPen(border, width));
    } else {
        painter->setPen(Qt::NoPen);
    }
    painter->setBrush(fill.isValid() ? QBrush(fill) : QBrush(Qt::NoBrush));
    painter->drawRoundedRect(outline, corner, corner);
    painter->restore();
}

int focusRingWidth() {
    return contrast() == Contrast::High ? focusWidth + 1 : focusWidth;
}

void drawFocusRing(QPainter* painter, const QRect& rect, qreal corner) {
    drawPanel(painter, rect, QColor(), tokens().accent, corner, focusRingWidth());
}

void drawIcon(QPainter* painter, const QString& name, const QRect& rect, int size, const QColor& colour) {
    const qreal dpr = painter->device() ? painter->device()->devicePixelRatioF() : 1.0;
    const QPoint corner(rect.x() + (rect.width() - size) / 2, rect.y() + (rect.height() - size) / 2);
    painter->drawPixmap(corner, iconPixmap(name, size, colour, dpr));
}

void drawIcon(QPainter* painter, const QIcon& icon, const QRect& rect, int size, const QColor& ink,
              bool enabled) {
    if (!icon.name().isEmpty() && iconNames().contains(icon.name())) {
        drawIcon(painter, icon.name(), rect, size, ink);
        return;
    }
    const QRect square(rect.x() + (rect.width() - size) / 2, rect.y() + (rect.height() - size) / 2, size,
                       size);
    icon.paint(painter, square, Qt::AlignCenter, enabled ? QIcon::Normal : QIcon::Disabled);
}

void drawCheckMark(QPainter* painter, const QRect& rect, const QStyleOption& option, bool round) {
    const Tokens& token = tokens();
    const bool enabled = option.state & QStyle::State_Enabled;
    const bool on = option.state & QStyle::State_On;
    const bool between = option.state & QStyle::State_NoChange;
    const int side = std::min({rect.width(), rect.height(), scaled(18)});
    const QRect box(rect.x() + (rect.width() - side) / 2, rect.y() + (rect.height() - side) / 2, side, side);
    const qreal corner = round ? side / 2.0 : 4;
    const bool hover = enabled && (option.state & QStyle::State_MouseOver);
    QColor edge = enabled ? (hover ? token.accent : token.edge) : token.line;
    QColor fill = enabled ? token.surface : token.ground;
    if (!round && (on || between)) {
        fill = enabled ? token.accent : token.sunken;
        edge = enabled ? token.accent : token.line;
    } else if (round && on && enabled) {
        edge = token.accent;
    }
    const bool pressed = enabled && (option.state & QStyle::State_Sunken);
    drawPanel(painter, box, pressed && !on ? token.accentsoft : fill, edge, corner, round && on ? 1.5 : 1);
    const QColor sign = enabled ? (round ? token.accent : token.ontext) : faintInk();
    if (round && on) {
        const int inset = side * 5 / 18;
        drawPanel(painter, box.adjusted(inset, inset, -inset, -inset), sign, QColor(), side / 2.0);
        return;
    }
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(sign, side / 9.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const auto at = [&box, side](double x, double y) {
        return QPointF(box.x() + x * side, box.y() + y * side);
    };
    if (between) {
        painter->drawLine(at(0.28, 0.5), at(0.72, 0.5));
    } else if (on) {
        painter->drawPolyline(QPolygonF({at(0.26, 0.52), at(0.43, 0.68), at(0.75, 0.34)}));
    }
    painter->restore();
}

QColor troughEdge() {
    return contrast() == Contrast::High ? tokens().line : QColor();
}

QColor faintInk() {
    return tokens().faint;
}

bool flagged(const QWidget* widget, const char* name) {
    return widget && widget->property(name).toBool();
}

} // namespace benthor::look
