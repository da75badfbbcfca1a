#include "simulator/divegenerator.h"

#include <QtTest>

#include <algorithm>
#include <cmath>

using namespace benthor::simulator;

namespace {

const std::vector<Dive>& dives() {
    static const std::vector<Dive> made = [] {
        std::vector<Dive> list;
        for (std::uint64_t seed = 1; seed <= 60; ++seed) {
            list.push_back(simulate(plannedDive(seed)));
        }
        return list;
    }();
    return made;
}

DivePlan decoPlan() {
    DivePlan plan;
    plan.maxdepthmetres = 45;
    plan.bottomminutes = 30;
    plan.site = Site::Wreck;
    return plan;
}

bool raised(const Dive& dive, Alarm alarm) {
    return std::any_of(dive.samples.begin(), dive.samples.end(),
                       [=](const Sample& s) { return s.has(alarm); });
}

double atBottomOf(const Dive& dive, double Sample::*value) {
    return (*std::max_element(dive.samples.begin(), dive.samples.end(),
                              [](const Sample& a, const Sample& b) { return a.depth < b.depth; })).*
           value;
}

} // namespace

class TestDiveModel : public QObject {
    Q_OBJECT

private slots:
    void depthStaysBetweenTheSurfaceAndThePlan();
    void theDiverMovesAsADiverCan();
    void theCeilingHoldsWhileTheDiverKeepsToThePlan();
    void aBrokenCeilingRaisesItsAlarm();
    void aFastAscentRaisesItsAlarm();
    void aDiveEndsAfloatWithAFreeSurface();
    void aSampleCountIsKeptAndTheDiverIsBackInTime_data();
    void aSampleCountIsKeptAndTheDiverIsBackInTime();
    void theOxygenInTheLoopStaysWithinReason();
    void theOxygenSettlesOnTheSetpoint();
    void theSetpointGoesFromLowToHighAndToTheLastStops();
    void goodCellsShowTheLoopEachInItsOwnWay();
    void aWeakCellLevelsOffAndRaisesItsAlarm();
    void pressuresAndFilterOnlyFall();
    void diluentGoesOnTheDescentAndOxygenAllTheWay();
    void theWaterIsColderBelowTheThermocline();
    void batteriesRunDownUnderLoad();
    void theWarmFrontMovesAlongTheSticks();
    void sticksReportInTurn();
    void tissuesHoldHeliumOnlyAfterTrimix();
    void aDeadSolenoidLetsTheOxygenFall();
    void bailOutChangesToTheOpenCircuitAndItsGases();
    void aHypoxicDiluentIsNotBreathedAtTheSurface();
    void theGapBetweenSamplesIsTheInterval_data();
    void theGapBetweenSamplesIsTheInterval();
    void onlyTheWaitAtTheSurfaceIsPredive();
    void plansOutOfRangeAreBroughtIntoIt();
};

void TestDiveModel::depthStaysBetweenTheSurfaceAndThePlan() {
    for (const Dive& dive : dives()) {
        for (const Sample& sample : dive.samples) {
            QVERIFY(sample.depth >= 0 && sample.depth <= dive.plan.maxdepthmetres);
        }
        QVERIFY(dive.maxdepth > 0.9 * dive.plan.maxdepthmetres);
    }
}

void TestDiveModel::theDiverMovesAsADiverCan() {
    for (const Dive& dive : dives()) {
        const double limit = dive.plan.lapse == Lapse::FastAscent ? 20.5 : 9.5;
        for (std::size_t i = 1; i < dive.samples.size(); ++i) {
            const double down = dive.samples[i].depth - dive.samples[i - 1].depth;
            const double minute = dive.plan.intervalseconds / 60.0;
            QVERIFY(down <= 31 * minute);
            QVERIFY(-down <= limit * minute);
        }
    }
}

void TestDiveModel::theCeilingHoldsWhileTheDiverKeepsToThePlan() {
    int withceiling = 0;
    for (const Dive& dive : dives()) {
        if (dive.plan.lapse == Lapse::BrokenCeiling) {
            continue;
        }
        for (const Sample& sample : dive.samples) {
            QVERIFY(sample.depth >= sample.ceiling - 0.1);
            withceiling += sample.ceiling > 3 ? 1 : 0;
        }
        QVERIFY(!raised(dive, Alarm::Ceiling));
    }
    QVERIFY(withceiling > 1000);
}

