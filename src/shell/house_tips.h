#pragma once

#include "guides/screens/frmtip.h"
#include "guides/tips.h"

#include <QRect>

namespace benthor::shell {

class Rooms;

/// The tips, which the main screen's panel and the tips screen both show.
class TipsHandover {
public:
    explicit TipsHandover(Rooms& rooms)
        : rooms_(rooms) {}

    guides::frmTip* makeTips();
    void show(guides::frmTip::Opened opened);
    void place(const QRect& mainScreen, bool minimized);

    QString text();
    void next();

private:
    Rooms& rooms_;
    guides::Tips tips_;
    guides::frmTip::Opened opened_ = guides::frmTip::Opened::ByUser; ///< how the next tips screen is opened
};

} // namespace benthor::shell
