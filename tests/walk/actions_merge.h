#pragma once

#include "tests/walk/actions.h"

namespace benthor::tests {

// Another logbook that is merged, and older stores.

std::vector<Action> mergeActions();
/// The button of the merge screen is pressed, whatever is chosen there.
void whatIsTickedComes(World& world, Model& model, const Step& step);

} // namespace benthor::tests
