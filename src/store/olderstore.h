#pragma once

#include "platform/programfolder.h"
#include "store/backup.h"
#include "store/jet/readjet.h"

#include <optional>

namespace benthor::store {

// Older stores are Jet files. One that stands in the place of rb.mdb at the start, or is chosen to be put
// there, becomes a store of ours. At every moment the Jet file or the whole new store is in the place.

/// How bringing the Jet file in the place of rb.mdb along ended.
struct ComeAlong {
    enum class End {
        None,    ///< there is none
        Taken,   ///< the new store is in its place
        Refused, ///< it could not be; nothing was changed
        Stopped, ///< the user did not want to wait; nothing was changed
    };
    End end = End::None;
    JetCounts counts; ///< what came over
    QString keptAs;   ///< name of the file that the Jet file is kept as, byte for byte
    QString reason;   ///< why it was refused
};

/// Where rb.mdb is a Jet file (or leads to one), the store made from it takes its place, and it is kept as
/// rb-jet.mdb, or rb-jet2.mdb and on where that is taken. Nothing else may use the store.
ComeAlong bringalong(const platform::ProgramFolder& folder, const JetProgress& progress = {},
                     const OpenJet& open = {});

/// The same for a Jet file that was chosen to be restored: the file stays as it is, and the store that was
/// there is kept as restorestore() keeps it. `counts` gets what came over.
Restore restorejet(const platform::ProgramFolder& folder, const QString& chosen, JetCounts& counts,
                   const JetProgress& progress = {}, const OpenJet& open = {});

/// A store made from the Jet file `path`, at `target`, where no file may be. StoreError, JetStopped.
JetCounts copyjet(const QString& path, const QString& target, const JetProgress& progress = {},
                  const OpenJet& open = {});

} // namespace benthor::store
