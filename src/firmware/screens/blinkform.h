#pragma once

#include "platform/screen/screen.h"

namespace benthor::firmware {

/// Appears and disappears while an image goes out, to show that the program is alive. It takes the keyboard
/// from nobody.
class BlinkForm : public platform::Screen {
    Q_OBJECT

public:
    BlinkForm();

protected:
    QSize firstSize() const override;
};

} // namespace benthor::firmware
