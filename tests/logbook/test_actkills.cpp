#include "platform/faultpoint.h"
#include "platform/storefile.h"
#include "store/backup.h"
#include "tests/logbook/actworld.h"
#include "tests/support/killed.h"
#include "tests/support/killingdisk.h"

#include <QFileInfo>

using namespace benthor;
using namespace benthor::logbook;
using tests::ActWorld;
using State = TurnedAct::State;

namespace {

/// A deed, and what the store holds before and behind it.
struct Deed {
    const char* name;
    std::function<void(const ActWorld&)> before;
    std::function<void(const ActWorld&)> deed;
    const char* undoBefore;
    const char* undoAfter;
};

void merge(const ActWorld& world) {
    recordact(process().database, ActKind::Merge, [&](ActRecorder& act) {
        world.addDive(8);
        act.diveCame(world.id(8));
        act.diveChanges(world.id(1));
        process().database.execute("UPDATE main SET site = 'Reef' WHERE DiveID = 'D0000001'");
        process().database.execute("INSERT INTO site VALUES ('Reef')");
        act.entryCame(u"site", QStringLiteral("Reef"));
    });
}

void trashOne(const ActWorld& world) {
    world.del({2});
}

const std::vector<Deed>& deeds() {
    static const std::vector<Deed> all{
        {"delete", [](const ActWorld&) {}, [](const ActWorld& world) { world.del({2}); }, "",
         "delete of 1 dive"},
        {"save", [](const ActWorld&) {},
         [](const ActWorld& world) { world.save(1, QStringLiteral("n"), {QStringLiteral("Bert")}); }, "",
         "details of D0000001"},
        {"merge", [](const ActWorld&) {}, &merge, "", "merge of 1 dive"},
        {"undo of a delete", &trashOne, [](const ActWorld& world) { world.undo(); }, "delete of 1 dive", ""},
        {"redo of a delete",
         [](const ActWorld& world) {
             trashOne(world);
             world.undo();
         },
         [](const ActWorld& world) { world.redo(); }, "", "delete of 1 dive"},
        {"undo of a merge", &merge, [](const ActWorld& world) { world.undo(); }, "merge of 1 dive", ""},
        {"put back", &trashOne,
         [](const ActWorld& world) {
             putback(process().database, world.folder, {trasheddives(process().database).front().id});
         },
         "delete of 1 dive", ""},
        {"delete for good", &trashOne,
         [](const ActWorld&) {
             deleteforgood(process().database, {trasheddives(process().database).front().id});
         },
         "delete of 1 dive", ""},
    };
    return all;
}

/// As the program holds its store: a test that is about the disk leaves the engine's care as it is.
void openStore(const ActWorld& world) {
    process().database.close();
    process().database.open(world.storePath());
}

void prepare(const ActWorld& world, const Deed& deed) {
    world.addDive(1);
    world.addDive(2);
    deed.before(world);
}

/// What stands in the store and what the menu says of it are those before the deed or those behind it.
enum class Found { Before, After };
Found judge(const ActWorld& world, const Deed& deed, const QByteArray& before, const QByteArray& after) {
    openStore(world);
    const QByteArray now = world.snapshot(false);
    const QString words = world.undoWords();
    const bool isBefore = now == before && words == QLatin1String(deed.undoBefore);
    const bool isAfter = now == after && words == QLatin1String(deed.undoAfter);
    [&] {
        QVERIFY2(isBefore || isAfter, qPrintable(words));
        QVERIFY(store::examinestore(world.storePath()).sound());
        if (QFileInfo(world.actsFile()).size() > 0) {
            QVERIFY(platform::examineDatabase(world.actsFile(), {QStringLiteral("rbacts_act")}).sound());
        }
    }();
    return isAfter ? Found::After : Found::Before;
}

QByteArray stateBehind(const Deed& deed) {
    const ActWorld world;
    prepare(world, deed);
    deed.deed(world);
    return world.snapshot(false);
}

/// What a commit that was killed leaves for the next one.
QStringList leftOver(const QString& folder) {
    return QDir(folder).entryList({QStringLiteral("*-mj*"), QStringLiteral("*-journal")},
                                  QDir::Files | QDir::Hidden);
}

using Killer = std::function<bool(int last, const std::function<void()>& work)>;

/// Kills at every step in turn; then what was begun is done, or taken back, as if nothing had been.
void killAtEveryStep(const Deed& deed, const Killer& isKilled, int leastSteps) {
    const QByteArray after = stateBehind(deed);
    int asBefore = 0;
    int step = 1;
    for (;; ++step) {
        const ActWorld world;
        prepare(world, deed);
        const QByteArray before = world.snapshot(false);
        process().database.close();
        const bool killed = isKilled(step, [&] {
            openStore(world);
            deed.deed(world);
        });
        // Another start comes first, as it does behind a crash.
        if (step % 2 == 0) {
            store::maintainstore(world.folder);
        }
        const Found found = judge(world, deed, before, after);
        if (found == Found::Before) {
            ++asBefore;
            deed.deed(world);
            QCOMPARE(world.snapshot(false), after);
        }
        world.undoWords(); // by the next look at the acts nothing is left lying about
        QCOMPARE(leftOver(world.folder.root()), QStringList());
        if (QTest::currentTestFailed()) {
            QFAIL(qPrintable(QStringLiteral("killed at step %1").arg(step)));
        }
        if (!killed) {
            QCOMPARE(static_cast<int>(found), static_cast<int>(Found::After));
            break;
        }
    }
    QVERIFY2(step > leastSteps, qPrintable(QString::number(step)));
    QVERIFY(asBefore > 0);
}

} // namespace

