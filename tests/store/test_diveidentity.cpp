// Which dive a screen shows, and the dive in hand.

#include "session/process.h"
#include "store/diveidentity.h"
#include "store/diveinhand.h"
#include "store/identifiers.h"
#include "tests/support/programfixture.h"

using namespace benthor;
using namespace benthor::store;

namespace {

void add(const char* values) {
    const std::string sql = std::string("INSERT INTO main (DiveID, Startcode, dbtxtname) VALUES ") + values;
    process().database.execute(sql.c_str());
}

DiveIdentity first() {
    return identifydive(process().database, QStringLiteral("D0000001"));
}

bool isThere(const DiveIdentity& dive) {
    return finddive(process().database, dive).has_value();
}

} // namespace

class TestDiveIdentity : public QObject {
    Q_OBJECT

private slots:
    void aDiveIsFoundAgain();
    void anotherDiveUnderItsIdentifierIsNotFound_data();
    void anotherDiveUnderItsIdentifierIsNotFound();
    void ofTwoRowsWithOneIdentifierItsOwnIsFound();
    void rowsWithoutWordsAreKnownByTheirNumber();
    void noDiveIsNeverFound();
    void lookingLeavesTheSharedRowsAlone();
    void aTableWithoutTheFieldsReadsThemAsNull();

    void anotherDiveIsInHandForAScope();
    void aChangeThatIsKeptLasts();
    void aNewDiveThatFailsLeavesTheOneInHand();
};

void TestDiveIdentity::aDiveIsFoundAgain() {
    const tests::ProgramFixture program;
    add("('D0000001', '100', 'a.txt')");
    const DiveIdentity dive = first();
    QCOMPARE(dive.diveid, "D0000001");
    QCOMPARE(dive.startcode.text(), "100");
    QCOMPARE(dive.dbtxtname.text(), "a.txt");
    QVERIFY(dive.isKnown());
    process().database.execute("UPDATE main SET UserName = 'Anna', Location = 'Reef'");
    const auto row = finddive(process().database, dive);
    QVERIFY(row.has_value());
    QCOMPARE(row->value(u"UserName").text(), "Anna");
}

void TestDiveIdentity::anotherDiveUnderItsIdentifierIsNotFound_data() {
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");
    QTest::newRow("another start") << QByteArray("'100', 'a.txt'") << QByteArray("'101', 'a.txt'");
    QTest::newRow("another file") << QByteArray("'100', 'a.txt'") << QByteArray("'100', 'b.txt'");
    QTest::newRow("no start") << QByteArray("'100', 'a.txt'") << QByteArray("NULL, 'a.txt'");
    QTest::newRow("no file") << QByteArray("'100', 'a.txt'") << QByteArray("'100', NULL");
    QTest::newRow("a start now") << QByteArray("NULL, 'a.txt'") << QByteArray("'100', 'a.txt'");
    QTest::newRow("words now") << QByteArray("NULL, NULL") << QByteArray("'100', 'a.txt'");
    QTest::newRow("an empty name for none") << QByteArray("'100', NULL") << QByteArray("'100', ''");
}

void TestDiveIdentity::anotherDiveUnderItsIdentifierIsNotFound() {
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, after);
    const tests::ProgramFixture program;
    add("('D0000001', " + before + ")");
    const DiveIdentity dive = first();
    QVERIFY(isThere(dive));
    process().database.execute("DELETE FROM main WHERE DiveID = 'D0000001'");
    QVERIFY(!isThere(dive));
    add("('D0000001', " + after + ")"); // in the row number that was freed
    QCOMPARE(first().row, dive.row);
    QVERIFY(!isThere(dive));
    QVERIFY(!(first() == dive));
}

void TestDiveIdentity::ofTwoRowsWithOneIdentifierItsOwnIsFound() {
    const tests::ProgramFixture program;
    add("('D0000001', '100', 'a.txt')");
    const DiveIdentity dive = first();
    process().database.execute("DELETE FROM main");
    add("('D0000001', '7', 'x.txt'), ('D0000001', '100', 'a.txt')");
    const auto row = finddive(process().database, dive);
    QVERIFY(row.has_value());
    QCOMPARE(row->value(u"Startcode").text(), "100");
}

