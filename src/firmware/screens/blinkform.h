#pragma once

#include "platform/screen/emptyscreen.h"

namespace benthor::firmware {

/// Appears and disappears to show life while a firmware image goes out.
class BlinkForm : public platform::EmptyScreen {
    Q_OBJECT

public:
    BlinkForm()
        : EmptyScreen(QStringLiteral("BlinkForm"), QString()) {}
};

} // namespace benthor::firmware
