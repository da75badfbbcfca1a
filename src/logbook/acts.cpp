#include "logbook/acts.h"

#include "logbook/actfile.h"
#include "logbook/actturn.h"
#include "logbook/divelist.h"
#include "platform/clock.h"
#include "platform/skiperrors.h"
#include "store/identifiers.h"

#include <algorithm>

namespace benthor::logbook {

namespace {

using platform::Database;
using platform::ProgramFolder;
using platform::StoreError;
using platform::Transaction;

QString divesText(const char* act, int dives) {
    return QStringLiteral("%1 of %2 %3")
        .arg(QLatin1String(act))
        .arg(dives)
        .arg(dives == 1 ? QLatin1String("dive") : QLatin1String("dives"));
}

QString whatOf(const Act& act) {
    switch (act.kind) {
    case ActKind::Delete:
        return divesText("delete", act.dives);
    case ActKind::Merge:
        return act.dives == 0 ? QStringLiteral("merge of details") : divesText("merge", act.dives);
    case ActKind::Details:
        break;
    }
    return QStringLiteral("details of %1").arg(act.label);
}

/// The last one that is done, and the first one that is not.
const Act* nextOf(const std::vector<Act>& acts, bool undo) {
    if (undo) {
        const auto last = std::find_if(acts.rbegin(), acts.rend(), [](const Act& act) { return act.done; });
        return last == acts.rend() ? nullptr : &*last;
    }
    const auto first = std::find_if(acts.begin(), acts.end(), [](const Act& act) { return !act.done; });
    return first == acts.end() ? nullptr : &*first;
}

/// A file of that name which waits in `new` goes with its dive once its bytes stand in `old`.
void takeFiles(const ProgramFolder& folder, const QStringList& names) {
    for (const QString& name : names) {
        takewaitingfile(folder, name);
    }
}

void passOver(Database& database, ActFile& file, qint64 act) {
    Transaction transaction(database);
    file.drop(act);
    transaction.commit();
}

TurnedAct turnfitting(Database& database, const ProgramFolder& folder, qint64 id, bool undo) {
    TurnedAct told;
    const std::unique_ptr<ActFile> file = ActFile::ifThere(database);
    const std::vector<Act> acts = file ? file->acts() : std::vector<Act>();
    const Act* const act = nextOf(acts, undo);
    if (act == nullptr || act->id != id) {
        return told;
    }
    told.what = whatOf(*act);
    QStringList files;
    try {
        Transaction transaction(database);
        ActTurn turn(database, folder, *file, told);
        turn.turn(*act, undo);
        files = turn.filesToTake();
        told.back.sort();
        transaction.commit();
        told.state = TurnedAct::State::Done;
    } catch (const DoesNotFit& misfit) {
        passOver(database, *file, id);
        return {TurnedAct::State::DoesNotFit, told.what, misfit.reason(), {}, {}, {}, {}};
    }
    takeFiles(folder, files);
    platform::skipErrors([&] { bringOwedFiles(database, folder, *file, told); });
    return told;
}

TurnedAct turnact(Database& database, const ProgramFolder& folder, qint64 id, bool undo) {
    const platform::StoreStamp before = database.stamp();
    TurnedAct told = turnfitting(database, folder, id, undo);
    told.span = {before, database.stamp()};
    return told;
}

} // namespace

ActsInHand actsinhand(Database& database) {
    ActsInHand inHand;
    try {
        const std::unique_ptr<ActFile> file = ActFile::ifThere(database);
        const std::vector<Act> acts = file ? file->acts() : std::vector<Act>();
        if (const Act* const act = nextOf(acts, true)) {
            inHand.undo = {act->id, whatOf(*act)};
        }
        if (const Act* const act = nextOf(acts, false)) {
            inHand.redo = {act->id, whatOf(*act)};
        }
    } catch (const StoreError& error) {
        inHand.fault = error.text();
    }
    return inHand;
}

TurnedAct undoact(Database& database, const ProgramFolder& folder, qint64 act) {
    return turnact(database, folder, act, true);
}

TurnedAct redoact(Database& database, const ProgramFolder& folder, qint64 act) {
    return turnact(database, folder, act, false);
}

QString turnedText(const TurnedAct& turned) {
    QStringList lines;
    if (turned.state == TurnedAct::State::DoesNotFit) {
        lines +=
            QStringLiteral("The logbook is another one by now: the %1 does not fit it any more. Nothing was "
                           "changed, and it is passed over.")
                .arg(turned.what);
    }
    if (!turned.reason.isEmpty()) {
        lines += turned.reason;
    }
    for (const TurnedAct::Renamed& dive : turned.renamed) {
        lines += QStringLiteral("The number %1 is another dive's by now: the dive came back as %2.")
                     .arg(dive.from, dive.to);
    }
    if (!turned.fileFault.isEmpty()) {
        lines +=
            QStringLiteral("A file could not be put into the folder \"new\"; it is tried again at the next "
                           "start. ") +
            turned.fileFault;
    }
    return lines.join(QLatin1String("\n\n"));
}

std::vector<TrashedDive> trasheddives(Database& database) {
    std::vector<TrashedDive> dives;
    if (const std::unique_ptr<ActFile> file = ActFile::ifThere(database)) {
        for (const ActItem& item : file->trashed()) {
            dives.push_back({item.id, item.diveid, item.name, item.started, item.gone});
        }
    }
    return dives;
}

QStringList awayfiles(Database& database) {
    const std::unique_ptr<ActFile> file = ActFile::ifThere(database);
    return file ? file->awayNames() : QStringList();
}

TurnedAct putback(Database& database, const ProgramFolder& folder, const std::vector<qint64>& dives) {
    TurnedAct told;
    told.span.before = database.stamp();
    const std::unique_ptr<ActFile> file = ActFile::ifThere(database);
    QStringList reasons;
    for (const qint64 id : file ? dives : std::vector<qint64>()) {
        ActItem item = file->item(id);
        if (item.id == 0 || item.here) {
            continue;
        }
        TurnedAct one;
        try {
            Transaction transaction(database);
            ActTurn(database, folder, *file, one).bring(item);
            store::syncserialno(database);
            item.act = 0;
            file->saveItem(item);
            file->removeItems(item.owed ? std::vector<qint64>() : std::vector{id});
            transaction.commit();
        } catch (const DoesNotFit& misfit) {
            reasons += misfit.reason();
            continue;
        }
        told.state = TurnedAct::State::Done;
        told.back += one.back;
        told.changed += one.changed;
        told.renamed.insert(told.renamed.end(), one.renamed.begin(), one.renamed.end());
    }
    told.back.sort();
    told.reason = reasons.join(QLatin1Char('\n'));
    if (file) {
        platform::skipErrors([&] { bringOwedFiles(database, folder, *file, told); });
    }
    told.span.after = database.stamp();
    return told;
}

void deleteforgood(Database& database, const std::vector<qint64>& dives) {
    if (const std::unique_ptr<ActFile> file = ActFile::ifThere(database)) {
        Transaction transaction(database);
        file->removeItems(dives);
        transaction.commit();
    }
}

void tidyacts(Database& database, const ProgramFolder& folder) {
    platform::skipErrors([&] {
        const std::unique_ptr<ActFile> file = ActFile::ifThere(database);
        if (!file) {
            return;
        }
        TurnedAct told;
        bringOwedFiles(database, folder, *file, told);
        const QString limit = momentText(platform::now().addDays(-kDaysInTrash));
        const std::vector<ActItem> trashed = file->trashed();
        if (std::any_of(trashed.begin(), trashed.end(),
                        [&](const ActItem& item) { return item.gone < limit; })) {
            Transaction transaction(database);
            file->removeTrashBefore(limit);
            transaction.commit();
        }
    });
}

} // namespace benthor::logbook
