#include "platform/programfolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>

namespace benthor::platform {

namespace {

ProgramFolder& currentFolder() {
    static ProgramFolder folder;
    return folder;
}

QString storename() {
    return QStringLiteral("rb.mdb");
}

FileResult notMade(const QString& folder, const QString& reason = {}) {
    const QString text = QStringLiteral("Cannot make the folder %1.").arg(folder);
    return {reason.isEmpty() ? text : text + QLatin1Char(' ') + reason, EIO};
}

/// Copies a folder with all that is in it. A store is its owner's alone.
FileResult copyTree(const QString& from, const QString& to) {
    if (!QDir().mkpath(to)) {
        return notMade(to);
    }
    QDirIterator entries(from, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        const QString entry = entries.next();
        const QString target = to + entry.mid(from.size());
        FileResult copied;
        if (entries.fileInfo().isDir()) {
            copied = QDir().mkpath(target) ? FileResult{} : notMade(target);
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

/// Fills the data folder beside its place first: one that is there is whole.
FileResult makeDataFolder(const FolderPlaces& places) {
    const QString part = places.data + QStringLiteral(".part");
    QDir(part).removeRecursively();
    FileResult made;
    if (!QFileInfo(places.installed + QLatin1Char('/') + storename()).isFile()) {
        made = notMade(places.data,
                       QStringLiteral("What it is made from is missing: %1.").arg(places.installed));
    } else {
        made = copyTree(places.installed, part);
    }
    if (made && !(QFile::setPermissions(part, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner) &&
                  QDir().rename(part, places.data))) {
        made = notMade(places.data);
    }
    if (!made) {
        QDir(part).removeRecursively();
        return made;
    }
    return syncFolder(QFileInfo(places.data).absolutePath());
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
    // over.
    const bool isBeside = beside.listFiles(QString(), storename()).contains(storename()) ||
                          QFileInfo(places.executable).isWritable();
    return isBeside ? beside : ProgramFolder(places.data);
}

ProgramFolder locateProgramFolder(const FolderPlaces& places, FileResult& error) {
    error = {};
    const ProgramFolder folder = findProgramFolder(places);
    if (folder.root() == places.data && !QFileInfo(places.data).isDir()) {
        error = makeDataFolder(places);
    }
    return folder;
}

} // namespace benthor::platform
