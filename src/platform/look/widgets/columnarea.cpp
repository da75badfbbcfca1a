#include "platform/look/widgets/columnarea.h"

#include "platform/look/look.h"

#include <QLayout>
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

QSize ColumnArea::sizeHint() const {
    return QSize(0, wholeHeight()).expandedTo(minimumSizeHint());
}

/// Of words that wrap it is known at a width only: that which the area has.
int ColumnArea::wholeHeight() const {
    const QLayout* layout = widget()->layout();
    return layout != nullptr && layout->hasHeightForWidth() && isVisible()
               ? layout->totalHeightForWidth(width())
               : std::max(widget()->sizeHint().height(), widget()->minimumHeight());
}

void ColumnArea::resizeEvent(QResizeEvent* event) {
    QScrollArea::resizeEvent(event);
    if (const int whole = wholeHeight(); whole != asked_) {
        asked_ = whole;
        updateGeometry();
    }
}

} // namespace benthor::look
