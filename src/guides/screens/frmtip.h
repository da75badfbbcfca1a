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

    /// Opened by itself, the screen closes at once where the user has switched the tips off, and `tips` stay
    /// as they are; else they begin anew. They outlive the screen.
    frmTip(Opened opened, Tips& tips);

    void LoadTips(const QString& filename);
    void DoNextTip();
    void DoPreviousTip();
    void DisplayCurrentTip();
    QString tipText() const;

    /// Beside `window`, wholly on a display and never over it, made as small as it can be where that is what
    /// it takes. Where no display has room beside it, the screen stays where it is.
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
    Tips& tips_;
    look::ClickableLabel* Image1_ = nullptr;
    look::ClickableLabel* lblTipText_ = nullptr;
    QCheckBox* chkLoadTipsAtStartup_ = nullptr;
};

} // namespace benthor::guides
