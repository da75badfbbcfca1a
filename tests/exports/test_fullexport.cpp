#include "exports/fullexport.h"
#include "profile/decoder.h"

#include <QtTest>

using namespace benthor::exports;
using namespace benthor::profile;

namespace {

/// Air, NX32, TX18/45, heliox 20/80.
GasArrays gasesOfTheTest() {
    GasArrays gases;
    const std::vector<GasRow> rows{{"D1", "0", "79", "0", "660", "1"},
                                   {"D1", "1", "68", "0", "400", "1"},
                                   {"D1", "2", "37", "45", "700", "1"},
                                   {"D1", "3", "0", "80", "900", "1"}};
    readgaslist(rows, false, gases);
    return gases;
}

struct Dive {
    explicit Dive(std::initializer_list<const char*> records) {
        QByteArray text = "Profile\r\n\r\n";
        for (const char* record : records) {
            text += QByteArray(",") + record + "\r\n";
        }
        profile = decodeProfile(text + "End\r\n", false);
    }
    FullDive full() const {
        return {profile,
                gases,
                profile.lastsample - 1,
                QStringLiteral("D0120147"),
                interval,
                QDateTime({2017, 9, 27}, {1, 2, 3}),
                QDateTime({2017, 9, 27}, {1, 42, 3}),
                QDateTime({2026, 2, 3}, {4, 5, 6})};
    }
    DiveProfile profile;
    GasArrays gases = gasesOfTheTest();
    double interval = 10;
};

QByteArrayList linesOf(const QByteArray& text) {
    QByteArrayList lines;
    for (const QByteArray& line : text.split('\n')) {
        lines << (line.endsWith('\r') ? line.chopped(1) : line);
    }
    return lines;
}

/// Field `number` of the sample lines of a file, counted from 1.
QByteArrayList fieldOfSamples(const QByteArray& text, int number) {
    QByteArrayList fields;
    for (const QByteArray& line : linesOf(text)) {
        if (line.startsWith('|')) {
            fields << line.split('|').value(number);
        }
    }
    return fields;
}

} // namespace

class TestFullExport : public QObject {
    Q_OBJECT

private slots:
    void theFileHasTheSegmentsOfTheFormat() {
        const Dive dive{"0,0,0,M0,T18,A500", "227,0,0,M0,T17,A500"};
        const QByteArray text = fullZxu(dive.full());
        QCOMPARE(linesOf(text),
                 QByteArrayList({"FSH|^~<>{}|KDBN01|ZXU|20260203040506|",
                                 "ZRH|^~<>{}|KD32RB|000000000000|MSWG|ThM|C|bar|L|", "ZAR{}",
                                 "ZDH|1|147|I|Q10S|20170927010203|||||", "ZDP{", "|0.0|0|1||F|F||18||||||||",
                                 "|0.1667|21.28|||F|F||17||||||||", "ZDP}",
                                 "ZDT|1|147|21.28|20170927014203|17|", ""}));
    }

    void aConstantPo2IsToldInHeadAndGas() {
        const Dive dive{"100,0,130,M0,T18,A500,I130", "100,2,130,M0,T18,A500,I130",
                        "100,3,130,M0,T18,A500,I130", "100,3,130,M0,T18,A500,I130",
                        "100,1,50,M0,T18,A500,I0"};
        const QByteArrayList lines = linesOf(fullZxu(dive.full()));
        QCOMPARE(lines[3], QByteArray("ZDH|1|147|I|Q10S|20170927010203|||PO2|1|"));
        QCOMPARE(lines[5], QByteArray("|0.0|9.38|13.128100|1.28|F|F||18||||||||")); // 1.30 bar
        QVERIFY(lines[6].startsWith("|0.1667|9.38|8.128045|"));
        QVERIFY(lines[7].startsWith("|0.3333|9.38|15.128000|"));
        QVERIFY(lines[8].startsWith("|0.5|9.38||"));        // no change
        QVERIFY(lines[9].startsWith("|0.6667|9.38|2.32|")); // back on the open circuit
    }

