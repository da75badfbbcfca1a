#include "link/linkstate.h"
#include "link/readings.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

using namespace benthor::link;

namespace {

QJsonArray lines() {
    QFile file(QStringLiteral(BENTHOR_TEST_DATA "/readings.json"));
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("no vectors");
    }
    return QJsonDocument::fromJson(file.readAll()).object().value(QLatin1String("lines")).toArray();
}

QString textOf(const Readings& readings, size_t label) {
    return readings.texts[label].value_or(QStringLiteral("(left)"));
}

} // namespace

class TestReadings : public QObject {
    Q_OBJECT

private slots:
    void linesAgreeWithTheVectors_data() {
        QTest::addColumn<QJsonValue>("one");
        int number = 0;
        for (const QJsonValue& one : lines()) {
            QTest::addRow("%d %s", ++number, qPrintable(one["about"].toString())) << one;
        }
        QVERIFY(number > 40);
    }
    void linesAgreeWithTheVectors() {
        QFETCH(QJsonValue, one);
        const QByteArray line = one["line"].toString().toLatin1();
        LinkState asked;
        asked.Timer6 = true;
        asked.rxbuf.append(line);
        QCOMPARE(Timer6_tick(asked).has_value(), one["answer"].toBool());
        LinkState unasked;
        unasked.Text4.assign(line);
        QCOMPARE(Timer7_tick(unasked).has_value(), one["unasked"].toBool());
        if (!one["answer"].toBool() && !one["unasked"].toBool()) {
            return;
        }
        const Readings readings = parsereadings(line);
        const QJsonObject labels = one["labels"].toObject();
        for (auto label = labels.begin(); label != labels.end(); ++label) {
            const auto index = static_cast<size_t>(label.key().toInt());
            QVERIFY2(label.value().isNull() ? !readings.texts[index].has_value()
                                            : textOf(readings, index) == label.value().toString(),
                     qPrintable(QStringLiteral("label %1: %2").arg(label.key(), textOf(readings, index))));
        }
        QJsonArray hidden;
        for (size_t label = Readings::firstAlarm; label < Readings::labels; ++label) {
            if (readings.visible[label] == std::optional(false)) {
                hidden.append(static_cast<int>(label));
            }
        }
        QCOMPARE(hidden, one["hidden"].toArray());
    }

    void aDepthOf100() {
        const Readings readings = parsereadings("R0000,0100,J");
        QCOMPARE(textOf(readings, 0), "9.38");
        QCOMPARE(textOf(readings, 1), "30.8");
    }

    void blanksInFieldTwoAreRemoved() {
        QCOMPARE(textOf(parsereadings("R0000,0100, 1\t2\r\n 3 ,J"), 2), "123");
    }

    void eighteenFieldsLeaveLabels23To30Hidden() {
        QByteArray line = "R0000";
        for (int field = 1; field < 18; ++field) {
            line += ",text";
        }
        const Readings readings = parsereadings(line);
        QCOMPARE(readings.visible[21], std::optional(true));
        QCOMPARE(readings.visible[22], std::optional(true));
        for (size_t label = 23; label <= 30; ++label) {
            QCOMPARE(readings.visible[label], std::optional(false));
        }
    }

    void fieldFourThatEndsIn1IsLeft() {
        QCOMPARE(textOf(parsereadings("R0000,0100,,0130,M0001,J"), 4), "(left)");
        QCOMPARE(textOf(parsereadings("R0000,0100,,0130,M0000,J"), 4), "0");
        QCOMPARE(textOf(parsereadings("R0000,0100,,0130,M01,J"), 4), "0"); // not five long
        QCOMPARE(textOf(parsereadings("R0000,0100,,0130,N0000,J"), 4), "(left)");
    }

    void aWrongLeadLetterLeavesItsLabelAndTheOthersGoOn() {
        const Readings readings = parsereadings("R0000,0100,,0130,M0000,T0023,X00123,B00131,J");
        QCOMPARE(textOf(readings, 7), "(left)");
        QCOMPARE(textOf(readings, 8), "(left)");
        QCOMPARE(textOf(readings, 9), "1.31");
    }

