#include "platform/faultpoint.h"
#include "store/backup.h"
#include "store/jet/jetconvert.h"
#include "store/maintenance.h"
#include "tests/store/jet/madejet.h"
#include "tests/support/smalldisk.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

using namespace benthor;
using namespace benthor::tests;

namespace {

/// A place for a store, and what is in it afterwards.
class Place {
public:
    QString path() const { return folder_.filePath(QStringLiteral("new.mdb")); }
    QStringList names() const { return QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden); }

    store::JetCounts take(std::vector<MadeTable> tables) const {
        MadeJet jet(std::move(tables));
        return store::convertjet(jet, path());
    }
    /// Each row of a query as its values' texts, "(null)" for none, parted by "|".
    QStringList rows(const char* sql) const {
        SQLite::Database database(path().toStdString());
        SQLite::Statement statement(database, sql);
        QStringList all;
        while (statement.executeStep()) {
            QStringList values;
            for (int i = 0; i < statement.getColumnCount(); ++i) {
                const SQLite::Column column = statement.getColumn(i);
                values +=
                    column.isNull() ? QStringLiteral("(null)") : QString::fromStdString(column.getString());
            }
            all += values.join(QLatin1Char('|'));
        }
        return all;
    }

private:
    QTemporaryDir folder_;
};

QString faultOf(std::vector<MadeTable> tables) {
    const Place place;
    try {
        place.take(std::move(tables));
    } catch (const platform::StoreError& error) {
        return place.names().isEmpty() ? error.text() : QStringLiteral("left a file behind");
    }
    return {};
}

/// A store whose dives are these.
std::vector<MadeTable> storeOf(std::vector<JetField> fields, std::vector<MadeRow> rows) {
    std::vector<MadeTable> tables = madeStore(1);
    tables[0] = {"main", std::move(fields), std::move(rows)};
    return tables;
}

} // namespace

class TestJetConvert : public QObject {
    Q_OBJECT

private slots:
    void fieldsAreFoundByNameWithoutRegardToCase();
    void fieldsThatWeDoNotKnowStandBehindTheKnownPositions();
    void tablesThatWeDoNotKnowComeUnderTheirOwnNames();
    void aStoreThatCameIsOneOfOurs();
    void datesOfEveryTableBecomeTexts();
    void textsBecomeDatesInTheTwoFieldsAlone();
    void aTextThatIsNoDateStaysByteForByte();
    void nullEmptyAndCarriageReturnStay();
    void valuesOfEveryKindComeOver();
    void aLongerSerialHasTheRoomThatItHad();
    void theRowsOfAFreshStoreMakeWayForThoseThatCome();
    void whatCameIsCounted();
    void theBoxNamesWhatCame();

    void whatIsNoDiveStoreIsNamed();
    void rowsThatAreMissingOrTooManyAreNamed();
    void aDateThatThereIsNotIsNamed();
    void twoFieldsOfOneNameAreAFault();
    void aFaultBehindTheLastRowTakesNothing();
    void aFileThatIsThereIsNeverTouched();
    void theProgressMovesToItsEnd();
    void aStopTakesNothing();
    void aDiskThatFailsAtAnyStepTakesNothing();
    void aDiskThatIsFullTakesNothing();
    void theHeadTellsAJetFile();
};

void TestJetConvert::fieldsAreFoundByNameWithoutRegardToCase() {
    const Place place;
    place.take(storeOf({textField("MAXDEPTH"), textField("diveid"), textField("COMENTS")},
                       {{"12.300", "D0000001", "ok"}}));
    QCOMPARE(place.rows("SELECT DiveID, MaxDepth, Coments FROM main"), QStringList{"D0000001|12.300|ok"});
    QCOMPARE(place.rows("SELECT count(*) FROM pragma_table_info('main')"), QStringList{"27"});
}

