#include "link/directory.h"
#include "link/divefile.h"
#include "link/download.h"
#include "link/supervision.h"
#include "session/process.h"
#include "tests/link/downloadstage.h"
#include "tests/link/vectors.h"

#include <QJsonArray>

using namespace benthor;
using namespace benthor::link;
using namespace benthor::tests;
using Stage = DownloadStage;

namespace {

const QString kExpected = QStringLiteral("directory/expected.json");

} // namespace

class TestDownload : public QObject {
    Q_OBJECT

private slots:
    void theRequestAgreesWithTheVectors() {
        for (const auto& each : vectors(kExpected)[QLatin1String("dive_requests")].toArray()) {
            QCOMPARE(QString::fromLatin1(diverequest(QString::number(each[0].toInt()))), each[1].toString());
        }
    }

    void theFileNameAgreesWithTheVectors() {
        for (const auto& each : vectors(kExpected)[QLatin1String("dive_files")].toArray()) {
            QCOMPARE(divefilename(each[0].toString(), QString::number(each[1].toInt())), each[2].toString());
        }
        QCOMPARE(divefilename(QStringLiteral("S"), QStringLiteral("007")), "S7.txt");
    }

    void theBarAgreesWithTheVectors() {
        for (const auto& each : vectors(kExpected)[QLatin1String("progress_bar")].toArray()) {
            QCOMPARE(downloadprogress(each[0].toInteger()), each[1].toInt());
        }
        QCOMPARE(downloadprogress(100'000'000), 300);
        QCOMPARE(downloadprogress(500), 0); // a tie goes to the even one
        QCOMPARE(downloadprogress(1500), 2);
    }

    void theDivesInARowAgreeWithTheVectors() {
        for (const auto& each : vectors(kExpected)[QLatin1String("bulk_bodies")].toArray()) {
            const QJsonArray bodies = each[QLatin1String("bodies")].toArray();
            const auto dives = divesinrow(each[QLatin1String("text")].toString().toLatin1());
            QCOMPARE(static_cast<qsizetype>(dives.size()), bodies.size());
            for (qsizetype dive = 0; dive < bodies.size(); ++dive) {
                QCOMPARE(QString::fromLatin1(dives[static_cast<std::size_t>(dive)]), bodies[dive].toString());
            }
        }
    }

    void withoutABlueRowNothingGoesOut() {
        Stage stage;
        cmddownload_click(stage.link, stage.host);
        QCOMPARE(stage.host.messages, QStringList("No dive(s) selected"));
        QVERIFY(stage.host.line.writes.empty());
        QVERIFY(stage.link.Timer5);
        QVERIFY(!stage.link.Timer3);
    }

    void getSelectedAsksForTheFirstBlueRow() {
        Stage stage;
        stage.select({2, 3});
        stage.receive("PPP");
        cmddownload_click(stage.link, stage.host);
        QCOMPARE(stage.host.line.sent, QByteArray("D1"));
        QCOMPARE(stage.link.download.selectedcount, 2);
        QCOMPARE(stage.link.download.startdivenum, "2");
        QCOMPARE(stage.link.download.downloadingdive.text, "2");
        QCOMPARE(process().servedrow, 2);
        QVERIFY(!process().linkidle);
        QVERIFY(stage.link.Timer3);
        QVERIFY(stage.link.Timer5);
        QVERIFY(stage.link.rxbuf.isEmpty());
        QCOMPARE(stage.link.silentticks, 0);
        QVERIFY(!stage.link.divesaved);
        QVERIFY(stage.host.messages.isEmpty());
    }

    void getAllPaintsAllAndAsksForRowOne() {
        Stage stage;
        stage.mark(2) = RowMark::Stored;
        cmddownloadall_click(stage.link, stage.host);
        QCOMPARE(stage.host.line.sent, QByteArray("D0"));
        for (const int row : {1, 2, 3}) {
            QCOMPARE(stage.mark(row), RowMark::Selected);
        }
        QCOMPARE(stage.link.download.selectedcount, 3);
        QVERIFY(stage.link.Timer5);
    }

