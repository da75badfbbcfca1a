#pragma once

#include "link/supervision.h"
#include "tests/link/fakehost.h"

#include <memory>

namespace benthor::tests {

/// The lines of a firmware screen, which has one: it goes into `line` when the screen makes it.
inline link::LinkLines oneFakeLine(FakeLine*& line) {
    link::LinkLines lines;
    lines.make = [&line](QObject*, const std::function<void()>&) {
        auto made = std::make_unique<FakeLine>();
        line = made.get();
        return made;
    };
    return lines;
}

} // namespace benthor::tests
