#include "divefiles/importer.h"
#include "divefiles/importnote.h"
#include "divefiles/owedprofiles.h"
#include "divefiles/waitingfiles.h"
#include "platform/clock.h"
#include "platform/faultpoint.h"
#include "tests/divefiles/recordingscreen.h"
#include "tests/support/killed.h"
#include "tests/support/programfixture.h"

#include <algorithm>

using namespace benthor;
using divefiles::ImportEnd;
using divefiles::OwedProfile;
using tests::goodDive;
using tests::RecordingScreen;

namespace {

const QDateTime kMoment(QDate(2010, 1, 6), QTime(22, 7, 58));
const QString kStamp = QStringLiteral("11A2B3C");

} // namespace

/// What an import can leave behind: a profile that is not in its place, copies that no dive names.
class TestImportLeftovers : public QObject {
    Q_OBJECT

private slots:
    void init() {
        clock_ = std::make_unique<platform::FixedClock>(kMoment);
        program_ = std::make_unique<tests::ProgramFixture>();
        screen_.at = nullptr;
    }
    void cleanup() {
        program_.reset();
        clock_.reset();
    }

    void aCopyIntoDbtxtThatFailsOnceIsMadeBeforeTheSourceGoes();
    void aCopyIntoDbtxtThatFailsTwiceIsOwedAndTold();
    void anOwedProfileIsBroughtWhenItsDiveIsOpened();
    void anOwedProfileIsBroughtAtTheNextStart();
    void anOwedProfileIsReadInOldWhereDbtxtFailsStill();
    void anotherFileOfItsNameIsNotTakenForAnOwedProfile();
    void aStaleCopyGivesWayToAnOwedProfile();
    void anOwedProfileWhoseNamesLeadElsewhereBringsNothing();
    void anOwedProfileOfADeletedDiveIsForgotten();
    void aFileWithoutDivesAndALongNameOweNothing();
    void aDiveThatIsNotStoredOwesNothing();
    void manyThatAreOwedAreToldInOneLine();
    void aStoreWithoutDebtsIsNotChanged();

    void anImportNotesItsStampBeforeItsFirstCopyAndTakesTheNoteAway();
    void theNoteGoesHoweverARunEnds();
    void aNoteOfAKilledRunOutlivesAnImport();
    void aNoteThatCannotBeWrittenKeepsNoImport();
    void aStartRemovesTheCopiesThatAKilledRunLeft();
    void aStartTouchesNothingElseInDbtxt_data();
    void aStartTouchesNothingElseInDbtxt();
    void aStartThatCannotReadTheStoreLeavesAllForTheNext();
    void killedAtAnyStepOfTheTidyingNothingIsLost();
    void aTidyingThatFailsAtAnyStepLosesNothing();
    void killedAtAnyStepAFileThatIsMovedAsideStandsInFull();

private:
    ImportEnd import() {
        screen_.clear();
        return divefiles::importdives(program_->folder, state_, screen_);
    }
    void putWaiting(const char* name, const QByteArray& bytes = goodDive()) {
        program_->putWaiting(QString::fromLatin1(name), bytes);
    }
    QByteArray dbtxt(const char* name) const {
        return program_->bytesOf(QStringLiteral("dbtxt"), QString::fromLatin1(name));
    }
    /// A folder in the way keeps every copy out of dbtxt.
    void blockDbtxt() {
        QVERIFY(QDir(program_->folder.path(u"dbtxt")).removeRecursively());
        QVERIFY(platform::writeFileWhole(program_->folder.path(u"dbtxt"), "a file"));
    }
    void freeDbtxt() {
        QVERIFY(QFile::remove(program_->folder.path(u"dbtxt")));
        QVERIFY(QDir().mkpath(program_->folder.path(u"dbtxt")));
    }
    void importOwed(const char* name, const QByteArray& bytes = goodDive()) {
        blockDbtxt();
        putWaiting(name, bytes);
        QCOMPARE(import(), ImportEnd::Done);
        freeDbtxt();
    }
    QString profile(const QString& name) {
        return divefiles::profilepath(program_->folder, process().database, name);
    }
    static qsizetype owed() {
        return static_cast<qsizetype>(divefiles::owedprofiles(process().database).size());
    }
    void start() {
        process().database.close();
        divefiles::tidydbtxt(program_->folder);
        program_->openStore();
    }
    void leaveThree();
    void verifyThree();
    void verifyTidied();
    QString notePath() const { return program_->folder.path(u"import.note"); }

