#include "wirereaders.h"

#include "simulator/divegenerator.h"

#include <QElapsedTimer>
#include <QtTest>

#include <set>

using namespace benthor::simulator;

namespace {

// What some reader of the device's bytes looks for. None may stand in the profile.
const QList<QByteArray> marks = {"Gas",    "Start",  "OTU",     "SN=",         "ver",    "PPP",    "Wait..",
                                 "Finish", "Status", "Recint",  "Descend",     "DAtmos", "DStack", "DUsage",
                                 "MaxD",   "Tissue", "Profile", "HPCylinder",  "+^+",    "+++",    "+=+",
                                 "V3.",    "v3.",    "A079",    "backsenddone"};

QByteArray profileOf(const QByteArray& text) {
    return text.mid(text.indexOf("Profile") + 7);
}

DivePlan planOf(int samples) {
    DivePlan plan = plannedDive(11);
    plan.samples = samples;
    return plan;
}

QList<DivePlan> manyPlans() {
    QList<DivePlan> plans;
    for (std::uint64_t seed = 1; seed <= 80; ++seed) {
        plans.append(plannedDive(seed));
    }
    // The corners: every switch, the shallowest and the deepest, the shortest and the longest interval.
    for (int corner = 0; corner < 16; ++corner) {
        DivePlan plan = plannedDive(1000 + static_cast<std::uint64_t>(corner));
        plan.scrubbersticks = (corner & 1) != 0;
        plan.co2sensor = true;
        plan.trimix = (corner & 2) != 0;
        plan.maxdepthmetres = (corner & 4) != 0 ? 280 : 2;
        plan.intervalseconds = (corner & 8) != 0 ? 99 : 1;
        plan.bottomminutes = 12;
        plan.samples = (corner & 8) != 0 ? 0 : 900;
        plan.bailout = true;
        plan.weakcell = 1;
        plan.lapse = Lapse::DeadSolenoid;
        plan.surfacetemperature = 4;
        plan.bottomtemperature = 2;
        plan.filterpercent = 5;
        plans.append(plan);
    }
    return plans;
}

struct Printed {
    Dive dive;
    QByteArray text;
};

const std::vector<Printed>& manyDives() {
    static const std::vector<Printed> made = [] {
        std::vector<Printed> list;
        for (const DivePlan& plan : manyPlans()) {
            Dive dive = simulate(plan);
            QByteArray text = diveText(dive);
            list.push_back({std::move(dive), std::move(text)});
        }
        return list;
    }();
    return made;
}

} // namespace

class TestDiveText : public QObject {
    Q_OBJECT

private slots:
    void theHeadScanReadsEveryValue();
    void theWholeHeadFitsTheThousandRounds();
    void nothingBehindProfileActsInTheHeadScan();
    void theDirectoryWalkReadsTheSameValues();
    void severalHeadsMakeADirectory();
    void theStoresChecksFindNoFault();
    void theLongestHeadValuesStillFit();
    void theProfileDecodesToExactlyTheSamples_data();
    void theProfileDecodesToExactlyTheSamples();
    void everyReadingStandsUnderItsLetter();
    void linesEndInCarriageReturnAndLineFeed();
    void noLineGoesBeyondFieldEighteen();
    void aDiveCarriesEitherPowerOrSticks();
    void noMarkOfAnyReaderStandsInTheProfile();
    void alarmWordsEndInNoDigit();
    void alarmsBeyondTheRoomOfALineLeaveTheMostUrgent();
    void depthBeyond192MetresWrapsAndComesBack();
    void theSameSeedGivesTheSameBytes();
    void differentSeedsGiveDifferentBytes();
    void theLongestDiveIsMadeInGoodTime();
};

