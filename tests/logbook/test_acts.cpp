#include "tests/logbook/actworld.h"

#include "divefiles/owedprofiles.h"

using namespace benthor;
using namespace benthor::logbook;
using tests::ActWorld;
using State = TurnedAct::State;

class TestActs : public QObject {
    Q_OBJECT

private slots:
    void undoOfADeleteBringsBackEveryByteOfEveryRow();
    void redoDeletesAgainAsADeleteDoes();
    void divesDeletedTogetherAreOneAct();
    void actsAreTakenBackInTheirOrderBehindARestartToo();
    void theLastFiftyActsAreKept();
    void aSaveThatChangedNothingIsNoAct();
    void aNewActEndsWhatCouldBeRedone();
    void undoOfASaveBringsBackNullsBuddiesAndLists();
    void anEntryThatAnotherDiveNamesStaysInItsList();
    void whereTheNumberIsTakenTheDiveComesBackUnderANewOne();
    void earlierActsFollowADiveToItsNewNumber();
    void theCounterIsPutRight();
    void theWaitingFileOfADeletedDiveComesBack();
    void aWaitingFileWhoseNameIsTakenComesBackUnderAnother();
    void aMergeIsTakenBackAndDoneAgain();
    void aMergeThatTookOtherDetailsIsTakenBack();
    void aDiveThatIsThereAlreadyIsNamedAndTheActSkipped();
    void aSaveOfADiveThatIsAnotherByNowIsSkipped();
    void noActIsHalfDone();
    void twoDivesThatHoldTheSameComeBackBoth();
    void aProfileThatIsOwedIsKnownAgain();
    void rowsOfTheStarComeBack();
    void aRowOfADiveThatWasChangedElsewhereIsNotDeletedByARedo();
    void onlyTheActThatTheMenuMeantIsTurned();
};

void TestActs::undoOfADeleteBringsBackEveryByteOfEveryRow() {
    const ActWorld world;
    for (int number = 1; number <= 4; ++number) {
        world.addDive(number);
    }
    const QByteArray before = world.snapshot();
    QVERIFY(world.del({3}).kept);
    QVERIFY(world.snapshot() != before);
    QCOMPARE(world.undoWords(), "delete of 1 dive");
    const TurnedAct undone = world.undo();
    QCOMPARE(undone.state, State::Done);
    QCOMPARE(undone.back, QStringList{"D0000003"});
    QCOMPARE(turnedText(undone), QString());
    QCOMPARE(world.snapshot(), before);
    QCOMPARE(world.undoWords(), QString());
}

void TestActs::redoDeletesAgainAsADeleteDoes() {
    const ActWorld world;
    world.addDive(1);
    world.addDive(2);
    const QByteArray before = world.snapshot();
    world.del({2});
    const QByteArray deleted = world.snapshot();
    QVERIFY(deleted.contains("buddylist")); // a delete leaves the buddies of its dives
    world.undo();
    QCOMPARE(world.redoWords(), "delete of 1 dive");
    QCOMPARE(world.redo().state, State::Done);
    QCOMPARE(world.snapshot(), deleted);
    QCOMPARE(world.redoWords(), QString());
    world.undo();
    QCOMPARE(world.snapshot(), before);
}

void TestActs::divesDeletedTogetherAreOneAct() {
    const ActWorld world;
    for (int number = 1; number <= 5; ++number) {
        world.addDive(number);
    }
    const QByteArray before = world.snapshot();
    world.del({1, 3, 5});
    QCOMPARE(world.undoWords(), "delete of 3 dives");
    QCOMPARE(world.dives(), QStringList({"D0000002", "D0000004"}));
    QCOMPARE(world.undo().back.size(), 3);
    QCOMPARE(world.snapshot(), before);
}

void TestActs::actsAreTakenBackInTheirOrderBehindARestartToo() {
    const ActWorld world;
    for (int number = 1; number <= 4; ++number) {
        world.addDive(number);
    }
    QList<QByteArray> states{world.snapshot(false)};
    world.del({2});
    states += world.snapshot(false);
    world.save(3, QStringLiteral("a note"), {QStringLiteral("Bert")});
    states += world.snapshot(false);
    world.del({1, 4});
    states += world.snapshot(false);
    world.reopen();
    for (int state = 2; state >= 0; --state) {
        QCOMPARE(world.undo().state, State::Done);
        QCOMPARE(world.snapshot(false), states.at(state));
        world.reopen();
    }
    QCOMPARE(world.undo().state, State::Nothing);
    QCOMPARE(world.redoWords(), "delete of 1 dive");
    for (int state = 1; state <= 3; ++state) {
        QCOMPARE(world.redo().state, State::Done);
        QCOMPARE(world.snapshot(false), states.at(state));
        world.reopen();
    }
    QCOMPARE(world.redo().state, State::Nothing);
    QCOMPARE(world.undoWords(), "delete of 2 dives");
}