    std::unique_ptr<platform::FixedClock> clock_;
    std::unique_ptr<tests::ProgramFixture> program_;
    divefiles::ImportState state_;
    RecordingScreen screen_;
};

void TestImportLeftovers::aCopyIntoDbtxtThatFailsOnceIsMadeBeforeTheSourceGoes() {
    putWaiting("a.txt");
    int renames = 0;
    {
        // The note, the copy in old, the copy in dbtxt.
        const platform::FaultInjection fault(
            [&](std::string_view step) { return step == "rename" && ++renames == 3 ? EIO : 0; });
        QCOMPARE(import(), ImportEnd::Done);
    }
    QCOMPARE(renames, 4); // that of dbtxt once more
    QCOMPARE(dbtxt("11A2B3Ca.txt"), goodDive());
    QCOMPARE(screen_.belows, QStringList(QString()));
    QCOMPARE(owed(), 0);
}

void TestImportLeftovers::aCopyIntoDbtxtThatFailsTwiceIsOwedAndTold() {
    importOwed("Devil's reef.txt");
    QCOMPARE(screen_.messages, QStringList("Dive(s) put into database."));
    QVERIFY2(screen_.belows.first().contains(QLatin1String("\"Devil's reef.txt\"")),
             qPrintable(screen_.belows.first()));
    QCOMPARE(program_->names(QStringLiteral("new")), QStringList());
    QCOMPARE(tests::ProgramFixture::rows("SELECT DiveID, dbtxtname FROM main"),
             QStringList("D0000001|" + kStamp + "Devil's reef.txt"));
    QCOMPARE(program_->bytesOf(QStringLiteral("old"), QStringLiteral("Devil's reef.txt")), goodDive());
    QCOMPARE(owed(), 1);
}

void TestImportLeftovers::anOwedProfileIsBroughtWhenItsDiveIsOpened() {
    importOwed("Devil's reef.txt");
    const QString name = kStamp + QStringLiteral("Devil's reef.txt");
    QCOMPARE(profile(name), program_->folder.path(u"dbtxt", name));
    QCOMPARE(program_->bytesOf(QStringLiteral("dbtxt"), name), goodDive());
    QCOMPARE(owed(), 0);
    // One that nobody owes stays away.
    QVERIFY(QFile::remove(program_->folder.path(u"dbtxt", name)));
    QCOMPARE(profile(name), program_->folder.path(u"dbtxt", name));
    QVERIFY(!QFile::exists(profile(name)));
}

void TestImportLeftovers::anOwedProfileIsBroughtAtTheNextStart() {
    importOwed("a.txt");
    QVERIFY(QDir(program_->folder.path(u"dbtxt")).removeRecursively());
    start();
    QCOMPARE(dbtxt("11A2B3Ca.txt"), goodDive());
    QCOMPARE(owed(), 0);
}

void TestImportLeftovers::anOwedProfileIsReadInOldWhereDbtxtFailsStill() {
    importOwed("a.txt");
    blockDbtxt();
    QCOMPARE(profile(QStringLiteral("11A2B3Ca.txt")), program_->folder.path(u"old", u"a.txt"));
    start();
    QCOMPARE(owed(), 1);
    QCOMPARE(profile(QStringLiteral("11A2B3Ca.txt")), program_->folder.path(u"old", u"a.txt"));
    freeDbtxt();
    QCOMPARE(profile(QStringLiteral("11A2B3Ca.txt")), program_->folder.path(u"dbtxt", u"11A2B3Ca.txt"));
}

void TestImportLeftovers::anotherFileOfItsNameIsNotTakenForAnOwedProfile() {
    importOwed("a.txt", goodDive("812345678"));
    putWaiting("a.txt", goodDive("812345679"));
    QCOMPARE(import(), ImportEnd::Done);
    QCOMPARE(program_->bytesOf(QStringLiteral("old"), QStringLiteral("a.txt")), goodDive("812345679"));
    start();
    QCOMPARE(dbtxt("11A2B3Ca.txt"), goodDive("812345678"));
    QCOMPARE(dbtxt("11A2B3Da.txt"), goodDive("812345679"));
}

