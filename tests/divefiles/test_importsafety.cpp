#include "divefiles/importer.h"
#include "divefiles/importnote.h"
#include "platform/clock.h"
#include "platform/faultpoint.h"
#include "tests/divefiles/recordingscreen.h"
#include "tests/support/programfixture.h"

#include <algorithm>
#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

using namespace benthor;
using divefiles::ImportEnd;
using tests::goodDive;
using tests::RecordingScreen;

namespace {

const QDateTime kMoment(QDate(2010, 1, 6), QTime(22, 7, 58));

const QByteArray kEarlier = "an earlier file of that name";
const QString kEarlierProfile = QStringLiteral("11A2B3Ca.txt");

/// The files of a run: the second has a faulty Gas line behind two good ones, and so ends its run; the third
/// holds two dives.
const std::map<QString, QByteArray>& waitingFiles() {
    static const std::map<QString, QByteArray> files{
        {QStringLiteral("a.txt"), goodDive("812345001")},
        {QStringLiteral("b.txt"),
         goodDive("812345002").replace("Tissue0000", "Gas0002,1,2,3,4,5\r\nTissue0000")},
        {QStringLiteral("c.txt"), goodDive("812345003") + goodDive("812345004")},
    };
    return files;
}

/// Rows that each dive of those files has when it is whole: gas, tissue.
const std::map<QString, std::pair<int, int>>& rowsOfDives() {
    static const std::map<QString, std::pair<int, int>> rows{
        {QStringLiteral("812345001"), {2, 2}},
        {QStringLiteral("812345002"), {2, 0}},
        {QStringLiteral("812345003"), {2, 2}},
        {QStringLiteral("812345004"), {2, 2}},
    };
    return rows;
}

int countOf(const char* table, const QString& diveid) {
    const std::string select = std::string("SELECT COUNT(*) FROM ") + table + " WHERE diveid = '";
    return process()
        .database.openRecordset(platform::sqlWith(select.c_str(), diveid, "'"))
        .value(0)
        .text()
        .toInt();
}

/// Fails the test where a dive has not all of its rows. Returns how often each dive is there, by start code.
std::map<QString, int> wholeDives() {
    std::map<QString, int> found;
    platform::Recordset dives =
        process().database.openRecordset("SELECT * FROM main WHERE DiveID <> 'D0000000'");
    for (; !dives.eof(); dives.moveNext()) {
        const QString code = dives.value(u"Startcode").text();
        const auto expected = rowsOfDives().find(code);
        if (expected == rowsOfDives().end()) {
            QTest::qFail(qPrintable("a half dive: start code " + code), __FILE__, __LINE__);
            continue;
        }
        const QString id = dives.value(0).text();
        [&] {
            QCOMPARE(countOf("gas", id), expected->second.first);
            QCOMPARE(countOf("tissue", id), expected->second.second);
            QCOMPARE(dives.value(u"otu").text(), "12");
            QVERIFY(!dives.value(u"dbtxtname").isNull());
        }();
        ++found[code];
    }
    return found;
}

QStringList codesOf(const QString& file) {
    if (file == QLatin1String("c.txt")) {
        return {QStringLiteral("812345003"), QStringLiteral("812345004")};
    }
    return {file == QLatin1String("a.txt") ? QStringLiteral("812345001") : QStringLiteral("812345002")};
}

class Scene {
public:
    Scene() {
        for (const auto& [name, bytes] : waitingFiles()) {
            program.putWaiting(name, bytes);
        }
        // What an earlier a.txt left: its copy in `old`, and its profile under the stamp of this moment.
        program.put(QStringLiteral("old"), QStringLiteral("a.txt"), kEarlier);
        program.put(QStringLiteral("dbtxt"), kEarlierProfile, kEarlier);
        process().database.execute(platform::sqlWith(
            "INSERT INTO main (DiveID, dbtxtname) VALUES ('D0000000', '", kEarlierProfile, "')"));
        process().database.close(); // a child must not share the handle
    }

