#include "tests/logbook/mergeworld.h"
#include "tests/store/jet/jetfolder.h"

using namespace benthor;
using namespace benthor::logbook;
using tests::MainRow;
using tests::MergeWorld;

namespace {

MainRow with(MainRow row, const MainRow& changes) {
    for (auto change = changes.begin(); change != changes.end(); ++change) {
        row[change.key()] = change.value();
    }
    return row;
}

const QString kSuit = QStringLiteral("Suit");
const QString kUser = QStringLiteral("UserName");
const QString kCode = QStringLiteral("Startcode");
const QString kDepth = QStringLiteral("MaxDepth");
const QString kStart = QStringLiteral("startdate");
const QString kDuration = QStringLiteral("Duration");
const QString kFile = QStringLiteral("dbtxtname");
const auto kNull = std::optional<QString>();

} // namespace

class TestMergePlan : public QObject {
    Q_OBJECT

private slots:
    void theSameDiveIsFound_data() {
        QTest::addColumn<MainRow>("here");
        QTest::addColumn<MainRow>("there");
        QTest::addColumn<bool>("same");
        const MainRow dive = MergeWorld::dive(1);
        const auto row = [&](const char* name, const MainRow& here, const MainRow& there, bool same) {
            QTest::newRow(name) << with(dive, here) << with(dive, there) << same;
        };
        row("all the same", {}, {}, true);
        row("another code", {}, {{kCode, "1"}}, false);
        row("the serial was edited here", {{kSuit, "my suit"}}, {}, true);
        row("the serial was edited there", {}, {{kSuit, "dry"}}, true);
        row("the name was edited", {{kUser, "Anna"}}, {}, true);
        row("both were edited", {{kUser, "Anna"}, {kSuit, "dry"}}, {}, false);
        row("another device", {}, {{kUser, "KD9"}, {kSuit, "KD9"}}, false);
        row("blanks and case", {{kSuit, " kd00123 "}, {kUser, "x"}}, {{kUser, "y"}}, true);
        row("blanks around the code", {{kCode, " 810000001 "}}, {}, true);
        row("no serial at all", {{kSuit, kNull}, {kUser, ""}}, {{kSuit, ""}, {kUser, kNull}}, true);
        row("no serial here", {{kSuit, kNull}, {kUser, ""}}, {}, false);
        row("only the suit there", {}, {{kUser, kNull}}, true);
        row("no code there", {}, {{kCode, kNull}}, true);
        row("no code here", {{kCode, ""}}, {}, true);
        row("no code, another device", {{kCode, ""}}, {{kCode, ""}, {kSuit, "x"}, {kUser, "x"}}, true);
        row("no code, depth written otherwise", {}, {{kCode, kNull}, {kDepth, "23.4"}}, true);
        row("no code, another depth", {}, {{kCode, kNull}, {kDepth, "23.5"}}, false);
        row("no code, another duration", {}, {{kCode, kNull}, {kDuration, "41:8"}}, false);
        row("no code, another start", {}, {{kCode, kNull}, {kStart, "2017-07-27 09:50:03"}}, false);
        row("no code and no start", {{kCode, kNull}, {kStart, kNull}}, {{kCode, kNull}, {kStart, kNull}},
            false);
    }
    void theSameDiveIsFound() {
        QFETCH(MainRow, here);
        QFETCH(MainRow, there);
        QFETCH(bool, same);
        MergeWorld world;
        world.addHere(4, here);
        world.addThere(9, there);
        const auto dives = world.plan();
        QCOMPARE(dives.size(), 1U);
        QCOMPARE(dives[0].diveid, "D0000009");
        QCOMPARE(dives[0].group == MergeGroup::New, !same);
        QCOMPARE(dives[0].mine, same ? "D0000004" : "");
    }

