#pragma once

#include "platform/screen/emptyscreen.h"

namespace benthor::guides {

/// The helper that saves a picture of the dive screen; nothing of it stands yet but its card.
class ScrSavForm1 : public platform::EmptyScreen {
    Q_OBJECT

public:
    ScrSavForm1()
        : EmptyScreen(QStringLiteral("ScrSavForm1"), QStringLiteral("Screen Shot Capture")) {}
};

} // namespace benthor::guides
