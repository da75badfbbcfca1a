#include "platform/files.h"

#include "platform/descriptor.h"
#include "platform/draftfile.h"
#include "platform/systemcall.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace benthor::platform {

namespace {

constexpr size_t kBlock = 65536;
constexpr mode_t kNewFileMode = 0666; // less the user's umask
constexpr mode_t kOwnersMode = 0600;

FileResult failure(const char* what, const QString& path, int number) {
    return {QStringLiteral("%1 %2: %3")
                .arg(QLatin1String(what), path, QString::fromLocal8Bit(std::strerror(number))),
            number};
}

FileResult syncEntries(const QString& folder) {
    const Descriptor entry(::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    int number = entry.isOpen() ? 0 : errno;
    while (number == 0 && ::fsync(entry.number()) < 0) {
        if (errno != EINTR) {
            number = errno;
        }
    }
    // Some network folders know no sync of an entry; they keep it in their own way.
    return number == 0 || number == EINVAL ? FileResult{} : failure("Cannot write", folder, number);
}

int writeAll(int file, const char* bytes, size_t count) {
    while (count > 0) {
        ssize_t written = 0;
        if (const int number = attempt("write", [&] { return written = ::write(file, bytes, count); })) {
            return number;
        }
        bytes += written;
        count -= static_cast<size_t>(written);
    }
    return 0;
}

/// Gives an open file rights and owner. A change of owner is the system's to refuse; the group in place of
/// one that it refuses gets no more than everybody.
int giveRights(int file, const struct stat& like) {
    const bool owned = ::fchown(file, like.st_uid, like.st_gid) == 0 ||
                       ::fchown(file, static_cast<uid_t>(-1), like.st_gid) == 0;
    const mode_t everybodys = (like.st_mode & S_IRWXO) << 3;
    const mode_t kept = owned ? S_IRWXU | S_IRWXG | S_IRWXO : S_IRWXU | everybodys | S_IRWXO;
    return ::fchmod(file, like.st_mode & kept) == 0 ? 0 : errno;
}

/// Makes a file at `path` out of what `fill(descriptor)` writes; fill returns 0 or an error's number. `mode`:
/// rights of the new file, less the user's umask.
template <typename Fill>
FileResult replaceFile(const QString& path, FolderSync sync, Fill fill, const DraftCheck& check = {},
                       mode_t mode = kNewFileMode) {
    const QString place = followLinks(path);
    const QString folder = QFileInfo(place).absolutePath();
    DraftFile draft(folder, mode);
    if (draft.error() != 0) {
        return failure("Cannot write", path, draft.error());
    }
    int number = fill(draft.file());
    if (number == 0) {
        number = attempt("sync", [&] { return ::fsync(draft.file()); });
    }
    if (const int closed = draft.close(); number == 0) {
        number = closed;
    }
    if (const QString fault = number == 0 && check ? check(draft.path()) : QString(); !fault.isEmpty()) {
        return {fault, EIO};
    }
    if (number == 0) {
        number = draft.takePlace(QFile::encodeName(place));
    }
    if (number != 0) {
        return failure("Cannot write", path, number);
    }
    return sync == FolderSync::Now ? syncFolder(folder) : FileResult{};
}

Descriptor openForReading(const QString& path) {
    return Descriptor(::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
}

/// Reads until the block is full or the file ends. Returns the count, or -1 with errno.
ssize_t readBlock(int file, char* block, size_t size) {
    size_t filled = 0;
    while (filled < size) {
        const ssize_t count = ::read(file, block + filled, size - filled);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            return -1;
        }
        if (count == 0) {
            break;
        }
        filled += static_cast<size_t>(count);
    }
    return static_cast<ssize_t>(filled);
}

/// `like`: the file whose rights the copy has from its first byte on; null for those of any new file.
FileResult copyWith(const QString* like, const QString& from, const QString& to, FolderSync sync,
                    const DraftCheck& check, const BetweenBlocks& between = {}) {
    const Descriptor source = openForReading(from);
    if (!source.isOpen()) {
        return failure("Cannot read", from, errno);
    }
    struct stat rights {};
    const bool given = like != nullptr && ::stat(QFile::encodeName(*like).constData(), &rights) == 0;
    int readError = 0;
    const auto copyAll = [&](int target) {
        if (const int number = given ? giveRights(target, rights) : 0) {
            return number;
        }
        std::array<char, kBlock> block{};
        for (;;) {
            const ssize_t count = readBlock(source.number(), block.data(), block.size());
            if (count < 0) {
                return readError = errno;
            }
            if (count == 0) {
                return 0;
            }
            if (const int number = writeAll(target, block.data(), static_cast<size_t>(count))) {
                return number;
            }
            if (between && !between()) {
                return ECANCELED;
            }
        }
    };
    const FileResult result =
        replaceFile(to, sync, copyAll, check, like != nullptr ? kOwnersMode : kNewFileMode);
    return readError == 0 ? result : failure("Cannot read", from, readError);
}

} // namespace

QString followLinks(const QString& path) {
    constexpr int kMostLinks = 40; // as the system's own limit
    QString place = QFileInfo(path).absoluteFilePath();
    for (int i = 0; i < kMostLinks && QFileInfo(place).isSymLink(); ++i) {
        place = QFileInfo(place).symLinkTarget();
    }
    return place;
}

FileResult copyFile(const QString& from, const QString& to, FolderSync sync, const DraftCheck& check,
                    const BetweenBlocks& between) {
    return copyWith(nullptr, from, to, sync, check, between);
}

FileResult copyFileLike(const QString& like, const QString& from, const QString& to, FolderSync sync,
                        const DraftCheck& check, const BetweenBlocks& between) {
    return copyWith(&like, from, to, sync, check, between);
}

FileResult takeRights(const QString& path, const QString& like) {
    struct stat rights {};
    const Descriptor file = openForReading(path);
    if (!file.isOpen() || ::stat(QFile::encodeName(like).constData(), &rights) != 0) {
        return failure("Cannot read", path, errno);
    }
    const int number = giveRights(file.number(), rights);
    return number == 0 ? FileResult{} : failure("Cannot write", path, number);
}

FileResult writeFileWhole(const QString& path, QByteArrayView bytes) {
    return replaceFile(path, FolderSync::Now, [&](int file) {
        return writeAll(file, bytes.data(), static_cast<size_t>(bytes.size()));
    });
}

FileResult moveFile(const QString& from, const QString& to) {
    const Descriptor file = openForReading(from);
    if (!file.isOpen()) {
        return failure("Cannot read", from, errno);
    }
    if (const int number = attempt("sync", [&] { return ::fsync(file.number()); })) {
        return failure("Cannot write", from, number);
    }
    if (QFileInfo(to).isSymLink()) {
        const FileResult copied = copyFileLike(from, from, to);
        return copied ? removeFile(from) : copied;
    }
    if (const int number = attempt("rename", [&] {
            return ::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData());
        })) {
        return failure("Cannot write", to, number);
    }
    return syncFolder(QFileInfo(to).absolutePath());
}