void TestDiveIdentity::rowsWithoutWordsAreKnownByTheirNumber() {
    const tests::ProgramFixture program;
    add("('D0000001', NULL, NULL), ('D0000001', NULL, NULL), ('D0000001', '', '')");
    const DiveIdentity dive = first();
    QVERIFY(!dive.isKnown());
    QVERIFY(isThere(dive));
    process().database.execute("DELETE FROM main WHERE rowid = (SELECT min(rowid) FROM main)");
    QVERIFY(!isThere(dive)); // the other rows say as little, and are others
    QVERIFY(!(first() == dive));
    process().database.execute("DELETE FROM main WHERE Startcode IS NULL");
    QVERIFY(!first().isKnown());
    QVERIFY(!isThere(dive));
}

void TestDiveIdentity::noDiveIsNeverFound() {
    const tests::ProgramFixture program;
    process().database.execute("INSERT INTO main (DiveID) VALUES ('')");
    QVERIFY(first().isEmpty());
    QVERIFY(!isThere({}));
    QVERIFY(!isThere(first()));
    QVERIFY(!isThere(identifydive(process().database, QString()))); // a row without an identifier is none
}

void TestDiveIdentity::lookingLeavesTheSharedRowsAlone() {
    const tests::ProgramFixture program;
    add("('D0000001', '100', 'a.txt')");
    process().mainrecordset = process().database.openRecordset("SELECT * FROM gas");
    process().querytext = QStringLiteral("mine");
    QVERIFY(isThere(first()));
    QCOMPARE(process().mainrecordset.fieldName(1), "Gastype");
    QCOMPARE(process().querytext, "mine");
}

void TestDiveIdentity::aTableWithoutTheFieldsReadsThemAsNull() {
    const tests::ProgramFixture program;
    process().database.execute("DROP TABLE main");
    process().database.execute("CREATE TABLE main (DiveID TEXT, Location TEXT)");
    process().database.execute("INSERT INTO main VALUES ('D0000001', 'Reef')");
    QVERIFY(!first().isKnown());
    QVERIFY(isThere(first()));
}

void TestDiveIdentity::anotherDiveIsInHandForAScope() {
    process().currentdiveid = QStringLiteral("D0000001");
    {
        const DiveInHand outer(QStringLiteral("D0000002"));
        QCOMPARE(process().currentdiveid, "D0000002");
        {
            const DiveInHand inner;
            QCOMPARE(process().currentdiveid, "D0000002");
            process().currentdiveid = QStringLiteral("D0000003");
        }
        QCOMPARE(process().currentdiveid, "D0000002");
    }
    QCOMPARE(process().currentdiveid, "D0000001");
}

void TestDiveIdentity::aChangeThatIsKeptLasts() {
    process().currentdiveid = QStringLiteral("D0000001");
    {
        DiveInHand inHand(QStringLiteral("D0000002"));
        inHand.keep();
    }
    QCOMPARE(process().currentdiveid, "D0000002");
}

void TestDiveIdentity::aNewDiveThatFailsLeavesTheOneInHand() {
    const tests::ProgramFixture program;
    process().currentdiveid = QStringLiteral("D0000009");
    newdive(QStringLiteral("3.12"));
    QCOMPARE(process().currentdiveid, "D0000001");
    process().currentdiveid = QStringLiteral("D0000009");
    process().database.execute("ALTER TABLE main RENAME COLUMN systemid TO sysid"); // its last step fails
    QVERIFY_EXCEPTION_THROWN(newdive(QStringLiteral("3.12")), platform::StoreError);
    QCOMPARE(process().currentdiveid, "D0000009");
    QCOMPARE(process().database.openRecordset("SELECT COUNT(*) FROM main").value(0).text(), "1");
}

QTEST_GUILESS_MAIN(TestDiveIdentity)
#include "test_diveidentity.moc"
