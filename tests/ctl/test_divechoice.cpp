#include "ctl/selection.h"
#include "tests/ctl/ctlstage.h"

using namespace benthor;
using namespace benthor::ctl;
using tests::ToolFolder;

namespace {

QStringList chosen(const ToolFolder& world, const Selection& selection) {
    exports::DiveReader reader(process().database, world.folder);
    return selectDives(process().database, reader, selection).ids;
}

Selection between(const char* since, const char* until) {
    Selection selection;
    if (const auto days = daysOf(QLatin1String(since))) {
        selection.since = days->first;
    }
    if (const auto days = daysOf(QLatin1String(until))) {
        selection.until = days->second;
    }
    return selection;
}

Selection withWords(const QStringList& words) {
    Selection selection;
    selection.words = words;
    return selection;
}

void set(const char* sql) {
    process().database.execute(sql);
}

} // namespace

class TestDiveChoice : public QObject {
    Q_OBJECT

private slots:
    void identifiers_data();
    void identifiers();
    void aDateIsAllOfIt_data();
    void aDateIsAllOfIt();
    void divesComeByTheirStart();
    void bothEndsOfADateAreIncluded();
    void aDiveWithoutAStartMeetsNoDate();
    void everyWordMustOccurSomewhere();
    void identifiersAreNarrowedByConditions();
    void whatIsNotThereIsTold();
    void whatNoIdentifierLeadsToIsCounted();
};

void TestDiveChoice::identifiers_data() {
    QTest::addColumn<QString>("id");
    QTest::newRow("12") << "D0000012";
    QTest::newRow("D12") << "D0000012";
    QTest::newRow("d0000012") << "D0000012";
    QTest::newRow("0012") << "D0000012";
    QTest::newRow("9999999") << "D9999999";
    for (const char* const same : {"10000000", "D00000012", "*", "12a", "DD12", "-1", "x'y"}) {
        QTest::newRow(same) << QString::fromLatin1(same);
    }
}

void TestDiveChoice::identifiers() {
    QFETCH(QString, id);
    QCOMPARE(identifierOf(QString::fromLatin1(QTest::currentDataTag())), id);
}

void TestDiveChoice::aDateIsAllOfIt_data() {
    QTest::addColumn<QDate>("first");
    QTest::addColumn<QDate>("last");
    QTest::newRow("2008") << QDate(2008, 1, 1) << QDate(2008, 12, 31);
    QTest::newRow("2008-02") << QDate(2008, 2, 1) << QDate(2008, 2, 29);
    QTest::newRow("2008-12") << QDate(2008, 12, 1) << QDate(2008, 12, 31);
    QTest::newRow("2008-07-15") << QDate(2008, 7, 15) << QDate(2008, 7, 15);
    for (const char* const none :
         {"", "08", "2008-13", "2008-7", "2008-02-30", "2008-07-15x", "15.7.2008", "2008/07", "0000"}) {
        QTest::newRow(none) << QDate() << QDate();
    }
}

void TestDiveChoice::aDateIsAllOfIt() {
    QFETCH(QDate, first);
    QFETCH(QDate, last);
    const auto days = daysOf(QString::fromLatin1(QTest::currentDataTag()));
    QCOMPARE(days.has_value(), first.isValid());
    if (days) {
        QCOMPARE(days->first, first);
        QCOMPARE(days->second, last);
    }
}

void TestDiveChoice::divesComeByTheirStart() {
    const ToolFolder world({"912345678", "812345678", "812345678"});
    set("UPDATE main SET startdate = NULL WHERE DiveID = 'D0000003'");
    QCOMPARE(chosen(world, {}), QStringList({"D0000003", "D0000002", "D0000001"}));
    Selection two;
    two.ids = QStringList({"D0000001", "D0000002", "D0000001"});
    QCOMPARE(chosen(world, two), QStringList({"D0000002", "D0000001"}));
}

