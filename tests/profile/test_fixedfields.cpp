#include "divetext.h"

#include <QtTest>

using namespace benthor::profile;

class TestFixedFields : public QObject {
    Q_OBJECT

private slots:
    void depthIsRoundedToHundredthsTiesToEven();
    void depthInFeetHasTenths();
    void aFallFromDeepIsAnOverflowOfTheDepthCount();
    void theDepthCountOverflowsOnlyOnce();
    void po2IsFormattedWithTwoPlaces();
    void onlyM1IsAMark();
    void aFieldWithoutMIsMalformed();
    void aTemperatureWithoutTIsThatOfTheRecordBefore();
    void temperaturesAreWholeDegrees();
    void c125IsACeilingAtPositionSixAndABatteryAtSeven();
    void ceilingsInFeetHaveTenths();
};

void TestFixedFields::depthIsRoundedToHundredthsTiesToEven() {
    // 4 counts are 0.375 m and 12 are 1.125 m: halves of a hundredth, of which the even one is taken.
    const DiveProfile profile = decoded({",4,0,0", ",12,0,0", ",50,0,0", ",100.5,0,0", ",-4,0,0"});
    QCOMPARE(sampleOf(profile.depthpos, 4), 0.38F);
    QCOMPARE(sampleOf(profile.depthpos, 5), 1.12F);
    QCOMPARE(sampleOf(profile.depthpos, 6), 4.69F);
    QCOMPARE(sampleOf(profile.depthpos, 7), 9.42F);
    QCOMPARE(sampleOf(profile.depthpos, 8), -0.38F);
    QCOMPARE(sampleOf(profile.depthneg, 6), -4.69F);
}

void TestFixedFields::depthInFeetHasTenths() {
    const DiveProfile profile = decoded({",100,0,0"}, true);
    QCOMPARE(sampleOf(profile.depthneg, 4), -30.1F); // 9.38 x 3.2098 = 30.1079
    QCOMPARE(sampleOf(profile.depthpos, 4), 9.38F);
}

void TestFixedFields::aFallFromDeepIsAnOverflowOfTheDepthCount() {
    const DiveProfile profile =
        decoded({",1800,0,0", ",50,0,0", ",60,0,0", ",50,0,0", ",1500,0,0", ",50,0,0"});
    QCOMPARE(sampleOf(profile.depthpos, 4), 168.75F);
    QCOMPARE(sampleOf(profile.depthpos, 5), 196.69F);
    QCOMPARE(sampleOf(profile.depthpos, 6), 197.62F);
    QCOMPARE(sampleOf(profile.depthpos, 7), 196.69F);
    QCOMPARE(sampleOf(profile.depthneg, 7), -196.69F);
    QCOMPARE(sampleOf(profile.depthpos, 8), 140.62F); // not above 150: the next small count is a small depth
    QCOMPARE(sampleOf(profile.depthpos, 9), 4.69F);
}

void TestFixedFields::theDepthCountOverflowsOnlyOnce() {
    const DiveProfile profile =
        decoded({",2040,0,0", ",1060,0,0", ",2040,0,0", ",10,0,0", ",1067,0,0"}, true);
    QCOMPARE(sampleOf(profile.depthpos, 4), 191.25F);
    QCOMPARE(sampleOf(profile.depthpos, 5), 291.38F);
    QCOMPARE(sampleOf(profile.depthpos, 6), 191.25F);
    QCOMPARE(sampleOf(profile.depthpos, 7), 192.94F);
    QCOMPARE(sampleOf(profile.depthneg, 7), -619.3F); // 192.94 x 3.2098 = 619.2988
    QCOMPARE(sampleOf(profile.depthpos, 8), 100.03F); // 100 m and more are taken as they are
}

void TestFixedFields::po2IsFormattedWithTwoPlaces() {
    const DiveProfile profile =
        decoded({",0,0,131", ",0,0,115.5", ",0,0,115.4", ",0,0,-0.4", ",0,0,1e2", ",0,0,x"});
    QCOMPARE(sampleOf(profile.po2, 4), 1.31F);
    QCOMPARE(sampleOf(profile.po2, 5), 1.16F);
    QCOMPARE(sampleOf(profile.po2, 6), 1.15F);
    QCOMPARE(sampleOf(profile.po2, 7), 0.0F);
    QCOMPARE(sampleOf(profile.po2, 8), 1.0F);
    QCOMPARE(sampleOf(profile.po2, 9), 0.0F);
}

