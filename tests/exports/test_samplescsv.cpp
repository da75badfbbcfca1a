#include "exports/csvlines.h"
#include "exports/samplecolumns.h"
#include "exports/samplescsv.h"
#include "profile/elapsed.h"
#include "profile/gridcells.h"
#include "tests/exports/exportworld.h"

#include <QRandomGenerator>

#include <bit>

using namespace benthor;
using namespace benthor::exports;

namespace {

std::vector<QByteArrayList> linesOf(const QByteArray& text) {
    std::vector<QByteArrayList> all;
    for (CsvLines lines(text); lines.next();) {
        QByteArrayList& fields = all.emplace_back();
        for (int i = 0; i < lines.fieldCount(); ++i) {
            fields += lines.bytes(i);
        }
    }
    return all;
}

QByteArray csvOf(const std::vector<const WholeDive*>& dives, SampleIds ids) {
    QBuffer buffer;
    return tests::written(SamplesCsv(buffer, ids), buffer, dives);
}

} // namespace

class TestSamplesCsv : public QObject {
    Q_OBJECT

private slots:
    void aDiveHasARowASample() {
        const WholeDive dive =
            tests::looseDive({"100,0,70,M0,T20,A500", "227,1,130,M1,T0,A495,LOW,DECO"});
        const QByteArray text = csvOf({&dive}, SampleIds::None);
        QVERIFY(text.startsWith("time_s,depthpos,gasnum,po2,ceilingneg,temp,alarmcount,filterpct,bat1,"));
        const auto lines = linesOf(text);
        QCOMPARE(lines.size(), size_t{3});
        QCOMPARE(lines[0].size(), 38);
        QCOMPARE(lines[0].last(), QByteArray("alarms"));
        // time, depth, gas, PO2, no ceiling, temperature (0 where the sample gave none), alarms, filter
        QCOMPARE(lines[1].mid(0, 8), QByteArrayList({"40", "9.38", "0", "0.7", "", "20", "0", "50"}));
        QCOMPARE(lines[2].mid(0, 8), QByteArrayList({"50", "21.28", "1", "1.3", "", "0", "2", "49.5"}));
        QCOMPARE(lines[1].last(), QByteArray());
        QCOMPARE(lines[2].last(), QByteArray("LOW; DECO"));
        QVERIFY(text.endsWith("; DECO\r\n"));
        QCOMPARE(text.count('\n'), 3);
        QCOMPARE(text.count("\r\n"), 3);
    }

    void severalDivesHaveTheirIdentifierFirstAndTheSameColumns() {
        const WholeDive one = tests::looseDive({"100,0,70,M0,T20,A500,C95"});
        WholeDive other = tests::looseDive({"100,0,0,M0,T20,A500"});
        other.figures.id = QStringLiteral("D0000002");
        const WholeDive none = tests::looseDive({});
        const auto lines = linesOf(csvOf({&one, &none, &other}, SampleIds::First));
        QCOMPARE(lines.size(), size_t{3});
        QCOMPARE(lines[0].mid(0, 3), QByteArrayList({"id", "time_s", "depthpos"}));
        const auto po2 = lines[0].indexOf("po2");
        QCOMPARE(lines[1][0], QByteArray("D0000001"));
        QCOMPARE(lines[1][po2], QByteArray("0.7"));
        QCOMPARE(lines[2][0], QByteArray("D0000002"));
        QCOMPARE(lines[2][po2], QByteArray()); // recorded in the other dive only
        for (const QByteArrayList& line : lines) {
            QCOMPARE(line.size(), 39);
        }
    }

    /// The whole profile of the dive screen and its grid give each sample the same time.
    void timesAreTheScreens() {
        const WholeDive dive = tests::looseDive({"1,0,70,M0,T20,A500", "2,0,70,M0,T20,A500"});
        const auto lines = linesOf(csvOf({&dive}, SampleIds::None));
        for (int sample = 4; sample <= 5; ++sample) {
            const double seconds = lines[static_cast<size_t>(sample) - 3][0].toDouble();
            QCOMPARE(profile::formatelapsed(seconds), profile::cellText(dive.profile, {}, 10, sample, 0));
        }
    }

    void noTimeWithoutAnInterval() {
        WholeDive dive = tests::looseDive({"1,0,70,M0,T20,A500"});
        dive.figures.interval.reset();
        QCOMPARE(linesOf(csvOf({&dive}, SampleIds::None))[1][0], QByteArray());
    }

