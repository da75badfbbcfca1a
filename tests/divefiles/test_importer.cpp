#include "divefiles/filenames.h"
#include "divefiles/validators.h"
#include "platform/textformat.h"
#include "tests/divefiles/importstage.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace benthor;
using divefiles::ImportEnd;
using tests::goodDive;
using tests::kEndMessage;
using tests::kMoment;
using tests::kStamp;
using tests::RecordingScreen;

namespace {

QJsonObject vectors() {
    QFile file(QStringLiteral(BENTHOR_TEST_DATA "/dives/expected.json"));
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("the vectors cannot be read");
    }
    return QJsonDocument::fromJson(file.readAll()).object();
}

QByteArray vectorFile(const QString& name) {
    QFile file(QStringLiteral(BENTHOR_TEST_DATA "/dives/") + name);
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("a vector cannot be read");
    }
    return file.readAll();
}

QStringList texts(const QJsonValue& array) {
    QStringList list;
    for (const QJsonValue& value : array.toArray()) {
        list += value.toString();
    }
    return list;
}

/// The fields of one dive's rows behind the identifier.
QJsonArray rowsOf(const char* select, const QString& diveid) {
    QJsonArray lines;
    platform::Recordset rows = process().database.openRecordset(platform::sqlWith(select, diveid, "'"));
    for (; !rows.eof(); rows.moveNext()) {
        QJsonArray fields;
        for (int i = 1; i < rows.fieldCount(); ++i) {
            fields += rows.value(i).text();
        }
        lines += fields;
    }
    return lines;
}

/// Compares the row in hand with the fields of a vector: a field that is not named there was never written.
void compareMain(const platform::Recordset& row, const QJsonObject& expected) {
    for (int i = 0; i < row.fieldCount(); ++i) {
        const QString name = row.fieldName(i);
        const QJsonValue value = expected.contains(name) ? expected.value(name) : QJsonValue(QString());
        if (value.isNull()) {
            continue;
        }
        const QString text = row.isDateTime(i)
                                 ? platform::formatDate(row.value(i).dateTime(), u"mmm/dd/yyyy hh:mm:ss")
                                 : row.value(i).text();
        QVERIFY2(text == value.toString(),
                 qPrintable(name + QLatin1String(": ") + text + QLatin1String(" for ") + value.toString()));
    }
}

} // namespace

class TestImporter : public QObject, private tests::ImportStage {
    Q_OBJECT

private slots:
    void init() { begin(); }
    void cleanup() { end(); }

    void headersAreImportedAsTheVectorsSay_data();
    void headersAreImportedAsTheVectorsSay();
    void runsEndAsTheVectorsSay_data();
    void runsEndAsTheVectorsSay();
    void namesAreAsTheVectorsSay();
    void theStampIsMadeOfDayAndTime();
    void aLongNameIsWalkedBehindItsLastBackslash();

    void anImportGoesThroughItsScreenInOrder();
    void noFilesEndTheRunWithoutAWord();
    void aRunDoesNothingWhileOneIsOn();
    void importingIsSetFromTheSecondPassToTheEndMessage();
    void stopimportEndsTheRunAfterTheFileInHand();
    void everyFileIsCopiedBeforeTheFirstIsRead();
    void profilesAreCounted();

    void twoFilesWithTheSameLast20CharactersOverwriteOneAnotherInDbtxt();
    void anEmptyFileProducesNoRowAndIsDeleted();
    void theSameFileImportedAgainGetsANewIdentifier();
    void deletingTheHighestDiveThenImportingReusesItsIdentifier();
    void aHeaderLongerThanTheScanIsCut();
    void aNameWithASingleQuoteIsImportedAndRead();
    void aNameOutsideAsciiIsImportedAndRead();
    void highBytesComeBackAsTheyWere();
    void zeroBytesComeBackAsTheyWere();
    void aFileWithoutVersionDoesNotWriteIntoTheDiveBefore();
    void aStartDateBeyondTheYear9999LeavesTheDateNullAndGoesOn();

