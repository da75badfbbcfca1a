// Rows of play, steps and jumps; the strip under the chart and the clicks on it.

#include "profile/decoder.h"
#include "tests/profile/vectors.h"
#include "viewer/playback.h"
#include "viewer/strip.h"

#include <QJsonArray>
#include <QtTest>

using namespace benthor;
using namespace benthor::profile;
using namespace benthor::viewer;

namespace {

QJsonArray vectorsOf(const char* key) {
    const QJsonArray entries = jsonOfTestData("inspect.json")[QLatin1String(key)].toArray();
    if (entries.isEmpty()) {
        qFatal("no %s in the vectors", key);
    }
    return entries;
}

/// One record for each text: what stands behind the fixed fields.
DiveProfile profileOf(const QStringList& tails, int mark = 0) {
    QByteArray text = "Profile\r\n\r\n";
    for (const QString& tail : tails) {
        text += ",100,0,70,M" + QByteArray::number(mark) + ",T20,A500" + tail.toLatin1() + "\r\n";
    }
    return decodeProfile(text + "End\r\n", false);
}

ZoomState zoomed(int page, int lastsample) {
    ZoomState zoom;
    pressZoom(zoom, ZoomButton::Zoom, lastsample);
    while (zoom.zoompage < page) {
        pressZoom(zoom, ZoomButton::PanOn, lastsample);
    }
    return zoom;
}

} // namespace

class TestPlayback : public QObject {
    Q_OBJECT

private slots:
    void keysWalkAsFarAsTheDiveGoes() {
        const platform::RowRange all{0, 400};
        QCOMPARE(walkedRow(SampleStep::On, 7, 400, all), 8);
        QCOMPARE(walkedRow(SampleStep::Back, 7, 400, all), 6);
        QCOMPARE(walkedRow(SampleStep::On, 400, 400, all), 400);
        QCOMPARE(walkedRow(SampleStep::Back, 1, 400, all), 1);
        QCOMPARE(walkedRow(SampleStep::PageOn, 7, 400, all), 47);
        QCOMPARE(walkedRow(SampleStep::PageBack, 7, 400, all), 1);
        QCOMPARE(walkedRow(SampleStep::PageOn, 7, 400, {0, 8}), 8); // never nothing
        QCOMPARE(walkedRow(SampleStep::First, 7, 400, all), 1);
        QCOMPARE(walkedRow(SampleStep::Last, 7, 400, all), 400);
    }

    void playAgreesWithTheVectors() {
        for (const auto& entry : vectorsOf("playback")) {
            int row = entry[QLatin1String("from")].toInt();
            for (const auto& expected : entry[QLatin1String("rows")].toArray()) {
                row = playStep(row, entry[QLatin1String("playspeed")].toInt(),
                               entry[QLatin1String("lastsample")].toInt());
                QCOMPARE(row, expected.toInt());
            }
        }
    }

    void stepsAgreeWithTheVectors() {
        for (const auto& entry : vectorsOf("manual_steps")) {
            QCOMPARE(manualStep(entry[QLatin1String("row")].toInt(), entry[QLatin1String("by")].toInt(),
                                entry[QLatin1String("lastsample")].toInt()),
                     entry[QLatin1String("to")].toInt());
        }
    }

    void aStepBackFromRowOneGivesRowNullAndThenTheEnd() {
        QCOMPARE(manualStep(1, -1, 50), 0);
        QCOMPARE(manualStep(0, -1, 50), 49);
    }

    void speedsAgreeWithTheVectors() {
        int playspeed = 1;
        for (const auto& entry : vectorsOf("speeds")) {
            playspeed =
                entry[0].toString() == QLatin1String("+") ? fasterPlay(playspeed) : slowerPlay(playspeed);
            QCOMPARE(playspeed, entry[1].toInt());
        }
    }

    void speedsEndAt64And1() {
        QCOMPARE(fasterPlay(64), 64);
        QCOMPARE(slowerPlay(1), 1);
    }

    void alarmsAndMarksAgreeWithTheVectors() {
        for (const auto& entry : vectorsOf("navigation")) {
            const DiveProfile profile =
                decodeProfile(bytesOfTestData("dives/" + entry[QLatin1String("file")].toString()), false);
            const int lastsample = entry[QLatin1String("lastsample")].toInt();
            QCOMPARE(profile.lastsample - 1, lastsample);
            for (const auto& jump : entry[QLatin1String("next_alarm")].toArray()) {
                QCOMPARE(nextAlarm(profile, jump[0].toInt(), lastsample), jump[1].toInt(0));
            }
            for (const auto& jump : entry[QLatin1String("next_mark")].toArray()) {
                QCOMPARE(nextMark(profile, jump[0].toInt(), lastsample), jump[1].toInt(0));
            }
        }
    }

    void theLastAlarmWrapsToTheFirst() {
        const DiveProfile profile = profileOf({"", ",LOW", "", ",LOW", "", ""});
        const int lastsample = profile.lastsample - 1; // 9
        QCOMPARE(nextAlarm(profile, 1, lastsample), 5);
        QCOMPARE(nextAlarm(profile, 5, lastsample), 7);
        QCOMPARE(nextAlarm(profile, 7, lastsample), 5);
    }

    void aSingleAlarmIsFoundAgainFromItself() {
        const DiveProfile profile = profileOf({"", ",LOW", "", ""});
        QCOMPARE(nextAlarm(profile, 5, profile.lastsample - 1), 5);
    }

