#include "logbook/mergeplan.h"

#include "logbook/diverows.h"
#include "platform/filename.h"
#include "platform/storedrows.h"
#include "platform/textformat.h"

#include <QFileInfo>
#include <QHash>
#include <QSet>

#include <optional>

namespace benthor::logbook {

namespace {

using platform::Database;
using platform::ProgramFolder;
using platform::Recordset;

constexpr int kDivesBetweenCalls = 64;

struct Detail {
    const char* field;
    const char* caption;
    bool joins;
};
constexpr std::array<Detail, 9> kDetails{{
    {"UserName", "Diver", false},
    {"Location", "Dive name", false},
    {"Suit", "S\\N", false},
    {"site", "Site", false},
    {"weather", "Weather", false},
    {"Department", "Department", false},
    {"divenote", "Dive notes", true},
    {"sitenote", "Site notes", true},
    {"Coments", "Comments", true},
}};

/// What tells dives apart, and what divers write, of one row.
struct Facts {
    QString diveid, startcode, suit, username, started, duration, maxdepth, file;
    std::array<QString, kDetails.size()> details;
};

/// Reads rows of main by field name; a store of an older form may lack some.
class FactReader {
public:
    explicit FactReader(const Recordset& rows)
        : rows_(rows) {
        for (size_t i = 0; i < kDetails.size(); ++i) {
            details_[i] = rows.fieldPosition(QLatin1String(kDetails[i].field).toString());
        }
    }

    Facts facts() const {
        Facts facts;
        facts.diveid = text(u"DiveID");
        facts.startcode = text(u"Startcode").trimmed();
        facts.suit = text(u"Suit").trimmed().toCaseFolded();
        facts.username = text(u"UserName").trimmed().toCaseFolded();
        facts.started = started();
        facts.duration = text(u"Duration").trimmed();
        facts.maxdepth = text(u"MaxDepth").trimmed();
        facts.file = text(u"dbtxtname");
        for (size_t i = 0; i < kDetails.size(); ++i) {
            facts.details[i] = details_[i] < 0 ? QString() : rows_.value(details_[i]).text();
        }
        return facts;
    }

private:
    QString text(QStringView field) const {
        const int position = rows_.fieldPosition(field);
        return position < 0 ? QString() : rows_.value(position).text();
    }
    QString started() const {
        const QString written = text(u"startdate").trimmed();
        const QDateTime moment = platform::Value(written).dateTime();
        return moment.isValid() ? moment.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")) : written;
    }

    const Recordset& rows_;
    std::array<int, kDetails.size()> details_{};
};

QString summaryKey(const Facts& facts) {
    return facts.started.isEmpty() ? QString()
                                   : facts.started + u'|' + facts.duration + u'|' +
                                         QString::number(platform::leadingNumber(facts.maxdepth));
}

bool areOfOneDevice(const Facts& one, const Facts& other) {
    const bool haveSuit = !one.suit.isEmpty() || !other.suit.isEmpty();
    const bool haveName = !one.username.isEmpty() || !other.username.isEmpty();
    if (!haveSuit && !haveName) {
        return true;
    }
    return (haveSuit && one.suit == other.suit) || (haveName && one.username == other.username);
}

/// Where the file of a dive lies; empty where there is none.
QString filePlace(const ProgramFolder& folder, const QString& name) {
    if (!platform::isFileName(name)) {
        return {};
    }
    QString place = folder.path(u"dbtxt", name);
    return platform::isFile(place) ? place : QString();
}

/// The dives that are known so far, by all that makes a dive the same.
class KnownDives {
public:
    explicit KnownDives(const ProgramFolder& folder)
        : folder_(folder) {}

    /// `place`: of its file; where it is not told it is looked up in the folder when it is first needed.
    void add(const Facts& facts, const QString& place = {}) {
        const int number = static_cast<int>(dives_.size());
        dives_.push_back({facts, place});
        if (!facts.startcode.isEmpty()) {
            byCode_[facts.startcode].push_back(number);
        }
        if (const QString key = summaryKey(facts); !key.isEmpty()) {
            bySummary_[key].push_back(number);
        }
        if (sizesRead_) {
            addSize(number);
        }
    }

    /// The first that is the same dive, or nothing. `place`: of its file.
    std::optional<int> find(const Facts& facts, const QString& place) {
        std::optional<int> found;
        const auto take = [&](int number) { found = found ? std::min(*found, number) : number; };
        for (const int number : byCode_.value(facts.startcode)) {
            if (areOfOneDevice(dives_[static_cast<size_t>(number)].facts, facts)) {
                take(number);
            }
        }
        for (const int number : bySummary_.value(summaryKey(facts))) {
            if (facts.startcode.isEmpty() || dives_[static_cast<size_t>(number)].facts.startcode.isEmpty()) {
                take(number);
            }
        }
        return found || place.isEmpty() ? found : findByFile(place);
    }

    const Facts& facts(int number) const { return dives_[static_cast<size_t>(number)].facts; }

private:
    struct Known {
        Facts facts;
        QString place;
    };

