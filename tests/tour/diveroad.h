#pragma once

#include "tests/tour/actor.h"

namespace benthor::tour {

constexpr int kDiveSteps = 9;

/// From the dive list to one dive, all that can be done with it, and back.
void studyADive(Actor& actor, QWidget* list, const QString& name);

} // namespace benthor::tour