void TestDiveText::theHeadScanReadsEveryValue() {
    for (const auto& [dive, text] : manyDives()) {
        const DivePlan& plan = dive.plan;
        const HeadScan scan = scanHead(text);
        QCOMPARE(scan.values.value("ver="), plan.version);
        QCOMPARE(scan.values.value("Recint=").toInt(), plan.intervalseconds);
        QCOMPARE(scan.values.value("SN="), plan.serial);
        QCOMPARE(scan.values.value("Start").toULongLong(), plan.startcode);
        QCOMPARE(scan.values.value("Finish").toULongLong(),
                 plan.startcode + dive.samples.size() * static_cast<quint64>(plan.intervalseconds));
        QCOMPARE(scan.values.value("Status").toInt(), dive.status);
        QCOMPARE(scan.values.value("Descend").toInt(), dive.descendprob);
        QCOMPARE(scan.values.value("DAtmos").toInt(), qRound(plan.surfacembar));
        QCOMPARE(scan.values.value("DStack").toInt(), dive.stackseconds);
        QCOMPARE(scan.values.value("DUsage").toInt(), dive.usageseconds);
        QVERIFY(std::abs(scan.values.value("MaxD").toDouble() - dive.maxdepth) <= 0.051);
        QCOMPARE(scan.values.value("OTU").toInt(), qRound(dive.otu));
        QCOMPARE(scan.values.value("HPCylinder").toInt(), qRound(plan.diluentbar));
        QCOMPARE(scan.gases.size(), 10);
        QCOMPARE(scan.tissues.size(), 16);
        QCOMPARE(scan.gases[9][0], QByteArray("0009"));
        QCOMPARE(scan.tissues[15][0], QByteArray("0015"));
    }
}

void TestDiveText::theWholeHeadFitsTheThousandRounds() {
    for (const auto& [dive, text] : manyDives()) {
        const HeadScan scan = scanHead(text);
        QVERIFY(scan.roundsatprofile > 0);
        QVERIFY(scan.roundsatprofile < 500);
        for (const char* keyword : {"ver=", "Recint=", "SN=", "Start", "Finish", "Status", "Descend",
                                    "DAtmos", "DStack", "DUsage", "MaxD", "OTU", "HPCylinder", "Profile"}) {
            QCOMPARE(scan.found.value(keyword), 1);
        }
    }
}

void TestDiveText::nothingBehindProfileActsInTheHeadScan() {
    for (const auto& [dive, text] : manyDives()) {
        QCOMPARE(scanHead(text).actionsbehindprofile, 0);
    }
}

void TestDiveText::theDirectoryWalkReadsTheSameValues() {
    for (const auto& [dive, text] : manyDives()) {
        const HeadScan scan = scanHead(text);
        const QMap<QByteArray, QByteArray> columns = walkDirectory(headText(dive));
        QCOMPARE(columns.value("ver"), QByteArray("1"));
        for (const char* label :
             {"Start", "Finish", "MaxD", "Status", "OTU", "HPCylinder", "DStack", "DUsage", "DAtmos"}) {
            QVERIFY(columns.contains(label));
            QCOMPARE(columns.value(label), scan.values.value(label));
        }
        QCOMPARE(columns.value("Descend prob"), scan.values.value("Descend"));
        QCOMPARE(columns.value("Recint="), scan.values.value("Recint=").replace("0", ""));
    }
}

void TestDiveText::severalHeadsMakeADirectory() {
    QByteArray directory;
    for (std::uint64_t seed = 1; seed <= 5; ++seed) {
        directory += headText(simulate(plannedDive(seed)));
    }
    QVERIFY(!directory.contains("End"));
    QVERIFY(!directory.toUpper().contains("V3."));
    QCOMPARE(walkDirectory(directory + "End").value("ver"), QByteArray("5"));
}

void TestDiveText::theStoresChecksFindNoFault() {
    for (const auto& [dive, text] : manyDives()) {
        QCOMPARE(rowFaults(scanHead(text)), QStringList());
    }
}

void TestDiveText::theLongestHeadValuesStillFit() {
    DivePlan plan = plannedDive(3);
    plan.samples = 24997;
    plan.intervalseconds = 99;
    plan.maxdepthmetres = 280;
    plan.trimix = true;
    plan.startcode = 9999000000;
    plan.version = "V2.31abc";
    const Dive dive = simulate(plan);
    const HeadScan scan = scanHead(diveText(dive));
    QCOMPARE(rowFaults(scan), QStringList());
    QCOMPARE(scan.values.value("Start"), QByteArray("9999000000"));
    const QMap<QByteArray, QByteArray> columns = walkDirectory(headText(dive));
    QCOMPARE(columns.value("Start"), QByteArray("9999000000"));
    QCOMPARE(columns.value("DUsage"), QByteArray("9999"));
    QCOMPARE(columns.value("OTU").toInt(), qRound(dive.otu));
    QVERIFY(columns.contains("MaxD"));
}

