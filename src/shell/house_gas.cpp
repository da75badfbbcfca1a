#include "shell/house_gas.h"

#include "session/process.h"
#include "shell/house_rooms.h"

namespace benthor::shell {

link::SetupLink& GasHandover::setupLink() {
    return rooms_.PC_Link_1.get();
}

void GasHandover::showLinkForSending() {
    process().screenmode = QStringLiteral("Command");
    rooms_.PC_Link_1.showInFront();
    rooms_.PC_Link_1.get().layFace();
}

void GasHandover::showLink() {
    rooms_.PC_Link_1.showInFront();
}

} // namespace benthor::shell
