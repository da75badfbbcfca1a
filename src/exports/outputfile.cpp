#include "exports/outputfile.h"

#include "platform/descriptor.h"
#include "platform/faultpoint.h"
#include "platform/files.h"
#include "platform/pieces.h"
#include "platform/storewait.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QIODevice>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace benthor::exports {

namespace {

/// A write to a pipe that nobody reads fails, as long as this lives, and does not end the process.
class NoPipeSignal {
public:
    NoPipeSignal()
        : before_(std::signal(SIGPIPE, SIG_IGN)) {}
    ~NoPipeSignal() { std::signal(SIGPIPE, before_); }
    NoPipeSignal(const NoPipeSignal&) = delete;
    NoPipeSignal& operator=(const NoPipeSignal&) = delete;

private:
    void (*before_)(int);
};

/// Runs a call of the system, unless a test's hook lets it fail. Returns 0 or the error's number. One that a
/// signal broke off goes on, unless that asked the process to end.
template <typename Call> int attempt(const char* step, Call call) {
    if (const int number = platform::faultAt(step)) {
        return number;
    }
    while (call() < 0) {
        if (errno != EINTR || platform::allWaitsEnd()) {
            return errno;
        }
    }
    return 0;
}

/// Whether the path leads over links to one of a process's open files ("/dev/stdout", "/dev/fd/3"). To rename
/// something over what such a file is open on would leave the writer's own end where it was.
bool isOpenFile(const QString& path) {
    constexpr int kMostLinks = 40; // as the system's own limit
    QFileInfo at(path);
    for (int i = 0; i < kMostLinks; ++i) {
        if (QFileInfo(at.absolutePath()).canonicalFilePath().startsWith(u"/proc/")) {
            return true;
        }
        if (!at.isSymLink()) {
            return false;
        }
        at = QFileInfo(at.symLinkTarget());
    }
    return false;
}

/// Of a length that every file system takes, whatever the file is called.
QByteArray draftPath(const QFileInfo& place) {
    constexpr qsizetype kDigits = 16;
    const QByteArray digest =
        QCryptographicHash::hash(QFile::encodeName(place.fileName()), QCryptographicHash::Sha1).toHex();
    return QFile::encodeName(place.absolutePath()) + "/.benthor-" + digest.left(kDigits) + ".part";
}

} // namespace

class OutputFile::Target : public QIODevice {
public:
    Target(const QString& path, bool force)
        : path_(path)
        , force_(force) {
        if (path == u"-") {
            file_ = STDOUT_FILENO;
        } else {
            openPath();
        }
        open(WriteOnly | Unbuffered);
    }
    ~Target() override {
        dropDraft();
        closeFile();
    }
    Target(const Target&) = delete;
    Target& operator=(const Target&) = delete;

    bool isSequential() const override { return true; }
    QString why() const { return number_ == 0 ? QString() : reason(number_); }

    void commit() {
        pieces_.flush([this](QByteArrayView piece) { send(piece); });
        if (number_ == 0) {
            number_ = attempt("sync", [&] { return ::fsync(file_); });
            if (draft_.isEmpty() && (number_ == EINVAL || number_ == ENOTSUP || number_ == EROFS)) {
                number_ = 0; // a pipe or a device, which has no disk
            }
        }
        if (number_ == 0 && !draft_.isEmpty()) {
            takePlace();
        }
        if (number_ != 0) {
            dropDraft();
            throw ExportError(why());
        }
        if (const bool wasDraft = !std::exchange(draft_, {}).isEmpty(); !closeFile()) {
            throw ExportError(why());
        } else if (wasDraft) {
            if (const auto synced = platform::syncFolder(QFileInfo(place_).absolutePath()); !synced) {
                throw ExportError(synced.error);
            }
        }
    }

protected:
    qint64 readData(char*, qint64) override { return -1; }

    qint64 writeData(const char* bytes, qint64 count) override {
        pieces_.put(QByteArrayView(bytes, count), [this](QByteArrayView piece) { send(piece); });
        if (number_ != 0) {
            setErrorString(why());
            return -1;
        }
        return count;
    }

private:
    QString reason(int number) const {
        return QStringLiteral("Cannot write %1: %2")
            .arg(path_ == u"-" ? QStringLiteral("standard output") : path_,
                 QString::fromLocal8Bit(std::strerror(number)));
    }