void TestActs::theLastFiftyActsAreKept() {
    const ActWorld world;
    world.addDive(1);
    for (int note = 1; note <= 53; ++note) {
        world.save(1, QString::number(note));
    }
    int undone = 0;
    while (world.undo().state == State::Done) {
        ++undone;
    }
    QCOMPARE(undone, 50);
    QCOMPARE(ActWorld::ProgramFixture::rows("SELECT divenote FROM main"), QStringList{"3"});
}

void TestActs::aSaveThatChangedNothingIsNoAct() {
    const ActWorld world;
    world.addDive(1);
    world.save(1, QStringLiteral("note"), {QStringLiteral("Anna")}, QStringLiteral("Reef"));
    QCOMPARE(world.undoWords(), "details of D0000001");
    world.undo();
    QCOMPARE(world.redoWords(), "details of D0000001");
    world.redo();
    world.save(1, QStringLiteral("note"), {QStringLiteral("Anna")}, QStringLiteral("Reef"));
    world.undo();
    QCOMPARE(world.undoWords(), QString());
    // What can be redone outlives it as well: the store is the same.
    const DiverAdds stored = loaddetails(process().database, world.id(1), u"metre").diver;
    savedetails(process().database, store::identifydive(process().database, world.id(1)), stored);
    world.save(1, stored.divenote, stored.buddies, stored.site);
    world.undo();
    QCOMPARE(world.undoWords(), QString());
}

void TestActs::aNewActEndsWhatCouldBeRedone() {
    const ActWorld world;
    world.addDive(1);
    world.addDive(2);
    world.del({1});
    world.undo();
    QCOMPARE(world.redoWords(), "delete of 1 dive");
    world.save(2, QStringLiteral("x"));
    QCOMPARE(world.redoWords(), QString());
    QCOMPARE(world.undoWords(), "details of D0000002");
    world.undo();
    QCOMPARE(world.undoWords(), QString());
}

void TestActs::undoOfASaveBringsBackNullsBuddiesAndLists() {
    const ActWorld world;
    world.addDive(1);
    const QByteArray before = world.snapshot(false);
    QVERIFY(world
                .save(1, QStringLiteral("n"), {QStringLiteral("Bert"), QStringLiteral("Bert")},
                      QStringLiteral("Reef"))
                .notTakenBack.isEmpty());
    const QByteArray saved = world.snapshot(false);
    QCOMPARE(ActWorld::ProgramFixture::rows("SELECT buddy FROM buddy"), QStringList{"Bert"});
    QCOMPARE(world.undo().state, State::Done);
    QCOMPARE(world.snapshot(false), before);
    QCOMPARE(world.redo().state, State::Done);
    QCOMPARE(world.snapshot(false), saved);
}

void TestActs::anEntryThatAnotherDiveNamesStaysInItsList() {
    const ActWorld world;
    world.addDive(1);
    world.addDive(2);
    world.save(1, QStringLiteral("n"), {}, QStringLiteral("Reef"));
    process().database.execute("UPDATE main SET site = 'Reef' WHERE DiveID = 'D0000002'");
    world.undo();
    QCOMPARE(ActWorld::ProgramFixture::rows("SELECT Site FROM site"), QStringList{"Reef"});
    world.redo();
    QCOMPARE(ActWorld::ProgramFixture::rows("SELECT Site FROM site"), QStringList{"Reef"});
}