    void aFieldWithoutItsLetterIsWrongAndNotShortened() {
        const Readings readings = parsereadings(
            "R0000,0100,1,0130,0000,0023,00123,00131,00131,00143,00168,00831,00302,00130,00129,J,00012");
        for (const size_t label : {4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20}) {
            QVERIFY2(!readings.texts[label].has_value(), qPrintable(textOf(readings, label)));
        }
        QCOMPARE(textOf(parsereadings("R0000,0100,1,0130,M0000,-023,J"), 5), "(left)");
        QCOMPARE(textOf(parsereadings("R0000,0100,1,0130,M0000,\xD7"
                                      "0023,J"),
                        5),
                 "(left)"); // no letter
        QCOMPARE(textOf(parsereadings("R0000,0100,1,0130,M0000,T-002,J"), 5), "-2");
        QCOMPARE(textOf(parsereadings("R0000,0100,1,0130,M0000,t0023,J"), 5), "23");
    }

    void aShortLineTouchesNothingBehindItsFields() {
        const Readings readings = parsereadings("R0000,0100");
        QCOMPARE(textOf(readings, 0), "9.38");
        for (size_t label = 2; label < Readings::firstAlarm; ++label) {
            QVERIFY(!readings.texts[label].has_value());
        }
        for (size_t label = Readings::firstAlarm; label < Readings::labels; ++label) {
            QCOMPARE(readings.visible[label], std::optional(false));
        }
    }

    void theWalkStopsAtTheTwentyFifthComma() {
        QByteArray line = "R0000";
        for (int field = 1; field < 45; ++field) {
            line += ",field" + QByteArray::number(field);
        }
        const Readings readings = parsereadings(line);
        QCOMPARE(textOf(readings, 29), "field24");
        QCOMPARE(textOf(readings, 30), "(left)");
        QCOMPARE(readings.visible[29], std::optional(true));
        QCOMPARE(readings.visible[30], std::optional(false));
    }

    void theAnswerEndsItsWaiting() {
        LinkState link;
        link.Timer6 = true;
        link.rxbuf.append("J");
        QVERIFY(!Timer6_tick(link));
        QCOMPARE(link.Text4.bytes(), "J"); // the view follows what comes
        QVERIFY(link.Timer6);
        link.rxbuf.append("R0000,0100,1,0130");
        const auto readings = Timer6_tick(link);
        QVERIFY(readings.has_value());
        QCOMPARE(textOf(*readings, 0), "9.38");
        QVERIFY(!link.Timer6);
        QCOMPARE(link.AFLabel3.text, "Status Update");
        QCOMPARE(link.AFLabel3.colour, benthor::platform::kToldCyan);
        QVERIFY(!link.rxbuf.isEmpty()); // an answer stays in the view
    }

    void withoutAnAnswerTheTickGoesOn() {
        LinkState link;
        link.Timer6 = true;
        for (int tick = 0; tick < 200; ++tick) {
            link.rxbuf.append("PP");
            QVERIFY(!Timer6_tick(link));
        }
        QVERIFY(link.Timer6);
    }

    void anUnaskedLineIsTakenAndCleared() {
        LinkState link;
        link.rxbuf.append("PPPR-001,0320,1,0130,J00001PPP");
        QVERIFY(!Timer7_tick(link)); // the view has not taken it yet
        link.Text4.follow(link.rxbuf);
        const auto readings = Timer7_tick(link);
        QVERIFY(readings.has_value());
        QCOMPARE(textOf(*readings, 0), "30.00");
        QVERIFY(link.Text4.isEmpty() && link.rxbuf.isEmpty());
        QCOMPARE(link.AFLabel3.text, "Status Update");
    }

    void whileAnAnswerIsAwaitedUnaskedLinesWait() {
        LinkState link;
        link.Timer6 = true;
        link.Text4.assign("R-001,0320,1,0130,J");
        QVERIFY(!Timer7_tick(link));
        QVERIFY(!link.Text4.isEmpty());
    }

    void halfALineHidesTheLabelsBehindIt() {
        LinkState link;
        link.Text4.assign("J R-001,0320");
        const auto readings = Timer7_tick(link);
        QVERIFY(readings.has_value());
        QCOMPARE(readings->visible[21], std::optional(false));
        QVERIFY(!readings->texts[9].has_value());
    }

    void randomTextHarmsNothing() {
        QRandomGenerator random(3);
        for (int run = 0; run < 5000; ++run) {
            QByteArray line;
            for (int at = 0, length = random.bounded(200); at < length; ++at) {
                line += static_cast<char>(random.bounded(4) == 0 ? ',' : random.bounded(256));
            }
            const Readings readings = parsereadings(line);
            QCOMPARE(readings.visible[30], std::optional(false));
        }
    }
};

QTEST_GUILESS_MAIN(TestReadings)
#include "test_readings.moc"
