#include "platform/textformat.h"
#include "tests/profile/divetext.h"
#include "tests/profile/vectors.h"
#include "viewer/chartdata.h"
#include "viewer/gasstrip.h"
#include "viewer/selection.h"
#include "viewer/timeaxis.h"

#include <QJsonArray>
#include <QtTest>

using namespace benthor;
using namespace benthor::profile;
using namespace benthor::viewer;

namespace {

ZoomState view(int zoomfactor, int zoompage) {
    ZoomState zoom;
    zoom.zoomfactor = zoomfactor;
    zoom.zoompage = zoompage;
    return zoom;
}

ZoomState view(const QJsonObject& entry) {
    return view(entry["zoomfactor"].toInt(), entry["zoompage"].toInt());
}

QJsonArray inspected(const QString& key) {
    const QJsonArray entries = jsonOfTestData("inspect.json")[key].toArray();
    if (entries.isEmpty()) {
        qFatal("no %s in the vectors", qPrintable(key));
    }
    return entries;
}

/// One row for each entry under `key`.
void addEntries(const QString& key) {
    QTest::addColumn<QJsonObject>("entry");
    int number = 0;
    for (const QJsonValueConstRef entry : inspected(key)) {
        const QJsonObject object = entry.toObject();
        QTest::addRow("%d: %d rows, zoom %d, page %d", ++number, object["lastsample"].toInt(),
                      object["zoomfactor"].toInt(), object["zoompage"].toInt())
            << object;
    }
}

GasRowNames rowNames(const QJsonArray& runs) {
    GasRowNames names(1);
    for (const QJsonValueConstRef run : runs) {
        names.insert(names.end(), static_cast<size_t>(run.toArray()[1].toInt()), run.toArray()[0].toString());
    }
    return names;
}

} // namespace

class TestChartView : public QObject {
    Q_OBJECT

private slots:
    void timeLabelsAgree_data() { addEntries("time_labels"); }
    void timeLabelsAgree();
    void labelsOfAWholeDiveAreNotExactQuarters();
    void gasStripsAgree_data() { addEntries("gas_strips"); }
    void gasStripsAgree();
    void runsOfTheStripFollowTheView();
    void aPadIsAtMostNinetyBlanks();
    void theLastChangeStandsAtTheEndOfTheStrip();
    void rowsAboveTenThousandBringNoGasName();
    void chartClicksAgree_data() { addEntries("chart_clicks"); }
    void chartClicksAgree();
    void aClickOnAnEmptyDiveSelectsRowOne();
    void zoomPressesAgree_data();
    void zoomPressesAgree();
    void aDiveOfAHundredRowsIsNotZoomed();
    void panPicturesFollowTheZoom();
    void panButtonsAreThereWhileZoomed();
    void aViewBelowOneBecomesOne();
    void theSameRowAgainLeavesMarksAndChartAlone();
    void anotherRowUnmarksThePreviousAndTellsTheChart();
    void theZoomedChartIsNotToldTheRow();
    void theGridShowsFourRowsAboveTheSelected();
};

void TestChartView::timeLabelsAgree() {
    QFETCH(QJsonObject, entry);
    const double interval = platform::leadingNumber(entry["interval"].toString());
    const auto labels = determinexaxis(interval, entry["lastsample"].toInt(), view(entry));
    const QJsonArray expected = entry["labels"].toArray();
    QCOMPARE(expected.size(), 5);
    for (qsizetype i = 0; i < 5; ++i) {
        if (!expected[i].isNull()) {
            QCOMPARE(labels[static_cast<size_t>(i)], expected[i].toString());
        }
    }
}

void TestChartView::labelsOfAWholeDiveAreNotExactQuarters() {
    const auto labels = determinexaxis(10.0, 400, ZoomState());
    QCOMPARE(labels[0], "00:00:00");
    QCOMPARE(labels[1], "00:16:40"); // 1000 s
    QCOMPARE(labels[2], "00:33:19"); // 2000 s less 0.2495 s
    QCOMPARE(labels[3], "00:49:59");
    QCOMPARE(labels[4], "01:06:40");
}

void TestChartView::gasStripsAgree() {
    QFETCH(QJsonObject, entry);
    const GasRowNames names = rowNames(entry["names"].toArray());
    const int lastsample = entry["lastsample"].toInt();
    const GasStrip strip = gasStrip(names, lastsample, view(entry));
    QCOMPARE(strip.text, entry["text"].toString());
    int next = 1;
    for (const GasRun& run : strip.runs) {
        QCOMPARE(run.firstRow, next);
        for (int row = run.firstRow; row <= run.lastRow; ++row) {
            QCOMPARE(names[static_cast<size_t>(row + viewOffset(lastsample, view(entry)))], run.name);
        }
        next = run.lastRow + 1;
    }
    QCOMPARE(next, viewRows(lastsample, entry["zoomfactor"].toInt()) + 1);
}

