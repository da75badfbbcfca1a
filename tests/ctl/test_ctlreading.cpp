#include "platform/instancelock.h"
#include "platform/storefile.h"
#include "store/backup.h"
#include "tests/ctl/ctlstage.h"
#include "tests/support/madereader.h"

using namespace benthor;
using tests::Ran;
using tests::ToolFolder;

namespace {

QJsonObject firstDive() {
    // 812345678 seconds from the start of 31 December 1991, and an hour more
    return {{"id", "D0000001"},
            {"name", "Dive001.txt"},
            {"site", QJsonValue::Null},
            {"start", "2017-09-27T03:34:38"},
            {"end", "2017-09-27T04:34:38"},
            {"duration_s", 3600},
            {"max_depth_m", 23.4},
            {"interval_s", 10},
            {"otu", 12},
            {"serial", "KD00123"},
            {"version", "V3.12"},
            {"faults", QJsonArray()}};
}

QStringList idsOf(const QJsonArray& dives) {
    QStringList ids;
    for (const QJsonValue& dive : dives) {
        ids += dive[QLatin1String("id")].toString();
    }
    return ids;
}

void set(const char* sql) {
    process().database.execute(sql);
}

} // namespace

/// The tool's commands that only read.
class TestCtlReading : public QObject {
    Q_OBJECT

private slots:
    void aList();
    void aListForPeople();
    void aSelectionOfTheList();
    void showOfADive();
    void samplesOfADive();
    void checkFindsFaults();
    void statsOfALogbook();
    void verifyReadsAllStores();
    void verifyOfGivenFiles();
    void readingChangesNoByteBesideARunningProgram();
    void aStoreInTheMidstOfAChangeIsRead();
    void anOlderStoreIsReadAsACopy();
    void helpAndVersion();
};

void TestCtlReading::aList() {
    const ToolFolder world;
    set("UPDATE main SET startdate = NULL WHERE DiveID = 'D0000003'");
    world.close();
    const Ran ran = world.run({"--json", "list"});
    QCOMPARE(ran.status, 0);
    QCOMPARE(ran.err, QByteArray());
    const QJsonArray dives = ran.json().value(QLatin1String("dives")).toArray();
    QCOMPARE(ran.json().keys(), QStringList{QStringLiteral("dives")});
    QCOMPARE(idsOf(dives), QStringList({"D0000003", "D0000001", "D0000002"}));
    QCOMPARE(dives[1].toObject(), firstDive());
    QVERIFY(dives[0][QLatin1String("start")].isNull());
    QCOMPARE(dives[0][QLatin1String("faults")].toArray(),
             QJsonArray{"Main Profile - Error in Start Date format !"});

    const ToolFolder empty(ToolFolder::kNoDives);
    empty.close();
    QCOMPARE(empty.run({"--json", "list"}).out, QByteArray("{\"dives\": []}\n"));
    QCOMPARE(empty.run({"list"}).lines().size(), 1);
}

void TestCtlReading::aListForPeople() {
    const ToolFolder world({"812345678", "812345678"});
    set("UPDATE main SET Location = '洞窟\x1b[2J', site = 'Reef' WHERE DiveID = 'D0000001'");
    const QString longName(500, QLatin1Char('n'));
    process().database.execute(
        platform::sqlWith("UPDATE main SET Location = '", longName, "' WHERE DiveID = 'D0000002'"));
    world.close();
    const Ran ran = world.run({"list"});
    QCOMPARE(ran.status, 0);
    const QString gap(500 - 8, QLatin1Char(' '));
    QCOMPARE(
        ran.lines(),
        QStringList({"ID        Start                Duration     Max  OTU  Faults  S/N      Name" +
                         QString(500 - 4, QLatin1Char(' ')) + "  Site",
                     "D0000001  2017-09-27 03:34:38     60:00  23.4 m   12          KD00123  洞窟 [2J" + gap +
                         "  Reef",
                     "D0000002  2017-09-27 03:34:38     60:00  23.4 m   12          KD00123  " + longName}));
}

void TestCtlReading::aSelectionOfTheList() {
    const ToolFolder world;
    set("UPDATE main SET startdate = '2008-07-15 08:55:17' WHERE DiveID = 'D0000002'");
    world.close();
    const auto ids = [&](const QStringList& words) {
        return idsOf(world.run(QStringList({"list", "--json"}) + words)
                         .json()
                         .value(QLatin1String("dives"))
                         .toArray());
    };
    QCOMPARE(ids({"--all"}), QStringList({"D0000002", "D0000001", "D0000003"}));
    QCOMPARE(ids({"3", "D0000001"}), QStringList({"D0000001", "D0000003"}));
    QCOMPARE(ids({"--since", "2008-07-15", "--until", "2008-07"}), QStringList{QStringLiteral("D0000002")});
    QCOMPARE(ids({"--find", "dive003"}), QStringList{QStringLiteral("D0000003")});
    const Ran missing = world.run({"list", "--json", "1", "77"});
    QCOMPARE(missing.status, 1);
    QCOMPARE(missing.err, QByteArray("benthorctl: There is no dive D0000077.\n"));
    QCOMPARE(idsOf(missing.json().value(QLatin1String("dives")).toArray()),
             QStringList{QStringLiteral("D0000001")});
}

