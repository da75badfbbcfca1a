#include "logbook/divelist.h"

#include "divefiles/keptfiles.h"
#include "platform/textformat.h"
#include "session/process.h"
#include "store/access.h"
#include "store/depthunits.h"
#include "store/identifiers.h"

#include <algorithm>
#include <numeric>

namespace benthor::logbook {

namespace {

using platform::Value;

constexpr double kMinutesPerHour = 60;

struct HeaderName {
    const char* field;
    const char* header;
};
constexpr std::array<HeaderName, 13> kHeaders{{{"Suit", "S\\N"},
                                               {"coments", "Comments"},
                                               {"Username", "User Name"},
                                               {"datmos", "Atmospheric"},
                                               {"sitenote", "Site Notes"},
                                               {"Divenote", "Dive Notes"},
                                               {"otu", "OTU"},
                                               {"Interval", "Interval"},
                                               {"Dstack", "Stack Use"},
                                               {"Dusage", "Usage hours"},
                                               {"Duration", "Duration"},
                                               {"Location", "Dive Name"},
                                               {"MaxDepth", "MaxDepth"}}};

/// The column at `from` goes to `to`; those between move up.
struct ColumnMove {
    int from;
    int to;
};
constexpr std::array<ColumnMove, 6> kMoves{{{8, 1}, {9, 2}, {8, 3}, {7, 4}, {7, 5}, {22, 6}}};

QString depthtext(const QString& depth, QStringView depthunit) {
    if (!platform::isNumeric(depth)) {
        return depth;
    }
    const double metres = platform::leadingNumber(depth);
    return depthunit == QLatin1String("Feet") ? platform::formatNumber(metres * store::kFeetPerMetre, u"0ft")
                                              : platform::formatNumber(metres, u"0m");
}

QString usagetext(const QString& usage) {
    return platform::isNumeric(usage)
               ? platform::formatNumber(platform::leadingNumber(usage) / kMinutesPerHour, u"0mins")
               : usage;
}

/// Counts the rows of a dive in one table and deletes them one by one.
void deleterows(platform::Database& database, const platform::Query& count, const platform::Query& rows) {
    if (store::countrows(database, count) == 0) {
        return;
    }
    store::openmain(database, rows);
    for (platform::Recordset& row = process().mainrecordset; !row.eof(); row.moveNext()) {
        row.deleteCurrent();
    }
}

/// The name of a dive in the store, or "" where it has none.
QString locationOf(platform::Database& database, const QString& diveid) {
    if (store::countrows(
            database, platform::sqlWith("SELECT COUNT(*) FROM main  WHERE  DiveID = '", diveid, "'")) == 0) {
        return {};
    }
    store::openmain(database, platform::sqlWith("SELECT * FROM main WHERE DiveID = '", diveid, "'"));
    return process().mainrecordset.value(u"Location").text();
}

} // namespace

int sortnumber(QStringView sortkey) {
    struct KeyLetter {
        char16_t letter;
        int number;
    };
    constexpr std::array<KeyLetter, 4> kLetters{
        {{u's', kSortBySite}, {u'm', kSortByMaxDepth}, {u'l', kSortByName}, {u'd', kSortByDate}}};
    for (const KeyLetter& key : kLetters) {
        if (sortkey.contains(key.letter)) {
            return key.number;
        }
    }
    return kSortByIdentifier;
}

platform::Query listquery(int sortnumber, bool downward) {
    switch (sortnumber) {
    case kSortByName:
        return downward ? "SELECT * FROM main  ORDER BY location desc "
                        : "SELECT * FROM main  ORDER BY location asc ";
    case kSortByMaxDepth:
        return downward ? "SELECT * FROM main  ORDER BY maxdepth desc "
                        : "SELECT * FROM main  ORDER BY maxdepth asc ";
    case kSortByDate:
        return downward ? "SELECT * FROM main  ORDER BY startdate desc "
                        : "SELECT * FROM main  ORDER BY startdate asc ";
    case kSortBySite:
        return downward ? "SELECT * FROM main  ORDER BY site desc "
                        : "SELECT * FROM main  ORDER BY site asc ";
    default:
        return downward ? "SELECT * FROM main  ORDER BY diveid desc "
                        : "SELECT * FROM main  ORDER BY diveid ";
    }
}

std::string orderof(const platform::Query& listquery) {
    const std::string sql = listquery.sql();
    return sql.substr(sql.find("ORDER BY"));
}

QString newestof(platform::Database& database, const QStringList& diveids) {
    QString newest;
    Value start;
    for (const QString& diveid : diveids) {
        if (diveid.contains(QLatin1Char('\''))) {
            continue; // no dive of ours, and nothing that a query can hold
        }
        platform::Recordset dives = database.openRecordset(
            platform::sqlWith("SELECT DiveID, startdate FROM main WHERE DiveID = '", diveid, "'"));
        for (; !dives.eof(); dives.moveNext()) {
            const Value began = dives.value(1);
            // In the store's order a dive without a date began first.
            const bool later =
                newest.isEmpty() || std::pair(began.text(), diveid) > std::pair(start.text(), newest);
            if (dives.value(0).text() == diveid && later) {
                newest = diveid;
                start = began;
            }
        }
    }
    return newest;
}

QString readsortkey(const platform::ProgramFolder& folder) {
    constexpr qint64 kMost = 1024;
    const QByteArray text = platform::readFile(folder.path(u"dsort.txt"), kMost).value_or(QByteArray());
    return QString::fromLatin1(text.split('\n').first()).trimmed();
}

platform::FileResult writesortkey(const platform::ProgramFolder& folder, const QString& sortkey) {
    return platform::writeFileWhole(folder.path(u"dsort.txt"), sortkey.toLatin1() + "\r\n");
}

int columnwidth(int position) {
    switch (position) {
    case 4:
        return 2500;
    case 0:
    case 8:
    case 9:
    case 22:
        return 900;
    case 11:
    case 18:
    case 19:
    case 20:
        return 0;
    case 10:
        return 2000;
    default:
        return position >= 1 && position <= 7 ? 2000 : 1100;
    }
}

QString headertext(const QString& fieldname) {
    for (const HeaderName& name : kHeaders) {
        if (fieldname.compare(QLatin1String(name.field), Qt::CaseInsensitive) == 0) {
            return QLatin1String(name.header);
        }
    }
    return fieldname;
}

QString celltext(int position, const Value& value, QStringView depthunit) {
    if (value.isNull()) {
        return {};
    }
    QString text = value.text();
    switch (position) {
    case 6:
    case 7: {
        const QDateTime moment = value.dateTime();
        return moment.isValid() ? platform::formatDate(moment, u"mmm/dd/yyyy hh:mm:ss") : text;
    }
    case 8:
        return text.section(QLatin1Char(':'), 0, 0) + QStringLiteral("mins");
    case 9:
        return depthtext(text, depthunit);
    case 16:
        return text + QStringLiteral("secs");
    case 21:
        return text + QStringLiteral("mBar");
    case 22:
        return usagetext(text);
    default:
        return text;
    }
}

std::vector<int> columnorder(int columns) {
    std::vector<int> order(static_cast<size_t>(columns));
    std::iota(order.begin(), order.end(), 0);
    for (const ColumnMove& move : kMoves) {
        if (move.from < columns) {
            std::rotate(order.begin() + move.to, order.begin() + move.from, order.begin() + move.from + 1);
        }
    }
    return order;
}

void deletedive(platform::Database& database, const QString& diveid) {
    using platform::sqlWith;
    platform::Transaction transaction(database);
    deleterows(database, sqlWith("SELECT COUNT(*) FROM gas  WHERE  DiveID = '", diveid, "'"),
               sqlWith("SELECT * FROM GAS  where DiveID = '", diveid, "'"));
    deleterows(database, sqlWith("SELECT COUNT(*) FROM tissue  WHERE  DiveID = '", diveid, "'"),
               sqlWith("SELECT * FROM tissue  where DiveID = '", diveid, "'"));
    deleterows(database, sqlWith("SELECT COUNT(*) FROM main  WHERE  DiveID = '", diveid, "'"),
               sqlWith("SELECT * FROM main  where DiveID = '", diveid, "' "));
    transaction.commit();
}

void deletestarrows(platform::Database& database) {
    deletedive(database, QStringLiteral("*"));
}

void takewaitingfile(const platform::ProgramFolder& folder, const QString& name) {
    // A file of that name may hold another dive, which was never imported.
    if (folder.listFiles(QStringLiteral("new"), QStringLiteral("*.txt")).contains(name) &&
        divefiles::keepinold(folder, name)) {
        static_cast<void>(platform::removeFile(folder.path(u"new", name)));
    }
}

ActRecord deletedives(platform::Database& database, const platform::ProgramFolder& folder,
                      const QStringList& diveids) {
    SteppedAct act(database, ActKind::Delete);
    for (const QString& diveid : diveids) {
        QString location;
        act.step([&](ActRecorder& recorder) {
            recorder.diveGoes(diveid, folder);
            location = locationOf(database, diveid);
            deletedive(database, diveid);
            store::syncserialno(database);
        });
        takewaitingfile(folder, location);
    }
    act.step([&](ActRecorder& recorder) {
        recorder.diveGoes(QStringLiteral("*"), folder);
        deletestarrows(database);
    });
    return act.record();
}

} // namespace benthor::logbook
