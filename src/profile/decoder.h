#pragma once

#include "profile/diveprofile.h"

#include <QByteArrayView>
#include <QString>
#include <functional>

namespace benthor::profile {

/// What the reading does to the world around it. Each may be left empty.
struct DecoderHooks {
    /// Called behind each header byte and each field, so that a screen can stay alive; false ends the
    /// reading.
    std::function<bool()> yield = {};
    /// A message box, at the moment it comes.
    std::function<void(const QString&)> message = {};
    /// Called each tenth line once a line was malformed: the time labels are then laid anew.
    std::function<void()> malformedtenthline = {};
};

/// Reads the profile of a dive text (`Command_textfind`'s reading): any bytes whatever, and always to an end.
///
/// A header of at most 10,000 bytes is passed over up to the word "Profile", and one byte more. Then come
/// lines that end in CR; the LF behind a CR is the first character of the next line's field 0, which nothing
/// looks at. The first line is never decoded; any other is a record if it holds at least 3 commas. The
/// reading ends with the byte that completes the word "End" in a field; the line that it stands on is not
/// stored.
///
/// Messages: "end of file unexpected"; "Errors - Too many parameter  !" for each comma behind the 39th of a
/// line. The 41st comma, a sample beyond 25,000 and a line beyond 32,100 end the reading without a word. When
/// 10,000 bytes hold no "Profile", what follows is read as lines all the same.
///
/// The trace file "test.txt" that this reading once kept is not written: nothing reads it.
DiveProfile decodeProfile(QByteArrayView bytes, bool feet, const DecoderHooks& hooks = {});

} // namespace benthor::profile