    void getNewLeavesYellowRows() {
        Stage stage;
        stage.mark(2) = RowMark::Stored;
        cmddownloadnew_click(stage.link, stage.host);
        QCOMPARE(stage.host.line.sent, QByteArray("D0"));
        QCOMPARE(stage.mark(2), RowMark::Stored);
        QCOMPARE(stage.mark(3), RowMark::Selected);
    }

    void getNewWithAStoredFirstRowAsksForNothing() {
        Stage stage(2);
        stage.mark(1) = RowMark::Stored;
        cmddownloadnew_click(stage.link, stage.host);
        QVERIFY(stage.host.line.writes.empty());
        QVERIFY(stage.host.messages.isEmpty());
        QVERIFY(!stage.link.Timer3);
        QVERIFY(!process().linkidle); // the run stays open
        QVERIFY(stage.link.Timer5);
    }

    void aRowBeyondTheLastAsksForNothing() {
        Stage stage(1);
        process().servedrow = 2;
        requestcurrentrow(stage.link, stage.host);
        QVERIFY(stage.host.line.writes.empty());
    }

    void aNumberWithoutACodeSaysSoAndSendsNothing() {
        Stage stage(1);
        stage.link.Mgrid.rows[1].cells[0] = QStringLiteral("Dive209");
        stage.select({1});
        cmddownload_click(stage.link, stage.host);
        QCOMPARE(stage.host.messages, QStringList(kFailed));
        QVERIFY(stage.host.line.writes.empty());
        QVERIFY(!stage.link.Timer3);
    }

    void aClosedPortStartsTheWaitAllTheSame() {
        Stage stage;
        stage.host.line.open = false;
        stage.select({1});
        cmddownload_click(stage.link, stage.host);
        QVERIFY(stage.host.line.writes.empty());
        QVERIFY(stage.link.Timer3);
        QCOMPARE(stage.link.download.divecommand, QByteArray("D0"));
    }

    /// A cable that is out shows on the wait frame; a line that takes nothing shows nowhere else.
    void aRequestThatTheLineDoesNotTakeIsTold() {
        using Click = void (*)(LinkState&, LinkHost&);
        const Click backup = [](LinkState& link, LinkHost& host) {
            link.AFLabel3.text = QStringLiteral("Connected");
            mnubackdive_click(link, host);
        };
        for (const Click click : {cmddownload_click, cmddownloadall_click, Command1_click, backup}) {
            Stage stage;
            stage.select({1, 2});
            setstartdivenum(stage.link, QStringLiteral("1"));
            stage.host.line.takes = 1;
            click(stage.link, stage.host);
            QCOMPARE(stage.host.line.sent, QByteArray("D"));
            QCOMPARE(stage.host.messages.size(), 1);
            QVERIFY2(
                stage.host.messages[0].startsWith("The request for dives was not sent whole: the line to "
                                                  "the device took nothing for two seconds"),
                qPrintable(stage.host.messages[0]));
            QVERIFY(stage.link.Timer3 || stage.link.capturemode); // what waits, waits on
        }
        Stage next; // in the middle of a run
        next.select({1, 2});
        cmddownload_click(next.link, next.host);
        next.host.line.takes = 0;
        next.receive("ver=V2.31 End");
        next.tick();
        QCOMPARE(next.host.messages.size(), 1);
        QVERIFY(next.link.Timer3);
    }

