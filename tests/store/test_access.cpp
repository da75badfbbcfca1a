#include "platform/faultpoint.h"
#include "store/access.h"
#include "store/divetime.h"
#include "store/identifiers.h"
#include "store/units.h"
#include "tests/support/programfixture.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace benthor;
using platform::StoreError;

namespace {

QJsonObject vectorRules() {
    QFile file(QStringLiteral(BENTHOR_TEST_DATA "/dives/expected.json"));
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("the vectors cannot be read");
    }
    return QJsonDocument::fromJson(file.readAll()).object().value(QStringLiteral("rules")).toObject();
}

} // namespace

class TestAccess : public QObject {
    Q_OBJECT

private slots:
    void init() {
        program_ = std::make_unique<tests::ProgramFixture>();
        process().database.execute("INSERT INTO main (DiveID) VALUES ('D0000001'), ('D0000002')");
        process().currentdiveid = QStringLiteral("D0000002");
    }
    void cleanup() { program_.reset(); }

    void eachRoutineWritesItsFieldOfTheDiveInHand_data();
    void eachRoutineWritesItsFieldOfTheDiveInHand();
    void valuesAreTrimmedWhereTold();
    void depthsArePaddedAsTheVectorsSay();
    void durationsAreAsTheVectorsSay();
    void aDurationUnderAMinuteHasNoMinutes();
    void startDatesAreAsTheVectorsSay();
    void aDateBeyondTheYear9999IsLeftNullAndItsCodeKept();
    void theCylinderKeepsFourCharactersFromTheSecondOn();
    void theStatusIsDropped();
    void fileNamesAreWrittenTogether();
    void aRefusedSerialIsToldAndWritesNothing();
    void aRowThatIsNotThereIsAnError();
    void gasAndTissueRowsAreAddedBehindTheOthers();
    void aNameWithASingleQuoteIsStoredAsItIs();
    void anIdentifierWithASingleQuoteFailsWhereItIsUsed();
    void checkpfexistCountsRowsByName();
    void theSharedHandlesHoldWhatRanLast();
    void settingsAreReadAndWrittenBesideTheSharedRows();

    void nextIdentifiersAreAsTheVectorsSay();
    void anEmptyStoreGivesTheFirstDive();
    void aNewDiveHasItsVersionAndSystem();
    void beyondTheLastIdentifierThereIsNoPrefix();
    void deletingTheHighestDiveFreesItsIdentifier();
    void deletingADiveInTheMiddleLeavesAGap();
    void synchronisingAnEmptyStoreStartsAtZero();
    void aBareDiveHasNeitherVersionNorSystem();
    void aBareDiveNeedsACounter();
    void aDiveThatCannotBeAddedTakesNoIdentifier();
    void whatADeletedDiveLeftIsNotTheNextOnesOfItsNumber_data();
    void whatADeletedDiveLeftIsNotTheNextOnesOfItsNumber();
    void rowsOfADiveThatStandsAreNotTakenForLeftovers();
    void aDiveThatIsNotStoredLeavesTheLeftovers();
    void aStoreWithoutBuddiesTakesNewDives();

private:
    static QStringList main(const char* fields) {
        return tests::ProgramFixture::rows(
            (std::string("SELECT ") + fields + " FROM main ORDER BY DiveID").c_str());
    }
    static QString serial() {
        return tests::ProgramFixture::rows("SELECT serial_no FROM serialno").join(QLatin1Char(' '));
    }

    std::unique_ptr<tests::ProgramFixture> program_;
};

using PutRoutine = void (*)(const QString&);
Q_DECLARE_METATYPE(PutRoutine)

