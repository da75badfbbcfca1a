// Everything that the screen shows of one sample: tip box, panel, gauges, tissue stress, thermistor
// estimates.

#include "platform/textformat.h"
#include "profile/decoder.h"
#include "tests/profile/vectors.h"
#include "viewer/pointpanel.h"
#include "viewer/pointtip.h"

#include <QJsonArray>
#include <QtTest>

using namespace benthor;
using namespace benthor::profile;
using namespace benthor::viewer;

namespace {

/// A dive as the screen holds it, with the panel in the state of a screen just opened.
struct Dive {
    DiveProfile profile;
    GasArrays gases;
    GasNames gasname;
    bool feet = false;
    double interval = 10;
    PanelState panel;

    TipChoice choice(std::initializer_list<int> checked = {}) const {
        TipChoice result;
        for (const int box : checked) {
            result.boxes.check.set(static_cast<std::size_t>(box));
        }
        result.check3 = profile.enabled.test(3);
        result.depthunit = feet ? QStringLiteral("Feet") : QStringLiteral("metre");
        return result;
    }
    void show(int row) {
        showpoint(panel,
                  {profile, row,
                   [this, row](int column) { return cellText(profile, gasname, interval, row, column); },
                   Thermistors{}, feet, profile.enabled.test(12)});
        if (!profile.enabled.test(3)) {
            showComputedPpo2(panel, computedPpo2(profile, gases, row, feet).metric);
        }
    }
};

Dive diveOf(const QString& file, bool feet) {
    Dive dive;
    dive.feet = feet;
    for (const DiveVector& vector : diveVectors()) {
        if (vector.name == (file + (feet ? " feet" : " metric")).toLatin1()) {
            dive.profile = decodeProfile(vector.text, feet);
            readgaslist(gasRows(vector.stored), feet, dive.gases);
            dive.gasname = gasNames(dive.gases);
            dive.interval =
                platform::leadingNumber(QStringView(diveRow(vector.stored).interval.value_or(QString())));
            return dive;
        }
    }
    qFatal("no dive %s", qPrintable(file));
}

/// Records with these fields from position 1 on, interval 10 s, gas 0 Air and 1 NX32.
Dive diveOf(std::initializer_list<const char*> records, bool feet = false) {
    Dive dive;
    dive.feet = feet;
    QByteArray text = "Profile\r\n\r\n";
    for (const char* record : records) {
        text += QByteArray(",") + record + "\r\n";
    }
    dive.profile = decodeProfile(text + "End\r\n", feet);
    const std::vector<GasRow> rows{{"D1", "0000", "79", "0", "660", "1"},
                                   {"D1", "0001", "68", "0", "400", "1"}};
    readgaslist(rows, feet, dive.gases);
    dive.gasname = gasNames(dive.gases);
    return dive;
}

QStringList withoutBlanks(QStringList lines) {
    for (QString& line : lines) {
        line = line.simplified().remove(u' ');
    }
    lines.removeAll(QString());
    return lines;
}

GaugeBars barsOf(const QJsonArray& bars) {
    GaugeBars mask = 0;
    for (const auto& bar : bars) {
        mask |= GaugeBars{1} << bar.toInt();
    }
    return mask;
}

int boxNumber(const QString& name) {
    return name.mid(5).toInt();
}

const QHash<QString, QString PanelState::*>& captions() {
    static const QHash<QString, QString PanelState::*> all{
        {"Lbldtime", &PanelState::Lbldtime},       {"Lbldepth", &PanelState::Lbldepth},
        {"lbldgas", &PanelState::lbldgas},         {"Lbldppo2", &PanelState::Lbldppo2},
        {"Lbldceiling", &PanelState::Lbldceiling}, {"Lbldtemp", &PanelState::Lbldtemp},
        {"lblhpddip", &PanelState::lblhpddip},     {"Lbldhpo2", &PanelState::Lbldhpo2},
        {"Lbldcella", &PanelState::Lbldcella},     {"Lbldcellb", &PanelState::Lbldcellb},
        {"Lbldcellc", &PanelState::Lbldcellc},     {"Lbldsetpoint", &PanelState::Lbldsetpoint},
        {"lblppo2avg", &PanelState::lblppo2avg},   {"lbldstack", &PanelState::lbldstack}};
    return all;
}

const QHash<QString, GaugeBars PanelState::*>& gauges() {
    static const QHash<QString, GaugeBars PanelState::*> all{
        {"Shape5", &PanelState::Shape5},   {"Shape7", &PanelState::Shape7},
        {"Shape9", &PanelState::Shape9},   {"Shape10", &PanelState::Shape10},
        {"Shape11", &PanelState::Shape11}, {"Shape12", &PanelState::Shape12}};
    return all;
}

} // namespace