    void aTickShowsWhatHasCome() {
        Stage stage;
        stage.select({1});
        cmddownload_click(stage.link, stage.host);
        stage.link.downloadbuttons = true;
        stage.receive(QByteArray(2400, 'x'));
        stage.tick();
        QVERIFY(!stage.link.downloadbuttons);
        QVERIFY(!stage.link.cmdstoreEnabled);
        QVERIFY(stage.link.download.TXTWaitVisible);
        QCOMPARE(stage.link.download.TXTWait, "Downloading\nPlease wait..\n");
        QCOMPARE(stage.link.download.ProgressBar1, 2);
        QCOMPARE(stage.link.download.lblBytes, "2400  Bytes received");
        QCOMPARE(stage.link.Text4.size(), 2400);
        QCOMPARE(stage.link.download.lastdivetext.size(), 2400);
        QVERIFY(stage.link.Timer3);
    }

    void aReplyBeyond300000BytesShowsAFifth() {
        Stage stage;
        stage.select({1});
        cmddownload_click(stage.link, stage.host);
        stage.receive(QByteArray(400000, 'x'));
        stage.tick();
        QCOMPARE(stage.link.download.ProgressBar1, 80);
    }

    void aStoredFileHoldsExactlyTheBytesThatCameAndALineEnd() {
        Stage stage;
        QByteArray text("beacon PP ver=V2.31\r\n");
        for (int byte = 0; byte < 256; ++byte) {
            text += static_cast<char>(byte);
        }
        text += "End\r\nPPP";
        stage.select({2});
        cmddownload_click(stage.link, stage.host);
        stage.receive(text.first(100));
        stage.tick();
        QVERIFY(stage.waiting().isEmpty());
        stage.receive(text.sliced(100));
        stage.tick();
        QCOMPARE(stage.waiting(), QStringList("MyLatestDives2.txt"));
        QCOMPARE(stage.folder.get("new/MyLatestDives2.txt"), text + "\r\n");
    }

    void aRunServesTheBlueRowsInOrderAndEndsWithTheQuestion() {
        Stage stage;
        stage.select({1, 3});
        cmddownload_click(stage.link, stage.host);
        stage.receive("ver=one End");
        stage.tick();
        QCOMPARE(stage.mark(1), RowMark::None);
        QCOMPARE(stage.host.line.sent, QByteArray("D0D2"));
        QCOMPARE(process().servedrow, 3);
        QVERIFY(stage.link.Timer3);
        QVERIFY(stage.link.rxbuf.isEmpty());
        QVERIFY(stage.host.messages.isEmpty());
        QCOMPARE(stage.link.download.DiveCount, "1");
        stage.receive("ver=three End");
        stage.link.txtstatus2Visible = true;
        stage.link.silentticks = 9;
        stage.tick();
        QVERIFY(!stage.link.Timer3);
        QVERIFY(!stage.link.download.TXTWaitVisible);
        QVERIFY(stage.link.downloadbuttons);
        QVERIFY(stage.link.cmdstoreEnabled);
        QCOMPARE(stage.host.questions,
                 QStringList("It is advised to import downloaded dives into database now. Proceed?"));
        QCOMPARE(stage.host.titles, QStringList("Import to database"));
        QCOMPARE(stage.host.messages,
                 QStringList({"2  Dives Downloaded.",
                              "To put dives into database manually, close this PC_Link window. Dives will "
                              "not be updated while link screen is open!"}));
        QCOMPARE(stage.host.leavings, 0);
        QCOMPARE(stage.link.silentticks, 0);
        QVERIFY(!stage.link.txtstatus2Visible);
        QCOMPARE(stage.folder.get("new/MyLatestDives1.txt"), QByteArray("ver=one End\r\n"));
        QCOMPARE(stage.folder.get("new/MyLatestDives3.txt"), QByteArray("ver=three End\r\n"));
    }

    void yesLeavesAndImports() {
        Stage stage;
        stage.host.answers = {true};
        stage.select({1});
        cmddownload_click(stage.link, stage.host);
        stage.receive("End");
        stage.tick();
        QCOMPARE(stage.host.leavings, 1);
        QCOMPARE(stage.host.messages, QStringList("1  Dives Downloaded."));
    }

