#include "store/units.h"

#include "shell/process.h"

namespace benthor::store {

namespace {

void writefirst(const platform::Query& query, QStringView field, const QString& word) {
    process().mainrecordset = process().database.openRecordset(query);
    process().mainrecordset.moveFirst();
    process().mainrecordset.edit();
    process().mainrecordset.set(field, word);
    process().mainrecordset.update();
}

} // namespace

QString readunit() {
    process().mainrecordset = process().database.openRecordset("SELECT * FROM Display ");
    process().mainrecordset.moveFirst();
    return process().mainrecordset.value(u"display").text();
}

void writeunit(const QString& word) { writefirst("SELECT * FROM Display ", u"Display", word); }

void writegetstarted(const QString& word) { writefirst("SELECT * FROM SERIALNO", u"getstarted", word); }

} // namespace benthor::store
