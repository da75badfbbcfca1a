// What brings dives beside a run: the back-up of all, and a single dive by its number.

#include "link/divefile.h"
#include "link/supervision.h"
#include "session/process.h"
#include "tests/link/downloadstage.h"

using namespace benthor;
using namespace benthor::link;
using namespace benthor::tests;
using Stage = DownloadStage;

class TestDownloadApart : public QObject {
    Q_OBJECT

private slots:
    void aRefusedBackupLeavesTheDirectorysWait() {
        Stage stage;
        stage.link.AFLabel3.text = QStringLiteral("Command Sent..");
        mnubackdive_click(stage.link, stage.host);
        QVERIFY(stage.link.Timer2);
    }

    void aBackupWithFewerDivesThanTheDirectoryLists() {
        Stage stage;
        stage.link.AFLabel3.text = QStringLiteral("Connected");
        mnubackdive_click(stage.link, stage.host);
        stage.receive("ver=one End ver=two" + QByteArray(100, 'P'));
        stage.tick();
        QCOMPARE(stage.host.messages.first(), "1  Dives Downloaded.");
        QCOMPARE(stage.host.below.first(), "Listed by the device: 3, stored: 1.");
    }

    // --- back-up

    void theBackupNeedsTheConnection() {
        Stage stage;
        stage.link.AFLabel3.text = QStringLiteral("Command Sent..");
        mnubackdive_click(stage.link, stage.host);
        QCOMPARE(stage.host.messages, QStringList("KD not connected\nCheck connection tips"));
        QVERIFY(stage.host.line.writes.empty());
        QVERIFY(!stage.link.Timer3);
    }

    void theBackupStoresEachDiveAndImportsWithoutAQuestion() {
        Stage stage;
        stage.link.AFLabel3.text = QStringLiteral("Connected");
        mnubackdive_click(stage.link, stage.host);
        QCOMPARE(stage.host.line.sent, QByteArray("Dy"));
        QVERIFY(stage.link.Timer3);
        QCOMPARE(stage.link.silentticks, 1);
        const QByteArray first = "ver=V2.31\r\nfirst\r\nEnd";
        const QByteArray second = "ver=V2.31\r\nsecond\r\nEnd";
        stage.receive("x" + first + "\r\n" + second);
        stage.tick();
        QVERIFY(stage.link.Timer3);
        QVERIFY(stage.waiting().isEmpty());
        stage.receive("\r\nbacksenddone" + QByteArray(60, 'P'));
        stage.tick();
        QCOMPARE(stage.waiting(), QStringList({"backdive1.txt", "backdive2.txt"}));
        QCOMPARE(stage.folder.get("new/backdive1.txt"), first + "\r\n");
        QCOMPARE(stage.folder.get("new/backdive2.txt"), second + "\r\n");
        QCOMPARE(stage.host.messages, QStringList("2  Dives Downloaded."));
        QVERIFY(stage.host.questions.isEmpty());
        QCOMPARE(stage.host.leavings, 1);
        QVERIFY(!stage.link.Timer3);
        QVERIFY(!stage.link.download.TXTWaitVisible);
        QVERIFY(!stage.link.download.backupmode);
    }

    void aBackupWithoutAnyDiveEndsSilentlyWithItsFrameUp() {
        Stage stage;
        stage.link.AFLabel3.text = QStringLiteral("Connected");
        mnubackdive_click(stage.link, stage.host);
        stage.receive(QByteArray(100, 'P'));
        stage.tick();
        QVERIFY(!stage.link.Timer3);
        QVERIFY(stage.link.download.TXTWaitVisible);
        QVERIFY(stage.host.messages.isEmpty());
        QCOMPARE(stage.host.leavings, 0);
        QVERIFY(stage.waiting().isEmpty());
    }