void TestActs::whereTheNumberIsTakenTheDiveComesBackUnderANewOne() {
    const ActWorld world;
    world.addDive(1);
    world.addDive(2);
    QByteArray before = world.snapshot(false);
    world.del({2});
    const QByteArray deleted = world.snapshot(false);
    store::newdive(QStringLiteral("V9")); // takes the number, and what was left under it goes
    QCOMPARE(process().currentdiveid, "D0000002");
    const TurnedAct undone = world.undo();
    QCOMPARE(undone.state, State::Done);
    QCOMPARE(undone.renamed.size(), 1U);
    QVERIFY(turnedText(undone).contains(QLatin1String("D0000002")));
    QVERIFY(turnedText(undone).contains(QLatin1String("D0000003")));
    QCOMPARE(world.counter(), "D0000003");
    for (const char* table : {"gas", "tissue", "buddylist"}) {
        const QByteArray sql = QByteArray("SELECT COUNT(*) FROM ") + table + " WHERE diveid = 'D0000003'";
        QVERIFY(world.rows().read(sql).front().at(0).integer > 0);
        const QByteArray left = QByteArray("SELECT COUNT(*) FROM ") + table + " WHERE diveid = 'D0000002'";
        QCOMPARE(world.rows().read(left).front().at(0).integer, 0);
    }
    // but for its number it is what it was
    QVERIFY(process().mainrecordset.isOpen());
    process().mainrecordset.close();
    process().database.execute("DELETE FROM main WHERE DiveID = 'D0000002'");
    for (const char* table : {"main", "gas", "tissue", "buddylist"}) {
        world.rows().change(QByteArray("UPDATE ") + table +
                            " SET diveid = 'D0000002' WHERE diveid = 'D0000003'");
    }
    process().database.execute("UPDATE serialno SET serial_no = 'D0000002'");
    QCOMPARE(world.snapshot(false), before);
}

void TestActs::earlierActsFollowADiveToItsNewNumber() {
    const ActWorld world;
    world.addDive(1);
    world.addDive(2);
    world.save(2, QStringLiteral("first"));
    world.save(2, QStringLiteral("second"));
    world.del({2});
    store::newdive(QStringLiteral("V9"));
    world.undo();
    QCOMPARE(world.undo().state, State::Done);
    QCOMPARE(ActWorld::ProgramFixture::rows("SELECT divenote FROM main WHERE DiveID = 'D0000003'"),
             QStringList{"first"});
    QCOMPARE(world.redo().state, State::Done);
    QCOMPARE(ActWorld::ProgramFixture::rows("SELECT divenote FROM main WHERE DiveID = 'D0000003'"),
             QStringList{"second"});
    QCOMPARE(world.redo().state, State::Done);
    QCOMPARE(world.dives(), QStringList({"D0000001", "D0000002"}));
    QCOMPARE(world.counter(), "D0000002");
}

void TestActs::theCounterIsPutRight() {
    const ActWorld world;
    world.addDive(1);
    world.addDive(5);
    world.del({5});
    QCOMPARE(world.counter(), "D0000001");
    world.undo();
    QCOMPARE(world.counter(), "D0000005");
    world.redo();
    QCOMPARE(world.counter(), "D0000001");
    process().database.execute("UPDATE serialno SET serial_no = 'D0000009'");
    putback(process().database, world.folder, {trasheddives(process().database).front().id});
    QCOMPARE(world.counter(), "D0000005");
}

void TestActs::theWaitingFileOfADeletedDiveComesBack() {
    const ActWorld world;
    world.addDive(1);
    world.putWaiting(QStringLiteral("Dive1.txt"), "its bytes\r\n");
    world.del({1});
    QCOMPARE(world.names(QStringLiteral("new")), QStringList());
    QCOMPARE(world.bytesOf(QStringLiteral("old"), QStringLiteral("Dive1.txt")), "its bytes\r\n");
    const TurnedAct undone = world.undo();
    QCOMPARE(undone.files, QStringList{"Dive1.txt"});
    QCOMPARE(world.bytesOf(QStringLiteral("new"), QStringLiteral("Dive1.txt")), "its bytes\r\n");
    world.redo();
    QCOMPARE(world.names(QStringLiteral("new")), QStringList());
    world.undo();
    QCOMPARE(world.bytesOf(QStringLiteral("new"), QStringLiteral("Dive1.txt")), "its bytes\r\n");
    QCOMPARE(world.names(QStringLiteral("old")), QStringList{"Dive1.txt"});
}