class TestPointInspector : public QObject {
    Q_OBJECT

private slots:
    void eachSampleAgreesWithTheVectors_data() {
        QTest::addColumn<QJsonObject>("view");
        const QJsonArray views = jsonOfTestData("inspect.json")[QLatin1String("views")].toArray();
        QVERIFY(views.size() > 10);
        for (const auto& view : views) {
            QTest::addRow("%s %s", qPrintable(view[QLatin1String("file")].toString()),
                          qPrintable(view[QLatin1String("units")].toString()))
                << view.toObject();
        }
    }

    void eachSampleAgreesWithTheVectors() {
        QFETCH(QJsonObject, view);
        Dive dive = diveOf(view[QLatin1String("file")].toString(),
                           view[QLatin1String("units")].toString() == QLatin1String("Feet"));
        for (const auto& entry : view[QLatin1String("enabled")].toArray()) {
            const int box = boxNumber(entry.toString());
            QVERIFY2(box == 1 || dive.profile.enabled.test(static_cast<std::size_t>(box)),
                     qPrintable(entry.toString()));
        }
        int compared = 0;
        for (const auto& sample : view[QLatin1String("rows")].toArray()) {
            const int row = sample[QLatin1String("row")].toInt();
            for (const auto& tip : sample[QLatin1String("tips")].toArray()) {
                TipChoice choice = dive.choice();
                for (const auto& box : tip[QLatin1String("checked")].toArray()) {
                    choice.boxes.check.set(static_cast<std::size_t>(boxNumber(box.toString())));
                }
                const PointTip tipShown = pointTip(dive.profile, dive.gases, dive.gasname, row, choice);
                QStringList shown = withoutBlanks(tipShown.text().split(QStringLiteral("\r\n")));
                QStringList expected;
                for (const auto& line : tip[QLatin1String("lines")].toArray()) {
                    if (line.isNull()) { // several readings are acceptable
                        shown.removeAt(expected.size());
                    } else {
                        expected << line.toString();
                    }
                }
                QCOMPARE(shown, withoutBlanks(expected));
                ++compared;
            }
            dive.show(row);
            const QJsonObject panel = sample[QLatin1String("panel")].toObject();
            for (auto caption = panel.begin(); caption != panel.end(); ++caption) {
                QVERIFY2(captions().contains(caption.key()), qPrintable(caption.key()));
                if (!caption->isNull()) {
                    QVERIFY2(dive.panel.*captions()[caption.key()] == caption->toString(),
                             qPrintable(QStringLiteral("row %1 %2: %3, not %4")
                                            .arg(row)
                                            .arg(caption.key(), dive.panel.*captions()[caption.key()],
                                                 caption->toString())));
                }
            }
            const QJsonObject lit = sample[QLatin1String("gauges")].toObject();
            for (auto gauge = lit.begin(); gauge != lit.end(); ++gauge) {
                if (!gauge->isNull()) {
                    QCOMPARE(dive.panel.*gauges()[gauge.key()] & ~kBaseBar, barsOf(gauge->toArray()));
                }
            }
            QCOMPARE(dive.panel.Alarm_Text.trimmed(),
                     sample[QLatin1String("alarm_text")].toString().trimmed());
            QCOMPARE(dive.profile.alarmpoint(row), sample[QLatin1String("alarm_point")].toBool());
        }
        QVERIFY(compared > 0);
    }

    void tissueStressAgreesWithTheVectors() {
        const QJsonArray cases = jsonOfTestData("inspect.json")[QLatin1String("stress")].toArray();
        QVERIFY(cases.size() > 10);
        for (const auto& stress : cases) {
            PanelState panel;
            panel.Text7 = QStringLiteral("(kept)");
            panel.Shape6 = 0x2000;
            showTissueStress(panel, stress[QLatin1String("ceiling")].toString(),
                             stress[QLatin1String("depth")].toString());
            const QByteArray about = (stress[QLatin1String("ceiling")].toString() + " at " +
                                      stress[QLatin1String("depth")].toString())
                                         .toLatin1();
            QVERIFY2(panel.Text7 == stress[QLatin1String("text")].toString(), about.constData());
            if (stress[QLatin1String("bars")].isArray()) {
                QVERIFY2(panel.Shape6 == barsOf(stress[QLatin1String("bars")].toArray()), about.constData());
            } else if (stress[QLatin1String("bars")].isString()) {
                QVERIFY2(panel.Shape6 == 0x2000, about.constData());
            }
        }
    }

