#pragma once

#include "guides/tips.h"
#include "platform/screen/screen.h"

class QCheckBox;
class QLabel;

namespace benthor::look {
class ClickableLabel;
}

namespace benthor::guides {

/// The connection tips, one at a time, beginning at any of them.
class frmTip : public platform::Screen {
    Q_OBJECT

public:
    enum class Opened { ByUser, ByItself };

    /// Opened by itself, the screen closes at once where the user has switched the tips off.
    explicit frmTip(Opened opened);

    void LoadTips(const QString& filename);
    void DoNextTip();
    void DoPreviousTip();
    void DisplayCurrentTip();
    QString tipText() const;

    /// At the right of `window`, but never off its display.
    void placeBeside(const QRect& window);

signals:
    void tipChanged();

protected:
    void loading() override;
    QSize firstSize() const override { return {560, 360}; }
    void changeEvent(QEvent* event) override;

private:
    void buildLayout();
    void showPicture();

    Opened opened_;
    Tips tips_;
    look::ClickableLabel* Image1_ = nullptr;
    look::ClickableLabel* lblTipText_ = nullptr;
    QCheckBox* chkLoadTipsAtStartup_ = nullptr;
};

} // namespace benthor::guides