void TestChartView::runsOfTheStripFollowTheView() {
    GasRowNames names(1);
    names.insert(names.end(), 150, "Air");
    names.insert(names.end(), 250, "NX32");
    const std::vector<GasRun> whole{{"Air", 1, 150}, {"NX32", 151, 400}};
    QCOMPARE(gasStrip(names, 400, ZoomState()).runs, whole);
    const std::vector<GasRun> fourth{{"Air", 1, 30}, {"NX32", 31, 40}}; // rows 121 to 160
    QCOMPARE(gasStrip(names, 400, view(10, 4)).runs, fourth);
    QVERIFY(gasStrip(GasRowNames(1), 0, ZoomState()).runs.empty());
    QCOMPARE(gasStrip(GasRowNames(1), 0, ZoomState()).text, "");
}

void TestChartView::aPadIsAtMostNinetyBlanks() {
    GasRowNames names(1);
    names.insert(names.end(), 199, "Air");
    names.push_back("NX32");
    QCOMPARE(gasStrip(names, 200, ZoomState()).text, "Air " + QString(90, ' ') + "NX32");
}

void TestChartView::theLastChangeStandsAtTheEndOfTheStrip() {
    GasRowNames names(1);
    names.insert(names.end(), 60, "Air");
    names.insert(names.end(), 39, "NX32");
    names.push_back("NX80"); // row 100
    const QString whole = gasStrip(names, 100, ZoomState()).text;
    QCOMPARE(whole.indexOf(QLatin1String("NX32")), 82); // 61 / 100 x 135 = 82.35
    QCOMPARE(whole.indexOf(QLatin1String("NX80")), 135);
    names.insert(names.end(), 900, "NX80");
    const QString page = gasStrip(names, 1000, view(10, 1)).text;
    QCOMPARE(page.indexOf(QLatin1String("NX32")), 56); // 61 / 100 x 92 = 56.12
    QCOMPARE(page.indexOf(QLatin1String("NX80")), 92);
}

void TestChartView::rowsAboveTenThousandBringNoGasName() {
    QByteArrayList lines(9997, ",100,0,70");
    lines += QByteArrayList(2003, ",100,1,70");
    const DiveProfile profile = decodeProfile(wholeDive(lines), false);
    const int lastsample = profile.lastsample - 1;
    QCOMPARE(lastsample, 12003);
    GasNames gases;
    gases[0] = QStringLiteral("Air");
    gases[1] = QStringLiteral("NX32");
    const GasRowNames names = gasRowNames(profile, gases, lastsample);
    QCOMPARE(names.size(), static_cast<size_t>(10001));
    QCOMPARE(names[10000], "Air");
    const std::vector<GasRun> runs{{"Air", 1, 10000}, {"", 10001, 12003}};
    QCOMPARE(gasStrip(names, lastsample, ZoomState()).runs, runs);
    QCOMPARE(gasStrip(names, lastsample, ZoomState()).text.trimmed(), "Air");
}

void TestChartView::chartClicksAgree() {
    QFETCH(QJsonObject, entry);
    for (const QJsonValueConstRef click : entry["rows"].toArray()) {
        const double x = click.toArray()[0].toDouble();
        QCOMPARE(chartClickRow(x, entry["lastsample"].toInt(), view(entry)), click.toArray()[1].toInt());
    }
}

void TestChartView::aClickOnAnEmptyDiveSelectsRowOne() {
    for (const int lastsample : {0, 1, 3}) {
        QCOMPARE(chartClickRow(645.0, lastsample, ZoomState()), 1);
        QCOMPARE(chartClickRow(-1e9, lastsample, ZoomState()), 1);
    }
    QCOMPARE(chartClickRow(1e12, 1000, ZoomState()), 998);
}

void TestChartView::zoomPressesAgree_data() {
    QTest::addColumn<QJsonObject>("entry");
    for (const QJsonValueConstRef value : inspected("zoom")) {
        const QJsonObject entry = value.toObject();
        QTest::addRow("%d rows", entry["lastsample"].toInt()) << entry;
    }
}

