#pragma once

#include "platform/rowrange.h"
#include "profile/diveprofile.h"

namespace benthor::viewer {

/// Rows that a step or a tick of play goes on: 1, 2, 4, ... 64.
int fasterPlay(int playspeed);
int slowerPlay(int playspeed);

/// The row of a step by hand, `by` rows on or back. Beyond the last but one row it begins anew, below row 0
/// it goes to that row; row 0 itself is kept. `lastsample` is the last grid row.
int manualStep(int selectedrow, int by, int lastsample);

/// The way that a key goes through the samples.
enum class SampleStep { Back, On, PageBack, PageOn, First, Last };

/// The row that a key leads to, from 1 to `lastsample`, the last grid row. A page is a tenth of the rows that
/// are shown, and at least one.
int walkedRow(SampleStep way, int row, int lastsample, platform::RowRange shown);

/// The row of a tick of play: beyond the last but one row the dive begins anew.
int playStep(int selectedrow, int playspeed, int lastsample);

/// The first alarm point behind `currentrow`, going on from row 1 to `currentrow` itself; 0 for none.
int nextAlarm(const profile::DiveProfile& profile, int currentrow, int lastsample);

/// The same for a mark.
int nextMark(const profile::DiveProfile& profile, int currentrow, int lastsample);

} // namespace benthor::viewer
