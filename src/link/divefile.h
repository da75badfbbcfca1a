#pragma once

#include "link/linkhost.h"
#include "link/linkstate.h"

#include <stdexcept>

namespace benthor::link {

/// A dive that can't be asked for or stored.
class DownloadError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// A run of the beacon that long says that no more of a dive comes.
const QByteArray& divebeacon();
/// What the user is told of it.
QString downloadfailed();
/// What asks the device for dives, in words.
QString requestfordives();
/// Path of the file of waiting dives that `name` stands for: a backslash parts folders as a slash does.
QString waitingpath(const QString& name);
/// Puts `text` and a line end into the file of waiting dives, whole. A file that waits there under that name
/// and holds something else is kept in `old` first. Throws DownloadError.
void writewaitingfile(const QString& name, QByteArrayView text);
/// Name of a dive's file: series, number without padding, ".txt".
QString divefilename(const QString& series, const QString& number);
/// Stores all that was received under the name of the dive in hand. Throws DownloadError.
void savedivefile(LinkState& link, LinkHost& host);
/// The dives in a row of dives: from each "ver" to the end of the "End" behind it.
std::vector<QByteArray> divesinrow(const QByteArray& text);

} // namespace benthor::link
