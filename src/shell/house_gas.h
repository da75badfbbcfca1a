#pragma once

#include "gas/screens/gasblend.h"

namespace benthor::shell {

class Rooms;

/// What the gas screen asks: the link, loaded hidden where it is not loaded.
class GasHandover : public gas::GasNeighbours {
public:
    explicit GasHandover(Rooms& rooms)
        : rooms_(rooms) {}

    link::SetupLink& setupLink() override;
    void showLinkForSending() override;
    void showLink() override;

private:
    Rooms& rooms_;
};

} // namespace benthor::shell