    void eachChangeOfTheSetpointIsTold() {
        const Dive dive{"100,0,130,M0,T18,A500,I70", "100,0,130,M0,T18,A500,I70",
                        "100,0,130,M0,T18,A500,I130", "100,0,130,M0,T18,A500,I100"};
        QCOMPARE(fieldOfSamples(fullZxu(dive.full()), 3),
                 QByteArrayList({"13.069100", "", "13.128100", "13.099100"})); // 0.69, 1.28, 0.99 ATA
    }

    void gasesOfAnOpenCircuit() {
        const GasArrays gases = gasesOfTheTest();
        QCOMPARE(danGas(gases, 0, 0), "1");
        QCOMPARE(danGas(gases, 1, 0), "2.32");
        QCOMPARE(danGas(gases, 2, 0), "6.180045"); // 37 of 82 per cent
        QCOMPARE(danGas(gases, 3, 0), "6.200000");
        QCOMPARE(danGas(gases, 99, 0), "");
    }

    void oxygenIsTheMostThatTheTableHolds() {
        GasArrays gases;
        readgaslist({{"D1", "0", "0", "0", "40", "1"}, {"D1", "1", "1", "0", "40", "1"}}, false, gases);
        QCOMPARE(danGas(gases, 0, 0), "2.99");
        QCOMPARE(danGas(gases, 1, 0), "2.99");
        QCOMPARE(danGas(gases, 0, 1.3), "13.128100");
    }

    void aGasWithoutARowOrOneThatIsNoneIsLeftBlank() {
        GasArrays gases;
        readgaslist({{"D1", "0", "79", "0", "660", "1"}, {"D1", "1", "20", "120", "660", "1"}}, false, gases);
        for (const int gas : {1, 2, 9, 30}) {
            QCOMPARE(danGas(gases, gas, 0), "");
            QCOMPARE(danGas(gases, gas, 1.3), "");
        }
        // The gas behind it is told again.
        Dive dive{"100,0,130,M0,T18,A500", "100,7,130,M0,T18,A500", "100,0,130,M0,T18,A500"};
        QCOMPARE(fieldOfSamples(fullZxu(dive.full()), 3), QByteArrayList({"1", "", "1"}));
    }

    void theIntervalIsTheTrueOne() {
        Dive dive{"0,0,0,M0,T18,A500", "0,0,0,M0,T18,A500"};
        dive.interval = 1.5;
        QVERIFY(fullZxu(dive.full()).contains("ZDH|1|147|I|Q1.5S|20170927010203|"));
        QCOMPARE(fieldOfSamples(fullZxu(dive.full()), 1), QByteArrayList({"0.0", "0.025"}));
    }

    void everyRowHasFifteenFields() {
        const Dive dive{"320,0,130,M0,T18,A500,D150,E160,I130,LOW", "302,9,0,M0,X", "300,0,0,M0,T18,C3"};
        for (const QByteArray& line : linesOf(fullZxu(dive.full()))) {
            if (line.startsWith('|')) {
                QCOMPARE(line.count('|'), 16);
                QVERIFY(line.endsWith('|'));
            }
        }
    }

    void warningsAreNumbersOfATable() {
        const Dive dive{"0,0,0,M0,T18,A500,PREDIVE",
                        "0,0,0,M0,T18,A500,LOW PPO",
                        "0,0,0,M0,T18,A500,LOW PPO,DECO^|~{}\xFF",
                        "0,0,0,M0,T18,A500",
                        "0,0,0,M0,T18,A500,LOW PPO",
                        "0,0,0,M0,T18,A500,"};
        const QByteArray text = fullZxu(dive.full());
        QCOMPARE(linesOf(text)[2], QByteArray("ZAR{1^LOW PPO~2^LOW PPO^DECO}"));
        QCOMPARE(fieldOfSamples(text, 9), QByteArrayList({"", "1", "2", "", "1", ""}));
    }

