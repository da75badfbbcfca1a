#pragma once

#include "platform/files.h"

#include <QString>
#include <QStringList>
#include <QStringView>

#include <utility>

namespace benthor::platform {

/// The one folder that holds the store, the dive files and everything else the program keeps. Names in it
/// have one spelling: "new", "old", "corrupt", "dbtxt", "jpg", "Reprog", "ports", "rb.mdb", "dsort.txt", ...
class ProgramFolder {
public:
    ProgramFolder() = default;
    explicit ProgramFolder(QString root)
        : root_(std::move(root)) {}

    QString root() const { return root_; }
    /// path(u"rb.mdb"), path(u"old", name): no separators in the parts.
    QString path(QStringView name) const;
    QString path(QStringView folder, QStringView name) const;

    /// Names of the files in one of its folders ("" is the program folder itself) that fit a pattern such as
    /// "*.txt", case-blind. In the order of the names without regard to case, equal ones by their code
    /// points. A folder that is not there has none.
    QStringList listFiles(const QString& folder, const QString& pattern) const;

    /// The folder that this process works in. The start sets it once; tests set one of their own.
    static const ProgramFolder& current();
    static void setCurrent(const ProgramFolder& folder);

private:
    QString root_;
};

/// Where a program folder can be, as the system tells it.
struct FolderPlaces {
    QString executable; ///< folder of the executable
    QString data;       ///< the user's data folder "Benthor", there or not
    QString installed;  ///< what a first use of it is filled from: share/benthor of the installation
};

/// The places of this process.
FolderPlaces folderPlaces();

/// Where the program folder is or would be: the executable's own where it holds a store or can be written,
/// otherwise the data folder. The folder "bin" of an installation is a program folder only where it holds a
/// store: it is other programs' as well. Nothing is made.
ProgramFolder findProgramFolder(const FolderPlaces& places);

/// The same, and the data folder is made and filled as a whole, for its owner alone, on its first use: where
/// it is not there, or is empty. `error` says why it could not be made; the folder is then returned all the
/// same, and nothing stands in its place.
ProgramFolder locateProgramFolder(const FolderPlaces& places, FileResult& error);

/// The program folder that the user chose; a relative one is looked for from the current folder. One that
/// holds anything is taken as it is. One that is not there, or is empty, is made and filled as a whole.
/// `error` says why it could not be, or why it cannot be used.
ProgramFolder takeProgramFolder(const QString& chosen, const FolderPlaces& places, FileResult& error);

} // namespace benthor::platform
