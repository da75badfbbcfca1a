#include "exports/csvexport.h"
#include "exports/danexport.h"
#include "tests/profile/vectors.h"

#include <QJsonArray>
#include <QtTest>

using namespace benthor::exports;
using namespace benthor::profile;

namespace {

ExportRow rowOf(const QJsonArray& fields) {
    ExportRow row;
    for (const auto& field : fields) {
        row.push_back(field.isNull() ? std::nullopt : std::optional(field.toString()));
    }
    return row;
}

std::vector<ExportRow> rowsOf(const QJsonArray& rows) {
    std::vector<ExportRow> result;
    for (const auto& row : rows) {
        result.push_back(rowOf(row.toArray()));
    }
    return result;
}

QJsonObject vectors() {
    static const QJsonObject all = jsonOfTestData("exports.json");
    return all;
}

const std::vector<ExportRow> kTwoGases{{"D0000001", "0000", "79", "0", "660", "1"},
                                       {"D0000001", "0001", "37", "45", "700", "0"}};
const QString kStart = QStringLiteral("27/Sep/2017 01:02:03");

} // namespace

class TestExports : public QObject {
    Q_OBJECT

private slots:
    void csvAgreesWithTheVectors() {
        QCOMPARE(QString::fromUtf8(csvHeader()), vectors()[QLatin1String("csv_header")].toString());
        const QJsonArray cases = vectors()[QLatin1String("csv")].toArray();
        QVERIFY(!cases.isEmpty());
        for (const auto& entry : cases) {
            const std::vector<ExportRow> rows = rowsOf(entry[QLatin1String("gas_rows")].toArray());
            QCOMPARE(QString::fromUtf8(csvText(rows, false)), entry[QLatin1String("metric")].toString());
            QCOMPARE(QString::fromUtf8(csvText(rows, true)), entry[QLatin1String("feet")].toString());
        }
    }

    void csvOfTwoGasesIsTheFileKept() {
        QCOMPARE(csvText(kTwoGases, false), bytesOfTestData("exports/two-gases.csv"));
        QCOMPARE(csvText(kTwoGases, true), bytesOfTestData("exports/two-gases-feet.csv"));
    }

    void theHeaderHas35HeadingsWhateverTheRowsHold() {
        QCOMPARE(csvHeader().split(',').size(), 35);
        QCOMPARE(csvText({}, false), csvHeader() + "\r\n");
    }

    void theUnitPicksOneOfEachPair() {
        ExportRow row;
        for (int field = 0; field <= 17; ++field) {
            row.push_back(QString::number(field));
        }
        QCOMPARE(csvLine(row, false), QByteArray("0,1,2,4,5,7,9,11,12,13,15,17,"));
        QCOMPARE(csvLine(row, true), QByteArray("0,1,3,4,5,8,10,11,12,14,16,17,"));
    }

    void onlyBlanksAreTrimmedAndNothingIsQuoted() {
        QCOMPARE(csvLine({"  a\t ", "b\r", "c,d", std::nullopt, "\"e\""}, false),
                 QByteArray("a\t,b\r,c,d,\"e\","));
    }

    void danAgreesWithTheVectors() {
        const QJsonArray cases = vectors()[QLatin1String("zxu")].toArray();
        QVERIFY(!cases.isEmpty());
        for (const auto& entry : cases) {
            const DanHead head{entry[QLatin1String("dive_id")].toString(),
                               entry[QLatin1String("interval")].toString(),
                               entry[QLatin1String("start")].toString()};
            QCOMPARE(QString::fromUtf8(danText(head, kTwoGases, kTwoGases)),
                     entry[QLatin1String("text")].toString());
        }
    }

    void danOfADiveOfTheStoreHasFiveLines() {
        const QByteArray text = danText({"D0000001", "10", kStart}, kTwoGases, kTwoGases);
        QCOMPARE(text.count("\r\n"), 5);
        QVERIFY(text.endsWith("ZDP{\r\n"));
        QCOMPARE(text, bytesOfTestData("exports/five-lines.zxu"));
    }

    void danSampleLinesAgreeWithTheVectors() {
        const QJsonArray cases = vectors()[QLatin1String("zxu_sample_lines")].toArray();
        QVERIFY(!cases.isEmpty());
        for (const auto& entry : cases) {
            DanProgress progress{entry[QLatin1String("elapsed_minutes")].toDouble(),
                                 entry[QLatin1String("previous_depth")].toDouble()};
            QByteArray line;
            QVERIFY(danSampleLine(rowOf(entry[QLatin1String("source_fields")].toArray()),
                                  rowsOf(entry[QLatin1String("gas_rows")].toArray()),
                                  QString::number(entry[QLatin1String("interval")].toInt()), progress, line));
            QCOMPARE(QString::fromUtf8(line), entry[QLatin1String("line")].toString());
        }
    }

    void rowsOfEightFieldsAreWrittenToTheClosingSegment() {
        const ExportRow deep{"", "", "200", "", "0", "1.2", "", "7"};
        const ExportRow shallow{"", "", "100", "", "1", "", "", std::nullopt};
        const QByteArray text = danText({"D0000001", "20", kStart}, {deep, shallow}, kTwoGases);
        QVERIFY(
            text.endsWith("ZDP{\r\n|0|20|6.210790|1.2|F|F||7|\r\n|0.3333|10|6.180370||T|F|||\r\nZDP}\r\n"));
    }

    void aGasBehindTheRowsOrOfTenHasNoCode() {
        for (const char* gas : {"2", "10", "-1"}) {
            DanProgress progress;
            QByteArray line;
            QVERIFY(danSampleLine({"", "", "200", "", gas, "1.2", "", ""}, kTwoGases, "10", progress, line));
            QCOMPARE(line, QByteArray("|0|20||1.2|F|F|||"));
        }
    }

    void idAndIntervalAreTakenAsShown() {
        const QByteArray text = danText({"my dive", "7.5", kStart}, {}, {});
        QVERIFY(text.contains("ZDH|1|my dive|I|Q7.5S|20170927010203|\r\n"));
    }

    void aStartThatIsNoDateEndsItWithNothingWritten() {
        QCOMPARE(danText({"D0000001", "10", ""}, kTwoGases, kTwoGases), QByteArray());
        QVERIFY(!dateOfBox("27.09.2017").isValid());
    }
};

QTEST_APPLESS_MAIN(TestExports)
#include "test_exports.moc"
