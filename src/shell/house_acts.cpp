// What the screens of the logbook show behind an act that was taken back, and the trash beside them.

#include "platform/screen/dialogs.h"
#include "session/process.h"
#include "shell/house_dives.h"
#include "shell/house_handover.h"

namespace benthor::shell {

logbook::trash* DiveScreens::makeTrash() {
    auto* screen = new logbook::trash;
    host_.watchEnd(*screen);
    QObject::connect(screen, &logbook::trash::divesPutBack, screen,
                     [this](const logbook::TurnedAct& turned) { takePutBack(turned); });
    QObject::connect(screen, &logbook::trash::actsChanged, screen, [this] {
        if (rbmain.isLoaded()) {
            rbmain.get().takeActs();
        }
    });
    return screen;
}

/// Before an act is turned: what is typed of any dive is stored, which may be an act of its own.
QString DiveScreens::storeTyped() {
    if (!rbdetails.isLoaded() || !rbdetails.get().hasTyped()) {
        return {};
    }
    const QString diveid = rbdetails.get().dive().diveid;
    const QString fault = rbdetails.get().saveQuietly();
    return fault.isEmpty()
               ? QString()
               : QStringLiteral("The details of %1 are open and cannot be stored.\n%2").arg(diveid, fault);
}

/// The store is another one than the screens show. Details that stayed open would store what was taken back
/// when they are left, so they show what is there by now before anything else happens.
void DiveScreens::takeTurn(const logbook::TurnedAct& turned, const QString& word) {
    const Handover handover(host_);
    const QString closed = closeWhatIsDeleted();
    if (rbdetails.isLoaded()) {
        rbdetails.get().takeStored();
    }
    showListAfresh();
    showOtherActs();
    if (!rbmain.isLoaded()) {
        return;
    }
    if (!turned.back.isEmpty()) {
        rbmain.get().chooseDive(turned.back.first());
    }
    rbmain.get().tell(closed.isEmpty() ? word : word + QStringLiteral(". ") + closed);
    if (const QString text = logbook::turnedText(turned); !text.isEmpty()) {
        platform::dialogs().message(&rbmain.get(), text);
    }
}

logbook::mergelogbook* DiveScreens::makeMerge() {
    auto* screen = new logbook::mergelogbook;
    host_.watchEnd(*screen);
    screen->setTypedKeeper([this] { return storeTyped(); });
    QObject::connect(screen, &logbook::mergelogbook::merged, screen,
                     [this](const logbook::MergeResult& result) { takeMerge(result); });
    return screen;
}

/// The list has the dives that came, the first of them chosen, and open details show what was chosen of them.
/// A list that shows another store by then has none of them, and stays as it is.
void DiveScreens::takeMerge(const logbook::MergeResult& result) {
    const Handover handover(host_);
    mergelogbook.unload();
    host_.divesCame();
    if (rbdetails.isLoaded()) {
        rbdetails.get().takeStored();
    }
    const bool isOwn = process().storepath.isEmpty();
    if (isOwn) {
        rbmain.unload();
    }
    rbmain.showInFront();
    if (!rbmain.isLoaded()) {
        return;
    }
    if (isOwn && !result.dives.isEmpty()) {
        rbmain.get().chooseDive(result.dives.first());
    }
    platform::dialogs().message(&rbmain.get(), logbook::mergeText(result));
}

/// The trash stays in front of the list that has the dives again.
void DiveScreens::takePutBack(const logbook::TurnedAct& turned) {
    if (!turned.back.isEmpty() && process().storepath.isEmpty()) {
        const Handover handover(host_);
        if (rbmain.isLoaded()) {
            rbmain.get().follow(turned.span, turned.changed);
        }
        unloadList();
        rbmain.show();
        filled_ = {};
        if (rbmain.isLoaded()) {
            rbmain.get().chooseDive(turned.back.first());
        }
    }
    if (rbmain.isLoaded()) {
        rbmain.get().takeActs();
    }
    if (trash.isLoaded()) {
        trash.get().bringToFront();
    }
}

void DiveScreens::showOtherActs() {
    if (trash.isLoaded()) {
        trash.get().takeDives();
    }
}

} // namespace benthor::shell
