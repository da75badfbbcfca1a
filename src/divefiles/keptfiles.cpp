#include "divefiles/keptfiles.h"

#include <QFileInfo>

namespace benthor::divefiles {

platform::FileResult keepinold(const platform::ProgramFolder& folder, const QString& name) {
    const QString waiting = folder.path(u"new", name);
    if (!QFileInfo::exists(waiting)) {
        return {};
    }
    const qsizetype point = name.lastIndexOf(QLatin1Char('.'));
    QString place = folder.path(u"old", name);
    for (int number = 2; QFileInfo::exists(place); ++number) {
        if (platform::sameContents(waiting, place)) {
            return {};
        }
        place = folder.path(u"old",
                            name.left(point) + QLatin1Char('-') + QString::number(number) + name.mid(point));
    }
    return platform::copyFile(waiting, place);
}

} // namespace benthor::divefiles
