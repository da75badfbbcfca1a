#include "wirereaders.h"

#include "simulator/divegenerator.h"

#include <QSet>
#include <QtTest>

using namespace benthor::simulator;

Q_DECLARE_METATYPE(benthor::simulator::Damage)

class TestDemoDives : public QObject {
    Q_OBJECT

private slots:
    void namesAreThoseOfFilesThatAnImportKeepsApart();
    void exactlyOneIsDamagedAndTheChecksFindIt();
    void allProfilesDecodeToTheirEnd();
    void allHeadsFitTheScanAndNothingElseActs();
    void theyAreOfManyKinds();
    void theyWereMadeOverSomeYears();
    void theyAreTheSameEachTime();
    void damageIsSeenByTheChecksOrNotAsItsKindSays_data();
    void damageIsSeenByTheChecksOrNotAsItsKindSays();
    void damageIsReproducibleAndChangesTheText_data();
    void damageIsReproducibleAndChangesTheText();
    void aCutProfileHasNoEnd();
};

void TestDemoDives::namesAreThoseOfFilesThatAnImportKeepsApart() {
    QSet<QString> names;
    for (const DemoDive& dive : demoDives()) {
        QVERIFY(dive.filename.size() <= 20);
        QVERIFY(dive.filename.endsWith(QLatin1String(".txt")));
        QVERIFY(!dive.filename.contains(QLatin1Char('\'')) && !dive.filename.contains(QLatin1Char('/')));
        names.insert(dive.filename.toLower());
    }
    QCOMPARE(static_cast<std::size_t>(names.size()), demoDives().size());
    QVERIFY(names.size() >= 8);
}

void TestDemoDives::exactlyOneIsDamagedAndTheChecksFindIt() {
    QStringList faulty;
    for (const DemoDive& dive : demoDives()) {
        if (!rowFaults(scanHead(dive.text)).isEmpty()) {
            faulty << dive.filename;
        }
    }
    QCOMPARE(faulty, QStringList{QStringLiteral("Quarry4.txt")});
}

void TestDemoDives::allProfilesDecodeToTheirEnd() {
    for (const DemoDive& dive : demoDives()) {
        const DecodedProfile profile = decodeProfile(dive.text);
        QVERIFY(profile.ended);
        QCOMPARE(profile.dropped, 0);
        QVERIFY(profile.records.size() > 60);
        QVERIFY(profile.mostfields <= 19);
        QCOMPARE(profile.records.last().depth, 0.0);
    }
}

void TestDemoDives::allHeadsFitTheScanAndNothingElseActs() {
    for (const DemoDive& dive : demoDives()) {
        const HeadScan scan = scanHead(dive.text);
        QVERIFY(scan.roundsatprofile > 0 && scan.roundsatprofile < 1000);
        QCOMPARE(scan.actionsbehindprofile, 0);
        QVERIFY(!scan.broken);
        QCOMPARE(scan.gases.size(), 10);
        QCOMPARE(scan.tissues.size(), 16);
    }
}

void TestDemoDives::theyAreOfManyKinds() {
    QByteArray all;
    bool trimix = false;
    bool nitrox = false;
    bool opened = false;
    double deepest = 0;
    for (const DemoDive& dive : demoDives()) {
        const HeadScan scan = scanHead(dive.text);
        const int n2 = scan.gases[0][1].toInt();
        trimix = trimix || scan.gases[0][2].toInt() > 0;
        nitrox = nitrox || (n2 < 79 && scan.gases[0][2] == "0");
        opened = opened || scan.values.value("Status") == "1";
        deepest = std::max(deepest, scan.values.value("MaxD").toDouble());
        all += dive.text;
    }
    QVERIFY(trimix && nitrox && opened);
    QVERIFY(deepest > 192);
    for (const char* sign : {",S", ",z", ",M1", "PREDIVE", "CEILING!", "ASCENT!", "BAIL OUT", "CELL DIFF",
                             "LOW PO2!", "GAS SWITCH", "I140"}) {
        QVERIFY2(all.contains(sign), sign);
    }
}

void TestDemoDives::theyWereMadeOverSomeYears() {
    quint64 first = ~quint64{0};
    quint64 last = 0;
    for (const DemoDive& dive : demoDives()) {
        const quint64 start = scanHead(dive.text).values.value("Start").toULongLong();
        first = std::min(first, start);
        last = std::max(last, start);
    }
    QVERIFY(last - first > quint64{2} * 365 * 86400);
}

void TestDemoDives::theyAreTheSameEachTime() {
    const std::vector<DemoDive> one = demoDives();
    const std::vector<DemoDive> two = demoDives();
    for (std::size_t i = 0; i < one.size(); ++i) {
        QCOMPARE(one[i].filename, two[i].filename);
        QCOMPARE(one[i].text, two[i].text);
    }
}

void TestDemoDives::damageIsSeenByTheChecksOrNotAsItsKindSays_data() {
    QTest::addColumn<Damage>("kind");
    QTest::addColumn<bool>("seen");
    QTest::newRow("gas number short") << Damage::GasNumberShort << true;
    QTest::newRow("version short") << Damage::VersionShort << true;
    QTest::newRow("interval letters") << Damage::IntervalLetters << true;
    QTest::newRow("tissue number short") << Damage::TissueNumberShort << true;
    QTest::newRow("gas lines lost") << Damage::GasLinesLost << true;
    QTest::newRow("tissue lines lost") << Damage::TissueLinesLost << true;
    QTest::newRow("head cut") << Damage::HeadCut << true;
    QTest::newRow("profile bytes lost") << Damage::ProfileBytesLost << false;
    QTest::newRow("profile bits flipped") << Damage::ProfileBitsFlipped << false;
    QTest::newRow("profile cut") << Damage::ProfileCut << false;
}

void TestDemoDives::damageIsSeenByTheChecksOrNotAsItsKindSays() {
    QFETCH(Damage, kind);
    QFETCH(bool, seen);
    const QByteArray text = diveText(simulate(plannedDive(8)));
    for (std::uint64_t seed = 1; seed <= 40; ++seed) {
        QCOMPARE(!rowFaults(scanHead(damaged(text, kind, seed))).isEmpty(), seen);
    }
}

void TestDemoDives::damageIsReproducibleAndChangesTheText_data() {
    damageIsSeenByTheChecksOrNotAsItsKindSays_data();
}

void TestDemoDives::damageIsReproducibleAndChangesTheText() {
    QFETCH(Damage, kind);
    const QByteArray text = diveText(simulate(plannedDive(9)));
    for (std::uint64_t seed = 1; seed <= 20; ++seed) {
        QCOMPARE(damaged(text, kind, seed), damaged(text, kind, seed));
        QVERIFY(damaged(text, kind, seed) != text);
    }
    // The shortest dive can be damaged as well.
    DivePlan plan = plannedDive(9);
    plan.samples = 1;
    const QByteArray tiny = diveText(simulate(plan));
    QVERIFY(damaged(tiny, kind, 1) != tiny);
}

void TestDemoDives::aCutProfileHasNoEnd() {
    const QByteArray text = diveText(simulate(plannedDive(10)));
    for (std::uint64_t seed = 1; seed <= 20; ++seed) {
        const DecodedProfile profile = decodeProfile(damaged(text, Damage::ProfileCut, seed));
        QVERIFY(!profile.ended);
        QVERIFY(profile.records.size() < decodeProfile(text).records.size());
    }
}

QTEST_GUILESS_MAIN(TestDemoDives)
#include "test_demodives.moc"
