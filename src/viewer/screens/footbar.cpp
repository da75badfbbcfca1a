#include "viewer/screens/footbar.h"

#include "platform/look/look.h"
#include "viewer/screens/playbar.h"
#include "viewer/screens/zoombar.h"

#include <QBoxLayout>
#include <QEvent>

namespace benthor::viewer {

namespace {
constexpr int kHeight = 52;
constexpr int kLowRow = 40; ///< of two, one below the other
} // namespace

FootBar::FootBar(PlayBar* playbar, ZoomBar* zoombar, QWidget* parent)
    : QWidget(parent)
    , playbar_(playbar)
    , zoombar_(zoombar) {
    setFixedHeight(look::scaledRow(kHeight));
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    across_ = new QBoxLayout(QBoxLayout::LeftToRight, this);
    across_->setContentsMargins(look::spaceSmall, 0, look::spaceSmall, 0);
    across_->setSpacing(look::spaceTight);
    across_->setSizeConstraint(QLayout::SetNoConstraint);
    across_->addWidget(playbar, 0, Qt::AlignLeft);
    across_->addStretch();
    across_->addWidget(zoombar, 0, Qt::AlignRight);
}

/// As little as pictures alone need, one bar below the other with a large font.
QSize FootBar::minimumSizeHint() const {
    const QMargins margins = across_->contentsMargins();
    const int play = playbar_->neededWidth(true);
    const int zoom = zoombar_->neededWidth(true);
    const int bars = look::fontScale() > 1 ? std::max(play, zoom) : play + across_->spacing() + zoom;
    return {margins.left() + bars + margins.right(), minimumHeight()};
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
    const QMargins margins = across_->contentsMargins();
    const int room = width() - margins.left() - margins.right();
    const int beside = room - across_->spacing();
    const bool below =
        look::fontScale() > 1 && playbar_->neededWidth(true) + zoombar_->neededWidth(true) > beside;
    across_->setDirection(below ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    const int height = below ? 2 * look::scaledRow(kLowRow) : look::scaledRow(kHeight);
    if (height != maximumHeight()) {
        setFixedHeight(height);
    }
    if (below) {
        playbar_->setCompact(playbar_->neededWidth(false) > room);
        zoombar_->setCompact(zoombar_->neededWidth(false) > room);
        return;
    }
    const int zoom = zoombar_->neededWidth(false);
    const bool playCompact = playbar_->neededWidth(false) + zoom > beside;
    playbar_->setCompact(playCompact);
    zoombar_->setCompact(playbar_->neededWidth(playCompact) + zoom > beside);
}

} // namespace benthor::viewer
