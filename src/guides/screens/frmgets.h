#pragma once

#include "platform/screen/emptyscreen.h"

class QCheckBox;

namespace benthor::guides {

/// The guide that a new user is met by. Its first load in a process puts the store right, whether the guide
/// is wanted or not; where the store says that it is not, it closes itself at once.
class frmGetS : public platform::EmptyScreen {
    Q_OBJECT

public:
    /// `maintain`: this copy of the program is the one that may touch the store.
    explicit frmGetS(bool maintain);

protected:
    void loading() override;

private:
    void Check1_toggled(bool checked);

    bool maintain_;
    QCheckBox* Check1_;
};

} // namespace benthor::guides
