#include "divefiles/validators.h"
#include "tests/support/programfixture.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace benthor;

namespace {

QJsonArray rowChecks() {
    QFile file(QStringLiteral(BENTHOR_TEST_DATA "/dives/expected.json"));
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("the vectors cannot be read");
    }
    return QJsonDocument::fromJson(file.readAll()).object().value(QStringLiteral("row_checks")).toArray();
}

platform::Value fieldValue(const QJsonValue& value) {
    if (value.isNull()) {
        return {};
    }
    if (value.toString() == QLatin1String("(a date)")) {
        return QDateTime(QDate(2017, 9, 27), QTime(3, 34, 38), Qt::UTC);
    }
    return value.toString();
}

void addRows(const char* table, const QJsonArray& rows) {
    platform::Recordset added = process().database.openForAdding(table);
    for (const QJsonValue& value : rows) {
        added.addNew();
        if (value.isObject()) {
            const QJsonObject fields = value.toObject();
            for (auto it = fields.begin(); it != fields.end(); ++it) {
                added.set(it.key(), fieldValue(it.value()));
            }
        } else {
            for (int i = 0; i < value.toArray().size(); ++i) {
                added.set(i, fieldValue(value.toArray().at(i)));
            }
        }
        added.update();
    }
}

QStringList messagesOf(const char* table, QStringList (*faults)(platform::Recordset&)) {
    platform::Recordset rows =
        process().database.openRecordset((std::string("SELECT * FROM ") + table).c_str());
    return faults(rows);
}

/// What a validator says of the only row of a table, one field of it set.
QStringList withField(const char* table, const char* row, const char* field, const platform::Value& value,
                      QStringList (*faults)(platform::Recordset&)) {
    const tests::ProgramFixture program;
    process().database.execute(row);
    platform::Recordset changed =
        process().database.openRecordset((std::string("SELECT * FROM ") + table).c_str());
    changed.edit();
    changed.set(QString::fromLatin1(field), value);
    changed.update();
    return messagesOf(table, faults);
}

QStringList mainWith(const char* field, const platform::Value& value) {
    return withField("main",
                     "INSERT INTO main (DiveID, startdate, finisheddate, MaxDepth, Version, Interval) VALUES "
                     "('D0000001', '2017-09-27 03:34:38', '2017-09-27 04:15:45', '23.400', 'V3.12', '10')",
                     field, value, divefiles::mainfaults);
}

QStringList gasWith(const char* field, const platform::Value& value) {
    return withField("gas", "INSERT INTO gas VALUES ('D0000001', '0000', '79', '0', '660', '1' || char(13))",
                     field, value, divefiles::gasfaults);
}

QStringList tissueWith(const char* field, const platform::Value& value) {
    return withField("tissue", "INSERT INTO tissue VALUES ('D0000001', '0000', '79', '0' || char(13))", field,
                     value, divefiles::tissuefaults);
}

QStringList only(const char* message) {
    return {QString::fromLatin1(message)};
}

} // namespace

class TestValidators : public QObject {
    Q_OBJECT

private slots:
    void rowsHaveTheFaultsThatTheVectorsSay_data();
    void rowsHaveTheFaultsThatTheVectorsSay();

    void mainFieldsAreTested_data();
    void mainFieldsAreTested();
    void gasFieldsAreTested_data();
    void gasFieldsAreTested();
    void tissueFieldsAreTested_data();
    void tissueFieldsAreTested();

    void aGoodDiveLeavesTheProblemTextEmpty();
    void aDiveWithNoGasLinesIsAFault();
    void aDiveWithNoTissueLinesIsAFault();
    void aVersionNullPasses();
    void anIntervalOf10Point5IsTooLongAnd1Point5Passes();
    void theProblemTextGrowsUntilTheCallerEmptiesIt();
    void eachMessageGoesInBehindACr();
    void theFirstFaultOfARowEndsItsChecks();
    void withoutACurrentDiveTheFirstDiveOfTheSystemIsChecked();
    void withoutAnyDiveOfTheSystemNothingIsFound();
    void theSharedRecordsetHoldsTheTissueRowsBehindAllThree();
    void anotherStoreCanBeLookedAt();
    void lengthsCountCharactersNotBytes();
    void aDiveOpensWhenOnlyGasOrTissueAreAtFault();
};