void TestCtlReading::showOfADive() {
    const ToolFolder world({"812345678"});
    set("INSERT INTO buddylist VALUES ('D0000001', 'Anna')");
    set("UPDATE main SET divenote = 'first\r\nsecond\x1b[2J'");
    world.close();
    const Ran ran = world.run({"show", "1", "--json"});
    QCOMPARE(ran.status, 0);
    const QJsonObject json = ran.json();
    QCOMPARE(json.keys(), QStringList({"buddies", "dive", "gases", "store", "tissues"}));
    QCOMPARE(json.value(QLatin1String("dive")).toObject(), firstDive());
    const QJsonObject store = json.value(QLatin1String("store")).toObject();
    QCOMPARE(store.size(), 27);
    QCOMPARE(store.value(QLatin1String("Duration")).toString(), QStringLiteral("60:0"));
    QCOMPARE(store.value(QLatin1String("divenote")).toString(), QStringLiteral("first\r\nsecond\x1b[2J"));
    QVERIFY(store.value(QLatin1String("site")).isNull());
    QCOMPARE(json.value(QLatin1String("gases")).toArray().size(), 2);
    QCOMPARE(json.value(QLatin1String("tissues")).toArray().size(), 2);
    QCOMPARE(json.value(QLatin1String("buddies")).toArray(), QJsonArray{"Anna"});

    const QStringList lines = world.run({"show", "D0000001"}).lines();
    QCOMPARE(lines.first(), QStringLiteral("Dive D0000001"));
    QVERIFY(lines.contains(QStringLiteral("  MaxDepth      23.400")));
    QVERIFY(lines.contains(QStringLiteral("  divenote      first")));
    QVERIFY(lines.contains(QStringLiteral("                second [2J")));
    QVERIFY(lines.contains(QStringLiteral("Buddy Anna")));
    QCOMPARE(lines.filter(QStringLiteral("Gas ")).size(), 2);
    QVERIFY(lines.filter(QStringLiteral("weather")).isEmpty()); // Null

    const Ran none = world.run({"show", "2", "--json"});
    QCOMPARE(none.status, 1);
    QCOMPARE(none.out, QByteArray());
    QCOMPARE(none.err, QByteArray("benthorctl: There is no dive D0000002.\n"));
}

void TestCtlReading::samplesOfADive() {
    const ToolFolder world({"812345678"});
    world.close();
    const Ran ran = world.run({"samples", "1", "--json"});
    QCOMPARE(ran.status, 0);
    const QJsonObject json = ran.json();
    QCOMPARE(json.keys(), QStringList({"columns", "id", "interval_s", "rows"}));
    QCOMPARE(json.value(QLatin1String("interval_s")).toInt(), 10);
    const QJsonArray columns = json.value(QLatin1String("columns")).toArray();
    QCOMPARE(columns.first()[QLatin1String("name")].toString(), QStringLiteral("time_s"));
    QCOMPARE(columns.last()[QLatin1String("name")].toString(), QStringLiteral("alarms"));
    const QJsonArray rows = json.value(QLatin1String("rows")).toArray();
    QCOMPARE(rows.size(), 1);
    QCOMPARE(rows.first().toArray().size(), columns.size());
    QCOMPARE(rows[0][0].toInt(), 40); // the fourth row, of ten seconds each

    const Ran csv = world.run({"samples", "1"});
    QCOMPARE(csv.status, 0);
    const QList<QByteArray> lines = csv.out.split('\n');
    QCOMPARE(lines.size(), 3); // the last one empty
    QVERIFY2(lines[0].startsWith("time_s,depthpos,gasnum,po2,"), lines[0].constData());
    QVERIFY2(lines[1].startsWith("40,"), lines[1].constData());

    QVERIFY(QFile::remove(world.folder.path(u"dbtxt", world.names(QStringLiteral("dbtxt")).first())));
    const Ran lost = world.run({"samples", "1", "--json"});
    QCOMPARE(lost.status, 0);
    QVERIFY(lost.json().value(QLatin1String("rows")).isArray());
    QVERIFY(QString::fromUtf8(lost.err).contains(QStringLiteral("is not in the folder dbtxt")));
    QCOMPARE(world.run({"samples", "5"}).status, 1);
}

