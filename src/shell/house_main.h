#pragma once

#include "shell/screens/neighbours.h"

namespace benthor::shell {

class Rooms;

/// What the main screen asks of the others.
class MainHandover : public Neighbours {
public:
    explicit MainHandover(Rooms& rooms)
        : rooms_(rooms) {}

    link::LinkStatus& linkStatus() override;
    void showLink() override;
    void showGasBlend() override;

    void showDiveList() override;
    void bringDiveListToFront() override;
    void unloadDiveList() override;
    void scrollDiveListTo(const QStringList& imported) override;
    QString reopenDiveList() override;
    bool isDiveListOnScreen() override;
    void showMerge() override;
    void showDiveView() override;
    void unloadDiveView() override;
    void unitChosen() override;
    void unitMayHaveChanged() override;

    void showGuide() override;
    void showTips() override;
    QString tipText() override;
    void nextTip() override;
    void showAbout() override;
    void placeTips(const QRect& mainScreen, bool minimized) override;

    void showFirmware() override;
    void unloadFirmware() override;

    bool isSecondCopy() override;
    QString callFirstCopy() override;
    void unloadOthers() override;
    void endProcess() override;

private:
    Rooms& rooms_;
};

} // namespace benthor::shell