void TestChartView::zoomPressesAgree() {
    QFETCH(QJsonObject, entry);
    const QMap<QString, ZoomButton> buttons{
        {"zoom", ZoomButton::Zoom}, {"pan <", ZoomButton::PanBack}, {"pan >", ZoomButton::PanOn}};
    const int lastsample = entry["lastsample"].toInt();
    ZoomState zoom;
    for (const QJsonValueConstRef value : entry["presses"].toArray()) {
        const QJsonObject press = value.toObject();
        QVERIFY(buttons.contains(press["press"].toString()));
        const QString captionBefore = zoom.caption;
        pressZoom(zoom, buttons[press["press"].toString()], lastsample);
        QCOMPARE(zoom.zoomfactor, press["zoomfactor"].toInt());
        QCOMPARE(zoom.zoompage, press["zoompage"].toInt());
        const QString caption = press["caption"].toString();
        QCOMPARE(zoom.caption, caption == QLatin1String("(kept)") ? captionBefore : caption);
        const QMap<QString, bool> enabled{
            {"Picture6", zoom.picture6},        {"Picture7", zoom.picture7},
            {"mnuzoompan", zoom.mnuzoompan},    {"mnuzoompan2", zoom.mnuzoompan2},
            {"Command2(1)", zoom.command2back}, {"Command2(2)", zoom.command2on}};
        const QJsonObject expected = press["enabled"].toObject();
        for (auto control = expected.begin(); control != expected.end(); ++control) {
            QVERIFY2(enabled.contains(control.key()) && enabled[control.key()] == control.value().toBool(),
                     qPrintable(control.key()));
        }
        if (press.contains("first_and_last_row")) {
            const int offset = viewOffset(lastsample, zoom);
            QCOMPARE(1 + offset, press["first_and_last_row"][0].toInt());
            QCOMPARE(viewRows(lastsample, zoom.zoomfactor) + offset, press["first_and_last_row"][1].toInt());
        }
    }
}

void TestChartView::aDiveOfAHundredRowsIsNotZoomed() {
    ZoomState zoom;
    QVERIFY(!pressZoom(zoom, ZoomButton::Zoom, 100));
    QCOMPARE(zoom.zoomfactor, 1);
    QCOMPARE(zoom.caption, "");
    QVERIFY(zoom.picture6);
    QVERIFY(!zoom.picture7);
    QVERIFY(pressZoom(zoom, ZoomButton::Zoom, 101));
    QCOMPARE(zoom.zoomfactor, 10);
    QCOMPARE(zoom.caption, "Zoom 10");
}

void TestChartView::panPicturesFollowTheZoom() {
    ZoomState zoom;
    QVERIFY(!zoom.picture12 && !zoom.picture13);
    pressZoom(zoom, ZoomButton::Zoom, 400);
    QVERIFY(zoom.picture12 && zoom.picture13);
    pressZoom(zoom, ZoomButton::PanOn, 400);
    QVERIFY(zoom.picture12 && zoom.picture13);
    pressZoom(zoom, ZoomButton::Zoom, 400);
    QVERIFY(!zoom.picture12 && !zoom.picture13 && !zoom.mnuzoompan && !zoom.mnuzoompan2);
    QCOMPARE(zoom.zoompage, 1);
}

void TestChartView::panButtonsAreThereWhileZoomed() {
    ZoomState zoom;
    pressZoom(zoom, ZoomButton::Zoom, 400);
    QVERIFY(zoom.command2visible);
    pressZoom(zoom, ZoomButton::Zoom, 400);
    QVERIFY(!zoom.command2visible);
}

void TestChartView::aViewBelowOneBecomesOne() {
    ZoomState zoom = view(0, -3);
    clampZoom(zoom);
    QCOMPARE(zoom.zoomfactor, 1);
    QCOMPARE(zoom.zoompage, 1);
    zoom = view(10, 7);
    clampZoom(zoom);
    QCOMPARE(zoom.zoomfactor, 10);
    QCOMPARE(zoom.zoompage, 7);
}

void TestChartView::theSameRowAgainLeavesMarksAndChartAlone() {
    const RowSelection selection = selectRow(17, 17, 1);
    QVERIFY(!selection.unmarkRow);
    QVERIFY(!selection.chartRow);
    QCOMPARE(selection.row, 17);
    QCOMPARE(selection.topRow, 13);
}

void TestChartView::anotherRowUnmarksThePreviousAndTellsTheChart() {
    const RowSelection selection = selectRow(17, 16, 1);
    QCOMPARE(selection.unmarkRow, std::optional(16));
    QCOMPARE(selection.chartRow, std::optional(17));
}

void TestChartView::theZoomedChartIsNotToldTheRow() {
    const RowSelection selection = selectRow(17, 16, 10);
    QCOMPARE(selection.unmarkRow, std::optional(16));
    QVERIFY(!selection.chartRow);
}

void TestChartView::theGridShowsFourRowsAboveTheSelected() {
    QCOMPARE(topRowFor(1), 1);
    QCOMPARE(topRowFor(4), 1);
    QCOMPARE(topRowFor(5), 1);
    QCOMPARE(topRowFor(6), 2);
    QCOMPARE(topRowFor(25000), 24996);
}

QTEST_GUILESS_MAIN(TestChartView)
#include "test_chartview.moc"
