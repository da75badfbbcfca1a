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
    m_file = ::open(QFile::encodeName(folder + QStringLiteral("/.benthor.lock")).constData(), kFlags, kMode);
    if (m_file >= 0 && ::flock(m_file, LOCK_EX | LOCK_NB) != 0) {
        m_held = errno != EWOULDBLOCK;
    }
}

InstanceLock::~InstanceLock() {
    if (m_file >= 0) {
        ::close(m_file);
    }
}

} // namespace benthor::platform