void TestJetConvert::fieldsThatWeDoNotKnowStandBehindTheKnownPositions() {
    const Place place;
    place.take(storeOf({textField("spare1"), textField("DiveID"), textField("Extra \"Field\"")},
                       {{"one", "D0000001", "x1"}}));
    const QStringList names = place.rows("SELECT name FROM pragma_table_info('main')");
    QCOMPARE(names.size(), 29);
    QCOMPARE(names.at(0), "DiveID");
    QCOMPARE(names.at(26), "dbtxtname");
    QCOMPARE(names.mid(27), (QStringList{"spare1", "Extra \"Field\""}));
    QCOMPARE(place.rows("SELECT DiveID, spare1, \"Extra \"\"Field\"\"\" FROM main"),
             QStringList{"D0000001|one|x1"});
}

void TestJetConvert::tablesThatWeDoNotKnowComeUnderTheirOwnNames() {
    const Place place;
    std::vector<MadeTable> tables = madeStore(1);
    tables.push_back({"Gear \"list\"",
                      {textField("What"), {"Weight", Kind::Number, 0}},
                      {{"Torch", "1.5"}, {"Größe", "2"}}});
    tables.push_back({"Empty one", {textField("Nothing")}, {}});
    place.take(tables);
    QCOMPARE(place.rows("SELECT * FROM \"Gear \"\"list\"\"\""), (QStringList{"Torch|1.5", "Größe|2"}));
    QCOMPARE(place.rows("SELECT count(*) FROM \"Empty one\""), QStringList{"0"});
}