/// The file changed between the passes, and only its first form came into dbtxt.
void TestImportLeftovers::aStaleCopyGivesWayToAnOwedProfile() {
    putWaiting("a.txt", "half of what is still being wri");
    screen_.at = [&](const QString& step) {
        if (step == QLatin1String("yield")) {
            putWaiting("a.txt");
        }
    };
    int renames = 0;
    {
        // The note, old, dbtxt; what is replaced in old, old, and then dbtxt again.
        const platform::FaultInjection fault(
            [&](std::string_view step) { return step == "rename" && ++renames == 6 ? EIO : 0; });
        QCOMPARE(import(), ImportEnd::Done);
    }
    QCOMPARE(renames, 6);
    QVERIFY(screen_.belows.first().contains(QLatin1String("a.txt")));
    QCOMPARE(dbtxt("11A2B3Ca.txt"), "half of what is still being wri");
    // What stands in the way is kept even where somebody cleared it out of `old`.
    QVERIFY(QFile::remove(program_->folder.path(u"old", u"a-2.txt")));
    QCOMPARE(profile(QStringLiteral("11A2B3Ca.txt")), program_->folder.path(u"dbtxt", u"11A2B3Ca.txt"));
    QCOMPARE(dbtxt("11A2B3Ca.txt"), goodDive());
    QCOMPARE(program_->bytesOf(QStringLiteral("old"), QStringLiteral("a-2.txt")),
             "half of what is still being wri");
}

void TestImportLeftovers::anOwedProfileWhoseNamesLeadElsewhereBringsNothing() {
    const auto put = [this](const char16_t* where, const char* name, const QByteArray& bytes) {
        QVERIFY(
            platform::writeFileWhole(program_->folder.path(where, QString::fromLatin1(name)), bytes).ok());
    };
    put(u"old", "kept.txt", "what a store from elsewhere knows");
    put(u"dbtxt", "taken.txt", "other bytes");
    OwedProfile owed = *divefiles::owedprofile(program_->folder, QStringLiteral("../planted.txt"),
                                               QStringLiteral("kept.txt"));
    divefiles::noteowed(process().database, owed);
    owed.dbtxtname = QStringLiteral("taken.txt");
    owed.oldname = QStringLiteral("../moved.txt");
    divefiles::noteowed(process().database, owed);
    process().database.execute("INSERT INTO main (DiveID, dbtxtname) VALUES ('D0000001', '../planted.txt'), "
                               "('D0000002', 'taken.txt')");
    divefiles::bringowedprofiles(program_->folder, process().database);
    QVERIFY(!QFile::exists(program_->folder.path(u"planted.txt")));
    QVERIFY(!QFile::exists(program_->folder.path(u"moved.txt")));
    QCOMPARE(dbtxt("taken.txt"), QByteArray("other bytes"));
}

void TestImportLeftovers::anOwedProfileOfADeletedDiveIsForgotten() {
    importOwed("a.txt");
    process().database.execute("DELETE FROM main");
    start();
    QCOMPARE(program_->names(QStringLiteral("dbtxt")), QStringList());
    QCOMPARE(owed(), 0);
}

void TestImportLeftovers::aFileWithoutDivesAndALongNameOweNothing() {
    blockDbtxt();
    putWaiting("a.txt", "no dive");
    putWaiting("a name of thirty characters or more.txt");
    QCOMPARE(import(), ImportEnd::Done);
    QCOMPARE(screen_.belows, QStringList(QString()));
    QCOMPARE(owed(), 0);
    freeDbtxt();
}

void TestImportLeftovers::aDiveThatIsNotStoredOwesNothing() {
    blockDbtxt();
    putWaiting("a.txt");
    {
        const platform::FaultInjection fault(
            [](std::string_view step) { return step == "commit" ? ENOSPC : 0; });
        QCOMPARE(import(), ImportEnd::Failed);
    }
    QCOMPARE(screen_.belows, QStringList(QString()));
    QCOMPARE(owed(), 0);
    QCOMPARE(program_->names(QStringLiteral("new")), QStringList("a.txt"));
    freeDbtxt();
}