    void aGasLineOfTooManyFieldsSaysSoAndGoesToCorrupt();
    void aTissueLineOfTooManyFieldsSaysSoAndGoesToCorrupt();
    void aMissingVersionAndIntervalSaysSoAndLeavesTheFile();
    void behindARunThatEndedTheNextStartsClean();
    void aRefusedSerialSaysSoAndTheDiveStays();
    void eachRefusedSerialHasABoxOfItsOwn();
    void aFailedCopyIntoDbtxtIsPassedOver();

    void missingFoldersOldAndCorruptAreMade();
};

void TestImporter::headersAreImportedAsTheVectorsSay_data() {
    QTest::addColumn<QString>("file");
    QTest::addColumn<QJsonObject>("header");
    const QJsonObject all = vectors();
    QJsonArray cases = all[QStringLiteral("cases")].toArray();
    cases += all[QStringLiteral("large")];
    QCOMPARE(cases.size(), 86);
    for (const QJsonValue& value : cases) {
        const QString file = value[QStringLiteral("file")].toString();
        QTest::newRow(qPrintable(file)) << file << value[QStringLiteral("header")].toObject();
    }
}

void TestImporter::headersAreImportedAsTheVectorsSay() {
    QFETCH(QString, file);
    QFETCH(QJsonObject, header);
    const QByteArray bytes = vectorFile(file);
    program_->putWaiting(file, bytes);
    import();

    QStringList messages = screen_.messages;
    const bool ended = messages.removeOne(kEndMessage);
    QCOMPARE(messages.join(QLatin1Char('|')), header[QStringLiteral("message")].toString());
    if (!header[QStringLiteral("end_message")].isNull()) {
        QCOMPARE(ended, !header[QStringLiteral("end_message")].toString().isEmpty());
    }
    QCOMPARE(newFiles().contains(file), header[QStringLiteral("left_in_new")].toBool());
    QCOMPARE(program_->names(QStringLiteral("corrupt")).contains(file),
             header[QStringLiteral("copied_to_corrupt")].toBool());
    QCOMPARE(program_->bytesOf(QStringLiteral("old"), file), bytes);
    QCOMPARE(program_->bytesOf(QStringLiteral("dbtxt"), header[QStringLiteral("copy_in_dbtxt")].toString()),
             bytes);

    const QJsonArray dives = header[QStringLiteral("dives")].toArray();
    platform::Recordset rows = process().database.openRecordset("SELECT * FROM main ORDER BY DiveID");
    QCOMPARE(rows.recordCount(), dives.size());
    for (const QJsonValue& dive : dives) {
        compareMain(rows, dive[QStringLiteral("main")].toObject());
        const QString diveid = rows.value(0).text();
        QCOMPARE(rowsOf("SELECT * FROM gas WHERE diveid = '", diveid), dive[QStringLiteral("gas")].toArray());
        QCOMPARE(rowsOf("SELECT * FROM tissue WHERE diveid = '", diveid),
                 dive[QStringLiteral("tissue")].toArray());
        process().currentdiveid = diveid;
        divefiles::checkdive(process().database);
        if (!dive[QStringLiteral("faults")].isNull()) {
            QCOMPARE(process().problemtext.split(QLatin1Char('\r'), Qt::SkipEmptyParts),
                     texts(dive[QStringLiteral("faults")]));
        }
        if (!dive[QStringLiteral("opens")].isNull()) {
            QCOMPARE(divefiles::diveopens(process().problemtext), dive[QStringLiteral("opens")].toBool());
        }
        rows.moveNext();
    }
}

void TestImporter::runsEndAsTheVectorsSay_data() {
    QTest::addColumn<QJsonObject>("run");
    const QJsonArray runs = vectors()[QStringLiteral("runs")].toArray();
    QCOMPARE(runs.size(), 4);
    for (const QJsonValue& run : runs) {
        QTest::newRow(qPrintable(run[QStringLiteral("about")].toString())) << run.toObject();
    }
}

