#include "simulator/decompression.h"

#include <QtTest>

#include <cmath>

using namespace benthor::simulator;

class TestDecompression : public QObject {
    Q_OBJECT

private slots:
    void aHalfTimeAtConstantDepthTakesUpHalfTheDifference();
    void aDescentLoadsByTheSchreinerEquation();
    void theSchreinerEquationAgreesWithManySmallHaldaneSteps();
    void surfaceTissuesStandStillOnTheSurface();
    void theCeilingFollowsTheLimitLineOfTheLeadingCompartment();
    void aGradientFactorTakesItsShareOfTheLimit();
    void coefficientsOfBothGasesAreWeighedByTheirPressures();
    void theCeilingEasesTowardsTheSurface();
    void stopsAreMultiplesOfThreeNotAboveTheLast_data();
    void stopsAreMultiplesOfThreeNotAboveTheLast();
    void theWayUpTakesLongerAfterALongerStay();
    void coefficientsGoEvenlyFromFastToSlow();
};

namespace {

constexpr int fifth = 4; // 27 minutes for nitrogen: a 0.62, b 0.8126

Tissues emptyTissues() {
    Tissues tissues;
    tissues.n2.fill(0.1);
    return tissues;
}

bool near(double value, double expected, double within) {
    return std::abs(value - expected) <= within;
}

} // namespace

// Inspired nitrogen of air: (1 - 0.0627) x 0.79 = 0.740467 at the surface, (4 - 0.0627) x 0.79 = 3.110467 at
// 30 m.

void TestDecompression::aHalfTimeAtConstantDepthTakesUpHalfTheDifference() {
    Tissues tissues = saturatedAt(1.0);
    QVERIFY(near(tissues.n2[fifth], 0.740467, 1e-9));
    const Inert bottom = inspiredOpen(4.0, 0.79, 0);
    Interval(27).load(tissues, bottom, bottom);
    // (0.740467 + 3.110467) / 2
    QVERIFY(near(tissues.n2[fifth], 1.925467, 1e-9));
    QCOMPARE(tissues.he[fifth], 0.0);
}

void TestDecompression::aDescentLoadsByTheSchreinerEquation() {
    Tissues tissues = saturatedAt(1.0);
    Interval(1.5).load(tissues, inspiredOpen(1.0, 0.79, 0), inspiredOpen(4.0, 0.79, 0));
    // Rate 1.58 bar a minute, k = ln 2 / 5:
    // 0.740467 + 1.58 x (1.5 - 7.213475) + 1.58 x 7.213475 x exp(-0.207944) = 0.970653
    QVERIFY(near(tissues.n2[0], 0.970653, 1e-6));
}

void TestDecompression::theSchreinerEquationAgreesWithManySmallHaldaneSteps() {
    Tissues tissues = saturatedAt(1.0);
    Interval(10).load(tissues, Inert{2.0, 1.0}, Inert{0.5, 4.0});
    double n2 = 0.740467;
    double he = 0;
    constexpr int steps = 1000000;
    for (int i = 0; i < steps; ++i) {
        const double along = (i + 0.5) / steps;
        n2 += (2.0 - 1.5 * along - n2) * std::log(2.0) / 27.0 * 10 / steps;
        he += (1.0 + 3.0 * along - he) * std::log(2.0) / 10.21 * 10 / steps;
    }
    QVERIFY(near(tissues.n2[fifth], n2, 1e-5));
    QVERIFY(near(tissues.he[fifth], he, 1e-5));
}

void TestDecompression::surfaceTissuesStandStillOnTheSurface() {
    Tissues tissues = saturatedAt(0.9);
    const Tissues before = tissues;
    const Inert air = inspiredOpen(0.9, 0.79, 0);
    Interval(600).load(tissues, air, air);
    for (int i = 0; i < compartmentcount; ++i) {
        QVERIFY(near(tissues.n2[i], before.n2[i], 1e-12));
    }
    QVERIFY(toleratedBar(tissues, 0.3) < 0.9);
}

void TestDecompression::theCeilingFollowsTheLimitLineOfTheLeadingCompartment() {
    Tissues tissues = emptyTissues();
    tissues.n2[fifth] = 2.5;
    // (2.5 - 0.62) x 0.8126
    QVERIFY(near(toleratedBar(tissues, 1.0), 1.527688, 1e-9));
}

