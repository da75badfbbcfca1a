#pragma once

#include "ctl/outcome.h"
#include "platform/programfolder.h"

#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <vector>

namespace benthor::ctl {

/// What became of the files that were given. One of which only a part could be stored is among both.
struct ImportResult {
    struct Imported {
        QString file;
        QStringList ids;
    };
    struct Refused {
        QString file;
        QString reason;
    };
    std::vector<Imported> imported;
    std::vector<Refused> refused;
    QStringList notes; ///< what else is to be known, for a person
    QString fault;     ///< of the disk, at which it ended, or that it was interrupted; else empty

    QJsonObject json() const;
    QStringList lines() const;
};

/// Imports dive files into the process's store, one after the other. Each is copied into the folder `new`
/// under its name and imported from there as the importer does it, alone: other files that wait there go on
/// waiting. What cannot be imported leaves nothing in `new`. A given file stays, unless it is one that waits
/// in `new` itself.
ImportResult importFiles(const platform::ProgramFolder& folder, const QStringList& files);

} // namespace benthor::ctl
