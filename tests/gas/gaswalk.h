#pragma once

#include "tests/gas/fakelink.h"

#include <QList>
#include <QString>

#include <optional>

namespace benthor::tests {

// Random work on the gas screen, in the diver's manner: keys, clicks, files, what arrives from elsewhere.
// Whatever leaves is what the screen shows, cell by cell; where nothing leaves, a box has said why.

enum class Deed {
    TypeCell, ///< `text` into box `what` (0 O2, 1 He, 2 MOD, 3 PPO2) of row `number`
    TypeBox,  ///< `text` into box `what` of the settings
    Append,   ///< `text` behind what stands in box `what` of row `number`
    Active,
    Start,
    Stepper,
    Slider,
    List,
    Check,
    Unit,
    UnitElsewhere,
    Tick,
    Arrival,
    OpenFile,
    BringBack,
    Import,
    Connect,
    Update,
    Save,
    SendFile,
    Reopen,
    Spare ///< throws the text away, as told; in no random walk
};

struct Step {
    Deed deed = Deed::Tick;
    int what = 0;
    int number = 0;
    QString text;
};

QList<Step> randomSteps(quint32 seed, int count);
QString wordsOf(const Step& step);

/// How often a setup left in the walks so far, by an update, a save and the link; and how often it was kept
/// back.
struct WalkCount {
    int left = 0;
    int keptBack = 0;
};
WalkCount& walkCount();

/// Does the steps on a fresh screen; what went wrong, and at which step, or nothing.
struct WalkFault {
    int step = 0;
    QString what;
};
std::optional<WalkFault> walk(const QList<Step>& steps);

/// The fewest steps of a failing walk that still fail.
QList<Step> shrunk(QList<Step> steps);

} // namespace benthor::tests
