#include "logbook/screens/buddyrow.h"

#include "platform/look/look.h"

#include <QHBoxLayout>

namespace benthor::logbook {

BuddyRow::BuddyRow(QWidget* box, QWidget* add, QWidget* remove)
    : across_(new QBoxLayout(QBoxLayout::LeftToRight, this))
    , box_(box)
    , buttons_(new QWidget) {
    auto* row = new QHBoxLayout(buttons_);
    row->setContentsMargins({});
    row->setSpacing(look::spaceSmall);
    row->addWidget(add);
    row->addWidget(remove);
    row->addStretch();
    across_->setContentsMargins({});
    across_->setSpacing(look::spaceSmall);
    across_->setSizeConstraint(QLayout::SetNoConstraint);
    across_->addWidget(box_, 1);
    across_->addWidget(buttons_);
    setFixedHeight(rowHeight());
}

int BuddyRow::besideWidth() const {
    return box_->minimumSizeHint().width() + across_->spacing() + buttons_->sizeHint().width();
}

int BuddyRow::rowHeight() const {
    return std::max(box_->sizeHint().height(), buttons_->sizeHint().height());
}

QSize BuddyRow::minimumSizeHint() const {
    const int below = std::max(box_->minimumSizeHint().width(), buttons_->sizeHint().width());
    return {look::fontScale() > 1 ? below : besideWidth(), minimumHeight()};
}

void BuddyRow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    const bool below = look::fontScale() > 1 && besideWidth() > width();
    across_->setDirection(below ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    const int height = below ? 2 * rowHeight() + across_->spacing() : rowHeight();
    if (height != maximumHeight()) {
        setFixedHeight(height);
    }
}

} // namespace benthor::logbook
