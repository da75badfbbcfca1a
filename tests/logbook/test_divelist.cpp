#include "logbook/divelist.h"
#include "logbook/listfill.h"
#include "platform/faultpoint.h"
#include "session/process.h"
#include "store/diveinhand.h"
#include "tests/support/programfixture.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace benthor;
using platform::StoreError;

namespace {

QJsonObject vectors() {
    QFile file(QStringLiteral(BENTHOR_TEST_DATA "/exports.json"));
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("the vectors cannot be read");
    }
    return QJsonDocument::fromJson(file.readAll()).object();
}

/// A good dive with one gas and one tissue row.
void addDive(const QString& diveid, const QString& location,
             const QString& maxdepth = QStringLiteral("12.300"),
             const QString& startdate = QStringLiteral("2017-09-27 03:34:38"),
             const QString& site = QString()) {
    platform::Recordset dives = process().database.openForAdding("main");
    dives.addNew();
    dives.set(u"DiveID", diveid);
    dives.set(u"Location", location);
    dives.set(u"MaxDepth", maxdepth);
    dives.set(u"startdate", startdate);
    dives.set(u"finisheddate", QStringLiteral("2017-09-27 04:15:45"));
    dives.set(u"site", site);
    dives.set(u"Version", QStringLiteral("V3.12"));
    dives.set(u"Interval", QStringLiteral("10"));
    dives.set(u"Duration", QStringLiteral("41:7"));
    dives.update();
    platform::Recordset gases = process().database.openForAdding("gas");
    gases.addNew();
    const QStringList gas{diveid, "0000", "79", "0", "660", "1\r"};
    for (int i = 0; i < gas.size(); ++i) {
        gases.set(i, gas[i]);
    }
    gases.update();
    platform::Recordset tissues = process().database.openForAdding("tissue");
    tissues.addNew();
    const QStringList tissue{diveid, "0000", "79", "0\r"};
    for (int i = 0; i < tissue.size(); ++i) {
        tissues.set(i, tissue[i]);
    }
    tissues.update();
}

/// What a fill gives: the dives as they are read, and the messages of each and of the last faulty one.
struct Filled {
    logbook::ListedDives dives;
    QStringList problems;
    QString last;
};

Filled fillFrom(platform::Database& database, const platform::ProgramFolder& folder, int sort) {
    Filled list{logbook::readdives(database, sort), {}, {}};
    const store::DiveInHand inHand;
    logbook::checkdives(database, folder, list.dives,
                        {[&list](int, bool good) {
                             list.problems += good ? QString() : process().problemtext;
                             list.last = good ? list.last : list.problems.last();
                             return true;
                         },
                         {}});
    return list;
}

QStringList firstCells(const Filled& list) {
    QStringList cells;
    for (int number = 1; number <= list.dives.count(); ++number) {
        cells += list.dives.cell(number, 0, u"metre");
    }
    return cells;
}

} // namespace

class TestDiveList : public QObject {
    Q_OBJECT

private slots:
    void init() { program_ = std::make_unique<tests::ProgramFixture>(); }
    void cleanup() { program_.reset(); }

    void theSortIsTheFirstLetterOfFourThatTheKeyHolds();
    void queriesAreWordedAsTold();
    void theSortKeyIsKeptBetweenRuns();
    void aMissingSortFileGivesNoKey();
    void widthsGoByFieldPosition();
    void headersGoByFieldNameWithoutRegardToCase();
    void cellsAreShownAsTheVectorsSay_data();
    void cellsAreShownAsTheVectorsSay();
    void datesAreShownWithTheMonthsName();
    void aNonNumericDepthInFeetModeIsNotTurnedIntoFeet();
    void columnsMoveAsTheVectorsSay();
    void theSummaryStripShowsTheRightFields();

    void anEmptyStoreGivesNoRows();
    void goodDivesArePlainAndDamagedOnesTellTheirProblem();
    void aDamagedDivesFileLandsInCorruptAtEachFill();
    void aLocationThatIsNoFileNameIsNotCopied();
    void theListIsSortedByItsKey_data();
    void theListIsSortedByItsKey();
    void depthsSortAsText();
    void datesSortByTime();
    void theDiveInHandStaysBehindAFill();
    void anIdentifierWithASingleQuoteIsAProblemOfItsRowOnly();
    void theListOfAnotherStoreChecksThatStore();

