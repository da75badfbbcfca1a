#pragma once

#include "firmware/reprogstate.h"

namespace benthor::firmware {

// How a session stands, as the guidance tells it.

/// The device shows the page of its mode, behind its prompt if that stands in the text as well.
bool inreprogmode(const ReprogState& state);
/// Nothing is known of a device that was asked to restart.
bool isrestarting(const ReprogState& state);
bool hasprompt(const ReprogState& state);
/// Whether the name makes the image one that needs no mark of its own.
bool issog(const QString& path);
/// The send would refuse the image in hand.
bool willberefused(const ReprogState& state);
/// Where the last image ended ahead of its end, without a point; empty where it did not.
QString brokenoffwords(const BrokenOff& broken);
/// Bytes of the line between quotes, a line end as its sign, long ones cut.
QString quoted(QString bytes);

} // namespace benthor::firmware
