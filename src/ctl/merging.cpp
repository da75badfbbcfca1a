#include "ctl/commands.h"
#include "ctl/interruption.h"
#include "ctl/logbook.h"
#include "ctl/table.h"
#include "logbook/merge.h"
#include "platform/filename.h"
#include "session/process.h"

#include <QJsonArray>

namespace benthor::ctl {

using logbook::MergeDive;
using logbook::MergeGroup;

namespace {

struct Merged {
    int came = 0;
    int stayed = 0;
    QStringList problems;
    QString words; ///< the whole of it, for a person
};

std::unique_ptr<logbook::OtherLogbook> openOther(const QString& path, const platform::ProgramFolder& folder) {
    Progress progress(QStringLiteral("Rows of the older store"));
    return std::make_unique<logbook::OtherLogbook>(
        path, storeOf(folder), [&](std::uint64_t rows, std::uint64_t of) {
            progress.show(static_cast<qint64>(rows), static_cast<qint64>(of));
            return !isInterrupted();
        });
}

std::vector<MergeDive> planOf(platform::Database& mine, const platform::ProgramFolder& folder,
                              logbook::OtherLogbook& other) {
    Progress progress(QStringLiteral("Dives compared"));
    std::vector<MergeDive> dives = logbook::planmerge(mine, folder, other, [&](int done, int of) {
        progress.show(done, of);
        return !isInterrupted();
    });
    goOnUnlessInterrupted();
    return dives;
}

/// What a merge would say of a dive that comes.
QStringList foreseen(const std::vector<MergeDive>& dives, const logbook::OtherLogbook& other) {
    QStringList problems;
    for (const MergeDive& dive : dives) {
        const QString& file = dive.file;
        if (dive.group != MergeGroup::New ||
            (platform::isFileName(file) && platform::isFile(other.folder().path(u"dbtxt", file)))) {
            continue;
        }
        problems +=
            QStringLiteral("%1 (%2): %3")
                .arg(dive.diveid, dive.name,
                     file.isEmpty() ? QStringLiteral("names no file; it would come without a profile.")
                                    : QStringLiteral("its file %1 is missing there; it would come without a "
                                                     "profile.")
                                          .arg(file));
    }
    return problems;
}

Merged rehearse(const Arguments& arguments) {
    ReadLogbook mine(requireFolder(arguments.folder));
    const auto other = openOther(arguments.path, mine.folder());
    const std::vector<MergeDive> dives = planOf(mine.database(), mine.folder(), *other);
    Merged merged;
    merged.came = logbook::countgroup(dives, MergeGroup::New);
    merged.stayed = static_cast<int>(dives.size()) - merged.came;
    merged.problems = foreseen(dives, *other);
    merged.words = QStringList(QStringList{QStringLiteral("Would come: %1").arg(merged.came),
                                           QStringLiteral("Would stay: %1").arg(merged.stayed)} +
                               merged.problems)
                       .join(QLatin1Char('\n'));
    return merged;
}

Merged merge(const Arguments& arguments) {
    const WriteLogbook mine(requireFolder(arguments.folder));
    const auto other = openOther(arguments.path, mine.folder());
    platform::Database& store = process().database;
    const std::vector<MergeDive> dives = planOf(store, mine.folder(), *other);
    Merged merged;
    if (logbook::countgroup(dives, MergeGroup::New) == 0) {
        merged.stayed = static_cast<int>(dives.size());
        merged.words = QStringLiteral("No dive is new here; nothing was changed.");
        return merged;
    }
    Progress progress(QStringLiteral("Dives merged, in halves"));
    const logbook::MergeResult result = logbook::mergedives(
        store, mine.folder(), *other, dives, logbook::plainchoices(dives), [&](int done, int of) {
            progress.show(done, of);
            return !isInterrupted();
        });
    merged.came = result.came;
    merged.stayed = result.stayed;
    merged.problems = result.problems;
    merged.words = logbook::mergeText(result);
    return merged;
}

} // namespace

Status runMerge(const Arguments& arguments, Output& output) {
    const Merged merged = arguments.dryRun ? rehearse(arguments) : merge(arguments);
    if (arguments.json) {
        output.json({{QStringLiteral("came"), merged.came},
                     {QStringLiteral("stayed"), merged.stayed},
                     {QStringLiteral("problems"), QJsonArray::fromStringList(merged.problems)}});
        return kDone;
    }
    for (const QString& line : merged.words.split(QLatin1Char('\n'))) {
        output.line(shownText(line));
    }
    return kDone;
}

} // namespace benthor::ctl
