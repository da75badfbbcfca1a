#include "platform/faultpoint.h"
#include "platform/storefile.h"
#include "store/backup.h"
#include "tests/logbook/mergeworld.h"
#include "tests/support/killed.h"

#include <QFileInfo>
#include <QRandomGenerator>

using namespace benthor;
using namespace benthor::logbook;
using tests::MainRow;
using tests::MergeWorld;
using State = TurnedAct::State;

namespace {

const QString kText = QStringLiteral("dbtxt");
const QString kOld = QStringLiteral("old");

/// Chooses the same for every difference, and no new dive.
auto taking(TakeDetail take) {
    return [take](const std::vector<MergeDive>& dives) {
        std::vector<MergeChoice> choices(dives.size());
        for (size_t i = 0; i < dives.size(); ++i) {
            choices[i].details.assign(dives[i].differences.size(), take);
        }
        return choices;
    };
}

/// A dive with its files and all that belongs to it, over there.
void addWholeDive(MergeWorld& world) {
    world.runThere("ALTER TABLE main ADD COLUMN \"their field\"");
    world.runThere("ALTER TABLE tissue ADD COLUMN extra");
    MainRow dive = MergeWorld::dive(5);
    dive[QStringLiteral("their field")] = QStringLiteral("kept\r");
    dive[QStringLiteral("odd one")] = QString();
    dive[QStringLiteral("divenote")] = QStringLiteral("it's \"deep\"\r\nand \u00e9");
    MergeWorld::add(world.thatStore(), world.id(3), dive);
    world.runThere("INSERT INTO buddylist VALUES ('D0000003', 'O''Neil')");
    world.runThere("INSERT INTO buddylist VALUES ('D0000003', 'Anna')");
    world.putThere(kText, QStringLiteral("A5.txt"), "the profile");
    world.putThere(kOld, QStringLiteral("Reef5.txt"), "the profile");
    world.putThere(kOld, QStringLiteral("Reef4.txt"), "the Profile");
}

} // namespace

class TestMerge : public QObject {
    Q_OBJECT

private slots:
    void aNewDiveComesWhole();
    void listEntriesThatAreMissingCome();
    void aFileNameThatIsTakenGetsAFreeOne();
    void theNameOfADiveWhoseFileIsMissingHereIsTaken();
    void theNameOfADiveInTheTrashIsTaken();
    void aDiveInTheTrashThatComesOnceMoreKeepsItsName();
    void theSameBytesAreNotCopiedAgain();
    void aDiveWithoutItsFileComesAndIsNamed();
    void detailsAreTakenAsChosen();
    void aSerialThatIsTooLongIsCutAndNamed();
    void theSameMergeAgainBringsNothing();
    void bothTextsAgainAddNothing();
    void bothOfTwoDivesThatAreOneHereStandThere();
    void twoDivesThatAreOneHereStayThatDive();
    void theOtherLogbookStaysByteForByte();
    void aProvenBackupIsMadeFirst();
    void withoutABackupNothingIsMerged();
    void whatFailsLeavesNothing_data();
    void whatFailsLeavesNothing();
    void aMergeCanBeStopped();
    void aMergeIsTakenBackAndDoneAgain();
    void aDiveThatNothingIsKnownOfIsTakenBackUnderItsNewNumber();
    void whereNoActCanBeKeptItMergesAllTheSame();
    void killedAtAnyStepTheStoreIsThatOfBeforeOrOfAfter();
    void theWordsTellWhatHappened();
    void randomMergesAgreeWithAPlainModel();
};

