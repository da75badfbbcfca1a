#include "viewer/screens/diverecord.h"

#include "divefiles/owedprofiles.h"
#include "platform/filename.h"
#include "platform/files.h"
#include "platform/programfolder.h"
#include "platform/skiperrors.h"
#include "session/process.h"
#include "store/access.h"
#include "store/units.h"
#include "viewer/screens/recordrows.h"

namespace benthor::viewer {

using platform::Recordset;
using platform::skipErrors;
using platform::sqlWith;
using platform::Value;

namespace {

/// 32,100 lines are read at most; a line of the device is shorter than 200 bytes, so this is ten times more
/// than any dive needs, and whatever lies in the folder fits into memory.
constexpr qint64 kMostBytes = 64LL * 1024 * 1024;
/// A name that was found has at least as many characters.
constexpr qsizetype kShortestName = 3;

std::optional<QString> fieldText(const Recordset& row, QStringView name) {
    std::optional<QString> text;
    skipErrors([&] {
        if (const Value value = row.value(name); !value.isNull()) {
            text = value.text();
        }
    });
    return text;
}

QDateTime fieldMoment(const Recordset& row, QStringView name) {
    QDateTime moment;
    skipErrors([&] { moment = row.value(name).dateTime(); });
    return moment;
}

} // namespace

std::optional<QByteArray> diveFile(const QString& name) {
    if (name.size() < kShortestName || !platform::isFileName(name)) {
        return std::nullopt;
    }
    return platform::readFile(
        divefiles::profilepath(platform::ProgramFolder::current(), process().database, name), kMostBytes);
}

void adoptLastDive() {
    if (!process().currentdiveid.isEmpty()) {
        return;
    }
    store::openmain(process().database, sqlWith("SELECT DiveID, systemid FROM main  WHERE SystemID = '",
                                                process().divesystem, "'  order by DiveID "));
    process().mainrecordset.moveLast();
    process().currentdiveid = process().mainrecordset.value(u"DiveID").text();
}

profile::DiveRow readDiveRow(const QString& diveid, store::DiveIdentity& dive) {
    store::openmain(process().database, sqlWith("SELECT * FROM main WHERE DiveID = '", diveid, "'"));
    const Recordset& row = process().mainrecordset;
    skipErrors([&] { dive = store::identityOf(row); });
    return {.duration = fieldText(row, u"duration"),
            .dbtxtname = fieldText(row, u"dbtxtname"),
            .interval = fieldText(row, u"interval"),
            .version = fieldText(row, u"version"),
            .otu = fieldText(row, u"otu"),
            .datmos = fieldText(row, u"datmos"),
            .dusage = fieldText(row, u"dusage"),
            .maxdepth = fieldText(row, u"maxdepth"),
            .location = fieldText(row, u"location"),
            .startdate = fieldMoment(row, u"startdate"),
            .finisheddate = fieldMoment(row, u"finisheddate")};
}

QString resolveDisplay() {
    const QString chosen = profile::resolveUnit(process().unitoverride, {});
    if (!chosen.isEmpty()) {
        return chosen;
    }
    return store::readunit();
}

std::vector<profile::GasRow> readGasRows(const QString& diveid) {
    store::openmain(process().database, sqlWith("SELECT * FROM GAS  where DiveID = '", diveid, "'"));
    return rowsOf(process().mainrecordset);
}

std::vector<profile::GasRow> gasRowsOfDive(const QString& diveid) {
    Recordset rows =
        process().database.openRecordset(sqlWith("SELECT * FROM GAS  where DiveID = '", diveid, "'"));
    return rowsOf(rows);
}

} // namespace benthor::viewer