    void theBytesOfTheFileMakeADiveTheSame() {
        MergeWorld world;
        world.addHere(1, MergeWorld::dive(1));
        world.put(QStringLiteral("dbtxt"), QStringLiteral("A1.txt"), "the same bytes");
        world.addThere(1, with(MergeWorld::dive(2), {{kSuit, "x"}, {kUser, "y"}}));
        world.putThere(QStringLiteral("dbtxt"), QStringLiteral("A2.txt"), "the same bytes");
        world.addThere(2, with(MergeWorld::dive(3), {{kSuit, "x"}}));
        world.putThere(QStringLiteral("dbtxt"), QStringLiteral("A3.txt"), "the same byteS");
        const auto dives = world.plan();
        QCOMPARE(dives[0].mine, "D0000001");
        QCOMPARE(static_cast<int>(dives[1].group), static_cast<int>(MergeGroup::New));
    }

    /// A full disk left nothing of either; they are two dives.
    void emptyFilesAreNotTheSame() {
        MergeWorld world;
        world.addHere(1, MergeWorld::dive(1));
        world.put(QStringLiteral("dbtxt"), QStringLiteral("A1.txt"), "");
        world.addThere(1, MergeWorld::dive(2));
        world.putThere(QStringLiteral("dbtxt"), QStringLiteral("A2.txt"), "");
        QCOMPARE(static_cast<int>(world.plan()[0].group), static_cast<int>(MergeGroup::New));
    }

    /// A file here that has its name is another dive's, of one that was deleted, say.
    void aFileThatIsMissingThereIsNotLookedForHere() {
        MergeWorld world;
        world.addHere(1, with(MergeWorld::dive(5), {{kFile, "B.txt"}}));
        world.put(QStringLiteral("dbtxt"), QStringLiteral("B.txt"), "of the first one here");
        world.put(QStringLiteral("dbtxt"), QStringLiteral("A1.txt"), "of the second");
        world.addThere(1, MergeWorld::dive(1));
        world.addThere(2, MergeWorld::dive(2));
        world.putThere(QStringLiteral("dbtxt"), QStringLiteral("A2.txt"), "of the second");
        const auto dives = world.plan();
        QCOMPARE(countgroup(dives, MergeGroup::New), 2);
        QCOMPARE(dives[1].mine, "");
    }

    void aNameThatLeadsElsewhereIsNoFile() {
        MergeWorld world;
        world.put(QStringLiteral("dbtxt"), QStringLiteral("A1.txt"), "secret");
        world.addHere(1, MergeWorld::dive(1));
        world.putThere(QStringLiteral("old"), QStringLiteral("A1.txt"), "secret");
        world.addThere(1, with(MergeWorld::dive(2), {{kFile, "../old/A1.txt"}}));
        QCOMPARE(static_cast<int>(world.plan()[0].group), static_cast<int>(MergeGroup::New));
    }

    void ofSeveralHereTheFirstCounts() {
        MergeWorld world;
        world.addHere(3, MergeWorld::dive(1));
        world.addHere(2, MergeWorld::dive(1));
        world.addThere(1, MergeWorld::dive(1));
        const auto dives = world.plan();
        QCOMPARE(dives.size(), 1U);
        QCOMPARE(dives[0].mine, "D0000002");
    }

    void aDiveThatStandsTwiceThereComesOnce() {
        MergeWorld world;
        world.addThere(1, MergeWorld::dive(1));
        world.addThere(2, MergeWorld::dive(1));
        const auto dives = world.plan();
        QCOMPARE(static_cast<int>(dives[0].group), static_cast<int>(MergeGroup::New));
        QCOMPARE(static_cast<int>(dives[1].group), static_cast<int>(MergeGroup::Here));
        QCOMPARE(dives[1].mine, "");
    }