    void stressOfAThirdAtTwentyMetresLightsTheFirstTwoBars() {
        PanelState panel;
        showTissueStress(panel, QStringLiteral("3"), QStringLiteral("20"));
        QCOMPARE(panel.Text7, "15%");
        QCOMPARE(panel.Shape6, GaugeBars{0b11});
        QVERIFY(panel.Label21[1] && panel.Text7Visible && panel.Shape8[0]);
        QVERIFY(!panel.Frame4[1]);
        showTissueStress(panel, QStringLiteral("3"), QStringLiteral("30"));
        QCOMPARE(panel.Text7, "15%"); // a tenth is not above a tenth
        QCOMPARE(panel.Shape6, kBaseBar);
    }

    void atTheSurfaceTheStressStaysAsItWas() {
        PanelState panel;
        showTissueStress(panel, QStringLiteral("9"), QStringLiteral("10"));
        const GaugeBars before = panel.Shape6;
        showTissueStress(panel, QStringLiteral("3"), QStringLiteral("0"));
        QCOMPARE(panel.Text7, "90%");
        QCOMPARE(panel.Shape6, before);
    }

    void aCeilingThatIsNoNumberClearsAShortCaptionOnly() {
        PanelState panel;
        showTissueStress(panel, QStringLiteral("9"), QStringLiteral("10"));
        panel.Lbldceiling = QStringLiteral(" ^9");
        showTissueStress(panel, QStringLiteral("x"), QStringLiteral("10"));
        QVERIFY(panel.Text7Visible);
        panel.Lbldceiling = QStringLiteral(" ^");
        showTissueStress(panel, QStringLiteral("x"), QStringLiteral("10"));
        QCOMPARE(panel.Lbldceiling, "");
        QVERIFY(!panel.Text7Visible && !panel.Label21[1] && !panel.Shape8[0] && !panel.Shape6Visible);
    }

    void gaugesFollowTheirRule() {
        QCOMPARE(gaugeBars(0), GaugeBars{0});
        QCOMPARE(gaugeBars(0.0999), GaugeBars{0});
        QCOMPARE(gaugeBars(0.1), GaugeBars{0b10});
        QCOMPARE(gaugeBars(1.0), GaugeBars{0b11111111110});
        QCOMPARE(gaugeBars(1.3), GaugeBars{0b11111111111110});
        QCOMPARE(gaugeBars(99), GaugeBars{0b11111111111110});
        QCOMPARE(gaugeBars(-1), GaugeBars{0});
    }

    void cellsBAndCAreFedOneColumnOut() {
        Dive dive = diveOf({"100,0,70,M0,T20,A500,F100,G110,H120,I130"});
        dive.show(4);
        QCOMPARE(dive.panel.Lbldcella, "1.00");
        QCOMPARE(dive.panel.Lbldcellb, "1.20");
        QCOMPARE(dive.panel.Lbldcellc, "1.30");
        QCOMPARE(dive.panel.Lbldsetpoint, "1.30");
        QCOMPARE(pointTip(dive.profile, dive.gases, dive.gasname, 4, dive.choice({9})).lines.mid(2),
                 QStringList({"Cella: 1.00bar", "Cellb: 1.10bar", "Cellc: 1.20bar"}));
    }

    void theMarkLabelIsLitByACeilingAndNotByAMark() {
        Dive dive = diveOf({"100,0,70,M1,T20,C3", "100,0,70,M1,T20,A500", "100,0,70,M0,T20,C3"});
        dive.show(4);
        QVERIFY(dive.panel.Text6Visible);
        dive.show(5);
        QVERIFY(!dive.panel.Text6Visible);
        dive.show(6);
        QVERIFY(dive.panel.Text6Visible);
    }

    void theStackShowsTheFilterWhereItWasLogged() {
        Dive dive = diveOf({"100,0,70,M0,T20,A505,LOW,HIGH"});
        dive.show(4);
        QCOMPARE(dive.panel.lbldstack, "50.5"); // not the two tokens of its column
        QVERIFY(!dive.panel.Frame4[4]);
        Dive other = diveOf({"100,0,70,M0,T20,C3"});
        other.show(4);
        QCOMPARE(other.panel.lbldstack, "");
    }