void TestImporter::runsEndAsTheVectorsSay() {
    QFETCH(QJsonObject, run);
    const QJsonObject files = run[QStringLiteral("files")].toObject();
    for (auto it = files.begin(); it != files.end(); ++it) {
        program_->putWaiting(it.key(), vectorFile(it.value().toString()));
    }
    if (!run[QStringLiteral("serial_before")].isNull()) {
        process().database.execute(platform::sqlWith("UPDATE serialno SET serial_no = '",
                                                     run[QStringLiteral("serial_before")].toString(), "'"));
    }
    import();
    QCOMPARE(tests::ProgramFixture::rows("SELECT DiveID FROM main"), texts(run[QStringLiteral("ids")]));
    QCOMPARE(locations(), texts(run[QStringLiteral("locations")]));
    QCOMPARE(tests::ProgramFixture::rows("SELECT serial_no FROM serialno"),
             QStringList(run[QStringLiteral("serial_after")].toString()));
    QCOMPARE(newFiles(), texts(run[QStringLiteral("left_in_new")]));
    for (const char* const place : {"old", "dbtxt", "corrupt"}) {
        QCOMPARE(program_->names(QString::fromLatin1(place)), texts(run[QLatin1String(place)]));
    }
    QCOMPARE(screen_.messages, texts(run[QStringLiteral("messages")]));
}

void TestImporter::namesAreAsTheVectorsSay() {
    const QJsonObject rules = vectors()[QStringLiteral("rules")].toObject();
    const QJsonObject copies = rules[QStringLiteral("copy_name")].toObject();
    for (auto it = copies.begin(); it != copies.end(); ++it) {
        QCOMPARE(divefiles::copyname(kStamp, it.key()), it.value().toString());
    }
    const QJsonObject stored = rules[QStringLiteral("dbtxtname")].toObject();
    QVERIFY(copies.size() >= 4 && stored.size() >= 6);
    for (auto it = stored.begin(); it != stored.end(); ++it) {
        QCOMPARE(divefiles::dbtxtname(kStamp, it.key()), it.value().toString());
    }
}

void TestImporter::theStampIsMadeOfDayAndTime() {
    QCOMPARE(divefiles::importstamp(kMoment), kStamp);
    // Day 50000 is 0 of its ten thousand; a quarter of a day is 25000 = 0x61A8.
    QCOMPARE(divefiles::importstamp(QDateTime(QDate(1899, 12, 30).addDays(50000), QTime(6, 0))), "61A8");
    QCOMPARE(divefiles::importstamp(QDateTime(QDate(1899, 12, 30).addDays(50001), QTime(0, 0))), "186A0");
}

void TestImporter::aLongNameIsWalkedBehindItsLastBackslash() {
    QCOMPARE(divefiles::dbtxtname(kStamp, QStringLiteral("a long folder of the dives\\reef.one.txt")),
             "reef.txt");
}

void TestImporter::anImportGoesThroughItsScreenInOrder() {
    program_->putWaiting(QStringLiteral("a.txt"), goodDive());
    program_->putWaiting(QStringLiteral("b.txt"), goodDive());
    QCOMPARE(import(), ImportEnd::Done);
    const QString bytes = QString::number(2 * goodDive().size());
    QCOMPARE(screen_.steps,
             QStringList({"runbegins", "filelisted a.txt", "filelisted b.txt", "totals 2 " + bytes, "repaint",
                          "filebegins 1 System processing : a.txt", "yield", "stopenabled",
                          "filebegins 2 System processing : b.txt", "yield", "stopenabled", "lastfiledone",
                          "message Dive(s) put into database.", "showdives", "runends"}));
    QVERIFY(!process().importing);
    QCOMPARE(process().currentdiveid, "D0000002");
}

