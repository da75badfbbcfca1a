#pragma once

#include "platform/look/widgets/overlaycard.h"

#include <QElapsedTimer>

class QLabel;

namespace benthor::look {
class ActivitySweep;
class NumberLabel;
} // namespace benthor::look

namespace benthor::link {

/// The wait frame `Frame5` over the screen's middle while a dive comes. Head and foot stay free: status, byte
/// count, and the way out.
class WaitCard : public look::OverlayCard {
    Q_OBJECT

public:
    explicit WaitCard(QWidget* area);

    /// Shows or hides it; `TXTWait(1)` is enabled only while it is shown.
    void setShown(bool shown);
    void setWords(const QString& text);
    /// Which dive of how many; empty hides it.
    void setPlace(const QString& place);
    /// One step of the work: the sweep moves on. `bytes`: received so far; `cut`: what is said of a line that
    /// was cut, empty for a whole one.
    void step(qsizetype bytes, const QString& cut = {});

private:
    void tellSilence(const QString& cut = {});

    QLabel* words_;
    QLabel* place_;
    look::NumberLabel* bytes_;
    look::ActivitySweep* sweep_;
    QLabel* warning_;
    QLabel* silence_;
    qsizetype received_ = 0;
    QElapsedTimer sinceLastByte_;
};

} // namespace benthor::link