void TestJetConvert::aStoreThatCameIsOneOfOurs() {
    const Place place;
    place.take(madeStore(3));
    QVERIFY(store::examinestore(place.path()).sound());
    QCOMPARE(place.names(), QStringList{"new.mdb"});
    store::addmissingfields(place.path(), [](const QString& text) { QFAIL(qPrintable(text)); });
    QCOMPARE(place.rows("SELECT count(*) FROM pragma_table_info('Profile')"), QStringList{"50"});
    QCOMPARE(place.rows("SELECT DiveID FROM main WHERE DiveID = 'd0000002'"), QStringList{"D0000002"});
    QCOMPARE(place.rows("SELECT count(*) FROM sqlite_master WHERE type = 'index'"), QStringList{"5"});
    QCOMPARE(QFile::permissions(place.path()) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
}

void TestJetConvert::datesOfEveryTableBecomeTexts() {
    const Place place;
    std::vector<MadeTable> tables =
        storeOf({textField("DiveID"), {"startdate", Kind::Date, 0}, {"divenote", Kind::Date, 0}},
                {{"D0000001", travelling(38233.72032407), travelling(0.5)},
                 {"D0000002", std::nullopt, travelling(-1.25)}});
    tables.push_back({"Service", {{"At", Kind::Date, 0}}, {{travelling(25569 + 0.6 / 86400)}}});
    place.take(tables);
    QCOMPARE(place.rows("SELECT startdate, divenote FROM main"),
             (QStringList{"2004-09-03 17:17:16|1899-12-30 12:00:00", "(null)|1899-12-29 06:00:00"}));
    QCOMPARE(place.rows("SELECT * FROM Service"), QStringList{"1970-01-01 00:00:01"});
    platform::Database database; // read as dates by the rest of the program
    database.open(place.path());
    QCOMPARE(
        database.openRecordset("SELECT * FROM main ORDER BY startdate DESC").value(u"startdate").dateTime(),
        QDateTime(QDate(2004, 9, 3), QTime(17, 17, 16), Qt::UTC));
}

void TestJetConvert::textsBecomeDatesInTheTwoFieldsAlone() {
    const Place place;
    const MadeValue text = "Sep/03/2004 17:17:16";
    std::vector<MadeTable> tables =
        storeOf({textField("DiveID"), textField("StartDate"), textField("finisheddate"),
                 textField("divenote"), textField("spare")},
                {{"D0000001", text, "SEP/03/2004 18:30:00", text, text}});
    tables.push_back({"Other", {textField("startdate")}, {{text}}});
    place.take(tables);
    QCOMPARE(
        place.rows("SELECT startdate, finisheddate, divenote, spare FROM main"),
        QStringList{"2004-09-03 17:17:16|2004-09-03 18:30:00|Sep/03/2004 17:17:16|Sep/03/2004 17:17:16"});
    QCOMPARE(place.rows("SELECT * FROM Other"), QStringList{"Sep/03/2004 17:17:16"});
}

void TestJetConvert::aTextThatIsNoDateStaysByteForByte() {
    const Place place;
    const QStringList texts{
        "", "unknown", "007", "1e3", " 12 ", "2004-09-03", "Sep/31/2004 10:00:00", "03.09.2004"};
    std::vector<MadeRow> rows;
    for (const QString& text : texts) {
        rows.push_back({"D0000001", text.toStdString()});
    }
    place.take(storeOf({textField("DiveID"), textField("startdate")}, rows));
    QCOMPARE(place.rows("SELECT startdate FROM main ORDER BY rowid"), texts);
    QVERIFY(store::examinestore(place.path()).sound());
}

void TestJetConvert::nullEmptyAndCarriageReturnStay() {
    const Place place;
    place.take(storeOf({textField("DiveID"), textField("site"), textField("weather"), textField("divenote")},
                       {{"D0000001", std::nullopt, "", "7\r"}}));
    QCOMPARE(place.rows("SELECT site, weather, divenote FROM main"), QStringList{"(null)||7\r"});
    QCOMPARE(place.rows("SELECT TissueHe FROM tissue LIMIT 1"), QStringList{"7\r"});
}

void TestJetConvert::valuesOfEveryKindComeOver() {
    const Place place;
    const std::string bytes("\x00\xff\x80 raw", 7);
    const std::string note = QString(200000, QLatin1Char('n')).toStdString() + "—\r\n'\"";
    std::vector<MadeTable> tables = madeStore(1);
    tables.push_back({"Kinds",
                      {textField("long", 0),
                       {"yes", Kind::Truth, 0},
                       {"no", Kind::Truth, 0},
                       {"number", Kind::Number, 0},
                       {"raw", Kind::Bytes, 0},
                       {"none", Kind::Bytes, 0}},
                      {{note, std::string(1, '\1'), std::string(1, '\0'), "-0012.50", bytes, std::nullopt}}});
    place.take(tables);
    QCOMPARE(place.rows("SELECT yes, no, number, none FROM Kinds"),
             QStringList{"True|False|-0012.50|(null)"});
    QCOMPARE(place.rows("SELECT length(\"long\"), substr(\"long\", 200001) FROM Kinds"),
             QStringList{"200005|—\r\n'\""});
    QCOMPARE(place.rows("SELECT hex(raw) FROM Kinds"), QStringList{"00FF8020726177"});
}

/// A store of ours refuses a serial of more than 50 characters as a damaged line. The older one did so with
/// what did not fit its field.
void TestJetConvert::aLongerSerialHasTheRoomThatItHad() {
    const std::string serial(70, 's');
    for (const std::uint32_t size : {100U, 0U}) {
        const Place place;
        place.take(storeOf({textField("DiveID"), textField("Suit", size)}, {{"D0000001", serial}}));
        QVERIFY(store::examinestore(place.path()).sound());
        QCOMPARE(place.rows("SELECT Suit FROM main"), QStringList{QString::fromStdString(serial)});
        SQLite::Database database(place.path().toStdString(), SQLite::OPEN_READWRITE);
        const auto grow = [&] { database.exec("UPDATE main SET Suit = Suit || Suit"); };
        if (size == 0) {
            grow();
        } else {
            QVERIFY_EXCEPTION_THROWN(grow(), SQLite::Exception);
        }
    }
    QVERIFY(
        faultOf(storeOf({textField("DiveID"), textField("Suit", 50)}, {{"D0000001", std::string(50, 's')}}))
            .isEmpty());
}

void TestJetConvert::theRowsOfAFreshStoreMakeWayForThoseThatCome() {
    const Place place;
    place.take(madeStore(1));
    QCOMPARE(place.rows("SELECT * FROM serialno"), QStringList{"D0000002|Close"});
    QCOMPARE(place.rows("SELECT * FROM Display"), QStringList{"Feet"});
    const Place without;
    std::vector<MadeTable> tables = madeStore(1);
    tables.pop_back();          // no table Display
    tables.back().rows.clear(); // and a serialno without its row
    without.take(tables);
    QCOMPARE(without.rows("SELECT * FROM serialno"), QStringList{"(null)|Open"});
    QCOMPARE(without.rows("SELECT * FROM Display"), QStringList{"metre"});
}

void TestJetConvert::whatCameIsCounted() {
    const Place place;
    std::vector<MadeTable> tables = madeStore(4);
    tables.push_back({"Gear", {textField("What")}, {{"Torch"}, {"Knife"}}});
    const store::JetCounts counts = place.take(tables);
    QCOMPARE(counts.dives, 4U);
    QCOMPARE(counts.gases, 8U);
    QCOMPARE(counts.tissues, 12U);
    QCOMPARE(counts.buddies, 1U);
    QCOMPARE(counts.further.size(), 3U);
    QCOMPARE(counts.further.back().table, "Gear");
    QCOMPARE(counts.further.back().rows, 2U);
    QCOMPARE(place.rows("SELECT count(*) FROM main"), QStringList{"4"});
    QCOMPARE(place.rows("SELECT count(*) FROM gas"), QStringList{"8"});
    QCOMPARE(place.rows("SELECT count(*) FROM tissue"), QStringList{"12"});
}

void TestJetConvert::theBoxNamesWhatCame() {
    store::JetCounts counts{4, 8, 12, 1, {{QStringLiteral("Gear"), 2}, {QStringLiteral("site"), 0}}, {}};
    QCOMPARE(store::jetcountstext(counts),
             "4 dives\n8 gas rows\n12 tissue rows\n1 buddy\n2 further tables (rows): Gear (2), site (0)");
    counts.elsewhere = QStringList{QStringLiteral("Far")};
    QVERIFY(store::jetcountstext(counts).endsWith(QLatin1String("did not come: Far")));
}

void TestJetConvert::whatIsNoDiveStoreIsNamed() {
    QCOMPARE(faultOf({{"songs", {textField("name")}, {{"one"}}}}),
             "It is no dive store: it has no table \"main\".");
    std::vector<MadeTable> tables = madeStore(1);
    tables.erase(tables.begin() + 2);
    QCOMPARE(faultOf(tables), "It is no dive store: it has no table \"tissue\".");
    QCOMPARE(faultOf(storeOf({textField("Name")}, {{"one"}})),
             "It is no dive store: its table \"main\" has no field \"DiveID\".");
}

void TestJetConvert::rowsThatAreMissingOrTooManyAreNamed() {
    for (const int off : {-1, 1}) {
        const Place place;
        MadeJet jet(madeStore(3));
        jet.changedHead().tables[1].rows += static_cast<std::uint64_t>(off);
        try {
            store::convertjet(jet, place.path());
            QFAIL("was taken");
        } catch (const platform::StoreError& error) {
            QCOMPARE(error.text(),
                     QStringLiteral("The table \"gas\" has %1 rows by its own count, and 6 were found.")
                         .arg(6 + off));
        }
        QCOMPARE(place.names(), QStringList());
    }
    QCOMPARE(faultOf(storeOf({textField("DiveID"), textField("site")}, {{"D0000001"}})),
             "A row of its table \"main\" is not as wide as the table.");
}

void TestJetConvert::aDateThatThereIsNotIsNamed() {
    QCOMPARE(faultOf(storeOf({textField("DiveID"), {"startdate", Kind::Date, 0}},
                             {{"D0000001", travelling(1e9)}})),
             "The field \"startdate\" of its table \"main\" holds a date that there is not.");
}

void TestJetConvert::twoFieldsOfOneNameAreAFault() {
    QCOMPARE(faultOf(storeOf({textField("DiveID"), textField("a"), textField("A")}, {})),
             "Two fields of its table \"main\" have the name \"A\".");
}

void TestJetConvert::aFaultBehindTheLastRowTakesNothing() {
    const Place place;
    MadeJet jet(madeStore(2));
    jet.atEnd = [] { throw platform::StoreError(QStringLiteral("It ended too early.")); };
    QVERIFY_EXCEPTION_THROWN(store::convertjet(jet, place.path()), platform::StoreError);
    QCOMPARE(place.names(), QStringList());
}

void TestJetConvert::aFileThatIsThereIsNeverTouched() {
    const Place place;
    QVERIFY(platform::writeFileWhole(place.path(), "the diver's"));
    MadeJet jet(madeStore(2));
    QVERIFY_EXCEPTION_THROWN(store::convertjet(jet, place.path()), platform::StoreError);
    QCOMPARE(platform::readFile(place.path()), "the diver's");
}

void TestJetConvert::theProgressMovesToItsEnd() {
    const Place place;
    MadeJet jet(madeStore(400));
    jet.beforeRow = [](int row) { row % 10 == 0 ? QTest::qSleep(1) : void(); };
    std::vector<std::uint64_t> told;
    store::convertjet(jet, place.path(), [&](std::uint64_t rows, std::uint64_t of) {
        told.push_back(rows);
        return of == 400U * 6 + 3;
    });
    QVERIFY(std::is_sorted(told.begin(), told.end()));
    QVERIFY(told.size() >= 5 && told.front() < 1200 && told.back() > told.front() + 500);
}

void TestJetConvert::aStopTakesNothing() {
    const Place place;
    MadeJet jet(madeStore(400));
    std::uint64_t last = 0;
    std::uint64_t all = 0;
    jet.beforeRow = [](int) { QTest::qSleep(1); }; // the questions come by the clock
    const auto stopping = [&](std::uint64_t rows, std::uint64_t of) {
        last = rows;
        all = of;
        return rows < 300;
    };
    QVERIFY_EXCEPTION_THROWN(store::convertjet(jet, place.path(), stopping), store::JetStopped);
    QCOMPARE(place.names(), QStringList());
    QVERIFY(last >= 300 && last < 2000);
    QCOMPARE(all, 400U * 6 + 3);
}

void TestJetConvert::aDiskThatFailsAtAnyStepTakesNothing() {
    bool reached = true;
    int step = 1;
    for (; reached; ++step) {
        const Place place;
        int count = 0;
        bool taken = false;
        {
            const platform::FaultInjection fault([&](std::string_view) { return ++count == step ? EIO : 0; });
            try {
                place.take(madeStore(2));
                taken = true;
            } catch (const platform::StoreError& error) {
                QVERIFY2(error.text().contains(QLatin1String("new.mdb")), qPrintable(error.text()));
            }
        }
        reached = count >= step;
        QCOMPARE(taken, !reached);
        QCOMPARE(place.names().size(), taken ? 1 : 0);
    }
    QVERIFY(step > 12);
}

void TestJetConvert::aDiskThatIsFullTakesNothing() {
    const Place place;
    MadeJet jet(madeStore(500));
    {
        const SmallDisk disk(100000);
        QVERIFY_EXCEPTION_THROWN(store::convertjet(jet, place.path()), platform::StoreError);
    }
    QCOMPARE(place.names(), QStringList());
}

void TestJetConvert::theHeadTellsAJetFile() {
    const Place place;
    const auto is = [&](const QByteArray& bytes) {
        return platform::writeFileWhole(place.path(), bytes).ok() && store::isjetfile(place.path());
    };
    const QByteArray four("\0\1\0\0", 4);
    QVERIFY(is(four + "Standard Jet DB"));
    QVERIFY(is(four + "Standard ACE DB" + QByteArray(5000, 'x')));
    QVERIFY(!is("Standard Jet DB"));
    QVERIFY(!is(four + "Standard jet DB"));
    QVERIFY(!is(four + "Standard Jet D"));
    QVERIFY(!is(""));
    QVERIFY(!is("SQLite format 3"));
    QVERIFY(!store::isjetfile(place.path() + QStringLiteral(".none")));
    QVERIFY(!store::isjetfile(QFileInfo(place.path()).absolutePath()));
}

QTEST_GUILESS_MAIN(TestJetConvert)
#include "test_jetconvert.moc"
