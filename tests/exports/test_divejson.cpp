#include "exports/divejson.h"
#include "exports/numbertext.h"
#include "exports/samplecolumns.h"
#include "profile/decoder.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QRandomGenerator>
#include <QtTest>

#include <bit>
#include <limits>

using namespace benthor;
using namespace benthor::exports;

namespace {

WholeDive diveOf(std::initializer_list<const char*> records, std::optional<double> interval = 10) {
    WholeDive dive;
    QByteArray text = "Profile\r\n\r\n";
    for (const char* record : records) {
        text += QByteArray(",") + record + "\r\n";
    }
    dive.file = text + "End\r\n";
    dive.profile = profile::decodeProfile(*dive.file, false);
    dive.figures.id = QStringLiteral("D0000001");
    dive.figures.interval = interval;
    return dive;
}

QJsonObject samplesOf(const WholeDive& dive) {
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(samplesJson(dive), &error);
    if (error.error != QJsonParseError::NoError) {
        qWarning("%s at %d", qPrintable(error.errorString()), error.offset);
    }
    return document.object();
}

int placeOf(const QJsonObject& samples, const QString& name) {
    const QJsonArray columns = samples["columns"].toArray();
    for (int i = 0; i < columns.size(); ++i) {
        if (columns[i].toObject()["name"] == name) {
            return i;
        }
    }
    return -1;
}

} // namespace

class TestDiveJson : public QObject {
    Q_OBJECT

private slots:
    void numbersAreShortAndReadBack_data();
    void numbersAreShortAndReadBack();
    void everyKindOfFloatReadsBack();
    void doublesReadBack();
    void theFiguresOfADive();
    void whatIsNotThereIsNull();
    void allOfTheStoreIsShown();
    void samplesStandUnderTheirColumns();
    void aTimeIsTheScreens();
    void noTimeWithoutANumericInterval();
    void aTimeBeyondAllNumbersIsNone();
    void arraysReadBackToTheLastBit();
    void tokensOfAlarmsAreListed();
    void aDiveWithoutSamplesHasNoRows();
    void hostileTextsStayWellFormed_data();
    void hostileTextsStayWellFormed();
};

void TestDiveJson::numbersAreShortAndReadBack_data() {
    QTest::addColumn<float>("value");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("none") << 0.0F << QByteArray("0");
    QTest::newRow("negative none") << -0.0F << QByteArray("0");
    QTest::newRow("whole") << 12.0F << QByteArray("12");
    QTest::newRow("one digit") << 0.7F << QByteArray("0.7");
    QTest::newRow("hundredths") << 1.05F << QByteArray("1.05");
    QTest::newRow("below zero") << -0.25F << QByteArray("-0.25");
    QTest::newRow("the last short one") << 9999.99F << QByteArray("9999.99");
    QTest::newRow("thousandths") << 21.285F << QByteArray("21.285");
    QTest::newRow("no exponent") << 100000.0F << QByteArray("100000");
    QTest::newRow("2 to the 24th") << 16777216.0F << QByteArray("16777216");
    QTest::newRow("large") << 1e20F << QByteArray("100000002004087734272");
    QTest::newRow("small") << 1e-7F << QByteArray("0.0000001");
    QTest::newRow("below a hundredth") << 0.001F << QByteArray("0.001");
}

void TestDiveJson::numbersAreShortAndReadBack() {
    QFETCH(float, value);
    QFETCH(QByteArray, text);
    QCOMPARE(numberText(value), text);
    QCOMPARE(text.toFloat(), value);
}

void TestDiveJson::everyKindOfFloatReadsBack() {
    QRandomGenerator random(20080715);
    for (int i = 0; i < 200000; ++i) {
        const auto value = std::bit_cast<float>(random.generate());
        if (!qIsFinite(value)) {
            continue;
        }
        const QByteArray text = numberText(value);
        QVERIFY2(text.size() < kLongestNumber && !text.contains('e'), text);
        QCOMPARE(text.toFloat() + 0.0F, value);
    }
    for (int hundredths = -1000100; hundredths <= 1000100; hundredths += 7) {
        const float value = static_cast<float>(hundredths) / 100.0F;
        const QByteArray text = numberText(value);
        QCOMPARE(text.toFloat(), value);
        QVERIFY2(text.size() <= QByteArray::number(value, 'g', 9).size(), text);
    }
}

void TestDiveJson::doublesReadBack() {
    using Limits = std::numeric_limits<double>;
    for (const double value : {0.0, 0.1, 10.5, -3.0, 1e9, 1e9 + 1, 123456789012.5, Limits::max(),
                               -Limits::max(), Limits::denorm_min(), 1.0 / 3}) {
        const QByteArray text = numberText(value);
        QVERIFY2(text.size() < kLongestNumber && !text.contains('e'), text);
        QCOMPARE(text.toDouble(), value);
    }
    QCOMPARE(numberText(2467.0), QByteArray("2467"));
    QCOMPARE(numberText(-0.0), QByteArray("0"));
}