    bool isInOld(const QByteArray& bytes) const {
        const QStringList names = program.names(QStringLiteral("old"));
        return std::any_of(names.begin(), names.end(), [&](const QString& name) {
            return program.bytesOf(QStringLiteral("old"), name) == bytes;
        });
    }

    /// What a start does.
    void start() const {
        process().database.close();
        divefiles::tidydbtxt(program.folder);
        program.openStore();
    }

    /// Every name in dbtxt with one of the stamps is one that a dive gives.
    void verifyNoLeftovers(const QStringList& stamps) const {
        const QStringList names = tests::ProgramFixture::rows("SELECT dbtxtname FROM main");
        for (const QString& name : program.names(QStringLiteral("dbtxt"))) {
            for (const QString& stamp : stamps) {
                QVERIFY2(!name.startsWith(stamp) || names.contains(name), qPrintable(name));
            }
        }
        QVERIFY(!QFile::exists(program.folder.path(u"import.note")));
    }

    bool waits(const QString& name) const { return QFile::exists(program.folder.path(u"new", name)); }

    /// What must hold at any moment: each file waits, untouched, or its dives are in the store, whole, and
    /// its copy in `old` stands. The earlier a.txt is kept, and its profile is what it was.
    void verifyNothingIsLost() const {
        QVERIFY(isInOld(kEarlier));
        QCOMPARE(program.bytesOf(QStringLiteral("dbtxt"), kEarlierProfile), kEarlier);
        const std::map<QString, int> dives = wholeDives();
        for (const auto& [name, bytes] : waitingFiles()) {
            if (waits(name)) {
                QCOMPARE(program.bytesOf(QStringLiteral("new"), name), bytes);
                continue;
            }
            QCOMPARE(program.bytesOf(QStringLiteral("old"), name), bytes);
            for (const QString& code : codesOf(name)) {
                QVERIFY2(dives.contains(code), qPrintable(name));
            }
        }
    }

    /// Runs without a fault until nothing waits, and looks that every dive is there and can be shown. Returns
    /// the number of dives that are there twice.
    int importTheRest() const {
        const platform::FixedClock later(kMoment.addSecs(3600));
        divefiles::ImportState state;
        RecordingScreen screen;
        for (int run = 0; run < 3 && !program.names(QStringLiteral("new")).isEmpty(); ++run) {
            divefiles::importdives(program.folder, state, screen);
        }
        start(); // brings the profiles that are owed
        int twice = 0;
        [&] {
            QCOMPARE(program.names(QStringLiteral("new")), QStringList());
            const std::map<QString, int> dives = wholeDives();
            QCOMPARE(dives.size(), rowsOfDives().size());
            for (const auto& [code, count] : dives) {
                QVERIFY(count <= 2);
                twice += count - 1;
            }
            for (const auto& [name, bytes] : waitingFiles()) {
                QCOMPARE(program.bytesOf(QStringLiteral("old"), name), bytes);
            }
            platform::Recordset rows = process().database.openRecordset(
                "SELECT dbtxtname, Location FROM main WHERE DiveID <> 'D0000000'");
            for (; !rows.eof(); rows.moveNext()) {
                QCOMPARE(program.bytesOf(QStringLiteral("dbtxt"), rows.value(0).text()),
                         waitingFiles().at(rows.value(1).text()));
            }
        }();
        return twice;
    }

    tests::ProgramFixture program;
};

/// An import in a process of its own that is killed at its step number `last`. Returns false when it came to
/// its end.
bool importIsKilledAt(const Scene& scene, int last) {
    const pid_t child = fork();
    if (child == 0) {
        const platform::FixedClock clock(kMoment);
        int step = 0;
        const platform::FaultInjection kill([&](std::string_view) {
            if (++step == last) {
                raise(SIGKILL);
            }
            return 0;
        });
        scene.program.openStore();
        divefiles::ImportState state;
        divefiles::ImportScreen screen;
        while (divefiles::importdives(scene.program.folder, state, screen) != ImportEnd::NoFiles) {
        }
        _exit(0);
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child) {
        qFatal("no child");
    }
    return WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
}

} // namespace

