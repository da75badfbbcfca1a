#pragma once

#include <QWidget>

#include <array>

class QLabel;

namespace benthor::platform {
class Chart;
}

namespace benthor::viewer {

/// The five time labels Text1 to Text5 below the chart, at the edges and the quarters of its plot area.
class TimeLabels : public QWidget {
    Q_OBJECT

public:
    explicit TimeLabels(platform::Chart& chart, QWidget* parent = nullptr);

    void setTexts(const std::array<QString, 5>& texts);
    std::array<QString, 5> texts() const;
    /// The ground of the labels; invalid: none of their own, and the theme's colour of text.
    void setBackdrop(const QColor& colour);

    QSize sizeHint() const override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void place();

    const platform::Chart& chart_;
    std::array<QLabel*, 5> labels_{};
};

} // namespace benthor::viewer