void TestDiveModel::aBrokenCeilingRaisesItsAlarm() {
    DivePlan plan = decoPlan();
    QVERIFY(!raised(simulate(plan), Alarm::Ceiling));
    plan.lapse = Lapse::BrokenCeiling;
    const Dive dive = simulate(plan);
    int above = 0;
    for (const Sample& sample : dive.samples) {
        QCOMPARE(sample.has(Alarm::Ceiling), sample.depth < sample.ceiling - 0.1);
        QVERIFY(sample.depth > sample.ceiling - 2.5);
        above += sample.has(Alarm::Ceiling) ? 1 : 0;
    }
    // About half a minute of it, and back.
    QVERIFY(above >= 2 && above <= 12);
    QCOMPARE(dive.samples.back().ceiling, 0.0);
}

void TestDiveModel::aFastAscentRaisesItsAlarm() {
    DivePlan plan = decoPlan();
    QVERIFY(!raised(simulate(plan), Alarm::Ascent));
    plan.lapse = Lapse::FastAscent;
    QVERIFY(raised(simulate(plan), Alarm::Ascent));
}

void TestDiveModel::aDiveEndsAfloatWithAFreeSurface() {
    for (const Dive& dive : dives()) {
        QCOMPARE(dive.samples.back().depth, 0.0);
        QCOMPARE(dive.samples.back().ceiling, 0.0);
        QVERIFY(dive.descendprob <= 9);
        QVERIFY(toleratedBar(dive.tissues, dive.plan.factors.high + 0.02) <= dive.plan.surfacembar / 1000);
    }
}

void TestDiveModel::aSampleCountIsKeptAndTheDiverIsBackInTime_data() {
    QTest::addColumn<int>("samples");
    QTest::addColumn<int>("interval");
    QTest::newRow("an hour") << 360 << 10;
    QTest::newRow("twenty minutes") << 240 << 5;
    QTest::newRow("three hours") << 1080 << 10;
    QTest::newRow("the most, each second") << 24997 << 1;
    QTest::newRow("the most, each ten") << 24997 << 10;
    QTest::newRow("more than the most") << 25000 << 2;
}

void TestDiveModel::aSampleCountIsKeptAndTheDiverIsBackInTime() {
    QFETCH(int, samples);
    QFETCH(int, interval);
    const std::uint64_t onloop = 22;
    const std::uint64_t bailingout = 21;
    QVERIFY(!plannedDive(onloop).bailout && plannedDive(bailingout).bailout);
    for (const auto& [seed, depth] :
         {std::pair{onloop, 18.0}, {onloop, 40.0}, {bailingout, 18.0}, {bailingout, 40.0}}) {
        DivePlan plan = plannedDive(seed);
        plan.samples = samples;
        plan.intervalseconds = interval;
        plan.maxdepthmetres = depth;
        const Dive dive = simulate(plan);
        QCOMPARE(static_cast<int>(dive.samples.size()), samples);
        QCOMPARE(dive.samples.back().depth, 0.0);
        QVERIFY(dive.maxdepth > 0.9 * depth);
    }
}

void TestDiveModel::theOxygenInTheLoopStaysWithinReason() {
    for (const Dive& dive : dives()) {
        for (const Sample& sample : dive.samples) {
            QVERIFY(sample.loop > 0.3 && sample.loop < 1.75);
            QVERIFY(sample.po2 > 0.16 && sample.po2 < 1.75);
            QVERIFY(sample.loop <= dive.plan.surfacembar / 1000 + sample.depth / 10);
        }
    }
}

void TestDiveModel::theOxygenSettlesOnTheSetpoint() {
    DivePlan plan = decoPlan();
    const Dive dive = simulate(plan);
    int settled = 0;
    int bottom = 0;
    for (const Sample& sample : dive.samples) {
        if (sample.depth > 35 && sample.seconds > 480) {
            ++bottom;
            settled += std::abs(sample.po2 - plan.highsetpoint) < 0.06 ? 1 : 0;
        }
    }
    QVERIFY(bottom > 60);
    QVERIFY(settled > 0.9 * bottom);
}

void TestDiveModel::theSetpointGoesFromLowToHighAndToTheLastStops() {
    DivePlan plan = decoPlan();
    plan.decosetpoint = 1.4;
    const Dive dive = simulate(plan);
    std::vector<double> course;
    for (const Sample& sample : dive.samples) {
        if (course.empty() || course.back() != sample.setpoint) {
            course.push_back(sample.setpoint);
        }
    }
    QCOMPARE(course, (std::vector<double>{0.7, 1.3, 1.4, 0.7}));
    QCOMPARE(atBottomOf(dive, &Sample::setpoint), 1.3);
}

void TestDiveModel::goodCellsShowTheLoopEachInItsOwnWay() {
    for (const Dive& dive : dives()) {
        double spread = 0;
        for (const Sample& sample : dive.samples) {
            for (int i = 0; i < 3; ++i) {
                if (i != dive.plan.weakcell) {
                    QVERIFY(std::abs(sample.cells[i] - sample.loop) < 0.05 * sample.loop + 0.15);
                }
            }
            spread +=
                std::abs(sample.cells[0] - sample.cells[1]) + std::abs(sample.cells[1] - sample.cells[2]);
        }
        QVERIFY(spread / static_cast<double>(dive.samples.size()) > 0.004);
    }
}