class TestImportSafety : public QObject {
    Q_OBJECT

private slots:
    void killedAtAnyStepNothingIsLostAndTheNextImportCompletes();
    void aDiskThatFailsOnceAtAnyStepLosesNothing();
    void aDiskThatFailsFromAnyStepOnLosesNothing();
    void aFullStoreEndsTheRunAndKeepsTheRest();
    void aCopyToOldThatFailsEndsTheRunBeforeAnythingIsStored();
    void aSourceThatCannotBeRemovedIsTold();
    void aCopyToCorruptThatFailsIsToldAndTheRowsStay();
    void withoutDbtxtKilledAtAnyStepNothingIsLost();
    void aSourceThatVanishedIsTold();
    void aSourceThatChangedBetweenThePassesIsCopiedAgain();
    void aClosedStoreIsToldAndLeavesTheFiles();
};

void TestImportSafety::killedAtAnyStepNothingIsLostAndTheNextImportCompletes() {
    int step = 1;
    int killedBetweenCommitAndRemoval = 0;
    int killedInARun = 0;
    for (;; ++step) {
        const Scene scene;
        const bool killed = importIsKilledAt(scene, step);
        scene.program.openStore();
        scene.verifyNothingIsLost();
        // A run that ended before its time leaves the copies of what waits still; one that was killed does
        // not.
        const QStringList noted = divefiles::notedstamps(scene.program.folder);
        scene.start();
        scene.verifyNothingIsLost();
        scene.verifyNoLeftovers(noted);
        killedInARun += noted.isEmpty() ? 0 : 1;
        const int twice = scene.importTheRest();
        if (QTest::currentTestFailed()) {
            QFAIL(qPrintable(QStringLiteral("killed at step %1").arg(step)));
        }
        killedBetweenCommitAndRemoval += twice > 0 ? 1 : 0;
        if (!killed) {
            QCOMPARE(twice, 0);
            break;
        }
    }
    QVERIFY(step > 100 && killedInARun > 100);
    // The one moment that a file is in both places lies between these two steps of each file.
    QVERIFY(killedBetweenCommitAndRemoval >= 3 && killedBetweenCommitAndRemoval < 20);
}

void TestImportSafety::aDiskThatFailsOnceAtAnyStepLosesNothing() {
    const platform::FixedClock clock(kMoment);
    bool reached = true;
    int step = 1;
    for (; reached; ++step) {
        const Scene scene;
        scene.program.openStore();
        RecordingScreen screen;
        int count = 0;
        {
            const platform::FaultInjection fault([&](std::string_view) { return ++count == step ? EIO : 0; });
            divefiles::ImportState state;
            divefiles::importdives(scene.program.folder, state, screen);
        }
        reached = count >= step;
        QVERIFY(!process().importing);
        QCOMPARE(screen.steps.last(), "runends");
        scene.verifyNothingIsLost();
        if (QTest::currentTestFailed()) {
            QFAIL(qPrintable(QStringLiteral("failed at step %1").arg(step)));
        }
    }
    QVERIFY(step > 60);
}

void TestImportSafety::aDiskThatFailsFromAnyStepOnLosesNothing() {
    const platform::FixedClock clock(kMoment);
    bool reached = true;
    int step = 1;
    int told = 0;
    for (; reached; ++step) {
        const Scene scene;
        scene.program.openStore();
        RecordingScreen screen;
        int count = 0;
        ImportEnd end = ImportEnd::Done;
        {
            const platform::FaultInjection fault(
                [&](std::string_view) { return ++count >= step ? ENOSPC : 0; });
            divefiles::ImportState state;
            end = divefiles::importdives(scene.program.folder, state, screen);
        }
        reached = count >= step;
        if (end == ImportEnd::Failed) {
            ++told;
            QVERIFY2(screen.messages.last().contains(QLatin1String(".txt")) &&
                         screen.messages.last().contains(QLatin1String("space")),
                     qPrintable(screen.messages.last()));
        }
        scene.verifyNothingIsLost();
        scene.importTheRest();
        if (QTest::currentTestFailed()) {
            QFAIL(qPrintable(QStringLiteral("failed from step %1 on").arg(step)));
        }
    }
    QVERIFY(told > 60);
}

