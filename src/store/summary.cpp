#include "store/summary.h"

#include "platform/textformat.h"

namespace benthor::store {

int countdives(platform::Database& database) {
    int dives = 0;
    platform::Recordset rows = database.openRecordset("SELECT * FROM MAIN ");
    for (; !rows.eof(); rows.moveNext()) {
        ++dives;
    }
    return dives;
}

QString lastdive(platform::Database& database) {
    platform::Recordset rows = database.openRecordset("SELECT * FROM MAIN  order by Startdate ");
    rows.moveLast();
    return platform::formatDate(rows.value(u"startdate").dateTime(), u"dd/mm/yyyy hh:nn:ss");
}

QString counttext(int dives) {
    return QStringLiteral("System has a total of : \n%1 dives").arg(dives);
}

QString lastdivetext(const QString& lastdive) {
    return QStringLiteral("\nYour last dive was on : \n") + lastdive;
}

} // namespace benthor::store
