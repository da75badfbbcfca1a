#pragma once

#include "simulator/random.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace benthor::tests {

/// A dive text and all that a plain reader knows of it.
struct MadeDive {
    QByteArray text;
    QString startcode; ///< no two of one walk have the same
    QString serial;
    QStringList gases;   ///< "0000,79,0,660,1": the five fields of each line
    QStringList tissues; ///< the three fields of each line
    bool opens = true;   ///< the checks of its rows let it be opened
};

enum class MadeKind {
    Good,
    NoGas,
    Unreadable, ///< its interval is one that the checks refuse
    Nameless,   ///< without version and interval: no import takes it
};

/// Dive number `number` of a walk.
MadeDive makeDive(simulator::Random& random, int number, MadeKind kind = MadeKind::Good);

} // namespace benthor::tests
