#pragma once

#include "platform/screen/emptyscreen.h"

namespace benthor::gas {

/// The gas screen; nothing of it stands yet but its card.
class GasBlend : public platform::EmptyScreen {
    Q_OBJECT

public:
    GasBlend()
        : EmptyScreen(QStringLiteral("GasBlend"), QStringLiteral("Gas and System Settings")) {}
};

} // namespace benthor::gas