void TestDiveChoice::bothEndsOfADateAreIncluded() {
    const ToolFolder world;
    set("UPDATE main SET startdate = '2008-07-15 00:00:00' WHERE DiveID = 'D0000001'");
    set("UPDATE main SET startdate = '2008-07-15 23:59:59' WHERE DiveID = 'D0000002'");
    set("UPDATE main SET startdate = '2008-12-31 23:59:59' WHERE DiveID = 'D0000003'");
    const QStringList two({"D0000001", "D0000002"});
    const QStringList all({"D0000001", "D0000002", "D0000003"});
    QCOMPARE(chosen(world, between("2008-07-15", "2008-07-15")), two);
    QCOMPARE(chosen(world, between("2008-07", "2008-07")), two);
    QCOMPARE(chosen(world, between("2008", "")), all);
    QCOMPARE(chosen(world, between("", "2008")), all);
    QCOMPARE(chosen(world, between("2008-07-16", "")), QStringList{QStringLiteral("D0000003")});
    QCOMPARE(chosen(world, between("", "2008-11")), two);
    QCOMPARE(chosen(world, between("2009", "")), QStringList());
    QCOMPARE(chosen(world, between("", "2007")), QStringList());
}

void TestDiveChoice::aDiveWithoutAStartMeetsNoDate() {
    const ToolFolder world({"812345678"});
    set("UPDATE main SET startdate = NULL");
    QCOMPARE(chosen(world, between("1900", "")), QStringList());
    QCOMPARE(chosen(world, between("", "2100")), QStringList());
    QCOMPARE(chosen(world, withWords({QStringLiteral("dive001")})), QStringList{QStringLiteral("D0000001")});
}

void TestDiveChoice::everyWordMustOccurSomewhere() {
    const ToolFolder world({"812345678"});
    set("UPDATE main SET Location = 'Blue hole', site = 'Höhlensee', divenote = 'slow ascent', "
        "sitenote = 'jetty', Coments = 'cold', Suit = 'KD00777', startdate = '2008-07-15 08:55:17'");
    set("INSERT INTO buddylist VALUES ('D0000001', 'Anna')");
    set("INSERT INTO buddylist VALUES ('D0000001', 'Ben Nevis')");
    const QStringList found{QStringLiteral("D0000001")};
    for (const char* const word : {"BLUE", "höhlen", "ascent", "jetty", "cold", "00777", "anna", "nevis",
                                   "2008-07-15", "08:55", "Jul/15/2008", "2008-07-15T08:55:17"}) {
        QVERIFY2(chosen(world, withWords({QString::fromUtf8(word)})) == found, word);
    }
    QCOMPARE(chosen(world, withWords({QStringLiteral("blue"), QStringLiteral("anna")})), found);
    QCOMPARE(chosen(world, withWords({QStringLiteral("blue"), QStringLiteral("carl")})), QStringList());
    // A word stands in one text, not over the seam of two, and other fields do not count.
    QCOMPARE(chosen(world, withWords({QStringLiteral("annaben")})), QStringList());
    QCOMPARE(chosen(world, withWords({QStringLiteral("D0000001")})), QStringList());
    set("DROP TABLE buddylist");
    QCOMPARE(chosen(world, withWords({QStringLiteral("anna")})), QStringList());
    QCOMPARE(chosen(world, withWords({QStringLiteral("jetty")})), found);
}

void TestDiveChoice::identifiersAreNarrowedByConditions() {
    const ToolFolder world;
    set("UPDATE main SET startdate = '2008-07-15 00:00:00' WHERE DiveID <> 'D0000001'");
    Selection selection = between("2008", "2008");
    selection.ids = QStringList({"D0000001", "D0000003"});
    QCOMPARE(chosen(world, selection), QStringList{QStringLiteral("D0000003")});
}

void TestDiveChoice::whatIsNotThereIsTold() {
    const ToolFolder world;
    exports::DiveReader reader(process().database, world.folder);
    Selection selection = between("2050", "");
    selection.ids = QStringList({"d0000002", "D0000009", "x'y", "D0000009"});
    const Selected selected = selectDives(process().database, reader, selection);
    // One that is there and meets no condition is not missing.
    QCOMPARE(selected.missing, QStringList({"D0000009", "x'y"}));
    QCOMPARE(selected.ids, QStringList());
}

void TestDiveChoice::whatNoIdentifierLeadsToIsCounted() {
    const ToolFolder world({"812345678"});
    set("INSERT INTO main (DiveID, startdate) VALUES (NULL, '2008-07-15 00:00:00')");
    set("INSERT INTO main (DiveID) SELECT 'D''1'");
    exports::DiveReader reader(process().database, world.folder);
    const Selected selected = selectDives(process().database, reader, {});
    QCOMPARE(selected.ids, QStringList{QStringLiteral("D0000001")});
    QCOMPARE(selected.unnamed, 2);
}

QTEST_GUILESS_MAIN(TestDiveChoice)
#include "test_divechoice.moc"
