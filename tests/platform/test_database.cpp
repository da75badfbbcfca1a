#include "platform/database.h"
#include "platform/faultpoint.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QTemporaryDir>
#include <QtTest>

using namespace benthor::platform;

namespace {

/// Makes a store file through the engine itself, so that the layer under test is not asked to vouch for
/// itself.
void makeStore(const QString& path, const char* sql) {
    SQLite::Database database(path.toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
    database.exec("PRAGMA synchronous = OFF");
    database.exec(sql);
}

std::string askEngine(const QString& path, const char* sql) {
    SQLite::Database database(path.toStdString(), SQLite::OPEN_READONLY);
    return database.execAndGet(sql).getString();
}

constexpr auto kTables =
    "CREATE TABLE main (DiveID TEXT COLLATE NOCASE, Location TEXT COLLATE NOCASE, startdate DATETIME);"
    "INSERT INTO main VALUES ('D0000001', 'reef', '2004-02-11 08:58:33');"
    "INSERT INTO main VALUES ('D0000002', NULL, NULL);"
    "INSERT INTO main VALUES ('D0000003', '', '2005-01-01 00:00:00');";

} // namespace

class TestDatabase : public QObject {
    Q_OBJECT

private slots:
    void init() {
        directory_ = std::make_unique<QTemporaryDir>();
        path_ = directory_->filePath(QStringLiteral("rb.mdb"));
        makeStore(path_, kTables);
        database_ = std::make_unique<Database>();
        database_->open(path_);
    }
    void cleanup() { database_.reset(); }

    void aMissingStoreIsAnErrorAndIsNeverCreated();
    void aFileThatIsNoStoreIsAnErrorWhenOpened();
    void aFailedOpenLeavesTheDatabaseClosed();
    void theStoreHasARollbackJournalAndFullDurability();

    void rowsAreReadFromTheFirstToTheLast();
    void anEmptyResultIsBothBofAndEof();
    void aRecordsetNeedsARowToMoveTo();
    void nullIsToldFromEmpty();
    void fieldsAreFoundByNameWithoutRegardToCase();
    void fieldsAreFoundByPosition();
    void aFieldThatIsNotThereIsAnError();
    void aDateTimeFieldReadsAsAMoment();
    void aMomentInAGapOfSummerTimeReadsAsItWasWritten();
    void aCountIsReadAsText();
    void aRecordsetHoldsNothingInTheStore();

    void addNewPutsARowBehindTheOthers();
    void anAppendOnlyRecordsetReadsNoRowsAndAddsOne();
    void editChangesOnlyTheFieldsThatWereSet();
    void anEditWithoutASetFieldWritesNothing();
    void movingOnDropsAChangeWithoutUpdate();
    void deletingRowByRowEmptiesTheTable();
    void aDeletedRowHasNoValuesUntilTheNextMove();
    void changingARowThatWasDeletedMeanwhileIsAnError();
    void aLaterRowWithTheSameNumberIsNotMistakenForTheDeletedOne();
    void setWithoutEditIsAnError();
    void aQueryOfSomeFieldsCannotBeChanged();
    void aRefusedValueIsAnErrorThatSaysSo();

    void aValueWithASingleQuoteFailsWhereTheQueryIsBuilt();
    void aValueNeverBecomesPartOfTheText();
    void theTextOfAQueryHoldsItsValues();
    void aSetValueMayHoldAnything_data();
    void aSetValueMayHoldAnything();

    void tableFieldsAreCountedAndNamed();
    void anAppendedFieldIsThereAtOnceInQueriesOfOld();
    void aViewIsNotUpdatable();
    void aTableThatIsNotThereIsAnError();