    void deletingADiveRemovesAllItsRows();
    void deletingADiveKeepsItsFiles();
    void aFileOfItsNameThatWaitsIsDeletedWithADive();
    void deletingTheHighestDivePutsTheCounterBack();
    void starRowsAreCleanedUp();
    void aDiveThatIsNotThereIsDeletedWithoutHarm();
    void aDeletionThatFailsKeepsTheDiveAndItsWaitingFile();

private:
    Filled fill(int sort = 0) { return fillFrom(process().database, program_->folder, sort); }
    static int count(const char* table) {
        return static_cast<int>(
            tests::ProgramFixture::rows((std::string("SELECT * FROM ") + table).c_str()).size());
    }

    std::unique_ptr<tests::ProgramFixture> program_;
};

void TestDiveList::theSortIsTheFirstLetterOfFourThatTheKeyHolds() {
    QCOMPARE(logbook::sortnumber(u"s"), 4);
    QCOMPARE(logbook::sortnumber(u"m"), 2);
    QCOMPARE(logbook::sortnumber(u"l"), 1);
    QCOMPARE(logbook::sortnumber(u"d"), 3);
    QCOMPARE(logbook::sortnumber(u"dlms"), 4);
    QCOMPARE(logbook::sortnumber(u"dlm"), 2);
    QCOMPARE(logbook::sortnumber(u"dl"), 1);
    QCOMPARE(logbook::sortnumber(u""), 0);
    QCOMPARE(logbook::sortnumber(u"x"), 0);
}

void TestDiveList::queriesAreWordedAsTold() {
    QCOMPARE(logbook::listquery(1).text(), "SELECT * FROM main  ORDER BY location asc ");
    QCOMPARE(logbook::listquery(2).text(), "SELECT * FROM main  ORDER BY maxdepth asc ");
    QCOMPARE(logbook::listquery(3).text(), "SELECT * FROM main  ORDER BY startdate asc ");
    QCOMPARE(logbook::listquery(4).text(), "SELECT * FROM main  ORDER BY site asc ");
    QCOMPARE(logbook::listquery(0).text(), "SELECT * FROM main  ORDER BY diveid ");
    QCOMPARE(logbook::listquery(7).text(), "SELECT * FROM main  ORDER BY diveid ");
    QCOMPARE(logbook::listquery(3, true).text(), "SELECT * FROM main  ORDER BY startdate desc ");
    QCOMPARE(logbook::listquery(0, true).text(), "SELECT * FROM main  ORDER BY diveid desc ");
    QCOMPARE(logbook::sortnumber(logbook::identifierkey()), 0);
}

void TestDiveList::theSortKeyIsKeptBetweenRuns() {
    for (const char* const key : {"d", "m", "s", "l", ""}) {
        QVERIFY(logbook::writesortkey(program_->folder, QString::fromLatin1(key)));
        QCOMPARE(logbook::readsortkey(program_->folder), QString::fromLatin1(key));
    }
    QVERIFY(platform::writeFileWhole(program_->folder.path(u"dsort.txt"), "m\r\nsecond line\r\n"));
    QCOMPARE(logbook::readsortkey(program_->folder), "m");
}

void TestDiveList::aMissingSortFileGivesNoKey() {
    QCOMPARE(logbook::readsortkey(program_->folder), QString());
}

void TestDiveList::widthsGoByFieldPosition() {
    const std::vector<int> expected{900, 2000, 2000, 2000, 2500, 2000, 2000, 2000, 900,
                                    900, 2000, 0,    1100, 1100, 1100, 1100, 1100, 1100,
                                    0,   0,    0,    1100, 900,  1100, 1100, 1100, 1100};
    for (size_t i = 0; i < expected.size(); ++i) {
        QCOMPARE(logbook::columnwidth(static_cast<int>(i)), expected[i]);
    }
}