void TestValidators::rowsHaveTheFaultsThatTheVectorsSay_data() {
    QTest::addColumn<QJsonObject>("check");
    const QJsonArray checks = rowChecks();
    QVERIFY(checks.size() > 40);
    for (const QJsonValue& check : checks) {
        QTest::newRow(qPrintable(check[QStringLiteral("about")].toString())) << check.toObject();
    }
}

void TestValidators::rowsHaveTheFaultsThatTheVectorsSay() {
    QFETCH(QJsonObject, check);
    const tests::ProgramFixture program;
    addRows("main", check[QStringLiteral("main")].toArray());
    addRows("gas", check[QStringLiteral("gas")].toArray());
    addRows("tissue", check[QStringLiteral("tissue")].toArray());
    const QStringList messages = messagesOf("main", divefiles::mainfaults) +
                                 messagesOf("gas", divefiles::gasfaults) +
                                 messagesOf("tissue", divefiles::tissuefaults);
    QStringList expected;
    for (const QJsonValue& message : check[QStringLiteral("messages")].toArray()) {
        expected += message.toString();
    }
    QCOMPARE(messages, expected);
    QCOMPARE(divefiles::diveopens(messages.join(QLatin1Char('\r'))), check[QStringLiteral("opens")].toBool());
}

static void addCase(const char* field, const char* value, const char* message) {
    QTest::addRow("%s = %s", field, value ? value : "Null")
        << QByteArray(field) << QVariant(value ? QVariant(QString::fromLatin1(value)) : QVariant())
        << QByteArray(message);
}

static platform::Value caseValue(const QVariant& value) {
    return value.isNull() ? platform::Value() : platform::Value(value.toString());
}

static void addColumns() {
    QTest::addColumn<QByteArray>("field");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QByteArray>("message");
}

void TestValidators::mainFieldsAreTested_data() {
    addColumns();
    addCase("DiveID", "D000001", "Main Profile - Error in Main DiveID format !");
    addCase("DiveID", "10000000", "");
    addCase("DiveID", "D00000001", "Main Profile - Error in Main DiveID format !");
    addCase("startdate", nullptr, "Main Profile - Error in Start Date format !");
    addCase("finisheddate", nullptr, "Main Profile - Error in Finished Date format !");
    addCase("MaxDepth", nullptr, "Main Profile - Error in Depth format !");
    addCase("MaxDepth", "123.45678", "Main Profile - Error in Depth format !");
    addCase("MaxDepth", "  1234.567  ", "");
    addCase("MaxDepth", "", "");
    addCase("MaxDepth", "deep", "");
    addCase("Version", "123456789", "Main Profile - Error in version format !");
    addCase("Version", "1", "Main Profile - Error in version format !");
    addCase("Version", "", "Main Profile - Error in version format !");
    addCase("Version", "12", "");
    addCase("Interval", "1000", "Main Profile - Error in interval number!");
    addCase("Interval", "abcd", "Main Profile - Error in interval number!");
    addCase("Interval", "100", "");
    addCase("Interval", "", "Main Profile - Error in interval number format !");
    addCase("Interval", nullptr, "Main Profile - Error in interval number format !");
    addCase("Interval", "1x", "Main Profile - Error in interval number format !");
    addCase("Location", nullptr, "");
}

void TestValidators::mainFieldsAreTested() {
    QFETCH(QByteArray, field);
    QFETCH(QVariant, value);
    QFETCH(QByteArray, message);
    QCOMPARE(mainWith(field.constData(), caseValue(value)),
             message.isEmpty() ? QStringList() : only(message.constData()));
}

void TestValidators::gasFieldsAreTested_data() {
    addColumns();
    addCase("diveid", " ", "Gas Profile - Blank in DiveID !");
    addCase("diveid", "D000001", "Gas Profile - Error in DiveID format !");
    addCase("Gastype", "", "Gas Profile - Blank in Gas Type !");
    addCase("Gastype", "00000", "Gas Profile - Error in Gas Type1 format !");
    addCase("Gastype", "000x", "Gas Profile - Error in Gas Type1 format !");
    addCase("GasN2", "", "Gas Profile - Blank in Gas Type !");
    addCase("GasN2", "1000", "Gas Profile - Error in Gas Type2 format !");
    addCase("GasN2", "x", "Gas Profile - Error in Gas Type2 format !");
    addCase("GasHe", nullptr, "Gas Profile - Blank in Gas Type !");
    addCase("GasHe", "1000", "Gas Profile - Error in Gas Type3 format !");
    addCase("GasHe", "x", "");
    addCase("gasmod", "", "Gas Profile - Blank in Gas Mode !");
    addCase("gasmod", "12345", "Gas Profile - Error in Gas Mode format !");
    addCase("Gasstat", "", "Gas Profile - Blank in Gas Status !");
    addCase("Gasstat", "123\r", "");
    addCase("Gasstat", "1234\r", "Gas Profile - Error in Gas Status format !");
    addCase("Gasstat", "x\r", "Gas Profile - Error in Gas Status format !");
    addCase("Gasstat", "\r", "Gas Profile - Error in Gas Status format !");
}

