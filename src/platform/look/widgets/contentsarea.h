#pragma once

#include <QPointer>
#include <QScrollArea>

namespace benthor::look {

/// All that stands on a window, which scrolls where the window has less room than it needs: with a large
/// font on a small display nothing is cut, and nothing is out of reach. As long as there is room enough the
/// area is not seen, and takes no focus of its own.
///
/// It opens at its start. From then on the control that the keyboard goes to is scrolled to as a whole.
class ContentsArea : public QScrollArea {
    Q_OBJECT

public:
    /// `contents`: never null; belongs to the area from now on.
    explicit ContentsArea(QWidget* contents);
    ~ContentsArea() override;

    /// The size, in pixels, beyond which no window has to grow for its contents' sake: the smallest that
    /// screens are laid out for, or the display that `window` stands on where that is smaller.
    static QSize largestLeast(const QWidget* window);

    /// What the contents want, however large.
    QSize sizeHint() const override;
    /// What the contents need, as long as the window remains within `largestLeast`.
    QSize minimumSizeHint() const override;

    /// The contents' size where `room` is what is seen of them at once: all of it, or the least they need.
    QSize sizeIn(const QSize& room) const;

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    bool viewportEvent(QEvent* event) override;

private:
    QSize needed() const;
    int wholeHeight(int width) const;
    void fit();
    void showWhatHasTheKeyboard(const QWidget* before, QWidget* now);

    QMetaObject::Connection focusWatch_;
    QPointer<QWidget> last_; ///< what had the keyboard last
    bool opened_ = false;    ///< shown, and the keyboard has not come yet
    bool fitting_ = false;
};

} // namespace benthor::look