void TestAccess::eachRoutineWritesItsFieldOfTheDiveInHand_data() {
    QTest::addColumn<PutRoutine>("put");
    QTest::addColumn<QByteArray>("field");
    const auto add = [](const char* field, PutRoutine put) {
        QTest::newRow(field) << put << QByteArray(field);
    };
    add("Interval", store::putinterval);
    add("Version", store::putversion);
    add("UserName", store::putusername);
    add("MaxDepth", store::putmaxdepth);
    add("otu", store::putotu);
    add("systemid", store::putsystemid);
    add("descend", store::putdescend);
    add("datmos", store::putdatmos);
    add("dusage", store::putdusage);
    add("dstack", store::putdstack);
    add("Location", store::putlocation);
    add("Startcode", store::putstart);
    add("Suit", [](const QString& text) { QVERIFY(store::putsuit(text)); });
}

void TestAccess::eachRoutineWritesItsFieldOfTheDiveInHand() {
    QFETCH(PutRoutine, put);
    QFETCH(QByteArray, field);
    put(QStringLiteral("123"));
    QCOMPARE(main(field.constData()), QStringList({"(null)", "123"}));
}

void TestAccess::valuesAreTrimmedWhereTold() {
    store::putotu(QStringLiteral(" 12 "));
    store::putdescend(QStringLiteral(" 3 "));
    store::putdatmos(QStringLiteral(" 1013 "));
    store::putdusage(QStringLiteral(" 54 "));
    store::putdstack(QStringLiteral(" 36 "));
    store::putmaxdepth(QStringLiteral(" 23.4 "));
    QCOMPARE(main("otu, descend, datmos, dusage, dstack, maxdepth").last(), "12|3|1013|54|36|23.400");
    store::putusername(QStringLiteral(" KD "));
    QVERIFY(store::putsuit(QStringLiteral(" KD ")));
    QCOMPARE(main("username, suit").last(), " KD | KD ");
}

void TestAccess::depthsArePaddedAsTheVectorsSay() {
    const QJsonObject cases = vectorRules().value(QStringLiteral("depth_padding")).toObject();
    QVERIFY(cases.size() > 10);
    for (auto it = cases.begin(); it != cases.end(); ++it) {
        QCOMPARE(store::padded(it.key()), it.value().toString());
    }
}

void TestAccess::durationsAreAsTheVectorsSay() {
    const QJsonArray cases = vectorRules().value(QStringLiteral("durations")).toArray();
    int compared = 0;
    for (const QJsonValue& value : cases) {
        const QJsonArray row = value.toArray();
        const QString text = store::durationtext(row[0].toString(), row[1].toString());
        if (!row[2].isNull()) {
            QCOMPARE(text, row[2].toString());
            ++compared;
        }
    }
    QVERIFY(compared >= 7);
}

void TestAccess::aDurationUnderAMinuteHasNoMinutes() {
    QCOMPARE(store::durationtext(QStringLiteral("812345678"), QStringLiteral("812345685")), ":7");
    store::putduration(QStringLiteral("812345678"), QStringLiteral("812345685"));
    QCOMPARE(main("duration").last(), ":7");
}

void TestAccess::startDatesAreAsTheVectorsSay() {
    const QJsonObject cases = vectorRules().value(QStringLiteral("start_dates")).toObject();
    QVERIFY(cases.size() > 5);
    for (auto it = cases.begin(); it != cases.end(); ++it) {
        QCOMPARE(store::startcodetodate(it.key()), it.value().toString());
        QCOMPARE(store::finishcodetodate(it.key()), it.value().toString());
    }
    store::putstart(QStringLiteral("812345678"));
    store::putfinish(QStringLiteral("812348145"));
    QCOMPARE(main("startcode, startdate, finisheddate").last(),
             "812345678|2017-09-27 03:34:38|2017-09-27 04:15:45");
}

void TestAccess::aDateBeyondTheYear9999IsLeftNullAndItsCodeKept() {
    QCOMPARE(store::startcodetodate(QStringLiteral("252708163199")), "Dec/31/9999 23:59:59");
    QCOMPARE(store::startcodetodate(QStringLiteral("252708163200")), QString());
    store::putstart(QStringLiteral("999999999999"));
    store::putfinish(QStringLiteral("999999999999"));
    QCOMPARE(main("startcode, startdate, finisheddate").last(), "999999999999|(null)|(null)");
}

