#include "divescreen.h"

#include "platform/chart/chart.h"
#include "platform/look/look.h"

#include <QLabel>
#include <QPushButton>
#include <QtTest>

using namespace benthor;
using namespace benthor::profile;
using namespace benthor::viewer;
using benthor::platform::Chart;

namespace {

QStringList timesOf(rbinterface& screen) {
    QStringList texts;
    for (const char* name : {"Text1", "Text2", "Text3", "Text4", "Text5"}) {
        texts += textOf(screen, name);
    }
    return texts;
}

} // namespace

class TestRbinterfaceZoom : public QObject {
    Q_OBJECT

private slots:
    void theTimeLabelsTellTheQuarters();
    void aShortDiveIsNotZoomed();
    void zoomingShowsThePageAndEnablesPanning();
    void panningEndsAtTheFirstAndTheLastPage();
    void everyPictureAndEntryActsAsItsButton();
    void narrowWindowsKeepThePictures();
};

void TestRbinterfaceZoom::theTimeLabelsTellTheQuarters() {
    DiveScreen bench;
    bench.put(steadyDive(197)); // 200 rows of 10 s
    rbinterface& screen = bench.load();
    QCOMPARE(timesOf(screen), (QStringList{"00:00:00", "00:08:20", "00:16:39", "00:24:59", "00:33:20"}));
    control<QPushButton>(screen, "Command2(0)").click();
    QCOMPARE(timesOf(screen), (QStringList{"00:00:00", "00:00:50", "00:01:40", "00:02:30", "00:03:20"}));
    control<QPushButton>(screen, "Command2(2)").click();
    QCOMPARE(timesOf(screen), (QStringList{"00:03:20", "00:04:10", "00:05:00", "00:05:50", "00:06:40"}));
}

void TestRbinterfaceZoom::aShortDiveIsNotZoomed() {
    DiveScreen bench;
    bench.put(steadyDive(97)); // the last row is 100
    rbinterface& screen = bench.show();
    control<QPushButton>(screen, "Command2(0)").click();
    QCOMPARE(control<QPushButton>(screen, "Command2(0)").text(), QStringLiteral("Zoom 1"));
    QCOMPARE(control<QAction>(screen, "mnudivezoom").text(), QStringLiteral("Zoom 1"));
    QVERIFY(control<QWidget>(screen, "Picture6").isEnabled());
    QVERIFY(!control<QWidget>(screen, "Picture7").isEnabled());
    QVERIFY(!control<QWidget>(screen, "Command2(1)").isVisible());
    QCOMPARE(control<Chart>(screen, "MSChart1").matrix().lastRow(), 100);
}

void TestRbinterfaceZoom::zoomingShowsThePageAndEnablesPanning() {
    DiveScreen bench;
    bench.put(steadyDive(98));
    rbinterface& screen = bench.show();
    QVERIFY(!control<QAction>(screen, "mnuzoompan2").isEnabled());
    control<QPushButton>(screen, "Command2(0)").click();
    const Chart& chart = control<Chart>(screen, "MSChart1");
    QCOMPARE(control<QPushButton>(screen, "Command2(0)").text(), QStringLiteral("Zoom 10"));
    QCOMPARE(control<QAction>(screen, "mnudivezoom").text(), QStringLiteral("Zoom 10"));
    QVERIFY(!control<QWidget>(screen, "Picture6").isEnabled());
    QVERIFY(control<QWidget>(screen, "Picture7").isEnabled());
    QVERIFY(control<QWidget>(screen, "Picture12").isEnabled());
    QVERIFY(control<QWidget>(screen, "Command2(1)").isVisible());
    QVERIFY(!control<QWidget>(screen, "Command2(1)").isEnabled());
    QVERIFY(control<QWidget>(screen, "Command2(2)").isEnabled());
    QVERIFY(!control<QAction>(screen, "mnuzoompan").isEnabled());
    QVERIFY(control<QAction>(screen, "mnuzoompan2").isEnabled());
    QCOMPARE(chart.matrix().lastRow(), 10);
    control<QPushButton>(screen, "Command2(2)").click();
    QCOMPARE(chart.matrix().at(1, 1), double(-7.5F)); // row 11 is the eighth record

    control<QPushButton>(screen, "Command2(0)").click();
    QCOMPARE(control<QPushButton>(screen, "Command2(0)").text(), QStringLiteral("Zoom 1"));
    QVERIFY(!control<QWidget>(screen, "Command2(1)").isVisible());
    QVERIFY(!control<QAction>(screen, "mnuzoompan2").isEnabled());
    QVERIFY(!control<QWidget>(screen, "Picture13").isEnabled());
    QCOMPARE(chart.matrix().lastRow(), 101);
}

