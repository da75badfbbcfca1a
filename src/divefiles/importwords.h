#pragma once

#include "divefiles/waitingfiles.h"

#include <QString>
#include <QStringList>

namespace benthor::divefiles {

// What an import tells of a fault of disk or store: which file it struck, what became of it, what comes next.

/// Nothing of the file is stored.
QString stoppedtext(const QString& name, const QString& reason);
/// Its rows are stored and do not read back.
QString notreadbacktext(const QString& name, const QString& reason);
/// Its dive is stored and it stays in `new`.
QString staystext(const QString& name, const QString& reason);
/// Its dive is stored and it cannot be removed.
QString notremovedtext(const QString& name, const QString& reason);
/// A file with a faulty line that cannot be copied to `corrupt`.
QString notsetasidetext(const QString& name, const QString& reason);

/// What stands below the words with which a run ends: the files whose profiles are owed, and what was passed
/// by. Empty where all went well.
QString belowtext(const QStringList& owed, const std::vector<PassedBy>& passedby);

} // namespace benthor::divefiles
