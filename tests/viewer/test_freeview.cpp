#include "profile/decoder.h"
#include "viewer/freeview.h"

#include <QtTest>

using namespace benthor;
using namespace benthor::profile;
using namespace benthor::viewer;

class TestFreeView : public QObject {
    Q_OBJECT

private slots:
    void theRowUnderThePointerKeepsItsPlace() {
        const RowRange view = zoomedAbout({0, 1000}, 250, 2, 1000);
        QCOMPARE(view.span(), 500.0);
        QCOMPARE((250 - view.first) / view.span(), 0.25);
        const RowRange back = zoomedAbout(view, 250, 0.5, 1000);
        QCOMPARE(back, (RowRange{0, 1000}));
        QVERIFY(isWholeDive(back, 1000));
        QVERIFY(!isWholeDive(view, 1000));
    }

    void theViewEndsWithTheDiveAndAtItsLeastSpan() {
        QCOMPARE(zoomedAbout({0, 1000}, 0, 1e9, 1000), (RowRange{0, kLeastSpan}));
        QCOMPARE(zoomedAbout({0, 1000}, 1000, 1e9, 1000), (RowRange{1000 - kLeastSpan, 1000}));
        QCOMPARE(zoomedAbout({500, 600}, 510, 1e-9, 1000), (RowRange{0, 1000}));
        QCOMPARE(movedBy({100, 200}, -500, 1000), (RowRange{0, 100}));
        QCOMPARE(movedBy({100, 200}, 5000, 1000), (RowRange{900, 1000}));
        QCOMPARE(zoomedAbout({0, 3}, 1, 5, 3), (RowRange{0, 3})); // shorter than the least span
    }

    void aRowThatLeavesTheViewIsFollowed() {
        QCOMPARE(followed({100, 200}, 150, 1000), (RowRange{100, 200}));
        QCOMPARE(followed({100, 200}, 201, 1000), (RowRange{176, 276}));
        QCOMPARE(followed({100, 200}, 1, 1000), (RowRange{0, 100}));
        QCOMPARE(followed({100, 200}, 999, 1000), (RowRange{900, 1000}));
    }

    void clicksGoByTheVisibleRange() {
        // As in the told views: the row at or left of the place.
        QCOMPARE(freeClickRow(0.5, {0, 100}, 100), 50);
        QCOMPARE(freeClickRow(0.0, {200, 300}, 1000), 200);
        QCOMPARE(freeClickRow(0.999, {200, 300}, 1000), 299);
        QCOMPARE(freeClickRow(-0.5, {0, 100}, 100), 1);
        QCOMPARE(freeClickRow(1.5, {0, 100}, 100), 98);
        QCOMPARE(freeStripRow(0.0, {0, 100}, 100), 1);
        QCOMPARE(freeStripRow(0.25, {200, 300}, 1000), 225);
        QCOMPARE(freeStripRow(2.0, {900, 1000}, 1000), 1000);
    }

    void timeLabelsAreQuartersOfTheView() {
        QCOMPARE(freeTimeLabels(10, {360, 720}),
                 (std::array<QString, 5>{"01:00:00", "01:15:00", "01:30:00", "01:45:00", "02:00:00"}));
    }

    void theStripsShowTheViewAlone() {
        QByteArray text = "Profile\r\n\r\n";
        for (int sample = 4; sample <= 103; ++sample) {
            const QByteArray gas = sample < 50 ? "0" : "1";
            text += ",100," + gas + ",70,M" + (sample == 60 ? "1" : "0") + ",T20,A500" +
                    (sample % 20 == 0 ? ",LOW" : "") + "\r\n";
        }
        const DiveProfile profile = decodeProfile(text + "End\r\n", false);
        const int lastsample = profile.lastsample - 1;
        const Strip strip = freeStrip(profile, lastsample, 55, {50, 90});
        const std::vector<StripLine> expected{{0.125, StripSign::Cursor, 10, platform::kToldGreen, 55},
                                              {0.25, StripSign::Alarm, 3, platform::kToldRed, 60},
                                              {0.25, StripSign::Mark, 2, platform::kToldBlue, 60},
                                              {0.75, StripSign::Alarm, 3, platform::kToldRed, 80}};
        QVERIFY(strip.lines == expected);
        GasNames gasname;
        gasname[0] = QStringLiteral("Air");
        gasname[1] = QStringLiteral("NX32");
        const GasRowNames names = gasRowNames(profile, gasname, lastsample);
        QCOMPARE(freeGasStrip(names, lastsample, {45.5, 60.2}).runs,
                 (std::vector<GasRun>{{"Air", 45, 49}, {"NX32", 50, 61}}));
        QCOMPARE(freeGasStrip(names, lastsample, {45.5, 60.2}).text, "Air NX32");
    }
};

QTEST_APPLESS_MAIN(TestFreeView)
#include "test_freeview.moc"
