// What a file of ours says, read again, is what the decoder gave.

#include "divefiles/importer.h"
#include "platform/textformat.h"
#include "tests/exports/uddfworld.h"
#include "tests/support/programfixture.h"

#include <QDirIterator>

using namespace benthor;
using namespace benthor::exports;
using tests::MadeDive;
using tests::ReadSample;
using tests::Written;

namespace {

constexpr double kHalfPascal = 0.000005; ///< bar

bool isNear(double read, double meant, double within) {
    return std::abs(read - meant) <= within + std::abs(meant) * 1e-12;
}

/// A reading that is left out where it is below 0 reads as 0, as one that is not there does.
bool isBar(double read, float meant) {
    return isNear(read, std::max(meant, 0.0F), kHalfPascal);
}

struct Difference {
    const profile::DiveProfile& profile;
    const ReadSample& read;
    int sample;

    float at(const profile::SampleArray& array) const { return array[sample - 1]; }

    QString readings(double interval, bool temperature) const {
        const struct {
            const char* name;
            bool same;
        } all[]{{"time", isNear(read.time, sample * interval, 1e-9)},
                {"depth", static_cast<float>(read.depth) == std::max(at(profile.depthpos), 0.0F)},
                {"ceiling", static_cast<float>(read.ceiling) == std::max(-at(profile.ceilingneg), 0.0F)},
                {"po2", isBar(read.po2, at(profile.po2))},
                {"setpoint", isBar(read.setpoint, at(profile.setpoint))},
                {"cell a", isBar(read.cells[0], at(profile.cella))},
                {"cell b", isBar(read.cells[1], at(profile.cellb))},
                {"cell c", isBar(read.cells[2], at(profile.cellc))},
                {"oxygen", isBar(read.oxygen, at(profile.hpo2))},
                {"diluent", isBar(read.diluent, at(profile.hpdil))},
                {"temperature", temperature && at(profile.temp) >= -273.15
                                    ? isNear(read.celsius, at(profile.temp), 0.006)
                                    : qIsNaN(read.celsius)}};
        for (const auto& [name, same] : all) {
            if (!same) {
                return QLatin1String(name);
            }
        }
        return {};
    }

    QString words(const QString& dive) const {
        const float gas = at(profile.gasnum);
        const bool isGas = gas >= 0 && gas <= 30 && gas == std::floor(gas);
        if (read.mix != QStringLiteral("mix-%1-%2").arg(dive, isGas ? QString::number(gas) : "unknown")) {
            return QStringLiteral("gas");
        }
        if ((read.mode == u"closedcircuit") != (at(profile.setpoint) > 0)) {
            return QStringLiteral("mode");
        }
        static const QStringList known{"ascent",       "breath", "deco",        "error",  "link",
                                       "microbubbles", "rbt",    "skincooling", "surface"};
        QStringList alarms;
        QStringList marker;
        if (at(profile.mark) != 0) {
            marker += "mark " + platform::floatText(at(profile.mark));
        }
        for (const QString& token : alarmTokens(profile, sample)) {
            const bool isKnown = known.contains(token.trimmed().toLower());
            (isKnown ? alarms : marker) += isKnown ? token.trimmed().toLower() : token;
        }
        marker.removeAll(QString());
        bool replaced = false;
        return read.alarms != alarms                                 ? QStringLiteral("alarms")
               : read.marker != xmlText(marker.join("; "), replaced) ? QStringLiteral("marker")
                                                                     : QString();
    }
};

/// The first thing in which the file differs from the dive, or nothing.
QString difference(const tests::Element& element, const WholeDive& dive, double interval) {
    const std::vector<ReadSample> samples = tests::samplesOf(element);
    const int expected = dive.samples() > 0 ? dive.samples() + 1 : 0;
    if (static_cast<int>(samples.size()) != expected) {
        return QStringLiteral("%1 waypoints for %2 records").arg(samples.size()).arg(dive.samples());
    }
    bool temperature = false;
    for (int sample = profile::kFirstSample; sample <= dive.lastsample(); ++sample) {
        temperature = temperature || dive.profile.temp[sample - 1] != 0;
    }
    for (int sample = profile::kFirstSample; sample <= dive.lastsample(); ++sample) {
        const auto at = static_cast<size_t>(sample - profile::kFirstSample + 1);
        const Difference difference{dive.profile, samples[at], sample};
        for (const QString& what : {difference.readings(interval, temperature),
                                    difference.words(element.attributes["id"].mid(2))}) {
            if (!what.isEmpty()) {
                return QStringLiteral("%1 of sample %2").arg(what).arg(sample);
            }
        }
    }
    return {};
}

} // namespace

