#include "viewer/screens/footbar.h"

#include "platform/look/look.h"
#include "viewer/screens/playbar.h"
#include "viewer/screens/zoombar.h"

#include <QEvent>
#include <QHBoxLayout>

namespace benthor::viewer {

namespace {
constexpr int kHeight = 52;
} // namespace

FootBar::FootBar(PlayBar* playbar, ZoomBar* zoombar, QWidget* parent)
    : QWidget(parent)
    , playbar_(playbar)
    , zoombar_(zoombar) {
    setFixedHeight(look::scaled(kHeight));
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(look::spaceSmall, 0, look::spaceSmall, 0);
    row->setSpacing(look::spaceTight);
    row->setSizeConstraint(QLayout::SetNoConstraint);
    row->addWidget(playbar);
    row->addStretch();
    row->addWidget(zoombar);
}

QSize FootBar::minimumSizeHint() const {
    return {0, look::scaled(kHeight)};
}

bool FootBar::event(QEvent* event) {
    if (event->type() == QEvent::LayoutRequest) {
        fit();
    }
    return QWidget::event(event);
}

void FootBar::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    fit();
}

void FootBar::fit() {
    const QMargins margins = layout()->contentsMargins();
    const int room = width() - margins.left() - margins.right() - layout()->spacing();
    const int zoom = zoombar_->neededWidth(false);
    const bool playCompact = playbar_->neededWidth(false) + zoom > room;
    playbar_->setCompact(playCompact);
    zoombar_->setCompact(playbar_->neededWidth(playCompact) + zoom > room);
}

} // namespace benthor::viewer
