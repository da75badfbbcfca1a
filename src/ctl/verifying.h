#pragma once

#include "platform/programfolder.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace benthor::ctl {

struct Verified {
    bool sound = false;
    std::optional<int> dives; ///< nothing where they cannot be counted
    QString reason;           ///< empty where it is sound
};

/// Opens a store for a look, reads all of it and counts its dives. A Jet file is read as a copy in our form.
Verified verifyStore(const QString& path);

/// The store and all that is kept of it beside it: the backups, the store before a merge, those that a backup
/// has replaced, and older ones that came along. Not the damaged ones.
QStringList storesOf(const platform::ProgramFolder& folder);

} // namespace benthor::ctl
