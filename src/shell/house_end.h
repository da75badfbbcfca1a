#pragma once

#include <memory>

namespace benthor::platform {
class NoDialogs;
class Screen;
} // namespace benthor::platform

namespace benthor::shell {

class Rooms;

/// The process ends with the last screen that can be seen, with the main screen, or with the session.
class HouseEnd {
public:
    explicit HouseEnd(Rooms& rooms);
    ~HouseEnd();

    /// Looks after the end of a screen that was made.
    void watch(platform::Screen& screen);
    /// Between these two the moment without a window ends nothing.
    void handoverBegins() { ++handovers_; }
    void handoverEnds();

    /// The main screen goes: nothing shows it again.
    bool isNear() const { return near_; }
    void comesNear() { near_ = true; }

    /// Every screen but the main one and the firmware's, in the order in which the program ends.
    void unloadOthers();
    /// Stores what closing the screens would store, without a box.
    void keepAll();
    /// Closes all, without a box.
    void endAll();
    void endProcess();

private:
    void lookLater();
    void endWithTheLastScreen();

    Rooms& rooms_;
    bool near_ = false;
    bool ended_ = false;
    int handovers_ = 0;
    std::unique_ptr<platform::NoDialogs> quiet_; ///< there once the session has ended
};

/// One screen goes and the next is about to come.
class Handover {
public:
    explicit Handover(HouseEnd& end)
        : end_(end) {
        end_.handoverBegins();
    }
    ~Handover() { end_.handoverEnds(); }
    Handover(const Handover&) = delete;
    Handover& operator=(const Handover&) = delete;

private:
    HouseEnd& end_;
};

} // namespace benthor::shell
