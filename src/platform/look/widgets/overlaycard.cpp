#include "platform/look/widgets/overlaycard.h"

#include "platform/look/access/access.h"
#include "platform/look/look.h"
#include "platform/look/widgets/card.h"

#include <QApplication>
#include <QEvent>
#include <QGridLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QVBoxLayout>

namespace benthor::look {

OverlayCard::OverlayCard(QWidget* area, int width)
    : QWidget(area)
    , card_(new Card(this)) {
    setFocusPolicy(Qt::NoFocus);
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(spaceWide, spaceWide, spaceWide, spaceWide);
    layout->addWidget(card_, 1, 1);
    for (const int side : {0, 2}) {
        layout->setRowStretch(side, 1);
        layout->setColumnStretch(side, 1);
    }
    coverForReaders(this);
    card_->setRaised(true);
    card_->setMaximumWidth(scaled(width));
    // The card asks for its whole width and takes it wherever the area has it.
    layout->setColumnStretch(1, 1000);
    card_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    card_->body()->setContentsMargins(spaceRoom, spaceWide, spaceRoom, spaceWide);
    area->installEventFilter(this);
    cover();
    hide();
}

QVBoxLayout* OverlayCard::body() const {
    return card_->body();
}

void OverlayCard::cover() {
    if (const QWidget* area = parentWidget()) {
        setGeometry(area->rect());
    }
    raise();
}

bool OverlayCard::eventFilter(QObject* watched, QEvent* event) {
    if (watched == parentWidget() && event->type() == QEvent::Resize) {
        cover();
    }
    return QWidget::eventFilter(watched, event);
}

bool OverlayCard::event(QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::TouchBegin:
        event->accept();
        return true;
    case QEvent::KeyPress:
    case QEvent::ShortcutOverride:
        if (static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
            event->accept();
            return true;
        }
        break;
    default:
        break;
    }
    return QWidget::event(event);
}

QWidget* OverlayCard::stopBeyond(QWidget* from, bool next) const {
    QWidget* stop = from;
    do {
        stop = next ? stop->nextInFocusChain() : stop->previousInFocusChain();
        if (isAncestorOf(stop) && (stop->focusPolicy() & Qt::TabFocus) && stop->isVisibleTo(this) &&
            stop->isEnabled() && !stop->focusProxy()) {
            return stop;
        }
    } while (stop != from);
    return nullptr;
}

bool OverlayCard::focusNextPrevChild(bool next) {
    QWidget* now = QApplication::focusWidget();
    QWidget* stop = stopBeyond(now && isAncestorOf(now) ? now : card_, next);
    if (stop) {
        stop->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    }
    return true;
}

void OverlayCard::showEvent(QShowEvent* event) {
    cover();
    QWidget* now = window()->focusWidget();
    if (!now || !isAncestorOf(now)) {
        before_ = now;
        if (QWidget* first = stopBeyond(card_, true)) {
            first->setFocus(Qt::OtherFocusReason);
        } else if (const QWidget* area = parentWidget(); now && area && area->isAncestorOf(now)) {
            now->clearFocus(); // keys must not work what is covered
        }
    }
    QWidget::showEvent(event);
}

void OverlayCard::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    QWidget* now = window()->focusWidget();
    if (QWidget* before = before_.data(); before && before->isVisible() && (!now || isAncestorOf(now))) {
        before->setFocus(Qt::OtherFocusReason);
    }
    before_.clear();
}

void OverlayCard::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event)
    QPainter painter(this);
    QColor veil = theme() == Theme::Dark ? QColor(0x05, 0x0A, 0x10) : QColor(0x14, 0x20, 0x2B);
    veil.setAlphaF(theme() == Theme::Dark ? 0.72F : 0.5F);
    painter.fillRect(rect(), veil);
}

} // namespace benthor::look
