#pragma once

#include "platform/look/tokens.h"

#include <QIcon>
#include <QRect>
#include <QRectF>

class QPainter;
class QStyleOption;
class QStyleOptionMenuItem;
class QStyleOptionProgressBar;
class QStyleOptionSlider;
class QStyleOptionTab;
class QStyleOptionHeader;
class QWidget;

namespace benthor::look {

// The shapes that all controls are made of. Borders lie inside the rectangle, on whole pixels.

/// A rounded panel. An invalid `border` draws none, an invalid `fill` leaves what is there.
void drawPanel(QPainter* painter, const QRect& rect, const QColor& fill, const QColor& border,
               qreal corner = radius, qreal width = 1);

/// How wide the ring round what has the keyboard is, in the contrast in force.
int focusRingWidth();

/// The ring round what has the keyboard, just inside `rect`.
void drawFocusRing(QPainter* painter, const QRect& rect, qreal corner = radius);

/// Icon `name` centred in `rect`.
void drawIcon(QPainter* painter, const QString& name, const QRect& rect, int size, const QColor& colour);

/// `icon` centred in `rect`: in `ink` if it is one of ours, else as it is.
void drawIcon(QPainter* painter, const QIcon& icon, const QRect& rect, int size, const QColor& ink,
              bool enabled);

/// The 18 wide box of a check box or, round, of a radio button, centred in `rect`.
void drawCheckMark(QPainter* painter, const QRect& rect, const QStyleOption& option, bool round);

void drawButtonBevel(QPainter* painter, const QStyleOption& option, const QWidget* widget);
QColor buttonInk(const QStyleOption& option, const QWidget* widget);

/// Whether it is the line of text within a spin box or a drop-down list.
bool isInnerBox(const QWidget* widget);
/// Whether it is a line of text told to have no frame, so that it looks like a label.
bool isLabelBox(const QStyleOption& option, const QWidget* widget);
void drawField(QPainter* painter, const QStyleOption& option);
void drawScrollBar(QPainter* painter, const QStyleOptionSlider& option, const QRect& slider);
void drawSlider(QPainter* painter, const QStyleOptionSlider& option, const QRect& groove,
                const QRect& handle);
void drawProgressBar(QPainter* painter, const QStyleOptionProgressBar& option);
void drawTab(QPainter* painter, const QStyleOptionTab& option);
/// `head`: the row of heads that the one painted belongs to; may be null.
void drawHeaderGround(QPainter* painter, const QStyleOptionHeader& option, const QWidget* head);
void drawMenuItem(QPainter* painter, const QStyleOptionMenuItem& option);
void drawMenuBarItem(QPainter* painter, const QStyleOptionMenuItem& option);

/// The edge of a trough that has none in usual contrast; invalid there. In high contrast sunken ground alone
/// would not be seen.
QColor troughEdge();

/// The ink of what cannot be worked.
QColor faintInk();

/// Whether dynamic property `name` of `widget` is true.
bool flagged(const QWidget* widget, const char* name);

} // namespace benthor::look
