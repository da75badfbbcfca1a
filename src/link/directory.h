#pragma once

#include "link/linkhost.h"
#include "link/linkstate.h"

namespace benthor::link {

// The device's list of dives.

/// One row and one column are left.
void cleardirectory(LinkState& link);
/// Refresh: clears the directory and asks for it. Nothing while a run waits for a dive, whoever asks.
void cmdstore_click(LinkState& link, LinkHost& host);
/// Asks for the directory alone.
void senddirectorycommand(LinkState& link, LinkHost& host);
/// Waits for the directory and then, from devices before the third version, for the setup.
void Timer2_tick(LinkState& link, LinkHost& host);
/// Dives are asked for: what comes from now on is theirs, and no directory or setup is waited for until the
/// next Refresh. The end of a dive is written as that of a directory.
void enddirectorywait(LinkState& link);
void resetgridheader(LinkState& link);
/// Fills the directory from the receive view: each "ver" opens a row, labelled values fill it in any order.
/// Values are found by the distance from their label. A value without a carriage return within its longest
/// length, the return counted, leaves its cell empty.
void parsedirectory(LinkState& link);
/// Paints the rows whose start code is in the store.
void markstoreddives(LinkState& link);
/// A release of the mouse with rows `row` to `rowsel` selected, in either order; `shift` has bit 0 for Shift,
/// bit 1 for Control. process().servedrow is the row that was clicked.
void Mgrid_mouseup(LinkState& link, int row, int rowsel, int shift);

} // namespace benthor::link