void TestDiveList::headersGoByFieldNameWithoutRegardToCase() {
    const QStringList headers = [&] {
        addDive(QStringLiteral("D0000001"), QStringLiteral("a.txt"));
        return fill().dives.columns().headers;
    }();
    QCOMPARE(headers,
             QStringList({"DiveID",      "Duration",   "MaxDepth",   "startdate", "Dive Name",    "site",
                          "Usage hours", "User Name",  "Department", "weather",   "finisheddate", "S\\N",
                          "Startcode",   "Dive Notes", "Site Notes", "Comments",  "Version",      "Interval",
                          "OTU",         "systemid",   "reserve1",   "reserve2",  "Atmospheric",  "Stack Use",
                          "descend",     "HPCylinder", "dbtxtname"}));
    QCOMPARE(logbook::headertext(QStringLiteral("SUIT")), "S\\N");
}

void TestDiveList::cellsAreShownAsTheVectorsSay_data() {
    QTest::addColumn<QJsonObject>("cell");
    const QJsonArray cells = vectors()[QStringLiteral("list_cells")].toArray();
    QVERIFY(cells.size() > 15);
    for (const QJsonValue& cell : cells) {
        QTest::addRow("%d %s", cell[QStringLiteral("position")].toInt(),
                      qPrintable(cell[QStringLiteral("value")].toString(QStringLiteral("Null"))))
            << cell.toObject();
    }
}

void TestDiveList::cellsAreShownAsTheVectorsSay() {
    QFETCH(QJsonObject, cell);
    const QJsonValue text = cell[QStringLiteral("value")];
    const platform::Value value = text.isNull() ? platform::Value() : platform::Value(text.toString());
    const int position = cell[QStringLiteral("position")].toInt();
    if (!cell[QStringLiteral("metric")].isNull()) {
        QCOMPARE(logbook::celltext(position, value, u"metre"), cell[QStringLiteral("metric")].toString());
    }
    if (!cell[QStringLiteral("feet")].isNull()) {
        QCOMPARE(logbook::celltext(position, value, u"Feet"), cell[QStringLiteral("feet")].toString());
    }
}

void TestDiveList::datesAreShownWithTheMonthsName() {
    const platform::Value moment(QStringLiteral("2004-02-11 08:58:33"));
    QCOMPARE(logbook::celltext(6, moment, u"metre"), "Feb/11/2004 08:58:33");
    QCOMPARE(logbook::celltext(7, moment, u"metre"), "Feb/11/2004 08:58:33");
    QCOMPARE(logbook::celltext(6, platform::Value(), u"metre"), QString());
    QCOMPARE(logbook::celltext(6, QStringLiteral("no date"), u"metre"), "no date");
    QCOMPARE(logbook::celltext(8, QStringLiteral(":7"), u"metre"), "mins");
}

void TestDiveList::aNonNumericDepthInFeetModeIsNotTurnedIntoFeet() {
    QCOMPARE(logbook::celltext(9, QStringLiteral("deep"), u"Feet"), "deep");
    QCOMPARE(logbook::celltext(9, QStringLiteral("deep"), u"metre"), "deep");
    QCOMPARE(logbook::celltext(9, QStringLiteral("10"), u"feet"), "10m");
}

void TestDiveList::columnsMoveAsTheVectorsSay() {
    std::vector<int> expected;
    for (const QJsonValue& position : vectors()[QStringLiteral("list_column_order")].toArray()) {
        expected.push_back(position.toInt());
    }
    QCOMPARE(expected.size(), 27U);
    QCOMPARE(logbook::columnorder(27), expected);
    QCOMPARE(logbook::columnorder(28).back(), 27);
    QCOMPARE(logbook::columnorder(3), std::vector<int>({0, 1, 2}));
}