    void aCommittedTransactionStays();
    void aTransactionWithoutCommitIsRolledBack();
    void aNestedTransactionJoinsTheOuterOne();
    void aNestedTransactionWithoutCommitBreaksTheOuterOne();
    void aCommitThatTheDiskRefusesKeepsNothing();
    void aFullDiskIsAnErrorAndKeepsNothing();
    void closingRollsAnUnfinishedChangeBack();
    void aClosedStoreIsAnErrorForItsRecordsetsChanges();

private:
    Recordset open(const Query& query) { return database_->openRecordset(query); }
    QString count() { return open("SELECT COUNT(*) FROM main").value(0).text(); }

    std::unique_ptr<QTemporaryDir> directory_;
    std::unique_ptr<Database> database_;
    QString path_;
};

void TestDatabase::aMissingStoreIsAnErrorAndIsNeverCreated() {
    const QString missing = directory_->filePath(QStringLiteral("none.mdb"));
    Database database;
    QVERIFY_EXCEPTION_THROWN(database.open(missing), StoreError);
    QVERIFY(!QFile::exists(missing));
    QVERIFY(!database.isOpen());
}

void TestDatabase::aFileThatIsNoStoreIsAnErrorWhenOpened() {
    const QString path = directory_->filePath(QStringLiteral("text.mdb"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(5000, 'x'));
    file.close();
    Database database;
    try {
        database.open(path);
        QFAIL("opened");
    } catch (const StoreError& error) {
        QVERIFY2(error.text().contains(path), error.what());
        QVERIFY(error.code() != 0);
    }
}

void TestDatabase::aFailedOpenLeavesTheDatabaseClosed() {
    QVERIFY_EXCEPTION_THROWN(database_->open(directory_->filePath(QStringLiteral("none.mdb"))), StoreError);
    QVERIFY(!database_->isOpen());
    QCOMPARE(database_->path(), QString());
    QVERIFY_EXCEPTION_THROWN(open("SELECT * FROM main"), StoreError);
}

void TestDatabase::theStoreHasARollbackJournalAndFullDurability() {
    QCOMPARE(open("PRAGMA journal_mode").value(0).text(), "delete");
    QVERIFY(open("PRAGMA synchronous").value(0).text().toInt() >= 2);
    database_->close();
    makeStore(path_, "PRAGMA journal_mode = WAL");
    database_->open(path_);
    QCOMPARE(open("PRAGMA journal_mode").value(0).text(), "delete");
}

void TestDatabase::rowsAreReadFromTheFirstToTheLast() {
    Recordset rows = open("SELECT * FROM main ORDER BY diveid ");
    QCOMPARE(rows.recordCount(), 3);
    QVERIFY(!rows.bof());
    QStringList ids;
    for (; !rows.eof(); rows.moveNext()) {
        ids += rows.value(0).text();
    }
    QCOMPARE(ids, QStringList({"D0000001", "D0000002", "D0000003"}));
    rows.moveFirst();
    QCOMPARE(rows.value(0).text(), "D0000001");
    rows.moveLast();
    QCOMPARE(rows.value(0).text(), "D0000003");
}

void TestDatabase::anEmptyResultIsBothBofAndEof() {
    const Recordset rows = open("SELECT * FROM main WHERE DiveID = 'none'");
    QVERIFY(rows.isOpen());
    QVERIFY(rows.bof() && rows.eof());
    QCOMPARE(rows.recordCount(), 0);
    QCOMPARE(rows.fieldCount(), 3);
    QVERIFY(Recordset().bof() && Recordset().eof());
}

void TestDatabase::aRecordsetNeedsARowToMoveTo() {
    Recordset rows = open("SELECT * FROM main WHERE DiveID = 'none'");
    QVERIFY_EXCEPTION_THROWN(rows.moveFirst(), StoreError);
    QVERIFY_EXCEPTION_THROWN(rows.moveLast(), StoreError);
    QVERIFY_EXCEPTION_THROWN(rows.moveNext(), StoreError);
    QVERIFY_EXCEPTION_THROWN(rows.value(0), StoreError);
    QVERIFY_EXCEPTION_THROWN(rows.edit(), StoreError);
    QVERIFY_EXCEPTION_THROWN(rows.deleteCurrent(), StoreError);
}

void TestDatabase::nullIsToldFromEmpty() {
    Recordset rows = open("SELECT * FROM main ORDER BY DiveID");
    rows.moveNext();
    QVERIFY(rows.value(1).isNull());
    QCOMPARE(rows.value(1).text(), QString());
    QVERIFY(!rows.utf8(1).has_value());
    rows.moveNext();
    QVERIFY(!rows.value(1).isNull());
    QCOMPARE(rows.value(1).text(), QString());
    QCOMPARE(rows.utf8(1).value(), std::string_view());
    QVERIFY(Value() != Value(QString()));
}

void TestDatabase::fieldsAreFoundByNameWithoutRegardToCase() {
    const Recordset rows = open("SELECT * FROM MAIN");
    QCOMPARE(rows.value(u"LOCATION").text(), "reef");
    QCOMPARE(rows.value(u"location").text(), "reef");
    QCOMPARE(rows.fieldPosition(u"STARTDATE"), 2);
    QCOMPARE(rows.fieldPosition(u"none"), -1);
}

void TestDatabase::fieldsAreFoundByPosition() {
    const Recordset rows = open("SELECT * FROM main");
    QCOMPARE(rows.fieldName(1), "Location");
    QCOMPARE(rows.value(1).text(), "reef");
    QCOMPARE(rows.utf8(1).value(), "reef");
}

void TestDatabase::aFieldThatIsNotThereIsAnError() {
    Recordset rows = open("SELECT * FROM main");
    QVERIFY_EXCEPTION_THROWN(rows.value(3), StoreError);
    QVERIFY_EXCEPTION_THROWN(rows.value(-1), StoreError);
    QVERIFY_EXCEPTION_THROWN(rows.value(u"none"), StoreError);
    QVERIFY_EXCEPTION_THROWN(rows.fieldName(3), StoreError);
    QVERIFY_EXCEPTION_THROWN(open("SELECT none FROM main"), StoreError);
}

void TestDatabase::aDateTimeFieldReadsAsAMoment() {
    Recordset rows = open("SELECT * FROM main ORDER BY DiveID");
    QVERIFY(rows.isDateTime(2));
    QVERIFY(!rows.isDateTime(1));
    const QDateTime moment = rows.value(2).dateTime();
    QCOMPARE(moment.date(), QDate(2004, 2, 11));
    QCOMPARE(moment.time(), QTime(8, 58, 33));
    rows.moveNext();
    QVERIFY(!rows.value(2).dateTime().isValid());
    rows.edit();
    rows.set(2, QDateTime(QDate(2020, 12, 31), QTime(23, 59, 58)));
    rows.update();
    QCOMPARE(askEngine(path_, "SELECT startdate FROM main WHERE DiveID = 'D0000002'"), "2020-12-31 23:59:58");
    QVERIFY(Value(QDateTime()).isNull());
    QVERIFY(!Value(QStringLiteral("2020-13-31 23:59:58")).dateTime().isValid());
    QVERIFY(!Value(QStringLiteral("2020-12-31T23:59:58")).dateTime().isValid());
    QVERIFY(!Value(QStringLiteral("202a-12-31 23:59:58")).dateTime().isValid());
}

void TestDatabase::aMomentInAGapOfSummerTimeReadsAsItWasWritten() {
    qputenv("TZ", "Europe/Berlin");
    const QDateTime moment = Value(QStringLiteral("2004-03-28 02:30:00")).dateTime();
    QCOMPARE(moment.time(), QTime(2, 30));
    QCOMPARE(Value(moment).text(), "2004-03-28 02:30:00");
    qunsetenv("TZ");
}

void TestDatabase::aCountIsReadAsText() {
    QCOMPARE(count(), "3");
}

void TestDatabase::aRecordsetHoldsNothingInTheStore() {
    const Recordset rows = open("SELECT * FROM main");
    makeStore(path_, "BEGIN EXCLUSIVE; DELETE FROM main; COMMIT");
    QCOMPARE(rows.value(0).text(), "D0000001");
    QCOMPARE(count(), "0");
}

void TestDatabase::addNewPutsARowBehindTheOthers() {
    Recordset rows = open("SELECT * FROM main ORDER BY DiveID");
    rows.addNew();
    rows.set(u"diveid", QStringLiteral("D0000004"));
    rows.set(1, QStringLiteral("wreck"));
    rows.update();
    QCOMPARE(rows.value(0).text(), "D0000001");
    QCOMPARE(rows.recordCount(), 4);
    rows.moveLast();
    QCOMPARE(rows.value(1).text(), "wreck");
    QVERIFY(rows.value(2).isNull());
    rows.edit();
    rows.set(1, QStringLiteral("cave"));
    rows.update();
    QCOMPARE(askEngine(path_, "SELECT Location FROM main WHERE DiveID = 'D0000004'"), "cave");
}

void TestDatabase::anAppendOnlyRecordsetReadsNoRowsAndAddsOne() {
    Recordset rows = database_->openForAdding("MAIN");
    QCOMPARE(rows.recordCount(), 0);
    QVERIFY(rows.eof());
    rows.addNew();
    rows.set(u"DiveID", QStringLiteral("D0000009"));
    rows.update();
    rows.addNew();
    rows.update();
    QCOMPARE(count(), "5");
    QCOMPARE(askEngine(path_, "SELECT COUNT(*) FROM main WHERE DiveID IS NULL AND Location IS NULL"), "1");
}

void TestDatabase::editChangesOnlyTheFieldsThatWereSet() {
    Recordset rows = open("SELECT * FROM main WHERE DiveID = 'D0000001'");
    makeStore(path_, "UPDATE main SET startdate = '2001-01-01 00:00:00'");
    rows.edit();
    rows.set(u"location", QStringLiteral("first"));
    rows.set(u"Location", QStringLiteral("second"));
    rows.update();
    QCOMPARE(rows.value(1).text(), "second");
    QCOMPARE(askEngine(path_, "SELECT group_concat(coalesce(Location, '-') || startdate) FROM main"),
             "second2001-01-01 00:00:00,-2001-01-01 00:00:00,2001-01-01 00:00:00");
}

void TestDatabase::anEditWithoutASetFieldWritesNothing() {
    Recordset rows = open("SELECT * FROM main");
    const FaultInjection fault([](std::string_view step) { return step == "change" ? EIO : 0; });
    rows.edit();
    rows.update();
    rows.edit();
    rows.set(1, QStringLiteral("x"));
    QVERIFY_EXCEPTION_THROWN(rows.update(), StoreError);
}

void TestDatabase::movingOnDropsAChangeWithoutUpdate() {
    Recordset rows = open("SELECT * FROM main");
    rows.edit();
    rows.set(1, QStringLiteral("x"));
    rows.moveNext();
    QVERIFY_EXCEPTION_THROWN(rows.update(), StoreError);
    QCOMPARE(askEngine(path_, "SELECT Location FROM main WHERE DiveID = 'D0000001'"), "reef");
}

void TestDatabase::deletingRowByRowEmptiesTheTable() {
    Recordset rows = open("SELECT * FROM main ORDER BY DiveID");
    for (; !rows.eof(); rows.moveNext()) {
        rows.deleteCurrent();
    }
    QCOMPARE(rows.recordCount(), 0);
    QCOMPARE(count(), "0");
}

void TestDatabase::aDeletedRowHasNoValuesUntilTheNextMove() {
    Recordset rows = open("SELECT * FROM main ORDER BY DiveID");
    rows.moveNext();
    rows.deleteCurrent();
    QVERIFY_EXCEPTION_THROWN(rows.value(0), StoreError);
    QVERIFY_EXCEPTION_THROWN(rows.deleteCurrent(), StoreError);
    rows.moveFirst();
    rows.moveNext();
    QCOMPARE(rows.value(0).text(), "D0000003");
}

void TestDatabase::changingARowThatWasDeletedMeanwhileIsAnError() {
    Recordset rows = open("SELECT * FROM main WHERE DiveID = 'D0000002'");
    makeStore(path_, "DELETE FROM main WHERE DiveID = 'D0000002'");
    rows.edit();
    rows.set(1, QStringLiteral("x"));
    QVERIFY_EXCEPTION_THROWN(rows.update(), StoreError);
    QVERIFY_EXCEPTION_THROWN(rows.deleteCurrent(), StoreError);
}

void TestDatabase::aLaterRowWithTheSameNumberIsNotMistakenForTheDeletedOne() {
    Recordset rows = open("SELECT * FROM main WHERE DiveID = 'D0000003'");
    makeStore(
        path_,
        "DELETE FROM main WHERE DiveID = 'D0000003'; INSERT INTO main VALUES ('D0000007', 'other', NULL)");
    rows.edit();
    rows.set(1, QStringLiteral("x"));
    QVERIFY_EXCEPTION_THROWN(rows.update(), StoreError);
    QCOMPARE(askEngine(path_, "SELECT Location FROM main WHERE DiveID = 'D0000007'"), "other");
}

void TestDatabase::setWithoutEditIsAnError() {
    Recordset rows = open("SELECT * FROM main");
    QVERIFY_EXCEPTION_THROWN(rows.set(1, QStringLiteral("x")), StoreError);
    QVERIFY_EXCEPTION_THROWN(rows.update(), StoreError);
}

void TestDatabase::aQueryOfSomeFieldsCannotBeChanged() {
    Recordset rows = open("SELECT DiveID, startdate FROM main");
    QCOMPARE(rows.fieldCount(), 2);
    QVERIFY_EXCEPTION_THROWN(rows.edit(), StoreError);
    QVERIFY_EXCEPTION_THROWN(rows.addNew(), StoreError);
    QVERIFY_EXCEPTION_THROWN(rows.deleteCurrent(), StoreError);
}

void TestDatabase::aRefusedValueIsAnErrorThatSaysSo() {
    database_->close();
    makeStore(path_, "CREATE TABLE narrow (text TEXT CHECK (length(text) <= 3))");
    database_->open(path_);
    Recordset rows = database_->openForAdding("narrow");
    rows.addNew();
    rows.set(0, QStringLiteral("long"));
    try {
        rows.update();
        QFAIL("taken");
    } catch (const StoreError& error) {
        QVERIFY(error.refusedValue());
    }
    rows.addNew();
    rows.set(0, QStringLiteral("ok"));
    rows.update();
}

void TestDatabase::aValueWithASingleQuoteFailsWhereTheQueryIsBuilt() {
    QVERIFY_EXCEPTION_THROWN(
        sqlWith("SELECT * FROM main WHERE Location = '", QStringLiteral("Devil's reef"), "'"), StoreError);
    QVERIFY_EXCEPTION_THROWN(
        sqlWith("SELECT * FROM main WHERE Location = '", QStringLiteral("' OR '1' = '1"), "'"), StoreError);
    QCOMPARE(count(), "3");
}

void TestDatabase::aValueNeverBecomesPartOfTheText() {
    const Query query = sqlWith("SELECT * FROM main WHERE DiveID = '", QStringLiteral("D0000001"),
                                "' AND Location ='", QStringLiteral("REEF"), "' ");
    QCOMPARE(query.sql(), "SELECT * FROM main WHERE DiveID = ?1 AND Location =?2 ");
    QCOMPARE(open(query).recordCount(), 1);
    QCOMPARE(open(sqlWith("SELECT * FROM main WHERE DiveID = '", QStringLiteral("x\" OR 1 --"), "'"))
                 .recordCount(),
             0);
    QVERIFY_EXCEPTION_THROWN(sqlWith("SELECT * FROM main WHERE DiveID = ", QStringLiteral("D0000001"), ""),
                             StoreError);
    QVERIFY_EXCEPTION_THROWN(sqlWith("SELECT * FROM main WHERE DiveID = '", QStringLiteral("D0000001"), " "),
                             StoreError);
}

void TestDatabase::theTextOfAQueryHoldsItsValues() {
    const Query query = sqlWith("SELECT * FROM main WHERE a = '", QStringLiteral("1?2"), "' AND b = '",
                                QStringLiteral("x"), "' ");
    QCOMPARE(query.text(), "SELECT * FROM main WHERE a = '1?2' AND b = 'x' ");
    QCOMPARE(Query("SELECT * FROM main ").text(), "SELECT * FROM main ");
}

void TestDatabase::aSetValueMayHoldAnything_data() {
    QTest::addColumn<QString>("text");
    QTest::newRow("single quote") << "Devil's reef";
    QTest::newRow("both quotes") << "a'b\"c''";
    QTest::newRow("end of a statement") << "x'); DROP TABLE main; --";
    QTest::newRow("zero bytes") << QString(QLatin1String("a\0b\0", 4));
    QTest::newRow("high bytes") << QString::fromLatin1("\xe9\xff\x80\xa0");
    QTest::newRow("beyond the basic plane") << QString::fromUtf8("\xf0\x9f\x90\xa0");
    QTest::newRow("line ends") << "a\r\nb\r";
    QTest::newRow("blanks") << "  a ";
    QTest::newRow("a number stays text") << "0012.50";
}

void TestDatabase::aSetValueMayHoldAnything() {
    QFETCH(QString, text);
    Recordset rows = open("SELECT * FROM main");
    rows.edit();
    rows.set(1, text);
    rows.update();
    QCOMPARE(rows.value(1).text(), text);
    QCOMPARE(open("SELECT * FROM main").value(1).text(), text);
    QCOMPARE(count(), "3");
}

void TestDatabase::tableFieldsAreCountedAndNamed() {
    QCOMPARE(database_->fieldCount(QStringLiteral("MAIN")), 3);
    QCOMPARE(database_->fieldNames(QStringLiteral("main")), QStringList({"DiveID", "Location", "startdate"}));
    QVERIFY(database_->updatable(QStringLiteral("Main")));
}

void TestDatabase::anAppendedFieldIsThereAtOnceInQueriesOfOld() {
    QCOMPARE(open("SELECT * FROM main").fieldCount(), 3);
    database_->appendField(QStringLiteral("main"), QStringLiteral("a \"new\" field"), 50);
    Recordset rows = open("SELECT * FROM main");
    QCOMPARE(rows.fieldCount(), 4);
    QVERIFY(rows.value(3).isNull());
    rows.edit();
    rows.set(u"A \"NEW\" FIELD", QStringLiteral("x"));
    rows.update();
    QCOMPARE(open("SELECT * FROM main").value(3).text(), "x");
    QVERIFY_EXCEPTION_THROWN(database_->appendField(QStringLiteral("main"), QStringLiteral("LOCATION"), 50),
                             StoreError);
}

void TestDatabase::aViewIsNotUpdatable() {
    database_->close();
    makeStore(path_, "CREATE VIEW seen AS SELECT * FROM main");
    database_->open(path_);
    QVERIFY(!database_->updatable(QStringLiteral("seen")));
    QCOMPARE(database_->fieldCount(QStringLiteral("seen")), 3);
    QVERIFY_EXCEPTION_THROWN(open("SELECT * FROM seen"), StoreError); // it could be made of anything
}

void TestDatabase::aTableThatIsNotThereIsAnError() {
    QVERIFY_EXCEPTION_THROWN(database_->fieldCount(QStringLiteral("none")), StoreError);
    QVERIFY_EXCEPTION_THROWN(open("SELECT * FROM none"), StoreError);
    QVERIFY_EXCEPTION_THROWN(database_->openForAdding("none"), StoreError);
    QVERIFY(!database_->updatable(QStringLiteral("none")));
}

void TestDatabase::aCommittedTransactionStays() {
    {
        Transaction transaction(*database_);
        database_->execute(sqlWith("DELETE FROM main WHERE DiveID = '", QStringLiteral("D0000001"), "'"));
        transaction.commit();
    }
    QCOMPARE(askEngine(path_, "SELECT COUNT(*) FROM main"), "2");
}

void TestDatabase::aTransactionWithoutCommitIsRolledBack() {
    {
        const Transaction transaction(*database_);
        database_->execute("DELETE FROM main");
        QCOMPARE(count(), "0");
    }
    QCOMPARE(count(), "3");
}

void TestDatabase::aNestedTransactionJoinsTheOuterOne() {
    {
        const Transaction outer(*database_);
        Transaction inner(*database_);
        database_->execute("DELETE FROM main");
        inner.commit();
    }
    QCOMPARE(count(), "3");
    {
        Transaction outer(*database_);
        {
            Transaction inner(*database_);
            database_->execute("DELETE FROM main");
            inner.commit();
        }
        outer.commit();
    }
    QCOMPARE(count(), "0");
}

void TestDatabase::aNestedTransactionWithoutCommitBreaksTheOuterOne() {
    {
        Transaction outer(*database_);
        {
            const Transaction inner(*database_);
            database_->execute("DELETE FROM main");
        }
        QVERIFY_EXCEPTION_THROWN(outer.commit(), StoreError);
    }
    QCOMPARE(count(), "3");
    Transaction next(*database_);
    database_->execute("DELETE FROM main");
    next.commit();
    QCOMPARE(count(), "0");
}

void TestDatabase::aCommitThatTheDiskRefusesKeepsNothing() {
    {
        const FaultInjection fault([](std::string_view step) { return step == "commit" ? ENOSPC : 0; });
        Transaction transaction(*database_);
        database_->execute("DELETE FROM main");
        QVERIFY_EXCEPTION_THROWN(transaction.commit(), StoreError);
    }
    QCOMPARE(count(), "3");
}

void TestDatabase::aFullDiskIsAnErrorAndKeepsNothing() {
    // The engine's own limit stands in for the disk's.
    open("PRAGMA max_page_count = 2");
    {
        Transaction transaction(*database_);
        Recordset rows = database_->openForAdding("main");
        const auto fill = [&] {
            for (int i = 0; i < 1000; ++i) {
                rows.addNew();
                rows.set(1, QString(1000, QLatin1Char('x')));
                rows.update();
            }
        };
        QVERIFY_EXCEPTION_THROWN(fill(), StoreError);
    }
    QCOMPARE(count(), "3");
    database_->execute("DELETE FROM main");
    QCOMPARE(count(), "0");
}

void TestDatabase::closingRollsAnUnfinishedChangeBack() {
    {
        const Transaction transaction(*database_);
        database_->execute("DELETE FROM main");
        database_->close();
    }
    database_->open(path_);
    QCOMPARE(count(), "3");
}

void TestDatabase::aClosedStoreIsAnErrorForItsRecordsetsChanges() {
    Recordset rows = open("SELECT * FROM main");
    database_->close();
    QCOMPARE(rows.value(0).text(), "D0000001");
    rows.edit();
    rows.set(1, QStringLiteral("x"));
    QVERIFY_EXCEPTION_THROWN(rows.update(), StoreError);
    QVERIFY_EXCEPTION_THROWN(rows.deleteCurrent(), StoreError);
}

QTEST_GUILESS_MAIN(TestDatabase)
#include "test_database.moc"
