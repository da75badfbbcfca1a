#include "store/schema.h"

#include "platform/files.h"
#include "platform/storefile.h"

#include <QFile>
#include <QFileInfo>

namespace benthor::store {

namespace {

using platform::StoreError;

void requireOk(const platform::FileResult& result) {
    if (!result) {
        throw StoreError(result.error);
    }
}

} // namespace

void createStore(const QString& path, const QString& getstarted) {
    const QString target = QFileInfo(path).absoluteFilePath();
    if (QFileInfo::exists(target)) {
        throw StoreError(QStringLiteral("The store %1 is there already.").arg(path));
    }
    const QString draft = QFileInfo(target).absolutePath() + QStringLiteral("/.benthor.newstore");
    QFile::remove(draft);
    platform::createDatabase(draft, schemaText(),
                             platform::sqlWith("UPDATE serialno SET getstarted = '", getstarted, "'"));
    // A journal of an earlier store by this name would be played into the fresh one.
    platform::removeJournals(target);
    const platform::FileResult copied = platform::copyFileLike(draft, draft, target);
    QFile::remove(draft);
    requireOk(copied);
}

} // namespace benthor::store
