#include "tests/tour/actor.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDateTime>
#include <QDir>
#include <QMessageBox>
#include <QTextStream>
#include <QWindow>
#include <QtTest/qtestkey.h>
#include <QtTest/qtestmouse.h>
#include <QtTest/qtestsystem.h>

namespace benthor::tour {

Actor::Actor(const QString& folder, int stepCount)
    : folder_(folder), steps_(stepCount), started_(QDateTime::currentMSecsSinceEpoch())
{
    QDir().mkpath(folder);
}

void Actor::step(const QString& words)
{
    ++step_;
    const double seconds = static_cast<double>(QDateTime::currentMSecsSinceEpoch() - started_) / 1000.0;
    QTextStream(stdout) << QStringLiteral("   [%1/%2 %3 s] %4")
                               .arg(step_)
                               .arg(steps_)
                               .arg(seconds, 0, 'f', 1)
                               .arg(words)
                        << Qt::endl;
}

void Actor::waitFor(const QString& what, const std::function<bool()>& condition, int milliseconds)
{
    if (!QTest::qWaitFor(condition, milliseconds)) {
        throw TourError(QStringLiteral("waited %1 s in vain for %2").arg(milliseconds / 1000).arg(what));
    }
}

QWidget* Actor::screen(const QString& name)
{
    QWidget* found = nullptr;
    waitFor(QStringLiteral("the screen ") + name, [&] {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (window->objectName() == name && window->isVisible()) {
                found = window;
                return true;
            }
        }
        return false;
    });
    if (!QTest::qWaitForWindowExposed(found)) {
        throw TourError(name + QStringLiteral(" was never painted"));
    }
    return found;
}

QPoint Actor::reachable(QWidget* control, QPoint at)
{
    waitFor(QStringLiteral("%1 to be visible and enabled").arg(control->objectName()),
            [control] { return control->isVisible() && control->isEnabled(); });
    if (at == QPoint(-1, -1)) {
        at = control->rect().center();
    }
    const QPoint inWindow = control->mapTo(control->window(), at);
    QWidget* hit = control->window()->childAt(inWindow);
    if (hit == nullptr || (hit != control && !control->isAncestorOf(hit))) {
        throw TourError(QStringLiteral("%1 can't be clicked: %2 lies over it")
                            .arg(control->objectName(), hit != nullptr ? hit->objectName() : QStringLiteral("nothing")));
    }
    return inWindow;
}

void Actor::click(QWidget* control, const QPoint& at, Qt::KeyboardModifiers modifiers)
{
    const QPoint point = reachable(control, at);
    QTest::mouseClick(control->window()->windowHandle(), Qt::LeftButton, modifiers, point);
}

void Actor::doubleClick(QWidget* control, const QPoint& at)
{
    const QPoint point = reachable(control, at);
    QTest::mouseDClick(control->window()->windowHandle(), Qt::LeftButton, {}, point);
}

void Actor::key(QWidget* control, Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    control->setFocus();
    QTest::keyClick(control->window()->windowHandle(), key, modifiers);
}

void Actor::answerBox(const QString& text, const QString& button)
{
    QMessageBox* box = nullptr;
    waitFor(QStringLiteral("a box saying \"%1\"").arg(text), [&] {
        box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        return box != nullptr && box->text() == text;
    });
    for (QAbstractButton* candidate : box->buttons()) {
        if (candidate->text().remove(u'&') == button) {
            click(candidate);
            return;
        }
    }
    throw TourError(QStringLiteral("the box has no button %1").arg(button));
}

void Actor::picture(QWidget* screen, const QString& name)
{
    QTest::qWait(50); // lets a repaint that is under way come through
    const QString file = QStringLiteral("%1/%2-%3.png").arg(folder_).arg(++pictures_, 2, 10, QLatin1Char('0')).arg(name);
    if (!screen->grab().save(file)) {
        throw TourError(QStringLiteral("could not write ") + file);
    }
}

} // namespace benthor::tour