void TestRbinterfaceZoom::panningEndsAtTheFirstAndTheLastPage() {
    DiveScreen bench;
    bench.put(steadyDive(197));
    rbinterface& screen = bench.show();
    control<QPushButton>(screen, "Command2(0)").click();
    auto& on = control<QAction>(screen, "mnuzoompan2");
    for (int page = 2; page <= 10; ++page) {
        QVERIFY(on.isEnabled());
        on.trigger();
    }
    QVERIFY(!on.isEnabled());
    QVERIFY(!control<QWidget>(screen, "Command2(2)").isEnabled());
    QVERIFY(control<QAction>(screen, "mnuzoompan").isEnabled());
    QCOMPARE(textOf(screen, "Text5"), QStringLiteral("00:33:20"));
    // The picture stays enabled; it changes nothing at the end.
    QTest::mouseClick(&control<QWidget>(screen, "Picture13"), Qt::LeftButton);
    QCOMPARE(textOf(screen, "Text5"), QStringLiteral("00:33:20"));
}

void TestRbinterfaceZoom::everyPictureAndEntryActsAsItsButton() {
    DiveScreen bench;
    bench.put(steadyDive(197));
    rbinterface& screen = bench.show();
    const auto click = [&](const char* name) {
        QTest::mouseClick(&control<QWidget>(screen, name), Qt::LeftButton);
        return textOf(screen, "Text1") + ' ' + textOf(screen, "Text5");
    };
    QCOMPARE(click("Picture6"), QStringLiteral("00:00:00 00:03:20"));
    QCOMPARE(click("Picture13"), QStringLiteral("00:03:20 00:06:40"));
    QCOMPARE(click("Picture12"), QStringLiteral("00:00:00 00:03:20"));
    QCOMPARE(click("Picture7"), QStringLiteral("00:00:00 00:33:20"));
    const auto trigger = [&](const char* name) {
        control<QAction>(screen, name).trigger();
        return textOf(screen, "Text1") + ' ' + textOf(screen, "Text5");
    };
    QCOMPARE(trigger("mnudivezoom"), QStringLiteral("00:00:00 00:03:20"));
    QCOMPARE(trigger("mnuzoompan2"), QStringLiteral("00:03:20 00:06:40"));
    QCOMPARE(trigger("mnuzoompan"), QStringLiteral("00:00:00 00:03:20"));
    // By keyboard as well.
    control<QWidget>(screen, "Picture7").setFocus();
    QTest::keyClick(&control<QWidget>(screen, "Picture7"), Qt::Key_Space);
    QCOMPARE(textOf(screen, "Text5"), QStringLiteral("00:33:20"));
}

void TestRbinterfaceZoom::narrowWindowsKeepThePictures() {
    DiveScreen bench;
    bench.put(steadyDive(197));
    rbinterface& screen = bench.show();
    QVERIFY(control<QWidget>(screen, "Command2(0)").isVisible());
    screen.resize(1024, 700);
    QTRY_VERIFY(!control<QWidget>(screen, "Command2(0)").isVisible());
    for (const char* name : {"Picture6", "Picture7", "Picture12", "Picture13"}) {
        QVERIFY(control<QWidget>(screen, name).isVisible());
        QVERIFY(!control<QWidget>(screen, name).toolTip().isEmpty());
    }
    QCOMPARE(screen.size(), QSize(1024, 700));
}

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    look::apply(application);
    TestRbinterfaceZoom test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_rbinterface_zoom.moc"
