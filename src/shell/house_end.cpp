#include "shell/house_end.h"

#include "platform/screen/dialogs.h"
#include "platform/skiperrors.h"
#include "shell/house_rooms.h"

#include <QApplication>

namespace benthor::shell {

using platform::Screen;
using platform::skipErrors;

HouseEnd::HouseEnd(Rooms& rooms)
    : rooms_(rooms) {}

HouseEnd::~HouseEnd() = default;

void HouseEnd::watch(Screen& screen) {
    QObject::connect(&screen, &Screen::unloaded, &rooms_.house, [this] { lookLater(); });
}

void HouseEnd::handoverEnds() {
    --handovers_;
    lookLater();
}

void HouseEnd::unloadOthers() {
    near_ = !rooms_.ReProg_Link.isLoaded();
    rooms_.PC_Link_1.unload();
    rooms_.rbdetails.unload();
    rooms_.dives.trash.unload();
    rooms_.dives.mergelogbook.unload();
    rooms_.rbmain.unload();
    rooms_.rbinterface.unload();
    rooms_.GasBlend.unload();
    rooms_.PC_Link_1.unload();
    rooms_.frmTip.unload();
    rooms_.frmGetS.unload();
    rooms_.frmAbout.unload();
    rooms_.frmSplash.unload();
    rooms_.BlinkForm.unload();
    rooms_.RunProg.unload();
}

void HouseEnd::keepAll() {
    const platform::NoDialogs noBoxes;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (auto* screen = qobject_cast<Screen*>(window)) {
            skipErrors([screen] { screen->keep(); });
        }
    }
}

/// Without the main screen (a firmware session, the start) the others are closed one by one.
void HouseEnd::endAll() {
    quiet_ = std::make_unique<platform::NoDialogs>(); // a routine on the stack may still have a word
    near_ = true;
    skipErrors([this] { rooms_.main.unload(); });
    skipErrors([this] { unloadOthers(); });
    skipErrors([this] { rooms_.ReProg_Link.unload(); });
    endProcess();
}

void HouseEnd::endProcess() {
    near_ = true;
    if (!ended_) {
        ended_ = true;
        emit rooms_.house.ended();
    }
}

void HouseEnd::lookLater() {
    QMetaObject::invokeMethod(
        &rooms_.house, [this] { endWithTheLastScreen(); }, Qt::QueuedConnection);
}

void HouseEnd::endWithTheLastScreen() {
    const bool seen =
        rooms_.main.isVisible() || rooms_.rbmain.isVisible() || rooms_.rbinterface.isVisible() ||
        rooms_.rbdetails.isVisible() || rooms_.PC_Link_1.isVisible() || rooms_.GasBlend.isVisible() ||
        rooms_.ReProg_Link.isVisible() || rooms_.RunProg.isVisible() || rooms_.frmSplash.isVisible() ||
        rooms_.frmGetS.isVisible() || rooms_.frmTip.isVisible() || rooms_.frmAbout.isVisible() ||
        rooms_.dives.ScrSavForm1.isVisible() || rooms_.dives.trash.isVisible() ||
        rooms_.dives.mergelogbook.isVisible();
    if (!seen && handovers_ == 0) {
        endProcess();
    }
}

} // namespace benthor::shell
