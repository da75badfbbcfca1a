#pragma once

#include "platform/screen/screen.h"

namespace benthor::platform {
class TickTimer;
}

namespace benthor::guides {

/// The first screen: name and version, for a second and a half or until it is clicked.
class frmSplash : public platform::Screen {
    Q_OBJECT

public:
    frmSplash();

signals:
    void handedOver();

protected:
    void loading() override;
    QSize firstSize() const override { return {520, 320}; }
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void handOver();

    platform::TickTimer* Timer1_;
};

} // namespace benthor::guides
