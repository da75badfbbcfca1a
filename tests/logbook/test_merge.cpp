// Which dives, details and entries a merge brings, and under which names.

#include "platform/storefile.h"
#include "store/backup.h"
#include "tests/logbook/mergeworld.h"

#include <QFileInfo>

using namespace benthor;
using namespace benthor::logbook;
using tests::addWholeDive;
using tests::kOld;
using tests::kText;
using tests::MainRow;
using tests::MergeWorld;
using tests::taking;
using State = TurnedAct::State;

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
    void theWordsTellWhatHappened();
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

QTEST_GUILESS_MAIN(TestMerge)
#include "test_merge.moc"