void TestImportSafety::aFullStoreEndsTheRunAndKeepsTheRest() {
    const tests::ProgramFixture program;
    for (int i = 0; i < 200; ++i) {
        program.putWaiting(QStringLiteral("%1.txt").arg(i, 3, 10, QLatin1Char('0')), goodDive());
    }
    const int pages = process().database.openRecordset("PRAGMA page_count").value(0).text().toInt();
    const std::string limit = "PRAGMA max_page_count = " + std::to_string(pages + 10);
    process().database.openRecordset(limit.c_str());
    divefiles::ImportState state;
    RecordingScreen screen;
    QCOMPARE(divefiles::importdives(program.folder, state, screen), ImportEnd::Failed);
    const int stored = static_cast<int>(tests::ProgramFixture::rows("SELECT * FROM main").size());
    QVERIFY(stored > 0 && stored < 200);
    QCOMPARE(tests::ProgramFixture::rows("SELECT * FROM gas").size(), 2 * stored);
    const QStringList waiting = program.names(QStringLiteral("new"));
    QCOMPARE(waiting.size(), 200 - stored);
    QCOMPARE(process().currentdiveid, QStringLiteral("D%1").arg(stored, 7, 10, QLatin1Char('0')));
    QCOMPARE(screen.messages.size(), 1);
    QVERIFY2(screen.messages.first().contains(waiting.first()) &&
                 screen.messages.first().contains(QLatin1String("full")) &&
                 screen.messages.first().contains(QLatin1String("import again")),
             qPrintable(screen.messages.first()));
    process().database.openRecordset("PRAGMA max_page_count = 100000");
    QCOMPARE(divefiles::importdives(program.folder, state, screen), ImportEnd::Done);
    QCOMPARE(tests::ProgramFixture::rows("SELECT * FROM main").size(), 200);
}

void TestImportSafety::aCopyToOldThatFailsEndsTheRunBeforeAnythingIsStored() {
    const Scene scene;
    scene.program.openStore();
    QVERIFY(QDir(scene.program.folder.path(u"old")).removeRecursively());
    QVERIFY(platform::writeFileWhole(scene.program.folder.path(u"old"), "a file where the folder should be"));
    divefiles::ImportState state;
    RecordingScreen screen;
    QCOMPARE(divefiles::importdives(scene.program.folder, state, screen), ImportEnd::Failed);
    QCOMPARE(scene.program.names(QStringLiteral("new")), QStringList({"a.txt", "b.txt", "c.txt"}));
    QCOMPARE(wholeDives().size(), 0);
    QVERIFY(screen.messages.value(0).startsWith(QLatin1String("The import stopped at the file \"a.txt\".")));
    QVERIFY(QFile::remove(scene.program.folder.path(u"old")));
    QCOMPARE(scene.importTheRest(), 0);
}

void TestImportSafety::aSourceThatCannotBeRemovedIsTold() {
    const Scene scene;
    scene.program.openStore();
    divefiles::ImportState state;
    RecordingScreen screen;
    {
        const platform::FaultInjection fault(
            [](std::string_view step) { return step == "remove" ? EACCES : 0; });
        QCOMPARE(divefiles::importdives(scene.program.folder, state, screen), ImportEnd::Failed);
    }
    QVERIFY2(screen.messages.value(0).startsWith(
                 QLatin1String("The dive of the file \"a.txt\" is stored, but the file cannot be removed.")),
             qPrintable(screen.messages.value(0)));
    QCOMPARE(wholeDives().size(), 1);
    QVERIFY(scene.waits(QStringLiteral("a.txt")));
}

