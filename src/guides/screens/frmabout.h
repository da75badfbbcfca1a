#pragma once

#include "platform/screen/emptyscreen.h"

namespace benthor::guides {

/// The about box; nothing of it stands yet but its card.
class frmAbout : public platform::EmptyScreen {
    Q_OBJECT

public:
    frmAbout()
        : EmptyScreen(QStringLiteral("frmAbout"), QStringLiteral("About Benthor")) {}
};

} // namespace benthor::guides
