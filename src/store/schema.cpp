#include "store/schema.h"

#include "platform/database.h"
#include "platform/files.h"
#include "platform/storefile.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QDir>
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

void layTables(const QString& path, const QString& getstarted) {
    try {
        SQLite::Database database(path.toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
        database.exec("PRAGMA journal_mode = MEMORY"); // a draft that a crash leaves behind is never used
        SQLite::Transaction transaction(database);
        database.exec(schemaText());
        SQLite::Statement guide(database, "UPDATE serialno SET getstarted = ?1");
        guide.bind(1, getstarted.toStdString());
        guide.exec();
        transaction.commit();
    } catch (const SQLite::Exception& error) {
        throw StoreError(
            QStringLiteral("The store %1 cannot be made: %2").arg(path, QString::fromUtf8(error.what())),
            error.getErrorCode());
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
    layTables(draft, getstarted);
    // A journal of an earlier store by this name would be played into the fresh one.
    platform::removeJournals(target);
    const platform::FileResult copied = platform::copyFile(draft, target);
    QFile::remove(draft);
    requireOk(copied);
}

} // namespace benthor::store
