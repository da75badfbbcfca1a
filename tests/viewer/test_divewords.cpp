// A dive told to those who do not see its chart.

#include "viewer/divewords.h"

#include "profile/diveprofile.h"

#include <QtTest>

using namespace benthor::profile;
using namespace benthor::viewer;

namespace {

/// Ten samples of a dive to 40 m on two gases, the first record at row 4.
struct Dive {
    Dive() {
        for (int row = kFirstSample; row <= 13; ++row) {
            const int place = row - 1;
            profile.depthneg.set(place, row == 9 ? -40.26F : -10.0F);
            profile.gasnum.set(place, row < 10 ? 1.0F : 0.0F);
            profile.po2.set(place, row == 6 ? 0.4F : row == 11 ? 1.45F : 1.2F);
            profile.temp.set(place, row == 12 ? 7.0F : 9.0F);
        }
        gases.gaso2[0] = 21;
        gases.gaso2[1] = 18;
        names[0] = QStringLiteral("Air");
        names[1] = QStringLiteral("TX18/45");
        head.txtdiveid = QStringLiteral("D0000001");
        head.txttimedown = QStringLiteral("15/Jul/2008 08:55:17");
    }
    ToldDive told(bool feet = false) const { return {profile, gases, names, 13, 10, feet}; }
    void log(std::initializer_list<int> boxes) {
        for (const int box : boxes) {
            profile.enabled.set(static_cast<std::size_t>(box));
        }
    }

    DiveProfile profile;
    GasArrays gases;
    GasNames names;
    HeaderBoxes head;
};

} // namespace

class TestDiveWords : public QObject {
    Q_OBJECT

private slots:
    void aTimeIsSpokenWithoutItsZeros() {
        QCOMPARE(spokenTime(0), QStringLiteral("0 seconds"));
        QCOMPARE(spokenTime(61), QStringLiteral("1 minute 1 second"));
        QCOMPARE(spokenTime(2690), QStringLiteral("44 minutes 50 seconds"));
        QCOMPARE(spokenTime(7200), QStringLiteral("2 hours"));
        QCOMPARE(spokenTime(3605), QStringLiteral("1 hour 5 seconds"));
        QCOMPARE(spokenTime(-3), QStringLiteral("0 seconds"));
    }

    void aSampleTellsAllThatWasLoggedInItsOrder() {
        Dive dive;
        dive.log({3, 5, 9, 10, 11});
        dive.profile.cella.set(8, 1.18F);
        dive.profile.cellb.set(8, 1.2F);
        dive.profile.cellc.set(8, 1.22F);
        dive.profile.setpoint.set(8, 1.3F);
        dive.profile.ceilingneg.set(8, -6.0F);
        dive.profile.mark.set(8, 1);
        dive.profile.alarms.add(9, "LOW PO2");
        dive.profile.alarms.add(9, "HIGH RATE");
        dive.profile.alarmcount.set(8, 2);
        QCOMPARE(
            sampleInWords(dive.told(), 9),
            QStringLiteral("1 minute 30 seconds: depth 40.3 m; PO2 1.20 bar; cells 1.18, 1.20, 1.22 bar; "
                           "setpoint 1.30 bar; ceiling 6.0 m; gas TX18/45; water 9 °C; alarm: LOW PO2, "
                           "HIGH RATE; mark"));
    }

    void theUnitsAreThoseShown() {
        Dive dive;
        dive.log({3, 5, 11});
        dive.profile.ceilingneg.set(8, -20.0F);
        QCOMPARE(sampleInWords(dive.told(true), 9),
                 QStringLiteral("1 minute 30 seconds: depth 40.3 ft; PO2 1.20 bar; ceiling 20.0 ft; gas "
                                "TX18/45; water 9 °F"));
    }

    void whatWasNotLoggedIsNotTold() {
        const Dive dive;
        // 18 % of 2 bar
        QCOMPARE(sampleInWords(dive.told(), 4),
                 QStringLiteral("40 seconds: depth 10.0 m; PO2 0.36 bar as computed; gas TX18/45"));
        Dive shallow;
        shallow.log({3, 11});
        shallow.profile.gasnum.set(4, 20);
        QCOMPARE(sampleInWords(shallow.told(), 5),
                 QStringLiteral("50 seconds: depth 10.0 m; PO2 1.20 bar; no ceiling; gas unknown"));
    }

    void aRowWithoutASampleSaysSo() {
        const Dive dive;
        QCOMPARE(sampleInWords(dive.told(), 3), QStringLiteral("30 seconds: before the first sample"));
        QCOMPARE(sampleInWords(dive.told(), 0), QString());
        QCOMPARE(sampleInWords(dive.told(), 14), QString());
        QCOMPARE(diveInWords({dive.profile, dive.gases, dive.names, 0, 10, false}, dive.head), QString());
    }

    void beforeTheDiveIsNoAlarm() {
        Dive dive;
        dive.profile.alarms.add(5, "PREDIVE");
        dive.profile.alarmcount.set(4, 1);
        QCOMPARE(alarmsInWords(dive.profile, 5), QString());
        dive.profile.alarms.add(6, "LOW PO2");
        dive.profile.alarmcount.set(5, 1);
        QCOMPARE(alarmsInWords(dive.profile, 6), QStringLiteral("LOW PO2"));
    }

    void aDiveIsToldInSentences() {
        Dive dive;
        dive.log({3, 5, 11});
        dive.profile.ceilingneg.set(10, -3.0F);
        dive.profile.alarms.add(8, "LOW PO2");
        dive.profile.alarmcount.set(7, 1);
        dive.profile.mark.set(6, 1);
        dive.profile.mark.set(9, 1);
        QCOMPARE(
            diveInWords(dive.told(), dive.head),
            QStringLiteral(
                "Dive D0000001 of 15/Jul/2008 08:55:17, 2 minutes 10 seconds, 10 samples every 10 seconds. "
                "Deepest at 1 minute 30 seconds: 40.3 m. "
                "Breathed: TX18/45 from the start, Air at 1 minute 40 seconds. "
                "PO2 from 0.40 bar at 1 minute to 1.45 bar at 1 minute 50 seconds. "
                "Deepest ceiling 3.0 m at 1 minute 50 seconds. "
                "Water from 7 °C to 9 °C. "
                "1 sample with alarms, the first at 1 minute 20 seconds: LOW PO2; 2 marks."));
    }

    void aPlainDiveSaysWhatItLacks() {
        Dive dive;
        const QString told = diveInWords(dive.told(), dive.head);
        QVERIFY(told.contains(QStringLiteral("No ceiling. No alarms, no marks.")));
        QVERIFY(!told.contains(QStringLiteral("Water")));
    }

    void ofManyChangesOfGasTheRestIsCounted() {
        Dive dive;
        for (int row = kFirstSample; row <= 13; ++row) {
            dive.profile.gasnum.set(row - 1, static_cast<float>(row % 2));
        }
        QVERIFY(diveInWords(dive.told(), dive.head).contains(QStringLiteral(", 2 more changes.")));
    }
};

QTEST_APPLESS_MAIN(TestDiveWords)
#include "test_divewords.moc"