void TestMerge::aNewDiveComesWhole() {
    MergeWorld world;
    world.addHere(1, MergeWorld::dive(1));
    addWholeDive(world);
    const MergeResult result = world.merge();
    QCOMPARE(result.came, 1);
    QCOMPARE(result.dives, QStringList{"D0000002"});
    QCOMPARE(result.problems, QStringList());
    QCOMPARE(world.field("D0000002", "Location"), "Reef5.txt");
    QCOMPARE(world.field("D0000002", "divenote"), QStringLiteral("it's \"deep\"\r\nand \u00e9"));
    QCOMPARE(world.field("D0000002", "their field"), "kept\r");
    QCOMPARE(world.field("D0000002", "odd one"), "");
    QCOMPARE(world.field("D0000002", "weather"), "(null)");
    QCOMPARE(world.field("D0000002", "dbtxtname"), "A5.txt");
    QCOMPARE(world.lines("SELECT Gastype, GasN2, GasHe, Gasstat FROM gas WHERE diveid = 'D0000002'"),
             (QStringList{"0000|79|(null)|1\r", "0001|(null)|(null)|\r"}));
    QCOMPARE(world.lines("SELECT Tissuetype, TissueN2, TissueHe FROM tissue WHERE diveid = 'D0000002'"),
             QStringList{"0000|79|12\r"});
    QCOMPARE(world.lines("SELECT buddylist FROM buddylist WHERE diveid = 'D0000002'"),
             (QStringList{"O'Neil", "Anna"}));
    QCOMPARE(world.bytesOf(kText, "A5.txt"), "the profile");
    QCOMPARE(world.names(kOld), QStringList{"Reef5.txt"});
    QCOMPARE(world.counter(), "D0000002");
    // Those that were here are as they were.
    QCOMPARE(world.field("D0000001", "their field"), "(null)");
    QCOMPARE(world.lines("SELECT COUNT(*) FROM gas WHERE diveid = 'D0000001'"), QStringList{"2"});
}

void TestMerge::listEntriesThatAreMissingCome() {
    MergeWorld world;
    world.addThere(1, MergeWorld::dive(1));
    process().database.execute("INSERT INTO site VALUES ('Blue Hole')");
    for (const char* sql : {"INSERT INTO site VALUES ('blue hole ')", "INSERT INTO site VALUES ('Wreck')",
                            "INSERT INTO site VALUES ('wreck')", "INSERT INTO weather VALUES ('Rain')",
                            "INSERT INTO department VALUES ('Police')", "INSERT INTO buddy VALUES ('Anna')",
                            "INSERT INTO buddy VALUES ('O''Neil')", "INSERT INTO buddy VALUES (NULL)"}) {
        world.runThere(sql);
    }
    const MergeResult result = world.merge();
    QCOMPARE(world.lines("SELECT Site FROM site"), (QStringList{"Blue Hole", "Wreck"}));
    QCOMPARE(world.lines("SELECT weather FROM weather"), QStringList{"Rain"});
    QCOMPARE(world.lines("SELECT department FROM department"), QStringList{"Police"});
    QCOMPARE(world.lines("SELECT buddy FROM buddy"), QStringList{"Anna"});
    QCOMPARE(result.entries, 4);
    QVERIFY(result.problems.join(u'\n').contains(QLatin1String("\"O'Neil\"")));
}

void TestMerge::aFileNameThatIsTakenGetsAFreeOne() {
    MergeWorld world;
    world.addHere(1, MergeWorld::dive(5)); // has the name A5.txt
    process().database.execute("UPDATE main SET Startcode = '1', Suit = 'x', UserName = 'x'");
    world.put(kText, QStringLiteral("A5.txt"), "mine");
    world.put(kOld, QStringLiteral("Reef5.txt"), "mine");
    addWholeDive(world);
    QCOMPARE(world.merge().came, 1);
    QCOMPARE(world.field("D0000002", "dbtxtname"), "A5-2.txt");
    QCOMPARE(world.bytesOf(kText, "A5-2.txt"), "the profile");
    QCOMPARE(world.bytesOf(kText, "A5.txt"), "mine");
    QCOMPARE(world.bytesOf(kOld, "Reef5.txt"), "mine");
    QCOMPARE(world.bytesOf(kOld, "Reef5-2.txt"), "the profile");
}

/// The other dive's profile would show up on it.
void TestMerge::theNameOfADiveWhoseFileIsMissingHereIsTaken() {
    MergeWorld world;
    world.addHere(1, MergeWorld::dive(5));
    process().database.execute("UPDATE main SET Startcode = '1', dbtxtname = 'a5.TXT'");
    addWholeDive(world);
    world.merge();
    QCOMPARE(world.names(kText), QStringList{"A5-2.txt"});
    QCOMPARE(world.field("D0000002", "dbtxtname"), "A5-2.txt");
}

