#include "divefiles/filenames.h"
#include "divefiles/waitingfiles.h"
#include "platform/faultpoint.h"
#include "tests/divefiles/importstage.h"

#include <QTimeZone>

using namespace benthor;
using divefiles::ImportEnd;
using tests::goodDive;
using tests::kEndMessage;
using tests::kMoment;
using tests::kStamp;
using tests::RecordingScreen;

/// What an import keeps of its files, and how it makes sure that they are kept.
class TestImportKept : public QObject, private tests::ImportStage {
    Q_OBJECT

private slots:
    void init() { begin(); }
    void cleanup() { end(); }

    void otherBytesUnderANameInOldAreKeptUnderAnother();
    void otherBytesInOldThatAreKeptAlreadyAreNotKeptTwice();
    void whatCannotBeKeptInOldEndsTheRunBeforeAnythingIsStored();
    void aFileThatHasTheNumberedNameIsNotWrittenOver();
    void oneFolderForNewAndOldIsRefused();

    void twoImportsWithinASecondDoNotShareAProfile();
    void theHourThatComesTwiceDoesNotReplaceAProfile();
    void oneNameThatIsTakenMovesAllNamesOfTheRun();
    void theSameBytesKeepTheStamp();
    void aProfileThatIsOwedHoldsItsName();

    void aRunThatEndsBeforeItsTimeSaysSoToTheList();
    void theFileWithoutVersionIsNamedUntilTheNextRun();
    void eachRemovalIsOnTheDiskBeforeTheNextDiveAndTheNextRun();
    void aFolderNewThatCannotBeSyncedStartsNoRun();
    void aCopyInOldThatDoesNotReadBackKeepsTheFile();
    void rowsThatDoNotReadBackKeepTheFile();
};

void TestImportKept::otherBytesUnderANameInOldAreKeptUnderAnother() {
    program_->putWaiting(QStringLiteral("a.txt"), goodDive("812345678"));
    import();
    goTo(kMoment.addSecs(60));
    program_->putWaiting(QStringLiteral("a.txt"), goodDive("812345679"));
    QCOMPARE(import(), ImportEnd::Done);
    QCOMPARE(program_->bytesOf(QStringLiteral("old"), QStringLiteral("a.txt")), goodDive("812345679"));
    QCOMPARE(program_->bytesOf(QStringLiteral("old"), QStringLiteral("a-2.txt")), goodDive("812345678"));
    QCOMPARE(screen_.messages, QStringList(kEndMessage));
    QCOMPARE(screen_.belows, QStringList(QString()));
}

void TestImportKept::otherBytesInOldThatAreKeptAlreadyAreNotKeptTwice() {
    for (const char* const code : {"812345678", "812345679", "812345678", "812345679"}) {
        program_->putWaiting(QStringLiteral("a.txt"), goodDive(code));
        QCOMPARE(import(), ImportEnd::Done);
    }
    // Two names for two contents: the newest has the told one, and a third is needed only while they change.
    QCOMPARE(program_->bytesOf(QStringLiteral("old"), QStringLiteral("a.txt")), goodDive("812345679"));
    QCOMPARE(program_->names(QStringLiteral("old")), QStringList({"a-2.txt", "a-3.txt", "a.txt"}));
}

void TestImportKept::whatCannotBeKeptInOldEndsTheRunBeforeAnythingIsStored() {
    program_->put(QStringLiteral("old"), QStringLiteral("b.txt"), "another");
    program_->putWaiting(QStringLiteral("a.txt"), goodDive());
    program_->putWaiting(QStringLiteral("b.txt"), goodDive());
    int writes = 0;
    const platform::FaultInjection fault([&](std::string_view step) {
        // The note, two copies of a.txt, and then what b.txt would replace.
        return step == "write" && ++writes == 4 ? ENOSPC : 0;
    });
    QCOMPARE(import(), ImportEnd::Failed);
    QCOMPARE(writes, 4);
    QVERIFY(screen_.messages.value(0).contains(QLatin1String("b.txt")));
    QCOMPARE(newFiles(), QStringList({"a.txt", "b.txt"}));
    QCOMPARE(locations(), QStringList());
    QCOMPARE(program_->bytesOf(QStringLiteral("old"), QStringLiteral("b.txt")), "another");
}