void TestActs::aWaitingFileWhoseNameIsTakenComesBackUnderAnother() {
    const ActWorld world;
    world.addDive(1);
    world.putWaiting(QStringLiteral("Dive1.txt"), "its bytes");
    world.del({1});
    world.putWaiting(QStringLiteral("Dive1.txt"), "another's");
    QCOMPARE(world.undo().files, QStringList{"Dive1-2.txt"});
    QCOMPARE(world.bytesOf(QStringLiteral("new"), QStringLiteral("Dive1.txt")), "another's");
    QCOMPARE(world.bytesOf(QStringLiteral("new"), QStringLiteral("Dive1-2.txt")), "its bytes");
}

void TestActs::aMergeIsTakenBackAndDoneAgain() {
    const ActWorld world;
    world.addDive(1);
    const QByteArray before = world.snapshot(false);
    world.put(QStringLiteral("dbtxt"), QStringLiteral("XDive7.txt"), "profile");
    world.put(QStringLiteral("old"), QStringLiteral("Dive7.txt"), "profile");
    const ActRecord record = recordact(process().database, ActKind::Merge, [&](ActRecorder& act) {
        for (const int number : {7, 8}) {
            world.addDive(number);
            act.diveCame(world.id(number));
        }
        process().database.execute("INSERT INTO site VALUES ('Reef')");
        act.entryCame(u"site", QStringLiteral("Reef"));
    });
    QVERIFY(record.kept);
    const QByteArray merged = world.snapshot(false);
    QCOMPARE(world.undoWords(), "merge of 2 dives");
    QCOMPARE(world.undo().state, State::Done);
    QCOMPARE(world.snapshot(false), before);
    QCOMPARE(trasheddives(process().database).size(), 0U); // nobody deleted them
    QCOMPARE(world.names(QStringLiteral("dbtxt")), QStringList{"XDive7.txt"});
    QCOMPARE(world.names(QStringLiteral("old")), QStringList{"Dive7.txt"});
    world.reopen();
    QCOMPARE(world.redo().state, State::Done);
    QCOMPARE(world.snapshot(false), merged);
    QCOMPARE(world.undo().state, State::Done);
    QCOMPARE(world.snapshot(false), before);
}

void TestActs::aMergeThatTookOtherDetailsIsTakenBack() {
    const ActWorld world;
    world.addDive(1);
    const QByteArray before = world.snapshot(false);
    recordact(process().database, ActKind::Merge, [&](ActRecorder& act) {
        act.diveChanges(world.id(1));
        process().database.execute("UPDATE main SET site = 'theirs', weather = '' WHERE DiveID = 'D0000001'");
        process().database.execute("INSERT INTO buddylist VALUES ('D0000001', 'Theirs')");
    });
    const QByteArray merged = world.snapshot(false);
    QCOMPARE(world.undoWords(), "merge of details");
    world.undo();
    QCOMPARE(world.snapshot(false), before);
    world.redo();
    QCOMPARE(world.snapshot(false), merged);
}

/// As behind a restored backup: the dive that was deleted is there.
void TestActs::aDiveThatIsThereAlreadyIsNamedAndTheActSkipped() {
    const ActWorld world;
    world.addDive(1);
    world.addDive(2);
    process().database.close();
    QVERIFY(platform::copyFile(world.storePath(), world.folder.path(u"backup.mdb")));
    world.openStore();
    world.save(1, QStringLiteral("x"));
    world.del({2});
    process().database.close();
    QVERIFY(platform::copyFile(world.folder.path(u"backup.mdb"), world.storePath()));
    world.openStore();
    const QByteArray restored = world.snapshot();
    const TurnedAct undone = world.undo();
    QCOMPARE(undone.state, State::DoesNotFit);
    QVERIFY(turnedText(undone).contains(QLatin1String("delete of 1 dive")));
    QVERIFY(turnedText(undone).contains(QLatin1String("D0000002")));
    QCOMPARE(world.snapshot(), restored);
    QCOMPARE(world.undoWords(), "details of D0000001");
    QCOMPARE(world.undo().state, State::DoesNotFit);
    QCOMPARE(world.snapshot(), restored);
    QCOMPARE(world.undo().state, State::Nothing);
    QCOMPARE(trasheddives(process().database).size(), 1U); // it is kept all the same
}

void TestActs::aSaveOfADiveThatIsAnotherByNowIsSkipped() {
    const ActWorld world;
    world.addDive(1);
    world.save(1, QStringLiteral("x"));
    process().database.execute("UPDATE main SET Location = 'Another' WHERE DiveID = 'D0000001'");
    const QByteArray now = world.snapshot();
    const TurnedAct undone = world.undo();
    QCOMPARE(undone.state, State::DoesNotFit);
    QVERIFY(undone.reason.contains(QLatin1String("D0000001")));
    QCOMPARE(world.snapshot(), now);
}