/// It may come back, and would show the other dive's profile.
void TestMerge::theNameOfADiveInTheTrashIsTaken() {
    MergeWorld world;
    world.addThere(1, MergeWorld::dive(1)); // its file A1.txt is missing there
    world.merge();
    QCOMPARE(world.field("D0000001", "dbtxtname"), "A1.txt");
    world.del({1});
    MainRow another = MergeWorld::dive(2);
    another[QStringLiteral("dbtxtname")] = QStringLiteral("A1.txt");
    world.runThere("DELETE FROM main");
    world.addThere(2, another);
    world.putThere(kText, QStringLiteral("A1.txt"), "of the other dive");
    world.merge();
    QCOMPARE(world.field("D0000001", "Startcode"), "810000002");
    QCOMPARE(world.field("D0000001", "dbtxtname"), "A1-2.txt");
    QCOMPARE(world.names(kText), QStringList{"A1-2.txt"});
    putback(process().database, world.folder, {trasheddives(process().database).front().id});
    QCOMPARE(world.field("D0000002", "dbtxtname"), "A1.txt");
}

/// Its file is there already; and the trash has nothing more to put back.
void TestMerge::aDiveInTheTrashThatComesOnceMoreKeepsItsName() {
    MergeWorld world;
    addWholeDive(world);
    world.merge();
    world.del({1});
    QCOMPARE(world.merge().came, 1);
    QCOMPARE(world.field("D0000001", "dbtxtname"), "A5.txt");
    QCOMPARE(world.names(kText), QStringList{"A5.txt"});
    QVERIFY(!putback(process().database, world.folder, {trasheddives(process().database).front().id})
                 .reason.isEmpty());
    QCOMPARE(world.dives(), QStringList{"D0000001"});
}

void TestMerge::theSameBytesAreNotCopiedAgain() {
    MergeWorld world;
    addWholeDive(world);
    world.put(kText, QStringLiteral("A5.txt"), "the profile"); // of a dive that was deleted once
    world.put(kOld, QStringLiteral("Reef5.txt"), "the profile");
    world.merge();
    QCOMPARE(world.field("D0000001", "dbtxtname"), "A5.txt");
    QCOMPARE(world.names(kText), QStringList{"A5.txt"});
    QCOMPARE(world.names(kOld), QStringList{"Reef5.txt"});
}

void TestMerge::aDiveWithoutItsFileComesAndIsNamed() {
    MergeWorld world;
    world.put(kText, QStringLiteral("A1.txt"), "another dive's");
    world.addThere(1, MergeWorld::dive(1));
    MainRow without = MergeWorld::dive(2);
    without.remove(QStringLiteral("dbtxtname"));
    world.addThere(2, without);
    MainRow elsewhere = MergeWorld::dive(3);
    elsewhere[QStringLiteral("dbtxtname")] = QStringLiteral("../rb.mdb");
    world.addThere(3, elsewhere);
    const MergeResult result = world.merge();
    QCOMPARE(result.came, 3);
    QCOMPARE(result.problems.size(), 3);
    QVERIFY(result.problems[0].startsWith(QLatin1String("D0000001 (Reef1.txt): its file A1.txt is missing")));
    QVERIFY(result.problems[1].contains(QLatin1String("names no file")));
    QCOMPARE(world.field("D0000001", "dbtxtname"), "A1-2.txt"); // a name that is no other dive's
    QCOMPARE(world.field("D0000002", "dbtxtname"), "(null)");
    QCOMPARE(world.names(kText), QStringList{"A1.txt"});
}

