#pragma once

#include "platform/screen/emptyscreen.h"

namespace benthor::guides {

/// The tips screen; nothing of it stands yet but its card.
class frmTip : public platform::EmptyScreen {
    Q_OBJECT

public:
    frmTip()
        : EmptyScreen(QStringLiteral("frmTip"), QStringLiteral("Connection Tips")) {}
};

} // namespace benthor::guides
