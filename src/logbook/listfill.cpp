#include "logbook/listfill.h"

#include "divefiles/validators.h"
#include "logbook/divelist.h"
#include "platform/filename.h"
#include "session/process.h"

namespace benthor::logbook {

namespace {

bool holdsFigures(const QString& fieldname) {
    static const QStringList fields{
        QStringLiteral("Duration"), QStringLiteral("MaxDepth"), QStringLiteral("Interval"),
        QStringLiteral("otu"),      QStringLiteral("datmos"),   QStringLiteral("dusage"),
        QStringLiteral("dstack"),   QStringLiteral("descend"),  QStringLiteral("HPCylinder")};
    return fields.contains(fieldname, Qt::CaseInsensitive);
}

void copytocorrupt(const platform::ProgramFolder& folder, const QString& location) {
    // The diver may have given the dive a name that is no file's.
    if (!platform::isFileName(location)) {
        return;
    }
    const QString kept = folder.path(u"old", location);
    const QString corrupt = folder.path(u"corrupt", location);
    if (!platform::sameContents(kept, corrupt)) {
        static_cast<void>(platform::copyFile(kept, corrupt));
    }
}

} // namespace

ListedDives readdives(platform::Database& database, int sortnumber, QStringView depthunit, bool downward) {
    const platform::Query query = listquery(sortnumber, downward);
    process().querytext = query.text();
    platform::Recordset dives = database.openRecordset(query);
    ListedDives list;
    const std::vector<int> order = columnorder(dives.fieldCount());
    for (const int position : order) {
        const QString field = dives.fieldName(position);
        list.headers += headertext(field);
        list.widths.push_back(columnwidth(position));
        list.figures.push_back(holdsFigures(field));
    }
    list.rows.reserve(static_cast<size_t>(dives.recordCount()));
    for (; !dives.eof(); dives.moveNext()) {
        QStringList cells;
        cells.reserve(static_cast<qsizetype>(order.size()));
        for (const int position : order) {
            cells += celltext(position, dives.value(position), depthunit);
        }
        list.rows.push_back(std::move(cells));
    }
    return list;
}

bool checkdives(platform::Database& database, const platform::ProgramFolder& folder, int count,
                const std::function<ListedDive(int number)>& dive,
                const std::function<bool(int number, bool good)>& checked) {
    for (int number = 1; number <= count; ++number) {
        const ListedDive one = dive(number);
        process().currentdiveid = one.diveid;
        try {
            divefiles::checkdive(database);
        } catch (const platform::StoreError& error) {
            process().problemtext += QLatin1Char('\r') + error.text();
        }
        const bool good = process().problemtext.isEmpty();
        if (!good) {
            copytocorrupt(folder, one.location);
        }
        if (!checked(number, good)) {
            return false;
        }
    }
    return true;
}

} // namespace benthor::logbook
