#include "platform/programfolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <unistd.h>

namespace benthor::platform {

namespace {

ProgramFolder& currentFolder() {
    static ProgramFolder folder;
    return folder;
}

QString storename() {
    return QStringLiteral("rb.mdb");
}

FileResult notMade(const QString& folder, const QString& reason, int number = EIO) {
    return {QStringLiteral("Cannot make the folder %1. %2").arg(folder, reason), number};
}

QString systemReason(int number) {
    return QString::fromLocal8Bit(std::strerror(number));
}

/// Makes a folder and those above it.
FileResult makeFolder(const QString& folder) {
    std::error_code failed;
    std::filesystem::create_directories(QFile::encodeName(folder).toStdString(), failed);
    return failed ? notMade(folder, systemReason(failed.value()), failed.value()) : FileResult{};
}

bool isEmptyFolder(const QString& folder) {
    return QFileInfo(folder).isDir() && QFileInfo(folder).isReadable() &&
           QDir(folder).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

/// A folder without anything in it is nobody's yet: its first use is still to come.
bool awaitsFirstUse(const QString& folder) {
    return !QFileInfo(folder).isDir() || isEmptyFolder(folder);
}

/// Another start that fills a folder in the same place is waited for. Where the place cannot be locked there
/// is none.
class FillingLock {
public:
    explicit FillingLock(const QString& place)
        : file_(::open(QFile::encodeName(place).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
        if (file_ >= 0) {
            static_cast<void>(::flock(file_, LOCK_EX));
        }
    }
    ~FillingLock() {
        if (file_ >= 0) {
            ::close(file_);
        }
    }
    FillingLock(const FillingLock&) = delete;
    FillingLock& operator=(const FillingLock&) = delete;

private:
    int file_;
};

/// Copies a folder with all that is in it. A store is its owner's alone.
FileResult copyTree(const QString& from, const QString& to) {
    if (const FileResult made = makeFolder(to); !made) {
        return made;
    }
    QDirIterator entries(from, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        const QString entry = entries.next();
        const QString target = to + entry.mid(from.size());
        FileResult copied;
        if (entries.fileInfo().isDir()) {
            copied = makeFolder(target);
        } else if (entry.endsWith(QLatin1String(".mdb"))) {
            copied = copyFileLike(QString(), entry, target);
        } else {
            copied = copyFile(entry, target);
        }
        if (!copied) {
            return copied;
        }
    }
    return {};
}

/// For its owner alone; a folder that was there keeps its rights. An empty folder gives way, any other stays.
FileResult putInPlace(const QString& part, const QString& folder) {
    const QFileInfo before(folder);
    const QFile::Permissions rights =
        before.isDir() ? before.permissions() : QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
    if (!QFile::setPermissions(part, rights) ||
        ::rename(QFile::encodeName(part).constData(), QFile::encodeName(folder).constData()) != 0) {
        const int number = errno;
        return notMade(folder, systemReason(number), number);
    }
    return syncFolder(QFileInfo(folder).absolutePath());
}

/// Fills the folder beside its place first: one that is there is whole.
FileResult fillFolder(const QString& folder, const QString& installed) {
    if (!QFileInfo(installed + QLatin1Char('/') + storename()).isFile()) {
        return notMade(folder, QStringLiteral("What it is made from is missing: %1.").arg(installed));
    }
    const QString place = QFileInfo(folder).absolutePath();
    if (const FileResult made = makeFolder(place); !made) {
        return made;
    }
    const FillingLock lock(place);
    if (!awaitsFirstUse(folder)) {
        return {}; // another start has filled it meanwhile
    }
    const QString part = folder + QStringLiteral(".part");
    QDir(part).removeRecursively(); // of a start that was ended
    FileResult made = copyTree(installed, part);
    if (made) {
        made = putInPlace(part, folder);
    }
    if (!made) {
        QDir(part).removeRecursively();
    }
    return made;
}

/// Fills the folder on its first use. One that is in use must let itself be used.
FileResult makeReady(const QString& folder, const QString& installed) {
    if (awaitsFirstUse(folder)) {
        return fillFolder(folder, installed);
    }
    if (::access(QFile::encodeName(folder).constData(), R_OK | X_OK) != 0) {
        const int number = errno;
        return {QStringLiteral("Cannot use the folder %1. %2").arg(folder, systemReason(number)), number};
    }
    return {};
}

/// A folder of programs, of which others than this one lie there, too: an installation's "bin".
bool isOfManyPrograms(const FolderPlaces& places) {
    return QFileInfo(places.executable).fileName() == QLatin1String("bin") &&
           places.installed == QDir::cleanPath(places.executable + QStringLiteral("/../share/benthor")) &&
           QFileInfo(places.installed).isDir();
}

} // namespace

QString ProgramFolder::path(QStringView name) const {
    return root_ + QLatin1Char('/') + name.toString();
}

QString ProgramFolder::path(QStringView folder, QStringView name) const {
    return path(folder) + QLatin1Char('/') + name.toString();
}

QStringList ProgramFolder::listFiles(const QString& folder, const QString& pattern) const {
    QStringList names =
        QDir(folder.isEmpty() ? root_ : path(folder)).entryList({pattern}, QDir::Files, QDir::Unsorted);
    std::sort(names.begin(), names.end(), [](const QString& one, const QString& two) {
        const int order = one.compare(two, Qt::CaseInsensitive);
        return order != 0 ? order < 0 : one < two;
    });
    return names;
}

const ProgramFolder& ProgramFolder::current() {
    return currentFolder();
}

void ProgramFolder::setCurrent(const ProgramFolder& folder) {
    currentFolder() = folder;
}

FolderPlaces folderPlaces() {
    const QString executable = QCoreApplication::applicationDirPath();
    return {executable,
            QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
                QStringLiteral("/Benthor"),
            QDir::cleanPath(executable + QStringLiteral("/../share/benthor"))};
}

ProgramFolder findProgramFolder(const FolderPlaces& places) {
    const ProgramFolder beside(places.executable);
    // A store beside the program is the diver's even where nothing can be written: it is shown, not passed
    // over. Who may write a folder of programs, as root may, has no place for dives there.
    const bool isBeside = beside.listFiles(QString(), storename()).contains(storename()) ||
                          (QFileInfo(places.executable).isWritable() && !isOfManyPrograms(places));
    return isBeside ? beside : ProgramFolder(places.data);
}

ProgramFolder locateProgramFolder(const FolderPlaces& places, FileResult& error) {
    error = {};
    const ProgramFolder folder = findProgramFolder(places);
    if (folder.root() == places.data) {
        error = makeReady(places.data, places.installed);
    }
    return folder;
}

ProgramFolder takeProgramFolder(const QString& chosen, const FolderPlaces& places, FileResult& error) {
    const QString root = QDir::cleanPath(QDir::current().absoluteFilePath(chosen));
    error = makeReady(root, places.installed);
    return ProgramFolder(root);
}

} // namespace benthor::platform
