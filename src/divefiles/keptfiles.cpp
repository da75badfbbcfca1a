#include "divefiles/keptfiles.h"

#include <QFileInfo>

namespace benthor::divefiles {

platform::FileResult keepinold(const platform::ProgramFolder& folder, const QString& name) {
    const QString waiting = folder.path(u"new", name);
    if (!QFileInfo::exists(waiting)) {
        return {};
    }
    const QString base = QFileInfo(waiting).fileName();
    const qsizetype point = base.lastIndexOf(QLatin1Char('.'));
    QString place = folder.path(u"old", base);
    for (int number = 2; QFileInfo::exists(place); ++number) {
        // A file that lies in `old` itself is no copy of itself.
        const bool itself = QFileInfo(place).canonicalFilePath() == QFileInfo(waiting).canonicalFilePath();
        if (!itself && platform::sameContents(waiting, place)) {
            return {};
        }
        place = folder.path(u"old",
                            base.left(point) + QLatin1Char('-') + QString::number(number) + base.mid(point));
    }
    return platform::copyFile(waiting, place);
}

} // namespace benthor::divefiles