void TestActs::noActIsHalfDone() {
    const ActWorld world;
    for (int number = 1; number <= 3; ++number) {
        world.addDive(number);
    }
    process().database.close();
    QVERIFY(platform::copyFile(world.storePath(), world.folder.path(u"backup.mdb")));
    world.openStore();
    world.del({1, 2, 3});
    process().database.close();
    QVERIFY(platform::copyFile(world.folder.path(u"backup.mdb"), world.storePath()));
    world.openStore();
    deletedive(process().database, world.id(2));
    deletedive(process().database, world.id(3));
    const QByteArray now = world.snapshot();
    QCOMPARE(world.undo().state, State::DoesNotFit);
    QCOMPARE(world.snapshot(), now);
    QCOMPARE(world.dives(), QStringList{"D0000001"});
}

void TestActs::twoDivesThatHoldTheSameComeBackBoth() {
    const ActWorld world;
    world.addDive(1);
    for (const char* table : {"main", "gas", "tissue", "buddylist"}) {
        world.rows().change(QByteArray("CREATE TEMP TABLE twin AS SELECT * FROM main.") + table);
        world.rows().change("UPDATE twin SET diveid = 'D0000002'");
        world.rows().change(QByteArray("INSERT INTO main.") + table + " SELECT * FROM twin");
        world.rows().change("DROP TABLE twin");
    }
    store::syncserialno();
    const QByteArray before = world.snapshot(false);
    world.del({1});
    world.undo();
    QCOMPARE(world.snapshot(false).size(), before.size());
    world.del({1, 2});
    QCOMPARE(world.undo().state, State::Done);
    QCOMPARE(world.dives(), QStringList({"D0000001", "D0000002"}));
}

void TestActs::aProfileThatIsOwedIsKnownAgain() {
    const ActWorld world;
    world.addDive(1);
    world.put(QStringLiteral("old"), QStringLiteral("Dive1.txt"), "profile");
    const auto owed =
        divefiles::owedprofile(world.folder, QStringLiteral("XDive1.txt"), QStringLiteral("Dive1.txt"));
    divefiles::noteowed(process().database, *owed);
    world.del({1});
    divefiles::bringowedprofiles(world.folder, process().database); // as the next start does
    QCOMPARE(divefiles::owedprofiles(process().database).size(), 0U);
    world.undo();
    QCOMPARE(divefiles::owedprofiles(process().database), std::vector{*owed});
    world.del({1});
    world.undo();
    QCOMPARE(divefiles::owedprofiles(process().database).size(), 1U);
}

void TestActs::rowsOfTheStarComeBack() {
    const ActWorld world;
    world.addDive(1);
    process().database.execute("INSERT INTO main (DiveID, Location) VALUES ('*', 'left over')");
    process().database.execute("INSERT INTO gas (diveid) VALUES ('*')");
    store::syncserialno();
    const QByteArray before = world.snapshot(false);
    world.del({1});
    QCOMPARE(world.dives(), QStringList());
    QCOMPARE(world.undoWords(), "delete of 1 dive");
    world.undo();
    QCOMPARE(world.snapshot(false).size(), before.size());
    QCOMPARE(world.dives(), QStringList({"*", "D0000001"}));
}

void TestActs::aRowOfADiveThatWasChangedElsewhereIsNotDeletedByARedo() {
    const ActWorld world;
    world.addDive(1);
    world.del({1});
    world.undo();
    process().database.execute("UPDATE gas SET GasN2 = '68'");
    QCOMPARE(world.redo().state, State::DoesNotFit);
    QCOMPARE(world.dives(), QStringList{"D0000001"});
}

void TestActs::onlyTheActThatTheMenuMeantIsTurned() {
    const ActWorld world;
    world.addDive(1);
    world.addDive(2);
    world.del({1});
    const qint64 meant = actsinhand(process().database).undo.id;
    world.save(2, QStringLiteral("typed meanwhile"));
    QCOMPARE(undoact(process().database, world.folder, meant).state, State::Nothing);
    QCOMPARE(world.dives(), QStringList{"D0000002"});
}

QTEST_GUILESS_MAIN(TestActs)
#include "test_acts.moc"