void TestAccess::theCylinderKeepsFourCharactersFromTheSecondOn() {
    store::puthpcylinder(QStringLiteral(" 200 bar"));
    QCOMPARE(main("hpcylinder").last(), "200 ");
    store::puthpcylinder(QStringLiteral(" 18"));
    QCOMPARE(main("hpcylinder").last(), "18");
    store::puthpcylinder(QString());
    QCOMPARE(main("hpcylinder").last(), "");
}

void TestAccess::theStatusIsDropped() {
    const QStringList before = main("*");
    store::putstatus(QStringLiteral(" 17 "));
    QCOMPARE(main("*"), before);
    process().currentdiveid = QStringLiteral("D0000003");
    QVERIFY_EXCEPTION_THROWN(store::putstatus(QStringLiteral("17")), StoreError);
}

void TestAccess::fileNamesAreWrittenTogether() {
    store::putfilenames(QStringLiteral("11A2B3Ca.txt"), QStringLiteral("a.txt"));
    QCOMPARE(main("dbtxtname, location").last(), "11A2B3Ca.txt|a.txt");
}

void TestAccess::aRefusedSerialIsToldAndWritesNothing() {
    const QString garbage(51, QLatin1Char('x'));
    QVERIFY(!store::putsuit(garbage));
    QCOMPARE(main("suit").last(), "(null)");
    QVERIFY(store::putsuit(QString(50, QLatin1Char('x'))));
    store::putusername(garbage);
    QCOMPARE(main("username").last(), garbage);
    process().currentdiveid = QStringLiteral("D0000003");
    QVERIFY_EXCEPTION_THROWN(store::putsuit(QStringLiteral("KD")), StoreError);
}

void TestAccess::aRowThatIsNotThereIsAnError() {
    process().currentdiveid = QStringLiteral("D0000003");
    QVERIFY_EXCEPTION_THROWN(store::putinterval(QStringLiteral("10")), StoreError);
    process().currentdiveid.clear();
    QVERIFY_EXCEPTION_THROWN(store::putinterval(QStringLiteral("10")), StoreError);
    process().database.close();
    QVERIFY_EXCEPTION_THROWN(store::putinterval(QStringLiteral("10")), StoreError);
}

void TestAccess::gasAndTissueRowsAreAddedBehindTheOthers() {
    store::addgasrow({"0000", "79", "0", "660", "1\r"});
    store::addgasrow({"0001", "68", "", "465", "0\r"});
    store::addtissuerow({"0000", "79", "0\r"});
    QCOMPARE(program_->rows("SELECT * FROM GAS"),
             QStringList({"D0000002|0000|79|0|660|1\r", "D0000002|0001|68||465|0\r"}));
    QCOMPARE(program_->rows("SELECT * FROM tissue"), QStringList("D0000002|0000|79|0\r"));
}

void TestAccess::aNameWithASingleQuoteIsStoredAsItIs() {
    store::putlocation(QStringLiteral("Devil's reef.txt"));
    QCOMPARE(main("location").last(), "Devil's reef.txt");
}

void TestAccess::anIdentifierWithASingleQuoteFailsWhereItIsUsed() {
    process().currentdiveid = QStringLiteral("D000000' OR '1' = '1");
    QVERIFY_EXCEPTION_THROWN(store::putinterval(QStringLiteral("10")), StoreError);
    QCOMPARE(main("interval"), QStringList({"(null)", "(null)"}));
    QVERIFY_EXCEPTION_THROWN(store::checkpfexist(QStringLiteral("it's")), StoreError);
}

void TestAccess::checkpfexistCountsRowsByName() {
    QVERIFY(!store::checkpfexist(QStringLiteral("reef")));
    process().database.execute("INSERT INTO pfindex VALUES ('Reef')");
    QVERIFY(store::checkpfexist(QStringLiteral("reef")));
    QVERIFY(store::checkpfexist(QStringLiteral("  reef ")));
    QVERIFY(!store::checkpfexist(QStringLiteral("ree")));
}

