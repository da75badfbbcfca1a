#include "store/keptstores.h"

#include "platform/query.h"
#include "platform/storefile.h"
#include "store/jet/jetconvert.h"

#include <QFile>

#include <cerrno>

namespace benthor::store {

QString freename(const platform::ProgramFolder& folder, const QString& base) {
    QString name = base + QStringLiteral(".mdb");
    for (int number = 2; QFile::exists(folder.path(name)); ++number) {
        name = QStringLiteral("%1%2.mdb").arg(base, QString::number(number));
    }
    return name;
}

platform::FileResult keepreplaced(const platform::ProgramFolder& folder, QString& keptAs) {
    const QString store = folder.path(u"rb.mdb");
    if (!QFile::exists(store)) {
        return {};
    }
    try {
        if (isjetfile(store)) {
            platform::removeJournals(store); // of the store that stood here before, and not to be played back
        } else {
            platform::settleDatabase(store);
        }
    } catch (const platform::StoreError& error) {
        if (error.busy()) {
            return {error.text(), EBUSY};
        }
    }
    keptAs = freename(folder, QStringLiteral("rb-replaced"));
    return platform::copyFileLike(store, store, folder.path(keptAs));
}

} // namespace benthor::store