    void anOlderBackupThatWaitsIsKept() {
        Stage stage;
        stage.folder.put("new/backdive1.txt", "older");
        stage.link.AFLabel3.text = QStringLiteral("Connected");
        mnubackdive_click(stage.link, stage.host);
        stage.receive("ver=End" + QByteArray(100, 'P'));
        stage.tick();
        QCOMPARE(stage.folder.get("old/backdive1.txt"), QByteArray("older"));
        QCOMPARE(stage.folder.get("new/backdive1.txt"), QByteArray("ver=End\r\n"));
    }

    // --- a single dive

    void getDiveAsksForTheNumberTyped() {
        Stage stage;
        stage.link.rxbuf.append("PPP");
        stage.host.line.waiting = "PP";
        setstartdivenum(stage.link, QStringLiteral("11"));
        Command1_click(stage.link, stage.host);
        QCOMPARE(stage.host.line.sent, QByteArray("D:"));
        QCOMPARE(stage.link.Text4.bytes(), QByteArray("D:"));
        QVERIFY(stage.link.capturemode);
        QVERIFY(stage.link.rxbuf.isEmpty());
        QVERIFY(stage.host.line.waiting.isEmpty());
        QVERIFY(!stage.link.Timer3);
    }

    void getDivesAsksForDiveNull() {
        Stage stage;
        setstartdivenum(stage.link, QStringLiteral("11"));
        Command9_click(stage.link, stage.host);
        QCOMPARE(stage.host.line.sent, QByteArray("D/"));
        QCOMPARE(stage.link.download.startdivenum, "0");
    }

    void aCapturedDiveIsStoredAtItsEnd() {
        Stage stage;
        setstartdivenum(stage.link, QStringLiteral("7"));
        Command1_click(stage.link, stage.host);
        stage.receive("ver=V2.31\r\n");
        capturestep(stage.link, stage.host);
        QVERIFY(!stage.link.download.Command3Enabled);
        QVERIFY(stage.link.download.downloadingdive.visible);
        QCOMPARE(stage.link.download.Text1, "11");
        QVERIFY(stage.waiting().isEmpty());
        stage.receive("Profile\r\n");
        capturestep(stage.link, stage.host);
        QVERIFY(stage.link.download.Command3Enabled);
        stage.receive("End");
        capturestep(stage.link, stage.host);
        QCOMPARE(stage.folder.get("new/MyLatestDives7.txt"), QByteArray("ver=V2.31\r\nProfile\r\nEnd\r\n"));
        QVERIFY(!stage.link.capturemode);
        QVERIFY(!stage.link.divesaved);
        QCOMPARE(stage.link.silentticks, 0);
        QCOMPARE(stage.link.download.DiveCount, "1");
        QCOMPARE(stage.host.line.sent, QByteArray("D6"));
    }

    void aCapturedDiveThatCannotBeStoredIsToldOnce() {
        Stage stage;
        stage.link.download.DiveSeriesName = QStringLiteral("none/Reef");
        setstartdivenum(stage.link, QStringLiteral("7"));
        Command1_click(stage.link, stage.host);
        stage.receive("End");
        capturestep(stage.link, stage.host);
        QCOMPARE(stage.host.messages, QStringList(kFailed));
        QVERIFY(!stage.link.capturemode);
        QCOMPARE(stage.link.Text4.bytes(), QByteArray("End"));
    }

    void theTextOfADiveCanBeStoredUnderAName() {
        Stage stage;
        stage.link.Text4.assign("Profile");
        stage.host.chosenFile = stage.folder.path("mine.txt");
        Command3_click(stage.link, stage.host);
        QCOMPARE(stage.folder.get("mine.txt"), QByteArray("Profile\r\n"));
        QCOMPARE(stage.host.filters, QStringList("Text Files (*.txt)|*.txt|All Files (*.*)|*.*"));
        QCOMPARE(stage.host.suggested, QStringList("new"));
        stage.host.chosenFile.clear();
        Command3_click(stage.link, stage.host);
        QVERIFY(stage.host.messages.isEmpty());
    }
};

QTEST_APPLESS_MAIN(TestDownloadApart)
#include "test_download_apart.moc"
