#include "shell/house_main.h"

#include "shell/house_rooms.h"

namespace benthor::shell {

link::LinkStatus& MainHandover::linkStatus() {
    return rooms_.PC_Link_1.get();
}

void MainHandover::showLink() {
    rooms_.PC_Link_1.showInFront();
}

void MainHandover::showGasBlend() {
    rooms_.GasBlend.showInFront();
}

void MainHandover::showDiveList() {
    rooms_.rbmain.show();
    rooms_.opening.listShown();
}

void MainHandover::bringDiveListToFront() {
    rooms_.rbmain.get().bringToFront();
}

void MainHandover::unloadDiveList() {
    rooms_.rbmain.unload();
}

void MainHandover::showMerge() {
    rooms_.dives.mergelogbook.showInFront();
}

void MainHandover::scrollDiveListTo(const QStringList& imported) {
    if (rooms_.rbmain.isLoaded()) {
        rooms_.rbmain.get().scrollToNewest(imported);
    }
}

QString MainHandover::reopenDiveList() {
    return rooms_.dives.reopenList();
}

bool MainHandover::isDiveListOnScreen() {
    return rooms_.rbmain.isVisible();
}

void MainHandover::showDiveView() {
    rooms_.rbinterface.showInFront();
}

void MainHandover::unloadDiveView() {
    rooms_.rbinterface.unload();
}

void MainHandover::unitChosen() {
    rooms_.dives.unitChosen();
}

void MainHandover::unitMayHaveChanged() {
    rooms_.dives.unitMayHaveChanged();
}

void MainHandover::showGuide() {
    rooms_.frmGetS.showInFront();
}

void MainHandover::showTips() {
    rooms_.tips.show(guides::frmTip::Opened::ByUser);
}

QString MainHandover::tipText() {
    return rooms_.tips.text();
}

void MainHandover::nextTip() {
    rooms_.tips.next();
}

void MainHandover::showAbout() {
    rooms_.frmAbout.showInFront();
}

void MainHandover::placeTips(const QRect& mainScreen, bool minimized) {
    rooms_.tips.place(mainScreen, minimized);
}

void MainHandover::showFirmware() {
    rooms_.ReProg_Link.showInFront();
}

void MainHandover::unloadFirmware() {
    rooms_.ReProg_Link.unload();
}

bool MainHandover::isSecondCopy() {
    return !rooms_.lock.held();
}

QString MainHandover::callFirstCopy() {
    return rooms_.opening.callFirstCopy();
}

void MainHandover::unloadOthers() {
    rooms_.end.unloadOthers();
}

void MainHandover::endProcess() {
    rooms_.end.endProcess();
}

} // namespace benthor::shell