void TestImporter::noFilesEndTheRunWithoutAWord() {
    program_->putWaiting(QStringLiteral("notes.csv"), "no dive");
    QCOMPARE(import(), ImportEnd::NoFiles);
    QCOMPARE(screen_.steps, QStringList({"runbegins", "nofiles", "runends"}));
}

void TestImporter::aRunDoesNothingWhileOneIsOn() {
    program_->putWaiting(QStringLiteral("a.txt"), goodDive());
    process().importing = true;
    QCOMPARE(import(), ImportEnd::AlreadyRunning);
    QCOMPARE(screen_.steps, QStringList());
    QVERIFY(process().importing);
    QCOMPARE(newFiles(), QStringList("a.txt"));
}

void TestImporter::importingIsSetFromTheSecondPassToTheEndMessage() {
    program_->putWaiting(QStringLiteral("a.txt"), goodDive());
    QStringList seen;
    RecordingScreen screen;
    screen.at = [&](const QString& step) {
        seen += step.section(QLatin1Char(' '), 0, 0) + (process().importing ? "+" : "-");
    };
    divefiles::importdives(program_->folder, state_, screen);
    QCOMPARE(seen, QStringList({"runbegins-", "filelisted-", "totals-", "repaint+", "filebegins+", "yield+",
                                "stopenabled+", "lastfiledone+", "message+", "showdives+", "runends+"}));
    QVERIFY(!process().importing);
}

void TestImporter::stopimportEndsTheRunAfterTheFileInHand() {
    for (const char* const name : {"a.txt", "b.txt", "c.txt"}) {
        program_->putWaiting(QString::fromLatin1(name), goodDive());
    }
    int yields = 0;
    RecordingScreen screen;
    screen.at = [&](const QString& step) {
        if (step == QLatin1String("yield") && ++yields == 2) {
            state_.keepimporting = false;
        }
    };
    QCOMPARE(divefiles::importdives(program_->folder, state_, screen), ImportEnd::Done);
    QCOMPARE(locations(), QStringList({"a.txt", "b.txt"}));
    QCOMPARE(newFiles(), QStringList("c.txt"));
    QCOMPARE(screen.messages, QStringList(kEndMessage));
}

void TestImporter::everyFileIsCopiedBeforeTheFirstIsRead() {
    program_->putWaiting(QStringLiteral("a.txt"), goodDive());
    program_->putWaiting(QStringLiteral("b.txt"), "rubbish");
    RecordingScreen screen;
    screen.at = [&](const QString& step) {
        if (step == QLatin1String("repaint")) {
            QCOMPARE(program_->names(QStringLiteral("old")), QStringList({"a.txt", "b.txt"}));
            QCOMPARE(program_->names(QStringLiteral("dbtxt")), QStringList({"11A2B3Ca.txt", "11A2B3Cb.txt"}));
            QCOMPARE(newFiles(), QStringList({"a.txt", "b.txt"}));
        }
    };
    QCOMPARE(divefiles::importdives(program_->folder, state_, screen), ImportEnd::Done);
    QCOMPARE(program_->bytesOf(QStringLiteral("old"), QStringLiteral("b.txt")), "rubbish");
}

void TestImporter::profilesAreCounted() {
    program_->putWaiting(QStringLiteral("a.txt"), goodDive());
    program_->putWaiting(QStringLiteral("b.txt"), goodDive());
    import();
    QCOMPARE(state_.divecounter, 2);
    QCOMPARE(state_.importstamp, kStamp);
}

void TestImporter::twoFilesWithTheSameLast20CharactersOverwriteOneAnotherInDbtxt() {
    const QString one = QStringLiteral("1-common-name-of-both.txt");
    const QString two = QStringLiteral("2-common-name-of-both.txt");
    program_->putWaiting(one, goodDive("812345678"));
    program_->putWaiting(two, goodDive("812345679"));
    import();
    const QStringList names = tests::ProgramFixture::rows("SELECT dbtxtname FROM main");
    QCOMPARE(names, QStringList({"11A2B3Cmon-name-of-both.txt", "11A2B3Cmon-name-of-both.txt"}));
    QCOMPARE(program_->bytesOf(QStringLiteral("dbtxt"), names.first()), goodDive("812345679"));
    QCOMPARE(program_->bytesOf(QStringLiteral("old"), one), goodDive("812345678"));
}

