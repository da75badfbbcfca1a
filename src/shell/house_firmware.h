#pragma once

#include "firmware/screens/reprog_link.h"
#include "shell/house_rehearsal.h"

#include <utility>

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
    /// The screen that is loaded next is opened for that image.
    void giveImage(const QString& path) { given_ = path; }
    QString takeGivenImage() override { return std::exchange(given_, {}); }

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
    QString given_;     ///< by a file that is opened from outside
    Rehearsal rehearsal_;
};

} // namespace benthor::shell
