#include "logbook/mergeplan.h"

#include "logbook/diverows.h"
#include "logbook/knowndives.h"
#include "platform/storedrows.h"

#include <algorithm>
#include <optional>

namespace benthor::logbook {

namespace {

using platform::Database;
using platform::ProgramFolder;
using platform::Recordset;

constexpr int kDivesBetweenCalls = 64;

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
    dive.row = rows.value(0).text().toLongLong();
    dive.diveid = facts.diveid;
    dive.name = facts.details[1];
    dive.started = facts.started;
    dive.duration = facts.duration;
    dive.maxdepth = facts.maxdepth;
    dive.serial = facts.details[2];
    dive.file = facts.file;
    return dive;
}

/// A dive here that several over there are stays known by its serial and its diver.
void keepWhatTellsDives(std::vector<MergeDive>& dives) {
    QHash<QString, int> times;
    for (const MergeDive& dive : dives) {
        ++times[dive.mine];
    }
    for (MergeDive& dive : dives) {
        if (times.value(dive.mine) > 1) {
            std::erase_if(dive.differences, [](const DetailDifference& difference) {
                return difference.field == "Suit" || difference.field == "UserName";
            });
        }
    }
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
    Recordset rows = openFacts(mine);
    Recordset theirs = openFacts(other.database());
    const qsizetype all = rows.recordCount() + theirs.recordCount();
    qsizetype done = 0;
    const FactReader here(rows);
    for (; !rows.eof(); rows.moveNext()) {
        goOn(done++, all);
        known.add(here.facts(), std::nullopt);
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
        dives.push_back(std::move(dive));
    }
    keepWhatTellsDives(dives);
    for (MergeDive& dive : dives) {
        if (!dive.differences.empty()) {
            dive.group = MergeGroup::OtherDetails;
        }
    }
    return dives;
}

int countgroup(const std::vector<MergeDive>& dives, MergeGroup group) {
    return static_cast<int>(std::count_if(dives.begin(), dives.end(),
                                          [group](const MergeDive& dive) { return dive.group == group; }));
}

} // namespace benthor::logbook
