#pragma once

#include "firmware/guidance.h"
#include "platform/look/widgets/card.h"

class QLabel;
class QProgressBar;

namespace benthor::look {
class ClickableLabel;
class NumberLabel;
class NoticeBand;
} // namespace benthor::look

namespace benthor::firmware {

/// How far the image is, what the device does behind it, and what the user does next.
class ProgressCard : public look::Card {
    Q_OBJECT

public:
    explicit ProgressCard(QWidget* parent = nullptr);

    void sync(const ReprogState& state, const NextStep& next);

signals:
    void sendClicked();

private:
    static QWidget* waitFrame(const char* frame, QProgressBar* bar, const char* words);
    void syncBar(const ReprogState& state);

    look::ClickableLabel* Label8_;
    QLabel* Label5_;
    look::NumberLabel* percent_;
    QProgressBar* ProgressBar1_;
    QLabel* count_;
    QLabel* next_;
    QProgressBar* ProgressBar2_; ///< of the final wait
    QProgressBar* ProgressBar3_; ///< of the device that does it again
    QWidget* Frame5_;
    QWidget* Frame6_;
    look::NoticeBand* warning_;
};

} // namespace benthor::firmware
