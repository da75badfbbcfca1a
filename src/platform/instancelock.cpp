#include "platform/instancelock.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace benthor::platform {

namespace {

constexpr std::array<const char*, 2> kPrograms{"benthor", "benthorctl"};

/// A program marks the byte of its name, by a lock of another kind: nothing is written, and the mark goes
/// with its owner.
struct flock markOf(const QByteArray& program, short kind) {
    struct flock mark {};
    mark.l_type = kind;
    mark.l_whence = SEEK_SET;
    mark.l_start = 1 + (std::find(kPrograms.begin(), kPrograms.end(), program) - kPrograms.begin());
    mark.l_len = 1;
    return mark;
}

void leaveMark(int file, const QByteArray& program) {
    struct flock mark = markOf(program, F_RDLCK);
    static_cast<void>(::fcntl(file, F_OFD_SETLK, &mark));
}

/// Nothing where it cannot be told: a file system may know one kind of lock alone.
QByteArray markIn(int file) {
    QByteArray found;
    for (const char* const program : kPrograms) {
        struct flock mark = markOf(program, F_WRLCK);
        if (::fcntl(file, F_OFD_GETLK, &mark) != 0 || mark.l_type == F_UNLCK) {
            continue;
        }
        if (!found.isEmpty()) {
            return {};
        }
        found = program;
    }
    return found;
}

} // namespace

InstanceLock::InstanceLock(const QString& folder, QByteArray program)
    : program_(std::move(program)) {
    // Programs that this one starts must not keep the lock beyond its end.
    constexpr int kFlags = O_RDWR | O_CREAT | O_CLOEXEC;
    constexpr mode_t kMode = 0666;
    const QByteArray name = QFile::encodeName(folder + QStringLiteral("/.benthor.lock"));
    file_ = ::open(name.constData(), kFlags, kMode);
    if (file_ < 0) {
        // A lock asks for no more than a file to hold it, another user's or one on a medium for reading only.
        file_ = ::open(name.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    }
    lock();
}

InstanceLock::~InstanceLock() {
    if (file_ >= 0) {
        ::close(file_);
    }
}

bool InstanceLock::tryAgain() {
    if (!held_) {
        lock();
    }
    return held_;
}

void InstanceLock::lock() {
    held_ = true;
    holder_.clear();
    if (file_ < 0) {
        return;
    }
    if (::flock(file_, LOCK_EX | LOCK_NB) == 0) {
        leaveMark(file_, program_);
    } else if (errno == EWOULDBLOCK) {
        held_ = false;
        holder_ = markIn(file_);
    }
}

} // namespace benthor::platform
