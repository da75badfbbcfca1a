#include "tests/walk/actions.h"

#include "tests/walk/actions_merge.h"

#include "platform/faultpoint.h"
#include "platform/grid/flexgrid.h"
#include "platform/screen/screen.h"
#include "session/process.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTreeWidget>
#include <QtTest>

namespace benthor::tests {

namespace {

// --- files

QString fileName(quint32 number) {
    static const QStringList names{QStringLiteral("A1.txt"), QStringLiteral("A2.txt"),
                                   QStringLiteral("A3.txt"), QStringLiteral("MyLatestDives1.txt"),
                                   QStringLiteral("A series of dives on the outer reef.txt")};
    return names[static_cast<qsizetype>(number) % names.size()];
}

void aFileComes(World& world, Model&, const Step& step) {
    const QString name = QStringLiteral("new/") + fileName(step.a);
    if (!world.folder.has(name)) {
        constexpr std::array<MadeKind, 3> kFaulty{MadeKind::NoGas, MadeKind::Unreadable, MadeKind::Nameless};
        const MadeKind kind = step.b % 16 < kFaulty.size() ? kFaulty[step.b % 16] : MadeKind::Good;
        world.folder.put(name, world.makeDive(kind).text);
    }
}

// --- the main screen

void timePasses(World& world, Model& model, const Step& step) {
    if (World::isShown("PC_Link_1")) {
        model.expected.arrived = {QStringLiteral("MyLatestDives1.txt"), QStringLiteral("MyLatestDives2.txt"),
                                  QStringLiteral("MyLatestDives3.txt")};
    }
    for (quint32 beat = 0; beat <= step.a % 8; ++beat) {
        world.pass();
    }
}

void myDives(World&, Model&, const Step&) {
    World::click("main", "lblodl(0)");
}

void databaseUpdate(World&, Model&, const Step&) {
    World::click("main", "lblmdu(1)");
}

void theFileInTheWayIsMovedAside(World&, Model&, const Step&) {
    World::click("main", "cmdmovetocorrupt");
}

void aFileIsFoundByHand(World& world, Model& model, const Step& step) {
    const QStringList kept = model.last().kept.keys();
    if (!kept.isEmpty() && World::isShown("main")) {
        const QString& name = kept[static_cast<qsizetype>(step.a) % kept.size()];
        model.expected.arrived = {name};
        world.dialogs.answerFile(world.folder.path(QStringLiteral("old/") + name));
        World::click("main", "lblmdff");
    }
}

void metresOnMain(World&, Model&, const Step&) {
    World::trigger("main", "mnuMeters");
}

void feetOnMain(World&, Model&, const Step&) {
    World::trigger("main", "mnuFeet");
}

void theProgramIsLeftAndStarted(World& world, Model& model, const Step& step) {
    model.expected.viewer = QString();
    model.expected.mergeLeft = true;
    world.leave();
    world.start(QString(), World::meanwhile(step.a));
}

// --- the dive list

int rowOf(quint32 number) {
    const platform::FlexGrid* grid = World::list();
    return grid == nullptr || grid->rows() < 2
               ? 0
               : 1 + static_cast<int>(number % static_cast<quint32>(grid->rows() - 1));
}

void aRowIsClicked(World&, Model&, const Step& step) {
    constexpr std::array<Qt::KeyboardModifiers, 3> kModifiers{Qt::NoModifier, Qt::ControlModifier,
                                                              Qt::ShiftModifier};
    World::clickRow(rowOf(step.a), kModifiers[step.b % kModifiers.size()]);
}

void aKeyMovesInTheList(World&, Model&, const Step& step) {
    constexpr std::array<Qt::Key, 6> kKeys{Qt::Key_Up,  Qt::Key_Down,   Qt::Key_Home,
                                           Qt::Key_End, Qt::Key_PageUp, Qt::Key_PageDown};
    if (auto* grid = World::list()) {
        QTest::keyClick(grid, kKeys[step.a % kKeys.size()],
                        step.b % 2 == 0 ? Qt::NoModifier : Qt::ShiftModifier);
    }
}

/// A dive of another store opens where the program's own has the same under its identifier.
bool opensFromTheList(const Model& model, const QString& diveid) {
    if (process().storepath.isEmpty()) {
        return model.opens(diveid);
    }
    platform::Database other;
    const bool isCopy = !process().storecopy.isEmpty();
    other.open(isCopy ? process().storecopy : process().storepath, platform::StoreAccess::Look);
    const platform::Recordset row =
        other.openRecordset(platform::sqlWith("SELECT * FROM main WHERE DiveID = '", diveid, "'"));
    const StoredDive own = model.last().dives.value(diveid);
    const bool isKnown = !own.startcode.isEmpty() || !own.dbtxtname.isEmpty();
    return model.opens(diveid) && isKnown && row.value(u"Startcode").text() == own.startcode &&
           row.value(u"dbtxtname").text() == own.dbtxtname;
}

void aDiveIsDoubleClicked(World&, Model& model, const Step& step) {
    const int row = rowOf(step.a);
    if (row > 0) {
        const QString diveid = World::list()->text(row, 0);
        if (opensFromTheList(model, diveid)) {
            model.expected.viewer = diveid;
        }
        World::clickRow(row, {}, true);
    }
}

/// Where the current row is no longer blue another one counts, the one clicked last.
void theChosenDiveIsOpened(World&, Model& model, const Step&) {
    const QStringList chosen = World::chosen();
    const platform::FlexGrid* grid = World::list();
    if (chosen.size() == 1 && grid->text(grid->row(), 0) == chosen.first() &&
        World::reach<QWidget>("rbmain", "cmdgo") != nullptr) {
        if (opensFromTheList(model, chosen.first())) {
            model.expected.viewer = chosen.first();
        }
        World::click("rbmain", "cmdgo");
    }
}

void theChosenDivesAreDeleted(World& world, Model& model, const Step& step) {
    const QStringList chosen = World::chosen();
    const bool yes = step.a % 3 != 0;
    world.dialogs.answer(yes);
    if (World::click("rbmain", "cmdelete") && yes && process().storepath.isEmpty()) {
        model.expected.deleted = chosen;
        if (chosen.contains(model.viewerDive())) {
            model.expected.viewer = QString();
        }
    }
}

void errorsAreAskedFor(World&, Model&, const Step& step) {
    World::clickRow(rowOf(step.a));
    World::trigger("rbmain", "mnuerrorcode");
}

void theListIsSorted(World&, Model&, const Step& step) {
    constexpr std::array<const char*, 4> kEntries{"mnusdate", "mnuslocation", "mnusmd", "mnussite"};
    World::trigger("rbmain", kEntries[step.a % kEntries.size()]);
}

void turn(Model& model, const char* entry) {
    if (auto* action = World::reach<QAction>("rbmain", entry)) {
        model.expectTurn(entry == std::string_view("mnuundo"), action->text());
        action->trigger();
    }
}

void whatWasDoneIsTakenBack(World&, Model& model, const Step&) {
    turn(model, "mnuundo");
}

void itIsDoneAgain(World&, Model& model, const Step&) {
    turn(model, "mnuredo");
}

void theTrashIsOpened(World&, Model&, const Step&) {
    World::trigger("rbmain", "mnutrash");
}

void aDiveIsPutBack(World&, Model& model, const Step& step) {
    auto* rows = World::reach<QTreeWidget>("trash", "treetrash");
    if (rows != nullptr && rows->topLevelItemCount() > 0) {
        rows->setCurrentItem(
            rows->topLevelItem(static_cast<int>(step.a % static_cast<quint32>(rows->topLevelItemCount()))));
        model.expected.turned = World::click("trash", "cmdputback");
        model.expected.detailsStay = true;
    }
}

void theListIsLeft(World&, Model&, const Step&) {
    World::click("rbmain", "cmdclose");
}

// --- another store

/// A store as it was a while ago: some of its dives are those of now, some are not.
void theStoreIsCopied(World& world, Model&, const Step&) {
    const QString copy = world.folder.path(QStringLiteral("elsewhere.mdb"));
    if (process().storepath == copy) {
        return; // the list goes on with what it was opened for
    }
    QFile::remove(copy);
    QFile::copy(world.folder.path(QStringLiteral("rb.mdb")), copy);
}

void anotherStoreIsOpened(World& world, Model&, const Step&) {
    const QString copy = world.folder.path(QStringLiteral("elsewhere.mdb"));
    if (QFile::exists(copy)) {
        world.dialogs.answerFile(copy);
        World::trigger("main", "mnuOpen");
    }
}

void theOwnLogbookComesBack(World&, Model&, const Step&) {
    World::click("rbmain", "cmdownlogbook");
}

// --- the dive screen

void theDiveIsLeft(World&, Model& model, const Step&) {
    if (World::isShown("rbinterface")) {
        model.expected.viewer = QString();
        World::trigger("rbinterface", "mnudiveexit");
    }
}

void theDiveWindowIsClosed(World&, Model& model, const Step&) {
    if (World::isShown("rbinterface")) {
        model.expected.viewer = QString();
        World::screen("rbinterface")->close();
    }
}

void detailsAreOpened(World&, Model&, const Step&) {
    World::trigger("rbinterface", "mnudiveinfo");
}

void feetOnTheDive(World&, Model&, const Step&) {
    World::trigger("rbinterface", "mnuunitsfeet");
}

void metresOnTheDive(World&, Model&, const Step&) {
    World::trigger("rbinterface", "mnuunitsmeters");
}

void theGasesAreSaved(World& world, Model& model, const Step&) {
    const QString path = world.folder.path(QStringLiteral("gases.csv"));
    world.dialogs.answerFile(path);
    if (World::trigger("rbinterface", "mnudivesavecsv")) {
        model.expected.gasTable = path;
    }
}

void theDiveIsSavedForDan(World& world, Model& model, const Step&) {
    const QString path = world.folder.path(QStringLiteral("dive.zxu"));
    world.dialogs.answerFile(path);
    if (World::trigger("rbinterface", "mnudivedan")) {
        model.expected.danFile = path;
    }
}

/// A store that is no longer ours to read, or a dive that is gone, is told, and no file comes of it.
void divesGoOut(World& world, Model& model, const QString& ending, const char* screen, const char* entry,
                const QStringList& dives) {
    const QString path = world.folder.path(QStringLiteral("out.") + ending);
    QFile::remove(path);
    world.dialogs.answerFile(path);
    const bool typed = model.hasTyped();
    const qsizetype told = world.dialogs.messages().size();
    if (World::trigger(screen, entry)) {
        model.expected.exportTold = world.dialogs.messages().size() > told;
        model.expected.openFile = path;
        model.expected.exported = dives;
        model.expected.detailsSaved = typed && QFile::exists(path);
    }
}

QString anEnding(quint32 number) {
    static const QStringList kEndings{QStringLiteral("json"), QStringLiteral("json"), QStringLiteral("uddf"),
                                      QStringLiteral("csv"), QStringLiteral("zxu")};
    return kEndings[static_cast<qsizetype>(number) % kEndings.size()];
}

void theShownDiveGoesOut(World& world, Model& model, const Step& step) {
    divesGoOut(world, model, anEnding(step.a), "rbinterface", "mnuexportopen", {model.viewerDive()});
}

void divesOfTheListGoOut(World& world, Model& model, const Step& step) {
    const bool all = step.b % 2 == 0;
    divesGoOut(world, model, anEnding(step.a), "rbmain", all ? "mnuexportall" : "mnuexport",
               all ? World::listed() : World::chosen());
}

void aPictureIsTaken(World&, Model&, const Step&) {
    World::trigger("rbinterface", "mnuScrSave");
}

void thePlayRuns(World&, Model&, const Step& step) {
    World::click("rbinterface", step.a % 2 == 0 ? "PlayDive" : "StopPlayDive");
}

// --- the details

void detailsAreTyped(World&, Model& model, const Step& step) {
    if (!model.detailsOpen() || !World::isShown("rbdetails")) {
        return;
    }
    const QString text = words(step.b);
    switch (step.a % 4) {
    case 0:
        World::reach<QLineEdit>("rbdetails", "Txtdiver")->setText(text);
        return model.typed(QStringLiteral("UserName"), text);
    case 1:
        World::reach<QComboBox>("rbdetails", "Cbosite")->setEditText(text);
        return model.typed(QStringLiteral("site"), text);
    case 2:
        World::reach<QPlainTextEdit>("rbdetails", "txtcomments")->setPlainText(text);
        return model.typed(QStringLiteral("Coments"), text);
    default:
        World::reach<QComboBox>("rbdetails", "cbobuddy")->setEditText(text);
        World::click("rbdetails", "cmdadd");
        return model.setBuddies(model.buddies() + QStringList{text});
    }
}

void detailsAreSaved(World&, Model& model, const Step&) {
    model.expected.detailsSaved = World::trigger("rbdetails", "mnuSave");
}

void detailsLeadToTheDive(World&, Model& model, const Step&) {
    if (World::isShown("rbdetails")) {
        model.expected.viewer = model.detailsDive();
        World::click("rbdetails", "cmdclose");
    }
}

void theDetailsWindowIsClosed(World&, Model&, const Step&) {
    if (World::isShown("rbdetails")) {
        World::screen("rbdetails")->close();
    }
}

// --- the gas screen

void gasIsOpened(World&, Model&, const Step&) {
    World::trigger("main", "mnuSetupGas");
}

void gasIsTyped(World&, Model&, const Step& step) {
    constexpr std::array<const char*, 4> kCells{"Text1", "Text2", "Text3", "Text4"};
    static const QStringList texts{
        QStringLiteral("21"), QStringLiteral("0"),  QStringLiteral("35"),  QString(),
        QStringLiteral("-"),  QStringLiteral("5a"), QStringLiteral("100"), QStringLiteral("12.5")};
    const QString name =
        QStringLiteral("%1(%2)").arg(QLatin1String(kCells[step.a % kCells.size()])).arg(step.a / 4 % 10);
    if (auto* cell = World::reach<QLineEdit>("GasBlend", qPrintable(name))) {
        cell->setFocus();
        cell->selectAll();
        const QString& text = texts[static_cast<qsizetype>(step.b) % texts.size()];
        text.isEmpty() ? QTest::keyClick(cell, Qt::Key_Delete) : QTest::keyClicks(cell, text);
    }
}

void aGasIsSwitched(World&, Model&, const Step& step) {
    World::click("GasBlend", qPrintable(QStringLiteral("Check1(%1)").arg(step.a % 10)));
}

void theSetupIsSent(World& world, Model& model, const Step& step) {
    constexpr int kBeats = 6;
    constexpr int kQuestions = 3; // of the device's type, and of what an update is warned of
    if (!World::isShown("GasBlend")) {
        World::trigger("main", "mnuSetupGas");
        for (int beat = 0; beat < kBeats; ++beat) {
            world.pass();
        }
    }
    model.expected.setupSent = true;
    for (int question = 0; question < kQuestions; ++question) {
        world.dialogs.answer(step.a % 4 != 0);
    }
    World::click("GasBlend", "Command1");
    for (int beat = 0; beat < kBeats; ++beat) {
        world.bench.pass(500);
    }
}

void gasIsClosed(World&, Model&, const Step&) {
    if (World::isShown("GasBlend")) {
        World::screen("GasBlend")->close();
    }
}

// --- the link

void theLinkIsOpened(World&, Model&, const Step& step) {
    step.a % 3 == 0 ? World::trigger("main", "cmdcommandsend") : World::click("main", "lbllo");
}

void theDirectoryIsRefreshed(World&, Model&, const Step&) {
    World::click("PC_Link_1", "cmdstore");
}

void divesAreFetched(World& world, Model& model, const Step& step) {
    constexpr std::array<const char*, 3> kButtons{"cmddownloadall", "cmddownloadnew", "cmddownload"};
    constexpr int kBeats = 30; // until the device has answered
    if (!World::isShown("PC_Link_1")) {
        World::click("main", "lbllo");
        for (int beat = 0; beat < kBeats && World::isShown("PC_Link_1"); ++beat) {
            world.pass();
        }
        World::click("PC_Link_1", "cmdstore");
        for (int beat = 0; beat < kBeats && World::isShown("PC_Link_1"); ++beat) {
            world.pass();
        }
    }
    if (!World::click("PC_Link_1", kButtons[step.a % kButtons.size()])) {
        return;
    }
    model.expected.arrived = {QStringLiteral("MyLatestDives1.txt"), QStringLiteral("MyLatestDives2.txt"),
                              QStringLiteral("MyLatestDives3.txt")};
    world.dialogs.answer(step.b % 2 == 0);
    for (int beat = 0; beat < 60 && World::isShown("PC_Link_1") && !process().linkidle; ++beat) {
        world.pass();
    }
}

void theLinkIsLeft(World&, Model&, const Step&) {
    World::click("PC_Link_1", "Label11");
}

void theCableIsPulledOrPut(World& world, Model&, const Step&) {
    world.bench.plug(!world.bench.isPlugged());
}

// --- two things at once

/// The next import meets another action where it yields to the user first.
void anImportMeetsAnotherAction(World& world, Model& model, const Step& step) {
    static constexpr std::array<void (*)(World&, Model&, const Step&), 13> kMeanwhile{
        metresOnMain,     feetOnMain,         myDives,         gasIsTyped,
        theSetupIsSent,   aKeyMovesInTheList, feetOnTheDive,   gasIsClosed,
        detailsAreTyped,  detailsAreSaved,    theListIsSorted, theDirectoryIsRefreshed,
        whatIsTickedComes};
    const auto kinds = static_cast<quint32>(kMeanwhile.size());
    const bool merges = World::isShown("mergelogbook") && step.a % 2 == 0;
    const Step inner{merges ? static_cast<int>(kinds) - 1 : static_cast<int>(step.a % kinds), step.b,
                     step.a / kinds};
    if (model.last().waiting.isEmpty()) {
        aFileComes(world, model, step);
        model.expected.arrived = {fileName(step.a)};
    }
    bool met = false;
    const platform::FaultInjection meeting([&](std::string_view at) {
        if (at == "file" && !std::exchange(met, true)) {
            kMeanwhile[static_cast<std::size_t>(inner.action)](world, model, inner);
        }
        return 0;
    });
    World::click("main", "lblmdu(1)");
    world.settle();
    world.mainTick(); // it waits for the end of an import
}

} // namespace

const std::vector<Action>& actions() {
    static const std::vector<Action> all = [] {
        std::vector<Action> made{
            {"a file comes", 14, aFileComes},
            {"time passes", 20, timePasses},
            {"My Dives", 8, myDives},
            {"Database Update", 3, databaseUpdate},
            {"the file in the way is moved aside", 4, theFileInTheWayIsMovedAside},
            {"a file is found by hand", 2, aFileIsFoundByHand},
            {"metres on main", 2, metresOnMain},
            {"feet on main", 2, feetOnMain},
            {"the program is left and started", 2, theProgramIsLeftAndStarted},
            {"a row is clicked", 5, aRowIsClicked},
            {"a key moves in the list", 3, aKeyMovesInTheList},
            {"a dive is double-clicked", 8, aDiveIsDoubleClicked},
            {"the chosen dive is opened", 6, theChosenDiveIsOpened},
            {"the chosen dives are deleted", 9, theChosenDivesAreDeleted},
            {"what was done is taken back", 8, whatWasDoneIsTakenBack},
            {"it is done again", 5, itIsDoneAgain},
            {"the trash is opened", 2, theTrashIsOpened},
            {"a dive is put back", 5, aDiveIsPutBack},
            {"errors are asked for", 2, errorsAreAskedFor},
            {"the list is sorted", 2, theListIsSorted},
            {"the list is left", 1, theListIsLeft},
            {"the store is copied", 2, theStoreIsCopied},
            {"another store is opened", 2, anotherStoreIsOpened},
            {"the own logbook comes back", 2, theOwnLogbookComesBack},
            {"the dive is left", 3, theDiveIsLeft},
            {"the dive window is closed", 1, theDiveWindowIsClosed},
            {"details are opened", 7, detailsAreOpened},
            {"feet on the dive", 2, feetOnTheDive},
            {"metres on the dive", 2, metresOnTheDive},
            {"the gases are saved", 3, theGasesAreSaved},
            {"the dive is saved for DAN", 2, theDiveIsSavedForDan},
            {"the shown dive goes out", 3, theShownDiveGoesOut},
            {"dives of the list go out", 3, divesOfTheListGoOut},
            {"a picture is taken", 1, aPictureIsTaken},
            {"the play runs", 1, thePlayRuns},
            {"details are typed", 10, detailsAreTyped},
            {"details are saved", 3, detailsAreSaved},
            {"details lead to the dive", 3, detailsLeadToTheDive},
            {"the details window is closed", 2, theDetailsWindowIsClosed},
            {"gas is opened", 2, gasIsOpened},
            {"gas is typed", 4, gasIsTyped},
            {"a gas is switched", 2, aGasIsSwitched},
            {"the setup is sent", 4, theSetupIsSent},
            {"gas is closed", 1, gasIsClosed},
            {"the link is opened", 3, theLinkIsOpened},
            {"the directory is refreshed", 2, theDirectoryIsRefreshed},
            {"dives are fetched", 6, divesAreFetched},
            {"the link is left", 5, theLinkIsLeft},
            {"the cable is pulled or put", 2, theCableIsPulledOrPut},
            {"an import meets another action", 4, anImportMeetsAnotherAction},
        };
        const std::vector<Action> merge = mergeActions();
        made.insert(made.end(), merge.begin(), merge.end());
        return made;
    }();
    return all;
}

} // namespace benthor::tests
