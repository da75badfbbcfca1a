#pragma once

#include "link/linkstate.h"
#include "platform/look/widgets/card.h"

namespace benthor::look {
class NumberLabel;
}

namespace benthor::link {

class HudScale;

/// `Frame4`, "HUD and PO2 Alarm": the values that come with the recording interval, as numbers and as a
/// scale.
class HudCard : public look::Card {
    Q_OBJECT

public:
    explicit HudCard(QWidget* parent = nullptr);

    void sync(const Console& console);

private:
    QWidget* buildNumber(int index);

    HudScale* scale_;
    std::array<look::NumberLabel*, 5> numbers_{}; ///< `Text16(2)` to `Text16(6)`
};

} // namespace benthor::link