void TestDiveModel::aWeakCellLevelsOffAndRaisesItsAlarm() {
    DivePlan plan = decoPlan();
    QVERIFY(!raised(simulate(plan), Alarm::CellDifference));
    plan.weakcell = 1;
    const Dive dive = simulate(plan);
    QVERIFY(raised(dive, Alarm::CellDifference));
    for (const Sample& sample : dive.samples) {
        QVERIFY(sample.cells[1] < 1.2);
    }
    // The other two outvote it.
    QVERIFY(atBottomOf(dive, &Sample::po2) > 1.2);
}

void TestDiveModel::pressuresAndFilterOnlyFall() {
    for (const Dive& dive : dives()) {
        for (std::size_t i = 1; i < dive.samples.size(); ++i) {
            QVERIFY(dive.samples[i].diluent <= dive.samples[i - 1].diluent);
            QVERIFY(dive.samples[i].oxygen <= dive.samples[i - 1].oxygen);
            QVERIFY(dive.samples[i].filter <= dive.samples[i - 1].filter);
        }
        QVERIFY(dive.samples.back().diluent > 10 && dive.samples.back().oxygen > 10);
        QVERIFY(dive.samples.back().filter >= 0 && dive.samples.front().filter <= 100);
    }
}

void TestDiveModel::diluentGoesOnTheDescentAndOxygenAllTheWay() {
    const Dive dive = simulate(decoPlan());
    const auto bottom = std::find_if(dive.samples.begin(), dive.samples.end(),
                                     [](const Sample& sample) { return sample.depth > 33; });
    const double start = dive.samples.front().diluent;
    QVERIFY(start - bottom->diluent > 0.5 * (start - dive.samples.back().diluent));
    // About a litre a minute out of three litres of cylinder.
    const double litres = (dive.samples.front().oxygen - dive.samples.back().oxygen) * 3;
    const double minutes = dive.samples.back().seconds / 60;
    QVERIFY(litres > 0.6 * minutes && litres < 2.5 * minutes);
}

void TestDiveModel::theWaterIsColderBelowTheThermocline() {
    DivePlan plan = decoPlan();
    plan.surfacetemperature = 20;
    plan.bottomtemperature = 8;
    plan.thermoclinemetres = 15;
    const Dive dive = simulate(plan);
    QVERIFY(atBottomOf(dive, &Sample::temperature) < 10);
    QVERIFY(dive.samples.front().temperature > 19);
    QVERIFY(dive.samples.back().temperature > 18);
}

void TestDiveModel::batteriesRunDownUnderLoad() {
    DivePlan plan = decoPlan();
    plan.surfacetemperature = 20;
    plan.bottomtemperature = 20;
    plan.samples = 3000;
    const Dive dive = simulate(plan);
    QVERIFY(dive.samples.front().mainbattery > 5.9 && dive.samples.front().mainbattery < 6.5);
    QVERIFY(dive.samples.back().mainbattery < dive.samples.front().mainbattery - 0.2);
    QVERIFY(dive.samples.back().backupbattery < dive.samples.front().backupbattery);
    QVERIFY(dive.samples.back().backupbattery > 3.2);
}

void TestDiveModel::theWarmFrontMovesAlongTheSticks() {
    DivePlan plan = decoPlan();
    plan.scrubbersticks = true;
    plan.maxdepthmetres = 20;
    plan.bottomminutes = 150;
    const Dive dive = simulate(plan);
    const auto warmest = [&](double share) {
        const auto at = static_cast<std::size_t>(share * static_cast<double>(dive.samples.size()));
        const auto& stick = dive.samples[at].stick;
        return std::max_element(stick.begin(), stick.end()) - stick.begin();
    };
    QVERIFY(warmest(0.15) <= 1);
    QVERIFY(warmest(0.5) > warmest(0.15));
    QVERIFY(warmest(0.9) > warmest(0.5));
    for (const Sample& sample : dive.samples) {
        for (const double degrees : sample.stick) {
            QVERIFY(degrees > plan.bottomtemperature && degrees < 85);
        }
    }
}

void TestDiveModel::sticksReportInTurn() {
    DivePlan plan = decoPlan();
    plan.scrubbersticks = true;
    const Dive dive = simulate(plan);
    // One stick changes little from turn to turn; two sticks differ by more.
    double same = 0;
    double other = 0;
    for (std::size_t i = 100; i + 3 < 200; ++i) {
        same += std::abs(dive.samples[i].stick[0] - dive.samples[i + 3].stick[0]);
        other += std::abs(dive.samples[i].stick[0] - dive.samples[i + 1].stick[0]);
    }
    QVERIFY(other > 2 * same);
}

