#include "logbook/merge.h"

#include "logbook/actfile.h"
#include "logbook/actrecorder.h"
#include "logbook/diverows.h"
#include "logbook/mergefiles.h"
#include "platform/filename.h"
#include "platform/skiperrors.h"
#include "platform/storedrows.h"
#include "store/backup.h"
#include "store/identifiers.h"

#include <QScopeGuard>

#include <optional>

namespace benthor::logbook {

namespace {

using platform::Database;
using platform::quotedTableName;
using platform::StoredCells;
using platform::StoredRow;
using platform::StoredRows;
using platform::StoredStatement;
using platform::StoredValue;
using platform::StoreError;

constexpr int kMostSerial = 50; // the store takes no longer one
constexpr int kFieldSize = 255;
constexpr int kDivesBetweenCalls = 64;
constexpr const char* kDiveid = "diveid";
constexpr const char* kBuddies = "buddylist";

bool isNamed(const QByteArray& name, const char* wanted) {
    return name.compare(wanted, Qt::CaseInsensitive) == 0;
}

/// One table of both stores: reads a dive's rows there and puts them in here.
class TableBridge {
public:
    TableBridge(StoredRows& mine, StoredRows& theirs, Database& store, const char* table)
        : table_(table)
        , read_(theirs.prepare("SELECT * FROM main." + quotedTableName(table) + " WHERE " +
                               (isNamed(table, "main") ? QByteArray("rowid") : QByteArray(kDiveid)) +
                               " = ?1 ORDER BY rowid"))
        , insert_(mine.prepare(prepareInsert(theirs, store))) {}

    /// All rows of a dive over there, as those of a dive here.
    void copy(const StoredValue& from, const StoredValue& diveid) {
        copy(from, diveid, [](const StoredCells&, StoredStatement::Replaced&) {});
    }

    /// `change`: names what else is not as it is there. Returns how many rows there were.
    template <class Change> int copy(const StoredValue& from, const StoredValue& diveid, Change&& change) {
        return read_.copyTo(insert_, {from},
                            [&](const StoredCells& row, StoredStatement::Replaced& replaced) {
                                if (const auto place = row.placeOf(kDiveid)) {
                                    replaced.emplace_back(*place, diveid);
                                }
                                change(row, replaced);
                            });
    }

private:
    /// Fields that the store here lacks are added to it first.
    QByteArray prepareInsert(StoredRows& theirs, Database& store) const {
        QByteArray names;
        QByteArray places;
        const QStringList here = store.fieldNames(QString::fromLatin1(table_));
        int place = 0;
        for (const StoredRow& field :
             theirs.read("PRAGMA main.table_info(" + quotedTableName(table_) + ")")) {
            const QByteArray name = field.at(1).bytes;
            if (!here.contains(QString::fromUtf8(name), Qt::CaseInsensitive)) {
                store.appendField(QString::fromLatin1(table_), QString::fromUtf8(name), kFieldSize);
            }
            const char* const separator = place++ == 0 ? "" : ", ";
            names += separator + quotedTableName(name);
            places += separator + QByteArray("?") + QByteArray::number(place);
        }
        return "INSERT INTO main." + quotedTableName(table_) + " (" + names + ") VALUES (" + places + ")";
    }

    const char* table_;
    StoredStatement read_;
    StoredStatement insert_;
};

/// The names that the dives here have for their files, case folded. Those of dives in the trash whose file is
/// missing, too: they may come back, and would show what has the name by then.
QSet<QString> namedFiles(Database& mine, const platform::ProgramFolder& folder) {
    QSet<QString> names;
    for (const StoredRow& row : StoredRows(mine).read("SELECT DISTINCT dbtxtname FROM main.main")) {
        names += row.at(0).text().toCaseFolded();
    }
    platform::skipErrors([&] { // a trash that cannot be read gives no dive back either
        const std::unique_ptr<ActFile> acts = ActFile::ifThere(mine);
        for (const ActItem& dive : acts ? acts->trashed() : std::vector<ActItem>()) {
            const QString name = dive.key.dbtxtname.text();
            if (platform::isFileName(name) && !platform::isFile(folder.path(u"dbtxt", name))) {
                names += name.toCaseFolded();
            }
        }
    });
    return names;
}

/// A dive that comes, and what its file is called here.
struct Coming {
    const MergeDive* dive = nullptr;
    MergeFiles::Brought file;
};

/// The rows of one merge, within the transaction of its act.
class RowMerge {
public:
    RowMerge(Database& mine, Database& theirs, ActRecorder& act, MergeResult& result)
        : store_(mine)
        , mine_(mine)
        , theirs_(theirs)
        , act_(act)
        , result_(result) {}

