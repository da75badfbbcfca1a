// The link screen while dives come: the wait frame, what it covers, and the last words.

#include "tests/link/linkstage.h"

#include <QMenuBar>

using benthor::process;
using benthor::platform::FlexGrid;
using benthor::tests::directory;
using benthor::tests::LinkStage;

class TestPcLink1Run : public QObject {
    Q_OBJECT

private slots:
    void getSelectedShowsTheWaitFrame();
    void theGasScreenSendsNothingIntoARun();
    void escapeLeavesTheWaitFrame();
    void noKeyReachesWhatARunCovers_data();
    void noKeyReachesWhatARunCovers();
    void theKeyboardIsBackWhereItWasWhenTheRunIsOver();
    void theWaitFrameGoesWithTheDive();
    void whatARunDidNotStoreStandsBelowItsLastWords();
    void aScreenClosedWhileDownloadingLeavesNothingBehind();
};

namespace {

/// A device with three dives, the first of which has been asked for.
void beginDownload(LinkStage& stage) {
    stage.connectDevice();
    stage.receive(directory());
    stage.tick("Timer2");
    stage.receive("PPPPPPPP");
    stage.tick("Timer1");
    auto* grid = stage.control<FlexGrid>("Mgrid");
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {},
                      grid->visualRect(grid->model()->index(0, 2)).center());
    stage.working->sent.clear();
    stage.click("cmddownload");
    QCOMPARE(stage.working->sent, QByteArray("D0"));
    QVERIFY(stage.ticking("Timer3"));
    stage.receive("ver=V3.12\r\nProfile");
    stage.tick("Timer3");
}

} // namespace

void TestPcLink1Run::getSelectedShowsTheWaitFrame() {
    LinkStage stage(QStringLiteral("Dive"));
    QVERIFY(!stage.control("TXTWait(1)")->isEnabled());
    beginDownload(stage);
    QVERIFY(stage.control("Frame5")->isVisible());
    QVERIFY(stage.control("TXTWait(1)")->isVisible());
    QVERIFY(stage.control("TXTWait(1)")->isEnabled());
    QVERIFY(stage.screen->isDownloading());
    QCOMPARE(stage.text("TXTWait(0)"), "Downloading\nPlease wait..\n");
    QCOMPARE(stage.text("lblBytes"), "18  Bytes received");
    for (const char* name : {"cmdstore", "cmddownload", "cmddownloadall", "cmddownloadnew"}) {
        QVERIFY2(!stage.control(name)->isEnabled(), name);
    }
    QVERIFY(!stage.control("Picture5(1)")->isVisible());
    QVERIFY(stage.control("Label11")->isEnabled());
    QVERIFY(!stage.control("Label13")->isEnabled());
    QVERIFY(!stage.screen->menuBar()->isEnabled());
}

void TestPcLink1Run::theGasScreenSendsNothingIntoARun() {
    LinkStage stage(QStringLiteral("Dive"));
    beginDownload(stage);
    process().uploadtext = QStringLiteral("a setup");
    stage.screen->refreshDirectory();
    QVERIFY(stage.dialogs.messages().isEmpty());
    stage.screen->sendSetup();
    QCOMPARE(stage.dialogs.messages(),
             QStringList("A dive is being downloaded. Send the setup when the download is over."));
    QCOMPARE(stage.working->sent, QByteArray("D0"));
    QCOMPARE(stage.screen->state().rxbuf.bytes(), QByteArray("ver=V3.12\r\nProfile"));
    stage.receive("End");
    stage.tick("Timer3");
    stage.screen->sendSetup();
    QVERIFY(stage.working->sent.startsWith("D0G   a setup"));
}

void TestPcLink1Run::escapeLeavesTheWaitFrame() {
    LinkStage stage(QStringLiteral("Dive"));
    beginDownload(stage);
    QTest::keyClick(stage.screen.data(), Qt::Key_Escape);
    QTest::keyClick(stage.control("Frame5"), Qt::Key_Escape);
    QVERIFY(stage.control("Frame5")->isVisible());
    QVERIFY(stage.screen->isDownloading());
}

void TestPcLink1Run::noKeyReachesWhatARunCovers_data() {
    QTest::addColumn<int>("ticks");
    QTest::addColumn<QByteArray>("came");
    QTest::newRow("before the first tick") << 0 << QByteArray();
    QTest::newRow("under the veil") << 1 << QByteArray("ver=V3.12");
    QTest::newRow("between two dives") << 1 << QByteArray("ver=V3.12\r\nEnd");
}

