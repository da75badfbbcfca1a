#include "tests/tour/actor.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDateTime>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QTextStream>
#include <QThread>
#include <QWindow>
#include <QtTest>

namespace benthor::tour {

namespace {
constexpr int kLookEveryMilliseconds = 20;
} // namespace

Actor::Actor(const QString& folder, int stepCount)
    : folder_(folder)
    , steps_(stepCount)
    , started_(QDateTime::currentMSecsSinceEpoch()) {
    QDir().mkpath(folder);
}

void Actor::step(const QString& words) {
    ++step_;
    const double seconds = static_cast<double>(QDateTime::currentMSecsSinceEpoch() - started_) / 1000.0;
    QTextStream(stdout)
        << QStringLiteral("   [%1/%2 %3 s] %4").arg(step_, 2).arg(steps_).arg(seconds, 5, 'f', 1).arg(words)
        << Qt::endl;
}

void Actor::look(const std::function<void()>& act) const {
    QMetaObject::invokeMethod(qApp, act, Qt::BlockingQueuedConnection);
}

void Actor::waitFor(const QString& what, const std::function<bool()>& condition, int milliseconds) const {
    const qint64 until = QDateTime::currentMSecsSinceEpoch() + milliseconds;
    for (;;) {
        bool holds = false;
        look([&] { holds = condition(); });
        if (holds) {
            return;
        }
        if (QDateTime::currentMSecsSinceEpoch() > until) {
            throw TourError(QStringLiteral("waited %1 s in vain for %2").arg(milliseconds / 1000).arg(what));
        }
        QThread::msleep(kLookEveryMilliseconds);
    }
}

QWidget* Actor::screen(const QString& name) const {
    QWidget* found = nullptr;
    waitFor(QStringLiteral("the screen ") + name, [&] {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (window->objectName() == name && window->isVisible() && window->windowHandle() != nullptr &&
                window->windowHandle()->isExposed()) {
                found = window;
                return true;
            }
        }
        return false;
    });
    return found;
}

/// Waits until the control can be reached, then posts the deed and returns when it has begun: a click that
/// opens a box is not over before the box is.
void Actor::act(QWidget* control, QPoint at, const std::function<void(QPoint)>& deed) const {
    QString name;
    look([&] { name = control->objectName(); });
    QPoint inWindow;
    QString over;
    const auto reachable = [&] {
        if (!control->isVisible() || !control->isEnabled()) {
            over = QStringLiteral("it is hidden or disabled");
            return false;
        }
        inWindow = control->mapTo(control->window(), at == QPoint(-1, -1) ? control->rect().center() : at);
        QWidget* hit = control->window()->childAt(inWindow);
        if (hit != control && (hit == nullptr || !control->isAncestorOf(hit))) {
            over = QStringLiteral("%1 lies over it")
                       .arg(hit != nullptr ? hit->objectName() : QStringLiteral("nothing"));
            return false;
        }
        return true;
    };
    try {
        waitFor(name, reachable, 10000);
    } catch (const TourError&) {
        throw TourError(QStringLiteral("%1 can't be clicked: %2").arg(name, over));
    }
    QMetaObject::invokeMethod(
        qApp, [deed, inWindow] { deed(inWindow); }, Qt::QueuedConnection);
    look([] {});
}

void Actor::click(QWidget* control, const QPoint& at, Qt::KeyboardModifiers modifiers) const {
    act(control, at, [control, modifiers](QPoint point) {
        QTest::mouseClick(control->window()->windowHandle(), Qt::LeftButton, modifiers, point);
    });
}

void Actor::doubleClick(QWidget* control, const QPoint& at) const {
    act(control, at, [control](QPoint point) {
        QTest::mouseDClick(control->window()->windowHandle(), Qt::LeftButton, {}, point);
    });
}

void Actor::drag(QWidget* control, const QPoint& from, const QPoint& to) const {
    act(control, from, [control, by = to - from](QPoint point) {
        QWindow* window = control->window()->windowHandle();
        QTest::mousePress(window, Qt::LeftButton, {}, point);
        QTest::mouseMove(window, point + by / 2);
        QTest::mouseMove(window, point + by);
        QTest::mouseRelease(window, Qt::LeftButton, {}, point + by);
    });
}

void Actor::key(QWidget* control, Qt::Key key, Qt::KeyboardModifiers modifiers) const {
    QMetaObject::invokeMethod(
        qApp,
        [control, key, modifiers] {
            control->setFocus();
            QTest::keyClick(control->window()->windowHandle(), key, modifiers);
        },
        Qt::QueuedConnection);
    look([] {});
}

void Actor::answerBox(const QString& text, const QString& button, const QString& pictureName) {
    QMessageBox* box = nullptr;
    waitFor(QStringLiteral("a box saying \"%1\"").arg(text), [&] {
        box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        return box != nullptr && box->text() == text && box->isVisible();
    });
    if (!pictureName.isEmpty()) {
        picture(box, pictureName);
    }
    QAbstractButton* found = nullptr;
    look([&] {
        for (QAbstractButton* candidate : box->buttons()) {
            if (candidate->text().remove(u'&') == button) {
                found = candidate;
            }
        }
    });
    if (found == nullptr) {
        throw TourError(QStringLiteral("the box has no button %1").arg(button));
    }
    click(found);
}

void Actor::chooseFile(const QString& path) const {
    QFileDialog* dialog = nullptr;
    waitFor(QStringLiteral("a file dialog"), [&dialog] {
        dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        return dialog != nullptr && dialog->isVisible();
    });
    QLineEdit* name = nullptr;
    look([&] {
        name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        if (name != nullptr) {
            name->setText(path);
        }
    });
    if (name == nullptr) {
        throw TourError(QStringLiteral("the file dialog has no place for a name"));
    }
    key(name, Qt::Key_Return);
}

void Actor::picture(QWidget* screen, const QString& name) {
    const QString file =
        QStringLiteral("%1/%2-%3.png").arg(folder_).arg(++pictures_, 2, 10, QLatin1Char('0')).arg(name);
    bool saved = false;
    look([&] { saved = screen->grab().save(file); });
    if (!saved) {
        throw TourError(QStringLiteral("could not write ") + file);
    }
}

void Actor::pictureOfAll() const {
    look([&] {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (window->isVisible()) {
                window->grab().save(QStringLiteral("%1/failed-%2.png").arg(folder_, window->objectName()));
            }
        }
    });
}

} // namespace benthor::tour
