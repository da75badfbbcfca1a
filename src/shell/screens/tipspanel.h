#pragma once

#include "platform/look/widgets/card.h"

namespace benthor::look {
class ClickableLabel;
}

namespace benthor::shell {

/// The connection tips that fold out at the right of the main screen (`Frame4`): one tip, and what steps on.
/// Escape closes it.
class TipsPanel : public look::Pane {
    Q_OBJECT

public:
    explicit TipsPanel(QWidget* parent = nullptr);

    void showTip(const QString& text);

signals:
    void nextWanted();
    void closeWanted();

protected:
    void changeEvent(QEvent* event) override;

private:
    QWidget* buildFoot();
    void showPicture();

    look::ClickableLabel* Image4_;
    look::ClickableLabel* tip_;
};

} // namespace benthor::shell
