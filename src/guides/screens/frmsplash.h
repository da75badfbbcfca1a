#pragma once

#include "platform/screen/screen.h"

class QLabel;
class QPushButton;

namespace benthor::platform {
class TickTimer;
}

namespace benthor::guides {

/// The first screen: name and version, for a second and a half or until it is clicked. Here, before anything
/// changes the store, a backup can be put in its place.
class frmSplash : public platform::Screen {
    Q_OBJECT

public:
    /// `maintain`: this copy of the program is the one that may touch the store.
    explicit frmSplash(bool maintain);

signals:
    void handedOver();
    /// The store's file may be replaced from now on.
    void repairBegins();

protected:
    void loading() override;
    QSize firstSize() const override { return {520, 320}; }
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void handOver();
    void Command1_click();
    void restore();

    bool maintain_;
    QWidget* Frame1_ = nullptr;
    QLabel* lblProductName_ = nullptr;
    QLabel* lblVersion_ = nullptr;
    QPushButton* Command1_;
    platform::TickTimer* Timer1_;
};

} // namespace benthor::guides
