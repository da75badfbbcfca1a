#pragma once

#include "link/linkstatus.h"
#include "platform/screen/emptyscreen.h"

class QLabel;

namespace benthor::link {

/// The link screen. No line is opened yet, so its status is that nothing is connected.
class PC_Link_1 : public platform::EmptyScreen, public LinkStatus {
    Q_OBJECT

public:
    PC_Link_1();

    QString caption() const override;
    platform::ToldColour captionColour() const override { return platform::kToldYellow; }
    bool isOnScreen() const override { return isVisible(); }
    bool isDownloading() const override { return false; }
    void closePorts() override {}

protected:
    void loading() override;
    void unloading() override;

private:
    QLabel* AFLabel3_;
};

} // namespace benthor::link