void TestAccess::theSharedHandlesHoldWhatRanLast() {
    store::putinterval(QStringLiteral("10"));
    QCOMPARE(process().mainrecordset.value(u"DiveID").text(), "D0000002");
    QCOMPARE(process().querytext, "SELECT * FROM main WHERE DiveID = 'D0000002'");
    QCOMPARE(store::countrows(process().database, "SELECT COUNT(*) FROM main"), 2);
    QCOMPARE(process().countrecordset.value(0).text(), "2");
    QCOMPARE(process().mainrecordset.value(u"Interval").text(), "10");
    store::openmain(process().database, "SELECT * FROM GAS");
    QVERIFY(process().mainrecordset.eof());
    QCOMPARE(process().mainrecordset.fieldName(5), "Gasstat");
}

void TestAccess::settingsAreReadAndWrittenBesideTheSharedRows() {
    store::openmain(process().database, "SELECT * FROM GAS");
    store::writeunit(QStringLiteral("Feet"));
    QCOMPARE(store::readunit(), "Feet");
    store::writegetstarted(QStringLiteral("Open"));
    QCOMPARE(process().mainrecordset.fieldName(5), "Gasstat");
    process().database.execute("DELETE FROM Display");
    QVERIFY_EXCEPTION_THROWN(store::readunit(), StoreError);
    QVERIFY_EXCEPTION_THROWN(store::writeunit(QStringLiteral("metre")), StoreError);
    QCOMPARE(process().mainrecordset.fieldName(5), "Gasstat");
}

void TestAccess::nextIdentifiersAreAsTheVectorsSay() {
    const QJsonArray cases = vectorRules().value(QStringLiteral("next_identifier")).toArray();
    QVERIFY(cases.size() > 7);
    for (const QJsonValue& value : cases) {
        const QJsonArray row = value.toArray();
        QCOMPARE(
            store::nextidentifier(row[0].isNull() ? platform::Value() : platform::Value(row[0].toString())),
            row[1].toString());
    }
}

void TestAccess::anEmptyStoreGivesTheFirstDive() {
    process().database.execute("DELETE FROM main");
    store::newdive(QStringLiteral("V3.12"));
    QCOMPARE(process().currentdiveid, "D0000001");
    QCOMPARE(serial(), "D0000001");
}

void TestAccess::aNewDiveHasItsVersionAndSystem() {
    store::syncserialno();
    store::newdive(QStringLiteral(" V3.12 "));
    QCOMPARE(process().currentdiveid, "D0000003");
    QCOMPARE(main("DiveID, Version, systemid, Interval").last(), "D0000003|V3.12|KD3|(null)");
}

void TestAccess::beyondTheLastIdentifierThereIsNoPrefix() {
    QCOMPARE(store::nextidentifier(QStringLiteral("D9999999")), "10000000");
}

void TestAccess::deletingTheHighestDiveFreesItsIdentifier() {
    store::syncserialno();
    QCOMPARE(serial(), "D0000002");
    process().database.execute("DELETE FROM main WHERE DiveID = 'D0000002'");
    store::syncserialno();
    store::newdive(QStringLiteral("V3.12"));
    QCOMPARE(process().currentdiveid, "D0000002");
}

void TestAccess::deletingADiveInTheMiddleLeavesAGap() {
    process().database.execute("DELETE FROM main WHERE DiveID = 'D0000001'");
    store::syncserialno();
    store::newdive(QStringLiteral("V3.12"));
    QCOMPARE(main("DiveID"), QStringList({"D0000002", "D0000003"}));
}

void TestAccess::synchronisingAnEmptyStoreStartsAtZero() {
    process().database.execute("DELETE FROM main");
    store::syncserialno();
    QCOMPARE(serial(), "D0000000");
}