class TestUddfRoundTrip : public QObject {
    Q_OBJECT

private slots:
    void severalHundredRandomDives();
    void theDivesOfTheVectors();
    void theUnitOfTheScreenIsNoMatter();
    void asManySamplesAsADiveCanHave();
};

void TestUddfRoundTrip::severalHundredRandomDives() {
    tests::RandomRecords random(20260702);
    std::vector<MadeDive> dives;
    const QDateTime first({1999, 1, 1}, {6, 0}, Qt::UTC);
    for (int number = 1; number <= 400; ++number) {
        MadeDive& dive = dives.emplace_back(QStringLiteral("D%1").arg(number, 7, 10, QLatin1Char('0')));
        const int gases = random.below(11);
        for (int gas = 0; gas < gases; ++gas) {
            const int nitrogen = random.below(100);
            dive.gas(QString::number(nitrogen), QString::number(random.below(100 - nitrogen)),
                     QString::number(random.below(1500)));
        }
        dive.set("Interval", QString::number(1 + random.below(99)));
        dive.set("startdate", first.addSecs(20000 * number).toString("yyyy-MM-dd HH:mm:ss"));
        dive.set("site", QStringLiteral("Site %1").arg(random.below(30)));
        dive.buddy(QStringLiteral("Buddy %1").arg(random.below(30)));
        dive.records(random.make(random.below(60), 12));
    }
    const Written written(dives);
    QCOMPARE(written.broken(), QString());
    QCOMPARE(tests::divesOf(written.root).size(), dives.size());
    for (size_t number = 0; number < dives.size(); ++number) {
        const WholeDive dive = dives[number].whole();
        const QString what = difference(written.dive(number), dive, *dive.figures.interval);
        QVERIFY2(what.isEmpty(), qPrintable(dive.figures.id + ": " + what));
    }
}

void TestUddfRoundTrip::theDivesOfTheVectors() {
    int count = 0;
    QDirIterator files(QStringLiteral(BENTHOR_TEST_DATA "/dives"), {"*.txt"}, QDir::Files);
    std::vector<MadeDive> dives;
    while (files.hasNext()) {
        QFile file(files.next());
        QVERIFY(file.open(QIODevice::ReadOnly));
        dives.push_back(MadeDive(QStringLiteral("D%1").arg(++count, 7, 10, QLatin1Char('0')))
                            .gas("79")
                            .file(file.readAll()));
    }
    QVERIFY(count > 80);
    const Written written(dives);
    QCOMPARE(written.broken(), QString());
    for (size_t number = 0; number < dives.size(); ++number) {
        const QString what = difference(written.dive(number), dives[number].whole(), 10);
        QVERIFY2(what.isEmpty(), qPrintable(QString::number(number + 1) + ": " + what));
    }
}

void TestUddfRoundTrip::theUnitOfTheScreenIsNoMatter() {
    const tests::ProgramFixture world;
    world.putWaiting(QStringLiteral("Dive000001.txt"), tests::goodDive());
    divefiles::ImportState state;
    divefiles::ImportScreen screen;
    QCOMPARE(divefiles::importdives(world.folder, state, screen), divefiles::ImportEnd::Done);
    const auto bytes = [&world] {
        DiveReader reader(process().database, world.folder);
        QByteArray written;
        QBuffer buffer(&written);
        buffer.open(QIODevice::WriteOnly);
        UddfWriter writer(buffer, QString(), QDateTime());
        writer.begin();
        writer.add(*reader.read(reader.identifiers().first()));
        writer.end();
        return written;
    };
    process().database.execute("UPDATE Display SET Display = 'metre'");
    const QByteArray metric = bytes();
    process().database.execute("UPDATE Display SET Display = 'Feet'");
    process().depthunit = process().unitoverride = QStringLiteral("Feet");
    const QByteArray feet = bytes();
    process().depthunit = process().unitoverride = QString();
    QVERIFY(metric.contains("<waypoint>"));
    QCOMPARE(feet, metric);
}

void TestUddfRoundTrip::asManySamplesAsADiveCanHave() {
    const MadeDive dive = MadeDive().gas("79").records(tests::RandomRecords(9).make(25000, 2));
    const Written written(dive);
    QCOMPARE(dive.whole().lastsample(), profile::kMostSamples);
    QCOMPARE(written.broken(), QString());
    QCOMPARE(difference(written.dive(), dive.whole(), 10), QString());
}

QTEST_GUILESS_MAIN(TestUddfRoundTrip)
#include "test_uddf_roundtrip.moc"
