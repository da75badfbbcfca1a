#pragma once

namespace benthor::link {
class PC_Link_1;
struct SetupBody;
} // namespace benthor::link

namespace benthor::shell {

class Rooms;

/// What the link screen says to the others: its other face, the way back, what the device sent.
class LinkHandover {
public:
    explicit LinkHandover(Rooms& rooms)
        : rooms_(rooms) {}

    link::PC_Link_1* makeLink();

private:
    void connectToMain(link::PC_Link_1* screen);
    void connectToGas(link::PC_Link_1* screen);
    bool setupMayGo(const link::SetupBody& body);

    Rooms& rooms_;
};

} // namespace benthor::shell
