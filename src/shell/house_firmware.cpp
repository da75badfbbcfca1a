#include "shell/house_firmware.h"

#include "shell/house_rooms.h"

namespace benthor::shell {

void FirmwareHandover::leaveToMain() {
    const Handover handover(rooms_.end);
    rooms_.main.showInFront(); // it closes the firmware screen as it loads
    rooms_.ReProg_Link.unload();
}

void FirmwareHandover::showRunningPrograms() {
    rooms_.RunProg.showInFront();
}

bool FirmwareHandover::blinkVisible() {
    return rooms_.BlinkForm.isVisible();
}

void FirmwareHandover::showBlink() {
    rooms_.BlinkForm.show();
}

void FirmwareHandover::hideBlink() {
    if (rooms_.BlinkForm.isLoaded()) {
        rooms_.BlinkForm.get().hide();
    }
}

void FirmwareHandover::unloadBlink() {
    rooms_.BlinkForm.unload();
}

int FirmwareHandover::startRehearsal(bool kd, int baud, QString& error) {
    return rehearsal_.start(kd, baud, error);
}

void FirmwareHandover::rehearsalReports(const QByteArray& checkvalue) {
    rehearsal_.report(checkvalue);
}

void FirmwareHandover::stopRehearsal() {
    rehearsal_.stop();
}

} // namespace benthor::shell
