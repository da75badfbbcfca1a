#pragma once

#include "simulator/random.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace benthor::tests {

/// A dive text and all that a plain reader knows of it.
struct MadeDive {
    QByteArray text;
    QString startcode;
    QString serial;
    QString started; ///< these three as the store has them; no two dives of one walk share all of them
    QString duration;
    QString depth;
    QString finished;
    QStringList gases;   ///< "0000,79,0,660,1": the five fields of each line
    QStringList tissues; ///< the three fields of each line
    bool opens = true;   ///< the checks of its rows let it be opened

    QString key() const { return diveKey(started, duration, depth); }
    /// What no diver edits and every copy of a dive has, in whatever store it stands.
    static QString diveKey(const QString& started, const QString& duration, const QString& depth) {
        return started + u'|' + duration + u'|' + depth;
    }
};

enum class MadeKind {
    Good,
    NoGas,
    Unreadable, ///< its interval is one that the checks refuse
    Nameless,   ///< without version and interval: no import takes it
};

/// Dive number `number` of a walk.
MadeDive makeDive(simulator::Random& random, int number, MadeKind kind = MadeKind::Good);
/// One that began in the same second, on another device.
MadeDive makeTwin(simulator::Random& random, int number, const MadeDive& of);

} // namespace benthor::tests
