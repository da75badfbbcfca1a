#include "divefiles/owedprofiles.h"

#include "divefiles/keptfiles.h"
#include "platform/filename.h"
#include "platform/skiperrors.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>

namespace benthor::divefiles {

namespace {

using platform::Database;
using platform::ProgramFolder;
using platform::Recordset;

constexpr const char* kRows = "SELECT * FROM owedprofile";

bool hasTable(Database& database) {
    return database
               .openRecordset("SELECT name FROM sqlite_master WHERE type = 'table' AND name = 'owedprofile'")
               .recordCount() > 0;
}

QString hashOf(const QString& path) {
    QFile file(path);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    return file.open(QIODevice::ReadOnly) && hash.addData(&file) ? QString::fromLatin1(hash.result().toHex())
                                                                 : QString();
}

OwedProfile read(const Recordset& row) {
    return {row.value(0).text(), row.value(1).text(), row.value(2).text().toLongLong(), row.value(3).text()};
}

/// The file in `old` that holds the bytes, "" where none does. A later one of its name may have made it go
/// under a number; at last every file of that length is looked at.
QString sourceOf(const ProgramFolder& folder, const OwedProfile& owed) {
    QString named = folder.path(u"old", owed.oldname);
    if (platform::isFileName(owed.oldname) && isowed(owed, named)) {
        return named;
    }
    const QDir old(folder.path(u"old"));
    for (const QFileInfo& file : old.entryInfoList(QDir::Files | QDir::Hidden)) {
        if (isowed(owed, file.filePath())) {
            return file.filePath();
        }
    }
    return {};
}

/// Puts it into dbtxt. Other bytes that stand there (of a file that changed while it was imported) stand in
/// `old` as well before they are written over. A store from elsewhere may name anything: names that lead out
/// of the two folders bring nothing.
bool bring(const ProgramFolder& folder, const OwedProfile& owed) {
    if (!platform::isFileName(owed.dbtxtname) || !platform::isFileName(owed.oldname)) {
        return false;
    }
    const QString place = folder.path(u"dbtxt", owed.dbtxtname);
    if (isowed(owed, place)) {
        return true;
    }
    const QString source = sourceOf(folder, owed);
    if (source.isEmpty() ||
        (QFileInfo::exists(place) && !copytofreename(place, folder, u"old", owed.oldname))) {
        return false;
    }
    QDir().mkpath(folder.path(u"dbtxt"));
    return platform::copyFile(source, place).ok();
}

} // namespace

std::optional<OwedProfile> owedprofile(const ProgramFolder& folder, const QString& dbtxtname,
                                       const QString& oldname) {
    const QString path = folder.path(u"old", oldname);
    OwedProfile owed{dbtxtname, oldname, QFileInfo(path).size(), hashOf(path)};
    if (owed.sha256.isEmpty()) {
        return std::nullopt;
    }
    return owed;
}

void noteowed(Database& database, const OwedProfile& owed) {
    database.execute("CREATE TABLE IF NOT EXISTS owedprofile "
                     "(dbtxtname TEXT, oldname TEXT, size TEXT, sha256 TEXT)");
    Recordset rows = database.openRecordset(kRows);
    for (; !rows.eof(); rows.moveNext()) {
        if (rows.value(0).text() == owed.dbtxtname) {
            rows.deleteCurrent();
        }
    }
    rows.addNew();
    rows.set(0, owed.dbtxtname);
    rows.set(1, owed.oldname);
    rows.set(2, QString::number(owed.size));
    rows.set(3, owed.sha256);
    rows.update();
}

std::vector<OwedProfile> owedprofiles(Database& database) {
    std::vector<OwedProfile> all;
    if (hasTable(database)) {
        for (Recordset rows = database.openRecordset(kRows); !rows.eof(); rows.moveNext()) {
            all.push_back(read(rows));
        }
    }
    return all;
}

bool isowed(const OwedProfile& owed, const QString& path) {
    const QFileInfo file(path);
    return file.isFile() && file.size() == owed.size && hashOf(path) == owed.sha256;
}

QString profilepath(const ProgramFolder& folder, Database& database, const QString& dbtxtname) {
    QString path = folder.path(u"dbtxt", dbtxtname);
    platform::skipErrors([&] {
        if (!hasTable(database)) {
            return;
        }
        for (Recordset rows = database.openRecordset(kRows); !rows.eof(); rows.moveNext()) {
            const OwedProfile owed = read(rows);
            if (owed.dbtxtname != dbtxtname) {
                continue;
            }
            if (bring(folder, owed)) {
                rows.deleteCurrent();
            } else if (const QString source = sourceOf(folder, owed); !source.isEmpty()) {
                path = source;
            }
            return;
        }
    });
    return path;
}

QString findprofile(const ProgramFolder& folder, Database& database, const QString& dbtxtname) {
    const QString place = folder.path(u"dbtxt", dbtxtname);
    for (const OwedProfile& owed : owedprofiles(database)) {
        if (owed.dbtxtname == dbtxtname && !isowed(owed, place)) {
            const QString source = sourceOf(folder, owed);
            return source.isEmpty() ? place : source;
        }
    }
    return place;
}

void bringowedprofiles(const ProgramFolder& folder, Database& database) {
    if (!hasTable(database)) {
        return;
    }
    QSet<QString> named;
    for (Recordset dives = database.openRecordset("SELECT dbtxtname FROM main"); !dives.eof();
         dives.moveNext()) {
        named += dives.value(0).text();
    }
    for (Recordset rows = database.openRecordset(kRows); !rows.eof(); rows.moveNext()) {
        const OwedProfile owed = read(rows);
        if (!named.contains(owed.dbtxtname) || bring(folder, owed)) {
            rows.deleteCurrent();
        }
    }
}

} // namespace benthor::divefiles