    void bring(const std::vector<Coming>& coming, const std::function<void(int)>& done);
    void takeDetails(const MergeDive& dive, const std::vector<TakeDetail>& choices);
    void bringEntries();

private:
    void clearNumbersBehind(const QString& last);
    void bringDive(const Coming& coming, const QString& diveid, std::vector<TableBridge>& tables);
    void changeRow(const StoredCells& row, const Coming& coming, StoredStatement::Replaced& replaced);
    bool inBoth(const char* table) { return hastable(mine_, table) && hastable(theirs_, table); }

    Database& store_;
    StoredRows mine_;
    StoredRows theirs_;
    ActRecorder& act_;
    MergeResult& result_;
};

void RowMerge::bring(const std::vector<Coming>& coming, const std::function<void(int)>& done) {
    if (coming.empty()) {
        return;
    }
    std::vector<TableBridge> tables;
    for (const char* const table : {"main", "gas", "tissue", kBuddies}) {
        if (inBoth(table)) {
            tables.emplace_back(mine_, theirs_, store_, table);
        }
    }
    store::syncserialno(store_);
    platform::Value last = mine_.read("SELECT serial_no FROM main.serialno").at(0).at(0).text();
    clearNumbersBehind(last.text());
    for (const Coming& one : coming) {
        const QString diveid = store::nextidentifier(last);
        bringDive(one, diveid, tables);
        last = diveid;
        result_.dives += diveid;
        done(++result_.came);
    }
}

/// What deleted dives left under numbers that are given out now. A number that a dive bears is not behind the
/// last.
void RowMerge::clearNumbersBehind(const QString& last) {
    for (const char* const table : {"gas", "tissue", kBuddies}) {
        if (hastable(mine_, table)) {
            mine_.change(QByteArray("DELETE FROM main.") + table +
                             " WHERE diveid > ?1 AND diveid LIKE 'D_______'",
                         {last});
        }
    }
}

void RowMerge::bringDive(const Coming& coming, const QString& diveid, std::vector<TableBridge>& tables) {
    const StoredValue id(diveid);
    StoredValue theirId;
    const int found = tables.front().copy(coming.dive->row, id,
                                          [&](const StoredCells& row, StoredStatement::Replaced& replaced) {
                                              theirId = row.valueOf(kDiveid);
                                              changeRow(row, coming, replaced);
                                          });
    if (found != 1) {
        throw StoreError(
            QStringLiteral("The dive %1 is no longer in the other logbook.").arg(coming.dive->diveid));
    }
    for (size_t i = 1; i < tables.size(); ++i) {
        tables[i].copy(theirId, id);
    }
    act_.diveCame(diveid);
}

/// The row of main names the file as it is called here, and holds no longer serial than the store takes.
void RowMerge::changeRow(const StoredCells& row, const Coming& coming, StoredStatement::Replaced& replaced) {
    const auto problem = [&](const QString& words) {
        result_.problems += QStringLiteral("%1 (%2): %3").arg(coming.dive->diveid, coming.dive->name, words);
    };
    if (const auto file = row.placeOf("dbtxtname"); file && !row.bytes(*file).isEmpty()) {
        replaced.emplace_back(*file, coming.file.name);
    }
    if (!coming.file.isThere) {
        problem(coming.dive->file.isEmpty()
                    ? QStringLiteral("names no file; it came without a profile.")
                    : QStringLiteral("its file %1 is missing there; it came without a profile.")
                          .arg(coming.dive->file));
    }
    const QString serial = row.valueOf("Suit").text();
    if (serial.size() > kMostSerial) {
        problem(QStringLiteral("its serial is too long and was cut: %1").arg(serial));
        replaced.emplace_back(*row.placeOf("Suit"), serial.left(kMostSerial));
    }
}

/// Both, one behind the other. Lines that stand there already are not added again, so the same merge once
/// more changes nothing.
QString joined(const QString& mine, const QString& theirs) {
    const auto lines = [](QString text) {
        text = text.replace(QLatin1String("\r\n"), QLatin1String("\n")).trimmed();
        return QString(u'\n' + text + u'\n');
    };
    if (mine.trimmed().isEmpty()) {
        return theirs;
    }
    return lines(mine).contains(lines(theirs)) ? mine : mine + QStringLiteral("\r\n") + theirs;
}

/// Of several rows with the identifier the first is the dive's, as everywhere.
void RowMerge::takeDetails(const MergeDive& dive, const std::vector<TakeDetail>& choices) {
    const std::vector<StoredRow> row =
        mine_.read("SELECT rowid FROM main.main WHERE DiveID = ?1 ORDER BY rowid LIMIT 1", {dive.mine});
    if (row.empty()) {
        throw StoreError(QStringLiteral("The dive %1 is no longer in this logbook.").arg(dive.mine));
    }
    act_.diveChanges(dive.mine);
    bool changed = false;
    for (size_t i = 0; i < dive.differences.size() && i < choices.size(); ++i) {
        const DetailDifference& difference = dive.differences[i];
        if (choices[i] == TakeDetail::Mine) {
            continue;
        }
        changed = true;
        if (difference.field == kBuddies) {
            mine_.change("DELETE FROM main.buddylist WHERE diveid = ?1", {dive.mine});
            for (const StoredRow& buddy :
                 theirs_.read("SELECT buddylist FROM main.buddylist WHERE diveid = ?1 ORDER BY rowid",
                              {dive.diveid})) {
                mine_.change("INSERT INTO main.buddylist (diveid, buddylist) VALUES (?1, ?2)",
                             {dive.mine, buddy.at(0)});
            }
            continue;
        }
        const StoredValue& number = row.front().at(0);
        const QByteArray field = quotedTableName(difference.field);
        QString text = difference.theirs;
        if (choices[i] == TakeDetail::Both && difference.joins) {
            text = joined(mine_.read("SELECT " + field + " FROM main.main WHERE rowid = ?1", {number})
                              .at(0)
                              .at(0)
                              .text(),
                          text);
        }
        if (isNamed(difference.field, "Suit")) {
            text.truncate(kMostSerial);
        }
        mine_.change("UPDATE main.main SET " + field + " = ?1 WHERE rowid = ?2", {StoredValue(text), number});
    }
    result_.details += changed ? 1 : 0;
}

/// A value with a single quote cannot be asked for in a pick list; it stands in the dives' own rows.
void RowMerge::bringEntries() {
    for (const char* const table : {"department", "site", "weather", "buddy"}) {
        if (!inBoth(table)) {
            continue;
        }
        const QByteArray all = QByteArray("SELECT ") + table + " FROM main." + table + " ORDER BY rowid";
        QSet<QString> here;
        for (const StoredRow& row : mine_.read(all)) {
            here += row.at(0).text().trimmed().toCaseFolded();
        }
        for (const StoredRow& row : theirs_.read(all)) {
            const QString value = row.at(0).text();
            const QString folded = value.trimmed().toCaseFolded();
            if (folded.isEmpty() || here.contains(folded)) {
                continue;
            }
            if (value.contains(u'\'')) {
                result_.problems += QStringLiteral("The list %1 cannot take \"%2\": it holds a single quote.")
                                        .arg(QLatin1String(table), value);
                continue;
            }
            here += folded;
            mine_.change(QByteArray("INSERT INTO main.") + table + " (" + table + ") VALUES (?1)",
                         {row.at(0)});
            act_.entryCame(QString::fromLatin1(table), value);
            ++result_.entries;
        }
    }
}

bool takesDetails(const MergeChoice& choice) {
    return std::any_of(choice.details.begin(), choice.details.end(),
                       [](TakeDetail one) { return one != TakeDetail::Mine; });
}

/// Copies and row changes are told as one number each.
class MergeSteps {
public:
    MergeSteps(const MergeProgress& progress, size_t coming)
        : progress_(progress)
        , all_(static_cast<int>(2 * coming)) {}
    void done(int steps) const {
        if (progress_ && steps % kDivesBetweenCalls == 0 && !progress_(steps, all_)) {
            throw MergeStopped();
        }
    }

private:
    const MergeProgress& progress_;
    int all_;
};

} // namespace

TakeDetail plainchoice(const DetailDifference& difference) {
    return difference.mine.trimmed().isEmpty() ? TakeDetail::Theirs : TakeDetail::Mine;
}

std::vector<MergeChoice> plainchoices(const std::vector<MergeDive>& dives) {
    std::vector<MergeChoice> choices(dives.size());
    for (size_t i = 0; i < dives.size(); ++i) {
        choices[i].comes = dives[i].group == MergeGroup::New;
    }
    return choices;
}

MergeResult mergedives(Database& mine, const platform::ProgramFolder& folder, OtherLogbook& other,
                       const std::vector<MergeDive>& dives, const std::vector<MergeChoice>& choices,
                       const MergeProgress& progress) {
    const QString backup = QStringLiteral("rb-before-merge.mdb");
    if (const platform::FileResult copied = store::provencopy(folder, backup); !copied) {
        throw StoreError(QStringLiteral("No backup of this logbook can be made, so nothing was merged.\n") +
                         copied.error);
    }
    MergeFiles files(folder, other.folder(), namedFiles(mine, folder));
    std::vector<Coming> coming;
    for (size_t i = 0; i < dives.size(); ++i) {
        if (choices.at(i).comes && dives[i].group == MergeGroup::New) {
            coming.push_back({&dives[i], {}});
        }
    }
    const MergeSteps steps(progress, coming.size());
    for (size_t i = 0; i < coming.size(); ++i) {
        coming[i].file = files.bring(coming[i].dive->file);
        steps.done(static_cast<int>(i));
    }
    files.settle();
    MergeResult result;
    const ActRecord record = recordact(mine, ActKind::Merge, [&](ActRecorder& act) {
        result = {}; // where the acts cannot be kept this runs a second time
        const platform::SteadyReading steady(other.database());
        RowMerge merge(mine, other.database(), act, result);
        merge.bring(coming, [&](int came) { steps.done(static_cast<int>(coming.size()) + came); });
        for (size_t i = 0; i < dives.size(); ++i) {
            if (dives[i].group == MergeGroup::OtherDetails && takesDetails(choices[i])) {
                merge.takeDetails(dives[i], choices[i].details);
            }
        }
        if (result.came > 0 || result.details > 0) {
            merge.bringEntries();
        }
        store::syncserialno(mine);
    });
    files.keep();
    result.backup = backup;
    result.stayed = static_cast<int>(dives.size()) - result.came;
    result.notTakenBack = record.fault;
    return result;
}

QString mergeText(const MergeResult& result) {
    const auto counted = [](int number, const char* one, const char* many) {
        return QStringLiteral("%1 %2").arg(QString::number(number), QLatin1String(number == 1 ? one : many));
    };
    QStringList lines{counted(result.came, "dive came.", "dives came."),
                      counted(result.stayed, "dive stayed where it is.", "dives stayed where they are.")};
    if (result.details > 0) {
        lines +=
            counted(result.details, "dive here has other details now.", "dives here have other details now.");
    }
    if (result.entries > 0) {
        lines +=
            counted(result.entries, "entry came into the pick lists.", "entries came into the pick lists.");
    }
    if (!result.notTakenBack.isEmpty()) {
        lines += QStringLiteral("This cannot be taken back: %1").arg(result.notTakenBack);
    }
    lines += QStringLiteral("The logbook as it was before is kept as %1.").arg(result.backup);
    return (lines + (result.problems.isEmpty() ? QStringList() : QStringList{QString()} + result.problems))
        .join(u'\n');
}

} // namespace benthor::logbook