    void aLongWarningIsCut() {
        const QByteArray record = "0,0,0,M0,T18,A500," + QByteArray(5000, 'x');
        const Dive dive{record.constData()};
        QCOMPARE(linesOf(fullZxu(dive.full()))[2], "ZAR{1^" + QByteArray(80, 'x') + "}");
    }

    void warningsCeilingAndPressuresStandInTheirFields() {
        const Dive dive{"320,0,0,M0,T18,A500,D150,E160", "302,0,0,M0,T18,C30,D149,E158",
                        "300,0,0,M0,T18,C3,D149,E158"};
        const QByteArrayList lines = linesOf(fullZxu(dive.full()));
        QCOMPARE(lines[5], QByteArray("|0.0|30|1||F|F||18||160|150|||||"));
        QCOMPARE(lines[6], QByteArray("|0.1667|28.31|||T|T|30|18||158|149|||||")); // 1.69 m in 10 s
        QCOMPARE(lines[7], QByteArray("|0.3333|28.12|||F|F|3|18||158|149|||||"));
    }

    void minutesHaveAPointAndSixCharacters() {
        QCOMPARE(danMinutes(0), "0.0");
        QCOMPARE(danMinutes(2), "2.0");
        QCOMPARE(danMinutes(1.0 / 3), "0.3333");
        QCOMPARE(danMinutes(123.4567), "123.45");
        QCOMPARE(danMinutes(4166.6667), "4166.6");
    }

    void theNumberHasAtMostFourDigits() {
        QCOMPARE(danNumber(QStringLiteral("D0000147")), "147");
        QCOMPARE(danNumber(QStringLiteral("D0120147")), "147");
        QCOMPARE(danNumber(QStringLiteral("D9999999")), "9999");
        QCOMPARE(danNumber(QString()), "0");
    }

    void aDiveWithoutSamplesIsAWholeFile() {
        const Dive dive{};
        const QByteArrayList lines = linesOf(fullZxu(dive.full()));
        QCOMPARE(lines.mid(4), QByteArrayList({"ZDP{", "ZDP}", "ZDT|1|147|0|20170927014203||", ""}));
    }

    void theTableHasTheColumnsThatHoldData() {
        const Dive dive{"0,0,70,M0,T18,A500,I70", "227,1,130,M0,T17,A495,I130"};
        QCOMPARE(fullCsv(dive.full()),
                 QByteArray("Time,Depth (m),Gas,PO2 (bar),Temp (C),Filter (%),Setpoint (bar)\r\n"
                            "00:00:40,0,Air,0.70,18,50,0.7\r\n"
                            "00:00:50,21.28,NX32,1.30,17,49.5,1.3\r\n"));
    }

    void alarmsAreOneField() {
        const Dive dive{"0,0,0,M0,T18,A500,LOW,HIGH \"x\"", "0,0,0,M1,T18,A500"};
        QCOMPARE(fullCsv(dive.full()),
                 QByteArray("Time,Depth (m),Gas,Temp (C),Filter (%),Mark,Alarms,Alarm text\r\n"
                            "00:00:40,0,Air,18,50,0,2,\"LOW; HIGH \"\"x\"\"\"\r\n"
                            "00:00:50,0,Air,18,50,1,0,\r\n"));
    }

    void fieldsAreQuotedWhereTheyMustBe() {
        QCOMPARE(csvQuoted(QStringLiteral("plain")), QByteArray("plain"));
        QCOMPARE(csvQuoted(QStringLiteral("a,b")), QByteArray("\"a,b\""));
        QCOMPARE(csvQuoted(QStringLiteral("a\"b")), QByteArray("\"a\"\"b\""));
        QCOMPARE(csvQuoted(QStringLiteral("a\r\nb")), QByteArray("\"a\r\nb\""));
    }
};

QTEST_APPLESS_MAIN(TestFullExport)
#include "test_fullexport.moc"