    void arraysReadBackToTheLastBit() {
        constexpr int kSamples = 400;
        WholeDive dive = tests::looseDive({});
        dive.profile.lastsample = profile::kFirstSample + kSamples;
        QRandomGenerator random(7);
        for (const SampleColumn& column : sampleColumns()) {
            for (int i = 0; i < kSamples; ++i) {
                const auto value = std::bit_cast<float>(random.generate());
                (dive.profile.*column.array)
                    .set(profile::kFirstSample - 1 + i, qIsFinite(value) ? value : 1.1F);
            }
        }
        const auto lines = linesOf(csvOf({&dive}, SampleIds::None));
        QCOMPARE(lines.size(), size_t{kSamples + 1});
        for (int i = 0; i < kSamples; ++i) {
            for (qsizetype c = 0; c < static_cast<qsizetype>(sampleColumns().size()); ++c) {
                const float wanted =
                    (dive.profile.*
                     sampleColumns()[static_cast<size_t>(c)].array)[profile::kFirstSample - 1 + i];
                const float read = lines[static_cast<size_t>(i) + 1][c + 1].toFloat();
                QCOMPARE(std::bit_cast<quint32>(read), std::bit_cast<quint32>(wanted));
            }
        }
    }

    void hostileTextsComeBack_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("back");
        for (const char* const same : {"plain", "a,b", "say \"no\"", "\"", "\"\"", "a\r\nb", "\r", " blanks ",
                                       "; ", "\x01\x1f", "=1+1"}) {
            QTest::newRow(same) << QString::fromLatin1(same) << QString::fromLatin1(same);
        }
        QTest::newRow("umlaut and fish")
            << QStringLiteral("\u00e4\U0001F420") << QStringLiteral("\u00e4\U0001F420");
        QTest::newRow("zero character") << QString(u'a') + QChar(0) << QString(u'a') + QChar(0);
        // UTF-8 has no form for half a pair
        QTest::newRow("lone surrogate") << QString(QChar(0xd83d)) << QStringLiteral("?");
    }
    void hostileTextsComeBack() {
        QFETCH(QString, text);
        QFETCH(QString, back);
        WholeDive dive = tests::looseDive({"1,0,70,M0,T20,A500", "2,0,70,M0,T20,A500"});
        dive.figures.id = text;
        dive.profile.alarms.add(5, "B\"," + QByteArray(1, '\r') + "C");
        const QByteArray bytes = csvOf({&dive}, SampleIds::First);
        QVERIFY(!QString::fromUtf8(bytes).contains(QChar(0xfffd)));
        const auto lines = linesOf(bytes);
        QCOMPARE(lines.size(), size_t{3});
        for (size_t i = 1; i < 3; ++i) {
            QCOMPARE(QString::fromUtf8(lines[i][0]), back);
            QCOMPARE(lines[i].size(), 39);
        }
        QCOMPARE(lines[2].last(), QByteArray("B\",\rC"));
    }

    void nothingAndAnEmptyTextAreNotTheSame() {
        QCOMPARE(csvField(std::optional<QString>()), QByteArray());
        QCOMPARE(csvField(std::optional<QString>(QString())), QByteArray("\"\""));
    }

    void linesOfAnyBytesComeToAnEnd() {
        CsvLines lines("a,\"b\nc\",\r\nd\n\"open,\n");
        QVERIFY(lines.next());
        QCOMPARE(lines.fieldCount(), 3);
        QCOMPARE(lines.bytes(1), QByteArray("b\nc"));
        QCOMPARE(lines.bytes(2), QByteArray());
        QCOMPARE(lines.line(), QByteArrayView("a,\"b\nc\",\r\n"));
        QVERIFY(lines.next());
        QCOMPARE(lines.bytes(0), QByteArray("d"));
        QCOMPARE(lines.bytes(1), QByteArray());
        QVERIFY(lines.next());
        QCOMPARE(lines.bytes(0), QByteArray("\"open,\n"));
        QVERIFY(!lines.next());
    }

    void noShortWriteIsPassedOver() {
        const WholeDive dive = tests::looseDive({"1,0,70,M0,T20,A500", "2,0,70,M0,T20,A500"});
        const qint64 size = csvOf({&dive}, SampleIds::First).size();
        QCOMPARE(tests::silentLosses(size,
                                     [&](QIODevice& device) {
                                         SamplesCsv csv(device, SampleIds::First);
                                         csv.begin();
                                         csv.add(dive);
                                         csv.end();
                                     }),
                 0);
    }
};

QTEST_GUILESS_MAIN(TestSamplesCsv)
#include "test_samplescsv.moc"
