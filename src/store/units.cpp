#include "store/units.h"

#include "session/process.h"

namespace benthor::store {

namespace {

void writefirst(const platform::Query& query, QStringView field, const QString& word) {
    platform::Recordset row = process().database.openRecordset(query);
    row.edit();
    row.set(field, word);
    row.update();
}

} // namespace

QString readunit() {
    return process().database.openRecordset("SELECT * FROM Display ").value(u"display").text();
}

void writeunit(const QString& word) {
    writefirst("SELECT * FROM Display ", u"Display", word);
}

void writegetstarted(const QString& word) {
    writefirst("SELECT * FROM SERIALNO", u"getstarted", word);
}

} // namespace benthor::store