void TestCtlReading::checkFindsFaults() {
    const ToolFolder world;
    world.close();
    QCOMPARE(world.run({"check"}).status, 0);
    QCOMPARE(world.run({"check", "--json"}).out, QByteArray("{\"faults\": []}\n"));
    world.openStore();
    set("UPDATE main SET startdate = NULL WHERE DiveID = 'D0000002'");
    set("DELETE FROM gas WHERE diveid = 'D0000002'");
    world.close();
    const Ran ran = world.run({"check", "--json"});
    QCOMPARE(ran.status, 1);
    const auto fault = [](const char* message) {
        return QJsonObject{{"id", "D0000002"}, {"message", message}};
    };
    QCOMPARE(ran.json(),
             QJsonObject({{"faults", QJsonArray{fault("Main Profile - Error in Start Date format !"),
                                                fault("Gas Profile not found !")}}}));
    QCOMPARE(world.run({"check"}).lines(),
             QStringList({"D0000002  Main Profile - Error in Start Date format !",
                          "D0000002  Gas Profile not found !"}));
    QCOMPARE(world.run({"check", "1", "3"}).status, 0);
}

void TestCtlReading::statsOfALogbook() {
    const ToolFolder world;
    set("UPDATE main SET startdate = NULL, MaxDepth = '50' WHERE DiveID = 'D0000003'");
    set("INSERT INTO main (DiveID, Duration) VALUES ('D0000001', '99:0')"); // a second row is no second dive
    world.close();
    const Ran ran = world.run({"stats", "--json"});
    QCOMPARE(ran.status, 0);
    const QJsonObject two{{"dives", 2}, {"seconds", 7200}, {"max_depth_m", 23.4}, {"otu", 24}};
    QJsonObject year = two;
    year.insert(QStringLiteral("year"), 2017);
    QJsonObject month = two;
    month.insert(QStringLiteral("month"), QStringLiteral("2017-09"));
    QCOMPARE(ran.json(), QJsonObject({{"dives", 3},
                                      {"seconds", 10800},
                                      {"max_depth_m", 50},
                                      {"otu", 36},
                                      {"years", QJsonArray{year}},
                                      {"months", QJsonArray{month}}}));
    QCOMPARE(world.run({"stats"}).lines().value(1), QStringLiteral("All          3    180:00    50 m   36"));
}

void TestCtlReading::verifyReadsAllStores() {
    const ToolFolder world;
    world.close();
    const QString store = world.storePath();
    for (const char* const name : {"backup.mdb", "backup3.mdb", "rb-before-merge.mdb", "rb-replaced2.mdb"}) {
        QVERIFY(QFile::copy(store, world.folder.path(QString::fromLatin1(name))));
    }
    // Of a damaged one it is known what it is.
    QVERIFY(platform::writeFileWhole(world.folder.path(u"rb-damaged.mdb"), "no store"));
    QVERIFY(platform::writeFileWhole(world.folder.path(u"backup3.mdb"), "no store"));
    const Ran ran = world.run({"verify", "--json"});
    QCOMPARE(ran.status, 1);
    const QJsonArray files = ran.json().value(QLatin1String("files")).toArray();
    QStringList told;
    for (const QJsonValue& file : files) {
        told += QStringLiteral("%1 %2 %3 %4")
                    .arg(QFileInfo(file[QLatin1String("file")].toString()).fileName())
                    .arg(file[QLatin1String("sound")].toBool())
                    .arg(file[QLatin1String("dives")].toInt(-1))
                    .arg(file[QLatin1String("reason")].isNull());
    }
    QCOMPARE(told, QStringList({"rb.mdb 1 3 1", "backup.mdb 1 3 1", "backup3.mdb 0 -1 0",
                                "rb-before-merge.mdb 1 3 1", "rb-replaced2.mdb 1 3 1"}));
    QVERIFY(QFile::remove(world.folder.path(u"backup3.mdb")));
    const Ran sound = world.run({"verify"});
    QCOMPARE(sound.status, 0);
    QCOMPARE(sound.lines().size(), 5);
    QVERIFY(sound.lines().at(1).simplified().endsWith(QStringLiteral("rb.mdb yes 3")));
    QVERIFY(QFile::remove(store));
    QCOMPARE(world.run({"verify"}).status, 1); // the backups are what is asked for then
}

