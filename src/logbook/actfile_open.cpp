// The file of the acts as a file: where it lies, how it is made, and whether it is one of ours.

#include "logbook/actfile.h"
#include "platform/filename.h"
#include "platform/files.h"
#include "platform/journalname.h"
#include "platform/storefile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <sqlite3.h>

namespace benthor::logbook {

namespace {

using platform::StoredRow;
using platform::StoreError;

constexpr const char* kAlias = "rbacts";
constexpr qint64 kApplication = 0x52624163; // "RbAc"
constexpr qint64 kVersion = 1;

// No table of a store has such a name: a query that names a missing table of the store finds none here.
constexpr const char* kActTable =
    "CREATE TABLE rbacts_act (id INTEGER PRIMARY KEY, kind INTEGER, done INTEGER, "
    "label TEXT)";
constexpr const char* kItemTable =
    "CREATE TABLE rbacts_item (id INTEGER PRIMARY KEY, act INTEGER, kind INTEGER, here INTEGER, diveid TEXT, "
    "startcode, dbtxtname, digest BLOB, twins INTEGER, name TEXT, started TEXT, gone TEXT, filename TEXT, "
    "owed INTEGER, rows BLOB, file BLOB)";
constexpr const char* kItemIndex = "CREATE INDEX rbacts_item_act ON rbacts_item (act)";
/// In the attached file: the texts above are also what its list of tables must say.
QByteArray inFile(const char* create) {
    QByteArray sql = create;
    sql.replace("CREATE TABLE ", "CREATE TABLE rbacts.");
    return sql.replace("CREATE INDEX ", "CREATE INDEX rbacts.");
}

void makeFile(const QString& path, const QString& store) {
    if (QFileInfo::exists(path)) {
        if (!platform::isFile(path)) {
            throw ActError(QStringLiteral("%1 is no file.").arg(QDir::toNativeSeparators(path)), 0);
        }
        return;
    }
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly, QFile::ReadOwner | QFile::WriteOwner)) {
        throw ActError(QStringLiteral("%1: %2").arg(QDir::toNativeSeparators(path), file.errorString()), 0);
    }
    file.close();
    // Whoever may read and write the store may do the same with what was deleted from it.
    static_cast<void>(platform::takeRights(path, store));
    static_cast<void>(platform::syncFolder(QFileInfo(path).path()));
}

} // namespace

ActError ActError::of(const StoreError& error) {
    const int code = error.code();
    return {error.text(), code, code == SQLITE_CORRUPT || code == SQLITE_NOTADB};
}

QString actsPath(const platform::Database& database) {
    return QFileInfo(database.path()).absolutePath() + QStringLiteral("/rb-acts.db");
}

QString setActsAside(const platform::Database& database) {
    const QString path = actsPath(database);
    const QString base = QFileInfo(path).absolutePath() + QStringLiteral("/rb-acts-damaged");
    QString kept = base + QStringLiteral(".db");
    for (int number = 2; QFileInfo::exists(kept); ++number) {
        kept = base + QString::number(number) + QStringLiteral(".db");
    }
    if (!platform::isFile(path) || !platform::moveFile(path, kept)) {
        return {};
    }
    platform::removeJournals(path);
    return QFileInfo(kept).fileName();
}

ActFile::ActFile(platform::Database& database)
    : rows_(database)
    , path_(actsPath(database)) {
    if (!database.isOpen()) {
        throw ActError(QStringLiteral("The store is not open."), 0);
    }
    if (!database.readOnlyReason().isEmpty()) {
        throw ActError(database.readOnlyReason(), 0);
    }
    makeFile(path_, database.path());
    const QString store = platform::followLinks(database.path());
    platform::settleMovedJournal(path_, QFileInfo(store).absolutePath());
    try {
        rows_.attach(path_, kAlias);
    } catch (const StoreError& error) {
        throw ActError::of(error);
    }
    try {
        requireOurs(); // reads, and so rolls back what a crash left
        platform::removeNamedFiles(store, path_);
    } catch (...) {
        rows_.detach(kAlias);
        throw;
    }
}

ActFile::~ActFile() {
    rows_.detach(kAlias);
}

std::unique_ptr<ActFile> ActFile::ifThere(platform::Database& database) {
    if (!database.isOpen() || !database.readOnlyReason().isEmpty() ||
        QFileInfo(actsPath(database)).size() == 0) {
        return nullptr;
    }
    return std::make_unique<ActFile>(database);
}

/// Its tables are ours and no others: what stands in it is believed.
void ActFile::requireOurs() {
    const auto number = [this](const char* pragma) { return rows(pragma).at(0).at(0).integer; };
    const qint64 application = number("PRAGMA rbacts.application_id");
    const qint64 version = number("PRAGMA rbacts.user_version");
    const std::vector<StoredRow> tables =
        rows("SELECT sql FROM rbacts.sqlite_master WHERE sql IS NOT NULL ORDER BY name");
    fresh_ = tables.empty() && application == 0 && version == 0;
    if (fresh_) {
        return;
    }
    if (application != kApplication) {
        throw ActError(QStringLiteral("%1 is no file of this program's.").arg(path_), 0);
    }
    if (version > kVersion) {
        throw ActError(QStringLiteral("%1 was written by a later version of the program.").arg(path_), 0);
    }
    const QList<QByteArray> wanted{kActTable, kItemTable, kItemIndex};
    bool same = version == kVersion && tables.size() == static_cast<size_t>(wanted.size());
    for (size_t i = 0; same && i < tables.size(); ++i) {
        same = tables[i].at(0).bytes == wanted.at(static_cast<qsizetype>(i));
    }
    if (!same) {
        throw ActError(QStringLiteral("%1 does not have its tables.").arg(path_), SQLITE_CORRUPT, true);
    }
}

void ActFile::makeTables() {
    if (!fresh_) {
        return;
    }
    for (const char* create : {kActTable, kItemTable, kItemIndex}) {
        change(inFile(create));
    }
    change("PRAGMA rbacts.application_id = " + QByteArray::number(kApplication));
    change("PRAGMA rbacts.user_version = " + QByteArray::number(kVersion));
    fresh_ = false;
}

} // namespace benthor::logbook
