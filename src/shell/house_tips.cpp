#include "shell/house_tips.h"

#include "platform/programfolder.h"
#include "shell/house_rooms.h"

namespace benthor::shell {

using guides::frmTip;

guides::frmTip* TipsHandover::makeTips() {
    auto* screen = rooms_.make<frmTip>(opened_, tips_);
    QObject::connect(screen, &frmTip::tipChanged, &rooms_.house, [this] {
        if (rooms_.main.isLoaded()) {
            rooms_.main.get().showTip();
        }
    });
    return screen;
}

void TipsHandover::show(frmTip::Opened opened) {
    const Handover handover(rooms_.end);
    opened_ = opened;
    rooms_.frmTip.show();
    // What comes by itself takes the keys from nobody.
    if (rooms_.frmTip.isLoaded() && opened == frmTip::Opened::ByUser) {
        rooms_.frmTip.get().bringToFront();
    }
    if (rooms_.main.isVisible()) {
        place(rooms_.main.get().frameGeometry(), rooms_.main.get().isMinimized());
    }
    opened_ = frmTip::Opened::ByUser;
}

/// A tips screen that is not open stays so.
void TipsHandover::place(const QRect& mainScreen, bool minimized) {
    if (rooms_.frmTip.isVisible() && !minimized) {
        rooms_.frmTip.get().placeBeside(mainScreen);
    }
}

QString TipsHandover::text() {
    if (tips_.isEmpty()) {
        tips_.open(platform::ProgramFolder::current().path(guides::tipsfile()));
    }
    return tips_.text();
}

void TipsHandover::next() {
    if (rooms_.frmTip.isLoaded()) {
        rooms_.frmTip.get().DoNextTip();
    } else {
        tips_.DoNextTip();
    }
}

} // namespace benthor::shell
