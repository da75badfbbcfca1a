#pragma once

#include "logbook/details.h"
#include "platform/programfolder.h"

#include <QString>
#include <QStringList>

namespace benthor::logbook {

// What was typed of a dive when a session ended and the store took nothing: a text of its own beside the
// store, for the diver to read and to type in again. The program reads it back into no dive.

/// The text: which dive, why it was not stored, each field under its caption. Lines end with LF.
QString unsavedtext(const store::DiveIdentity& dive, const DiverAdds& diver, const QString& reason);

/// Writes that text into the program folder as "unsaved-D0000001.txt", or "unsaved-D0000001-2.txt" and on
/// where the name is taken. Returns the name; empty where nothing can be written.
QString writeunsaved(const platform::ProgramFolder& folder, const store::DiveIdentity& dive,
                     const DiverAdds& diver, const QString& reason);

/// Names of such texts in the program folder.
QStringList unsavednames(const platform::ProgramFolder& folder);

/// The line that names them; empty where there is none.
QString unsavedline(const QStringList& names);

} // namespace benthor::logbook