class TestActKills : public QObject {
    Q_OBJECT

private slots:
    void killedAtAnyStepStoreAndActsAreBothAsBeforeOrBothBehind_data();
    void killedAtAnyStepStoreAndActsAreBothAsBeforeOrBothBehind();
    void killedWithinACommitStoreAndActsAreBothAsBeforeOrBothBehind_data();
    void killedWithinACommitStoreAndActsAreBothAsBeforeOrBothBehind();
    void killedWithinACommitAndMovedElsewhereBothAreAsBeforeOrBehind();
    void aStepThatFailsLeavesBothAsBeforeOrTheDeedDone_data();
    void aStepThatFailsLeavesBothAsBeforeOrTheDeedDone();
    void aDiskThatIsFullForTheActsAloneLetsTheDeedGoOn();
    void aFileThatWaitedIsNotLostByAKill();
};

namespace {
void addDeeds() {
    QTest::addColumn<int>("number");
    for (size_t i = 0; i < deeds().size(); ++i) {
        QTest::newRow(deeds()[i].name) << static_cast<int>(i);
    }
}
} // namespace

void TestActKills::killedAtAnyStepStoreAndActsAreBothAsBeforeOrBothBehind_data() {
    addDeeds();
}

void TestActKills::killedAtAnyStepStoreAndActsAreBothAsBeforeOrBothBehind() {
    QFETCH(int, number);
    const Killer killer = [](int step, const std::function<void()>& work) {
        return tests::isKilledAt(step, work);
    };
    killAtEveryStep(deeds()[static_cast<size_t>(number)], killer, 3);
}

void TestActKills::killedWithinACommitStoreAndActsAreBothAsBeforeOrBothBehind_data() {
    addDeeds();
}

/// Each write, sync and removal of the engine: also those between the two files.
void TestActKills::killedWithinACommitStoreAndActsAreBothAsBeforeOrBothBehind() {
    QFETCH(int, number);
    const Deed& deed = deeds()[static_cast<size_t>(number)];
    killAtEveryStep(deed, &tests::isKilledAtDisk, QByteArray(deed.name) == "delete for good" ? 8 : 20);
}

/// As a stick that is pulled out within a delete and has another path at its next computer.
void TestActKills::killedWithinACommitAndMovedElsewhereBothAreAsBeforeOrBehind() {
    const Deed& deed = deeds().front();
    const QByteArray after = stateBehind(deed);
    bool killed = true;
    int namedFiles = 0;
    for (int step = 1; killed; ++step) {
        const ActWorld world;
        prepare(world, deed);
        const QByteArray before = world.snapshot(false);
        process().database.close();
        killed = tests::isKilledAtDisk(step, [&] {
            openStore(world);
            deed.deed(world);
        });
        const QTemporaryDir elsewhere;
        const QDir from(world.folder.root());
        for (const QString& name : from.entryList(QDir::Files | QDir::Hidden)) {
            QVERIFY(QFile::rename(from.filePath(name), elsewhere.filePath(name)));
            namedFiles += name.contains(QLatin1String("-mj")) ? 1 : 0;
        }
        const QString store = elsewhere.filePath(QStringLiteral("rb.mdb"));
        if (step % 2 == 0) {
            QVERIFY(store::examinestore(store).sound());
            store::maintainstore(platform::ProgramFolder(elsewhere.path()));
        }
        process().database.open(store);
        const QByteArray now = world.snapshot(false);
        const QString words = world.undoWords();
        QVERIFY((now == before && words.isEmpty()) ||
                (now == after && words == QLatin1String(deed.undoAfter)));
        if (now == before) {
            deed.deed(world);
            QCOMPARE(world.snapshot(false), after);
        }
        world.undoWords();
        QCOMPARE(leftOver(elsewhere.path()), QStringList());
        process().database.close();
        if (QTest::currentTestFailed()) {
            QFAIL(qPrintable(QStringLiteral("killed at step %1").arg(step)));
        }
    }
    QVERIFY(namedFiles > 0);
}

