#include "link/screens/breakingrow.h"

#include <QBoxLayout>
#include <QEvent>

#include <algorithm>

namespace benthor::link {

BreakingRow::BreakingRow(int spacing, QWidget* parent)
    : QWidget(parent)
    , layout_(new QBoxLayout(QBoxLayout::LeftToRight, this)) {
    layout_->setContentsMargins({});
    layout_->setSpacing(spacing);
}

void BreakingRow::add(QWidget* part, int stretch) {
    layout_->addWidget(part, stretch);
}

bool BreakingRow::isBroken() const {
    return layout_->direction() == QBoxLayout::TopToBottom;
}

QSize BreakingRow::minimumSizeHint() const {
    int widest = 0;
    for (int i = 0; i < layout_->count(); ++i) {
        if (const QLayoutItem* part = layout_->itemAt(i); !part->isEmpty()) {
            widest = std::max(widest, part->minimumSize().width());
        }
    }
    return {widest, layout_->minimumSize().height()};
}

int BreakingRow::rowWidth() const {
    int width = -layout_->spacing();
    for (int i = 0; i < layout_->count(); ++i) {
        if (const QLayoutItem* part = layout_->itemAt(i); !part->isEmpty()) {
            width += part->minimumSize().width() + layout_->spacing();
        }
    }
    return width;
}

bool BreakingRow::event(QEvent* event) {
    if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::Resize) {
        arrange();
    }
    return QWidget::event(event);
}

void BreakingRow::arrange() {
    const auto wanted = rowWidth() <= width() ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom;
    if (layout_->direction() != wanted) {
        layout_->setDirection(wanted);
        updateGeometry();
    }
}

} // namespace benthor::link