void TestMerge::detailsAreTakenAsChosen() {
    const auto world = [](TakeDetail take) {
        auto made = std::make_unique<MergeWorld>();
        MainRow mine = MergeWorld::dive(1);
        mine[QStringLiteral("Coments")] = QStringLiteral("mine");
        mine[QStringLiteral("site")] = QStringLiteral("here");
        made->addHere(4, mine);
        process().database.execute("INSERT INTO buddylist VALUES ('D0000004', 'Anna')");
        MainRow theirs = MergeWorld::dive(1);
        theirs[QStringLiteral("Coments")] = QStringLiteral("theirs");
        theirs[QStringLiteral("site")] = QStringLiteral("there");
        theirs[QStringLiteral("divenote")] = QStringLiteral("their note");
        made->addThere(1, theirs);
        made->runThere("INSERT INTO buddylist VALUES ('D0000001', 'Bert')");
        made->runThere("INSERT INTO buddylist VALUES ('D0000001', 'Carla')");
        const MergeResult result = made->merge(taking(take));
        [&] {
            QCOMPARE(result.came, 0);
            QCOMPARE(result.details, take == TakeDetail::Mine ? 0 : 1);
        }();
        return made;
    };
    const auto details = [](MergeWorld& of) {
        return QStringList{of.field("D0000004", "site"), of.field("D0000004", "Coments"),
                           of.field("D0000004", "divenote"),
                           of.lines("SELECT buddylist FROM buddylist").join(u'+')};
    };
    QCOMPARE(details(*world(TakeDetail::Mine)), (QStringList{"here", "mine", "(null)", "Anna"}));
    QCOMPARE(details(*world(TakeDetail::Theirs)),
             (QStringList{"there", "theirs", "their note", "Bert+Carla"}));
    // Both of a note; of what cannot be joined, theirs.
    const auto both = world(TakeDetail::Both);
    QCOMPARE(details(*both), (QStringList{"there", "mine\r\ntheirs", "their note", "Bert+Carla"}));
    QCOMPARE(both->undoWords(), "merge of details");
    QCOMPARE(static_cast<int>(both->undo().state), static_cast<int>(State::Done));
    QCOMPARE(details(*both), (QStringList{"here", "mine", "(null)", "Anna"}));
}

void TestMerge::aSerialThatIsTooLongIsCutAndNamed() {
    MergeWorld world;
    world.runThere("DROP TABLE main");
    world.runThere("CREATE TABLE main (DiveID, Location, Startcode, Suit)"); // as another program may make it
    const QString serial(60, u'7');
    platform::StoredRows(world.thatStore())
        .change("INSERT INTO main VALUES ('D0000001', 'x', '5', ?1)", {serial});
    const MergeResult result = world.merge();
    QCOMPARE(world.field("D0000001", "Suit"), serial.left(50));
    QVERIFY(result.problems.join(u'\n').contains(serial));
}

void TestMerge::theSameMergeAgainBringsNothing() {
    MergeWorld world;
    addWholeDive(world);
    world.runThere("INSERT INTO site VALUES ('Wreck')");
    world.merge();
    const QByteArray store = world.snapshot();
    const auto files = world.filesBelow(world.folder.root() + QStringLiteral("/dbtxt"));
    const MergeResult again = world.merge();
    QCOMPARE(again.came, 0);
    QCOMPARE(again.stayed, 1);
    QCOMPARE(again.entries, 0);
    QCOMPARE(world.snapshot(), store);
    QCOMPARE(world.filesBelow(world.folder.root() + QStringLiteral("/dbtxt")), files);
    QCOMPARE(world.undoWords(), "merge of 1 dive"); // the first one
}

void TestMerge::bothTextsAgainAddNothing() {
    MergeWorld world;
    MainRow mine = MergeWorld::dive(1);
    mine[QStringLiteral("Coments")] = QStringLiteral("a ray\r\n");
    world.addHere(4, mine);
    MainRow theirs = MergeWorld::dive(1);
    theirs[QStringLiteral("Coments")] = QStringLiteral("a shark\nand a seal\n");
    world.addThere(1, theirs);
    world.merge(taking(TakeDetail::Both));
    const QString both = world.field("D0000004", "Coments");
    QCOMPARE(both, "a ray\r\n\r\na shark\nand a seal\n");
    world.merge(taking(TakeDetail::Both));
    QCOMPARE(world.field("D0000004", "Coments"), both);
    QCOMPARE(world.undoWords(), "merge of details"); // the first one: the second did nothing
    world.undo();
    QCOMPARE(world.undoWords(), "");
    // A part of a line is not the same line.
    world.runThere("UPDATE main SET Coments = 'a ra'");
    world.merge(taking(TakeDetail::Both));
    QCOMPARE(world.field("D0000004", "Coments"), "a ray\r\n\r\na ra");
}