void TestImporter::anEmptyFileProducesNoRowAndIsDeleted() {
    program_->putWaiting(QStringLiteral("a.txt"), "");
    QCOMPARE(import(), ImportEnd::Done);
    QCOMPARE(locations(), QStringList());
    QCOMPARE(newFiles(), QStringList());
    QCOMPARE(program_->bytesOf(QStringLiteral("old"), QStringLiteral("a.txt")), "");
    QCOMPARE(program_->bytesOf(QStringLiteral("dbtxt"), QStringLiteral("11A2B3Ca.txt")), "");
}

void TestImporter::theSameFileImportedAgainGetsANewIdentifier() {
    program_->putWaiting(QStringLiteral("a.txt"), goodDive());
    import();
    QCOMPARE(divefiles::takemanualfile(program_->folder, program_->folder.path(u"old", u"a.txt")), QString());
    import();
    QCOMPARE(tests::ProgramFixture::rows("SELECT DiveID, Location FROM main"),
             QStringList({"D0000001|a.txt", "D0000002|a.txt"}));
}

void TestImporter::deletingTheHighestDiveThenImportingReusesItsIdentifier() {
    program_->putWaiting(QStringLiteral("a.txt"), goodDive());
    import();
    process().database.execute("DELETE FROM main");
    process().database.execute("UPDATE serialno SET serial_no = 'D0000000'");
    goTo(kMoment.addSecs(60));
    program_->putWaiting(QStringLiteral("b.txt"), goodDive());
    import();
    QCOMPARE(tests::ProgramFixture::rows("SELECT DiveID, Location FROM main"), QStringList("D0000001|b.txt"));
    QCOMPARE(program_->names(QStringLiteral("dbtxt")).size(), 2);
}

void TestImporter::aHeaderLongerThanTheScanIsCut() {
    program_->putWaiting(QStringLiteral("a.txt"),
                         "ver=V1\r\n" + QByteArray(1100, '-') + "\r\nTissue0000,1,2\r\n");
    import();
    QCOMPARE(locations(), QStringList("a.txt"));
    QCOMPARE(tests::ProgramFixture::rows("SELECT * FROM tissue"), QStringList());
}

void TestImporter::aNameWithASingleQuoteIsImportedAndRead() {
    const QString name = QStringLiteral("Devil's 'reef'.txt");
    program_->putWaiting(name, goodDive());
    QCOMPARE(import(), ImportEnd::Done);
    QCOMPARE(tests::ProgramFixture::rows("SELECT Location, dbtxtname FROM main"),
             QStringList(name + "|" + kStamp + name));
    QCOMPARE(program_->bytesOf(QStringLiteral("dbtxt"), kStamp + name), goodDive());
}

void TestImporter::aNameOutsideAsciiIsImportedAndRead() {
    const QString name = QString::fromUtf8("Gro\xc3\x9f"
                                           "e H\xc3\xb6hle.txt");
    program_->putWaiting(name, goodDive());
    QCOMPARE(import(), ImportEnd::Done);
    QCOMPARE(locations(), QStringList(name));
    QCOMPARE(program_->bytesOf(QStringLiteral("old"), name), goodDive());
}

void TestImporter::highBytesComeBackAsTheyWere() {
    const QByteArray bytes = "\x80\x9f\xa0\xe9\xff\xc3\x9f";
    program_->putWaiting(QStringLiteral("a.txt"),
                         "ver=V1\rRecint=10\rSN=" + bytes + "\rGas" + bytes + ",1,2,3,4\r");
    QCOMPARE(import(), ImportEnd::Done);
    QCOMPARE(tests::ProgramFixture::rows("SELECT Suit FROM main").first().toLatin1(), bytes);
    QCOMPARE(tests::ProgramFixture::rows("SELECT Gastype FROM gas").first().toLatin1(), bytes);
}

