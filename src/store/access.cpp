#include "store/access.h"

#include "platform/textformat.h"
#include "session/process.h"
#include "store/divetime.h"

#include <initializer_list>
#include <utility>

namespace benthor::store {

namespace {

using platform::trimBlanks;
using platform::Value;

/// Sets fields of the dive in hand in one edit.
void put(std::initializer_list<std::pair<QStringView, Value>> fields) {
    openmain(process().database,
             platform::sqlWith("SELECT * FROM main WHERE DiveID = '", process().currentdiveid, "'"));
    platform::Recordset& row = process().mainrecordset;
    row.edit();
    for (const auto& [name, value] : fields) {
        row.set(name, value);
    }
    row.update();
}

template <size_t Count> void addRow(const char* table, const std::array<QString, Count>& fields) {
    platform::Recordset& rows = process().mainrecordset;
    rows = process().database.openForAdding(table);
    process().querytext = QLatin1String("SELECT * FROM ") + QLatin1String(table);
    rows.addNew();
    rows.set(0, process().currentdiveid);
    for (size_t i = 0; i < Count; ++i) {
        rows.set(static_cast<int>(i) + 1, fields[i]);
    }
    rows.update();
}

} // namespace

void openmain(platform::Database& database, const platform::Query& query) {
    process().querytext = query.text();
    process().mainrecordset = database.openRecordset(query);
}

int countrows(platform::Database& database, const platform::Query& query) {
    process().querytext = query.text();
    process().countrecordset = database.openRecordset(query);
    return process().countrecordset.value(0).text().toInt();
}

void putinterval(const QString& interval) {
    put({{u"Interval", interval}});
}

void putversion(const QString& version) {
    put({{u"Version", version}});
}

void putusername(const QString& serial) {
    put({{u"UserName", serial}});
}

bool putsuit(const QString& serial) {
    try {
        put({{u"Suit", serial}});
        return true;
    } catch (const platform::StoreError& error) {
        if (!error.refusedValue()) {
            throw;
        }
        return false;
    }
}

void putmaxdepth(const QString& depth) {
    put({{u"maxdepth", padded(depth)}});
}

void putotu(const QString& otu) {
    put({{u"otu", trimBlanks(otu)}});
}

void putsystemid(const QString& system) {
    put({{u"systemid", system}});
}

void putdescend(const QString& descend) {
    put({{u"descend", trimBlanks(descend)}});
}

void putdatmos(const QString& datmos) {
    put({{u"datmos", trimBlanks(datmos)}});
}

void putdusage(const QString& dusage) {
    put({{u"dusage", trimBlanks(dusage)}});
}

void putdstack(const QString& dstack) {
    put({{u"dstack", trimBlanks(dstack)}});
}

void putduration(const QString& startcode, const QString& finishcode) {
    put({{u"duration", durationtext(startcode, finishcode)}});
}

void putfilenames(const QString& dbtxtname, const QString& location) {
    put({{u"dbtxtname", dbtxtname}, {u"Location", location}});
}

void putlocation(const QString& location) {
    put({{u"Location", location}});
}

void putstart(const QString& startcode) {
    put({{u"Startcode", startcode}, {u"startdate", codetodatetime(startcode)}});
}

void putfinish(const QString& finishcode) {
    put({{u"finisheddate", codetodatetime(finishcode)}});
}

void puthpcylinder(const QString& value) {
    put({{u"HPCylinder", value.mid(1, 4)}});
}

void putstatus(const QString&) {
    put({});
}

void addgasrow(const std::array<QString, 5>& fields) {
    addRow("GAS", fields);
}

void addtissuerow(const std::array<QString, 3>& fields) {
    addRow("tissue", fields);
}

bool checkpfexist(const QString& name) {
    return countrows(process().database, platform::sqlWith("SELECT COUNT(*) FROM pfindex  WHERE  itemname ='",
                                                           trimBlanks(name), "'")) > 0;
}

} // namespace benthor::store
