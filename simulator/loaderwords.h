#pragma once

#include "simulator/firmwareimage.h"

#include <QByteArray>

#include <array>
#include <cstdint>

namespace benthor::simulator {

// What a loader says. The program at the other end goes by words in it, so none of these texts holds a word
// of another: "MEMORY", "Prog", "Status check", " to ", "oooo", "OOOO", "8:f" and "shell:" stand only where
// they are meant, and of the two types' words only the device's own. Lines are parted by CR LF; the last one
// of a text has no line end.

using Memories = std::array<bool, 3>; ///< A, B, C: programmed, or erased

QByteArray smallBeacon();
QByteArray largeBeacon();

/// `memory` from 0 on.
QByteArray erasedLine(std::size_t memory);
QByteArray programmedLine(std::size_t memory);
/// Each memory's "Erased", and its "Programmed" where it is.
QByteArray memoryLines(const Memories& programmed);

/// `check`: four digits. They stand 29 characters behind the "s" of "shell:".
QByteArray checkLine(FirmwareType type, const QByteArray& check);

/// Holds "R, Enter" and never "REPROG MODE".
QByteArray promptPage(FirmwareType type, const Memories& programmed, const QByteArray& check);
/// Holds "REPROG MODE" and never "R, Enter".
QByteArray modePage(FirmwareType type);

/// Eight digits that begin ten characters ahead of "Prog".
QByteArray sumLine(std::uint32_t sum);

QByteArray eraseQuestion();
QByteArray keptLine();
QByteArray restartLine();
/// The data are compared.
QByteArray compareLine();

} // namespace benthor::simulator
