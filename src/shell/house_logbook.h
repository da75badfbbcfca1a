#pragma once

#include "shell/house_dives.h"

namespace benthor::shell {

class Rooms;

/// What the dive list, the dive screen and the details ask of the house around them.
class LogbookHandover : public DiveHost {
public:
    explicit LogbookHandover(Rooms& rooms)
        : rooms_(rooms) {}

    void watchEnd(platform::Screen& screen) override;
    void handoverBegins() override;
    void handoverEnds() override;

    void showDownload() override;
    void showMain() override;
    void showGas() override;
    void divesCame() override;

private:
    Rooms& rooms_;
};

} // namespace benthor::shell