void TestDiveText::theProfileDecodesToExactlyTheSamples_data() {
    QTest::addColumn<int>("samples");
    for (const int samples : {1, 2, 3, 10, 60, 500, 24997, 25000}) {
        QTest::addRow("%d", samples) << samples;
    }
}

void TestDiveText::theProfileDecodesToExactlyTheSamples() {
    QFETCH(int, samples);
    const Dive dive = simulate(planOf(samples));
    QCOMPARE(static_cast<int>(dive.samples.size()), samples);
    const DecodedProfile profile = decodeProfile(diveText(dive));
    QVERIFY(profile.ended);
    QCOMPARE(profile.records.size(), samples);
    QCOMPARE(profile.dropped, 0);
    for (int i = 0; i < samples; ++i) {
        QVERIFY(std::abs(profile.records[i].depth - dive.samples[static_cast<std::size_t>(i)].depth) < 0.053);
    }
}

void TestDiveText::everyReadingStandsUnderItsLetter() {
    Sample sample;
    sample.depth = 30;
    sample.gas = 2;
    sample.po2 = 1.294;
    sample.cells = {1.3, 1.28, 0.07};
    sample.setpoint = 0.7;
    sample.ceiling = 6.04;
    sample.temperature = 11.6;
    sample.filter = 98.46;
    sample.backupbattery = 3.6;
    sample.mainbattery = 6.21;
    sample.diluent = 180.4;
    sample.oxygen = 90.6;
    sample.co2 = 0.52;
    sample.stick = {20, 21.2, 30, 40, 50, 45, 33, 22};
    sample.mark = true;
    sample.raise(Alarm::Ceiling);
    DivePlan plan;
    // 30 / 0.09375 = 320
    QCOMPARE(sampleLine(sample, plan, 7),
             QByteArray("7,320,2,129,M1,T12,A985,B360,C621,D180,E91,F130,G128,H7,I70,J6,CEILING!"));
    plan.co2sensor = true;
    sample.ceiling = 6.06;
    QCOMPARE(sampleLine(sample, plan, 7),
             QByteArray("7,320,2,129,M1,T12,A985,B360,C621,D180,E91,F130,G128,H7,I70,J6.1,z52,CEILING!"));
    plan.scrubbersticks = true;
    QCOMPARE(sampleLine(sample, plan, 7),
             QByteArray("7,320,2,129,M1,T12,C6.1,S20,T21,U30,V40,W50,X45,Y33,Z22,F130,G128,H7,CEILING!"));
}

void TestDiveText::linesEndInCarriageReturnAndLineFeed() {
    const QByteArray text = diveText(simulate(plannedDive(4)));
    QCOMPARE(text.count('\r'), text.count("\r\n"));
    QCOMPARE(text.count('\n'), text.count("\r\n"));
    QVERIFY(text.endsWith("\r\nEnd\r\n"));
    QCOMPARE(text.count("End"), 1);
    QVERIFY(text.startsWith("ver="));
}

void TestDiveText::noLineGoesBeyondFieldEighteen() {
    for (const auto& [dive, text] : manyDives()) {
        QVERIFY(decodeProfile(text).mostfields <= 19);
    }
    Sample crowded;
    crowded.alarms = (1U << alarmkinds) - 1;
    for (const bool sticks : {false, true}) {
        for (const bool co2 : {false, true}) {
            DivePlan plan;
            plan.scrubbersticks = sticks;
            plan.co2sensor = co2;
            QCOMPARE(sampleLine(crowded, plan, 1).count(','), 18);
        }
    }
}

void TestDiveText::aDiveCarriesEitherPowerOrSticks() {
    for (const auto& [dive, text] : manyDives()) {
        QSet<char> letters;
        for (const DecodedRecord& record : decodeProfile(text).records) {
            for (const QByteArray& field : record.fields.mid(7)) {
                if (QChar::isDigit(static_cast<uchar>(field.back()))) {
                    letters.insert(field.front());
                }
            }
        }
        for (const char letter : QByteArray("BCDEIJ")) {
            QCOMPARE(letters.contains(letter), !dive.plan.scrubbersticks);
        }
        for (const char letter : QByteArray("STUVWXYZ")) {
            QCOMPARE(letters.contains(letter), dive.plan.scrubbersticks);
        }
        QVERIFY(letters.contains('F') && letters.contains('G') && letters.contains('H'));
        QCOMPARE(letters.contains('z'), dive.plan.co2sensor && !dive.plan.scrubbersticks);
    }
}

