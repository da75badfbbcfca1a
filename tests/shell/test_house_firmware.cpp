// The firmware screen and a device in its loader, over a real pseudo-terminal.

#include "tests/shell/firmwareprogram.h"

#include <QListWidget>

using namespace benthor;
using namespace benthor::tests;

class TestHouseFirmware : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { look::apply(*qApp); }

    void theSearchHearsALoaderAndTheScreenOpensByItself();
    void aWholeSessionAtEachSpeed_data();
    void aWholeSessionAtEachSpeed();
    void theTypeOfTheDeviceChoosesTheImage();
    void anImageOfTheUsersOwnIsSentAndNobodyPressesForHim();
    void afterTheRestartTheDeviceIsItselfAgain();
    void aRehearsalReachesTheVerdictAndNoRealPort();
    void homeLoadsTheMainScreenAgain();
    void runningProgramsOpenFromTheMenu();
};

void TestHouseFirmware::theSearchHearsALoaderAndTheScreenOpensByItself() {
    for (const bool large : {false, true}) {
        FirmwareProgram run;
        run.device.with([large](Kd& kd) { kd.loader->large = large; });
        control<QAction>("main", "mnuconnectdevice")->trigger();
        QTRY_VERIFY_WITH_TIMEOUT(
            [] {
                if (loaded("PC_Link_1") != nullptr) {
                    expire("PC_Link_1", "Timer8");
                }
                return shown("ReProg_Link");
            }(),
            20000);
        QVERIFY(loaded("main") == nullptr);
        QCOMPARE(link::readcomport(), "3");
        run.waitForLamp(firmware::kLampReady, "Ready to Send");
        QCOMPARE(run.device.received(), "1");
        loaded("ReProg_Link")->close();
        QTRY_COMPARE(run.program.ended->count(), 1);
    }
}

void TestHouseFirmware::aWholeSessionAtEachSpeed_data() {
    QTest::addColumn<int>("baud");
    QTest::addColumn<int>("units");
    QTest::newRow("9600 baud, an image that goes out whole") << 9600 << kWhole;
    QTest::newRow("38400 baud, an image whose end stays behind") << 38400 << 150;
}

void TestHouseFirmware::aWholeSessionAtEachSpeed() {
    QFETCH(int, baud);
    QFETCH(int, units);
    FirmwareProgram run(baud / 10, FirmwareType::Rb, units);
    run.device.setBaud(baud);
    run.openScreen();
    QVERIFY(
        run.refreshUntil([&] { return run.lamp(firmware::kLampReady) == QLatin1String("Ready to Send"); }));
    QCOMPARE(run.state().check.Text13, QString::fromLatin1(run.image.right(2).toHex().toUpper()));
    QVERIFY(run.lamp(firmware::kLampResult) == QLatin1String("KD Not same Check sum as chosen file"));
    QVERIFY(!run.state().Command2.enabled);
    run.enterMode();
    QVERIFY(run.state().Command2.enabled);
    const QByteArray before = run.device.received();
    run.press("Command2");
    QCOMPARE(run.state().sendstate, 2);
    QCOMPARE(run.program.dialogs.messages().size(), 1); // the warning alone
    run.waitFor("shell:");
    run.waitForLamp(firmware::kLampResult, "OK to Restart");
    QVERIFY(run.state().SendCh[firmware::kKeyRestart].enabled);

    QTRY_VERIFY(!run.device.received().endsWith('R')); // the key whose second byte is on its way
    const QByteArray sent = run.device.received().sliced(before.size());
    const QByteArray image = sendOf(run.image);
    QCOMPARE(sent.first(image.size()), image);
    QCOMPARE(run.imageInDevice(), image.sliced(1));
    // The verdict, and the way back to the prompt as often as a tick came before its page.
    QByteArray behind = sent.sliced(image.size());
    QVERIFY(behind.startsWith("&&&&"));
    const qsizetype yes = behind.indexOf('y');
    QCOMPARE(behind.first(yes), QByteArray(yes, '&')); // more of them where the line was slow to drain
    QVERIFY(yes <= 4 + 15);
    behind.remove(0, yes + 1);
    QVERIFY2(behind.replace("R1", "").isEmpty(), sent.sliced(image.size()));
    run.passTheWait();
    QCOMPARE(run.state().sendstate, 61);
    QVERIFY(!run.state().Frame6Visible);
}