void TestDiveList::theSummaryStripShowsTheRightFields() {
    const std::map<QByteArray, QByteArray> expected{
        {"txtdiveid", "DiveID"},      {"txtduration", "Duration"}, {"txtmaxdepth", "MaxDepth"},
        {"txttimedown", "startdate"}, {"txtlocation", "Location"}, {"txtstackhour", "dusage"},
        {"txtinterval", "Interval"},  {"txtotu", "otu"},           {"txtatmospheric", "datmos"}};
    const QStringList names = process().database.fieldNames(QStringLiteral("main"));
    const std::vector<int> order = logbook::columnorder(27);
    for (const logbook::StripBox& box : logbook::kStripBoxes) {
        const int position = order.at(static_cast<size_t>(box.displaycolumn));
        QCOMPARE(names.at(position).toLatin1(), expected.at(box.name));
    }
}

void TestDiveList::anEmptyStoreGivesNoRows() {
    const Filled list = fill();
    QVERIFY(list.dives.count() == 0);
    QCOMPARE(list.dives.columns().headers.size(), 27);
    QCOMPARE(list.last, QString());
}

void TestDiveList::goodDivesArePlainAndDamagedOnesTellTheirProblem() {
    addDive(QStringLiteral("D0000001"), QStringLiteral("a.txt"));
    addDive(QStringLiteral("D0000002"), QStringLiteral("b.txt"));
    addDive(QStringLiteral("D0000003"), QStringLiteral("c.txt"));
    process().database.execute("DELETE FROM gas WHERE diveid = 'D0000002'");
    const Filled list = fill();
    QCOMPARE(firstCells(list), QStringList({"D0000001", "D0000002", "D0000003"}));
    QCOMPARE(list.problems[0], QString());
    QCOMPARE(list.problems[1], "\rGas Profile not found !");
    QCOMPARE(list.problems[2], QString());
    QCOMPARE(list.last, "\rGas Profile not found !");
    const QStringList shown{"D0000001", "41mins", "12m", "Sep/27/2017 03:34:38", "a.txt"};
    for (int col = 0; col < shown.size(); ++col) {
        QCOMPARE(list.dives.cell(1, col, u"metre"), shown.at(col));
    }
    QCOMPARE(list.dives.columns().widths.at(1), 900);
    QCOMPARE(list.dives.columns().widths.at(4), 2500);
}

void TestDiveList::aDamagedDivesFileLandsInCorruptAtEachFill() {
    addDive(QStringLiteral("D0000001"), QStringLiteral("a.txt"));
    addDive(QStringLiteral("D0000002"), QStringLiteral("gone.txt"));
    process().database.execute("DELETE FROM tissue");
    program_->put(QStringLiteral("old"), QStringLiteral("a.txt"), "the dive");
    for (int time = 0; time < 2; ++time) {
        const Filled list = fill();
        QVERIFY(!list.problems[0].isEmpty());
        QCOMPARE(program_->bytesOf(QStringLiteral("corrupt"), QStringLiteral("a.txt")), "the dive");
        QCOMPARE(program_->names(QStringLiteral("corrupt")), QStringList("a.txt"));
        QVERIFY(QFile::remove(program_->folder.path(u"corrupt", u"a.txt")));
    }
}

void TestDiveList::aLocationThatIsNoFileNameIsNotCopied() {
    addDive(QStringLiteral("D0000001"), QStringLiteral("../rb.mdb"));
    addDive(QStringLiteral("D0000002"), QString());
    process().database.execute("DELETE FROM tissue");
    fill();
    QCOMPARE(program_->names(QStringLiteral("corrupt")), QStringList());
    QVERIFY(process().database.openRecordset("SELECT * FROM main").recordCount() == 2);
}

void TestDiveList::theListIsSortedByItsKey_data() {
    QTest::addColumn<int>("sort");
    QTest::addColumn<QStringList>("ids");
    QTest::newRow("location") << 1 << QStringList({"D0000003", "D0000002", "D0000001"});
    QTest::newRow("maxdepth") << 2 << QStringList({"D0000001", "D0000003", "D0000002"});
    QTest::newRow("startdate") << 3 << QStringList({"D0000002", "D0000001", "D0000003"});
    QTest::newRow("site") << 4 << QStringList({"D0000003", "D0000001", "D0000002"});
    QTest::newRow("diveid") << 0 << QStringList({"D0000001", "D0000002", "D0000003"});
}