    void prediveAloneIsNoAlarmToGoTo() {
        const DiveProfile profile = profileOf({",PREDIVE", ",PREDIVE", ""});
        QCOMPARE(nextAlarm(profile, 1, profile.lastsample - 1), 0);
    }

    void clicksOnTheStripsAgreeWithTheVectors() {
        for (const auto& entry : vectorsOf("strip_clicks")) {
            ZoomState zoom;
            zoom.zoomfactor = entry[QLatin1String("zoomfactor")].toInt();
            zoom.zoompage = entry[QLatin1String("zoompage")].toInt();
            const StripKind kind = entry[QLatin1String("strip")].toString() == QLatin1String("txtGas")
                                       ? StripKind::Gases
                                       : StripKind::Alarms;
            for (const auto& click : entry[QLatin1String("rows")].toArray()) {
                if (click[1].isNull()) {
                    continue;
                }
                const int row =
                    stripClickRow(kind, click[0].toDouble(), entry[QLatin1String("width")].toDouble(),
                                  entry[QLatin1String("lastsample")].toInt(), zoom);
                QVERIFY2(row == click[1].toInt(),
                         qPrintable(QStringLiteral("%1 of %2, %3 rows, page %4: %5, not %6")
                                        .arg(click[0].toDouble())
                                        .arg(entry[QLatin1String("strip")].toString())
                                        .arg(entry[QLatin1String("lastsample")].toInt())
                                        .arg(zoom.zoompage)
                                        .arg(row)
                                        .arg(click[1].toInt())));
            }
        }
    }

    void theWholeDivesStripDrawsAlarmPointsMarksAndTheCursor() {
        DiveProfile profile = profileOf({",PREDIVE", ",LOW", "", ",LOW,HIGH"});
        profile.mark.set(5, 2.0F);
        const int lastsample = profile.lastsample - 1; // 7; its own row is left out
        const Strip strip = drawstrip(profile, lastsample, 5, {});
        const std::vector<StripLine> expected{{5.0 / 7, StripSign::Cursor, 10, platform::kToldGreen, 5},
                                              {5.0 / 7, StripSign::Alarm, 3, platform::kToldRed, 5},
                                              {6.0 / 7, StripSign::Mark, 2, platform::kToldBlue, 6}};
        QCOMPARE(strip.lines.size(), expected.size());
        QVERIFY(strip.lines == expected);
    }

    void theZoomedStripDrawsPrediveInMagentaAndMarksOfOneOnly() {
        QStringList tails;
        for (int sample = 4; sample <= 204; ++sample) {
            tails << QString();
        }
        tails[37] = QStringLiteral(",PREDIVE"); // sample 41
        tails[38] = QStringLiteral(",LOW");
        DiveProfile profile = profileOf(tails);
        profile.mark.set(42, 1.0F); // samples 43 and 44
        profile.mark.set(43, 2.0F);
        const int lastsample = profile.lastsample - 1;                                 // 204
        const Strip strip = drawstrip(profile, lastsample, 45, zoomed(3, lastsample)); // samples 41 to 60
        const std::vector<StripLine> expected{{1 / 20.4, StripSign::Alarm, 4, kPrediveColour, 41},
                                              {2 / 20.4, StripSign::Alarm, 4, platform::kToldRed, 42},
                                              {3 / 20.4, StripSign::Mark, 2, platform::kToldBlue, 43},
                                              {5 / 20.4, StripSign::Cursor, 10, platform::kToldGreen, 45}};
        QVERIFY(strip.lines == expected);
        QVERIFY(strip.found);
        QVERIFY(!drawstrip(profile, lastsample, 61, zoomed(3, lastsample)).found);
    }

    void aRowOutsideThePageTurnsToItsPage_data() {
        QTest::addColumn<int>("page");
        QTest::addColumn<int>("row");
        QTest::addColumn<int>("to");
        QTest::newRow("next") << 3 << 301 << 4;
        QTest::newRow("before") << 3 << 200 << 2;
        QTest::newRow("far on") << 1 << 950 << 10;
        QTest::newRow("far back") << 10 << 1 << 1;
        QTest::newRow("there") << 3 << 250 << 3;
        QTest::newRow("in no page") << 10 << 1004 << 10;
        QTest::newRow("in no page, from the first") << 1 << 1004 << 10;
    }

    void aRowOutsideThePageTurnsToItsPage() {
        QFETCH(int, page);
        QFETCH(int, row);
        QFETCH(int, to);
        ZoomState zoom = zoomed(page, 1004);
        QCOMPARE(turnPage(zoom, row, 1004), page != to);
        QCOMPARE(zoom.zoompage, to);
        QCOMPARE(zoom.command2back, to != 1);
        QCOMPARE(zoom.mnuzoompan2, to != 10);
    }

    void theWholeDiveHasNoPages() {
        ZoomState whole;
        QVERIFY(!turnPage(whole, 900, 1004));
        QCOMPARE(whole.zoompage, 1);
    }

    void playFollowsOverAllTenPages() {
        constexpr int lastsample = 1004;
        ZoomState zoom = zoomed(1, lastsample);
        QList<int> pages;
        for (int row = 1; pages.size() < 11; row = playStep(row, 16, lastsample)) {
            turnPage(zoom, row, lastsample);
            if (pages.isEmpty() || pages.last() != zoom.zoompage) {
                pages << zoom.zoompage;
            }
        }
        QCOMPARE(pages, QList<int>({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 1}));
    }
};

QTEST_APPLESS_MAIN(TestPlayback)
#include "test_playback.moc"
