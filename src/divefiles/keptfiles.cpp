#include "divefiles/keptfiles.h"

#include <QFileInfo>

namespace benthor::divefiles {

using platform::FileResult;
using platform::ProgramFolder;

namespace {

/// A link that leads nowhere holds a name as well.
bool isTaken(const QString& path) {
    const QFileInfo file(path);
    return file.exists() || file.isSymLink();
}

/// The same bytes under a name that may be used; a file that lies in the folder itself is no copy of itself.
bool standsThere(const QString& from, const QString& place) {
    return QFileInfo(place).canonicalFilePath() != QFileInfo(from).canonicalFilePath() &&
           platform::sameContents(from, place);
}

} // namespace

QString numberedname(const QString& name, int number) {
    if (number == 1) {
        return name;
    }
    const qsizetype point = name.lastIndexOf(QLatin1Char('.'));
    const qsizetype end = point < 0 ? name.size() : point;
    return name.left(end) + QLatin1Char('-') + QString::number(number) + name.mid(end);
}

KeptCopy keepcopy(const QString& from, const ProgramFolder& folder, QStringView where, const QString& name,
                  const QSet<QString>& taken) {
    for (int number = 1;; ++number) {
        const QString free = numberedname(name, number);
        const QString place = folder.path(where, free);
        if (taken.contains(free.toCaseFolded())) {
            continue;
        }
        if (!isTaken(place)) {
            return {platform::copyFile(from, place, platform::FolderSync::Later), free, true};
        }
        if (standsThere(from, place)) {
            return {{}, free, false};
        }
    }
}

FileResult copytofreename(const QString& from, const ProgramFolder& folder, QStringView where,
                          const QString& name, int first, const platform::BetweenBlocks& between) {
    for (int number = first;; ++number) {
        const QString place = folder.path(where, numberedname(name, number));
        if (!isTaken(place)) {
            return platform::copyFile(from, place, platform::FolderSync::Now, {}, between);
        }
        if (standsThere(from, place)) {
            return {};
        }
    }
}

FileResult keepinold(const ProgramFolder& folder, const QString& name) {
    const QString waiting = folder.path(u"new", name);
    if (!QFileInfo::exists(waiting)) {
        return {};
    }
    return copytofreename(waiting, folder, u"old", QFileInfo(waiting).fileName());
}

FileResult keepwhatisreplaced(const ProgramFolder& folder, const QString& name,
                              const platform::BetweenBlocks& between) {
    const QString place = folder.path(u"old", name);
    if (!QFileInfo::exists(place) || platform::sameContents(folder.path(u"new", name), place, between)) {
        return {};
    }
    return copytofreename(place, folder, u"old", name, 2, between);
}

} // namespace benthor::divefiles
