// One opened dive without a window: what is selected, and which rows are shown.

#include "profile/decoder.h"
#include "tests/profile/divetext.h"
#include "viewer/divesession.h"

#include <QtTest>

using namespace benthor::profile;
using namespace benthor::viewer;

namespace {

/// `records` samples, ten seconds apart, an alarm at every `alarmEvery`th row.
DiveSession sessionOf(int records, const char* unit = "metre", int alarmEvery = 50) {
    QByteArrayList lines;
    for (int row = kFirstSample; row < kFirstSample + records; ++row) {
        lines += "1," + QByteArray::number(row % 200 * 10) + (row < 60 ? ",0" : ",1") + ",130,M" +
                 (row == 30 ? "1" : "0") + ",T20,A900,D150" + (row % alarmEvery == 0 ? ",LOW" : "");
    }
    DiveRow row;
    row.interval = QStringLiteral("10");
    row.dbtxtname = QStringLiteral("dive.txt");
    row.maxdepth = QStringLiteral("23.4");
    DiveSession session;
    session.open(QStringLiteral("D0000001"), row, QLatin1String(unit));
    session.takeGases({{"D0000001", "0", "79", "0", "660", "1"}, {"D0000001", "1", "68", "0", "465", "1"}});
    session.takeProfile(decodeProfile(wholeDive(lines), session.feet()));
    session.settle();
    return session;
}

bool showRow(DiveSession& session, int row) {
    return session.show(row, {.cell = [&session, row](int column) { return session.cell(row, column); }});
}

} // namespace

class TestDiveSession : public QObject {
    Q_OBJECT

private slots:
    void aSessionWithoutADiveLeadsNowhere() {
        DiveSession session;
        QCOMPARE(session.lastsample(), 0);
        QVERIFY(!session.stepped(1) && !session.walked(SampleStep::Last));
        QVERIFY(!session.alarmAhead() && !session.markAhead());
        QVERIFY(session.zoomFreely(5000, 4) == ViewChange::None);
        QVERIFY(session.moveFreely(0.5) == ViewChange::None);
        QVERIFY(!session.pressZoom(ZoomButton::Zoom));
        QVERIFY(session.strip().lines.empty());
        QCOMPARE(session.matrix({}).lastRow(), 0);
        QVERIFY(!showRow(session, 1));
    }

    void settlingNamesTheGasesAndLowersTheLastSample() {
        DiveRow row;
        DiveSession session;
        session.open(QStringLiteral("D0000001"), row, QStringLiteral("metre"));
        QCOMPARE(session.takeGases({}), QStringLiteral("Bad record. Use Delete to remove"));
        session.takeProfile(decodeProfile(wholeDive({"1,10,0,130,M0,T20,A900,D150"}), false));
        QCOMPARE(session.lastsample(), 5);
        QCOMPARE(session.settle(), 5);
        QCOMPARE(session.lastsample(), 4);
        QCOMPARE(session.gasNames()[0], QStringLiteral("NX0")); // no row was taken
        QVERIFY(!session.panel().Frame4[2]);                    // a pressure was recorded
        QVERIFY(session.panel().Frame4[5]);
    }

    void theUnitIsThatOfTheWordAndAnExportCanChangeTheWordAlone() {
        DiveSession session = sessionOf(100, "Feet");
        QVERIFY(session.feet());
        QCOMPARE(session.header().lblmaxdepth, QStringLiteral("Feet"));
        QVERIFY(showRow(session, 13));
        QVERIFY(session.tip({}, true).text().startsWith(session.cell(13, 1) + "Feet"));
        session.setUnitword(QStringLiteral("metre"));
        QVERIFY(session.tip({}, true).text().startsWith(session.cell(13, 1) + "metre"));
        QVERIFY(session.feet());
    }

    void theSelectionUnmarksTheRowBefore() {
        DiveSession session = sessionOf(100);
        QVERIFY(showRow(session, 20));
        QCOMPARE(session.currentrow(), 20);
        const RowSelection selection = session.select(40);
        QCOMPARE(selection.unmarkRow, std::optional(20));
        QCOMPARE(selection.topRow, 36);
        QVERIFY(!session.select(20).unmarkRow);
        QVERIFY(!showRow(session, 104)); // behind the last
        QCOMPARE(session.currentrow(), 20);
        QCOMPARE(session.panel().Lbldtime, QStringLiteral("3"));
    }

    void theRowBeforeTheFirstIsKeptForTheNextStep() {
        DiveSession session = sessionOf(100); // rows 1 to 103
        showRow(session, 1);
        QVERIFY(!session.stepped(-1)); // row 0
        QCOMPARE(session.stepped(-1), std::optional(102));
        QCOMPARE(session.currentrow(), 1);
        showRow(session, 100);
        session.setPlayspeed(4);
        QCOMPARE(session.played(), 1); // begins anew
    }

    void alarmsAndMarksAheadGoRound() {
        DiveSession session = sessionOf(100);
        showRow(session, 60);
        QCOMPARE(session.alarmAhead(), std::optional(100));
        QCOMPARE(session.markAhead(), std::optional(30));
        showRow(session, 100);
        QCOMPARE(session.alarmAhead(), std::optional(50));
        DiveSession calm = sessionOf(40, "metre", 1000);
        QVERIFY(!calm.alarmAhead());
    }