    void addSize(int number) {
        Known& dive = dives_[static_cast<size_t>(number)];
        if (dive.place.isEmpty()) {
            dive.place = filePlace(folder_, dive.facts.file);
        }
        if (!dive.place.isEmpty()) {
            bySize_[QFileInfo(dive.place).size()].push_back(number);
        }
    }

    std::optional<int> findByFile(const QString& place) {
        if (!sizesRead_) {
            sizesRead_ = true;
            for (size_t i = 0; i < dives_.size(); ++i) {
                addSize(static_cast<int>(i));
            }
        }
        for (const int number : bySize_.value(QFileInfo(place).size())) {
            if (platform::sameContents(dives_[static_cast<size_t>(number)].place, place)) {
                return number;
            }
        }
        return std::nullopt;
    }

    const ProgramFolder& folder_;
    std::vector<Known> dives_;
    QHash<QString, std::vector<int>> byCode_;
    QHash<QString, std::vector<int>> bySummary_;
    QHash<qint64, std::vector<int>> bySize_;
    bool sizesRead_ = false;
};

/// Of every dive, joined.
QHash<QString, QString> readBuddies(Database& database) {
    QHash<QString, QString> buddies;
    platform::StoredRows tables(database);
    if (!hastable(tables, "buddylist")) {
        return buddies;
    }
    Recordset rows = database.openRecordset("SELECT diveid, buddylist FROM buddylist");
    for (; !rows.eof(); rows.moveNext()) {
        QString& joined = buddies[rows.value(0).text()];
        const QString name = rows.value(1).text();
        joined += joined.isEmpty() ? name : QStringLiteral(", ") + name;
    }
    return buddies;
}

/// Line ends and blanks at the ends make no difference.
QString compared(QString text) {
    return text.replace(QLatin1String("\r\n"), QLatin1String("\n")).trimmed();
}

/// What is empty over there is nothing to take.
std::vector<DetailDifference> differencesOf(const Facts& mine, const QString& myBuddies, const Facts& theirs,
                                            const QString& theirBuddies) {
    std::vector<DetailDifference> differences;
    const auto add = [&](const char* field, const char* caption, const QString& here, const QString& there,
                         bool joins) {
        const QString wanted = compared(there);
        if (!wanted.isEmpty() && wanted != compared(here)) {
            differences.push_back({field, QLatin1String(caption), here, there, joins});
        }
    };
    for (size_t i = 0; i < kDetails.size(); ++i) {
        add(kDetails[i].field, kDetails[i].caption, mine.details[i], theirs.details[i], kDetails[i].joins);
    }
    add("buddylist", "Buddies", myBuddies, theirBuddies, false);
    return differences;
}

MergeDive shown(const Recordset& rows, const Facts& facts) {
    MergeDive dive;
    dive.row = rows.rowNumber();
    dive.diveid = facts.diveid;
    dive.name = facts.details[1];
    dive.started = facts.started;
    dive.duration = facts.duration;
    dive.maxdepth = facts.maxdepth;
    dive.serial = facts.details[2];
    dive.file = facts.file;
    return dive;
}

} // namespace

std::vector<MergeDive> planmerge(Database& mine, const ProgramFolder& folder, OtherLogbook& other,
                                 const MergeProgress& progress) {
    const auto goOn = [&](qsizetype done, qsizetype of) {
        if (progress && done % kDivesBetweenCalls == 0 &&
            !progress(static_cast<int>(done), static_cast<int>(of))) {
            throw MergeStopped();
        }
    };
    KnownDives known(folder);
    Recordset rows = mine.openRecordset("SELECT * FROM main order by DiveID ");
    Recordset theirs = other.database().openRecordset("SELECT * FROM main order by DiveID ");
    const qsizetype all = rows.recordCount() + theirs.recordCount();
    qsizetype done = 0;
    const FactReader here(rows);
    for (; !rows.eof(); rows.moveNext()) {
        goOn(done++, all);
        known.add(here.facts());
    }
    const qsizetype ownDives = done;
    const QHash<QString, QString> myBuddies = readBuddies(mine);
    const QHash<QString, QString> theirBuddies = readBuddies(other.database());
    std::vector<MergeDive> dives;
    dives.reserve(static_cast<size_t>(theirs.recordCount()));
    const FactReader there(theirs);
    for (; !theirs.eof(); theirs.moveNext()) {
        goOn(done++, all);
        const Facts facts = there.facts();
        const QString place = filePlace(other.folder(), facts.file);
        MergeDive dive = shown(theirs, facts);
        if (const std::optional<int> found = known.find(facts, place); !found) {
            known.add(facts, place);
        } else {
            dive.group = MergeGroup::Here;
            if (*found < ownDives) {
                const Facts& own = known.facts(*found);
                dive.mine = own.diveid;
                dive.differences =
                    differencesOf(own, myBuddies.value(own.diveid), facts, theirBuddies.value(facts.diveid));
            }
        }
        if (!dive.differences.empty()) {
            dive.group = MergeGroup::OtherDetails;
        }
        dives.push_back(std::move(dive));
    }
    return dives;
}

int countgroup(const std::vector<MergeDive>& dives, MergeGroup group) {
    return static_cast<int>(std::count_if(dives.begin(), dives.end(),
                                          [group](const MergeDive& dive) { return dive.group == group; }));
}

} // namespace benthor::logbook
