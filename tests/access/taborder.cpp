#include "tests/access/facecheck.h"

#include <QAbstractButton>
#include <QApplication>
#include <QButtonGroup>
#include <QImage>
#include <QPointer>
#include <QTest>
#include <QWidget>

namespace benthor::tests {

namespace {

constexpr int kMostStops = 500;

bool isStop(const QWidget* widget, const QWidget* window) {
    return !isOverlaid(widget) && widget->isVisibleTo(window) && widget->isEnabled() &&
           widget->window() == window && (widget->focusPolicy() & Qt::TabFocus) != 0 &&
           widget->focusProxy() == nullptr;
}

/// Of an exclusive group only the one that holds is a stop; the arrow keys lead on.
bool isLedToByArrows(const QWidget* widget) {
    const auto* button = qobject_cast<const QAbstractButton*>(widget);
    if (button == nullptr || !button->isCheckable() || button->isChecked()) {
        return false;
    }
    return button->autoExclusive() || (button->group() != nullptr && button->group()->exclusive());
}

QRect placeOf(const QWidget* widget, const QWidget* window) {
    return {widget->mapTo(window, QPoint()), widget->size()};
}

/// Of two things below a common parent: whether `later` lies above, or in the same line before `earlier`.
bool isBefore(const QRect& later, const QRect& earlier) {
    const int overlap = std::min(later.bottom(), earlier.bottom()) - std::max(later.top(), earlier.top());
    const bool sameLine = overlap * 2 > std::min(later.height(), earlier.height());
    if (sameLine) {
        return later.right() <= earlier.left();
    }
    const int across = std::min(later.right(), earlier.right()) - std::max(later.left(), earlier.left());
    return across > 0 && later.bottom() <= earlier.top();
}

/// The ancestors of two widgets right below their common one, or they themselves.
std::pair<const QWidget*, const QWidget*> branches(const QWidget* one, const QWidget* other) {
    for (const QWidget* a = one; a->parentWidget() != nullptr; a = a->parentWidget()) {
        for (const QWidget* b = other; b->parentWidget() != nullptr; b = b->parentWidget()) {
            if (a->parentWidget() == b->parentWidget()) {
                return {a, b};
            }
        }
    }
    return {one, other};
}

} // namespace

QList<QWidget*> tabRound(QWidget* window) {
    QList<QWidget*> round;
    QWidget* at = window;
    for (int step = 0; step < kMostStops; ++step) {
        at = at->nextInFocusChain();
        if (at == nullptr || at == window) {
            break;
        }
        if (isStop(at, window)) {
            round += at;
        }
    }
    return round;
}

QStringList faultsOfTabOrder(QWidget* window) {
    QStringList faults;
    const QList<QWidget*> round = tabRound(window);
    for (QWidget* widget : window->findChildren<QWidget*>()) {
        if (isStop(widget, window) && !round.contains(widget) && !isLedToByArrows(widget)) {
            faults += QStringLiteral("Tab does not reach %1").arg(tell(widget));
        }
    }
    for (qsizetype at = 1; at < round.size(); ++at) {
        const QWidget* earlier = round.at(at - 1);
        const QWidget* later = round.at(at);
        const auto [a, b] = branches(earlier, later);
        if (isBefore(placeOf(b, window), placeOf(a, window)) ||
            isBefore(placeOf(later, window), placeOf(earlier, window))) {
            faults += QStringLiteral("Tab leads back from %1 to %2").arg(tell(earlier), tell(later));
        }
    }
    return faults;
}

QStringList faultsOfFocus(QWidget* window) {
    constexpr int kAround = 12; // a row may show the focus of what lies in it
    QStringList faults;
    const QPointer<QWidget> before = window->focusWidget();
    window->activateWindow();
    if (!QTest::qWaitForWindowActive(window)) {
        return {QStringLiteral("the window does not become active")};
    }
    for (QWidget* stop : tabRound(window)) {
        if (QWidget* has = window->focusWidget()) {
            has->clearFocus();
        }
        const auto look = [window, stop] {
            QWidget* shown = stop->parentWidget() != nullptr && !stop->parentWidget()->isWindow()
                                 ? stop->parentWidget()
                                 : stop;
            const QRect place(stop->mapTo(shown, QPoint()), stop->size());
            return shown->grab(place.adjusted(-kAround, -kAround, kAround, kAround)).toImage();
        };
        const QImage without = look();
        stop->setFocus(Qt::TabFocusReason);
        if (stop->hasFocus() && look() == without) {
            faults += QStringLiteral("the focus is not seen on %1").arg(tell(stop));
        }
    }
    if (before != nullptr) {
        before->setFocus();
    }
    return faults;
}

} // namespace benthor::tests
