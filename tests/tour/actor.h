#pragma once

#include <QPoint>
#include <QString>
#include <QWidget>
#include <Qt>
#include <functional>

namespace benthor::tour {

/// What did not come as it must.
class TourError : public std::exception {
public:
    explicit TourError(const QString& what)
        : what_(what.toUtf8()) {}
    const char* what() const noexcept override { return what_.constData(); }

private:
    QByteArray what_;
};

/// A person at the screens: says what it does, clicks where a control can really be clicked, types, waits for
/// what must come, and takes pictures. It runs in a thread of its own beside the screens', as a person does,
/// so a modal box or a long import does not hold it up. Whatever does not come, or is covered by something
/// else, throws a TourError.
class Actor {
public:
    /// Pictures go into `folder`, numbered in the order taken.
    Actor(const QString& folder, int stepCount);

    /// Announces a step: "[3/12  4.1 s] ...".
    void step(const QString& words);

    /// Runs `look` in the screens' thread and returns when it is done. It must not open a box.
    void look(const std::function<void()>& act) const;

    /// Looks until `condition` holds.
    void waitFor(const QString& what, const std::function<bool()>& condition, int milliseconds = 30000) const;

    /// The visible screen of that name, waited for until it is painted.
    QWidget* screen(const QString& name) const;

    /// The control of that name on a screen, which must be there.
    template <class T = QWidget> T* control(QWidget* screen, const QString& name) const {
        T* found = nullptr;
        look([&] { found = screen->findChild<T*>(name); });
        if (found == nullptr) {
            throw TourError(QStringLiteral("no control ") + name);
        }
        return found;
    }

    /// A left click, in the middle or at a point of the control. It may open a box.
    void click(QWidget* control, const QPoint& at = {-1, -1}, Qt::KeyboardModifiers modifiers = {}) const;
    void doubleClick(QWidget* control, const QPoint& at) const;
    void drag(QWidget* control, const QPoint& from, const QPoint& to) const;
    void key(QWidget* control, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const;

    /// Waits for a modal box with that text and clicks its button.
    void answerBox(const QString& text, const QString& button, const QString& pictureName = {});

    /// Waits for a file dialog and chooses that path.
    void chooseFile(const QString& path) const;

    void picture(QWidget* screen, const QString& name);
    int pictures() const { return pictures_; }

    /// Every window that stands open, as "failed-<screen>.png": where the road ended early.
    void pictureOfAll() const;

private:
    void act(QWidget* control, QPoint at, const std::function<void(QPoint)>& deed) const;

    QString folder_;
    int steps_;
    int step_ = 0;
    int pictures_ = 0;
    qint64 started_;
};

} // namespace benthor::tour