FileResult linkFile(const QString& from, const QString& to) {
    if (const int number = attempt("link", [&] {
            return ::link(QFile::encodeName(from).constData(), QFile::encodeName(to).constData());
        })) {
        return failure("Cannot write", to, number);
    }
    return syncFolder(QFileInfo(to).absolutePath());
}

FileResult syncFolder(const QString& folder) {
    if (const int number = faultAt("syncfolder")) {
        return failure("Cannot write", folder, number);
    }
    return syncEntries(folder);
}

void FolderSyncBehind::begin(const QString& folder) {
    static_cast<void>(wait());
    // What fails by a test's will fails here: its steps come in one order.
    if (const int number = faultAt("syncfolder")) {
        std::promise<FileResult> failed;
        failed.set_value(failure("Cannot write", folder, number));
        sync_ = failed.get_future();
        return;
    }
    sync_ = std::async(std::launch::async, [folder] { return syncEntries(folder); });
}

FileResult FolderSyncBehind::wait() {
    if (!sync_.valid()) {
        return {};
    }
    FileResult result = sync_.get();
    faultAt("synced");
    return result;
}

std::optional<QByteArray> readFile(const QString& path, qint64 most) {
    const Descriptor file = openForReading(path);
    struct stat state {};
    if (!file.isOpen() || ::fstat(file.number(), &state) != 0 || S_ISDIR(state.st_mode)) {
        return std::nullopt;
    }
    QByteArray bytes(static_cast<qsizetype>(std::min<qint64>(most, state.st_size)), Qt::Uninitialized);
    const ssize_t count = readBlock(file.number(), bytes.data(), static_cast<size_t>(bytes.size()));
    if (count < 0) {
        return std::nullopt;
    }
    bytes.truncate(count);
    return bytes;
}

bool sameContents(const QString& first, const QString& second, const BetweenBlocks& between) {
    const Descriptor one = openForReading(first);
    const Descriptor two = openForReading(second);
    if (!one.isOpen() || !two.isOpen()) {
        return false;
    }
    std::array<char, kBlock> blockOne{};
    std::array<char, kBlock> blockTwo{};
    for (;;) {
        const ssize_t countOne = readBlock(one.number(), blockOne.data(), blockOne.size());
        const ssize_t countTwo = readBlock(two.number(), blockTwo.data(), blockTwo.size());
        if (countOne < 0 || countOne != countTwo ||
            std::memcmp(blockOne.data(), blockTwo.data(), static_cast<size_t>(countOne)) != 0) {
            return false;
        }
        if (countOne == 0) {
            return true;
        }
        if (between && !between()) {
            return false;
        }
    }
}

FileResult removeFile(const QString& path) {
    const int number = attempt("remove", [&] { return ::unlink(QFile::encodeName(path).constData()); });
    return number == 0 ? FileResult{} : failure("Cannot remove", path, number);
}

} // namespace benthor::platform