void TestHouseFirmware::theTypeOfTheDeviceChoosesTheImage() {
    FirmwareProgram run(KdPort::unpaced, FirmwareType::Kd);
    run.openScreen();
    QVERIFY(run.state().Text5.endsWith("bpcsp2shchk.sog"));
    QTRY_VERIFY(run.tickUntil([&] { return run.state().Text5.endsWith("hdckd3chk.sog"); }));
    QCOMPARE(run.state().check.Text13, QString::fromLatin1(run.image.right(2).toHex().toUpper()));
}

void TestHouseFirmware::anImageOfTheUsersOwnIsSentAndNobodyPressesForHim() {
    FirmwareProgram run;
    const QByteArray own = simulator::firmwareImage(FirmwareType::Rb, kWhole, 77);
    run.program.folder.put("Reprog/mine.sog", own);
    run.openScreen();
    run.program.dialogs.answerFile(run.program.folder.path("Reprog/mine.sog"));
    run.press("Command7");
    run.enterMode();
    const qsizetype before = run.device.received().size();
    run.press("Command2");
    run.waitForLamp(firmware::kLampResult, "OK to Restart");
    run.passTheWait();
    QCOMPARE(run.device.received().sliced(before), sendOf(own) + "&&&&y");
}

void TestHouseFirmware::afterTheRestartTheDeviceIsItselfAgain() {
    FirmwareProgram run;
    run.openScreen();
    run.enterMode();
    run.press("Command2");
    run.waitForLamp(firmware::kLampResult, "OK to Restart");
    run.press("SendCh(8)");
    QCOMPARE(run.state().Text4.bytes(), "restarting...  200");
    QTRY_VERIFY_WITH_TIMEOUT(run.tickUntil([&] { return run.holds("PPPP"); }), 20000);
    bool loading = true;
    run.device.with([&loading](Kd& kd) { loading = kd.loader.has_value(); });
    QVERIFY(!loading);
}

void TestHouseFirmware::aRehearsalReachesTheVerdictAndNoRealPort() {
    FirmwareProgram run;
    run.openScreen();
    run.waitForLamp(firmware::kLampReady, "Ready to Send");
    const qsizetype before = run.device.received().size();
    control<QAction>("ReProg_Link", "mnuRehearse")->trigger();
    QVERIFY(control<QWidget>("ReProg_Link", "rehearsal")->isVisible());
    QVERIFY(QFileInfo(run.program.folder.path("ports/com40")).isSymLink());
    run.waitForLamp(firmware::kLampReady, "Ready to Send");
    run.enterMode();
    run.press("Command2");
    run.waitForLamp(firmware::kLampResult, "OK to Restart");
    QCOMPARE(run.device.received().size(), before); // not one byte for the real one
    run.press("endRehearsal");
    QVERIFY(!QFileInfo(run.program.folder.path("ports/com40")).isSymLink());
    QCOMPARE(link::readcomport(), "3");
    QVERIFY(run.lamp(firmware::kLampResult) != QLatin1String("OK to Restart") ||
            run.tickUntil([&] { return run.lamp(firmware::kLampResult) != QLatin1String("OK to Restart"); }));
}

void TestHouseFirmware::homeLoadsTheMainScreenAgain() {
    FirmwareProgram run;
    run.openScreen();
    QVERIFY(loaded("main") == nullptr);
    QTest::mouseClick(control<QWidget>("ReProg_Link", "Label11"), Qt::LeftButton);
    QVERIFY(shown("main"));
    QVERIFY(loaded("ReProg_Link") == nullptr);
    QCoreApplication::processEvents();
    QVERIFY(run.program.ended->isEmpty());
}

void TestHouseFirmware::runningProgramsOpenFromTheMenu() {
    FirmwareProgram run;
    run.openScreen();
    control<QAction>("ReProg_Link", "mnuRunProg")->trigger();
    QVERIFY(shown("RunProg"));
    QVERIFY(control<QListWidget>("RunProg", "List1")->count() > 0);
    loaded("ReProg_Link")->close();
    QCoreApplication::processEvents();
    QVERIFY(run.program.ended->isEmpty()); // one screen is left
    loaded("RunProg")->close();
    QTRY_COMPARE(run.program.ended->count(), 1);
}

QTEST_MAIN(TestHouseFirmware)
#include "test_house_firmware.moc"