    void aDiveBrokenOffIntoTheBeaconIsDroppedAndCounted() {
        Stage stage;
        stage.select({1, 2});
        cmddownload_click(stage.link, stage.host);
        stage.receive("ver=V2.31 half PPPPPPP");
        stage.tick();
        QVERIFY(stage.link.Timer3);
        stage.receive("P");
        stage.tick();
        QVERIFY(stage.waiting().isEmpty());
        QCOMPARE(stage.link.download.divesreceived, 1);
        QCOMPARE(stage.mark(1), RowMark::None);
        QCOMPARE(stage.host.line.sent, QByteArray("D0D1"));
        stage.receive("End");
        stage.tick();
        QCOMPARE(stage.host.messages.first(), "2  Dives Downloaded.");
        QCOMPARE(stage.waiting(), QStringList("MyLatestDives2.txt"));
    }

    // --- the directory's wait, which a device of older firmware leaves open

    void eachRequestForDivesEndsTheDirectorysWait_data() {
        QTest::addColumn<int>("request");
        int request = 0;
        for (const char* name : {"Get Selected", "Get All", "Get New", "Get Dive", "Get Dives", "back-up"}) {
            QTest::newRow(name) << request++;
        }
    }

    void eachRequestForDivesEndsTheDirectorysWait() {
        QFETCH(int, request);
        Stage stage(1);
        stage.select({1});
        stage.link.AFLabel3.text = QStringLiteral("Connected");
        setstartdivenum(stage.link, QStringLiteral("1"));
        stage.link.Timer2 = true; // asked for the setup, which has not come
        const std::array<void (*)(LinkState&, LinkHost&), 6> requests{
            cmddownload_click, cmddownloadall_click, cmddownloadnew_click,
            Command1_click,    Command9_click,       mnubackdive_click};
        requests.at(static_cast<std::size_t>(request))(stage.link, stage.host);
        QVERIFY(!stage.link.Timer2);
        cmdstore_click(stage.link, stage.host);
        QVERIFY(stage.link.Timer2 != stage.link.Timer3); // the next Refresh, where no run waits for its dive
    }

    void whileARunWaitsForItsDiveNothingElseIsAskedFor() {
        Stage stage;
        stage.select({1, 2});
        stage.link.AFLabel3.text = QStringLiteral("Connected");
        cmddownload_click(stage.link, stage.host);
        stage.receive("ver=V2.31 half");
        cmdstore_click(stage.link, stage.host);
        cmddownload_click(stage.link, stage.host); // a double click
        cmddownloadall_click(stage.link, stage.host);
        cmddownloadnew_click(stage.link, stage.host);
        mnubackdive_click(stage.link, stage.host);
        Command1_click(stage.link, stage.host);
        Command9_click(stage.link, stage.host);
        QCOMPARE(stage.host.line.sent, QByteArray("D0"));
        QCOMPARE(stage.link.rxbuf.bytes(), QByteArray("ver=V2.31 half"));
        QCOMPARE(stage.link.Mgrid.rowCount(), 4);
        QCOMPARE(stage.mark(3), RowMark::None);
        QVERIFY(!stage.link.download.backupmode);
        QVERIFY(!stage.link.capturemode);
        QCOMPARE(stage.link.download.startdivenum, "1");
        stage.receive(" End");
        stage.tick();
        QCOMPARE(stage.folder.get("new/MyLatestDives1.txt"), QByteArray("ver=V2.31 half End\r\n"));
    }

    void aRunAfterACaptureThatNeverEndedStoresEachDiveOnce() {
        Stage stage;
        Command9_click(stage.link, stage.host); // dive 0, which no device has
        stage.select({1});
        cmddownload_click(stage.link, stage.host);
        stage.receive("ver=one End");
        Timer1_tick(stage.link, stage.host);
        stage.tick();
        QCOMPARE(stage.host.line.sent, QByteArray("D/D0"));
        QCOMPARE(stage.host.messages.first(), "1  Dives Downloaded.");
        QCOMPARE(stage.folder.get("new/MyLatestDives1.txt"), QByteArray("ver=one End\r\n"));
    }