void TestDiveList::theListIsSortedByItsKey() {
    QFETCH(int, sort);
    QFETCH(QStringList, ids);
    addDive(QStringLiteral("D0000002"), QStringLiteral("B.txt"), QStringLiteral("30.000"),
            QStringLiteral("2003-12-31 00:00:00"), QStringLiteral("wreck"));
    addDive(QStringLiteral("D0000001"), QStringLiteral("c.txt"), QStringLiteral("10.000"),
            QStringLiteral("2004-02-01 00:00:00"), QStringLiteral("Reef"));
    addDive(QStringLiteral("D0000003"), QStringLiteral("a.txt"), QStringLiteral("20.000"),
            QStringLiteral("2004-10-01 00:00:00"), QStringLiteral("cave"));
    QCOMPARE(firstCells(fill(sort)), ids);
}

void TestDiveList::depthsSortAsText() {
    addDive(QStringLiteral("D0000001"), QStringLiteral("a"), QStringLiteral("9.500"));
    addDive(QStringLiteral("D0000002"), QStringLiteral("b"), QStringLiteral("12.300"));
    QCOMPARE(firstCells(fill(2)), QStringList({"D0000002", "D0000001"}));
}

void TestDiveList::datesSortByTime() {
    addDive(QStringLiteral("D0000001"), QStringLiteral("a"), QStringLiteral("1"),
            QStringLiteral("2004-04-01 00:00:00"));
    addDive(QStringLiteral("D0000002"), QStringLiteral("b"), QStringLiteral("1"),
            QStringLiteral("2004-02-01 00:00:00"));
    // By their month names "Apr" would come before "Feb".
    QCOMPARE(firstCells(fill(3)), QStringList({"D0000002", "D0000001"}));
}

void TestDiveList::theDiveInHandStaysBehindAFill() {
    addDive(QStringLiteral("D0000001"), QStringLiteral("a"));
    process().currentdiveid = QStringLiteral("D0000009");
    fill();
    QCOMPARE(process().currentdiveid, "D0000009");
}

void TestDiveList::anIdentifierWithASingleQuoteIsAProblemOfItsRowOnly() {
    addDive(QStringLiteral("D000'001"), QStringLiteral("a"));
    addDive(QStringLiteral("D0000002"), QStringLiteral("b"));
    const Filled list = fill();
    QCOMPARE(list.dives.count(), 2);
    QVERIFY(list.problems[0].contains(QLatin1String("single quote")));
    QCOMPARE(list.problems[1], QString());
}

void TestDiveList::theListOfAnotherStoreChecksThatStore() {
    addDive(QStringLiteral("D0000001"), QStringLiteral("a"));
    const QString path = program_->folder.path(u"other.mdb");
    QVERIFY(platform::copyFile(program_->storePath(), path));
    process().database.execute("DELETE FROM gas");
    platform::Database other;
    other.open(path);
    QCOMPARE(fillFrom(other, program_->folder, 0).last, QString());
    QCOMPARE(fill().last, "\rGas Profile not found !");
    logbook::deletedives(other, program_->folder, {QStringLiteral("D0000001")});
    QCOMPARE(count("main"), 1);
    QCOMPARE(other.openRecordset("SELECT * FROM main").recordCount(), 0);
}

void TestDiveList::deletingADiveRemovesAllItsRows() {
    addDive(QStringLiteral("D0000001"), QStringLiteral("a.txt"));
    addDive(QStringLiteral("D0000002"), QStringLiteral("b.txt"));
    logbook::deletedive(process().database, QStringLiteral("D0000001"));
    QCOMPARE(tests::ProgramFixture::rows("SELECT DiveID FROM main"), QStringList("D0000002"));
    QCOMPARE(tests::ProgramFixture::rows("SELECT diveid FROM gas"), QStringList("D0000002"));
    QCOMPARE(tests::ProgramFixture::rows("SELECT diveid FROM tissue"), QStringList("D0000002"));
}

