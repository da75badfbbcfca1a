#pragma once

#include <QFile>
#include <QString>

#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>
#include <vector>

namespace benthor::simulator {

/// Whether a program still keeps the line "/dev/pts/<number>" for itself. Qt's serial port does it by a file,
/// and takes that away a moment after the line is closed and its number may be another's.
inline bool isKeptLine(const QString& path) {
    const QString name = QStringLiteral("/LCK..") + QString(path).remove(0, 5).replace('/', '_');
    for (const char* folder : {"/var/lock", "/etc/locks", "/var/spool/locks", "/var/spool/uucp", "/tmp",
                               "/var/tmp", "/run/lock"}) {
        if (QFile::exists(QLatin1String(folder) + name)) {
            return true;
        }
    }
    return false;
}

/// The far end of a new pseudo-terminal, ready for ptsname(), that nobody keeps any more: one whose number
/// was just given free elsewhere could not be opened. -1 when the machine gives none.
inline int openTerminal() {
    constexpr std::size_t kMostTries = 64;
    std::vector<int> kept; // open until another number is found
    int free = -1;
    while (free < 0 && kept.size() < kMostTries) {
        const int end = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
        if (end < 0 || ::grantpt(end) != 0 || ::unlockpt(end) != 0) {
            if (end >= 0) {
                ::close(end);
            }
            break;
        }
        if (isKeptLine(QString::fromLocal8Bit(::ptsname(end)))) {
            kept.push_back(end);
        } else {
            free = end;
        }
    }
    for (const int end : kept) {
        ::close(end);
    }
    return free;
}

} // namespace benthor::simulator
