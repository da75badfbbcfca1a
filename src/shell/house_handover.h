#pragma once

#include "shell/house_dives.h"

namespace benthor::shell {

/// For as long as this lives a moment without a window is no end of the program.
class DiveScreens::Handover {
public:
    explicit Handover(DiveHost& host)
        : host_(host) {
        host_.handoverBegins();
    }
    ~Handover() { host_.handoverEnds(); }
    Handover(const Handover&) = delete;
    Handover& operator=(const Handover&) = delete;

private:
    DiveHost& host_;
};

} // namespace benthor::shell
