#include "store/summary.h"

#include "platform/database.h"
#include "platform/textformat.h"

namespace benthor::store {

Summary readsummary(const QString& path) {
    platform::Database database;
    database.open(path);
    Summary summary;
    platform::Recordset dives = database.openRecordset("SELECT * FROM MAIN ");
    for (; !dives.eof(); dives.moveNext()) {
        ++summary.dives;
    }
    dives = database.openRecordset("SELECT * FROM MAIN  order by Startdate ");
    dives.moveLast();
    summary.lastdive = platform::formatDate(dives.value(u"startdate").dateTime(), u"dd/mm/yyyy hh:nn:ss");
    return summary;
}

QString totalstext(const Summary& summary) {
    return QStringLiteral("System has a total of : \n%1 dives\nYour last dive was on : \n%2")
        .arg(QString::number(summary.dives), summary.lastdive);
}

} // namespace benthor::store
