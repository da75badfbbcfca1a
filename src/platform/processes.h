#pragma once

#include <QByteArrayView>
#include <QString>

#include <vector>

namespace benthor::platform {

/// A process of this machine.
struct RunningProcess {
    int id = 0;
    quint64 began = 0; ///< clock ticks from the machine's start to its own: with the id it is the process for
                       ///< good, as the system hands ids out again
    QString name;      ///< file name of its executable, without path
};

/// Every process, in no order. One that has ended is not among them, though its parent may not have asked
/// after it yet. Empty where the system tells nothing. Takes milliseconds.
std::vector<RunningProcess> runningProcesses();

enum class Ending {
    Asked,  ///< it was told to terminate; whether it does is its own matter
    Gone,   ///< it had ended before; its id may be another's by now
    Refused ///< not ours to end, or one that is never ended: this program, the machine's first process
};

/// Asks `process` to terminate, and none that has its id by now. Waits a moment (200 ms at most) for it to
/// go, so that most are missing from the next listing.
Ending endProcess(const RunningProcess& process);

/// The name of an executable from what the system tells: its path, the first word of its command line, and
/// its short name, which the system cuts at 15 bytes. The path counts where it is known (it begins with "/";
/// that of other users' programs is not told), else whichever of the other two is whole.
QString executableName(QByteArrayView path, QByteArrayView firstWord, QByteArrayView shortName);

} // namespace benthor::platform