/// Imported twice over there, and written on twice.
void TestMerge::bothOfTwoDivesThatAreOneHereStandThere() {
    MergeWorld world;
    MainRow dive = MergeWorld::dive(1);
    dive[QStringLiteral("Coments")] = QStringLiteral("mine");
    world.addHere(4, dive);
    dive[QStringLiteral("Coments")] = QStringLiteral("first");
    world.addThere(1, dive);
    dive[QStringLiteral("Coments")] = QStringLiteral("second");
    world.addThere(2, dive);
    world.merge(taking(TakeDetail::Both));
    QCOMPARE(world.field("D0000004", "Coments"), "mine\r\nfirst\r\nsecond");
}

/// One by its serial, the other by its diver: what tells them is not given away for the one's sake.
void TestMerge::twoDivesThatAreOneHereStayThatDive() {
    MergeWorld world;
    MainRow dive = MergeWorld::dive(1);
    dive[QStringLiteral("Suit")] = QStringLiteral("KD1");
    dive[QStringLiteral("UserName")] = QStringLiteral("Anna");
    world.addHere(4, dive);
    dive[QStringLiteral("UserName")] = QStringLiteral("Ben");
    dive[QStringLiteral("Coments")] = QStringLiteral("first");
    world.addThere(1, dive);
    dive[QStringLiteral("UserName")] = QStringLiteral("Anna");
    dive[QStringLiteral("Suit")] = QStringLiteral("KD2");
    world.addThere(2, dive);
    for (const MergeDive& planned : world.plan()) {
        QCOMPARE(planned.mine, "D0000004");
        for (const DetailDifference& difference : planned.differences) {
            QVERIFY(difference.field != "Suit" && difference.field != "UserName");
        }
    }
    world.merge(taking(TakeDetail::Theirs));
    QCOMPARE(world.field("D0000004", "Coments"), "first");
    QCOMPARE(world.merge(taking(TakeDetail::Theirs)).came, 0);
    QCOMPARE(world.dives(), QStringList{"D0000004"});
}

void TestMerge::theOtherLogbookStaysByteForByte() {
    MergeWorld world;
    addWholeDive(world);
    world.closeThere();
    const auto before = world.filesBelow(world.there.root());
    QVERIFY(before.size() >= 4);
    world.merge();
    QCOMPARE(world.filesBelow(world.there.root()), before);
}

void TestMerge::aProvenBackupIsMadeFirst() {
    MergeWorld world;
    world.addHere(1, MergeWorld::dive(1));
    addWholeDive(world);
    const QByteArray before = world.snapshot();
    QCOMPARE(world.merge().backup, "rb-before-merge.mdb");
    const QString backup = world.folder.path(u"rb-before-merge.mdb");
    QVERIFY(store::examinestore(backup).sound());
    process().database.close();
    process().database.open(backup);
    QCOMPARE(world.snapshot(), before);
}

void TestMerge::withoutABackupNothingIsMerged() {
    MergeWorld world;
    addWholeDive(world);
    world.put(QString(), QStringLiteral("rb-before-merge.mdb"), "of before");
    const QByteArray before = world.snapshot();
    const platform::FaultInjection full([](std::string_view step) { return step == "write" ? ENOSPC : 0; });
    QVERIFY_EXCEPTION_THROWN(world.merge(), platform::StoreError);
    QCOMPARE(world.snapshot(), before);
    QCOMPARE(world.names(kText), QStringList());
    QCOMPARE(world.bytesOf(QString(), QStringLiteral("rb-before-merge.mdb")), "of before");
}

void TestMerge::whatFailsLeavesNothing_data() {
    QTest::addColumn<QByteArray>("step");
    QTest::addColumn<int>("at");
    for (int at = 1; at <= 12; ++at) {
        QTest::addRow("change %d", at) << QByteArray("change") << at;
    }
    for (int at = 3; at <= 4; ++at) { // the first is the backup
        QTest::addRow("copy %d", at) << QByteArray("rename") << at - 1;
    }
    QTest::newRow("commit") << QByteArray("commit") << 1;
}