void TestCtlReading::verifyOfGivenFiles() {
    const ToolFolder world;
    world.close();
    const QString none = world.folder.path(u"none.mdb");
    const Ran ran = tests::runTool({"verify", "--json", world.storePath(), none});
    QCOMPARE(ran.status, 1);
    QCOMPARE(ran.json(),
             QJsonObject({{"files", QJsonArray{QJsonObject{{"file", world.storePath()},
                                                           {"sound", true},
                                                           {"dives", 3},
                                                           {"reason", QJsonValue::Null}},
                                               QJsonObject{{"file", none},
                                                           {"sound", false},
                                                           {"dives", QJsonValue::Null},
                                                           {"reason", "There is no such file."}}}}}));
    QCOMPARE(tests::runTool({"verify", world.storePath()}).status, 0);
}

void TestCtlReading::readingChangesNoByteBesideARunningProgram() {
    const ToolFolder world;
    const ToolFolder other({"812345678", "712345678"});
    world.close();
    QVERIFY(QFile::copy(world.storePath(), world.folder.path(u"backup.mdb")));
    for (const bool running : {false, true}) {
        std::optional<platform::InstanceLock> lock;
        if (running) {
            lock.emplace(world.folder.root()); // as the program holds it
            QVERIFY(lock->held());
        }
        const QStringList before = world.snapshot();
        for (const QStringList& words : {QStringList{"list"},
                                         {"list", "--find", "dive"},
                                         {"show", "1"},
                                         {"samples", "1"},
                                         {"check"},
                                         {"stats"},
                                         {"verify"},
                                         {"merge", "--dry-run", other.folder.root()}}) {
            for (const QStringList& form : {QStringList(), QStringList{"--json"}}) {
                const Ran ran = world.run(form + words);
                QVERIFY2(ran.status == 0, qPrintable(words.join(QLatin1Char(' ')) + ran.err));
                QCOMPARE(ran.out.isEmpty(), words.first() == QLatin1String("check") && form.isEmpty());
            }
        }
        QCOMPARE(world.snapshot(), before);
    }
}

void TestCtlReading::aStoreInTheMidstOfAChangeIsRead() {
    const ToolFolder world;
    process().database.execute("PRAGMA synchronous = EXTRA");
    const platform::Transaction transaction(process().database);
    set("UPDATE main SET Location = 'not yet'");
    const Ran ran = world.run({"list"});
    QCOMPARE(ran.status, 0);
    QCOMPARE(ran.lines().size(), 4);
    QVERIFY(!ran.out.contains("not yet"));
}

void TestCtlReading::anOlderStoreIsReadAsACopy() {
    const ToolFolder world(ToolFolder::kNoDives);
    world.close();
    QVERIFY(platform::writeFileWhole(world.storePath(), tests::jetHead()));
    // The reader stands beside the tool and finds no store in a file of two pages: its words are told.
    const QStringList before = world.snapshot();
    const Ran ran = world.run({"list"});
    QCOMPARE(ran.status, 3);
    QVERIFY(ran.err.startsWith("benthorctl: "));
    QCOMPARE(world.snapshot(), before);
#ifdef BENTHOR_JET_FILES
    const QStringList files = QDir(QStringLiteral(BENTHOR_JET_FILES)).entryList({"*.mdb"}, QDir::Files);
    if (files.isEmpty()) {
        QSKIP("there are no Jet files beside the project");
    }
    int read = 0;
    for (const QString& name : files) {
        QVERIFY(QFile::remove(world.storePath()));
        QVERIFY(QFile::copy(QStringLiteral(BENTHOR_JET_FILES "/") + name, world.storePath()));
        const QStringList snapshot = world.snapshot();
        const Ran verified = world.run({"verify", "--json"});
        const QJsonValue sound = verified.json().value(QLatin1String("files"))[0][QLatin1String("sound")];
        const Ran list = world.run({"list", "--json"});
        QCOMPARE(list.status, sound.toBool() ? 0 : 3);
        if (list.status == 0) {
            ++read;
        }
        QCOMPARE(world.run({"import", name}).status, 3);
        QCOMPARE(world.snapshot(), snapshot);
    }
    QVERIFY(read > 0);
#endif
}

void TestCtlReading::helpAndVersion() {
    const Ran help = tests::runTool({"--help"});
    QCOMPARE(help.status, 0);
    QVERIFY(help.out.startsWith("Usage: benthorctl"));
    QVERIFY(tests::runTool({"export", "--help"}).out.contains("--force"));
    const Ran version = tests::runTool({"--version"});
    QCOMPARE(version.status, 0);
    QVERIFY(QRegularExpression(QStringLiteral("^benthorctl [0-9]+\\.[0-9]+\\.[0-9]+\n$"))
                .match(QString::fromUtf8(version.out))
                .hasMatch());
}

QTEST_GUILESS_MAIN(TestCtlReading)
#include "test_ctlreading.moc"
