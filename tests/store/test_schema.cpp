#include "platform/faultpoint.h"
#include "store/maintenance.h"
#include "store/schema.h"
#include "store/summary.h"
#include "tests/support/programfixture.h"

#include <SQLiteCpp/SQLiteCpp.h>

using namespace benthor;
using platform::StoreError;

class TestSchema : public QObject {
    Q_OBJECT

private slots:
    void fieldsOfMainStandInTheirPositions();
    void fieldsOfTheOtherTablesStandInTheirPositions();
    void aFreshStoreHasItsSettingsAndNoDives();
    void aStoreCanBeMadeWithTheGuideClosed();
    void textsCompareWithoutRegardToCase();
    void identifiersAndStartCodesAreIndexed();
    void aStoreThatIsThereIsNeverOverwritten();
    void aStoreThatCannotBeMadeLeavesNothing();
    void aJournalOfAnEarlierStoreIsNotPlayedIntoTheFreshOne();

    void aStoreOfAnOlderFormatWith26FieldsGetsDbtxtname();
    void anEvenShorterMainGetsNumberedNames();
    void profileIsWidenedTo50Fields();
    void aWholeStoreIsLeftAsItIs();
    void aTableThatIsNotUpdatableIsToldOnceAndLeftShort();
    void withoutTheProfileTableMainIsWidenedAllTheSame();
    void aMissingStoreIsNotCreatedByTheMaintenance();
    void dbtxtIsMadeWithAnEmptyTestFile();
    void aDbtxtWithFilesIsLeftAsItIs();
    void getstartedIsReadFromTheStore();

    void theSummaryCountsDivesAndTellsTheLast();
    void theLastDiveGoesByTimeNotByText();
    void aStoreWithNoDivesHasACountAndNoLastDive();
    void theTotalsAreWordedAsShown();

private:
    static void reopen(const tests::ProgramFixture& program, const char* sql) {
        process().database.close();
        SQLite::Database database(program.storePath().toStdString(), SQLite::OPEN_READWRITE);
        database.exec(sql);
    }
};

void TestSchema::fieldsOfMainStandInTheirPositions() {
    const tests::ProgramFixture program;
    QCOMPARE(process().database.fieldNames(QStringLiteral("main")),
             QStringList({"DiveID",    "UserName",     "Department", "site",     "Location", "weather",
                          "startdate", "finisheddate", "Duration",   "MaxDepth", "Suit",     "Startcode",
                          "divenote",  "sitenote",     "Coments",    "Version",  "Interval", "otu",
                          "systemid",  "reserve1",     "reserve2",   "datmos",   "dusage",   "dstack",
                          "descend",   "HPCylinder",   "dbtxtname"}));
    const platform::Recordset rows = process().database.openRecordset("SELECT * FROM main");
    QVERIFY(rows.isDateTime(6) && rows.isDateTime(7));
}

void TestSchema::fieldsOfTheOtherTablesStandInTheirPositions() {
    const tests::ProgramFixture program;
    platform::Database& database = process().database;
    QCOMPARE(database.fieldNames(QStringLiteral("gas")),
             QStringList({"diveid", "Gastype", "GasN2", "GasHe", "gasmod", "Gasstat"}));
    QCOMPARE(database.fieldNames(QStringLiteral("tissue")),
             QStringList({"diveid", "Tissuetype", "TissueN2", "TissueHe"}));
    QCOMPARE(database.fieldNames(QStringLiteral("buddylist")), QStringList({"diveid", "buddylist"}));
    QCOMPARE(database.fieldNames(QStringLiteral("serialno")), QStringList({"serial_no", "getstarted"}));
    QCOMPARE(database.fieldNames(QStringLiteral("DISPLAY")), QStringList("Display"));
    QCOMPARE(database.fieldNames(QStringLiteral("pfindex")), QStringList("itemname"));
    QCOMPARE(database.fieldNames(QStringLiteral("department")), QStringList("department"));
    QCOMPARE(database.fieldNames(QStringLiteral("site")), QStringList("Site"));
    QCOMPARE(database.fieldNames(QStringLiteral("weather")), QStringList("weather"));
    QCOMPARE(database.fieldNames(QStringLiteral("buddy")), QStringList("buddy"));
    QStringList items;
    for (int i = 0; i < 50; ++i) {
        items += QStringLiteral("item%1").arg(i);
    }
    QCOMPARE(database.fieldNames(QStringLiteral("Profile")), items);
}

void TestSchema::aFreshStoreHasItsSettingsAndNoDives() {
    const tests::ProgramFixture program;
    QCOMPARE(program.rows("SELECT * FROM SERIALNO"), QStringList("(null)|Open"));
    QCOMPARE(program.rows("SELECT display FROM Display "), QStringList("metre"));
    QCOMPARE(program.rows("SELECT * FROM MAIN"), QStringList());
}