/// What the engine refuses, or the disk, at one step; the file of the acts does not matter here.
void TestMerge::whatFailsLeavesNothing() {
    QFETCH(QByteArray, step);
    QFETCH(int, at);
    MergeWorld world;
    world.addHere(1, MergeWorld::dive(1));
    addWholeDive(world);
    world.runThere("INSERT INTO site VALUES ('Wreck')");
    QVERIFY(QDir().mkdir(world.actsFile())); // so that every change is one of the store's own
    const QByteArray before = world.snapshot();
    int seen = 0;
    bool failed = false;
    {
        const platform::FaultInjection fault([&](std::string_view name) {
            return name == std::string_view(step) && ++seen >= at ? ENOSPC : 0;
        });
        try {
            world.merge();
        } catch (const platform::StoreError&) {
            failed = true;
        }
    }
    QVERIFY2(failed, qPrintable(QStringLiteral("the step was met %1 times").arg(seen)));
    QCOMPARE(world.snapshot(), before);
    QCOMPARE(world.names(kText), QStringList());
    QCOMPARE(world.names(kOld), QStringList());
    QCOMPARE(world.merge().came, 1); // and the next one works
}

void TestMerge::aMergeCanBeStopped() {
    MergeWorld world;
    for (int number = 1; number <= 100; ++number) {
        world.addThere(number, MergeWorld::dive(number));
        world.putThere(kText, QStringLiteral("A%1.txt").arg(number), QByteArray::number(number));
    }
    world.closeThere();
    const QByteArray before = world.snapshot();
    for (const int calls : {1, 2, 3, 4}) {
        OtherLogbook other(world.there.root(), world.storePath());
        const auto dives = planmerge(process().database, world.folder, other);
        int call = 0;
        QVERIFY_EXCEPTION_THROWN(mergedives(process().database, world.folder, other, dives,
                                            plainchoices(dives),
                                            [&](int done, int of) {
                                                Q_ASSERT(done <= of);
                                                return ++call < calls;
                                            }),
                                 MergeStopped);
        QCOMPARE(call, calls);
        QCOMPARE(world.snapshot(), before);
        QCOMPARE(world.names(kText), QStringList());
    }
}

void TestMerge::aMergeIsTakenBackAndDoneAgain() {
    MergeWorld world;
    addWholeDive(world);
    world.runThere("INSERT INTO site VALUES ('Wreck')");
    world.merge();
    const QByteArray merged = world.snapshot(false);
    QCOMPARE(static_cast<int>(world.undo().state), static_cast<int>(State::Done));
    QCOMPARE(world.dives(), QStringList());
    QCOMPARE(world.counter(), "D0000000");
    QCOMPARE(world.lines("SELECT Site FROM site"), QStringList());
    QCOMPARE(world.names(kText), QStringList{"A5.txt"}); // files that came stay
    QCOMPARE(static_cast<int>(world.redo().state), static_cast<int>(State::Done));
    QCOMPARE(world.snapshot(false), merged);
    world.undo();
    QCOMPARE(world.merge().came, 1); // a merge in its place brings the same
    QCOMPARE(world.snapshot(false), merged);
}

/// No device has said anything of it, and it names no file: its rows are all that tells it.
void TestMerge::aDiveThatNothingIsKnownOfIsTakenBackUnderItsNewNumber() {
    MergeWorld world;
    MainRow dive = MergeWorld::dive(1);
    dive.remove(QStringLiteral("Startcode"));
    dive.remove(QStringLiteral("dbtxtname"));
    world.addThere(1, dive);
    world.merge();
    world.del({1});
    world.addHere(1, MergeWorld::dive(9)); // its number is another dive's by now
    QCOMPARE(static_cast<int>(world.undo().state), static_cast<int>(State::Done));
    QCOMPARE(world.dives(), (QStringList{"D0000001", "D0000002"}));
    QCOMPARE(world.undoWords(), "merge of 1 dive");
    const TurnedAct back = world.undo();
    QVERIFY2(back.state == State::Done, qPrintable(back.reason));
    QCOMPARE(world.dives(), QStringList{"D0000001"});
    QCOMPARE(world.field("D0000001", "Startcode"), "810000009");
}