void TestImportSafety::aCopyToCorruptThatFailsIsToldAndTheRowsStay() {
    const Scene scene;
    scene.program.openStore();
    QVERIFY(QDir(scene.program.folder.path(u"corrupt")).removeRecursively());
    QVERIFY(
        platform::writeFileWhole(scene.program.folder.path(u"corrupt"), "a file where the folder should be"));
    divefiles::ImportState state;
    RecordingScreen screen;
    QCOMPARE(divefiles::importdives(scene.program.folder, state, screen), ImportEnd::TooManyFields);
    QCOMPARE(screen.messages.value(0), "Errors Gas - Too many parameters  !");
    QVERIFY(screen.messages.value(1).startsWith(QLatin1String("The file \"b.txt\" cannot be copied")));
    QVERIFY(!scene.waits(QStringLiteral("b.txt")));
    scene.verifyNothingIsLost();
}

/// Every copy into dbtxt fails, so every dive owes its profile.
void TestImportSafety::withoutDbtxtKilledAtAnyStepNothingIsLost() {
    for (int step = 1;; ++step) {
        const Scene scene;
        const QString dbtxt = scene.program.folder.path(u"dbtxt");
        QVERIFY(QFile::rename(dbtxt, dbtxt + QStringLiteral("-away")));
        QVERIFY(platform::writeFileWhole(dbtxt, "a file where the folder should be"));
        const bool killed = importIsKilledAt(scene, step);
        QVERIFY(QFile::remove(dbtxt));
        QVERIFY(QFile::rename(dbtxt + QStringLiteral("-away"), dbtxt));
        scene.program.openStore();
        scene.verifyNothingIsLost();
        const int twice = scene.importTheRest();
        if (QTest::currentTestFailed()) {
            QFAIL(qPrintable(QStringLiteral("killed at step %1").arg(step)));
        }
        if (!killed) {
            QCOMPARE(twice, 0);
            QVERIFY(step > 100);
            break;
        }
    }
}

void TestImportSafety::aSourceThatVanishedIsTold() {
    const Scene scene;
    scene.program.openStore();
    divefiles::ImportState state;
    RecordingScreen screen;
    screen.at = [&](const QString& step) {
        if (step == QLatin1String("yield")) {
            QFile::remove(scene.program.folder.path(u"new", u"a.txt"));
        }
    };
    QCOMPARE(divefiles::importdives(scene.program.folder, state, screen), ImportEnd::Failed);
    QVERIFY(screen.messages.value(0).contains(QLatin1String("a.txt")));
    QCOMPARE(wholeDives().size(), 0);
}

void TestImportSafety::aSourceThatChangedBetweenThePassesIsCopiedAgain() {
    const platform::FixedClock clock(kMoment);
    const tests::ProgramFixture program;
    program.putWaiting(QStringLiteral("a.txt"), "half of what is still being wri");
    divefiles::ImportState state;
    RecordingScreen screen;
    screen.at = [&](const QString& step) {
        if (step == QLatin1String("yield")) {
            program.putWaiting(QStringLiteral("a.txt"), goodDive());
        }
    };
    QCOMPARE(divefiles::importdives(program.folder, state, screen), ImportEnd::Done);
    QCOMPARE(program.bytesOf(QStringLiteral("old"), QStringLiteral("a.txt")), goodDive());
    QCOMPARE(program.bytesOf(QStringLiteral("dbtxt"), QStringLiteral("11A2B3Ca.txt")), goodDive());
}

void TestImportSafety::aClosedStoreIsToldAndLeavesTheFiles() {
    const Scene scene;
    divefiles::ImportState state;
    RecordingScreen screen;
    QCOMPARE(divefiles::importdives(scene.program.folder, state, screen), ImportEnd::Failed);
    QVERIFY(screen.messages.value(0).contains(QLatin1String("The store is not open.")));
    QCOMPARE(scene.program.names(QStringLiteral("dbtxt")), QStringList(kEarlierProfile));
    scene.program.openStore();
    QCOMPARE(scene.importTheRest(), 0);
}

QTEST_GUILESS_MAIN(TestImportSafety)
#include "test_importsafety.moc"