void TestValidators::gasFieldsAreTested() {
    QFETCH(QByteArray, field);
    QFETCH(QVariant, value);
    QFETCH(QByteArray, message);
    QCOMPARE(gasWith(field.constData(), caseValue(value)),
             message.isEmpty() ? QStringList() : only(message.constData()));
}

void TestValidators::tissueFieldsAreTested_data() {
    addColumns();
    addCase("diveid", "", "Tissue Profile - Blank in Tissue DiveID !");
    addCase("diveid", "D000001", "Tissue Profile - Error in Tissue DiveID format !");
    addCase("Tissuetype", "00", "Tissue Profile - Error in Tissue Type1 format !");
    addCase("Tissuetype", "", "Tissue Profile - Error in Tissue Type1 format !");
    addCase("TissueN2", "1000", "Tissue Profile - Error in Tissue format !");
    addCase("TissueN2", "", "Tissue Profile - Error in Tissue format !");
    addCase("TissueHe", "123\r", "");
    addCase("TissueHe", "1234\r", "Tissue Profile - Error in Tissue format !");
    addCase("TissueHe", nullptr, "Tissue Profile - Error in Tissue format !");
}

void TestValidators::tissueFieldsAreTested() {
    QFETCH(QByteArray, field);
    QFETCH(QVariant, value);
    QFETCH(QByteArray, message);
    QCOMPARE(tissueWith(field.constData(), caseValue(value)),
             message.isEmpty() ? QStringList() : only(message.constData()));
}

namespace {

/// A good dive, and a second one of system "KD3" with nothing in it.
void addDives() {
    process().database.execute(
        "INSERT INTO main (DiveID, systemid, startdate, finisheddate, MaxDepth, Version, Interval) "
        "VALUES ('D0000002', 'Rebrether', '2017-09-27 03:34:38', '2017-09-27 04:15:45', '23.400', "
        "'V3.12', '10'), ('D0000001', 'KD3', NULL, NULL, NULL, NULL, NULL)");
    process().database.execute("INSERT INTO gas VALUES ('D0000002', '0000', '79', '0', '660', '1')");
    process().database.execute("INSERT INTO tissue VALUES ('D0000002', '0000', '79', '0')");
    process().currentdiveid = QStringLiteral("D0000002");
}

const auto kNothingOfTheFirst =
    QStringLiteral("\rMain Profile - Error in Start Date format !\rGas Profile not found !"
                   "\rTissue Profile not found !");

} // namespace

void TestValidators::aGoodDiveLeavesTheProblemTextEmpty() {
    const tests::ProgramFixture program;
    addDives();
    process().problemtext = QStringLiteral("of the dive before");
    divefiles::checkdive(process().database);
    QCOMPARE(process().problemtext, QString());
}

void TestValidators::aDiveWithNoGasLinesIsAFault() {
    const tests::ProgramFixture program;
    addDives();
    process().database.execute("DELETE FROM gas");
    divefiles::checkdive(process().database);
    QCOMPARE(process().problemtext, "\rGas Profile not found !");
}

void TestValidators::aDiveWithNoTissueLinesIsAFault() {
    const tests::ProgramFixture program;
    addDives();
    process().database.execute("DELETE FROM tissue");
    divefiles::checkdive(process().database);
    QCOMPARE(process().problemtext, "\rTissue Profile not found !");
}

void TestValidators::aVersionNullPasses() {
    QCOMPARE(mainWith("Version", QStringLiteral("Null")), QStringList());
}

void TestValidators::anIntervalOf10Point5IsTooLongAnd1Point5Passes() {
    QCOMPARE(mainWith("Interval", QStringLiteral("10.5")), only("Main Profile - Error in interval number!"));
    QCOMPARE(mainWith("Interval", QStringLiteral("1.5")), QStringList());
}