void TestDiveModel::tissuesHoldHeliumOnlyAfterTrimix() {
    for (const Dive& dive : dives()) {
        const double helium = *std::max_element(dive.tissues.he.begin(), dive.tissues.he.end());
        QCOMPARE(helium > 0, dive.plan.trimix);
        for (const double n2 : dive.tissues.n2) {
            QVERIFY(n2 > 0 && n2 < 4);
        }
    }
}

void TestDiveModel::aDeadSolenoidLetsTheOxygenFall() {
    DivePlan plan = decoPlan();
    QVERIFY(!raised(simulate(plan), Alarm::LowPo2));
    plan.lapse = Lapse::DeadSolenoid;
    const Dive dive = simulate(plan);
    QVERIFY(raised(dive, Alarm::LowPo2));
    QCOMPARE(dive.status, 0);
}

void TestDiveModel::bailOutChangesToTheOpenCircuitAndItsGases() {
    DivePlan plan = decoPlan();
    plan.bailout = true;
    plan.lapse = Lapse::DeadSolenoid;
    const Dive dive = simulate(plan);
    QCOMPARE(dive.status, 1);
    bool open = false;
    std::vector<int> gases;
    for (const Sample& sample : dive.samples) {
        open = open || sample.has(Alarm::BailOut);
        if (gases.empty() || gases.back() != sample.gas) {
            gases.push_back(sample.gas);
        }
        if (open) {
            const double ambient = plan.surfacembar / 1000 + sample.depth / 10;
            QVERIFY(std::abs(sample.po2 - dive.gases[sample.gas].o2 / 100.0 * ambient) < 1e-9);
            QVERIFY(sample.depth <= maximumDepth(dive.gases[sample.gas]) + 1);
            QCOMPARE(sample.setpoint, plan.lowsetpoint);
        }
    }
    QVERIFY(open);
    QCOMPARE(gases, (std::vector<int>{0, 2, 3, 4}));
    QCOMPARE(dive.gases[3].o2, 50);
}

void TestDiveModel::aHypoxicDiluentIsNotBreathedAtTheSurface() {
    DivePlan plan;
    plan.trimix = true;
    plan.maxdepthmetres = 100;
    plan.bottomminutes = 20;
    const Dive dive = simulate(plan);
    QVERIFY(dive.gases[diluentplace].o2 < 16);
    QCOMPARE(dive.samples.front().gas, travelplace);
    QCOMPARE(dive.gases[travelplace].o2, 21);
    QCOMPARE(dive.samples.back().gas, diluentplace);
    QVERIFY(raised(dive, Alarm::GasSwitch));
}

void TestDiveModel::theGapBetweenSamplesIsTheInterval_data() {
    QTest::addColumn<int>("interval");
    for (const int interval : {1, 2, 3, 5, 10, 15, 60, 99}) {
        QTest::addRow("%d", interval) << interval;
    }
}

void TestDiveModel::theGapBetweenSamplesIsTheInterval() {
    QFETCH(int, interval);
    DivePlan plan;
    plan.intervalseconds = interval;
    plan.samples = 50;
    const Dive dive = simulate(plan);
    for (std::size_t i = 0; i < dive.samples.size(); ++i) {
        QVERIFY(std::abs(dive.samples[i].seconds - static_cast<double>(i + 1) * interval) < 1e-6);
    }
    QCOMPARE(dive.finishcode, plan.startcode + 50 * static_cast<std::uint64_t>(interval));
}

void TestDiveModel::onlyTheWaitAtTheSurfaceIsPredive() {
    for (const Dive& dive : dives()) {
        QVERIFY(dive.samples.front().has(Alarm::Predive));
        for (const Sample& sample : dive.samples) {
            QVERIFY(!sample.has(Alarm::Predive) || (sample.depth == 0.0 && sample.seconds < 90));
        }
    }
}

void TestDiveModel::plansOutOfRangeAreBroughtIntoIt() {
    DivePlan plan;
    plan.samples = -5;
    plan.intervalseconds = 0;
    plan.maxdepthmetres = -3;
    plan.filterpercent = 1000;
    plan.bottomminutes = 2;
    const Dive dive = simulate(plan);
    QVERIFY(!dive.samples.empty());
    QCOMPARE(dive.plan.intervalseconds, 1);
    QCOMPARE(dive.plan.maxdepthmetres, 1.0);
    QVERIFY(dive.samples.front().filter <= 100);
}

QTEST_GUILESS_MAIN(TestDiveModel)
#include "test_divemodel.moc"
