#include "store/diveidentity.h"

namespace benthor::store {

namespace {

platform::Recordset rowsOf(platform::Database& database, const QString& diveid) {
    return database.openRecordset(platform::sqlWith("SELECT * FROM main WHERE DiveID = '", diveid, "'"));
}

/// A store of an older form may lack the field.
platform::Value fieldOf(const platform::Recordset& dive, QStringView name) {
    const int position = dive.fieldPosition(name);
    return position < 0 ? platform::Value() : dive.value(position);
}

} // namespace

bool DiveIdentity::operator==(const DiveIdentity& other) const {
    return diveid.compare(other.diveid, Qt::CaseInsensitive) == 0 && startcode == other.startcode &&
           dbtxtname == other.dbtxtname && (isKnown() || row == other.row);
}

DiveIdentity identityOf(const platform::Recordset& dive) {
    return {dive.value(u"DiveID").text(), fieldOf(dive, u"Startcode"), fieldOf(dive, u"dbtxtname"),
            dive.rowNumber()};
}

DiveIdentity identifydive(platform::Database& database, const QString& diveid) {
    const platform::Recordset rows = rowsOf(database, diveid);
    return rows.recordCount() == 0 ? DiveIdentity() : identityOf(rows);
}

std::optional<platform::Recordset> finddive(platform::Database& database, const DiveIdentity& dive) {
    if (dive.isEmpty()) {
        return std::nullopt;
    }
    for (platform::Recordset rows = rowsOf(database, dive.diveid); !rows.eof(); rows.moveNext()) {
        if (identityOf(rows) == dive) {
            return rows;
        }
    }
    return std::nullopt;
}

} // namespace benthor::store