    void aPrediveAloneShowsInBlackAndAnAlarmInRed() {
        Dive dive = diveOf({"100,0,70,M0,T20,A500,PREDIVE", "100,0,70,M0,T20,A500,LOW",
                            "100,0,70,M1,T20,A500,LOW", "100,0,70,M1,T20,A500", "100,0,70,M0,T20,A500"});
        dive.show(4);
        QCOMPARE(dive.panel.Alarm_Text, "\r\nPREDIVE\r\n");
        QCOMPARE(dive.panel.alarmback, platform::kToldWhite);
        dive.show(5);
        QCOMPARE(dive.panel.alarmback, platform::kToldRed);
        QCOMPARE(dive.panel.tipback, platform::kToldRed);
        dive.show(6);
        QCOMPARE(dive.panel.Alarm_Text, "\r\nLOW\r\n");
        QCOMPARE(dive.panel.alarmback, platform::kToldBlue);
        QCOMPARE(dive.panel.tipback, platform::kToldWhite);
        dive.show(7);
        QCOMPARE(dive.panel.Alarm_Text, "");
        QCOMPARE(dive.panel.alarmback, platform::kToldBlue);
        dive.show(8);
        QCOMPARE(dive.panel.alarmback, platform::kToldWhite);
        QCOMPARE(dive.panel.tipback, platform::kToldWhite);
    }

    void withoutALogThePpo2IsComputedFromDepthAndGas() {
        Dive metric = diveOf({"107,1,0,M0,T20,A500"}); // 10.03 m
        QVERIFY(!metric.profile.enabled.test(3));
        QCOMPARE(pointTip(metric.profile, metric.gases, metric.gasname, 4, metric.choice()).lines.last(),
                 "PPO2: 0.64bar");
        Dive feet = diveOf({"107,1,0,M0,T20,A500"}, true); // 32.2 ft
        QCOMPARE(pointTip(feet.profile, feet.gases, feet.gasname, 4, feet.choice()).lines.last(),
                 "PPO2: 0.64bar");
        feet.show(4);
        QCOMPARE(feet.panel.lblppo2avg, "1.35"); // the average goes by the metric rule in any unit
        QVERIFY(feet.panel.Shape8[4]);
    }

    void theTipGrowsWithItsLines() {
        const Dive dive = diveOf({"100,0,70,M1,T20,A500,B300,C400,D150,E160,F100,G110,H120,I130,LOW,HIGH"});
        const auto height = [&dive](std::initializer_list<int> checked) {
            return pointTip(dive.profile, dive.gases, dive.gasname, 4, dive.choice(checked)).height;
        };
        const int base = height({}); // gas, mark and two alarms
        QCOMPARE(base, 225 * 4);
        QCOMPARE(height({9}) - base, 675);
        QCOMPARE(height({8}) - base, 225);
        QCOMPARE(height({7}) - base, 225);
        QCOMPARE(height({10}) - base, 225);
        QVERIFY(pointTip(dive.profile, dive.gases, dive.gasname, 4, dive.choice())
                    .text()
                    .endsWith("! MARK !\r\nLOW\r\nHIGH\r\n"));
    }

    void theTipGoesByTheUnitWordInForce() {
        const Dive dive = diveOf({"100,0,70,M0,T20,C3"}, true);
        TipChoice choice = dive.choice({5, 11});
        QCOMPARE(pointTip(dive.profile, dive.gases, dive.gasname, 4, choice).lines,
                 QStringList({"30.1Feet", "Gas: Air", "Ceiling: 9.6Feet", "Water Temp: 68F"}));
        choice.depthunit = QStringLiteral("metre"); // as behind an export
        QCOMPARE(pointTip(dive.profile, dive.gases, dive.gasname, 4, choice).lines,
                 QStringList({"30.1metre", "Gas: Air", "Ceiling: 9.6metre", "Water Temp: 68C"}));
        choice.feet = true; // the screen knows how its samples were read
        QCOMPARE(pointTip(dive.profile, dive.gases, dive.gasname, 4, choice).lines,
                 QStringList({"30.1metre", "Gas: Air", "Ceiling: 9.6metre", "Water Temp: 68F"}));
    }

    void theBoxStandsBesideTheCursorAndChangesSides() {
        ZoomState whole;
        QCOMPARE(tipLeft(0, 100, whole, kTipWidth, kTipRightLimit), 585.0);
        QCOMPARE(tipLeft(50, 100, whole, kTipWidth, kTipRightLimit), 585 + 10065 / 2.0);
        QCOMPARE(tipLeft(100, 100, whole, 4000, kTipRightLimit), 585 + 10065 - 4000.0);
        QCOMPARE(tipLeft(90, 100, whole, kTipWidth, 11000), 585 + 9058.5 - 1600);
        ZoomState zoomed;
        pressZoom(zoomed, ZoomButton::Zoom, 1000);
        QCOMPARE(tipLeft(50, 1000, zoomed, kTipWidth, kTipRightLimit), 585 + 10065 / 2.0);
        zoomed.zoompage = 3; // rows 201 to 300
        QCOMPARE(tipLeft(250, 1000, zoomed, kTipWidth, kTipRightLimit), 585 + 10065 / 2.0);
        QCOMPARE(tipLeft(1, 0, whole, kTipWidth, kTipRightLimit), 585.0);
    }

