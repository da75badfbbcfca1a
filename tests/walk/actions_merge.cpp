#include "tests/walk/actions_merge.h"

#include "platform/screen/screen.h"
#include "session/process.h"

#include <QSet>
#include <QTreeView>
#include <QtTest>

namespace benthor::tests {

namespace {

// --- what happens to another logbook

/// A dive that is, or was, the own logbook's, one that began with it, or one of which nothing is known here.
const MadeDive& anyDive(World& world, const Model& model, quint32 number) {
    const QStringList keys = [&] {
        QStringList all;
        for (const StoredDive& dive : model.last().dives) {
            all += dive.key();
        }
        return all;
    }();
    const MadeDive* known =
        keys.isEmpty() ? nullptr : world.made(keys[static_cast<qsizetype>(number / 8) % keys.size()]);
    if (known == nullptr || number % 8 < 3) {
        return world.makeDive(number % 32 == 0   ? MadeKind::NoGas
                              : number % 32 == 1 ? MadeKind::Unreadable
                                                 : MadeKind::Good);
    }
    return number % 8 == 3 ? world.makeTwin(*known) : *known;
}

void fill(World& world, const Model& model, quint32 number, quint32 seed) {
    for (quint32 dive = 0; dive < 2 + seed % 4; ++dive) {
        const quint32 form = seed / (dive + 1) + dive * 7919;
        world.others.putDive(number, anyDive(world, model, form), form / 3);
    }
}

/// The folder on the merge screen, or else `number`.
quint32 inHand(const World& world, Model& model, quint32 number) {
    for (quint32 one = 0; one < OtherBooks::kFolders; ++one) {
        number = model.mergeScreen().path.startsWith(world.others.folder(one)) ? one : number;
    }
    return number % OtherBooks::kFolders;
}

/// What is shown of a store that is changed meanwhile is no matter of this walk.
bool isOpened(const World& world, quint32 number) {
    return process().storepath.startsWith(world.others.folder(number));
}

void itIsTakenAway(World& world, Model& model, const Step& step) {
    const quint32 number = inHand(world, model, step.b);
    if (!isOpened(world, number)) {
        world.others.removeFolder(number);
    }
}

void anotherLogbookChanges(World& world, Model& model, const Step& step) {
    OtherBooks& others = world.others;
    const quint32 form = step.b / OtherBooks::kFolders;
    const quint32 number = form % 4 == 0 ? step.b : inHand(world, model, step.b);
    if (isOpened(world, number) || !others.isThere(number)) {
        return others.isThere(number) ? void() : fill(world, model, number, form);
    }
    switch (step.a % 12) {
    case 1:
        return others.removeDive(number, form);
    case 2:
        return others.repeatDive(number, form);
    case 3:
        return others.changeFile(number, form);
    case 4:
        return others.removeFile(number, form);
    case 5:
        return others.addEntry(number, form);
    case 6:
        return others.replaceStore(number, form);
    case 7:
    case 8:
        return others.changeDetails(number, form, step.a / 12);
    default:
        return others.putDive(number, anyDive(world, model, form), step.a / 12);
    }
}

// --- the merge screen

/// As a user gets there: from the main screen or from the dive list.
bool openMerge(World& world, bool fromMain = false) {
    if (!World::isShown("mergelogbook") && fromMain && World::isShown("main")) {
        World::trigger("main", "mnubringdives");
    }
    if (!World::isShown("mergelogbook")) {
        if (!World::isShown("rbmain")) {
            World::click("main", "lblodl(0)");
            world.settle();
        }
        if (World::click("rbmain", "cmdownlogbook")) { // another store was shown
            world.settle();
        }
        World::trigger("rbmain", "mnumerge");
    }
    return World::isShown("mergelogbook");
}

void choose(World& world, Model& model, const QString& path) {
    world.dialogs.answerFile(path);
    if (World::click("mergelogbook", QFileInfo(path).isDir() || !path.endsWith(QLatin1String(".mdb"))
                                         ? "cmdotherfolder"
                                         : "cmdotherstore")) {
        model.mergeShown(path);
    }
}

QString anyLogbook(World& world, const Model& model, quint32 number) {
    const quint32 which = number % 16;
    const QStringList& jet = world.others.jetFiles();
    if (which == 0) {
        return world.folder.root(); // which is no other logbook
    }
    if (which < 4 && !jet.isEmpty()) {
        return jet[static_cast<qsizetype>(which) % jet.size()];
    }
    if (!world.others.isThere(which) && which != 5) {
        fill(world, model, which, number / 16);
    }
    const QString folder = world.others.folder(which);
    return which < 8 ? folder + QStringLiteral("/rb.mdb") : folder;
}

QAbstractItemModel* shownDives() {
    const auto* tree = World::reach<QTreeView>("mergelogbook", "treemerge");
    return tree == nullptr ? nullptr : tree->model();
}

/// The line of a dive of the plan, which stands in its group in the order of the plan.
QModelIndex lineOf(const QAbstractItemModel& shown, const MergePlan& plan, size_t dive) {
    const auto end = plan.begin() + static_cast<std::ptrdiff_t>(dive);
    const auto before = std::count_if(
        plan.begin(), end, [&](const PlannedDive& other) { return other.standing == plan[dive].standing; });
    return shown.index(static_cast<int>(before), 0, shown.index(static_cast<int>(plan[dive].standing), 0));
}

void tick(QAbstractItemModel& shown, Model::MergeShown& screen, size_t dive, bool ticked) {
    const QModelIndex line = lineOf(shown, screen.plan, dive);
    if (screen.plan[dive].standing != Standing::Here &&
        shown.setData(line, ticked ? Qt::Checked : Qt::Unchecked, Qt::CheckStateRole)) {
        screen.wishes[dive].ticked = ticked;
    }
}

void takeDetail(QAbstractItemModel& shown, Model::MergeShown& screen, size_t dive, size_t difference,
                quint32 number) {
    static const std::array<QString, 3> words{QStringLiteral("Mine"), QStringLiteral("Theirs"),
                                              QStringLiteral("Both")};
    const quint32 offered = joins(screen.plan[dive].differences[difference].field) ? 3 : 2;
    const QModelIndex line = lineOf(shown, screen.plan, dive);
    const QModelIndex part = shown.index(static_cast<int>(difference), 2, line);
    if (shown.setData(part, words[number % offered], Qt::EditRole)) {
        screen.wishes[dive].details[difference] = static_cast<Take>(number % offered);
        screen.wishes[dive].ticked = true;
    }
}

void chooseAtRandom(Model& model, quint32 bits, quint32 numbers) {
    Model::MergeShown& screen = model.mergeScreen();
    QAbstractItemModel* shown = shownDives();
    for (size_t dive = 0; shown != nullptr && dive < screen.plan.size(); ++dive) {
        const quint32 turn = bits >> (dive % 16) ^ numbers >> (dive % 13);
        const bool isNew = screen.plan[dive].standing == Standing::New;
        if (isNew && turn % 4 == 0) {
            tick(*shown, screen, dive, false);
        }
        for (size_t k = 0; k < screen.plan[dive].differences.size() && turn % 4 < 3; ++k) {
            takeDetail(*shown, screen, dive, k, turn / 4 + static_cast<quint32>(k) * 5);
        }
        if (!isNew && turn % 16 == 1) {
            tick(*shown, screen, dive, false);
        }
    }
}

void press(Model& model, bool bringsNothing) {
    auto* button = World::reach<QWidget>("mergelogbook", "cmdmerge");
    if (button != nullptr && !model.mergeScreen().path.isEmpty()) {
        model.expectMerge(bringsNothing);
        QTest::mouseClick(button, Qt::LeftButton);
    }
}

void theMergeIsOpened(World& world, Model&, const Step& step) {
    openMerge(world, step.a % 2 != 0);
}

void aLogbookIsChosen(World& world, Model& model, const Step& step) {
    if (World::isShown("mergelogbook")) {
        choose(world, model, anyLogbook(world, model, step.a));
    }
}

void divesOfItAreTicked(World&, Model& model, const Step& step) {
    chooseAtRandom(model, step.a, step.b);
}

void theMergeIsLeft(World& world, Model& model, const Step& step) {
    if (!World::isShown("mergelogbook")) {
        return;
    }
    model.expected.mergeLeft = true;
    switch (step.a % 3) {
    case 0:
        World::click("mergelogbook", "cmdclosemerge");
        return;
    case 1:
        World::screen("mergelogbook")->close();
        return;
    default:
        World::screen("mergelogbook")->activateWindow();
        world.settle();
        QTest::keyClick(World::screen("mergelogbook"), Qt::Key_Escape);
    }
}

void aLogbookIsMerged(World& world, Model& model, const Step& step) {
    if (openMerge(world, step.b % 8 < 2)) {
        choose(world, model, anyLogbook(world, model, step.a));
        chooseAtRandom(model, step.b, step.a / 16);
        if (step.b % 2 != 0) { // else something may come between
            whatIsTickedComes(world, model, step);
        }
    }
}

/// Nothing has changed since, so nothing may come of it. Two dives over there that are one here take turns.
bool isAsBehindTheLastMerge(const Model& model, const MergePlan& plan) {
    const Model::LastMerge& last = model.lastMerge();
    const OtherContents other = OtherBooks::read(last.path);
    QSet<QString> mine;
    for (const PlannedDive& dive : plan) {
        if (!dive.mine.isEmpty() && mine.contains(dive.mine)) {
            return false;
        }
        mine += dive.mine;
    }
    return last.after.dives == model.last().dives && last.after.forviewer == model.last().forviewer &&
           other.forviewer == last.other.forviewer &&
           std::equal(other.dives.begin(), other.dives.end(), last.other.dives.begin(),
                      last.other.dives.end(), [](const StoredRow& one, const StoredRow& another) {
                          return one.diveid == another.diveid && one.dive == another.dive;
                      });
}

/// As it was chosen the last time.
void chooseAgain(QAbstractItemModel& shown, Model::MergeShown& screen, size_t dive,
                 const Model::LastMerge::Chosen& chosen) {
    for (size_t k = 0; k < screen.plan[dive].differences.size(); ++k) {
        const Take take = chosen.details.value(screen.plan[dive].differences[k].field, Take::Mine);
        takeDetail(shown, screen, dive, k, static_cast<quint32>(take));
    }
    tick(shown, screen, dive, chosen.ticked);
}

void theSameMergeComesAgain(World& world, Model& model, const Step& step) {
    if (openMerge(world)) {
        choose(world, model, anyLogbook(world, model, step.a));
        chooseAtRandom(model, step.b, step.a / 16);
        press(model, false);
        world.settle();
        model.beginSecondPart();
    }
    const QString path = model.lastMerge().path;
    if (path.isEmpty() || !QFileInfo::exists(path) || !openMerge(world)) {
        return;
    }
    choose(world, model, path);
    Model::MergeShown& screen = model.mergeScreen();
    QAbstractItemModel* shown = shownDives();
    for (size_t dive = 0; shown != nullptr && dive < screen.plan.size(); ++dive) {
        for (const Model::LastMerge::Chosen& chosen : model.lastMerge().wishes) {
            if (chosen.diveid == screen.plan[dive].there.diveid) {
                chooseAgain(*shown, screen, dive, chosen);
            }
        }
    }
    const bool again = isAsBehindTheLastMerge(model, screen.plan);
    if (again) {
        model.noteSameMerge();
    }
    press(model, again);
}

/// The screen stays open while the user does something else, and then he goes on there.
void aMergeMeetsAnotherAction(World& world, Model& model, const Step& step) {
    static const std::array<std::string_view, 14> kBetween{"the chosen dives are deleted",
                                                           "a dive is put back",
                                                           "what was done is taken back",
                                                           "it is done again",
                                                           "details are typed",
                                                           "details are saved",
                                                           "Database Update",
                                                           "another logbook changes",
                                                           "another logbook changes",
                                                           "another logbook changes",
                                                           "it is taken away",
                                                           "another store is opened",
                                                           "a dive is double-clicked",
                                                           "feet on main"};
    if (!openMerge(world)) {
        return;
    }
    choose(world, model, anyLogbook(world, model, step.a));
    chooseAtRandom(model, step.b, step.a / 16);
    world.settle();
    model.beginSecondPart();
    const std::string_view between = kBetween[step.b / 16 % kBetween.size()];
    const auto found = std::find_if(actions().begin(), actions().end(),
                                    [&](const Action& action) { return action.name == between; });
    found->act(world, model, {0, step.a / 32, step.b / 256});
    world.settle();
    model.beginSecondPart();
    press(model, false);
}

// --- other stores

void aJetFileIsOpened(World& world, Model&, const Step& step) {
    const QStringList& jet = world.others.jetFiles();
    if (!jet.isEmpty()) {
        world.dialogs.answerFile(jet[static_cast<qsizetype>(step.a) % jet.size()]);
        World::trigger("main", "mnuOpen");
    }
}

void anotherLogbookIsOpened(World& world, Model&, const Step& step) {
    if (world.others.isThere(step.a)) {
        world.dialogs.answerFile(world.others.folder(step.a) + QStringLiteral("/rb.mdb"));
        World::trigger("main", "mnuOpen");
    }
}

/// A copy of a while ago, or an older store. One of another folder would name files that are other dives'
/// here.
QString anyStore(const World& world, quint32 number) {
    const QStringList& jet = world.others.jetFiles();
    const QString copy = world.folder.path(QStringLiteral("elsewhere.mdb"));
    if ((number % 3 != 0 || jet.isEmpty()) && QFile::exists(copy)) {
        return copy;
    }
    return jet.isEmpty() ? QString() : jet[static_cast<qsizetype>(number / 4) % jet.size()];
}

void theStoreIsRestored(World& world, Model& model, const Step& step) {
    const QString chosen = anyStore(world, step.a);
    if (!chosen.isEmpty() && step.b % 2 == 0) { // much of what the walk has made ends here
        model.expected.viewer = QString();
        model.expected.mergeLeft = true;
        world.leave();
        model.expectRestored(chosen, true);
        world.start(chosen, World::meanwhile(step.b / 2));
    }
}

/// The user puts it there by himself, while the program does not run.
void aJetFileComesAlong(World& world, Model& model, const Step& step) {
    const QStringList& jet = world.others.jetFiles();
    if (!jet.isEmpty() && step.b % 3 == 0) {
        const QString& chosen = jet[static_cast<qsizetype>(step.a) % jet.size()];
        model.expected.viewer = QString();
        model.expected.mergeLeft = true;
        world.leave();
        model.expectRestored(chosen, false);
        world.folder.put(QStringLiteral("rb.mdb"), platform::readFile(chosen).value_or(""));
        world.start(QString(), World::meanwhile(step.b / 3));
    }
}

} // namespace

void whatIsTickedComes(World&, Model& model, const Step&) {
    press(model, false);
}

std::vector<Action> mergeActions() {
    return {
        {"another logbook changes", 8, anotherLogbookChanges},
        {"it is taken away", 1, itIsTakenAway},
        {"the merge is opened", 1, theMergeIsOpened},
        {"a logbook is chosen for the merge", 4, aLogbookIsChosen},
        {"dives of it are ticked", 3, divesOfItAreTicked},
        {"what is ticked comes", 10, whatIsTickedComes},
        {"the merge is left", 1, theMergeIsLeft},
        {"a logbook is merged", 8, aLogbookIsMerged},
        {"the same merge comes again", 3, theSameMergeComesAgain},
        {"a merge meets another action", 5, aMergeMeetsAnotherAction},
        {"a Jet file is opened", 1, aJetFileIsOpened},
        {"another logbook is opened", 1, anotherLogbookIsOpened},
        {"the store is restored", 1, theStoreIsRestored},
        {"a Jet file comes along", 1, aJetFileComesAlong},
    };
}

} // namespace benthor::tests
