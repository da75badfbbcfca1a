#pragma once

#include <QWidget>

namespace benthor::look {

/// Says that work goes on where nothing says how far it is: a row of 24 segments with a lit window of 6 that
/// moves one segment at each `advance()`. It has no timer: what works moves it, so a stuck program shows a
/// still bar.
class ActivitySweep : public QWidget {
    Q_OBJECT

public:
    static constexpr int segments = 24;
    static constexpr int window = 6;

    explicit ActivitySweep(QWidget* parent = nullptr);

    /// The first lit segment, from 0; the window wraps round at the end.
    int position() const { return position_; }
    bool isLit(int segment) const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

public slots:
    void advance();
    void restart();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int position_ = 0;
};

} // namespace benthor::look