    // --- what a run has stored of what was chosen

    void aRunThatStoredAllSaysNoMore() {
        Stage stage;
        stage.select({1});
        cmddownload_click(stage.link, stage.host);
        stage.receive("End");
        stage.tick();
        QCOMPARE(stage.host.messages.first(), "1  Dives Downloaded.");
        QCOMPARE(stage.host.below.first(), "");
    }

    void aRunThatStoredFewerThanWereChosenSaysHowManyAndWhich() {
        Stage stage;
        cmddownloadall_click(stage.link, stage.host);
        for (const char* reply : {"half PPPPPPPP", "whole End", "half PPPPPPPP"}) {
            stage.receive(reply);
            stage.tick();
        }
        QCOMPARE(stage.host.messages.first(), "3  Dives Downloaded.");
        QCOMPARE(stage.host.below.first(),
                 "Chosen: 3, stored: 1. Not stored, to be fetched again: Dive1, Dive3.");
        stage.select({2}); // the next run counts anew
        stage.host.messages.clear();
        stage.host.below.clear();
        cmddownload_click(stage.link, stage.host);
        stage.receive("End");
        stage.tick();
        QCOMPARE(stage.host.messages.first(), "1  Dives Downloaded.");
        QCOMPARE(stage.host.below.first(), "");
    }

    void ofManyDivesThatWereNotStoredTheFirstAreNamed() {
        Stage stage(14);
        cmddownloadall_click(stage.link, stage.host);
        for (int dive = 1; dive <= 14; ++dive) {
            stage.receive(dive == 5 ? "End" : "PPPPPPPP");
            stage.tick();
        }
        QCOMPARE(stage.host.below.first(),
                 "Chosen: 14, stored: 1. Not stored, to be fetched again: Dive1, Dive2, Dive3, Dive4, "
                 "Dive6, Dive7, Dive8, Dive9, Dive10, Dive11 and 3 more.");
    }

    void getNewCountsOnlyWhatIsNew() {
        Stage stage;
        stage.mark(2) = RowMark::Stored;
        cmddownloadnew_click(stage.link, stage.host);
        for (int dive = 0; dive < 2; ++dive) {
            stage.receive("End");
            stage.tick();
        }
        QCOMPARE(stage.host.messages.first(), "2  Dives Downloaded.");
        QCOMPARE(stage.host.below.first(), "");
    }

    void aSilentDeviceKeepsTheRunOpen() {
        Stage stage;
        stage.select({1});
        cmddownload_click(stage.link, stage.host);
        for (int tick = 0; tick < 1000; ++tick) {
            stage.tick();
        }
        QVERIFY(stage.link.Timer3);
        QVERIFY(stage.link.download.TXTWaitVisible);
        QVERIFY(stage.host.messages.isEmpty());
    }

    void whileTheLinkIsIdleNothingIsSavedOrAskedFor() {
        Stage stage;
        stage.select({1, 2});
        cmddownload_click(stage.link, stage.host);
        process().linkidle = true;
        stage.receive("End");
        stage.tick();
        QVERIFY(stage.waiting().isEmpty());
        QCOMPARE(stage.host.line.sent, QByteArray("D0"));
        QVERIFY(stage.host.messages.isEmpty());
        QCOMPARE(stage.link.download.divesreceived, 1);
    }

    void twoSeriesInOneRunDoNotCollide() {
        Stage stage;
        for (const char* series : {"Reef", "Wreck"}) {
            stage.link.download.DiveSeriesName = QLatin1String(series);
            stage.select({1});
            cmddownload_click(stage.link, stage.host);
            stage.receive(QByteArray(series) + "End");
            stage.tick();
        }
        QCOMPARE(stage.waiting(), QStringList({"Reef1.txt", "Wreck1.txt"}));
    }