    void anEmptyStickReadsZeroAndNinetyNine() {
        Dive dive = diveOf({"100,0,70,M0,T20,A500"});
        dive.show(4);
        QCOMPARE(dive.panel.Text9[0], "0");
        QCOMPARE(dive.panel.Text9[1], "99");
        QCOMPARE(tpmspread(Thermistors{}), 0.0);
        QCOMPARE(tpmestimatea(Thermistors{}), 99.0);
    }

    void theWarmFrontIsFoundByTheWarmestPair_data() {
        QTest::addColumn<QList<double>>("cells");
        QTest::addColumn<double>("down");
        QTest::addColumn<double>("up");
        using Cells = QList<double>;
        QTest::newRow("pair 5, not below") << Cells{1, 1, 1, 1, 1, 9, 9, 1} << 50.0 << 50.0;
        QTest::newRow("pair 5, below") << Cells{1, 1, 1, 1, 1, 9, 8, 1} << 55.0 << 55.0;
        QTest::newRow("pair 4, above") << Cells{1, 1, 1, 1, 8, 9, 1, 1} << 60.0 << 60.0;
        QTest::newRow("pair 4, level") << Cells{1, 1, 1, 1, 9, 9, 1, 1} << 65.0 << 65.0;
        QTest::newRow("pair 3, above") << Cells{1, 1, 1, 8, 9, 1, 1, 1} << 70.0 << 70.0;
        QTest::newRow("pair 3, level") << Cells{1, 1, 1, 9, 9, 1, 1, 1} << 75.0 << 75.0;
        QTest::newRow("pair 2, above") << Cells{1, 1, 8, 9, 1, 1, 1, 1} << 80.0 << 80.0;
        QTest::newRow("pair 2, level") << Cells{1, 1, 9, 9, 1, 1, 1, 1} << 85.0 << 85.0;
        QTest::newRow("pair 1, above") << Cells{1, 8, 9, 1, 1, 1, 1, 1} << 90.0 << 90.0;
        QTest::newRow("pair 1, level") << Cells{1, 9, 9, 1, 1, 1, 1, 1} << 95.0 << 95.0;
        QTest::newRow("pair 0: not told") << Cells{9, 9, 1, 1, 1, 1, 1, 1} << -1.0 << 33.0;
        QTest::newRow("cold, second warmer") << Cells{-3, -2, -3, -3, -3, -3, -3, -3} << 97.0 << 97.0;
        QTest::newRow("cold, level") << Cells{-3, -3, -3, -3, -3, -3, -3, -3} << 99.0 << 99.0;
        // sums 6 and 3: 20 and 16, slope 1/9, above 0.085
        QTest::newRow("pair 6, steep") << Cells{1, 1, 1, 8, 8, 8, 10, 10} << 0.0 << 0.0;
        // slope (20 - 19) / 39: 0.0256
        QTest::newRow("pair 6, shallow")
            << Cells{1, 1, 1, 9.5, 9.5, 9.5, 10, 10} << (0.085 - 1.0 / 39) * 800 << (0.085 - 1.0 / 39) * 800;
        QTest::newRow("pair 6, last cell much colder") << Cells{1, 1, 1, 1, 1, 1, 20, 5} << 0.0 << 45.0;
    }

    void theWarmFrontIsFoundByTheWarmestPair() {
        QFETCH(QList<double>, cells);
        QFETCH(double, down);
        QFETCH(double, up);
        Thermistors t{};
        std::copy(cells.begin(), cells.end(), t.begin());
        QCOMPARE(tpmestimatea(t), down);
        QCOMPARE(tpmestimateb(t, 33.0), up);
    }

    void theSpreadIsTheMeanHeightAboveTheColdest() {
        QCOMPARE(tpmspread({10, 12, 14, 16, 10, 10, 10, 10}), 1.5);
        QCOMPARE(tpmspread({90, 90, 90, 90, 90, 90, 90, 90}), 5.0); // the coldest counts as 85 at most
    }
};

QTEST_APPLESS_MAIN(TestPointInspector)
#include "test_pointinspector.moc"
