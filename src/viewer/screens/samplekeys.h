#pragma once

#include "viewer/playback.h"

#include <QObject>

class QWidget;

namespace benthor::viewer {

/// Turns the arrow keys, Home, End and the Page keys of a window into steps through the samples. A control
/// keeps them that has them for itself: the data grid, a slider, a list, a text box, a menu, and any that the
/// Tab key brought, for whoever works the window by keys alone. The chart has no use for them, whichever way
/// it was reached.
class SampleKeys : public QObject {
    Q_OBJECT

public:
    /// Watches the window and every control that it has by now.
    explicit SampleKeys(QWidget* window);

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void walked(SampleStep step);

private:
    bool isKept() const;

    QWidget* window_;
    bool byTab_ = false; ///< the focus came to where it is by the Tab key
};

} // namespace benthor::viewer