void TestSchema::aStoreCanBeMadeWithTheGuideClosed() {
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("closed.mdb"));
    store::createStore(path, QStringLiteral("Close"));
    platform::Database database;
    database.open(path);
    QVERIFY(store::guideisclosed(store::readgetstarted(database)));
    QCOMPARE(QDir(directory.path()).entryList(QDir::Files | QDir::Hidden), QStringList("closed.mdb"));
}

void TestSchema::textsCompareWithoutRegardToCase() {
    const tests::ProgramFixture program;
    process().database.execute("INSERT INTO site VALUES ('Blue Hole')");
    QCOMPARE(program.rows("SELECT COUNT(*) FROM site  WHERE site  = 'BLUE hole'"), QStringList("1"));
}

void TestSchema::identifiersAndStartCodesAreIndexed() {
    const tests::ProgramFixture program;
    const QStringList queries{
        "SELECT * FROM main WHERE DiveID = 'x'", "SELECT * FROM main WHERE Startcode = 'x'",
        "SELECT * FROM gas WHERE DiveID = 'x'", "SELECT * FROM tissue WHERE DiveID = 'x'",
        "SELECT * FROM buddylist WHERE diveid = 'x'"};
    for (const QString& query : queries) {
        const QString plan =
            program.rows(("EXPLAIN QUERY PLAN " + query).toLatin1().constData()).join(QLatin1Char(' '));
        QVERIFY2(plan.contains(QLatin1String("USING INDEX")), qPrintable(plan));
    }
}

void TestSchema::aStoreThatIsThereIsNeverOverwritten() {
    const tests::ProgramFixture program;
    process().database.execute("INSERT INTO site VALUES ('kept')");
    QVERIFY_EXCEPTION_THROWN(store::createStore(program.storePath()), StoreError);
    QCOMPARE(program.rows("SELECT * FROM site"), QStringList("kept"));
}

void TestSchema::aStoreThatCannotBeMadeLeavesNothing() {
    const QTemporaryDir directory;
    QVERIFY_EXCEPTION_THROWN(store::createStore(directory.filePath(QStringLiteral("none/rb.mdb"))),
                             StoreError);
    const platform::FaultInjection fault([](std::string_view step) { return step == "sync" ? ENOSPC : 0; });
    QVERIFY_EXCEPTION_THROWN(store::createStore(directory.filePath(QStringLiteral("rb.mdb"))), StoreError);
    QCOMPARE(QDir(directory.path()).entryList(QDir::Files | QDir::Hidden), QStringList());
}

void TestSchema::aJournalOfAnEarlierStoreIsNotPlayedIntoTheFreshOne() {
    const QTemporaryDir directory;
    for (const char* const name : {"rb.mdb-journal", "rb.mdb-wal", "rb.mdb-shm"}) {
        QVERIFY(
            platform::writeFileWhole(directory.filePath(QString::fromLatin1(name)), "of an earlier store"));
    }
    store::createStore(directory.filePath(QStringLiteral("rb.mdb")));
    QCOMPARE(QDir(directory.path()).entryList(QDir::Files | QDir::Hidden), QStringList("rb.mdb"));
}

void TestSchema::aStoreOfAnOlderFormatWith26FieldsGetsDbtxtname() {
    const tests::ProgramFixture program;
    process().database.execute("INSERT INTO main (DiveID) VALUES ('D0000001')");
    reopen(program, "ALTER TABLE main DROP COLUMN dbtxtname");
    store::addmissingfields(program.storePath(), [](const QString& text) { QFAIL(qPrintable(text)); });
    process().database.open(program.storePath());
    const platform::Recordset rows = process().database.openRecordset("SELECT * FROM main");
    QCOMPARE(rows.fieldCount(), 27);
    QCOMPARE(rows.fieldName(26), "dbtxtname");
    QVERIFY(rows.value(26).isNull());
}

void TestSchema::anEvenShorterMainGetsNumberedNames() {
    const tests::ProgramFixture program;
    reopen(program, "ALTER TABLE main DROP COLUMN dbtxtname; ALTER TABLE main DROP COLUMN HPCylinder;"
                    "ALTER TABLE main DROP COLUMN descend");
    store::addmissingfields(program.storePath(), [](const QString& text) { QFAIL(qPrintable(text)); });
    process().database.open(program.storePath());
    QCOMPARE(process().database.fieldNames(QStringLiteral("main")).mid(23),
             QStringList({"dstack", "dbtxtname24", "dbtxtname25", "dbtxtname"}));
}

void TestSchema::profileIsWidenedTo50Fields() {
    const tests::ProgramFixture program;
    reopen(program, "DROP TABLE Profile; CREATE TABLE Profile (item0 TEXT, item1 TEXT)");
    store::addmissingfields(program.storePath(), [](const QString& text) { QFAIL(qPrintable(text)); });
    process().database.open(program.storePath());
    const QStringList names = process().database.fieldNames(QStringLiteral("Profile"));
    QCOMPARE(names.size(), 50);
    QCOMPARE(names.mid(1, 3), QStringList({"item1", "item2", "item3"}));
    QCOMPARE(names.last(), "item49");
}

