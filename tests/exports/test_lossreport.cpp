#include "exports/exporterror.h"
#include "exports/lossreport.h"

#include <QJsonArray>
#include <QTest>

using namespace benthor::exports;

class TestLossReport : public QObject {
    Q_OBJECT

private slots:
    void nothingIsLostAtFirst();
    void eachKindMakesItSomething();
    void whatWasLostIsCountedByKind();
    void hostileNamesStayInTheirLine();
    void theErrorTellsItsText();
};

void TestLossReport::nothingIsLostAtFirst() {
    LossReport report;
    QVERIFY(report.isEmpty());
    report.dives = 3;
    QVERIFY(report.isEmpty());
    QCOMPARE(report.lines(), QStringList{"3 dives written"});
    const QJsonObject expected{
        {"dives", 3}, {"lost", QJsonObject()}, {"without_samples", QJsonArray()}, {"musts", QJsonArray()}};
    QCOMPARE(report.json(), expected);
}

void TestLossReport::eachKindMakesItSomething() {
    LossReport lost;
    lost.lose(QStringLiteral("filter"));
    QVERIFY(!lost.isEmpty());
    LossReport without;
    without.addWithoutSamples(QStringLiteral("D0000001"), QStringLiteral("no file"));
    QVERIFY(!without.isEmpty());
    LossReport musts;
    musts.addMust(QStringLiteral("D0000001"), QStringLiteral("no start"));
    QVERIFY(!musts.isEmpty());
}

void TestLossReport::whatWasLostIsCountedByKind() {
    LossReport report;
    report.dives = 1;
    report.lose(QStringLiteral("volts"));
    report.lose(QStringLiteral("filter"));
    report.lose(QStringLiteral("volts"));
    report.addWithoutSamples(QStringLiteral("D0000002"), QStringLiteral("The store names no file for it."));
    report.addMust(QStringLiteral("D0000001"), QStringLiteral("no depth; 0 stands for it"));
    QCOMPARE(report.lines(),
             (QStringList{"1 dive written", "no place for: filter (1 dive)", "no place for: volts (2 dives)",
                          "without samples: D0000002: The store names no file for it.",
                          "made up: D0000001: no depth; 0 stands for it"}));
    const QJsonObject expected{{"dives", 1},
                               {"lost", QJsonObject{{"filter", 1}, {"volts", 2}}},
                               {"without_samples", QJsonArray{"D0000002: The store names no file for it."}},
                               {"musts", QJsonArray{"D0000001: no depth; 0 stands for it"}}};
    QCOMPARE(report.json(), expected);
}

void TestLossReport::hostileNamesStayInTheirLine() {
    LossReport report;
    report.addMust(QStringLiteral("D1\r\nD2\x1b[2J") + QChar(QChar::LineSeparator), QStringLiteral("none"));
    QCOMPARE(report.lines().last(), QStringLiteral("made up: D1  D2 [2J : none"));
    // A reader of the document is to find the dive by the name that it has.
    QVERIFY(report.json().value("musts").toArray().first().toString().startsWith("D1\r\n"));
}

void TestLossReport::theErrorTellsItsText() {
    const ExportError error(QStringLiteral("Für D0000001 war kein Platz."));
    QCOMPARE(error.text(), QStringLiteral("Für D0000001 war kein Platz."));
    QCOMPARE(QString::fromUtf8(error.what()), error.text());
}

QTEST_GUILESS_MAIN(TestLossReport)
#include "test_lossreport.moc"