void TestImporter::zeroBytesComeBackAsTheyWere() {
    const QByteArray bytes("A\0B\0", 4);
    program_->putWaiting(QStringLiteral("a.txt"), "ver=" + bytes + "\rRecint=10\rSN=" + bytes + "\r");
    QCOMPARE(import(), ImportEnd::Done);
    QCOMPARE(tests::ProgramFixture::rows("SELECT Version FROM main").first().toLatin1(), bytes);
    QCOMPARE(tests::ProgramFixture::rows("SELECT Suit FROM main").first().toLatin1(), bytes);
}

void TestImporter::aFileWithoutVersionDoesNotWriteIntoTheDiveBefore() {
    program_->putWaiting(QStringLiteral("a.txt"), goodDive());
    import();
    const QStringList before = tests::ProgramFixture::rows("SELECT * FROM main");
    program_->putWaiting(QStringLiteral("b.txt"), "SN=OTHER\rOTU,99\rGas0009,1,2,3,4\rTissue0009,1,2\r");
    QCOMPARE(import(), ImportEnd::Done);
    QCOMPARE(tests::ProgramFixture::rows("SELECT * FROM main"), before);
    QCOMPARE(tests::ProgramFixture::rows("SELECT * FROM gas WHERE Gastype = '0009'"), QStringList());
}

void TestImporter::aStartDateBeyondTheYear9999LeavesTheDateNullAndGoesOn() {
    program_->putWaiting(QStringLiteral("a.txt"), goodDive("999999999999"));
    QCOMPARE(import(), ImportEnd::Done);
    QCOMPARE(tests::ProgramFixture::rows("SELECT Startcode, startdate, otu FROM main"),
             QStringList("999999999999|(null)|12"));
    divefiles::checkdive(process().database);
    QCOMPARE(process().problemtext, "\rMain Profile - Error in Start Date format !");
}

void TestImporter::aGasLineOfTooManyFieldsSaysSoAndGoesToCorrupt() {
    const QByteArray bytes = "ver=V1\rRecint=10\rGas0000,1,2,3,4\rGas0001,1,2,3,4,5\r";
    program_->putWaiting(QStringLiteral("a.txt"), bytes);
    program_->putWaiting(QStringLiteral("b.txt"), goodDive());
    QCOMPARE(import(), ImportEnd::TooManyFields);
    QCOMPARE(screen_.messages, QStringList("Errors Gas - Too many parameters  !"));
    QCOMPARE(program_->bytesOf(QStringLiteral("corrupt"), QStringLiteral("a.txt")), bytes);
    QCOMPARE(newFiles(), QStringList("b.txt"));
    QCOMPARE(tests::ProgramFixture::rows("SELECT * FROM gas"), QStringList("D0000001|0000|1|2|3|4\r"));
    QVERIFY(!process().mainrecordset.isOpen());
    QVERIFY(!process().importing);
    QCOMPARE(screen_.steps.last(), "runends");
    QVERIFY(!screen_.steps.contains(QStringLiteral("showdives")));
}

void TestImporter::aTissueLineOfTooManyFieldsSaysSoAndGoesToCorrupt() {
    program_->putWaiting(QStringLiteral("a.txt"),
                         "ver=V1\rRecint=10\rTissue0000,1,2\rTissue0001,1234567890\r");
    QCOMPARE(import(), ImportEnd::TooManyFields);
    QCOMPARE(screen_.messages, QStringList("Errors Tissue - Too many parametre  !"));
    QCOMPARE(program_->names(QStringLiteral("corrupt")), QStringList("a.txt"));
    QCOMPARE(newFiles(), QStringList());
    QCOMPARE(tests::ProgramFixture::rows("SELECT * FROM tissue"), QStringList("D0000001|0000|1|2\r"));
}

