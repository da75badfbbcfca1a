#pragma once

#include "platform/screen/screen.h"

class QLabel;

namespace benthor::guides {

/// The about box: name, version, and the way to the desktop's system information.
class frmAbout : public platform::Screen {
    Q_OBJECT

public:
    frmAbout();

    /// Starts the desktop's own tool for the machine's data, or says that there is none.
    void StartSysInfo();

protected:
    QSize firstSize() const override;
};

} // namespace benthor::guides
