#include "store/units.h"

#include "shell/process.h"
#include "store/access.h"

namespace benthor::store {

namespace {

void writefirst(const platform::Query& query, QStringView field, const QString& word) {
    openmain(process().database, query);
    process().mainrecordset.edit();
    process().mainrecordset.set(field, word);
    process().mainrecordset.update();
}

} // namespace

QString readunit() {
    openmain(process().database, "SELECT * FROM Display ");
    return process().mainrecordset.value(u"display").text();
}

void writeunit(const QString& word) {
    writefirst("SELECT * FROM Display ", u"Display", word);
}

void writegetstarted(const QString& word) {
    writefirst("SELECT * FROM SERIALNO", u"getstarted", word);
}

} // namespace benthor::store
