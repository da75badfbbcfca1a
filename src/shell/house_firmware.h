#pragma once

#include "firmware/screens/reprog_link.h"
#include "shell/house_rehearsal.h"

namespace benthor::shell {

class Rooms;

/// What the firmware screen asks: the way back, the lamp that blinks, a device to rehearse with.
class FirmwareHandover : public firmware::FirmwareNeighbours {
public:
    explicit FirmwareHandover(Rooms& rooms)
        : rooms_(rooms) {}

    void leaveToMain() override;
    void showRunningPrograms() override;
    QString lastImage() override { return lastimage_; }
    void setLastImage(const QString& path) override { lastimage_ = path; }

    bool blinkVisible() override;
    void showBlink() override;
    void hideBlink() override;
    void unloadBlink() override;

    int startRehearsal(bool kd, int baud, QString& error) override;
    void rehearsalReports(const QByteArray& checkvalue) override;
    void stopRehearsal() override;

private:
    Rooms& rooms_;
    QString lastimage_; ///< firmware image chosen last
    Rehearsal rehearsal_;
};

} // namespace benthor::shell