    void otherDetailsAreNamedFieldByField() {
        MergeWorld world;
        world.addHere(1, with(MergeWorld::dive(1), {{"site", "Blue hole"},
                                                    {"divenote", "cold\r\nand deep\r\n"},
                                                    {"Coments", "mine"},
                                                    {"weather", "sun"}}));
        world.addThere(7, with(MergeWorld::dive(1), {{"site", "Blue Hole"},
                                                     {"divenote", "cold\nand deep"},
                                                     {"Coments", "theirs"},
                                                     {"weather", kNull},
                                                     {"sitenote", "a wall"}}));
        world.runThere("INSERT INTO buddylist VALUES ('D0000007', 'Bert')");
        world.runThere("INSERT INTO buddylist VALUES ('D0000007', 'Carla')");
        const auto dives = world.plan();
        QCOMPARE(static_cast<int>(dives[0].group), static_cast<int>(MergeGroup::OtherDetails));
        QStringList words;
        for (const DetailDifference& one : dives[0].differences) {
            words += QStringLiteral("%1|%2|%3|%4|%5")
                         .arg(QString::fromLatin1(one.field), one.caption, one.mine, one.theirs)
                         .arg(one.joins);
        }
        QCOMPARE(words, (QStringList{"site|Site|Blue hole|Blue Hole|0", "sitenote|Site notes||a wall|1",
                                     "Coments|Comments|mine|theirs|1", "buddylist|Buddies||Bert, Carla|0"}));
        QCOMPARE(countgroup(dives, MergeGroup::OtherDetails), 1);
        QCOMPARE(countgroup(dives, MergeGroup::New), 0);
    }

    void aPlanCanBeStopped() {
        MergeWorld world;
        world.addHere(1, MergeWorld::dive(1));
        world.closeThere();
        OtherLogbook other(world.there.root(), world.storePath());
        QVERIFY_EXCEPTION_THROWN(
            planmerge(process().database, world.folder, other, [](int, int) { return false; }), MergeStopped);
    }

    void whatIsNoOtherLogbookIsRefusedInWords() {
        MergeWorld world;
        const auto refusal = [&](const QString& path) {
            try {
                const OtherLogbook other(path, world.storePath());
            } catch (const platform::StoreError& error) {
                return error.text();
            }
            return QString();
        };
        world.closeThere();
        QCOMPARE(refusal(world.there.root()), "");
        QCOMPARE(refusal(world.there.path(u"rb.mdb")), "");
        QVERIFY(refusal(world.folder.root()).contains(QLatin1String("open here")));
        QVERIFY(QFile::link(world.storePath(), world.there.path(u"link.mdb")));
        QVERIFY(refusal(world.there.path(u"link.mdb")).contains(QLatin1String("open here")));
        QVERIFY(refusal(world.there.path(u"old")).contains(QLatin1String("no rb.mdb")));
        QVERIFY(refusal(world.there.path(u"nothing.mdb")).contains(QLatin1String("no file")));
        world.putThere(QStringLiteral("old"), QStringLiteral("text.mdb"), "no store");
        QVERIFY(!refusal(world.there.path(u"old", u"text.mdb")).isEmpty());
    }

    void aJetFileIsAnotherLogbook() {
        REQUIRE_JET_FILES();
        const tests::OurReader reader;
        const QString jet = tests::jetFile("older-store-text.mdb");
        MergeWorld world;
        const QByteArray before = platform::readFile(jet).value();
        OtherLogbook other(jet, world.storePath());
        const auto dives = planmerge(process().database, world.folder, other);
        QCOMPARE(countgroup(dives, MergeGroup::New), 12);
        const MergeResult result =
            mergedives(process().database, world.folder, other, dives, plainchoices(dives));
        QCOMPARE(result.came, 12);
        QCOMPARE(result.problems.filter(QStringLiteral("without a profile")).size(),
                 12); // no files lie there
        QCOMPARE(world.lines("SELECT COUNT(*) FROM gas"), QStringList{"120"});
        QCOMPARE(world.lines("SELECT COUNT(*) FROM tissue"), QStringList{"192"});
        QCOMPARE(platform::readFile(jet).value(), before);
        QCOMPARE(countgroup(planmerge(process().database, world.folder, other), MergeGroup::New), 0);
    }

    void aStoreOfAnOlderFormIsRead() {
        MergeWorld world;
        world.runThere("DROP TABLE buddylist");
        world.runThere("DROP TABLE weather");
        world.runThere("ALTER TABLE main DROP COLUMN sitenote");
        world.addThere(1, with(MergeWorld::dive(1), {{kStart, "Jul/27/2017 09:50:02"}}));
        const auto dives = world.plan();
        QCOMPARE(dives.size(), 1U);
        QCOMPARE(world.merge().came, 1);
    }
};

QTEST_GUILESS_MAIN(TestMergePlan)
#include "test_mergeplan.moc"
