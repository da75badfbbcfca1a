#pragma once

#include <QString>
#include <QWidget>
#include <functional>

namespace benthor::tour {

/// A person at the screens: says what it does, clicks where a control can really be clicked, types, waits for what must
/// come, and takes pictures. Anything that does not come, or is covered by something else, throws a TourError.
class TourError : public std::exception {
public:
    explicit TourError(const QString& what) : what_(what.toUtf8()) {}
    const char* what() const noexcept override { return what_.constData(); }

private:
    QByteArray what_;
};

class Actor {
public:
    /// Pictures go into `folder`, numbered in the order taken. With `paced`, each step is given time to be seen.
    Actor(const QString& folder, int stepCount);

    /// Announces a step: "[3/12 4.1 s] ...".
    void step(const QString& words);

    /// Waits, events running, until `condition` holds.
    void waitFor(const QString& what, const std::function<bool()>& condition, int milliseconds = 20000);

    /// The visible screen of that name, waited for.
    QWidget* screen(const QString& name);

    /// The control of that name on a screen, which must be there.
    template <class T = QWidget> T* control(QWidget* screen, const QString& name)
    {
        auto* found = screen->findChild<T*>(name);
        if (found == nullptr) {
            throw TourError(QStringLiteral("%1 has no %2").arg(screen->objectName(), name));
        }
        return found;
    }

    void click(QWidget* control, const QPoint& at = QPoint(-1, -1), Qt::KeyboardModifiers modifiers = {});
    void doubleClick(QWidget* control, const QPoint& at);
    void key(QWidget* control, Qt::Key key, Qt::KeyboardModifiers modifiers = {});

    /// Waits for a modal box, checks its text, and clicks the button of that caption (as in "OK").
    void answerBox(const QString& text, const QString& button);

    void picture(QWidget* screen, const QString& name);
    int pictures() const { return pictures_; }

private:
    QPoint reachable(QWidget* control, QPoint at);

    QString folder_;
    int steps_;
    int step_ = 0;
    int pictures_ = 0;
    qint64 started_;
};

} // namespace benthor::tour
