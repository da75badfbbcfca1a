#pragma once

#include <QWidget>

class QBoxLayout;

namespace benthor::viewer {

class PlayBar;
class ZoomBar;

/// The bar below the chart: playback at the left, the views at the right. Where both don't fit with their
/// captions, first the one and then the other is pictures alone;
/// where a large font leaves no room even for that, the views stand below.
class FootBar : public QWidget {
    Q_OBJECT

public:
    FootBar(PlayBar* playbar, ZoomBar* zoombar, QWidget* parent = nullptr);

    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void fit();

    QBoxLayout* across_;
    PlayBar* playbar_;
    ZoomBar* zoombar_;
};

} // namespace benthor::viewer