void TestImportLeftovers::manyThatAreOwedAreToldInOneLine() {
    blockDbtxt();
    for (int i = 0; i < 9; ++i) {
        program_->putWaiting(QStringLiteral("%1.txt").arg(i), goodDive());
    }
    QCOMPARE(import(), ImportEnd::Done);
    QVERIFY2(screen_.belows.first().contains(
                 QLatin1String("\"0.txt\", \"1.txt\", \"2.txt\", \"3.txt\", \"4.txt\" and 4 more")),
             qPrintable(screen_.belows.first()));
    QCOMPARE(owed(), 9);
    freeDbtxt();
    start();
    QCOMPARE(owed(), 0);
    QCOMPARE(program_->names(QStringLiteral("dbtxt")).size(), 9);
}

void TestImportLeftovers::aStoreWithoutDebtsIsNotChanged() {
    const QStringList before = tests::ProgramFixture::rows("SELECT name FROM sqlite_master");
    putWaiting("a.txt");
    QCOMPARE(import(), ImportEnd::Done);
    QCOMPARE(tests::ProgramFixture::rows("SELECT name FROM sqlite_master"), before);
}

void TestImportLeftovers::anImportNotesItsStampBeforeItsFirstCopyAndTakesTheNoteAway() {
    program_->put(QStringLiteral("old"), QStringLiteral("a.txt"), "another");
    putWaiting("a.txt");
    QStringList writes;
    {
        const platform::FaultInjection watch([&](std::string_view step) {
            if (step == "write") {
                writes += divefiles::notedstamps(program_->folder).join(QLatin1Char(' '));
            }
            return 0;
        });
        QCOMPARE(import(), ImportEnd::Done);
    }
    // The first write is that of the note; then what is replaced in old, old, dbtxt.
    QCOMPARE(writes, QStringList({QString(), kStamp, kStamp, kStamp}));
    QVERIFY(!QFile::exists(notePath()));
}

void TestImportLeftovers::theNoteGoesHoweverARunEnds() {
    putWaiting("a.txt", "Start,812345678\r\n");
    QCOMPARE(import(), ImportEnd::VersionMissing);
    QVERIFY(!QFile::exists(notePath()));
    putWaiting("a.txt", "ver=V1\rGas0000,1,2,3,4,5\r");
    QCOMPARE(import(), ImportEnd::TooManyFields);
    QVERIFY(!QFile::exists(notePath()));
    putWaiting("a.txt");
    {
        const platform::FaultInjection fault(
            [](std::string_view step) { return step == "commit" ? ENOSPC : 0; });
        QCOMPARE(import(), ImportEnd::Failed);
    }
    QVERIFY(!QFile::exists(notePath()));
}

void TestImportLeftovers::aNoteOfAKilledRunOutlivesAnImport() {
    QVERIFY(platform::writeFileWhole(notePath(), "11A0000\n"));
    putWaiting("a.txt");
    QCOMPARE(import(), ImportEnd::Done);
    QCOMPARE(divefiles::notedstamps(program_->folder), QStringList("11A0000"));
}

void TestImportLeftovers::aNoteThatCannotBeWrittenKeepsNoImport() {
    QVERIFY(QDir().mkpath(notePath() + QStringLiteral("/in it")));
    putWaiting("a.txt");
    QCOMPARE(import(), ImportEnd::Done);
    QCOMPARE(dbtxt("11A2B3Ca.txt"), goodDive());
    QVERIFY(QDir(notePath()).removeRecursively());
}

void TestImportLeftovers::aStartRemovesTheCopiesThatAKilledRunLeft() {
    for (const char* const name : {"a.txt", "b.txt", "c.txt"}) {
        putWaiting(name, goodDive() + name);
    }
    process().database.close();
    int files = 0;
    // Killed as the second file is about to be read.
    QVERIFY(tests::isKilledAt(1, [&] {
        const platform::FixedClock clock(kMoment);
        const platform::FaultInjection kill([&](std::string_view step) {
            if (step == "file" && ++files == 2) {
                raise(SIGKILL);
            }
            return 0;
        });
        program_->openStore();
        divefiles::ImportState state;
        divefiles::ImportScreen screen;
        divefiles::importdives(program_->folder, state, screen);
    }));
    program_->openStore();
    QCOMPARE(program_->names(QStringLiteral("dbtxt")),
             QStringList({"11A2B3Ca.txt", "11A2B3Cb.txt", "11A2B3Cc.txt"}));
    QCOMPARE(divefiles::notedstamps(program_->folder), QStringList(kStamp));
    start();
    QCOMPARE(program_->names(QStringLiteral("dbtxt")), QStringList("11A2B3Ca.txt"));
    QVERIFY(!QFile::exists(notePath()));
    QCOMPARE(import(), ImportEnd::Done);
    QCOMPARE(program_->names(QStringLiteral("dbtxt")).size(), 3);
}