void TestFixedFields::onlyM1IsAMark() {
    const DiveProfile profile = decoded({",0,0,0,M1,T20", ",0,0,0,M0,T20", ",0,0,0,M11,T20", ",0,0,0,M,T20",
                                         ",0,0,0,M01,T20", ",0,0,0,M1 ,T20"});
    QCOMPARE(sampleOf(profile.mark, 4), 1.0F);
    for (int n = 5; n <= 9; ++n) {
        QCOMPARE(sampleOf(profile.mark, n), 0.0F);
    }
    QVERIFY(!profile.malformed);
}

void TestFixedFields::aFieldWithoutMIsMalformed() {
    QVERIFY(!decoded({record("")}).malformed);
    for (const char* line : {",0,0,0,1,T20", ",0,0,0,m1,T20", ",0,0,0,,T20", ",0,0,0"}) {
        const DiveProfile profile = decoded({line});
        QVERIFY(profile.malformed);
        QCOMPARE(recordsOf(profile), 1);
        QCOMPARE(sampleOf(profile.mark, 4), 0.0F);
    }
}

void TestFixedFields::aTemperatureWithoutTIsThatOfTheRecordBefore() {
    const DiveProfile profile =
        decoded({",0,0,0,M0,15", ",0,0,0,M0,T21", ",0,0,0,M0,15", ",0,0,0", ",0,0,0,M0,t9"});
    QVERIFY(profile.malformed);
    QVERIFY(profile.enabled.test(5));
    QCOMPARE(sampleOf(profile.temp, 4), 0.0F);
    for (int n = 5; n <= 8; ++n) {
        QCOMPARE(sampleOf(profile.temp, n), 21.0F);
    }
    const DiveProfile feet = decoded({",0,0,0,M0,T10", ",0,0,0,M0,15"}, true);
    QCOMPARE(sampleOf(feet.temp, 5), 50.0F);
}

void TestFixedFields::temperaturesAreWholeDegrees() {
    const QByteArrayList lines{",0,0,0,M0,T20.5", ",0,0,0,M0,T-2.5", ",0,0,0,M0,T-0.4", ",0,0,0,M0,Tx"};
    const DiveProfile metric = decoded(lines);
    QCOMPARE(sampleOf(metric.temp, 4), 21.0F);
    QCOMPARE(sampleOf(metric.temp, 5), -3.0F);
    QCOMPARE(sampleOf(metric.temp, 6), 0.0F);
    QCOMPARE(sampleOf(metric.temp, 7), 0.0F);
    const DiveProfile feet = decoded(lines, true);
    QCOMPARE(sampleOf(feet.temp, 4), 69.0F); // 68.9
    QCOMPARE(sampleOf(feet.temp, 5), 28.0F); // 27.5
    QCOMPARE(sampleOf(feet.temp, 6), 31.0F); // 31.28
    QCOMPARE(sampleOf(feet.temp, 7), 32.0F);
}

void TestFixedFields::c125IsACeilingAtPositionSixAndABatteryAtSeven() {
    const DiveProfile ceiling = decoded({",100,0,70,M0,T20,C125"});
    QCOMPARE(sampleOf(ceiling.ceilingneg, 4), -125.0F);
    QCOMPARE(sampleOf(ceiling.bat2, 4), 0.0F);
    QVERIFY(ceiling.enabled.test(11));
    QVERIFY(!ceiling.enabled.test(7));
    const DiveProfile battery = decoded({record(",C125")});
    QCOMPARE(sampleOf(battery.ceilingneg, 4), 0.0F);
    QCOMPARE(sampleOf(battery.bat2, 4), 1.25F);
    QVERIFY(!battery.enabled.test(11));
    QVERIFY(battery.enabled.test(7));
}

void TestFixedFields::ceilingsInFeetHaveTenths() {
    const DiveProfile profile = decoded({",100,0,70,M0,T20,C6", record(",J7.5"), record(",J")}, true);
    QCOMPARE(sampleOf(profile.ceilingneg, 4), -19.3F); // 6 x 3.2098 = 19.2588
    QCOMPARE(sampleOf(profile.ceilingneg, 5), -24.1F); // 7.5 x 3.2098 = 24.0735
    QCOMPARE(sampleOf(decoded({record(",J7.5")}).ceilingneg, 4), -7.5F);
}

QTEST_GUILESS_MAIN(TestFixedFields)
#include "test_fixedfields.moc"