void TestDiveList::deletingADiveKeepsItsFiles() {
    addDive(QStringLiteral("D0000001"), QStringLiteral("a.txt"));
    program_->put(QStringLiteral("old"), QStringLiteral("a.txt"), "x");
    program_->put(QStringLiteral("dbtxt"), QStringLiteral("11A2B3Ca.txt"), "x");
    logbook::deletedives(process().database, program_->folder, {QStringLiteral("D0000001")});
    QCOMPARE(program_->names(QStringLiteral("old")), QStringList("a.txt"));
    QCOMPARE(program_->names(QStringLiteral("dbtxt")), QStringList("11A2B3Ca.txt"));
}

void TestDiveList::aFileOfItsNameThatWaitsIsDeletedWithADive() {
    addDive(QStringLiteral("D0000001"), QStringLiteral("a.txt"));
    addDive(QStringLiteral("D0000002"), QStringLiteral("../rb.mdb"));
    process().database.execute("INSERT INTO main (DiveID) VALUES ('D0000003')");
    program_->putWaiting(QStringLiteral("a.txt"), "x");
    program_->putWaiting(QStringLiteral("b.txt"), "x");
    logbook::deletedives(
        process().database, program_->folder,
        {QStringLiteral("D0000001"), QStringLiteral("D0000002"), QStringLiteral("D0000003")});
    QCOMPARE(program_->names(QStringLiteral("new")), QStringList("b.txt"));
    QCOMPARE(count("main"), 0);
    QVERIFY(QFile::exists(program_->storePath()));
}

void TestDiveList::deletingTheHighestDivePutsTheCounterBack() {
    addDive(QStringLiteral("D0000001"), QStringLiteral("a.txt"));
    addDive(QStringLiteral("D0000002"), QStringLiteral("b.txt"));
    logbook::deletedives(process().database, program_->folder, {QStringLiteral("D0000002")});
    QCOMPARE(tests::ProgramFixture::rows("SELECT serial_no FROM serialno"), QStringList("D0000001"));
    logbook::deletedives(process().database, program_->folder, {QStringLiteral("D0000001")});
    QCOMPARE(tests::ProgramFixture::rows("SELECT serial_no FROM serialno"), QStringList("D0000000"));
}

void TestDiveList::starRowsAreCleanedUp() {
    addDive(QStringLiteral("*"), QStringLiteral("a.txt"));
    addDive(QStringLiteral("D0000001"), QStringLiteral("b.txt"));
    logbook::deletestarrows(process().database);
    QCOMPARE(tests::ProgramFixture::rows("SELECT DiveID FROM main"), QStringList("D0000001"));
    QCOMPARE(count("gas"), 1);
    addDive(QStringLiteral("*"), QStringLiteral("a.txt"));
    logbook::deletedives(process().database, program_->folder, {});
    QCOMPARE(count("main"), 1);
}

void TestDiveList::aDiveThatIsNotThereIsDeletedWithoutHarm() {
    addDive(QStringLiteral("D0000001"), QStringLiteral("a.txt"));
    program_->putWaiting(QStringLiteral("a.txt"), "x");
    logbook::deletedives(process().database, program_->folder, {QStringLiteral("D0000009")});
    QCOMPARE(count("main"), 1);
    QCOMPARE(program_->names(QStringLiteral("new")), QStringList("a.txt"));
}

void TestDiveList::aDeletionThatFailsKeepsTheDiveAndItsWaitingFile() {
    addDive(QStringLiteral("D0000001"), QStringLiteral("a.txt"));
    program_->putWaiting(QStringLiteral("a.txt"), "x");
    {
        const platform::FaultInjection fault(
            [](std::string_view step) { return step == "commit" ? EIO : 0; });
        QVERIFY_EXCEPTION_THROWN(
            logbook::deletedives(process().database, program_->folder, {QStringLiteral("D0000001")}),
            StoreError);
    }
    QCOMPARE(count("main"), 1);
    QCOMPARE(count("gas"), 1);
    QCOMPARE(program_->names(QStringLiteral("new")), QStringList("a.txt"));
}

QTEST_GUILESS_MAIN(TestDiveList)
#include "test_divelist.moc"
