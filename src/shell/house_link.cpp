#include "shell/house_link.h"

#include "gas/setuplook.h"
#include "session/process.h"
#include "shell/house_rooms.h"

namespace benthor::shell {

link::PC_Link_1* LinkHandover::makeLink() {
    auto* screen = rooms_.make<link::PC_Link_1>(rooms_.lines);
    screen->setTipsQuery([this] { return rooms_.frmTip.isVisible(); });
    QObject::connect(screen, &link::PC_Link_1::swapWanted, &rooms_.house, [this](const QString& screenmode) {
        const Handover handover(rooms_.end);
        rooms_.PC_Link_1.unload();
        process().screenmode = screenmode;
        rooms_.PC_Link_1.showInFront();
    });
    QObject::connect(screen, &link::PC_Link_1::menuWanted, &rooms_.house, [this] {
        const Handover handover(rooms_.end);
        rooms_.PC_Link_1.unload();
        rooms_.main.showInFront();
    });
    QObject::connect(screen, &link::PC_Link_1::tipsWanted, &rooms_.house,
                     [this] { rooms_.tips.show(guides::frmTip::Opened::ByItself); });
    connectToMain(screen);
    connectToGas(screen);
    return screen;
}

/// What the device says of its setup and its readings stands on the gas screen, seen or not.
void LinkHandover::connectToGas(link::PC_Link_1* screen) {
    QObject::connect(screen, &link::PC_Link_1::setupArrived, &rooms_.house,
                     [this](const QByteArray& text) { rooms_.GasBlend.get().receiveSetup(text); });
    QObject::connect(
        screen, &link::PC_Link_1::readingsArrived, &rooms_.house,
        [this](const link::Readings& readings) { rooms_.GasBlend.get().receiveReadings(readings); });
    QObject::connect(screen, &link::PC_Link_1::setupUpdateWanted, &rooms_.house,
                     [this] { rooms_.GasBlend.get().Command1_click(); });
    screen->setSetupLook([this](const link::SetupBody& body) { return setupMayGo(body); });
}

/// A gas screen that is not there is not loaded to be asked: its start writes into the text in hand.
bool LinkHandover::setupMayGo(const link::SetupBody& body) {
    if (rooms_.GasBlend.isLoaded()) {
        return rooms_.GasBlend.get().setupMayGo(body);
    }
    const QString refusal = gas::textrefusal(body.text);
    if (!refusal.isEmpty()) {
        rooms_.GasBlend.showInFront();
        rooms_.GasBlend.get().say(refusal);
    }
    return refusal.isEmpty();
}

void LinkHandover::connectToMain(link::PC_Link_1* screen) {
    QObject::connect(screen, &link::PC_Link_1::firmwareWanted, &rooms_.house, [this] {
        const Handover handover(rooms_.end);
        rooms_.main.get().mnuReprogIR_click();
    });
    QObject::connect(screen, &link::PC_Link_1::importWanted, &rooms_.house,
                     [this] { rooms_.main.get().lblmdu_click(); });
    QObject::connect(screen, &link::PC_Link_1::importAfterLeaving, &rooms_.house, [this] {
        const Handover handover(rooms_.end);
        rooms_.PC_Link_1.unload();
        rooms_.main.showInFront();
        rooms_.main.get().lblmdu_click();
    });
    QObject::connect(screen, &link::PC_Link_1::hintForMain, &rooms_.house, [this](const QString& hint) {
        if (rooms_.main.isLoaded()) {
            rooms_.main.get().showHint(hint);
        }
    });
    QObject::connect(screen, &link::PC_Link_1::statusPainted, &rooms_.house, [this] {
        // One that is on its way out is not addressed: that would load another.
        if (rooms_.main.isLoaded() && rooms_.PC_Link_1.isLoaded()) {
            rooms_.main.get().showLinkStatus();
        }
    });
}

} // namespace benthor::shell