void TestPcLink1Run::noKeyReachesWhatARunCovers() {
    QFETCH(int, ticks);
    QFETCH(QByteArray, came);
    LinkStage stage(QStringLiteral("Dive"));
    stage.connectDevice();
    QVERIFY(QTest::qWaitForWindowActive(stage.screen));
    stage.receive(directory());
    stage.tick("Timer2");
    stage.receive("PPPPPPPP");
    stage.tick("Timer1");
    auto* grid = stage.control<FlexGrid>("Mgrid");
    stage.click("cmddownloadall");
    for (int tick = 0; tick < ticks; ++tick) {
        stage.receive(came);
        stage.tick("Timer3");
    }
    QVERIFY(stage.ticking("Timer3"));
    const int served = process().servedrow;
    const auto& rows = stage.screen->state().Mgrid.rows;
    const auto marks = [&rows] {
        QByteArray all;
        for (const auto& row : rows) {
            all += QByteArray::number(static_cast<int>(row.mark));
        }
        return all;
    };
    const QByteArray before = marks();
    QTest::keyClick(grid, Qt::Key_Down);
    QTest::keyClick(grid, Qt::Key_Space);
    QTest::keyClick(stage.control("cmddownloadnew"), Qt::Key_Space);
    QTest::keyClicks(stage.control("DiveSeriesName"), QStringLiteral("x"));
    const QWidget* frame = stage.control("Frame5");
    const QWidget* area = frame->parentWidget();
    for (const bool next : {true, false}) {
        for (int step = 0; step < 60; ++step) {
            QTest::keyClick(stage.screen->windowHandle(), Qt::Key_Tab,
                            next ? Qt::NoModifier : Qt::ShiftModifier);
            const QWidget* focus = QApplication::focusWidget();
            QVERIFY2(focus == nullptr || !area->isAncestorOf(focus) || frame->isAncestorOf(focus),
                     qPrintable(focus != nullptr ? focus->objectName() : QString()));
            QTest::keyClick(stage.screen->windowHandle(), Qt::Key_Down);
        }
    }
    QCOMPARE(marks(), before);
    QCOMPARE(process().servedrow, served);
    QCOMPARE(stage.screen->state().download.DiveSeriesName, "MyLatestDives");
    QVERIFY(stage.ticking("Timer3"));
}

void TestPcLink1Run::theKeyboardIsBackWhereItWasWhenTheRunIsOver() {
    LinkStage stage(QStringLiteral("Dive"));
    stage.connectDevice();
    QVERIFY(QTest::qWaitForWindowActive(stage.screen));
    stage.receive(directory());
    stage.tick("Timer2");
    stage.receive("PPPPPPPP");
    stage.tick("Timer1");
    auto* grid = stage.control<FlexGrid>("Mgrid");
    grid->setFocus();
    grid->setRow(1);
    QTest::keyClick(grid, Qt::Key_Space);
    stage.control<QAbstractButton>("cmddownload")->click();
    stage.receive("ver=V3.12");
    stage.tick("Timer3");
    QVERIFY(QApplication::focusWidget() != grid);
    stage.receive("End");
    stage.tick("Timer3");
    QCOMPARE(QApplication::focusWidget(), grid);
    QVERIFY(grid->isEnabled());
    QTest::keyClick(grid, Qt::Key_Down);
    QTest::keyClick(grid, Qt::Key_Space);
    QCOMPARE(grid->backColour(2, 1), QColor(0, 0, 255));
}

void TestPcLink1Run::theWaitFrameGoesWithTheDive() {
    LinkStage stage(QStringLiteral("Dive"));
    beginDownload(stage);
    stage.receive("\r\nEnd\r\n");
    stage.tick("Timer3");
    QVERIFY(!stage.control("Frame5")->isVisible());
    QVERIFY(!stage.control("TXTWait(1)")->isEnabled());
    QVERIFY(!stage.ticking("Timer3"));
    QVERIFY(stage.folder.has("new/MyLatestDives1.txt"));
    QVERIFY(stage.dialogs.messages().contains("1  Dives Downloaded."));
    QVERIFY(!stage.control<FlexGrid>("Mgrid")->backColour(1, 1).isValid());
}

void TestPcLink1Run::whatARunDidNotStoreStandsBelowItsLastWords() {
    LinkStage stage(QStringLiteral("Dive"));
    beginDownload(stage);
    stage.receive("PPPPPPPP");
    stage.tick("Timer3");
    const auto& last = stage.dialogs.asked().first();
    QCOMPARE(last.text, "1  Dives Downloaded.");
    QCOMPARE(last.below, "Chosen: 1, stored: 0. Not stored, to be fetched again: Dive1.");
}

void TestPcLink1Run::aScreenClosedWhileDownloadingLeavesNothingBehind() {
    LinkStage stage(QStringLiteral("Dive"));
    beginDownload(stage);
    stage.screen->close();
    QVERIFY(!stage.screen->isDownloading());
    QVERIFY(!stage.working->PortOpen());
    QTRY_VERIFY(stage.screen == nullptr);
    QVERIFY(!stage.folder.has("new/MyLatestDives1.txt"));
    QVERIFY(QGuiApplication::overrideCursor() == nullptr);
}

QTEST_MAIN(TestPcLink1Run)
#include "test_pc_link_1_run.moc"