void TestDecompression::aGradientFactorTakesItsShareOfTheLimit() {
    Tissues tissues = emptyTissues();
    tissues.n2[fifth] = 2.5;
    // (2.5 - 0.62 x 0.5) / (0.5 / 0.8126 + 1 - 0.5)
    QVERIFY(near(toleratedBar(tissues, 0.5), 1.963581, 1e-6));
    // No gradient at all: the tissue's own pressure.
    QVERIFY(near(toleratedBar(tissues, 0.0), 2.5, 1e-9));
}

void TestDecompression::coefficientsOfBothGasesAreWeighedByTheirPressures() {
    Tissues tissues = emptyTissues();
    tissues.n2[fifth] = 1.5;
    tissues.he[fifth] = 1.0;
    // a = (1.5 x 0.62 + 0.922) / 2.5 = 0.7408, b = (1.5 x 0.8126 + 0.7582) / 2.5 = 0.79084, (2.5 - a) x b
    QVERIFY(near(toleratedBar(tissues, 1.0), 1.391246, 1e-6));
}

void TestDecompression::theCeilingEasesTowardsTheSurface() {
    Decompression state(1.0, {0.3, 0.85}, 3);
    QCOMPARE(state.ceiling(0), 0.0);
    const Inert bottom = inspiredOpen(5.0, 0.79, 0);
    state.load(Interval(30), bottom, bottom);
    QVERIFY(state.ceiling(40) > 10);
    QVERIFY(state.ceiling(40) < 25);
    QVERIFY(state.ceiling(12) < state.ceiling(40));
    QVERIFY(state.ceiling(3) < state.ceiling(12));
    // At the last stop the surface's factor is in force.
    QVERIFY(near(state.ceiling(3), std::max(0.0, (toleratedBar(state.tissues(), 0.85) - 1.0) * 10), 1e-9));
}

void TestDecompression::stopsAreMultiplesOfThreeNotAboveTheLast_data() {
    QTest::addColumn<double>("last");
    QTest::addColumn<double>("ceiling");
    QTest::addColumn<double>("stop");
    QTest::newRow("free") << 3.0 << 0.0 << 0.0;
    QTest::newRow("just not free") << 3.0 << 0.01 << 3.0;
    QTest::newRow("on the stop") << 3.0 << 9.0 << 9.0;
    QTest::newRow("below the stop") << 3.0 << 9.1 << 12.0;
    QTest::newRow("last stop at six") << 6.0 << 1.5 << 6.0;
}

void TestDecompression::stopsAreMultiplesOfThreeNotAboveTheLast() {
    QFETCH(double, last);
    QFETCH(double, ceiling);
    QFETCH(double, stop);
    QCOMPARE(Decompression(1.0, {}, last).stopFor(ceiling), stop);
}

void TestDecompression::theWayUpTakesLongerAfterALongerStay() {
    const auto air = [](double depth) { return inspiredOpen(1.0 + depth / 10, 0.79, 0); };
    double shorter = 0;
    for (const double minutes : {5.0, 15.0, 30.0, 60.0}) {
        Decompression state(1.0, {0.3, 0.8}, 3);
        state.load(Interval(minutes), air(40), air(40));
        const double needed = secondsToSurface(state, 40, air);
        QVERIFY(needed > shorter);
        shorter = needed;
    }
    // Without any ceiling it is the way alone: 19 m at 9 m, 17 m at 6 m and 4 m at 3 m a minute.
    Decompression fresh(1.0, {0.3, 0.8}, 3);
    const double bare = 60 * (19 / 9.0 + 17 / 6.0 + 4 / 3.0);
    QVERIFY(near(secondsToSurface(fresh, 40, [](double) { return Inert{0.7, 0}; }), bare, 30));
}

void TestDecompression::coefficientsGoEvenlyFromFastToSlow() {
    for (int i = 1; i < compartmentcount; ++i) {
        QVERIFY(zhl16c[i].n2halftime > zhl16c[i - 1].n2halftime);
        QVERIFY(zhl16c[i].hehalftime > zhl16c[i - 1].hehalftime);
        QVERIFY(zhl16c[i].n2a < zhl16c[i - 1].n2a);
        QVERIFY(zhl16c[i].n2b > zhl16c[i - 1].n2b);
        QVERIFY(zhl16c[i].heb > zhl16c[i - 1].heb);
        // Helium is the faster by the root of the molar masses' ratio.
        QVERIFY(near(zhl16c[i].n2halftime / zhl16c[i].hehalftime, std::sqrt(28.0 / 4.0), 0.02));
    }
}

QTEST_GUILESS_MAIN(TestDecompression)
#include "test_decompression.moc"
