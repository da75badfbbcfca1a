#include "shell/house_rooms.h"

#include "platform/programfolder.h"

#include <QCoreApplication>

namespace benthor::shell {

Rooms::Rooms(House& owner, link::LinkLines serialLines)
    : house(owner)
    , lines(std::move(serialLines))
    , lock(platform::ProgramFolder::current().root()) {}

guides::frmSplash* Rooms::makeSplash() {
    auto* screen = make<guides::frmSplash>(lock.held());
    QObject::connect(screen, &guides::frmSplash::handedOver, &house, [this] {
        const Handover handover(end);
        frmSplash.unload();
        QCoreApplication::processEvents();
        frmGetS.showInFront();
    });
    return screen;
}

guides::frmGetS* Rooms::makeGuide() {
    auto* screen = make<guides::frmGetS>(lock.held());
    QObject::connect(screen, &platform::Screen::unloaded, &house, [this] {
        if (!end.isNear()) {
            const Handover handover(end);
            main.showInFront();
        }
    });
    return screen;
}

} // namespace benthor::shell