    void aYellowDiveCanBeDownloadedAgain() {
        Stage stage;
        stage.mark(1) = RowMark::Stored;
        process().servedrow = 1;
        Mgrid_mouseup(stage.link, 1, 1, 0);
        cmddownload_click(stage.link, stage.host);
        QCOMPARE(stage.host.line.sent, QByteArray("D0"));
    }

    void aFileThatWaitsIsKeptBeforeItIsOverwritten() {
        Stage stage;
        stage.folder.put("new/MyLatestDives1.txt", "first");
        stage.folder.put("old/MyLatestDives1.txt", "older");
        stage.select({1});
        cmddownload_click(stage.link, stage.host);
        stage.receive("End");
        stage.tick();
        QCOMPARE(stage.folder.get("new/MyLatestDives1.txt"), QByteArray("End\r\n"));
        QCOMPARE(stage.folder.get("old/MyLatestDives1.txt"), QByteArray("older"));
        QCOMPARE(stage.folder.get("old/MyLatestDives1-2.txt"), QByteArray("first"));
    }

    void aSeriesThatLeadsIntoAnotherFolderIsUsedAsToldAndDestroysNothing() {
        Stage stage;
        stage.folder.put("old/Reef1.txt", "the only copy");
        stage.link.download.DiveSeriesName = QStringLiteral("..\\old\\Reef");
        stage.select({1});
        cmddownload_click(stage.link, stage.host);
        stage.receive("End");
        stage.tick();
        QCOMPARE(stage.folder.get("old/Reef1.txt"), QByteArray("End\r\n"));
        QCOMPARE(stage.folder.get("old/Reef1-2.txt"), QByteArray("the only copy"));
    }

    void aSeriesThatIsNoFileNameSaysSo_data() {
        QTest::addColumn<QString>("series");
        QTest::newRow("missing folder") << "none\\Reef";
        QTest::newRow("missing folder, slash") << "none/Reef";
        QTest::newRow("too long") << QString(300, QLatin1Char('x'));
        QTest::newRow("with a null") << QString(QLatin1String("a\0b", 3));
    }

    void aSeriesThatIsNoFileNameSaysSo() {
        QFETCH(QString, series);
        Stage stage;
        stage.link.download.DiveSeriesName = series;
        stage.select({1, 2});
        cmddownload_click(stage.link, stage.host);
        stage.receive("End");
        stage.tick();
        QCOMPARE(stage.host.messages, QStringList(kFailed));
        QVERIFY(stage.waiting().isEmpty());
        QVERIFY(!stage.link.Timer3);
        QCOMPARE(stage.mark(1), RowMark::Selected);
        QCOMPARE(stage.host.line.sent, QByteArray("D0"));
    }

    void aMissingFolderOfWaitingDivesSaysSo() {
        Stage stage;
        QVERIFY(QDir(stage.folder.path("new")).removeRecursively());
        stage.select({1});
        cmddownload_click(stage.link, stage.host);
        stage.receive("End");
        stage.tick();
        QCOMPARE(stage.host.messages, QStringList(kFailed));
    }

    void theCountOfFilesStopsItsTimer() {
        Stage stage;
        stage.link.Timer5 = true;
        stage.link.download.selectedcount = 2;
        stage.folder.put("new/a1.txt", "x");
        Timer5_tick(stage.link);
        QVERIFY(stage.link.Timer5);
        stage.folder.put("new/b1.TXT", "x");
        stage.folder.put("new/other.dat", "x");
        Timer5_tick(stage.link);
        QVERIFY(!stage.link.Timer5);
        stage.link.Timer5 = true;
        stage.link.download.selectedcount = 0;
        Timer5_tick(stage.link);
        QVERIFY(stage.link.Timer5);
    }
};

QTEST_APPLESS_MAIN(TestDownload)
#include "test_download.moc"
