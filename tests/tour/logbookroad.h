#pragma once

#include "tests/tour/actor.h"

namespace benthor::tour {

constexpr int kLogbookSteps = 5;

/// On the dive screen: details, buddies and a picture, and back.
void keepALog(Actor& actor, QWidget* dive);

/// On the dive list: the list as a spreadsheet, the chosen dive as a message.
void publishADive(Actor& actor, QWidget* list);

/// From the main screen: tips, guide and about box.
void readTheGuides(Actor& actor);

} // namespace benthor::tour