    void thePageFollowsTheSample() {
        DiveSession session = sessionOf(200); // 203 rows, 20 to a page
        QVERIFY(session.pressZoom(ZoomButton::Zoom));
        showRow(session, 5);
        QVERIFY(session.follow() == ViewChange::None);
        QCOMPARE(session.cursorPlace(), 5);
        showRow(session, 45);
        QVERIFY(session.follow() == ViewChange::Plot);
        QCOMPARE(session.zoom().zoompage, 3);
        QCOMPARE(session.cursorPlace(), 5);
        QCOMPARE(session.shownRows(), (RowRange{40, 60}));
        QCOMPARE(session.matrix({}).lastRow(), 20);
        session.pressZoom(ZoomButton::PanOn);
        QCOMPARE(session.cursorPlace(), 0); // not on this page
    }

    void theSamplesBehindTheLastPageHaveAPlaceOnIt() {
        DiveSession session = sessionOf(200);
        session.pressZoom(ZoomButton::Zoom);
        showRow(session, 203);
        QVERIFY(session.follow() == ViewChange::Plot);
        QCOMPARE(session.zoom().zoompage, 10);
        QCOMPARE(session.cursorPlace(), 23); // behind the page's twenty
        QVERIFY(session.follow() == ViewChange::None);
        QVERIFY(!session.tipFitsRight(1600, 11000));
        session.pressZoom(ZoomButton::PanBack);
        QCOMPARE(session.cursorPlace(), 0);
    }

    void aDiveOfAHundredRowsIsNotZoomed() {
        DiveSession session = sessionOf(97); // 100 rows
        QVERIFY(!session.pressZoom(ZoomButton::Zoom));
        QVERIFY(session.zoom().caption.isEmpty());
        session.zoomFreely(645, 4);
        QVERIFY(session.pressZoom(ZoomButton::Zoom)); // out of the free view
        QVERIFY(!session.freeView() && !session.zoom().zoomed());
    }

    void theFreeViewBeginsInTheViewAndEndsThere() {
        DiveSession session = sessionOf(200);
        session.pressZoom(ZoomButton::Zoom);
        session.pressZoom(ZoomButton::PanOn);
        const RowRange page = session.shownRows();
        QVERIFY(session.zoomFreely(645 + 10065 / 2.0, 2) == ViewChange::Plot);
        QCOMPARE(session.freeView()->span(), page.span() / 2);
        QCOMPARE(session.matrix({}).lastRow(), 203); // all rows; the view picks
        QVERIFY(session.moveFreely(1) == ViewChange::Moved);
        QCOMPARE(session.freeView()->first, page.first + page.span() * 0.75);
        showRow(session, 150);
        QCOMPARE(session.cursorPlace(), 0);
        QVERIFY(session.follow() == ViewChange::Moved);
        QCOMPARE(session.cursorPlace(), 150);
        QVERIFY(session.leaveFreeView() == ViewChange::Plot);
        QCOMPARE(session.shownRows(), page);
        QVERIFY(session.leaveFreeView() == ViewChange::None);
    }

    void zoomingOutOfAllTheDiveLeavesTheFreeView() {
        DiveSession session = sessionOf(200);
        session.zoomFreely(3000, 4);
        QVERIFY(session.freeView().has_value());
        QVERIFY(session.zoomFreely(3000, 0.01) == ViewChange::Plot);
        QVERIFY(!session.freeView());
        QVERIFY(session.zoomFreely(3000, 0.01) == ViewChange::None);
    }

    void clicksAreReadInTheViewThatIsShown() {
        DiveSession session = sessionOf(200);
        QCOMPARE(session.rowUnder(645 + 10065 * 50.5 / 203), 50);
        QCOMPARE(session.rowOnStrip(StripKind::Alarms, 0.5), 102); // 101.5, to even
        session.pressZoom(ZoomButton::Zoom);
        session.pressZoom(ZoomButton::PanOn);
        QCOMPARE(session.rowOnStrip(StripKind::Gases, 0.5), 30);
        session.zoomFreely(645, 2);
        const RowRange view = session.shownRows();
        QCOMPARE(session.rowOnStrip(StripKind::Alarms, 0), qRound(view.first));
    }

    void theAxisGoesByTheIntervalThatItIsTold() {
        DiveSession session = sessionOf(97);
        QCOMPARE(session.interval(), 10.0);
        QCOMPARE(session.timeLabels(10)[4], QStringLiteral("00:16:40"));
        QCOMPARE(session.timeLabels(20)[4], QStringLiteral("00:33:20"));
        RowRange spread;
        QCOMPARE(session.gasStrip(spread).runs.size(), 2U);
        QCOMPARE(spread, (RowRange{0, 100}));
    }

    void openingAnotherDiveForgetsTheOneBefore() {
        DiveSession session = sessionOf(200);
        session.pressZoom(ZoomButton::Zoom);
        session.setPlayspeed(8);
        showRow(session, 60);
        session.open(QStringLiteral("D0000002"), {}, QStringLiteral("metre"));
        QCOMPARE(session.header().txtdiveid, QStringLiteral("D0000002"));
        QCOMPARE(session.lastsample(), 0);
        QCOMPARE(session.currentrow(), 1);
        QCOMPARE(session.playspeed(), 1);
        QVERIFY(!session.zoom().zoomed() && session.panel().Lbldtime.isEmpty());
    }
};

QTEST_APPLESS_MAIN(TestDiveSession)
#include "test_divesession.moc"