void TestSchema::aWholeStoreIsLeftAsItIs() {
    const tests::ProgramFixture program;
    process().database.close();
    const QByteArray before = platform::readFile(program.storePath()).value();
    store::addmissingfields(program.storePath(), [](const QString& text) { QFAIL(qPrintable(text)); });
    QCOMPARE(platform::readFile(program.storePath()).value(), before);
}

void TestSchema::aTableThatIsNotUpdatableIsToldOnceAndLeftShort() {
    const tests::ProgramFixture program;
    reopen(program, "DROP TABLE Profile; CREATE VIEW Profile AS SELECT 1 AS item0;"
                    "ALTER TABLE main DROP COLUMN dbtxtname");
    QStringList messages;
    store::addmissingfields(program.storePath(), [&](const QString& text) { messages += text; });
    QCOMPARE(messages, QStringList("Unable to complete task.\nTableDef not Updatable! "));
    process().database.open(program.storePath());
    QCOMPARE(process().database.fieldCount(QStringLiteral("Profile")), 1);
    QCOMPARE(process().database.fieldCount(QStringLiteral("main")), 27);
}

void TestSchema::withoutTheProfileTableMainIsWidenedAllTheSame() {
    const tests::ProgramFixture program;
    process().database.execute("DROP TABLE Profile");
    process().database.execute("ALTER TABLE main DROP COLUMN dbtxtname");
    QCOMPARE(process().database.fieldCount(QStringLiteral("main")), 26);
    process().database.close();
    QStringList messages;
    store::addmissingfields(program.storePath(), [&](const QString& text) { messages += text; });
    process().database.open(program.storePath());
    QCOMPARE(process().database.fieldCount(QStringLiteral("main")), 27);
    QCOMPARE(messages, QStringList());
}

void TestSchema::aMissingStoreIsNotCreatedByTheMaintenance() {
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("rb.mdb"));
    QVERIFY_EXCEPTION_THROWN(store::addmissingfields(path, [](const QString&) {}), StoreError);
    QVERIFY(!QFile::exists(path));
}

void TestSchema::dbtxtIsMadeWithAnEmptyTestFile() {
    const QTemporaryDir directory;
    const platform::ProgramFolder folder(directory.path());
    QVERIFY(store::makedbtxt(folder));
    QCOMPARE(platform::readFile(folder.path(u"dbtxt", u"test.txt")).value_or("(no file)"), QByteArray());
}

void TestSchema::aDbtxtWithFilesIsLeftAsItIs() {
    const tests::ProgramFixture program;
    program.put(QStringLiteral("dbtxt"), QStringLiteral("11A2B3Ca.txt"), "dive");
    QVERIFY(store::makedbtxt(program.folder));
    QCOMPARE(program.names(QStringLiteral("dbtxt")), QStringList("11A2B3Ca.txt"));
}

void TestSchema::getstartedIsReadFromTheStore() {
    const tests::ProgramFixture program;
    QCOMPARE(store::readgetstarted(process().database), "Open");
    QVERIFY(!store::guideisclosed(QStringLiteral("Open")));
    QVERIFY(store::guideisclosed(QStringLiteral("Close")));
    process().database.execute("UPDATE serialno SET getstarted = NULL");
    QCOMPARE(store::readgetstarted(process().database), QString());
}

void TestSchema::theSummaryCountsDivesAndTellsTheLast() {
    const tests::ProgramFixture program;
    process().database.execute(
        "INSERT INTO main (DiveID, startdate) VALUES ('D0000001', '2004-02-11 08:58:33'),"
        "('D0000002', '2003-12-31 23:00:00'), ('D0000003', NULL)");
    QCOMPARE(store::countdives(process().database), 3);
    QCOMPARE(store::lastdive(process().database), "11/02/2004 08:58:33");
}

void TestSchema::theLastDiveGoesByTimeNotByText() {
    const tests::ProgramFixture program;
    process().database.execute(
        "INSERT INTO main (DiveID, startdate) VALUES ('D0000001', '2004-09-01 00:00:00'),"
        "('D0000002', '2005-01-01 00:00:00'), ('D0000003', '2004-10-01 00:00:00')");
    QCOMPARE(store::lastdive(process().database), "01/01/2005 00:00:00");
}

void TestSchema::aStoreWithNoDivesHasACountAndNoLastDive() {
    const tests::ProgramFixture program;
    QCOMPARE(store::countdives(process().database), 0);
    QVERIFY_EXCEPTION_THROWN(store::lastdive(process().database), StoreError);
}

void TestSchema::theTotalsAreWordedAsShown() {
    QCOMPARE(store::counttext(12) + store::lastdivetext(QStringLiteral("11/02/2004 08:58:33")),
             "System has a total of : \n12 dives\nYour last dive was on : \n11/02/2004 08:58:33");
}

QTEST_GUILESS_MAIN(TestSchema)
#include "test_schema.moc"
