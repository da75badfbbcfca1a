#include "shell/house_logbook.h"

#include "session/process.h"
#include "shell/house_rooms.h"

namespace benthor::shell {

void LogbookHandover::watchEnd(platform::Screen& screen) {
    rooms_.end.watch(screen);
}

void LogbookHandover::handoverBegins() {
    rooms_.end.handoverBegins();
}

void LogbookHandover::handoverEnds() {
    rooms_.end.handoverEnds();
}

/// An import and the link write into the same folder: one waits for the other.
void LogbookHandover::showDownload() {
    if (!process().importing) {
        process().screenmode = QStringLiteral("Dive");
        rooms_.PC_Link_1.showInFront();
    }
}

void LogbookHandover::showMain() {
    rooms_.main.showInFront();
}

void LogbookHandover::showGas() {
    rooms_.GasBlend.showInFront();
}

void LogbookHandover::divesCame() {
    if (rooms_.main.isLoaded()) {
        rooms_.main.get().divesCame();
    }
}

} // namespace benthor::shell
