// What merging another logbook, taking that back, and another store in the place of the own one must come to.

#include "platform/query.h"
#include "platform/screen/screen.h"
#include "session/process.h"
#include "tests/walk/model.h"

#include <QAction>
#include <QLabel>
#include <QPushButton>
#include <QTreeView>

namespace benthor::tests {

namespace {

QString counted(qsizetype number, const char* one, const char* many) {
    return QStringLiteral("%1 %2").arg(number).arg(QLatin1String(number == 1 ? one : many));
}

bool isShownAs(const MergePlan& one, const MergePlan& other) {
    return std::equal(
        one.begin(), one.end(), other.begin(), other.end(),
        [](const PlannedDive& first, const PlannedDive& second) { return first.showsAs(second); });
}

QString wordOf(Take take) {
    switch (take) {
    case Take::Mine:
        return QStringLiteral("Mine");
    case Take::Theirs:
        return QStringLiteral("Theirs");
    case Take::Both:
        break;
    }
    return QStringLiteral("Both");
}

QStringList sorted(QStringList texts) {
    texts.sort();
    return texts;
}

QString difference(const QMap<QString, QStringList>& expected, const QMap<QString, QStringList>& found) {
    for (const QString& table : listTables()) {
        if (sorted(expected.value(table)) != sorted(found.value(table))) {
            return QStringLiteral("the list %1 holds \"%2\" instead of \"%3\"")
                .arg(table, found.value(table).join(u'|'), expected.value(table).join(u'|'));
        }
    }
    return {};
}

QString difference(const char* folder, const QMap<QString, QByteArray>& expected,
                   const QMap<QString, QByteArray>& found) {
    return expected == found ? QString()
                             : QStringLiteral("the folder %1 holds %2 instead of %3")
                                   .arg(QLatin1String(folder), QStringList(found.keys()).join(u' '),
                                        QStringList(expected.keys()).join(u' '));
}

/// A list takes no value with a single quote, and none that it has.
void offer(QStringList& list, const QString& value) {
    if (!value.isEmpty() && !value.contains(u'\'') && !list.contains(value, Qt::CaseInsensitive)) {
        list += value;
    }
}

/// Where the dive stands by now; one that was deleted and put back may have another number.
QString find(const QMap<QString, StoredDive>& dives, const QString& diveid, const StoredDive& dive) {
    return dives.value(diveid) == dive && dives.contains(diveid) ? diveid : dives.key(dive);
}

bool isNamed(const Snapshot& own, const QString& table, const QString& value) {
    if (table == QLatin1String("buddy")) {
        return own.buddies.contains(value, Qt::CaseInsensitive);
    }
    return std::any_of(own.dives.begin(), own.dives.end(), [&](const StoredDive& dive) {
        return dive.diver.value(table).compare(value, Qt::CaseInsensitive) == 0;
    });
}

} // namespace

bool Model::hasTyped() const {
    return !details_.screen.isNull() && details_.screen->isLoaded() &&
           (details_.edited != details_.storedEdits || details_.buddies != details_.storedBuddies);
}

void Model::storeTyped(Snapshot& own) const {
    const auto dive = own.dives.find(details_.diveid);
    if (!hasTyped() || dive == own.dives.end()) {
        return;
    }
    for (auto field = details_.edited.begin(); field != details_.edited.end(); ++field) {
        dive->diver.insert(field.key(), *field);
    }
    dive->buddies = details_.buddies;
    for (const char* table : {"department", "site", "weather"}) {
        offer(own.lists[QLatin1String(table)], dive->diver.value(QLatin1String(table)));
    }
    for (const QString& buddy : details_.buddies) {
        offer(own.lists[QStringLiteral("buddy")], buddy);
    }
}

Snapshot Model::ownNow() const {
    QString fault;
    Snapshot own = readSnapshot(world_.folder.root(), fault);
    storeTyped(own);
    return own;
}

void Model::mergeShown(const QString& path) {
    merge_ = {World::screen("mergelogbook"), {}, {}, {}, true};
    const bool isOwn = path == world_.folder.root();
    try {
        QString fault;
        const Snapshot own = readSnapshot(world_.folder.root(), fault);
        merge_.plan = isOwn ? MergePlan() : planOf(own, OtherBooks::read(path));
        merge_.wishes = firstWishes(merge_.plan);
        merge_.path = isOwn ? QString() : path;
    } catch (const platform::StoreError&) {
        merge_.plan.clear(); // it must not be readable for the program either
    }
}

void Model::expectMerge(bool bringsNothing) {
    MergeEnd end;
    end.bringsNothing = bringsNothing;
    end.chosen = World::chosen();
    if (process().importing) {
        expected.merge = end;
        return;
    }
    expected.detailsSaved = expected.detailsSaved || hasTyped();
    end.before = ownNow();
    end.merged.after = end.before;
    try {
        const OtherContents other = OtherBooks::read(merge_.path);
        const MergePlan fresh = planOf(end.before, other);
        if (isShownAs(fresh, merge_.plan)) {
            end.kind = MergeEnd::Kind::Merged;
            end.merged = mergedBy(end.before, other, fresh, merge_.wishes);
            lastMerge_ = {merge_.path, {}, end.merged.after, other};
            for (size_t i = 0; i < fresh.size(); ++i) {
                LastMerge::Chosen chosen{fresh[i].there.diveid, merge_.wishes[i].ticked, {}};
                for (size_t k = 0; k < fresh[i].differences.size(); ++k) {
                    chosen.details[fresh[i].differences[k].field] = merge_.wishes[i].details[k];
                }
                lastMerge_.wishes.push_back(chosen);
            }
            noteMerge(end);
        } else {
            end.kind = MergeEnd::Kind::ShownAgain;
            merge_.plan = fresh;
            merge_.wishes = firstWishes(fresh);
        }
    } catch (const platform::StoreError&) {
        end.kind = MergeEnd::Kind::Unreadable;
    }
    expected.merge = end;
}

void Model::noteMerge(const MergeEnd& end) {
    expected.mergeLeft = true;
    if (!end.merged.changes) {
        return;
    }
    MergeAct act;
    for (auto dive = end.merged.after.dives.begin(); dive != end.merged.after.dives.end(); ++dive) {
        const auto before = end.before.dives.constFind(dive.key());
        if (before == end.before.dives.constEnd()) {
            act.came.insert(dive.key(), *dive);
        } else if (*before != *dive) {
            act.edits.push_back({dive.key(), *before, *dive});
        }
    }
    for (const QString& table : listTables()) {
        act.entries[table] = end.merged.after.lists.value(table).mid(end.before.lists.value(table).size());
    }
    merges_.push_back(act);
    undone_.clear();
}

bool Model::takeBack(Snapshot& own, const MergeAct& act) {
    for (auto came = act.came.begin(); came != act.came.end(); ++came) {
        const QString diveid = find(own.dives, came.key(), *came);
        if (diveid.isEmpty()) {
            return false;
        }
        own.dives.remove(diveid);
        for (const QString& buddy : came->buddies) {
            own.buddies.removeOne(buddy);
        }
    }
    for (const MergeAct::Edit& edit : act.edits) {
        const QString diveid = find(own.dives, edit.diveid, edit.after);
        if (diveid.isEmpty()) {
            return false;
        }
        for (const QString& buddy : edit.after.buddies) {
            own.buddies.removeOne(buddy);
        }
        own.dives[diveid] = edit.before;
        own.buddies += edit.before.buddies;
    }
    for (const QString& table : listTables()) {
        for (const QString& value : act.entries.value(table)) {
            if (!isNamed(own, table, value)) {
                own.lists[table].removeOne(value);
            }
        }
    }
    return true;
}

bool Model::doAgain(Snapshot& own, const MergeAct& act) {
    for (auto came = act.came.begin(); came != act.came.end(); ++came) {
        const bool isThere = std::any_of(own.dives.begin(), own.dives.end(), [&came](const StoredDive& dive) {
            return dive.startcode == came->startcode && dive.dbtxtname == came->dbtxtname &&
                   (!dive.dbtxtname.isEmpty() || dive == *came);
        });
        if (isThere) {
            return false;
        }
        own.dives.insert(own.dives.contains(came.key()) ? nextIdentifier(own.dives) : came.key(), *came);
    }
    for (const MergeAct::Edit& edit : act.edits) {
        const QString diveid = find(own.dives, edit.diveid, edit.before);
        if (diveid.isEmpty()) {
            return false;
        }
        own.dives[diveid] = edit.after;
    }
    for (const QString& table : listTables()) {
        for (const QString& value : act.entries.value(table)) {
            offer(own.lists[table], value);
        }
    }
    return true;
}

void Model::expectTurn(bool undo, const QString& what) {
    expected.turned = true;
    std::vector<MergeAct>& from = undo ? merges_ : undone_;
    if (!what.contains(QLatin1String("merge of")) || process().importing) {
        return;
    }
    if (from.empty()) { // it is one of a store that stood there before
        merges_.clear();
        undone_.clear();
        return;
    }
    MergeTurn turn{undo, hasTyped(), true, ownNow()};
    expected.detailsSaved = turn.stored;
    if (!turn.stored) {
        const MergeAct act = from.back();
        from.pop_back();
        Snapshot after = turn.after;
        turn.fits = undo ? takeBack(after, act) : doAgain(after, act);
        if (turn.fits) {
            turn.after = after;
            (undo ? undone_ : merges_).push_back(act);
        }
    }
    expected.mergeTurn = turn;
}

void Model::expectRestored(const QString& path, bool replacedKept) {
    expected.restored = readStore(OtherBooks::readable(path));
    expected.replacedKept = replacedKept;
    merges_.clear();
    undone_.clear();
}

/// What came the last time, or was here then, cannot come once more.
void Model::noteSameMerge() {
    for (size_t i = 0; i < merge_.plan.size(); ++i) {
        for (const LastMerge::Chosen& chosen : lastMerge_.wishes) {
            const PlannedDive& dive = merge_.plan[i];
            if (chosen.diveid == dive.there.diveid && chosen.ticked && dive.standing == Standing::New) {
                faultBefore_ = QStringLiteral("%1 came, and would come again").arg(chosen.diveid);
            }
        }
    }
    ++met_[QStringLiteral("the same merge again")];
}

QString Model::checkMerge(const Snapshot& now) {
    if (!expected.merge) {
        return {};
    }
    const QString told = world_.dialogs.messages().join(u'\n');
    switch (expected.merge->kind) {
    case MergeEnd::Kind::Merged:
        return checkMerged(*expected.merge, now);
    case MergeEnd::Kind::ShownAgain:
        return told.contains(QLatin1String("have changed"))
                   ? QString()
                   : QStringLiteral("a merge of logbooks that had changed said \"%1\"").arg(told);
    case MergeEnd::Kind::Unreadable:
        return told.startsWith(QLatin1String("Nothing was merged."))
                   ? QString()
                   : QStringLiteral("a merge with a logbook that is gone said \"%1\"").arg(told);
    case MergeEnd::Kind::Refused:
        break;
    }
    return told.contains(QLatin1String("being imported"))
               ? QString()
               : QStringLiteral("a merge beside an import said \"%1\"").arg(told);
}

QString Model::checkMerged(const MergeEnd& end, const Snapshot& now) const {
    const Merged& merged = end.merged;
    const qsizetype stayed = static_cast<qsizetype>(lastMerge_.wishes.size()) - merged.came.size();
    const QString told = world_.dialogs.messages().join(u'\n');
    const QString words = counted(merged.came.size(), "dive came.\n", "dives came.\n") +
                          counted(stayed, "dive stayed where it is.", "dives stayed where they are.");
    QStringList faults{difference(merged.after.lists, now.lists),
                       difference("dbtxt", merged.after.forviewer, now.forviewer),
                       difference("old", merged.after.kept, now.kept)};
    if (!told.startsWith(words)) {
        faults += QStringLiteral("a merge said \"%1\" instead of \"%2\"").arg(told, words);
    }
    for (const QString& name : merged.fileless) {
        if (!told.contains(name + QStringLiteral(" is missing there"))) {
            faults += QStringLiteral("the missing file %1 was not named: %2").arg(name, told);
        }
    }
    if (end.bringsNothing && (!merged.came.isEmpty() || merged.after.dives != end.before.dives)) {
        faults += QStringLiteral("the same merge again brought %1\n").arg(merged.came.join(u' ')) +
                  tests::difference(end.before.dives, merged.after.dives);
    }
    try {
        const StoreContents backup = readStore(world_.folder.path(QStringLiteral("rb-before-merge.mdb")));
        faults += tests::difference(end.before.dives, backup.byId());
    } catch (const platform::StoreError& error) {
        faults += error.text();
    }
    const QAction* undo = World::reach<QAction>("rbmain", "mnuundo");
    const QString act = merged.came.isEmpty()
                            ? QStringLiteral("merge of details")
                            : QStringLiteral("merge of ") + counted(merged.came.size(), "dive", "dives");
    if (process().storepath.isEmpty() && merged.changes && (undo == nullptr || !undo->text().endsWith(act))) {
        faults += QStringLiteral("the menu does not offer to take the %1 back").arg(act);
    }
    if (process().storepath.isEmpty() && !merged.came.isEmpty() &&
        World::chosen() != QStringList{merged.came.first()}) {
        faults += QStringLiteral("the list has %1 chosen").arg(World::chosen().join(u' '));
    }
    if (!process().storepath.isEmpty() && !end.chosen.isEmpty() && World::chosen() != end.chosen) {
        faults += QStringLiteral("in the other store that is shown, %1 was chosen instead of %2")
                      .arg(World::chosen().join(u' '), end.chosen.join(u' '));
    }
    faults.removeAll(QString());
    return faults.join(u'\n');
}

QString Model::checkTurn(const Snapshot& now) {
    if (!expected.mergeTurn) {
        return {};
    }
    const MergeTurn& turn = *expected.mergeTurn;
    const QString told = world_.dialogs.messages().join(u'\n');
    const bool passedOver = told.contains(QLatin1String("does not fit"));
    if (passedOver == turn.fits || turn.stored != told.contains(QLatin1String("was stored first"))) {
        return QStringLiteral("taking a merge back or doing it again said \"%1\"").arg(told);
    }
    QStringList faults{tests::difference(turn.after.dives, now.dives),
                       difference(turn.after.lists, now.lists),
                       difference("dbtxt", turn.after.forviewer, now.forviewer),
                       difference("old", turn.after.kept, now.kept)};
    faults.removeAll(QString());
    return faults.join(u'\n');
}

/// The screen shows what it showed before, until a logbook is chosen or compared anew.
QString Model::checkMergeScreen() {
    const platform::Screen* screen = World::screen("mergelogbook");
    if (screen == nullptr || expected.mergeLeft) {
        const bool byItself = merge_.stands && !expected.mergeLeft;
        merge_ = {};
        return screen != nullptr ? QStringLiteral("the merge screen stays")
               : byItself        ? QStringLiteral("the merge screen went by itself")
                                 : QString();
    }
    if (merge_.screen != screen) {
        merge_ = {World::screen("mergelogbook"), {}, {}, {}, true};
    }
    const auto* tree = screen->findChild<QTreeView*>(QStringLiteral("treemerge"));
    const auto* button = screen->findChild<QPushButton*>(QStringLiteral("cmdmerge"));
    int wanted = 0;
    for (size_t i = 0; i < merge_.plan.size(); ++i) {
        const Wish& wish = merge_.wishes[i];
        const bool takes = merge_.plan[i].standing == Standing::New ||
                           std::any_of(wish.details.begin(), wish.details.end(),
                                       [](Take take) { return take != Take::Mine; });
        wanted += wish.ticked && takes ? 1 : 0;
    }
    if (button->isEnabled() != (wanted > 0)) {
        return QStringLiteral("%1 dives are chosen, and the button says \"%2\"")
            .arg(wanted)
            .arg(button->text());
    }
    if (merge_.plan.empty() != (tree->model()->rowCount() == 0)) {
        return QStringLiteral("the merge screen shows %1 groups of %2 dives")
            .arg(tree->model()->rowCount())
            .arg(merge_.plan.size());
    }
    return merge_.plan.empty() ? QString() : checkPlan(*tree->model());
}

QString Model::checkPlan(const QAbstractItemModel& shown) const {
    std::array<int, 3> rows{};
    for (size_t i = 0; i < merge_.plan.size(); ++i) {
        const PlannedDive& dive = merge_.plan[i];
        const Wish& wish = merge_.wishes[i];
        const int group = static_cast<int>(dive.standing);
        const QModelIndex line = shown.index(rows.at(static_cast<size_t>(group))++, 0, shown.index(group, 0));
        const QString name = dive.mine.isEmpty()
                                 ? dive.there.diveid
                                 : QStringLiteral("%1, here %2").arg(dive.there.diveid, dive.mine);
        const bool ticked = line.data(Qt::CheckStateRole).toInt() == Qt::Checked;
        QStringList wanted{name, dive.there.dive.diver.value(QStringLiteral("Location")).trimmed(),
                           dive.there.dive.duration(), QString::number(wish.ticked ? 1 : 0)};
        QStringList found{line.data().toString(), line.siblingAtColumn(1).data().toString(),
                          line.siblingAtColumn(3).data().toString(), QString::number(ticked ? 1 : 0)};
        for (size_t k = 0; k < dive.differences.size(); ++k) {
            const QModelIndex part = shown.index(static_cast<int>(k), 0, line);
            wanted += {captionOf(dive.differences[k].field), wordOf(wish.details[k]),
                       QStringLiteral("Mine:\n%1\n\nTheirs:\n%2")
                           .arg(dive.differences[k].mine, dive.differences[k].theirs)};
            found += {part.data().toString(), part.siblingAtColumn(2).data().toString(),
                      part.data(Qt::ToolTipRole).toString().remove(u'\r')};
        }
        if (wanted != found || shown.rowCount(line) != static_cast<int>(dive.differences.size())) {
            return QStringLiteral("the merge screen shows \"%1\" where \"%2\" must stand")
                .arg(found.join(u'|'), wanted.join(u'|'));
        }
    }
    for (int group = 0; group < 3; ++group) {
        if (shown.rowCount(shown.index(group, 0)) != rows.at(static_cast<size_t>(group))) {
            return QStringLiteral("group %1 of the merge screen shows %2 dives")
                .arg(shown.index(group, 0).data().toString())
                .arg(shown.rowCount(shown.index(group, 0)));
        }
    }
    return {};
}

QString Model::checkRestored() const {
    if (!expected.restored || !expected.replacedKept) {
        return {};
    }
    QMap<QString, StoredDive> before = last_.dives;
    takeDetails(before);
    const QStringList kept = QDir(world_.folder.root()).entryList({QStringLiteral("rb-replaced*.mdb")});
    for (const QString& name : kept) {
        if (readStore(world_.folder.path(name)).byId() == before) {
            return {};
        }
    }
    return QStringLiteral("the store of before is in none of ") + kept.join(u' ');
}

void Model::countMerge() {
    const auto note = [this](bool happened, const char* what) {
        met_[QString::fromLatin1(what)] += happened ? 1 : 0;
    };
    if (expected.merge) {
        const Merged& merged = expected.merge->merged;
        const bool isMerged = expected.merge->kind == MergeEnd::Kind::Merged;
        met_[QStringLiteral("dives brought")] += static_cast<int>(merged.came.size());
        met_[QStringLiteral("details of another logbook")] += merged.details;
        note(isMerged && expected.merge->bringsNothing, "the same details again");
        note(isMerged && expected.detailsSaved, "details stored before a merge");
        note(isMerged && !merged.fileless.isEmpty(), "dives without their files");
        note(expected.merge->kind == MergeEnd::Kind::ShownAgain, "logbooks compared anew");
        note(expected.merge->kind == MergeEnd::Kind::Unreadable, "another logbook gone");
        note(expected.merge->kind == MergeEnd::Kind::Refused, "no merge beside an import");
        note(isMerged && world_.others.jetFiles().contains(lastMerge_.path), "a Jet file merged");
    }
    if (expected.mergeTurn) {
        note(expected.mergeTurn->undo && expected.mergeTurn->fits && !expected.mergeTurn->stored,
             "merge taken back");
        note(!expected.mergeTurn->undo && expected.mergeTurn->fits && !expected.mergeTurn->stored,
             "merge done again");
        note(!expected.mergeTurn->fits, "merge that does not fit");
    }
    note(expected.restored.has_value(), "another store in the place");
    note(!process().storecopy.isEmpty(), "a Jet file shown");
}

} // namespace benthor::tests