    void openPath() {
        struct stat state {};
        const bool stands = ::stat(QFile::encodeName(path_).constData(), &state) == 0;
        if (stands && S_ISDIR(state.st_mode)) {
            throw ExportError(reason(EISDIR));
        }
        if (stands && (!S_ISREG(state.st_mode) || isOpenFile(path_))) {
            file_ = ::open(QFile::encodeName(path_).constData(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
        } else {
            if (stands && !force_) {
                throw existing();
            }
            openDraft();
            if (stands && number_ == 0) {
                constexpr mode_t kRights = 0777;
                number_ = ::fchmod(file_, state.st_mode & kRights) == 0 ? 0 : errno;
            }
        }
        if (file_ < 0 || number_ != 0) {
            const int number = number_ != 0 ? number_ : errno;
            dropDraft();
            closeFile();
            throw ExportError(reason(number));
        }
    }

    void openDraft() {
        place_ = platform::followLinks(path_);
        if (QFileInfo(place_).fileName().isEmpty()) {
            number_ = ENOENT;
            return;
        }
        const QByteArray draft = draftPath(QFileInfo(place_));
        constexpr mode_t kNewFileMode = 0666; // less the user's umask
        for (;;) {
            file_ = ::open(draft.constData(), O_WRONLY | O_CREAT | O_CLOEXEC | O_NOFOLLOW, kNewFileMode);
            if (file_ < 0) {
                number_ = errno;
                return;
            }
            if (::flock(file_, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
                number_ = EBUSY; // another program writes the same file just now
                return;
            }
            if (platform::isNamed(file_, draft)) {
                break;
            }
            closeFile(); // it took its place between our opening and our lock
        }
        draft_ = draft;
        number_ = ::ftruncate(file_, 0) == 0 ? 0 : errno;
    }

    FileExistsError existing() const {
        return FileExistsError(QStringLiteral("%1 is there already.").arg(path_));
    }

    void takePlace() {
        const QByteArray place = QFile::encodeName(place_);
        number_ = attempt("rename", [&] {
            return force_ ? ::rename(draft_.constData(), place.constData())
                          : ::renameat2(AT_FDCWD, draft_.constData(), AT_FDCWD, place.constData(),
                                        RENAME_NOREPLACE);
        });
        if (number_ == EINVAL && !force_) { // a file system that has no such renaming
            number_ = QFileInfo::exists(place_)                              ? EEXIST
                      : ::rename(draft_.constData(), place.constData()) == 0 ? 0
                                                                             : errno;
        }
        if (number_ == EEXIST && !force_) {
            dropDraft();
            throw existing();
        }
    }

    void dropDraft() {
        if (!draft_.isEmpty()) {
            ::unlink(draft_.constData());
            draft_.clear();
        }
    }

    bool closeFile() {
        const int file = std::exchange(file_, -1);
        if (file >= 0 && file != STDOUT_FILENO && ::close(file) != 0) {
            number_ = errno;
        }
        return number_ == 0;
    }

    /// After the first refusal nothing more is sent: what came behind a gap would be no export.
    void send(QByteArrayView bytes) {
        while (number_ == 0 && !bytes.isEmpty()) {
            ssize_t sent = 0;
            number_ = attempt("write", [&] {
                return sent = ::write(file_, bytes.data(), static_cast<size_t>(bytes.size()));
            });
            if (number_ == 0) {
                bytes = bytes.sliced(sent);
                // A pipe took a part and waits for its reader, who may never come.
                number_ = !bytes.isEmpty() && platform::allWaitsEnd() ? EINTR : 0;
            }
        }
    }

    NoPipeSignal noSignal_;
    QString path_;
    bool force_;
    int file_ = -1;
    int number_ = 0;   ///< of the system's first refusal
    QString place_;    ///< of the file behind all links; empty where it is written in place
    QByteArray draft_; ///< the hidden file, as long as there is one of ours
    platform::Pieces pieces_;
};

OutputFile::OutputFile(const QString& path, bool force)
    : target_(std::make_unique<Target>(path, force)) {}

OutputFile::~OutputFile() = default;

QIODevice& OutputFile::device() {
    return *target_;
}

QString OutputFile::error() const {
    return target_->why();
}

void OutputFile::commit() {
    target_->commit();
}

} // namespace benthor::exports