void TestDiveJson::theFiguresOfADive() {
    DiveFigures figures;
    figures.id = QStringLiteral("D0000012");
    figures.name = QStringLiteral("Dive000012.txt");
    figures.site = QStringLiteral("Blue \"Hole\"");
    figures.serial = QStringLiteral(" KD00123");
    figures.version = QStringLiteral("V3.12");
    figures.start = QDateTime({2008, 7, 15}, {8, 55, 17}, Qt::UTC);
    figures.end = QDateTime({2008, 7, 15}, {9, 36, 24}, Qt::UTC);
    figures.duration = 2467;
    figures.maxdepth = 23.4;
    figures.interval = 10;
    figures.otu = 12;
    figures.faults = QStringList{QStringLiteral("Gas - Error!")};
    QCOMPARE(QJsonDocument(diveObject(figures)).toJson(QJsonDocument::Compact),
             QByteArray(R"({"duration_s":2467,"end":"2008-07-15T09:36:24","faults":["Gas - Error!"],)"
                        R"("id":"D0000012","interval_s":10,"max_depth_m":23.4,"name":"Dive000012.txt",)"
                        R"("otu":12,"serial":" KD00123","site":"Blue \"Hole\"",)"
                        R"("start":"2008-07-15T08:55:17","version":"V3.12"})"));
}

void TestDiveJson::whatIsNotThereIsNull() {
    QJsonObject dive = diveObject(DiveFigures());
    QCOMPARE(dive.take("id"), QJsonValue(QString()));
    QCOMPARE(dive.take("faults"), QJsonValue(QJsonArray()));
    QCOMPARE(dive.size(), 10);
    for (const QJsonValue& value : std::as_const(dive)) {
        QVERIFY(value.isNull());
    }
}

void TestDiveJson::allOfTheStoreIsShown() {
    WholeDive dive = diveOf({});
    dive.store = {{"DiveID", "D0000001"}, {"Suit", std::nullopt}, {"Coments", ""}};
    dive.gases = {{{"Gastype", "0"}, {"GasN2", "79"}}, {{"Gastype", std::nullopt}}};
    dive.tissues = {{{"Tissuetype", "0"}}};
    dive.buddies = QStringList{"Anna", ""};
    const QJsonObject show = showObject(dive);
    QCOMPARE(show["dive"], QJsonValue(diveObject(dive.figures)));
    QCOMPARE(show["store"],
             QJsonValue(QJsonObject{{"DiveID", "D0000001"}, {"Suit", QJsonValue()}, {"Coments", ""}}));
    QCOMPARE(show["gases"], QJsonValue(QJsonArray{QJsonObject{{"Gastype", "0"}, {"GasN2", "79"}},
                                                  QJsonObject{{"Gastype", QJsonValue()}}}));
    QCOMPARE(show["tissues"], QJsonValue(QJsonArray{QJsonObject{{"Tissuetype", "0"}}}));
    QCOMPARE(show["buddies"], QJsonValue(QJsonArray{"Anna", ""}));
    QCOMPARE(show.size(), 5);
}

void TestDiveJson::samplesStandUnderTheirColumns() {
    const QJsonObject samples = samplesOf(diveOf({"100,0,70,M0,T20,A500", "0,1,71,M0,T0,A500"}));
    QCOMPARE(samples["id"], QJsonValue("D0000001"));
    QCOMPARE(samples["interval_s"], QJsonValue(10));
    const QJsonArray columns = samples["columns"].toArray();
    QCOMPARE(columns.size(), 38);
    QCOMPARE(columns[0], QJsonValue(QJsonObject{{"name", "time_s"}, {"unit", "s"}}));
    QCOMPARE(columns[1], QJsonValue(QJsonObject{{"name", "depthpos"}, {"unit", "m"}}));
    QCOMPARE(columns[37], QJsonValue(QJsonObject{{"name", "alarms"}, {"unit", ""}}));
    const QJsonArray rows = samples["rows"].toArray();
    QCOMPARE(rows.size(), 2);
    QCOMPARE(rows[1].toArray().size(), 38);
    QCOMPARE(rows[0].toArray()[placeOf(samples, "depthpos")].toDouble(), 9.38);
    QCOMPARE(rows[1].toArray()[placeOf(samples, "depthpos")], QJsonValue(0));
    QCOMPARE(rows[1].toArray()[placeOf(samples, "gasnum")], QJsonValue(1));
    QCOMPARE(rows[0].toArray()[placeOf(samples, "po2")].toDouble(), 0.7);
    QCOMPARE(rows[0].toArray()[placeOf(samples, "temp")], QJsonValue(20));
    QCOMPARE(rows[1].toArray()[placeOf(samples, "temp")], QJsonValue(0)); // recorded, and gave none
    QCOMPARE(rows[0].toArray()[placeOf(samples, "cella")], QJsonValue()); // recorded nowhere
}

