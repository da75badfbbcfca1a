#include "store/summary.h"

#include "platform/textformat.h"

namespace benthor::store {

int countdives(platform::Database& database) {
    return database.openRecordset("SELECT COUNT(*) FROM MAIN ").value(0).text().toInt();
}

QString lastdive(platform::Database& database) {
    platform::Recordset rows =
        database.openRecordset("SELECT startdate FROM MAIN  order by Startdate desc LIMIT 1 ");
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
