#include "platform/look/style/paint.h"

#include "platform/look/type.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPainter>
#include <QStyleOption>
#include <QWidget>

namespace benthor::look {

namespace {

struct ButtonLook {
    QColor fill;
    QColor edge;
    QColor ink;
};

ButtonLook filledLook(bool over, bool down) {
    const Tokens& token = tokens();
    const double share = down ? 0.2 : (over ? 0.1 : 0.0);
    return {mixed(token.accent, token.text, share), mixed(token.accent, token.text, share), token.ontext};
}

ButtonLook buttonLook(const QStyleOption& option, const QWidget* widget) {
    const Tokens& token = tokens();
    const bool quiet = flagged(widget, "quiet");
    if (!(option.state & QStyle::State_Enabled)) {
        return {quiet ? QColor() : token.surface, quiet ? QColor() : token.line, faintInk()};
    }
    const bool over = option.state & QStyle::State_MouseOver;
    const bool down = option.state & QStyle::State_Sunken;
    if (flagged(widget, "primary") || (option.state & QStyle::State_On)) {
        return filledLook(over, down);
    }
    const QColor& base = quiet ? token.ground : option.palette.color(QPalette::Button);
    ButtonLook look{down ? mixed(base, token.text, 0.12) : (over ? mixed(base, token.text, 0.05) : base),
                    token.edge, option.palette.color(QPalette::ButtonText)};
    if (flagged(widget, "danger")) {
        look.edge = token.bad;
        look.ink = token.bad;
    } else if (quiet) {
        look.edge = QColor();
        if (!over && !down) {
            look.fill = QColor();
        }
    }
    return look;
}

} // namespace

void drawButtonBevel(QPainter* painter, const QStyleOption& option, const QWidget* widget) {
    const ButtonLook look = buttonLook(option, widget);
    if (!(option.state & QStyle::State_HasFocus)) {
        drawPanel(painter, option.rect, look.fill, look.edge);
        return;
    }
    // The ring takes the edge's place, so nothing is cut off and nothing moves; on a filled button a gap sets
    // it off.
    const bool filled = flagged(widget, "primary") || (option.state & QStyle::State_On);
    if (filled) {
        drawPanel(painter, option.rect, tokens().surface, QColor());
        drawPanel(painter, option.rect.adjusted(4, 4, -4, -4), look.fill, QColor(), radius - 3);
    } else {
        drawPanel(painter, option.rect, look.fill, QColor());
    }
    drawFocusRing(painter, option.rect);
}

QColor buttonInk(const QStyleOption& option, const QWidget* widget) {
    return buttonLook(option, widget).ink;
}

bool isInnerBox(const QWidget* widget) {
    const QWidget* parent = widget != nullptr ? widget->parentWidget() : nullptr;
    return qobject_cast<const QLineEdit*>(widget) != nullptr &&
           (qobject_cast<const QAbstractSpinBox*>(parent) != nullptr ||
            qobject_cast<const QComboBox*>(parent) != nullptr);
}

bool isLabelBox(const QStyleOption& option, const QWidget* widget) {
    const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(&option);
    return frame != nullptr && frame->lineWidth == 0 && qobject_cast<const QLineEdit*>(widget) != nullptr &&
           !isInnerBox(widget);
}

namespace {

/// In high contrast ground and surface are one: what is only read is sunken, and stands on a line instead of
/// within an edge.
void drawReadOnlyPanel(QPainter* painter, const QRect& rect, const QColor& fill, const QColor& edge) {
    drawPanel(painter, rect, fill, QColor());
    const int foot = static_cast<int>(radius);
    painter->fillRect(QRect(rect.x() + foot, rect.bottom(), rect.width() - 2 * foot, 1), edge);
}

/// On a told ground that accent does not stand out from, a line of black or white parts the two.
void drawFieldRing(QPainter* painter, const QRect& rect, const QColor& fill) {
    constexpr double seen = 3;
    drawFocusRing(painter, rect);
    if (contrastRatio(tokens().accent, fill) < seen) {
        const int ring = focusRingWidth();
        drawPanel(painter, rect.adjusted(ring, ring, -ring, -ring), QColor(), readableOn(fill), radius - ring,
                  ring - 1);
    }
}

} // namespace

void drawField(QPainter* painter, const QStyleOption& option) {
    const Tokens& token = tokens();
    const bool enabled = option.state & QStyle::State_Enabled;
    const bool high = contrast() == Contrast::High;
    const bool readOnly = option.state & QStyle::State_ReadOnly;
    const QColor edge = enabled ? token.edge : token.line;
    QColor fill = option.palette.color(QPalette::Base);
    if (readOnly && fill == token.surface) {
        fill = high ? token.sunken : token.ground;
    }
    if (readOnly && high) {
        drawReadOnlyPanel(painter, option.rect, fill, edge);
    } else {
        drawPanel(painter, option.rect, fill, edge);
    }
    if (enabled && (option.state & QStyle::State_HasFocus)) {
        drawFieldRing(painter, option.rect, fill);
    }
}

void drawScrollBar(QPainter* painter, const QStyleOptionSlider& option, const QRect& slider) {
    if (option.minimum == option.maximum) {
        return;
    }
    const Tokens& token = tokens();
    const bool held =
        (option.state & QStyle::State_Sunken) && (option.activeSubControls & QStyle::SC_ScrollBarSlider);
    const bool over =
        (option.state & QStyle::State_MouseOver) && (option.activeSubControls & QStyle::SC_ScrollBarSlider);
    const QColor colour =
        held ? token.textquiet : (over ? token.edge : mixed(token.surface, token.edge, 0.6));
    const QRect bar = slider.adjusted(2, 2, -2, -2);
    drawPanel(painter, bar, colour, QColor(), std::min(bar.width(), bar.height()) / 2.0);
}

void drawSlider(QPainter* painter, const QStyleOptionSlider& option, const QRect& groove,
                const QRect& handle) {
    const Tokens& token = tokens();
    const bool enabled = option.state & QStyle::State_Enabled;
    const QColor colour = enabled ? option.palette.color(QPalette::Link) : token.line;
    drawPanel(painter, groove, token.sunken, token.line, 2);
    QRect run = groove;
    if (option.orientation == Qt::Horizontal) {
        option.upsideDown ? run.setLeft(handle.center().x()) : run.setRight(handle.center().x());
    } else {
        option.upsideDown ? run.setTop(handle.center().y()) : run.setBottom(handle.center().y());
    }
    drawPanel(painter, run, colour, QColor(), 2);
    const QRect knob = handle.adjusted(3, 3, -3, -3);
    drawPanel(painter, knob, enabled ? token.surface : token.ground, colour, knob.width() / 2.0, 2);
    if (option.state & QStyle::State_HasFocus) {
        drawFocusRing(painter, handle, handle.width() / 2.0);
    }
}

void drawProgressBar(QPainter* painter, const QStyleOptionProgressBar& option) {
    const Tokens& token = tokens();
    const QRect& rect = option.rect;
    const qreal corner = std::min(4.0, rect.height() / 2.0);
    drawPanel(painter, rect, token.sunken, token.line, corner);
    const double span = static_cast<double>(option.maximum) - option.minimum;
    if (span <= 0) {
        return;
    }
    const double share = std::clamp((static_cast<double>(option.progress) - option.minimum) / span, 0.0, 1.0);
    const bool across = option.state & QStyle::State_Horizontal;
    QRect done = rect;
    if (across) {
        done.setWidth(static_cast<int>(rect.width() * share));
        if (option.invertedAppearance) {
            done.moveRight(rect.right());
        }
    } else {
        done.setTop(rect.bottom() + 1 - static_cast<int>(rect.height() * share));
    }
    if (done.width() > 0 && done.height() > 0) {
        painter->save();
        painter->setClipRect(done);
        drawPanel(painter, rect, (option.state & QStyle::State_Enabled) ? token.accent : token.edge, QColor(),
                  corner);
        painter->restore();
    }
}

void drawTab(QPainter* painter, const QStyleOptionTab& option) {
    const Tokens& token = tokens();
    const bool chosen = option.state & QStyle::State_Selected;
    const bool over = option.state & QStyle::State_MouseOver;
    QRect foot = option.rect;
    foot.setTop(foot.bottom() - focusWidth + 1);
    if (chosen) {
        painter->fillRect(foot, token.accent);
    } else if (over && (option.state & QStyle::State_Enabled)) {
        painter->fillRect(foot, token.line);
    }
    if (option.state & QStyle::State_HasFocus) {
        drawFocusRing(painter, option.rect.adjusted(0, 2, 0, -5), 4);
    }
}

void drawHeaderGround(QPainter* painter, const QStyleOptionHeader& option, const QWidget* head) {
    const Tokens& token = tokens();
    painter->fillRect(option.rect, option.palette.color(QPalette::Window));
    painter->setPen(token.line);
    painter->drawLine(option.rect.bottomLeft(), option.rect.bottomRight());
    // Where the last head reaches the frame, a line would double that.
    if (head == nullptr || option.rect.right() < head->rect().right()) {
        painter->drawLine(option.rect.topRight(), option.rect.bottomRight());
    }
}

} // namespace benthor::look
