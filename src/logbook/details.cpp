#include "logbook/details.h"

#include "platform/textformat.h"
#include "store/depthunits.h"

namespace benthor::logbook {

namespace {

using platform::Database;
using platform::Recordset;
using platform::sqlWith;
using platform::StoreError;

QString withLineFeeds(QString text) {
    return text.replace(QLatin1String("\r\n"), QLatin1String("\n"))
        .replace(QLatin1Char('\r'), QLatin1Char('\n'));
}

QString withCarriageReturns(const QString& text) {
    return withLineFeeds(text).replace(QLatin1Char('\n'), QLatin1String("\r\n"));
}

QString marker(int index) {
    return QStringLiteral("Imageplz%1").arg(index);
}

QStringList column(Database& database, const char* query, const char16_t* field) {
    QStringList texts;
    Recordset rows = database.openRecordset(query);
    for (; !rows.eof(); rows.moveNext()) {
        texts += rows.value(field).text();
    }
    return texts;
}

struct PickList {
    const char* count; ///< the query as far as the value
    const char* table;
    const char16_t* field;
};
constexpr PickList kDepartment{"SELECT COUNT(*) FROM department  WHERE department = '", "department",
                               u"department"};
constexpr PickList kSite{"SELECT COUNT(*) FROM site  WHERE site  = '", "site", u"Site"};
constexpr PickList kWeather{"SELECT COUNT(*) FROM weather  WHERE weather  = '", "weather", u"weather"};
constexpr PickList kBuddy{"SELECT COUNT(*) FROM BUDDY  WHERE BUDDY = '", "buddy", u"buddy"};

/// Adds what the list lacks. False where the value cannot be asked for.
bool offer(Database& database, const PickList& list, const QString& value, ActRecorder& act) {
    if (value.isEmpty()) {
        return true;
    }
    std::optional<platform::Query> query;
    try {
        query = sqlWith(list.count, value, "' ");
    } catch (const StoreError&) {
        return false;
    }
    if (database.openRecordset(*query).value(0).text() == QLatin1String("0")) {
        Recordset rows = database.openForAdding(list.table);
        rows.addNew();
        rows.set(list.field, value);
        rows.update();
        act.entryCame(QString::fromLatin1(list.table), value);
    }
    return true;
}

void writeDive(Database& database, const store::DiveIdentity& identity, const DiverAdds& diver) {
    std::optional<Recordset> found = store::finddive(database, identity);
    if (!found) {
        throw StoreError(QStringLiteral("The dive %1 is no longer in the store.").arg(identity.diveid));
    }
    Recordset& dive = *found;
    dive.edit();
    dive.set(u"UserName", diver.username);
    dive.set(u"department", diver.department);
    dive.set(u"site", diver.site);
    dive.set(u"Location", diver.location);
    dive.set(u"weather", diver.weather);
    dive.set(u"Suit", diver.suit);
    dive.set(u"divenote", withCarriageReturns(diver.divenote));
    dive.set(u"sitenote", withCarriageReturns(diver.sitenote));
    dive.set(u"Coments", withCarriageReturns(diver.comments));
    dive.update();
}

void removeBuddies(Database& database, const QString& diveid) {
    const QString count =
        database.openRecordset(sqlWith("SELECT count(*)FROM buddylist WHERE diveid  = '", diveid, "'"))
            .value(0)
            .text();
    if (count == QLatin1String("0")) {
        return;
    }
    Recordset rows = database.openRecordset(sqlWith("SELECT * FROM buddylist WHERE DiveID = '", diveid, "'"));
    for (; !rows.eof(); rows.moveNext()) {
        rows.deleteCurrent();
    }
}

} // namespace

DiveDetails loaddetails(Database& database, const QString& diveid, QStringView depthunit) {
    const Recordset dive =
        database.openRecordset(sqlWith("SELECT * FROM main WHERE DiveID = '", diveid, "'"));
    if (dive.recordCount() == 0) {
        throw StoreError(QStringLiteral("The dive %1 is not in the store.").arg(diveid));
    }
    const auto text = [&dive](const char16_t* field) { return withLineFeeds(dive.value(field).text()); };
    const auto date = [&dive](const char16_t* field) {
        return platform::formatDate(dive.value(field).dateTime(), u"dd/mm/yyyy hh:nn:ss");
    };
    DiveDetails details;
    details.dive = store::identityOf(dive);
    details.device = {text(u"DiveID"),   date(u"startdate"),       date(u"finisheddate"), text(u"duration"),
                      text(u"maxdepth"), QStringLiteral("metres"), text(u"interval"),     text(u"version"),
                      text(u"otu"),      text(u"datmos"),          text(u"dusage")};
    if (depthunit == QLatin1String("Feet")) {
        const double metres = platform::leadingNumber(details.device.maxdepth);
        details.device.maxdepth = platform::formatNumber(metres * store::kFeetPerMetre, u"########.00");
        details.device.depthcaption = QStringLiteral("Feet");
    }
    details.diver = {
        text(u"UserName"), text(u"Department"), text(u"site"),     text(u"location"), text(u"weather"),
        text(u"suit"),     text(u"divenote"),   text(u"sitenote"), text(u"Coments"),  {}};
    if (details.diver.divenote.isEmpty()) {
        details.diver.divenote = divenotetemplate();
    }
    Recordset buddies =
        database.openRecordset(sqlWith("SELECT * FROM buddylist WHERE DiveID = '", diveid, "'"));
    for (; !buddies.eof(); buddies.moveNext()) {
        details.diver.buddies += buddies.value(u"buddylist").text();
    }
    return details;
}

PickLists loadpicklists(Database& database) {
    return {column(database, "SELECT * FROM DEPARTMENT ", u"DEPARTMENT"),
            column(database, "SELECT * FROM site ", u"Site"),
            column(database, "SELECT * FROM weather ", u"weather"),
            column(database, "SELECT * FROM buddy ", u"buddy")};
}

SavedDetails savedetails(Database& database, const store::DiveIdentity& dive, const DiverAdds& diver) {
    QStringList refused;
    const ActRecord record = recordact(database, ActKind::Details, [&](ActRecorder& act) {
        refused.clear();
        const auto offerValue = [&](const PickList& list, const QString& value) {
            if (!offer(database, list, value, act) && !refused.contains(value)) {
                refused += value;
            }
        };
        act.diveChanges(dive.diveid);
        writeDive(database, dive, diver);
        offerValue(kDepartment, diver.department);
        offerValue(kSite, diver.site);
        offerValue(kWeather, diver.weather);
        removeBuddies(database, dive.diveid);
        for (const QString& buddy : diver.buddies) {
            Recordset rows = database.openForAdding("buddylist");
            rows.addNew();
            rows.set(u"diveid", dive.diveid);
            rows.set(u"buddylist", buddy);
            rows.update();
            offerValue(kBuddy, buddy);
        }
    });
    return {refused, record.fault, record.span};
}

QString divenotetemplate() {
    static const QStringList labels{QStringLiteral("Dive Type:"),
                                    QStringLiteral("Sea condition:"),
                                    QStringLiteral("Suit:"),
                                    QStringLiteral("Weight:"),
                                    QStringLiteral("Latititude:"),
                                    QStringLiteral("Longitude:"),
                                    QStringLiteral("BottomType:"),
                                    QStringLiteral("Rescue Diver:"),
                                    QStringLiteral("Dive Marshall/Supervisor:")};
    return labels.join(QLatin1String("\n\n")) + QLatin1String("\n\n  ");
}

std::array<QString, kPictures> picturepaths(const QString& sitenote) {
    std::array<QString, kPictures> paths;
    for (int index = 0; index < kPictures; ++index) {
        const qsizetype at = sitenote.indexOf(marker(index));
        if (at >= 0) {
            const qsizetype from = at + marker(index).size();
            const qsizetype end = sitenote.indexOf(QLatin1Char('\n'), from);
            paths[static_cast<size_t>(index)] =
                sitenote.mid(from, end < 0 ? -1 : end - from).remove(QLatin1Char('\r')).trimmed();
        }
    }
    return paths;
}

QString withoutpicture(const QString& sitenote, int index) {
    QString note = sitenote;
    const qsizetype at = note.indexOf(marker(index));
    if (at >= 0) {
        const qsizetype end = note.indexOf(QLatin1Char('\n'), at);
        note.remove(at, end < 0 ? note.size() - at : end + 1 - at);
    }
    return note;
}

QString withpicture(const QString& sitenote, int index, const QString& path) {
    QString note = withoutpicture(sitenote, index);
    // A marker begins its line.
    if (!note.isEmpty() && !note.endsWith(QLatin1Char('\n'))) {
        note += QLatin1Char('\n');
    }
    return note + marker(index) + path + QLatin1Char('\n');
}

} // namespace benthor::logbook
