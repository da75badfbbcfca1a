#pragma once

#include "platform/programfolder.h"

#include <QSet>
#include <QString>

namespace benthor::divefiles {

/// Before a file that waits in `new` is written over or removed without an import: makes sure that its bytes
/// stand in `old`, under its own name or, where another file has that, with a number behind it. Nothing to do
/// when no such file waits. `name` may lead to another folder by its separators; the file is kept under its
/// bare name then.
platform::FileResult keepinold(const platform::ProgramFolder& folder, const QString& name);

/// Before the file that waits in `new` under `name` is copied to `old` under that name: makes sure that other
/// bytes which stand there stand in `old` under a name with a number as well. Nothing to do where the name is
/// free or has the same bytes.
platform::FileResult keepwhatisreplaced(const platform::ProgramFolder& folder, const QString& name,
                                        const platform::BetweenBlocks& between = {});

/// Where the bytes of a file stand now.
struct KeptCopy {
    platform::FileResult result;
    QString name;      ///< in the folder
    bool made = false; ///< false: they stood there before
};

/// As copytofreename(), for many files: says where each stands, passes over names in `taken` (case folded)
/// even where no file has them, and wants one platform::syncFolder() behind the last.
KeptCopy keepcopy(const QString& from, const platform::ProgramFolder& folder, QStringView where,
                  const QString& name, const QSet<QString>& taken);

/// Makes sure that the bytes of `from` stand in a folder under `name`, or under "name-2.txt", "name-3.txt",
/// ... where other files have the names before it. `first` is the first number that may be taken, 1 standing
/// for the name itself.
platform::FileResult copytofreename(const QString& from, const platform::ProgramFolder& folder,
                                    QStringView where, const QString& name, int first = 1,
                                    const platform::BetweenBlocks& between = {});

/// "name-2.txt" and on; the name itself for the number 1.
QString numberedname(const QString& name, int number);

} // namespace benthor::divefiles
