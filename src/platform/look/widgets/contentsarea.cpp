#include "platform/look/widgets/contentsarea.h"

#include "platform/look/tokens.h"

#include <QApplication>
#include <QLayout>
#include <QMainWindow>
#include <QMenuBar>
#include <QScreen>
#include <QScrollBar>

namespace benthor::look {

namespace {

/// Screens are laid out for it.
constexpr QSize kSmallestWindow(1024, 700);

} // namespace

ContentsArea::ContentsArea(QWidget* contents) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setWidget(contents);
    viewport()->setAutoFillBackground(false);
    contents->setAutoFillBackground(false);
    contents->installEventFilter(this);
    focusWatch_ = connect(qApp, &QApplication::focusChanged, this,
                          [this](QWidget*, QWidget* now) { showWhatHasTheKeyboard(now); });
}

/// The contents go behind this, and with them a control that has the keyboard.
ContentsArea::~ContentsArea() {
    disconnect(focusWatch_);
}

QSize ContentsArea::largestLeast(const QWidget* window) {
    return kSmallestWindow.boundedTo(window->screen()->availableSize());
}

QSize ContentsArea::sizeHint() const {
    return widget()->sizeHint().expandedTo(needed());
}

QSize ContentsArea::minimumSizeHint() const {
    QSize most = largestLeast(window());
    if (const auto* holder = qobject_cast<const QMainWindow*>(window());
        holder != nullptr && holder->menuWidget() != nullptr && !holder->menuWidget()->isHidden()) {
        most.rheight() -= holder->menuWidget()->sizeHint().height();
    }
    return needed().boundedTo(most);
}

/// A change of what the contents need is passed on at once, and not an event later: a window that grows with
/// its contents would be painted once in its old size.
bool ContentsArea::eventFilter(QObject* watched, QEvent* event) {
    if (watched == widget() && event->type() == QEvent::LayoutRequest && widget()->layout() != nullptr) {
        widget()->layout()->activate();
        updateGeometry();
        fit();
    }
    return QScrollArea::eventFilter(watched, event);
}

void ContentsArea::resizeEvent(QResizeEvent* event) {
    QScrollArea::resizeEvent(event);
    fit();
}

bool ContentsArea::viewportEvent(QEvent* event) {
    const bool done = QScrollArea::viewportEvent(event);
    if (event->type() == QEvent::LayoutRequest) {
        updateGeometry();
        fit();
    }
    return done;
}

/// A least size that the contents were given goes before what they would ask for.
QSize ContentsArea::needed() const {
    const QSize given = widget()->minimumSize();
    const QSize asked = widget()->minimumSizeHint();
    return {given.width() > 0 ? given.width() : asked.width(),
            given.height() > 0 ? given.height() : asked.height()};
}

QSize ContentsArea::sizeIn(const QSize& room) const {
    QSize size = room.expandedTo(needed());
    const QLayout* layout = widget()->layout();
    if (layout != nullptr && layout->hasHeightForWidth()) {
        size.setHeight(std::max(size.height(), layout->totalMinimumHeightForWidth(size.width())));
    }
    return size;
}

void ContentsArea::fit() {
    if (fitting_) {
        return; // a scroll bar that comes or goes changes what is seen
    }
    fitting_ = true;
    const QSize whole = maximumViewportSize();
    QSize room = whole;
    QSize size = sizeIn(room);
    // One bar takes room from the other direction, so that it may need the second.
    for (int bar = 0; bar < 2; ++bar) {
        room = whole;
        if (size.height() > room.height()) {
            room.rwidth() -= verticalScrollBar()->sizeHint().width();
        }
        if (size.width() > room.width()) {
            room.rheight() -= horizontalScrollBar()->sizeHint().height();
        }
        size = sizeIn(room);
    }
    widget()->resize(size);
    fitting_ = false;
}

/// What is clicked is seen already, and must not move under the pointer.
void ContentsArea::showWhatHasTheKeyboard(QWidget* now) {
    if (now != nullptr && widget()->isAncestorOf(now) && QApplication::mouseButtons() == Qt::NoButton) {
        const QRect place(now->mapTo(widget(), QPoint()), now->size());
        const QPoint centre = place.center();
        ensureVisible(centre.x(), centre.y(), std::min(place.width(), viewport()->width()) / 2 + spaceSmall,
                      std::min(place.height(), viewport()->height()) / 2 + spaceSmall);
    }
}

} // namespace benthor::look
