#pragma once

#include "link/linkhost.h"
#include "link/linkstate.h"

#include <QString>

#include <optional>

namespace benthor::link {

// A logo is a screen saver of the device. A bitmap of 102 by 64 pixels is turned into a text by a converter,
// a program of its own; the text goes to the device by the choice Logo Upload.

/// Name of the text that a converter makes of the bitmap `name` (without path): its last five characters give
/// way to "a.bmt". Nothing for a name shorter than five.
std::optional<QString> convertedName(const QString& name);

/// The converter: "logoconv.exe" in the program folder, else "logoconv" on the path; a file that cannot be
/// executed is none. Empty where there is neither.
QString findConverter();

/// Tells what a bitmap must be, then asks for one.
void mnuLogoConv_click(LinkState& link, LinkHost& host);
/// Asks for a bitmap and starts the converter in the program folder, with the file's bare name. Nobody waits
/// for it: the name of its text is told, and taken for the next upload of a logo, whatever becomes of it.
void Command8_click(LinkState& link, LinkHost& host);

} // namespace benthor::link