void TestActKills::aStepThatFailsLeavesBothAsBeforeOrTheDeedDone_data() {
    addDeeds();
}

/// Once, and from then on. Where the acts fail, a delete, a save and a merge are done all the same.
void TestActKills::aStepThatFailsLeavesBothAsBeforeOrTheDeedDone() {
    QFETCH(int, number);
    const Deed& deed = deeds()[static_cast<size_t>(number)];
    const QByteArray after = stateBehind(deed);
    for (const bool once : {true, false}) {
        bool reached = true;
        for (int step = 1; reached; ++step) {
            const ActWorld world;
            prepare(world, deed);
            const QByteArray before = world.snapshot(false);
            const QString wordsBefore = world.undoWords();
            int count = 0;
            bool threw = false;
            std::string last;
            {
                const platform::FaultInjection fault([&](std::string_view name) {
                    last = name;
                    ++count;
                    return (once ? count == step : count >= step) ? ENOSPC : 0;
                });
                try {
                    deed.deed(world);
                } catch (const platform::StoreError&) {
                    threw = true;
                }
            }
            reached = count >= step;
            const QByteArray now = world.snapshot(false);
            QVERIFY(now == before || now == after);
            // A dive that is deleted stays deleted where clearing up behind it fails.
            QVERIFY2(
                threw || now == after,
                qPrintable(QStringLiteral("%1 %2 %3").arg(step).arg(once).arg(QString::fromStdString(last))));
            QVERIFY(!threw || now == before || QByteArray(deed.name) == "delete");
            if (now == before && before != after) {
                QCOMPARE(world.undoWords(), wordsBefore);
            }
            if (before == after) {
                QCOMPARE(world.undoWords(), threw ? wordsBefore : QLatin1String(deed.undoAfter));
            }
            world.reopen();
            QCOMPARE(world.snapshot(false), now);
            if (QTest::currentTestFailed()) {
                QFAIL(qPrintable(QStringLiteral("failed at step %1, %2").arg(step).arg(once)));
            }
        }
    }
}

void TestActKills::aDiskThatIsFullForTheActsAloneLetsTheDeedGoOn() {
    for (const char* kind : {"delete", "save"}) {
        const ActWorld world;
        world.addDive(1);
        world.addDive(2);
        world.save(1, QStringLiteral("before"));
        process().database.close();
        const pid_t child = fork();
        if (child == 0) {
            const tests::WatchedDisk disk([](const std::string& step) {
                return step != "write rb-acts.db" && step != "write rb-acts.db-journal";
            });
            process().database.open(world.storePath());
            const bool isDelete = QByteArray(kind) == "delete";
            const QString fault =
                isDelete ? world.del({2}).fault : world.save(2, QStringLiteral("n")).notTakenBack;
            const QStringList held =
                ActWorld::ProgramFixture::rows("SELECT divenote FROM main WHERE DiveID = 'D0000002'");
            _exit(!fault.isEmpty() && held == (isDelete ? QStringList() : QStringList{"n"}) ? 0 : 1);
        }
        int status = 0;
        QCOMPARE(waitpid(child, &status, 0), child);
        QVERIFY(WIFEXITED(status) && WEXITSTATUS(status) == 0);
        world.openStore();
        QCOMPARE(world.undoWords(), "details of D0000001");
        QCOMPARE(world.undo().state, State::Done);
    }
}

/// At every step of a delete and of its undo its bytes stand in `new`, in `old`, or both.
void TestActKills::aFileThatWaitedIsNotLostByAKill() {
    bool killed = true;
    for (int step = 1; killed; ++step) {
        const ActWorld world;
        world.addDive(1);
        world.putWaiting(QStringLiteral("Dive1.txt"), "its bytes");
        world.del({1});
        process().database.close();
        killed = tests::isKilledAt(step, [&] {
            openStore(world);
            world.undo();
        });
        openStore(world);
        const bool isBack = world.dives().size() == 1;
        tidyacts(process().database, world.folder); // as the next list does
        QCOMPARE(world.names(QStringLiteral("new")), isBack ? QStringList{"Dive1.txt"} : QStringList());
        QCOMPARE(world.bytesOf(QStringLiteral("old"), QStringLiteral("Dive1.txt")), "its bytes");
        QCOMPARE(QFile::exists(world.folder.path(u"new", u"Dive1-2.txt")), false);
    }
}

QTEST_GUILESS_MAIN(TestActKills)
#include "test_actkills.moc"