void TestMerge::whereNoActCanBeKeptItMergesAllTheSame() {
    MergeWorld world;
    addWholeDive(world);
    QVERIFY(QDir().mkdir(world.actsFile()));
    const MergeResult result = world.merge();
    QCOMPARE(result.came, 1);
    QCOMPARE(result.dives, QStringList{"D0000001"});
    QVERIFY(!result.notTakenBack.isEmpty());
    QVERIFY(mergeText(result).contains(result.notTakenBack));
}

void TestMerge::killedAtAnyStepTheStoreIsThatOfBeforeOrOfAfter() {
    int asBefore = 0;
    int asAfter = 0;
    for (int step = 1;; ++step) {
        MergeWorld world;
        world.addHere(1, MergeWorld::dive(1));
        addWholeDive(world);
        world.closeThere();
        const auto there = world.filesBelow(world.there.root());
        process().database.close();
        const bool killed = tests::isKilledAt(step, [&] {
            process().database.open(world.storePath());
            world.merge();
        });
        world.reopen();
        QVERIFY(store::examinestore(world.storePath()).sound());
        const QStringList dives = world.dives();
        if (dives.size() == 1) {
            ++asBefore;
            QCOMPARE(world.undoWords(), "");
        } else {
            ++asAfter;
            QCOMPARE(dives, (QStringList{"D0000001", "D0000002"}));
            QCOMPARE(world.undoWords(), "merge of 1 dive");
            QCOMPARE(world.bytesOf(kText, world.field("D0000002", "dbtxtname")), "the profile");
            QCOMPARE(world.lines("SELECT COUNT(*) FROM gas"), QStringList{"4"});
        }
        QCOMPARE(world.filesBelow(world.there.root()), there);
        world.merge(); // what was begun goes on, and nothing is doubled
        QCOMPARE(world.dives(), (QStringList{"D0000001", "D0000002"}));
        QCOMPARE(world.names(kText), QStringList{"A5.txt"});
        QCOMPARE(world.names(kOld), QStringList{"Reef5.txt"});
        if (!killed) {
            break;
        }
    }
    QVERIFY2(asBefore > 15 && asAfter > 1,
             qPrintable(QStringLiteral("%1 before, %2 after").arg(asBefore).arg(asAfter)));
}

void TestMerge::theWordsTellWhatHappened() {
    MergeResult result;
    result.came = 1;
    result.stayed = 12;
    result.details = 2;
    result.entries = 1;
    result.backup = QStringLiteral("rb-before-merge.mdb");
    result.problems = QStringList{QStringLiteral("D0000001 (x): y")};
    QCOMPARE(mergeText(result), "1 dive came.\n12 dives stayed where they are.\n"
                                "2 dives here have other details now.\n1 entry came into the pick lists.\n"
                                "The logbook as it was before is kept as rb-before-merge.mdb.\n\n"
                                "D0000001 (x): y");
}

namespace {

/// What a diver knows of a dive, apart from any store.
struct Known {
    int code;
    QString note;
    QByteArray file;
};

QStringList sortedNotes(const QHash<int, Known>& dives) {
    QStringList notes;
    for (const Known& dive : dives) {
        notes += QStringLiteral("%1|%2|%3").arg(dive.code).arg(dive.note, QString::fromLatin1(dive.file));
    }
    notes.sort();
    return notes;
}

/// The same of the store here.
QStringList notesHere(const MergeWorld& world) {
    QStringList notes;
    platform::Recordset rows =
        process().database.openRecordset("SELECT Startcode, divenote, dbtxtname, DiveID FROM main");
    for (; !rows.eof(); rows.moveNext()) {
        const QString name = rows.value(2).text();
        const QByteArray file = name.isEmpty() ? QByteArray() : world.bytesOf(kText, name);
        notes += QStringLiteral("%1|%2|%3")
                     .arg(rows.value(0).text().toInt() - 810000000)
                     .arg(rows.value(1).text(), QString::fromLatin1(file));
    }
    notes.sort();
    return notes;
}

} // namespace