void TestAccess::aBareDiveHasNeitherVersionNorSystem() {
    store::syncserialno();
    store::newdivebare();
    QCOMPARE(process().currentdiveid, "D0000003");
    QCOMPARE(main("DiveID, Version, systemid").last(), "D0000003|(null)|(null)");
}

void TestAccess::aBareDiveNeedsACounter() {
    QVERIFY_EXCEPTION_THROWN(store::newdivebare(), StoreError);
    QCOMPARE(main("DiveID").size(), 2);
}

void TestAccess::aDiveThatCannotBeAddedTakesNoIdentifier() {
    store::syncserialno();
    process().database.execute("ALTER TABLE main ADD COLUMN last TEXT CHECK (DiveID <= 'D0000002')");
    QVERIFY_EXCEPTION_THROWN(store::newdive(QStringLiteral("V3.12")), StoreError);
    QCOMPARE(serial(), "D0000002");
}

void TestAccess::whatADeletedDiveLeftIsNotTheNextOnesOfItsNumber_data() {
    QTest::addColumn<bool>("bare");
    QTest::newRow("a device's dive") << false;
    QTest::newRow("a bare dive") << true;
}

void TestAccess::whatADeletedDiveLeftIsNotTheNextOnesOfItsNumber() {
    QFETCH(bool, bare);
    store::syncserialno();
    for (const char* const table : {"buddylist", "gas", "tissue"}) {
        for (const char* const id : {"D0000002", "D0000003", "d0000003", "D0000004"}) {
            const std::string insert =
                std::string("INSERT INTO ") + table + " (diveid) VALUES ('" + id + "')";
            process().database.execute(insert.c_str());
        }
    }
    if (bare) {
        store::newdivebare();
    } else {
        store::newdive(QStringLiteral("V3.12"));
    }
    QCOMPARE(process().currentdiveid, "D0000003");
    for (const char* const table : {"buddylist", "gas", "tissue"}) {
        const std::string select = std::string("SELECT diveid FROM ") + table + " ORDER BY diveid";
        QCOMPARE(tests::ProgramFixture::rows(select.c_str()), QStringList({"D0000002", "D0000004"}));
    }
}

/// A counter that another program left behind gives a number that is in use.
void TestAccess::rowsOfADiveThatStandsAreNotTakenForLeftovers() {
    process().database.execute("UPDATE serialno SET serial_no = 'D0000001'");
    process().database.execute("INSERT INTO gas (diveid, Gastype) VALUES ('D0000002', '0000')");
    process().database.execute("INSERT INTO buddylist (diveid, buddylist) VALUES ('D0000002', 'Ann')");
    store::newdive(QStringLiteral("V3.12"));
    QCOMPARE(process().currentdiveid, "D0000002");
    QCOMPARE(tests::ProgramFixture::rows("SELECT Gastype FROM gas"), QStringList("0000"));
    QCOMPARE(tests::ProgramFixture::rows("SELECT buddylist FROM buddylist"), QStringList("Ann"));
}

void TestAccess::aDiveThatIsNotStoredLeavesTheLeftovers() {
    store::syncserialno();
    process().database.execute("INSERT INTO buddylist (diveid, buddylist) VALUES ('D0000003', 'Ann')");
    {
        const platform::FaultInjection fault(
            [](std::string_view step) { return step == "commit" ? EIO : 0; });
        QVERIFY_EXCEPTION_THROWN(store::newdive(QStringLiteral("V3.12")), StoreError);
    }
    QCOMPARE(tests::ProgramFixture::rows("SELECT buddylist FROM buddylist"), QStringList("Ann"));
}

void TestAccess::aStoreWithoutBuddiesTakesNewDives() {
    store::syncserialno();
    process().database.execute("DROP TABLE buddylist");
    store::newdive(QStringLiteral("V3.12"));
    QCOMPARE(process().currentdiveid, "D0000003");
}

QTEST_GUILESS_MAIN(TestAccess)
#include "test_access.moc"