void TestValidators::theProblemTextGrowsUntilTheCallerEmptiesIt() {
    const tests::ProgramFixture program;
    process().currentdiveid = QStringLiteral("D0000009");
    divefiles::checkmain(process().database);
    divefiles::checkmain(process().database);
    QCOMPARE(process().problemtext, "\rMain Profile not found !\rMain Profile not found !");
    divefiles::checkgas(process().database);
    QCOMPARE(process().problemtext,
             "\rMain Profile not found !\rMain Profile not found !\rGas Profile not found !");
}

void TestValidators::eachMessageGoesInBehindACr() {
    const tests::ProgramFixture program;
    process().currentdiveid = QStringLiteral("D0000009");
    divefiles::checkdive(process().database);
    QCOMPARE(process().problemtext,
             "\rMain Profile not found !\rGas Profile not found !\rTissue Profile not found !");
}

void TestValidators::theFirstFaultOfARowEndsItsChecks() {
    const tests::ProgramFixture program;
    process().database.execute(
        "INSERT INTO gas VALUES ('D0000001', '0', 'x', '0', '660', 'x'),"
        "('D0000001', '0000', 'x', '0', '660', 'x'), ('D0000001', '0000', '1', '0', '660', '1')");
    QCOMPARE(messagesOf("gas", divefiles::gasfaults),
             QStringList(
                 {"Gas Profile - Error in Gas Type1 format !", "Gas Profile - Error in Gas Type2 format !"}));
}

void TestValidators::withoutACurrentDiveTheFirstDiveOfTheSystemIsChecked() {
    const tests::ProgramFixture program;
    addDives();
    process().currentdiveid.clear();
    process().divesystem = QStringLiteral("Rebrether");
    divefiles::checkdive(process().database);
    QCOMPARE(process().problemtext, QString());
    process().divesystem = QStringLiteral("KD3");
    divefiles::checkdive(process().database);
    QCOMPARE(process().problemtext, kNothingOfTheFirst);
    QCOMPARE(process().currentdiveid, QString());
}

void TestValidators::withoutAnyDiveOfTheSystemNothingIsFound() {
    const tests::ProgramFixture program;
    process().divesystem = QStringLiteral("Rebrether");
    divefiles::checkdive(process().database);
    QCOMPARE(process().problemtext,
             "\rMain Profile not found !\rGas Profile not found !\rTissue Profile not found !");
}

void TestValidators::theSharedRecordsetHoldsTheTissueRowsBehindAllThree() {
    const tests::ProgramFixture program;
    addDives();
    divefiles::checkdive(process().database);
    QCOMPARE(process().querytext, "SELECT * FROM tissue  where DiveID = 'D0000002'");
    QVERIFY(process().mainrecordset.eof());
    process().mainrecordset.moveFirst();
    QCOMPARE(process().mainrecordset.value(u"TissueN2").text(), "79");
}

void TestValidators::anotherStoreCanBeLookedAt() {
    const tests::ProgramFixture program;
    addDives();
    const QString path = program.folder.path(u"other.mdb");
    store::createStore(path);
    platform::Database other;
    other.open(path);
    divefiles::checkdive(other);
    QVERIFY(process().problemtext.startsWith(QLatin1String("\rMain Profile not found !")));
}

void TestValidators::lengthsCountCharactersNotBytes() {
    QCOMPARE(mainWith("Version", QString::fromLatin1("\xe9\xe9\xe9\xe9\xe9\xe9\xe9\xe9")), QStringList());
    QCOMPARE(mainWith("Version", QString::fromLatin1("\xe9")),
             only("Main Profile - Error in version format !"));
}

void TestValidators::aDiveOpensWhenOnlyGasOrTissueAreAtFault() {
    QVERIFY(divefiles::diveopens(QString()));
    QVERIFY(divefiles::diveopens(u"\rGas Profile not found !"));
    QVERIFY(divefiles::diveopens(u"\rTissue Profile not found !"));
    QVERIFY(!divefiles::diveopens(u"\rMain Profile not found !"));
    QVERIFY(divefiles::diveopens(u"\rMain Profile not found !\rGas Profile not found !"));
}

QTEST_GUILESS_MAIN(TestValidators)
#include "test_validators.moc"
