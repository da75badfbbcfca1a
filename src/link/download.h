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

/// Asks for the dive of process().servedrow when its row is selected. Throws DownloadError, as the next.
void requestcurrentrow(LinkState& link, LinkHost& host);
void senddiverequest(LinkState& link, LinkHost& host);
/// "D" and the character with code 47 + n. Throws DownloadError for a number without a code, above 208.
QByteArray diverequest(const QString& number);
/// Number of the dive asked for, which is shown beside it too.
void setstartdivenum(LinkState& link, const QString& number);
/// Whether a dive was asked for and may still come: nothing else is asked of the device meanwhile, and what
/// has come is not emptied.
bool awaitsdive(const LinkState& link);
/// What a run did not bring as it was chosen, in words; empty where there is nothing to tell.
QString shortcomings(const Download& run);
/// "Dive 1 of 2": the dive in hand among those that the run is to bring; empty outside of a run, and in a
/// back-up, whose dives come in one text.
QString runplace(const Download& run);
/// The first selected row, or 0.
int nextselectedrow(const LinkState& link);
/// Place of the bar, 0 to 300, for that many bytes: thousands, and fifths of them above 300.
int downloadprogress(qsizetype length);

// A single dive by its number.

void Command1_click(LinkState& link, LinkHost& host); ///< Get Dive
void Command9_click(LinkState& link, LinkHost& host); ///< Get Dives
void Command3_click(LinkState& link, LinkHost& host); ///< Store Dive Text
/// First step of the supervision's tick while a single dive is captured.
void capturestep(LinkState& link, LinkHost& host);

} // namespace benthor::link
