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

FileResult notMade(const QString& folder) {
    return {QStringLiteral("Cannot make the folder %1.").arg(folder), EIO};
}

/// Copies a folder with all that is in it.
FileResult copyTree(const QString& from, const QString& to) {
    if (!QDir().mkpath(to)) {
        return notMade(to);
    }
    QDirIterator entries(from, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        const QString entry = entries.next();
        const QString target = to + entry.mid(from.size());
        if (entries.fileInfo().isDir()) {
            if (!QDir().mkpath(target)) {
                return notMade(target);
            }
        } else if (FileResult copied = copyFile(entry, target); !copied) {
            return copied;
        }
    }
    return {};
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

ProgramFolder locateProgramFolder(const FolderPlaces& places, FileResult& error) {
    error = {};
    if (QFileInfo(places.executable).isWritable()) {
        return ProgramFolder(places.executable);
    }
    if (!QFileInfo(places.data).isDir()) {
        // Filled beside its place first: a data folder that is there is whole.
        const QString part = places.data + QStringLiteral(".part");
        QDir(part).removeRecursively();
        error = copyTree(places.installed, part);
        if (error.ok() && !QDir().rename(part, places.data)) {
            error = notMade(places.data);
        }
    }
    return ProgramFolder(places.data);
}

} // namespace benthor::platform