void TestDiveJson::aTimeIsTheScreens() {
    const QJsonArray rows =
        samplesOf(diveOf({"1,0,70,M0,T20,A500", "1,0,70,M0,T20,A500"}, 10.5))["rows"].toArray();
    QCOMPARE(rows[0].toArray()[0], QJsonValue(42));
    QCOMPARE(rows[1].toArray()[0], QJsonValue(52.5));
}

void TestDiveJson::noTimeWithoutANumericInterval() {
    const QJsonObject samples = samplesOf(diveOf({"1,0,70,M0,T20,A500"}, std::nullopt));
    QVERIFY(samples["interval_s"].isNull());
    QVERIFY(samples["rows"].toArray()[0].toArray()[0].isNull());
}

void TestDiveJson::aTimeBeyondAllNumbersIsNone() {
    const QJsonObject samples = samplesOf(diveOf({"1,0,70,M0,T20,A500"}, 1e308));
    QCOMPARE(samples["interval_s"], QJsonValue(1e308));
    QVERIFY(samples["rows"].toArray()[0].toArray()[0].isNull());
}

void TestDiveJson::arraysReadBackToTheLastBit() {
    WholeDive dive = diveOf({"1,0,70,M0,T20,A500"});
    constexpr int kSamples = 500;
    dive.profile.lastsample = profile::kFirstSample + kSamples;
    QRandomGenerator random(4);
    for (const SampleColumn& column : sampleColumns()) {
        for (int i = 0; i < kSamples; ++i) {
            const auto value = std::bit_cast<float>(random.generate());
            (dive.profile.*column.array).set(profile::kFirstSample - 1 + i, qIsFinite(value) ? value : 1.1F);
        }
    }
    const QJsonArray rows = samplesOf(dive)["rows"].toArray();
    QCOMPARE(rows.size(), kSamples);
    for (int i = 0; i < kSamples; ++i) {
        for (size_t c = 0; c < sampleColumns().size(); ++c) {
            const float wanted = (dive.profile.*sampleColumns()[c].array)[profile::kFirstSample - 1 + i];
            const auto read = static_cast<float>(rows[i].toArray()[static_cast<int>(c) + 1].toDouble());
            QCOMPARE(std::bit_cast<quint32>(read), std::bit_cast<quint32>(wanted));
        }
    }
}

void TestDiveJson::tokensOfAlarmsAreListed() {
    WholeDive dive = diveOf({"1,0,70,M0,T20,A500", "1,0,70,M0,T20,A500"});
    dive.profile.alarms.add(4, "LOW PO2");
    dive.profile.alarms.add(4, "B\xE4\"\x01");
    const QJsonArray rows = samplesOf(dive)["rows"].toArray();
    QCOMPARE(rows[0].toArray()[37], QJsonValue(QJsonArray{"LOW PO2", QStringLiteral("Bä\"\u0001")}));
    QCOMPARE(rows[1].toArray()[37], QJsonValue(QJsonArray()));
}

void TestDiveJson::aDiveWithoutSamplesHasNoRows() {
    const QJsonObject samples = samplesOf(WholeDive());
    QCOMPARE(samples["rows"], QJsonValue(QJsonArray()));
    QCOMPARE(samples["columns"].toArray().size(), 38);
}

void TestDiveJson::hostileTextsStayWellFormed_data() {
    QTest::addColumn<QString>("text");
    QTest::newRow("quotes") << QStringLiteral("\"},{\"a\":[\\");
    QTest::newRow("line ends") << QStringLiteral("a\r\nb\u2028c");
    QTest::newRow("control characters")
        << QString(u'\0') + QChar(1) + QChar(0x1f) + QChar(0x7f) + QChar(0x85);
    QTest::newRow("lone high surrogate") << QString(QChar(0xd83d)) + u'x';
    QTest::newRow("lone low surrogate") << u'x' + QString(QChar(0xdc00));
    QTest::newRow("a pair") << QStringLiteral("\U0001F420");
    QTest::newRow("no character") << QString(QChar(0xffff));
}

void TestDiveJson::hostileTextsStayWellFormed() {
    QFETCH(QString, text);
    const QByteArray json = jsonText(text);
    QVERIFY(json.startsWith('"') && json.endsWith('"'));
    QVERIFY(QString::fromUtf8(json).toUtf8() == json && !QString::fromUtf8(json).contains(QChar(0xfffd)));
    QCOMPARE(QJsonDocument::fromJson('[' + json + ']').array()[0].toString(), text);
    WholeDive dive = diveOf({"1,0,70,M0,T20,A500"});
    dive.figures.id = text;
    QCOMPARE(samplesOf(dive)["id"], QJsonValue(text));
}

QTEST_GUILESS_MAIN(TestDiveJson)
#include "test_divejson.moc"
