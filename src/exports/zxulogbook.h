#pragma once

#include "exports/wholedive.h"
#include "exports/zxusegments.h"
#include "platform/pieces.h"

#include <QIODevice>
#include <QTemporaryFile>

namespace benthor::exports {

/// Dives in one DL7 file: the head, one table of warnings for all of them, and a group from ZDH to ZDT a
/// dive.
///
/// The head comes first and needs the warnings of the last dive, so that the groups wait until end(): the
/// beginning of them in memory, what does not fit there in a file in the system's folder for such. A single
/// dive gives the file that fullZxu() makes of it.
class ZxuLogbook {
public:
    /// `written`: the moment of the export.
    ZxuLogbook(QIODevice& device, const QDateTime& written)
        : device_(device)
        , written_(written) {}
    /// In this order, add() for each dive. ExportError where the device or the waiting file does not take
    /// all.
    void begin() {}
    void add(const WholeDive& dive) { add(prepare(dive)); }
    void end();

    /// The two halves of add(): what can be made of a dive by itself, on any thread, and its going out.
    using Prepared = ZxuGroup;
    static Prepared prepare(const WholeDive& dive);
    void add(const Prepared& dive);

private:
    void keep(QByteArrayView bytes);
    void copyWaiting();

    QIODevice& device_;
    QDateTime written_;
    QByteArray held_;         ///< of the groups what comes first
    QTemporaryFile waiting_;  ///< what is behind that; opened for the first of it
    platform::Pieces pieces_; ///< on their way there
    ZxuGroups groups_;
};

} // namespace benthor::exports