void TestImporter::aMissingVersionAndIntervalSaysSoAndLeavesTheFile() {
    program_->putWaiting(QStringLiteral("a.txt"), "SN=KD\r\nStart,812345678\r\n");
    program_->putWaiting(QStringLiteral("b.txt"), goodDive());
    QCOMPARE(import(), ImportEnd::VersionMissing);
    QCOMPARE(screen_.messages, QStringList("Version or Interval not found !"));
    QCOMPARE(newFiles(), QStringList({"a.txt", "b.txt"}));
    QCOMPARE(locations(), QStringList());
    QCOMPARE(program_->names(QStringLiteral("corrupt")), QStringList());
    QVERIFY(!process().importing);
    QCOMPARE(screen_.steps.last(), "runends");
}

void TestImporter::behindARunThatEndedTheNextStartsClean() {
    program_->putWaiting(QStringLiteral("a.txt"), "Start,812345678\r\n");
    program_->putWaiting(QStringLiteral("b.txt"), goodDive());
    import();
    QVERIFY(QFile::remove(program_->folder.path(u"new", u"a.txt")));
    state_.keepimporting = false;
    QCOMPARE(import(), ImportEnd::Done);
    QCOMPARE(screen_.steps.filter(QStringLiteral("filelisted")), QStringList("filelisted b.txt"));
    QCOMPARE(screen_.messages, QStringList(kEndMessage));
    QCOMPARE(tests::ProgramFixture::rows("SELECT DiveID, Location FROM main"), QStringList("D0000001|b.txt"));
}

void TestImporter::aRefusedSerialSaysSoAndTheDiveStays() {
    const QByteArray serial(60, 'x');
    program_->putWaiting(QStringLiteral("a.txt"), goodDive().replace("KD00123", serial));
    QCOMPARE(import(), ImportEnd::Done);
    QCOMPARE(
        screen_.messages,
        QStringList({"Data corrupt. Cause could be intermittent link to Morvalien. File is being deleted..",
                     kEndMessage}));
    QCOMPARE(tests::ProgramFixture::rows("SELECT UserName, Suit, otu FROM main"),
             QStringList(serial + "|(null)|12"));
    QCOMPARE(newFiles(), QStringList());
}

void TestImporter::eachRefusedSerialHasABoxOfItsOwn() {
    const QByteArray line = "SN=" + QByteArray(60, 'x') + "\r\n";
    program_->putWaiting(QStringLiteral("a.txt"), goodDive().replace("SN=KD00123\r\n", line + line));
    QCOMPARE(import(), ImportEnd::Done);
    const QString refused = QStringLiteral(
        "Data corrupt. Cause could be intermittent link to Morvalien. File is being deleted..");
    QCOMPARE(screen_.messages, QStringList({refused, refused, kEndMessage}));
}

void TestImporter::aFailedCopyIntoDbtxtIsPassedOver() {
    QVERIFY(QDir(program_->folder.path(u"dbtxt")).removeRecursively());
    program_->putWaiting(QStringLiteral("a.txt"), goodDive());
    QCOMPARE(import(), ImportEnd::Done);
    QCOMPARE(screen_.messages, QStringList(kEndMessage));
    QCOMPARE(tests::ProgramFixture::rows("SELECT dbtxtname FROM main"), QStringList("11A2B3Ca.txt"));
}

void TestImporter::missingFoldersOldAndCorruptAreMade() {
    QVERIFY(QDir(program_->folder.path(u"old")).removeRecursively());
    QVERIFY(QDir(program_->folder.path(u"corrupt")).removeRecursively());
    program_->putWaiting(QStringLiteral("a.txt"), "ver=V1\rGas0000,1,2,3,4,5\r");
    QCOMPARE(import(), ImportEnd::TooManyFields);
    QCOMPARE(program_->names(QStringLiteral("old")), QStringList("a.txt"));
    QCOMPARE(program_->names(QStringLiteral("corrupt")), QStringList("a.txt"));
}

QTEST_GUILESS_MAIN(TestImporter)
#include "test_importer.moc"
