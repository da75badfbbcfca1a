#pragma once

#include <QByteArray>

#include <cstdint>

namespace benthor::simulator {

/// What an unreliable link does to a dive text.
enum class Damage {
    // The checks of the stored rows see these.
    GasNumberShort,  ///< one gas line's number loses a digit
    VersionShort,    ///< one character is left of the version
    IntervalLetters, ///< no digit comes through of the interval, whose digits alone are stored
    TissueNumberShort,
    GasLinesLost,
    TissueLinesLost,
    HeadCut, ///< the text ends in the middle of the gas lines
    // These they do not see: head and row checks are sound, the profile is not.
    ProfileBytesLost,
    ProfileBitsFlipped,
    ProfileCut ///< ends in the middle of a sample line, without "End"
};

/// The text with that damage; the seed says where it strikes. `text` is a whole dive text.
QByteArray damaged(QByteArray text, Damage kind, std::uint64_t seed);

} // namespace benthor::simulator
