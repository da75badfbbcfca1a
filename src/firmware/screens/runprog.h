#pragma once

#include "platform/screen/emptyscreen.h"

namespace benthor::firmware {

/// The list of running programs; nothing of it stands yet but its card.
class RunProg : public platform::EmptyScreen {
    Q_OBJECT

public:
    RunProg()
        : EmptyScreen(QStringLiteral("RunProg"), QStringLiteral("Running Programs")) {}
};

} // namespace benthor::firmware
