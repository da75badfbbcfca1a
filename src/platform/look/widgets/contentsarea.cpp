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

/// Where a bar goes so that all from `start` on, `length` long, is seen with some room around it. What is
/// longer than the view is not moved as long as it fills that, and is else seen from its start.
int showing(const QScrollBar& bar, int view, int start, int length) {
    const int from = start - spaceSmall;
    const int to = start + length + spaceSmall;
    const int now = bar.value();
    if (to - from > view) {
        return from <= now && now + view <= to ? now : from;
    }
    return std::clamp(now, to - view, from);
}

} // namespace

ContentsArea::ContentsArea(QWidget* contents) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setWidget(contents);
    viewport()->setAutoFillBackground(false);
    contents->setAutoFillBackground(false);
    contents->installEventFilter(this);
    focusWatch_ = connect(qApp, &QApplication::focusChanged, this,
                          [this](QWidget* before, QWidget* now) { showWhatHasTheKeyboard(before, now); });
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

void ContentsArea::showEvent(QShowEvent* event) {
    QScrollArea::showEvent(event);
    if (!event->spontaneous()) {
        opened_ = true;
    }
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

/// What the contents would have: where the window scrolls anyway, nothing in them needs a bar of its own.
int ContentsArea::wholeHeight(int width) const {
    const QLayout* layout = widget()->layout();
    return layout != nullptr && layout->hasHeightForWidth() ? layout->totalHeightForWidth(width)
                                                            : widget()->sizeHint().height();
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
    if (size.height() > room.height()) {
        size.setHeight(std::max(size.height(), wholeHeight(size.width())));
    }
    widget()->resize(size);
    fitting_ = false;
}

/// What is clicked is seen already, and must not move under the pointer. Nor do contents move because their
/// window becomes active: at first it shows its start, and later stays as it was left.
void ContentsArea::showWhatHasTheKeyboard(const QWidget* before, QWidget* now) {
    if (now == nullptr || now == last_ || !widget()->isAncestorOf(now)) {
        return;
    }
    const bool first = opened_ && (before == nullptr || before->window() != window());
    last_ = now;
    opened_ = false;
    if (first || QApplication::mouseButtons() != Qt::NoButton) {
        return;
    }
    if (widget()->layout() != nullptr) {
        widget()->layout()->activate(); // what is only now shown has no place yet
        fit();
    }
    const QRect place(now->mapTo(widget(), QPoint()), now->size());
    QScrollBar* across = horizontalScrollBar();
    QScrollBar* down = verticalScrollBar();
    across->setValue(showing(*across, viewport()->width(), place.x(), place.width()));
    down->setValue(showing(*down, viewport()->height(), place.y(), place.height()));
}

} // namespace benthor::look
