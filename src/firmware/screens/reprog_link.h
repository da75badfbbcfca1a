#pragma once

#include "platform/screen/emptyscreen.h"

namespace benthor::firmware {

/// The firmware screen; nothing of it stands yet but its card.
class ReProg_Link : public platform::EmptyScreen {
    Q_OBJECT

public:
    ReProg_Link()
        : EmptyScreen(QStringLiteral("ReProg_Link"), QStringLiteral("KD Reprogramming Link")) {}
};

} // namespace benthor::firmware
