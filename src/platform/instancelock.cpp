#include "platform/instancelock.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace benthor::platform {

InstanceLock::InstanceLock(const QString& folder) {
    // Programs that this one starts must not keep the lock beyond its end.
    constexpr int kFlags = O_RDWR | O_CREAT | O_CLOEXEC;
    constexpr mode_t kMode = 0666;
    const QByteArray name = QFile::encodeName(folder + QStringLiteral("/.benthor.lock"));
    file_ = ::open(name.constData(), kFlags, kMode);
    if (file_ < 0) {
        // A lock asks for no more than a file to hold it, another user's or one on a medium for reading only.
        file_ = ::open(name.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    }
    if (file_ >= 0 && ::flock(file_, LOCK_EX | LOCK_NB) != 0) {
        held_ = errno != EWOULDBLOCK;
    }
}

InstanceLock::~InstanceLock() {
    if (file_ >= 0) {
        ::close(file_);
    }
}

} // namespace benthor::platform
