#include "platform/look/widgets/columnarea.h"

#include "platform/look/look.h"

#include <QScrollBar>

namespace benthor::look {

ColumnArea::ColumnArea(QWidget* column, int least)
    : least_(least) {
    setWidget(column);
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    viewport()->setAutoFillBackground(false);
    column->setAutoFillBackground(false);
    connect(verticalScrollBar(), &QScrollBar::rangeChanged, this, [this] { updateGeometry(); });
}

QSize ColumnArea::minimumSizeHint() const {
    // Before it is laid out, a scroll bar has a range that means nothing.
    const bool scrolls = isVisible() && verticalScrollBar()->maximum() > 0;
    const int bar = scrolls ? verticalScrollBar()->sizeHint().width() : 0;
    const int content = std::max(widget()->minimumSizeHint().width(), widget()->minimumWidth());
    return {content + bar, look::scaled(least_)};
}

} // namespace benthor::look
