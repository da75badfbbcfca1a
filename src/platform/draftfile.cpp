#include "platform/draftfile.h"
#include "platform/systemcall.h"

#include <QFile>

#include <fcntl.h>
#include <sys/file.h>

namespace benthor::platform {

namespace {

constexpr int kMost = 100; ///< that write in one folder at the same time

QByteArray nameOf(const QByteArray& base, int turn) {
    return turn == 1 ? base : base + QByteArray::number(turn);
}

/// Without waiting. A file system that knows no holding of files lets all have it.
bool isHeld(const Descriptor& file, int how) {
    return ::flock(file.number(), how | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

/// Takes away what a crash left under this name. False when somebody works on it, or that can't be told.
bool removeLeft(const QByteArray& path) {
    const Descriptor left(::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW));
    if (!left.isOpen()) {
        return errno == ENOENT || (errno == ELOOP && ::unlink(path.constData()) == 0);
    }
    return isHeld(left, LOCK_EX) && (!isNamed(left.number(), path) || ::unlink(path.constData()) == 0);
}

} // namespace

DraftFile::DraftFile(const QString& folder, mode_t mode) {
    const QByteArray base = QFile::encodeName(folder + QStringLiteral("/.benthor.part"));
    int turn = 0;
    while (path_.isEmpty() && error_ == 0 && turn < kMost) {
        make(nameOf(base, ++turn), mode);
    }
    if (path_.isEmpty() && error_ == 0) {
        error_ = EBUSY;
    }
    if (error_ == 0) {
        removeLeft(nameOf(base, turn + 1));
    }
}

DraftFile::~DraftFile() {
    if (!path_.isEmpty() && isNamed(hold_.number(), path_)) {
        ::unlink(path_.constData());
    }
}

/// Without effect where somebody works under this name.
void DraftFile::make(const QByteArray& path, mode_t mode) {
    // For reading too: a network folder lets nobody share in holding a file that is open for writing alone.
    constexpr int kFlags = O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC;
    while (path_.isEmpty()) {
        file_ = Descriptor(::open(path.constData(), kFlags, mode));
        if (!file_.isOpen()) {
            error_ = errno == EEXIST ? 0 : errno;
            if (error_ != 0 || !removeLeft(path)) {
                return;
            }
        } else if (isHeld(file_, LOCK_SH) &&
                   isNamed(file_.number(), path)) { // not taken for a leftover before that
            hold_ = Descriptor(::fcntl(file_.number(), F_DUPFD_CLOEXEC, 0));
            if (!hold_.isOpen()) {
                error_ = errno;
                ::unlink(path.constData());
                return;
            }
            path_ = path;
        }
    }
}

QString DraftFile::path() const {
    return QFile::decodeName(path_);
}

int DraftFile::close() {
    return file_.close() == 0 ? 0 : errno;
}

int DraftFile::takePlace(const QByteArray& place) {
    if (!isNamed(hold_.number(), path_)) {
        return EBUSY; // somebody took it away after all: another's file must not get this place
    }
    const int number = attempt("rename", [&] { return ::rename(path_.constData(), place.constData()); });
    if (number == 0) {
        path_.clear();
        hold_.close();
    }
    return number;
}

} // namespace benthor::platform