void TestDiveText::noMarkOfAnyReaderStandsInTheProfile() {
    for (const auto& [dive, text] : manyDives()) {
        const QByteArray profile = profileOf(text);
        for (const QByteArray& mark : marks) {
            QVERIFY2(!profile.contains(mark), mark.constData());
        }
        QCOMPARE(profile.indexOf("End"), profile.size() - 5);
    }
}

void TestDiveText::alarmWordsEndInNoDigit() {
    std::set<QByteArray> words;
    for (int i = 0; i < alarmkinds; ++i) {
        const QByteArray word = alarmWord(static_cast<Alarm>(i)).toByteArray();
        QVERIFY(!word.isEmpty());
        QVERIFY(word.back() < '0' || word.back() > '9');
        QVERIFY(!word.contains(',') && !word.contains("End"));
        for (const QByteArray& mark : marks) {
            QVERIFY2(!word.contains(mark), word.constData());
        }
        words.insert(word);
    }
    QCOMPARE(words.size(), std::size_t{alarmkinds});
    QVERIFY(words.count("PREDIVE") == 1);
}

void TestDiveText::alarmsBeyondTheRoomOfALineLeaveTheMostUrgent() {
    Sample sample;
    sample.raise(Alarm::GasSwitch);
    sample.raise(Alarm::LowPo2);
    sample.raise(Alarm::Filter);
    sample.raise(Alarm::Ascent);
    DivePlan plan;
    QVERIFY(sampleLine(sample, plan, 1).endsWith(",LOW PO2!,ASCENT!,FILTER LOW"));
    plan.co2sensor = true;
    QVERIFY(sampleLine(sample, plan, 1).endsWith(",LOW PO2!,ASCENT!"));
    plan.scrubbersticks = true;
    QVERIFY(sampleLine(sample, plan, 1).endsWith(",H0,LOW PO2!"));
}

void TestDiveText::depthBeyond192MetresWrapsAndComesBack() {
    DivePlan plan = plannedDive(5);
    plan.trimix = true;
    plan.maxdepthmetres = 230;
    plan.bottomminutes = 14;
    plan.intervalseconds = 20;
    const Dive dive = simulate(plan);
    QVERIFY(dive.maxdepth > 220);
    const DecodedProfile profile = decodeProfile(diveText(dive));
    bool wrapped = false;
    for (std::size_t i = 0; i < dive.samples.size(); ++i) {
        const DecodedRecord& record = profile.records[static_cast<qsizetype>(i)];
        const int count = record.fields[1].toInt();
        QVERIFY(count >= 0 && count < 2048);
        QVERIFY(std::abs(record.depth - dive.samples[i].depth) < 0.06);
        wrapped = wrapped || (dive.samples[i].depth > 193 && count < 500);
    }
    QVERIFY(wrapped);
}

void TestDiveText::theSameSeedGivesTheSameBytes() {
    for (std::uint64_t seed = 1; seed <= 10; ++seed) {
        QCOMPARE(diveText(simulate(plannedDive(seed))), diveText(simulate(plannedDive(seed))));
    }
}

void TestDiveText::differentSeedsGiveDifferentBytes() {
    std::set<QByteArray> profiles;
    for (std::uint64_t seed = 1; seed <= 40; ++seed) {
        profiles.insert(profileOf(diveText(simulate(plannedDive(seed)))));
    }
    QCOMPARE(profiles.size(), std::size_t{40});
    // The same plan with another seed is another day at the same place.
    DivePlan plan;
    const QByteArray one = profileOf(diveText(simulate(plan)));
    plan.seed = 2;
    QVERIFY(profileOf(diveText(simulate(plan))) != one);
}

void TestDiveText::theLongestDiveIsMadeInGoodTime() {
    QElapsedTimer timer;
    timer.start();
    QVERIFY(diveText(simulate(planOf(24997))).size() > 24997 * 50);
    // A quarter of a second on the machine of the day; the rest is room for sanitizers and busy machines.
    QVERIFY(timer.elapsed() < 8000);
}

QTEST_GUILESS_MAIN(TestDiveText)
#include "test_divetext.moc"