void TestImportLeftovers::aStartTouchesNothingElseInDbtxt_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("inOld");
    QTest::addColumn<QString>("row");
    QTest::addColumn<bool>("stays");
    const QByteArray dive = goodDive();
    QTest::newRow("a leftover") << "11A2B3Ca.txt" << dive << dive << QString() << false;
    QTest::newRow("a leftover of a long name")
        << "11A2B3C12345678901234567890" << dive << dive << QString() << false;
    QTest::newRow("a dive names it") << "11A2B3Ca.txt" << dive << dive << "11A2B3Ca.txt" << true;
    QTest::newRow("a dive names it in other letters")
        << "11A2B3Ca.txt" << dive << dive << "11a2b3cA.TXT" << true;
    QTest::newRow("its bytes stand nowhere else")
        << "11A2B3Ca.txt" << dive << QByteArray("x") << QString() << true;
    QTest::newRow("as long as another, but other bytes")
        << "11A2B3Ca.txt" << dive << dive.toUpper() << QString() << true;
    QTest::newRow("another stamp") << "11A2B3Da.txt" << dive << dive << QString() << true;
    QTest::newRow("no stamp") << "a.txt" << dive << dive << QString() << true;
    QTest::newRow("the stamp in other letters") << "11a2b3ca.txt" << dive << dive << QString() << true;
    QTest::newRow("a longer name than a copy has")
        << "11A2B3C123456789012345678901" << dive << dive << QString() << true;
    QTest::newRow("an empty file") << "test.txt" << QByteArray() << QByteArray() << QString() << true;
}

void TestImportLeftovers::aStartTouchesNothingElseInDbtxt() {
    QFETCH(QString, name);
    QFETCH(QByteArray, bytes);
    QFETCH(QByteArray, inOld);
    QFETCH(QString, row);
    QFETCH(bool, stays);
    program_->put(QStringLiteral("dbtxt"), name, bytes);
    program_->put(QStringLiteral("old"), QStringLiteral("kept-7.txt"), inOld);
    if (!row.isEmpty()) {
        process().database.execute(
            platform::sqlWith("INSERT INTO main (DiveID, dbtxtname) VALUES ('D0000001', '", row, "')"));
    }
    // Without a note nothing is looked at.
    start();
    QCOMPARE(program_->names(QStringLiteral("dbtxt")), QStringList(name));
    QVERIFY(platform::writeFileWhole(notePath(), "0\n11A2B3C\n"));
    start();
    QCOMPARE(program_->names(QStringLiteral("dbtxt")), stays ? QStringList(name) : QStringList());
    QVERIFY(!QFile::exists(notePath()));
    QCOMPARE(program_->bytesOf(QStringLiteral("old"), QStringLiteral("kept-7.txt")), inOld);
}

void TestImportLeftovers::aStartThatCannotReadTheStoreLeavesAllForTheNext() {
    program_->put(QStringLiteral("dbtxt"), QStringLiteral("11A2B3Ca.txt"), goodDive());
    program_->put(QStringLiteral("old"), QStringLiteral("a.txt"), goodDive());
    QVERIFY(platform::writeFileWhole(notePath(), "11A2B3C\n"));
    process().database.close();
    const QByteArray store = program_->bytesOf(QString(), QStringLiteral("rb.mdb"));
    QVERIFY(platform::writeFileWhole(program_->storePath(), "damaged"));
    divefiles::tidydbtxt(program_->folder);
    QVERIFY(QFile::remove(program_->storePath()));
    divefiles::tidydbtxt(program_->folder);
    QCOMPARE(dbtxt("11A2B3Ca.txt"), goodDive());
    QCOMPARE(divefiles::notedstamps(program_->folder), QStringList(kStamp));
    QVERIFY(platform::writeFileWhole(program_->storePath(), store));
    program_->openStore();
}