/// Two logbooks with dives in common, by a seed: every dive of either is there once behind the merge, with
/// the details that were chosen, its own file and its own gases; an undo brings the store of before back.
void TestMerge::randomMergesAgreeWithAPlainModel() {
    constexpr int rounds = 1000;
    for (int round = 1; round <= rounds; ++round) {
        QRandomGenerator random(static_cast<quint32>(round));
        MergeWorld world;
        QHash<int, Known> model;
        const auto row = [](int code, const QString& note) {
            MainRow dive = MergeWorld::dive(code);
            dive[QStringLiteral("divenote")] = note;
            // The files of a day's dives have one name on every computer.
            dive[QStringLiteral("dbtxtname")] = QStringLiteral("F%1.txt").arg(code % 4);
            return dive;
        };
        const auto fileOf = [](int code) { return "bytes of " + QByteArray::number(code); };
        const int mine = random.bounded(6);
        QSet<QString> used;
        for (int i = 0; i < mine; ++i) {
            const int code = random.bounded(12);
            if (model.contains(code)) {
                continue;
            }
            MainRow dive = row(code, QString::number(random.bounded(3)));
            QString name = QStringLiteral("M%1.txt").arg(code);
            if (random.bounded(2) == 0 && !used.contains(*dive[QStringLiteral("dbtxtname")])) {
                name = *dive[QStringLiteral("dbtxtname")];
            }
            used += name;
            dive[QStringLiteral("dbtxtname")] = name;
            world.addHere(i + 1, dive);
            world.put(kText, name, fileOf(code));
            model[code] = {code, *dive[QStringLiteral("divenote")], fileOf(code)};
        }
        store::syncserialno(); // as every start does
        const QHash<int, Known> before = model;
        const QByteArray stored = world.snapshot(false);
        const auto take = static_cast<TakeDetail>(random.bounded(3));
        const int theirs = random.bounded(6);
        QSet<int> seen;
        QSet<QString> usedThere;
        for (int i = 0; i < theirs; ++i) {
            const int code = random.bounded(12);
            const QString note = QString::number(random.bounded(3));
            MainRow dive = row(code, note);
            QString name = *dive[QStringLiteral("dbtxtname")];
            if (usedThere.contains(name)) {
                name = QStringLiteral("T%1-%2.txt").arg(code).arg(i);
            }
            usedThere += name;
            dive[QStringLiteral("dbtxtname")] = name;
            if (seen.contains(code)) {
                continue; // twice in one logbook: told elsewhere
            }
            seen += code;
            world.addThere(20 + i, dive);
            world.putThere(kText, name, fileOf(code));
            if (!model.contains(code)) {
                model[code] = {code, note, fileOf(code)};
            } else if (model[code].note != note && take != TakeDetail::Mine) {
                model[code].note = take == TakeDetail::Theirs ? note : model[code].note + "\r\n" + note;
            }
        }
        world.merge([take](const std::vector<MergeDive>& dives) {
            std::vector<MergeChoice> choices = plainchoices(dives);
            for (size_t i = 0; i < dives.size(); ++i) {
                choices[i].details.assign(dives[i].differences.size(), take);
            }
            return choices;
        });
        const auto fail = [round] { return qPrintable(QStringLiteral("seed %1").arg(round)); };
        QVERIFY2(notesHere(world) == sortedNotes(model), fail());
        QVERIFY2(world.lines("SELECT COUNT(*) FROM gas") == QStringList{QString::number(2 * model.size())},
                 fail());
        QVERIFY2(world.lines("SELECT COUNT(DISTINCT DiveID) FROM main") ==
                     QStringList{QString::number(model.size())},
                 fail());
        const QByteArray merged = world.snapshot(false);
        if (merged == stored) {
            continue;
        }
        QVERIFY2(world.undo().state == State::Done && world.snapshot(false) == stored, fail());
        QVERIFY2(notesHere(world) == sortedNotes(before), fail());
        QVERIFY2(world.redo().state == State::Done && world.snapshot(false) == merged, fail());
    }
}

QTEST_GUILESS_MAIN(TestMerge)
#include "test_merge.moc"
