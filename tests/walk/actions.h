#pragma once

#include "tests/walk/model.h"

#include <vector>

namespace benthor::tests {

/// One step of a walk: which action, and the numbers that it makes its choices from. What it cannot do where
/// it comes (a row that is not there, a screen that is not open) it leaves; so any part of a walk is a walk.
struct Step {
    int action = 0;
    quint32 a = 0;
    quint32 b = 0;
};

struct Action {
    const char* name;
    int weight; ///< how often it is chosen, beside the others
    void (*act)(World& world, Model& model, const Step& step);
};

const std::vector<Action>& actions();

} // namespace benthor::tests