void TestImportKept::aFileThatHasTheNumberedNameIsNotWrittenOver() {
    program_->put(QStringLiteral("old"), QStringLiteral("a.txt"), "first");
    program_->put(QStringLiteral("old"), QStringLiteral("a-2.txt"), "second");
    program_->putWaiting(QStringLiteral("a.txt"), goodDive());
    program_->putWaiting(QStringLiteral("a-2.txt"), goodDive("812345679"));
    QCOMPARE(import(), ImportEnd::Done);
    QList<QByteArray> kept;
    for (const QString& name : program_->names(QStringLiteral("old"))) {
        kept += program_->bytesOf(QStringLiteral("old"), name);
    }
    for (const QByteArray& bytes : {QByteArray("first"), QByteArray("second"), goodDive()}) {
        QCOMPARE(kept.count(bytes), 1);
    }
    QCOMPARE(program_->bytesOf(QStringLiteral("old"), QStringLiteral("a-2.txt")), goodDive("812345679"));
}

/// A link from one to the other would make the copy of each file the file itself.
void TestImportKept::oneFolderForNewAndOldIsRefused() {
    QVERIFY(QDir(program_->folder.path(u"new")).removeRecursively());
    QVERIFY(QFile::link(program_->folder.path(u"old"), program_->folder.path(u"new")));
    program_->put(QStringLiteral("old"), QStringLiteral("a.txt"), goodDive());
    QCOMPARE(import(), ImportEnd::Failed);
    QCOMPARE(program_->bytesOf(QStringLiteral("old"), QStringLiteral("a.txt")), goodDive());
    QCOMPARE(locations(), QStringList());
}

void TestImportKept::twoImportsWithinASecondDoNotShareAProfile() {
    for (const char* const code : {"812345678", "812345679", "812345680"}) {
        program_->putWaiting(QStringLiteral("a.txt"), goodDive(code));
        QCOMPARE(import(), ImportEnd::Done);
    }
    QCOMPARE(tests::ProgramFixture::rows("SELECT dbtxtname FROM main"),
             QStringList({"11A2B3Ca.txt", "11A2B3Da.txt", "11A2B3Ea.txt"}));
    QCOMPARE(program_->bytesOf(QStringLiteral("dbtxt"), QStringLiteral("11A2B3Ca.txt")),
             goodDive("812345678"));
    QCOMPARE(program_->bytesOf(QStringLiteral("dbtxt"), QStringLiteral("11A2B3Da.txt")),
             goodDive("812345679"));
    QCOMPARE(program_->bytesOf(QStringLiteral("dbtxt"), QStringLiteral("11A2B3Ea.txt")),
             goodDive("812345680"));
}

void TestImportKept::theHourThatComesTwiceDoesNotReplaceAProfile() {
    const QTimeZone berlin("Europe/Berlin");
    QStringList names;
    for (const int hour : {0, 1}) { // 02:30 in summer time, 02:30 in winter time
        const QDateTime moment = QDateTime(QDate(2024, 10, 27), QTime(hour, 30), Qt::UTC).toTimeZone(berlin);
        QCOMPARE(moment.time(), QTime(2, 30));
        goTo(moment);
        program_->putWaiting(QStringLiteral("a.txt"), goodDive(hour == 0 ? "812345678" : "812345679"));
        QCOMPARE(import(), ImportEnd::Done);
    }
    names = tests::ProgramFixture::rows("SELECT dbtxtname FROM main");
    QVERIFY(names.at(0) != names.at(1));
    QCOMPARE(program_->bytesOf(QStringLiteral("dbtxt"), names.at(0)), goodDive("812345678"));
    QCOMPARE(program_->bytesOf(QStringLiteral("dbtxt"), names.at(1)), goodDive("812345679"));
}

