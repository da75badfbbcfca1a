#pragma once

#include "platform/programfolder.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace benthor::divefiles {

/// A name in the folder `new` that ends like a dive file's and is passed by.
struct PassedBy {
    QString name;   ///< as it can be shown: a byte that is no text stands as "\xff"
    QString reason; ///< "no regular file", "begins with a point", "no UTF-8"
    bool operator==(const PassedBy&) const = default;
};

struct WaitingFiles {
    QStringList names; ///< regular files (a link to one counts), in the order of ProgramFolder::listFiles
    std::vector<PassedBy> passedby;
};

/// What lies in `new` and ends in ".txt", in any case of letters.
WaitingFiles waitingfiles(const platform::ProgramFolder& folder);

/// One line that names what is passed by and why, the first `most` by name; empty where nothing is.
QString passedbytext(const std::vector<PassedBy>& passedby, int most = 3);

/// Takes a file out of `new` that no import can read, into `corrupt`; under a name with a number where
/// another file has its name there. Its bytes stand in `old` as well before it goes.
platform::FileResult movetocorrupt(const platform::ProgramFolder& folder, const QString& name);

} // namespace benthor::divefiles