/// Three leftovers of a killed run, of which a dive names the second, and a profile that is owed.
void TestImportLeftovers::leaveThree() {
    cleanup();
    init();
    importOwed("owed.txt", goodDive("812345670"));
    for (int i = 0; i < 3; ++i) {
        const QByteArray bytes = goodDive(QByteArray::number(812345671 + i));
        program_->put(QStringLiteral("dbtxt"), QStringLiteral("11A2B3C%1.txt").arg(i), bytes);
        program_->put(QStringLiteral("old"), QStringLiteral("%1.txt").arg(i), bytes);
    }
    process().database.execute("INSERT INTO main (DiveID, dbtxtname) VALUES ('D7', '11A2B3C1.txt')");
    QVERIFY(platform::writeFileWhole(notePath(), "11A2B3C\n"));
    process().database.close();
}

void TestImportLeftovers::verifyThree() {
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(program_->bytesOf(QStringLiteral("old"), QStringLiteral("%1.txt").arg(i)),
                 goodDive(QByteArray::number(812345671 + i)));
    }
    QCOMPARE(dbtxt("11A2B3C1.txt"), goodDive("812345672"));
}

/// Another start ends it, whatever came in between.
void TestImportLeftovers::verifyTidied() {
    divefiles::tidydbtxt(program_->folder);
    verifyThree();
    QCOMPARE(program_->names(QStringLiteral("dbtxt")), QStringList({"11A2B3C1.txt", "11A2B3Cowed.txt"}));
    QCOMPARE(dbtxt("11A2B3Cowed.txt"), goodDive("812345670"));
    QVERIFY(!QFile::exists(notePath()));
    program_->openStore();
    QCOMPARE(owed(), 0);
}

void TestImportLeftovers::killedAtAnyStepOfTheTidyingNothingIsLost() {
    bool killed = true;
    int step = 1;
    for (; killed; ++step) {
        leaveThree();
        killed = tests::isKilledAt(step, [&] { divefiles::tidydbtxt(program_->folder); });
        verifyThree();
        verifyTidied();
        if (QTest::currentTestFailed()) {
            QFAIL(qPrintable(QStringLiteral("killed at step %1").arg(step)));
        }
    }
    QVERIFY(step > 8);
}

void TestImportLeftovers::aTidyingThatFailsAtAnyStepLosesNothing() {
    for (const bool fromThenOn : {false, true}) {
        bool reached = true;
        for (int step = 1; reached; ++step) {
            leaveThree();
            int count = 0;
            {
                const platform::FaultInjection fault([&](std::string_view) {
                    ++count;
                    return count == step || (fromThenOn && count > step) ? EIO : 0;
                });
                divefiles::tidydbtxt(program_->folder);
            }
            reached = count >= step;
            verifyThree();
            verifyTidied();
            if (QTest::currentTestFailed()) {
                QFAIL(qPrintable(QStringLiteral("failed at step %1").arg(step)));
            }
        }
    }
}

void TestImportLeftovers::killedAtAnyStepAFileThatIsMovedAsideStandsInFull() {
    const QByteArray bytes = "Start,812345678\r\n";
    const auto standsIn = [&](const char* where) {
        const QString folder = QString::fromLatin1(where);
        const QStringList names = program_->names(folder);
        return std::any_of(names.begin(), names.end(),
                           [&](const QString& name) { return program_->bytesOf(folder, name) == bytes; });
    };
    bool killed = true;
    int step = 1;
    for (; killed; ++step) {
        cleanup();
        init();
        putWaiting("a.txt", bytes);
        program_->put(QStringLiteral("old"), QStringLiteral("a.txt"), "another");
        program_->put(QStringLiteral("corrupt"), QStringLiteral("a.txt"), "another");
        process().database.close();
        killed = tests::isKilledAt(
            step, [&] { divefiles::movetocorrupt(program_->folder, QStringLiteral("a.txt")); });
        QVERIFY2(standsIn("new") || (standsIn("old") && standsIn("corrupt")),
                 qPrintable(QString::number(step)));
        QCOMPARE(program_->bytesOf(QStringLiteral("old"), QStringLiteral("a.txt")), "another");
        QCOMPARE(program_->bytesOf(QStringLiteral("corrupt"), QStringLiteral("a.txt")), "another");
        QVERIFY(killed || !standsIn("new"));
    }
    QVERIFY(step > 8);
}

QTEST_GUILESS_MAIN(TestImportLeftovers)
#include "test_importleftovers.moc"