void TestImportKept::oneNameThatIsTakenMovesAllNamesOfTheRun() {
    program_->put(QStringLiteral("dbtxt"), QStringLiteral("11A2B3Cb.txt"), "another profile");
    program_->put(QStringLiteral("dbtxt"), QStringLiteral("11A2B3Da.txt"), "another profile");
    program_->putWaiting(QStringLiteral("a.txt"), goodDive());
    program_->putWaiting(QStringLiteral("b.txt"), goodDive());
    QCOMPARE(import(), ImportEnd::Done);
    QCOMPARE(state_.importstamp, "11A2B3E");
    QCOMPARE(tests::ProgramFixture::rows("SELECT dbtxtname FROM main"),
             QStringList({"11A2B3Ea.txt", "11A2B3Eb.txt"}));
    QCOMPARE(program_->names(QStringLiteral("dbtxt")),
             QStringList({"11A2B3Cb.txt", "11A2B3Da.txt", "11A2B3Ea.txt", "11A2B3Eb.txt"}));
    QCOMPARE(program_->bytesOf(QStringLiteral("dbtxt"), QStringLiteral("11A2B3Cb.txt")), "another profile");
}

void TestImportKept::theSameBytesKeepTheStamp() {
    program_->put(QStringLiteral("dbtxt"), QStringLiteral("11A2B3Ca.txt"), goodDive());
    program_->putWaiting(QStringLiteral("a.txt"), goodDive());
    QCOMPARE(import(), ImportEnd::Done);
    QCOMPARE(state_.importstamp, kStamp);
    QCOMPARE(divefiles::nextstamp(QStringLiteral("11A2BFF")), "11A2C00");
}

void TestImportKept::aProfileThatIsOwedHoldsItsName() {
    QVERIFY(QDir(program_->folder.path(u"dbtxt")).removeRecursively());
    program_->putWaiting(QStringLiteral("a.txt"), goodDive("812345678"));
    QCOMPARE(import(), ImportEnd::Done);
    QVERIFY(QDir().mkpath(program_->folder.path(u"dbtxt")));
    program_->putWaiting(QStringLiteral("a.txt"), goodDive("812345679"));
    QCOMPARE(import(), ImportEnd::Done);
    QCOMPARE(tests::ProgramFixture::rows("SELECT dbtxtname FROM main"),
             QStringList({"11A2B3Ca.txt", "11A2B3Da.txt"}));
}

void TestImportKept::aRunThatEndsBeforeItsTimeSaysSoToTheList() {
    program_->putWaiting(QStringLiteral("a.txt"), goodDive());
    program_->putWaiting(QStringLiteral("b.txt"), "Start,812345678\r\n");
    QCOMPARE(import(), ImportEnd::VersionMissing);
    QCOMPARE(screen_.steps.last(3),
             QStringList({"message Version or Interval not found !", "runbroke", "runends"}));
    program_->putWaiting(QStringLiteral("a.txt"), "ver=V1\rGas0000,1,2,3,4,5\r");
    QCOMPARE(import(), ImportEnd::TooManyFields);
    QCOMPARE(screen_.steps.last(3),
             QStringList({"message Errors Gas - Too many parameters  !", "runbroke", "runends"}));
    program_->putWaiting(QStringLiteral("a.txt"), goodDive());
    QCOMPARE(import(), ImportEnd::VersionMissing);
    QVERIFY(QFile::remove(program_->folder.path(u"new", u"b.txt")));
    program_->putWaiting(QStringLiteral("a.txt"), goodDive());
    QCOMPARE(import(), ImportEnd::Done);
    QVERIFY(!screen_.steps.contains(QStringLiteral("runbroke")));
}

void TestImportKept::theFileWithoutVersionIsNamedUntilTheNextRun() {
    program_->putWaiting(QStringLiteral("a.txt"), "Start,812345678\r\n");
    program_->putWaiting(QStringLiteral("b.txt"), goodDive());
    QCOMPARE(import(), ImportEnd::VersionMissing);
    QCOMPARE(state_.unreadable, "a.txt");
    QVERIFY(divefiles::movetocorrupt(program_->folder, state_.unreadable));
    QCOMPARE(program_->bytesOf(QStringLiteral("corrupt"), QStringLiteral("a.txt")), "Start,812345678\r\n");
    QCOMPARE(newFiles(), QStringList("b.txt"));
    QCOMPARE(import(), ImportEnd::Done);
    QCOMPARE(state_.unreadable, QString());
    QCOMPARE(locations(), QStringList("b.txt"));
}

