#pragma once

#include "link/linkhost.h"
#include "link/linkstate.h"

namespace benthor::link {

// One dive at a time from the device into the folder of waiting files.

void cmddownload_click(LinkState& link, LinkHost& host);
void cmddownloadall_click(LinkState& link, LinkHost& host);
void cmddownloadnew_click(LinkState& link, LinkHost& host);
void mnubackdive_click(LinkState& link, LinkHost& host);
void Timer3_tick(LinkState& link, LinkHost& host);
void Timer5_tick(LinkState& link);

void requestcurrentrow(LinkState& link, LinkHost& host);
void senddiverequest(LinkState& link, LinkHost& host);

// A single dive by its number.

void Command1_click(LinkState& link, LinkHost& host); ///< Get Dive
void Command9_click(LinkState& link, LinkHost& host); ///< Get Dives
void Command3_click(LinkState& link, LinkHost& host); ///< Store Dive Text
/// First step of the supervision's tick while a single dive is captured.
void capturestep(LinkState& link, LinkHost& host);

} // namespace benthor::link
