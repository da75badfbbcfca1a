// What a merge leaves where it fails, is stopped, killed, or taken back; and many random ones.

#include "platform/faultpoint.h"
#include "platform/storefile.h"
#include "store/backup.h"
#include "tests/logbook/mergeworld.h"
#include "tests/support/killed.h"

#include <QFileInfo>
#include <QRandomGenerator>

using namespace benthor;
using namespace benthor::logbook;
using tests::addWholeDive;
using tests::kOld;
using tests::kText;
using tests::MainRow;
using tests::MergeWorld;
using tests::taking;
using State = TurnedAct::State;

class TestMergeSafety : public QObject {
    Q_OBJECT

private slots:
    void aProvenBackupIsMadeFirst();
    void withoutABackupNothingIsMerged();
    void whatFailsLeavesNothing_data();
    void whatFailsLeavesNothing();
    void aMergeCanBeStopped();
    void aMergeIsTakenBackAndDoneAgain();
    void aDiveThatNothingIsKnownOfIsTakenBackUnderItsNewNumber();
    void whereNoActCanBeKeptItMergesAllTheSame();
    void killedAtAnyStepTheStoreIsThatOfBeforeOrOfAfter();
    void randomMergesAgreeWithAPlainModel();
};

void TestMergeSafety::aProvenBackupIsMadeFirst() {
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

void TestMergeSafety::withoutABackupNothingIsMerged() {
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

void TestMergeSafety::whatFailsLeavesNothing_data() {
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
void TestMergeSafety::whatFailsLeavesNothing() {
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

void TestMergeSafety::aMergeCanBeStopped() {
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

void TestMergeSafety::aMergeIsTakenBackAndDoneAgain() {
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
void TestMergeSafety::aDiveThatNothingIsKnownOfIsTakenBackUnderItsNewNumber() {
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

void TestMergeSafety::whereNoActCanBeKeptItMergesAllTheSame() {
    MergeWorld world;
    addWholeDive(world);
    QVERIFY(QDir().mkdir(world.actsFile()));
    const MergeResult result = world.merge();
    QCOMPARE(result.came, 1);
    QCOMPARE(result.dives, QStringList{"D0000001"});
    QVERIFY(!result.notTakenBack.isEmpty());
    QVERIFY(mergeText(result).contains(result.notTakenBack));
}

void TestMergeSafety::killedAtAnyStepTheStoreIsThatOfBeforeOrOfAfter() {
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
void TestMergeSafety::randomMergesAgreeWithAPlainModel() {
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

QTEST_GUILESS_MAIN(TestMergeSafety)
#include "test_merge_safety.moc"