void TestImportKept::eachRemovalIsOnTheDiskBeforeTheNextDiveAndTheNextRun() {
    program_->putWaiting(QStringLiteral("a.txt"), goodDive());
    program_->putWaiting(QStringLiteral("b.txt"), goodDive());
    QStringList steps;
    {
        const platform::FaultInjection watch([&](std::string_view step) {
            steps += QString::fromLatin1(step.data(), static_cast<qsizetype>(step.size()));
            return 0;
        });
        QCOMPARE(import(), ImportEnd::Done);
    }
    QVERIFY(steps.indexOf(QStringLiteral("syncfolder")) < steps.indexOf(QStringLiteral("write")));
    int removals = 0;
    for (qsizetype i = 0; i + 2 < steps.size(); ++i) {
        if (steps[i] == QLatin1String("remove") && steps[i + 2] == QLatin1String("removed")) {
            QCOMPARE(steps[i + 1], "syncfolder");
            ++removals;
        }
    }
    QCOMPARE(removals, 2);
    // The second dive is not stored before the first file's removal is on the disk, nor does the run end
    // before.
    const qsizetype first = steps.indexOf(QStringLiteral("removed"));
    const qsizetype synced = steps.indexOf(QStringLiteral("synced"), first);
    QVERIFY(first > 0 && synced > first && synced < steps.indexOf(QStringLiteral("commit"), first));
    QCOMPARE(steps.count(QStringLiteral("synced")), 2);
}

void TestImportKept::aFolderNewThatCannotBeSyncedStartsNoRun() {
    program_->putWaiting(QStringLiteral("a.txt"), goodDive());
    {
        const platform::FaultInjection fault(
            [](std::string_view step) { return step == "syncfolder" ? EIO : 0; });
        QCOMPARE(import(), ImportEnd::Failed);
    }
    QVERIFY(screen_.messages.value(0).contains(program_->folder.path(u"new")));
    QCOMPARE(program_->names(QStringLiteral("old")), QStringList());
    QCOMPARE(import(), ImportEnd::Done);
}

void TestImportKept::aCopyInOldThatDoesNotReadBackKeepsTheFile() {
    program_->putWaiting(QStringLiteral("a.txt"), goodDive());
    RecordingScreen screen;
    {
        // The copy is damaged between the moment at which the rows are stored and the removal.
        const platform::FaultInjection fault([&](std::string_view step) {
            if (step == "compare") {
                program_->put(QStringLiteral("old"), QStringLiteral("a.txt"), "damaged");
            }
            return 0;
        });
        QCOMPARE(divefiles::importdives(program_->folder, state_, screen), ImportEnd::Failed);
    }
    QCOMPARE(newFiles(), QStringList("a.txt"));
    QVERIFY2(screen.messages.value(0).startsWith(QLatin1String("The dive of the file \"a.txt\" is stored")),
             qPrintable(screen.messages.value(0)));
    QCOMPARE(program_->bytesOf(QStringLiteral("new"), QStringLiteral("a.txt")), goodDive());
}

void TestImportKept::rowsThatDoNotReadBackKeepTheFile() {
    program_->putWaiting(QStringLiteral("a.txt"), goodDive());
    {
        const platform::FaultInjection fault([](std::string_view step) {
            if (step == "committed") {
                platform::Database other;
                other.open(process().database.path());
                other.execute("UPDATE gas SET GasN2 = '1'");
            }
            return 0;
        });
        QCOMPARE(import(), ImportEnd::Failed);
    }
    QCOMPARE(newFiles(), QStringList("a.txt"));
    QVERIFY2(screen_.messages.value(0).startsWith(
                 QLatin1String("What was stored of the file \"a.txt\" cannot be read back.")),
             qPrintable(screen_.messages.value(0)));
}

QTEST_GUILESS_MAIN(TestImportKept)
#include "test_importkept.moc"
