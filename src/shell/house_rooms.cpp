#include "shell/house_rooms.h"

#include "platform/programfolder.h"

#include <QCoreApplication>
#include <QTimer>

namespace benthor::shell {

Rooms::Rooms(House& owner, link::LinkLines serialLines)
    : house(owner)
    , lines(std::move(serialLines))
    , lock(platform::ProgramFolder::current().root()) {}

/// What changes the store is left to the guide's load; a store that is to be repaired is let alone.
void Rooms::prepareStart() {
    constexpr int kPaintedBy = 100; // milliseconds
    if (lock.held()) {
        storeStart.begin(platform::ProgramFolder::current());
    }
    QTimer::singleShot(kPaintedBy, &house, [this] {
        if (frmSplash.isVisible() && !platform::Screen::anyAtWork()) {
            frmGetS.makeAhead();
            main.makeAhead();
        }
    });
}

guides::frmSplash* Rooms::makeSplash() {
    auto* screen = make<guides::frmSplash>(lock.held());
    QObject::connect(screen, &guides::frmSplash::handedOver, &house, [this] {
        const Handover handover(end);
        frmSplash.unload();
        QCoreApplication::processEvents();
        frmGetS.showInFront();
    });
    QObject::connect(screen, &guides::frmSplash::repairBegins, &house, [this] { storeStart.drop(); });
    return screen;
}

guides::frmGetS* Rooms::makeGuide() {
    auto* screen = make<guides::frmGetS>(lock.held(), &storeStart);
    QObject::connect(screen, &platform::Screen::unloaded, &house, [this] {
        if (!end.isNear()) {
            const Handover handover(end);
            main.showInFront();
        }
    });
    return screen;
}

} // namespace benthor::shell
