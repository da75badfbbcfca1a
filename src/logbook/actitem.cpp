// A dive that goes, as the file of the acts keeps it.

#include "logbook/actfile.h"
#include "platform/files.h"
#include "platform/textformat.h"

#include <QFileInfo>

namespace benthor::logbook {

namespace {

/// No dive file is as long; a longer one is kept in `old` alone, as every file that leaves `new`.
constexpr qint64 kLongestFile = 64LL << 20;

} // namespace

ActItem itemGoing(platform::StoredRows& store, const QString& diveid, const TableRows& rows) {
    ActItem item;
    item.diveid = diveid;
    item.key = keyof(rows);
    item.digest = digestof(rows);
    item.twins = counttwins(store, diveid, item.key, item.digest);
    item.name = fieldof(rows, "Location").text();
    item.started = fieldof(rows, "startdate").text();
    TableRows all = rows;
    // A start forgets a profile that is owed to no dive; one that comes back needs to know it again.
    if (hastable(store, "owedprofile") && !item.key.dbtxtname.isNull()) {
        for (TableRow& row : readtablerows(store, "owedprofile", "dbtxtname", item.key.dbtxtname)) {
            all.push_back(std::move(row));
        }
    }
    item.rows = encoderows(all);
    return item;
}

void takeWaitingFile(ActItem& item, const platform::ProgramFolder& folder) {
    item.fileName.clear();
    item.file.clear();
    if (!folder.listFiles(QStringLiteral("new"), QStringLiteral("*.txt")).contains(item.name)) {
        return;
    }
    const QString path = folder.path(u"new", item.name);
    if (QFileInfo(path).size() > kLongestFile) {
        return;
    }
    if (const std::optional<QByteArray> bytes = platform::readFile(path, kLongestFile)) {
        item.fileName = item.name;
        item.file = *bytes;
    }
}

QString momentText(const QDateTime& moment) {
    return platform::formatDate(moment, u"yyyy-mm-dd hh:nn:ss");
}

} // namespace benthor::logbook
